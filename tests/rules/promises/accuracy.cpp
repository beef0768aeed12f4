// How far the matrices are from the real-valued formulas.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "options.h"
#include "rules/colour.h"
#include "rules/promises/pixels.h"
#include "rules/samples.h"

namespace morvane::tests::rules {
namespace {

// From 0 to 1, and the formulas that are exact.
struct real_rgb {
  double r, g, b;
};

// As numbers of n bits, but not whole.
struct real_numbers {
  double y, cb, cr;
};

double luma_of(double number, range in, int bits) {
  return in == range::full ? number / ((1 << bits) - 1) : (number / (1 << (bits - 8)) - 16) / 219;
}

double difference_of(double number, range in, int bits) {
  const double none = 1 << (bits - 1);
  return in == range::full ? (number - none) / ((1 << bits) - 1) : (number - none) / (1 << (bits - 8)) / 224;
}

real_rgb real_rgb_of(const numbers& n, matrix m, range in, int bits) {
  const auto [kr, kb] = shares_of(m);
  const double luma = luma_of(n.y, in, bits);
  const double r = luma + 2 * (1 - kr) * difference_of(n.cr, in, bits);
  const double b = luma + 2 * (1 - kb) * difference_of(n.cb, in, bits);
  return {r, (luma - kr * r - kb * b) / (1 - kr - kb), b};
}

real_numbers real_numbers_of(const real_rgb& c, matrix m, range in, int bits) {
  const auto [kr, kb] = shares_of(m);
  const double luma = kr * c.r + (1 - kr - kb) * c.g + kb * c.b;
  const double blue = (c.b - luma) / (2 * (1 - kb));
  const double red = (c.r - luma) / (2 * (1 - kr));
  const double none = 1 << (bits - 1);
  const int all = (1 << bits) - 1;
  const int unit = 1 << (bits - 8);
  if (in == range::full) return {luma * all, none + blue * all, none + red * all};
  return {(16 + 219 * luma) * unit, none + 224 * blue * unit, none + 224 * red * unit};
}

real_rgb clamped(const real_rgb& c) {
  return {std::clamp(c.r, 0.0, 1.0), std::clamp(c.g, 0.0, 1.0), std::clamp(c.b, 0.0, 1.0)};
}

// Of a number of n bits from the exact one, which is brought within them.
double distance(std::uint32_t number, double exact, int bits) {
  return std::abs(number - std::clamp(exact, 0.0, static_cast<double>((1 << bits) - 1)));
}

double distance(const rgb& made, const real_rgb& exact, int bits) {
  const double all = (1 << bits) - 1;
  const auto of = [=](int sample, double share) {
    return distance(number_of(sample, bits, meaning::fraction), share * all, bits);
  };
  return std::max({of(made.r, exact.r), of(made.g, exact.g), of(made.b, exact.b)});
}

double distance(const ycbcr& made, const real_numbers& exact, int bits) {
  const numbers n = stored(made, bits);
  return std::max({distance(n.y, exact.y, bits), distance(n.cb, exact.cb, bits), distance(n.cr, exact.cr, bits)});
}

// The greatest distance(one, second, third) over numbers of n bits that are `step` apart, and the last.
template <class Distance>
double farthest(int bits, std::uint32_t step, Distance distance_of) {
  std::vector<std::uint32_t> some;
  for (std::uint32_t number = 0; number < (1U << bits) - 1; number += step) some.push_back(number);
  some.push_back((1U << bits) - 1);
  double found = 0;
  for (const std::uint32_t first : some)
    for (const std::uint32_t second : some)
      for (const std::uint32_t third : some) found = std::max(found, distance_of(first, second, third));
  return found;
}

// Numbers of the source that are tested: every step-th of `bits`, fewer where the machine is slow.
struct sample_of_source {
  int bits;
  std::uint32_t step;

