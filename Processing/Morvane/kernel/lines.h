// Lines of working samples: 16-bit words, one line for each component. The kernels that change them are loops in plain
// C++, which every backend compiles for its own instructions.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../vector/inline.h"
#include "units.h"

namespace Processing::Morvane::format_conversion::kernel {

// Lines that are read, and lines that are written. Their items are words; lines with margins may be read one item
// before and behind.
using read_line = unit_by_unit<const uint16_t, 1>;
using written_line = unit_by_unit<uint16_t, 1>;

template <class... Line>
using each_sample = each_pixel<Line...>;

// a * b / 32768, rounded, of signed words that are not both -32768. Written such that compilers know it as the one
// instruction that it is.
MORVANE_INLINE constexpr int16_t rounded_product(const int16_t a, const int16_t b) {
  return static_cast<int16_t>(((a * b >> 14) + 1) >> 1);
}

// A word as a signed one around 32768.
MORVANE_INLINE constexpr int16_t around_middle(const uint16_t v) {
  return static_cast<int16_t>(v ^ 0x8000);
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
MORVANE_INLINE constexpr uint16_t smoothed(const uint16_t a, const uint16_t b, const uint16_t c) {
  return average_up(b, average_down(a, c));
}

}  // namespace Processing::Morvane::format_conversion::kernel
