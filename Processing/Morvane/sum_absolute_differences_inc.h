// The line kernel of the sum of absolute differences.
#pragma once

#include "backend/run.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::sum_absolute_differences::line {

struct difference_kernel {
  template <class V>
  struct walker {
    typename V::sums vectors;
    uint64_t bytes = 0;

    MORVANE_INLINE void rule(const uint8_t* a, const uint8_t* b) {
      bytes += static_cast<uint64_t>(a[0] < b[0] ? b[0] - a[0] : a[0] - b[0]);
    }

    template <class>
    static constexpr size_t step = 2 * V::block_bytes;

    template <class>
    MORVANE_INLINE void vector(const uint8_t* a, const uint8_t* b) {
      vectors = V::add_differences(vectors, V::load(a), V::load(b));
      vectors = V::add_differences(vectors, V::load(a + V::block_bytes), V::load(b + V::block_bytes));
    }
  };

  template <class V>
  static uint64_t line(const uint8_t* p_src_data, const uint8_t* p_dst_data, const int no_pixels) {
    walker<V> w{};
    format_conversion::line::walk_once<V, 1, 1>(w, format_conversion::line::at_least_zero(no_pixels), p_src_data,
                                                p_dst_data);
    if constexpr (V::lanes > 0) return w.bytes + V::total(w.vectors);
    return w.bytes;
  }
};

template <bool src_aligned, bool dst_aligned>
inline uint64_t sum_absolute_differences_line(const uint8_t* p_src_data, const uint8_t* p_dst_data,
                                              const int no_pixels) {
  return backend::line_of<difference_kernel>()(p_src_data, p_dst_data, no_pixels);
}

}  // namespace Processing::Morvane::sum_absolute_differences::line
