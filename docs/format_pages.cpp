// morvane_format_pages [--check] DIRECTORY: brings DIRECTORY, with a page and a picture for every format, up to date,
// or only sees whether it is.
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "format_page.h"
#include "format_picture.h"
#include "section.h"

namespace {

using namespace morvane::docs;
namespace fs = std::filesystem;

using files = std::map<fs::path, std::string>;

files current_files() {
  files all = {{"README.md", page_of_all_formats()}};
  for (const morvane::format f : morvane::formats()) {
    const morvane_format_info info = morvane::describe(f);
    const std::string name = info.name;
    all[name + ".md"] = page_of(info);
    all[fs::path("images") / (name + ".svg")] = picture_of_bits(info);
  }
  return all;
}

std::set<fs::path> files_in(const fs::path& directory) {
  std::set<fs::path> found;
  if (fs::exists(directory))
    for (const auto& entry : fs::recursive_directory_iterator(directory))
      if (entry.is_regular_file()) found.insert(entry.path().lexically_relative(directory));
  return found;
}

// The files that are missing, outdated, or of formats that there are no longer.
std::vector<fs::path> differences(const files& current, const fs::path& directory) {
  std::vector<fs::path> names;
  std::set<fs::path> present = files_in(directory);
  for (const auto& [name, content] : current)
    if (present.erase(name) == 0 || read(directory / name) != content) names.push_back(name);
  names.insert(names.end(), present.begin(), present.end());
  return names;
}

// Removes what no format has.
void bring_up_to_date(const fs::path& directory, const std::vector<fs::path>& names, const files& current) {
  fs::create_directories(directory / "images");
  for (const fs::path& name : names)
    if (const auto file = current.find(name); file != current.end())
      write(directory / name, file->second);
    else
      fs::remove(directory / name);
}

int run(const std::vector<std::string>& arguments) {
  const bool check = arguments.size() == 2 && arguments.front() == "--check";
  const bool writes = arguments.size() == 1 && !arguments.front().starts_with("-");
  if (!check && !writes) throw std::runtime_error("usage: morvane_format_pages [--check] DIRECTORY");
  const fs::path directory = arguments.back();
  const files current = current_files();
  const std::vector<fs::path> names = differences(current, directory);
  if (names.empty()) return EXIT_SUCCESS;
  if (check)
    throw std::runtime_error((directory / names.front()).string() +
                             " is not current: run script/docs, which writes it");
  bring_up_to_date(directory, names, current);
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
