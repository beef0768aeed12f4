// A plan's way at work: over all rows, on the plan's threads if it has any, or over a band.
#pragma once

#include <cstdint>

#include "crew.h"
#include "way.h"

namespace Processing::Morvane::checked {

// Bands begin at multiples of so many rows.
int row_granularity(const way& w);

// For one thread.
int64_t scratch_bytes_of(const way& w);

// Rows from a multiple of the granularity on. All pointers are valid.
void run_band(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows,
              void* scratch);

// All rows. The crew may be null; the scratch memory is enough for all its hands.
void run_all(const way& w, crew* hands, const morvane_picture& source, const morvane_picture& destination,
             void* scratch);

}  // namespace Processing::Morvane::checked
