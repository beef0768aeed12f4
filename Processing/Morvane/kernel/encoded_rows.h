// Rows of RGB in bytes to rows of YCbCr in bytes with chroma for every second pixel, in one pass. A kernel is a reader,
// the narrow matrix, and a writer: they meet in registers, with the bytes that lines give.
//
// A unit is a pair of pixels, of one row or of two rows that share chroma. Where chroma is filtered, that of a pair has
// two parts of the even pixel and one of the odd pixel on either side; else it is that of the even pixel, and of the
// upper row. Where Cr is stored first, a caller exchanges Cb and Cr, and red and blue with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "lines.h"
#include "lines_colour.h"
#include "lines_groups.h"
#include "lines_stored.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Reader: pixels of so many bytes.
template <int bytes_of_pixel>
struct rgb_in_bytes {
  static constexpr int bytes = bytes_of_pixel;
  uint32_t places;  // of R, G and B in a pixel

  MORVANE_INLINE uint16_t word(const uint8_t* p, const int i) const { return widened(p[places >> 8 * i & 3], 255); }
  template <class V>
  MORVANE_INLINE auto words(const uint8_t* p) const {
    if constexpr (bytes == 3)
      return V::load_bytes_of_threes(p, places);
    else
      return V::load_bytes_of_fours(p, places);
  }
};

// What a matrix makes of as many pixels as a block has words: luma, and pairs of Cb and Cr.
template <class V, int rows>
struct encoded_blocks {
  typename V::block luma[rows], chroma;
};

// Writers take words with samples in their upper bytes.

template <first_of_pair begins>
struct into_pairs {
  template <int rows>
  using planes = plane_list<to<4>>;
  static constexpr bool begins_with_luma = begins == first_of_pair::luma;

  MORVANE_INLINE static void put(const uint8_t (&luma)[1][2], const uint8_t cb, const uint8_t cr, uint8_t* dst) {
    constexpr int y = begins_with_luma ? 0 : 1;
    dst[y] = luma[0][0];
    dst[y + 2] = luma[0][1];
    dst[1 - y] = cb;
    dst[3 - y] = cr;
  }
  template <class V>
  MORVANE_INLINE static auto join(const typename V::block first, const typename V::block second) {
    return V::or_blocks(V::template shift_right_words<8>(first), V::and_blocks(second, V::repeat(0xff00)));
  }
  template <class V, class Next>
  MORVANE_INLINE static auto convert(const Next next) {
    const encoded_blocks<V, 1> made = next(0);
    return begins_with_luma ? join<V>(made.luma[0], made.chroma) : join<V>(made.chroma, made.luma[0]);
  }
};

// Planes: luma of one row or of two, and chroma.
struct into_planes {
  static constexpr bool begins_with_luma = true;

  template <int rows>
  MORVANE_INLINE static void put_luma(const uint8_t (&luma)[rows][2], uint8_t* const* planes) {
    for (int i = 0; i < rows; ++i) {
      planes[i][0] = luma[i][0];
      planes[i][1] = luma[i][1];
    }
  }
  template <class V>
  MORVANE_INLINE static auto upper_bytes(const typename V::block first, const typename V::block second) {
    return V::pack_words(V::template shift_right_words<8>(first), V::template shift_right_words<8>(second));
  }
  // In bytes.
  template <class V, int rows>
  MORVANE_INLINE static encoded_blocks<V, rows> packed(const encoded_blocks<V, rows>& first,
                                                       const encoded_blocks<V, rows>& second) {
    encoded_blocks<V, rows> result;
    for (int i = 0; i < rows; ++i) result.luma[i] = upper_bytes<V>(first.luma[i], second.luma[i]);
    result.chroma = upper_bytes<V>(first.chroma, second.chroma);
    return result;
  }
};

struct into_two_planes : into_planes {
  template <int rows>
  using planes = std::conditional_t<rows == 1, plane_list<to<2>, to<2>>, plane_list<to<2>, to<2>, to<2>>>;

