// A progress line on a terminal.
#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>

#include "errors.h"

namespace morvane::tool {

namespace {

constexpr auto patience = std::chrono::milliseconds(500);
constexpr auto interval = std::chrono::milliseconds(100);
constexpr const char* clear_line = "\r\033[K";

std::string bar(std::int64_t done, std::int64_t all) {
  constexpr std::int64_t width = 30;
  std::string result(width, '.');
  std::fill_n(result.begin(), width * done / all, '#');
  return text('[', result, "] ");
}

}  // namespace

progress::progress(std::optional<std::int64_t> all_frames)
    : all_(all_frames), terminal_(::isatty(STDERR_FILENO) != 0), next_(clock::now() + patience) {
}

progress::~progress() {
  if (shown_) std::cerr << clear_line << std::flush;
}

void progress::frame_done() {
  ++done_;
  if (!terminal_ || clock::now() < next_) return;
  next_ = clock::now() + interval;
  shown_ = true;
  show();
}

void progress::show() const {
  std::cerr << clear_line;
  if (all_)
    std::cerr << bar(std::min(done_, *all_), std::max<std::int64_t>(*all_, 1)) << done_ << " of " << *all_;
  else
    std::cerr << done_;
  std::cerr << " frames" << std::flush;
}

}  // namespace morvane::tool
