// Turns the repetitions of a run into one row for each measured conversion: its median time, set against that of the
// copy that moves as many bytes.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace morvane::bench {

// One conversion on one backend. `run` is the name under which its benchmark is registered.
struct measured {
  std::string run{};
  std::string conversion{};
  std::string size{};
  std::string shape{};
  std::string backend{};
  std::int64_t bytes = 0;
  std::int64_t pixels = 0;
};

std::string copy_run_name(std::int64_t bytes);

// The median time of every benchmark. All repetitions run in random order, so that the median of each meets the machine
// in the same moods; the best would be that of a moment at which the processor happened to raise its clock.
class median_times : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;

  double nanoseconds(const std::string& run) const;

 private:
  std::map<std::string, std::vector<double>> times_;
};

void write_table(std::ostream& out, const std::vector<measured>& rows, const median_times& times);
void write_json(std::ostream& out, const std::vector<measured>& rows, const median_times& times);

}  // namespace morvane::bench
