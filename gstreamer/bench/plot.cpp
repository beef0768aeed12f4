#include "plot.h"

#include <algorithm>
#include <cmath>

#include "report/svg.h"
#include "report/text.h"

namespace morvane::gstreamer {
namespace {

constexpr int label_width = 160;
constexpr int scale_width = 480;
constexpr int number_width = 50;
constexpr int pair_height = 24;
constexpr int bar_height = 9;
constexpr int head = 84;

constexpr std::string_view style = R"(.sm .grid { stroke: #d0d7de; }
.sm .same { stroke: #59636e; }
.sm .one { fill: #3b78c4; }
.sm .two { fill: #a3c1e6; }
@media (prefers-color-scheme: dark) {
.sm .grid { stroke: #30363d; }
.sm .same { stroke: #9198a1; }
.sm .one { fill: #5a9be6; }
.sm .two { fill: #2f5482; }
}
)";

double greatest(const std::vector<gain>& gains) {
  double most = 1;
  for (const gain& g : gains) most = std::max({most, g.one_thread, g.two_threads});
  return most;
}

}  // namespace

std::string gains_plot(const std::vector<gain>& gains) {
  const int full_scale = 5 * static_cast<int>(std::ceil(greatest(gains) / 5));
  const auto length = [&](const double times) { return scale_width * times / full_scale; };
  const int bottom = head + pair_height * static_cast<int>(gains.size());
  bench::svg d(label_width + scale_width + number_width, bottom + 12, style);
  d.text(12, 24, "title", "morvaneconvert, times as fast as videoconvert on as many threads, 1920x1080");
  d.rect(12, 42, 9, 9, "one");
  d.text(26, 50, "", "one thread");
  d.rect(102, 42, 9, 9, "two");
  d.text(116, 50, "", "two threads");
  for (int times = 0; times <= full_scale; times += times == 0 ? 1 : times == 1 ? 4 : 5) {
    const double x = label_width + length(times);
    d.line(x, head - 6, bottom, times == 1 ? "same" : "grid");
    d.text(x, head - 10, "weak", std::to_string(times), "middle");
  }
  double y = head;
  for (const gain& g : gains) {
    d.text(label_width - 8, y + 13, "", g.from + " to " + g.to, "end");
    d.rect(label_width, y + 1, length(g.one_thread), bar_height, "one");
    d.rect(label_width, y + 1 + bar_height, length(g.two_threads), bar_height, "two");
    d.text(label_width + length(g.one_thread) + 5, y + 9.5, "", bench::fixed(g.one_thread, 1));
    y += pair_height;
  }
  return d.finish();
}

}  // namespace morvane::gstreamer
