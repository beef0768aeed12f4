// Writers of rows of RGB: what becomes of the working samples of red, green and blue that a kernel has decoded. A
// writer has the planes of a pair of pixels, `put` writes one pixel of a pair, and `pixels` gives what is stored of
// those in two blocks. What the layouts of a kind differ in is data.
#pragma once

#include <cstddef>
#include <cstdint>

#include "interleaved_words.h"
#include "lines.h"
#include "lines_colour.h"
#include "lines_floats.h"
#include "lines_stored.h"
#include "lines_tens.h"
#include "rearranged.h"
#include "rgb_pixels.h"
#include "stored.h"
#include "units.h"

namespace Processing::Morvane::format_conversion::kernel {

// The pixels in two blocks: one after the other, or the even ones in the first and the odd ones in the second.
enum class pixel_order { in_sequence, even_and_odd };

template <class V>
struct rgb_pixels {
  rgb_blocks<V> first, second;
};

template <class V, pixel_order order>
MORVANE_INLINE rgb_pixels<V> in_sequence(const rgb_pixels<V>& pixels) {
  if constexpr (order == pixel_order::in_sequence) {
    return pixels;
  } else {
    const auto r = V::interleave2_words(pixels.first.r, pixels.second.r);
    const auto g = V::interleave2_words(pixels.first.g, pixels.second.g);
    const auto b = V::interleave2_words(pixels.first.b, pixels.second.b);
    return {{r.first, g.first, b.first}, {r.second, g.second, b.second}};
  }
}

// The bytes of R, G, B and 255 in an order that is data, four of a pixel or the first three. Blocks have signed words,
// which packing limits.
template <int bytes_of_pixel>
struct bytes_in_order {
  using planes = plane_list<to<2 * bytes_of_pixel>>;
  static constexpr rgb_samples samples = rgb_samples::bytes;
  uint32_t places;

  MORVANE_INLINE static uint8_t byte(const uint16_t v) { return static_cast<uint8_t>(rounding<8>{true}.of(v)); }
  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* dst) const {
    const uint32_t rgbx = byte(rgb.r) | uint32_t{byte(rgb.g)} << 8 | uint32_t{byte(rgb.b)} << 16 | 255U << 24;
    uint32_t dword = 0;
    for (int k = 0; k < bytes_of_pixel; ++k) dword |= (rgbx >> (places >> 8 * k & 3) * 8 & 255) << 8 * k;
    put_dword<bytes_of_pixel>(dst + bytes_of_pixel * pixel, dword);
  }
  template <class V, pixel_order order>
  MORVANE_INLINE static auto packed(const typename V::block first, const typename V::block second) {
    if constexpr (order == pixel_order::in_sequence)
      return V::pack_words(first, second);
    else
      return V::pack_words_in_turn(first, second);
  }
  template <class V>
  MORVANE_INLINE auto ordered(const typename V::two_blocks& rgbx) const {
    const typename V::two_blocks result = {V::rearrange_dwords(rgbx.first, places),
                                           V::rearrange_dwords(rgbx.second, places)};
    if constexpr (bytes_of_pixel == 3)
      return V::threes(result);
    else
      return result;
  }
  template <class V, pixel_order order>
  MORVANE_INLINE auto pixels(const rgb_pixels<V>& p) const {
    const auto rg = V::interleave2(packed<V, order>(p.first.r, p.second.r), packed<V, order>(p.first.g, p.second.g));
    const auto bx = V::interleave2(packed<V, order>(p.first.b, p.second.b), V::repeat(65535));
    return in_a_row(ordered<V>(V::interleave2_words(rg.first, bx.first)),
                    ordered<V>(V::interleave2_words(rg.second, bx.second)));
  }
};

// Bytes of red, green and blue, each in a plane of its own.
struct bytes_in_planes : red_or_blue_first {
  using planes = plane_list<to<2>, to<2>, to<2>>;
  static constexpr rgb_samples samples = rgb_samples::bytes;

  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* first, uint8_t* second,
                          uint8_t* third) const {
    const auto [a, b, c] = this->ordered(rgb);
    first[pixel] = bytes_in_order<4>::byte(a);
    second[pixel] = bytes_in_order<4>::byte(b);
    third[pixel] = bytes_in_order<4>::byte(c);
  }
  template <class V, pixel_order order>
  MORVANE_INLINE auto pixels(const rgb_pixels<V>& p) const {
    using bytes = bytes_in_order<4>;
    const auto [a, b, c] = this->template ordered<V>({bytes::packed<V, order>(p.first.r, p.second.r),
                                                      bytes::packed<V, order>(p.first.g, p.second.g),
                                                      bytes::packed<V, order>(p.first.b, p.second.b)});
    return to_planes(a, b, c);
  }
};

// A byte of luminance.
struct bytes_of_luminance {
  using planes = plane_list<to<2>>;
  static constexpr rgb_samples samples = rgb_samples::luminance;
  rgb_lines_to_luminance by;

  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* dst) const {
    uint16_t luminance;
    by.rule(&rgb.r, &rgb.g, &rgb.b, &luminance);
    dst[pixel] = bytes_in_order<4>::byte(luminance);
  }
  template <class V>
  MORVANE_INLINE auto steps_of_bytes(const rgb_blocks<V>& rgb) const {
    return rounding<8>{true}.unlimited<V>(by.luminance_of<V>(rgb));
  }
  template <class V, pixel_order order>
  MORVANE_INLINE auto pixels(const rgb_pixels<V>& p) const {
    return bytes_in_order<4>::packed<V, order>(steps_of_bytes<V>(p.first), steps_of_bytes<V>(p.second));
  }
};

