// The memory that is free, by what Linux tells.
#include "memory.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <limits>

#include "errors.h"

namespace morvane::tool {

namespace {

constexpr std::int64_t unlimited = std::numeric_limits<std::int64_t>::max();

// What the limit of addresses leaves.
std::int64_t free_addresses() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return unlimited;
  std::int64_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return static_cast<std::int64_t>(limit.rlim_cur) - pages * ::sysconf(_SC_PAGESIZE);
}

std::int64_t available_memory() {
  std::ifstream lines("/proc/meminfo");
  for (std::string name, rest; lines >> name; std::getline(lines, rest))
    if (std::int64_t kilobytes = 0; name == "MemAvailable:" && lines >> kilobytes) return kilobytes * 1024;
  const std::int64_t pages = ::sysconf(_SC_PHYS_PAGES);
  return pages > 0 ? pages * ::sysconf(_SC_PAGESIZE) : unlimited;
}

std::string megabytes(std::int64_t bytes) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.1f MB", static_cast<double>(std::max<std::int64_t>(bytes, 0)) * 1e-6);
  return digits;
}

}  // namespace

void require_memory(std::int64_t bytes) {
  const std::int64_t there = std::min(free_addresses(), available_memory());
  if (bytes > there)
    io_failure("frames of this size need ", megabytes(bytes), " of memory, and ", megabytes(there), " are free");
}

}  // namespace morvane::tool
