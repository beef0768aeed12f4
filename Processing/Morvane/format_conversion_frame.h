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

// One line of xres * yres pixels where `tight` says that the rows follow each other without a gap in every plane, or
// where there is but one row.
template <class Line, class... Element>
bool frame_if(const bool tight, const Line& line, const int xres, const int yres, const plane<Element>... planes) {
  if (xres < 1 || yres < 1) return true;
  if (yres == 1 || (tight && xres <= INT_MAX / yres)) return call_line(line, planes.data..., xres * yres);
  return frame_by_rows(line, xres, yres, planes...);
}

template <class Line, class... Element>
bool frame(const Line& line, const int xres, const int yres, const plane<Element>... planes) {
  return frame_if((planes.is_tight(xres) && ...), line, xres, yres, planes...);
}

// To 4:2:0: even rows through `with_chroma`, which also writes a row of each chroma plane, odd rows through
// `without_chroma`, which takes the same planes and leaves chroma alone.
template <class Line, class Source, class... Chroma>
void frame_to_420(const Line& with_chroma, const Line& without_chroma, const int xres, const int yres,
                  plane<Source> source, plane<uint8_t> luma, plane<Chroma>... chroma) {
  for (int y = 0; y < yres; ++y) {
    const bool upper = y % 2 == 0;
    (upper ? with_chroma : without_chroma)(source.data, luma.data, chroma.data..., xres);
    source.data = line::next_line(source.data, source.stride);
    luma.data = line::next_line(luma.data, luma.stride);
    if (upper) ((chroma.data = line::next_line(chroma.data, chroma.stride)), ...);
  }
}

// From 4:2:0: every source row goes to two rows of the destination, one after the other. A processor writes one run of
// memory faster than two in turn, and the second time the source comes from the nearest cache.
template <class Line, class Destination, class... Source>
void frame_to_422(const Line& convert, const int count, const int source_rows, plane<Destination> destination,
                  plane<Source>... sources) {
  if (count < 1) return;
  for (int y = 0; y < source_rows; ++y) {
    for (int repeat = 0; repeat < 2; ++repeat) {
      convert(sources.data..., destination.data, count);
      destination.data = line::next_line(destination.data, destination.stride);
    }
    ((sources.data = line::next_line(sources.data, sources.stride)), ...);
  }
}

}  // namespace Processing::Morvane::format_conversion
