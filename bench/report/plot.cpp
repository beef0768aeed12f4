#include "report/plot.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "peers/peers.h"
#include "report/svg.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

struct bar {
  std::string title{};
  std::vector<double> shares{};  // of the backends, infinite where not measured
  double peer_share = 0;
  std::string peer{};  // empty where no other library does the same
};

struct panel {
  const kind_target* of = nullptr;
  double target_share = 0;
  std::vector<bar> bars{};
};

constexpr int column_width = 520;
constexpr int label_width = 190;
constexpr int scale_width = 280;  // from no speed to full_scale
constexpr double full_scale = 1.25;
constexpr int line_height = 14;
constexpr int panel_head = 38;
constexpr int head = 76;

// The bar of this title, which is made when it is first asked for.
bar& bar_of(std::vector<bar>& bars, const std::string& title) {
  const auto found = std::find_if(bars.begin(), bars.end(), [&title](const bar& b) { return b.title == title; });
  return found == bars.end() ? bars.emplace_back(bar{.title = title}) : *found;
}

// Keeps the slowest of each backend, and the fastest other library.
void add_to(bar& b, const results& r, const row& which, const place& where) {
  b.shares.resize(r.backends().size(), std::numeric_limits<double>::infinity());
  for (std::size_t i = 0; i < b.shares.size(); ++i)
    if (const measurement* m = r.find(which, where, r.backends()[i]))
      b.shares[i] = std::min(b.shares[i], m->share_of_memcpy());
  const measurement* peer = r.best_peer(which, where);
  if (peer == nullptr || peer->share_of_memcpy() <= b.peer_share) return;
  b.peer_share = peer->share_of_memcpy();
  b.peer = peer->runner;
}

std::vector<bar> bars_of(const results& r, const targets& aims, const kind_target& t, const size& nominal) {
  std::vector<bar> result;
  for (const row& which : r.rows())
    if (aims.of(which) == &t && r.ours(which, {nominal}) != nullptr)
      add_to(bar_of(result, title_of(which)), r, which, {nominal});
  return result;
}

std::vector<panel> panels_of(const results& r, const targets& aims, const size& nominal) {
  const auto s = std::find(sizes.begin(), sizes.end(), nominal);
  std::vector<panel> result;
  for (const kind_target& t : aims.kinds) {
    panel p{.of = &t,
            .target_share = t.share_of_memcpy[static_cast<std::size_t>(s - sizes.begin())],
            .bars = bars_of(r, aims, t, nominal)};
    if (!p.bars.empty()) result.push_back(std::move(p));
  }
  return result;
}

int height_of(const panel& p) {
  return panel_head + line_height * static_cast<int>(p.bars.size()) + 10;
}

