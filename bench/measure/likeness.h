// What another library does with a pair of formats, found by comparing its result with those of plans.
#pragma once

#include "measure/ring.h"
#include "peers/agreement.h"
#include "peers/pair_peers.h"

namespace morvane::bench {

// The frame of a ring as other libraries take it.
catalogue::call call_of(const ring& frames, int i);

// Of the plans with either filter, siting and matrix, the one whose result is nearest.
struct likeness {
  agreement label{};
  morvane::filter chroma{};
  double mean_difference = 0;  // of two samples, in steps of 8 bits
};

// `memory` has room for a picture of in_cache.
likeness likeness_of(const arena& memory, const format_pair& p, const pair_peer& other);

}  // namespace morvane::bench
