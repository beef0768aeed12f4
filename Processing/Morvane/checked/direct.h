// Ways without lines: rows that are copied, and entry points that convert them.
#pragma once

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

// Takes a copy of rows or an entry point where it gives the same bytes as lines do.
void find_short_cut(way& w);

inline bool is_direct(const way& w) {
  return w.copies || w.by != nullptr;
}

int64_t direct_scratch_bytes(const way& w);

// Whether the way can be taken for these rows, with these strides and addresses. Where it cannot, lines convert, if
// nobody asked for the entry point.
bool suits(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows);

void convert_directly(const way& w, const morvane_picture& source, const morvane_picture& destination, int first,
                      int rows, void* scratch);

}  // namespace Processing::Morvane::checked
