// What every conversion must do, said once more in the plainest way: one slow function for a whole image, independent
// of the library's own code. The checker compares the library with it.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/call.h"

namespace morvane::tests {

// Converts the image of a call as the conversion of that name and destination format must; null when nothing is known
// about it. Planes may overlap: bytes are read and written one pixel or pair after the other.
catalogue::thunk expectation(std::string_view name, std::string_view destination);

// The names and destination formats of all conversions that something is expected of.
std::vector<std::pair<std::string_view, std::string_view>> expected_conversions();

}  // namespace morvane::tests
