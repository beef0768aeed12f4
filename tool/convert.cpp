// morvane convert: frames from one format to another.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>

#include "chain.h"
#include "commands.h"
#include "errors.h"
#include "frame_stream.h"
#include "frames.h"
#include "input_gate.h"
#include "memory.h"
#include "names.h"
#include "output.h"
#include "progress.h"
#include "table.h"

namespace morvane::tool {

namespace {

// The words of YUV4MPEG2 for 4:2:0 tell where its chroma is.
morvane::siting siting_of(const y4m_stream* video, const convert_options& o) {
  const bool says_center = video && (video->colour == "420jpeg" || video->colour == "420");
  return o.center.value_or(says_center) ? morvane::siting::center : morvane::siting::left;
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
  morvane::options how;
  how.filter = o.nearest ? morvane::filter::nearest : morvane::filter::linear;
  how.siting = siting_of(video, o);
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

void require_place_for_y4m(const convert_options& o) {
  if (!o.y4m) return;
  if (is_png(o.output)) wrong_arguments("--y4m writes YUV4MPEG2, and ", o.output.front(), " is a PNG");
  if (o.output.size() > 1)
    wrong_arguments("--y4m writes all planes to one file; there are ", o.output.size(), " files");
}

bool writes_y4m(const convert_options& o) {
  return o.y4m || is_y4m(o.output);
}

const format_info& destination_format(const format_info& source, const convert_options& o) {
  if (!o.to.empty()) return format_named(o.to);
  if (writes_y4m(o)) return y4m_holds(source.format) ? source : format_named("y_u_v_420");
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

std::vector<image> blanks(std::size_t count, const std::function<image()>& blank) {
  std::vector<image> images;
  while (images.size() < count) images.push_back(blank());
  return images;
}

// Bounded by what no system has, so that the sum cannot overflow.
void require_memory_for(std::size_t count, std::int64_t read, std::int64_t converted, std::int64_t beside) {
  const auto bounded = [](std::int64_t bytes) { return std::min(bytes, std::int64_t{1} << 58); };
  require_memory(static_cast<std::int64_t>(count) * (bounded(read) + bounded(converted)) + bounded(beside));
}

std::string whole_frames(std::int64_t frames) {
  return text(frames, frames == 1 ? " whole frame is" : " whole frames are");
}

// Leaves the frames that are done, where it may, and says so.
std::string left_behind(const stream_end& end, frame_sink& sink, const convert_options& o) {
  if (end.frames == 0 || !(o.keep || sink.is_in_place())) return "";
  if (o.keep) sink.keep(end.frames);
  return text("; ", whole_frames(end.frames), " left in ", output_name(joined(o.output, ",")));
}

void convert_all(frame_source& source, chain& way, frame_sink& sink, const morvane::description& to,
                 const convert_options& o) {
  // Once over is too short to measure a small picture by.
  constexpr int runs_measured = 20;
  const graceful_end graceful;
  progress shown(frames_to_do(source, o.frames));
  bool measured = !o.time;
  const frame_stream stream = {.source = source,
                               .sink = sink,
                               .limit = o.frames,
                               .convert =
                                   [&](const image& from, image& result) {
                                     way.run(from, result, measured ? 1 : runs_measured);
                                     measured = true;
                                   },
                               .frame_done = [&] { shown.frame_done(); }};
  const extent size{to.width, to.height};
  const std::size_t count = images_in_flight(stream);
  require_memory_for(count, source.frame_bytes(), sink.frame_bytes(info_of(to.format), size), way.memory());
  std::vector<image> read = blanks(count, [&] { return source.blank(); });
  std::vector<image> converted = blanks(count, [&] { return sink.blank(info_of(to.format), size); });
  const stream_end end = run(stream, read, converted);
  try {
    if (end.failure) std::rethrow_exception(end.failure);
  } catch (const failure& why) {
    if (*why.what() == '\0') throw;
    throw failure(why.exit_code, why.what() + left_behind(end, sink, o));
  }
  if (graceful.signal()) throw interrupted(*graceful.signal(), "interrupted" + left_behind(end, sink, o));
}

}  // namespace

void convert(const convert_options& given) {
  require_place_for_y4m(given);
  const auto source = open_source({given.input, given.from, given.size, given.source_strides, given.skip, given.keep});
  const y4m_stream* video = source->header();
  const convert_options o = completed(given, video);
  const extent size = source->size();
  const format_info& format = destination_format(source->format(), o);
  const morvane::description to = destination_of(format, size, o);
  chain way(description_of(source->format(), size, o), to, choices_of(o, video));
  const extent written = written_size(size, o.crop);
  remark_on(way, o.verbose);
  const auto sink = open_sink(
      {o.output, written, o.destination_strides, writes_y4m(o), video_of(video, to, o), siting_of(video, o)}, format);
  convert_all(*source, way, *sink, to, o);
  sink->commit();
  if (o.time) print_times(way);
}

}  // namespace morvane::tool
