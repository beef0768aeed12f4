// The measurements as comma-separated values, a line each.
#pragma once

#include <ostream>

#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

void write_csv(std::ostream& out, const results& r, const targets& aims);

}  // namespace morvane::bench
