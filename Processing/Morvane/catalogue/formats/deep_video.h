// YCbCr of more than eight bits in one plane, as processors of video and networks pack it.
#pragma once

#include "format.h"

namespace morvane::catalogue {

inline constexpr auto deep_video_formats = std::to_array<format>({
    {.name = "xv30",
     .id = 98,
     .description = "10-bit YCbCr 4:4:4 in 32-bit words, the upper two bits unused",
     .model = color_model::ycbcr,
     .fourcc = "XV30",
     .ffmpeg = "xv30le",
     .planes = {{{"xv30", 4, 1, sample_type::u32_3x10, "Cb Y Cr x"}}}},
    {.name = "y410",
     .id = 99,
     .description = "10-bit YCbCr 4:4:4 in 32-bit words, with two bits of alpha above",
     .model = color_model::ycbcr,
     .alpha = true,
     .fourcc = "Y410",
     .gstreamer = "Y410",
     .planes = {{{"y410", 4, 1, sample_type::u32_3x10, "Cb Y Cr A"}}}},
});

}  // namespace morvane::catalogue
