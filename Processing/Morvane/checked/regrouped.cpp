#include "regrouped.h"

#include <algorithm>
#include <array>
#include <utility>

#include "../backend/dispatch.h"
#include "../kernel/keyed_rows.h"
#include "../kernel/regrouped_rows.h"
#include "bytes_and_pairs.h"
#include "layout.h"
#include "way.h"

namespace Processing::Morvane::checked {

namespace {

namespace kernel = format_conversion::kernel;
using catalogue::sample_type;
using kernel::first_of_pair;

constexpr int pixels_of_v210 = 6;

// Layouts that kernels know.
enum class grouping {
  other,
  v210,
  words,
  planes_of_tens,
  uyvy,
  yuy2,
  fives,
  yua_yva,
  keyed_words,
  keyed_planes_of_tens,
  keyed_pairs
};

using items_of_pair = std::array<component, 4>;

grouping grouping_of_one_plane(const stored_plane& p) {
  const catalogue::plane& layout = *p.layout;
  const bool begins_with_luma = p.items == items_of_pair{first, second, first, third};
  const bool begins_with_cb = p.items == items_of_pair{second, first, third, first};
  if (layout.sample == sample_type::u32_3x10 && layout.group_pixels == pixels_of_v210) return grouping::v210;
  if (layout.sample == sample_type::stream_10 && layout.group_bytes == 5 && begins_with_cb &&
      layout.order == catalogue::byte_order::big_endian)
    return grouping::fives;
  if (layout.sample != sample_type::u8 || layout.group_bytes != 4) return grouping::other;
  return begins_with_luma ? grouping::yuy2 : begins_with_cb ? grouping::uyvy : grouping::other;
}

bool all_are(const sample_type sample, const shape& s) {
  return std::all_of(s.planes.begin(), s.planes.begin() + static_cast<ptrdiff_t>(s.plane_count),
                     [&](const stored_plane& p) { return p.layout->sample == sample; });
}

grouping grouping_with_key(const shape& s) {
  const stored_plane& p = s.planes[0];
  const bool has_alpha_apart = s.plane_count > 1 && s.planes[s.plane_count - 1].item_count == 1;
  if (s.half_height) return grouping::other;
  if (s.plane_count == 1 && p.layout->sample == sample_type::u32_3x10 && p.layout->group_pixels == 2)
    return grouping::yua_yva;
  if (!has_alpha_apart) return grouping::other;
  if (s.plane_count == 2 && all_are(sample_type::u8, s) && grouping_of_one_plane(p) == grouping::uyvy)
    return grouping::keyed_pairs;
  if (s.plane_count == 3 && all_are(sample_type::u16, s) && s.planes[1].items[0] == second && s.depth == 16)
    return grouping::keyed_words;
  if (s.plane_count == 4 && all_are(sample_type::u16_low10, s)) return grouping::keyed_planes_of_tens;
  return grouping::other;
}

grouping grouping_of(const shape& s) {
  if (s.colour != model::ycbcr || !s.half_width) return grouping::other;
  if (s.has_alpha) return grouping_with_key(s);
  if (s.plane_count == 1) return grouping_of_one_plane(s.planes[0]);
  if (s.plane_count == 2 && all_are(sample_type::u16, s) && s.planes[1].items[0] == second) return grouping::words;
  if (s.plane_count == 3 && all_are(sample_type::u16_low10, s)) return grouping::planes_of_tens;
  return grouping::other;
}

// Luma first, then Cb, Cr and alpha.
plane_numbers planes_of(const shape& s) {
  plane_numbers planes = planes_of_colours(s);
  if (s.has_alpha && !planes.contains(s.plane_with(alpha))) planes.add(s.plane_with(alpha));
  return planes;
}

// The kernels.

using source_rows = std::array<const uint8_t*, MORVANE_MAX_PLANES>;
using destination_rows = std::array<uint8_t*, MORVANE_MAX_PLANES>;

template <class Reader, class Writer, size_t... s, size_t... d>
void run(const source_rows& from, std::index_sequence<s...>, const destination_rows& to, std::index_sequence<d...>,
         const int units, [[maybe_unused]] const uint16_t kept, const bool streams) {
  using k = kernel::regroup<Reader, Writer>;
  k made{};
  made.streams = streams;
  if constexpr (requires { made.from.kept; }) made.from.kept = kept;
  backend::line_of<k>()(from[s]..., to[d]..., units, made);
}
template <class Reader, class Writer>
void run_kernel(const source_rows& from, const destination_rows& to, const int units, const uint16_t kept,
                const bool streams) {
  run<Reader, Writer>(from, std::make_index_sequence<Reader::planes::sources>(), to,
                      std::make_index_sequence<Writer::planes::destinations>(), units, kept, streams);
}

struct kernel_entry {
  grouping from, to;
  bool from_half_height, to_half_height;
  void (*run)(const source_rows& from, const destination_rows& to, int units, uint16_t kept, bool streams);
  int pixels = pixels_of_v210;  // of a unit
};

template <class Reader, class Writer>
constexpr kernel_entry keyed_entry(const grouping from, const grouping to) {
  return {from, to, false, false, run_kernel<Reader, Writer>, 2};
}

using kernel::read_keyed_pairs;
using kernel::read_keyed_planes_of_tens;
using kernel::read_keyed_words;
using kernel::read_v210;
using kernel::read_yua_yva;
using kernel::write_keyed_pairs;
using kernel::write_keyed_planes_of_tens;
using kernel::write_keyed_words;
using kernel::write_v210;
using kernel::write_yua_yva;

constexpr kernel_entry kernels[] = {
    {grouping::v210, grouping::words, false, false, run_kernel<read_v210, kernel::write_words>},
    {grouping::v210, grouping::words, false, true, run_kernel<kernel::read_two_rows_of_v210, kernel::write_words>},
    {grouping::v210, grouping::planes_of_tens, false, false, run_kernel<read_v210, kernel::write_planes_of_tens>},
    {grouping::v210, grouping::uyvy, false, false, run_kernel<read_v210, kernel::write_pairs<first_of_pair::chroma>>},
    {grouping::v210, grouping::yuy2, false, false, run_kernel<read_v210, kernel::write_pairs<first_of_pair::luma>>},
    {grouping::v210, grouping::fives, false, false, run_kernel<read_v210, kernel::write_fives>},
    {grouping::words, grouping::v210, false, false, run_kernel<kernel::read_words_of_six, write_v210>},
    {grouping::words, grouping::v210, true, false, run_kernel<kernel::read_words_between_rows, write_v210>},
    {grouping::planes_of_tens, grouping::v210, false, false, run_kernel<kernel::read_planes_of_tens, write_v210>},
    {grouping::uyvy, grouping::v210, false, false, run_kernel<kernel::read_pairs<first_of_pair::chroma>, write_v210>},
    {grouping::yuy2, grouping::v210, false, false, run_kernel<kernel::read_pairs<first_of_pair::luma>, write_v210>},
    {grouping::fives, grouping::v210, false, false, run_kernel<kernel::read_fives, write_v210>},
    keyed_entry<read_yua_yva, write_keyed_words>(grouping::yua_yva, grouping::keyed_words),
    keyed_entry<read_yua_yva, write_keyed_planes_of_tens>(grouping::yua_yva, grouping::keyed_planes_of_tens),
    keyed_entry<read_yua_yva, write_keyed_pairs>(grouping::yua_yva, grouping::keyed_pairs),
    keyed_entry<read_keyed_words, write_yua_yva>(grouping::keyed_words, grouping::yua_yva),
    keyed_entry<read_keyed_words, write_keyed_planes_of_tens>(grouping::keyed_words, grouping::keyed_planes_of_tens),
    keyed_entry<read_keyed_words, write_keyed_pairs>(grouping::keyed_words, grouping::keyed_pairs),
    keyed_entry<read_keyed_planes_of_tens, write_yua_yva>(grouping::keyed_planes_of_tens, grouping::yua_yva),
    keyed_entry<read_keyed_planes_of_tens, write_keyed_words>(grouping::keyed_planes_of_tens, grouping::keyed_words),
    keyed_entry<read_keyed_planes_of_tens, write_keyed_pairs>(grouping::keyed_planes_of_tens, grouping::keyed_pairs),
    keyed_entry<read_keyed_pairs, write_yua_yva>(grouping::keyed_pairs, grouping::yua_yva),
    keyed_entry<read_keyed_pairs, write_keyed_planes_of_tens>(grouping::keyed_pairs, grouping::keyed_planes_of_tens),
};
// Of 4:2:0, the lower one of two rows of the image.
constexpr auto run_luma = run_kernel<read_v210, kernel::write_luma>;

// Rows.

// What is left of a row behind whole units passes through lines, of few samples.
class rest_of_row {
 public:
  rest_of_row(const way& w, const morvane_picture& source, const int row, const int first_column)
      : way_(w), source_(source), column_(first_column), pixels_(w.from.width - first_column) {
    for (const int i : {first, second, third, alpha}) near_.of[i] = memory_[i] + margin;
    far_ = near_;
    for (const int i : {second, third}) far_.of[i] = memory_[i + 3] + margin;
    read(row, near_, row);
    if (w.from.half_height == w.to.half_height) return;
    component_lines chroma = far_;
    chroma.of[first] = memory_[6] + margin;
    read(row, chroma, way_.far_row_of_chroma(row));
    for (const int i : {second, third}) weigh(near_.of[i], far_.of[i]);
  }