// What writers of one block after the other share.
template <class Writer>
struct block_by_block : red_or_blue_first {
  template <class V, pixel_order order>
  MORVANE_INLINE auto pixels(const rgb_pixels<V>& p) const {
    const auto& writer = static_cast<const Writer&>(*this);
    const auto [first, second] = in_sequence<V, order>(p);
    return in_a_row(writer.template stored<V>(first), writer.template stored<V>(second));
  }
};

// Three words of a pixel, or four of which the last one is 65535.
template <int items>
struct words_in_order : block_by_block<words_in_order<items>> {
  using planes = plane_list<to<4 * items>>;
  static constexpr rgb_samples samples = rgb_samples::words;

  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* dst) const {
    const auto [a, b, c] = this->ordered(rgb);
    uint8_t* p = dst + 2 * items * pixel;
    put_word(p, a);
    put_word(p + 2, b);
    put_word(p + 4, c);
    if constexpr (items == 4) put_word(p + 6, 65535);
  }
  template <class V>
  MORVANE_INLINE auto stored(const rgb_blocks<V>& rgb) const {
    const auto as_it_is = [](const typename V::block b) __attribute__((always_inline)) {
      return b;
    };
    const auto [a, b, c] = this->template ordered<V>(rgb);
    if constexpr (items == 3)
      return interleaved<V>(as_it_is, a, b, c);
    else
      return interleaved<V>(as_it_is, a, b, c, V::repeat(65535));
  }
};

// Three samples of ten bits in a double word, from its lowest bit on or above two bits. Blocks have the samples.
template <int lowest>
struct tens_in_order : block_by_block<tens_in_order<lowest>> {
  using planes = plane_list<to<8>>;
  static constexpr rgb_samples samples = lowest == 0 ? rgb_samples::tens : rgb_samples::tens_above_two_bits;
  joined_tens<lowest> as;

  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* dst) const {
    constexpr rounding<10> by{true};
    const auto [a, b, c] = this->ordered(rgb);
    as.put(dst + 4 * pixel, by.of(a), by.of(b), by.of(c), 0);
  }
  template <class V>
  MORVANE_INLINE auto stored(const rgb_blocks<V>& rgb) const {
    const auto [a, b, c] = this->template ordered<V>(rgb);
    return as.template joined<V>(a, b, c, V::repeat(0));
  }
};

// Words with a sample of ten bits, each in a plane of its own.
struct tens_in_planes : block_by_block<tens_in_planes> {
  using planes = plane_list<to<4>, to<4>, to<4>>;
  static constexpr rgb_samples samples = rgb_samples::low_tens;

  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* first, uint8_t* second,
                          uint8_t* third) const {
    constexpr rounding<10> by{true};
    const auto [a, b, c] = this->ordered(rgb);
    put_word(first + 2 * pixel, by.of(a));
    put_word(second + 2 * pixel, by.of(b));
    put_word(third + 2 * pixel, by.of(c));
  }
  template <class V>
  MORVANE_INLINE auto stored(const rgb_blocks<V>& rgb) const {
    const auto [a, b, c] = this->template ordered<V>(rgb);
    return to_planes(a, b, c);
  }
};

// Floats from 0 to 1, three of a pixel, or each in a plane of its own.
struct floats_in_order : block_by_block<floats_in_order> {
  using planes = plane_list<to<24>>;
  static constexpr rgb_samples samples = rgb_samples::floats;

  MORVANE_INLINE static void put(uint8_t* p, const uint16_t v) {
    single_floats::put(p, static_cast<float>(v) / all_of_word);
  }
  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* dst) const {
    const auto [a, b, c] = this->ordered(rgb);
    put(dst + 12 * pixel, a);
    put(dst + 12 * pixel + 4, b);
    put(dst + 12 * pixel + 8, c);
  }
  template <class V>
  MORVANE_INLINE auto stored(const rgb_blocks<V>& rgb) const {
    const auto as_numbers = [](const typename V::block words) __attribute__((always_inline)) {
      return numbers_of<V, single_floats>(words);
    };
    const auto [a, b, c] = this->template ordered<V>(rgb);
    return interleaved<V>(as_numbers, a, b, c);
  }
};

struct floats_in_planes : block_by_block<floats_in_planes> {
  using planes = plane_list<to<8>, to<8>, to<8>>;
  static constexpr rgb_samples samples = rgb_samples::floats;

  MORVANE_INLINE void put(const int pixel, const rgb_sample& rgb, uint8_t* first, uint8_t* second,
                          uint8_t* third) const {
    const auto [a, b, c] = this->ordered(rgb);
    floats_in_order::put(first + 4 * pixel, a);
    floats_in_order::put(second + 4 * pixel, b);
    floats_in_order::put(third + 4 * pixel, c);
  }
  template <class V>
  MORVANE_INLINE auto stored(const rgb_blocks<V>& rgb) const {
    const auto [a, b, c] = this->template ordered<V>(rgb);
    return to_planes(numbers_of<V, single_floats>(a), numbers_of<V, single_floats>(b), numbers_of<V, single_floats>(c));
  }
};

}  // namespace Processing::Morvane::format_conversion::kernel
