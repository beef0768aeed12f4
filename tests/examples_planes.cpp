// Single statements about planes of luma, chroma, R, G and B, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

using namespace Processing::Morvane;
namespace fc = Processing::Morvane::format_conversion;

using words = std::vector<std::uint16_t>;

class plane_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, plane_example, all_backends(), backend_name);

constexpr std::pair<int, int> key_examples[] = {{0, 0},     {16, 0},    {17, 0},    {18, 1},    {100, 97},
                                                {128, 130}, {233, 253}, {234, 255}, {235, 255}, {255, 255}};

// A pair whose two pixels have the same luma, and neutral chroma.
bytes grey_pair(int luma) {
  const auto y = static_cast<std::uint8_t>(luma);
  return {128, y, 128, y};
}

// uyvy to planes.

TEST_P(plane_example, a_pair_is_split_into_luma_and_chroma) {
  const bytes source = {128, 16, 128, 235};
  bytes y(2);
  bytes cbcr(2);
  fc::uyvy::y_uv_422(source.data(), 4, y.data(), 2, cbcr.data(), 2, 2, 1);
  EXPECT_EQ(y, (bytes{16, 235}));
  EXPECT_EQ(cbcr, (bytes{128, 128}));
}

TEST_P(plane_example, y_uv_420_of_three_rows_has_the_chroma_of_rows_0_and_2) {
  const bytes source = {1, 10, 2, 11, 3, 12, 4, 13, 5, 14, 6, 15};
  bytes y(6);
  bytes cbcr = filled(6, 77);
  fc::uyvy::y_uv_420(source.data(), 4, y.data(), 2, cbcr.data(), 2, 2, 3);
  EXPECT_EQ(y, (bytes{10, 11, 12, 13, 14, 15}));
  EXPECT_EQ(cbcr, (bytes{1, 2, 5, 6, 77, 77}));
}

TEST_P(plane_example, y_u_v_420_of_three_rows_has_the_chroma_of_rows_0_and_2) {
  const bytes source = {1, 10, 2, 11, 3, 12, 4, 13, 5, 14, 6, 15};
  bytes y(6);
  bytes cb = filled(3, 77);
  bytes cr = filled(3, 77);
  fc::uyvy::y_u_v_420(source.data(), 4, y.data(), 2, cb.data(), 1, cr.data(), 1, 2, 3);
  EXPECT_EQ(y, (bytes{10, 11, 12, 13, 14, 15}));
  EXPECT_EQ(cb, (bytes{1, 5, 77}));
  EXPECT_EQ(cr, (bytes{2, 6, 77}));
}

TEST_P(plane_example, no_rows_of_420_write_nothing) {
  const bytes source = counted(64);
  for (const int yres : {0, -1, -4}) {
    bytes plane = filled(64, 77);
    fc::uyvy::y_uv_420(source.data(), 8, plane.data(), 4, plane.data(), 4, 4, yres);
    fc::uyvy::y_u_v_420(source.data(), 8, plane.data(), 4, plane.data(), 2, plane.data(), 2, 4, yres);
    EXPECT_EQ(plane, filled(64, 77));
  }
}

TEST_P(plane_example, the_fifth_of_five_pixels_is_not_split) {
  const bytes source = counted(12 * 3);
  bytes y = filled(8 * 3, 77);
  bytes cb = filled(4 * 3, 77);
  bytes cr = filled(4 * 3, 77);
  fc::uyvy::y_u_v_422(source.data(), 12, y.data(), 8, cb.data(), 4, cr.data(), 4, 5, 3);
  for (std::size_t row = 0; row < 3; ++row) {
    const bytes s = part(source, 12 * row, 12);
    EXPECT_EQ(part(y, 8 * row, 8), (bytes{s[1], s[3], s[5], s[7], 77, 77, 77, 77}));
    EXPECT_EQ(part(cb, 4 * row, 4), (bytes{s[0], s[4], 77, 77}));
    EXPECT_EQ(part(cr, 4 * row, 4), (bytes{s[2], s[6], 77, 77}));
  }
}

