#include "rules/chroma.h"

#include <algorithm>
#include <cstddef>

namespace morvane::tests::rules {
namespace {

// The sample of a line whose ends are repeated without end.
int sample(const line& c, int i) {
  return c[static_cast<std::size_t>(std::clamp(i, 0, static_cast<int>(c.size()) - 1))];
}

int up_linear(const line& c, int i, bool is_second, place at) {
  const int near = sample(c, i);
  const int before = sample(c, i - 1);
  const int after = sample(c, i + 1);
  if (at == place::between) return (3 * near + (is_second ? after : before) + 2) >> 2;
  return is_second ? (near + after + 1) >> 1 : near;
}

int down_linear(const line& c, int first, place at) {
  const int left = sample(c, first - 1);
  const int middle = sample(c, first);
  const int right = sample(c, first + 1);
  return at == place::between ? (middle + right + 1) >> 1 : (left + 2 * middle + right + 2) >> 2;
}

line row_of(const grid& g, int y) {
  line made;
  for (int x = 0; x < g.width; ++x) made.push_back(static_cast<std::uint16_t>(g.at(x, y)));
  return made;
}

// Rows become columns.
grid turned(const grid& g) {
  grid made(g.height, g.width);
  for (int y = 0; y < g.height; ++y)
    for (int x = 0; x < g.width; ++x) made.set(y, x, g.at(x, y));
  return made;
}

template <class Change>
grid each_row(const grid& g, int width, Change change) {
  grid made(width, g.height);
  for (int y = 0; y < g.height; ++y) {
    const line row = change(row_of(g, y));
    for (int x = 0; x < width; ++x) made.set(x, y, row[static_cast<std::size_t>(x)]);
  }
  return made;
}

grid doubled_across(const grid& g, int width, filter by, place at) {
  return each_row(g, width, [=](const line& row) { return doubled(row, width, by, at); });
}

grid halved_across(const grid& g, filter by, place at) {
  return each_row(g, (g.width + 1) / 2, [=](const line& row) { return halved(row, by, at); });
}

}  // namespace

line doubled(const line& c, int length, filter by, place at) {
  line made;
  for (int x = 0; x < length; ++x) {
    const int i = x / 2;
    const int value = by == filter::nearest ? sample(c, i) : up_linear(c, i, x % 2 == 1, at);
    made.push_back(static_cast<std::uint16_t>(value));
  }
  return made;
}

line halved(const line& c, filter by, place at) {
  line made;
  for (int x = 0; x < static_cast<int>(c.size()); x += 2) {
    const int value = by == filter::nearest ? sample(c, x) : down_linear(c, x, at);
    made.push_back(static_cast<std::uint16_t>(value));
  }
  return made;
}

grid resampled(const grid& chroma, sampling from, sampling to, int width, int height, const options& asked) {
  const filter by = asked.chroma_filter;
  const place across = asked.chroma_siting == siting::left ? place::on_first : place::between;
  grid made = chroma;
  if (from.rows > to.rows) made = turned(doubled_across(turned(made), height, by, place::between));
  if (from.columns > to.columns) made = doubled_across(made, width, by, across);
  if (from.columns < to.columns) made = halved_across(made, by, across);
  if (from.rows < to.rows) made = turned(halved_across(turned(made), by, place::between));
  return made;
}

}  // namespace morvane::tests::rules
