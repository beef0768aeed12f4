#include "report/html_backends.h"

#include <functional>

#include "report/html_table.h"
#include "report/steps.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

std::vector<column> columns_of_places() {
  std::vector<column> result;
  for (const place& where : all_places())
    result.push_back({std::string(name_of(where.memory)), name_of(where.nominal)});
  return result;
}

void write_gains(table& t, const std::function<std::optional<double>(const place&)>& gain_at, double least) {
  for (const place& where : all_places())
    if (const std::optional<double> g = gain_at(where))
      t.number(fixed(*g), *g < least);
    else
      t.blank();
}

void write_median_gains(std::ostream& out, const results& r, const targets& aims, const step& s) {
  table t(out, {{"median of"}}, columns_of_places());
  const auto line = [&](const std::string& title, const kind_target* of) {
    t.begin();
    t.word(title);
    write_gains(
        t, [&](const place& where) { return median_gain(r, aims, of, where, s); }, aims.never_slower());
    t.end();
  };
  for (const kind_target& of : aims.kinds) line(of.title, &of);
  line("all", nullptr);
}

void write_gain_of_each_row(std::ostream& out, const results& r, const targets& aims, const step& s) {
  out << "<details><summary>" << escaped(s.wider) << " beside " << escaped(s.narrower)
      << ", every conversion</summary>\n";
  {
    table t(out, {{"conversion"}}, columns_of_places());
    for (const row& which : r.rows()) {
      if (aims.of(which) == nullptr) continue;
      t.begin();
      t.word(which.name);
      write_gains(
          t, [&](const place& where) { return gain(r, which, where, s); }, aims.never_slower());
      t.end();
    }
  }
  out << "</details>\n";
}

// Other shapes are set against tight planes of their size, which short rows are not measured in.
bool has_tight_planes_beside(const place& where) {
  return where.memory != shape::tight && where.nominal != short_rows;
}

std::vector<column> columns_of_measurements(const results& r, const place& where) {
  std::vector<column> result;
  for (const std::string& backend : r.backends()) result.push_back({backend, "GB/s"});
  for (const std::string& backend : r.backends()) result.push_back({backend, "of memcpy"});
  if (has_tight_planes_beside(where))
    for (const std::string& backend : r.backends()) result.push_back({backend, "of tight"});
  for (std::size_t i = 1; i < r.backends().size(); ++i)
    result.push_back({r.backends()[i], "over " + r.backends().front()});
  result.push_back({r.backends().back(), "ns/pixel"});
  return result;
}

void write_row(table& t, const results& r, const targets& aims, const row& which, const place& where) {
  const kind_target* of = aims.of(which);
  const auto each = [&](const auto& write) {
    for (const std::string& backend : r.backends())
      if (const measurement* m = r.find(which, where, backend))
        write(*m);
      else
        t.blank();
  };
  t.begin();
  t.word(which.name);
  t.sentence(of ? of->title : "touches next to nothing");
  each([&](const measurement& m) { t.number(fixed(m.gigabytes_per_second(), 1)); });
  each([&](const measurement& m) { t.number(fixed(m.share_of_memcpy())); });
  if (has_tight_planes_beside(where))
    each([&](const measurement& m) { t.ratio(&m, r.find(which, {where.nominal}, m.runner), 0); });
  for (std::size_t i = 1; i < r.backends().size(); ++i)
    t.ratio(r.find(which, where, r.backends()[i]), r.baseline(which, where), of ? aims.never_slower() : 0);
  if (const measurement* ours = r.ours(which, where))
    t.number(fixed(ours->nanoseconds_per_pixel(), 4));
  else
    t.blank();
  t.end();
}

bool is_measured(const results& r, const row& which, const place& where) {
  for (const std::string& backend : r.backends())
    if (r.find(which, where, backend) != nullptr) return true;
  return false;
}

void write_place(std::ostream& out, const results& r, const targets& aims, const place& where) {
  out << "<details><summary>" << name_of(where.nominal) << ", " << name_of(where.memory) << "</summary>\n";
  {
    table t(out, {{"conversion"}, {"kind"}}, columns_of_measurements(r, where));
    for (const row& which : r.rows())
      if (is_measured(r, which, where)) write_row(t, r, aims, which, where);
  }
  out << "</details>\n";
}

}  // namespace

void write_steps(std::ostream& out, const results& r, const targets& aims) {
  const std::vector<step> steps = steps_of(r);
  if (steps.empty()) return;
  out << "<h2>Each backend beside the next narrower one</h2>\n<p>How many times as fast the wider backend is, pixel "
         "for "
         "pixel. The library takes the widest one that the processor can run, so none may be slower than "
      << fixed(aims.never_slower()) << ".</p>\n";
  for (const step& s : steps) {
    out << "<h3>" << escaped(s.wider) << " beside " << escaped(s.narrower) << "</h3>\n";
    write_median_gains(out, r, aims, s);
    write_gain_of_each_row(out, r, aims, s);
  }
}

void write_measurements(std::ostream& out, const results& r, const targets& aims) {
  out << "<h2>Every measurement</h2>\n<p>The same, with the other libraries, is in report.csv.</p>\n";
  for (const place& where : all_places()) write_place(out, r, aims, where);
}

}  // namespace morvane::bench