// Three pixels and two rows in tight planes are one line of three pairs; with other strides each row has one pair.
TEST_P(plane_example, y_u_v_422_is_one_line_when_chroma_strides_are_half_that_of_luma) {
  const bytes source = counted(12);
  bytes y(6), cb = filled(6, 77), cr = filled(6, 77);
  fc::uyvy::y_u_v_422(source.data(), 6, y.data(), 3, cb.data(), 1, cr.data(), 1, 3, 2);
  EXPECT_EQ(y, (bytes{source[1], source[3], source[5], source[7], source[9], source[11]}));
  EXPECT_EQ(part(cb, 0, 4), (bytes{source[0], source[4], source[8], 77}));
  EXPECT_EQ(part(cr, 0, 4), (bytes{source[2], source[6], source[10], 77}));

  y = filled(6, 77);
  cb = cr = filled(6, 77);
  fc::uyvy::y_u_v_422(source.data(), 6, y.data(), 3, cb.data(), 1, cr.data(), 2, 3, 2);
  EXPECT_EQ(y, (bytes{source[1], source[3], 77, source[7], source[9], 77}));
  EXPECT_EQ(part(cb, 0, 3), (bytes{source[0], source[6], 77}));
  EXPECT_EQ(part(cr, 0, 4), (bytes{source[2], 77, source[8], 77}));
}

TEST_P(plane_example, key_luma_is_stretched_to_full_range) {
  for (const auto& [luma, key] : key_examples) {
    const bytes source = repeated(grey_pair(luma), 40);
    bytes y(80);
    fc::uyvy::y(source.data(), 160, y.data(), 80, 80, 1, true);
    EXPECT_EQ(y, filled(80, static_cast<std::uint8_t>(key))) << luma;
    fc::uyvy::y(source.data(), 160, y.data(), 80, 80, 1, false);
    EXPECT_EQ(y, filled(80, static_cast<std::uint8_t>(luma)));
  }
}

TEST_P(plane_example, luma_of_three_pixels_writes_four_bytes_in_each_row) {
  const bytes source = counted(2 * 10);
  bytes y = filled(12, 77);
  fc::uyvy::y(source.data(), 10, y.data(), 6, 3, 2, false);
  EXPECT_EQ(y, (bytes{source[1], source[3], source[5], source[7], 77, 77, source[11], source[13], source[15],
                      source[17], 77, 77}));
}

TEST_P(plane_example, a_pair_becomes_two_pixels_of_ycbcrx_with_its_chroma) {
  EXPECT_EQ(convert_row(&fc::uyvy::ycbcrx, {100, 50, 200, 60}, 2, 8), (bytes{50, 100, 200, 255, 60, 100, 200, 255}));
}

TEST_P(plane_example, three_pixels_of_ycbcrx_write_a_fourth) {
  const bytes result = convert_row(&fc::uyvy::ycbcrx, {1, 2, 3, 4, 5, 6, 7, 8}, 3, 20);
  EXPECT_EQ(part(result, 8, 12), (bytes{6, 5, 7, 255, 8, 5, 7, 255, 77, 77, 77, 77}));
}

// Luma alone.

TEST_P(plane_example, luma_in_16_bits_is_256_times_itself) {
  const bytes source = counted(100);
  words result(100);
  fc::y::y16(source.data(), 20, result.data(), 40, 20, 5);
  for (std::size_t i = 0; i < 100; ++i) EXPECT_EQ(result[i], source[i] * 256);
}

TEST_P(plane_example, luma_becomes_grey_video) {
  for (const auto& [luma, video] : {std::pair{0, 16}, {128, 126}, {255, 235}}) {
    const bytes source = filled(75, static_cast<std::uint8_t>(luma));
    bytes result = filled(152, 77);
    fc::y::uyvy(source.data(), 75, result.data(), 150, 75, 1, true);
    EXPECT_EQ(part(result, 0, 150), repeated({128, static_cast<std::uint8_t>(video)}, 75));
    fc::y::uyvy(source.data(), 75, result.data(), 150, 75, 1, false);
    EXPECT_EQ(part(result, 0, 150), repeated({128, static_cast<std::uint8_t>(luma)}, 75));
    EXPECT_EQ(part(result, 150, 2), filled(2, 77));
  }
}

TEST_P(plane_example, key_luma_of_16_bits_is_stretched_to_full_range) {
  for (const auto& [luma, key] : {std::pair{0, 0},
                                  {4095, 0},
                                  {4096, 0},
                                  {4097, 1},
                                  {32768, 33516},
                                  {60159, 65534},
                                  {60160, 65535},
                                  {65535, 65535}}) {
    const words source(70, static_cast<std::uint16_t>(luma));
    words result(70);
    fc::y16::y16(source.data(), 28, result.data(), 28, 14, 5, true);
    EXPECT_EQ(result, words(70, static_cast<std::uint16_t>(key))) << luma;
    fc::y16::y16(source.data(), 28, result.data(), 28, 14, 5, false);
    EXPECT_EQ(result, source);
  }
}

