// Single statements about RGB to video, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "examples/keyed.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class rgb_to_video_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, rgb_to_video_example, all_backends(), backend_name);

const bytes red_bgrx = {0, 0, 255, 9};
const bytes black_bgrx = {0, 0, 0, 9};

TEST_P(rgb_to_video_example, red_through_the_direct_matrix_gives_102_and_61_as_even_pixel_and_239_and_61_as_odd) {
  for (const auto convert : {&fc::bgrx::uyvy, &fc::bgrx_709::uyvy}) {
    const bytes even = convert_row(convert, joined(red_bgrx, black_bgrx), 2, 4);
    EXPECT_EQ(even, (bytes{102, 61, 128, 16}));
    const bytes odd = convert_row(convert, joined(black_bgrx, red_bgrx), 2, 4);
    EXPECT_EQ(odd, (bytes{128, 16, 239, 61}));
  }
}

TEST_P(rgb_to_video_example, red_first_formats_give_the_same_video) {
  for (const auto convert : {&fc::rgbx::uyvy, &fc::rgbx_709::uyvy})
    EXPECT_EQ(convert_row(convert, {255, 0, 0, 9, 255, 0, 0, 9}, 2, 4), (bytes{102, 61, 239, 61}));
}

TEST_P(rgb_to_video_example, red_with_bt601_gives_81_90_and_239) {
  EXPECT_EQ(convert_row(&fc::bgrx_601::uyvy, repeated(red_bgrx, 2), 2, 4), (bytes{90, 81, 239, 81}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::uyvy, {255, 0, 0, 9, 255, 0, 0, 9}, 2, 4), (bytes{90, 81, 239, 81}));
}

TEST_P(rgb_to_video_example, white_over_black_gives_luma_236_and_chroma_127) {
  for (const auto convert : {&fc::bgra::uyvy, &fc::rgba::uyvy})
    EXPECT_EQ(convert_row(convert, filled(8, 255), 2, 4), (bytes{127, 236, 127, 236}));
}

TEST_P(rgb_to_video_example, red_over_black_gives_the_blue_difference_twice) {
  EXPECT_EQ(convert_row(&fc::bgra::uyvy, {0, 0, 255, 255, 0, 0, 255, 255}, 2, 4), (bytes{102, 61, 102, 61}));
  EXPECT_EQ(convert_row(&fc::rgba::uyvy, {255, 0, 0, 255, 255, 0, 0, 255}, 2, 4), (bytes{102, 61, 102, 61}));
}

TEST_P(rgb_to_video_example, a_transparent_pixel_is_black) {
  for (const auto convert : {&fc::bgra::uyvy, &fc::rgba::uyvy})
    for (const bytes& color : {bytes{255, 255, 255, 0}, {10, 200, 30, 0}, {255, 0, 255, 0}})
      EXPECT_EQ(convert_row(convert, repeated(color, 40), 40, 80), repeated({128, 16}, 40));
}

TEST_P(rgb_to_video_example, half_transparent_white_gives_luma_126_and_chroma_127) {
  for (const auto convert : {&fc::bgra::uyvy, &fc::rgba::uyvy})
    EXPECT_EQ(convert_row(convert, repeated({255, 255, 255, 128}, 2), 2, 4), (bytes{127, 126, 127, 126}));
}

TEST_P(rgb_to_video_example, bgr_white_gives_235_127_and_128) {
  EXPECT_EQ(convert_row(&fc::bgr::uyvy, filled(6, 255), 2, 4), (bytes{127, 235, 128, 235}));
}

TEST_P(rgb_to_video_example, bgr_red_gives_62_102_and_239) {
  EXPECT_EQ(convert_row(&fc::bgr::uyvy, {0, 0, 255, 0, 0, 255}, 2, 4), (bytes{102, 62, 239, 62}));
}

TEST_P(rgb_to_video_example, three_pixels_write_one_pair_from_32_bit_rgb_and_two_from_bgr) {
  const bytes of_bgrx = convert_row(&fc::bgrx::uyvy, counted(12), 3, 12);
  EXPECT_NE(part(of_bgrx, 0, 4), filled(4, 77));
  EXPECT_EQ(part(of_bgrx, 4, 8), filled(8, 77));
  const bytes of_bgr = convert_row(&fc::bgr::uyvy, repeated({0, 0, 255}, 4), 3, 12);
  EXPECT_EQ(part(of_bgr, 0, 8), repeated({102, 62, 239, 62}, 2));
  EXPECT_EQ(part(of_bgr, 8, 4), filled(4, 77));
}

