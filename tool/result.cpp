// Colours and frames on their way to a file.
#include "result.h"

#include <algorithm>
#include <exception>

#include "errors.h"
#include "frame_stream.h"
#include "input_gate.h"
#include "memory.h"
#include "names.h"
#include "output.h"
#include "progress.h"

namespace morvane::tool {

namespace {

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
std::string left_behind(const stream_end& end, frame_sink& sink, const output_options& o) {
  if (end.frames == 0 || !(o.keep || sink.is_in_place())) return "";
  if (o.keep) sink.keep(end.frames);
  return text("; ", whole_frames(end.frames), " left in ", output_name(joined(o.output, ",")));
}

}  // namespace

morvane::description described(const format_info& f, extent size, const colour_options& o) {
  const morvane::range range =
      f.model == MORVANE_RGB ? parse_range("--rgb-range", o.rgb_range) : parse_range("--range", o.range);
  return {.format = f.format,
          .width = size.width,
          .height = size.height,
          .matrix = parse_matrix("--matrix", o.matrix),
          .range = range};
}

morvane::options choices(const colour_options& o, bool center) {
  morvane::options how;
  how.filter = o.nearest ? morvane::filter::nearest : morvane::filter::linear;
  how.siting = o.center.value_or(center) ? morvane::siting::center : morvane::siting::left;
  if (!o.background.empty()) how.background = parse_color("--background", o.background);
  return how;
}

bool writes_y4m(const output_options& o) {
  return o.y4m || is_y4m(o.output);
}

void require_place_for_y4m(const output_options& o) {
  if (!o.y4m) return;
  if (is_png(o.output)) wrong_arguments("--y4m writes YUV4MPEG2, and ", o.output.front(), " is a PNG");
  if (o.output.size() > 1)
    wrong_arguments("--y4m writes all planes to one file; there are ", o.output.size(), " files");
}

const format_info& format_of_result(const std::string& asked, const char* option, const format_info& source,
                                    bool has_background, const output_options& o) {
  if (!asked.empty()) return format_named(asked);
  if (writes_y4m(o)) return y4m_holds(source.format) ? source : format_named("y_u_v_420");
  if (!is_png(o.output)) wrong_arguments("the format of ", joined(o.output, ","), " is missing; give it with ", option);
  return format_named(source.has_alpha && !has_background ? "bgra" : "bgrx");
}

void write_all(const frame_work& work, const output_options& o) {
  const graceful_end graceful;
  progress shown(frames_to_do(work.source, o.frames));
  const frame_stream stream = {
      .source = work.source, .sink = work.sink, .limit = o.frames, .convert = work.convert, .frame_done = [&] {
        shown.frame_done();
      }};
  const std::size_t count = images_in_flight(stream);
  require_memory_for(count, work.source.frame_bytes(), work.sink.frame_bytes(work.format, work.size), work.memory);
  std::vector<image> read = blanks(count, [&] { return work.source.blank(); });
  std::vector<image> converted = blanks(count, [&] { return work.sink.blank(work.format, work.size); });
  const stream_end end = run(stream, read, converted);
  try {
    if (end.failure) std::rethrow_exception(end.failure);
  } catch (const failure& why) {
    if (*why.what() == '\0') throw;
    throw failure(why.exit_code, why.what() + left_behind(end, work.sink, o));
  }
  if (graceful.signal()) throw interrupted(*graceful.signal(), "interrupted" + left_behind(end, work.sink, o));
}

}  // namespace morvane::tool
