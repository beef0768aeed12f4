// The line kernel of the sum of absolute differences, under the name that callers know.
#pragma once

#include "format_conversion_utils.h"
#include "kernel/difference.h"

namespace Processing::Morvane::sum_absolute_differences::line {

template <bool src_aligned, bool dst_aligned>
inline uint64_t sum_absolute_differences_line(const uint8_t* p_src_data, const uint8_t* p_dst_data,
                                              const int no_pixels) {
  return format_conversion::line::run<format_conversion::kernel::sum_of_differences>(p_src_data, p_dst_data, no_pixels);
}

}  // namespace Processing::Morvane::sum_absolute_differences::line
