// Red, green and blue in words of 16 bits and in floats, without and with alpha.
#pragma once

#include "format.h"

namespace morvane::catalogue {

inline constexpr auto deep_rgb_formats = std::to_array<format>({
    {.name = "rgb48",
     .id = 96,
     .description = "16-bit RGB, red first",
     .model = color_model::rgb,
     .ffmpeg = "rgb48le",
     .planes = {{{"rgb48", 6, 1, sample_type::u16, "R G B"}}}},
    {.name = "bgr48",
     .id = 97,
     .description = "16-bit RGB, blue first",
     .model = color_model::rgb,
     .ffmpeg = "bgr48le",
     .planes = {{{"bgr48", 6, 1, sample_type::u16, "B G R"}}}},
    {.name = "rgbf32",
     .id = 108,
     .description = "RGB in 32-bit floats, red first",
     .model = color_model::rgb,
     .ffmpeg = "rgbf32le",
     .planes = {{{"rgb", 12, 1, sample_type::f32, "R G B"}}}},
    {.name = "rgbaf32",
     .id = 109,
     .description = "RGB with alpha in 32-bit floats, red first",
     .model = color_model::rgb,
     .alpha = true,
     .ffmpeg = "rgbaf32le",
     .planes = {{{"rgba", 16, 1, sample_type::f32, "R G B A"}}}},
    {.name = "g_b_r_f32",
     .id = 110,
     .description = "planar RGB in 32-bit floats, green first",
     .model = color_model::rgb,
     .ffmpeg = "gbrpf32le",
     .planes = {{{"g", 4, 1, sample_type::f32, "G"},
                 {"b", 4, 1, sample_type::f32, "B"},
                 {"r", 4, 1, sample_type::f32, "R"}}}},
    {.name = "r_g_b_f32",
     .id = 111,
     .description = "planar RGB in 32-bit floats, red first: what tensors take",
     .model = color_model::rgb,
     .planes = {{{"r", 4, 1, sample_type::f32, "R"},
                 {"g", 4, 1, sample_type::f32, "G"},
                 {"b", 4, 1, sample_type::f32, "B"}}}},
    {.name = "rgbaf16",
     .id = 112,
     .description = "RGB with alpha in 16-bit floats, red first",
     .model = color_model::rgb,
     .alpha = true,
     .ffmpeg = "rgbaf16le",
     .planes = {{{"rgba", 8, 1, sample_type::f16, "R G B A"}}}},
});

}  // namespace morvane::catalogue
