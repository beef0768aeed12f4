// The measurements for the terminal and for other programs: of the backends, of pairs of formats, and of how these
// store.
#pragma once

#include <ostream>
#include <vector>

#include "measure/measure_stores.h"
#include "report/pairs.h"
#include "report/results.h"

namespace morvane::bench {

void write_table(std::ostream& out, const results& r);
void write_json(std::ostream& out, const results& r);

void write_table(std::ostream& out, const measured_pairs& all);
void write_json(std::ostream& out, const measured_pairs& all);

void write_table(std::ostream& out, const std::vector<store_measurement>& all);
void write_json(std::ostream& out, const std::vector<store_measurement>& all);

}  // namespace morvane::bench
