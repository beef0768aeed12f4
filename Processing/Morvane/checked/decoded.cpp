#include "decoded.h"

#include <algorithm>
#include <array>
#include <utility>

#include "../backend/dispatch.h"
#include "bytes_and_pairs.h"
#include "way.h"

namespace Processing::Morvane::checked {

namespace {

namespace kernel = format_conversion::kernel;
using catalogue::sample_type;

// The kernels.

constexpr size_t most_rows = 5;
using source_rows = std::array<const uint8_t*, most_rows>;

// A row of luma or of all components comes first. Of planes of chroma there are two rows each, a near and a far one.
struct kernel_entry {
  std::array<int, most_rows> read{};  // bytes of a pair in each row of the source
  int low_bits = 0;
  bool begins_with_luma = true;
  int written = 0;  // bytes of a pair
  void (*run)(const source_rows& from, uint8_t* to, int pairs, const decoder& by, bool filters) = nullptr;
};

template <class Reader, class Writer, size_t... row>
void run(const source_rows& from, std::index_sequence<row...>, uint8_t* to, const int pairs, const decoder& by,
         const bool filters) {
  kernel::decode<Reader, Writer> k{};
  static_cast<kernel::narrow_coefficients_to_rgb&>(k) = by.coefficients;
  k.to.places = by.places;
  k.next = filters ? Reader::bytes_to_next : 0;
  if constexpr (requires { k.from.kept; }) k.from.kept = by.kept;
  backend::line_of<kernel::decode<Reader, Writer>>()(from[row]..., to, pairs, k);
}

template <class Reader, class Writer, class... From>
constexpr kernel_entry entry_of(kernel::decode<Reader, Writer, kernel::plane_list<From...>>) {
  return {{From::bytes...},
          Reader::low_bits,
          Reader::begins_with_luma,
          2 * Writer::bytes,
          [](const source_rows& from, uint8_t* to, const int pairs, const decoder& by, const bool filters) {
            run<Reader, Writer>(from, std::index_sequence_for<From...>(), to, pairs, by, filters);
          }};
}

template <class... Kernel>
constexpr auto entries_of(kernel::kernel_list<Kernel...>) {
  return std::array{entry_of(Kernel())...};
}

constexpr auto kernels = entries_of(kernel::decode_kernels());

// Layouts.

bool filters_chroma(const way& w) {
  return w.how.filter == chroma_filter::linear;
}

bool reads(const kernel_entry& k, const shape& s, const plane_numbers& planes) {
  std::array<int, most_rows> bytes{};
  size_t row = 0;
  for (const size_t i : planes) {
    const catalogue::plane& p = *s.planes[i].layout;
    if (p.group_pixels > 2 || low_bits(p.sample) != k.low_bits) return false;
    if (p.sample != sample_type::u8 && p.sample != sample_type::u16 && k.low_bits == 0) return false;
    for (int rows = i == planes[0] ? 1 : 2; rows > 0; --rows) bytes[row++] = static_cast<int>(p.row_bytes(2));
  }
  return bytes == k.read && (s.planes[planes[0]].items[0] == first) == k.begins_with_luma;
}

// Of R, G, B and 255. If Cb and Cr are exchanged, so are red and blue.
uint32_t places_in(const stored_plane& p, const bool exchanged) {
  uint32_t places = 0;
  for (int i = 0; i < p.item_count; ++i) {
    const component c = p.items[static_cast<size_t>(i)];
    const uint32_t place = c == first ? (exchanged ? 2 : 0) : c == third ? (exchanged ? 0 : 2) : c == second ? 1 : 3;
    places |= place << 8 * i;
  }
  return places;
}

bool is_matrix_alone(const way& w) {
  const bool between_neighbours = w.how.filter == chroma_filter::nearest || w.how.siting == kernel::siting::left;
  return w.has_to_rgb && w.narrow && w.doubles_columns && between_neighbours && !w.composites && !w.narrows_rgb &&
         !w.has_from_rgb && !w.has_luminance && !(w.from.has_alpha && w.to.has_alpha);
}

decoder decoder_with(const size_t kernel, const way& w, const plane_numbers& planes) {
  const stored_plane& chroma = w.from.planes[planes[planes.size() - 1]];
  const bool exchanged = begins_with_cr(chroma);
  decoder result = {kernel, planes, places_in(w.to.planes[0], exchanged), kept_bits(chroma), w.narrow_to};
  if (!exchanged) return result;
  std::swap(result.coefficients.r_cr, result.coefficients.b_cb);
  std::swap(result.coefficients.g_cr, result.coefficients.g_cb);
  return result;
}

// Rows.

// Of the source: the rows that a kernel reads for one of the image.
source_rows rows_for(const way& w, const morvane_picture& source, const int row) {
  const plane_numbers& planes = w.decoded->planes;
  const auto at = [&](const size_t plane, const int of_plane) {
    return static_cast<const uint8_t*>(source.data[plane]) + source.stride[plane] * of_plane;
  };
  source_rows rows{};
  rows[0] = at(planes[0], row);
  const int near = w.from.half_height ? row / 2 : row;
  const int far = w.from.half_height && filters_chroma(w) ? w.from.chroma_row_beside(row) : near;
  for (size_t i = 1; i < planes.size(); ++i) {
    rows[2 * i - 1] = at(planes[i], near);
    rows[2 * i] = at(planes[i], far);
  }
  return rows;
}

// The last pair passes through memory of its own, where it is followed by itself, and where its second pixel is the
// first one if that is the last of the row.
void decode_last_pair(const kernel_entry& k, const way& w, const source_rows& from, uint8_t* to) {
  constexpr size_t most_bytes = 4;
  const int pairs = (w.from.width - 1) / 2;
  const bool is_whole = w.from.width % 2 == 0;
  const bool has_own_luma = k.read[1] != 0;
  uint8_t gathered[most_rows][2 * most_bytes] = {};
  source_rows rows{};
  for (size_t i = 0; i < most_rows && k.read[i] != 0; ++i) {
    const int bytes = i == 0 && has_own_luma && !is_whole ? k.read[i] / 2 : k.read[i];
    const uint8_t* last = from[i] + int64_t{pairs} * k.read[i];
    std::copy_n(last, bytes, gathered[i]);
    std::copy_n(last, bytes, gathered[i] + bytes);
    rows[i] = gathered[i];
  }
  uint8_t made[2 * most_bytes];
  k.run(rows, made, 1, *w.decoded, filters_chroma(w));
  std::copy_n(made, is_whole ? k.written : k.written / 2, to + int64_t{pairs} * k.written);
}

}  // namespace

std::optional<decoder> find_decoder(const way& w) {
  if (!is_matrix_alone(w) || !is_of_bytes(w.to)) return {};
  const plane_numbers planes = planes_of_rows(w.from);
  if (planes.size() == 0) return {};
  for (size_t i = 0; i < kernels.size(); ++i)
    if (reads(kernels[i], w.from, planes) && kernels[i].written == w.to.planes[0].layout->row_bytes(2))
      return decoder_with(i, w, planes);
  return {};
}

void decode_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                 const int rows) {
  const kernel_entry& k = kernels[w.decoded->kernel];
  for (int row = first; row < first + rows; ++row) {
    const source_rows from = rows_for(w, source, row);
    auto* to = static_cast<uint8_t*>(destination.data[0]) + destination.stride[0] * row;
    k.run(from, to, (w.from.width - 1) / 2, *w.decoded, filters_chroma(w));
    decode_last_pair(k, w, from, to);
  }
}

}  // namespace Processing::Morvane::checked
