// A file or pipe of raw frames, or of one plane of every frame, read from the start to the end.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "input_file.h"

namespace morvane::tool {

class raw_file {
 public:
  // What to add to the error that so many bytes are no whole number of frames.
  using advisor = std::function<std::string(std::int64_t bytes)>;

  // "-" is standard input. `contents` names what stands in `frame_bytes`, as in "one frame of uyvy 8x4". A file whose
  // last frame is cut short is refused at once, or where `whole_frames` says so when that frame is reached.
  raw_file(const std::string& path, std::int64_t frame_bytes, std::string contents, const advisor& advice,
           bool whole_frames);

  const std::string& name() const { return file_.name(); }
  // How many frames next() will still give, when that is known beforehand.
  std::optional<std::int64_t> remaining() const { return remaining_; }

  void skip(std::int64_t frames);
  // Goes to the start of the next frame; false after the last one.
  bool next();
  // Reads or passes over the next bytes of the frame.
  void take(std::uint8_t* into, std::int64_t bytes);
  void pass(std::int64_t bytes);

 private:
  void count_frames(std::int64_t bytes, const advisor& advice, bool whole_frames);
  std::string expected() const;

  input_file file_;
  std::int64_t frame_bytes_;
  std::string contents_;
  std::optional<std::int64_t> remaining_;
  std::int64_t frame_ = 0;  // number of the next frame
  std::int64_t taken_ = 0;  // bytes of the frame being read
  std::vector<std::uint8_t> passed_;
};

}  // namespace morvane::tool
