// Compositing over a background.
#include "rules/background.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "rules/convert.h"
#include "rules/promises/pictures.h"

namespace morvane::tests::rules {
namespace {

TEST(rules_background, is_all_of_nothing_and_nothing_of_all) {
  for (int sample = 0; sample < 65536; sample += 51) {
    EXPECT_EQ(over(sample, 65535, 12345), sample);
    EXPECT_EQ(over(12345, 0, sample), sample);
  }
}

TEST(rules_background, is_rounded) {
  EXPECT_EQ(over(1000, 32768, 3), 502);
  EXPECT_EQ(over(65535, 1, 0), 1);
  EXPECT_EQ(over(50001, 12345, 777), 10049);
}

TEST(rules_background, the_same_over_itself_stays_so) {
  for (int sample = 0; sample < 65536; sample += 257)
    for (int alpha = 0; alpha < 65536; alpha += 241) ASSERT_EQ(over(sample, alpha, sample), sample);
}

// In 32 unsigned bits without a division, and none of them overflows.
TEST(rules_background, division_is_two_shifts) {
  constexpr std::uint64_t greatest = 65535ULL * 65535;
  const auto check = [](std::uint64_t p) {
    const std::uint64_t t = p + 32768;
    ASSERT_LE(t + (t >> 16), 0xffffffffU);
    ASSERT_EQ((t + (t >> 16)) >> 16, (p + 32767) / 65535) << p;
  };
  for (std::uint64_t p = 0; p <= greatest; p += 1009) check(p);
  for (std::uint64_t whole = 0; whole < 65535; ++whole) {
    check(whole * 65535 + 32767);  // the last below a half, and the first above
    check(whole * 65535 + 32768);
  }
  check(greatest);
}

options over_color(rgb8 color) {
  options asked;
  asked.background = color;
  return asked;
}

// 200 257 * 128 257 / 65535 = 25800.8, which is 100.4 of 255, and so on.
TEST(rules_background, rgb_by_hand) {
  stored_picture source("bgra", 3, 1);
  source.put(0, {200, 100, 50, 128, 200, 100, 50, 255, 200, 100, 50, 0});
  stored_picture destination("bgr", 3, 1);
  convert(source.of(), destination.of(), over_color({10, 20, 30}));
  EXPECT_EQ(destination.bytes(0), (ints{115, 60, 30, 200, 100, 50, 30, 20, 10}));
}

TEST(rules_background, has_no_effect_where_alpha_stays) {
  stored_picture source("bgra", 1, 1);
  source.put(0, {200, 100, 50, 128});
  stored_picture destination("rgba", 1, 1);
  convert(source.of(), destination.of(), over_color({10, 20, 30}));
  EXPECT_EQ(destination.bytes(0), (ints{50, 100, 200, 128}));
}

TEST(rules_background, without_it_color_stays_as_it_is_stored) {
  stored_picture source("bgra", 1, 1);
  source.put(0, {200, 100, 50, 0});
  stored_picture destination("bgr", 1, 1);
  convert(source.of(), destination.of(), {});
  EXPECT_EQ(destination.bytes(0), (ints{200, 100, 50}));
}

// Red of video is 63 102 240. Chroma has the alpha of the left pixel.
TEST(rules_background, is_taken_to_video) {
  stored_picture source("uyvy_a", 6, 1);
  source.put(0, {50, 60, 70, 80, 50, 60, 70, 80, 50, 60, 70, 80});
  source.put(1, {0, 255, 255, 0, 0, 255});
  stored_picture destination("uyvy", 6, 1);
  convert(source.of(), destination.of(), over_color({255, 0, 0}));
  EXPECT_EQ(destination.bytes(0), (ints{102, 63, 240, 80, 50, 60, 70, 63, 102, 63, 240, 80}));
}

// The colour has its sums of 32 bits, which round 160 204 32 to another luma than those of 16 bits.
TEST(rules_background, is_as_exact_as_it_can_be) {
  stored_picture source("ycbcra", 1, 1);
  stored_picture destination("ycbcrx", 1, 1);
  convert(source.of(), destination.of(), over_color({160, 204, 32}));
  EXPECT_EQ(destination.bytes(0), (ints{172, 57, 116, 255}));
}

TEST(rules_background, is_taken_to_the_matrix_and_range_of_the_source) {
  stored_picture source("ycbcra", 1, 1);
  source.of().of = matrix::bt601;
  source.of().in = range::full;
  stored_picture destination("ycbcrx", 1, 1);
  destination.of().of = matrix::bt601;
  destination.of().in = range::full;
  convert(source.of(), destination.of(), over_color({0, 0, 255}));
  EXPECT_EQ(destination.bytes(0), (ints{29, 255, 107, 255}));
}

TEST(rules_background, of_video_rgb_is_of_video_range) {
  stored_picture source("bgra", 1, 1);
  stored_picture destination("bgr", 1, 1);
  source.of().in = range::video;
  destination.of().in = range::video;
  convert(source.of(), destination.of(), over_color({255, 0, 0}));
  EXPECT_EQ(destination.bytes(0), (ints{16, 16, 235}));
  destination.of().in = range::full;
  convert(source.of(), destination.of(), over_color({255, 0, 0}));
  EXPECT_EQ(destination.bytes(0), (ints{0, 0, 255}));
}

}  // namespace
}  // namespace morvane::tests::rules
