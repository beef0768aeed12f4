#include "report/html.h"

#include "report/html_backends.h"
#include "report/html_pairs.h"
#include "report/html_table.h"
#include "report/misses.h"
#include "report/plot.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

constexpr std::string_view head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Morvane: speed of every conversion</title>
<style>
:root { color-scheme: light dark; --ink: #1f2328; --ground: #fff; --line: #d0d7de; --weak: #59636e; --bad: #b3261e; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e6edf3; --ground: #0d1117; --line: #30363d; --weak: #9198a1; --bad: #ff8a80; } }
body { font: 14px/1.45 system-ui, sans-serif; color: var(--ink); background: var(--ground); max-width: 1080px;
  margin: 2em auto; padding: 0 1em; }
table { border-collapse: collapse; margin: 0.5em 0 1.5em; font-size: 12.5px; }
th, td { padding: 2px 10px 2px 0; text-align: left; border-bottom: 1px solid var(--line); white-space: nowrap; }
td.n, th.n { text-align: right; font-variant-numeric: tabular-nums; }
th.group { text-align: center; border-left: 1px solid var(--line); padding-left: 10px; }
td.bad { color: var(--bad); font-weight: 600; }
td.wide { white-space: normal; }
.weak { color: var(--weak); }
summary { cursor: pointer; font-weight: 600; padding: 0.2em 0; }
svg { max-width: 100%; height: auto; }
div.table { overflow-x: auto; }
</style>
</head>
<body>
)";

std::vector<column> columns_of_sizes() {
  std::vector<column> result;
  for (const size& s : sizes) result.push_back({name_of(s)});
  return result;
}

void write_machine(std::ostream& out, const page_contents& page) {
  out << "<h1>Speed of every conversion</h1>\n<table>\n";
  for (const auto& [title, text] : page.machine)
    out << "<tr><th>" << escaped(title) << "</th><td>" << escaped(text) << "</td></tr>\n";
  out << "</table>\n<p>Every number is the median of many short repetitions, which ran in random order within one "
         "process and on one thread. GB/s are of bytes read plus written. A share of memcpy compares with a memcpy "
         "that reads and writes as many bytes, between the same places of memory, in the same run. Shapes: "
         "<i>tight</i>, rows without gaps; <i>padded</i>, a cache line between the rows; <i>odd</i>, one pixel "
         "narrower; <i>unaligned</i>, planes that begin at addresses of no alignment.</p>\n";
}

void write_plots(std::ostream& out, const results& r, const targets& aims) {
  out << "<h2>At a glance</h2>\n" << share_plot(r, aims, full_hd) << share_plot(r, aims, in_cache);
}

void write_targets(std::ostream& out, const results& r, const targets& aims) {
  out << "<h2>Targets</h2>\n<p>Shares of memcpy, tight planes, the backend that the library chooses.</p>\n";
  {
    table t(out, {{"kind"}}, columns_of_sizes());
    for (const kind_target& of : aims.kinds) {
      t.begin();
      t.word(of.title);
      for (const double share : of.share_of_memcpy) t.number(fixed(share));
      t.end();
    }
  }
  out << "<p>Beside these: padded, odd and unaligned planes at least " << fixed(aims.least_of_tight)
      << " of tight ones at 1920x1080; rows of 64 pixels at least " << fixed(aims.least_of_long_rows, 1)
      << " of rows of 1920; never slower than a narrower backend or another library, but for "
      << fixed(100 * aims.noise, 0) << " % of noise";
  for (const library_target& t : aims.libraries)
    out << "; " << escaped(t.title) << " at least " << fixed(t.least, 1) << " times as fast as " << t.library << " at "
        << name_of(t.nominal);
  out << ".</p>\n";

  write_misses(out, misses(r, aims));
}

void write_peers(std::ostream& out, const results& r, const targets& aims) {
  out << "<h2>Beside other libraries</h2>\n<p>How many times as fast the library is as another one at the same job, "
         "tight planes, one thread each. <i>Same bytes</i>: the results are equal. <i>Close</i>: they are rounded "
         "otherwise. <i>Other algorithm</i>: another matrix, or chroma of other places. That is found by comparing the "
         "results whenever this report is made.</p>\n";
  table t(out, {{"conversion"}, {"library"}, {"function"}, {"agreement"}}, columns_of_sizes());
  for (const row& which : r.rows())
    for (const std::string& library : r.libraries()) {
      std::array<const measurement*, sizes.size()> peers{};
      const measurement* any = nullptr;
      for (std::size_t s = 0; s < sizes.size(); ++s)
        if ((peers[s] = r.find(which, {sizes[s]}, library)) != nullptr) any = peers[s];
      if (any == nullptr) continue;
      t.begin();
      t.word(which.name);
      t.word(library);
      t.word(any->function);
      t.word(name_of(any->label));
      for (std::size_t s = 0; s < sizes.size(); ++s)
        t.ratio(r.ours(which, {sizes[s]}), peers[s], aims.least_beside(which, library, sizes[s]));
      t.end();
    }
}

