// The integer matrices between RGB and YCbCr, of ITU-R BT.601, BT.709 and BT.2020 for video range (Y 16..235,
// C 16..240).
#pragma once

#include <cstdint>
#include <type_traits>

#include "../vector/inline.h"
#include "../vector/weights.h"

namespace Processing::Morvane::format_conversion::kernel {

using vector::weights;
using vector::ycbcr_weights;

// Of video. Callers name them by flags, as which they are converted to these.
enum class matrix : bool { bt601, bt709 };

// Of the bytes of RGB in memory.
enum class byte_order : bool { bgra, rgba };

struct rgb_weights {
  int r, g, b;
};

// Luma in units of 1 / 128, chroma in units of 1 / 256.
template <matrix of>
struct rgb_to_ycbcr {
  static constexpr bool is_709 = of == matrix::bt709;
  static constexpr rgb_weights y = is_709 ? rgb_weights{23, 79, 8} : rgb_weights{33, 64, 13};
  static constexpr rgb_weights cb = is_709 ? rgb_weights{-26, -87, 112} : rgb_weights{-38, -75, 112};
  static constexpr rgb_weights cr = is_709 ? rgb_weights{112, -102, -10} : rgb_weights{112, -94, -18};
};

// The weights of a pixel's bytes in the order in which they lie in memory.
template <byte_order order>
constexpr weights in_memory_order(const rgb_weights w) {
  return order == byte_order::rgba ? weights{w.r, w.g, w.b, 0} : weights{w.b, w.g, w.r, 0};
}

// The weighted sum of the colour bytes of a pixel.
template <weights w>
MORVANE_INLINE int weighted_sum(const uint8_t* pixel) {
  constexpr weights k = w;
  return k.first * pixel[0] + k.second * pixel[1] + k.third * pixel[2];
}

// One output of a matrix to RGB: clamp((y * Y + cb * Cb + cr * Cr + constant) >> bits, 0, 255). The offsets 16 and 128
// and the rounding are folded into the constant.
template <matrix of>
struct ycbcr_to_rgb {
  static constexpr bool is_709 = of == matrix::bt709;
  static constexpr int bits = 8;
  static constexpr ycbcr_weights b = is_709 ? ycbcr_weights{299, 541, 0, -73695} : ycbcr_weights{298, 517, 0, -70635};
  static constexpr ycbcr_weights g =
      is_709 ? ycbcr_weights{298, -54, -136, 19635} : ycbcr_weights{298, -99, -207, 34680};
  static constexpr ycbcr_weights r = is_709 ? ycbcr_weights{298, 0, 459, -63240} : ycbcr_weights{298, 0, 409, -56865};
};

// The coarser matrices, of video with a key, of planar RGB and of BT.2020: y = 74 * (Y - 16) - 8, and the weights below
// on Cb - 128 and Cr - 128.
template <int b_cb, int g_cb, int g_cr, int r_cr>
struct coarse_matrix {
  static constexpr int bits = 6;
  static constexpr ycbcr_weights b = {74, b_cb, 0, -1192 - 128 * b_cb};
  static constexpr ycbcr_weights g = {74, -g_cb, -g_cr, -1192 + 128 * (g_cb + g_cr)};
  static constexpr ycbcr_weights r = {74, 0, r_cr, -1192 - 128 * r_cr};
};

template <matrix of>
using ycbcr_to_rgb_coarse =
    std::conditional_t<of == matrix::bt709, coarse_matrix<128, 14, 34, 115>, coarse_matrix<128, 25, 52, 102>>;
using ycbcr_to_rgb_2020 = coarse_matrix<137, 12, 42, 107>;

}  // namespace Processing::Morvane::format_conversion::kernel
