// Single statements about 16 bits, 10 bits, floats and depths, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "catalogue/conversions.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

using words = std::vector<std::uint16_t>;
using floats = std::vector<float>;

class word_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, word_example, all_backends(), backend_name);

// Enough pixels for the vectors of every backend, and some more.
constexpr std::size_t many = 70;
constexpr int row_of_many = static_cast<int>(2 * many);  // the bytes of a word for each of them

template <class Sample>
std::vector<Sample> repeated_samples(const std::vector<Sample>& unit, std::size_t count) {
  std::vector<Sample> result(unit.size() * count);
  for (std::size_t i = 0; i < result.size(); ++i) result[i] = unit[i % unit.size()];
  return result;
}

words repeated_words(const words& unit, std::size_t count) {
  return repeated_samples(unit, count);
}

words counted_words(std::size_t size, unsigned step = 9973) {
  words result(size);
  for (std::size_t i = 0; i < size; ++i) result[i] = static_cast<std::uint16_t>(i * step + 12345);
  return result;
}

using tests::part;

words part(const words& from, std::size_t first, std::size_t size) {
  const auto begin = from.begin() + static_cast<std::ptrdiff_t>(first);
  return {begin, begin + static_cast<std::ptrdiff_t>(size)};
}

words masked(words of, unsigned mask) {
  for (std::uint16_t& w : of) w = static_cast<std::uint16_t>(w & mask);
  return of;
}

words times_256(const bytes& of) {
  words result;
  for (const std::uint8_t b : of) result.push_back(static_cast<std::uint16_t>(b * 256));
  return result;
}

// The same memory as bytes: what the functions take that have byte pointers alone.
const std::uint8_t* as_bytes(const words& w) {
  return reinterpret_cast<const std::uint8_t*>(w.data());
}

std::uint8_t* as_bytes(words& w) {
  return reinterpret_cast<std::uint8_t*>(w.data());
}

struct p216_picture {
  words y, cbcr;

  explicit p216_picture(std::size_t pixels = many) : y(pixels), cbcr(pixels) {}
  p216_picture(words luma, words chroma) : y(std::move(luma)), cbcr(std::move(chroma)) {}
  bool operator==(const p216_picture&) const = default;
};

p216_picture repeated_pair(const words& y, const words& cbcr) {
  return {repeated_words(y, many / 2), repeated_words(cbcr, many / 2)};
}

// 8 bits to 16.

TEST_P(word_example, video_in_16_bits_is_256_times_itself) {
  const bytes source = repeated({100, 16, 200, 235}, many / 2);
  p216_picture result;
  fc::uyvy::p216(source.data(), row_of_many, result.y.data(), row_of_many, result.cbcr.data(), row_of_many, many, 1);
  EXPECT_EQ(result, repeated_pair({4096, 60160}, {25600, 51200}));
}

TEST_P(word_example, three_pixels_of_uyvy_write_a_fourth) {
  words y(6, 77), cbcr(6, 77);
  fc::uyvy::p216(bytes{1, 2, 3, 4, 5, 6, 7, 8}.data(), 8, y.data(), 12, cbcr.data(), 12, 3, 1);
  EXPECT_EQ(y, (words{512, 1024, 1536, 2048, 77, 77}));
  EXPECT_EQ(cbcr, (words{256, 768, 1280, 1792, 77, 77}));
}

TEST_P(word_example, y_uv_in_16_bits_repeats_every_row_of_chroma) {
  const bytes y = counted(4 * 4);
  p216_picture result(16);
  fc::y_uv::p216(y.data(), 4, bytes{1, 2, 3, 4, 5, 6, 7, 8}.data(), 4, result.y.data(), 8, result.cbcr.data(), 8, 4, 4);
  EXPECT_EQ(result.y, times_256(y));
  EXPECT_EQ(result.cbcr, times_256({1, 2, 3, 4, 1, 2, 3, 4, 5, 6, 7, 8, 5, 6, 7, 8}));
}

TEST_P(word_example, y_uv_of_three_rows_reads_two_and_writes_four_rows_of_chroma) {
  const bytes y = counted(2 * 3);
  words to_y(8, 77), to_cbcr(10, 77);
  fc::y_uv::p216(y.data(), 2, bytes{1, 2, 3, 4}.data(), 2, to_y.data(), 4, to_cbcr.data(), 4, 2, 3);
  EXPECT_EQ(part(to_y, 0, 6), times_256(y));
  EXPECT_EQ(part(to_y, 6, 2), words(2, 77));
  EXPECT_EQ(to_cbcr, (words{256, 512, 256, 512, 768, 1024, 768, 1024, 77, 77}));
}

TEST_P(word_example, y_uv_of_three_pixels_converts_three_bytes_of_chroma_in_each_row) {
  const bytes y = counted(3 * 2);
  words to_y(6), to_cbcr(8, 77);
  fc::y_uv::p216(y.data(), 3, bytes{1, 2, 3}.data(), 3, to_y.data(), 6, to_cbcr.data(), 8, 3, 2);
  EXPECT_EQ(to_y, times_256(y));
  EXPECT_EQ(to_cbcr, (words{256, 512, 768, 77, 256, 512, 768, 77}));
}

TEST_P(word_example, alpha_in_16_bits_repeats_its_byte_and_chroma_is_that_of_the_even_pixel) {
  const bytes source = repeated({10, 20, 30, 255, 40, 50, 60, 1}, many / 2);
  p216_picture result;
  words alpha(many);
  bool opaque = true;
  fc::ycbcra::pa16(source.data(), 4 * many, result.y.data(), row_of_many, result.cbcr.data(), row_of_many, alpha.data(),
                   row_of_many, many, 1, &opaque);
  EXPECT_EQ(result, repeated_pair({2560, 10240}, {5120, 7680}));
  EXPECT_EQ(alpha, repeated_words({65535, 257}, many / 2));
  EXPECT_FALSE(opaque);
}

