// Pictures that are drawn and not read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "image.h"

namespace morvane::tool {

// A frame of a pattern as RGB with alpha of 16 bits, "B G R A".
using test_pattern = void (*)(std::int64_t frame, image& into);

// Fails where there is none of the name.
test_pattern pattern_named(const std::string& name);

}  // namespace morvane::tool
