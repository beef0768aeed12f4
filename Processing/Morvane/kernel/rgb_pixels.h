// Pixels of red, green and blue, as kernels that read or write them without lines know them.
#pragma once

#include <cstdint>

#include "lines_colour.h"

namespace Processing::Morvane::format_conversion::kernel {

enum class rgb_samples { bytes, luminance, words, low_tens, tens, tens_above_two_bits, twelves, floats };

struct rgb_sample {
  uint16_t r, g, b;
};

// Red comes first, or blue where all bits are set.
struct red_or_blue_first {
  uint16_t exchanged;

  MORVANE_INLINE rgb_sample ordered(const rgb_sample& rgb) const {
    const auto both = static_cast<uint16_t>((rgb.r ^ rgb.b) & exchanged);
    return {static_cast<uint16_t>(rgb.r ^ both), rgb.g, static_cast<uint16_t>(rgb.b ^ both)};
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> ordered(const rgb_blocks<V>& rgb) const {
    const auto both = V::and_blocks(V::xor_blocks(rgb.r, rgb.b), V::repeat(exchanged));
    return {V::xor_blocks(rgb.r, both), rgb.g, V::xor_blocks(rgb.b, both)};
  }
};

}  // namespace Processing::Morvane::format_conversion::kernel
