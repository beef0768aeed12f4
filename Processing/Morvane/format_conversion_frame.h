// The row driver: takes the planes of an image and a line function, and converts the image as one line or row by row.
#pragma once

#include <climits>
#include <cstdint>
#include <type_traits>

#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion {

// A plane whose rows are tight when `tight_pixels` pixels take `tight_bytes` bytes.
template <class Element>
struct plane {
  Element* data;
  int stride;
  int tight_bytes;
  int tight_pixels = 1;

  bool is_tight(const int xres) const { return int64_t{stride} * tight_pixels == int64_t{xres} * tight_bytes; }
};

template <class Element>
plane(Element*, int, int) -> plane<Element>;
template <class Element>
plane(Element*, int, int, int) -> plane<Element>;

// Calls a line function; those that report nothing count as true.
template <class Line, class... Argument>
bool call_line(const Line& line, const Argument... arguments) {
  if constexpr (std::is_void_v<std::invoke_result_t<Line, Argument...>>) {
    line(arguments...);
    return true;
  } else {
    return line(arguments...);
  }
}

// Every row by itself, first to last. Returns whether the line function returned true for all of them.
template <class Line, class... Element>
bool frame_by_rows(const Line& line, const int xres, const int yres, plane<Element>... planes) {
  bool all = true;
  if (xres < 1) return all;
  for (int y = 0; y < yres; ++y) {
    all &= call_line(line, planes.data..., xres);
    ((planes.data = line::next_line(planes.data, planes.stride)), ...);
  }
  return all;
}

// One line of xres * yres pixels where the rows follow each other without a gap in every plane, or where there is but
// one row.
template <class Line, class... Element>
bool frame(const Line& line, const int xres, const int yres, const plane<Element>... planes) {
  if (xres < 1 || yres < 1) return true;
  const bool tight = (planes.is_tight(xres) && ...) && xres <= INT_MAX / yres;
  if (yres == 1 || tight) return call_line(line, planes.data..., xres * yres);
  return frame_by_rows(line, xres, yres, planes...);
}

}  // namespace Processing::Morvane::format_conversion
