// The groups of the 10-bit card format: 40 bytes for eight pairs of pixels, first the upper eight bits of their
// samples, Y0 Cb Y1 Cr, then a byte for each pair with the lower two bits of its samples, Y0 lowest.
#pragma once

#include <cstddef>
#include <cstdint>

#include "units.h"

namespace Processing::Morvane::format_conversion::kernel::group_10 {

inline constexpr int upper_bytes = 32;  // of a group
inline constexpr int bytes = 40;
inline constexpr int pairs = 8;

// The upper bytes of a pair, and the byte with its lower bits.
template <class Byte>
struct place {
  Byte* upper;
  Byte* low;
};

// A plane of groups, of which pairs are the units. A vector begins with a group.
template <class Byte>
struct plane {
  using pointer = Byte*;
  static constexpr int bytes = group_10::bytes / pairs;
  static constexpr bool begins_anywhere = false;

  MORVANE_INLINE static constexpr place<Byte> at(Byte* line, const size_t pair) {
    Byte* group = line + pair / pairs * group_10::bytes;
    return {group + pair % pairs * 4, group + upper_bytes + pair % pairs};
  }
};

using from_groups = plane<const uint8_t>;
using to_groups = plane<uint8_t>;

// Packs the upper ten bits of the words of a pair. The two bits of Cr are those of the word `cr_low`.
MORVANE_INLINE void pack(const place<uint8_t> at, const int y0, const int cb, const int y1, const int cr,
                         const int cr_low) {
  at.upper[0] = static_cast<uint8_t>(y0 >> 8);
  at.upper[1] = static_cast<uint8_t>(cb >> 8);
  at.upper[2] = static_cast<uint8_t>(y1 >> 8);
  at.upper[3] = static_cast<uint8_t>(cr >> 8);
  at.low[0] = static_cast<uint8_t>((y0 >> 6 & 3) | (cb >> 6 & 3) << 2 | (y1 >> 6 & 3) << 4 | (cr_low >> 6 & 3) << 6);
}

// The upper bytes of two blocks of words, alternately.
template <class V>
MORVANE_INLINE auto upper_bytes_of(const typename V::block first, const typename V::block second) {
  return V::or_blocks(V::template shift_right_words<8>(first), V::and_blocks(second, V::repeat(0xff00)));
}

// As pack, for the pairs of a block. The two bits of Cr may be those of Cb.
template <class V, bool cr_as_cb = false>
MORVANE_INLINE auto packed(const typename V::block y, const typename V::block cbcr) {
  return V::template join_groups<cr_as_cb>(upper_bytes_of<V>(y, cbcr), y, cbcr);
}

}  // namespace Processing::Morvane::format_conversion::kernel::group_10