struct keyed_words {
  words y, cbcr, alpha;
  bool opaque = false;

  bool operator==(const keyed_words&) const = default;
};

keyed_words convert_keyed(const bytes& ycbcra, int stride, int xres, int yres, bool asks = true) {
  keyed_words result{words(128, 77), words(128, 77), words(128, 77)};
  fc::ycbcra::pa16(ycbcra.data(), stride, result.y.data(), 80, result.cbcr.data(), 80, result.alpha.data(), 80, xres,
                   yres, asks ? &result.opaque : nullptr);
  return result;
}

TEST_P(word_example, a_single_alpha_of_254_is_reported_wherever_it_is) {
  bytes source = counted(4 * 3 * 40);
  for (std::size_t pixel = 0; pixel < 3 * 40; ++pixel) source[4 * pixel + 3] = 255;
  EXPECT_TRUE(convert_keyed(source, 160, 40, 3).opaque);
  for (std::size_t pixel = 0; pixel < 3 * 40; ++pixel) {
    source[4 * pixel + 3] = 254;
    keyed_words result = convert_keyed(source, 160, 40, 3);
    EXPECT_FALSE(result.opaque) << pixel;
    EXPECT_EQ(result.alpha[pixel], 254 * 257);
    EXPECT_EQ(result, convert_keyed(source, 160, 40, 3, false));
    source[4 * pixel + 3] = 255;
  }
}

TEST_P(word_example, the_completed_pixel_counts_for_the_report) {
  bytes source = filled(4 * 4, 255);
  EXPECT_TRUE(convert_keyed(source, 16, 3, 1).opaque);
  source[15] = 254;
  EXPECT_FALSE(convert_keyed(source, 16, 3, 1).opaque);
}

TEST_P(word_example, no_rows_or_pixels_are_opaque) {
  for (const auto& [xres, yres] : {std::pair{4, 0}, {4, -1}, {0, 4}, {-3, 4}, {-2, -2}}) {
    keyed_words nothing{words(128, 77), words(128, 77), words(128, 77), true};
    EXPECT_EQ(convert_keyed(bytes(64), 16, xres, yres), nothing);
    bytes written = filled(64, 77);
    bool opaque = false;
    fc::ycbcra::pa16(bytes(64).data(), 16, written.data(), 8, written.data(), 8, written.data(), 8, xres, yres,
                     &opaque);
    EXPECT_TRUE(opaque);
    EXPECT_EQ(written, filled(64, 77));
  }
}

// 16 bits to 8.

TEST_P(word_example, words_become_their_upper_bytes) {
  const p216_picture source = repeated_pair({60415, 60160}, {25600, 51455});
  bytes result(2 * many);
  fc::p216::uyvy(source.y.data(), row_of_many, source.cbcr.data(), row_of_many, result.data(), row_of_many, many, 1);
  EXPECT_EQ(result, repeated({100, 235, 200, 235}, many / 2));
}

TEST_P(word_example, three_pixels_of_p216_write_six_bytes) {
  bytes result = filled(8, 77);
  fc::p216::uyvy(words{256, 512, 768, 1024}.data(), 8, words{1280, 1536, 1792, 2048}.data(), 8, result.data(), 8, 3, 1);
  EXPECT_EQ(result, (bytes{5, 1, 6, 2, 7, 3, 77, 77}));
}

TEST_P(word_example, uyvy_comes_back_from_16_bits) {
  const bytes source = counted(2 * many);
  p216_picture wide;
  bytes result(2 * many);
  fc::uyvy::p216(source.data(), row_of_many, wide.y.data(), row_of_many, wide.cbcr.data(), row_of_many, many, 1);
  fc::p216::uyvy(wide.y.data(), row_of_many, wide.cbcr.data(), row_of_many, result.data(), row_of_many, many, 1);
  EXPECT_EQ(result, source);
}

// p216 to p010.

TEST_P(word_example, p010_takes_chroma_of_rows_0_and_2) {
  const p216_picture source(counted_words(2 * 4), {1, 2, 3, 4, 5, 6, 7, 8});
  p216_picture result(words(8), words(8, 77));
  fc::p216::p010(source.y.data(), 4, source.cbcr.data(), 4, result.y.data(), 4, result.cbcr.data(), 4, 2, 4);
  EXPECT_EQ(result.y, source.y);
  EXPECT_EQ(result.cbcr, (words{1, 2, 5, 6, 77, 77, 77, 77}));
}

TEST_P(word_example, p010_keeps_the_low_bits_and_the_padding) {
  const words source = {0x1234, 0xffff, 0, 0x8001, 1, 2};
  p216_picture result(words(12, 77), words(6, 77));
  fc::p216::p010(source.data(), 6, source.data(), 6, result.y.data(), 10, result.cbcr.data(), 10, 3, 2);
  EXPECT_EQ(result.y, (words{0x1234, 0xffff, 0, 77, 77, 0x8001, 1, 2, 77, 77, 77, 77}));
  EXPECT_EQ(result.cbcr, (words{0x1234, 0xffff, 0, 77, 77, 77}));
}

