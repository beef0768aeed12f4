// Measurements and targets that a test makes up, of rows that the catalogue has.
#pragma once

#include <string>
#include <vector>

#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

// Three backends that no processor has, narrowest first.
inline const std::vector<std::string> made_up_backends = {"plain", "wide", "widest"};

row row_named(std::string_view name);

// A thousand pixels and 6000 bytes, whose copy takes 1000 ns.
measurement made_up(const std::string& row_name, const std::string& runner, const place& where, double nanoseconds);
measurement made_up_peer(const std::string& row_name, const std::string& library, const place& where,
                         double nanoseconds);

// Of all rows that the measurements name.
results made_up_results(std::vector<measurement> all);

// Each kind has its own name as its title. A row must reach 0.5, 0.7 and 0.9 of memcpy at the three sizes, 0.95 of
// tight planes and 0.6 of long rows; noise is 0.03.
targets made_up_targets();

}  // namespace morvane::bench
