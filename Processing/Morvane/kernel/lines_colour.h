// Colour of working samples: matrices and ranges with coefficients that are known when a picture is converted, and
// compositing. Coefficients are members of the kernels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "list.h"
#include "samples.h"

namespace Processing::Morvane::format_conversion::kernel {

// YCbCr to RGB with coefficients times 8192. The narrow form rounds every product and suffices for ten bits; its
// samples are those of 16 bits, in steps of four.
struct ycbcr_lines_to_rgb_narrow
    : each_sample<read_line, read_line, read_line, written_line, written_line, written_line> {
  int16_t y, r_cr, g_cb, g_cr, b_cb;
  int16_t black;  // of luma, weighted

  // Sums lie between -24576 and 40959, so that they fit unsigned words when they are lifted.
  static constexpr uint16_t lift = 24576;

  MORVANE_INLINE static uint16_t clamped(const uint16_t lifted) {
    const auto sum = static_cast<uint16_t>((lifted > lift ? lifted : lift) - lift);
    return sum > 16383 ? uint16_t{65535} : static_cast<uint16_t>(sum << 2);
  }
  template <class V>
  MORVANE_INLINE void line(const uint16_t* __restrict luma, const uint16_t* __restrict cb,
                           const uint16_t* __restrict cr, uint16_t* __restrict r, uint16_t* __restrict g,
                           uint16_t* __restrict b, const int count) const {
    const auto k = *this;
    const auto lifted_black = static_cast<uint16_t>(k.black + lift);
    for (int i = 0; i < count; ++i) {
      const int16_t u = around_middle(cb[i]);
      const int16_t v = around_middle(cr[i]);
      const auto grey = static_cast<uint16_t>(lifted_black + rounded_product(around_middle(luma[i]), k.y));
      r[i] = clamped(static_cast<uint16_t>(grey + rounded_product(v, k.r_cr)));
      g[i] = clamped(static_cast<uint16_t>(grey - rounded_product(u, k.g_cb) - rounded_product(v, k.g_cr)));
      b[i] = clamped(static_cast<uint16_t>(grey + rounded_product(u, k.b_cb)));
    }
  }
};

struct ycbcr_lines_to_rgb_wide
    : each_sample<read_line, read_line, read_line, written_line, written_line, written_line> {
  int32_t y, r_cr, g_cb, g_cr, b_cb;
  int32_t black;  // where luma begins

  template <class V>
  MORVANE_INLINE void line(const uint16_t* __restrict luma, const uint16_t* __restrict cb,
                           const uint16_t* __restrict cr, uint16_t* __restrict r, uint16_t* __restrict g,
                           uint16_t* __restrict b, const int count) const {
    const auto k = *this;
    for (int i = 0; i < count; ++i) {
      const int grey = k.y * (luma[i] - k.black) + 4096;
      const int u = cb[i] - 32768;
      const int v = cr[i] - 32768;
      r[i] = clamp_to_word((grey + k.r_cr * v) >> 13);
      g[i] = clamp_to_word((grey - k.g_cb * u - k.g_cr * v) >> 13);
      b[i] = clamp_to_word((grey + k.b_cb * u) >> 13);
    }
  }
};

// The coefficients of RGB to YCbCr, times 32768. Those of Cb for R and G, and of Cr for G and B, are subtracted.
template <class Coefficient>
struct rgb_coefficients {
  Coefficient y_r, y_g, y_b, cb_r, cb_g, cb_b, cr_r, cr_g, cr_b;
  int32_t black;  // where luma begins
};

// Spans of ten bits leave room for what rounding adds, so nothing needs clamping.
struct rgb_lines_to_ycbcr_narrow
    : each_sample<read_line, read_line, read_line, written_line, written_line, written_line> {
  rgb_coefficients<int16_t> of;

  template <class V>
  MORVANE_INLINE void line(const uint16_t* __restrict r, const uint16_t* __restrict g, const uint16_t* __restrict b,
                           uint16_t* __restrict luma, uint16_t* __restrict cb, uint16_t* __restrict cr,
                           const int count) const {
    const auto k = of;
    for (int i = 0; i < count; ++i) {
      const auto red = static_cast<int16_t>(r[i] >> 1);
      const auto green = static_cast<int16_t>(g[i] >> 1);
      const auto blue = static_cast<int16_t>(b[i] >> 1);
      luma[i] = static_cast<uint16_t>(
          k.black + 2 * (rounded_product(red, k.y_r) + rounded_product(green, k.y_g) + rounded_product(blue, k.y_b)));
      cb[i] = static_cast<uint16_t>(
          32768 + 2 * (rounded_product(blue, k.cb_b) - rounded_product(green, k.cb_g) - rounded_product(red, k.cb_r)));
      cr[i] = static_cast<uint16_t>(
          32768 + 2 * (rounded_product(red, k.cr_r) - rounded_product(green, k.cr_g) - rounded_product(blue, k.cr_b)));
    }
  }
};

struct rgb_lines_to_ycbcr_wide
    : each_sample<read_line, read_line, read_line, written_line, written_line, written_line> {
  rgb_coefficients<int32_t> of;

  template <class V>
  MORVANE_INLINE void line(const uint16_t* __restrict r, const uint16_t* __restrict g, const uint16_t* __restrict b,
                           uint16_t* __restrict luma, uint16_t* __restrict cb, uint16_t* __restrict cr,
                           const int count) const {
    const auto k = of;
    for (int i = 0; i < count; ++i) {
      luma[i] = clamp_to_word(k.black + ((k.y_r * r[i] + k.y_g * g[i] + k.y_b * b[i] + 16384) >> 15));
      cb[i] = clamp_to_word(32768 + ((k.cb_b * b[i] - k.cb_g * g[i] - k.cb_r * r[i] + 16384) >> 15));
      cr[i] = clamp_to_word(32768 + ((k.cr_r * r[i] - k.cr_g * g[i] - k.cr_b * b[i] + 16384) >> 15));
    }
  }
};

// (r R + g G + b B + 16384) >> 15.
struct rgb_lines_to_luminance : each_sample<read_line, read_line, read_line, written_line> {
  int32_t r, g, b;

