#include "measure.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <iostream>
#include <set>
#include <stdexcept>
#include <thread>

#include "../report.h"
#include "backend/choice.h"

namespace morvane::bench {

namespace {

namespace backend = Processing::Morvane::backend;

// Runs a job on a second thread, again and again, while the first one does its own part.
class second_thread {
 public:
  explicit second_thread(std::function<void()> job) : job_(std::move(job)), thread_([this] { serve(); }) {}
  second_thread(const second_thread&) = delete;
  second_thread& operator=(const second_thread&) = delete;
  ~second_thread() {
    stop_ = true;
    thread_.join();
  }

  void start() { ++asked_; }
  void wait() const {
    while (done_ != asked_) std::this_thread::yield();
  }

 private:
  std::function<void()> job_;
  std::atomic<int> asked_ = 0;
  std::atomic<int> done_ = 0;
  std::atomic<bool> stop_ = false;
  std::thread thread_;  // last, so that it finds all the others made

  // Without sleep: waking up would take as long as a part of an image.
  void serve() {
    while (!stop_) {
      if (done_ == asked_) {
        std::this_thread::yield();
        continue;
      }
      job_();
      ++done_;
    }
  }
};

template <class Byte>
void skip_rows(catalogue::planes<Byte>& planes, std::string_view format_name, int rows) {
  if (format_name.empty()) return;
  const catalogue::format& f = *catalogue::find_format(format_name);
  for (std::size_t p = 0; p < f.plane_count(); ++p) planes.data[p] += planes.stride[p] * f.planes[p].rows(rows);
}

// The upper half of an image, or the lower one.
catalogue::call half_of(catalogue::call c, const catalogue::conversion& conversion, bool lower) {
  c.yres /= 2;
  if (lower) {
    skip_rows(c.source, conversion.source, c.yres * conversion.rows_per_yres);
    skip_rows(c.destination, conversion.destination, c.yres * conversion.rows_per_yres);
  }
  return c;
}

void run(benchmark::State& state, const std::function<void()>& job) {
  job();  // brings the planes into the caches that they fit in
  for ([[maybe_unused]] auto _ : state) {
    job();
    benchmark::ClobberMemory();
  }
}

void run_on_two_threads(benchmark::State& state, const std::function<void()>& first, std::function<void()> second) {
  second_thread other(std::move(second));
  run(state, [&] {
    other.start();
    first();
    other.wait();
  });
}

// One entry of the plan: what is measured, and the function that does it.
struct planned {
  measurement m;
  std::function<void(benchmark::State&)> run;
};

class plan {
 public:
  plan(const std::vector<row>& rows, const std::vector<peer>& peers, const arena& memory,
       const std::vector<std::regex>& filters)
      : peers_(peers), memory_(memory), filters_(filters) {
    for (const row& r : rows) add_row(r);
  }

  std::vector<planned> entries{};

 private:
  const std::vector<peer>& peers_;
  const arena& memory_;
  const std::vector<std::regex>& filters_;

  void add(planned entry) {
    const std::string name = entry.m.run_name();
    if (std::all_of(filters_.begin(), filters_.end(),
                    [&name](const std::regex& filter) { return std::regex_search(name, filter); }))
      entries.push_back(std::move(entry));
  }

  static measurement describe(const row& r, size nominal, const workload& w, std::string runner) {
    return {.row = r.name,
            .runner = std::move(runner),
            .nominal = nominal,
            .memory = w.memory,
            .bytes = w.bytes(),
            .pixels = std::int64_t{w.picture.xres} * w.picture.yres};
  }

  void add_row(const row& r) {
    for (const size& s : report_sizes)
      for (const shape memory : report_shapes) add_backends(r, s, memory);
    add_backends(r, short_rows, shape::padded);
    for (const size& s : report_sizes) add_peers(r, s);
    add_two_threads(r);
  }

