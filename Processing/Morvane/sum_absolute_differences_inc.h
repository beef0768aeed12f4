// The line kernel of the sum of absolute differences.
#pragma once

#include "backend/run.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::sum_absolute_differences::line {

struct difference_kernel {
  template <class V>
  struct walker {
    typename V::sums sums;

    MORVANE_INLINE void block(const uint8_t* a, const uint8_t* b) {
      sums = V::add_differences(sums, V::load(a), V::load(b));
    }
    // A block of which the first bytes count nothing.
    MORVANE_INLINE void end_of_block(const uint8_t* a, const uint8_t* b, const size_t first) {
      sums = V::add_differences(sums, V::without_first(V::load(a), first), V::without_first(V::load(b), first));
    }
    // The bytes of a line of at least one block. The last ones are the end of a block that begins among the others.
    MORVANE_INLINE uint64_t sum(const uint8_t* a, const uint8_t* b, size_t bytes) {
      constexpr size_t step = V::block_bytes;
      for (; bytes >= 2 * step; bytes -= 2 * step, a += 2 * step, b += 2 * step) {
        block(a, b);
        block(a + step, b + step);
      }
      if (bytes >= step) {
        block(a, b);
        a += step;
        b += step;
        bytes -= step;
      }
      const size_t seen = step - bytes;
      if (bytes > 0) end_of_block(a - seen, b - seen, seen);
      return V::total(sums);
    }
  };

  MORVANE_INLINE static uint64_t rule(const uint8_t a, const uint8_t b) {
    return static_cast<uint64_t>(a < b ? b - a : a - b);
  }

  template <class V>
  static uint64_t line(const uint8_t* p_src_data, const uint8_t* p_dst_data, const int no_pixels) {
    const size_t bytes = format_conversion::line::at_least_zero(no_pixels);
    if constexpr (V::lanes > 0) {
      if (bytes >= V::block_bytes) return walker<V>{V::no_sum()}.sum(p_src_data, p_dst_data, bytes);
    }
    uint64_t sum = 0;
    for (size_t i = 0; i < bytes; ++i) sum += rule(p_src_data[i], p_dst_data[i]);
    return sum;
  }
};

template <bool src_aligned, bool dst_aligned>
inline uint64_t sum_absolute_differences_line(const uint8_t* p_src_data, const uint8_t* p_dst_data,
                                              const int no_pixels) {
  return backend::line_of<difference_kernel>()(p_src_data, p_dst_data, no_pixels);
}

}  // namespace Processing::Morvane::sum_absolute_differences::line
