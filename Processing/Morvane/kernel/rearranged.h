// Bytes of one or more planes that are arranged in another way in another plane, without lines between.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Of up to four bytes that are gathered: each byte that is stored is one of them, of which some bits are kept and
// others always set.
struct byte_places {
  uint8_t from[4];
  uint8_t kept[4];
  uint8_t set[4];

  MORVANE_INLINE uint8_t byte(const uint8_t* gathered, const int place) const {
    return static_cast<uint8_t>((gathered[from[place]] & kept[place]) | set[place]);
  }
  MORVANE_INLINE static uint32_t as_dword(const uint8_t (&bytes)[4]) {
    return bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[3]} << 24;
  }
  template <class V>
  MORVANE_INLINE auto arranged(const typename V::block gathered) const {
    const auto bytes = V::rearrange_dwords(gathered, as_dword(from));
    return V::or_blocks(V::and_blocks(bytes, V::repeat_dword(as_dword(kept))), V::repeat_dword(as_dword(set)));
  }
  template <class V>
  MORVANE_INLINE auto arranged(const typename V::two_blocks& gathered) const {
    return typename V::two_blocks{arranged<V>(gathered.first), arranged<V>(gathered.second)};
  }
};

// Bytes are gathered as double words: so many of each source, one source behind the other. Where they are fewer than
// four, the rest of a double word may be anything.
template <int... bytes>
struct gathered {};

template <class V>
struct four_blocks {
  typename V::two_blocks lower, upper;
};

// A half of each double word, of one source or of two.
template <class V>
MORVANE_INLINE auto half_dwords(const uint8_t* src) {
  return typename V::two_blocks{V::load(src), V::load(blocks_on<V>(src, 1))};
}
template <class V>
MORVANE_INLINE auto half_dwords(const uint8_t* a, const uint8_t* b) {
  return V::interleave2(V::load(a), V::load(b));
}
template <class V>
MORVANE_INLINE four_blocks<V> of_halves(const typename V::two_blocks& lower, const typename V::two_blocks& upper) {
  return {V::interleave2_words(lower.first, upper.first), V::interleave2_words(lower.second, upper.second)};
}

template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<>) {
  const auto none = V::repeat(0);
  return {{none, none}, {none, none}};
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<4>, const uint8_t* src) {
  return {half_dwords<V>(src), half_dwords<V>(blocks_on<V>(src, 2))};
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<3>, const uint8_t* src) {
  return {V::load_threes(src), V::load_threes(src + 3 * V::block_bytes / 2)};
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<2>, const uint8_t* src) {
  const auto half = half_dwords<V>(src);
  return of_halves<V>(half, half);
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<1>, const uint8_t* src) {
  const auto half = half_dwords<V>(src, src);
  return of_halves<V>(half, half);
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<1, 1>, const uint8_t* a, const uint8_t* b) {
  const auto half = half_dwords<V>(a, b);
  return of_halves<V>(half, half);
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<2, 2>, const uint8_t* a, const uint8_t* b) {
  return of_halves<V>(half_dwords<V>(a), half_dwords<V>(b));
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<2, 1, 1>, const uint8_t* a, const uint8_t* b, const uint8_t* c) {
  return of_halves<V>(half_dwords<V>(a), half_dwords<V>(b, c));
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(gathered<1, 1, 1>, const uint8_t* a, const uint8_t* b, const uint8_t* c) {
  return of_halves<V>(half_dwords<V>(a, b), half_dwords<V>(c, c));
}

// The first bytes of double words, without the others.
template <class V>
MORVANE_INLINE auto lower_words(const typename V::two_blocks& dwords) {
  return V::deinterleave2_words(dwords.first, dwords.second).first;
}
template <int bytes, class V>
MORVANE_INLINE auto first_bytes(const four_blocks<V>& dwords) {
  if constexpr (bytes == 4)
    return in_a_row(dwords.lower, dwords.upper);
  else if constexpr (bytes == 3)
    return in_a_row(V::threes(dwords.lower), V::threes(dwords.upper));
  else if constexpr (bytes == 2)
    return in_a_row(lower_words<V>(dwords.lower), lower_words<V>(dwords.upper));
  else
    return V::deinterleave2(lower_words<V>(dwords.lower), lower_words<V>(dwords.upper)).first;
}

template <int>
using source_pointer = const uint8_t*;

template <int stored, int... bytes>
struct rearrange : line_kernel<rearrange<stored, bytes...>, from<bytes>..., to<stored>> {
  static constexpr bool bound_by_memory = true;
  static constexpr int gathered_bytes = (0 + ... + bytes);
  byte_places places;

  template <int count>
  MORVANE_INLINE static void append(uint8_t*& to, const uint8_t* src) {
    for (int i = 0; i < count; ++i) *to++ = src[i];
  }
  MORVANE_INLINE void rule(const source_pointer<bytes>... src, uint8_t* dst) const {
    uint8_t dword[4] = {};
    [[maybe_unused]] uint8_t* next = dword;
    (append<bytes>(next, src), ...);
    for (int i = 0; i < stored; ++i) dst[i] = places.byte(dword, i);
  }
  template <class V>
  MORVANE_INLINE auto convert(const source_pointer<bytes>... src) const {
    const auto dwords = gather<V>(gathered<bytes...>(), src...);
    const four_blocks<V> made = {places.template arranged<V>(dwords.lower), places.template arranged<V>(dwords.upper)};
    return first_bytes<stored>(made);
  }
};

using rearrange_kernels =
    kernel_list<rearrange<4>, rearrange<4, 4>, rearrange<3, 4>, rearrange<2, 4>, rearrange<1, 4>, rearrange<4, 3>,
                rearrange<1, 3>, rearrange<4, 2>, rearrange<4, 1>, rearrange<3, 1>, rearrange<4, 1, 1>,
                rearrange<4, 2, 2>, rearrange<4, 2, 1, 1>, rearrange<4, 1, 1, 1>, rearrange<3, 1, 1, 1>>;

}  // namespace Processing::Morvane::format_conversion::kernel
