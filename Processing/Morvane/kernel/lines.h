// Lines of working samples: 16-bit words, one line for each component. Most kernels that change them are a rule for one
// sample and a vector body, as all kernels are; a few are loops in plain C++, which compilers make vectors of as well.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "../vector/inline.h"
#include "units.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Lines with so many words for each unit. Lines with margins may be read one word before and behind.
template <class Word, int words_of_unit>
struct words_by_units {
  using pointer = Word*;
  using byte = std::conditional_t<std::is_const_v<Word>, const uint8_t, uint8_t>;
  static constexpr int bytes = 2 * words_of_unit;
  static constexpr bool begins_anywhere = true;

  MORVANE_INLINE static Word* at(Word* line, const size_t unit) { return line + unit * words_of_unit; }
  MORVANE_INLINE static Word* at(byte* line, const size_t unit) { return at(reinterpret_cast<Word*>(line), unit); }
};

template <int words_of_unit>
using read_words = words_by_units<const uint16_t, words_of_unit>;
template <int words_of_unit>
using written_words = words_by_units<uint16_t, words_of_unit>;
using read_line = read_words<1>;
using written_line = written_words<1>;

// What all these kernels derive from.
struct line_base {};

// The base of a kernel with lines, none of which is written in place. Its line function takes a number of units. Where
// there are no vectors, the rule is a loop that knows that lines do not overlap.
template <class Kernel, class... Plane>
struct line_kernel : each_pixel<Plane...>, line_base {
  template <class V>
  MORVANE_INLINE void line(const typename Plane::pointer __restrict... planes, const int count) const {
    const Kernel k = static_cast<const Kernel&>(*this);
    if constexpr (V::lanes > 0)
      walk<V>(k, at_least_zero(count), planes...);
    else
      for (size_t i = 0; i < at_least_zero(count); ++i) k.rule(Plane::at(planes, i)...);
  }
};

// The same of a kernel that others call for parts of their lines where there are no vectors: they share its loop.
template <class Kernel, class... Plane>
struct shared_line_kernel : line_kernel<Kernel, Plane...> {
  using own_line = line_kernel<Kernel, Plane...>;

  template <class V>
  [[gnu::noinline]] static void loop(const Kernel k, const typename Plane::pointer __restrict... planes,
                                     const int count) {
    k.own_line::template line<V>(planes..., count);
  }
  template <class V>
  MORVANE_INLINE void line(const typename Plane::pointer __restrict... planes, const int count) const {
    if constexpr (V::lanes > 0)
      own_line::template line<V>(planes..., count);
    else
      loop<V>(static_cast<const Kernel&>(*this), planes..., count);
  }
};

// a * b / 32768, rounded, of signed words that are not both -32768.
MORVANE_INLINE constexpr int16_t rounded_product(const int16_t a, const int16_t b) {
  return static_cast<int16_t>((a * b + 16384) >> 15);
}

// A word as a signed one around 32768.
MORVANE_INLINE constexpr int16_t around_middle(const uint16_t v) {
  return static_cast<int16_t>(v ^ 0x8000);
}
template <class V>
MORVANE_INLINE auto around_middle(const typename V::block v) {
  return V::xor_blocks(v, V::repeat(0x8000));
}

// (a + b) >> 1, in 16 bits, and (a + b + 1) >> 1.
MORVANE_INLINE constexpr uint16_t average_down(const uint16_t a, const uint16_t b) {
  return static_cast<uint16_t>((a & b) + static_cast<uint16_t>((a ^ b) >> 1));
}
MORVANE_INLINE constexpr uint16_t average_up(const uint16_t a, const uint16_t b) {
  return static_cast<uint16_t>((a + b + 1) >> 1);
}

// (3 a + b + 2) >> 2 and (a + 2 b + c + 2) >> 2.
MORVANE_INLINE constexpr uint16_t nearer_to_first(const uint16_t a, const uint16_t b) {
  return average_up(a, average_down(a, b));
}
template <class V>
MORVANE_INLINE auto nearer_to_first(const typename V::block a, const typename V::block b) {
  return V::average_up(a, V::average_down(a, b));
}
MORVANE_INLINE constexpr uint16_t smoothed(const uint16_t a, const uint16_t b, const uint16_t c) {
  return average_up(b, average_down(a, c));
}
template <class V>
MORVANE_INLINE auto smoothed(const typename V::block a, const typename V::block b, const typename V::block c) {
  return V::average_up(b, V::average_down(a, c));
}

// A word plus another, at most 65535, in 16 bits.
MORVANE_INLINE constexpr uint16_t add_to_limit(const uint16_t v, const uint16_t more) {
  const auto most = static_cast<uint16_t>(65535 - more);
  return static_cast<uint16_t>((v < most ? v : most) + more);
}

// Little-endian words at any address. As single bytes, compilers would make no vectors of them.
MORVANE_INLINE uint16_t stored_word(const uint8_t* p) {
  uint16_t word;
  __builtin_memcpy(&word, p, 2);
  return word;
}
MORVANE_INLINE void put_word(uint8_t* p, const uint16_t word) {
  __builtin_memcpy(p, &word, 2);
}

// So many vectors further on.
template <class V, class Byte>
MORVANE_INLINE Byte* blocks_on(Byte* p, const int blocks) {
  return p + blocks * V::block_bytes;
}

}  // namespace Processing::Morvane::format_conversion::kernel
