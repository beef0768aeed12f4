// How the command gives up: a failure carries the one line the user reads and the exit code.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>

namespace morvane::tool {

inline constexpr int exit_io = 1;
inline constexpr int exit_arguments = 2;
// As shells report a program that a signal has ended.
inline constexpr int exit_signal = 128;

struct failure : std::runtime_error {
  failure(int code, const std::string& line) : std::runtime_error(line), exit_code(code) {}
  int exit_code;
};

// The parts written one after the other.
template <class... Part>
std::string text(const Part&... part) {
  std::ostringstream out;
  (out << ... << part);
  return out.str();
}

template <class... Part>
[[noreturn]] void wrong_arguments(const Part&... part) {
  throw failure(exit_arguments, text(part...));
}

template <class... Part>
[[noreturn]] void io_failure(const Part&... part) {
  throw failure(exit_io, text(part...));
}

// Fails with the system's own words for the error number: "cannot read a.raw: Permission denied". Where a pipe has lost
// its reader there is no line: whoever has seen enough wants no complaint.
[[noreturn]] void system_failure(const std::string& what, int error_number);

// One line on stderr, after the name of the command; nothing for an empty one.
void say(const std::string& line);

}  // namespace morvane::tool