// Chroma of 4:2:0.

TEST_P(plane_example, a_copy_of_y_uv_with_three_rows_copies_one_row_of_chroma) {
  const bytes y = counted(4 * 3);
  const bytes cbcr = counted(4 * 2, 11);
  bytes to_y(12);
  bytes to_cbcr = filled(8, 77);
  fc::y_uv::y_uv(y.data(), 4, cbcr.data(), 4, to_y.data(), 4, to_cbcr.data(), 4, 4, 3);
  EXPECT_EQ(to_y, y);
  EXPECT_EQ(to_cbcr, joined(part(cbcr, 0, 4), filled(4, 77)));
}

TEST_P(plane_example, a_copy_of_y_uv_copies_whole_pairs_of_chroma) {
  const bytes source = counted(5 * 4);
  bytes y(20);
  bytes cbcr = filled(10, 77);
  fc::y_uv::y_uv(source.data(), 5, source.data(), 5, y.data(), 5, cbcr.data(), 5, 5, 4);
  EXPECT_EQ(cbcr,
            (bytes{source[0], source[1], source[2], source[3], 77, source[5], source[6], source[7], source[8], 77}));
}

TEST_P(plane_example, y_uv_to422_repeats_rows_and_leaves_the_last_of_an_odd_height) {
  const bytes y = counted(4 * 5);
  const bytes cbcr = counted(4 * 3, 11);
  bytes to_y(20);
  bytes to_cbcr = filled(20, 77);
  fc::y_uv::y_uv_to422(y.data(), 4, cbcr.data(), 4, to_y.data(), 4, to_cbcr.data(), 4, 4, 5);
  EXPECT_EQ(to_y, y);
  const bytes first = part(cbcr, 0, 4);
  const bytes second = part(cbcr, 4, 4);
  EXPECT_EQ(to_cbcr, joined(joined(joined(first, first), joined(second, second)), filled(4, 77)));
}

TEST_P(plane_example, y_u_v_to_y_uv_interleaves_chroma) {
  const bytes y = counted(8);
  bytes to_y(8);
  bytes to_cbcr(4);
  fc::y_u_v::y_uv(y.data(), 4, bytes{1, 2}.data(), 2, bytes{3, 4}.data(), 2, to_y.data(), 4, to_cbcr.data(), 4, 4, 2);
  EXPECT_EQ(to_y, y);
  EXPECT_EQ(to_cbcr, (bytes{1, 3, 2, 4}));
}

