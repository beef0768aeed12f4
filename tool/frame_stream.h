// Frames that are read, converted and written at the same time.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <vector>

#include "frames.h"

namespace morvane::tool {

struct frame_stream {
  frame_source& source;
  frame_sink& sink;
  std::optional<std::int64_t> limit;                          // of frames
  std::function<void(const image& from, image& to)> convert;  // called by the caller's thread
  std::function<void()> frame_done;                           // called when a frame is written
};

struct stream_end {
  std::int64_t frames = 0;     // that were written whole
  std::exception_ptr failure;  // why it ended before the last frame; null where it did not
};

// The images that are under way, read and converted: enough for all three to be at work.
std::size_t images_in_flight(const frame_stream& s);

// Runs until the last frame is written, reading was stopped, or something failed. `read` and `converted` are as many
// images as there may be under way.
stream_end run(const frame_stream& s, std::vector<image>& read, std::vector<image>& converted);

}  // namespace morvane::tool
