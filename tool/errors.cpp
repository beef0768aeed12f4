// Failures and remarks, as the user reads them.
#include "errors.h"

#include <cerrno>
#include <cstring>
#include <iostream>

namespace morvane::tool {

void system_failure(const std::string& what, int error_number) {
  if (error_number == EPIPE) throw failure(exit_reader_gone, "");
  io_failure(what, ": ", std::strerror(error_number));
}

void say(const std::string& line) {
  if (!line.empty()) std::cerr << "morvane: " << line << '\n';
}

}  // namespace morvane::tool