void write_threads(std::ostream& out, const results& r, const targets& aims) {
  out << "<h2>Threads</h2>\n<p>One image of 3840x2160 by one thread, and as two bands by two. The second thread waits "
         "in a loop, so the times hold no waking up.</p>\n";
  table t(out, {{"conversion"}}, {{"1 thread", "GB/s"}, {"2 threads", "GB/s"}, {"gain"}});
  for (const row& which : r.rows()) {
    const measurement* one = r.ours(which, {ultra_hd});
    const measurement* two = r.ours(which, {ultra_hd}, 2);
    if (two == nullptr || aims.of(which) == nullptr) continue;
    t.begin();
    t.word(which.name);
    one ? t.number(fixed(one->gigabytes_per_second(), 1)) : t.blank();
    t.number(fixed(two->gigabytes_per_second(), 1));
    t.ratio(two, one, 0);
    t.end();
  }
}

void write_arm(std::ostream& out, const std::vector<arm_figure>& arm) {
  if (arm.empty()) return;
  out << "<h2>64-bit Arm</h2>\n<p>Of entry points and of plans: instructions executed for a pixel of 1920x16, counted "
         "under emulation, and cycles "
         "for a pixel that llvm-mca models for the loops which take them, with all data in the nearest cache. libyuv "
         "stands in brackets where it has NEON code for the same job; a loading or storing instruction that takes "
         "samples apart counts as one, though it costs several steps, so both figures matter.</p>\n";
  std::size_t shared = 0;
  std::size_t behind = 0;
  for (const arm_figure& ours : arm)
    if (const arm_figure* theirs = ours.runner == "libyuv" ? nullptr : libyuv_beside(arm, ours)) {
      ++shared;
      if (is_behind(ours, *theirs)) ++behind;
    }
  out << "<p>Of " << shared << " conversions that libyuv has too, " << behind
      << " are behind it in one of the three figures.</p>\n";
  table t(out, {{"conversion"}, {"libyuv"}, {"agreement"}},
          {{"instructions"}, {"(libyuv)"}, {"cycles N1"}, {"(libyuv)"}, {"cycles V1"}, {"(libyuv)"}, {"in loops"}});
  for (const arm_figure& ours : arm) {
    if (ours.runner == "libyuv") continue;
    const arm_figure* theirs = libyuv_beside(arm, ours);
    t.begin();
    t.word(ours.row);
    t.word(theirs ? theirs->function : "");
    t.word(theirs ? theirs->label : "");
    const auto pair = [&](double arm_figure::*figure) {
      t.number(fixed(ours.*figure, 3), theirs && is_worse(ours.*figure, theirs->*figure));
      theirs ? t.number(std::string("(").append(fixed(theirs->*figure, 3)).append(")")) : t.blank();
    };
    pair(&arm_figure::instructions);
    pair(&arm_figure::n1_cycles);
    pair(&arm_figure::v1_cycles);
    t.number(fixed(100 * ours.modelled, 0) + " %");
    t.end();
  }
}

void write_entry_points(std::ostream& out, const page_contents& page) {
  write_plots(out, page.measured, page.aims);
  write_targets(out, page.measured, page.aims);
  write_peers(out, page.measured, page.aims);
  write_steps(out, page.measured, page.aims);
  write_threads(out, page.measured, page.aims);
  write_arm(out, page.arm);
  write_measurements(out, page.measured, page.aims);
}

}  // namespace

void write_html(std::ostream& out, const page_contents& page) {
  out << head;
  write_machine(out, page);
  if (page.size) out << "<p>" << escaped(sentence(*page.size, page.aims)) << "</p>\n";
  write_used_pairs(out, page.used, page.aims);
  write_pairs(out, page.pairs, page.aims);
  if (!page.measured.all().empty() || !page.arm.empty()) write_entry_points(out, page);
  out << "</body>\n</html>\n";
}

}  // namespace morvane::bench