TEST_P(word_example, p010_of_an_odd_height_stops_after_half_of_its_rows) {
  const words source = counted_words(2 * 5);
  for (const int yres : {1, 3, 5}) {
    const auto rows = static_cast<std::size_t>(yres);
    p216_picture result(words(10, 77), words(10, 77));
    fc::p216::p010(source.data(), 4, source.data(), 4, result.y.data(), 4, result.cbcr.data(), 4, 2, yres);
    words y(10, 77), cbcr(10, 77);
    for (std::size_t i = 0; i < 2 * rows; ++i) y[i] = source[i];
    for (std::size_t i = 0; i < rows / 2 * 2; ++i) cbcr[i] = source[i / 2 * 4 + i % 2];
    EXPECT_EQ(result, p216_picture(y, cbcr)) << yres;
  }
}

// BT.2020.

void expect_rgb_of_2020(const words& y, const words& cbcr, const bytes& wanted) {
  const p216_picture source = repeated_pair(y, cbcr);
  bytes result(4 * many);
  fc::p216::rgbx_2020(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, result.data(), 4 * many,
                      many, 1);
  EXPECT_EQ(result, repeated(wanted, many / 2));
}

TEST_P(word_example, white_and_black_of_2020_whatever_the_low_bytes) {
  for (const unsigned low : {0U, 1U, 0x80U, 0xffU}) {
    const auto white = static_cast<std::uint16_t>(0xeb00 + low);
    const auto black = static_cast<std::uint16_t>(0x1000 + low);
    const auto neutral = static_cast<std::uint16_t>(0x8000 + low);
    expect_rgb_of_2020({white, black}, {neutral, neutral}, {253, 253, 253, 255, 0, 0, 0, 255});
  }
}

// y = 74 * 126 - 1192 = 8132 for the first pixel and 74 * 64 - 1192 = 3544 for the second; u = 16 and v = -16.
TEST_P(word_example, colors_of_2020) {
  const bytes wanted = {
      (8132 - 107 * 16) / 64, (8132 - 12 * 16 + 42 * 16) / 64, (8132 + 137 * 16) / 64, 255,
      (3544 - 107 * 16) / 64, (3544 - 12 * 16 + 42 * 16) / 64, (3544 + 137 * 16) / 64, 255,
  };
  EXPECT_EQ(wanted, (bytes{100, 134, 161, 255, 28, 62, 89, 255}));
  expect_rgb_of_2020({126 * 256, 64 * 256}, {144 * 256, 112 * 256}, wanted);
}

TEST_P(word_example, extremes_of_2020_are_clamped) {
  expect_rgb_of_2020({0xffff, 0}, {0xffff, 0xffff}, {255, 169, 255, 255, 193, 0, 253, 255});
  expect_rgb_of_2020({0xffff, 0}, {0, 0}, {62, 255, 2, 255, 0, 89, 0, 255});
}

TEST_P(word_example, a_last_odd_pixel_is_left_out_of_2020) {
  const words grey(16, 0x8000);
  bytes result = filled(32, 77);
  fc::p216::rgbx_2020(as_bytes(grey), 8, as_bytes(grey), 8, result.data(), 16, 3, 2);
  for (const std::size_t row : {0U, 1U}) {
    EXPECT_EQ(part(result, 16 * row, 8), repeated({129, 129, 129, 255}, 2));
    EXPECT_EQ(part(result, 16 * row + 8, 8), filled(8, 77));
  }
  result = filled(8, 77);
  fc::p216::rgbx_2020(as_bytes(grey), 2, as_bytes(grey), 2, result.data(), 4, 1, 2);
  EXPECT_EQ(result, filled(8, 77));
}

// Compositing 16 bits over black.

p216_picture over_black(const p216_picture& source, const words& alpha) {
  p216_picture result;
  fc::pa16::p216(source.y.data(), row_of_many, source.cbcr.data(), row_of_many, alpha.data(), row_of_many,
                 as_bytes(result.y), row_of_many, as_bytes(result.cbcr), row_of_many, many, 1);
  return result;
}

TEST_P(word_example, full_alpha_leaves_words_unchanged) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  EXPECT_EQ(over_black(source, words(many, 65535)), source);
}

TEST_P(word_example, no_alpha_gives_black_or_nearly) {
  EXPECT_EQ(over_black(repeated_pair({60160, 4096}, {61440, 32768}), words(many, 0)),
            repeated_pair({4096, 4096}, {32768, 32768}));
  EXPECT_EQ(over_black(repeated_pair({4095, 0}, {32767, 0}), words(many, 0)),
            repeated_pair({4095, 4095}, {32767, 32767}));
}

TEST_P(word_example, half_alpha_halves_the_distance_to_black) {
  EXPECT_EQ(over_black(repeated_pair({60160, 2096}, {61440, 4096}), words(many, 32767)),
            repeated_pair({32128, 3096}, {47104, 18432}));
}

