// The integer matrices between RGB and YCbCr, of ITU-R BT.601 and BT.709 for video range (Y 16..235, C 16..240).
#pragma once

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

// One output of the matrix to RGB, in units of 1 / 256: clamp((y * Y + cb * Cb + cr * Cr + constant) >> 8, 0, 255).
// The offsets 16 and 128 and the rounding are folded into the constant.
template <bool ccir_709>
struct ycbcr_to_rgb {
  static constexpr ycbcr_weights b = ccir_709 ? ycbcr_weights{299, 541, 0, -73695} : ycbcr_weights{298, 517, 0, -70635};
  static constexpr ycbcr_weights g =
      ccir_709 ? ycbcr_weights{298, -54, -136, 19635} : ycbcr_weights{298, -99, -207, 34680};
  static constexpr ycbcr_weights r = ccir_709 ? ycbcr_weights{298, 0, 459, -63240} : ycbcr_weights{298, 0, 409, -56865};
};

// A sum t of up to 18 bits split for 16-bit lanes: t = 256 * whole + rest, where every weight of the whole is small and
// the rest lies in 0..65535 for all samples, so that t >> 8 = whole + (rest >> 8) exactly.
struct split_weights {
  ycbcr_weights whole;
  ycbcr_weights rest;
};

constexpr int lowest(const ycbcr_weights w) {
  return w.constant + 255 * ((w.y < 0 ? w.y : 0) + (w.cb < 0 ? w.cb : 0) + (w.cr < 0 ? w.cr : 0));
}

constexpr int highest(const ycbcr_weights w) {
  return w.constant + 255 * ((w.y > 0 ? w.y : 0) + (w.cb > 0 ? w.cb : 0) + (w.cr > 0 ? w.cr : 0));
}

constexpr split_weights split(const ycbcr_weights w) {
  split_weights s{};
  s.whole = {(w.y + 128) >> 8, (w.cb + 128) >> 8, (w.cr + 128) >> 8, 0};
  s.rest = {w.y - 256 * s.whole.y, w.cb - 256 * s.whole.cb, w.cr - 256 * s.whole.cr, 0};
  s.whole.constant = (w.constant + lowest(s.rest)) >> 8;
  s.rest.constant = w.constant - 256 * s.whole.constant;
  return s;
}

constexpr bool fits_16_bits(const split_weights s) {
  return lowest(s.rest) >= 0 && highest(s.rest) <= 65535;
}

}  // namespace Processing::Morvane::format_conversion::line
