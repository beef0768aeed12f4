// The measurements of the backends for the terminal and for other programs.
#pragma once

#include <ostream>

#include "report/results.h"

namespace morvane::bench {

void write_table(std::ostream& out, const results& r);
void write_json(std::ostream& out, const results& r);

}  // namespace morvane::bench
