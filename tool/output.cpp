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

// Those that end the command from outside.
constexpr int interruptions[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGXFSZ};

// What is ignored, as nohup has it, stays so.
void tidy_up_when_interrupted() {
  struct sigaction tidy {};
  tidy.sa_handler = remove_unfinished;
  for (const int signal : interruptions) {
    struct sigaction before {};
    if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) ::sigaction(signal, &tidy, nullptr);
  }
}

// Keeps interruptions back for a moment in which a file is there that would not be removed.
class uninterrupted {
 public:
  uninterrupted() {
    sigset_t held;
    ::sigemptyset(&held);
    for (const int signal : interruptions) ::sigaddset(&held, signal);
    ::pthread_sigmask(SIG_BLOCK, &held, &before_);
  }
  ~uninterrupted() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  uninterrupted(const uninterrupted&) = delete;
  uninterrupted& operator=(const uninterrupted&) = delete;

 private:
  sigset_t before_;
};

std::string followed(const std::string& path) {
  std::error_code none;
  const std::filesystem::path real = std::filesystem::canonical(path, none);
  return none ? path : real.string();
}

std::string directory_of(const std::string& path) {
  const std::filesystem::path directory = std::filesystem::path(path).parent_path();
  return directory.empty() ? "." : directory.string();
}

mode_t usual_mode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

}  // namespace

std::string output_name(const std::string& path) {
  return path == "-" ? "standard output" : path;
}

output_file::output_file(const std::string& path) : name_(output_name(path)) {
  struct stat found {};
  if (path == "-") {
    stream_ = stdout;
  } else if (::stat(path.c_str(), &found) != 0) {
    place_ = path;
    open_beside(usual_mode());
  } else if (S_ISREG(found.st_mode)) {
    if (::access(path.c_str(), W_OK) != 0) fail();
    place_ = followed(path);
    if (::access(directory_of(place_).c_str(), W_OK) == 0)
      open_beside(found.st_mode & 07777);
    else
      open_elsewhere();
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
  if (!stream_) fail();
}

void output_file::open_beside(mode_t mode) {
  std::string pattern = place_ + ".XXXXXX";
  tidy_up_when_interrupted();
  {
    const uninterrupted while_unknown;
    const int descriptor = ::mkstemp(pattern.data());
    if (descriptor < 0) fail();
    temporary_ = pattern;
    note_unfinished(temporary_.c_str());
    stream_ = ::fdopen(descriptor, "wb");
  }
  if (!stream_) fail();
  ::fchmod(::fileno(stream_), mode);
}

void output_file::open_elsewhere() {
  stream_ = std::tmpfile();
  if (!stream_) fail();
  copies_ = true;
}

void output_file::fail() const {
  system_failure("cannot write " + name_, errno);
}

void output_file::write(const void* bytes, std::size_t count) {
  if (count != 0 && std::fwrite(bytes, 1, count, stream_) != count) fail();
}

void output_file::flush() const {
  if (std::fflush(stream_) != 0) fail();
}

void output_file::finish() {
  if (!stream_) return;
  if (std::fflush(stream_) != 0) fail();
  if (stream_ == stdout || copies_) return;
  const int closed = std::fclose(stream_);
  stream_ = nullptr;
  if (closed != 0) fail();
}

void output_file::commit() {
  finish();
  if (copies_) copy();
  if (temporary_.empty()) return;
  if (std::rename(temporary_.c_str(), place_.c_str()) != 0) fail();
  forget_unfinished(temporary_.c_str());
  temporary_.clear();
}

void output_file::keep(std::int64_t bytes) {
  if (is_in_place()) return;
  std::FILE* again = ::fdopen(::dup(::fileno(stream_)), "r+b");
  if (!again) fail();
  // What the first stream holds back is tried once more and then cut off.
  std::fclose(stream_);
  stream_ = again;
  if (::ftruncate(::fileno(stream_), bytes) != 0) fail();
  commit();
}

void output_file::copy() {
  std::rewind(stream_);
  output_file place;
  place.name_ = name_;
  place.open_in_place(place_);
  std::array<char, 1 << 16> part;
  for (std::size_t got = 0; (got = std::fread(part.data(), 1, part.size(), stream_)) > 0;)
    place.write(part.data(), got);
  if (std::ferror(stream_) != 0) fail();
  place.finish();
}

void flush_standard_output() {
  // After a write that failed std::cout tries no other, so that errno still tells why.
  std::cout.flush();
  if (!std::cout || std::fflush(stdout) != 0) system_failure("cannot write standard output", errno);
}

}  // namespace morvane::tool
