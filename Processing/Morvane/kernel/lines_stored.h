// Between rows of items, of which each has a component, and lines of working samples. Reading makes words of a sample
// that use all 16 bits; writing rounds them to the bits that are stored.
#pragma once

#include <cstddef>
#include <cstdint>

#include "interleaved_words.h"
#include "lines.h"
#include "list.h"
#include "samples.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Bytes as words: x << 8, and below it the bits of x that `repeated` has, all or none of them.
MORVANE_INLINE uint16_t widened(const uint8_t x, const uint8_t repeated) {
  return static_cast<uint16_t>(x << 8 | (x & repeated));
}

// Groups of one to four bytes, of which the first ones go to lines of their own. Each has its own `repeated`.
template <int items, class... Line>
struct split_bytes : line_kernel<split_bytes<items, Line...>, from<items>, Line...> {
  uint8_t repeated[items];

  template <class... Word>
  MORVANE_INLINE void rule(const uint8_t* group, Word*... to) const {
    int i = 0;
    ((*to = widened(group[i], repeated[i]), ++i), ...);
  }
  // Of words with two bytes each.
  template <class V>
  MORVANE_INLINE static auto lower(const typename V::block both, const uint8_t repeated) {
    return V::or_blocks(V::template shift_left_words<8>(both), V::and_blocks(both, V::repeat(repeated)));
  }
  template <class V>
  MORVANE_INLINE static auto upper(const typename V::block both, const uint8_t repeated) {
    return V::or_blocks(V::and_blocks(both, V::repeat(0xff00)),
                        V::and_blocks(V::template shift_right_words<8>(both), V::repeat(repeated)));
  }
  template <class V>
  MORVANE_INLINE static auto load_pixels(const uint8_t* src) {
    if constexpr (items == 3) {
      const auto fours = V::load_threes(src);
      return V::deinterleave2_words(fours.first, fours.second);
    } else {
      return V::deinterleave2_words(V::load(src), V::load(blocks_on<V>(src, 1)));
    }
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* src) const {
    if constexpr (items == 1) {
      const auto bytes = V::load(src);
      return V::interleave2(V::and_blocks(bytes, V::repeat(static_cast<uint16_t>(repeated[0] * 257))), bytes);
    } else if constexpr (items == 2) {
      const auto both = V::load(src);
      return to_planes(lower<V>(both, repeated[0]), upper<V>(both, repeated[1]));
    } else {
      const auto both = load_pixels<V>(src);
      const auto first = lower<V>(both.first, repeated[0]);
      const auto second = upper<V>(both.first, repeated[1]);
      const auto third = lower<V>(both.second, repeated[2]);
      if constexpr (sizeof...(Line) == 3)
        return to_planes(first, second, third);
      else
        return to_planes(first, second, third, upper<V>(both.second, repeated[3]));
    }
  }
};

// Samples of so many bits: (v / 2 * factor + 16384) >> 15, at most the largest one. The factor is that one where it
// stands for 65535, and one more where a sample is a power of two apart from the next.
template <int bits>
struct rounding {
  static constexpr int most = (1 << bits) - 1;
  bool fills_words;

  // The product without a multiplication, which not all processors have in vectors, nor a choice.
  MORVANE_INLINE uint16_t of(const uint16_t v) const {
    const int half = v >> 1;
    const int rounded = ((half << bits) - (half & -static_cast<int>(fills_words)) + 16384) >> 15;
    return static_cast<uint16_t>(rounded < most ? rounded : most);
  }
  template <class V>
  MORVANE_INLINE auto unlimited(const typename V::block v) const {
    const int factor = fills_words ? most : most + 1;
    return V::rounded_product(V::template shift_right_words<1>(v), V::repeat(static_cast<uint16_t>(factor)));
  }
  template <class V>
  MORVANE_INLINE auto of(const typename V::block v) const {
    return V::least_words(unlimited<V>(v), V::repeat(most));
  }
};

