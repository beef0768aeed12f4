#include "encoded.h"

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

constexpr size_t most_rows = 6;
constexpr size_t most_written = 4;
using source_rows = std::array<const uint8_t*, most_rows>;
using destination_rows = std::array<uint8_t*, most_written>;

struct how_to_run {
  bool filters = false;
  bool begins_row = true;  // or follows a pixel
};

// Rows of luma or of all components come first.
struct kernel_entry {
  int read = 0;  // bytes of a pair in each row of the source
  size_t planes_read = 1;
  rgb_samples samples = rgb_samples::bytes;
  bool is_narrow = true;
  int rows = 1;                             // of the source, and of luma
  std::array<int, most_written> written{};  // bytes of a pair in each row of the destination
  int bytes_of_sample = 1;
  bool begins_with_luma = true;
  void (*run)(const source_rows& from, const destination_rows& to, int pairs, const encoder& by,
              const how_to_run& how) = nullptr;
};

template <class Reader>
void set_reader(Reader& from, const encoder& by) {
  if constexpr (requires { from.places; }) from.places = by.places;
  if constexpr (requires { from.exchanged; }) from.exchanged = by.begins_with_blue ? 65535 : 0;
  if constexpr (requires { from.lowest; }) {
    from.order = {by.is_big_endian};
    from.lowest = by.lowest;
  }
}

template <class Writer>
void set_writer(Writer& to, const encoder& by) {
  if constexpr (requires { to.kept; }) {
    to.half = by.half;
    to.down = by.down;
    to.kept = by.kept;
  }
}

template <class Kernel, size_t... s, size_t... d>
void run(const source_rows& from, std::index_sequence<s...>, const destination_rows& to, std::index_sequence<d...>,
         const int pairs, const encoder& by, const how_to_run& how) {
  Kernel k{};
  set_reader(k.from, by);
  set_writer(k.to, by);
  k.filters = how.filters;
  k.before_first = how.begins_row ? 0 : -1;
  if constexpr (std::is_same_v<decltype(k.matrix), kernel::narrow_encoding>)
    k.matrix = by.narrow;
  else
    k.matrix = by.wide;
  backend::line_of<Kernel>()(from[s]..., to[d]..., pairs, k);
}

template <class Reader, class Matrix, class Writer, int rows, class... From, class... To>
constexpr kernel_entry entry_of(
    kernel::encode<Reader, Matrix, Writer, rows, kernel::plane_list<From...>, kernel::plane_list<To...>>) {
  return {Reader::bytes_of_pair,
          sizeof...(From) / rows,
          Reader::samples,
          std::is_same_v<Matrix, kernel::narrow_encoding>,
          rows,
          {To::bytes...},
          Writer::bytes,
          Writer::begins_with_luma,
          [](const source_rows& from, const destination_rows& to, const int pairs, const encoder& by,
             const how_to_run& how) {
            run<kernel::encode<Reader, Matrix, Writer, rows>>(from, std::index_sequence_for<From...>(), to,
                                                              std::index_sequence_for<To...>(), pairs, by, how);
          }};
}

template <class... Kernel>
constexpr auto entries_of(kernel::kernel_list<Kernel...>) {
  return std::array{entry_of(Kernel())...};
}

constexpr auto kernels = entries_of(kernel::encode_kernels());

// Layouts.

// A kernel reads double words whether their samples lie above two bits or not.
bool reads(const kernel_entry& k, const stored_plane& rgb) {
  const std::optional<rgb_samples> found = samples_of(rgb);
  return k.samples == (found == rgb_samples::tens_above_two_bits ? rgb_samples::tens : found) &&
         k.read * rgb.layout->group_pixels == 2 * rgb.layout->group_bytes;
}

bool reads(const kernel_entry& k, const shape& s, const plane_numbers& planes) {
  return planes.size() == k.planes_read &&
         std::all_of(planes.begin(), planes.end(), [&](const size_t i) { return reads(k, s.planes[i]); });
}

