// morvane_bench: measures every conversion of the catalogue on every backend of this processor.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "backend/choice.h"
#include "report.h"
#include "workload.h"

namespace {

namespace backend = Processing::Morvane::backend;
using namespace morvane;

constexpr std::string_view manual = R"(script/bench [FILTER...] [--json] [--benchmark_OPTION...]

Measures the conversions whose "name/size/shape/backend" every FILTER (a regular expression) is found in, and without
a FILTER all of them, which takes some minutes. The shapes: tight (rows without gaps), padded (gaps between the rows),
odd (an odd width).

Of several repetitions, run in random order, the median counts. GB/s are of bytes read plus written. "of memcpy" compares
with a memcpy that reads and writes as many bytes, measured in the same run: 1.00 is just as fast, less is slower.

Example: script/bench '^uyvy::(bgra|yuy2)' 1920x1080/tight
)";

struct options {
  std::vector<std::regex> filters{};
  bool json = false;
};

// Takes our arguments; those of Google Benchmark stay for it to read, behind the defaults that they may override.
options parse(const std::vector<std::string>& arguments, std::vector<std::string>& for_benchmark) {
  options result;
  for_benchmark = {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=7",
                   "--benchmark_min_time=0.01"};
  for (const std::string& argument : arguments) {
    if (argument == "--json")
      result.json = true;
    else if (argument.starts_with("--benchmark_"))
      for_benchmark.push_back(argument);
    else if (argument.starts_with("-"))
      throw std::runtime_error("unknown option " + argument + " (see --help)");
    else
      result.filters.emplace_back(argument);
  }
  return result;
}

bool wanted(const std::string& name, const options& o) {
  return std::all_of(o.filters.begin(), o.filters.end(),
                     [&name](const std::regex& filter) { return std::regex_search(name, filter); });
}

void measure(benchmark::State& state, const bench::workload& w, const bench::arena& memory, backend::kind k) {
  bool opaque = false;
  const catalogue::call call = memory.prepare(w, &opaque);
  backend::choose(k);
  for ([[maybe_unused]] auto _ : state) {
    w.conversion->convert(call);
    benchmark::ClobberMemory();
  }
}

void measure_copy(benchmark::State& state, std::int64_t bytes, const bench::arena& memory) {
  for ([[maybe_unused]] auto _ : state) {
    memory.copy(bytes);
    benchmark::ClobberMemory();
  }
}

// Registers what the filters leave, each with its copy, and answers what was registered.
std::vector<bench::measured> register_all(const std::vector<bench::workload>& workloads, const bench::arena& memory,
                                          const options& o) {
  std::vector<bench::measured> rows;
  std::set<std::int64_t> copies;
  for (const bench::workload& w : workloads)
    for (const backend::kind k : backend::available()) {
      const std::string name = w.name();
      const std::string run = name + "/" + backend::name(k);
      if (!wanted(run, o)) continue;
      benchmark::RegisterBenchmark(run.c_str(), measure, w, std::cref(memory), k)->UseRealTime();
      rows.push_back({.run = run,
                      .conversion = name.substr(0, name.find('/')),
                      .size = w.size_name(),
                      .shape = std::string(w.shape_name()),
                      .backend = backend::name(k),
                      .bytes = w.bytes(),
                      .pixels = std::int64_t{w.picture.xres} * w.picture.yres});
      copies.insert(w.bytes());
    }
  for (const std::int64_t bytes : copies)
    benchmark::RegisterBenchmark(bench::copy_run_name(bytes).c_str(), measure_copy, bytes, std::cref(memory))
        ->UseRealTime();
  return rows;
}

void initialize_benchmark(std::vector<std::string> arguments) {
  std::string program = "morvane_bench";
  std::vector<char*> argv{program.data()};
  for (std::string& argument : arguments) argv.push_back(argument.data());
  int argc = static_cast<int>(argv.size());
  benchmark::Initialize(&argc, argv.data());
  if (argc > 1) throw std::runtime_error(std::string("unknown option ") + argv[1]);
}

void run(const std::vector<std::string>& arguments) {
  std::vector<std::string> for_benchmark;
  const options o = parse(arguments, for_benchmark);
  initialize_benchmark(for_benchmark);

  const std::vector<bench::workload> workloads = bench::all_workloads();
  const bench::arena memory(workloads);
  const std::vector<bench::measured> rows = register_all(workloads, memory, o);
  if (rows.empty()) throw std::runtime_error("no conversion has such a name");

  bench::median_times times;
  benchmark::RunSpecifiedBenchmarks(&times);
  (o.json ? bench::write_json : bench::write_table)(std::cout, rows, times);
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
    std::cout << manual;
    return EXIT_SUCCESS;
  }
  try {
    run(arguments);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "bench: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
