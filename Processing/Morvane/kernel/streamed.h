// Copies for readers who come late: whole cache lines whose former contents are not read before they are overwritten.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../vector/operations.h"
#include "list.h"
#include "units.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// To an address that is a multiple of their size.
struct stream_cache_lines : each_pixel<from<64>, to<64>> {
  static constexpr int bytes = 64;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    for (int i = 0; i < bytes; ++i) dst[i] = src[i];
  }
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* src, uint8_t* dst, const int no_lines) {
    for (int i = 0; i < no_lines; ++i, src += bytes, dst += bytes) {
      if constexpr (vector::streams<V>)
        V::stream_cache_line(src, dst);
      else
        rule(src, dst);
    }
  }
};

// Asks for what is read soon.
struct expect_cache_lines : each_pixel<from<64>> {
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* src, const int no_lines) {
    for (int i = 0; i < no_lines; ++i) __builtin_prefetch(src + size_t{64} * static_cast<size_t>(i));
  }
};

// Behind the last store: what this thread stores from here on, others see no earlier.
struct finish_streaming : each_pixel<> {
  template <class V>
  MORVANE_INLINE static void line(int) {
    if constexpr (vector::streams<V>) V::finish_streaming();
  }
};

using streamed_kernels = kernel_list<stream_cache_lines, finish_streaming, expect_cache_lines>;

}  // namespace Processing::Morvane::format_conversion::kernel
