// Where the planes of a picture lie, one after the other in one run of memory or of a file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "call.h"
#include "formats.h"

namespace morvane::catalogue {

struct plane_layout {
  std::int64_t offset = 0;     // of the first row, from the start of the picture
  std::int64_t stride = 0;     // bytes from row to row
  std::int64_t row_bytes = 0;  // of whole groups
  std::int64_t rows = 0;

  constexpr std::int64_t bytes() const { return stride * rows; }
};

struct layout {
  std::array<plane_layout, max_planes> planes{};
  std::int64_t bytes = 0;  // of all planes

  // The planes in memory that begins at `first`, as a call takes them.
  template <class Byte>
  constexpr catalogue::planes<Byte> at(Byte* first) const {
    catalogue::planes<Byte> result;
    for (std::size_t i = 0; i < max_planes; ++i) {
      result.data[i] = first + planes[i].offset;
      result.stride[i] = static_cast<int>(planes[i].stride);
    }
    return result;
  }
};

// With the strides that stride_of(index of a plane, bytes of its rows) gives.
template <class StrideOf>
constexpr layout lay_out(const format& f, int xres, int yres, StrideOf stride_of) {
  layout result;
  for (std::size_t i = 0; i < f.plane_count(); ++i) {
    const std::int64_t row_bytes = f.planes[i].row_bytes(xres);
    result.planes[i] = {result.bytes, stride_of(i, row_bytes), row_bytes, f.planes[i].rows(yres)};
    result.bytes += result.planes[i].bytes();
  }
  return result;
}

// Without gaps.
constexpr layout lay_out(const format& f, int xres, int yres) {
  return lay_out(f, xres, yres, [](std::size_t, std::int64_t row_bytes) { return row_bytes; });
}

}  // namespace morvane::catalogue
