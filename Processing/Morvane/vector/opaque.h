// In place of alpha: 255 for every pixel.
#pragma once

namespace Processing::Morvane::format_conversion::vector {

struct opaque {};

}  // namespace Processing::Morvane::format_conversion::vector
