// Single statements about video to RGB, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "examples/keyed.h"
#include "examples/word_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

using namespace Processing::Morvane;
namespace fc = Processing::Morvane::format_conversion;

class video_to_rgb_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, video_to_rgb_example, all_backends(), backend_name);

const bytes black_pair = {128, 16, 128, 16};

TEST_P(video_to_rgb_example, video_black_is_slightly_off_zero) {
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_601, black_pair, 2, 6), repeated({1, 1, 0}, 2));
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_709, black_pair, 2, 6), repeated({1, 0, 1}, 2));
}

TEST_P(video_to_rgb_example, video_white_is_white) {
  const bytes white_pair = {128, 235, 128, 235};
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_601, white_pair, 2, 6), filled(6, 255));
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_709, white_pair, 2, 6), filled(6, 255));
}

TEST_P(video_to_rgb_example, an_odd_bgr_row_completes_its_last_pair) {
  const bytes result = convert_row(&fc::uyvy::bgr_601, repeated(black_pair, 2), 3, 20);
  EXPECT_EQ(part(result, 0, 12), repeated({1, 1, 0}, 4));
  EXPECT_EQ(part(result, 12, 8), filled(8, 77));
}

TEST_P(video_to_rgb_example, no_pixels_write_no_bgr) {
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_601, black_pair, 0, 8), filled(8, 77));
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_709, black_pair, -5, 8), filled(8, 77));
  bytes destination = filled(40, 77);
  fc::uyvy::bgr_709(repeated(black_pair, 4).data(), 8, destination.data(), 20, 2, -1);
  EXPECT_EQ(destination, filled(40, 77));
}

TEST_P(video_to_rgb_example, a_bgr_stride_of_four_bytes_a_pixel_packs_the_rows) {
  const bytes source = repeated(black_pair, 4);
  bytes destination = filled(32, 77);
  fc::uyvy::bgr_601(source.data(), 8, destination.data(), 16, 4, 2);
  EXPECT_EQ(part(destination, 0, 24), repeated({1, 1, 0}, 8));
  EXPECT_EQ(part(destination, 24, 8), filled(8, 77));
}

template <class Convert>
bytes with_color_space(Convert convert, int color_space, std::size_t pixel_bytes) {
  const bytes source = counted(2 * 50);
  bytes destination(pixel_bytes * 50);
  convert(source.data(), 100, destination.data(), static_cast<int>(pixel_bytes * 50), 50, 1,
          static_cast<e_ycbcr_color_space>(color_space));
  return destination;
}

TEST_P(video_to_rgb_example, every_color_space_but_601_is_709) {
  const auto expect = [](auto by_argument, image_conversion* bt601, image_conversion* bt709, std::size_t pixel_bytes) {
    const bytes source = counted(2 * 50);
    const bytes result_601 = convert_row(bt601, source, 50, pixel_bytes * 50);
    const bytes result_709 = convert_row(bt709, source, 50, pixel_bytes * 50);
    EXPECT_NE(result_601, result_709);
    EXPECT_EQ(with_color_space(by_argument, 601, pixel_bytes), result_601);
    for (const int other : {709, 0, 2020, -601})
      EXPECT_EQ(with_color_space(by_argument, other, pixel_bytes), result_709);
  };
  expect(&fc::uyvy::bgr, &fc::uyvy::bgr_601, &fc::uyvy::bgr_709, 3);
  expect(&fc::uyvy::bgra, &fc::uyvy::bgra_601, &fc::uyvy::bgra_709, 4);
  expect(&fc::uyvy::rgba, &fc::uyvy::rgba_601, &fc::uyvy::rgba_709, 4);
  expect(&fc::uyvy::bgrx, &fc::uyvy::bgrx_601, &fc::uyvy::bgrx_709, 4);
  expect(&fc::uyvy::rgbx, &fc::uyvy::rgbx_601, &fc::uyvy::rgbx_709, 4);
}

