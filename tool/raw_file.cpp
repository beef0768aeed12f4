// Reading raw frames.
#include "raw_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "errors.h"

namespace morvane::tool {

raw_file::raw_file(const std::string& path, std::int64_t frame_bytes, std::string contents, const advisor& advice)
    : name_(path == "-" ? "standard input" : path), frame_bytes_(frame_bytes), contents_(std::move(contents)) {
  open(path, advice);
}

void raw_file::open(const std::string& path, const advisor& advice) {
  file_.reset(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
  if (!file_) system_failure("cannot read " + name_, errno);
  struct stat found {};
  if (::fstat(::fileno(file_.get()), &found) != 0) system_failure("cannot read " + name_, errno);
  if (S_ISDIR(found.st_mode)) system_failure("cannot read " + name_, EISDIR);
  if (S_ISREG(found.st_mode)) count_frames(found.st_size - std::max<std::int64_t>(::ftello(file_.get()), 0), advice);
}

void raw_file::count_frames(std::int64_t bytes, const advisor& advice) {
  if (bytes == 0) io_failure(name_, " is empty: expected ", expected());
  if (bytes % frame_bytes_ != 0)
    io_failure(name_, " is not a whole number of frames: expected a multiple of ", expected(), ", got ", bytes,
               " bytes", advice(bytes));
  remaining_ = bytes / frame_bytes_;
}

std::string raw_file::expected() const {
  return text(frame_bytes_, " bytes, ", contents_);
}

void raw_file::skip(std::int64_t frames) {
  if (remaining_ && frames >= *remaining_)
    wrong_arguments(name_, " has no frame ", frames, ": it has ", *remaining_, ", numbered from 0");
  if (remaining_) {
    ::fseeko(file_.get(), frames * frame_bytes_, SEEK_CUR);
    *remaining_ -= frames;
    return;
  }
  while (frame_ < frames) {
    if (!next()) io_failure(name_, " has no frame ", frames, ": it has ", frame_, ", numbered from 0");
    pass(frame_bytes_);
  }
}

bool raw_file::next() {
  if (remaining_ == 0 || at_end()) return false;
  if (remaining_) --*remaining_;
  ++frame_;
  taken_ = 0;
  return true;
}

bool raw_file::at_end() {
  const int next = std::getc(file_.get());
  if (next == EOF && std::ferror(file_.get())) system_failure("cannot read " + name_, errno);
  if (next == EOF && frame_ == 0) io_failure(name_, " is empty: expected ", expected());
  return next == EOF || std::ungetc(next, file_.get()) == EOF;
}

void raw_file::take(std::uint8_t* into, std::int64_t bytes) {
  const std::size_t got = std::fread(into, 1, static_cast<std::size_t>(bytes), file_.get());
  taken_ += static_cast<std::int64_t>(got);
  if (static_cast<std::int64_t>(got) == bytes) return;
  if (std::ferror(file_.get())) system_failure("cannot read " + name_, errno);
  io_failure(name_, " ended inside frame ", frame_ - 1, ": expected ", expected(), ", got ", taken_);
}

void raw_file::pass(std::int64_t bytes) {
  passed_.resize(static_cast<std::size_t>(std::min<std::int64_t>(bytes, 1 << 16)));
  for (; bytes > 0; bytes -= static_cast<std::int64_t>(passed_.size())) {
    passed_.resize(std::min(passed_.size(), static_cast<std::size_t>(bytes)));
    take(passed_.data(), static_cast<std::int64_t>(passed_.size()));
  }
}

}  // namespace morvane::tool
