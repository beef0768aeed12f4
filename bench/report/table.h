// The measurements for the terminal and for other programs: of the backends, and of pairs of formats.
#pragma once

#include <ostream>

#include "report/pairs.h"
#include "report/results.h"

namespace morvane::bench {

void write_table(std::ostream& out, const results& r);
void write_json(std::ostream& out, const results& r);

void write_table(std::ostream& out, const measured_pairs& all);
void write_json(std::ostream& out, const measured_pairs& all);

}  // namespace morvane::bench
