// The line kernel of uyvy to planar RGB, under the names that callers know.
#pragma once

#include "format_conversion_utils.h"
#include "kernel/video_to_rgb.h"

namespace Processing::Morvane::format_conversion::line {

namespace uyvy {

template <bool src_align, bool dst_align, bool ccir_709>
inline void r_g_b(const uint8_t* p_src_uyvy, uint8_t* p_dst_r, uint8_t* p_dst_g, uint8_t* p_dst_b,
                  const int no_pixels) {
  run<kernel::uyvy_to_r_g_b<kernel::matrix{ccir_709}>>(p_src_uyvy, p_dst_r, p_dst_g, p_dst_b, no_pixels);
}

template <bool src_align, bool dst_align>
inline void r_g_b_601(const uint8_t* p_src_uyvy, uint8_t* p_dst_r, uint8_t* p_dst_g, uint8_t* p_dst_b,
                      const int no_pixels) {
  r_g_b<src_align, dst_align, false>(p_src_uyvy, p_dst_r, p_dst_g, p_dst_b, no_pixels);
}

template <bool src_align, bool dst_align>
inline void r_g_b_709(const uint8_t* p_src_uyvy, uint8_t* p_dst_r, uint8_t* p_dst_g, uint8_t* p_dst_b,
                      const int no_pixels) {
  r_g_b<src_align, dst_align, true>(p_src_uyvy, p_dst_r, p_dst_g, p_dst_b, no_pixels);
}

}  // namespace uyvy

}  // namespace Processing::Morvane::format_conversion::line
