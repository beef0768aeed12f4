// The picture of a format's bits.
#pragma once

#include <morvane.hpp>
#include <string>

namespace morvane::docs {

// An SVG with the group of every plane.
std::string picture_of_bits(const morvane_format_info& format);

}  // namespace morvane::docs
