#include "streamed.h"

#include <algorithm>
#include <cstring>

#include "../backend/dispatch.h"
#include "layout.h"

namespace Processing::Morvane::checked {

namespace {

using cache_lines = kernel::stream_cache_lines;
constexpr int64_t line_bytes = cache_lines::bytes;

// Of rows in scratch memory, as many as find room in the nearer caches beside the rows of the source that come next.
constexpr int64_t bytes_at_once = int64_t{64} << 10;

// What is stored before more of the source is asked for.
constexpr int64_t bytes_of_turn = 1024;

// Of all planes: some entry points take one stride alone.
int64_t stride_of(const shape& s) {
  int64_t bytes = 0;
  for (size_t i = 0; i < s.plane_count; ++i) bytes = std::max(bytes, s.planes[i].layout->row_bytes(s.width));
  return (bytes + line_bytes - 1) / line_bytes * line_bytes;
}

int64_t rows_in_scratch(const shape& s, const size_t plane, const int rows) {
  return s.planes[plane].layout->rows(rows);
}

int64_t bytes_of(const shape& s) {
  morvane_layout layout{};
  lay_out(s, 0, layout);
  return layout.bytes;
}

// Not a plane whose rows are copied apart, nor one that the destination has nothing of.
bool is_read(const way& w, const size_t plane) {
  const stored_plane& p = w.from.planes[plane];
  const auto copied = std::find(w.copy_of.begin(), w.copy_of.end(), static_cast<int>(plane));
  if (w.by == nullptr && copied != w.copy_of.end()) return false;
  if (p.has(alpha) && (w.to.has_alpha || w.composites)) return true;
  return p.has(first) || w.reads_chroma || w.from.colour == model::rgb;
}

// Rows of the source that are read next. They are asked for while others are stored, so that memory is read and written
// at the same time.
class rows_ahead {
 public:
  rows_ahead(const way& w, const morvane_picture& source, const int first, const int rows)
      : way_(w), source_(source), row_(first), end_(first + rows) {
    for (size_t i = 0; i < w.from.plane_count; ++i)
      if (is_read(w, i)) bytes_ += row_bytes(i) * rows_in_scratch(w.from, i, rows);
  }
  int64_t bytes() const { return bytes_; }

  // As many more bytes of them, or a few beyond.
  void expect(int64_t bytes) {
    for (; row_ < end_ && bytes > 0; next_plane())
      while (is_here() && done_ < row_bytes(plane_) && bytes > 0) bytes -= expect_run(bytes);
  }

 private:
  const way& way_;
  const morvane_picture& source_;
  int row_;
  int end_;
  size_t plane_ = 0;
  int64_t done_ = 0;  // of the row of this plane
  int64_t bytes_ = 0;

