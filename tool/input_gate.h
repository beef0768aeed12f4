// What a thread that waits for input is woken by when the input is no longer wanted.
#pragma once

#include <optional>

namespace morvane::tool {

// Thrown where input was waited for or read when reading was stopped.
struct reading_stopped {};

// Ends all reading, now and later. Signal handlers may call it.
void stop_reading() noexcept;

// Waits until the descriptor has something to read or has ended; throws reading_stopped.
void wait_for_input(int descriptor);

// For sources that wait for nothing: throws reading_stopped where reading was stopped.
void require_reading();

// While it lives, the first signal that asks the program to end stops reading instead, so that frames that are under
// way can be finished. A second one does what it did before.
class graceful_end {
 public:
  graceful_end();
  ~graceful_end();
  graceful_end(const graceful_end&) = delete;
  graceful_end& operator=(const graceful_end&) = delete;

  // The signal that came, if one did.
  std::optional<int> signal() const;
};

}  // namespace morvane::tool
