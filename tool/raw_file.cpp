// Reading raw frames.
#include "raw_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "errors.h"
#include "input_gate.h"

namespace morvane::tool {

namespace {

constexpr std::size_t buffer_bytes = 1 << 16;

}  // namespace

raw_file::descriptor::~descriptor() {
  if (number_ > STDIN_FILENO) ::close(number_);
}

bool raw_file::descriptor::open(const std::string& path) {
  number_ = path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  return number_ >= 0;
}

raw_file::raw_file(const std::string& path, std::int64_t frame_bytes, std::string contents, const advisor& advice,
                   bool whole_frames)
    : name_(path == "-" ? "standard input" : path), frame_bytes_(frame_bytes), contents_(std::move(contents)) {
  open(path, advice, whole_frames);
}

void raw_file::open(const std::string& path, const advisor& advice, bool whole_frames) {
  struct stat found {};
  if (!file_.open(path) || ::fstat(file_.number(), &found) != 0) system_failure("cannot read " + name_, errno);
  if (S_ISDIR(found.st_mode)) system_failure("cannot read " + name_, EISDIR);
  if (!S_ISREG(found.st_mode)) return;
  const std::int64_t start = ::lseek(file_.number(), 0, SEEK_CUR);
  count_frames(found.st_size - std::max<std::int64_t>(start, 0), advice, whole_frames);
}

void raw_file::count_frames(std::int64_t bytes, const advisor& advice, bool whole_frames) {
  if (bytes <= 0) io_failure(name_, " is empty: expected ", expected());
  if (bytes % frame_bytes_ != 0 && !whole_frames)
    io_failure(name_, " is not a whole number of frames: expected a multiple of ", expected(), ", got ", bytes,
               " bytes", advice(bytes));
  remaining_ = (bytes - 1) / frame_bytes_ + 1;
}

std::string raw_file::expected() const {
  return text(frame_bytes_, " bytes, ", contents_);
}

void raw_file::skip(std::int64_t frames) {
  if (remaining_ && frames >= *remaining_)
    wrong_arguments(name_, " has no frame ", frames, ": it has ", *remaining_, ", numbered from 0");
  if (remaining_) {
    if (::lseek(file_.number(), frames * frame_bytes_, SEEK_CUR) < 0) system_failure("cannot read " + name_, errno);
    *remaining_ -= frames;
    frame_ += frames;
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
  if (buffer_start_ < buffer_.size()) return false;
  buffer_.resize(buffer_bytes);
  buffer_.resize(read_some(buffer_.data(), buffer_.size()));
  buffer_start_ = 0;
  if (buffer_.empty() && frame_ == 0) io_failure(name_, " is empty: expected ", expected());
  return buffer_.empty();
}

std::size_t raw_file::read_some(std::uint8_t* into, std::size_t bytes) {
  for (;;) {
    wait_for_input(file_.number());
    const ssize_t got = ::read(file_.number(), into, bytes);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR && errno != EAGAIN) system_failure("cannot read " + name_, errno);
  }
}

std::size_t raw_file::fill(std::uint8_t* into, std::size_t bytes) {
  std::size_t done = 0;
  while (done < bytes) {
    if (buffer_start_ == buffer_.size() && bytes - done < buffer_bytes && at_end()) break;
    const std::size_t kept = std::min(buffer_.size() - buffer_start_, bytes - done);
    if (kept > 0) {
      std::memcpy(into + done, buffer_.data() + buffer_start_, kept);
      buffer_start_ += kept;
      done += kept;
      continue;
    }
    const std::size_t got = read_some(into + done, bytes - done);
    if (got == 0) break;
    done += got;
  }
  return done;
}

void raw_file::take(std::uint8_t* into, std::int64_t bytes) {
  const auto got = static_cast<std::int64_t>(fill(into, static_cast<std::size_t>(bytes)));
  taken_ += got;
  if (got == bytes) return;
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
