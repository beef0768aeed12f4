// All colours, and the matrices from RGB to YCbCr in 32-bit arithmetic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "exhaustive/domains.h"

namespace morvane::tests {

struct ycbcr {
  int y, cb, cr;

  bool operator==(const ycbcr&) const = default;
};

using ycbcr_rule = ycbcr (*)(int r, int g, int b);

inline ycbcr to_601(int r, int g, int b) {
  return {(33 * r + 64 * g + 13 * b + 2048) >> 7, (-38 * r - 75 * g + 112 * b + 32768) >> 8,
          (112 * r - 94 * g - 18 * b + 32768) >> 8};
}

inline ycbcr to_709(int r, int g, int b) {
  return {(23 * r + 79 * g + 8 * b + 2048) >> 7, (-26 * r - 87 * g + 112 * b + 32768) >> 8,
          (112 * r - 102 * g - 10 * b + 32768) >> 8};
}

// Calls take(pixels, r, g) with rows that hold all values of blue, each in `repeats` pixels, for all red and green,
// until it answers false. The fourth byte of pixel i is alpha(i + r).
template <class Alpha, class Take>
void all_colors(const rgb_layout& layout, std::size_t repeats, Alpha alpha, Take take) {
  std::vector<std::uint8_t> pixels(layout.bytes * repeats * byte_values);
  for (unsigned row = 0; row < 65536; row += row_step()) {
    const auto r = static_cast<int>(row >> 8);
    const auto g = static_cast<int>(row & 255);
    for (std::size_t i = 0; i < repeats * byte_values; ++i) {
      std::uint8_t* p = pixels.data() + layout.bytes * i;
      p[layout.red] = low_byte(r);
      p[layout.green] = low_byte(g);
      p[layout.blue] = low_byte(static_cast<int>(i / repeats));
      if (layout.bytes == 4) p[3] = low_byte(alpha(static_cast<int>(i) + r));
    }
    if (!take(pixels.data(), r, g)) return;
  }
}

inline int any_alpha(int number) {
  return number;
}

}  // namespace morvane::tests
