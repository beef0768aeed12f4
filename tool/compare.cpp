// morvane compare: the differences of two files of frames, sample by sample.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "Processing.Morvane.h"
#include "commands.h"
#include "errors.h"
#include "frames.h"
#include "names.h"
#include "output.h"
#include "png_file.h"
#include "samples.h"
#include "table.h"

namespace morvane::tool {

namespace {

using nlohmann::ordered_json;

struct difference {
  std::int64_t frame = 0;
  std::string plane;
  std::string component;
  int x = 0;
  int y = 0;
  bool floats = false;
  double first = 0;
  double second = 0;
};

struct plane_sums {
  std::int64_t count = 0;
  int maximum = 0;
  std::uint64_t absolute = 0;
  double squares = 0;
};

class comparison {
 public:
  explicit comparison(const format_info& f) : format_(f) {
    for (std::size_t p = 0; p < planes_of(f).size(); ++p) layouts_.emplace_back(f, p);
    sums_.resize(layouts_.size());
  }

  void add_frame(const image& a, const image& b) {
    for (std::size_t p = 0; p < layouts_.size(); ++p) add_plane(p, a, b);
    ++frames_;
  }

  std::int64_t frames() const { return frames_; }
  const format_info& format() const { return format_; }
  const std::optional<difference>& first() const { return first_; }
  const std::vector<plane_sums>& sums() const { return sums_; }

  // In decibels; none when there is no difference.
  std::optional<double> psnr(std::size_t p) const {
    const double peak = (1 << layouts_[p].bits()) - 1;
    if (sums_[p].squares == 0) return std::nullopt;
    return 10 * std::log10(peak * peak * static_cast<double>(sums_[p].count) / sums_[p].squares);
  }

 private:
  // The samples of a row that carry something and stand inside the picture.
  std::vector<std::size_t> counted_samples(std::size_t p, int width) const {
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < layouts_[p].row_samples(width); ++i)
      if (layouts_[p].pixel(i) < width && !is_unused(layouts_[p].component(i))) result.push_back(i);
    return result;
  }

  bool counts_every_byte(std::size_t p, int width, const std::vector<std::size_t>& counted) const {
    return format_.planes[p].bits == 8 && counted.size() == layouts_[p].row_samples(width);
  }

  void add_plane(std::size_t p, const image& a, const image& b) {
    const int width = a.size().width;
    const std::vector<std::size_t> counted = counted_samples(p, width);
    const bool every_byte = counts_every_byte(p, width, counted);
    plane_sums& sum = sums_[p];
    sum.count += static_cast<std::int64_t>(counted.size()) * a.rows(p);
    if (every_byte) {
      const std::uint64_t absolute = Processing::Morvane::sum_absolute_differences::difference(
          a.row(p, 0), static_cast<int>(a.stride(p)), b.row(p, 0), static_cast<int>(b.stride(p)),
          static_cast<int>(counted.size()), a.rows(p));
      sum.absolute += absolute;
      if (absolute == 0) return;
    }
    for (int y = 0; y < a.rows(p); ++y) {
      const std::uint64_t absolute = add_row(p, y, a, b, counted);
      if (!every_byte) sum.absolute += absolute;
    }
  }

  // The result is the row's sum of absolute differences.
  std::uint64_t add_row(std::size_t p, int y, const image& a, const image& b, const std::vector<std::size_t>& counted) {
    const int width = a.size().width;
    const auto bytes = static_cast<std::size_t>(a.row_bytes(p));
    if (std::memcmp(a.row(p, y), b.row(p, y), bytes) == 0) return 0;
    layouts_[p].read(a.row(p, y), width, first_row_);
    layouts_[p].read(b.row(p, y), width, second_row_);
    plane_sums& sum = sums_[p];
    std::uint64_t absolute = 0;
    for (const std::size_t i : counted) {
      if (first_row_[i] == second_row_[i]) continue;
      if (!first_) note(p, y, i);
      const std::int64_t gap = std::abs(layouts_[p].level(i, first_row_[i]) - layouts_[p].level(i, second_row_[i]));
      sum.maximum = std::max(sum.maximum, static_cast<int>(gap));
      sum.squares += static_cast<double>(gap * gap);
      absolute += static_cast<std::uint64_t>(gap);
    }
    return absolute;
  }

  void note(std::size_t p, int y, std::size_t i) {
    first_ = difference{frames_,
                        std::string(format_.planes[p].name),
                        layouts_[p].component(i),
                        layouts_[p].pixel(i),
                        y * format_.planes[p].image_rows,
                        layouts_[p].has_floats(),
                        layouts_[p].number(first_row_[i]),
                        layouts_[p].number(second_row_[i])};
  }

