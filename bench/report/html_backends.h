// The parts of the report's page that show the backends beside each other.
#pragma once

#include <ostream>

#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

// What each backend gains over the next narrower one.
void write_steps(std::ostream& out, const results& r, const targets& aims);

// Every measurement of every backend, a table for each place.
void write_measurements(std::ostream& out, const results& r, const targets& aims);

}  // namespace morvane::bench
