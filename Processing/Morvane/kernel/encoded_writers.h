// Writers of rows of YCbCr with chroma for every second pixel: what becomes of the words that a kernel has encoded, to
// which half a step of a sample, `half`, has been added. A writer has the planes of a pair of pixels, luma of one row
// or of two first; `put` writes a pair, and `convert` makes what is stored of so many `blocks` of pixels, which it asks
// for in turn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "lines.h"
#include "lines_groups.h"
#include "stored.h"
#include "units.h"

namespace Processing::Morvane::format_conversion::kernel {

// What a matrix makes of as many pixels as a block has words: luma, and pairs of Cb and Cr.
template <class V, int rows>
struct encoded_blocks {
  typename V::block luma[rows], chroma;
};

// Samples of a plane: the upper bytes of words, or words with the bits of `kept`, which lie `down` bits below the top.

struct upper_bytes {
  static constexpr int bytes = 1;
  static constexpr int blocks_of_block = 2;
  static constexpr uint16_t half = 128;

  MORVANE_INLINE static void put(uint8_t* p, const uint16_t v) { *p = static_cast<uint8_t>(v >> 8); }
  template <class V>
  MORVANE_INLINE static auto packed(const typename V::block first, const typename V::block second) {
    return V::pack_words(V::template shift_right_words<8>(first), V::template shift_right_words<8>(second));
  }
  // Of the planes, the block with this number.
  template <class V, int rows, class Next>
  MORVANE_INLINE static encoded_blocks<V, rows> block(const Next next, const int number) {
    const encoded_blocks<V, rows> first = next(2 * number);
    const encoded_blocks<V, rows> second = next(2 * number + 1);
    encoded_blocks<V, rows> result;
    for (int i = 0; i < rows; ++i) result.luma[i] = packed<V>(first.luma[i], second.luma[i]);
    result.chroma = packed<V>(first.chroma, second.chroma);
    return result;
  }
  template <class V>
  MORVANE_INLINE static auto apart(const typename V::block first, const typename V::block second) {
    return V::deinterleave2(first, second);
  }
};

struct kept_words {
  static constexpr int bytes = 2;
  static constexpr int blocks_of_block = 1;
  uint16_t half, kept;
  int32_t down;

  MORVANE_INLINE void put(uint8_t* p, const uint16_t v) const { put_word(p, static_cast<uint16_t>(v >> down & kept)); }
  template <class V>
  MORVANE_INLINE auto stored(const typename V::block v) const {
    return V::and_blocks(V::shift_right_words(v, down), V::repeat(kept));
  }
  template <class V, int rows, class Next>
  MORVANE_INLINE encoded_blocks<V, rows> block(const Next next, const int number) const {
    encoded_blocks<V, rows> result = next(number);
    for (int i = 0; i < rows; ++i) result.luma[i] = stored<V>(result.luma[i]);
    result.chroma = stored<V>(result.chroma);
    return result;
  }
  template <class V>
  MORVANE_INLINE static auto apart(const typename V::block first, const typename V::block second) {
    return V::deinterleave2_words(first, second);
  }
};

// Without vectors, lines of words to a plane. Kernels share the loops. Where the compiler knows that samples stay at
// the top, it needs no wider numbers.
template <class Loop>
MORVANE_INLINE void with_known_shift(kept_words as, const Loop loop) {
  if (as.down != 0) return loop(as);
  as.down = 0;
  loop(as);
}
template <class V>
[[gnu::noinline]] void put_words(const kept_words words, const uint16_t* __restrict line, uint8_t* __restrict dst,
                                 const int count) {
  with_known_shift(
      words, [&](const kept_words as) __attribute__((always_inline)) {
        for (int i = 0; i < count; ++i) as.put(dst + 2 * i, add_to_limit(line[i], as.half));
      });
}
template <class V>
[[gnu::noinline]] void put_words_in_turn(const kept_words words, const uint16_t* __restrict first,
                                         const uint16_t* __restrict second, uint8_t* __restrict dst, const int count) {
  with_known_shift(
      words, [&](const kept_words as) __attribute__((always_inline)) {
        for (int i = 0; i < count; ++i) {
          as.put(dst + 4 * i, add_to_limit(first[i], as.half));
          as.put(dst + 4 * i + 2, add_to_limit(second[i], as.half));
        }
      });
}

template <first_of_pair begins>
struct into_pairs : upper_bytes {
  static constexpr int blocks = 1;
  template <int rows>
  using planes = plane_list<to<4>>;
  static constexpr bool begins_with_luma = begins == first_of_pair::luma;

