// The picture of the report: the share of memcpy that each conversion reaches, beside the best of the other libraries
// and the target of its kind.
#pragma once

#include <string>

#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

// An SVG of its own, for light and dark pages. Rows that convert the same formats are one bar, of the slowest of them.
// Ticks are the narrower backends. `nominal` is one of `sizes`; empty where nothing of it was measured.
std::string share_plot(const results& r, const targets& aims, const size& nominal);

}  // namespace morvane::bench
