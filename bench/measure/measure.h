// Runs a plan with Google Benchmark.
#pragma once

#include <string>
#include <vector>

#include "measure/plan.h"

namespace morvane::bench {

// All of the plan, each as several repetitions that run in random order, between them the copies that move as many
// bytes. Every time is the median of its repetitions: in random order all of them meet the machine in the same moods,
// and the best would be that of a moment at which the processor happened to raise its clock.
//
// `options` are those of Google Benchmark, the later of two the one that counts; what it does not know is an error.
std::vector<measurement> measure(const std::vector<planned>& plan, std::vector<std::string> options);

}  // namespace morvane::bench