  int64_t row_bytes(const size_t plane) const { return way_.from.planes[plane].layout->row_bytes(way_.from.width); }
  bool is_here() const { return is_read(way_, plane_) && row_ % way_.from.planes[plane_].layout->image_rows == 0; }
  int64_t expect_run(const int64_t bytes) {
    const int64_t left = std::min(bytes, row_bytes(plane_) - done_);
    const auto lines = static_cast<int>((left + line_bytes - 1) / line_bytes);
    backend::line_of<kernel::expect_cache_lines>()(row_of(source_, way_.from, plane_, row_) + done_, lines);
    done_ += lines * line_bytes;
    return lines * line_bytes;
  }
  void next_plane() {
    if (is_here() && done_ < row_bytes(plane_)) return;
    done_ = 0;
    plane_ = (plane_ + 1) % way_.from.plane_count;
    if (plane_ == 0) ++row_;
  }
};

void stream_row(uint8_t* to, const uint8_t* from, int64_t bytes, rows_ahead& ahead, const int64_t ahead_of_turn) {
  while (bytes > 0) {
    const int64_t turn =
        std::min(bytes, bytes_of_turn - static_cast<int64_t>(reinterpret_cast<uintptr_t>(to) % line_bytes));
    stream_bytes(to, from, static_cast<size_t>(turn));
    ahead.expect(ahead_of_turn);
    to += turn;
    from += turn;
    bytes -= turn;
  }
}

// An entry point that was asked for may leave bytes as they are where it is irregular, and where a row ends with a part
// of a group.
bool fills_rows(const way& w) {
  if (!w.is_via) return true;
  const auto has_whole_groups = [&](const stored_plane& p) { return w.to.width % p.layout->group_pixels == 0; };
  const auto begin = w.to.planes.begin();
  return w.by->irregular.empty() &&
         std::all_of(begin, begin + static_cast<ptrdiff_t>(w.to.plane_count), has_whole_groups);
}

}  // namespace

// An entry point that gives the same bytes is left out then.
bool streams_in_one_pass(const way& w) {
  return !w.is_via && (w.meets_in_registers() || !w.needs_lines());
}

// Encoders compute for longer than memory takes: streaming saves nothing there, and would be half of their code once
// more. Where rows pass through scratch memory, the copy takes longer than it saves.
bool streams(const way& w, const store_kind wanted) {
  if (!fills_rows(w) || w.encoded) return false;
  const bool pays = streams_in_one_pass(w) && bytes_of(w.to) > MORVANE_MOST_CACHED;
  return wanted == store_kind::streaming || (wanted == store_kind::by_size && pays);
}

void stream_bytes(uint8_t* to, const uint8_t* from, const size_t bytes) {
  const size_t ahead = std::min<size_t>(bytes, (0 - reinterpret_cast<uintptr_t>(to)) % line_bytes);
  std::memcpy(to, from, ahead);
  size_t lines = (bytes - ahead) / line_bytes;
  to += ahead;
  from += ahead;
  while (lines > 0) {
    const size_t count = std::min<size_t>(lines, INT32_MAX);
    backend::line_of<cache_lines>()(from, to, static_cast<int>(count));
    lines -= count;
    to += count * line_bytes;
    from += count * line_bytes;
  }
  std::memcpy(to, from, (bytes - ahead) % line_bytes);
}

void finish_streaming() {
  backend::line_of<kernel::finish_streaming>()(0);
}

// Rows that share one of chroma belong together.
int streamed_rows(const way& w) {
  const int unit = w.from.half_height || w.to.half_height ? 2 : 1;
  const int64_t bytes = stride_of(w.to) * static_cast<int64_t>(w.to.plane_count);
  const int64_t rows = std::min<int64_t>(bytes_at_once / bytes, w.to.height) / unit * unit;
  return std::max(static_cast<int>(rows), unit);
}

int64_t streamed_scratch_bytes(const way& w) {
  if (!w.streams || streams_in_one_pass(w)) return 0;
  int64_t rows = 0;
  for (size_t i = 0; i < w.to.plane_count; ++i) rows += rows_in_scratch(w.to, i, streamed_rows(w));
  return rows * stride_of(w.to) + line_bytes;
}

// Upwards, so that the place of row 0, which is not there, lies behind them and not before the first address.
morvane_picture picture_in_scratch(const way& w, void* scratch, const int first) {
  const auto begin = (reinterpret_cast<uintptr_t>(scratch) + line_bytes - 1) / line_bytes * line_bytes;
  const int64_t stride = stride_of(w.to);
  auto next = static_cast<int64_t>(begin);
  morvane_picture picture{};
  picture.struct_size = sizeof picture;
  for (size_t i = 0; i < w.to.plane_count; ++i) {
    next += stride * rows_in_scratch(w.to, i, streamed_rows(w));
    const int64_t first_of_plane = first / w.to.planes[i].layout->image_rows;
    picture.data[i] = reinterpret_cast<void*>(next - stride + stride * first_of_plane);
    picture.stride[i] = -stride;
  }
  return picture;
}

void stream_rows(const way& w, const morvane_picture& made, const morvane_picture& destination,
                 const streamed_band& band) {
  const auto is_made = [&](const size_t plane) { return w.by != nullptr || w.copy_of[plane] < 0; };
  const auto row_bytes = [&](const size_t plane) { return w.to.planes[plane].layout->row_bytes(w.to.width); };
  int64_t turns = 1;
  for (size_t i = 0; i < w.to.plane_count; ++i)
    if (is_made(i)) turns += rows_in_scratch(w.to, i, band.rows) * row_bytes(i) / bytes_of_turn;
  rows_ahead ahead(w, band.source, band.first + band.rows, band.rows_ahead);
  const int64_t ahead_of_turn = ahead.bytes() / turns + line_bytes;
  for (size_t i = 0; i < w.to.plane_count; ++i)
    for (int64_t row = 0; is_made(i) && row < rows_in_scratch(w.to, i, band.rows); ++row)
      stream_row(row_of(destination, w.to, i, band.first) + destination.stride[i] * row,
                 row_of(made, w.to, i, band.first) + made.stride[i] * row, row_bytes(i), ahead, ahead_of_turn);
}

}  // namespace Processing::Morvane::checked
