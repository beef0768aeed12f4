// morvane convert: frames from one format to another.
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <limits>

#include "commands.h"
#include "errors.h"
#include "frames.h"
#include "names.h"
#include "pipeline.h"
#include "progress.h"
#include "route.h"
#include "table.h"
#include "workers.h"

namespace morvane::tool {

namespace {

route choose_route(const format_info& source, const convert_options& o) {
  const route_wish wish{o.matrix, o.via, o.allow_irregular, o.rescale};
  if (!o.to.empty()) return find_route(source, format_named(o.to), wish);
  const std::string name = joined(o.output, ",");
  if (!is_png(o.output)) wrong_arguments("the format of ", name, " is missing; give it with -t");
  const std::optional<route> way = find_route_to_rgb(source, o.matrix.value_or(709));
  if (!way) wrong_arguments("no conversion leads from ", source.name, " to RGB, which ", name, " needs");
  return find_route(source, way->destination(), wish);
}

void remark_on(const route& way, bool verbose) {
  if (verbose) say(described(way));
  for (const catalogue::conversion* c : way.steps)
    if (!c->irregular.empty()) say(text(c->name, " is irregular: it ", c->irregular));
}

extent working_size(extent size, const route& way, bool pad) {
  const extent padded = padded_size(size, way);
  if (!pad)
    for (const catalogue::format* f : way.formats()) require_whole_picture(info_of(f->id), size, true);
  if (padded.width != size.width)
    say(text("width ", size.width, " padded to ", padded.width, " by repeating the last column"));
  if (padded.height != size.height)
    say(text("height ", size.height, " padded to ", padded.height, " by repeating the last row"));
  return padded;
}

extent written_size(extent size, const format_info& f, const std::string& crop) {
  if (crop.empty()) return size;
  const extent part = parse_size(crop);
  if (part.width > size.width || part.height > size.height)
    wrong_arguments("cannot crop to ", part, ": the picture is ", size);
  require_whole_picture(f, part);
  return part;
}

std::string number(double value, int decimals) {
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.*f", decimals, value);
  return digits;
}

void print_times(const route& way, const pipeline& line) {
  std::vector<table_row> rows = {{"STEP", "RUNS", "BEST", "MEAN", "BEST SPEED"}};
  for (std::size_t i = 0; i < way.steps.size(); ++i) {
    const step_time& t = line.times()[i];
    const double mean = t.total_seconds / static_cast<double>(t.runs);
    const double speed = static_cast<double>(line.bytes_moved(i)) / t.best_seconds;
    rows.push_back({std::string(way.steps[i]->name), std::to_string(t.runs), number(t.best_seconds * 1e3, 3) + " ms",
                    number(mean * 1e3, 3) + " ms", number(speed * 1e-9, 2) + " GB/s"});
  }
  print_table(std::cerr, rows);
}

std::optional<std::int64_t> frames_to_do(const frame_source& source, std::optional<std::int64_t> limit) {
  const std::optional<std::int64_t> there = source.remaining();
  return there && limit ? std::min(*there, *limit) : there ? there : limit;
}

void convert_all(frame_source& source, pipeline& line, frame_sink& sink, const convert_options& o) {
  // Once over is too short to measure a small picture by.
  constexpr int runs_measured = 20;
  progress shown(frames_to_do(source, o.frames));
  const std::int64_t limit = o.frames.value_or(std::numeric_limits<std::int64_t>::max());
  for (std::int64_t frame = 0; frame < limit && source.read(line.input()); ++frame) {
    repeat_edges(line.input(), source.size());
    line.run(o.time && frame == 0 ? runs_measured : 1);
    sink.write(line.output());
    shown.frame_done();
  }
}

}  // namespace

void convert(const convert_options& o) {
  const auto source = open_source({o.input, o.from, o.size, o.source_strides, o.skip});
  const route way = choose_route(source->format(), o);
  const format_info& destination = way.destination();
  const extent size = working_size(source->size(), way, o.pad);
  const extent written = written_size(size, destination, o.crop);
  remark_on(way, o.verbose);
  workers hands(o.threads);
  pipeline line(way, size, hands);
  const auto sink = open_sink({o.output, written, o.destination_strides}, destination);
  convert_all(*source, line, *sink, o);
  sink->commit();
  if (o.time) print_times(way, line);
}

}  // namespace morvane::tool
