// A group of 16 pixels of yuyv_matrox_10 in 40 bytes: where its pairs lie, and how one is stored.
#pragma once

#include <cstdint>

namespace morvane::tests::oracle {

// A pair of a line: four bytes with the upper eight bits of its samples, and one byte with their lower two, the first
// sample in the lowest bits.
template <class Byte>
struct packed_pair {
  Byte* upper;
  Byte* lower;
};

template <class Byte>
packed_pair<Byte> pair_in_group(Byte* line, int k) {
  Byte* group = line + k / 8 * 40;
  return {group + 4 * (k % 8), group + 32 + k % 8};
}

struct ten_bits {
  std::uint32_t upper, lower;
};

inline void put_pair(std::uint8_t* line, int k, ten_bits y0, ten_bits cb, ten_bits y1, ten_bits cr) {
  const auto p = pair_in_group(line, k);
  p.upper[0] = static_cast<std::uint8_t>(y0.upper);
  p.upper[1] = static_cast<std::uint8_t>(cb.upper);
  p.upper[2] = static_cast<std::uint8_t>(y1.upper);
  p.upper[3] = static_cast<std::uint8_t>(cr.upper);
  *p.lower = static_cast<std::uint8_t>(y0.lower + 4 * cb.lower + 16 * y1.lower + 64 * cr.lower);
}

}  // namespace morvane::tests::oracle
