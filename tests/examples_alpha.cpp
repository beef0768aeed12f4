// Single statements about 4:4:4 and alpha, with their numbers, one test each, on every backend.
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

class alpha_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, alpha_example, all_backends(), backend_name);

// RGB to 4:4:4. Luma and Cr of a line's last pixel are in its first, where they can be read off.

struct ycbcr {
  int y, cb, cr;
};

void expect_color(image_conversion* convert, const bytes& pixel, ycbcr wanted) {
  const bytes result = convert_row(convert, repeated(pixel, 70), 70, 280);
  EXPECT_EQ(result[0], wanted.y);
  EXPECT_EQ(result[2], wanted.cr);
  for (std::size_t i = 0; i < 70; ++i) {
    EXPECT_EQ(result[4 * i + 1], wanted.cb);
    EXPECT_EQ(result[4 * i + 3], pixel[3]);
  }
}

TEST_P(alpha_example, white_and_black_in_444) {
  for (image_conversion* convert : {&fc::bgra_601::ycbcra, &fc::bgra_709::ycbcra, &fc::rgba_601::crcbya}) {
    expect_color(convert, {255, 255, 255, 255}, {235, 127, 128});
    expect_color(convert, {0, 0, 0, 9}, {16, 128, 128});
  }
}

TEST_P(alpha_example, red_in_444) {
  expect_color(&fc::rgba_601::ycbcra, {255, 0, 0, 200}, {81, 90, 239});
  expect_color(&fc::rgba_709::ycbcra, {255, 0, 0, 200}, {61, 102, 239});
  expect_color(&fc::bgra_601::crcbya, {0, 0, 255, 200}, {81, 90, 239});
  expect_color(&fc::bgra_709::crcbya, {0, 0, 255, 200}, {61, 102, 239});
}

TEST_P(alpha_example, every_grey_but_black_has_a_cb_of_127) {
  for (int v = 1; v < 256; ++v) {
    const auto level = static_cast<std::uint8_t>(v);
    for (image_conversion* convert : {&fc::bgra_601::ycbcra, &fc::bgra_709::ycbcra}) {
      const bytes result = convert_row(convert, repeated({level, level, level, 0}, 2), 2, 8);
      EXPECT_EQ(result[1], 127);
      EXPECT_EQ(result[2], 128);
    }
  }
}

TEST_P(alpha_example, rgb_without_a_suffix_is_709) {
  const bytes source = counted(4 * 50);
  const std::pair<image_conversion*, image_conversion*> twins[] = {
      {&fc::bgra::ycbcra, &fc::bgra_709::ycbcra}, {&fc::rgba::ycbcra, &fc::rgba_709::ycbcra},
      {&fc::bgra::crcbya, &fc::bgra_709::crcbya}, {&fc::rgba::crcbya, &fc::rgba_709::crcbya},
      {&fc::bgrx::ycbcrx, &fc::bgrx_709::ycbcrx}, {&fc::rgbx::ycbcrx, &fc::rgbx_709::ycbcrx},
      {&fc::bgrx::crcbyx, &fc::bgrx_709::crcbyx}, {&fc::rgbx::crcbyx, &fc::rgbx_709::crcbyx}};
  for (const auto& [unsuffixed, bt709] : twins)
    EXPECT_EQ(convert_row(unsuffixed, source, 50, 200), convert_row(bt709, source, 50, 200));
}

// White, then red of alpha 9: BT.601 gives red a luma of 81 and a Cr of 239.
const bytes white_and_red = {255, 255, 255, 5, 255, 0, 0, 9};

TEST_P(alpha_example, two_pixels_of_444_hold_luma_and_cr_of_the_second_in_the_first) {
  EXPECT_EQ(convert_row(&fc::rgba_601::ycbcra, white_and_red, 2, 8), (bytes{81, 127, 239, 5, 77, 90, 77, 9}));
  EXPECT_EQ(convert_row(&fc::rgba_601::crcbya, white_and_red, 2, 8), (bytes{81, 127, 239, 5, 77, 90, 77, 9}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::ycbcrx, white_and_red, 2, 8), (bytes{239, 127, 81, 255, 77, 90, 77, 255}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::crcbyx, white_and_red, 2, 8), (bytes{239, 127, 81, 255, 77, 90, 77, 255}));
}

