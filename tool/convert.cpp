// morvane convert: frames from one format to another.
#include <algorithm>
#include <cstdio>
#include <iostream>

#include "chain.h"
#include "commands.h"
#include "errors.h"
#include "names.h"
#include "result.h"
#include "table.h"

namespace morvane::tool {

namespace {

// The words of YUV4MPEG2 for 4:2:0 tell where its chroma is.
bool says_center(const y4m_stream* video) {
  return video && (video->colour == "420jpeg" || video->colour == "420");
}

// The options, with what the file itself says where they say nothing.
convert_options completed(convert_options o, const y4m_stream* video) {
  if (video && o.range.empty() && video->range != morvane::range::unsaid)
    o.range = video->range == morvane::range::full ? "full" : "video";
  return o;
}

// What YUV4MPEG2 is to say of the result. Interlaced frames and the shape of pixels stay what they are.
y4m_stream video_of(const y4m_stream* source, const morvane::description& to, const convert_options& o) {
  y4m_stream video = source ? *source : y4m_stream();
  if (o.center) video.colour.clear();
  video.range = to.range;
  return video;
}

morvane::options choices_of(const convert_options& o, const y4m_stream* video) {
  morvane::options how = choices(o, says_center(video));
  how.threads = o.threads;
  how.via = o.via;
  how.allow_irregular = o.allow_irregular;
  how.rescale = o.rescale;
  how.stores = parse_stores("--stores", o.stores);
  if (o.via.empty() && o.allow_irregular) wrong_arguments("--allow-irregular is for a conversion that --via names");
  if (o.via.empty() && o.rescale) wrong_arguments("--rescale is for a conversion that --via names");
  return how;
}

// What is said of the destination alone goes before what is said of both.
morvane::description destination_of(const format_info& f, extent size, const convert_options& o) {
  morvane::description d = described(f, size, o);
  if (!o.to_matrix.empty()) d.matrix = parse_matrix("--to-matrix", o.to_matrix);
  if (!o.to_range.empty()) d.range = parse_range("--to-range", o.to_range);
  return d;
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

void convert_all(frame_source& source, chain& way, frame_sink& sink, const morvane::description& to,
                 const convert_options& o) {
  // Once over is too short to measure a small picture by.
  constexpr int runs_measured = 20;
  bool measured = !o.time;
  write_all({.source = source,
             .sink = sink,
             .format = info_of(to.format),
             .size = {to.width, to.height},
             .memory = way.memory(),
             .convert =
                 [&](const image& from, image& result) {
                   way.run(from, result, measured ? 1 : runs_measured);
                   measured = true;
                 }},
            o);
}

}  // namespace

void convert(const convert_options& given) {
  require_place_for_y4m(given);
  const auto source = open_source({given.input, given.from, given.size, given.source_strides, given.skip, given.keep});
  const y4m_stream* video = source->header();
  const convert_options o = completed(given, video);
  const extent size = source->size();
  const format_info& format = format_of_result(o.to, "-t", source->format(), !o.background.empty(), o);
  const morvane::description to = destination_of(format, size, o);
  const morvane::options how = choices_of(o, video);
  chain way(described(source->format(), size, o), to, how);
  const extent written = written_size(size, o.crop);
  remark_on(way, o.verbose);
  const auto sink =
      open_sink({o.output, written, o.destination_strides, writes_y4m(o), video_of(video, to, o), how.siting}, format);
  convert_all(*source, way, *sink, to, o);
  sink->commit();
  if (o.time) print_times(way);
}

}  // namespace morvane::tool
