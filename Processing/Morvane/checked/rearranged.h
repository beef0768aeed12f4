// Planes of the destination that have the bytes of planes of the source in another order, words rounded to fewer bits,
// or constants.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../kernel/rearranged.h"
#include "few.h"
#include "shape.h"

namespace Processing::Morvane::checked {

using plane_numbers = few<size_t, MORVANE_MAX_PLANES>;

// How rows of some planes become those of others: period by period, of which some make a unit of a kernel.
struct rearrangement {
  size_t kernel = 0;  // its place among those that rearrange bytes
  format_conversion::kernel::byte_places places{};
  plane_numbers read;
  plane_numbers written;
  int periods = 0;  // of a row
  int periods_of_unit = 0;
  bool of_upper_rows = true;  // of each two rows of the image
  bool of_lower_rows = true;
};
using rearrangements = few<rearrangement, MORVANE_MAX_PLANES>;

bool is_written(const rearrangements& all, size_t plane);

// Of pictures between which nothing is computed: what makes these planes of the destination, as far as there are
// kernels; several at once where they are made of the same planes. With the nearest filter, rows of chroma may be
// repeated and dropped.
rearrangements find_rearrangements(const shape& from, const shape& to, bool nearest, plane_numbers planes);

// What the planes have of a row of the image. A row that they have for two of them is made with the upper one.
void rearrange_row(const rearrangement& by, const shape& from, const morvane_picture& source, const shape& to,
                   const morvane_picture& destination, int row);

}  // namespace Processing::Morvane::checked
