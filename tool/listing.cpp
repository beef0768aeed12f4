// morvane formats, conversions and info: what the library knows.
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "errors.h"
#include "file_layout.h"
#include "frames.h"
#include "guess.h"
#include "names.h"
#include "table.h"

namespace morvane::tool {

namespace {

using nlohmann::ordered_json;

// Empty names become null, so that a reader need not know an empty one from a missing one.
ordered_json word(std::string_view w) {
  return w.empty() ? ordered_json(nullptr) : ordered_json(w);
}

double bytes_per_pixel(const format_info& f) {
  double bytes = 0;
  for (const plane_info& p : planes_of(f)) bytes += static_cast<double>(p.group_bytes) / p.group_pixels / p.image_rows;
  return bytes;
}

std::string short_number(double value) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.3g", value);
  return digits;
}

std::vector<int> matrices_of(const morvane_entry_point& e) {
  return {e.matrices, std::find(std::begin(e.matrices), std::end(e.matrices), 0)};
}

// The name of a format; that of none is empty.
std::string name_of(morvane::format f) {
  return std::string(morvane::name_of(f));
}

std::string matrix_names(const morvane_entry_point& e) {
  std::vector<std::string> names;
  for (const int number : matrices_of(e)) names.push_back(std::to_string(number));
  return joined(names);
}

ordered_json names_of(const format_info& f) {
  return {{"fourcc", word(f.fourcc)},       {"ffmpeg", word(f.ffmpeg)}, {"v4l2", word(f.v4l2)},
          {"gstreamer", word(f.gstreamer)}, {"apple", word(f.apple)},   {"also", word(f.also)}};
}

ordered_json plane_json(const plane_info& p) {
  return {{"name", p.name},
          {"components", p.components},
          {"group_bytes", p.group_bytes},
          {"group_pixels", p.group_pixels},
          {"image_rows", p.image_rows}};
}

ordered_json format_json(const format_info& f) {
  ordered_json planes = ordered_json::array();
  for (const plane_info& p : planes_of(f)) planes.push_back(plane_json(p));
  return {{"name", f.name},
          {"description", f.description},
          {"bytes_per_pixel", bytes_per_pixel(f)},
          {"alpha", f.has_alpha != 0},
          {"width_multiple", f.width_multiple},
          {"height_multiple", f.height_multiple},
          {"other_names", names_of(f)},
          {"planes", planes}};
}

ordered_json conversion_json(const morvane_entry_point& e) {
  return {{"name", e.name},
          {"source", word(name_of(e.source))},
          {"destination", name_of(e.destination)},
          {"matrices", matrices_of(e)},
          {"rescale", e.rescales != 0},
          {"opacity_report", e.reports_opacity != 0},
          {"irregular", word(e.irregular)}};
}

template <class Rows, class ToJson>
void print_json(const Rows& rows, ToJson to_json) {
  ordered_json all = ordered_json::array();
  for (const auto& row : rows) all.push_back(to_json(row));
  std::cout << all.dump(2) << '\n';
}

constexpr std::int64_t unknown = -1;

ordered_json info_json(const format_info& f, extent size, std::int64_t frames) {
  const morvane_layout layout = layout_of(f, size);
  ordered_json result = {{"format", f.name},
                         {"width", size.width},
                         {"height", size.height},
                         {"frame_bytes", layout.bytes},
                         {"frames", frames == unknown ? ordered_json(nullptr) : ordered_json(frames)},
                         {"planes", ordered_json::array()}};
  for (std::size_t i = 0; i < planes_of(f).size(); ++i) {
    const morvane_plane_layout& p = layout.planes[i];
    result["planes"].push_back(
        {{"name", f.planes[i].name}, {"rows", p.rows}, {"stride", p.stride}, {"bytes", plane_bytes(p)}});
  }
  return result;
}

std::string labelled_names(const format_info& f) {
  std::vector<std::string> names;
  const auto add = [&](std::string_view name, const char* whose) {
    if (!name.empty()) names.push_back(text(name, " (", whose, ")"));
  };
  add(f.fourcc, "FourCC");
  add(f.ffmpeg, "FFmpeg");
  add(f.v4l2, "V4L2");
  add(f.gstreamer, "GStreamer");
  add(f.apple, "CoreVideo");
  if (std::string_view(f.also) != "") names.emplace_back(f.also);
  return joined(names);
}

void print_info(const format_info& f, extent size, std::int64_t frames) {
  std::cout << f.name << ' ' << size << ": " << f.description << '\n';
  const std::string names = labelled_names(f);
  if (!names.empty()) std::cout << "also called " << names << '\n';
  std::vector<table_row> rows = {{"PLANE", "ROWS", "STRIDE", "BYTES", "SAMPLES"}};
  const morvane_layout layout = layout_of(f, size);
  for (std::size_t i = 0; i < planes_of(f).size(); ++i) {
    const morvane_plane_layout& p = layout.planes[i];
    rows.push_back({f.planes[i].name, std::to_string(p.rows), std::to_string(p.stride), std::to_string(plane_bytes(p)),
                    f.planes[i].components});
  }
  print_table(std::cout, rows, terminal_width());
  std::cout << "frame: " << layout.bytes << " bytes\n";
  if (frames != unknown) std::cout << "file: " << frames << (frames == 1 ? " frame\n" : " frames\n");
}

// What is not said is guessed from the file's name, where that is not one of a file that says it itself.
info_options completed(info_options o) {
  if (o.file.empty()) {
    if (o.format.empty()) wrong_arguments("--format is required; see --help");
    if (o.size.empty()) wrong_arguments("--size is required; see --help");
    return o;
  }
  if (is_png({o.file}) || is_y4m({o.file})) return o;
  const guess guessed = guess_from_name(o.file);
  std::vector<std::string> taken;
  const auto take = [&](std::string& option, const std::string& word) {
    if (!option.empty() || word.empty()) return;
    option = word;
    taken.push_back(word);
  };
  take(o.format, guessed.format);
  take(o.size, guessed.size);
  if (!taken.empty()) say(text("taking ", o.file, " for ", joined(taken, " "), ", by its name"));
  return o;
}

}  // namespace

