// Planes of chroma, one sample of each for a pair. The counts of these kernels are pairs.
#pragma once

#include <cstdint>

#include "depth.h"
#include "list.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Planes of samples of one or two bytes to interleaved ones.
template <int sample_bytes>
struct u_v_to_uv : each_pixel<from<sample_bytes>, from<sample_bytes>, to<2 * sample_bytes>> {
  static constexpr bool bound_by_memory = true;

  static_assert(sample_bytes == 1 || sample_bytes == 2);

  MORVANE_INLINE static void rule(const uint8_t* cb, const uint8_t* cr, uint8_t* dst) {
    for (int i = 0; i < sample_bytes; ++i) dst[i] = cb[i];
    for (int i = 0; i < sample_bytes; ++i) dst[sample_bytes + i] = cr[i];
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* cb, const uint8_t* cr) {
    if constexpr (sample_bytes == 1)
      return V::interleave2(V::load(cb), V::load(cr));
    else
      return V::interleave2_words(V::load(cb), V::load(cr));
  }
};

// Planes of bytes to interleaved words: value * 256.
struct u_v_to_uv16 : each_pixel<from<1>, from<1>, to<4>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* cb, const uint8_t* cr, uint8_t* dst) {
    const uint8_t words[] = {0, cb[0], 0, cr[0]};
    for (int i = 0; i < 4; ++i) dst[i] = words[i];
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* cb, const uint8_t* cr) {
    const auto cbcr = V::interleave2(V::load(cb), V::load(cr));
    return in_a_row(y_to_y16::widen<V>(cbcr.first), y_to_y16::widen<V>(cbcr.second));
  }
};

using chroma_kernels = kernel_list<u_v_to_uv<1>, u_v_to_uv<2>, u_v_to_uv16>;

}  // namespace Processing::Morvane::format_conversion::kernel
