// The sum of absolute differences of two images.
#include "sum_absolute_differences_inc.h"

#include "Processing.Morvane.h"
#include "format_conversion_frame.h"

namespace Processing::Morvane::sum_absolute_differences {

uint64_t difference(const uint8_t* p_src_data, const int src_stride, const uint8_t* p_dst_data, const int dst_stride,
                    const int xres, const int yres) {
  uint64_t ret = 0;
  const auto add = [&ret, line = backend::line_of<line::difference_kernel>()](const uint8_t* src, const uint8_t* dst,
                                                                              const int no_pixels) {
    ret += line(src, dst, no_pixels);
  };
  format_conversion::frame(add, xres, yres, format_conversion::plane{p_src_data, src_stride, 1},
                           format_conversion::plane{p_dst_data, dst_stride, 1});
  return ret;
}

}  // namespace Processing::Morvane::sum_absolute_differences
