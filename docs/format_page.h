// The page of a format, and the page that lists them.
#pragma once

#include <morvane.hpp>
#include <string>

namespace morvane::docs {

// Markdown. It shows images/NAME.svg.
std::string page_of(const morvane_format_info& format);
std::string page_of_all_formats();

}  // namespace morvane::docs
