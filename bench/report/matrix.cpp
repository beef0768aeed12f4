#include "report/matrix.h"

#include <algorithm>

#include "report/svg.h"

namespace morvane::bench {

namespace {

constexpr int pitch = 19;
constexpr int side = 17;
constexpr int gap = 7;  // between groups
constexpr int margin = 12;
constexpr int label_room = 124;
constexpr int head = 84;
constexpr int least_width = 780;
constexpr int foot = 20;

constexpr std::string_view style = R"(.sm .axis { font-weight: 600; }
.sm .below2 { fill: #b0440c; }
.sm .below1 { fill: #eca26c; }
.sm .above1 { fill: #c9def4; }
.sm .above2 { fill: #8cb9e8; }
.sm .above3 { fill: #4a89d0; }
.sm .above4 { fill: #174f95; }
.sm .none { fill: #dfe3e8; }
@media (prefers-color-scheme: dark) {
.sm .below2 { fill: #ff9a57; }
.sm .below1 { fill: #a85d2c; }
.sm .above1 { fill: #1d3c60; }
.sm .above2 { fill: #2f659f; }
.sm .above3 { fill: #5a9be6; }
.sm .above4 { fill: #b5d8ff; }
.sm .none { fill: #2a3038; }
}
)";

// Where each name of an axis begins.
std::vector<int> places_of(const std::vector<matrix::name>& names, int first) {
  std::vector<int> result;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) first += pitch + (names[i].group == names[i - 1].group ? 0 : gap);
    result.push_back(first);
  }
  return result;
}

int end_of(const std::vector<int>& places, int first) {
  return places.empty() ? first : places.back() + pitch;
}

std::string_view colour_of(const matrix& m, const matrix::cell& c) {
  if (!c.value) return "none";
  std::string_view result = m.steps.front().colour;
  for (const matrix::step& s : m.steps)
    if (*c.value >= s.least) result = s.colour;
  return result;
}

void draw_legend(svg& d, const matrix& m) {
  double x = margin;
  const auto entry = [&](std::string_view colour, std::string_view text) {
    d.rect(x, head - 25, side - 4, side - 4, colour);
    d.text(x + side + 1, head - 14, "", text);
    x += side + 17 + 6.2 * static_cast<double>(text.size());
  };
  for (const matrix::step& s : m.steps) entry(s.colour, s.text);
  const auto is_grey = [](const matrix::cell& c) { return !c.value; };
  if (std::any_of(m.cells.begin(), m.cells.end(), is_grey)) entry("none", m.grey_means);
}

}  // namespace

std::string draw(const matrix& m) {
  const int left = margin + label_room;
  const int top = head + label_room;
  const std::vector<int> xs = places_of(m.columns, left);
  const std::vector<int> ys = places_of(m.rows, top);
  svg d(std::max(end_of(xs, left) + margin, least_width), end_of(ys, top) + foot, style);
  d.text(margin, 24, "title", m.title);
  d.text(margin, 46, "weak", m.explanation);
  draw_legend(d, m);
  d.text(left - 8, top - 22, "axis", m.rows_are + " \u2193", "end");
  d.text(left - 8, top - 8, "axis", m.columns_are + " \u2192", "end");
  for (std::size_t i = 0; i < m.columns.size(); ++i) d.rising_text(xs[i] + 12, top - 6, "", m.columns[i].text);
  for (std::size_t i = 0; i < m.rows.size(); ++i) d.text(left - 6, ys[i] + 12, "", m.rows[i].text, "end");
  for (const matrix::cell& c : m.cells) d.rect(xs[c.column], ys[c.row], side, side, colour_of(m, c), c.tip);
  return d.finish();
}

}  // namespace morvane::bench
