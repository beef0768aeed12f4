// Single samples, as the rules of kernels read and write them.
#pragma once

#include <cstdint>

#include "../vector/inline.h"

namespace Processing::Morvane::format_conversion::kernel {

// Little-endian words at any address.
MORVANE_INLINE uint16_t word_at(const uint8_t* p) {
  return static_cast<uint16_t>(p[0] | p[1] << 8);
}

MORVANE_INLINE void store_word(uint8_t* p, const int value) {
  p[0] = static_cast<uint8_t>(value);
  p[1] = static_cast<uint8_t>(value >> 8);
}

MORVANE_INLINE constexpr uint8_t clamp_to_byte(const int value) {
  return static_cast<uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

MORVANE_INLINE constexpr uint16_t clamp_to_word(const int value) {
  return static_cast<uint16_t>(value < 0 ? 0 : value > 65535 ? 65535 : value);
}

}  // namespace Processing::Morvane::format_conversion::kernel
