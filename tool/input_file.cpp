// Reading, which can be stopped from outside.
#include "input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "errors.h"
#include "input_gate.h"

namespace morvane::tool {

namespace {

constexpr std::size_t buffer_bytes = 1 << 16;

}  // namespace

input_file::input_file(const std::string& path)
    : name_(path == "-" ? "standard input" : path),
      descriptor_(path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
  struct stat found {};
  const auto fail = [this](int error) {
    if (descriptor_ > STDIN_FILENO) ::close(descriptor_);
    system_failure("cannot read " + name_, error);
  };
  if (descriptor_ < 0 || ::fstat(descriptor_, &found) != 0) fail(errno);
  if (S_ISDIR(found.st_mode)) fail(EISDIR);
  if (S_ISREG(found.st_mode))
    size_ = std::max<std::int64_t>(found.st_size - std::max<off_t>(::lseek(descriptor_, 0, SEEK_CUR), 0), 0);
}

input_file::input_file(input_file&& other) noexcept
    : name_(std::move(other.name_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      size_(other.size_),
      buffer_(std::move(other.buffer_)),
      buffer_start_(other.buffer_start_) {
}

input_file::~input_file() {
  if (descriptor_ > STDIN_FILENO) ::close(descriptor_);
}

// False where the file has ended.
bool input_file::fill_buffer_behind(std::size_t kept) {
  buffer_.resize(kept + buffer_bytes);
  std::size_t got = 0;
  try {
    got = read_some(buffer_.data() + kept, buffer_bytes);
  } catch (...) {
    buffer_.resize(kept);
    throw;
  }
  buffer_.resize(kept + got);
  return got > 0;
}

bool input_file::at_end() {
  if (buffer_start_ < buffer_.size()) return false;
  buffer_start_ = 0;
  return !fill_buffer_behind(0);
}

// Pipes may hand out a few bytes at a time.
bool input_file::begins_with(std::string_view bytes) {
  if (at_end()) return bytes.empty();
  for (bool more = true;; more = fill_buffer_behind(buffer_.size())) {
    const std::size_t there = std::min(buffer_.size() - buffer_start_, bytes.size());
    const bool same = std::memcmp(buffer_.data() + buffer_start_, bytes.data(), there) == 0;
    if (!same || there == bytes.size() || !more) return same && there == bytes.size();
  }
}

int input_file::get() {
  return at_end() ? -1 : buffer_[buffer_start_++];
}

std::size_t input_file::read_some(std::uint8_t* into, std::size_t bytes) {
  for (;;) {
    wait_for_input(descriptor_);
    const ssize_t got = ::read(descriptor_, into, bytes);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR && errno != EAGAIN) system_failure("cannot read " + name_, errno);
  }
}

std::int64_t input_file::read(std::uint8_t* into, std::int64_t bytes) {
  const auto wanted = static_cast<std::size_t>(bytes);
  std::size_t done = 0;
  while (done < wanted) {
    if (buffer_start_ == buffer_.size() && wanted - done < buffer_bytes && at_end()) break;
    const std::size_t kept = std::min(buffer_.size() - buffer_start_, wanted - done);
    if (kept > 0) std::memcpy(into + done, buffer_.data() + buffer_start_, kept);
    buffer_start_ += kept;
    const std::size_t got = kept > 0 ? kept : read_some(into + done, wanted - done);
    if (got == 0) break;
    done += got;
  }
  return static_cast<std::int64_t>(done);
}

void input_file::pass(std::int64_t bytes) {
  const auto kept = static_cast<std::int64_t>(buffer_.size() - buffer_start_);
  const std::int64_t of_buffer = std::min(kept, bytes);
  buffer_start_ += static_cast<std::size_t>(of_buffer);
  if (bytes > of_buffer && ::lseek(descriptor_, bytes - of_buffer, SEEK_CUR) < 0)
    system_failure("cannot read " + name_, errno);
}

}  // namespace morvane::tool
