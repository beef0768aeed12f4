// Words of a file's name that are a format or a size.
#include "guess.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

#include "formats.h"

namespace morvane::tool {

namespace {

bool is_number(std::string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

bool is_size(std::string_view word) {
  const std::size_t cross = word.find_first_of("xX");
  return cross != word.npos && is_number(word.substr(0, cross)) && is_number(word.substr(cross + 1));
}

// Where the name of a word may begin and end.
std::vector<std::size_t> bounds(const std::string& name) {
  std::vector<std::size_t> at = {0};
  for (std::size_t i = 0; i < name.size(); ++i)
    if (std::isalnum(static_cast<unsigned char>(name[i])) == 0) at.push_back(i + 1);
  at.push_back(name.size() + 1);
  return at;
}

}  // namespace

guess guess_from_name(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  const std::vector<std::size_t> at = bounds(name);
  guess result;
  // Names of formats may have several words of their own, so the longest that fits is the one that is meant.
  for (std::size_t first = 0; first + 1 < at.size(); ++first)
    for (std::size_t last = first + 1; last < at.size(); ++last) {
      const std::string words = name.substr(at[first], at[last] - 1 - at[first]);
      if (result.size.empty() && is_size(words)) result.size = words;
      const bool is_format = words.size() > result.format.size() && morvane::formats_called(words).size() == 1;
      if (is_format) result.format = words;
    }
  return result;
}

}  // namespace morvane::tool