  template <class V>
  MORVANE_INLINE void line(const uint16_t* __restrict red, const uint16_t* __restrict green,
                           const uint16_t* __restrict blue, uint16_t* __restrict luminance, const int count) const {
    const auto k = *this;
    for (int i = 0; i < count; ++i)
      luminance[i] = clamp_to_word((k.r * red[i] + k.g * green[i] + k.b * blue[i] + 16384) >> 15);
  }
};

// clamp(to + ((factor * (v - from) + half) >> bits)), in place, half being that of 1 << bits: from one range to
// another.
struct scale_line : each_sample<written_line> {
  int32_t from, to, factor, bits;

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const auto k = *this;
    const int32_t half = 1 << (k.bits - 1);
    for (int i = 0; i < count; ++i)
      values[i] = clamp_to_word(k.to + ((k.factor * (values[i] - k.from) + half) >> k.bits));
  }
};

// Over a background by alpha, in place: (v * A + background * (65535 - A)) / 65535, rounded.
struct line_over_background : each_sample<read_line, written_line> {
  uint32_t background;

  template <class V>
  MORVANE_INLINE void line(const uint16_t* __restrict alpha, uint16_t* __restrict values, const int count) const {
    const uint32_t behind = background;
    for (int i = 0; i < count; ++i) {
      const uint32_t t = values[i] * uint32_t{alpha[i]} + behind * (65535U - alpha[i]) + 32768U;
      values[i] = static_cast<uint16_t>((t + (t >> 16)) >> 16);
    }
  }
};

using lines_colour_kernels =
    kernel_list<ycbcr_lines_to_rgb_narrow, ycbcr_lines_to_rgb_wide, rgb_lines_to_ycbcr_narrow, rgb_lines_to_ycbcr_wide,
                rgb_lines_to_luminance, scale_line, line_over_background>;

}  // namespace Processing::Morvane::format_conversion::kernel
