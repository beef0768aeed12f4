// Single statements about planes of chroma, and luma with alpha, that are interleaved, with their numbers, one test
// each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "examples/word_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class chroma_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, chroma_example, all_backends(), backend_name);

// Chroma of 4:2:0.

TEST_P(chroma_example, y_u_v_to_y_uv_interleaves_chroma) {
  const bytes y = counted(8);
  bytes to_y(8);
  bytes to_cbcr(4);
  fc::y_u_v::y_uv(y.data(), 4, bytes{1, 2}.data(), 2, bytes{3, 4}.data(), 2, to_y.data(), 4, to_cbcr.data(), 4, 4, 2);
  EXPECT_EQ(to_y, y);
  EXPECT_EQ(to_cbcr, (bytes{1, 3, 2, 4}));
}

// Five pixels a row are two chroma pairs; in one pass the pairs of all rows follow each other.
TEST_P(chroma_example, y_u_v_to_y_uv_of_odd_width_in_one_pass_leaves_no_gaps) {
  const bytes y = counted(20);
  const bytes cb = {1, 2, 3, 4};
  const bytes cr = {5, 6, 7, 8};
  bytes to_y(20);
  bytes to_cbcr = filled(10, 77);
  fc::y_u_v::y_uv(y.data(), 5, cb.data(), 2, cr.data(), 2, to_y.data(), 5, to_cbcr.data(), 5, 5, 4);
  EXPECT_EQ(to_cbcr, (bytes{1, 5, 2, 6, 3, 7, 4, 8, 77, 77}));

  to_cbcr = filled(12, 77);
  fc::y_u_v::y_uv(y.data(), 5, cb.data(), 2, cr.data(), 2, to_y.data(), 5, to_cbcr.data(), 6, 5, 4);
  EXPECT_EQ(to_cbcr, (bytes{1, 5, 2, 6, 77, 77, 3, 7, 4, 8, 77, 77}));
}

TEST_P(chroma_example, y_u_v_to422_of_five_rows_writes_four_rows_of_chroma) {
  const bytes y = counted(2 * 5);
  bytes to_y(10);
  bytes to_cbcr = filled(10, 77);
  fc::y_u_v::y_uv_to422(y.data(), 2, bytes{1, 2, 3}.data(), 1, bytes{4, 5, 6}.data(), 1, to_y.data(), 2, to_cbcr.data(),
                        2, 2, 5);
  EXPECT_EQ(to_y, y);
  EXPECT_EQ(to_cbcr, (bytes{1, 4, 1, 4, 2, 5, 2, 5, 77, 77}));
}

TEST_P(chroma_example, one_row_or_one_pixel_has_luma_but_no_chroma) {
  const bytes source = counted(8);
  for (const auto& [xres, yres] : {std::pair{4, 1}, {1, 4}}) {
    bytes y(4);
    bytes cbcr = filled(16, 77);
    fc::y_u_v::y_uv(source.data(), xres, source.data(), 1, source.data(), 1, y.data(), xres, cbcr.data(), 4, xres,
                    yres);
    EXPECT_EQ(y, part(source, 0, 4));
    fc::y_u_v::y_uv_to422(source.data(), xres, source.data(), 1, source.data(), 1, y.data(), xres, cbcr.data(), 4, xres,
                          yres);
    EXPECT_EQ(cbcr, filled(16, 77));
  }
}

// Chroma alone.

TEST_P(chroma_example, one_sample_of_cb_and_cr_becomes_two_rows_of_words) {
  words result(4);
  fc::cb_cr_8_420::cbcr_16_422(bytes{10}.data(), 1, bytes{20}.data(), 1, result.data(), 4, 1, 1);
  EXPECT_EQ(result, (words{2560, 5120, 2560, 5120}));
}

TEST_P(chroma_example, words_of_chroma_are_interleaved_unchanged) {
  words result(8);
  fc::cb_cr_16_422::cbcr_16_422(words{1, 2, 3, 4}.data(), 4, words{500, 600, 700, 800}.data(), 4, result.data(), 8, 2,
                                2);
  EXPECT_EQ(result, (words{1, 500, 2, 600, 3, 700, 4, 800}));
}

TEST_P(chroma_example, chroma_without_samples_or_rows_writes_nothing) {
  const bytes source = counted(64);
  const words source_words(64, 1);
  for (const auto& [xres, yres] : {std::pair{0, 4}, {4, 0}, {-1, 4}, {4, -1}}) {
    words result(64, 77);
    fc::cb_cr_8_420::cbcr_16_422(source.data(), 4, source.data(), 4, result.data(), 16, xres, yres);
    fc::cb_cr_16_422::cbcr_16_422(source_words.data(), 8, source_words.data(), 8, result.data(), 16, xres, yres);
    fc::cbcr_8_420::cbcr_16_422(source.data(), 4, result.data(), 8, xres, yres);
    EXPECT_EQ(result, words(64, 77));
  }
}

