// Planes of the destination that have the bytes of planes of the source in another order, words moved to other bits or
// rounded to fewer, averages of two rows, or constants.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../kernel/rearranged.h"
#include "../kernel/resampled_rows.h"
#include "few.h"
#include "shape.h"

namespace Processing::Morvane::checked {

// How rows of some planes become those of others: period by period, of which some make a unit of a kernel.
struct rearrangement {
  size_t kernel = 0;  // its place among those that rearrange bytes
  format_conversion::kernel::byte_places places{};
  int up = 0;  // by so many bits words are moved
  int down = 0;
  format_conversion::kernel::bits_of_rows bits{};
  plane_numbers read;
  plane_numbers read_in_two_rows;  // those of them whose samples lie between the samples of the destination
  plane_numbers written;
  int periods = 0;  // of a row
  int periods_of_unit = 0;
  bool of_upper_rows = true;  // of each two rows of the image
  bool of_lower_rows = true;
};
using rearrangements = few<rearrangement, MORVANE_MAX_PLANES>;

bool is_written(const rearrangements& all, size_t plane);

// Of pictures between which nothing is computed: what makes these planes of the destination, as far as there are
// kernels; several at once where they are made of the same planes. With the nearest filter, rows of chroma are repeated
// and dropped; with the linear one they are averaged.
rearrangements find_rearrangements(const shape& from, const shape& to, bool nearest, plane_numbers planes);

// What the planes have of a row of the image. A row that they have for two of them is made with the upper one.
void rearrange_row(const rearrangement& by, const shape& from, const morvane_picture& source, const shape& to,
                   const morvane_picture& destination, int row, bool streams);

}  // namespace Processing::Morvane::checked
