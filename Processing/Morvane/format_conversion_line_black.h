// Fills of one line.
#pragma once

#include <cstring>

#include "backend/run.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion::line::black {

// Where the processor fills long runs of memory by an operation of its own.
template <class V>
concept stores_repeatedly = requires(uint8_t* destination) {
  V::store_repeatedly(destination, V::least_repeated_store, uint16_t{});
};

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

  // What lies between the first and the last vector, whole cache lines of it by the processor's own repeated store.
  template <class V>
  static void long_run(uint8_t* p_dst, const size_t bytes, const uint16_t value) {
    constexpr uintptr_t cache_line = V::cache_line;
    uint8_t* const begin =
        reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(p_dst) + cache_line - 1) & ~(cache_line - 1));
    const size_t ahead = static_cast<size_t>(begin - p_dst);
    const size_t rest = (bytes - ahead) % cache_line;
    const auto block = V::repeat(value);
    for (size_t i = 0; i < cache_line; i += V::block_bytes) {
      V::store(p_dst + i, block);
      V::store(p_dst + bytes - cache_line + i, block);
    }
    const auto swapped = static_cast<uint16_t>(value << 8 | value >> 8);
    V::store_repeatedly(begin, bytes - ahead - rest, ahead % 2 == 0 ? value : swapped);
  }

  template <class V>
  static void line(uint8_t* p_dst, const size_t no_words, const uint16_t value) {
    if constexpr (stores_repeatedly<V>)
      if (2 * no_words >= V::least_repeated_store) return long_run<V>(p_dst, 2 * no_words, value);
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

// Ten bits a sample: Cb = Cr = 512 and Y = 64, so that all lower bits are zero.
struct yuyv_matrox_10_kernel {
  using place = group_10::place<uint8_t>;

  static constexpr uint16_t upper_bytes = 16 | 128 << 8;

  MORVANE_INLINE static constexpr void rule(const place at) {
    for (int i = 0; i < 4; ++i) at.upper[i] = i % 2 == 0 ? 16 : 128;
    at.low[0] = 0;
  }
  template <class V>
  MORVANE_INLINE static void vector(const place at) {
    V::store(at.upper, V::repeat(upper_bytes));
    V::template store_pair_bits<false>(at.low, V::repeat(0), V::repeat(0));
  }

  // Four groups are a whole number of blocks, which are stored faster than groups of 32 and 8 bytes.
  struct four_groups_kernel {
    static constexpr size_t groups = 4;
    static constexpr size_t bytes = groups * group_10::bytes;

    struct picture {
      uint8_t at[bytes];
    };
    MORVANE_INLINE static constexpr picture black() {
      picture p{};
      for (size_t pair = 0; pair < groups * group_10::pairs; ++pair)
        yuyv_matrox_10_kernel::rule(group_10::of_pair(p.at, pair));
      return p;
    }

    template <class>
    static constexpr size_t step = 1;

    template <class V>
    MORVANE_INLINE static void vector(uint8_t* dst) {
      constexpr picture four = black();
      for (size_t i = 0; i < bytes; i += V::block_bytes) V::store(dst + i, V::load(four.at + i));
    }
    MORVANE_INLINE static void rule(uint8_t* dst) {
      constexpr picture four = black();
      for (size_t i = 0; i < bytes; ++i) dst[i] = four.at[i];
    }
  };

  // An odd line completes its last pair.
  template <class V>
  static void line(uint8_t* p_dst_yuyv, const int no_pixels) {
    constexpr int pixels = 2 * static_cast<int>(four_groups_kernel::groups * group_10::pairs);
    const int whole = no_pixels < 0 ? 0 : no_pixels / pixels;
    four_groups_kernel fours;
    walk<V, static_cast<int>(four_groups_kernel::bytes)>(fours, static_cast<size_t>(whole), p_dst_yuyv);
    yuyv_matrox_10_kernel kernel;
    group_10::walk<V>(kernel, no_pixels - whole * pixels,
                      p_dst_yuyv + static_cast<size_t>(whole) * four_groups_kernel::bytes);
  }
};

inline void yuyv_matrox_10(uint8_t* p_dst_yuyv, const int no_pixels) {
  backend::line_of<yuyv_matrox_10_kernel>()(p_dst_yuyv, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::black
