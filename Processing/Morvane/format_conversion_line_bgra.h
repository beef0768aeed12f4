// The line kernels of 32-bit RGB to uyvy, with and without a plane of alpha, and of luminance to 32-bit RGB, under the
// names that callers know.
#pragma once

#include "format_conversion_utils.h"
#include "kernel/rgb_to_video.h"
#include "kernel/video_to_rgb.h"

namespace Processing::Morvane::format_conversion::line {

namespace rgba_and_bgra {

template <bool src_align, bool dst_align, bool composite_over_black, bool colorspace_709, bool is_rgba>
inline void uyvy(const uint8_t* p_src_bgra, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::rgb_to_uyvy<kernel::background{composite_over_black}, kernel::matrix{colorspace_709},
                          kernel::byte_order{is_rgba}>>(p_src_bgra, p_dst_uyvy, no_pixels);
}

// Without compositing, with the alpha of both pixels in a plane of its own.
template <bool src_align, bool dst_align, bool colorspace_709, bool track_alpha, bool is_rgba>
inline bool uyvy_a(const uint8_t* p_src, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return run<kernel::rgb_to_uyvy_a<kernel::matrix{colorspace_709}, kernel::byte_order{is_rgba},
                                   kernel::alpha_report{track_alpha}>>(p_src, p_dst_uyvy, p_dst_alpha, no_pixels);
}

}  // namespace rgba_and_bgra

namespace bgrx {

template <bool src_align, bool dst_align>
inline void uyvy_601(const uint8_t* p_src_bgrx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, false, false>(p_src_bgrx, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709(const uint8_t* p_src_bgrx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, true, false>(p_src_bgrx, p_dst_uyvy, no_pixels);
}

}  // namespace bgrx

namespace rgbx {

template <bool src_align, bool dst_align>
inline void uyvy_601(const uint8_t* p_src_rgbx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, false, true>(p_src_rgbx, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709(const uint8_t* p_src_rgbx, uint8_t* p_dst_uyvy, const int no_pixels) {
  rgba_and_bgra::uyvy<src_align, dst_align, false, true, true>(p_src_rgbx, p_dst_uyvy, no_pixels);
}

}  // namespace rgbx

namespace bgra {

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

}  // namespace bgra

namespace rgba {

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

}  // namespace rgba

namespace L {

template <bool src_align, bool dst_align>
inline void bgra(const uint8_t* p_src_L, uint8_t* p_dst_bgra, const int no_pixels) {
  run<kernel::luminance_to_bgra>(p_src_L, p_dst_bgra, no_pixels);
}

}  // namespace L

}  // namespace Processing::Morvane::format_conversion::line
