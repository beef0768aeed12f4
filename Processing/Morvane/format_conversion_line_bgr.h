// Line kernel of 24-bit RGB to uyvy.
#pragma once

#include "backend/run.h"
#include "format_conversion_matrix.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion::line::bgr {

// Pairs of pixels: six bytes to four. U comes from the even pixel and V from the odd one. Luma has 8 fractional bits,
// finer than that of 32-bit RGB.
struct uyvy_kernel {
  using matrix = rgb_to_ycbcr<true>;

  static constexpr weights luma = {16, 157, 47, 0};
  static constexpr weights u = in_memory_order<false>(matrix::cb);
  static constexpr weights v = in_memory_order<false>(matrix::cr);

  template <weights w, int offset>
  MORVANE_INLINE static uint8_t byte(const uint8_t* pixel) {
    return static_cast<uint8_t>((weighted_sum<w>(pixel) >> 8) + offset);
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t pair[] = {byte<u, 128>(src), byte<luma, 16>(src), byte<v, 128>(src + 3), byte<luma, 16>(src + 3)};
    for (int i = 0; i < 4; ++i) dst[i] = pair[i];
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  // A weight of 157 is more than a signed byte holds; green stands twice among the bytes, so it is split in two.
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    constexpr weights luma_with_green_twice = {luma.first, luma.second - luma.second / 2, luma.third, luma.second / 2};
    const auto pixels = V::load3_weighable(src);
    const auto uyvy = V::upper_bytes(V::template weigh<u, v>(pixels), V::template weigh<luma_with_green_twice>(pixels));
    V::store_words(dst, V::template add_to_bytes<128, 16>(uyvy));
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_bgr, uint8_t* p_dst_uyvy, const int no_pixels) {
    uyvy_kernel kernel;
    walk<V, 6, 4>(kernel, begun_pairs(no_pixels), p_src_bgr, p_dst_uyvy);
  }
};

template <bool src_align, bool dst_align, bool colorspace_709>
requires colorspace_709 inline void uyvy(const uint8_t* p_src_bgr, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<uyvy_kernel>()(p_src_bgr, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709(const uint8_t* p_src_bgr, uint8_t* p_dst_uyvy, const int no_pixels) {
  uyvy<src_align, dst_align, true>(p_src_bgr, p_dst_uyvy, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::bgr
