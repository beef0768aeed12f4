// Fills.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "../vector/operations.h"
#include "group_10.h"
#include "list.h"
#include "samples.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Repeats a 16-bit value, low byte first.
struct fill : each_pixel<to<2>> {
  uint16_t value;

  MORVANE_INLINE constexpr explicit fill(const uint16_t word) : value(word) {}

  MORVANE_INLINE void rule(uint8_t* dst) const { store_word(dst, value); }
  template <class V>
  MORVANE_INLINE auto convert() const {
    return V::repeat(value);
  }

  // What lies between the first and the last cache line by the processor's own repeated store, in whole lines.
  template <class V>
  MORVANE_INLINE void long_run(uint8_t* dst, const size_t bytes) const {
    constexpr uintptr_t cache_line = V::cache_line;
    uint8_t* const begin =
        reinterpret_cast<uint8_t*>((reinterpret_cast<uintptr_t>(dst) + cache_line - 1) & ~(cache_line - 1));
    const size_t ahead = static_cast<size_t>(begin - dst);
    const size_t rest = (bytes - ahead) % cache_line;
    const auto block = V::repeat(value);
    for (size_t i = 0; i < cache_line; i += V::block_bytes) {
      V::store(dst + i, block);
      V::store(dst + bytes - cache_line + i, block);
    }
    const auto swapped = static_cast<uint16_t>(value << 8 | value >> 8);
    V::store_repeatedly(begin, bytes - ahead - rest, ahead % 2 == 0 ? value : swapped);
  }
  template <class V>
  MORVANE_INLINE void line(uint8_t* dst, const int no_words) const {
    const size_t words = at_least_zero(no_words);
    if constexpr (vector::stores_repeatedly<V>)
      if (2 * words >= V::least_repeated_store) return long_run<V>(dst, 2 * words);
    walk<V>(*this, words, dst);
  }
};

// Ten bits a sample: Cb = Cr = 512 and Y = 64, so that all lower bits are zero. An odd line completes its last pair.
struct black_yuyv_10 : each_begun_pair<group_10::to_groups> {
  static constexpr uint8_t luma = 16;
  static constexpr uint8_t chroma = 128;

  MORVANE_INLINE static constexpr void rule(const group_10::place<uint8_t> at) {
    for (int i = 0; i < 4; ++i) at.upper[i] = i % 2 == 0 ? luma : chroma;
    at.low[0] = 0;
  }
  template <class V>
  MORVANE_INLINE static auto convert() {
    return V::template join_groups<false>(V::repeat(luma | chroma << 8), V::repeat(0), V::repeat(0));
  }

  // Most of a line goes by runs of groups that are a whole number of blocks, which are stored faster than groups.
  template <class V>
  MORVANE_INLINE static void line(uint8_t* dst, const int no_pixels);
};

// So many groups that they fill five blocks.
template <int block_bytes>
struct five_black_blocks : units<16 * block_bytes / 8, last_unit::whole, to<5 * block_bytes>> {
  struct picture {
    uint8_t at[5 * block_bytes];
  };
  MORVANE_INLINE static constexpr picture black() {
    picture p{};
    for (size_t pair = 0; pair < block_bytes; ++pair) black_yuyv_10::rule(group_10::to_groups::at(p.at, pair));
    return p;
  }

  MORVANE_INLINE static void rule(uint8_t* dst) {
    constexpr picture five = black();
    for (int i = 0; i < 5 * block_bytes; ++i) dst[i] = five.at[i];
  }
  template <class V, size_t... i>
  MORVANE_INLINE static auto blocks_of(std::index_sequence<i...>) {
    constexpr picture five = black();
    return in_a_row(V::load(five.at + i * V::block_bytes)...);
  }
  template <class V>
  MORVANE_INLINE static auto convert() {
    return blocks_of<V>(std::make_index_sequence<5 * block_bytes / V::block_bytes>());
  }
};

template <class V>
MORVANE_INLINE void black_yuyv_10::line(uint8_t* dst, const int no_pixels) {
  size_t pairs_done = 0;
  if constexpr (V::lanes > 0) {
    using blocks = five_black_blocks<V::block_bytes>;
    const size_t runs = blocks::count(no_pixels);
    walk<V>(blocks(), runs, dst);
    pairs_done = runs * blocks::pixels / 2;
  }
  walk<V>(black_yuyv_10(), count(no_pixels) - pairs_done, group_10::to_groups::at(dst, pairs_done).upper);
}

using black_kernels = kernel_list<fill, black_yuyv_10>;

}  // namespace Processing::Morvane::format_conversion::kernel
