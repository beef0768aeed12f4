// The parts of the report's page that show pairs of formats, and what missed its target.
#pragma once

#include <ostream>

#include "report/misses.h"
#include "report/pairs.h"
#include "report/targets.h"

namespace morvane::bench {

// How many there are, and a line for each.
void write_misses(std::ostream& out, const std::vector<miss>& all);

// All of the checked interface; nothing where no pair was measured.
void write_pairs(std::ostream& out, const measured_pairs& all, const targets& aims);

}  // namespace morvane::bench
