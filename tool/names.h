// What the user may write for a format, a size or a matrix, and what to answer when it is none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/conversions.h"
#include "formats.h"
#include "image.h"

namespace morvane::tool {

// The format of a name, of the library's own or of another program's, in any letter case.
const format_info& format_named(const std::string& name);

// The rows of the catalogue with this name; entry points with overloads have several.
std::vector<const catalogue::conversion*> conversions_named(const std::string& name);

// The names others use for a format, each once, without those that repeat its own.
std::vector<std::string> other_names(const format_info& format);

extent parse_size(const std::string& words);

// Words separated by commas.
std::vector<std::string> parse_list(const std::string& words);

// Fails unless rows of this width and planes of this height are whole in the format. `padding` is whether the user may
// ask for it.
void require_whole_picture(const format_info& format, extent size, bool padding = false);

// Whether a path ends in the extension, which is in lower case, whatever its own case.
bool has_extension(const std::string& path, std::string_view extension);

std::string joined(const std::vector<std::string>& words, std::string_view separator = ", ");

}  // namespace morvane::tool
