// Single statements about 4:4:4, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "examples/keyed.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class full_chroma_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, full_chroma_example, all_backends(), backend_name);

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

TEST_P(full_chroma_example, white_and_black_in_444) {
  for (image_conversion* convert : {&fc::bgra_601::ycbcra, &fc::bgra_709::ycbcra, &fc::rgba_601::crcbya}) {
    expect_color(convert, {255, 255, 255, 255}, {235, 127, 128});
    expect_color(convert, {0, 0, 0, 9}, {16, 128, 128});
  }
}

TEST_P(full_chroma_example, red_in_444) {
  expect_color(&fc::rgba_601::ycbcra, {255, 0, 0, 200}, {81, 90, 239});
  expect_color(&fc::rgba_709::ycbcra, {255, 0, 0, 200}, {61, 102, 239});
  expect_color(&fc::bgra_601::crcbya, {0, 0, 255, 200}, {81, 90, 239});
  expect_color(&fc::bgra_709::crcbya, {0, 0, 255, 200}, {61, 102, 239});
}

TEST_P(full_chroma_example, every_grey_but_black_has_a_cb_of_127) {
  for (int v = 1; v < 256; ++v) {
    const auto level = static_cast<std::uint8_t>(v);
    for (image_conversion* convert : {&fc::bgra_601::ycbcra, &fc::bgra_709::ycbcra}) {
      const bytes result = convert_row(convert, repeated({level, level, level, 0}, 2), 2, 8);
      EXPECT_EQ(result[1], 127);
      EXPECT_EQ(result[2], 128);
    }
  }
}

TEST_P(full_chroma_example, rgb_without_a_suffix_is_709) {
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

TEST_P(full_chroma_example, two_pixels_of_444_hold_luma_and_cr_of_the_second_in_the_first) {
  EXPECT_EQ(convert_row(&fc::rgba_601::ycbcra, white_and_red, 2, 8), (bytes{81, 127, 239, 5, 77, 90, 77, 9}));
  EXPECT_EQ(convert_row(&fc::rgba_601::crcbya, white_and_red, 2, 8), (bytes{81, 127, 239, 5, 77, 90, 77, 9}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::ycbcrx, white_and_red, 2, 8), (bytes{239, 127, 81, 255, 77, 90, 77, 255}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::crcbyx, white_and_red, 2, 8), (bytes{239, 127, 81, 255, 77, 90, 77, 255}));
}

TEST_P(full_chroma_example, a_single_pixel_of_444_has_luma_and_cr_the_other_way_round_when_luma_comes_first) {
  const bytes red = {255, 0, 0, 9};
  EXPECT_EQ(convert_row(&fc::rgba_601::ycbcra, red, 1, 4), (bytes{239, 90, 81, 9}));
  EXPECT_EQ(convert_row(&fc::rgba_601::crcbya, red, 1, 4), (bytes{81, 90, 239, 9}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::ycbcrx, red, 1, 4), (bytes{81, 90, 239, 255}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::crcbyx, red, 1, 4), (bytes{239, 90, 81, 255}));
}

TEST_P(full_chroma_example, every_row_of_444_with_padding_holds_its_own_last_pixel) {
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

// From and to video.

TEST_P(full_chroma_example, a_pair_becomes_two_pixels_of_ycbcrx_with_its_chroma) {
  EXPECT_EQ(convert_row(&fc::uyvy::ycbcrx, {100, 50, 200, 60}, 2, 8), (bytes{50, 100, 200, 255, 60, 100, 200, 255}));
}

TEST_P(full_chroma_example, three_pixels_of_ycbcrx_write_a_fourth) {
  const bytes result = convert_row(&fc::uyvy::ycbcrx, {1, 2, 3, 4, 5, 6, 7, 8}, 3, 20);
  EXPECT_EQ(part(result, 8, 12), (bytes{6, 5, 7, 255, 8, 5, 7, 255, 77, 77, 77, 77}));
}

TEST_P(full_chroma_example, both_pixels_of_444_take_the_chroma_of_their_pair) {
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::ycbcra, {1, 2, 3, 4}, {5, 6}, 2, 8), (bytes{2, 1, 3, 5, 4, 1, 3, 6}));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::crcbya, {1, 2, 3, 4}, {5, 6}, 2, 8), (bytes{3, 1, 2, 5, 3, 1, 4, 6}));
}

constexpr to_uyvy_a* from_444[] = {&fc::ycbcra::uyvy_a, &fc::vuya::uyvy_a};

TEST_P(full_chroma_example, a_single_alpha_of_254_is_reported_wherever_it_is) {
  for (to_uyvy_a* convert : from_444) expect_report_of_one_alpha(convert);
}

TEST_P(full_chroma_example, the_completed_pixel_of_444_counts) {
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

TEST_P(full_chroma_example, no_rows_or_pixels_are_opaque) {
  for (to_uyvy_a* convert : from_444) expect_nothing_to_be_opaque(convert);
}

TEST_P(full_chroma_example, chroma_of_444_is_that_of_the_even_pixel) {
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

TEST_P(full_chroma_example, an_unused_fourth_byte_is_ignored) {
  bytes source = counted(4 * 66);
  const bytes before = convert_row(&fc::ycbcrx::uyvy, source, 66, 132);
  for (std::size_t i = 3; i < source.size(); i += 4) source[i] ^= 255;
  EXPECT_EQ(convert_row(&fc::ycbcrx::uyvy, source, 66, 132), before);
}

TEST_P(full_chroma_example, an_odd_line_completes_its_last_pair) {
  EXPECT_EQ(convert_row(&fc::ycbcrx::uyvy, {10, 20, 30, 0, 40, 50, 60, 0}, 1, 8),
            (bytes{20, 10, 30, 40, 77, 77, 77, 77}));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::ycbcra, {1, 2, 3, 4}, {5, 6}, 1, 12),
            (bytes{2, 1, 3, 5, 4, 1, 3, 6, 77, 77, 77, 77}));
}

}  // namespace
}  // namespace morvane::tests
