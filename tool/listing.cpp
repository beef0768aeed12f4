// morvane formats, conversions and info: what the catalogue holds.
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

#include "catalogue/conversions.h"
#include "catalogue/formats.h"
#include "catalogue/layout.h"
#include "commands.h"
#include "errors.h"
#include "names.h"
#include "table.h"

namespace morvane::tool {

namespace {

using nlohmann::ordered_json;

// Empty names become null, so that a reader need not know an empty one from a missing one.
ordered_json word(std::string_view w) {
  return w.empty() ? ordered_json(nullptr) : ordered_json(w);
}

double bytes_per_pixel(const catalogue::format& f) {
  double bytes = 0;
  for (std::size_t p = 0; p < f.plane_count(); ++p)
    bytes += static_cast<double>(f.planes[p].group_bytes) / f.planes[p].group_pixels / f.planes[p].image_rows;
  return bytes;
}

std::string short_number(double value) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.3g", value);
  return digits;
}

std::vector<int> matrices_of(const catalogue::conversion& c) {
  std::vector<int> result;
  for (const catalogue::matrix m : catalogue::matrices)
    if (offers(c, m)) result.push_back(number_of(m));
  return result;
}

std::string matrix_names(const catalogue::conversion& c) {
  std::vector<std::string> names;
  for (const int number : matrices_of(c)) names.push_back(std::to_string(number));
  return joined(names);
}

ordered_json names_of(const catalogue::format& f) {
  return {
      {"fourcc", word(f.fourcc)}, {"ffmpeg", word(f.ffmpeg)}, {"v4l2", word(f.v4l2)}, {"gstreamer", word(f.gstreamer)}};
}

ordered_json plane_json(const catalogue::plane& p) {
  return {{"name", p.name},
          {"components", p.components},
          {"group_bytes", p.group_bytes},
          {"group_pixels", p.group_pixels},
          {"image_rows", p.image_rows}};
}

ordered_json format_json(const catalogue::format& f) {
  ordered_json planes = ordered_json::array();
  for (std::size_t p = 0; p < f.plane_count(); ++p) planes.push_back(plane_json(f.planes[p]));
  return {{"name", f.name},
          {"description", f.description},
          {"bytes_per_pixel", bytes_per_pixel(f)},
          {"alpha", f.alpha},
          {"width_multiple", f.width_multiple},
          {"height_multiple", f.height_multiple},
          {"other_names", names_of(f)},
          {"planes", planes}};
}

ordered_json conversion_json(const catalogue::conversion& c) {
  return {{"name", c.name},
          {"source", word(c.source)},
          {"destination", c.destination},
          {"matrices", matrices_of(c)},
          {"rescale", c.extra == catalogue::argument::rescale},
          {"opacity_report", c.extra == catalogue::argument::opacity},
          {"irregular", word(c.irregular)}};
}

template <class Rows, class ToJson>
void print_json(const Rows& rows, ToJson to_json) {
  ordered_json all = ordered_json::array();
  for (const auto& row : rows) all.push_back(to_json(row));
  std::cout << all.dump(2) << '\n';
}

ordered_json info_json(const catalogue::format& f, extent size) {
  const catalogue::layout layout = lay_out(f, size.width, size.height);
  ordered_json result = {{"format", f.name},
                         {"width", size.width},
                         {"height", size.height},
                         {"frame_bytes", layout.bytes},
                         {"planes", ordered_json::array()}};
  for (std::size_t i = 0; i < f.plane_count(); ++i) {
    const catalogue::plane_layout& p = layout.planes[i];
    result["planes"].push_back(
        {{"name", f.planes[i].name}, {"rows", p.rows}, {"stride", p.stride}, {"bytes", p.bytes()}});
  }
  return result;
}

std::string labelled_names(const catalogue::format& f) {
  std::vector<std::string> names;
  const auto add = [&](std::string_view name, const char* whose) {
    if (!name.empty()) names.push_back(text(name, " (", whose, ")"));
  };
  add(f.fourcc, "FourCC");
  add(f.ffmpeg, "FFmpeg");
  add(f.v4l2, "V4L2");
  add(f.gstreamer, "GStreamer");
  return joined(names);
}

void print_info(const catalogue::format& f, extent size) {
  std::cout << f.name << ' ' << size << ": " << f.description << '\n';
  const std::string names = labelled_names(f);
  if (!names.empty()) std::cout << "also called " << names << '\n';
  std::vector<table_row> rows = {{"PLANE", "ROWS", "TIGHT STRIDE", "BYTES", "SAMPLES"}};
  const catalogue::layout layout = lay_out(f, size.width, size.height);
  for (std::size_t i = 0; i < f.plane_count(); ++i) {
    const catalogue::plane_layout& p = layout.planes[i];
    rows.push_back({std::string(f.planes[i].name), std::to_string(p.rows), std::to_string(p.stride),
                    std::to_string(p.bytes()), std::string(f.planes[i].components)});
  }
  print_table(std::cout, rows, terminal_width());
  std::cout << "frame: " << layout.bytes << " bytes\n";
}

}  // namespace

void list_formats(const listing_options& options) {
  if (options.json) return print_json(catalogue::formats, format_json);
  std::vector<table_row> rows = {{"FORMAT", "PLANES", "BYTES/PIXEL", "OTHER NAMES", "DESCRIPTION"}};
  for (const catalogue::format& f : catalogue::formats)
    rows.push_back({std::string(f.name), std::to_string(f.plane_count()), short_number(bytes_per_pixel(f)),
                    joined(other_names(f)), std::string(f.description)});
  print_table(std::cout, rows, terminal_width());
}

void list_conversions(const listing_options& options) {
  if (options.json) return print_json(catalogue::conversions, conversion_json);
  std::vector<table_row> rows = {{"CONVERSION", "FROM", "TO", "MATRIX", "IRREGULAR"}};
  for (const catalogue::conversion& c : catalogue::conversions)
    rows.push_back({std::string(c.name), c.source.empty() ? "(fill)" : std::string(c.source),
                    std::string(c.destination), matrix_names(c), std::string(c.irregular)});
  print_table(std::cout, rows, terminal_width());
}

void info(const info_options& options) {
  const catalogue::format& f = format_named(options.format);
  const extent size = parse_size(options.size);
  require_whole_picture(f, size);
  if (options.json)
    std::cout << info_json(f, size).dump(2) << '\n';
  else
    print_info(f, size);
}

}  // namespace morvane::tool
