#include "report/machine.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <thread>

namespace morvane::bench {

namespace {

std::string first_line(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return line;
}

std::string caches() {
  std::string result;
  for (int i = 0;; ++i) {
    const std::filesystem::path cache = "/sys/devices/system/cpu/cpu0/cache/index" + std::to_string(i);
    if (!std::filesystem::exists(cache)) return result.empty() ? "unknown" : result;
    if (first_line(cache / "type") == "Instruction") continue;
    if (!result.empty()) result += ", ";
    result.append("L").append(first_line(cache / "level")).append(" ").append(first_line(cache / "size"));
  }
}

std::string today() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M UTC", std::gmtime(&now));
  return text;
}

}  // namespace

std::string compiler() {
  return MORVANE_COMPILER;
}

std::string processor_name() {
  std::ifstream in("/proc/cpuinfo");
  for (std::string line; std::getline(in, line);)
    if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
  return "unknown processor";
}

std::vector<std::pair<std::string, std::string>> describe_machine(const std::string& commit) {
  return {{"processor", processor_name()},
          {"cores", std::to_string(std::thread::hardware_concurrency())},
          {"data caches of a core", caches()},
          {"compiler", MORVANE_COMPILER},
          {"flags", MORVANE_FLAGS},
          {"commit", commit},
          {"date", today()}};
}

}  // namespace morvane::bench
