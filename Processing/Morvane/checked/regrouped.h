// v210 to other layouts of 4:2:2 and of 4:2:0 and back, and layouts of 4:2:2 with a key to each other, a row at a time
// without lines, where a kernel reads the one layout and writes the other.
#pragma once

#include <cstdint>
#include <optional>

#include "rearranged.h"
#include "shape.h"

namespace Processing::Morvane::checked {

struct way;

struct regrouping {
  size_t kernel = 0;   // its place among those that regroup
  plane_numbers read;  // luma first, then Cb or both
  plane_numbers written;
  uint16_t kept = 65535;  // of words with samples in their upper bits
};

// Where it gives the bytes that lines give.
std::optional<regrouping> find_regrouping(const way& w);

void regroup_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows,
                  bool streams);

}  // namespace Processing::Morvane::checked