TEST_P(word_example, both_cb_and_cr_follow_the_first_alpha) {
  const p216_picture source = repeated_pair({60160, 60160}, {61440, 4096});
  EXPECT_EQ(over_black(source, repeated_words({65535, 0}, many / 2)), repeated_pair({60160, 4096}, {61440, 4096}));
  EXPECT_EQ(over_black(source, repeated_words({0, 65535}, many / 2)), repeated_pair({4096, 60160}, {32768, 32767}));
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

TEST_P(word_example, ya_uv_with_equal_strides_of_chroma_copies_the_padding) {
  EXPECT_EQ(beside(4, 4), (ya_uv_words{ya_of_beside, {11, 12, 13, 14, 77, 77, 77, 77, 77, 77, 77, 77}}));
  EXPECT_EQ(beside(6, 6), (ya_uv_words{ya_of_beside, {11, 12, 13, 14, 15, 16, 77, 77, 77, 77, 77, 77}}));
}

TEST_P(word_example, ya_uv_with_a_wider_destination_of_chroma_copies_rows_alone) {
  EXPECT_EQ(beside(6, 10), (ya_uv_words{ya_of_beside, {11, 12, 77, 77, 77, 14, 15, 77, 77, 77, 77, 77}}));
}

TEST_P(word_example, ya_uv_with_a_narrower_destination_of_chroma_leaves_it_alone) {
  EXPECT_EQ(beside(6, 4), (ya_uv_words{ya_of_beside, words(12, 77)}));
}

TEST_P(word_example, ya_uv_compares_strides_of_chroma_with_their_sign) {
  const words y = {1, 2}, a = {5, 6}, cbcr = {11, 12};
  for (const auto& [src_stride, dst_stride, copied] : {std::tuple{-4, 4, true}, {4, -4, false}, {-4, -4, false}}) {
    words ya(4), to_cbcr(2, 77);
    fc::pa16::ya_uv(y.data(), 4, cbcr.data(), src_stride, a.data(), 4, ya.data(), 8, to_cbcr.data(), dst_stride, 2, 1);
    EXPECT_EQ(ya, (words{1, 5, 2, 6}));
    EXPECT_EQ(to_cbcr, copied ? cbcr : words(2, 77)) << src_stride << " " << dst_stride;
  }
}

TEST_P(word_example, ya_uv_of_three_pixels_writes_six_words_of_luma_and_alpha) {
  words ya(8, 77), cbcr(4, 77);
  fc::pa16::ya_uv(words{1, 2, 3}.data(), 6, words{11, 12, 13}.data(), 6, words{5, 6, 7}.data(), 6, ya.data(), 16,
                  cbcr.data(), 6, 3, 1);
  EXPECT_EQ(ya, (words{1, 5, 2, 6, 3, 7, 77, 77}));
  EXPECT_EQ(cbcr, (words{11, 12, 13, 77}));
}

// 4:4:4 in words and floats.

TEST_P(word_example, vuya_16_has_cb_first) {
  const p216_picture source = repeated_pair({1, 2}, {3, 65534});
  words result(4 * many);
  fc::pa16::vuya_16(source.y.data(), row_of_many, source.cbcr.data(), row_of_many,
                    repeated_words({5, 6}, many / 2).data(), row_of_many, result.data(), 8 * many, many, 1);
  EXPECT_EQ(result, repeated_words({3, 65534, 1, 5, 3, 65534, 2, 6}, many / 2));
}

TEST_P(word_example, three_pixels_of_vuya_16_write_a_fourth) {
  const words source = {1, 2, 3, 4};
  words result(20, 77);
  fc::pa16::vuya_16(source.data(), 8, source.data(), 8, source.data(), 8, result.data(), 40, 3, 1);
  EXPECT_EQ(result, (words{1, 2, 1, 1, 1, 2, 2, 2, 3, 4, 3, 3, 3, 4, 4, 4, 77, 77, 77, 77}));
}

void expect_floats(const words& y, const words& cbcr, const words& alpha, const floats& wanted) {
  const p216_picture source = repeated_pair(y, cbcr);
  floats result(4 * many);
  fc::pa16::vuya_f32(source.y.data(), row_of_many, source.cbcr.data(), row_of_many,
                     repeated_words(alpha, many / 2).data(), row_of_many,
                     reinterpret_cast<std::uint8_t*>(result.data()), 16 * many, many, 1);
  EXPECT_EQ(result, repeated_samples(wanted, many / 2));
}

TEST_P(word_example, the_ends_of_video_range_are_the_ends_of_floats) {
  expect_floats({4096, 60160}, {4096, 32768}, {0, 65535}, {0.0F, -0.5F, 0, 0, 0.0F, -0.5F, 1, 1});
  expect_floats({4096, 60160}, {61440, 4096}, {0, 65535}, {-0.5F, 0.5F, 0, 0, -0.5F, 0.5F, 1, 1});
}

TEST_P(word_example, floats_are_clamped_beyond_video_range) {
  expect_floats({0, 65535}, {0, 65535}, {1, 65534}, {0.5F, -0.5F, 0, 1 / 65535.0F, 0.5F, -0.5F, 1, 65534 / 65535.0F});
  expect_floats({4095, 60161}, {4095, 61441}, {0, 65535}, {0.5F, -0.5F, 0, 0, 0.5F, -0.5F, 1, 1});
}

TEST_P(word_example, floats_between_have_cr_first) {
  expect_floats({32128, 18112}, {47104, 18432}, {13107, 52428},
                {-0.25F, 0.25F, 0.5F, 0.2F, -0.25F, 0.25F, 0.25F, 0.8F});
}

// A third in luma, and chroma whose quotient does not end either. Multiplying by a reciprocal rounds some of them
// otherwise.
TEST_P(word_example, floats_are_quotients) {
  for (int v = 0; v < 65536; v += 251) {
    const auto w = static_cast<std::uint16_t>(v);
    const float above_black = static_cast<float>(v < 4096 ? 0 : v - 4096);
    const float y = above_black / 56064.0F;
    const float c = above_black / 57344.0F - 0.5F;
    const float luma = y > 1 ? 1 : y;
    const float chroma = c > 0.5F ? 0.5F : c;
    const float alpha = static_cast<float>(v) / 65535.0F;
    expect_floats({w, w}, {w, w}, {w, w}, {chroma, chroma, luma, alpha, chroma, chroma, luma, alpha});
  }
}

// Sixteen pixels in forty bytes.

// The upper bytes are 0x12 0x34 0x56 0x78, the lower bits 1, 2, 3 and 0.
const words luma_of_pair = {0x1240, 0x56c0};
const words chroma_of_pair = {0x3480, 0x7800};
constexpr std::uint8_t lower_bits_of_pair = 1 | 2 << 2 | 3 << 4;

bytes packed(const p216_picture& source, int pixels, std::size_t size, std::uint8_t before = 77) {
  bytes result = filled(size, before);
  fc::p216::yuyv_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, result.data(),
                           static_cast<int>(size), pixels, 1);
  return result;
}