  template <int rows, class... Plane>
  MORVANE_INLINE static void put(const uint8_t (&luma)[rows][2], const uint8_t cb, const uint8_t cr, Plane*... dst) {
    uint8_t* const to[] = {dst...};
    put_luma<rows>(luma, to);
    to[rows][0] = cb;
    to[rows][1] = cr;
  }
  template <class V, class Next>
  MORVANE_INLINE static auto convert(const Next next) {
    const auto first = next(0);
    const auto made = packed(first, next(1));
    if constexpr (std::extent_v<decltype(made.luma)> == 1)
      return to_planes(made.luma[0], made.chroma);
    else
      return to_planes(made.luma[0], made.luma[1], made.chroma);
  }
};

struct into_three_planes : into_planes {
  template <int rows>
  using planes = std::conditional_t<rows == 1, plane_list<to<2>, to<1>, to<1>>, plane_list<to<2>, to<2>, to<1>, to<1>>>;

  template <int rows, class... Plane>
  MORVANE_INLINE static void put(const uint8_t (&luma)[rows][2], const uint8_t cb, const uint8_t cr, Plane*... dst) {
    uint8_t* const to[] = {dst...};
    put_luma<rows>(luma, to);
    *to[rows] = cb;
    *to[rows + 1] = cr;
  }
  template <class V, class Next>
  MORVANE_INLINE static auto convert(const Next next) {
    const auto one = next(0), two = next(1);
    const auto first = packed(one, two);
    const auto three = next(2), four = next(3);
    const auto second = packed(three, four);
    const auto chroma = V::deinterleave2(first.chroma, second.chroma);
    if constexpr (std::extent_v<decltype(first.luma)> == 1)
      return to_planes(in_a_row(first.luma[0], second.luma[0]), chroma.first, chroma.second);
    else
      return to_planes(in_a_row(first.luma[0], second.luma[0]), in_a_row(first.luma[1], second.luma[1]), chroma.first,
                       chroma.second);
  }
};

// Chroma of the last odd pixels that were seen, around 32768.
template <class V, int rows>
struct chroma_of_odd_pixels {
  typename V::block of[rows];

  MORVANE_INLINE static chroma_of_odd_pixels none() { return {}; }
  MORVANE_INLINE static void result() {}
};

// Without vectors a line is converted in pieces. Of the loops that there are then, compilers make better use one after
// the other, and they compile those that all kernels share once.
inline constexpr int pairs_of_piece = 64;
struct piece {
  uint16_t y[2 * pairs_of_piece + 1], cb[2 * pairs_of_piece + 1], cr[2 * pairs_of_piece + 1];
};

template <class V>
[[gnu::noinline]] void matrix_of_piece(const rgb_lines_to_ycbcr_narrow matrix, const piece& rgb, piece& made,
                                       const int pixels) {
  matrix.line<V>(rgb.y, rgb.cb, rgb.cr, made.y, made.cb, made.cr, pixels);
}

template <class V>
[[gnu::noinline]] void halve_of_piece(const bool filters, const uint16_t* __restrict line, uint16_t* __restrict halved,
                                      const int pairs) {
  if (filters)
    for (int i = 0; i < pairs; ++i) halved[i] = smoothed(line[2 * i], line[2 * i + 1], line[2 * i + 2]);
  else
    for (int i = 0; i < pairs; ++i) halved[i] = line[2 * i + 1];
}

template <class V, int bytes_of_pixel>
[[gnu::noinline]] void words_of_piece(const uint8_t* __restrict bytes, uint16_t* __restrict line, const int pixels) {
  for (int i = 0; i < pixels; ++i) line[i] = widened(bytes[i * bytes_of_pixel], 255);
}

template <class Pixels, int rows>
using sources_of_rows = std::conditional_t<rows == 1, plane_list<from<2 * Pixels::bytes>>,
                                           plane_list<from<2 * Pixels::bytes>, from<2 * Pixels::bytes>>>;

template <class Reader, class Writer, int rows, class Sources = sources_of_rows<Reader, rows>,
          class Destinations = typename Writer::template planes<rows>>
struct encode;

