// Readers of rows of RGB: pixels as working samples. A reader has the planes of a pair of pixels, of each the bytes
// before a pair in which the pixel before it lies, and the rows of the planes come as an array. `pixel` reads one, by
// its number from -1 on, `pixels` those of as many blocks of words as are read at once, so many pairs further on, and
// `read_pixels` a line of pairs where there are no vectors. What the layouts of a kind differ in is data.
#pragma once

#include <cstddef>
#include <cstdint>

#include "interleaved_words.h"
#include "lines.h"
#include "lines_colour.h"
#include "lines_pairs.h"
#include "lines_stored.h"
#include "lines_tens.h"
#include "rgb_pixels.h"
#include "units.h"

namespace Processing::Morvane::format_conversion::kernel {

using places_of_rows = const uint8_t* const*;

template <class V, int blocks>
struct rgb_of_blocks {
  rgb_blocks<V> of[blocks];
};

// One plane of pixels with so many bytes.
template <int bytes_of_pixel>
struct in_one_plane {
  using planes = plane_list<from<2 * bytes_of_pixel>>;
  static constexpr int bytes_of_pair = 2 * bytes_of_pixel;
  static constexpr int bytes_before = bytes_of_pixel;
  static constexpr int blocks = 1;
};

// Bytes, of which places say where R, G and B are.
template <int bytes>
struct rgb_in_bytes : in_one_plane<bytes> {
  static constexpr rgb_samples samples = rgb_samples::bytes;
  uint32_t places;

  MORVANE_INLINE const uint8_t* at(const uint8_t* p, const int i) const { return p + (places >> 8 * i & 3); }
  MORVANE_INLINE rgb_sample pixel(const places_of_rows row, const int number) const {
    const uint8_t* p = row[0] + number * bytes;
    return {widened(*at(p, 0), 255), widened(*at(p, 1), 255), widened(*at(p, 2), 255)};
  }
  template <class V>
  MORVANE_INLINE rgb_of_blocks<V, 1> pixels(const places_of_rows row, const int pairs_on) const {
    const uint8_t* p = row[0] + pairs_on * this->bytes_of_pair;
    const auto load = [&]() __attribute__((always_inline)) {
      if constexpr (bytes == 3)
        return V::load_bytes_of_threes(p, places);
      else
        return V::load_bytes_of_fours(p, places);
    };
    const auto rgb = load();
    return {{{rgb.first, rgb.second, rgb.third}}};
  }
};

// Words, three of a pixel or the first three of four.
template <int items>
struct rgb_in_words : in_one_plane<2 * items>, red_or_blue_first {
  static constexpr rgb_samples samples = rgb_samples::words;

  MORVANE_INLINE rgb_sample pixel(const places_of_rows row, const int number) const {
    const uint8_t* p = row[0] + number * 2 * items;
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
  MORVANE_INLINE rgb_of_blocks<V, 1> pixels(const places_of_rows row, const int pairs_on) const {
    const auto rgb = items_of<V>(row[0] + pairs_on * this->bytes_of_pair);
    return {{this->template ordered<V>({item_of<0>(rgb), item_of<1>(rgb), item_of<2>(rgb)})}};
  }
};

// Three samples of ten bits in a double word, from its bit `lowest` on, which is 0 or 2.
struct rgb_in_tens : in_one_plane<4>, red_or_blue_first {
  static constexpr rgb_samples samples = rgb_samples::tens;
  dword_order order;
  int32_t lowest;

  MORVANE_INLINE static uint16_t filled(const uint32_t sample) {
    return static_cast<uint16_t>((sample & 1023) << 6 | (sample >> 4 & 63));
  }
  MORVANE_INLINE rgb_sample pixel(const places_of_rows row, const int number) const {
    const uint32_t three = order.load(row[0] + number * 4) >> lowest;
    return ordered({filled(three), filled(three >> 10), filled(three >> 20)});
  }
  template <class V>
  MORVANE_INLINE static auto filled(const typename V::block with_others) {
    const auto top = V::and_blocks(with_others, V::repeat(0xffc0));
    return V::or_blocks(top, V::template shift_right_words<10>(top));
  }
  template <class V>
  MORVANE_INLINE rgb_of_blocks<V, 1> pixels(const places_of_rows row, const int pairs_on) const {
    const uint8_t* p = row[0] + pairs_on * bytes_of_pair;
    const auto [lower, upper] =
        V::deinterleave2_words(order.arranged<V>(V::load(p)), order.arranged<V>(V::load(blocks_on<V>(p, 1))));
    const auto second = V::or_blocks(V::shift_right_words(lower, 4 + lowest), V::shift_left_words(upper, 12 - lowest));
    return {{this->template ordered<V>({filled<V>(V::shift_left_words(lower, 6 - lowest)), filled<V>(second),
                                        filled<V>(V::shift_left_words(upper, 2 - lowest))})}};
  }
};

// A stream of twelve bits, in which a pair takes nine bytes.
struct rgb_in_twelves : red_or_blue_first {
  using planes = plane_list<from<9>>;
  static constexpr int bytes_of_pair = 9;
  static constexpr int bytes_before = 9;
  static constexpr int blocks = 2;
  static constexpr rgb_samples samples = rgb_samples::twelves;

  MORVANE_INLINE static split_rgb_12 lines() {
    split_rgb_12 filling{};
    filling.repeated = 65535;
    return filling;
  }

