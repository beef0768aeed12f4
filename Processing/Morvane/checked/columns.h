// Parts of a row. A row is converted in pieces, each through all steps before the next one begins. The lines of a piece
// take little room in the nearest cache, whatever the width of a picture: so what one step writes the next one reads
// there, and what the processor fetches of a picture in advance finds room beside it.
#pragma once

#include <algorithm>

#include "shape.h"

namespace Processing::Morvane::checked {

// From `begin` up to `end`.
struct columns {
  int begin = 0;
  int end = 0;

  int count() const { return end - begin; }
};

// A piece of a row of the image, of which the columns are counted from its first one.
struct piece {
  int row = 0;
  int first_column = 0;
  int made = 0;  // columns
  int read = 0;  // more, where filters look ahead
  bool is_first = true;
  bool is_last = true;
};

// A multiple of the pixels of every group, and of the samples in registers. What would be left for a short last piece
// belongs to the one before.
inline constexpr int columns_of_piece = 480;
inline constexpr int most_columns = columns_of_piece + columns_of_piece / 2;

// The piece of a row that begins with a column; filters look so many columns ahead.
inline piece piece_from(const int column, const int row, const int width, const int ahead) {
  const int left = width - column;
  const bool is_last = left <= most_columns;
  const int count = is_last ? left : columns_of_piece;
  return {row, column, count, count + std::min(ahead, left - count), column == 0, is_last};
}

// The samples of chroma in columns.
inline columns chroma_samples(const shape& s, const columns& c) {
  return {s.chroma_samples(c.begin), s.chroma_samples(c.end)};
}

// Lines of a picture from a column on.
inline component_lines lines_from(const component_lines& lines, const shape& s, const int column) {
  component_lines result = lines;
  for (int i = first; i < component_count; ++i)
    if (result.of[i] != nullptr) result.of[i] += s.samples_of(i, column);
  return result;
}

}  // namespace Processing::Morvane::checked