TEST_P(word_example, sixteen_pixels_are_forty_bytes) {
  const bytes result = packed(repeated_pair(luma_of_pair, chroma_of_pair), 16, 48);
  EXPECT_EQ(part(result, 0, 32), repeated({0x12, 0x34, 0x56, 0x78}, 8));
  EXPECT_EQ(part(result, 32, 8), filled(8, lower_bits_of_pair));
  EXPECT_EQ(part(result, 40, 8), filled(8, 77));
}

TEST_P(word_example, the_lowest_six_bits_are_dropped) {
  EXPECT_EQ(packed(repeated_pair({0x127f, 0x56ff}, {0x34bf, 0x783f}), 70, 200),
            packed(repeated_pair(luma_of_pair, chroma_of_pair), 70, 200));
}

TEST_P(word_example, six_pixels_are_bytes_0_to_11_and_32_to_34) {
  for (const int pixels : {5, 6}) {
    const bytes result = packed(repeated_pair(luma_of_pair, chroma_of_pair), pixels, 40);
    EXPECT_EQ(part(result, 0, 12), repeated({0x12, 0x34, 0x56, 0x78}, 3));
    EXPECT_EQ(part(result, 12, 20), filled(20, 77));
    EXPECT_EQ(part(result, 32, 3), filled(3, lower_bits_of_pair));
    EXPECT_EQ(part(result, 35, 5), filled(5, 77));
  }
}

TEST_P(word_example, every_group_of_sixteen_has_its_own_pixels) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  const bytes result = packed(source, many, 200);
  for (std::size_t pair = 0; pair < many / 2; ++pair) {
    const std::size_t group = pair / 8 * 40;
    const words samples = {source.y[2 * pair], source.cbcr[2 * pair], source.y[2 * pair + 1],
                           source.cbcr[2 * pair + 1]};
    int lower_bits = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(result[group + 4 * (pair % 8) + i], samples[i] / 256);
      lower_bits |= samples[i] / 64 % 4 << 2 * i;
    }
    EXPECT_EQ(result[group + 32 + pair % 8], lower_bits);
  }
}

p216_picture unpacked(const bytes& source, int pixels) {
  p216_picture result{words(many, 77), words(many, 77)};
  fc::yuyv_matrox_10::p216(source.data(), static_cast<int>(source.size()), as_bytes(result.y), row_of_many,
                           as_bytes(result.cbcr), row_of_many, pixels, 1);
  return result;
}

TEST_P(word_example, even_luma_comes_back_with_bits_6_and_7_alone) {
  for (const std::size_t pixels : {2U, 6U, 16U, 18U, 70U}) {
    p216_picture wanted = repeated_pair({0x0040, 0x56c0}, chroma_of_pair);
    for (std::size_t i = pixels; i < many; ++i) wanted.y[i] = wanted.cbcr[i] = 77;
    const bytes source = packed(repeated_pair(luma_of_pair, chroma_of_pair), static_cast<int>(pixels), 200);
    EXPECT_EQ(unpacked(source, static_cast<int>(pixels)), wanted);
    EXPECT_EQ(unpacked(source, static_cast<int>(pixels) - 1), wanted);
  }
}

TEST_P(word_example, other_samples_come_back_without_their_lowest_six_bits) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  p216_picture wanted{masked(source.y, 0xffc0), masked(source.cbcr, 0xffc0)};
  for (std::size_t i = 0; i < many; i += 2) wanted.y[i] &= 0xc0;
  EXPECT_EQ(unpacked(packed(source, many, 200), many), wanted);
}

TEST_P(word_example, upper_bytes_become_uyvy) {
  for (const std::size_t pixels : {2U, 6U, 16U, 18U, 70U}) {
    const bytes source = packed(repeated_pair(luma_of_pair, chroma_of_pair), static_cast<int>(pixels), 200, 255);
    bytes result = filled(2 * many, 77);
    fc::yuyv_matrox_10::uyvy(source.data(), 200, result.data(), 2 * many, static_cast<int>(pixels) - 1, 1);
    EXPECT_EQ(part(result, 0, 2 * pixels), repeated({0x34, 0x12, 0x78, 0x56}, pixels / 2));
    EXPECT_EQ(part(result, 2 * pixels, 2 * (many - pixels)), filled(2 * (many - pixels), 77));
  }
}

TEST_P(word_example, black_of_eighteen_pixels_is_a_group_and_a_pair) {
  bytes result = filled(80, 77);
  fc::yuyv_matrox_10::black(result.data(), 80, 18, 1);
  EXPECT_EQ(part(result, 0, 32), repeated({16, 128, 16, 128}, 8));
  EXPECT_EQ(part(result, 32, 8), filled(8, 0));
  EXPECT_EQ(part(result, 40, 4), (bytes{16, 128, 16, 128}));
  EXPECT_EQ(part(result, 44, 28), filled(28, 77));
  EXPECT_EQ(result[72], 0);
  EXPECT_EQ(part(result, 73, 7), filled(7, 77));
}

