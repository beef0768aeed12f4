// Rows of RGB to rows of YCbCr with chroma for every second pixel, in one pass. A kernel is a reader, a matrix and a
// writer: they meet in registers, with the bytes that lines give.
//
// A unit is a pair of pixels, of one row or of two rows that share chroma. Where chroma is filtered, that of a pair has
// two parts of the even pixel and one of the odd pixel on either side; else it is that of the even pixel, and of the
// upper row. Where Cr is stored first, a caller exchanges Cb and Cr, and red and blue with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "encoded_readers.h"
#include "encoded_writers.h"
#include "lines.h"
#include "lines_colour.h"
#include "list.h"
#include "rgb_pixels.h"
#include "stored.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Matrices. They leave pairs Cb Cr of the even pixels and of the odd ones as they need them to filter these exactly.

template <class V>
struct encoded_pixels {
  typename V::block luma, even, odd;
};

// Pairs are halves around 0, and what is remembered of the odd ones around 32768. Luma never ends so high that half a
// step of a sample would lead beyond words.
struct narrow_encoding : rgb_lines_to_ycbcr_narrow {
  using lines = rgb_lines_to_ycbcr_narrow;

  template <class V>
  MORVANE_INLINE encoded_pixels<V> pixels(const rgb_blocks<V>& rgb, const uint16_t half_step) const {
    const auto made = for_pairs<V>(rgb, half_step);
    const auto chroma = V::transpose2_words(made.cb, made.cr);
    return {made.y, chroma.first, chroma.second};
  }
  template <class V>
  MORVANE_INLINE static auto own(const encoded_pixels<V>& of_pixels) {
    return around_middle<V>(V::add_words(of_pixels.even, of_pixels.even));
  }
  template <class V>
  MORVANE_INLINE static auto filtered(typename V::block& odd_before, const encoded_pixels<V>& of_pixels) {
    return lines::filtered<V>(odd_before, of_pixels.even, of_pixels.odd);
  }
};

struct wide_encoding : rgb_lines_to_ycbcr_wide {
  using lines = rgb_lines_to_ycbcr_wide;

  MORVANE_INLINE static uint16_t remembered(const uint16_t chroma) { return chroma; }
  template <class V>
  MORVANE_INLINE encoded_pixels<V> pixels(const rgb_blocks<V>& rgb, const uint16_t half_step) const {
    const auto made = ycbcr_of<V>(rgb);
    const auto chroma = V::transpose2_words(item_of<1>(made), item_of<2>(made));
    return {V::add_words_to_limit(item_of<0>(made), V::repeat(half_step)), chroma.first, chroma.second};
  }
  template <class V>
  MORVANE_INLINE static auto own(const encoded_pixels<V>& of_pixels) {
    return of_pixels.even;
  }
  template <class V>
  MORVANE_INLINE static auto filtered(typename V::block& odd_before, const encoded_pixels<V>& of_pixels) {
    const auto before = V::dwords_before(odd_before, of_pixels.odd);
    odd_before = of_pixels.odd;
    return smoothed<V>(before, of_pixels.even, of_pixels.odd);
  }
};

// What is remembered of one pixel. Kernels share it.
template <class V, class Reader, class Matrix>
[[gnu::noinline]] uint32_t remembered_chroma(const Reader from, const Matrix matrix, const places_of_rows row,
                                             const int number) {
  const rgb_sample rgb = from.pixel(row, number);
  uint16_t luma, cb, cr;
  matrix.rule(&rgb.r, &rgb.g, &rgb.b, &luma, &cb, &cr);
  return Matrix::remembered(cb) | uint32_t{Matrix::remembered(cr)} << 16;
}

// Without vectors a line is converted in pieces. Of the loops that there are then, compilers make better use one after
// the other, and they compile those that all kernels share once.
inline constexpr int pairs_of_piece = 64;
struct piece {
  static constexpr int most = 2 * pairs_of_piece + 1;
  uint16_t r[most], g[most], b[most], y[most], cb[most], cr[most];
};

template <class V, class Matrix>
[[gnu::noinline]] void matrix_of_piece(const Matrix matrix, piece& of, const int pixels) {
  matrix.template line<V>(of.r, of.g, of.b, of.y, of.cb, of.cr, pixels);
}

