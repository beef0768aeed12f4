#include "rules/colour.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "rules/arithmetic.h"

namespace morvane::tests::rules {
namespace {

constexpr double greatest = 65535;

// The nearest integer. Near a tie, the last digit of a double could decide.
int nearest_integer(double value) {
  const double distance_to_tie = std::abs(value - std::floor(value) - 0.5);
  if (distance_to_tie < 0.0001) throw std::logic_error("a coefficient that lies on a tie");
  return static_cast<int>(std::floor(value + 0.5));
}

int times_2_to(int bits, double coefficient) {
  return nearest_integer(std::ldexp(coefficient, bits));
}

}  // namespace

span span_of(range in, int bits) {
  if (in == range::video) return {.black = 4096, .luma = 56064, .chroma = 57344};
  const int all = ((1 << bits) - 1) << (16 - bits);
  return {.black = 0, .luma = all, .chroma = all};
}

shares shares_of(matrix m) {
  switch (m) {
    case matrix::bt601:
      return {.r = 0.299, .b = 0.114};
    case matrix::bt709:
      return {.r = 0.2126, .b = 0.0722};
    case matrix::bt2020:
      break;
  }
  return {.r = 0.2627, .b = 0.0593};
}

form form_of(int bits_of_one_picture, int bits_of_the_other) {
  return std::max(bits_of_one_picture, bits_of_the_other) <= 10 ? form::narrow : form::wide;
}

to_rgb to_rgb_of(matrix m, const span& s) {
  const auto [kr, kb] = shares_of(m);
  const double kg = 1 - kr - kb;
  const double chroma = greatest / s.chroma;
  return {.luma = times_2_to(13, greatest / s.luma),
          .cr_to_r = times_2_to(13, 2 * (1 - kr) * chroma),
          .cb_to_g = times_2_to(13, 2 * (1 - kb) * kb / kg * chroma),
          .cr_to_g = times_2_to(13, 2 * (1 - kr) * kr / kg * chroma),
          .cb_to_b = times_2_to(13, 2 * (1 - kb) * chroma)};
}

// Green has what red and blue leave, so that grey has no chroma and white is as bright as it can be.
from_rgb from_rgb_of(matrix m, const span& s) {
  const auto [kr, kb] = shares_of(m);
  const double luma = s.luma / greatest;
  const double chroma = s.chroma / greatest;
  from_rgb c{};
  c.y_r = times_2_to(15, kr * luma);
  c.y_b = times_2_to(15, kb * luma);
  c.y_g = times_2_to(15, luma) - c.y_r - c.y_b;
  c.cb_b = times_2_to(15, chroma / 2);
  c.cb_r = times_2_to(15, kr / (2 * (1 - kb)) * chroma);
  c.cb_g = c.cb_b - c.cb_r;
  c.cr_r = times_2_to(15, chroma / 2);
  c.cr_b = times_2_to(15, kb / (2 * (1 - kr)) * chroma);
  c.cr_g = c.cr_r - c.cr_b;
  return c;
}

rgb narrow_sums(const ycbcr& of, const to_rgb& by, const span& s) {
  const int cb = of.cb - 32768;
  const int cr = of.cr - 32768;
  const int grey = rounded_product(32768 - s.black, by.luma) + rounded_product(of.y - 32768, by.luma);
  return {.r = grey + rounded_product(cr, by.cr_to_r),
          .g = grey - rounded_product(cb, by.cb_to_g) - rounded_product(cr, by.cr_to_g),
          .b = grey + rounded_product(cb, by.cb_to_b)};
}

namespace {

int four_times(int quarter) {
  return std::min(std::max(quarter, 0) * 4, 65535);
}

rgb narrow_rgb_of(const ycbcr& of, const to_rgb& by, const span& s) {
  const rgb quarters = narrow_sums(of, by, s);
  return {four_times(quarters.r), four_times(quarters.g), four_times(quarters.b)};
}

int wide_sample(int sum) {
  return clamped_to_word((sum + 4096) >> 13);
}

rgb wide_rgb_of(const ycbcr& of, const to_rgb& by, const span& s) {
  const int cb = of.cb - 32768;
  const int cr = of.cr - 32768;
  const int grey = by.luma * (of.y - s.black);
  return {.r = wide_sample(grey + by.cr_to_r * cr),
          .g = wide_sample(grey - by.cb_to_g * cb - by.cr_to_g * cr),
          .b = wide_sample(grey + by.cb_to_b * cb)};
}

ycbcr narrow_ycbcr_of(const rgb& of, const from_rgb& by, const span& s) {
  const int r = of.r >> 1;
  const int g = of.g >> 1;
  const int b = of.b >> 1;
  const int y = rounded_product(r, by.y_r) + rounded_product(g, by.y_g) + rounded_product(b, by.y_b);
  const int cb = rounded_product(b, by.cb_b) - rounded_product(g, by.cb_g) - rounded_product(r, by.cb_r);
  const int cr = rounded_product(r, by.cr_r) - rounded_product(g, by.cr_g) - rounded_product(b, by.cr_b);
  return {.y = clamped_to_word(s.black + 2 * y),
          .cb = clamped_to_word(32768 + 2 * cb),
          .cr = clamped_to_word(32768 + 2 * cr)};
}

int without_15_bits(int sum) {
  return (sum + 16384) >> 15;
}

ycbcr wide_ycbcr_of(const rgb& of, const from_rgb& by, const span& s) {
  const int y = without_15_bits(by.y_r * of.r + by.y_g * of.g + by.y_b * of.b);
  const int cb = without_15_bits(by.cb_b * of.b - by.cb_g * of.g - by.cb_r * of.r);
  const int cr = without_15_bits(by.cr_r * of.r - by.cr_g * of.g - by.cr_b * of.b);
  return {.y = clamped_to_word(s.black + y), .cb = clamped_to_word(32768 + cb), .cr = clamped_to_word(32768 + cr)};
}

}  // namespace

rgb rgb_of(const ycbcr& of, const to_rgb& by, const span& s, form in) {
  return in == form::narrow ? narrow_rgb_of(of, by, s) : wide_rgb_of(of, by, s);
}

ycbcr ycbcr_of(const rgb& of, const from_rgb& by, const span& s, form in) {
  return in == form::narrow ? narrow_ycbcr_of(of, by, s) : wide_ycbcr_of(of, by, s);
}

int luminance_of(const rgb& of, matrix m) {
  const from_rgb by = from_rgb_of(m, span_of(range::full, 16));
  return without_15_bits(by.y_r * of.r + by.y_g * of.g + by.y_b * of.b);
}

namespace {

// value * to / from, with 14 fractional bits of the quotient.
int in_span(int value, int to, int from) {
  const int quotient = times_2_to(14, static_cast<double>(to) / from);
  return (quotient * value + 8192) >> 14;
}

}  // namespace

int luma_in(const span& to, int luma, const span& from) {
  return clamped_to_word(to.black + in_span(luma - from.black, to.luma, from.luma));
}

int chroma_in(const span& to, int chroma, const span& from) {
  return clamped_to_word(32768 + in_span(chroma - 32768, to.chroma, from.chroma));
}

int full_of_video(int sample) {
  return clamped_to_word((9576 * (sample - 4096) + 4096) >> 13);
}

int video_of_full(int sample) {
  return 4096 + ((28032 * sample + 16384) >> 15);
}

}  // namespace morvane::tests::rules
