// Planes of the destination that have the bytes of planes of the source in another order, or constants.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "../kernel/rearranged.h"
#include "shape.h"

namespace Processing::Morvane::checked {

// A row of each plane that bytes are gathered from.
using source_rows = std::array<const uint8_t*, 3>;

// How a row is rearranged: period by period, of which some make a unit of the kernel.
struct rearranged_plane {
  int kernel = -1;  // its place among those that rearrange bytes, or none
  format_conversion::kernel::byte_places places{};
  std::array<size_t, 3> sources{};  // planes
  size_t source_count = 0;
  int periods = 0;          // of a row
  int periods_of_unit = 0;  // so many become a unit

  bool is_there() const { return kernel >= 0; }
};

// Of pictures between which nothing is computed: what makes a plane of the destination, if bytes that are rearranged
// do.
rearranged_plane find_rearranged(const shape& from, const shape& to, const stored_plane& p);

void rearrange_row(const rearranged_plane& by, const source_rows& from, uint8_t* to);

}  // namespace Processing::Morvane::checked
