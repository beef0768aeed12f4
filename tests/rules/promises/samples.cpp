// Depths: what is stored and read again.
#include "rules/samples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace morvane::tests::rules {
namespace {

constexpr int depths_of_video[] = {8, 10, 12, 16};
constexpr int depths_of_fractions[] = {2, 8, 10, 12, 16};

void expect_back(int bits, int more, meaning of) {
  for (std::uint32_t number = 0; number < 1U << bits; ++number) {
    const std::uint32_t deep = number_of(working_sample(number, bits, of), more, of);
    ASSERT_EQ(number_of(working_sample(deep, more, of), bits, of), number) << bits << " bits in " << more;
  }
}

TEST(rules_depths, video_comes_back_from_no_fewer_bits) {
  for (const int bits : depths_of_video)
    for (const int more : depths_of_video)
      if (more >= bits) expect_back(bits, more, meaning::luma);
}

TEST(rules_depths, fractions_come_back_from_no_fewer_bits) {
  for (const int bits : depths_of_fractions)
    for (const int more : depths_of_fractions)
      if (more >= bits) expect_back(bits, more, meaning::fraction);
}

TEST(rules_depths, all_and_nothing_stay_so) {
  for (const int bits : depths_of_fractions)
    for (const int other : depths_of_fractions) {
      const std::uint32_t all = (1U << bits) - 1;
      EXPECT_EQ(number_of(working_sample(all, bits, meaning::fraction), other, meaning::fraction), (1U << other) - 1);
      EXPECT_EQ(number_of(working_sample(0, bits, meaning::fraction), other, meaning::fraction), 0U);
    }
}

TEST(rules_depths, working_samples_come_back_from_floats) {
  const auto comes_back = [](int sample, meaning of) { return working_sample(float_of(sample, of), of) == sample; };
  for (int sample = 0; sample <= 65535; ++sample) ASSERT_TRUE(comes_back(sample, meaning::fraction)) << sample;
  for (int sample = 4096; sample <= 60160; ++sample) ASSERT_TRUE(comes_back(sample, meaning::luma)) << sample;
  for (int sample = 4096; sample <= 61440; ++sample) ASSERT_TRUE(comes_back(sample, meaning::chroma)) << sample;
}

TEST(rules_depths, floats_outside_their_range_are_clamped_and_what_is_no_number_is_zero) {
  constexpr float infinite = std::numeric_limits<float>::infinity();
  const float none = std::nanf("");
  for (const meaning of : {meaning::luma, meaning::chroma, meaning::fraction}) {
    const int least = of == meaning::fraction ? 0 : 4096;
    const int greatest = of == meaning::luma ? 60160 : of == meaning::chroma ? 61440 : 65535;
    EXPECT_EQ(working_sample(none, of), least);
    EXPECT_EQ(working_sample(-infinite, of), least);
    EXPECT_EQ(working_sample(-2.0F, of), least);
    EXPECT_EQ(working_sample(2.0F, of), greatest);
    EXPECT_EQ(working_sample(infinite, of), greatest);
  }
}

TEST(rules_depths, floats_hold_the_nominal_range) {
  EXPECT_EQ(float_of(4096, meaning::luma), 0.0F);
  EXPECT_EQ(float_of(60160, meaning::luma), 1.0F);
  EXPECT_EQ(float_of(65535, meaning::luma), 1.0F);
  EXPECT_EQ(float_of(0, meaning::chroma), -0.5F);
  EXPECT_EQ(float_of(32768, meaning::chroma), 0.0F);
  EXPECT_EQ(float_of(65535, meaning::chroma), 0.5F);
  EXPECT_EQ(float_of(65535, meaning::fraction), 1.0F);
}

TEST(rules_depths, half_floats_are_known_numbers) {
  EXPECT_EQ(half_of(0.0F), 0x0000U);
  EXPECT_EQ(half_of(1.0F), 0x3c00U);
  EXPECT_EQ(half_of(0.5F), 0x3800U);
  EXPECT_EQ(half_of(0x1p-14F), 0x0400U);
  EXPECT_EQ(half_of(0x1p-24F), 0x0001U);
  EXPECT_EQ(half_of(1.0F - 0x1p-12F), 0x3c00U);  // between the last one and 1, which is even
  EXPECT_EQ(half_of(0.5F + 0x1p-12F), 0x3800U);  // to even, down
  EXPECT_EQ(half_of(0.5F + 0x1p-12F + 0x1p-20F), 0x3801U);
  EXPECT_EQ(half_of(0.5F + 3 * 0x1p-12F), 0x3802U);  // to even, up
  EXPECT_EQ(half_of(0x1p-25F), 0x0000U);
  EXPECT_EQ(half_of(3 * 0x1p-25F), 0x0002U);
  EXPECT_EQ(float_of_half(0x3c00), 1.0F);
  EXPECT_EQ(float_of_half(0xbc00), -1.0F);
  EXPECT_EQ(float_of_half(0x7c00), HUGE_VALF);
  EXPECT_EQ(float_of_half(0x0001), 0x1p-24F);
  EXPECT_TRUE(std::isnan(float_of_half(0x7c01)));
  for (std::uint32_t half = 0; half <= 0x3c00; ++half) ASSERT_EQ(half_of(float_of_half(half)), half);
}

// Samples of up to ten bits.
TEST(rules_depths, fractions_come_back_from_half_floats) {
  for (const int bits : {2, 8, 10})
    for (std::uint32_t number = 0; number < 1U << bits; ++number) {
      const float stored =
          float_of_half(half_of(float_of(working_sample(number, bits, meaning::fraction), meaning::fraction)));
      ASSERT_EQ(number_of(working_sample(stored, meaning::fraction), bits, meaning::fraction), number) << bits;
    }
}

// Rounded to the nearest, and not past the greatest number.
TEST(rules_depths, video_is_rounded) {
  EXPECT_EQ(number_of(0x127f, 8, meaning::luma), 0x12U);
  EXPECT_EQ(number_of(0x1280, 8, meaning::luma), 0x13U);
  EXPECT_EQ(number_of(0xffff, 8, meaning::luma), 0xffU);
  EXPECT_EQ(number_of(0xffff, 10, meaning::chroma), 0x3ffU);
}

// Half of the lowest bit is lost before, so the nearest number is missed by a little.
TEST(rules_depths, fractions_are_rounded) {
  const auto distance = [](int sample, int bits) {
    return std::abs(number_of(sample, bits, meaning::fraction) - sample / 65535.0 * ((1 << bits) - 1));
  };
  for (int sample = 0; sample < 65536; ++sample) {
    ASSERT_LE(distance(sample, 8), 0.51) << sample;
    ASSERT_LE(distance(sample, 10), 0.54) << sample;
    ASSERT_LE(distance(sample, 12), 0.62) << sample;
  }
}

}  // namespace
}  // namespace morvane::tests::rules
