// Single statements about keys, fill and key, and compositing over black, with their numbers, one test each, on every
// backend.
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

namespace fc = Processing::Morvane::format_conversion;

class key_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, key_example, all_backends(), backend_name);

// Luma stretched to a key and back.

constexpr std::pair<int, int> key_examples[] = {{0, 0},     {16, 0},    {17, 0},    {18, 1},    {100, 97},
                                                {128, 130}, {233, 253}, {234, 255}, {235, 255}, {255, 255}};

// A pair whose two pixels have the same luma, and neutral chroma.
bytes grey_pair(int luma) {
  const auto y = static_cast<std::uint8_t>(luma);
  return {128, y, 128, y};
}

TEST_P(key_example, key_luma_is_stretched_to_full_range) {
  for (const auto& [luma, key] : key_examples) {
    const bytes source = repeated(grey_pair(luma), 40);
    bytes y(80);
    fc::uyvy::y(source.data(), 160, y.data(), 80, 80, 1, true);
    EXPECT_EQ(y, filled(80, static_cast<std::uint8_t>(key))) << luma;
    fc::uyvy::y(source.data(), 160, y.data(), 80, 80, 1, false);
    EXPECT_EQ(y, filled(80, static_cast<std::uint8_t>(luma)));
  }
}

TEST_P(key_example, luma_becomes_grey_video) {
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

TEST_P(key_example, key_luma_of_16_bits_is_stretched_to_full_range) {
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

// Fill and key.

TEST_P(key_example, ya_uv_has_alpha_beside_luma) {
  bytes ya(4), cbcr(2);
  fc::uyvy_a::ya_uv(bytes{1, 2, 3, 4}.data(), 4, bytes{5, 6}.data(), 2, ya.data(), 4, cbcr.data(), 2, 2, 1);
  EXPECT_EQ(ya, (bytes{2, 5, 4, 6}));
  EXPECT_EQ(cbcr, (bytes{1, 3}));
}

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

TEST_P(key_example, fill_and_key_write_one_pair_in_each_padded_row) {
  const bytes fill = counted(24);
  const bytes key = counted(24, 91);
  const fill_and_key result = convert_fill_and_key(6, 4, 2, false);
  for (const std::size_t row : {0U, 1U}) {
    const std::size_t at = 12 * row;
    EXPECT_EQ(part(result.ya, at, 12), joined({fill[at + 1], key[at + 1], fill[at + 3], key[at + 3]}, filled(8, 77)));
    EXPECT_EQ(part(result.cbcr, 6 * row, 6), joined({fill[at], fill[at + 2]}, filled(4, 77)));
  }
}

TEST_P(key_example, fill_and_key_write_one_pair_of_a_tight_image) {
  const fill_and_key result = convert_fill_and_key(4, 4, 2, false);
  EXPECT_EQ(part(result.ya, 4, 12), filled(12, 77));
  EXPECT_EQ(part(result.cbcr, 2, 6), filled(6, 77));
  EXPECT_NE(part(result.ya, 0, 4), filled(4, 77));
}

TEST_P(key_example, fill_and_key_without_pixels_write_nothing) {
  for (const auto& [xres, yres] : {std::pair{0, 2}, {2, 0}, {-4, 2}, {4, -2}, {-4, -2}}) {
    const fill_and_key result = convert_fill_and_key(6, xres, yres, true);
    EXPECT_EQ(result.ya, filled(24, 77));
    EXPECT_EQ(result.cbcr, filled(12, 77));
  }
}

TEST_P(key_example, key_luma_is_stretched_to_alpha) {
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

TEST_P(key_example, full_alpha_leaves_video_unchanged) {
  const bytes uyvy = counted(2 * 66);
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, uyvy, filled(66, 255), 66, 132), uyvy);
}

TEST_P(key_example, no_alpha_gives_black_or_nearly) {
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, repeated({128, 235, 128, 16}, 33), filled(66, 0), 66, 132),
            repeated({128, 16, 128, 16}, 33));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, repeated({0, 15, 255, 0}, 33), filled(66, 0), 66, 132),
            repeated({127, 15, 128, 15}, 33));
}

TEST_P(key_example, half_alpha_halves_the_distance_to_black) {
  const bytes result = convert_key_row(&fc::uyvy_a::uyvy, repeated({240, 116, 16, 216}, 33), filled(66, 127), 66, 132);
  EXPECT_EQ(result, repeated({184, 66, 72, 116}, 33));
}

TEST_P(key_example, cb_follows_the_first_alpha_and_cr_the_second) {
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, {240, 235, 240, 235}, {255, 0}, 2, 4), (bytes{240, 235, 128, 16}));
  EXPECT_EQ(convert_key_row(&fc::uyvy_a::uyvy, {240, 235, 240, 235}, {0, 255}, 2, 4), (bytes{128, 16, 240, 235}));
}

}  // namespace
}  // namespace morvane::tests
