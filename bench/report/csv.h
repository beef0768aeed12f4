// The measurements as comma-separated values, a line each.
#pragma once

#include <ostream>

#include "report/pairs.h"
#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

void write_csv(std::ostream& out, const results& r, const targets& aims);
void write_csv(std::ostream& out, const measured_pairs& all);

}  // namespace morvane::bench
