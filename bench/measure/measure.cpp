#include "measure/measure.h"

#include <benchmark/benchmark.h>

#include <map>
#include <set>
#include <stdexcept>

namespace morvane::bench {

namespace {

// Collects the time of every repetition, by the name of its run.
class recorder : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs)
      if (run.run_type == Run::RT_Iteration)
        nanoseconds_[run.run_name.function_name].push_back(run.real_accumulated_time * 1e9 /
                                                           static_cast<double>(run.iterations));
  }

  double median_of(const std::string& run) const {
    const auto found = nanoseconds_.find(run);
    if (found == nanoseconds_.end()) throw std::runtime_error(run + " was not measured");
    return median(found->second);
  }

 private:
  std::map<std::string, std::vector<double>> nanoseconds_;
};

void initialize(std::vector<std::string> options) {
  options.insert(options.begin(), {"bench", "--benchmark_enable_random_interleaving=true"});
  std::vector<char*> argv;
  for (std::string& option : options) argv.push_back(option.data());
  int argc = static_cast<int>(argv.size());
  benchmark::Initialize(&argc, argv.data());
  if (argc > 1) throw std::runtime_error(std::string("unknown option ") + argv[1]);
}

std::string copy_run_name(std::int64_t bytes) {
  return "memcpy/" + std::to_string(bytes);
}

void register_run(const std::string& name, const std::function<job()>& set_up) {
  benchmark::RegisterBenchmark(name.c_str(), [set_up](benchmark::State& state) {
    const job work = set_up();
    work();  // brings the planes into the caches that they fit in
    for ([[maybe_unused]] auto _ : state) {
      work();
      benchmark::ClobberMemory();
    }
  })->UseRealTime();
}

arena memory_for(const std::vector<planned>& plan) {
  std::vector<workload> loads;
  for (const planned& entry : plan) loads.push_back(entry.load);
  return arena(loads);
}

}  // namespace

std::vector<measurement> measure(const std::vector<planned>& plan, std::vector<std::string> options) {
  initialize(std::move(options));
  const arena memory = memory_for(plan);
  std::set<std::int64_t> copies;
  for (const planned& entry : plan) {
    register_run(entry.what.run_name(), [&entry, &memory] { return entry.set_up(memory); });
    copies.insert(entry.what.bytes);
  }
  for (const std::int64_t bytes : copies)
    register_run(copy_run_name(bytes), [&memory, bytes] { return [&memory, bytes] { memory.copy(bytes); }; });

  recorder times;
  benchmark::RunSpecifiedBenchmarks(&times);
  benchmark::ClearRegisteredBenchmarks();
  std::vector<measurement> result;
  for (const planned& entry : plan) {
    measurement& m = result.emplace_back(entry.what);
    m.nanoseconds = times.median_of(m.run_name());
    m.copy_nanoseconds = times.median_of(copy_run_name(m.bytes));
  }
  return result;
}

}  // namespace morvane::bench