TEST_P(alpha_example, a_single_pixel_of_444_has_luma_and_cr_the_other_way_round_when_luma_comes_first) {
  const bytes red = {255, 0, 0, 9};
  EXPECT_EQ(convert_row(&fc::rgba_601::ycbcra, red, 1, 4), (bytes{239, 90, 81, 9}));
  EXPECT_EQ(convert_row(&fc::rgba_601::crcbya, red, 1, 4), (bytes{81, 90, 239, 9}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::ycbcrx, red, 1, 4), (bytes{81, 90, 239, 255}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::crcbyx, red, 1, 4), (bytes{239, 90, 81, 255}));
}

TEST_P(alpha_example, every_row_of_444_with_padding_holds_its_own_last_pixel) {
  const bytes black_row = filled(8, 0);
  const bytes source = joined(white_and_red, black_row);
  bytes padded = filled(24, 77);
  fc::rgba_601::ycbcra(source.data(), 8, padded.data(), 12, 2, 2);
  EXPECT_EQ(part(padded, 0, 8), (bytes{81, 127, 239, 5, 77, 90, 77, 9}));
  EXPECT_EQ(part(padded, 12, 8), (bytes{16, 128, 128, 0, 77, 128, 77, 0}));

  bytes tight = filled(16, 77);
  fc::rgba_601::ycbcra(source.data(), 8, tight.data(), 8, 2, 2);
  EXPECT_EQ(tight, (bytes{16, 127, 128, 5, 77, 90, 77, 9, 77, 128, 77, 0, 77, 128, 77, 0}));
}

// RGB with alpha to uyvy and alpha.

using to_uyvy_a = void(const std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, int, int, bool*);

constexpr to_uyvy_a* from_rgb[] = {&fc::bgra::uyvy_a, &fc::bgra_601::uyvy_a, &fc::bgra_709::uyvy_a,
                                   &fc::rgba::uyvy_a, &fc::rgba_601::uyvy_a, &fc::rgba_709::uyvy_a};
constexpr to_uyvy_a* from_444[] = {&fc::ycbcra::uyvy_a, &fc::vuya::uyvy_a};

struct keyed {
  bytes uyvy, alpha;
};

keyed convert_keyed(to_uyvy_a* convert, const bytes& source, int xres, int yres, bool* opaque = nullptr) {
  const auto pixels = static_cast<std::size_t>(xres * yres);
  keyed result{filled(2 * pixels, 77), filled(pixels, 77)};
  convert(source.data(), 4 * xres, result.uyvy.data(), 2 * xres, result.alpha.data(), xres, xres, yres, opaque);
  return result;
}

bytes opaque_picture(std::size_t pixels) {
  bytes result = counted(4 * pixels);
  for (std::size_t i = 0; i < pixels; ++i) result[4 * i + 3] = 255;
  return result;
}

TEST_P(alpha_example, a_single_alpha_of_254_is_reported_wherever_it_is) {
  for (const auto& family :
       {std::vector(std::begin(from_rgb), std::end(from_rgb)), std::vector(std::begin(from_444), std::end(from_444))})
    for (to_uyvy_a* convert : family) {
      bool opaque = false;
      convert_keyed(convert, opaque_picture(96), 32, 3, &opaque);
      EXPECT_TRUE(opaque);
      for (std::size_t pixel = 0; pixel < 96; ++pixel) {
        bytes source = opaque_picture(96);
        source[4 * pixel + 3] = 254;
        const keyed unasked = convert_keyed(convert, source, 32, 3);
        const keyed result = convert_keyed(convert, source, 32, 3, &opaque);
        EXPECT_FALSE(opaque) << "pixel " << pixel;
        EXPECT_EQ(result.alpha[pixel], 254);
        EXPECT_EQ(result.uyvy, unasked.uyvy);
        EXPECT_EQ(result.alpha, unasked.alpha);
      }
    }
}

TEST_P(alpha_example, one_pixel_of_rgb_writes_nothing_and_is_opaque) {
  for (to_uyvy_a* convert : from_rgb) {
    bool opaque = false;
    const keyed result = convert_keyed(convert, {1, 2, 3, 4}, 1, 1, &opaque);
    EXPECT_TRUE(opaque);
    EXPECT_EQ(result.uyvy, filled(2, 77));
    EXPECT_EQ(result.alpha, filled(1, 77));
  }
}

