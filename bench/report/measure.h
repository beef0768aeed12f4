// Runs the measurements of the report with Google Benchmark.
#pragma once

#include <regex>
#include <string>
#include <vector>

#include "results.h"

namespace morvane::bench {

// Measures what every filter is found in, in one run of random order. The times of all measurements and of their
// copies are medians.
results measure_all(const std::vector<std::regex>& filters, std::vector<std::string> benchmark_arguments);

}  // namespace morvane::bench
