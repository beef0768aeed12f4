// What the user may write for a format, a size or a matrix, and what to answer when it is none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats.h"
#include "image.h"

namespace morvane::tool {

// The formats of a name, of the library's own or of another program's, in any letter case: at least one; and the only
// one.
std::vector<format_info> formats_named(const std::string& name);
const format_info& format_named(const std::string& name);

// The entry points with this name; overloads have several.
std::vector<morvane_entry_point> entry_points_named(const std::string& name);

// The names others use for a format, each once, without those that repeat its own.
std::vector<std::string> other_names(const format_info& format);

// `option` is what an error names: "--matrix". An empty word says nothing.
morvane::matrix parse_matrix(const char* option, const std::string& word);  // "601", "bt709", "bt.2020"
morvane::range parse_range(const char* option, const std::string& word);    // "video", "limited", "tv", "full", "pc"
morvane::stores parse_stores(const char* option, const std::string& word);  // "cached", "streaming", "by-size"
morvane::color parse_color(const char* option, const std::string& words);   // "255,128,0"

extent parse_size(const std::string& words);

// Words separated by commas.
std::vector<std::string> parse_list(const std::string& words);

// Whether a path ends in the extension, which is in lower case, whatever its own case.
bool has_extension(const std::string& path, std::string_view extension);

std::string joined(const std::vector<std::string>& words, std::string_view separator = ", ");

}  // namespace morvane::tool
