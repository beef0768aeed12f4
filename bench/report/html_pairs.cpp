#include "report/html_pairs.h"

#include "report/html_table.h"
#include "report/summary_of_pairs.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

void write_summary(std::ostream& out, const measured_pairs& all, const targets& aims) {
  out << "<ul>\n";
  for (const pair_figure& f : summary(all, aims)) out << "<li>" << escaped(sentence(f)) << "</li>\n";
  out << "</ul>\n";
}

void write_every_pair(std::ostream& out, const measured_pairs& all, const targets& aims) {
  out << "<details><summary>Every pair</summary>\n";
  {
    table t(out, {{"from"}, {"to"}, {"steps"}},
            {{"microseconds"},
             {"GB/s"},
             {name_of(full_hd), "of memcpy"},
             {name_of(in_cache), "of memcpy"},
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
      t.number(fixed(m.share_in_cache()));
      number(m.times_nearest(), aims.never_slower());
      number(m.times_bilinear(), aims.never_slower());
      m.times_tiny() ? t.number(fixed(*m.times_tiny(), 0), *m.times_tiny() < aims.pairs.times_tiny_picture) : t.blank();
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
      << ", on one thread, with linear chroma. Each pair ran in turns with memcpy and with swscale, all of them on a "
      << "ring of frames larger than the caches; " << name_of(in_cache) << " is one picture that stays in them.</p>\n";
  write_summary(out, all, aims);
  out << picture_of_shares(all, aims) << picture_beside_swscale(all, aims);
  write_misses(out, misses(all, aims));
  write_every_pair(out, all, aims);
}

}  // namespace morvane::bench
