// Ranges and matrices of pictures as the coefficients of the kernels.
#pragma once

#include <cstdint>

#include "../kernel/lines_chroma.h"
#include "../kernel/lines_colour.h"
#include "shape.h"

namespace Processing::Morvane::checked {

namespace kernel = format_conversion::kernel;

// Where luma begins, and how far luma and chroma reach, in working samples.
struct span {
  int black;
  int luma;
  int chroma;
};

span span_of_samples(const shape& s);

// The same for grey of full range.
inline constexpr span full_span = {0, 65535, 65535};

// Ten bits at most on both sides.
bool is_narrow(const shape& source, const shape& destination);

kernel::ycbcr_lines_to_rgb_narrow narrow_to_rgb(const shape& ycbcr);
kernel::ycbcr_lines_to_rgb_wide wide_to_rgb(const shape& ycbcr);
kernel::rgb_lines_to_ycbcr_narrow narrow_to_ycbcr(const shape& ycbcr);
kernel::rgb_lines_to_ycbcr_wide wide_to_ycbcr(const shape& ycbcr);
kernel::rgb_lines_to_luminance to_luminance(const shape& destination);

// From one range of YCbCr to another.
bool ranges_differ(const shape& source, const shape& destination);
kernel::scale_line luma_between(const shape& source, const shape& destination);
kernel::scale_line chroma_between(const shape& source, const shape& destination);

// Of RGB.
kernel::scale_line video_to_full();
kernel::scale_line full_to_video();

// A background of red, green and blue of eight bits in the components of a picture.
struct background {
  uint16_t of[3];
};
background background_in(const shape& s, const uint8_t* rgb, bool keeps_video_range);

}  // namespace Processing::Morvane::checked
