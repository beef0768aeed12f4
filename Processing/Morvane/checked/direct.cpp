#include "direct.h"

#include <algorithm>
#include <cstring>

#include "layout.h"

namespace Processing::Morvane::checked {

namespace {

problem refused(const named_entry_point& wish, const char* why) {
  return wrong(MORVANE_VIA, "options.via", 0, 0, "is \"%.60s\", which %.120s", wish.name, why);
}

const catalogue::conversion* entry_point_of(const char* name, const way& w) {
  for (const catalogue::conversion& c : catalogue::conversions)
    if (c.name == name && c.source == w.from.format->name && c.destination == w.to.format->name) return &c;
  return nullptr;
}

bool is_known(const char* name) {
  return std::any_of(catalogue::conversions.begin(), catalogue::conversions.end(),
                     [&](const catalogue::conversion& c) { return c.name == name; });
}

bool has_matrix(const catalogue::conversion& c, const int matrix) {
  if (c.colors == catalogue::matrix::none) return true;
  return std::any_of(std::begin(catalogue::matrices), std::end(catalogue::matrices),
                     [&](const catalogue::matrix m) { return catalogue::number_of(m) == matrix && offers(c, m); });
}

int matrix_of(const way& w) {
  return w.from.colour == model::ycbcr ? w.from.matrix : w.to.matrix;
}

problem check_size(const named_entry_point& wish, const shape& s) {
  const auto check = [&](const int length, const int multiple, const char* dimension) {
    if (length % multiple == 0) return none();
    return wrong(MORVANE_VIA, "options.via", length, multiple,
                 "is \"%.60s\", which needs a %s that is a multiple of %d, not %d", wish.name, dimension, multiple,
                 length);
  };
  if (const problem p = check(s.width, s.format->width_multiple, "width"); is_wrong(p)) return p;
  return check(s.height, s.format->height_multiple, "height");
}

// An entry point that leaves the end of a row unwritten is given longer rows, of whole groups.
int width_of_call(const way& w) {
  if (w.by->margin_pixels == 0) return w.from.width;
  int group = 1;
  for (size_t i = 0; i < w.from.plane_count; ++i) group = std::max(group, w.from.planes[i].layout->group_pixels);
  return (w.from.width + group - 1) / group * group + w.by->margin_pixels;
}

// Two rows where two rows of pixels share one of chroma.
int unit_rows(const way& w) {
  return w.from.half_height || w.to.half_height ? 2 : 1;
}

// In scratch memory a row has room for all that a call touches.
int64_t scratch_stride(const way& w, const shape& s) {
  constexpr int64_t alignment = 64;
  const int width = width_of_call(w);
  int64_t bytes = 0;
  for (size_t i = 0; i < s.plane_count; ++i) {
    const catalogue::plane& p = *s.planes[i].layout;
    bytes = std::max(bytes, p.row_bytes(width) + w.by->bytes_past(p, width));
  }
  return (bytes + alignment - 1) / alignment * alignment;
}

int64_t rows_of(const shape& s, const size_t plane, const int rows) {
  return s.planes[plane].layout->rows(rows);
}

template <class Byte>
catalogue::planes<Byte> planes_from(const morvane_picture& picture, const shape& s, const int row) {
  catalogue::planes<Byte> planes;
  for (size_t i = 0; i < s.plane_count; ++i) {
    planes.data[i] = row_of(picture, s, i, row);
    planes.stride[i] = static_cast<int>(picture.stride[i]);
  }
  return planes;
}

void call(const way& w, const catalogue::planes<const uint8_t>& from, const catalogue::planes<uint8_t>& to,
          const int rows) {
  catalogue::call c;
  c.source = from;
  c.destination = to;
  c.xres = width_of_call(w) / w.by->pixels_per_xres;
  c.yres = rows / w.by->rows_per_yres;
  c.argument = w.argument;
  w.by->convert(c);
}

// Rows of pictures that an entry point cannot be given pass through scratch memory, those of the destination too: some
// entry points leave bytes as they are.
class rows_in_scratch {
 public:
  rows_in_scratch(const way& w, void* scratch) : way_(w), next_(static_cast<uint8_t*>(scratch)) {
    from_ = planes_in_scratch(w.from);
    to_ = planes_in_scratch(w.to);
  }
  void convert(const morvane_picture& source, const morvane_picture& destination, const int first, const int rows) {
    each_row(way_.from, source, from_, first, rows, fetch);
    each_row(way_.to, destination, to_, first, rows, fetch);
    catalogue::planes<const uint8_t> from;
    std::copy(from_.data.begin(), from_.data.end(), from.data.begin());
    from.stride = from_.stride;
    call(way_, from, to_, rows);
    each_row(way_.to, destination, to_, first, rows, put_back);
  }

