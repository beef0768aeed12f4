// Fills of one line.
#pragma once

#include <cstring>

#include "backend/run.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion::line::black {

// Repeats a 16-bit value, low byte first, over no_words words of any address.
struct fill_kernel {
  uint16_t value;

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE void vector(uint8_t* dst) const {
    V::store(dst, V::repeat(value));
  }
  MORVANE_INLINE void rule(uint8_t* dst) const {
    dst[0] = static_cast<uint8_t>(value);
    dst[1] = static_cast<uint8_t>(value >> 8);
  }

  template <class V>
  static void line(uint8_t* p_dst, const size_t no_words, const uint16_t value) {
    fill_kernel kernel{value};
    walk<V, 2>(kernel, no_words, p_dst);
  }
};

inline void fill(uint8_t* p_dst, const size_t no_words, const uint16_t value) {
  backend::line_of<fill_kernel>()(p_dst, no_words, value);
}

// Cb = Cr = 128 and Y = 16. An odd pixel ends the line with a Cb and a Y.
inline void uyvy(uint8_t* p_dst_uyvy, const int no_pixels) {
  fill(p_dst_uyvy, at_least_zero(no_pixels), 128 | 16 << 8);
}

inline void alpha(uint8_t* p_dst_alpha, const int no_pixels, const int value) {
  if (no_pixels > 0) std::memset(p_dst_alpha, value, static_cast<size_t>(no_pixels));
}

inline void alpha(uint16_t* p_dst_alpha, const int no_pixels, const int value) {
  fill(reinterpret_cast<uint8_t*>(p_dst_alpha), at_least_zero(no_pixels), static_cast<uint16_t>(value));
}

}  // namespace Processing::Morvane::format_conversion::line::black