TEST_P(alpha_example, a_transparent_last_odd_column_of_rgb_does_not_count) {
  for (to_uyvy_a* convert : from_rgb) {
    bytes source = opaque_picture(2 * 40);
    for (const std::size_t row : {0U, 1U}) source[4 * (40 * row + 36) + 3] = 0;
    bytes uyvy = filled(2 * 80, 77);
    bytes alpha = filled(2 * 40, 77);
    bool opaque = false;
    convert(source.data(), 160, uyvy.data(), 80, alpha.data(), 40, 37, 2, &opaque);
    EXPECT_TRUE(opaque);
    for (const std::size_t row : {0U, 1U}) {
      EXPECT_EQ(part(uyvy, 80 * row + 72, 8), filled(8, 77));
      EXPECT_EQ(part(alpha, 40 * row + 36, 4), filled(4, 77));
    }
  }
}

TEST_P(alpha_example, the_completed_pixel_of_444_counts) {
  for (to_uyvy_a* convert : from_444) {
    bytes source = opaque_picture(4);
    bytes uyvy = filled(8, 77);
    bytes alpha = filled(4, 77);
    bool opaque = false;
    convert(source.data(), 16, uyvy.data(), 8, alpha.data(), 4, 3, 1, &opaque);
    EXPECT_TRUE(opaque);
    source[15] = 254;
    convert(source.data(), 16, uyvy.data(), 8, alpha.data(), 4, 3, 1, &opaque);
    EXPECT_FALSE(opaque);
    EXPECT_EQ(alpha, (bytes{255, 255, 255, 254}));
  }
}

TEST_P(alpha_example, no_rows_or_pixels_are_opaque) {
  for (const auto& [xres, yres] : {std::pair{4, 0}, {4, -1}, {0, 4}, {-3, 4}, {-2, -2}})
    for (const auto& family :
         {std::vector(std::begin(from_rgb), std::end(from_rgb)), std::vector(std::begin(from_444), std::end(from_444))})
      for (to_uyvy_a* convert : family) {
        const bytes source(64);
        bytes written = filled(64, 77);
        bool opaque = false;
        convert(source.data(), 4 * xres, written.data(), 2 * xres, written.data(), xres, xres, yres, &opaque);
        EXPECT_TRUE(opaque);
        EXPECT_EQ(written, filled(64, 77));
      }
}

TEST_P(alpha_example, a_transparent_red_keeps_its_color) {
  const keyed result = convert_keyed(&fc::bgra::uyvy_a, repeated({0, 0, 255, 0}, 60), 60, 1);
  EXPECT_EQ(result.uyvy, repeated({102, 61, 239, 61}, 30));
  EXPECT_EQ(result.alpha, filled(60, 0));
}

TEST_P(alpha_example, u_is_that_of_the_even_pixel_and_v_that_of_the_odd_one) {
  const bytes red_and_black = {255, 0, 0, 1, 0, 0, 0, 2};
  const bytes black_and_red = {0, 0, 0, 1, 255, 0, 0, 2};
  EXPECT_EQ(convert_keyed(&fc::rgba_601::uyvy_a, red_and_black, 2, 1).uyvy, (bytes{90, 81, 128, 16}));
  EXPECT_EQ(convert_keyed(&fc::rgba_601::uyvy_a, black_and_red, 2, 1).uyvy, (bytes{128, 16, 239, 81}));
}

TEST_P(alpha_example, rgb_with_alpha_without_a_suffix_is_709) {
  const bytes source = counted(4 * 50);
  EXPECT_EQ(convert_keyed(&fc::bgra::uyvy_a, source, 50, 1).uyvy,
            convert_keyed(&fc::bgra_709::uyvy_a, source, 50, 1).uyvy);
  EXPECT_EQ(convert_keyed(&fc::rgba::uyvy_a, source, 50, 1).uyvy,
            convert_keyed(&fc::rgba_709::uyvy_a, source, 50, 1).uyvy);
}

// uyvy and alpha to other formats.

using from_uyvy_a = void(const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*, int, int, int);