  std::uint32_t own_step() const { return thin() ? 8 * step : step; }
};

void expect_rgb_within(double limit, sample_of_source from, int bits) {
  for (const matrix m : matrices)
    for (const range in : ranges) {
      const span s = span_of(in, from.bits);
      const to_rgb by = to_rgb_of(m, s);
      const form f = form_of(from.bits, bits);
      const double found = farthest(from.bits, from.own_step(), [&](auto y, auto cb, auto cr) {
        const numbers n = {y, cb, cr};
        return distance(rgb_of(working(n, from.bits), by, s, f), real_rgb_of(n, m, in, from.bits), bits);
      });
      EXPECT_LE(found, limit) << from.bits << " bits to " << bits;
    }
}

void expect_ycbcr_within(double limit, sample_of_source from, int bits) {
  const double all = (1 << from.bits) - 1;
  const auto sample = [&](std::uint32_t number) { return working_sample(number, from.bits, meaning::fraction); };
  for (const matrix m : matrices)
    for (const range in : ranges) {
      const span s = span_of(in, bits);
      const from_rgb by = from_rgb_of(m, s);
      const form f = form_of(from.bits, bits);
      const double found = farthest(from.bits, from.own_step(), [&](auto r, auto g, auto b) {
        const ycbcr made = ycbcr_of({sample(r), sample(g), sample(b)}, by, s, f);
        return distance(made, real_numbers_of({r / all, g / all, b / all}, m, in, bits), bits);
      });
      EXPECT_LE(found, limit) << from.bits << " bits to " << bits;
    }
}

// Colours that RGB does not have are clamped on the way.
void expect_other_matrix_within(double limit, sample_of_source from, int bits) {
  for (const matrix m : matrices)
    for (const matrix other : matrices)
      for (const range in : ranges) {
        if (m == other) continue;
        const span s = span_of(in, from.bits);
        const span other_span = span_of(range::video, bits);
        const to_rgb there = to_rgb_of(m, s);
        const from_rgb back = from_rgb_of(other, other_span);
        const form f = form_of(from.bits, bits);
        const double found = farthest(from.bits, from.own_step(), [&](auto y, auto cb, auto cr) {
          const numbers n = {y, cb, cr};
          const ycbcr made = ycbcr_of(rgb_of(working(n, from.bits), there, s, f), back, other_span, f);
          const real_rgb exact = clamped(real_rgb_of(n, m, in, from.bits));
          return distance(made, real_numbers_of(exact, other, range::video, bits), bits);
        });
        EXPECT_LE(found, limit) << from.bits << " bits to " << bits;
      }
}

TEST(rules_accuracy, rgb_of_eight_bits_is_within_0_55) {
  expect_rgb_within(0.55, {8, 1}, 8);
  expect_rgb_within(0.55, {10, 9}, 8);
  expect_rgb_within(0.55, {16, 1237}, 8);
}

TEST(rules_accuracy, rgb_of_ten_bits_is_within_0_65) {
  expect_rgb_within(0.65, {10, 7}, 10);
  expect_rgb_within(0.65, {8, 3}, 10);
}

TEST(rules_accuracy, rgb_of_twelve_bits_is_within_0_8) {
  expect_rgb_within(0.8, {12, 31}, 12);
  expect_rgb_within(0.8, {8, 3}, 12);
  expect_rgb_within(0.8, {16, 997}, 12);
}

TEST(rules_accuracy, ycbcr_of_eight_bits_is_within_0_55) {
  expect_ycbcr_within(0.55, {8, 1}, 8);
  expect_ycbcr_within(0.55, {10, 9}, 8);
  expect_ycbcr_within(0.55, {16, 1237}, 8);
}

TEST(rules_accuracy, ycbcr_of_ten_bits_is_within_0_65) {
  expect_ycbcr_within(0.65, {10, 7}, 10);
  expect_ycbcr_within(0.65, {8, 3}, 10);
}

TEST(rules_accuracy, ycbcr_of_twelve_bits_is_within_0_8) {
  expect_ycbcr_within(0.8, {12, 31}, 12);
  expect_ycbcr_within(0.8, {8, 3}, 12);
  expect_ycbcr_within(0.8, {16, 997}, 12);
}

TEST(rules_accuracy, ycbcr_of_another_matrix_is_as_near) {
  expect_other_matrix_within(0.55, {8, 3}, 8);
  expect_other_matrix_within(0.65, {10, 13}, 10);
  expect_other_matrix_within(0.8, {12, 61}, 12);
}

}  // namespace
}  // namespace morvane::tests::rules
