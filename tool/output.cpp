// Output files: temporary names, renaming, and tidying up when the work fails or the user interrupts it.
#include "output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "errors.h"

namespace morvane::tool {

namespace {

// The temporary files, for the signal handler.
std::array<std::atomic<const char*>, 8> unfinished{};

void note_unfinished(const char* path) {
  for (auto& place : unfinished) {
    const char* none = nullptr;
    if (place.compare_exchange_strong(none, path)) return;
  }
}

void forget_unfinished(const char* path) {
  for (auto& place : unfinished) {
    const char* same = path;
    place.compare_exchange_strong(same, nullptr);
  }
}

extern "C" void remove_unfinished(int signal) {
  for (const auto& place : unfinished)
    if (const char* path = place.load()) ::unlink(path);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void tidy_up_when_interrupted() {
  for (int signal : {SIGINT, SIGTERM, SIGHUP})
    if (std::signal(signal, remove_unfinished) == SIG_IGN) std::signal(signal, SIG_IGN);
}

std::string followed(const std::string& path) {
  std::error_code none;
  const std::filesystem::path real = std::filesystem::canonical(path, none);
  return none ? path : real.string();
}

bool takes_no_files(int error) {
  return error == EACCES || error == EPERM || error == EROFS;
}

mode_t usual_mode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

}  // namespace

output_file::output_file(const std::string& path) : name_(path == "-" ? "standard output" : path) {
  struct stat found {};
  if (path == "-") {
    stream_ = stdout;
  } else if (::stat(path.c_str(), &found) != 0) {
    place_ = path;
    if (!open_beside()) system_failure("cannot write " + name_, errno);
    ::fchmod(::fileno(stream_), usual_mode());
  } else if (S_ISREG(found.st_mode)) {
    if (::access(path.c_str(), W_OK) != 0) system_failure("cannot write " + name_, errno);
    place_ = followed(path);
    if (open_beside())
      ::fchmod(::fileno(stream_), found.st_mode & 07777);
    else
      open_in_place(path);
  } else {
    open_in_place(path);
  }
}

output_file::~output_file() {
  if (stream_ && stream_ != stdout) std::fclose(stream_);
  if (!temporary_.empty()) {
    ::unlink(temporary_.c_str());
    forget_unfinished(temporary_.c_str());
  }
}

void output_file::open_in_place(const std::string& path) {
  stream_ = std::fopen(path.c_str(), "wb");
  if (!stream_) system_failure("cannot write " + name_, errno);
}

bool output_file::open_beside() {
  std::string pattern = place_ + ".XXXXXX";
  const int descriptor = ::mkstemp(pattern.data());
  if (descriptor < 0 && takes_no_files(errno)) return false;
  if (descriptor < 0) system_failure("cannot write " + name_, errno);
  temporary_ = pattern;
  note_unfinished(temporary_.c_str());
  tidy_up_when_interrupted();
  stream_ = ::fdopen(descriptor, "wb");
  if (!stream_) system_failure("cannot write " + name_, errno);
  return true;
}

void output_file::write(const void* bytes, std::size_t count) {
  if (count != 0 && std::fwrite(bytes, 1, count, stream_) != count) system_failure("cannot write " + name_, errno);
}

void output_file::flush() const {
  if (std::fflush(stream_) != 0) system_failure("cannot write " + name_, errno);
}

void output_file::finish() {
  if (!stream_) return;
  if (std::fflush(stream_) != 0) system_failure("cannot write " + name_, errno);
  if (stream_ == stdout) return;
  const int closed = std::fclose(stream_);
  stream_ = nullptr;
  if (closed != 0) system_failure("cannot write " + name_, errno);
}

void output_file::commit() {
  finish();
  put_in_place();
}

void output_file::keep(std::int64_t bytes) {
  if (is_in_place()) return;
  const int descriptor = ::dup(::fileno(stream_));
  // It may hold what could not be written, and tries once more.
  std::fclose(stream_);
  stream_ = nullptr;
  const bool cut = ::ftruncate(descriptor, bytes) == 0;
  const int error = errno;
  ::close(descriptor);
  if (!cut) system_failure("cannot write " + name_, error);
  put_in_place();
}

void output_file::put_in_place() {
  if (temporary_.empty()) return;
  if (std::rename(temporary_.c_str(), place_.c_str()) != 0) system_failure("cannot write " + name_, errno);
  forget_unfinished(temporary_.c_str());
  temporary_.clear();
}

void flush_standard_output() {
  // After a write that failed std::cout tries no other, so that errno still tells why.
  std::cout.flush();
  if (!std::cout || std::fflush(stdout) != 0) system_failure("cannot write standard output", errno);
}

}  // namespace morvane::tool