template <class V>
[[gnu::noinline]] void halve_of_piece(const bool filters, const uint16_t* __restrict line, uint16_t* __restrict halved,
                                      const int pairs) {
  if (filters)
    for (int i = 0; i < pairs; ++i) halved[i] = smoothed(line[2 * i], line[2 * i + 1], line[2 * i + 2]);
  else
    for (int i = 0; i < pairs; ++i) halved[i] = line[2 * i + 1];
}

template <int rows, class... Plane>
constexpr auto planes_of_rows(plane_list<Plane...> of_row) {
  if constexpr (rows == 1)
    return of_row;
  else
    return plane_list<Plane..., Plane...>();
}

template <class Reader, class Matrix, class Writer, int rows,
          class Sources = decltype(planes_of_rows<rows>(typename Reader::planes())),
          class Destinations = typename Writer::template planes<rows>>
struct encode;

template <class Reader, class Matrix, class Writer, int rows, class... From, class... To>
struct encode<Reader, Matrix, Writer, rows, plane_list<From...>, plane_list<To...>>
    : line_kernel<encode<Reader, Matrix, Writer, rows>, From..., To...> {
  static constexpr bool expects_loads = true;
  static constexpr bool looks_back = true;
  static constexpr int bytes_before = Reader::bytes_before;
  static constexpr size_t planes_of_row = sizeof...(From) / rows;
  template <class V>
  requires(V::lanes > 0) using seen = chroma_of_odd_pixels<V, rows>;

  Reader from;
  Matrix matrix;
  Writer to;
  bool filters;
  int32_t before_first;  // -1, the number of the pixel before the first one of a line; or 0 for the same once more

  struct ycbcr {
    uint16_t y, cb, cr;
  };
  MORVANE_INLINE ycbcr pixel(const places_of_rows row, const int number) const {
    const rgb_sample rgb = from.pixel(row, number);
    ycbcr result;
    matrix.rule(&rgb.r, &rgb.g, &rgb.b, &result.y, &result.cb, &result.cr);
    return result;
  }
  MORVANE_INLINE int before(const bool begins) const { return begins ? before_first : -1; }
  MORVANE_INLINE uint16_t rounded(const uint16_t v) const { return add_to_limit(v, to.half); }
  MORVANE_INLINE ycbcr filtered(const ycbcr& before, const ycbcr& own, const ycbcr& next) const {
    if (!filters) return own;
    return {own.y, smoothed(before.cb, own.cb, next.cb), smoothed(before.cr, own.cr, next.cr)};
  }
  MORVANE_INLINE void rule(const bool begins, const typename From::pointer... src, typename To::pointer... dst) const {
    const uint8_t* const row[] = {src...};
    uint16_t luma[rows][2];
    ycbcr of_row[rows];
    for (int i = 0; i < rows; ++i) {
      const int numbers[] = {before(begins), 0, 1};
      ycbcr made[3];
#pragma GCC unroll 1
      for (int k = 0; k < 3; ++k) made[k] = pixel(row + static_cast<size_t>(i) * planes_of_row, numbers[k]);
      luma[i][0] = rounded(made[1].y);
      luma[i][1] = rounded(made[2].y);
      of_row[i] = filtered(made[0], made[1], made[2]);
    }
    const ycbcr& upper = of_row[0];
    const ycbcr& lower = of_row[filters ? rows - 1 : 0];
    to.put(luma, rounded(average_up(upper.cb, lower.cb)), rounded(average_up(upper.cr, lower.cr)), dst...);
  }

  template <class V>
  MORVANE_INLINE seen<V> seen_before(const bool begins, const typename From::pointer... src) const {
    const uint8_t* const row[] = {src...};
    seen<V> result;
    for (int i = 0; i < rows; ++i)
      result.of[i] = V::repeat_dword(
          remembered_chroma<V>(from, matrix, row + static_cast<size_t>(i) * planes_of_row, before(begins)));
    return result;
  }
  // The block with this number, of what has been read of each row, which is more where the reader reads several at
  // once.
  template <class V>
  MORVANE_INLINE encoded_blocks<V, rows> block_at(seen<V>& last, const int number, const places_of_rows row,
                                                  rgb_of_blocks<V, Reader::blocks>* const read) const {
    encoded_blocks<V, rows> result;
    typename V::block chroma[rows];
    for (int i = 0; i < rows; ++i) {
      if (number % Reader::blocks == 0)
        read[i] = from.template pixels<V>(row + static_cast<size_t>(i) * planes_of_row, number * (V::block_bytes / 4));
      const auto of_row = matrix.template pixels<V>(read[i].of[number % Reader::blocks], to.half);
      result.luma[i] = of_row.luma;
      chroma[i] = filters ? Matrix::template filtered<V>(last.of[i], of_row) : Matrix::template own<V>(of_row);
    }
    const auto exact = filters ? V::average_up(chroma[0], chroma[rows - 1]) : chroma[0];
    result.chroma = V::add_words_to_limit(exact, V::repeat(to.half));
    return result;
  }
  template <class V>
  MORVANE_INLINE auto convert(seen<V>& last, const typename From::pointer... src) const {
    const uint8_t* const row[] = {src...};
    rgb_of_blocks<V, Reader::blocks> read[rows];
    const auto block = [&](const int number) __attribute__((always_inline)) {
      return block_at<V>(last, number, row, read);
    };
    const auto next_block = [&](const int number) __attribute__((always_inline)) {
      return block(number + 1);
    };
    if constexpr (Writer::blocks < Reader::blocks) {
      const auto first = to.template convert<V, rows>(block);
      return in_a_row(first, to.template convert<V, rows>(next_block));
    } else {
      return to.template convert<V, rows>(block);
    }
  }
  template <class V>
  MORVANE_INLINE void line(const typename From::pointer... src, const typename To::pointer... dst,
                           const int count) const {
    const encode k = *this;
    if constexpr (V::lanes > 0)
      k.template convert_vectors<V>({src...}, {dst...}, at_least_zero(count), std::index_sequence_for<From...>(),
                                    std::index_sequence_for<To...>());
    else
      for (int i = 0; i < count; i += pairs_of_piece)
        k.template convert_piece<V>(i == 0, count - i < pairs_of_piece ? count - i : pairs_of_piece,
                                    From::at(src, static_cast<size_t>(i))..., To::at(dst, static_cast<size_t>(i))...);
  }

  // Pairs that are less than a vector pass through memory of its size, behind the pixel before them. So neither
  // narrower vectors nor the rule are compiled into kernels of which there are many.
  using source_rows = places_read<sizeof...(From)>;
  using destination_rows = places_written<sizeof...(To)>;
  template <size_t pairs_of_vector>
  struct vector_memory {
    static constexpr int most_bytes = 4;  // of a unit
    uint8_t read[sizeof...(From)][pairs_of_vector * Reader::bytes_of_pair + bytes_before];
    uint8_t made[sizeof...(To)][pairs_of_vector * most_bytes];
  };
  template <class V, size_t... s, size_t... d>
  MORVANE_INLINE void convert_vectors(source_rows src, destination_rows dst, const size_t pairs,
                                      const std::index_sequence<s...>, const std::index_sequence<d...>) const {
    constexpr size_t pairs_of_vector = walk_of<V, encode>::step();
    constexpr size_t bytes_made[] = {To::bytes...};
    vector_memory<pairs_of_vector> memory;
    const destination_rows own = dst;
    const bool is_less = pairs < pairs_of_vector;
    if (pairs == 0) return;
    if (is_less) {
      __builtin_memset(memory.read, 0, sizeof memory.read);
      for (size_t i = 0; i < sizeof...(From); ++i) {
        if (before_first != 0) __builtin_memcpy(memory.read[i], src.at[i] - bytes_before, bytes_before);
        __builtin_memcpy(memory.read[i] + bytes_before, src.at[i], pairs * Reader::bytes_of_pair);
      }
      src = {{memory.read[s] + bytes_before...}};
      dst = {{memory.made[d]...}};
    }
    walk_of<V, encode>(*this, src.at[s]..., dst.at[d]...).by_one_body(is_less ? pairs_of_vector : pairs);
    if (is_less)
      for (size_t i = 0; i < sizeof...(To); ++i) __builtin_memcpy(own.at[i], memory.made[i], pairs * bytes_made[i]);
  }

  // Without vectors. The pixel before the first pair comes first.
  template <class V>
  MORVANE_INLINE void matrix_piece(const bool begins, const int pairs, const places_of_rows row, piece& of) const {
    const rgb_sample first = from.pixel(row, before(begins));
    of.r[0] = first.r;
    of.g[0] = first.g;
    of.b[0] = first.b;
    read_pixels<V>(from, row, of.r + 1, of.g + 1, of.b + 1, pairs);
    matrix_of_piece<V>(matrix, of, 2 * pairs + 1);
  }
  template <class V>
  MORVANE_INLINE void convert_piece(const bool begins, const int pairs, const typename From::pointer... src,
                                    const typename To::pointer... dst) const {
    const uint8_t* const row[] = {src...};
    piece of_row[rows];
    uint16_t cb[rows][pairs_of_piece], cr[rows][pairs_of_piece];
    for (int i = 0; i < rows; ++i) {
      matrix_piece<V>(begins, pairs, row + static_cast<size_t>(i) * planes_of_row, of_row[i]);
      halve_of_piece<V>(filters, of_row[i].cb, cb[i], pairs);
      halve_of_piece<V>(filters, of_row[i].cr, cr[i], pairs);
    }
    const int lower = filters ? rows - 1 : 0;
    if constexpr (Writer::bytes == 2) {
      uint8_t* const written[] = {dst...};
      for (int i = 0; i < rows; ++i) put_words<V>(to, of_row[i].y + 1, written[i], 2 * pairs);
      average_into_first(cb[0], cb[lower], pairs);
      average_into_first(cr[0], cr[lower], pairs);
      to.template write_chroma<V>(cb[0], cr[0], written + rows, pairs);
    } else {
      for (int i = 0; i < pairs; ++i) {
        uint16_t luma[rows][2];
        for (int k = 0; k < rows; ++k)
          for (int pixel = 0; pixel < 2; ++pixel) luma[k][pixel] = rounded(of_row[k].y[2 * i + pixel + 1]);
        to.put(luma, rounded(average_up(cb[0][i], cb[lower][i])), rounded(average_up(cr[0][i], cr[lower][i])),
               To::at(dst, static_cast<size_t>(i))...);
      }
    }
  }
  MORVANE_INLINE static void average_into_first(uint16_t* upper, const uint16_t* lower, const int pairs) {
    if (upper == lower) return;
    for (int i = 0; i < pairs; ++i) upper[i] = average_up(upper[i], lower[i]);
  }
};

