// morvane_readme [--check] DIRECTORY: brings the generated sections of DIRECTORY/README.md and of docs/functions.md
// there up to date, or only sees whether they are.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/conversions.h"
#include "catalogue/formats.h"
#include "section.h"

namespace {

using namespace morvane::catalogue;
using namespace morvane::docs;
namespace fs = std::filesystem;

std::string code(std::string_view text) {
  std::string result = "`";
  return result.append(text).append("`");
}

std::string lower_case(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

void append_listed(std::string& list, const std::string& item) {
  if (list.find(item) != std::string::npos) return;
  if (!list.empty()) list += ", ";
  list += item;
}

// All entry points that lead from one format to another.
struct route {
  std::string_view source{};
  std::string_view destination{};
  std::string functions{};
  std::string matrix_names{};
  std::string irregular{};
};

std::vector<route> routes() {
  std::vector<route> result;
  for (const conversion& c : conversions) {
    const auto same = [&c](const route& r) { return r.source == c.source && r.destination == c.destination; };
    auto r = std::find_if(result.begin(), result.end(), same);
    if (r == result.end()) r = result.insert(result.end(), {.source = c.source, .destination = c.destination});
    append_listed(r->functions, c.entry.is_declared ? code(c.name) : "the command alone");
    if (!c.irregular.empty()) r->irregular = std::string(c.irregular);
  }
  for (route& r : result)
    for (const matrix m : matrices)
      if (std::any_of(conversions.begin(), conversions.end(), [&](const conversion& c) {
            return c.source == r.source && c.destination == r.destination && offers(c, m);
          }))
        append_listed(r.matrix_names, "BT." + std::to_string(number_of(m)));
  return result;
}

std::string conversion_table() {
  std::ostringstream table;
  table << "| from | to | functions | matrix | |\n|------|----|-----------|--------|-|\n";
  std::string copies;
  std::string fills;
  for (const route& r : routes())
    if (r.source.empty())
      append_listed(fills, code(r.destination));
    else if (r.source == r.destination)
      append_listed(copies, code(r.source) + (r.irregular.empty() ? "" : " (" + r.irregular + ")"));
    else
      table << "| " << code(r.source) << " | " << code(r.destination) << " | " << r.functions << " | " << r.matrix_names
            << " | " << r.irregular << " |\n";
  table << "\nCopies from one set of strides to another: " << copies << ".\n\nFills: " << fills << ".\n";
  return table.str();
}

std::string fenced(std::string_view language, std::string_view text) {
  std::string result = "```";
  return result.append(language).append("\n").append(text).append("```\n");
}

// What a format is called elsewhere, each name once, however it is written.
std::string names_elsewhere(const format& f) {
  std::string names;
  std::string seen = " " + lower_case(f.name) + " ";
  const auto add = [&](std::string_view name) {
    const std::string word = lower_case(name) + " ";
    if (name.empty() || seen.find(" " + word) != std::string::npos) return;
    seen += word;
    append_listed(names, code(name));
  };
  add(f.ffmpeg);
  add(f.fourcc);
  add(f.gstreamer);
  add(f.apple);
  each_word(f.also, add);
  return names;
}

std::string format_table() {
  std::ostringstream table;
  table << "| format | | elsewhere |\n|--------|-|-----------|\n";
  for (const format& f : formats)
    table << "| [" << code(f.name) << "](docs/formats/" << f.name << ".md) | " << f.description << " | "
          << names_elsewhere(f) << " |\n";
  return table.str();
}

struct section {
  std::string name;
  std::string content;
};

void renew(const fs::path& page, const std::vector<section>& sections, bool check) {
  const std::string present = read(page);
  std::string current = present;
  for (const section& s : sections) current = replace_section(current, s.name, s.content);
  if (current == present) return;
  if (check) throw std::runtime_error(page.filename().string() + " is not current: run script/docs, which rewrites it");
  write(page, current);
}

int run(const std::vector<std::string>& arguments) {
  const bool check = arguments.size() == 2 && arguments.front() == "--check";
  if (!check && arguments.size() != 1) throw std::runtime_error("usage: morvane_readme [--check] DIRECTORY");
  const fs::path directory = arguments.back();
  const std::string example = fenced("cpp", read(directory / "examples/consumer/main.cpp"));
  renew(directory / "README.md", {{"example", example}, {"formats", format_table()}}, check);
  renew(directory / "docs/functions.md", {{"conversions", conversion_table()}}, check);
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
