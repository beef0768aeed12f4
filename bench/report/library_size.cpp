#include "report/library_size.h"

#include <fstream>
#include <stdexcept>

#include "report/text.h"

namespace morvane::bench {

namespace {

constexpr double megabyte = 1e6;

std::string in_megabytes(std::int64_t bytes) {
  return fixed(static_cast<double>(bytes) / megabyte);
}

}  // namespace

std::optional<library_size> read_library_size(const std::filesystem::path& file) {
  if (file.empty()) return std::nullopt;
  std::ifstream in(file);
  library_size result;
  std::string name;
  if (!(in >> name >> result.bytes)) throw std::runtime_error(file.string() + " has no name and bytes of a library");
  std::int64_t rest = result.bytes;
  while (in >> name) {
    library_size::part& p = result.backends.emplace_back(library_size::part{.backend = name});
    if (!(in >> p.bytes) || (rest -= p.bytes) < 0)
      throw std::runtime_error(file.string() + " has no bytes of backends that make up a library");
  }
  return result;
}

std::string sentence(const library_size& s, const targets& aims) {
  std::string result = "The shared library without symbols has " + in_megabytes(s.bytes) + " MB (target: at most " +
                       fixed(aims.library_megabytes) + "):";
  std::int64_t rest = s.bytes;
  for (const library_size::part& p : s.backends) {
    result += " " + p.backend + " " + in_megabytes(p.bytes) + ",";
    rest -= p.bytes;
  }
  return result + " all else " + in_megabytes(rest) + ".";
}

std::vector<miss> misses(const std::optional<library_size>& s, const targets& aims) {
  if (!s || static_cast<double>(s->bytes) <= aims.library_megabytes * megabyte) return {};
  return {{.row = "shared library",
           .target = "megabytes",
           .reached = static_cast<double>(s->bytes) / megabyte,
           .wanted = aims.library_megabytes}};
}

}  // namespace morvane::bench