TEST_P(video_to_rgb_example, bgrx_output_is_bgra_output_with_255_in_the_fourth_byte) {
  const bytes source = counted(2 * 50);
  for (const auto& [with_alpha, without] : {std::pair{&fc::uyvy::bgra_601, &fc::uyvy::bgrx_601},
                                            {&fc::uyvy::bgra_709, &fc::uyvy::bgrx_709},
                                            {&fc::uyvy::rgba_601, &fc::uyvy::rgbx_601},
                                            {&fc::uyvy::rgba_709, &fc::uyvy::rgbx_709}}) {
    const bytes result = convert_row(with_alpha, source, 50, 200);
    EXPECT_EQ(result, convert_row(without, source, 50, 200));
    for (std::size_t i = 3; i < 200; i += 4) EXPECT_EQ(result[i], 255);
  }
}

TEST_P(video_to_rgb_example, the_last_pixel_of_an_odd_row_is_left_out_of_32_bit_rgb) {
  const bytes result = convert_row(&fc::uyvy::bgra_601, repeated(black_pair, 2), 3, 12);
  EXPECT_EQ(part(result, 0, 8), repeated({1, 1, 0, 255}, 2));
  EXPECT_EQ(part(result, 8, 4), filled(4, 77));
}

// With a plane of alpha.

constexpr from_uyvy_a* to_rgb[] = {&fc::uyvy_a::bgra_601, &fc::uyvy_a::bgra_709, &fc::uyvy_a::rgba_601,
                                   &fc::uyvy_a::rgba_709};

TEST_P(video_to_rgb_example, black_and_white_with_alpha) {
  for (from_uyvy_a* convert : to_rgb) {
    EXPECT_EQ(convert_key_row(convert, repeated({128, 16, 128, 16}, 30), filled(60, 77), 60, 240),
              repeated({0, 0, 0, 77}, 60));
    EXPECT_EQ(convert_key_row(convert, repeated({128, 235, 128, 235}, 30), filled(60, 0), 60, 240),
              repeated({253, 253, 253, 0}, 60));
  }
}

TEST_P(video_to_rgb_example, a_last_odd_pixel_is_left_out_of_rgb) {
  for (from_uyvy_a* convert : to_rgb) {
    EXPECT_EQ(convert_key_row(convert, {1, 2, 3, 4}, {5, 6}, 1, 8), filled(8, 77));
    const bytes uyvy = counted(2 * 8);
    const bytes alpha = counted(2 * 4);
    bytes rgb = filled(2 * 12, 77);
    convert(uyvy.data(), 8, alpha.data(), 4, rgb.data(), 12, 3, 2);
    for (const std::size_t row : {0U, 1U}) {
      EXPECT_EQ(rgb[12 * row + 7], alpha[4 * row + 1]);
      EXPECT_EQ(part(rgb, 12 * row + 8, 4), filled(4, 77));
    }
  }
}

TEST_P(video_to_rgb_example, every_color_space_but_601_is_709_with_alpha) {
  const bytes uyvy = counted(2 * 40);
  const bytes alpha = counted(40);
  const auto of = [&](auto* convert, int color_space) {
    bytes rgb(160);
    convert(uyvy.data(), 80, alpha.data(), 40, rgb.data(), 160, 40, 1, static_cast<e_ycbcr_color_space>(color_space));
    return rgb;
  };
  EXPECT_EQ(of(&fc::uyvy_a::bgra, 601), convert_key_row(&fc::uyvy_a::bgra_601, uyvy, alpha, 40, 160));
  EXPECT_EQ(of(&fc::uyvy_a::rgba, 601), convert_key_row(&fc::uyvy_a::rgba_601, uyvy, alpha, 40, 160));
  for (const int color_space : {709, 0, 2020}) {
    EXPECT_EQ(of(&fc::uyvy_a::bgra, color_space), convert_key_row(&fc::uyvy_a::bgra_709, uyvy, alpha, 40, 160));
    EXPECT_EQ(of(&fc::uyvy_a::rgba, color_space), convert_key_row(&fc::uyvy_a::rgba_709, uyvy, alpha, 40, 160));
  }
}

// Planar RGB and luminance.

// A pair whose two pixels have the same luma, and neutral chroma.
bytes grey_pair(int luma) {
  const auto y = static_cast<std::uint8_t>(luma);
  return {128, y, 128, y};
}

using planar = void(const std::uint8_t*, int, std::uint8_t*, std::uint8_t*, std::uint8_t*, int, int, int);