  void add_backends(const row& r, size s, shape memory) {
    const workload w = make_workload(*r.conversion, s, memory);
    for (const backend::kind k : backend::available())
      add({describe(r, s, w, backend::name(k)), [this, r, w, k](benchmark::State& state) {
             bool opaque = false;
             const catalogue::call c = prepare(memory_, r, w, &opaque);
             backend::choose(k);
             bench::run(state, [&] { r.conversion->convert(c); });
           }});
  }

  void add_peers(const row& r, size s) {
    const workload w = make_workload(*r.conversion, s, shape::tight);
    for (const peer& p : peers_) {
      if (!p.serves(r.name)) continue;
      measurement m = describe(r, s, w, std::string(p.library));
      m.is_peer = true;
      m.function = p.function;
      m.label = observed_agreement(r, p);
      add({m, [this, r, w, &p](benchmark::State& state) {
             bench::run(state, p.prepare(prepare(memory_, r, w, nullptr)));
           }});
    }
  }

  void add_two_threads(const row& r) {
    if (r.what == kind::nothing) return;
    const workload w = make_workload(*r.conversion, ultra_hd, shape::tight);
    const backend::kind k = backend::available().back();
    measurement m = describe(r, ultra_hd, w, backend::name(k));
    m.threads = 2;
    add({m, [this, r, w, k](benchmark::State& state) {
           bool opaque[2] = {};
           const catalogue::call upper = half_of(prepare(memory_, r, w, &opaque[0]), *r.conversion, false);
           const catalogue::call lower = half_of(prepare(memory_, r, w, &opaque[1]), *r.conversion, true);
           backend::choose(k);
           run_on_two_threads(
               state, [&] { r.conversion->convert(upper); }, [&] { r.conversion->convert(lower); });
         }});
  }
};

std::vector<workload> workloads_of(const std::vector<row>& rows) {
  std::vector<workload> result;
  for (const row& r : rows)
    for (const shape memory : report_shapes) result.push_back(make_workload(*r.conversion, ultra_hd, memory));
  return result;
}

void initialize(std::vector<std::string> arguments) {
  // Many short repetitions: other work on the machine spoils some of them, and the median counts.
  std::vector<std::string> all{"report", "--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=21",
                               "--benchmark_min_time=0.002"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& argument : all) argv.push_back(argument.data());
  int argc = static_cast<int>(argv.size());
  benchmark::Initialize(&argc, argv.data());
  if (argc > 1) throw std::runtime_error(std::string("unknown option ") + argv[1]);
}

}  // namespace

results measure_all(const std::vector<std::regex>& filters, std::vector<std::string> benchmark_arguments) {
  initialize(std::move(benchmark_arguments));
  std::vector<row> rows = all_rows();
  const std::vector<peer> peers = all_peers();
  const arena memory(workloads_of(rows));
  const plan p(rows, peers, memory, filters);
  if (p.entries.empty()) throw std::runtime_error("no measurement has such a name");

  std::set<std::int64_t> copies;
  for (const planned& entry : p.entries) {
    benchmark::RegisterBenchmark(entry.m.run_name().c_str(), entry.run)->UseRealTime();
    copies.insert(entry.m.bytes);
  }
  for (const std::int64_t bytes : copies)
    benchmark::RegisterBenchmark(copy_run_name(bytes).c_str(), [&memory, bytes](benchmark::State& state) {
      bench::run(state, [&] { memory.copy(bytes); });
    })->UseRealTime();

  std::cerr << "Measuring " << p.entries.size() << " things, which takes about "
            << (p.entries.size() + copies.size()) / 450 + 1 << " min\n";
  median_times times;
  benchmark::RunSpecifiedBenchmarks(&times);

  std::vector<measurement> all;
  for (const planned& entry : p.entries) {
    all.push_back(entry.m);
    all.back().nanoseconds = times.nanoseconds(entry.m.run_name());
    all.back().copy_nanoseconds = times.nanoseconds(copy_run_name(entry.m.bytes));
  }
  std::erase_if(rows, [&all](const row& r) {
    return std::none_of(all.begin(), all.end(), [&r](const measurement& m) { return m.row == r.name; });
  });
  return {std::move(rows), std::move(all)};
}

}  // namespace morvane::bench
