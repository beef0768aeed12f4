// The pairs of formats that the checked interface converts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/formats.h"
#include "measure/workload.h"

namespace morvane::bench {

struct format_pair {
  const catalogue::format* source = nullptr;
  const catalogue::format* destination = nullptr;

  std::string name() const;  // "uyvy:bgra"
  bool operator==(const format_pair&) const = default;
};

// The format that has the name, here or elsewhere: nv12 as well as y_uv_420. Null where none has, or several.
const catalogue::format* format_called(const std::string& name);

bool has_way(const format_pair& p);

// Every pair that has a way, in the order of the catalogue.
std::vector<format_pair> all_pairs();

// The pairs of a list, "uyvy:bgra,*:v210", where an asterisk stands for all formats that there is a way from or to, and
// a format may have any of its names: nv12:rgb24. Each pair comes once, in the order of the catalogue. Throws one line
// for what is no pair, no format, or without a way.
std::vector<format_pair> pairs_named(std::string_view list);

// What a conversion has to read and write: of the source, the planes with something that the destination keeps.
std::int64_t bytes_moved(const format_pair& p, const size& picture);

}  // namespace morvane::bench