  const format_info& format_;
  std::vector<sample_layout> layouts_;
  std::vector<plane_sums> sums_;
  std::optional<difference> first_;
  std::int64_t frames_ = 0;
  std::vector<std::uint32_t> first_row_;
  std::vector<std::uint32_t> second_row_;
};

struct frame_counts {
  std::int64_t first = 0;
  std::int64_t second = 0;
};

// Compares the frames that both have, and counts those of each.
frame_counts compare_frames(frame_source& a, frame_source& b, comparison& result) {
  image first(a.format(), a.size());
  image second(b.format(), b.size());
  frame_counts counts;
  for (bool more_a = true, more_b = true; more_a || more_b;) {
    more_a = more_a && a.read(first);
    more_b = more_b && b.read(second);
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

ordered_json to_json(const comparison& c, frame_counts counts, bool identical) {
  ordered_json result = {{"identical", identical},
                         {"frames_compared", c.frames()},
                         {"frames", {counts.first, counts.second}},
                         {"first_difference", nullptr},
                         {"planes", ordered_json::array()}};
  if (const auto& d = c.first())
    result["first_difference"] = {{"frame", d->frame},
                                  {"plane", d->plane},
                                  {"component", d->component},
                                  {"x", d->x},
                                  {"y", d->y},
                                  {"values", {sample_json(d->first, d->floats), sample_json(d->second, d->floats)}}};
  for (std::size_t p = 0; p < c.sums().size(); ++p) {
    const std::optional<double> psnr = c.psnr(p);
    result["planes"].push_back({{"name", c.format().planes[p].name},
                                {"max_difference", c.sums()[p].maximum},
                                {"psnr_db", psnr ? ordered_json(*psnr) : ordered_json("inf")},
                                {"sum_of_absolute_differences", c.sums()[p].absolute}});
  }
  return result;
}

void print(const comparison& c, frame_counts counts, bool identical, extent size) {
  std::cout << (identical ? "identical" : "different") << ": " << c.frames() << (c.frames() == 1 ? " frame" : " frames")
            << " of " << c.format().name << ' ' << size << " compared\n";
  if (counts.first != counts.second)
    std::cout << "frame counts differ: " << counts.first << " and " << counts.second << '\n';
  if (const auto& d = c.first())
    std::cout << "first difference: frame " << d->frame << ", plane " << d->plane << ", " << d->component << " at x "
              << d->x << ", y " << d->y << ": " << digits_of(d->first) << " and " << digits_of(d->second) << '\n';
  std::vector<table_row> rows = {{"PLANE", "MAX DIFFERENCE", "PSNR", "SUM OF ABSOLUTE DIFFERENCES"}};
  for (std::size_t p = 0; p < c.sums().size(); ++p)
    rows.push_back({std::string(c.format().planes[p].name), std::to_string(c.sums()[p].maximum), decibels(c.psnr(p)),
                    std::to_string(c.sums()[p].absolute)});
  print_table(std::cout, rows);
}

// The format in which a PNG is compared when none is named: with alpha only where one of the two has it.
std::string format_to_compare(const compare_options& o) {
  if (!o.format.empty()) return o.format;
  for (const file_list& files : {o.first, o.second})
    if (is_png(files) && read_png(files.front()).channels == 4) return "bgra";
  return is_png(o.first) && is_png(o.second) ? "bgrx" : "";
}

}  // namespace

bool compare(const compare_options& o) {
  const auto reads_standard_input = [](const file_list& files) {
    return std::find(files.begin(), files.end(), "-") != files.end();
  };
  if (reads_standard_input(o.first) && reads_standard_input(o.second))
    wrong_arguments("standard input can be one of the two files only");
  const std::string format = format_to_compare(o);
  const auto a = open_source({o.first, format, o.size, {}, 0});
  const auto b = open_source({o.second, format, o.size, {}, 0});
  if (a->size() != b->size())
    io_failure("pictures of different size: ", joined(o.first, ","), " is ", a->size(), ", ", joined(o.second, ","),
               " is ", b->size());
  comparison result(a->format());
  const frame_counts counts = compare_frames(*a, *b, result);
  const bool identical = !result.first() && counts.first == counts.second;
  if (o.json)
    std::cout << to_json(result, counts, identical).dump(2) << '\n';
  else
    print(result, counts, identical, a->size());
  return identical;
}

}  // namespace morvane::tool
