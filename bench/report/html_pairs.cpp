#include "report/html_pairs.h"

#include "measure/pair_jobs.h"
#include "report/html_table.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

void write_figure(std::ostream& out, const std::string& title, const std::optional<spread>& of, double each,
                  double middle) {
  if (!of) return;
  out << "<li>" << title << ": median " << fixed(of->middle) << " (target " << fixed(middle) << "), least "
      << fixed(of->least) << " with " << escaped(of->slowest) << " (target " << fixed(each) << "), " << of->count
      << " pairs</li>\n";
}

void write_summary(std::ostream& out, const measured_pairs& all, const targets& aims) {
  out << "<ul>\n";
  write_figure(out, "share of memcpy of pairs that go by lines of samples", shares_of_memcpy(all),
               aims.pairs.share_of_memcpy, aims.pairs.median_share_of_memcpy);
  write_figure(out, "times as fast as swscale, with nearest or linear chroma, whichever compares worse",
               times_swscale(all), aims.never_slower(), aims.pairs.median_of_swscale);
  const auto tiny_picture = spread_of(all, [](const pair_measurement& m) { return std::optional(m.times_tiny()); });
  if (tiny_picture)
    out << "<li>a picture of " << name_of(tiny) << ", which takes the time of checks and little else: at most "
        << fixed(100 / tiny_picture->least) << " % of the time of a picture of " << name_of(full_hd) << ", with "
        << escaped(tiny_picture->slowest) << " (target " << fixed(100 / aims.pairs.times_tiny_picture) << " %)</li>\n";
  const auto threads = spread_of(all, [](const pair_measurement& m) { return m.gain_of_two_threads; });
  if (threads)
    out << "<li>a plan of two threads over different pictures of " << name_of(in_cache)
        << ", beside one thread: median " << fixed(threads->middle) << ", least " << fixed(threads->least) << " with "
        << escaped(threads->slowest) << " (target " << fixed(aims.pairs.two_threads) << ")</li>\n";
  out << "</ul>\n";
}

void write_every_pair(std::ostream& out, const measured_pairs& all, const targets& aims) {
  out << "<details><summary>Every pair</summary>\n";
  {
    table t(out, {{"from"}, {"to"}, {"steps"}},
            {{"microseconds"},
             {"GB/s"},
             {"of memcpy"},
             {"nearest", "times swscale"},
             {"bilinear", "times swscale"},
             {"times a tiny picture"},
             {"on two threads"}});
    const auto number = [&t](std::optional<double> value, double least) {
      value ? t.number(fixed(*value), *value < least) : t.blank();
    };
    for (const pair_measurement& m : all) {
      t.begin();
      t.word(m.source);
      t.word(m.destination);
      t.sentence(joined(m.steps));
      t.number(fixed(m.nanoseconds / 1000, 0));
      t.number(fixed(m.gigabytes_per_second(), 1));
      number(m.share_of_memcpy(), m.goes_by_lines() ? aims.pairs.share_of_memcpy : 0);
      number(m.times_nearest(), aims.never_slower());
      number(m.times_bilinear(), aims.never_slower());
      t.number(fixed(m.times_tiny(), 0), m.times_tiny() < aims.pairs.times_tiny_picture);
      number(m.gain_of_two_threads, aims.pairs.two_threads);
      t.end();
    }
  }
  out << "</details>\n";
}

}  // namespace

void write_misses(std::ostream& out, const std::vector<miss>& all) {
  out << "<h3>Missed: " << all.size() << "</h3>\n";
  if (all.empty()) return;
  table t(out, {{"conversion"}, {"where"}, {"target"}, {"reason"}}, {{"reached"}, {"wanted"}});
  for (const miss& m : all) {
    t.begin();
    t.word(m.row);
    t.word(name_of(m.where.nominal) + ", " + std::string(name_of(m.where.memory)));
    t.word(m.target);
    t.sentence(m.why);
    t.number(fixed(m.reached), true);
    t.number(fixed(m.wanted));
    t.end();
  }
}

void write_pairs(std::ostream& out, const measured_pairs& all, const targets& aims) {
  if (all.empty()) return;
  out << "<h2>Any picture to any other</h2>\n<p>Plans of the checked interface at " << name_of(full_hd)
      << ", on one thread, with linear chroma. Each pair ran in turns with memcpy and with swscale.</p>\n";
  write_summary(out, all, aims);
  out << picture_of_shares(all, aims) << picture_beside_swscale(all, aims);
  write_misses(out, misses(all, aims));
  write_every_pair(out, all, aims);
}

}  // namespace morvane::bench
