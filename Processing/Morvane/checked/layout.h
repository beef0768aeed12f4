// Where the planes of a picture lie, and whether the planes of a caller hold it. All sums are of 64 bits, and those
// that would not fit are refused.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "shape.h"

namespace Processing::Morvane::checked {

problem lay_out(const shape& s, int64_t alignment, morvane_layout& layout);

// Whether the planes are there and as long as their rows need. `name` is that of the picture in messages.
problem fits(const shape& s, const morvane_picture* picture, const char* name);

// The row of a plane that a row of the image has there, alone or with the next one. The picture fits.
uint8_t* row_of(const morvane_picture& picture, const shape& s, size_t plane, int row);

// Those of several planes, null behind the last one; and what is so many units further on, of so many bytes in each.
template <class Rows>
Rows rows_of(const morvane_picture& picture, const shape& s, const plane_numbers& planes, const int row) {
  Rows rows{};
  for (size_t i = 0; i < planes.size(); ++i) rows[i] = row_of(picture, s, planes[i], row);
  return rows;
}
template <class Rows, size_t count>
Rows units_on(Rows rows, const std::array<int, count>& bytes, const int units) {
  for (size_t i = 0; i < count; ++i)
    if (rows[i] != nullptr) rows[i] += int64_t{units} * bytes[i];
  return rows;
}

// Whether no plane of the destination shares bytes with another plane. Both pictures fit.
problem are_apart(const shape& source, const morvane_picture& from, const shape& destination,
                  const morvane_picture& to);

struct scratch_memory {
  void* data;
  int64_t bytes;
};

// Whether scratch memory shares no bytes with any plane. Both pictures fit.
problem is_apart(const scratch_memory& scratch, const shape& source, const morvane_picture& from,
                 const shape& destination, const morvane_picture& to);

}  // namespace Processing::Morvane::checked
