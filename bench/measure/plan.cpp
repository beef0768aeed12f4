#include "measure/plan.h"

#include <algorithm>
#include <memory>

#include "backend/choice.h"
#include "measure/second_thread.h"

namespace morvane::bench {

namespace {

namespace backend = Processing::Morvane::backend;

template <class Byte>
void skip_rows(catalogue::planes<Byte>& planes, std::string_view format_name, int rows) {
  if (format_name.empty()) return;
  const catalogue::format& f = *catalogue::find_format(format_name);
  for (std::size_t p = 0; p < f.plane_count(); ++p) planes.data[p] += planes.stride[p] * f.planes[p].rows(rows);
}

catalogue::call upper_half(catalogue::call c) {
  c.yres /= 2;
  return c;
}

catalogue::call lower_half(catalogue::call c, const catalogue::conversion& conversion) {
  c.yres /= 2;
  skip_rows(c.source, conversion.source, c.yres * conversion.rows_per_yres);
  skip_rows(c.destination, conversion.destination, c.yres * conversion.rows_per_yres);
  return c;
}

job on_backend(const arena& memory, const workload& w, backend::kind k) {
  backend::choose(k);
  return make_job(*w.conversion, memory.prepare(w));
}

job on_two_threads(const arena& memory, const workload& w, backend::kind k) {
  backend::choose(k);
  const catalogue::call whole = memory.prepare(w);
  const auto other = std::make_shared<second_thread>(make_job(*w.conversion, lower_half(whole, *w.conversion)));
  return [first = make_job(*w.conversion, upper_half(whole)), other] {
    other->start();
    first();
    other->wait();
  };
}

class planner {
 public:
  explicit planner(const request& wanted) : wanted_(wanted) {}

  void add_backends(const row& r, const place& where) {
    for (const backend::kind k : backend::available()) {
      const workload w = make_workload(r, where);
      add(describe(r, where, w, backend::name(k)), w, [w, k](const arena& memory) { return on_backend(memory, w, k); });
    }
  }

  void add_peer(const row& r, const place& where, const peer& p) {
    const workload w = make_workload(r, where);
    measurement m = describe(r, where, w, std::string(p.library));
    m.is_peer = true;
    m.function = p.function;
    if (is_wanted(m)) m.label = observed_agreement(r, p);
    add(std::move(m), w, [w, prepare = p.prepare](const arena& memory) { return prepare(memory.prepare(w)); });
  }

  void add_two_threads(const row& r, const place& where) {
    const backend::kind k = backend::available().back();
    const workload w = make_workload(r, where);
    measurement m = describe(r, where, w, backend::name(k));
    m.threads = 2;
    add(std::move(m), w, [w, k](const arena& memory) { return on_two_threads(memory, w, k); });
  }

  std::vector<planned> take() { return std::move(plan_); }

 private:
  const request& wanted_;
  std::vector<planned> plan_{};

  static measurement describe(const row& r, const place& where, const workload& w, std::string runner) {
    return {.row = r.name, .runner = std::move(runner), .where = where, .bytes = w.bytes(), .pixels = w.pixels()};
  }

  bool is_wanted(const measurement& m) const {
    const std::string name = m.run_name();
    return std::all_of(wanted_.filters.begin(), wanted_.filters.end(),
                       [&name](const std::regex& filter) { return std::regex_search(name, filter); });
  }

  void add(measurement m, const workload& w, std::function<job(const arena&)> set_up) {
    if (is_wanted(m)) plan_.push_back({std::move(m), w, std::move(set_up)});
  }
};

}  // namespace

std::vector<planned> make_plan(const std::vector<row>& rows, const std::vector<peer>& peers, const request& wanted) {
  planner p(wanted);
  for (const row& r : rows) {
    for (const place& where : all_places()) p.add_backends(r, where);
    if (wanted.backends_alone) continue;
    for (const size& s : sizes)
      for (const peer& other : peers)
        if (other.serves(r.name)) p.add_peer(r, {s, shape::tight}, other);
    p.add_two_threads(r, {ultra_hd, shape::tight});
  }
  return p.take();
}

std::vector<std::string> backend_names() {
  std::vector<std::string> result;
  for (const backend::kind k : backend::available()) result.emplace_back(backend::name(k));
  return result;
}

}  // namespace morvane::bench
