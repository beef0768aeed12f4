// morvane compare: the differences of two files of frames, sample by sample.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

#include "commands.h"
#include "comparison.h"
#include "errors.h"
#include "frames.h"
#include "names.h"
#include "output.h"
#include "png_file.h"
#include "table.h"

namespace morvane::tool {

namespace {

using nlohmann::ordered_json;

struct frame_counts {
  std::int64_t first = 0;
  std::int64_t second = 0;
};

// Compares the frames that both have, and counts those of each, up to the limit.
frame_counts compare_frames(frame_source& a, frame_source& b, std::int64_t limit, comparison& result) {
  image first(a.format(), a.size());
  image second(b.format(), b.size());
  frame_counts counts;
  for (bool more_a = true, more_b = true; more_a || more_b;) {
    more_a = more_a && counts.first < limit && a.read(first);
    more_b = more_b && counts.second < limit && b.read(second);
    counts.first += more_a;
    counts.second += more_b;
    if (more_a && more_b) result.add_frame(first, second);
  }
  return counts;
}

std::string decibels(std::optional<double> psnr) {
  if (!psnr) return "inf";
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.2f dB", *psnr);
  return digits;
}

// As many digits as tell any two floats apart.
std::string digits_of(double sample) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.9g", sample);
  return digits;
}

// JSON has no numbers for the infinite and for what is none.
ordered_json sample_json(double sample, bool floats) {
  if (!floats) return static_cast<std::int64_t>(sample);
  return std::isfinite(sample) ? ordered_json(sample) : ordered_json(digits_of(sample));
}

void add_sums(ordered_json& to, const component_sums& sums) {
  const std::optional<double> quality = psnr(sums);
  to["max_difference"] = sums.maximum;
  to["psnr_db"] = quality ? ordered_json(*quality) : ordered_json("inf");
  to["sum_of_absolute_differences"] = sums.absolute;
}

ordered_json plane_json(const char* name, const std::vector<component_sums>& sums) {
  ordered_json result = {{"name", name}};
  add_sums(result, added(sums));
  result["components"] = ordered_json::array();
  for (const component_sums& s : sums) {
    ordered_json component = {{"name", s.component}};
    add_sums(component, s);
    result["components"].push_back(component);
  }
  return result;
}

ordered_json difference_json(const difference& d) {
  return {{"frame", d.frame},
          {"plane", d.plane},
          {"component", d.component},
          {"x", d.x},
          {"y", d.y},
          {"values", {sample_json(d.first, d.floats), sample_json(d.second, d.floats)}}};
}

ordered_json to_json(const comparison& c, frame_counts counts, bool identical) {
  ordered_json result = {{"identical", identical},
                         {"frames_compared", c.frames()},
                         {"frames", {counts.first, counts.second}},
                         {"first_difference", c.first() ? difference_json(*c.first()) : ordered_json()},
                         {"planes", ordered_json::array()}};
  for (std::size_t p = 0; p < planes_of(c.format()).size(); ++p)
    result["planes"].push_back(plane_json(c.format().planes[p].name, c.sums(p)));
  result["overall"] = ordered_json::object();
  add_sums(result["overall"], added(c.all_sums()));
  return result;
}

table_row row_of(const std::string& plane, const std::string& component, const component_sums& sums) {
  return {plane, component, std::to_string(sums.maximum), decibels(psnr(sums)), std::to_string(sums.absolute)};
}

void print_sums(const comparison& c) {
  std::vector<table_row> rows = {{"PLANE", "COMPONENT", "MAX DIFFERENCE", "PSNR", "SUM OF ABSOLUTE DIFFERENCES"}};
  for (std::size_t p = 0; p < planes_of(c.format()).size(); ++p)
    for (const component_sums& s : c.sums(p)) rows.push_back(row_of(c.format().planes[p].name, s.component, s));
  if (rows.size() > 2) rows.push_back(row_of("all", "", added(c.all_sums())));
  print_table(std::cout, rows);
}

void print(const comparison& c, frame_counts counts, bool identical, extent size) {
  std::cout << (identical ? "identical" : "different") << ": " << c.frames() << (c.frames() == 1 ? " frame" : " frames")
            << " of " << c.format().name << ' ' << size << " compared\n";
  if (counts.first != counts.second)
    std::cout << "frame counts differ: " << counts.first << " and " << counts.second << '\n';
  if (const auto& d = c.first())
    std::cout << "first difference: frame " << d->frame << ", plane " << d->plane << ", " << d->component << " at x "
              << d->x << ", y " << d->y << ": " << digits_of(d->first) << " and " << digits_of(d->second) << '\n';
  print_sums(c);
}

// The format in which a PNG is compared when none is named: with alpha only where one of the two has it.
std::string format_to_compare(const compare_options& o) {
  if (!o.format.empty()) return o.format;
  for (const file_list& files : {o.first, o.second})
    if (is_png(files) && png_has_alpha(files.front())) return "bgra";
  return is_png(o.first) && is_png(o.second) ? "bgrx" : "";
}

template <class T>
T for_file(std::size_t which, const std::vector<T>& given, bool is_exempt) {
  if (given.empty() || (given.size() == 1 && is_exempt)) return {};
  return given.size() == 1 ? given.front() : given[which];
}

source_wish wish_for(std::size_t which, const compare_options& o, const std::string& format) {
  const file_list& files = which == 0 ? o.first : o.second;
  const bool is_exempt = is_png(files) && !(is_png(o.first) && is_png(o.second));
  return {files, format, o.size, for_file(which, o.strides, is_exempt), for_file(which, o.skips, is_exempt)};
}

}  // namespace

bool compare(const compare_options& o) {
  const auto reads_standard_input = [](const file_list& files) {
    return std::find(files.begin(), files.end(), "-") != files.end();
  };
  if (reads_standard_input(o.first) && reads_standard_input(o.second))
    wrong_arguments("standard input can be one of the two files only");
  const std::string format = format_to_compare(o);
  const auto a = open_source(wish_for(0, o, format));
  const auto b = open_source(wish_for(1, o, format));
  if (a->size() != b->size())
    io_failure("pictures of different size: ", joined(o.first, ","), " is ", a->size(), ", ", joined(o.second, ","),
               " is ", b->size());
  comparison result(a->format(), a->size());
  const frame_counts counts =
      compare_frames(*a, *b, o.frames.value_or(std::numeric_limits<std::int64_t>::max()), result);
  const bool identical = !result.first() && counts.first == counts.second;
  if (o.json)
    std::cout << to_json(result, counts, identical).dump(2) << '\n';
  else
    print(result, counts, identical, a->size());
  return identical;
}

}  // namespace morvane::tool
