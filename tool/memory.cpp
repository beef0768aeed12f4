// The memory that is free, by what Linux tells: of the machine, of the addresses of the process, and of the groups of
// processes (cgroups) that it belongs to, as in a container.
#include "memory.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "errors.h"
#include "names.h"

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

std::int64_t available_memory(const std::string& root) {
  std::ifstream lines(root + "/proc/meminfo");
  for (std::string name, rest; lines >> name; std::getline(lines, rest))
    if (std::int64_t kilobytes = 0; name == "MemAvailable:" && lines >> kilobytes) return kilobytes * 1024;
  const std::int64_t pages = ::sysconf(_SC_PHYS_PAGES);
  return pages > 0 ? pages * ::sysconf(_SC_PAGESIZE) : unlimited;
}

// Where the groups of one version of cgroups are, and the files of each.
struct group_files {
  std::string_view place;
  std::string_view limit;
  std::string_view used;
  std::string_view cached[2];  // lines of memory.stat: pages of files, which count as used and are given up on demand
};

constexpr group_files version_1 = {"/sys/fs/cgroup/memory",
                                   "/memory.limit_in_bytes",
                                   "/memory.usage_in_bytes",
                                   {"total_active_file", "total_inactive_file"}};
constexpr group_files version_2 = {
    "/sys/fs/cgroup", "/memory.max", "/memory.current", {"active_file", "inactive_file"}};

// None where there is no such file, or a word in it: "max".
std::optional<std::int64_t> number_in(const std::string& file) {
  std::int64_t number = 0;
  return std::ifstream(file) >> number ? std::optional(number) : std::nullopt;
}

std::int64_t cached_bytes(const std::string& group, const group_files& files) {
  std::int64_t sum = 0;
  std::ifstream lines(group + "/memory.stat");
  std::string name;
  for (std::int64_t bytes = 0; lines >> name >> bytes;)
    if (name == files.cached[0] || name == files.cached[1]) sum += bytes;
  return sum;
}

std::int64_t free_memory_of(const std::string& group, const group_files& files) {
  const std::optional<std::int64_t> limit = number_in(text(group, files.limit));
  const std::optional<std::int64_t> used = number_in(text(group, files.used));
  if (!limit || !used) return unlimited;
  return *limit - std::max<std::int64_t>(*used - cached_bytes(group, files), 0);
}

// Of a group and those around it. In a container, the outer ones may be out of sight.
std::int64_t free_memory_around(std::string group, const std::string& root, const group_files& files) {
  const std::string place = text(root, files.place);
  std::int64_t least = free_memory_of(place, files);
  for (; !group.empty(); group.erase(group.rfind('/'))) least = std::min(least, free_memory_of(place + group, files));
  return least;
}

// Lines of three words, such as "4:cpu,memory:/user/shell" or, of version 2, "0::/user/shell".
std::int64_t free_memory_of_groups(const std::string& root) {
  std::int64_t least = unlimited;
  std::ifstream lines(root + "/proc/self/cgroup");
  for (std::string number, controllers, group;
       std::getline(lines, number, ':') && std::getline(lines, controllers, ':') && std::getline(lines, group);) {
    const std::vector<std::string> controlled = parse_list(controllers);
    if (!group.starts_with('/')) continue;
    if (controllers.empty()) least = std::min(least, free_memory_around(group, root, version_2));
    if (std::find(controlled.begin(), controlled.end(), "memory") != controlled.end())
      least = std::min(least, free_memory_around(group, root, version_1));
  }
  return least;
}

std::string megabytes(std::int64_t bytes) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.1f MB", static_cast<double>(std::max<std::int64_t>(bytes, 0)) * 1e-6);
  return digits;
}

}  // namespace

void require_memory(std::int64_t bytes, const std::string& root) {
  const std::int64_t there = std::min({free_addresses(), available_memory(root), free_memory_of_groups(root)});
  if (bytes > there)
    io_failure("frames of this size need ", megabytes(bytes), " of memory, and ", megabytes(there), " are free");
}

}  // namespace morvane::tool
