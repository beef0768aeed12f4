#include "row_lines.h"

#include "../backend/dispatch.h"
#include "columns.h"

namespace Processing::Morvane::checked {

namespace {

constexpr int64_t margin = 32;  // in samples; a cache line

// A load waits for stores before it that have the lower 12 bits of its address. So no two of the lines that belong
// together may begin a multiple of 4096 bytes apart: the longest lines of pieces are 1696 bytes apart, and lines of
// rows leave a remainder of 704.
constexpr int64_t period = 2048;  // in samples
constexpr int64_t remainder_of_row = 352;

int64_t samples_for(const int columns) {
  const int64_t samples = (int64_t{columns} + margin - 1) / margin * margin + 4 * margin;
  if (columns <= most_columns) return samples;
  return (samples + period - 1 - remainder_of_row) / period * period + remainder_of_row;
}

constexpr int64_t alignment = 64;

// All components where something is computed, else those of planes that are made of lines.
std::array<bool, component_count> components_read(const way& w) {
  std::array<bool, component_count> result{};
  if (computes(w)) {
    result.fill(true);
    return result;
  }
  for (size_t i = 0; i < w.to.plane_count; ++i)
    for (size_t c = 0; c < result.size(); ++c)
      if (!w.is_direct(i) && w.to.planes[i].samples[c] > 0) result[c] = true;
  return result;
}

// Hands out lines one after the other; without memory it only counts them.
class lines_in_scratch {
 public:
  lines_in_scratch(uint16_t* memory, const way& w)
      : memory_(memory), width_(w.from.width), of_piece_(std::min(width_, most_columns)) {}

  uint16_t* line() { return next(of_piece_); }
  uint16_t* line_of(const uint16_t value) {
    uint16_t* result = line();
    kernel::fill_line k{};
    k.value = value;
    if (result != nullptr) backend::line_of<kernel::fill_line>()(result, of_piece_ + margin, k);
    return result;
  }
  chroma_lines chroma() {
    uint16_t* cb = line();
    return {cb, line()};
  }
  chroma_lines chroma_of_row() {
    uint16_t* cb = next(width_);
    return {cb, next(width_)};
  }
  int64_t samples() const { return samples_; }

 private:
  uint16_t* memory_;
  int width_;
  int of_piece_;
  int64_t samples_ = 0;

  uint16_t* next(const int columns) {
    uint16_t* result = memory_ == nullptr ? nullptr : memory_ + samples_ + margin;
    samples_ += samples_for(columns);
    return result;
  }
};

void add_lines_of_half_rows(lines_in_scratch& scratch, const way& w, row_lines& lines) {
  for (chroma_lines& c : lines.kept) c = scratch.chroma_of_row();
  lines.between = scratch.chroma();
  if (w.composites)
    for (uint16_t*& line : lines.keyed.of) line = scratch.line();
  lines.keyed.of[unused] = lines.read.of[unused];
}

row_lines lines_of(lines_in_scratch& scratch, const way& w, const row_needs& needs) {
  row_lines lines;
  for (const component i : {first, second, third}) lines.read.of[i] = scratch.line();
  if (needs.alpha) lines.read.of[alpha] = scratch.line();
  lines.read.of[unused] = scratch.line();
  if (w.from.half_height) add_lines_of_half_rows(scratch, w, lines);
  if (w.doubles_columns) lines.doubled = scratch.chroma();
  for (const component i : {first, second, third}) {
    if (w.has_to_rgb) lines.rgb.of[i] = scratch.line();
    if (w.has_from_rgb && (i == first || !needs.halves_in_matrix)) lines.ycbcr.of[i] = scratch.line();
  }
  if (w.has_luminance) lines.ycbcr.of[first] = scratch.line();
  if (w.halves_columns) lines.halved = scratch.chroma();
  if (needs.average_of_rows) {
    lines.averaged = scratch.chroma();
    lines.upper = scratch.chroma_of_row();
  }
  if (w.composites) lines.alpha_of_pairs = scratch.line();
  lines.neutral = scratch.line_of(32768);
  lines.ones = scratch.line_of(65535);
  return lines;
}

}  // namespace

row_needs needs_of(const way& w) {
  row_needs n;
  n.components = components_read(w);
  n.chroma = w.to.has_chroma && (n.components[second] || n.components[third]);
  n.half_rows = w.to.half_height && n.chroma;
  n.average_of_rows = n.half_rows && !w.keeps_half_rows && w.filters_chroma();
  n.halves_in_matrix =
      w.narrow && w.has_from_rgb && w.halves_columns && w.filters_chroma() && w.how.siting == kernel::siting::left;
  n.alpha = w.composites || (w.from.has_alpha && w.to.has_alpha);
  return n;
}

int64_t bytes_of_row_lines(const way& w) {
  lines_in_scratch counted(nullptr, w);
  lines_of(counted, w, needs_of(w));
  return counted.samples() * static_cast<int64_t>(sizeof(uint16_t)) + alignment;
}

row_lines row_lines_in(void* scratch, const way& w, const row_needs& needs) {
  const auto at = reinterpret_cast<uintptr_t>(scratch);
  lines_in_scratch lines(reinterpret_cast<uint16_t*>((at + alignment - 1) / alignment * alignment), w);
  return lines_of(lines, w, needs);
}

}  // namespace Processing::Morvane::checked
