// The rows of a picture on their way to another one, through lines in scratch memory.
#pragma once

#include <cstdint>

#include "stored.h"
#include "way.h"

namespace Processing::Morvane::checked {

// The scratch memory that converting rows needs, at any address.
int64_t scratch_bytes(const way& w);

// Converts the rows from `first` on; where the destination is 4:2:0 that is an even one. All pointers are valid.
void convert_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows,
                  void* scratch);

}  // namespace Processing::Morvane::checked
