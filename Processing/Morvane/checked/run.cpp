#include "run.h"

#include <algorithm>
#include <cstring>

#include "direct.h"
#include "rows.h"
#include "streamed.h"

namespace Processing::Morvane::checked {

namespace {

// More parts than hands, so that one which is late delays the others less. Lines of several rows are kept from one row
// to the next, so parts have some rows.
int rows_of_part(const way& w, const int hands) {
  constexpr int parts_of_hand = 4;
  constexpr int fewest = 4;
  const int height = w.from.height;
  const int rows = std::max(fewest, (height + hands * parts_of_hand - 1) / (hands * parts_of_hand));
  const int unit = std::max(2, row_granularity(w));
  return (rows + unit - 1) / unit * unit;
}

// Beside rows that are streamed.
int64_t own_scratch_bytes(const way& w) {
  const bool has_lines = !w.meets_in_registers() && w.needs_lines();
  return std::max(has_lines ? scratch_bytes(w) : 0, direct_scratch_bytes(w));
}

void copy_cached(uint8_t* to, const uint8_t* from, const size_t bytes) {
  std::memcpy(to, from, bytes);
}

// All planes that are not copied, those without lines past the caches if it is said.
void make_planes(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                 const int rows, void* scratch, const bool streams) {
  if (w.decoded) return decode_rows(w, source, destination, first, rows, streams);
  if (w.encoded) return encode_rows(w, source, destination, first, rows);
  if (w.regrouped) return regroup_rows(w, source, destination, first, rows, streams);
  rearrange_planes(w, source, destination, first, rows, streams);
  if (w.needs_lines()) convert_rows(w, source, destination, first, rows, scratch);
}

void run_cached(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                const int rows, void* scratch) {
  if (suits(w, source, destination, first, rows)) return convert_directly(w, source, destination, first, rows, scratch);
  copy_planes(w, source, destination, first, rows, copy_cached);
  make_planes(w, source, destination, first, rows, scratch, false);
}

// Rows are made in scratch memory, behind that of the way.
void stream_from_scratch(const way& w, const morvane_picture& source, const morvane_picture& destination,
                         const int first, const int rows, void* scratch) {
  const bool copies = w.by == nullptr;
  if (copies) copy_planes(w, source, destination, first, rows, stream_bytes);
  const int end = first + rows;
  void* made_in = static_cast<uint8_t*>(scratch) + own_scratch_bytes(w);
  for (int row = first, count = 0; row < end; row += count) {
    count = std::min(streamed_rows(w), end - row);
    const morvane_picture made = picture_in_scratch(w, made_in, row);
    if (copies)
      make_planes(w, source, made, row, count, scratch, false);
    else
      run_cached(w, source, made, row, count, scratch);
    stream_rows(w, made, destination, {source, row, count, std::min(streamed_rows(w), end - row - count)});
  }
}

void run_streaming(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                   const int rows, void* scratch) {
  if (streams_in_one_pass(w)) {
    copy_planes(w, source, destination, first, rows, stream_bytes);
    make_planes(w, source, destination, first, rows, scratch, true);
  } else {
    stream_from_scratch(w, source, destination, first, rows, scratch);
  }
  finish_streaming();
}

}  // namespace

int row_granularity(const way& w) {
  const bool pairs_of_source = w.is_via && w.from.half_height;
  return w.to.half_height || pairs_of_source ? 2 : 1;
}

int64_t scratch_bytes_of(const way& w) {
  return own_scratch_bytes(w) + streamed_scratch_bytes(w);
}

void run_band(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
              const int rows, void* scratch) {
  (w.streams ? run_streaming : run_cached)(w, source, destination, first, rows, scratch);
}

void run_all(const way& w, crew* hands, const morvane_picture& source, const morvane_picture& destination,
             void* scratch) {
  const int height = w.from.height;
  const auto run_alone = [&] { run_band(w, source, destination, 0, height, scratch); };
  if (hands == nullptr) return run_alone();
  const int rows = rows_of_part(w, hands->hands());
  const auto part = [&](const int hand, const int i) {
    const int first = i * rows;
    run_band(w, source, destination, first, std::min(rows, height - first),
             static_cast<uint8_t*>(scratch) + w.scratch_bytes * hand);
  };
  if (!hands->run((height - 1) / rows + 1, part)) run_alone();
}

}  // namespace Processing::Morvane::checked
