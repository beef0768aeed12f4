// Formats as the checked interface describes them.
#pragma once

#include <morvane.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

using format_info = morvane_format_info;
using plane_info = morvane_plane_info;

// Both last as long as the program.
std::span<const format_info> all_formats();
const format_info& info_of(morvane::format id);

inline std::span<const plane_info> planes_of(const format_info& f) {
  return {f.planes, static_cast<std::size_t>(f.plane_count)};
}

// Words separated by blanks: the components of a group in storage order, or names.
std::vector<std::string> words_of(const char* text);
inline std::vector<std::string> components_of(const plane_info& plane) {
  return words_of(plane.components);
}

// Bytes and samples that carry nothing.
inline bool is_unused(std::string_view component) {
  return component == "x";
}

// The rows that the plane has in a picture of this height.
inline int plane_rows(const plane_info& plane, int height) {
  return (height - 1) / plane.image_rows + 1;
}

// Of two images in one, which convert to nothing, the format of each; null where there is one image.
const format_info* format_of_each_image(const format_info& f);

}  // namespace morvane::tool
