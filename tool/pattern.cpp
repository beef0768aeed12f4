// morvane pattern: frames of a test pattern in any format.
#include <memory>

#include "commands.h"
#include "errors.h"
#include "input_gate.h"
#include "names.h"
#include "output.h"
#include "result.h"
#include "rgb_to_any.h"
#include "test_pattern.h"

namespace morvane::tool {

namespace {

class pattern_source : public frame_source {
 public:
  pattern_source(test_pattern draw, extent size, std::int64_t frames) : draw_(draw), size_(size), frames_(frames) {}

  const format_info& format() const override { return rgb_to_begin_with(); }
  extent size() const override { return size_; }
  std::optional<std::int64_t> remaining() const override { return frames_ - drawn_; }

  bool read(image& into) override {
    require_reading();
    if (drawn_ == frames_) return false;
    draw_(drawn_++, into);
    return true;
  }

 private:
  test_pattern draw_;
  extent size_;
  std::int64_t frames_;
  std::int64_t drawn_ = 0;
};

void require_place_for_frames(const pattern_options& o) {
  if (is_png(o.output) && *o.frames > 1)
    wrong_arguments(o.output.front(), " is a PNG, which holds one frame, and --frames is ", *o.frames);
}

}  // namespace

void pattern(const pattern_options& given) {
  pattern_options o = given;
  o.frames = o.frames.value_or(1);
  const test_pattern draw = pattern_named(o.name);
  require_place_for_y4m(o);
  require_place_for_frames(o);
  const format_info& format = format_of_result(o.format, "-f", rgb_to_begin_with(), !o.background.empty(), o);
  if (o.size.empty()) wrong_arguments("the size of the pattern is missing; give it with -s WIDTHxHEIGHT");
  const extent size = parse_size(o.size);
  const morvane::description result = described(format, size, o);
  morvane::options how = choices(o);
  how.threads = o.threads;
  rgb_to_any way(result, how);
  pattern_source source(draw, size, *o.frames);
  y4m_stream video;
  video.range = result.range;
  const auto sink = open_sink({o.output, size, o.destination_strides, writes_y4m(o), video, how.siting}, format);
  write_all({.source = source,
             .sink = *sink,
             .format = format,
             .size = size,
             .memory = way.memory(),
             .convert = [&](const image& from, image& made) { way.run(from, made); }},
            o);
  sink->commit();
}

}  // namespace morvane::tool
