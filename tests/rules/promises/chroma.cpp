// Chroma filters: one line of each by hand, and the ways to compute them in 16 bits.
#include "rules/chroma.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace morvane::tests::rules {
namespace {

constexpr place places[] = {place::on_first, place::between};

TEST(rules_chroma, doubled_by_hand) {
  const line c = {100, 200, 301};
  EXPECT_EQ(doubled(c, 6, filter::linear, place::on_first), (line{100, 150, 200, 251, 301, 301}));
  EXPECT_EQ(doubled(c, 5, filter::linear, place::on_first), (line{100, 150, 200, 251, 301}));
  EXPECT_EQ(doubled(c, 6, filter::linear, place::between), (line{100, 125, 175, 225, 276, 301}));
  EXPECT_EQ(doubled(c, 5, filter::linear, place::between), (line{100, 125, 175, 225, 276}));
  for (const place at : places) {
    EXPECT_EQ(doubled(c, 6, filter::nearest, at), (line{100, 100, 200, 200, 301, 301}));
    EXPECT_EQ(doubled(c, 5, filter::nearest, at), (line{100, 100, 200, 200, 301}));
  }
}

TEST(rules_chroma, halved_by_hand) {
  const line even = {10, 20, 30, 41};
  const line odd = {10, 20, 31};
  EXPECT_EQ(halved(even, filter::linear, place::on_first), (line{13, 30}));
  EXPECT_EQ(halved(odd, filter::linear, place::on_first), (line{13, 28}));
  EXPECT_EQ(halved(even, filter::linear, place::between), (line{15, 36}));
  EXPECT_EQ(halved(odd, filter::linear, place::between), (line{15, 31}));
  for (const place at : places) {
    EXPECT_EQ(halved(even, filter::nearest, at), (line{10, 30}));
    EXPECT_EQ(halved(odd, filter::nearest, at), (line{10, 31}));
  }
}

TEST(rules_chroma, one_sample_stays_as_it_is) {
  const line one = {12345};
  for (const filter by : {filter::linear, filter::nearest})
    for (const place at : places) {
      EXPECT_EQ(doubled(one, 1, by, at), one);
      EXPECT_EQ(doubled(one, 2, by, at), (line{12345, 12345}));
      EXPECT_EQ(halved(one, by, at), one);
    }
}

TEST(rules_chroma, the_same_everywhere_stays_so) {
  for (const int value : {0, 1, 2, 3, 32768, 65535}) {
    const line five(5, static_cast<std::uint16_t>(value));
    for (const place at : places) {
      EXPECT_EQ(doubled(five, 9, filter::linear, at), line(9, five[0]));
      EXPECT_EQ(halved(five, filter::linear, at), line(3, five[0]));
    }
  }
}

// Nothing but the last sample, so that rounding shows which way comes first.
grid corner() {
  grid g(2, 2);
  g.set(1, 1, 2);
  return g;
}

TEST(rules_chroma, rows_are_doubled_before_columns) {
  EXPECT_EQ(resampled(corner(), {2, 2}, {1, 1}, 4, 3, {}).words, (line{0, 0, 0, 0, 0, 1, 1, 1, 0, 1, 2, 2}));
}

TEST(rules_chroma, columns_are_halved_before_rows) {
  EXPECT_EQ(resampled(corner(), {1, 1}, {2, 2}, 2, 2, {}).words, line{1});
}

int floor_average(int a, int b) {
  return (a + b) >> 1;
}

int rounding_average(int a, int b) {
  return (a + b + 1) >> 1;
}

TEST(rules_chroma, three_and_one_is_two_averages) {
  for (int a = 0; a < 65536; a += 13)
    for (int b = a % 7; b < 65536; b += 17)
      ASSERT_EQ((3 * a + b + 2) >> 2, rounding_average(a, floor_average(a, b))) << a << " " << b;
}

TEST(rules_chroma, one_two_and_one_is_two_averages) {
  for (int p = 0; p < 65536; p += 251)
    for (int q = p % 11; q < 65536; q += 257)
      for (int c = q % 13; c < 65536; c += 241)
        ASSERT_EQ((p + 2 * c + q + 2) >> 2, rounding_average(c, floor_average(p, q))) << p << " " << c << " " << q;
}

}  // namespace
}  // namespace morvane::tests::rules
