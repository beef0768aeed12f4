#include "report/matrix.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "report/svg.h"

namespace morvane::bench {

namespace {

constexpr int margin = 12;
constexpr int head = 84;
constexpr int least_width = 780;
constexpr int foot = 20;

// What cells and names measure.
struct measures {
  int pitch = 19;
  int side = 17;
  int gap = 7;  // between groups
  int label_room = 124;
  int baseline = 12;  // of a name beside its cells
  std::string_view label{};
  int heading_room = 0;  // to the right of the cells
};

constexpr std::size_t few_names = 40;
constexpr measures large;
// Cells touch, so that neighbours of one colour become one shape.
constexpr measures small{
    .pitch = 8, .side = 8, .gap = 5, .label_room = 96, .baseline = 7, .label = "small", .heading_room = 76};

constexpr std::string_view style = R"(.sm .axis { font-weight: 600; }
.sm .small { font-size: 7.5px; }
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
std::vector<int> places_of(const std::vector<matrix::name>& names, int first, const measures& of) {
  std::vector<int> result;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) first += of.pitch + (names[i].group == names[i - 1].group ? 0 : of.gap);
    result.push_back(first);
  }
  return result;
}

std::string_view colour_of(const matrix& m, const matrix::cell& c) {
  if (!c.value) return "none";
  std::string_view result = m.steps.front().colour;
  for (const matrix::step& s : m.steps)
    if (*c.value >= s.least) result = s.colour;
  return result;
}

class drawing {
 public:
  explicit drawing(const matrix& m)
      : m_(m),
        of_(std::max(m.rows.size(), m.columns.size()) > few_names ? small : large),
        xs_(places_of(m.columns, left(), of_)),
        ys_(places_of(m.rows, top(), of_)),
        out_(std::max(end_of(xs_, left()) + of_.heading_room + margin, least_width), end_of(ys_, top()) + foot, style) {
  }

  std::string finish() {
    out_.text(margin, 24, "title", m_.title);
    out_.text(margin, 46, "weak", m_.explanation);
    draw_legend();
    draw_names();
    if (of_.heading_room > 0) draw_headings();
    m_.told == matrix::tips::of_each_cell ? draw_cells() : draw_runs();
    return out_.finish();
  }

 private:
  const matrix& m_;
  const measures& of_;
  std::vector<int> xs_;
  std::vector<int> ys_;
  svg out_;

  int left() const { return margin + of_.label_room; }
  int top() const { return head + of_.label_room; }
  int end_of(const std::vector<int>& places, int first) const {
    return places.empty() ? first : places.back() + of_.pitch;
  }

  void draw_legend() {
    double x = margin;
    const auto entry = [&](std::string_view colour, std::string_view text) {
      out_.rect(x, head - 25, large.side - 4, large.side - 4, colour);
      out_.text(x + large.side + 1, head - 14, "", text);
      x += large.side + 17 + 6.2 * static_cast<double>(text.size());
    };
    for (const matrix::step& s : m_.steps) entry(s.colour, s.text);
    const auto is_grey = [](const matrix::cell& c) { return !c.value; };
    if (std::any_of(m_.cells.begin(), m_.cells.end(), is_grey)) entry("none", m_.grey_means);
  }

  void draw_names() {
    out_.text(left() - 8, top() - 22, "axis", m_.rows_are + " \u2193", "end");
    out_.text(left() - 8, top() - 8, "axis", m_.columns_are + " \u2192", "end");
    for (std::size_t i = 0; i < m_.columns.size(); ++i)
      out_.rising_text(xs_[i] + of_.baseline, top() - 6, of_.label, m_.columns[i].text);
    for (std::size_t i = 0; i < m_.rows.size(); ++i)
      out_.text(left() - 6, ys_[i] + of_.baseline, of_.label, m_.rows[i].text, "end");
  }

  // Beside the middle of each group.
  void draw_headings() {
    for (std::size_t first = 0; first < m_.rows.size();) {
      std::size_t last = first;
      while (last + 1 < m_.rows.size() && m_.rows[last + 1].group == m_.rows[first].group) ++last;
      out_.text(end_of(xs_, left()) + 6, (ys_[first] + ys_[last]) / 2 + of_.baseline, of_.label, m_.rows[first].group);
      first = last + 1;
    }
  }

  void draw_cell(const matrix::cell& c) {
    out_.rect(xs_[c.column], ys_[c.row], of_.side, of_.side, colour_of(m_, c), c.tip);
  }

  void draw_cells() {
    for (const matrix::cell& c : m_.cells) draw_cell(c);
  }

  void draw_runs() {
    std::map<std::string_view, std::string> paths;
    for (auto first = m_.cells.begin(); first != m_.cells.end();) {
      auto last = first;
      while (last + 1 != m_.cells.end() && touch(*last, last[1])) ++last;
      const int end = xs_[last->column] + of_.side;
      paths[colour_of(m_, *first)].append(rectangle(xs_[first->column], ys_[first->row], end));
      first = last + 1;
    }
    for (const auto& [colour, path] : paths) out_.path(path, colour);
    for (const matrix::cell& c : m_.cells)
      if (c.value && *c.value < m_.aim) draw_cell(c);
  }

  // Whether two cells are one shape: neighbours in a row, without a gap, and of one colour.
  bool touch(const matrix::cell& a, const matrix::cell& b) const {
    return a.row == b.row && xs_[a.column] + of_.side == xs_[b.column] && colour_of(m_, a) == colour_of(m_, b);
  }

  std::string rectangle(int x, int y, int end) const {
    std::ostringstream out;
    out << 'M' << x << ' ' << y << 'H' << end << 'v' << of_.side << 'H' << x << 'z';
    return out.str();
  }
};

}  // namespace

std::string draw(const matrix& m) {
  return drawing(m).finish();
}

}  // namespace morvane::bench
