// Destinations that nobody reads soon: what is stored there does not pass through the caches.
//
// Such stores must fill whole cache lines, one after the other. Kernels that make rows in one pass see to it themselves
// (kernel/streamed_plane.h). Other rows are made a few at a time in scratch memory, which stays in the nearer caches,
// by the same kernels as ever, and copied from there.
#pragma once

#include <cstddef>
#include <cstdint>

#include "way.h"

namespace Processing::Morvane::checked {

// Whether a plan stores so.
bool streams(const way& w, store_kind wanted);

// Whether kernels do so themselves, and no row passes through scratch memory.
bool streams_in_one_pass(const way& w);

// The edges, which fill no cache line, by ordinary stores.
void stream_bytes(uint8_t* to, const uint8_t* from, size_t bytes);

// Behind the last of them; what this thread stores from here on, others see no earlier.
void finish_streaming();

// Rows of the destination in scratch memory.
int64_t streamed_scratch_bytes(const way& w);
int streamed_rows(const way& w);

// The picture whose rows from `first` on, as many as streamed_rows says, lie in scratch memory. It has no others.
morvane_picture picture_in_scratch(const way& w, void* scratch, int first);

// Rows to store, and how many of the source are read behind them.
struct streamed_band {
  const morvane_picture& source;
  int first;
  int rows;
  int rows_ahead;
};

// From there. Planes whose rows are copied from the source are left out.
void stream_rows(const way& w, const morvane_picture& made, const morvane_picture& destination,
                 const streamed_band& band);

}  // namespace Processing::Morvane::checked
