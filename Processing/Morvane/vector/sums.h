// Weighted sums of luma and chroma in 16-bit lanes: whether a sum fits, and how one that does not is taken apart. All
// of it happens when the kernels are compiled.
#pragma once

#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

constexpr int lowest(const ycbcr_weights w) {
  return w.constant + 255 * ((w.y < 0 ? w.y : 0) + (w.cb < 0 ? w.cb : 0) + (w.cr < 0 ? w.cr : 0));
}

constexpr int highest(const ycbcr_weights w) {
  return w.constant + 255 * ((w.y > 0 ? w.y : 0) + (w.cb > 0 ? w.cb : 0) + (w.cr > 0 ? w.cr : 0));
}

// Whether words hold a sum.
constexpr bool fits_signed(const ycbcr_weights w) {
  return lowest(w) >= -32768 && highest(w) <= 32767;
}

constexpr bool fits_unsigned(const ycbcr_weights w) {
  return lowest(w) >= 0 && highest(w) <= 65535;
}

// A sum t split for 16-bit lanes: t = 2^bits * whole + rest, where every weight of the whole is small and the rest fits
// a word, so that t >> bits = whole + (rest >> bits) exactly.
struct split_weights {
  ycbcr_weights whole;
  ycbcr_weights rest;
};

constexpr split_weights split(const ycbcr_weights w, const int bits, const int constant_of_whole) {
  const int one = 1 << bits;
  const int half = one / 2;
  const ycbcr_weights whole = {(w.y + half) >> bits, (w.cb + half) >> bits, (w.cr + half) >> bits, constant_of_whole};
  return {whole,
          {w.y - one * whole.y, w.cb - one * whole.cb, w.cr - one * whole.cr, w.constant - one * whole.constant}};
}

// The whole needs no constant, or one that vanishes when luma is taken as 255 - Y.
constexpr split_weights split(const ycbcr_weights w, const int bits) {
  const split_weights s = split(w, bits, 0);
  return fits_unsigned(s.rest) ? s : split(w, bits, -255 * s.whole.y);
}

constexpr bool is_of_turned_luma(const split_weights s) {
  return s.whole.constant != 0;
}

// A sum whose terms are all even, halved. An odd constant loses a half, which no shift would have shown.
constexpr bool can_be_halved(const ycbcr_weights w) {
  return w.y % 2 == 0 && w.cb % 2 == 0 && w.cr % 2 == 0;
}

constexpr ycbcr_weights halve(const ycbcr_weights w) {
  return {w.y / 2, w.cb / 2, w.cr / 2, w.constant >> 1};
}

// A sum that 16-bit lanes hold as it is, once a weight beyond a signed byte is halved together with all others.
struct short_sum {
  ycbcr_weights weights;
  int bits;
};

constexpr short_sum shorten(const ycbcr_weights w, const int bits) {
  const bool too_large = w.y > 127 || w.cb > 127 || w.cr > 127;
  return too_large && can_be_halved(w) ? short_sum{halve(w), bits - 1} : short_sum{w, bits};
}

// Two positive terms may stop at 32767 before the constant is added. That does not show when the sum is past the
// largest byte anyway.
constexpr bool is_exact(const short_sum s) {
  const ycbcr_weights w = s.weights;
  const bool stop_is_white = highest(w) - w.constant <= 32767 || 32767 + w.constant >= 256 << s.bits;
  return w.y <= 127 && w.cb <= 127 && w.cr <= 127 && fits_signed(w) && stop_is_white;
}

// Whether the sum only falls with chroma, and fits an unsigned word where it is not negative: then what is below 0 may
// stop there, and what is above 32767 is white.
constexpr bool stops_at_zero(const short_sum s) {
  return s.weights.cb <= 0 && s.weights.cr <= 0 && highest(s.weights) <= 65535 &&
         highest(s.weights) - lowest(s.weights) <= 65535;
}

}  // namespace Processing::Morvane::format_conversion::vector
