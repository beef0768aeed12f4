// morvane convert: frames from one format to another.
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <limits>

#include "chain.h"
#include "commands.h"
#include "errors.h"
#include "frames.h"
#include "names.h"
#include "progress.h"
#include "table.h"

namespace morvane::tool {

namespace {

morvane::options choices_of(const convert_options& o) {
  morvane::options how;
  how.filter = o.nearest ? morvane::filter::nearest : morvane::filter::linear;
  how.siting = o.center ? morvane::siting::center : morvane::siting::left;
  if (!o.background.empty()) how.background = parse_color("--background", o.background);
  how.threads = o.threads;
  how.via = o.via;
  how.allow_irregular = o.allow_irregular;
  how.rescale = o.rescale;
  if (o.via.empty() && o.allow_irregular) wrong_arguments("--allow-irregular is for a conversion that --via names");
  if (o.via.empty() && o.rescale) wrong_arguments("--rescale is for a conversion that --via names");
  return how;
}

morvane::description description_of(const format_info& f, extent size, const convert_options& o) {
  const morvane::range range =
      f.model == MORVANE_RGB ? parse_range("--rgb-range", o.rgb_range) : parse_range("--range", o.range);
  return {.format = f.format,
          .width = size.width,
          .height = size.height,
          .matrix = parse_matrix("--matrix", o.matrix),
          .range = range};
}

// What is said of the destination alone goes before what is said of both.
morvane::description destination_of(const format_info& f, extent size, const convert_options& o) {
  morvane::description d = description_of(f, size, o);
  if (!o.to_matrix.empty()) d.matrix = parse_matrix("--to-matrix", o.to_matrix);
  if (!o.to_range.empty()) d.range = parse_range("--to-range", o.to_range);
  return d;
}

const format_info& destination_format(const format_info& source, const convert_options& o) {
  if (!o.to.empty()) return format_named(o.to);
  if (!is_png(o.output)) wrong_arguments("the format of ", joined(o.output, ","), " is missing; give it with -t");
  return format_named(source.has_alpha && o.background.empty() ? "bgra" : "bgrx");
}

void remark_on(const chain& way, bool verbose) {
  if (verbose) {
    say("steps: " + joined(way.steps()));
    const std::vector<std::string> losses = way.losses();
    say("losses: " + (losses.empty() ? "none" : joined(losses)));
  }
  if (!way.remark().empty()) say(way.remark());
}

extent written_size(extent size, const std::string& crop) {
  if (crop.empty()) return size;
  const extent part = parse_size(crop);
  if (part.width > size.width || part.height > size.height)
    wrong_arguments("cannot crop to ", part, ": the picture is ", size);
  return part;
}

std::string number(double value, int decimals) {
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.*f", decimals, value);
  return digits;
}

void print_times(const chain& way) {
  std::vector<table_row> rows = {{"CONVERSION", "RUNS", "BEST", "MEAN", "BEST SPEED"}};
  for (std::size_t i = 0; i < way.plan_count(); ++i) {
    const step_time& t = way.time(i);
    const double mean = t.total_seconds / static_cast<double>(t.runs);
    const double speed = static_cast<double>(way.bytes_moved(i)) / t.best_seconds;
    rows.push_back({way.name(i), std::to_string(t.runs), number(t.best_seconds * 1e3, 3) + " ms",
                    number(mean * 1e3, 3) + " ms", number(speed * 1e-9, 2) + " GB/s"});
  }
  print_table(std::cerr, rows);
}

std::optional<std::int64_t> frames_to_do(const frame_source& source, std::optional<std::int64_t> limit) {
  const std::optional<std::int64_t> there = source.remaining();
  return there && limit ? std::min(*there, *limit) : there ? there : limit;
}

void convert_all(frame_source& source, chain& way, frame_sink& sink, image& result, const convert_options& o) {
  // Once over is too short to measure a small picture by.
  constexpr int runs_measured = 20;
  progress shown(frames_to_do(source, o.frames));
  const std::int64_t limit = o.frames.value_or(std::numeric_limits<std::int64_t>::max());
  image picture = source.blank();
  for (std::int64_t frame = 0; frame < limit && source.read(picture); ++frame) {
    way.run(picture, result, o.time && frame == 0 ? runs_measured : 1);
    sink.write(result);
    shown.frame_done();
  }
}

}  // namespace

void convert(const convert_options& o) {
  const auto source = open_source({o.input, o.from, o.size, o.source_strides, o.skip});
  const extent size = source->size();
  const format_info& format = destination_format(source->format(), o);
  chain way(description_of(source->format(), size, o), destination_of(format, size, o), choices_of(o));
  const extent written = written_size(size, o.crop);
  remark_on(way, o.verbose);
  const auto sink = open_sink({o.output, written, o.destination_strides}, format);
  image result = sink->blank(format, size);
  convert_all(*source, way, *sink, result, o);
  sink->commit();
  if (o.time) print_times(way);
}

}  // namespace morvane::tool