// Five pixels a row are two chroma pairs; in one pass the pairs of all rows follow each other.
TEST_P(plane_example, y_u_v_to_y_uv_of_odd_width_in_one_pass_leaves_no_gaps) {
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

TEST_P(plane_example, y_u_v_to422_of_five_rows_writes_four_rows_of_chroma) {
  const bytes y = counted(2 * 5);
  bytes to_y(10);
  bytes to_cbcr = filled(10, 77);
  fc::y_u_v::y_uv_to422(y.data(), 2, bytes{1, 2, 3}.data(), 1, bytes{4, 5, 6}.data(), 1, to_y.data(), 2, to_cbcr.data(),
                        2, 2, 5);
  EXPECT_EQ(to_y, y);
  EXPECT_EQ(to_cbcr, (bytes{1, 4, 1, 4, 2, 5, 2, 5, 77, 77}));
}

TEST_P(plane_example, one_row_or_one_pixel_has_luma_but_no_chroma) {
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

TEST_P(plane_example, one_sample_of_cb_and_cr_becomes_two_rows_of_words) {
  words result(4);
  fc::cb_cr_8_420::cbcr_16_422(bytes{10}.data(), 1, bytes{20}.data(), 1, result.data(), 4, 1, 1);
  EXPECT_EQ(result, (words{2560, 5120, 2560, 5120}));
}

TEST_P(plane_example, words_of_chroma_are_interleaved_unchanged) {
  words result(8);
  fc::cb_cr_16_422::cbcr_16_422(words{1, 2, 3, 4}.data(), 4, words{500, 600, 700, 800}.data(), 4, result.data(), 8, 2,
                                2);
  EXPECT_EQ(result, (words{1, 500, 2, 600, 3, 700, 4, 800}));
}

TEST_P(plane_example, a_row_of_three_bytes_of_chroma_is_two_pairs) {
  words result(8);
  fc::cbcr_8_420::cbcr_16_422(bytes{1, 2, 3, 4}.data(), 3, result.data(), 8, 3, 1);
  EXPECT_EQ(result, (words{256, 512, 768, 1024, 256, 512, 768, 1024}));
}

// With rows closer than their last, completed pair, what the later row writes counts.
TEST_P(plane_example, a_completed_pair_lies_under_the_next_row) {
  bytes result = filled(8, 77);
  fc::cbcr_8_420::cbcr_16_422(bytes{1, 2}.data(), 1, result.data(), 2, 1, 1);
  EXPECT_EQ(result, (bytes{0, 1, 0, 1, 0, 2, 77, 77}));
}

TEST_P(plane_example, chroma_without_samples_or_rows_writes_nothing) {
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

TEST_P(plane_example, words_can_be_given_as_bytes_of_any_address) {
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

// Planar RGB and luminance.

using planar = void(const std::uint8_t*, int, std::uint8_t*, std::uint8_t*, std::uint8_t*, int, int, int);

TEST_P(plane_example, black_and_white_video_in_planes) {
  for (const auto& [luma, level] : {std::pair{16, 0}, {235, 253}})
    for (planar* convert : {&fc::uyvy::r_g_b_601, &fc::uyvy::r_g_b_709}) {
      const bytes source = repeated(grey_pair(luma), 35);
      bytes r(70), g(70), b(70);
      convert(source.data(), 140, r.data(), g.data(), b.data(), 70, 70, 1);
      for (const bytes& plane : {r, g, b}) EXPECT_EQ(plane, filled(70, static_cast<std::uint8_t>(level)));
    }
}

TEST_P(plane_example, a_last_odd_pixel_is_left_out_of_all_planes) {
  const bytes source = counted(12);
  bytes r = filled(8, 77), g = r, b = r;
  fc::uyvy::r_g_b_709(source.data(), 6, r.data(), g.data(), b.data(), 4, 3, 2);
  for (const bytes& plane : {r, g, b})
    for (const std::size_t i : {2U, 3U, 6U, 7U}) EXPECT_EQ(plane[i], 77);
}

TEST_P(plane_example, one_pixel_a_row_is_one_line_when_the_planes_are_tight) {
  const bytes source = {128, 235, 128, 16};
  bytes r = filled(2, 77), g = r, b = r;
  fc::uyvy::r_g_b_709(source.data(), 2, r.data(), g.data(), b.data(), 1, 1, 2);
  EXPECT_EQ(r, (bytes{253, 0}));
  r = g = b = filled(4, 77);
  fc::uyvy::r_g_b_709(source.data(), 2, r.data(), g.data(), b.data(), 2, 1, 2);
  EXPECT_EQ(r, filled(4, 77));
}

TEST_P(plane_example, planar_rgb_takes_every_color_space_but_601_for_709) {
  const bytes source = counted(64);
  const auto of = [&](int color_space) {
    bytes planes(96);
    fc::uyvy::r_g_b(source.data(), 64, planes.data(), planes.data() + 32, planes.data() + 64, 32, 32, 1,
                    static_cast<e_ycbcr_color_space>(color_space));
    return planes;
  };
  bytes bt601(96), bt709(96);
  fc::uyvy::r_g_b_601(source.data(), 64, bt601.data(), bt601.data() + 32, bt601.data() + 64, 32, 32, 1);
  fc::uyvy::r_g_b_709(source.data(), 64, bt709.data(), bt709.data() + 32, bt709.data() + 64, 32, 32, 1);
  EXPECT_NE(bt601, bt709);
  EXPECT_EQ(of(601), bt601);
  for (const int color_space : {709, 0, 2020}) EXPECT_EQ(of(color_space), bt709);
}

TEST_P(plane_example, luminance_becomes_opaque_grey) {
  EXPECT_EQ(convert_row(&fc::L::bgra, {0, 100, 255}, 3, 16),
            (bytes{0, 0, 0, 255, 100, 100, 100, 255, 255, 255, 255, 255, 77, 77, 77, 77}));
}

}  // namespace
}  // namespace morvane::tests