// A fourth byte without a line is 255.
template <int items, class... Line>
struct join_bytes : line_kernel<join_bytes<items, Line...>, Line..., to<items>> {
  rounding<8> by[items];

  MORVANE_INLINE void rule(const uint16_t* a, uint8_t* dst) const { dst[0] = byte<0>(a); }
  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, uint8_t* dst) const {
    dst[0] = byte<0>(a);
    dst[1] = byte<1>(b);
  }
  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, uint8_t* dst) const {
    dst[0] = byte<0>(a);
    dst[1] = byte<1>(b);
    dst[2] = byte<2>(c);
    if constexpr (items == 4) dst[3] = 255;
  }
  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, const uint16_t* d,
                           uint8_t* dst) const {
    rule(a, b, c, dst);
    dst[3] = byte<3>(d);
  }
  template <int i>
  MORVANE_INLINE uint8_t byte(const uint16_t* line) const {
    return static_cast<uint8_t>(by[i].of(*line));
  }
  // Two bytes a word.
  template <class V, int i>
  MORVANE_INLINE auto two_of(const uint8_t* a, const typename V::block b) const {
    return V::or_blocks(by[i].template of<V>(V::load(a)), V::template shift_left_words<8>(b));
  }
  template <class V, int i>
  MORVANE_INLINE auto two_of(const uint8_t* a, const uint8_t* b) const {
    return two_of<V, i>(a, by[i + 1].template of<V>(V::load(b)));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a) const {
    return V::pack_words(by[0].template unlimited<V>(V::load(a)),
                         by[0].template unlimited<V>(V::load(blocks_on<V>(a, 1))));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b) const {
    return two_of<V, 0>(a, b);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b, const uint8_t* c) const {
    if constexpr (items == 3)
      return V::threes(V::interleave2_words(two_of<V, 0>(a, b), by[2].template of<V>(V::load(c))));
    else
      return V::interleave2_words(two_of<V, 0>(a, b), two_of<V, 2>(c, V::repeat(255)));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b, const uint8_t* c, const uint8_t* d) const {
    return V::interleave2_words(two_of<V, 0>(a, b), two_of<V, 2>(c, d));
  }
};

// Groups of one to four words at any address, of which the bits of `kept` are used.
template <int items, class... Line>
struct split_words : line_kernel<split_words<items, Line...>, from<2 * items>, Line...> {
  uint16_t kept;

  template <class... Word>
  MORVANE_INLINE void rule(const uint8_t* group, Word*... to) const {
    int i = 0;
    ((*to = static_cast<uint16_t>(stored_word(group + 2 * i++) & kept)), ...);
  }
  template <class V>
  MORVANE_INLINE auto load(const uint8_t* src, const int blocks) const {
    return V::and_blocks(V::load(blocks_on<V>(src, blocks)), V::repeat(kept));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* src) const {
    if constexpr (items == 1) {
      return load<V>(src, 0);
    } else if constexpr (items == 2) {
      return deinterleaved<V>(load<V>(src, 0), load<V>(src, 1));
    } else if constexpr (items == 3) {
      return deinterleaved<V>(load<V>(src, 0), load<V>(src, 1), load<V>(src, 2));
    } else {
      const auto four = deinterleaved<V>(load<V>(src, 0), load<V>(src, 1), load<V>(src, 2), load<V>(src, 3));
      if constexpr (sizeof...(Line) == 3)
        return to_planes(item_of<0>(four), item_of<1>(four), item_of<2>(four));
      else
        return four;
    }
  }
};

// Words plus `half`, of which the bits of `kept` are stored. A fourth word without a line is 65535.
template <int items, class... Line>
struct join_words : line_kernel<join_words<items, Line...>, Line..., to<2 * items>> {
  uint16_t half, kept;

