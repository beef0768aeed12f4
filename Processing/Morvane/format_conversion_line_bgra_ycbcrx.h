// The line kernels of 32-bit RGB to 4:4:4 YCbCr, of which each pixel gets its Cb and alpha alone, and the line's first
// pixel the luma and Cr of the last one; under the names that callers know.
#pragma once

#include "format_conversion_utils.h"
#include "kernel/full_chroma.h"

namespace Processing::Morvane::format_conversion::line {

namespace rgba_and_bgra {

template <bool src_align, bool dst_align, bool colorspace_709, bool is_rgba, bool is_crcby>
inline void ycbcra(const uint8_t* p_src_bgra, uint8_t* p_dst_ycbcra, const int no_pixels) {
  run<kernel::rgb_to_444<kernel::matrix{colorspace_709}, kernel::byte_order{is_rgba}, kernel::sample_order{is_crcby},
                         true>>(p_src_bgra, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align, bool colorspace_709, bool is_rgba, bool is_crcby>
inline void ycbcrx(const uint8_t* p_src_bgra, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  run<kernel::rgb_to_444<kernel::matrix{colorspace_709}, kernel::byte_order{is_rgba}, kernel::sample_order{is_crcby},
                         false>>(p_src_bgra, p_dst_ycbcrx, no_pixels);
}

}  // namespace rgba_and_bgra

namespace bgra {

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

}  // namespace bgra

namespace rgba {

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

}  // namespace rgba

namespace bgrx {

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

}  // namespace bgrx

namespace rgbx {

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

}  // namespace rgbx

}  // namespace Processing::Morvane::format_conversion::line