TEST_P(chroma_example, words_can_be_given_as_bytes_of_any_address) {
  const bytes source = counted(2 * 41, 11);
  const std::uint8_t* cr = source.data() + 41;
  words of_words(2 * 82);
  bytes of_bytes(4 * 82 + 1);
  const auto as_words = [&] {
    words result(of_words.size());
    for (std::size_t i = 0; i < result.size(); ++i)
      result[i] = static_cast<std::uint16_t>(of_bytes[2 * i + 1] + 256 * of_bytes[2 * i + 2]);
    return result;
  };
  fc::cb_cr_8_420::cbcr_16_422(source.data(), 41, cr, 41, of_words.data(), 164, 41, 1);
  fc::cb_cr_8_420::cbcr_16_422(source.data(), 41, cr, 41, of_bytes.data() + 1, 164, 41, 1);
  EXPECT_EQ(as_words(), of_words);
  fc::cbcr_8_420::cbcr_16_422(source.data(), 82, of_words.data(), 164, 82, 1);
  fc::cbcr_8_420::cbcr_16_422(source.data(), 82, of_bytes.data() + 1, 164, 82, 1);
  EXPECT_EQ(as_words(), of_words);
}

// Luma and alpha side by side.

struct ya_uv_words {
  words ya, cbcr;

  bool operator==(const ya_uv_words&) const = default;
};

// Two rows of two pixels, in chroma rows of three words; the strides of chroma are given in bytes.
ya_uv_words beside(int src_cbcr_stride, int dst_cbcr_stride) {
  ya_uv_words result{words(8, 77), words(12, 77)};
  fc::pa16::ya_uv(words{1, 2, 3, 4}.data(), 4, words{11, 12, 13, 14, 15, 16, 17, 18, 19, 20}.data(), src_cbcr_stride,
                  words{5, 6, 7, 8}.data(), 4, result.ya.data(), 8, result.cbcr.data(), dst_cbcr_stride, 2, 2);
  return result;
}

const words ya_of_beside = {1, 5, 2, 6, 3, 7, 4, 8};

TEST_P(chroma_example, ya_uv_with_equal_strides_of_chroma_copies_the_padding) {
  EXPECT_EQ(beside(4, 4), (ya_uv_words{ya_of_beside, {11, 12, 13, 14, 77, 77, 77, 77, 77, 77, 77, 77}}));
  EXPECT_EQ(beside(6, 6), (ya_uv_words{ya_of_beside, {11, 12, 13, 14, 15, 16, 77, 77, 77, 77, 77, 77}}));
}

TEST_P(chroma_example, ya_uv_with_a_wider_destination_of_chroma_copies_rows_alone) {
  EXPECT_EQ(beside(6, 10), (ya_uv_words{ya_of_beside, {11, 12, 77, 77, 77, 14, 15, 77, 77, 77, 77, 77}}));
}

TEST_P(chroma_example, ya_uv_with_a_narrower_destination_of_chroma_leaves_it_alone) {
  EXPECT_EQ(beside(6, 4), (ya_uv_words{ya_of_beside, words(12, 77)}));
}

TEST_P(chroma_example, ya_uv_compares_strides_of_chroma_with_their_sign) {
  const words y = {1, 2}, a = {5, 6}, cbcr = {11, 12};
  for (const auto& [src_stride, dst_stride, copied] : {std::tuple{-4, 4, true}, {4, -4, false}, {-4, -4, false}}) {
    words ya(4), to_cbcr(2, 77);
    fc::pa16::ya_uv(y.data(), 4, cbcr.data(), src_stride, a.data(), 4, ya.data(), 8, to_cbcr.data(), dst_stride, 2, 1);
    EXPECT_EQ(ya, (words{1, 5, 2, 6}));
    EXPECT_EQ(to_cbcr, copied ? cbcr : words(2, 77)) << src_stride << " " << dst_stride;
  }
}

TEST_P(chroma_example, ya_uv_of_three_pixels_writes_six_words_of_luma_and_alpha) {
  words ya(8, 77), cbcr(4, 77);
  fc::pa16::ya_uv(words{1, 2, 3}.data(), 6, words{11, 12, 13}.data(), 6, words{5, 6, 7}.data(), 6, ya.data(), 16,
                  cbcr.data(), 6, 3, 1);
  EXPECT_EQ(ya, (words{1, 5, 2, 6, 3, 7, 77, 77}));
  EXPECT_EQ(cbcr, (words{11, 12, 13, 77}));
}

}  // namespace
}  // namespace morvane::tests
