#include "checker/geometry.h"

#include <algorithm>

namespace morvane::tests {

using catalogue::plane;

namespace {

// Whether words hold samples of more than one pixel, as those of v210 do, which is then stored in whole groups.
bool spreads_pixels(const plane& p) {
  return p.sample == catalogue::sample_type::u32_3x10 && p.group_bytes % p.group_pixels != 0;
}

// Up to the last byte of lower bits: those of a partial group lie where a whole one has them.
std::ptrdiff_t extent_in_parts(const plane& p, int xres) {
  const int pairs = (xres + 1) / 2;
  const int in_last_group = pairs % 8;
  return std::ptrdiff_t{pairs} / 8 * p.group_bytes + (in_last_group > 0 ? 32 + in_last_group : 0);
}

}  // namespace

bool in_parts(const plane& p) {
  return p.sample == catalogue::sample_type::u8_and_2;
}

std::ptrdiff_t row_extent(const plane& p, int xres) {
  if (xres < 1) return 0;
  if (in_parts(p)) return extent_in_parts(p, xres);
  if (spreads_pixels(p)) return static_cast<std::ptrdiff_t>(p.row_bytes(xres));
  return std::ptrdiff_t{xres} * p.group_bytes / p.group_pixels;
}

int tight_stride(const plane& p, int xres) {
  const int bytes = xres * p.group_bytes;
  if ((in_parts(p) || spreads_pixels(p)) && bytes % p.group_pixels != 0) return static_cast<int>(p.row_bytes(xres));
  return bytes / p.group_pixels;
}

extent extent_of_rows(const plane& format, int stride, int xres, int rows) {
  const std::ptrdiff_t last_row = std::ptrdiff_t{stride} * (rows - 1);
  return {std::min<std::ptrdiff_t>(0, last_row), std::max<std::ptrdiff_t>(0, last_row) + row_extent(format, xres)};
}

extent extent_of(const plane& format, const catalogue::conversion& row, int stride, int xres, int rows) {
  extent e = extent_of_rows(format, stride, xres, rows);
  if (stride == tight_stride(format, xres)) e.high = std::max(e.high, row_extent(format, xres * rows));
  e.high += row.bytes_past(format, xres);
  return e;
}

}  // namespace morvane::tests
