// Planes of one sample a pixel, from one depth to another. 16-bit samples are words at any address.
#pragma once

#include <cstdint>

#include "list.h"
#include "samples.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Bytes to words: value * 256.
struct y_to_y16 : each_pixel<from<1>, to<2>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t value = src[0];
    dst[0] = 0;
    dst[1] = value;
  }
  template <class V>
  MORVANE_INLINE static auto widen(const typename V::block samples) {
    return V::interleave2(V::repeat(0), samples);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return widen<V>(V::load(src));
  }
};

// Bytes to words: 257 * value, the byte in both halves.
struct repeat_byte : each_pixel<from<1>, to<2>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t value = src[0];
    dst[0] = value;
    dst[1] = value;
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto values = V::load(src);
    return V::interleave2(values, values);
  }
};

// Words to bytes: the lower eight bits of value >> bits.
template <int bits>
struct word_to_byte : each_pixel<from<2>, to<1>> {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    dst[0] = static_cast<uint8_t>(word_at(src) >> bits);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto first = V::load(src);
    const auto second = V::load(src + V::block_bytes);
    if constexpr (bits == 8)
      return V::deinterleave2(first, second).second;
    else
      return V::deinterleave2(V::template shift_right_words<bits>(first), V::template shift_right_words<bits>(second))
          .first;
  }
};

// The lower `bits` bits of words to the whole of 16, filled up with the value's own upper bits, so that the largest
// value becomes 65535.
template <int bits>
struct fill_up_word : each_pixel<from<2>, to<2>> {
  static constexpr bool bound_by_memory = true;

  static constexpr int up = 16 - bits;
  static constexpr int down = bits - up;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const int value = word_at(src);
    store_word(dst, (value << up) + (value >> down));
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto values = V::load(src);
    return V::add_words(V::template shift_left_words<up>(values), V::template shift_right_words<down>(values));
  }
};

// The fourth of four words.
struct fourth_word : each_pixel<from<8>, to<2>> {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) { store_word(dst, word_at(src + 6)); }

  template <class V>
  MORVANE_INLINE static auto odd_words(const uint8_t* src) {
    return V::deinterleave2_words(V::load(src), V::load(src + V::block_bytes)).second;
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::deinterleave2_words(odd_words<V>(src), odd_words<V>(src + 2 * V::block_bytes)).second;
  }
};

using depth_kernels = kernel_list<y_to_y16, repeat_byte, word_to_byte<2>, word_to_byte<8>, fill_up_word<10>,
                                  fill_up_word<12>, fourth_word>;

}  // namespace Processing::Morvane::format_conversion::kernel
