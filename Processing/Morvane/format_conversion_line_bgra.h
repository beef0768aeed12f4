// Line kernels of 32-bit RGB to uyvy, with and without an alpha plane, and of luminance to 32-bit RGB.
#pragma once

#include "backend/run.h"
#include "format_conversion_matrix.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion::line::rgba_and_bgra {

// Pairs of pixels: eight bytes to four. U comes from the even pixel and V from the odd one.
//
// Over black every sum is first scaled by alpha / 256, the weight of green in luma is 80, and both chroma bytes are
// blue differences.
template <bool composite_over_black, bool colorspace_709, bool is_rgba>
requires(colorspace_709 || !composite_over_black) struct uyvy_kernel {
  using matrix = rgb_to_ycbcr<colorspace_709>;

  static constexpr weights luma = in_memory_order<is_rgba>(composite_over_black ? rgb_weights{23, 80, 8} : matrix::y);
  static constexpr weights u = in_memory_order<is_rgba>(matrix::cb);
  static constexpr weights v = in_memory_order<is_rgba>(composite_over_black ? matrix::cb : matrix::cr);

  template <weights w>
  MORVANE_INLINE static int sum(const uint8_t* pixel) {
    const int s = weighted_sum<w>(pixel);
    return composite_over_black ? (s * pixel[3]) >> 8 : s;
  }
  MORVANE_INLINE static uint8_t luma_byte(const int sum) { return static_cast<uint8_t>((sum + 16 * 128) >> 7); }
  MORVANE_INLINE static uint8_t chroma_byte(const int sum) { return static_cast<uint8_t>((sum + 128 * 256) >> 8); }
  // All of the pair is read before any of it is written, which shows where the planes overlap.
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t pair[] = {chroma_byte(sum<u>(src)), luma_byte(sum<luma>(src)), chroma_byte(sum<v>(src + 4)),
                            luma_byte(sum<luma>(src + 4))};
    for (int i = 0; i < 4; ++i) dst[i] = pair[i];
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  // The sums of a vector, shifted right. Two shifts of a scaled sum are one by as many bits.
  template <class V, int bits, weights even, weights odd>
  MORVANE_INLINE static auto sums(const typename V::weighable& pixels) {
    const auto s = V::template weigh<even, odd>(pixels);
    if constexpr (composite_over_black)
      return V::template scale_by_fourth < 8 + bits, is_unsigned(even) && is_unsigned(odd) > (s, pixels);
    else
      return V::template narrow<bits>(s);
  }
  template <class V>
  MORVANE_INLINE static auto load(const uint8_t* src) {
    return V::load4_weighable(src);
  }
  // The offsets are whole multiples of the divisors, so they may as well be added to the shifted bytes.
  template <class V>
  MORVANE_INLINE static void convert(const typename V::weighable& pixels, uint8_t* dst) {
    const auto chroma = sums<V, 8, u, v>(pixels);
    const auto y = sums<V, 7, luma, luma>(pixels);
    V::store_uyvy(dst, V::template add<128>(chroma), V::template add<16>(y));
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    convert<V>(load<V>(src), dst);
  }

  // The last pixel of an odd line is neither read nor written.
  MORVANE_INLINE static size_t pairs(const int no_pixels) { return whole_pairs(no_pixels); }

  template <class V>
  static void line(const uint8_t* p_src_bgra, uint8_t* p_dst_uyvy, const int no_pixels) {
    uyvy_kernel kernel;
    walk_in_order<V, 8, 4>(kernel, pairs(no_pixels), p_src_bgra, p_dst_uyvy);
  }
};

template <bool src_align, bool dst_align, bool composite_over_black, bool colorspace_709, bool is_rgba>
inline void uyvy(const uint8_t* p_src_bgra, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<uyvy_kernel<composite_over_black, colorspace_709, is_rgba>>()(p_src_bgra, p_dst_uyvy, no_pixels);
}

