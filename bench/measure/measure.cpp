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

void register_run(const timed_run& run) {
  benchmark::internal::Benchmark* made =
      benchmark::RegisterBenchmark(run.name.c_str(), [set_up = run.set_up, warms_up = run.warms_up](auto& state) {
        const job work = set_up();
        if (warms_up) work();
        for ([[maybe_unused]] auto _ : state) {
          work();
          benchmark::ClobberMemory();
        }
      });
  made->UseRealTime();
  if (run.repetitions > 0) made->Repetitions(run.repetitions);
  if (run.iterations > 0) made->Iterations(run.iterations);
}

arena memory_for(const std::vector<planned>& plan) {
  std::vector<workload> loads;
  for (const planned& entry : plan) loads.push_back(entry.load);
  return arena(loads);
}

}  // namespace

timed_run counted(const std::string& name, const std::function<job()>& set_up, int repetitions, int iterations) {
  const job work = set_up();
  work();
  return {.name = name,
          .set_up = [work] { return work; },
          .repetitions = repetitions,
          .iterations = iterations,
          .warms_up = iterations > 1};
}

std::map<std::string, double> medians_of(const std::vector<timed_run>& runs, const std::vector<std::string>& options) {
  initialize(options);
  for (const timed_run& run : runs) register_run(run);
  recorder times;
  benchmark::RunSpecifiedBenchmarks(&times);
  benchmark::ClearRegisteredBenchmarks();
  std::map<std::string, double> result;
  for (const timed_run& run : runs) result[run.name] = times.median_of(run.name);
  return result;
}

std::vector<measurement> measure(const std::vector<planned>& plan, const std::vector<std::string>& options) {
  const arena memory = memory_for(plan);
  std::vector<timed_run> runs;
  std::set<std::int64_t> copies;
  for (const planned& entry : plan) {
    runs.push_back({entry.what.run_name(), [&entry, &memory] { return entry.set_up(memory); }});
    copies.insert(entry.what.bytes);
  }
  for (const std::int64_t bytes : copies)
    runs.push_back({copy_run_name(bytes), [&memory, bytes] { return [&memory, bytes] { memory.copy(bytes); }; }});

  const std::map<std::string, double> medians = medians_of(runs, options);
  std::vector<measurement> result;
  for (const planned& entry : plan) {
    measurement& m = result.emplace_back(entry.what);
    m.nanoseconds = medians.at(m.run_name());
    m.copy_nanoseconds = medians.at(copy_run_name(m.bytes));
  }
  return result;
}

}  // namespace morvane::bench
