// What is measured of a pair of formats. Each job works on the frame of a ring whose turn it is; the ring must outlive
// it.
#pragma once

#include "measure/ring.h"
#include "peers/swscale.h"

namespace morvane::bench {

// The smallest picture whose rows are made of whole groups of every format, so that its plan is that of larger ones.
inline constexpr size tiny{48, 2};

// By a plan of the checked interface.
job convert_next(ring& frames, const options& how = {});

job copy_next(ring& frames);

// By another library that has the pair.
job convert_next_by_swscale(ring& frames, resampling chroma);

// A picture of next to no rows, which takes the time of a call apart from them.
job convert_tiny_picture(const format_pair& p);

}  // namespace morvane::bench