  MORVANE_INLINE static void put(const uint16_t (&luma)[1][2], const uint16_t cb, const uint16_t cr, uint8_t* dst) {
    constexpr int y = begins_with_luma ? 0 : 1;
    upper_bytes::put(dst + y, luma[0][0]);
    upper_bytes::put(dst + y + 2, luma[0][1]);
    upper_bytes::put(dst + 1 - y, cb);
    upper_bytes::put(dst + 3 - y, cr);
  }
  template <class V>
  MORVANE_INLINE static auto join(const typename V::block first, const typename V::block second) {
    return V::or_blocks(V::template shift_right_words<8>(first), V::and_blocks(second, V::repeat(0xff00)));
  }
  template <class V, int rows, class Next>
  MORVANE_INLINE static auto convert(const Next next) {
    const encoded_blocks<V, 1> made = next(0);
    return begins_with_luma ? join<V>(made.luma[0], made.chroma) : join<V>(made.chroma, made.luma[0]);
  }
};

// Planes: luma of one row or of two, and chroma.
template <class Samples>
struct into_planes : Samples {
  static constexpr bool begins_with_luma = true;
  static constexpr int bytes = Samples::bytes;

  template <int rows>
  MORVANE_INLINE void put_luma(const uint16_t (&luma)[rows][2], uint8_t* const* planes) const {
    for (int i = 0; i < rows; ++i)
      for (int k = 0; k < 2; ++k) Samples::put(planes[i] + k * bytes, luma[i][k]);
  }
};

template <class Samples>
struct into_two_planes : into_planes<Samples> {
  static constexpr int blocks = Samples::blocks_of_block;
  static constexpr int bytes = Samples::bytes;
  template <int rows>
  using planes = std::conditional_t<rows == 1, plane_list<to<2 * bytes>, to<2 * bytes>>,
                                    plane_list<to<2 * bytes>, to<2 * bytes>, to<2 * bytes>>>;

  template <int rows, class... Plane>
  MORVANE_INLINE void put(const uint16_t (&luma)[rows][2], const uint16_t cb, const uint16_t cr, Plane*... dst) const {
    uint8_t* const to[] = {dst...};
    this->template put_luma<rows>(luma, to);
    Samples::put(to[rows], cb);
    Samples::put(to[rows] + bytes, cr);
  }
  template <class V>
  MORVANE_INLINE void write_chroma(const uint16_t* cb, const uint16_t* cr, uint8_t* const* dst, const int pairs) const {
    put_words_in_turn<V>(*this, cb, cr, dst[0], pairs);
  }
  template <class V, int rows, class Next>
  MORVANE_INLINE auto convert(const Next next) const {
    const auto made = this->template block<V, rows>(next, 0);
    if constexpr (rows == 1)
      return to_planes(made.luma[0], made.chroma);
    else
      return to_planes(made.luma[0], made.luma[1], made.chroma);
  }
};

template <class Samples>
struct into_three_planes : into_planes<Samples> {
  static constexpr int blocks = 2 * Samples::blocks_of_block;
  static constexpr int bytes = Samples::bytes;
  template <int rows>
  using planes = std::conditional_t<rows == 1, plane_list<to<2 * bytes>, to<bytes>, to<bytes>>,
                                    plane_list<to<2 * bytes>, to<2 * bytes>, to<bytes>, to<bytes>>>;

  template <int rows, class... Plane>
  MORVANE_INLINE void put(const uint16_t (&luma)[rows][2], const uint16_t cb, const uint16_t cr, Plane*... dst) const {
    uint8_t* const to[] = {dst...};
    this->template put_luma<rows>(luma, to);
    Samples::put(to[rows], cb);
    Samples::put(to[rows + 1], cr);
  }
  template <class V>
  MORVANE_INLINE void write_chroma(const uint16_t* cb, const uint16_t* cr, uint8_t* const* dst, const int pairs) const {
    put_words<V>(*this, cb, dst[0], pairs);
    put_words<V>(*this, cr, dst[1], pairs);
  }
  template <class V, int rows, class Next>
  MORVANE_INLINE auto convert(const Next next) const {
    const auto first = this->template block<V, rows>(next, 0);
    const auto second = this->template block<V, rows>(next, 1);
    const auto chroma = this->template apart<V>(first.chroma, second.chroma);
    if constexpr (rows == 1)
      return to_planes(in_a_row(first.luma[0], second.luma[0]), chroma.first, chroma.second);
    else
      return to_planes(in_a_row(first.luma[0], second.luma[0]), in_a_row(first.luma[1], second.luma[1]), chroma.first,
                       chroma.second);
  }
};

}  // namespace Processing::Morvane::format_conversion::kernel
