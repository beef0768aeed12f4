// The line that shows how far long work has come.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace morvane::tool {

// Says nothing unless stderr is a terminal, and not before half a second has passed.
class progress {
 public:
  explicit progress(std::optional<std::int64_t> all_frames);
  ~progress();
  progress(const progress&) = delete;
  progress& operator=(const progress&) = delete;

  void frame_done();

 private:
  using clock = std::chrono::steady_clock;

  void show() const;

  std::optional<std::int64_t> all_;
  std::int64_t done_ = 0;
  bool terminal_;
  bool shown_ = false;
  clock::time_point next_;
};

}  // namespace morvane::tool
