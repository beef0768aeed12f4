// Readers of rows of RGB: pixels as working samples. A reader has the bytes of a pixel, `pixel` reads one, `pixels` as
// many as a block has words, and `read_line` a line of them where there are no vectors. What the layouts of a kind
// differ in is data.
#pragma once

#include <cstddef>
#include <cstdint>

#include "interleaved_words.h"
#include "lines.h"
#include "lines_colour.h"
#include "lines_stored.h"
#include "lines_tens.h"
#include "rgb_pixels.h"

namespace Processing::Morvane::format_conversion::kernel {

// Bytes, of which places say where R, G and B are.
template <int bytes_of_pixel>
struct rgb_in_bytes {
  static constexpr int bytes = bytes_of_pixel;
  static constexpr rgb_samples samples = rgb_samples::bytes;
  uint32_t places;

  MORVANE_INLINE const uint8_t* at(const uint8_t* p, const int i) const { return p + (places >> 8 * i & 3); }
  MORVANE_INLINE rgb_sample pixel(const uint8_t* p) const {
    return {widened(*at(p, 0), 255), widened(*at(p, 1), 255), widened(*at(p, 2), 255)};
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> pixels(const uint8_t* p) const {
    const auto load = [&]() __attribute__((always_inline)) {
      if constexpr (bytes == 3)
        return V::load_bytes_of_threes(p, places);
      else
        return V::load_bytes_of_fours(p, places);
    };
    const auto rgb = load();
    return {rgb.first, rgb.second, rgb.third};
  }
};

// Words, three of a pixel or the first three of four.
template <int items>
struct rgb_in_words : red_or_blue_first {
  static constexpr int bytes = 2 * items;
  static constexpr rgb_samples samples = rgb_samples::words;

  MORVANE_INLINE rgb_sample pixel(const uint8_t* p) const {
    return ordered({stored_word(p), stored_word(p + 2), stored_word(p + 4)});
  }
  template <class V>
  MORVANE_INLINE static auto items_of(const uint8_t* p) {
    const auto block = [&](const int number) __attribute__((always_inline)) {
      return V::load(blocks_on<V>(p, number));
    };
    if constexpr (items == 3)
      return deinterleaved<V>(block(0), block(1), block(2));
    else
      return deinterleaved<V>(block(0), block(1), block(2), block(3));
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> pixels(const uint8_t* p) const {
    const auto rgb = items_of<V>(p);
    return this->template ordered<V>({item_of<0>(rgb), item_of<1>(rgb), item_of<2>(rgb)});
  }
};

// Three samples of ten bits in a double word, from its bit `lowest` on, which is 0 or 2.
struct rgb_in_tens : red_or_blue_first {
  static constexpr int bytes = 4;
  static constexpr rgb_samples samples = rgb_samples::tens;
  dword_order order;
  int32_t lowest;

  MORVANE_INLINE static uint16_t filled(const uint32_t sample) {
    return static_cast<uint16_t>((sample & 1023) << 6 | (sample >> 4 & 63));
  }
  MORVANE_INLINE rgb_sample pixel(const uint8_t* p) const {
    const uint32_t three = order.load(p) >> lowest;
    return ordered({filled(three), filled(three >> 10), filled(three >> 20)});
  }
  template <class V>
  MORVANE_INLINE static auto filled(const typename V::block with_others) {
    const auto top = V::and_blocks(with_others, V::repeat(0xffc0));
    return V::or_blocks(top, V::template shift_right_words<10>(top));
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> pixels(const uint8_t* p) const {
    const auto [lower, upper] =
        V::deinterleave2_words(order.arranged<V>(V::load(p)), order.arranged<V>(V::load(blocks_on<V>(p, 1))));
    const auto second = V::or_blocks(V::shift_right_words(lower, 4 + lowest), V::shift_left_words(upper, 12 - lowest));
    return this->template ordered<V>({filled<V>(V::shift_left_words(lower, 6 - lowest)), filled<V>(second),
                                      filled<V>(V::shift_left_words(upper, 2 - lowest))});
  }
};

// Without vectors, a line of pixels. Kernels share the loops. Lines are exchanged instead of samples.
template <class V, class Reader>
[[gnu::noinline]] void read_in_order(const Reader from, const uint8_t* __restrict p, uint16_t* __restrict first,
                                     uint16_t* __restrict second, uint16_t* __restrict third, const int pixels) {
  Reader as_stored = from;
  as_stored.exchanged = 0;
  for (int i = 0; i < pixels; ++i) {
    const rgb_sample rgb = as_stored.pixel(p + i * Reader::bytes);
    first[i] = rgb.r;
    second[i] = rgb.g;
    third[i] = rgb.b;
  }
}
template <class V, class Reader>
MORVANE_INLINE void read_pixels(const Reader from, const uint8_t* p, uint16_t* r, uint16_t* g, uint16_t* b,
                                const int pixels) {
  const bool begins_with_blue = from.exchanged != 0;
  read_in_order<V>(from, p, begins_with_blue ? b : r, g, begins_with_blue ? r : b, pixels);
}
template <class V, int bytes_of_pixel>
[[gnu::noinline]] void words_of_bytes(const uint8_t* __restrict bytes, uint16_t* __restrict line, const int pixels) {
  for (int i = 0; i < pixels; ++i) line[i] = widened(bytes[i * bytes_of_pixel], 255);
}
template <class V, int bytes_of_pixel>
MORVANE_INLINE void read_pixels(const rgb_in_bytes<bytes_of_pixel> from, const uint8_t* p, uint16_t* r, uint16_t* g,
                                uint16_t* b, const int pixels) {
  uint16_t* const lines[] = {r, g, b};
  for (int i = 0; i < 3; ++i) words_of_bytes<V, bytes_of_pixel>(from.at(p, i), lines[i], pixels);
}

}  // namespace Processing::Morvane::format_conversion::kernel
