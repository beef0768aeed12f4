// Runs a plan with Google Benchmark.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "measure/plan.h"

namespace morvane::bench {

// Sets up and answers what the clock is to run for.
struct timed_run {
  std::string name{};
  std::function<job()> set_up{};
  // Both 0: as the options say.
  int repetitions = 0;
  int iterations = 0;  // of one repetition
  // Of each repetition: brings the planes into the caches that they fit in.
  bool warms_up = true;
};

// A run with fixed counts, set up and done once beforehand: it has found its memory and made whatever it makes at
// first.
timed_run counted(const std::string& name, const std::function<job()>& set_up, int repetitions, int iterations);

// The median of the repetitions of each run, in nanoseconds. The repetitions of all runs alternate in random order.
std::map<std::string, double> medians_of(const std::vector<timed_run>& runs, const std::vector<std::string>& options);

// All of the plan, each as several repetitions that run in random order, between them the copies that move as many
// bytes. Every time is the median of its repetitions: in random order all of them meet the machine in the same moods,
// and the best would be that of a moment at which the processor happened to raise its clock.
//
// `options` are those of Google Benchmark, the later of two the one that counts; what it does not know is an error.
std::vector<measurement> measure(const std::vector<planned>& plan, const std::vector<std::string>& options);

}  // namespace morvane::bench
