// Numbers and names as the report's pages print them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "measure/rows.h"

namespace morvane::bench {

// With this many digits after the point.
std::string fixed(double value, int digits = 2);

// "one, two, three"
std::string joined(const std::vector<std::string>& texts);

// For HTML and SVG.
std::string escaped(std::string_view text);

// "bgrx to uyvy", "copy of y", "fill of alpha": what the rows of one kernel have in common.
std::string title_of(const row& r);

}  // namespace morvane::bench