// The bytes of samples of YCbCr that kernels write; 0 if they write no such samples.
int bytes_of_sample(const catalogue::plane& p) {
  if (p.group_pixels > 2) return 0;
  return p.sample == sample_type::u8 ? 1 : p.sample == sample_type::u16 || low_bits(p.sample) != 0 ? 2 : 0;
}

bool writes(const kernel_entry& k, const shape& s, const plane_numbers& planes) {
  std::array<int, most_written> bytes{};
  size_t row = 0;
  for (const size_t i : planes) {
    const catalogue::plane& p = *s.planes[i].layout;
    if (bytes_of_sample(p) != k.bytes_of_sample) return false;
    for (int times = i == planes[0] ? k.rows : 1; times > 0; --times) bytes[row++] = static_cast<int>(p.row_bytes(2));
  }
  return bytes == k.written && (s.planes[planes[0]].items[0] == first) == k.begins_with_luma;
}

// Its place, or the number of kernels if there is none.
size_t kernel_for(const way& w, const plane_numbers& planes, const int rows) {
  const auto suits = [&](const kernel_entry& k) {
    return k.rows == rows && k.is_narrow == w.narrow && reads(k, w.from, planes_of_colours(w.from)) &&
           writes(k, w.to, planes);
  };
  return static_cast<size_t>(std::find_if(kernels.begin(), kernels.end(), suits) - kernels.begin());
}

bool is_matrix_alone(const way& w) {
  return w.has_from_rgb && w.halves_columns && w.has_chroma_at_even_pixels() && !w.composites && !w.widens_rgb &&
         !w.has_to_rgb && !w.to.has_alpha;
}

// Whether a last pixel, if there is one, is stored by itself.
bool is_of_pixels_or_pairs(const shape& s) {
  return s.colour == model::rgb && (s.planes[0].layout->group_pixels == 1 || s.width % 2 == 0);
}

uint32_t place_of(const component c, const stored_plane& p) {
  return static_cast<uint32_t>(std::find(p.items.begin(), p.items.end(), c) - p.items.begin());
}

// Where Cb and Cr are exchanged, and red and blue with them.
template <class Coefficients>
void exchange_chroma(Coefficients& k) {
  std::swap(k.y_r, k.y_b);
  std::swap(k.cb_b, k.cr_r);
  std::swap(k.cb_g, k.cr_g);
  std::swap(k.cb_r, k.cr_b);
}

void set_reader_of(encoder& result, const stored_plane& rgb, const bool exchanged) {
  const component red = exchanged ? third : first, blue = exchanged ? first : third;
  result.places = place_of(red, rgb) | place_of(second, rgb) << 8 | place_of(blue, rgb) << 16;
  result.is_big_endian = rgb.layout->order == catalogue::byte_order::big_endian;
  result.begins_with_blue = (rgb.items[0] == blue) != result.is_big_endian;
  result.lowest = rgb.layout->unused_low_bits;
}

void set_writer_of(encoder& result, const stored_plane& luma) {
  result.half = half_step(luma);
  result.down = low_bits(luma.layout->sample) != 0 ? 16 - low_bits(luma.layout->sample) : 0;
  result.kept = static_cast<uint16_t>(kept_bits(luma) >> result.down);
}

// Of planes of their own, the order is that of the pointers.
encoder encoder_with(const size_t of_row, const size_t of_rows, const way& w, const plane_numbers& planes) {
  const bool exchanged = begins_with_cr(w.to.planes[planes[planes.size() - 1]]);
  encoder result{};
  result.of_row = of_row;
  result.of_rows = of_rows;
  result.planes = planes;
  result.narrow = {w.narrow_from};
  result.wide = {w.wide_from};
  result.read = planes_of_colours(w.from);
  if (exchanged) std::reverse(result.read.begin(), result.read.end());
  set_reader_of(result, w.from.planes[result.read[0]], exchanged);
  set_writer_of(result, w.to.planes[planes[0]]);
  if (!exchanged) return result;
  exchange_chroma(result.narrow.of);
  exchange_chroma(result.wide.of);
  return result;
}