TEST_P(rgb_to_video_example, u_comes_from_the_first_pixel_alone_and_v_from_the_second) {
  const bytes green = {0, 255, 0, 9};
  const bytes blue = {255, 0, 0, 9};
  const bytes green_blue = convert_row(&fc::bgrx::uyvy, joined(green, blue), 2, 4);
  const bytes green_green = convert_row(&fc::bgrx::uyvy, joined(green, green), 2, 4);
  const bytes blue_blue = convert_row(&fc::bgrx::uyvy, joined(blue, blue), 2, 4);
  EXPECT_EQ(green_blue[0], green_green[0]);
  EXPECT_EQ(green_blue[2], blue_blue[2]);
}

TEST_P(rgb_to_video_example, a_tight_image_of_odd_width_pairs_pixels_across_rows_but_not_in_the_suffixed_forms) {
  const bytes source = repeated(red_bgrx, 6);
  bytes destination = filled(12, 77);
  fc::bgrx::uyvy(source.data(), 12, destination.data(), 6, 3, 2);
  EXPECT_EQ(destination, repeated({102, 61, 239, 61}, 3));
  destination = filled(12, 77);
  fc::bgrx_709::uyvy(source.data(), 12, destination.data(), 6, 3, 2);
  EXPECT_EQ(destination, (bytes{102, 61, 239, 61, 77, 77, 102, 61, 239, 61, 77, 77}));
}

// With a plane of alpha.

constexpr to_uyvy_a* from_rgb[] = {&fc::bgra::uyvy_a, &fc::bgra_601::uyvy_a, &fc::bgra_709::uyvy_a,
                                   &fc::rgba::uyvy_a, &fc::rgba_601::uyvy_a, &fc::rgba_709::uyvy_a};

TEST_P(rgb_to_video_example, a_single_alpha_of_254_is_reported_wherever_it_is) {
  for (to_uyvy_a* convert : from_rgb) expect_report_of_one_alpha(convert);
}

TEST_P(rgb_to_video_example, one_pixel_of_rgb_writes_nothing_and_is_opaque) {
  for (to_uyvy_a* convert : from_rgb) {
    bool opaque = false;
    const keyed result = convert_keyed(convert, {1, 2, 3, 4}, 1, 1, &opaque);
    EXPECT_TRUE(opaque);
    EXPECT_EQ(result.uyvy, filled(2, 77));
    EXPECT_EQ(result.alpha, filled(1, 77));
  }
}

TEST_P(rgb_to_video_example, a_transparent_last_odd_column_of_rgb_does_not_count) {
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

TEST_P(rgb_to_video_example, no_rows_or_pixels_are_opaque) {
  for (to_uyvy_a* convert : from_rgb) expect_nothing_to_be_opaque(convert);
}

TEST_P(rgb_to_video_example, a_transparent_red_keeps_its_color) {
  const keyed result = convert_keyed(&fc::bgra::uyvy_a, repeated({0, 0, 255, 0}, 60), 60, 1);
  EXPECT_EQ(result.uyvy, repeated({102, 61, 239, 61}, 30));
  EXPECT_EQ(result.alpha, filled(60, 0));
}

TEST_P(rgb_to_video_example, u_is_that_of_the_even_pixel_and_v_that_of_the_odd_one) {
  const bytes red_and_black = {255, 0, 0, 1, 0, 0, 0, 2};
  const bytes black_and_red = {0, 0, 0, 1, 255, 0, 0, 2};
  EXPECT_EQ(convert_keyed(&fc::rgba_601::uyvy_a, red_and_black, 2, 1).uyvy, (bytes{90, 81, 128, 16}));
  EXPECT_EQ(convert_keyed(&fc::rgba_601::uyvy_a, black_and_red, 2, 1).uyvy, (bytes{128, 16, 239, 81}));
}

TEST_P(rgb_to_video_example, rgb_with_alpha_without_a_suffix_is_709) {
  const bytes source = counted(4 * 50);
  EXPECT_EQ(convert_keyed(&fc::bgra::uyvy_a, source, 50, 1).uyvy,
            convert_keyed(&fc::bgra_709::uyvy_a, source, 50, 1).uyvy);
  EXPECT_EQ(convert_keyed(&fc::rgba::uyvy_a, source, 50, 1).uyvy,
            convert_keyed(&fc::rgba_709::uyvy_a, source, 50, 1).uyvy);
}

}  // namespace
}  // namespace morvane::tests
