// A pipe that becomes readable when reading is to stop, and signal handlers that write to it.
#include "input_gate.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>

#include "errors.h"

namespace morvane::tool {

namespace {

struct wake_pipe {
  std::array<int, 2> ends{-1, -1};

  wake_pipe() {
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) system_failure("cannot make a pipe", errno);
  }
  ~wake_pipe() {
    for (const int end : ends) ::close(end);
  }
};

// Made before the first signal handler or thread needs it.
const wake_pipe& gate() {
  static const wake_pipe pipe;
  return pipe;
}

constexpr std::array ending_signals = {SIGINT, SIGTERM, SIGHUP};
std::array<struct sigaction, ending_signals.size()> former_actions{};
std::atomic<int> write_end{-1};
std::atomic<int> received{0};

void restore_actions() {
  for (std::size_t i = 0; i < ending_signals.size(); ++i) ::sigaction(ending_signals[i], &former_actions[i], nullptr);
}

extern "C" void note_signal(int signal) {
  const int error = errno;
  received = signal;
  restore_actions();
  stop_reading();
  errno = error;
}

}  // namespace

void stop_reading() noexcept {
  const char byte = 0;
  // Where the pipe is full it is readable already.
  if (const int end = write_end; end >= 0 && ::write(end, &byte, 1) < 0) return;
}

void wait_for_input(int descriptor) {
  for (;;) {
    std::array<pollfd, 2> waited = {pollfd{gate().ends[0], POLLIN, 0}, pollfd{descriptor, POLLIN, 0}};
    const int ready = ::poll(waited.data(), waited.size(), -1);
    if (ready < 0 && errno != EINTR) system_failure("cannot wait for input", errno);
    if (ready > 0 && waited[0].revents != 0) throw reading_stopped{};
    if (ready > 0) return;
  }
}

void require_reading() {
  pollfd stopped = {gate().ends[0], POLLIN, 0};
  if (::poll(&stopped, 1, 0) > 0) throw reading_stopped{};
}

graceful_end::graceful_end() {
  write_end = gate().ends[1];
  struct sigaction note {};
  note.sa_handler = note_signal;
  for (std::size_t i = 0; i < ending_signals.size(); ++i) ::sigaction(ending_signals[i], nullptr, &former_actions[i]);
  for (std::size_t i = 0; i < ending_signals.size(); ++i)
    if (former_actions[i].sa_handler != SIG_IGN) ::sigaction(ending_signals[i], &note, nullptr);
}

graceful_end::~graceful_end() {
  restore_actions();
}

std::optional<int> graceful_end::signal() const {
  return received == 0 ? std::nullopt : std::optional<int>(received);
}

}  // namespace morvane::tool