void list_formats(const listing_options& options) {
  const std::vector<format_info> formats =
      options.name.empty() ? std::vector(all_formats().begin(), all_formats().end()) : formats_named(options.name);
  if (options.json) return print_json(formats, format_json);
  std::vector<table_row> rows = {{"FORMAT", "PLANES", "BYTES/PIXEL", "OTHER NAMES", "DESCRIPTION"}};
  for (const format_info& f : formats)
    rows.push_back({f.name, std::to_string(f.plane_count), short_number(bytes_per_pixel(f)), joined(other_names(f)),
                    f.description});
  print_table(std::cout, rows, terminal_width());
}

void list_conversions(const listing_options& options) {
  if (options.json) return print_json(morvane::entry_points(), conversion_json);
  std::vector<table_row> rows = {{"CONVERSION", "FROM", "TO", "MATRIX", "IRREGULAR"}};
  for (const morvane_entry_point& e : morvane::entry_points())
    rows.push_back(
        {e.name, e.source == 0 ? "(fill)" : name_of(e.source), name_of(e.destination), matrix_names(e), e.irregular});
  print_table(std::cout, rows, terminal_width());
}

void info(const info_options& options) {
  const info_options o = completed(options);
  const auto source = o.file.empty() ? nullptr : open_source({{o.file}, o.format, o.size, {}, 0});
  const format_info& f = source ? source->format() : format_named(o.format);
  const extent size = source ? source->size() : parse_size(o.size);
  const std::int64_t frames = source ? source->remaining().value_or(unknown) : unknown;
  if (o.json)
    std::cout << info_json(f, size, frames).dump(2) << '\n';
  else
    print_info(f, size, frames);
}

}  // namespace morvane::tool