// A stride of 5 bytes is tight for two pixels, so eight rows of them are one line of one group; black and the reader
// of p216 take rows all the same.
TEST_P(word_example, tight_rows_of_part_of_a_group_are_one_line_where_rows_are_not_stated) {
  const bytes upper = repeated({16, 128, 16, 128}, 8);
  const words y(16, 0x1000), cbcr(16, 0x8000);
  bytes line = filled(80, 77);
  fc::p216::yuyv_matrox_10(as_bytes(y), 4, as_bytes(cbcr), 4, line.data(), 5, 2, 8);
  EXPECT_EQ(part(line, 0, 32), upper);
  EXPECT_EQ(part(line, 32, 8), filled(8, 0));
  EXPECT_EQ(part(line, 40, 40), filled(40, 77));

  bytes uyvy(32);
  fc::yuyv_matrox_10::uyvy(line.data(), 5, uyvy.data(), 4, 2, 8);
  EXPECT_EQ(uyvy, repeated({128, 16, 128, 16}, 8));

  bytes rows = filled(80, 77);
  fc::yuyv_matrox_10::black(rows.data(), 5, 2, 8);
  for (std::size_t row = 0; row < 6; ++row) EXPECT_EQ(part(rows, 5 * row, 5), (bytes{16, 128, 16, 128, 77})) << row;
  EXPECT_EQ(rows[32 + 5 * 7], 0);

  const bytes source = counted(80);
  p216_picture read(16);
  fc::yuyv_matrox_10::p216(source.data(), 5, as_bytes(read.y), 4, as_bytes(read.cbcr), 4, 2, 8);
  for (std::size_t row = 0; row < 8; ++row) {
    const bytes group = part(source, 5 * row, 40);
    EXPECT_EQ(read.y[2 * row + 1], group[2] * 256 + group[32] / 16 % 4 * 64);
    EXPECT_EQ(read.cbcr[2 * row], group[1] * 256 + group[32] / 4 % 4 * 64);
  }
}

bytes packed_over_black(const p216_picture& source, const words& alpha) {
  bytes result = filled(200, 77);
  fc::pa16::yuyv_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, as_bytes(alpha),
                           row_of_many, result.data(), 200, many, 1);
  return result;
}

void expect_packed_pairs(const bytes& result, const bytes& upper, std::uint8_t lower_bits) {
  for (std::size_t pair = 0; pair < many / 2; ++pair) {
    EXPECT_EQ(part(result, pair / 8 * 40 + pair % 8 * 4, 4), upper) << pair;
    EXPECT_EQ(result[pair / 8 * 40 + 32 + pair % 8], lower_bits) << pair;
  }
}

TEST_P(word_example, opaque_pixels_are_packed_with_the_lower_bits_of_cb_for_cr) {
  expect_packed_pairs(packed_over_black(repeated_pair(luma_of_pair, chroma_of_pair), words(many, 65535)),
                      {0x12, 0x34, 0x56, 0x78}, 1 | 2 << 2 | 3 << 4 | 2 << 6);
}

// Half of 60160 is 32128 = 0x7d80, of Cb 61568 it is 47168 = 0xb840, of Cr 4096 it is 18432 = 0x4800.
TEST_P(word_example, half_transparent_pixels_are_packed_over_black) {
  const p216_picture source = repeated_pair({60160, 0x56c0}, {61568, 4096});
  expect_packed_pairs(packed_over_black(source, repeated_words({32767, 65535}, many / 2)), {0x7d, 0xb8, 0x56, 0x48},
                      2 | 1 << 2 | 3 << 4 | 1 << 6);
}

TEST_P(word_example, transparent_pixels_are_packed_as_black) {
  const p216_picture source = repeated_pair({60160, 60160}, {61440, 61440});
  expect_packed_pairs(packed_over_black(source, words(many, 0)), {16, 128, 16, 128}, 0);
}

TEST_P(word_example, a_key_is_packed_as_luma) {
  const words alpha = repeated_words({65535, 0x1240}, many / 2);
  bytes result = filled(200, 77);
  fc::alpha_u16::yuyv_matrox_10(as_bytes(alpha), row_of_many, result.data(), 200, many, 1);
  expect_packed_pairs(result, {255, 128, 0x12, 128}, 3 | 1 << 4);
}

// A word for each pixel, with a key.

TEST_P(word_example, a_pixel_with_its_key_is_one_word) {
  const p216_picture source = repeated_pair(luma_of_pair, chroma_of_pair);
  const words alpha = repeated_words({0xffff, 0x8000}, many / 2);
  bytes result(4 * many);
  fc::pa16::yua_yva_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, as_bytes(alpha),
                              row_of_many, result.data(), 4 * many, many, 1);
  // 0x3ff << 20 | 0xd2 << 10 | 0x49 and 0x200 << 20 | 0x1e0 << 10 | 0x15b
  EXPECT_EQ(result, repeated({0x49, 0x48, 0xf3, 0x3f, 0x5b, 0x81, 0x07, 0x20}, many / 2));
}

TEST_P(word_example, words_with_a_key_ignore_their_two_upper_bits) {
  const bytes source = repeated({0x49, 0x48, 0xf3, 0xff, 0x5b, 0x81, 0x07, 0x60}, many / 2);
  p216_picture result;
  words alpha(many);
  fc::yua_yva_matrox_10::pa16(source.data(), 4 * many, as_bytes(result.y), row_of_many, as_bytes(result.cbcr),
                              row_of_many, as_bytes(alpha), row_of_many, many, 1);
  EXPECT_EQ(result, repeated_pair(luma_of_pair, chroma_of_pair));
  EXPECT_EQ(alpha, repeated_words({0xffc0, 0x8000}, many / 2));
}

