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
    {.name = "y210",
     .id = 93,
     .description = "10-bit packed YCbCr 4:2:2 in the upper bits of 16, luma first",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "Y210",
     .ffmpeg = "y210le",
     .gstreamer = "Y210",
     .planes = {{{"y210", 8, 2, sample_type::u16, "Y Cb Y Cr", 1, 10}}}},
    {.name = "y212",
     .id = 94,
     .description = "12-bit packed YCbCr 4:2:2 in the upper bits of 16, luma first",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "Y212",
     .ffmpeg = "y212le",
     .gstreamer = "Y212_LE",
     .planes = {{{"y212", 8, 2, sample_type::u16, "Y Cb Y Cr", 1, 12}}}},
    {.name = "y216",
     .id = 95,
     .description = "16-bit packed YCbCr 4:2:2, luma first",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "Y216",
     .ffmpeg = "y216le",
     .gstreamer = "Y216_LE",
     .planes = {{{"y216", 8, 2, sample_type::u16, "Y Cb Y Cr"}}}},
});

}  // namespace morvane::catalogue
