// Pixels of 4:4:4 YCbCr in four bytes: from pairs of uyvy, back to them, and from 32-bit RGB.
#pragma once

#include <cstddef>
#include <cstdint>

#include "key.h"
#include "list.h"
#include "matrix.h"
#include "opacity.h"
#include "rgb_to_video.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// The bytes of a pixel that hold its samples: Y Cb Cr or Cr Cb Y. Alpha is the fourth.
enum class sample_order : bool { ycbcr, crcby };

struct sample_places {
  int y, cb, cr;
};

constexpr sample_places places_of(const sample_order order) {
  return order == sample_order::ycbcr ? sample_places{0, 1, 2} : sample_places{2, 1, 0};
}

template <sample_order order>
MORVANE_INLINE void store_pixel(uint8_t* dst, const uint8_t y, const uint8_t cb, const uint8_t cr, const uint8_t a) {
  constexpr sample_places at = places_of(order);
  dst[at.y] = y;
  dst[at.cb] = cb;
  dst[at.cr] = cr;
  dst[3] = a;
}

// Pairs to two opaque pixels Y Cb Cr, which share the pair's chroma. An odd line completes its last pair.
struct uyvy_to_ycbcrx : each_begun_pair<from<4>, to<8>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t pair[] = {src[0], src[1], src[2], src[3]};
    store_pixel<sample_order::ycbcr>(dst, pair[1], pair[0], pair[2], 255);
    store_pixel<sample_order::ycbcr>(dst + 4, pair[3], pair[0], pair[2], 255);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::template pixels_of_444<false>(src);
  }
};

// A pair and its two alphas to two pixels, which share the pair's chroma. An odd line completes its last pair.
template <sample_order order>
struct uyvy_a_to_444 : each_begun_pair<from<4>, from<2>, to<8>> {
  MORVANE_INLINE static void rule(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    store_pixel<order>(dst, src[1], src[0], src[2], alpha[0]);
    store_pixel<order>(dst + 4, src[3], src[0], src[2], alpha[1]);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src, const uint8_t* alpha) {
    return V::template pixels_of_444<order == sample_order::crcby>(src, alpha);
  }
};

// Pixels to pairs, with the chroma of the even pixel alone. An odd line completes its last pair.
template <sample_order order, background over>
struct pixels_444_to_uyvy : each_begun_pair<from<8>, to<4>> {
  static constexpr sample_places at = places_of(order);

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    constexpr sample_places in = at;
    const uint8_t pair[] = {src[in.cb], src[in.y], src[in.cr], src[4 + in.y]};
    if constexpr (over == background::black)
      over_black::pair(dst, pair[0], pair[1], pair[2], pair[3], src[3], src[7]);
    else
      for (int i = 0; i < 4; ++i) dst[i] = pair[i];
  }
  template <class V>
  MORVANE_INLINE static auto load(const uint8_t* src) {
    return V::load4(src);
  }
  template <class V>
  MORVANE_INLINE static auto pairs_of(const typename V::pixels& pixels) {
    const auto words = V::template pick_of_pairs<at.cb, at.cr, at.y>(pixels);
    if constexpr (over == background::black)
      return over_black::words<V>(words, V::fourth_words(pixels));
    else
      return words;
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return pairs_of<V>(load<V>(src));
  }
};

template <sample_order order, alpha_report report>
using pixels_444_to_uyvy_a = with_plane_of_alpha<pixels_444_to_uyvy<order, background::none>, report>;

// 32-bit RGB to pixels of which each gets its Cb and alpha alone. Luma and Cr of every pixel go to bytes 0 and 2 of the
// line's first pixel, where only the last pixel's remain; bytes 0 and 2 of all other pixels are left as they were.
template <matrix of, byte_order order, sample_order to_order, bool has_alpha>
struct rgb_to_444 : each_pixel<from<4>, to<4>> {
  using colors = rgb_to_ycbcr<of>;

  static constexpr weights luma = in_memory_order<order>(colors::y);
  static constexpr weights cb = in_memory_order<order>(colors::cb);
  static constexpr weights cr = in_memory_order<order>(colors::cr);

  template <weights w, int bits>
  MORVANE_INLINE static uint8_t byte(const uint8_t* pixel) {
    return static_cast<uint8_t>((weighted_sum<w>(pixel) >> bits) + (bits == 8 ? 128 : 16));
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    dst[1] = byte<cb, 8>(src);
    dst[3] = has_alpha ? src[3] : 255;
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::template second_and_fourth_of<cb, has_alpha>(V::load4(src));
  }

  // The byte of the first pixel that takes luma; Cr takes the other. In the layouts that begin with luma, a line of one
  // pixel has them the other way round than a longer one.
  MORVANE_INLINE static constexpr int luma_byte(const bool only_pixel) {
    const bool first_byte = to_order == sample_order::crcby ? has_alpha : has_alpha != only_pixel;
    return first_byte ? 0 : 2;
  }

  template <class V>
  MORVANE_INLINE static void line(const uint8_t* src, uint8_t* dst, const int no_pixels) {
    if (no_pixels < 1) return;
    const size_t pixels = at_least_zero(no_pixels);
    const uint8_t* last = src + 4 * (pixels - 1);
    const uint8_t last_luma = byte<luma, 7>(last);
    const uint8_t last_cr = byte<cr, 8>(last);
    walk<V>(rgb_to_444(), pixels, src, dst);
    const int at = pixels == 1 ? luma_byte(true) : luma_byte(false);
    dst[at] = last_luma;
    dst[2 - at] = last_cr;
  }
};

template <matrix of, byte_order order>
using rgb_to_444_kernels_of =
    kernel_list<rgb_to_444<of, order, sample_order::ycbcr, false>, rgb_to_444<of, order, sample_order::ycbcr, true>,
                rgb_to_444<of, order, sample_order::crcby, false>, rgb_to_444<of, order, sample_order::crcby, true>>;

template <sample_order order>
using kernels_of_444_in =
    kernel_list<uyvy_a_to_444<order>, pixels_444_to_uyvy<order, background::none>,
                pixels_444_to_uyvy<order, background::black>, pixels_444_to_uyvy_a<order, alpha_report::none>,
                pixels_444_to_uyvy_a<order, alpha_report::given>>;

using full_chroma_kernels =
    joined_lists<kernel_list<uyvy_to_ycbcrx>, kernels_of_444_in<sample_order::ycbcr>,
                 kernels_of_444_in<sample_order::crcby>, rgb_to_444_kernels_of<matrix::bt601, byte_order::bgra>,
                 rgb_to_444_kernels_of<matrix::bt601, byte_order::rgba>,
                 rgb_to_444_kernels_of<matrix::bt709, byte_order::bgra>,
                 rgb_to_444_kernels_of<matrix::bt709, byte_order::rgba>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
