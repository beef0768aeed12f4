#include "layout.h"

namespace Processing::Morvane::checked {

namespace {

problem too_large(const shape& s) {
  return wrong(MORVANE_SIZE, "size", s.height, 0, "of %dx%d pixels is more than memory has addresses for", s.width,
               s.height);
}

int64_t rounded_up(const int64_t value, const int64_t unit) {
  return (value + unit - 1) / unit * unit;
}

// From the first byte of all rows to behind the last one, or -1 where that is beyond all memory.
int64_t span_of(const int64_t stride, const int64_t rows, const int64_t row_bytes) {
  if (stride == INT64_MIN) return -1;
  int64_t bytes = 0;
  const int64_t step = stride < 0 ? -stride : stride;
  if (__builtin_mul_overflow(step, rows - 1, &bytes) || __builtin_add_overflow(bytes, row_bytes, &bytes)) return -1;
  return bytes;
}

// The rows of a plane, from the one that lies lowest in memory on.
struct rows_in_memory {
  uintptr_t lowest = 0;
  uintptr_t step = 0;
  uintptr_t count = 0;
  uintptr_t bytes = 0;  // of each

  uintptr_t row(const uintptr_t index) const { return lowest + step * index; }
  uintptr_t end() const { return row(count - 1) + bytes; }
};

rows_in_memory rows_of(const shape& s, const morvane_picture& picture, const size_t plane) {
  const catalogue::plane& p = s.format->planes[plane];
  rows_in_memory rows{};
  rows.lowest = reinterpret_cast<uintptr_t>(picture.data[plane]);
  rows.count = static_cast<uintptr_t>(p.rows(s.height));
  rows.bytes = static_cast<uintptr_t>(p.row_bytes(s.width));
  if (rows.count == 1) return rows;
  const auto stride = static_cast<uintptr_t>(picture.stride[plane]);
  rows.step = picture.stride[plane] < 0 ? -stride : stride;
  if (picture.stride[plane] < 0) rows.lowest -= rows.step * (rows.count - 1);
  return rows;
}

// Rows may lie between those of another plane, as those of two halves of a picture do.
bool share(const rows_in_memory& a, const rows_in_memory& b) {
  if (a.end() <= b.lowest || b.end() <= a.lowest) return false;
  for (uintptr_t i = 0, j = 0; i < a.count && j < b.count;) {
    if (a.row(i) + a.bytes <= b.row(j))
      ++i;
    else if (b.row(j) + b.bytes <= a.row(i))
      ++j;
    else
      return true;
  }
  return false;
}

// The first plane that shares bytes with the memory, or -1.
int plane_sharing(const rows_in_memory& memory, const shape& s, const morvane_picture& picture) {
  for (size_t i = 0; i < s.format->plane_count(); ++i)
    if (share(memory, rows_of(s, picture, i))) return static_cast<int>(i);
  return -1;
}

problem plane_fits(const shape& s, const morvane_picture& picture, const char* name, const size_t i) {
  const catalogue::plane& p = s.format->planes[i];
  if (picture.data[i] == nullptr)
    return wrong(MORVANE_NULL, part(name, "data", i).text, 0, 0, "is null, and %s has a plane %zu",
                 s.format->name.data(), i);
  const int64_t row_bytes = p.row_bytes(s.width);
  const int64_t rows = p.rows(s.height);
  const int64_t stride = picture.stride[i];
  if (rows > 1 && stride < row_bytes && stride > -row_bytes)
    return wrong(MORVANE_STRIDE, part(name, "stride", i).text, stride, row_bytes,
                 "is %lld, shorter than a row of %lld bytes", static_cast<long long>(stride),
                 static_cast<long long>(row_bytes));
  const int64_t span = rows > 1 ? span_of(stride, rows, row_bytes) : row_bytes;
  if (span < 0 || span > PTRDIFF_MAX)
    return wrong(MORVANE_STRIDE, part(name, "stride", i).text, stride, row_bytes,
                 "is %lld, with which %lld rows go beyond all memory", static_cast<long long>(stride),
                 static_cast<long long>(rows));
  if (picture.bytes[i] < span)
    return wrong(MORVANE_PLANE_TOO_SHORT, part(name, "bytes", i).text, picture.bytes[i], span,
                 "is %lld, and %lld rows need %lld bytes", static_cast<long long>(picture.bytes[i]),
                 static_cast<long long>(rows), static_cast<long long>(span));
  return none();
}

}  // namespace

problem lay_out(const shape& s, const int64_t alignment, morvane_layout& layout) {
  constexpr int64_t greatest = 4096;
  if (alignment < 0 || alignment > greatest || (alignment & (alignment - 1)) != 0)
    return wrong(MORVANE_OPTION, "alignment", alignment, greatest, "is %lld, not 0 or a power of two up to 4096",
                 static_cast<long long>(alignment));
  layout = {};
  layout.struct_size = sizeof layout;
  layout.plane_count = static_cast<int32_t>(s.format->plane_count());
  for (size_t i = 0; i < s.format->plane_count(); ++i) {
    const catalogue::plane& p = s.format->planes[i];
    const int64_t row_bytes = p.row_bytes(s.width);
    const int64_t stride = rounded_up(row_bytes, alignment > 0 ? alignment : s.format->row_multiple);
    int64_t bytes = 0;
    layout.planes[i] = {layout.bytes, stride, row_bytes, p.rows(s.height)};
    if (__builtin_mul_overflow(stride, p.rows(s.height), &bytes) ||
        __builtin_add_overflow(layout.bytes, bytes, &layout.bytes) || layout.bytes > PTRDIFF_MAX)
      return too_large(s);
  }
  return none();
}

problem fits(const shape& s, const morvane_picture* picture, const char* name) {
  if (picture == nullptr) return wrong(MORVANE_NULL, name, 0, 0, "is null");
  if (picture->struct_size != sizeof *picture)
    return wrong(MORVANE_STRUCT_SIZE, name, picture->struct_size, sizeof *picture,
                 "has a struct_size of %u, where sizeof gives %zu", picture->struct_size, sizeof *picture);
  for (size_t i = 0; i < s.format->plane_count(); ++i)
    if (const problem p = plane_fits(s, *picture, name, i); is_wrong(p)) return p;
  return none();
}

problem are_apart(const shape& source, const morvane_picture& from, const shape& destination,
                  const morvane_picture& to) {
  for (size_t d = 0; d < destination.format->plane_count(); ++d) {
    const rows_in_memory written = rows_of(destination, to, d);
    if (const int plane = plane_sharing(written, source, from); plane >= 0)
      return wrong(MORVANE_OVERLAP, part("destination", "data", d).text, 0, 0,
                   "shares bytes with plane %d of the source", plane);
    for (size_t other = 0; other < d; ++other)
      if (share(written, rows_of(destination, to, other)))
        return wrong(MORVANE_OVERLAP, part("destination", "data", d).text, 0, 0,
                     "shares bytes with plane %zu of the destination", other);
  }
  return none();
}

uint8_t* row_of(const morvane_picture& picture, const shape& s, const size_t plane, const int row) {
  return static_cast<uint8_t*>(picture.data[plane]) +
         picture.stride[plane] * (row / s.planes[plane].layout->image_rows);
}

problem is_apart(const scratch_memory& scratch, const shape& source, const morvane_picture& from,
                 const shape& destination, const morvane_picture& to) {
  const rows_in_memory used{
      .lowest = reinterpret_cast<uintptr_t>(scratch.data), .count = 1, .bytes = static_cast<uintptr_t>(scratch.bytes)};
  if (const int plane = plane_sharing(used, source, from); plane >= 0)
    return wrong(MORVANE_OVERLAP, "scratch", 0, 0, "shares bytes with plane %d of the source", plane);
  if (const int plane = plane_sharing(used, destination, to); plane >= 0)
    return wrong(MORVANE_OVERLAP, "scratch", 0, 0, "shares bytes with plane %d of the destination", plane);
  return none();
}

}  // namespace Processing::Morvane::checked
