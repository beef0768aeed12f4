// Fills of one line, under the names that callers know.
#pragma once

#include <cstring>

#include "format_conversion_utils.h"
#include "kernel/black.h"

namespace Processing::Morvane::format_conversion::line {

namespace black {

// Cb = Cr = 128 and Y = 16. An odd pixel ends the line with a Cb and a Y.
inline void uyvy(uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::fill>(p_dst_uyvy, no_pixels, kernel::fill(128 | 16 << 8));
}

inline void alpha(uint8_t* p_dst_alpha, const int no_pixels, const int value) {
  if (no_pixels > 0) std::memset(p_dst_alpha, value, static_cast<size_t>(no_pixels));
}

inline void alpha(uint16_t* p_dst_alpha, const int no_pixels, const int value) {
  run<kernel::fill>(bytes_of(p_dst_alpha), no_pixels, kernel::fill(static_cast<uint16_t>(value)));
}

// Ten bits a sample: Cb = Cr = 512 and Y = 64.
inline void yuyv_matrox_10(uint8_t* p_dst_yuyv, const int no_pixels) {
  run<kernel::black_yuyv_10>(p_dst_yuyv, no_pixels);
}

}  // namespace black

}  // namespace Processing::Morvane::format_conversion::line
