// Pages with generated sections. Such a section stands between two comments, <!-- begin NAME --> and <!-- end NAME -->.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace morvane::docs {

inline std::string read(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + file.string());
  return {std::istreambuf_iterator<char>(in), {}};
}

inline void write(const std::filesystem::path& file, std::string_view text) {
  std::ofstream out(file, std::ios::binary);
  if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush())
    throw std::runtime_error("cannot write " + file.string());
}

// The page with other content in a section.
inline std::string replace_section(const std::string& page, const std::string& name, const std::string& content) {
  const std::string begin = "<!-- begin " + name + " -->\n";
  const std::string end = "<!-- end " + name + " -->";
  const std::size_t first = page.find(begin);
  const std::size_t last = page.find(end);
  if (first == page.npos || last == page.npos || last < first)
    throw std::runtime_error("the page has no " + begin.substr(0, begin.size() - 1) + " before " + end);
  return page.substr(0, first + begin.size()) + content + page.substr(last);
}

}  // namespace morvane::docs