bytes convert_key_row(from_uyvy_a* convert, const bytes& uyvy, const bytes& alpha, int pixels, std::size_t size) {
  bytes result = filled(size, 77);
  convert(uyvy.data(), static_cast<int>(uyvy.size()), alpha.data(), static_cast<int>(alpha.size()), result.data(),
          static_cast<int>(size), pixels, 1);
  return result;
}

constexpr from_uyvy_a* to_rgb[] = {&fc::uyvy_a::bgra_601, &fc::uyvy_a::bgra_709, &fc::uyvy_a::rgba_601,
                                   &fc::uyvy_a::rgba_709};

TEST_P(alpha_example, black_and_white_with_alpha) {
  for (from_uyvy_a* convert : to_rgb) {
    EXPECT_EQ(convert_key_row(convert, repeated({128, 16, 128, 16}, 30), filled(60, 77), 60, 240),
              repeated({0, 0, 0, 77}, 60));
    EXPECT_EQ(convert_key_row(convert, repeated({128, 235, 128, 235}, 30), filled(60, 0), 60, 240),
              repeated({253, 253, 253, 0}, 60));
  }
}

TEST_P(alpha_example, a_last_odd_pixel_is_left_out_of_rgb) {
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

TEST_P(alpha_example, every_color_space_but_601_is_709) {
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

TEST_P(alpha_example, both_pixels_of_444_take_the_chroma_of_their_pair) {
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::ycbcra, {1, 2, 3, 4}, {5, 6}, 2, 8), (bytes{2, 1, 3, 5, 4, 1, 3, 6}));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::crcbya, {1, 2, 3, 4}, {5, 6}, 2, 8), (bytes{3, 1, 2, 5, 3, 1, 4, 6}));
}

TEST_P(alpha_example, ya_uv_has_alpha_beside_luma) {
  bytes ya(4), cbcr(2);
  fc::uyvy_a::ya_uv(bytes{1, 2, 3, 4}.data(), 4, bytes{5, 6}.data(), 2, ya.data(), 4, cbcr.data(), 2, 2, 1);
  EXPECT_EQ(ya, (bytes{2, 5, 4, 6}));
  EXPECT_EQ(cbcr, (bytes{1, 3}));
}

// Fill and key.

struct fill_and_key {
  bytes ya, cbcr;
};

fill_and_key convert_fill_and_key(int width_in_memory, int xres, int yres, bool rescale) {
  const bytes fill = counted(static_cast<std::size_t>(2 * width_in_memory * 2));
  const bytes key = counted(static_cast<std::size_t>(2 * width_in_memory * 2), 91);
  fill_and_key result{filled(fill.size(), 77), filled(fill.size() / 2, 77)};
  fc::uyvy::ya_uv(fill.data(), 2 * width_in_memory, key.data(), 2 * width_in_memory, result.ya.data(),
                  2 * width_in_memory, result.cbcr.data(), width_in_memory, xres, yres, rescale);
  return result;
}

TEST_P(alpha_example, fill_and_key_write_one_pair_in_each_padded_row) {
  const bytes fill = counted(24);
  const bytes key = counted(24, 91);
  const fill_and_key result = convert_fill_and_key(6, 4, 2, false);
  for (const std::size_t row : {0U, 1U}) {
    const std::size_t at = 12 * row;
    EXPECT_EQ(part(result.ya, at, 12), joined({fill[at + 1], key[at + 1], fill[at + 3], key[at + 3]}, filled(8, 77)));
    EXPECT_EQ(part(result.cbcr, 6 * row, 6), joined({fill[at], fill[at + 2]}, filled(4, 77)));
  }
}

TEST_P(alpha_example, fill_and_key_write_one_pair_of_a_tight_image) {
  const fill_and_key result = convert_fill_and_key(4, 4, 2, false);
  EXPECT_EQ(part(result.ya, 4, 12), filled(12, 77));
  EXPECT_EQ(part(result.cbcr, 2, 6), filled(6, 77));
  EXPECT_NE(part(result.ya, 0, 4), filled(4, 77));
}

TEST_P(alpha_example, fill_and_key_without_pixels_write_nothing) {
  for (const auto& [xres, yres] : {std::pair{0, 2}, {2, 0}, {-4, 2}, {4, -2}, {-4, -2}}) {
    const fill_and_key result = convert_fill_and_key(6, xres, yres, true);
    EXPECT_EQ(result.ya, filled(24, 77));
    EXPECT_EQ(result.cbcr, filled(12, 77));
  }
}