// The same without compositing, with the alpha of both pixels in a plane of its own.
template <bool src_align, bool dst_align, bool colorspace_709, bool track_alpha, bool is_rgba>
inline bool uyvy_a(const uint8_t* p_src, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return backend::line_of<uyvy_a_kernel<uyvy_kernel<false, colorspace_709, is_rgba>, track_alpha>>()(
      p_src, p_dst_uyvy, p_dst_alpha, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::rgba_and_bgra

namespace Processing::Morvane::format_conversion::line::bgrx {

template <bool src_align, bool dst_align>
inline void uyvy_601(const uint8_t* p_src_bgrx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, false, false>(p_src_bgrx, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709(const uint8_t* p_src_bgrx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, true, false>(p_src_bgrx, p_dst_uyvy, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::bgrx

namespace Processing::Morvane::format_conversion::line::rgbx {

template <bool src_align, bool dst_align>
inline void uyvy_601(const uint8_t* p_src_rgbx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, false, true>(p_src_rgbx, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709(const uint8_t* p_src_rgbx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, true, true>(p_src_rgbx, p_dst_uyvy, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::rgbx

namespace Processing::Morvane::format_conversion::line::bgra {

template <bool src_align, bool dst_align>
inline void uyvy_601_a(const uint8_t* p_src_bgra, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  rgba_and_bgra::uyvy_a<src_align, dst_align, false, false, false>(p_src_bgra, p_dst_uyvy, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline bool uyvy_601_a_ex(const uint8_t* p_src_bgra, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return rgba_and_bgra::uyvy_a<src_align, dst_align, false, true, false>(p_src_bgra, p_dst_uyvy, p_dst_alpha,
                                                                         no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709_a(const uint8_t* p_src_bgra, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  rgba_and_bgra::uyvy_a<src_align, dst_align, true, false, false>(p_src_bgra, p_dst_uyvy, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline bool uyvy_709_a_ex(const uint8_t* p_src_bgra, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return rgba_and_bgra::uyvy_a<src_align, dst_align, true, true, false>(p_src_bgra, p_dst_uyvy, p_dst_alpha, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::bgra

namespace Processing::Morvane::format_conversion::line::rgba {

template <bool src_align, bool dst_align>
inline void uyvy_601_a(const uint8_t* p_src_rgba, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  rgba_and_bgra::uyvy_a<src_align, dst_align, false, false, true>(p_src_rgba, p_dst_uyvy, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline bool uyvy_601_a_ex(const uint8_t* p_src_rgba, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return rgba_and_bgra::uyvy_a<src_align, dst_align, false, true, true>(p_src_rgba, p_dst_uyvy, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709_a(const uint8_t* p_src_rgba, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  rgba_and_bgra::uyvy_a<src_align, dst_align, true, false, true>(p_src_rgba, p_dst_uyvy, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline bool uyvy_709_a_ex(const uint8_t* p_src_rgba, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return rgba_and_bgra::uyvy_a<src_align, dst_align, true, true, true>(p_src_rgba, p_dst_uyvy, p_dst_alpha, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::rgba

namespace Processing::Morvane::format_conversion::line::L {

// Luminance to grey, opaque pixels.
struct bgra_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t luminance = src[0];
    dst[0] = dst[1] = dst[2] = luminance;
    dst[3] = 255;
  }

  template <class V>
  static constexpr size_t step = V::lanes;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    const auto luminance = V::load_bytes(src);
    V::store4(dst, luminance, luminance, luminance, V::same(255));
  }

  template <class V>
  static void line(const uint8_t* p_src_L, uint8_t* p_dst_bgra, const int no_pixels) {
    bgra_kernel kernel;
    walk<V, 1, 4>(kernel, at_least_zero(no_pixels), p_src_L, p_dst_bgra);
  }
};

template <bool src_align, bool dst_align>
inline void bgra(const uint8_t* p_src_L, uint8_t* p_dst_bgra, const int no_pixels) {
  backend::line_of<bgra_kernel>()(p_src_L, p_dst_bgra, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::L
