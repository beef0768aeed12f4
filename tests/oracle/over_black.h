// A pair over black, 8 bits a sample.
#pragma once

#include <cstdint>

#include "parts.h"

namespace morvane::tests::oracle {

inline std::uint8_t over_black(int sample, int black, int alpha) {
  return byte(black + floor_shift((sample - black) * (alpha + 1), 8));
}

inline void store_over_black(std::uint8_t* uyvy, int cb, int y0, int cr, int y1, int a0, int a1) {
  uyvy[0] = over_black(cb, 128, a0);
  uyvy[1] = over_black(y0, 16, a0);
  uyvy[2] = over_black(cr, 128, a1);
  uyvy[3] = over_black(y1, 16, a1);
}

}  // namespace morvane::tests::oracle