TEST_P(alpha_example, key_luma_is_stretched_to_alpha) {
  for (const auto& [luma, alpha] :
       {std::pair{0, 0}, {17, 0}, {18, 1}, {100, 97}, {128, 130}, {233, 253}, {234, 255}, {235, 255}, {255, 255}}) {
    const auto k = static_cast<std::uint8_t>(luma);
    bytes ya(4), cbcr(2);
    fc::uyvy::ya_uv(bytes{1, 2, 3, 4}.data(), 4, bytes{9, k, 9, k}.data(), 4, ya.data(), 4, cbcr.data(), 2, 2, 1, true);
    EXPECT_EQ(ya, (bytes{2, static_cast<std::uint8_t>(alpha), 4, static_cast<std::uint8_t>(alpha)}));
    EXPECT_EQ(cbcr, (bytes{1, 3}));
  }
}

// Compositing over black.

TEST_P(alpha_example, full_alpha_leaves_video_unchanged) {
  const bytes uyvy = counted(2 * 66);
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, uyvy, filled(66, 255), 66, 132), uyvy);
}

TEST_P(alpha_example, no_alpha_gives_black_or_nearly) {
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, repeated({128, 235, 128, 16}, 33), filled(66, 0), 66, 132),
            repeated({128, 16, 128, 16}, 33));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, repeated({0, 15, 255, 0}, 33), filled(66, 0), 66, 132),
            repeated({127, 15, 128, 15}, 33));
}

TEST_P(alpha_example, half_alpha_halves_the_distance_to_black) {
  const bytes result = convert_key_row(&fc::uyvy_a::uyvy, repeated({240, 116, 16, 216}, 33), filled(66, 127), 66, 132);
  EXPECT_EQ(result, repeated({184, 66, 72, 116}, 33));
}

TEST_P(alpha_example, cb_follows_the_first_alpha_and_cr_the_second) {
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, {240, 235, 240, 235}, {255, 0}, 2, 4), (bytes{240, 235, 128, 16}));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, {240, 235, 240, 235}, {0, 255}, 2, 4), (bytes{128, 16, 240, 235}));
}

TEST_P(alpha_example, chroma_of_444_is_that_of_the_even_pixel) {
  const bytes luma_first = {10, 20, 30, 255, 40, 50, 60, 255};
  const bytes cr_first = {30, 20, 10, 255, 60, 50, 40, 255};
  const bytes wanted = {20, 10, 30, 40};
  EXPECT_EQ(convert_row(&fc::ycbcra::uyvy, luma_first, 2, 4), wanted);
  EXPECT_EQ(convert_row(&fc::ycbcrx::uyvy, luma_first, 2, 4), wanted);
  EXPECT_EQ(convert_row(&fc::vuya::uyvy, cr_first, 2, 4), wanted);
  EXPECT_EQ(convert_row(&fc::vuyx::uyvy, cr_first, 2, 4), wanted);
  EXPECT_EQ(convert_keyed(&fc::ycbcra::uyvy_a, luma_first, 2, 1).uyvy, wanted);
  EXPECT_EQ(convert_keyed(&fc::vuya::uyvy_a, cr_first, 2, 1).uyvy, wanted);
}

TEST_P(alpha_example, an_unused_fourth_byte_is_ignored) {
  bytes source = counted(4 * 66);
  const bytes before = convert_row(&fc::ycbcrx::uyvy, source, 66, 132);
  for (std::size_t i = 3; i < source.size(); i += 4) source[i] ^= 255;
  EXPECT_EQ(convert_row(&fc::ycbcrx::uyvy, source, 66, 132), before);
}

TEST_P(alpha_example, an_odd_line_completes_its_last_pair) {
  EXPECT_EQ(convert_row(&fc::ycbcrx::uyvy, {10, 20, 30, 0, 40, 50, 60, 0}, 1, 8),
            (bytes{20, 10, 30, 40, 77, 77, 77, 77}));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::ycbcra, {1, 2, 3, 4}, {5, 6}, 1, 12),
            (bytes{2, 1, 3, 5, 4, 1, 3, 6, 77, 77, 77, 77}));
}

}  // namespace
}  // namespace morvane::tests
