// Between rows of pixels in words of 32 bits, each with three samples of ten bits, and lines of working samples.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "lines_stored.h"
#include "list.h"
#include "rearranged.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// The bytes of double words, which may be the other way round in memory.
struct dword_order {
  bool is_reversed;

  MORVANE_INLINE uint32_t load(const uint8_t* p) const {
    const uint32_t dword = dword_at<4>(p);
    return is_reversed ? __builtin_bswap32(dword) : dword;
  }
  MORVANE_INLINE void put(uint8_t* p, const uint32_t dword) const {
    put_dword<4>(p, is_reversed ? __builtin_bswap32(dword) : dword);
  }
  template <class V>
  MORVANE_INLINE auto arranged(const typename V::block dwords) const {
    return V::rearrange_dwords(dwords, is_reversed ? 0x00010203 : 0x03020100);
  }
};

// The samples begin at the bit `lowest`, 0 or 2. A line more is that of the upper two bits, of which the largest number
// stands for 65535. In the halves of a word they lie, from the lowest bit on, as
//   lower   x A A A A A A A A A A B B B...     upper   ...B B B B C C C C C C C C C C D D
template <int lowest, class... Line>
struct split_tens : line_kernel<split_tens<lowest, Line...>, from<4>, Line...> {
  dword_order order;
  uint16_t repeated;  // of the upper bits of a sample, below it once more

  template <int place>
  MORVANE_INLINE uint16_t sample(const uint32_t word) const {
    const auto top = static_cast<uint16_t>((word >> (lowest + 10 * place) & 1023) << 6);
    return static_cast<uint16_t>(top | (top >> 10 & repeated));
  }
  MORVANE_INLINE void rule(const uint8_t* src, uint16_t* a, uint16_t* b, uint16_t* c) const {
    const uint32_t word = order.load(src);
    *a = sample<0>(word);
    *b = sample<1>(word);
    *c = sample<2>(word);
  }
  MORVANE_INLINE void rule(const uint8_t* src, uint16_t* a, uint16_t* b, uint16_t* c, uint16_t* d) const {
    rule(src, a, b, c);
    *d = static_cast<uint16_t>((order.load(src) >> 30) * 21845);
  }
  template <class V>
  MORVANE_INLINE auto sample(const typename V::block with_others) const {
    const auto top = V::and_blocks(with_others, V::repeat(0xffc0));
    return V::or_blocks(top, V::and_blocks(V::template shift_right_words<10>(top), V::repeat(repeated)));
  }
  // Two bits over and over.
  template <class V>
  MORVANE_INLINE static auto repeated_pair(const typename V::block upper) {
    const auto two = V::and_blocks(upper, V::repeat(0xc000));
    const auto four = V::or_blocks(two, V::template shift_right_words<2>(two));
    const auto eight = V::or_blocks(four, V::template shift_right_words<4>(four));
    return V::or_blocks(eight, V::template shift_right_words<8>(eight));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* src) const {
    const auto halves =
        V::deinterleave2_words(order.arranged<V>(V::load(src)), order.arranged<V>(V::load(blocks_on<V>(src, 1))));
    const auto a = sample<V>(V::template shift_left_words<6 - lowest>(halves.first));
    const auto b = sample<V>(V::or_blocks(V::template shift_right_words<4 + lowest>(halves.first),
                                          V::template shift_left_words<12 - lowest>(halves.second)));
    const auto c = sample<V>(V::template shift_left_words<2 - lowest>(halves.second));
    if constexpr (sizeof...(Line) == 3)
      return to_planes(a, b, c);
    else
      return to_planes(a, b, c, repeated_pair<V>(halves.second));
  }
};

// Three samples of ten bits in a double word, in whose upper half the bits of `set` are ones.
template <int lowest>
struct joined_tens {
  dword_order order;
  uint16_t set;

  MORVANE_INLINE void put(uint8_t* dst, const uint16_t a, const uint16_t b, const uint16_t c,
                          const uint16_t above) const {
    const uint32_t samples = a | uint32_t{b} << 10 | uint32_t{c} << 20;
    order.put(dst, samples << lowest | static_cast<uint32_t>(above | set) << 16);
  }
  template <class V>
  MORVANE_INLINE auto joined(const typename V::block a, const typename V::block b, const typename V::block c,
                             const typename V::block above) const {
    const auto lower =
        V::or_blocks(V::template shift_left_words<lowest>(a), V::template shift_left_words<10 + lowest>(b));
    const auto upper =
        V::or_blocks(V::template shift_right_words<6 - lowest>(b), V::template shift_left_words<4 + lowest>(c));
    const auto words = V::interleave2_words(lower, V::or_blocks(upper, V::or_blocks(above, V::repeat(set))));
    return typename V::two_blocks{order.arranged<V>(words.first), order.arranged<V>(words.second)};
  }
};

template <int lowest, class... Line>
struct join_tens : line_kernel<join_tens<lowest, Line...>, Line..., to<4>>, joined_tens<lowest> {
  rounding<10> by;

  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, uint8_t* dst) const {
    this->put(dst, by.of(*a), by.of(*b), by.of(*c), 0);
  }
  MORVANE_INLINE void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, const uint16_t* d,
                           uint8_t* dst) const {
    this->put(dst, by.of(*a), by.of(*b), by.of(*c), *d & 0xc000);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b, const uint8_t* c,
                              const typename V::block above) const {
    return this->template joined<V>(by.of<V>(V::load(a)), by.of<V>(V::load(b)), by.of<V>(V::load(c)), above);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b, const uint8_t* c) const {
    return convert<V>(a, b, c, V::repeat(0));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* a, const uint8_t* b, const uint8_t* c, const uint8_t* d) const {
    return convert<V>(a, b, c, V::and_blocks(V::load(d), V::repeat(0xc000)));
  }
};

template <int lowest>
using split_three_tens = split_tens<lowest, written_line, written_line, written_line>;
using split_tens_and_two = split_tens<0, written_line, written_line, written_line, written_line>;
template <int lowest>
using join_three_tens = join_tens<lowest, read_line, read_line, read_line>;
using join_tens_and_two = join_tens<0, read_line, read_line, read_line, read_line>;

using lines_tens_kernels = kernel_list<split_three_tens<0>, split_three_tens<2>, split_tens_and_two, join_three_tens<0>,
                                       join_three_tens<2>, join_tens_and_two>;

}  // namespace Processing::Morvane::format_conversion::kernel
