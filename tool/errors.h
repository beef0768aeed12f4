// How the command gives up: a failure carries the one line the user reads and the exit code.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>

namespace morvane::tool {

inline constexpr int exit_io = 1;
inline constexpr int exit_arguments = 2;
inline constexpr int exit_reader_gone = 141;  // as shells tell of a program that a closed pipe has ended

struct failure : std::runtime_error {
  failure(int code, const std::string& line) : std::runtime_error(line), exit_code(code) {}
  int exit_code;
};

// Ended by a signal, of which whoever started the command is to know.
struct interrupted : failure {
  interrupted(int number, const std::string& line) : failure(exit_io, line), signal(number) {}
  int signal;
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

// Fails with the system's own words for the error number: "cannot read a.raw: Permission denied". A pipe that nobody
// reads any longer is a reason to end, but not to say so.
[[noreturn]] void system_failure(const std::string& what, int error_number);

// One line on stderr, after the name of the command; nothing for an empty one.
void say(const std::string& line);

}  // namespace morvane::tool