  MORVANE_INLINE rgb_sample pixel(const places_of_rows row, const int number) const {
    uint16_t r[2], g[2], b[2];
    lines().rule(row[0] + (number < 0 ? -bytes_of_pair : 0), r, g, b);
    const int odd = number & 1;
    return ordered({r[odd], g[odd], b[odd]});
  }
  template <class V>
  MORVANE_INLINE rgb_of_blocks<V, 2> pixels(const places_of_rows row, const int pairs_on) const {
    const auto rgb = lines().convert<V>(row[0] + pairs_on * bytes_of_pair);
    const typename V::two_blocks r = item_of<0>(rgb), g = item_of<1>(rgb), b = item_of<2>(rgb);
    return {{ordered<V>({r.first, g.first, b.first}), ordered<V>({r.second, g.second, b.second})}};
  }
};

// A plane each of red, green and blue.
template <int bytes_of_sample>
struct in_three_planes {
  using plane = from<2 * bytes_of_sample>;
  using planes = plane_list<plane, plane, plane>;
  static constexpr int bytes_of_pair = 2 * bytes_of_sample;
  static constexpr int bytes_before = bytes_of_sample;
};

struct rgb_in_planes_of_bytes : in_three_planes<1> {
  static constexpr int blocks = 2;
  static constexpr rgb_samples samples = rgb_samples::bytes;

  MORVANE_INLINE static uint16_t sample(const uint8_t* p) { return widened(*p, 255); }
  MORVANE_INLINE static rgb_sample pixel(const places_of_rows row, const int number) {
    return {sample(row[0] + number), sample(row[1] + number), sample(row[2] + number)};
  }
  template <class V>
  MORVANE_INLINE static typename V::two_blocks words(const uint8_t* p) {
    const auto bytes = V::load(p);
    return V::interleave2(bytes, bytes);
  }
  template <class V>
  MORVANE_INLINE static rgb_of_blocks<V, 2> pixels(const places_of_rows row, const int pairs_on) {
    const int on = pairs_on * bytes_of_pair;
    const auto r = words<V>(row[0] + on), g = words<V>(row[1] + on), b = words<V>(row[2] + on);
    return {{{r.first, g.first, b.first}, {r.second, g.second, b.second}}};
  }
};

// Words with a sample in their lower ten bits.
struct rgb_in_planes_of_tens : in_three_planes<2> {
  static constexpr int blocks = 1;
  static constexpr rgb_samples samples = rgb_samples::low_tens;

  MORVANE_INLINE static uint16_t sample(const uint8_t* p) { return rgb_in_tens::filled(uint32_t{stored_word(p)}); }
  MORVANE_INLINE static rgb_sample pixel(const places_of_rows row, const int number) {
    return {sample(row[0] + 2 * number), sample(row[1] + 2 * number), sample(row[2] + 2 * number)};
  }
  template <class V>
  MORVANE_INLINE static auto words(const uint8_t* p) {
    return rgb_in_tens::filled<V>(V::template shift_left_words<6>(V::load(p)));
  }
  template <class V>
  MORVANE_INLINE static rgb_of_blocks<V, 1> pixels(const places_of_rows row, const int pairs_on) {
    const int on = pairs_on * bytes_of_pair;
    return {{{words<V>(row[0] + on), words<V>(row[1] + on), words<V>(row[2] + on)}}};
  }
};

// Without vectors, a line of pairs. Kernels share the loops. Lines are exchanged instead of samples.
template <class V, class Reader>
[[gnu::noinline]] void read_in_order(const Reader from, const uint8_t* __restrict p, uint16_t* __restrict first,
                                     uint16_t* __restrict second, uint16_t* __restrict third, const int pairs) {
  Reader as_stored = from;
  as_stored.exchanged = 0;
  for (int i = 0; i < pairs; ++i) {
    const uint8_t* const pair = p + i * Reader::bytes_of_pair;
    for (int k = 0; k < 2; ++k) {
      const rgb_sample rgb = as_stored.pixel(&pair, k);
      first[2 * i + k] = rgb.r;
      second[2 * i + k] = rgb.g;
      third[2 * i + k] = rgb.b;
    }
  }
}
template <class V, class Reader>
MORVANE_INLINE void read_pixels(const Reader from, const places_of_rows row, uint16_t* r, uint16_t* g, uint16_t* b,
                                const int pairs) {
  const bool begins_with_blue = from.exchanged != 0;
  read_in_order<V>(from, row[0], begins_with_blue ? b : r, g, begins_with_blue ? r : b, pairs);
}
template <class V, class Reader>
[[gnu::noinline]] void read_plane(const uint8_t* __restrict p, uint16_t* __restrict line, const int pixels) {
  for (int i = 0; i < pixels; ++i) line[i] = Reader::sample(p + i * Reader::bytes_before);
}
template <class V, class Reader>
requires requires(const uint8_t* p) {
  Reader::sample(p);
}
MORVANE_INLINE void read_pixels(const Reader, const places_of_rows row, uint16_t* r, uint16_t* g, uint16_t* b,
                                const int pairs) {
  uint16_t* const lines[] = {r, g, b};
  for (int i = 0; i < 3; ++i) read_plane<V, Reader>(row[i], lines[i], 2 * pairs);
}
template <class V, int bytes_of_pixel>
[[gnu::noinline]] void words_of_bytes(const uint8_t* __restrict bytes, uint16_t* __restrict line, const int pixels) {
  for (int i = 0; i < pixels; ++i) line[i] = widened(bytes[i * bytes_of_pixel], 255);
}
template <class V, int bytes_of_pixel>
MORVANE_INLINE void read_pixels(const rgb_in_bytes<bytes_of_pixel> from, const places_of_rows row, uint16_t* r,
                                uint16_t* g, uint16_t* b, const int pairs) {
  uint16_t* const lines[] = {r, g, b};
  for (int i = 0; i < 3; ++i) words_of_bytes<V, bytes_of_pixel>(from.at(row[0], i), lines[i], 2 * pairs);
}

}  // namespace Processing::Morvane::format_conversion::kernel
