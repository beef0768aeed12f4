#include "decoded.h"

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>

#include "../backend/dispatch.h"
#include "bytes_and_pairs.h"
#include "layout.h"
#include "way.h"

namespace Processing::Morvane::checked {

namespace {

namespace kernel = format_conversion::kernel;
using catalogue::sample_type;
using kernel::rgb_samples;

// The kernels.

constexpr size_t most_rows = 5;
constexpr size_t most_written = 3;
using source_rows = std::array<const uint8_t*, most_rows>;
using destination_rows = std::array<uint8_t*, most_written>;

struct how_to_run {
  bool filters = false;
  bool ends_row = true;
  bool streams = false;
};

// Of the source, a row of luma or of all components comes first. Of planes of chroma there are two rows each, a near
// and a far one.
struct kernel_entry {
  std::array<int, most_rows> read{};  // bytes of a pair in each row of the source
  bool in_lower_bits = false;
  bool begins_with_luma = true;
  bool is_narrow = true;
  rgb_samples samples = rgb_samples::bytes;
  std::array<int, most_written> written{};  // bytes of a pair in each row of the destination
  void (*run)(const source_rows& from, const destination_rows& to, int pairs, const decoder& by,
              const how_to_run& how) = nullptr;
};

template <class Writer>
void set_writer(Writer& to, const decoder& by) {
  if constexpr (requires { to.places; }) to.places = by.places;
  if constexpr (requires { to.exchanged; }) to.exchanged = by.begins_with_blue ? 65535 : 0;
  if constexpr (requires { to.by; }) to.by = by.luminance;
  if constexpr (requires { to.as; }) {
    to.as.order = {by.is_big_endian};
    to.as.set = by.fills_unused_bits ? 0xc000 : 0;
  }
}

template <class Reader, class Matrix, class Writer, size_t... row, size_t... written>
void run(const source_rows& from, std::index_sequence<row...>, const destination_rows& to,
         std::index_sequence<written...>, const int pairs, const decoder& by, const how_to_run& how) {
  kernel::decode<Reader, Matrix, Writer> k{};
  if constexpr (std::is_same_v<Matrix, kernel::narrow_matrix>)
    static_cast<Matrix&>(k) = by.narrow;
  else
    static_cast<Matrix&>(k) = by.wide;
  set_writer(k.to, by);
  k.repeats_last = how.ends_row;
  k.streams = how.streams;
  k.next = how.filters ? Reader::bytes_to_next : 0;
  if constexpr (requires { k.from.kept; }) k.from.kept = by.kept;
  if constexpr (requires { k.from.has_fine_bits; }) k.from.has_fine_bits = by.has_fine_bits;
  if constexpr (requires { k.from.up; }) k.from.up = by.up;
  backend::line_of<kernel::decode<Reader, Matrix, Writer>>()(from[row]..., to[written]..., pairs, k);
}

template <class Reader, class Matrix, class Writer, class... From, class... To>
constexpr kernel_entry entry_of(
    kernel::decode<Reader, Matrix, Writer, kernel::plane_list<From...>, kernel::plane_list<To...>>) {
  return {{From::bytes...},
          Reader::in_lower_bits,
          Reader::begins_with_luma,
          std::is_same_v<Matrix, kernel::narrow_matrix>,
          Writer::samples,
          {To::bytes...},
          [](const source_rows& from, const destination_rows& to, const int pairs, const decoder& by,
             const how_to_run& how) {
            run<Reader, Matrix, Writer>(from, std::index_sequence_for<From...>(), to, std::index_sequence_for<To...>(),
                                        pairs, by, how);
          }};
}

template <class... Kernel>
constexpr auto entries_of(kernel::kernel_list<Kernel...>) {
  return std::array{entry_of(Kernel())...};
}

constexpr auto kernels = entries_of(kernel::decode_kernels());

// Layouts.

// Samples of all 16 bits are both upper and lower ones.
bool reads(const kernel_entry& k, const catalogue::plane& p) {
  if (p.group_pixels > 2) return false;
  if (low_bits(p.sample) != 0) return k.in_lower_bits;
  if (p.sample == sample_type::u16) return !k.in_lower_bits || p.depth() == 16;
  return p.sample == sample_type::u8;
}

bool reads(const kernel_entry& k, const shape& s, const plane_numbers& planes) {
  std::array<int, most_rows> bytes{};
  size_t row = 0;
  for (const size_t i : planes) {
    const catalogue::plane& p = *s.planes[i].layout;
    if (!reads(k, p)) return false;
    for (int rows = i == planes[0] ? 1 : 2; rows > 0; --rows) bytes[row++] = static_cast<int>(p.row_bytes(2));
  }
  return bytes == k.read && (s.planes[planes[0]].items[0] == first) == k.begins_with_luma;
}

std::optional<rgb_samples> samples_of(const stored_plane& p, const model colour) {
  if (colour != model::luminance) return samples_of(p);
  if (p.layout->sample != sample_type::u8) return {};
  return rgb_samples::luminance;
}

// The planes of the destination in the order of the rows that kernels write; none where there is more than RGB or
// luminance.
plane_numbers planes_written(const shape& s) {
  if (s.colour == model::luminance && s.plane_count == 1) {
    plane_numbers luminance;
    luminance.add(0);
    return luminance;
  }
  if (s.colour != model::rgb) return {};
  const plane_numbers planes = planes_of_colours(s);
  return planes.size() == s.plane_count ? planes : plane_numbers();
}

bool writes(const kernel_entry& k, const shape& s, const plane_numbers& planes) {
  std::array<int, most_written> bytes{};
  for (size_t i = 0; i < planes.size(); ++i) {
    const stored_plane& p = s.planes[planes[i]];
    if (p.layout->group_pixels != 1 || samples_of(p, s.colour) != k.samples) return false;
    bytes[i] = static_cast<int>(p.layout->row_bytes(2));
  }
  return bytes == k.written;
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
  return w.has_to_rgb && w.doubles_columns && w.has_chroma_at_even_pixels() && !w.composites && !w.narrows_rgb &&
         !w.has_from_rgb && !(w.from.has_alpha && w.to.has_alpha);
}

template <class Coefficients>
void exchange_chroma(Coefficients& c) {
  std::swap(c.r_cr, c.b_cb);
  std::swap(c.g_cr, c.g_cb);
}

decoder decoder_with(const size_t kernel, const way& w, const plane_numbers& planes, const plane_numbers& written) {
  const stored_plane& chroma = w.from.planes[planes[planes.size() - 1]];
  const stored_plane& pixels = w.to.planes[written[0]];
  const bool exchanged = begins_with_cr(chroma);
  decoder result{};
  result.kernel = kernel;
  result.planes = planes;
  result.written = written;
  result.kept = kept_bits(chroma);
  result.has_fine_bits = w.from.depth > 14;
  result.up = low_bits(chroma.layout->sample) != 0 ? 16 - low_bits(chroma.layout->sample) : 0;
  result.narrow = {w.narrow_to};
  result.wide = {w.wide_to};
  result.luminance = w.luminance;
  result.places = places_in(pixels, exchanged);
  result.is_big_endian = pixels.layout->order == catalogue::byte_order::big_endian;
  result.begins_with_blue = (pixels.items[0] == third) != (exchanged != result.is_big_endian);
  result.fills_unused_bits = pixels.item_count == 4;
  if (!exchanged) return result;
  exchange_chroma(result.narrow);
  exchange_chroma(result.wide);
  std::swap(result.luminance.r, result.luminance.b);
  return result;
}

// Rows.

// Of the source: the rows that a kernel reads for one of the image.
source_rows rows_for(const way& w, const morvane_picture& source, const int row) {
  const plane_numbers& planes = w.decoded->planes;
  source_rows rows{};
  rows[0] = row_of(source, w.from, planes[0], row);
  for (size_t i = 1; i < planes.size(); ++i) {
    rows[2 * i - 1] = row_of(source, w.from, planes[i], row);
    rows[2 * i] = row_of(source, w.from, planes[i], w.far_row_of_chroma(row));
  }
  return rows;
}

// A last pixel without a second one passes through memory of its own, as a pair.
void decode_last_pixel(const kernel_entry& k, const decoder& by, const source_rows& from, const destination_rows& to) {
  constexpr size_t most_bytes = 4, most_bytes_written = 24;
  const bool has_own_luma = k.read[1] != 0;
  uint8_t gathered[most_rows][most_bytes] = {}, made[most_written][most_bytes_written];
  source_rows rows{};
  for (size_t i = 0; i < most_rows && k.read[i] != 0; ++i) {
    std::copy_n(from[i], i == 0 && has_own_luma ? k.read[i] / 2 : k.read[i], gathered[i]);
    rows[i] = gathered[i];
  }
  k.run(rows, {made[0], made[1], made[2]}, 1, by, {});
  for (size_t i = 0; i < most_written && k.written[i] != 0; ++i) std::copy_n(made[i], k.written[i] / 2, to[i]);
}

// The pairs of a row, and a last pixel, into whose chroma the last pair's filter looks.
void decode_row(const kernel_entry& k, const way& w, const source_rows& from, const destination_rows& to,
                const bool streams) {
  const int pairs = w.from.width / 2;
  const bool has_last_pixel = w.from.width % 2 != 0;
  if (pairs > 0) k.run(from, to, pairs, *w.decoded, {w.filters_chroma(), !has_last_pixel, streams});
  if (has_last_pixel) decode_last_pixel(k, *w.decoded, units_on(from, k.read, pairs), units_on(to, k.written, pairs));
}

}  // namespace

std::optional<decoder> find_decoder(const way& w) {
  if (!is_matrix_alone(w)) return {};
  const plane_numbers planes = planes_of_rows(w.from), written = planes_written(w.to);
  if (planes.size() == 0 || written.size() == 0) return {};
  for (size_t i = 0; i < kernels.size(); ++i)
    if (kernels[i].is_narrow == w.narrow && reads(kernels[i], w.from, planes) && writes(kernels[i], w.to, written))
      return decoder_with(i, w, planes, written);
  return {};
}

void decode_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                 const int rows, const bool streams) {
  const kernel_entry& k = kernels[w.decoded->kernel];
  for (int row = first; row < first + rows; ++row)
    decode_row(k, w, rows_for(w, source, row), rows_of<destination_rows>(destination, w.to, w.decoded->written, row),
               streams);
}

}  // namespace Processing::Morvane::checked
