// Reading raw frames.
#include "raw_file.h"

#include <algorithm>
#include <utility>

#include "errors.h"

namespace morvane::tool {

raw_file::raw_file(const std::string& path, std::int64_t frame_bytes, std::string contents, const advisor& advice,
                   bool whole_frames)
    : file_(path), frame_bytes_(frame_bytes), contents_(std::move(contents)) {
  if (file_.size()) count_frames(*file_.size(), advice, whole_frames);
}

void raw_file::count_frames(std::int64_t bytes, const advisor& advice, bool whole_frames) {
  if (bytes == 0) io_failure(name(), " is empty: expected ", expected());
  if (bytes % frame_bytes_ != 0 && !whole_frames)
    io_failure(name(), " is not a whole number of frames: expected a multiple of ", expected(), ", got ", bytes,
               " bytes", advice(bytes));
  remaining_ = (bytes - 1) / frame_bytes_ + 1;
}

std::string raw_file::expected() const {
  return text(frame_bytes_, " bytes, ", contents_);
}

void raw_file::skip(std::int64_t frames) {
  if (remaining_ && frames >= *remaining_)
    wrong_arguments(name(), " has no frame ", frames, ": it has ", *remaining_, ", numbered from 0");
  if (remaining_) {
    file_.pass(frames * frame_bytes_);
    *remaining_ -= frames;
    frame_ += frames;
    return;
  }
  while (frame_ < frames) {
    if (!next()) io_failure(name(), " has no frame ", frames, ": it has ", frame_, ", numbered from 0");
    pass(frame_bytes_);
  }
}

bool raw_file::next() {
  if (remaining_ == 0) return false;
  if (file_.at_end()) {
    if (frame_ == 0) io_failure(name(), " is empty: expected ", expected());
    return false;
  }
  if (remaining_) --*remaining_;
  ++frame_;
  taken_ = 0;
  return true;
}

void raw_file::take(std::uint8_t* into, std::int64_t bytes) {
  const std::int64_t got = file_.read(into, bytes);
  taken_ += got;
  if (got == bytes) return;
  io_failure(name(), " ended inside frame ", frame_ - 1, ": expected ", expected(), ", got ", taken_);
}

void raw_file::pass(std::int64_t bytes) {
  passed_.resize(static_cast<std::size_t>(std::min<std::int64_t>(bytes, 1 << 16)));
  for (; bytes > 0; bytes -= static_cast<std::int64_t>(passed_.size())) {
    passed_.resize(std::min(passed_.size(), static_cast<std::size_t>(bytes)));
    take(passed_.data(), static_cast<std::int64_t>(passed_.size()));
  }
}

}  // namespace morvane::tool
