// The sum of absolute differences of two images.
#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "kernel/difference.h"

namespace Processing::Morvane::sum_absolute_differences {

uint64_t difference(const uint8_t* p_src_data, const int src_stride, const uint8_t* p_dst_data, const int dst_stride,
                    const int xres, const int yres) {
  using namespace format_conversion;
  uint64_t ret = 0;
  const auto add = [&ret, line = backend::line_of<kernel::sum_of_differences>()](const uint8_t* src, const uint8_t* dst,
                                                                                 const int no_pixels) {
    ret += line(src, dst, no_pixels);
  };
  frame_if(src_stride == xres && dst_stride == xres, add, xres, yres, plane{p_src_data, src_stride},
           plane{p_dst_data, dst_stride});
  return ret;
}

}  // namespace Processing::Morvane::sum_absolute_differences