// Rows.

class rows_of_way {
 public:
  rows_of_way(const way& w, const morvane_picture& source, const morvane_picture& destination)
      : way_(w), source_(source), destination_(destination) {}

  // One row, or two with their row of chroma.
  void convert(const kernel_entry& k, const int row) const {
    const source_rows from = rows_read(k, row);
    const destination_rows to = rows_written(k, row);
    const int pairs = way_.from.width / 2;
    if (pairs > 0) k.run(from, to, pairs, *way_.encoded, {way_.filters_chroma(), true});
    if (way_.from.width % 2 != 0) convert_last_pixel(k, from, to);
  }

 private:
  const way& way_;
  const morvane_picture& source_;
  const morvane_picture& destination_;

  source_rows rows_read(const kernel_entry& k, const int row) const {
    source_rows from{};
    size_t count = 0;
    for (int i = 0; i < k.rows; ++i)
      for (const size_t plane : way_.encoded->read) from[count++] = row_of(source_, way_.from, plane, row + i);
    return from;
  }
  destination_rows rows_written(const kernel_entry& k, const int row) const {
    const plane_numbers& planes = way_.encoded->planes;
    destination_rows to{};
    size_t count = 0;
    for (int i = 0; i < k.rows; ++i) to[count++] = row_of(destination_, way_.to, planes[0], row + i);
    for (const size_t i : planes)
      if (i != planes[0]) to[count++] = row_of(destination_, way_.to, i, row);
    return to;
  }
  // It passes through memory of its own, where it is a pair with itself and the pixel before it precedes it.
  void convert_last_pixel(const kernel_entry& k, const source_rows& from, const destination_rows& to) const {
    constexpr size_t most_bytes = 8;
    const int pairs = way_.from.width / 2;
    const int bytes = k.read / 2;
    uint8_t gathered[most_rows][3 * most_bytes] = {};
    uint8_t made[most_written][most_bytes];
    source_rows pixels{};
    destination_rows pair{};
    for (size_t i = 0; i < static_cast<size_t>(k.rows) * k.planes_read; ++i) {
      const uint8_t* last = from[i] + int64_t{pairs} * k.read;
      std::copy_n(pairs > 0 ? last - bytes : last, bytes, gathered[i]);
      std::copy_n(last, bytes, gathered[i] + bytes);
      std::copy_n(last, bytes, gathered[i] + 2 * bytes);
      pixels[i] = gathered[i] + bytes;
    }
    for (size_t i = 0; i < most_written; ++i) pair[i] = made[i];
    k.run(pixels, pair, 1, *way_.encoded, {way_.filters_chroma(), false});
    for (size_t i = 0; i < most_written && k.written[i] != 0; ++i) {
      const bool is_luma = k.written[1] != 0 && i < static_cast<size_t>(k.rows);
      std::copy_n(made[i], is_luma ? k.bytes_of_sample : k.written[i], to[i] + int64_t{pairs} * k.written[i]);
    }
  }
};

}  // namespace

std::optional<encoder> find_encoder(const way& w) {
  if (!is_matrix_alone(w) || !is_of_pixels_or_pairs(w.from)) return {};
  const plane_numbers planes = planes_of_rows(w.to);
  if (planes.size() == 0) return {};
  const size_t of_row = kernel_for(w, planes, 1);
  const size_t of_rows = w.to.half_height ? kernel_for(w, planes, 2) : of_row;
  if (of_row == kernels.size() || of_rows == kernels.size()) return {};
  return encoder_with(of_row, of_rows, w, planes);
}

void encode_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                 const int rows) {
  const rows_of_way picture(w, source, destination);
  const kernel_entry& of_rows = kernels[w.encoded->of_rows];
  int row = first;
  for (; row + of_rows.rows <= first + rows; row += of_rows.rows) picture.convert(of_rows, row);
  if (row < first + rows) picture.convert(kernels[w.encoded->of_row], row);
}

}  // namespace Processing::Morvane::checked