// The matrix is the one that the source and the destination ask for.
template <class Reader, class Matrix, template <class> class Planes, class Samples>
using encoders_into_planes =
    kernel_list<encode<Reader, Matrix, Planes<Samples>, 1>, encode<Reader, Matrix, Planes<Samples>, 2>>;
template <class Reader>
using encoders_to_bytes =
    typename joined_lists<kernel_list<encode<Reader, narrow_encoding, into_pairs<first_of_pair::chroma>, 1>,
                                      encode<Reader, narrow_encoding, into_pairs<first_of_pair::luma>, 1>>,
                          encoders_into_planes<Reader, narrow_encoding, into_two_planes, upper_bytes>,
                          encoders_into_planes<Reader, narrow_encoding, into_three_planes, upper_bytes>>::type;
template <class Reader, class Matrix>
using encoders_of_deep =
    typename joined_lists<encoders_into_planes<Reader, Matrix, into_two_planes, kept_words>,
                          encoders_into_planes<Reader, Matrix, into_three_planes, kept_words>,
                          encoders_into_planes<Reader, Matrix, into_two_planes, upper_bytes>>::type;

template <class Reader>
using encoders_of_planes =
    typename joined_lists<encoders_into_planes<Reader, narrow_encoding, into_three_planes, upper_bytes>,
                          encoders_into_planes<Reader, narrow_encoding, into_three_planes, kept_words>>::type;

using encode_kernels =
    joined_lists<encoders_to_bytes<rgb_in_bytes<4>>, encoders_to_bytes<rgb_in_bytes<3>>,
                 encoders_into_planes<rgb_in_bytes<4>, narrow_encoding, into_two_planes, kept_words>,
                 encoders_into_planes<rgb_in_bytes<3>, narrow_encoding, into_two_planes, kept_words>,
                 encoders_of_deep<rgb_in_words<3>, wide_encoding>, encoders_of_deep<rgb_in_words<4>, wide_encoding>,
                 encoders_of_deep<rgb_in_tens, narrow_encoding>,
                 kernel_list<encode<rgb_in_tens, wide_encoding, into_two_planes<kept_words>, 1>>,
                 encoders_into_planes<rgb_in_twelves, wide_encoding, into_two_planes, kept_words>,
                 encoders_into_planes<rgb_in_twelves, wide_encoding, into_three_planes, kept_words>,
                 encoders_of_planes<rgb_in_planes_of_bytes>, encoders_of_planes<rgb_in_planes_of_tens>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