TEST_P(word_example, samples_come_back_from_words_with_a_key_without_their_lowest_six_bits) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  const words alpha = counted_words(many, 6007);
  bytes card(4 * many);
  fc::pa16::yua_yva_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, as_bytes(alpha),
                              row_of_many, card.data(), 4 * many, many, 1);
  for (std::size_t i = 0; i < many; ++i) EXPECT_EQ(card[4 * i + 3] >> 6, 0);
  p216_picture result;
  words to_alpha(many);
  fc::yua_yva_matrox_10::pa16(card.data(), 4 * many, as_bytes(result.y), row_of_many, as_bytes(result.cbcr),
                              row_of_many, as_bytes(to_alpha), row_of_many, many, 1);
  EXPECT_EQ(result, p216_picture(masked(source.y, 0xffc0), masked(source.cbcr, 0xffc0)));
  EXPECT_EQ(to_alpha, masked(alpha, 0xffc0));
}

TEST_P(word_example, three_pixels_with_a_key_are_three_words) {
  const words source = counted_words(8);
  bytes card = filled(16, 77);
  fc::pa16::yua_yva_matrox_10(as_bytes(source), 8, as_bytes(source), 8, as_bytes(source), 8, card.data(), 16, 3, 1);
  EXPECT_EQ(part(card, 12, 4), filled(4, 77));
  words y(4, 77), cbcr(4, 77), alpha(4, 77);
  fc::yua_yva_matrox_10::pa16(card.data(), 16, as_bytes(y), 8, as_bytes(cbcr), 8, as_bytes(alpha), 8, 3, 1);
  for (const words& plane : {y, cbcr, alpha}) {
    EXPECT_EQ(part(plane, 0, 3), masked(part(source, 0, 3), 0xffc0));
    EXPECT_EQ(plane[3], 77);
  }
}

// Depths.

TEST_P(word_example, ten_bits_of_alpha_become_sixteen) {
  for (const auto& [from, to] : {std::pair{0, 0}, {1, 64}, {512, 32800}, {1023, 65535}, {1024, 64}}) {
    const words source(many, static_cast<std::uint16_t>(from));
    words result(many);
    fc::alpha_10u16::alpha_u16(as_bytes(source), row_of_many, as_bytes(result), row_of_many, many, 1);
    EXPECT_EQ(result, words(many, static_cast<std::uint16_t>(to))) << from;
  }
}

TEST_P(word_example, twelve_bits_of_alpha_become_sixteen) {
  for (const auto& [from, to] : {std::pair{0, 0}, {1, 16}, {2048, 32776}, {4095, 65535}, {4096, 16}}) {
    const words source(many, static_cast<std::uint16_t>(from));
    words result(many);
    fc::alpha_12u16::alpha_u16(as_bytes(source), row_of_many, as_bytes(result), row_of_many, many, 1);
    EXPECT_EQ(result, words(many, static_cast<std::uint16_t>(to))) << from;
  }
}

TEST_P(word_example, eight_bits_of_alpha_become_sixteen_and_come_back) {
  for (int a = 0; a < 256; ++a) {
    const bytes source = filled(many, static_cast<std::uint8_t>(a));
    words wide(many);
    fc::alpha::alpha_u16(source.data(), many, as_bytes(wide), row_of_many, many, 1);
    EXPECT_EQ(wide, words(many, static_cast<std::uint16_t>(257 * a)));
    bytes narrow(many);
    fc::alpha_u16::alpha(wide.data(), row_of_many, narrow.data(), many, many, 1);
    EXPECT_EQ(narrow, source);
  }
}

TEST_P(word_example, sixteen_bits_of_alpha_are_cut_to_eight) {
  for (const auto& [from, to] : {std::pair{65535, 255}, {65279, 254}, {32896, 128}, {255, 0}, {256, 1}}) {
    bytes result(many);
    fc::alpha_u16::alpha(words(many, static_cast<std::uint16_t>(from)).data(), row_of_many, result.data(), many, many,
                         1);
    EXPECT_EQ(result, filled(many, static_cast<std::uint8_t>(to))) << from;
  }
}

TEST_P(word_example, ten_bits_of_luma_are_cut_to_eight) {
  for (const auto& [from, to] : {std::pair{940, 235}, {64, 16}, {67, 16}, {1023, 255}, {1024, 0}, {65535, 255}}) {
    bytes result(many);
    fc::y_10u16::y(words(many, static_cast<std::uint16_t>(from)).data(), row_of_many, result.data(), many, many, 1);
    EXPECT_EQ(result, filled(many, static_cast<std::uint8_t>(to))) << from;
  }
}

TEST_P(word_example, alpha_of_bgra64_is_its_fourth_word) {
  words source = counted_words(4 * many);
  words wanted(many);
  for (std::size_t i = 0; i < many; ++i) wanted[i] = source[4 * i + 3];
  for (const unsigned color : {0U, 0x1234U, 0xffffU}) {
    for (std::size_t i = 0; i < source.size(); ++i)
      if (i % 4 != 3) source[i] = static_cast<std::uint16_t>(color);
    words result(many);
    fc::bgra64::alpha16(as_bytes(source), 8 * many, as_bytes(result), row_of_many, many, 1);
    EXPECT_EQ(result, wanted);
  }
}

TEST_P(word_example, depths_are_exact_at_odd_widths) {
  for (const std::string_view name : {"alpha::alpha_u16", "alpha_u16::alpha", "alpha_10u16::alpha_u16",
                                      "alpha_12u16::alpha_u16", "y_10u16::y", "bgra64::alpha16"})
    for (const catalogue::conversion& row : catalogue::conversions)
      if (row.name == name) {
        const words source = counted_words(64);
        words result(64, 0x4d4d);
        catalogue::call c;
        c.source.data[0] = as_bytes(source);
        c.destination.data[0] = as_bytes(result);
        c.xres = 3;
        c.yres = 1;
        row.convert(c);
        const std::size_t written = row.destination == "alpha_u16" ? 6 : 3;
        EXPECT_EQ(as_bytes(result)[written], 77) << name;
      }
}