  MORVANE_INLINE uint16_t word(const uint16_t* line) const {
    return static_cast<uint16_t>(add_to_limit(*line, half) & kept);
  }
  MORVANE_INLINE void rule(const uint16_t* a, uint8_t* dst) const { put_word(dst, word(a)); }
  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, uint8_t* dst) const {
    put_word(dst, word(a));
    put_word(dst + 2, word(b));
  }
  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, uint8_t* dst) const {
    rule(a, b, dst);
    put_word(dst + 4, word(c));
    if constexpr (items == 4) put_word(dst + 6, 65535);
  }
  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, const uint16_t* d,
                           uint8_t* dst) const {
    rule(a, b, c, dst);
    put_word(dst + 6, word(d));
  }
  template <class V>
  MORVANE_INLINE auto load(const uint8_t* line) const {
    return V::and_blocks(V::add_words_to_limit(V::load(line), V::repeat(half)), V::repeat(kept));
  }
  template <class V, class... Block>
  MORVANE_INLINE static auto in_turn(const Block... words) {
    return interleaved<V>(
        [](const typename V::block b) __attribute__((always_inline)) { return b; }, words...);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a) const {
    return load<V>(a);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b) const {
    return V::interleave2_words(load<V>(a), load<V>(b));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b, const uint8_t* c) const {
    if constexpr (items == 3)
      return in_turn<V>(load<V>(a), load<V>(b), load<V>(c));
    else
      return in_turn<V>(load<V>(a), load<V>(b), load<V>(c), V::repeat(65535));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b, const uint8_t* c, const uint8_t* d) const {
    return in_turn<V>(load<V>(a), load<V>(b), load<V>(c), load<V>(d));
  }
};

// Words with a sample of so many bits in their lower part, and below it its upper bits once more where `repeated` has
// them.
template <int bits>
struct split_low : line_kernel<split_low<bits>, from<2>, written_line> {
  uint16_t repeated;

  MORVANE_INLINE void rule(const uint8_t* src, uint16_t* line) const {
    const auto top = static_cast<uint16_t>(stored_word(src) << (16 - bits));
    *line = static_cast<uint16_t>(top | (top >> bits & repeated));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* src) const {
    const auto top = V::template shift_left_words<16 - bits>(V::load(src));
    return V::or_blocks(top, V::and_blocks(V::template shift_right_words<bits>(top), V::repeat(repeated)));
  }
};

template <int bits>
struct join_low : line_kernel<join_low<bits>, read_line, to<2>> {
  rounding<bits> by;

  MORVANE_INLINE void rule(const uint16_t* line, uint8_t* dst) const { put_word(dst, by.of(*line)); }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* line) const {
    return by.template of<V>(V::load(line));
  }
};

template <int items>
using split_bytes_to_three = split_bytes<items, written_line, written_line, written_line>;
using split_four_bytes = split_bytes<4, written_line, written_line, written_line, written_line>;
template <int items>
using join_bytes_of_three = join_bytes<items, read_line, read_line, read_line>;
using join_four_bytes = join_bytes<4, read_line, read_line, read_line, read_line>;
using split_three_words = split_words<3, written_line, written_line, written_line>;
using join_three_words = join_words<3, read_line, read_line, read_line>;
using split_three_of_four_words = split_words<4, written_line, written_line, written_line>;
using split_four_words = split_words<4, written_line, written_line, written_line, written_line>;
using join_words_of_three = join_words<4, read_line, read_line, read_line>;
using join_four_words = join_words<4, read_line, read_line, read_line, read_line>;

using lines_stored_kernels =
    kernel_list<split_bytes<1, written_line>, split_bytes<2, written_line, written_line>, split_bytes_to_three<3>,
                split_bytes_to_three<4>, split_four_bytes, join_bytes<1, read_line>,
                join_bytes<2, read_line, read_line>, join_bytes_of_three<3>, join_bytes_of_three<4>, join_four_bytes,
                split_words<1, written_line>, split_words<2, written_line, written_line>, split_three_of_four_words,
                split_four_words, join_words<1, read_line>, join_words<2, read_line, read_line>, join_words_of_three,
                join_four_words, split_three_words, join_three_words, split_low<10>, split_low<12>, join_low<10>,
                join_low<12>>;

}  // namespace Processing::Morvane::format_conversion::kernel
