// Bytes of one or more planes that are arranged in another way in others, without lines between.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// What becomes of double words: words are rounded by what is added to them; then byte k of the result is one of their
// bytes, of which some bits are kept, and others are always set.
struct byte_places {
  uint8_t from[4];
  uint32_t kept;
  uint32_t set;
  uint32_t added;

  MORVANE_INLINE uint32_t rounded(const uint32_t dword) const {
    const uint32_t lower = add_to_limit(static_cast<uint16_t>(dword), static_cast<uint16_t>(added));
    const uint32_t upper = add_to_limit(static_cast<uint16_t>(dword >> 16), static_cast<uint16_t>(added >> 16));
    return lower | upper << 16;
  }
  MORVANE_INLINE uint32_t arranged(const uint32_t dword) const {
    uint32_t bytes = 0;
    for (int k = 0; k < 4; ++k) bytes |= (dword >> 8 * from[k] & 255) << 8 * k;
    return (bytes & kept) | set;
  }
  template <class V>
  MORVANE_INLINE auto arranged(const typename V::block dwords) const {
    const uint32_t places = from[0] | uint32_t{from[1]} << 8 | uint32_t{from[2]} << 16 | uint32_t{from[3]} << 24;
    return V::with_bits(V::rearrange_dwords(dwords, places), kept, set);
  }
  template <class V>
  MORVANE_INLINE auto rounded(const typename V::two_blocks& dwords) const {
    const auto by = V::repeat_dword(added);
    return typename V::two_blocks{V::add_words_to_limit(dwords.first, by), V::add_words_to_limit(dwords.second, by)};
  }
  template <class V>
  MORVANE_INLINE auto arranged(const typename V::two_blocks& dwords) const {
    return typename V::two_blocks{arranged<V>(dwords.first), arranged<V>(dwords.second)};
  }
};

// So many bytes of each of some planes, one behind the other in a double word. Where they are fewer than four, the rest
// of it may be anything.
template <int... bytes>
struct of_planes {
  static constexpr int count = (0 + ... + bytes);
  static constexpr bool of_three = sizeof...(bytes) == 3 || ((bytes == 3) || ...);  // which takes exchanges over lanes
};

template <class V>
struct four_blocks {
  typename V::two_blocks lower, upper;
};

// What is gathered of a row: its blocks. resampled_rows.h has rows that are made of others.
template <class V>
MORVANE_INLINE auto block_of_row(const uint8_t* row, const int number) {
  return V::load(blocks_on<V>(row, number));
}

// A half of each double word, of one source or of two.
template <class V, class Row>
MORVANE_INLINE auto half_dwords(const Row& src, const int number = 0) {
  return typename V::two_blocks{block_of_row<V>(src, number), block_of_row<V>(src, number + 1)};
}
template <class V, class Row>
MORVANE_INLINE auto half_dwords_of_two(const Row& a, const Row& b) {
  return V::interleave2(block_of_row<V>(a, 0), block_of_row<V>(b, 0));
}
template <class V>
MORVANE_INLINE four_blocks<V> of_halves(const typename V::two_blocks& lower, const typename V::two_blocks& upper) {
  return {V::interleave2_words(lower.first, upper.first), V::interleave2_words(lower.second, upper.second)};
}

