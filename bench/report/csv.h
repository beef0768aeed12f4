// The measurements as comma-separated values, a line each.
#pragma once

#include <ostream>

#include "report/results.h"

namespace morvane::bench {

void write_csv(std::ostream& out, const results& r);

}  // namespace morvane::bench
