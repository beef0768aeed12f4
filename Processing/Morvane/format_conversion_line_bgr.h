// The line kernel of 24-bit RGB to uyvy, under the names that callers know.
#pragma once

#include "format_conversion_utils.h"
#include "kernel/rgb_to_video.h"

namespace Processing::Morvane::format_conversion::line {

namespace bgr {

template <bool src_align, bool dst_align, bool colorspace_709>
requires colorspace_709 inline void uyvy(const uint8_t* p_src_bgr, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::bgr_to_uyvy>(p_src_bgr, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy_709(const uint8_t* p_src_bgr, uint8_t* p_dst_uyvy, const int no_pixels) {
  uyvy<src_align, dst_align, true>(p_src_bgr, p_dst_uyvy, no_pixels);
}

}  // namespace bgr

}  // namespace Processing::Morvane::format_conversion::line