constexpr std::string_view style = R"(.sm .kind { font-weight: 600; }
.sm .aim { stroke-width: 1.5; stroke-dasharray: 4 2; }
.sm .peer, .sm .narrower { stroke-width: 1.3; }
.sm .peer { fill: #fff; }
.sm .grid { stroke: #d0d7de; }
.sm .copy { stroke: #59636e; }
.sm .aim { stroke: #b3261e; }
.sm .narrower { stroke: #1f2328; }
.sm .ours { fill: #3b78c4; }
.sm .behind { fill: #c4713b; }
.sm .peer { stroke: #1f2328; }
@media (prefers-color-scheme: dark) {
.sm .peer { fill: #0d1117; }
.sm .grid { stroke: #30363d; }
.sm .copy { stroke: #9198a1; }
.sm .aim { stroke: #ff8a80; }
.sm .narrower { stroke: #e6edf3; }
.sm .ours { fill: #5a9be6; }
.sm .behind { fill: #e6955a; }
.sm .peer { stroke: #e6edf3; }
}
)";

// A mark for each of the other libraries.
void draw_mark(svg& d, double x, double y, std::string_view library) {
  if (library == library_names[0]) return d.circle(x, y, 3.5, "peer");
  if (library == library_names[1]) return d.rect(x - 3, y - 3, 6, 6, "peer");
  std::ostringstream triangle;
  triangle << 'M' << x << ' ' << y - 4.5 << "l4.2 7.5h-8.4z";
  d.path(triangle.str(), "peer");
}

double at(double share) {
  return label_width + scale_width * std::min(share, full_scale) / full_scale;
}

void draw_head(svg& d, const size& nominal) {
  d.text(12, 24, "title",
         "Speed of every conversion, " + name_of(nominal) + (nominal == in_cache ? " (in cache)" : "") +
             ", as a share of memcpy that moves as many bytes");
  d.text(12, 46, "weak", "1.00 is as fast as a plain copy. Same formats, several matrices: the slowest of them.");
  double x = 12;
  const auto say = [&](std::string_view what, double width) {
    d.text(x + 12, 66, "", what);
    x += width;
  };
  d.rect(x - 1, 58, 9, 9, "ours");
  say("Morvane", 75);
  d.rect(x - 1, 58, 9, 9, "behind");
  say("Morvane, below its target", 165);
  d.line(x + 4, 57, 69, "aim");
  say("target of the kind", 125);
  d.line(x + 4, 57, 69, "narrower");
  say("narrower backends", 132);
  for (const std::string_view library : library_names) {
    draw_mark(d, x + 4, 62, library);
    say(library, 68);
  }
  d.text(x + 4, 66, "weak", "(the fastest of the other libraries, one thread)");
}

void draw_panel(svg& d, const panel& p, double left, double top) {
  const double first = top + panel_head;
  const double last = first + line_height * static_cast<double>(p.bars.size());
  d.text(left + 12, top + 16, "kind", p.of->title);
  for (int quarter = 0; quarter <= 5; ++quarter) {
    const double x = left + at(quarter / 4.0);
    d.line(x, first - 2, last, quarter == 4 ? "copy" : "grid");
    d.text(x, first - 5, "weak", fixed(quarter / 4.0), "middle");
  }
  double y = first;
  for (const bar& b : p.bars) {
    d.text(left + label_width - 6, y + 10.5, "", b.title, "end");
    const double share = b.shares.back();
    d.rect(left + label_width, y + 2, at(share) - label_width, line_height - 5,
           share < p.target_share ? "behind" : "ours");
    for (std::size_t i = 0; i + 1 < b.shares.size(); ++i)
      if (std::isfinite(b.shares[i])) d.line(left + at(b.shares[i]), y + 2, y + line_height - 3, "narrower");
    d.text(left + label_width + scale_width + 10, y + 10.5, "", fixed(share));
    y += line_height;
  }
  d.line(left + at(p.target_share), first - 2, last, "aim");
  y = first;
  for (const bar& b : p.bars) {
    if (!b.peer.empty()) draw_mark(d, left + at(b.peer_share), y + line_height / 2.0, b.peer);
    y += line_height;
  }
}

}  // namespace

std::string share_plot(const results& r, const targets& aims, const size& nominal) {
  const std::vector<panel> panels = panels_of(r, aims, nominal);
  if (panels.empty()) return {};
  int total = 0;
  for (const panel& p : panels) total += height_of(p);

  // Two columns: the first takes panels up to the half.
  std::size_t in_first = 0;
  int first_height = 0;
  while (in_first < panels.size() && 2 * first_height + height_of(panels[in_first]) <= total + line_height)
    first_height += height_of(panels[in_first++]);
  in_first = std::max<std::size_t>(in_first, 1);

  int heights[2] = {};
  for (std::size_t i = 0; i < panels.size(); ++i) heights[i < in_first ? 0 : 1] += height_of(panels[i]);
  svg d(2 * column_width, head + std::max(heights[0], heights[1]) + 8, style);
  draw_head(d, nominal);
  int top[2] = {head, head};
  for (std::size_t i = 0; i < panels.size(); ++i) {
    const int column = i < in_first ? 0 : 1;
    draw_panel(d, panels[i], column * column_width, top[column]);
    top[column] += height_of(panels[i]);
  }
  return d.finish();
}

}  // namespace morvane::bench