// All functions of 16-bit samples in one way, through the catalogue.

constexpr std::size_t room = 4096;
constexpr int wide_stride = 640;

struct planes_of_bytes {
  std::array<bytes, catalogue::max_planes> planes;
  bool opaque = false;

  bool operator==(const planes_of_bytes&) const = default;
};

// Rows of 37 pixels of noise, in planes that begin `offset` bytes after an aligned address.
planes_of_bytes convert_noise(catalogue::thunk convert, std::size_t offset, int yres = 4) {
  std::mt19937 random(1);
  std::array<bytes, catalogue::max_planes> source;
  planes_of_bytes result;
  catalogue::call c;
  for (std::size_t i = 0; i < catalogue::max_planes; ++i) {
    source[i] = bytes(offset);
    for (std::size_t at = 0; at < room; ++at) source[i].push_back(static_cast<std::uint8_t>(random()));
    result.planes[i] = filled(offset + room, 77);
    c.source.data[i] = source[i].data() + offset;
    c.destination.data[i] = result.planes[i].data() + offset;
    c.source.stride[i] = c.destination.stride[i] = wide_stride;
  }
  c.xres = 37;
  c.yres = yres;
  c.opaque = &result.opaque;
  convert(c);
  for (bytes& plane : result.planes) plane = part(plane, offset, room);
  return result;
}

template <class Source, class Destination>
using one_to_two = void(const Source*, int, Destination*, int, Destination*, int, int, int);
template <class Source, class Destination>
using two_to_two = void(const Source*, int, const Source*, int, Destination*, int, Destination*, int, int, int);
template <class Source, class Destination>
using three_to_one = void(const Source*, int, const Source*, int, const Source*, int, Destination*, int, int, int);
template <class Source, class Destination>
using three_to_two = void(const Source*, int, const Source*, int, const Source*, int, Destination*, int, Destination*,
                          int, int, int);
template <class Source, class Destination>
using one_to_three = void(const Source*, int, Destination*, int, Destination*, int, Destination*, int, int, int, bool*);

struct overload {
  std::string_view name, destination;
  catalogue::thunk of_words;
};

TEST_P(word_example, words_give_the_bytes_that_byte_pointers_give) {
  using u8 = std::uint8_t;
  using u16 = std::uint16_t;
  using catalogue::entry_of;
  const overload overloads[] = {
      {"uyvy::p216", "p216", entry_of<static_cast<one_to_two<u8, u16>*>(&fc::uyvy::p216)>.convert},
      {"y_uv::p216", "p216", entry_of<static_cast<two_to_two<u8, u16>*>(&fc::y_uv::p216)>.convert},
      {"ycbcra::pa16", "pa16", entry_of<static_cast<one_to_three<u8, u16>*>(&fc::ycbcra::pa16)>.convert},
      {"pa16::vuya_f32", "vuya_f32", entry_of<static_cast<three_to_one<u16, u8>*>(&fc::pa16::vuya_f32)>.convert},
      {"pa16::p216", "p216", entry_of<static_cast<three_to_two<u16, u8>*>(&fc::pa16::p216)>.convert},
  };
  for (const auto& [name, destination, of_words] : overloads) {
    const planes_of_bytes wanted = convert_noise(of_words, 0);
    EXPECT_NE(wanted.planes[0], filled(room, 77)) << name;
    EXPECT_EQ(convert_noise(row_of(name, destination).entry.convert, 0), wanted) << name;
    EXPECT_EQ(convert_noise(row_of(name, destination).entry.convert, 1), wanted) << name;
  }
}

// Whether a plane on either side has samples of 16 bits.
bool has_words(const catalogue::conversion& row) {
  for (const std::string_view name : {row.source, row.destination})
    if (const catalogue::format* f = catalogue::find_format(name))
      for (const catalogue::plane& p : f->planes)
        if (p.sample == catalogue::sample_type::u16 || catalogue::low_bits(p.sample) > 0) return true;
  return false;
}

TEST_P(word_example, byte_pointers_may_be_odd) {
  int tested = 0;
  for (const catalogue::conversion& row : catalogue::conversions) {
    if (row.entry.takes_words || !has_words(row)) continue;
    const int yres = 4 / row.rows_per_yres;
    const planes_of_bytes wanted = convert_noise(row.entry.convert, 0, yres);
    EXPECT_EQ(convert_noise(row.entry.convert, 1, yres), wanted) << row.name;
    EXPECT_EQ(convert_noise(row.entry.convert, 3, yres), wanted) << row.name;
    ++tested;
  }
  EXPECT_EQ(tested, 19);
}

TEST_P(word_example, sizes_below_one_write_nothing) {
  const bytes source = counted(room);
  for (const catalogue::conversion& row : catalogue::conversions)
    for (const auto& [xres, yres] : {std::pair{0, 4}, {4, 0}, {0, 0}, {-2, 4}, {4, -2}, {-3, -3}}) {
      std::array<bytes, catalogue::max_planes> planes;
      catalogue::call c;
      for (std::size_t i = 0; i < planes.size(); ++i) {
        planes[i] = filled(room, 77);
        c.source.data[i] = source.data();
        c.destination.data[i] = planes[i].data() + room / 2;
        c.source.stride[i] = c.destination.stride[i] = 64;
      }
      c.xres = xres;
      c.yres = yres;
      row.convert(c);
      for (const bytes& plane : planes) EXPECT_EQ(plane, filled(room, 77)) << row.name << ", " << xres << " x " << yres;
    }
}

}  // namespace
}  // namespace morvane::tests
