// Ways without lines: rows that are copied or rearranged, and entry points that convert them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "way.h"

namespace Processing::Morvane::checked {

// What the caller wishes of a named entry point.
struct named_entry_point {
  const char* name = nullptr;
  bool allow_irregular = false;
  bool rescale = false;
};

// Takes the entry point that was asked for.
problem find_via(const named_entry_point& wish, way& w);

// Takes copies of rows, rearranged bytes or an entry point where they give the same bytes as lines do.
void find_short_cut(way& w);

// Copy or rearrange the planes that the way says, all of them or beside lines for the others.
using copy_bytes = void (*)(uint8_t* to, const uint8_t* from, size_t bytes);
void copy_planes(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows,
                 copy_bytes copy);
void rearrange_planes(const way& w, const morvane_picture& source, const morvane_picture& destination, int first,
                      int rows, bool streams);

int64_t direct_scratch_bytes(const way& w);

// Whether an entry point converts these rows, with these strides and addresses. One that nobody asked for is left out
// where it does not suit.
bool suits(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows);

void convert_directly(const way& w, const morvane_picture& source, const morvane_picture& destination, int first,
                      int rows, void* scratch);

}  // namespace Processing::Morvane::checked