TEST_P(video_to_rgb_example, black_and_white_video_in_planes) {
  for (const auto& [luma, level] : {std::pair{16, 0}, {235, 253}})
    for (planar* convert : {&fc::uyvy::r_g_b_601, &fc::uyvy::r_g_b_709}) {
      const bytes source = repeated(grey_pair(luma), 35);
      bytes r(70), g(70), b(70);
      convert(source.data(), 140, r.data(), g.data(), b.data(), 70, 70, 1);
      for (const bytes& plane : {r, g, b}) EXPECT_EQ(plane, filled(70, static_cast<std::uint8_t>(level)));
    }
}

TEST_P(video_to_rgb_example, a_last_odd_pixel_is_left_out_of_all_planes) {
  const bytes source = counted(12);
  bytes r = filled(8, 77), g = r, b = r;
  fc::uyvy::r_g_b_709(source.data(), 6, r.data(), g.data(), b.data(), 4, 3, 2);
  for (const bytes& plane : {r, g, b})
    for (const std::size_t i : {2U, 3U, 6U, 7U}) EXPECT_EQ(plane[i], 77);
}

TEST_P(video_to_rgb_example, one_pixel_a_row_is_one_line_when_the_planes_are_tight) {
  const bytes source = {128, 235, 128, 16};
  bytes r = filled(2, 77), g = r, b = r;
  fc::uyvy::r_g_b_709(source.data(), 2, r.data(), g.data(), b.data(), 1, 1, 2);
  EXPECT_EQ(r, (bytes{253, 0}));
  r = g = b = filled(4, 77);
  fc::uyvy::r_g_b_709(source.data(), 2, r.data(), g.data(), b.data(), 2, 1, 2);
  EXPECT_EQ(r, filled(4, 77));
}

TEST_P(video_to_rgb_example, planar_rgb_takes_every_color_space_but_601_for_709) {
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

TEST_P(video_to_rgb_example, luminance_becomes_opaque_grey) {
  EXPECT_EQ(convert_row(&fc::L::bgra, {0, 100, 255}, 3, 16),
            (bytes{0, 0, 0, 255, 100, 100, 100, 255, 255, 255, 255, 255, 77, 77, 77, 77}));
}

// BT.2020.

void expect_rgb_of_2020(const words& y, const words& cbcr, const bytes& wanted) {
  const p216_picture source = repeated_pair(y, cbcr);
  bytes result(4 * many);
  fc::p216::rgbx_2020(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, result.data(), 4 * many,
                      many, 1);
  EXPECT_EQ(result, repeated(wanted, many / 2));
}

TEST_P(video_to_rgb_example, white_and_black_of_2020_whatever_the_low_bytes) {
  for (const unsigned low : {0U, 1U, 0x80U, 0xffU}) {
    const auto white = static_cast<std::uint16_t>(0xeb00 + low);
    const auto black = static_cast<std::uint16_t>(0x1000 + low);
    const auto neutral = static_cast<std::uint16_t>(0x8000 + low);
    expect_rgb_of_2020({white, black}, {neutral, neutral}, {253, 253, 253, 255, 0, 0, 0, 255});
  }
}

// y = 74 * 126 - 1192 = 8132 for the first pixel and 74 * 64 - 1192 = 3544 for the second; u = 16 and v = -16.
TEST_P(video_to_rgb_example, colors_of_2020) {
  const bytes wanted = {
      (8132 - 107 * 16) / 64, (8132 - 12 * 16 + 42 * 16) / 64, (8132 + 137 * 16) / 64, 255,
      (3544 - 107 * 16) / 64, (3544 - 12 * 16 + 42 * 16) / 64, (3544 + 137 * 16) / 64, 255,
  };
  EXPECT_EQ(wanted, (bytes{100, 134, 161, 255, 28, 62, 89, 255}));
  expect_rgb_of_2020({126 * 256, 64 * 256}, {144 * 256, 112 * 256}, wanted);
}

TEST_P(video_to_rgb_example, extremes_of_2020_are_clamped) {
  expect_rgb_of_2020({0xffff, 0}, {0xffff, 0xffff}, {255, 169, 255, 255, 193, 0, 253, 255});
  expect_rgb_of_2020({0xffff, 0}, {0, 0}, {62, 255, 2, 255, 0, 89, 0, 255});
}

TEST_P(video_to_rgb_example, a_last_odd_pixel_is_left_out_of_2020) {
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

}  // namespace
}  // namespace morvane::tests
