// The integer matrices between RGB and YCbCr, of ITU-R BT.601, BT.709 and BT.2020 for video range (Y 16..235,
// C 16..240).
#pragma once

#include <cstdint>
#include <type_traits>

#include "format_conversion_utils.h"
#include "vector/weights.h"

namespace Processing::Morvane::format_conversion::line {

struct rgb_weights {
  int r, g, b;
};

// Luma in units of 1 / 128, chroma in units of 1 / 256.
template <bool colorspace_709>
struct rgb_to_ycbcr {
  static constexpr rgb_weights y = colorspace_709 ? rgb_weights{23, 79, 8} : rgb_weights{33, 64, 13};
  static constexpr rgb_weights cb = colorspace_709 ? rgb_weights{-26, -87, 112} : rgb_weights{-38, -75, 112};
  static constexpr rgb_weights cr = colorspace_709 ? rgb_weights{112, -102, -10} : rgb_weights{112, -94, -18};
};

// The weights of a pixel's bytes in the order in which they lie in memory.
template <bool is_rgba>
constexpr weights in_memory_order(const rgb_weights w) {
  return is_rgba ? weights{w.r, w.g, w.b, 0} : weights{w.b, w.g, w.r, 0};
}

// The weighted sum of the colour bytes of a pixel.
template <weights w>
MORVANE_INLINE int weighted_sum(const uint8_t* pixel) {
  constexpr weights k = w;
  return k.first * pixel[0] + k.second * pixel[1] + k.third * pixel[2];
}

// One output of the matrix to RGB, in units of 1 / 256: clamp((y * Y + cb * Cb + cr * Cr + constant) >> 8, 0, 255).
// The offsets 16 and 128 and the rounding are folded into the constant.
template <bool ccir_709>
struct ycbcr_to_rgb {
  static constexpr ycbcr_weights b = ccir_709 ? ycbcr_weights{299, 541, 0, -73695} : ycbcr_weights{298, 517, 0, -70635};
  static constexpr ycbcr_weights g =
      ccir_709 ? ycbcr_weights{298, -54, -136, 19635} : ycbcr_weights{298, -99, -207, 34680};
  static constexpr ycbcr_weights r = ccir_709 ? ycbcr_weights{298, 0, 459, -63240} : ycbcr_weights{298, 0, 409, -56865};
};

// The coarser matrices, of video with a key, of planar RGB and of BT.2020, in units of 1 / 64: y = 74 * (Y - 16) - 8,
// and the weights below on Cb - 128 and Cr - 128.
template <int b_cb, int g_cb, int g_cr, int r_cr>
struct coarse_matrix {
  static constexpr ycbcr_weights b = {74, b_cb, 0, -1192 - 128 * b_cb};
  static constexpr ycbcr_weights g = {74, -g_cb, -g_cr, -1192 + 128 * (g_cb + g_cr)};
  static constexpr ycbcr_weights r = {74, 0, r_cr, -1192 - 128 * r_cr};
};

template <bool ccir_709>
using ycbcr_to_rgb_coarse =
    std::conditional_t<ccir_709, coarse_matrix<128, 14, 34, 115>, coarse_matrix<128, 25, 52, 102>>;
using ycbcr_to_rgb_2020 = coarse_matrix<137, 12, 42, 107>;

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

}  // namespace Processing::Morvane::format_conversion::line