 private:
  const way& way_;
  uint8_t* next_;
  catalogue::planes<uint8_t> from_;
  catalogue::planes<uint8_t> to_;

  catalogue::planes<uint8_t> planes_in_scratch(const shape& s) {
    const int64_t stride = scratch_stride(way_, s);
    const auto bytes = static_cast<size_t>(stride * unit_rows(way_));
    catalogue::planes<uint8_t> planes;
    for (size_t i = 0; i < s.plane_count; ++i) {
      planes.data[i] = next_;
      planes.stride[i] = static_cast<int>(stride);
      std::memset(next_, 0, bytes);
      next_ += bytes;
    }
    return planes;
  }
  static void fetch(uint8_t* in_scratch, const uint8_t* row, const size_t bytes) {
    std::memcpy(in_scratch, row, bytes);
  }
  static void put_back(const uint8_t* in_scratch, uint8_t* row, const size_t bytes) {
    std::memcpy(row, in_scratch, bytes);
  }
  template <class Copy>
  static void each_row(const shape& s, const morvane_picture& picture, const catalogue::planes<uint8_t>& planes,
                       const int first, const int rows, const Copy copy) {
    for (size_t i = 0; i < s.plane_count; ++i)
      for (int64_t row = 0; row < rows_of(s, i, rows); ++row)
        copy(planes.data[i] + planes.stride[i] * row, row_of(picture, s, i, first) + picture.stride[i] * row,
             static_cast<size_t>(s.planes[i].layout->row_bytes(s.width)));
  }
};

bool touches_more(const way& w) {
  if (w.by->margin_pixels != 0) return true;
  for (const shape* s : {&w.from, &w.to})
    for (size_t i = 0; i < s->plane_count; ++i)
      if (w.by->bytes_past(*s->planes[i].layout, s->width) != 0) return true;
  return false;
}

bool is_of_int(const int64_t value) {
  return value == static_cast<int>(value);
}

bool is_of_int(const morvane_picture& picture, const shape& s) {
  for (size_t i = 0; i < s.plane_count; ++i)
    if (!is_of_int(picture.stride[i]) || !is_of_int(s.planes[i].layout->row_bytes(s.width))) return false;
  return true;
}

bool is_of_words(const morvane_picture& picture, const shape& s) {
  for (size_t i = 0; i < s.plane_count; ++i)
    if (reinterpret_cast<uintptr_t>(picture.data[i]) % 2 != 0 || picture.stride[i] % 2 != 0) return false;
  return true;
}

bool has_one_stride(const morvane_picture& picture, const shape& s) {
  return std::all_of(picture.stride, picture.stride + s.plane_count,
                     [&](const int64_t stride) { return stride == picture.stride[0]; });
}

bool is_tight(const morvane_picture& picture, const shape& s) {
  for (size_t i = 0; i < s.plane_count; ++i)
    if (picture.stride[i] != s.planes[i].layout->row_bytes(s.width)) return false;
  return true;
}

// Each row lies wholly above the next one, also where there is but one.
bool goes_down(const morvane_picture& picture, const shape& s) {
  for (size_t i = 0; i < s.plane_count; ++i)
    if (picture.stride[i] < s.planes[i].layout->row_bytes(s.width)) return false;
  return true;
}

bool can_be_called(const way& w, const morvane_picture& source, const morvane_picture& destination) {
  if (!is_of_int(source, w.from) || !is_of_int(destination, w.to)) return false;
  if (w.by->entry.takes_words && !(is_of_words(source, w.from) && is_of_words(destination, w.to))) return false;
  const bool copies_rows = is_tight(source, w.from) && goes_down(destination, w.to);
  if (!w.by->copies_padding.empty() && !copies_rows) return false;
  return !w.by->one_stride || has_one_stride(destination, w.to);
}

}  // namespace

problem find_via(const named_entry_point& wish, way& w) {
  if (!is_known(wish.name)) return refused(wish, "no entry point has as its name");
  const catalogue::conversion* c = entry_point_of(wish.name, w);
  if (c == nullptr) return refused(wish, "does not convert between these formats");
  if (!c->irregular.empty() && !wish.allow_irregular) return refused(wish, c->irregular.data());
  if (!has_matrix(*c, matrix_of(w)))
    return wrong(MORVANE_VIA, "options.via", matrix_of(w), 0, "is \"%.60s\", which does not have the matrix BT.%d",
                 wish.name, matrix_of(w));
  if (wish.rescale && c->extra != catalogue::argument::rescale)
    return wrong(MORVANE_VIA, "options.rescale", 1, 0, "is set, and %.60s does not stretch luma", wish.name);
  for (const shape* s : {&w.from, &w.to})
    if (const problem p = check_size(wish, *s); is_wrong(p)) return p;
  w.by = c;
  w.is_via = true;
  for (const shape* s : {&w.from, &w.to})
    if (!is_of_int(scratch_stride(w, *s)))
      return wrong(MORVANE_VIA, "options.via", s->width, 0, "is \"%.60s\", for which rows of %d pixels are too long",
                   wish.name, s->width);
  w.argument = c->extra == catalogue::argument::color_space ? matrix_of(w) : wish.rescale ? 1 : 0;
  return none();
}

void copy_planes(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                 const int rows, const copy_bytes copy) {
  for (size_t i = 0; i < w.to.plane_count; ++i) {
    if (w.copy_of[i] < 0) continue;
    const auto original = static_cast<size_t>(w.copy_of[i]);
    const int64_t row_bytes = w.to.planes[i].layout->row_bytes(w.to.width);
    const int64_t count = rows_of(w.to, i, rows);
    const bool is_tight = source.stride[original] == row_bytes && destination.stride[i] == row_bytes;
    const auto bytes = static_cast<size_t>(is_tight ? row_bytes * count : row_bytes);
    const uint8_t* from = row_of(source, w.from, original, first);
    uint8_t* to = row_of(destination, w.to, i, first);
    for (int64_t row = 0; row < (is_tight ? 1 : count); ++row)
      copy(to + destination.stride[i] * row, from + source.stride[original] * row, bytes);
  }
}

// Row by row, because several planes may be made of the same row of the source.
void rearrange_planes(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                      const int rows, const bool streams) {
  for (int row = first; row < first + rows; ++row)
    for (const rearrangement& r : w.rearranged) rearrange_row(r, w.from, source, w.to, destination, row, streams);
}

int64_t direct_scratch_bytes(const way& w) {
  if (!w.is_via) return 0;
  const auto planes = [&](const shape& s) { return static_cast<int64_t>(s.plane_count) * scratch_stride(w, s); };
  return unit_rows(w) * (planes(w.from) + planes(w.to));
}

bool suits(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
           const int rows) {
  if (w.by == nullptr) return false;
  if (w.is_via) return true;
  return first % unit_rows(w) == 0 && rows % unit_rows(w) == 0 && can_be_called(w, source, destination);
}

void convert_directly(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                      const int rows, void* scratch) {
  const auto call_from = [&](const int row, const int count) {
    call(w, planes_from<const uint8_t>(source, w.from, row), planes_from<uint8_t>(destination, w.to, row), count);
  };
  if (!w.is_via) return call_from(first, rows);

  // Unit by unit, so that what is irregular about a line is so with all strides and bands.
  const int unit = unit_rows(w);
  if (!touches_more(w) && can_be_called(w, source, destination)) {
    for (int row = first; row < first + rows; row += unit) call_from(row, std::min(unit, first + rows - row));
    return;
  }
  rows_in_scratch through(w, scratch);
  for (int row = first; row < first + rows; row += unit)
    through.convert(source, destination, row, std::min(unit, first + rows - row));
}

}  // namespace Processing::Morvane::checked