  void write(const morvane_picture& destination, const int row) {
    for (const component i : {first, second, third, alpha}) repeat_last(near_.of[i], way_.to.samples_of(i, pixels_));
    for (size_t i = 0; i < way_.to.plane_count; ++i) {
      const stored_plane& p = way_.to.planes[i];
      if (row % p.layout->image_rows != 0) continue;
      uint8_t* at = row_of(destination, way_.to, i, row) + p.layout->row_bytes(column_);
      write_row(p, at, pixels_, near_, fills_words(way_.to));
    }
  }

 private:
  static constexpr int margin = 32;
  static constexpr int samples = 2 * margin;

  const way& way_;
  const morvane_picture& source_;
  const int column_;
  const int pixels_;
  uint16_t memory_[7][margin + samples] = {};
  component_lines near_;
  component_lines far_;

  void read(const int row, const component_lines& to, const int of_chroma) const {
    for (size_t i = 0; i < way_.from.plane_count; ++i) {
      const stored_plane& p = way_.from.planes[i];
      const uint8_t* at = row_of(source_, way_.from, i, p.has(second) || p.has(third) ? of_chroma : row);
      read_row(p, at + p.layout->row_bytes(column_), pixels_, to, fills_words(way_.from));
    }
  }
  void weigh(uint16_t* near, const uint16_t* far) const {
    for (int i = 0; i < way_.from.chroma_samples(pixels_); ++i)
      near[i] = way_.from.half_height ? kernel::nearer_to_first(near[i], far[i]) : kernel::average_up(near[i], far[i]);
  }
  static void repeat_last(uint16_t* line, const int count) { std::fill(line + count, line + samples, line[count - 1]); }
};

// The rows that a kernel reads for one of the image.
source_rows rows_read(const way& w, const morvane_picture& source, const int row) {
  const plane_numbers& planes = w.regrouped->read;
  auto rows = rows_of<source_rows>(source, w.from, planes, row);
  if (w.from.half_height != w.to.half_height)
    rows[planes.size()] = row_of(source, w.from, planes[w.from.half_height ? 1 : 0], w.far_row_of_chroma(row));
  return rows;
}

}  // namespace

std::optional<regrouping> find_regrouping(const way& w) {
  if (computes(w)) return {};
  const grouping from = grouping_of(w.from), to = grouping_of(w.to);
  for (const kernel_entry& k : kernels) {
    if (k.from != from || k.to != to) continue;
    if (k.from_half_height != w.from.half_height || k.to_half_height != w.to.half_height) continue;
    if (k.to_half_height && w.to.depth != 10) return {};
    const uint16_t kept = from == grouping::words ? kept_bits(w.from.planes[0]) : 65535;
    return regrouping{static_cast<size_t>(&k - kernels), planes_of(w.from), planes_of(w.to), kept};
  }
  return {};
}

void regroup_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                  const int rows, const bool streams) {
  const regrouping& by = *w.regrouped;
  const int pixels = kernels[by.kernel].pixels;
  const int units = w.from.width / pixels;
  for (int row = first; row < first + rows; ++row) {
    const bool has_chroma = !w.to.half_height || row % 2 == 0;
    const auto to = rows_of<destination_rows>(destination, w.to, by.written, row);
    const auto run = has_chroma ? kernels[by.kernel].run : run_luma;
    run(rows_read(w, source, row), to, units, by.kept, streams);
    if (w.from.width % pixels != 0) rest_of_row(w, source, row, units * pixels).write(destination, row);
  }
}

}  // namespace Processing::Morvane::checked
