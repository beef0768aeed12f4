// What the checked interface tells of formats, asked for once.
#include "formats.h"

#include <algorithm>
#include <sstream>

#include "errors.h"

namespace morvane::tool {

std::span<const format_info> all_formats() {
  static const std::vector<format_info> all = [] {
    std::vector<format_info> infos;
    for (const morvane::format f : morvane::formats()) infos.push_back(morvane::describe(f));
    return infos;
  }();
  return all;
}

const format_info& info_of(morvane::format id) {
  const std::span<const format_info> all = all_formats();
  const auto found = std::find_if(all.begin(), all.end(), [id](const format_info& f) { return f.format == id; });
  if (found == all.end()) throw std::logic_error(text("there is no format ", id));
  return *found;
}

std::vector<std::string> words_of(const char* text) {
  std::istringstream words(text);
  std::vector<std::string> result;
  for (std::string word; words >> word;) result.push_back(word);
  return result;
}

const format_info* format_of_each_image(const format_info& f) {
  const plane_info& plane = f.planes[0];
  if (f.plane_count != 2 || std::string_view(plane.components) != f.planes[1].components) return nullptr;
  const auto has_the_plane_alone = [&](const format_info& other) {
    const plane_info& p = other.planes[0];
    return other.plane_count == 1 && std::string_view(p.components) == plane.components && p.bits == plane.bits &&
           p.group_bytes == plane.group_bytes;
  };
  const std::span<const format_info> all = all_formats();
  const auto found = std::find_if(all.begin(), all.end(), has_the_plane_alone);
  if (found == all.end()) throw std::logic_error(text("there is no format of one image of ", f.name));
  return &*found;
}

}  // namespace morvane::tool
