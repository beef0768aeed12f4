// Line kernels of 32-bit RGB to 4:4:4 YCbCr.
#pragma once

#include "backend/run.h"
#include "format_conversion_matrix.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion::line::rgba_and_bgra {

// Pixels of four bytes to pixels of four bytes. Cb goes to byte 1 of its own pixel, and alpha or 255 to byte 3. Luma
// and Cr of every pixel go to bytes 0 and 2 of the line's first pixel, where only the last pixel's remain; bytes 0 and
// 2 of all other pixels are left as they were.
template <bool colorspace_709, bool is_rgba, bool is_crcby, bool has_alpha>
struct ycbcr_444_kernel {
  using matrix = rgb_to_ycbcr<colorspace_709>;

  static constexpr weights luma = in_memory_order<is_rgba>(matrix::y);
  static constexpr weights cb = in_memory_order<is_rgba>(matrix::cb);
  static constexpr weights cr = in_memory_order<is_rgba>(matrix::cr);

  template <weights w, int bits>
  MORVANE_INLINE static uint8_t byte(const uint8_t* pixel) {
    return static_cast<uint8_t>((weighted_sum<w>(pixel) >> bits) + (bits == 8 ? 128 : 16));
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    dst[1] = byte<cb, 8>(src);
    dst[3] = has_alpha ? src[3] : 255;
  }

  template <class V>
  static constexpr size_t step = V::lanes;

  // Bytes 0 and 2 are stored again as they were found.
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    V::template replace_second_and_fourth<cb, has_alpha>(dst, V::load4(src));
  }

  // The byte of the first pixel that takes luma; Cr takes the other. In the layouts that begin with luma, a line of one
  // pixel has them the other way round than a longer one.
  MORVANE_INLINE static constexpr int luma_byte(const bool only_pixel) {
    const bool first_byte = is_crcby ? has_alpha : has_alpha != only_pixel;
    return first_byte ? 0 : 2;
  }

  template <class V>
  static void line(const uint8_t* p_src, uint8_t* p_dst, const int no_pixels) {
    const size_t pixels = at_least_zero(no_pixels);
    if (pixels == 0) return;
    const uint8_t* last = p_src + 4 * (pixels - 1);
    const uint8_t last_luma = byte<luma, 7>(last);
    const uint8_t last_cr = byte<cr, 8>(last);
    ycbcr_444_kernel kernel;
    walk<V, 4, 4>(kernel, pixels, p_src, p_dst);
    const int at = pixels == 1 ? luma_byte(true) : luma_byte(false);
    p_dst[at] = last_luma;
    p_dst[2 - at] = last_cr;
  }
};

template <bool src_align, bool dst_align, bool colorspace_709, bool is_rgba, bool is_crcby>
inline void ycbcra(const uint8_t* p_src_bgra, uint8_t* p_dst_ycbcra, const int no_pixels) {
  backend::line_of<ycbcr_444_kernel<colorspace_709, is_rgba, is_crcby, true>>()(p_src_bgra, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align, bool colorspace_709, bool is_rgba, bool is_crcby>
inline void ycbcrx(const uint8_t* p_src_bgra, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  backend::line_of<ycbcr_444_kernel<colorspace_709, is_rgba, is_crcby, false>>()(p_src_bgra, p_dst_ycbcrx, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::rgba_and_bgra

namespace Processing::Morvane::format_conversion::line::bgra {

template <bool src_align, bool dst_align>
inline void ycbcra_601(const uint8_t* p_src_bgra, uint8_t* p_dst_ycbcra, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, false, false, false>(p_src_bgra, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void ycbcra_709(const uint8_t* p_src_bgra, uint8_t* p_dst_ycbcra, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, true, false, false>(p_src_bgra, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbya_601(const uint8_t* p_src_bgra, uint8_t* p_dst_crcbya, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, false, false, true>(p_src_bgra, p_dst_crcbya, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbya_709(const uint8_t* p_src_bgra, uint8_t* p_dst_crcbya, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, true, false, true>(p_src_bgra, p_dst_crcbya, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::bgra

namespace Processing::Morvane::format_conversion::line::rgba {

template <bool src_align, bool dst_align>
inline void ycbcra_601(const uint8_t* p_src_rgba, uint8_t* p_dst_ycbcra, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, false, true, false>(p_src_rgba, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void ycbcra_709(const uint8_t* p_src_rgba, uint8_t* p_dst_ycbcra, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, true, true, false>(p_src_rgba, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbya_601(const uint8_t* p_src_rgba, uint8_t* p_dst_crcbya, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, false, true, true>(p_src_rgba, p_dst_crcbya, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbya_709(const uint8_t* p_src_rgba, uint8_t* p_dst_crcbya, const int no_pixels) {
  rgba_and_bgra::ycbcra<src_align, dst_align, true, true, true>(p_src_rgba, p_dst_crcbya, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::rgba

namespace Processing::Morvane::format_conversion::line::bgrx {

template <bool src_align, bool dst_align>
inline void ycbcrx_601(const uint8_t* p_src_bgrx, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, false, false, false>(p_src_bgrx, p_dst_ycbcrx, no_pixels);
}

template <bool src_align, bool dst_align>
inline void ycbcrx_709(const uint8_t* p_src_bgrx, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, true, false, false>(p_src_bgrx, p_dst_ycbcrx, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbyx_601(const uint8_t* p_src_bgrx, uint8_t* p_dst_crcbyx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, false, false, true>(p_src_bgrx, p_dst_crcbyx, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbyx_709(const uint8_t* p_src_bgrx, uint8_t* p_dst_crcbyx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, true, false, true>(p_src_bgrx, p_dst_crcbyx, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::bgrx

namespace Processing::Morvane::format_conversion::line::rgbx {

template <bool src_align, bool dst_align>
inline void ycbcrx_601(const uint8_t* p_src_rgbx, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, false, true, false>(p_src_rgbx, p_dst_ycbcrx, no_pixels);
}

template <bool src_align, bool dst_align>
inline void ycbcrx_709(const uint8_t* p_src_rgbx, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, true, true, false>(p_src_rgbx, p_dst_ycbcrx, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbyx_601(const uint8_t* p_src_rgbx, uint8_t* p_dst_crcbyx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, false, true, true>(p_src_rgbx, p_dst_crcbyx, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbyx_709(const uint8_t* p_src_rgbx, uint8_t* p_dst_crcbyx, const int no_pixels) {
  rgba_and_bgra::ycbcrx<src_align, dst_align, true, true, true>(p_src_rgbx, p_dst_crcbyx, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::rgbx