template <class V>
MORVANE_INLINE four_blocks<V> gather(of_planes<>) {
  const auto none = V::repeat(0);
  return {{none, none}, {none, none}};
}
template <class V, class Row>
MORVANE_INLINE four_blocks<V> gather(of_planes<4>, const Row& src) {
  return {half_dwords<V>(src), half_dwords<V>(src, 2)};
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(of_planes<3>, const uint8_t* src) {
  return {V::load_threes(src), V::load_threes(src + 3 * V::block_bytes / 2)};
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(of_planes<2>, const uint8_t* src) {
  const auto half = half_dwords<V>(src);
  return of_halves<V>(half, half);
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(of_planes<1>, const uint8_t* src) {
  const auto half = half_dwords_of_two<V>(src, src);
  return of_halves<V>(half, half);
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(of_planes<1, 1>, const uint8_t* a, const uint8_t* b) {
  const auto half = half_dwords_of_two<V>(a, b);
  return of_halves<V>(half, half);
}
template <class V, class First, class Second>
MORVANE_INLINE four_blocks<V> gather(of_planes<2, 2>, const First& a, const Second& b) {
  return of_halves<V>(half_dwords<V>(a), half_dwords<V>(b));
}
template <class V, class First, class Other>
MORVANE_INLINE four_blocks<V> gather(of_planes<2, 1, 1>, const First& a, const Other& b, const Other& c) {
  return of_halves<V>(half_dwords<V>(a), half_dwords_of_two<V>(b, c));
}
template <class V>
MORVANE_INLINE four_blocks<V> gather(of_planes<1, 1, 1>, const uint8_t* a, const uint8_t* b, const uint8_t* c) {
  return of_halves<V>(half_dwords_of_two<V>(a, b), half_dwords_of_two<V>(c, c));
}

// The lower and the upper halves of double words.
template <class V>
MORVANE_INLINE auto halves(const typename V::two_blocks& dwords) {
  return V::deinterleave2_words(dwords.first, dwords.second);
}

template <class V>
MORVANE_INLINE auto scatter(of_planes<4>, const four_blocks<V>& dwords) {
  return in_a_row(dwords.lower, dwords.upper);
}
template <class V>
MORVANE_INLINE auto scatter(of_planes<3>, const four_blocks<V>& dwords) {
  return in_a_row(V::threes(dwords.lower), V::threes(dwords.upper));
}
template <class V>
MORVANE_INLINE auto scatter(of_planes<2>, const four_blocks<V>& dwords) {
  return in_a_row(halves<V>(dwords.lower).first, halves<V>(dwords.upper).first);
}
template <class V>
MORVANE_INLINE auto scatter(of_planes<1>, const four_blocks<V>& dwords) {
  return V::deinterleave2(halves<V>(dwords.lower).first, halves<V>(dwords.upper).first).first;
}
template <class V>
MORVANE_INLINE auto scatter(of_planes<2, 2>, const four_blocks<V>& dwords) {
  const auto lower = halves<V>(dwords.lower);
  const auto upper = halves<V>(dwords.upper);
  return to_planes(in_a_row(lower.first, upper.first), in_a_row(lower.second, upper.second));
}
template <class V>
MORVANE_INLINE auto scatter(of_planes<2, 1, 1>, const four_blocks<V>& dwords) {
  const auto lower = halves<V>(dwords.lower);
  const auto upper = halves<V>(dwords.upper);
  const auto last = V::deinterleave2(lower.second, upper.second);
  return to_planes(in_a_row(lower.first, upper.first), last.first, last.second);
}
template <class V>
MORVANE_INLINE auto scatter(of_planes<1, 1, 1>, const four_blocks<V>& dwords) {
  const auto lower = halves<V>(dwords.lower);
  const auto upper = halves<V>(dwords.upper);
  const auto first = V::deinterleave2(lower.first, upper.first);
  return to_planes(first.first, first.second, V::deinterleave2(lower.second, upper.second).first);
}

template <int>
using read_bytes = const uint8_t*;
template <int>
using written_bytes = uint8_t*;

template <int bytes>
MORVANE_INLINE uint32_t dword_at(const uint8_t* p) {
  if constexpr (bytes == 1) {
    return *p;
  } else if constexpr (bytes == 4) {
    uint32_t dword;
    __builtin_memcpy(&dword, p, 4);
    return dword;
  } else {
    return stored_word(p) | (bytes == 3 ? uint32_t{p[2]} << 16 : 0);
  }
}
template <int bytes>
MORVANE_INLINE void put_dword(uint8_t* p, const uint32_t dword) {
  if constexpr (bytes == 1) {
    *p = static_cast<uint8_t>(dword);
  } else if constexpr (bytes == 4) {
    __builtin_memcpy(p, &dword, 4);
  } else {
    put_word(p, static_cast<uint16_t>(dword));
    if constexpr (bytes == 3) p[2] = static_cast<uint8_t>(dword >> 16);
  }
}

// The next few bytes of a double word, of which some have been passed already.
template <int bytes>
MORVANE_INLINE void append(uint32_t& dword, int& passed, const uint8_t* src) {
  dword |= dword_at<bytes>(src) << 8 * passed;
  passed += bytes;
}
template <int bytes>
MORVANE_INLINE void take(const uint32_t dword, int& passed, uint8_t* dst) {
  put_dword<bytes>(dst, dword >> 8 * passed);
  passed += bytes;
}

template <class Written, class Read>
struct rearrange;

template <int... written, int... read>
struct rearrange<of_planes<written...>, of_planes<read...>>
    : line_kernel<rearrange<of_planes<written...>, of_planes<read...>>, from<read>..., to<written>...> {
  static constexpr bool bound_by_memory = !of_planes<written...>::of_three && !of_planes<read...>::of_three;
  static constexpr bool fills_registers = true;
  static constexpr int gathered = of_planes<read...>::count;
  static constexpr bool has_words = ((read % 2 == 0) || ...);
  byte_places places;
  bool streams;

  MORVANE_INLINE void rule(const read_bytes<read>... src, const written_bytes<written>... dst) const {
    uint32_t dword = 0;
    int passed = 0;
    (append<read>(dword, passed, src), ...);
    if constexpr (has_words) dword = places.rounded(dword);
    dword = places.arranged(dword);
    passed = 0;
    (take<written>(dword, passed, dst), ...);
  }
  template <class V>
  MORVANE_INLINE auto convert(const read_bytes<read>... src) const {
    auto dwords = gather<V>(of_planes<read...>(), src...);
    if constexpr (has_words)
      dwords = {places.template rounded<V>(dwords.lower), places.template rounded<V>(dwords.upper)};
    return scatter<V>(of_planes<written...>(),
                      {places.template arranged<V>(dwords.lower), places.template arranged<V>(dwords.upper)});
  }
};

// The same where samples of words lie in their lower bits, in either picture or in both: words are moved up before
// they are rounded, and down once they are arranged.
template <class Written, class Read>
struct rearrange_moved;

template <int... written, int... read>
struct rearrange_moved<of_planes<written...>, of_planes<read...>>
    : line_kernel<rearrange_moved<of_planes<written...>, of_planes<read...>>, from<read>..., to<written>...> {
  static constexpr bool bound_by_memory = true;
  static constexpr bool fills_registers = true;
  static constexpr int gathered = of_planes<read...>::count;
  byte_places places;
  int up;
  int down;
  bool streams;

  MORVANE_INLINE static uint32_t moved_up(const uint32_t dword, const int bits) {
    return (dword << bits & 0xffff) | dword >> 16 << (16 + bits);
  }
  MORVANE_INLINE static uint32_t moved_down(const uint32_t dword, const int bits) {
    return (dword & 0xffff) >> bits | dword >> (16 + bits) << 16;
  }
  MORVANE_INLINE void rule(const read_bytes<read>... src, const written_bytes<written>... dst) const {
    uint32_t dword = 0;
    int passed = 0;
    (append<read>(dword, passed, src), ...);
    dword = moved_down(places.arranged(places.rounded(moved_up(dword, up))), down);
    passed = 0;
    (take<written>(dword, passed, dst), ...);
  }
  template <class V>
  MORVANE_INLINE auto moved(const typename V::two_blocks& dwords) const {
    const auto rounded =
        places.template rounded<V>({V::shift_left_words(dwords.first, up), V::shift_left_words(dwords.second, up)});
    const auto arranged = places.template arranged<V>(rounded);
    return
        typename V::two_blocks{V::shift_right_words(arranged.first, down), V::shift_right_words(arranged.second, down)};
  }
  template <class V>
  MORVANE_INLINE auto convert(const read_bytes<read>... src) const {
    const auto dwords = gather<V>(of_planes<read...>(), src...);
    return scatter<V>(of_planes<written...>(), {moved<V>(dwords.lower), moved<V>(dwords.upper)});
  }
};

template <class... Written>
using of_four_bytes = kernel_list<rearrange<Written, of_planes<4>>...>;
template <class... Read>
using to_four_bytes = kernel_list<rearrange<of_planes<4>, Read>...>;
template <class... Read>
using to_three_bytes = kernel_list<rearrange<of_planes<3>, Read>...>;

using rearrange_kernels = joined_lists<
    of_four_bytes<of_planes<4>, of_planes<3>, of_planes<2>, of_planes<1>, of_planes<2, 2>, of_planes<2, 1, 1>,
                  of_planes<1, 1, 1>>,
    to_four_bytes<of_planes<>, of_planes<3>, of_planes<2>, of_planes<1>, of_planes<1, 1>, of_planes<2, 2>,
                  of_planes<2, 1, 1>, of_planes<1, 1, 1>>,
    to_three_bytes<of_planes<1>, of_planes<1, 1, 1>>,
    kernel_list<rearrange<of_planes<1, 1, 1>, of_planes<3>>, rearrange_moved<of_planes<4>, of_planes<4>>,
                rearrange_moved<of_planes<4>, of_planes<2>>, rearrange_moved<of_planes<2>, of_planes<4>>,
                rearrange_moved<of_planes<2, 2>, of_planes<4>>, rearrange_moved<of_planes<4>, of_planes<2, 2>>>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
