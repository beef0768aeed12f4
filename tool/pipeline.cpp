// Running a route.
#include "pipeline.h"

#include <algorithm>
#include <chrono>

namespace morvane::tool {

namespace {

int largest_group(const catalogue::format& f) {
  int pixels = 1;
  for (const catalogue::plane& p : f.planes) pixels = std::max(pixels, p.group_pixels);
  return pixels;
}

catalogue::planes<const std::uint8_t> read_only(const catalogue::planes<std::uint8_t>& p) {
  catalogue::planes<const std::uint8_t> result;
  std::copy(p.data.begin(), p.data.end(), result.data.begin());
  result.stride = p.stride;
  return result;
}

}  // namespace

pipeline::pipeline(const route& way, extent size, workers& hands)
    : way_(way),
      size_(size),
      hands_(hands),
      input_(way.source(), size),
      output_(way.destination(), size),
      times_(way.steps.size()) {
  const std::vector<const catalogue::format*> formats = way_.formats();
  for (std::size_t i = 0; i < formats.size(); ++i) images_.emplace_back(*formats[i], size_, room_of(i));
}

// The image stands between two steps and must suit both.
spare_room pipeline::room_of(std::size_t image_index) const {
  spare_room room;
  const catalogue::format& format = *way_.formats()[image_index];
  const auto suit = [&](const catalogue::conversion& c) {
    const int width = call_width(c);
    room.width = std::max(room.width, width);
    for (std::size_t p = 0; p < format.plane_count(); ++p)
      room.bytes[p] = std::max(room.bytes[p], c.bytes_past(format.planes[p], width));
  };
  if (image_index > 0) {
    const catalogue::conversion& writer = *way_.steps[image_index - 1];
    suit(writer);
    room.one_stride = writer.one_stride;
  }
  if (image_index < way_.steps.size()) suit(*way_.steps[image_index]);
  return room;
}

// A conversion that leaves the end of a row unwritten is given longer rows, of whole groups.
int pipeline::call_width(const catalogue::conversion& c) const {
  if (c.margin_pixels == 0) return size_.width;
  const int group = largest_group(*catalogue::find_format(c.source));
  return (size_.width + group - 1) / group * group + c.margin_pixels;
}

void pipeline::run(int times) {
  using clock = std::chrono::steady_clock;
  images_.front().take(input_);
  for (std::size_t step = 0; step < way_.steps.size(); ++step)
    for (int i = 0; i < times; ++i) {
      const clock::time_point start = clock::now();
      convert(step);
      const double seconds = std::chrono::duration<double>(clock::now() - start).count();
      step_time& t = times_[step];
      t.best_seconds = t.runs == 0 ? seconds : std::min(t.best_seconds, seconds);
      t.total_seconds += seconds;
      ++t.runs;
    }
  images_.back().give(output_);
}

std::int64_t pipeline::bytes_moved(std::size_t step) const {
  return images_[step].format().frame_bytes(size_.width, size_.height) +
         images_[step + 1].format().frame_bytes(size_.width, size_.height);
}

// Bands have an even number of rows, so that no two of them share a row of chroma.
void pipeline::convert(std::size_t step) {
  const int pairs = (size_.height + 1) / 2;
  const int bands = std::min(hands_.count(), pairs);
  hands_.run(bands, [&](int band) {
    const int first = static_cast<int>(std::int64_t{pairs} * band / bands) * 2;
    const int end = std::min(static_cast<int>(std::int64_t{pairs} * (band + 1) / bands) * 2, size_.height);
    convert_band(step, first, end - first);
  });
}

void pipeline::convert_band(std::size_t step, int first_row, int rows) {
  const catalogue::conversion& c = *way_.steps[step];
  catalogue::call call;
  call.source = read_only(images_[step].from_row(first_row));
  call.destination = images_[step + 1].from_row(first_row);
  call.xres = call_width(c) / c.pixels_per_xres;
  call.yres = rows / c.rows_per_yres;
  if (c.extra == catalogue::argument::color_space) call.argument = way_.matrix;
  if (c.extra == catalogue::argument::rescale) call.argument = way_.rescale;
  c.convert(call);
}

}  // namespace morvane::tool
