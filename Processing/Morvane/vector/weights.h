// The weights of sums of bytes, as template arguments.
//
// A function that computes with such an argument copies it to a constexpr local first: an unoptimised build would keep
// the argument itself as an object that the copies of a kernel for different instruction sets share.
#pragma once

#include <cstdint>

#include "inline.h"

namespace Processing::Morvane::format_conversion::vector {

// Of the bytes of a four-byte pixel, in memory order.
struct weights {
  int first, second, third, fourth;

  friend constexpr bool operator==(const weights&, const weights&) = default;
};

// As four signed bytes.
constexpr uint32_t packed(const weights w) {
  return (static_cast<uint32_t>(w.first) & 255) | (static_cast<uint32_t>(w.second) & 255) << 8 |
         (static_cast<uint32_t>(w.third) & 255) << 16 | (static_cast<uint32_t>(w.fourth) & 255) << 24;
}

MORVANE_INLINE constexpr bool is_unsigned(const weights w) {
  return w.first >= 0 && w.second >= 0 && w.third >= 0 && w.fourth >= 0;
}

// Of a pixel's luma and its pair's chroma, and a constant added to the sum.
struct ycbcr_weights {
  int y, cb, cr, constant;
};

}  // namespace Processing::Morvane::format_conversion::vector
