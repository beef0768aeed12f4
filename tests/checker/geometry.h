// Where the bytes of a plane lie.
#pragma once

#include <cstddef>

#include "catalogue/conversions.h"

namespace morvane::tests {

// Bytes that a plane of the given width needs in each row: its whole samples; whole groups of v210; of rows of 32 and 8
// bytes, those up to the last one of its pairs, a completed pair included. Zero for a width below one.
std::ptrdiff_t row_extent(const catalogue::plane& p, int xres);

// The stride of a plane without gaps, as the library counts it. As arithmetic gives it for a width below one.
int tight_stride(const catalogue::plane& p, int xres);

// The bytes of a plane, counted from its first row: rows may step up or down.
struct extent {
  std::ptrdiff_t low = 0;
  std::ptrdiff_t high = 0;
};

extent extent_of_rows(const catalogue::plane& p, int stride, int xres, int rows);

// An image without gaps can be one long line. At odd widths that holds more whole chroma samples than its rows do.
extent extent_of(const catalogue::plane& p, const catalogue::conversion& row, int stride, int xres, int rows);

// Whether groups have their samples' upper bits first and then their lower ones, so that a partial group has a gap.
bool in_parts(const catalogue::plane& p);

}  // namespace morvane::tests