template <class Reader, class Writer, int rows, class... From, class... To>
struct encode<Reader, Writer, rows, plane_list<From...>, plane_list<To...>>
    : line_kernel<encode<Reader, Writer, rows>, From..., To...> {
  static constexpr bool fills_registers = true;
  static constexpr bool expects_loads = true;
  static constexpr bool looks_back = true;
  static constexpr int bytes_of_pixel = Reader::bytes;
  template <class V>
  requires(V::lanes > 0) using seen = chroma_of_odd_pixels<V, rows>;

  Reader from;
  bool filters;
  int32_t before_first;  // bytes from the first pixel of a line to the one before it; 0 if that is the same once more
  rgb_lines_to_ycbcr_narrow matrix;

  struct ycbcr {
    uint16_t y, cb, cr;
  };
  MORVANE_INLINE ycbcr pixel(const uint8_t* p) const {
    const uint16_t r = from.word(p, 0), g = from.word(p, 1), b = from.word(p, 2);
    ycbcr result;
    matrix.rule(&r, &g, &b, &result.y, &result.cb, &result.cr);
    return result;
  }
  MORVANE_INLINE const uint8_t* before(const bool begins, const uint8_t* p) const {
    return p + (begins ? before_first : -bytes_of_pixel);
  }
  MORVANE_INLINE static uint8_t byte(const uint16_t v) { return static_cast<uint8_t>(add_to_limit(v, 128) >> 8); }
  MORVANE_INLINE ycbcr filtered(const ycbcr& before, const ycbcr& own, const ycbcr& next) const {
    if (!filters) return own;
    return {own.y, smoothed(before.cb, own.cb, next.cb), smoothed(before.cr, own.cr, next.cr)};
  }
  MORVANE_INLINE void rule(const bool begins, const typename From::pointer... src, typename To::pointer... dst) const {
    const uint8_t* const row[] = {src...};
    uint8_t luma[rows][2];
    ycbcr of_row[rows];
    for (int i = 0; i < rows; ++i) {
      const uint8_t* const places[] = {before(begins, row[i]), row[i], row[i] + bytes_of_pixel};
      ycbcr made[3];
#pragma GCC unroll 1
      for (int k = 0; k < 3; ++k) made[k] = pixel(places[k]);
      luma[i][0] = byte(made[1].y);
      luma[i][1] = byte(made[2].y);
      of_row[i] = filtered(made[0], made[1], made[2]);
    }
    const ycbcr& upper = of_row[0];
    const ycbcr& lower = of_row[filters ? rows - 1 : 0];
    Writer::put(luma, byte(average_up(upper.cb, lower.cb)), byte(average_up(upper.cr, lower.cr)), dst...);
  }

  template <class V>
  MORVANE_INLINE seen<V> seen_before(const bool begins, const typename From::pointer... src) const {
    const auto half_chroma = [&](const uint8_t* p) __attribute__((always_inline)) {
      const ycbcr own = pixel(before(begins, p));
      return V::repeat_dword(half_around_middle(own.cb) | uint32_t{half_around_middle(own.cr)} << 16);
    };
    return {{half_chroma(src)...}};
  }
  MORVANE_INLINE static uint16_t half_around_middle(const uint16_t v) {
    return static_cast<uint16_t>((v >> 1) + 16384);
  }

  // Pairs Cb Cr of the even pixels and of the odd ones are halves around 0.
  template <class V>
  struct pixels {
    typename V::block luma, even, odd;
  };
  template <class V>
  MORVANE_INLINE pixels<V> pixels_at(const uint8_t* p) const {
    const auto& k = matrix.of;
    const auto rgb = from.template words<V>(p);
    const auto r = V::template shift_right_words<1>(rgb.first);
    const auto g = V::template shift_right_words<1>(rgb.second);
    const auto b = V::template shift_right_words<1>(rgb.third);
    const auto cb = matrix.half_of_chroma<V>(b, k.cb_b, g, k.cb_g, r, k.cb_r);
    const auto cr = matrix.half_of_chroma<V>(r, k.cr_r, g, k.cr_g, b, k.cr_b);
    const auto chroma = V::transpose2_words(cb, cr);
    return {matrix.doubled<V>(k.black + 128, matrix.half_of_luma<V>(r, g, b)), chroma.first, chroma.second};
  }
  template <class V>
  MORVANE_INLINE auto chroma_of(typename V::block& odd_before, const pixels<V>& of) const {
    if (!filters) return around_middle<V>(V::add_words(of.even, of.even));
    const auto odd = around_middle<V>(of.odd);
    const auto before = V::dwords_before(odd_before, odd);
    odd_before = odd;
    return V::add_words(of.even, V::average_up(before, odd));
  }
  template <class V>
  MORVANE_INLINE encoded_blocks<V, rows> blocks_at(seen<V>& last, const int number,
                                                   const typename From::pointer... src) const {
    const uint8_t* const row[] = {src...};
    encoded_blocks<V, rows> result;
    typename V::block chroma[rows];
    for (int i = 0; i < rows; ++i) {
      const auto of_row = pixels_at<V>(row[i] + number * (V::block_bytes / 2 * bytes_of_pixel));
      result.luma[i] = of_row.luma;
      chroma[i] = chroma_of<V>(last.of[i], of_row);
    }
    const auto exact = filters ? V::average_up(chroma[0], chroma[rows - 1]) : chroma[0];
    result.chroma = V::add_words_to_limit(exact, V::repeat(128));
    return result;
  }
  template <class V>
  MORVANE_INLINE auto convert(seen<V>& last, const typename From::pointer... src) const {
    return Writer::template convert<V>([&](const int number) __attribute__((always_inline)) {
      return blocks_at<V>(last, number, src...);
    });
  }
  template <class V>
  MORVANE_INLINE void line(const typename From::pointer... src, const typename To::pointer... dst,
                           const int count) const {
    const encode k = *this;
    if constexpr (V::lanes > 0)
      walk<V>(k, at_least_zero(count), src..., dst...);
    else
      for (int i = 0; i < count; i += pairs_of_piece)
        k.template convert_piece<V>(i == 0, count - i < pairs_of_piece ? count - i : pairs_of_piece,
                                    From::at(src, static_cast<size_t>(i))..., To::at(dst, static_cast<size_t>(i))...);
  }

  // Without vectors. The pixel before the first pair comes first.
  template <class V>
  MORVANE_INLINE void matrix_piece(const bool begins, const int pairs, const uint8_t* p, piece& made) const {
    piece rgb;
    uint16_t* const lines[] = {rgb.y, rgb.cb, rgb.cr};
    for (int i = 0; i < 3; ++i) {
      const uint8_t* const bytes = p + (from.places >> 8 * i & 3);
      *lines[i] = widened(*before(begins, bytes), 255);
      words_of_piece<V, bytes_of_pixel>(bytes, lines[i] + 1, 2 * pairs);
    }
    matrix_of_piece<V>(matrix, rgb, made, 2 * pairs + 1);
  }
  template <class V>
  MORVANE_INLINE void convert_piece(const bool begins, const int pairs, const typename From::pointer... src,
                                    const typename To::pointer... dst) const {
    const uint8_t* const row[] = {src...};
    piece of_row[rows];
    uint16_t cb[rows][pairs_of_piece], cr[rows][pairs_of_piece];
    for (int i = 0; i < rows; ++i) {
      matrix_piece<V>(begins, pairs, row[i], of_row[i]);
      halve_of_piece<V>(filters, of_row[i].cb, cb[i], pairs);
      halve_of_piece<V>(filters, of_row[i].cr, cr[i], pairs);
    }
    const int lower = filters ? rows - 1 : 0;
    for (int i = 0; i < pairs; ++i) {
      uint8_t luma[rows][2];
      for (int k = 0; k < rows; ++k)
        for (int pixel = 0; pixel < 2; ++pixel) luma[k][pixel] = byte(of_row[k].y[2 * i + pixel + 1]);
      Writer::put(luma, byte(average_up(cb[0][i], cb[lower][i])), byte(average_up(cr[0][i], cr[lower][i])),
                  To::at(dst, static_cast<size_t>(i))...);
    }
  }
};

template <class Reader>
using encoders_of = kernel_list<encode<Reader, into_pairs<first_of_pair::chroma>, 1>,
                                encode<Reader, into_pairs<first_of_pair::luma>, 1>, encode<Reader, into_two_planes, 1>,
                                encode<Reader, into_three_planes, 1>, encode<Reader, into_two_planes, 2>,
                                encode<Reader, into_three_planes, 2>>;

using encode_kernels = joined_lists<encoders_of<rgb_in_bytes<4>>, encoders_of<rgb_in_bytes<3>>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
