#include "measure/ring.h"

#include <algorithm>
#include <cstring>

namespace morvane::bench {

namespace {

// As wide as the registers, so that other libraries find what they like best.
constexpr std::int64_t alignment = 64;

constexpr std::int64_t least_frames = 4;
constexpr std::int64_t most_memory = std::int64_t{512} << 20;

description describe(const catalogue::format& f, const size& s) {
  return {.format = f.id, .width = s.xres, .height = s.yres};
}

// Half of what a frame moves has room in it too.
std::int64_t slot_for(const format_pair& p, const size& each) {
  const std::int64_t larger = std::max(lay_out(describe(*p.source, each), alignment).bytes,
                                       lay_out(describe(*p.destination, each), alignment).bytes);
  return (larger + alignment - 1) / alignment * alignment;
}

// A format with everything that a source of this kind may hold.
format fullest_like(const catalogue::format& f) {
  switch (f.model) {
    case catalogue::color_model::alpha:
      return format_named("alpha_u16");
    case catalogue::color_model::chroma:
      return format_named("cbcr_16_422");
    case catalogue::color_model::ycbcr:
    case catalogue::color_model::rgb:
    case catalogue::color_model::luma:
      break;
  }
  return format_named("bgra64");
}

}  // namespace

int frames_that_move(std::int64_t bytes, const format_pair& p, const size& each) {
  const std::int64_t moved = bytes_moved(p, each);
  const std::int64_t wanted = std::max(least_frames, (bytes + moved - 1) / moved);
  const std::int64_t room = std::max(least_frames, most_memory / (2 * slot_for(p, each)));
  return static_cast<int>(std::min(wanted, room));
}

ring::ring(const arena& memory, const format_pair& p, const size& each, int count)
    : pair_(p),
      each_(each),
      source_(memory.source()),
      destination_(memory.destination()),
      from_(describe(*p.source, each)),
      to_(describe(*p.destination, each)),
      source_layout_(lay_out(from_, alignment)),
      destination_layout_(lay_out(to_, alignment)),
      moved_(bytes_moved(p, each)),
      slot_(slot_for(p, each)),
      count_(count) {
}

std::size_t ring::bytes_for(const format_pair& p, const size& each, int count) {
  return static_cast<std::size_t>(slot_for(p, each) * count);
}

int ring::next() {
  const int result = next_;
  next_ = (next_ + 1) % count_;
  return result;
}

void ring::copy(int i) const {
  std::memcpy(destination_ + i * slot_, source_memory(i), static_cast<std::size_t>(moved_ / 2));
}

void noise::fill_sources(const ring& frames) {
  if (format_ != frames.formats().source || each_ != frames.each()) make_frame(frames);
  for (int i = 0; i < frames.count(); ++i) std::memcpy(frames.source_memory(i), frame_.data(), frame_.size());
}

void noise::make_frame(const ring& frames) {
  description full = frames.from();
  full.format = fullest_like(*frames.formats().source);
  image everything(full);
  fill_with_noise(everything.data(), everything.bytes());
  frame_.assign(static_cast<std::size_t>(frames.source_layout().bytes), 0);
  convert(full, everything.picture(), frames.from(), picture_in(frame_.data(), frames.source_layout()));
  format_ = frames.formats().source;
  each_ = frames.each();
}

}  // namespace morvane::bench
