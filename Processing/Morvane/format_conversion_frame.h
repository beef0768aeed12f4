// The row driver: takes the planes of an image and a line function, and converts the image as one line or row by row.
#pragma once

#include <climits>
#include <cstdint>
#include <type_traits>

#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion {

// The first row of a plane, and the bytes from one row to the next. Words are taken as bytes.
template <class Byte>
struct plane {
  Byte* data;
  int stride;

  template <class Element>
  plane(Element* first_row, const int bytes) : data(bytes_of(first_row)), stride(bytes) {}

  void advance() { data = line::next_line(data, stride); }
};

plane(const uint8_t*, int)->plane<const uint8_t>;
plane(const uint16_t*, int)->plane<const uint8_t>;
plane(uint8_t*, int)->plane<uint8_t>;
plane(uint16_t*, int)->plane<uint8_t>;

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
template <class Line, class... Byte>
bool frame_by_rows(const Line& line, const int xres, const int yres, plane<Byte>... planes) {
  bool all = true;
  if (xres < 1) return all;
  for (int rows_left = yres; rows_left > 0; --rows_left) {
    all &= call_line(line, planes.data..., xres);
    (planes.advance(), ...);
  }
  return all;
}

// One line of xres * yres pixels where `tight` says that the rows follow each other without a gap in every plane, or
// where there is but one row.
template <class Line, class... Byte>
bool frame_if(const bool tight, const Line& line, const int xres, const int yres, const plane<Byte>... planes) {
  if (xres < 1 || yres < 1) return true;
  if (yres == 1 || (tight && xres <= INT_MAX / yres)) return call_line(line, planes.data..., xres * yres);
  return frame_by_rows(line, xres, yres, planes...);
}

// Whether the rows of an image follow each other without a gap in every plane of a kernel, which says how many bytes a
// unit takes there.
template <class Kernel, class... Plane, class... Byte>
bool all_tight(kernel::plane_list<Plane...>, const int xres, const plane<Byte>... planes) {
  return ((int64_t{planes.stride} * Kernel::pixels == int64_t{xres} * Plane::bytes) && ...);
}

// An image by a kernel.
template <class Kernel, class... Byte>
bool convert(const int xres, const int yres, const plane<Byte>... planes) {
  return frame_if(all_tight<Kernel>(typename Kernel::planes(), xres, planes...), backend::line_of<Kernel>(), xres, yres,
                  planes...);
}

// By one kernel or by another.
template <class Kernel, class Other, class... Byte>
bool convert_by(const bool by_first, const int xres, const int yres, const plane<Byte>... planes) {
  return by_first ? convert<Kernel>(xres, yres, planes...) : convert<Other>(xres, yres, planes...);
}

// By a kernel that answers whether all alpha is opaque, where somebody asks, and by one that does not look elsewhere.
template <class Kernel, class Reporting, class... Byte>
void convert_with_report(bool* report, const int xres, const int yres, const plane<Byte>... planes) {
  if (report == nullptr)
    convert<Kernel>(xres, yres, planes...);
  else
    *report = convert<Reporting>(xres, yres, planes...);
}

// Row by row, whatever the strides.
template <class Kernel, class... Byte>
bool convert_rows(const int xres, const int yres, const plane<Byte>... planes) {
  return frame_by_rows(backend::line_of<Kernel>(), xres, yres, planes...);
}

// Rows that follow each other without a gap, or run into each other, are one run of bytes where both planes hold them
// alike.
template <int bytes_per_pixel>
void copy(const plane<const uint8_t> source, const plane<uint8_t> destination, const int xres, const int yres) {
  if (xres < 1 || yres < 1) return;
  const int64_t row_bytes = int64_t{xres} * bytes_per_pixel;
  const bool one_run = source.stride == destination.stride && source.stride >= 0 && source.stride <= row_bytes;
  if (one_run)
    std::memcpy(destination.data, source.data, static_cast<size_t>(int64_t{source.stride} * (yres - 1) + row_bytes));
  else
    frame_by_rows(&line::copy<bytes_per_pixel>, xres, yres, source, destination);
}

// To 4:2:0, two rows of the image at a time: the upper one by a line that also writes a row of each chroma plane, the
// lower one by a line that takes the same planes and leaves chroma alone.
template <class Line, class... Chroma>
void frame_to_420(const Line& with_chroma, const Line& without_chroma, const int xres, const int yres,
                  plane<const uint8_t> source, plane<uint8_t> luma, plane<Chroma>... chroma) {
  const auto convert_row = [&](const Line& line) {
    line(source.data, luma.data, chroma.data..., xres);
    source.advance();
    luma.advance();
  };
  for (int rows_left = yres; rows_left > 0; rows_left -= 2) {
    convert_row(with_chroma);
    if (rows_left > 1) convert_row(without_chroma);
    (chroma.advance(), ...);
  }
}

// From 4:2:0: every source row goes to two rows of the destination, one after the other. A processor writes one run of
// memory faster than two in turn, and the second time the source comes from the nearest cache.
template <class Line, class... Source>
void frame_to_422(const Line& convert_row, const int count, const int source_rows, plane<uint8_t> destination,
                  plane<Source>... sources) {
  if (count < 1) return;
  for (int y = 0; y < source_rows; ++y) {
    for (int repeat = 0; repeat < 2; ++repeat) {
      convert_row(sources.data..., destination.data, count);
      destination.advance();
    }
    (sources.advance(), ...);
  }
}

}  // namespace Processing::Morvane::format_conversion
