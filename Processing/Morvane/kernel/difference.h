// The sum of absolute differences of two lines of bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "list.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

struct sum_of_differences : each_pixel<from<1>, from<1>> {
  using answer = uint64_t;

  template <class V>
  MORVANE_INLINE static auto load_two(const uint8_t* p) {
    return typename V::two_blocks{V::load(p), V::load(p + V::block_bytes)};
  }
  // The bytes of a line of at least one block. The last ones are the end of a block that begins among the others, of
  // which those already seen count nothing.
  template <class V>
  MORVANE_INLINE static uint64_t by_blocks(const uint8_t* a, const uint8_t* b, size_t bytes) {
    constexpr size_t step = V::block_bytes;
    auto sums = V::no_sum();
    for (; bytes >= 2 * step; bytes -= 2 * step, a += 2 * step, b += 2 * step)
      sums = V::add_differences(sums, load_two<V>(a), load_two<V>(b));
    if (bytes >= step) {
      sums = V::add_differences(sums, V::load(a), V::load(b));
      a += step;
      b += step;
      bytes -= step;
    }
    const size_t seen = step - bytes;
    if (bytes > 0)
      sums = V::add_differences(sums, V::without_first(V::load(a - seen), seen),
                                V::without_first(V::load(b - seen), seen));
    return V::total(sums);
  }

  MORVANE_INLINE static uint64_t rule(const uint8_t a, const uint8_t b) {
    return static_cast<uint64_t>(a < b ? b - a : a - b);
  }

  template <class V>
  MORVANE_INLINE static uint64_t line(const uint8_t* a, const uint8_t* b, const int no_pixels) {
    const size_t bytes = at_least_zero(no_pixels);
    if constexpr (V::lanes > 0) {
      if (bytes >= V::block_bytes) return by_blocks<V>(a, b, bytes);
      if constexpr (V::narrower::lanes > 0) return line<typename V::narrower>(a, b, no_pixels);
    }
    uint64_t sum = 0;
    for (size_t i = 0; i < bytes; ++i) sum += rule(a[i], b[i]);
    return sum;
  }
};

using difference_kernels = kernel_list<sum_of_differences>;

}  // namespace Processing::Morvane::format_conversion::kernel
