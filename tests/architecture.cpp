// The files of the library as text: which may include which, and how long they are.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tests {
namespace {

namespace fs = std::filesystem;

using names = std::set<std::string>;

// Files by their paths within the library, and the files of the library that they include.
using include_graph = std::map<std::string, names>;

// A file may include others of its own room and of the rooms before it. Entry points and doors have no room: they are
// in the library's own directory.
constexpr std::string_view rooms[] = {"vector", "kernel", "backend", "", "catalogue", "checked"};

std::string_view room_of(std::string_view file) {
  const std::size_t slash = file.find('/');
  return slash == std::string_view::npos ? "" : file.substr(0, slash);
}

std::ptrdiff_t place_of(std::string_view file) {
  return std::find(std::begin(rooms), std::end(rooms), room_of(file)) - std::begin(rooms);
}

names arrows_back(const include_graph& graph) {
  names found;
  for (const auto& [file, included] : graph)
    for (const std::string& other : included)
      if (place_of(other) > place_of(file)) found.insert(file + " includes " + other);
  return found;
}

names reached_from(const std::string& file, const include_graph& graph) {
  names reached;
  std::vector<std::string> ahead = {file};
  while (!ahead.empty()) {
    const std::string next = ahead.back();
    ahead.pop_back();
    for (const std::string& other : graph.at(next))
      if (reached.insert(other).second) ahead.push_back(other);
  }
  return reached;
}

names files_in_circles(const include_graph& graph) {
  names found;
  for (const auto& [file, included] : graph)
    if (reached_from(file, graph).contains(file)) found.insert(file);
  return found;
}

std::vector<std::string> lines_of(const std::string& file) {
  std::vector<std::string> lines;
  std::ifstream text(fs::path(MORVANE_LIBRARY_DIRECTORY) / file);
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

names files_of_the_library() {
  const std::set<fs::path> extensions = {".h", ".hpp", ".cpp"};
  names files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(MORVANE_LIBRARY_DIRECTORY))
    if (extensions.contains(entry.path().extension()))
      files.insert(entry.path().lexically_relative(MORVANE_LIBRARY_DIRECTORY).generic_string());
  return files;
}

// As the compiler searches: beside the file that includes, then in the library's own directory. Empty for a header that
// is not of the library.
std::string included_file(const std::string& file, const std::string& text, const names& files) {
  for (const fs::path& directory : {fs::path(file).parent_path(), fs::path()})
    if (const std::string path = (directory / text).lexically_normal().generic_string(); files.contains(path))
      return path;
  return "";
}

include_graph includes_of_the_library() {
  static const std::regex directive(R"(\s*#\s*include\s*(["<])([^">]+)[">].*)");
  const names files = files_of_the_library();
  include_graph graph;
  for (const std::string& file : files) {
    names& included = graph[file];
    for (const std::string& line : lines_of(file)) {
      std::smatch parts;
      if (!std::regex_match(line, parts, directive)) continue;
      const std::string other = included_file(file, parts[2], files);
      EXPECT_TRUE(!other.empty() || parts[1] == "<") << file << " includes " << parts[2] << ", which is not there";
      if (!other.empty()) included.insert(other);
    }
  }
  return graph;
}

TEST(architecture, includes_go_one_way) {
  const include_graph graph = includes_of_the_library();
  for (const auto& [file, included] : graph)
    EXPECT_LT(place_of(file), std::ssize(rooms)) << file << " is in a room that has no place among the others";
  EXPECT_EQ(arrows_back(graph), names());
  EXPECT_EQ(files_in_circles(graph), names());
}

// The files are found, and includes of all three kinds: of a neighbour, of another room, and from the doors.
TEST(architecture, includes_are_seen) {
  const include_graph graph = includes_of_the_library();
  EXPECT_TRUE(graph.at("kernel/walk.h").contains("kernel/units.h"));
  EXPECT_TRUE(graph.at("kernel/walk.h").contains("vector/inline.h"));
  EXPECT_TRUE(graph.at("format_conversion_utils.h").contains("backend/dispatch.h"));
}

TEST(architecture, arrows_back_are_seen) {
  EXPECT_EQ(arrows_back({{"kernel/a.h", {"kernel/b.h", "vector/c.h", "backend/d.h"}},
                         {"backend/d.h", {"door.h"}},
                         {"door.h", {"kernel/a.h", "catalogue/e.h"}},
                         {"catalogue/e.h", {"door.h"}}}),
            (names{"kernel/a.h includes backend/d.h", "backend/d.h includes door.h", "door.h includes catalogue/e.h"}));
}

TEST(architecture, circles_are_seen) {
  EXPECT_EQ(files_in_circles({{"a", {"b", "c"}}, {"b", {"c"}}, {"c", {}}}), names());
  EXPECT_EQ(files_in_circles({{"a", {"b"}}, {"b", {"c"}}, {"c", {"d", "b"}}, {"d", {}}, {"e", {"e"}}}),
            (names{"b", "c", "e"}));
}

TEST(architecture, files_are_short_enough_to_be_read_at_once) {
  constexpr std::size_t most_lines = 600;
  const names without_limit = {"Processing.Morvane.h"};  // it has every entry point with its formula
  for (const std::string& file : files_of_the_library())
    EXPECT_TRUE(lines_of(file).size() <= most_lines || without_limit.contains(file))
        << file << " has " << lines_of(file).size() << " lines";
}

}  // namespace
}  // namespace morvane::tests
