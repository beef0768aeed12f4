// Video with a key: luma stretched to a key and back, alpha beside luma, and compositing over black.
#pragma once

#include <cstdint>

#include "list.h"
#include "planes.h"
#include "samples.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Video-range luma as it is, or stretched to a key of full range: 17 and below give 0, 234 and above 255.
enum class key_range : bool { of_video, full };

inline constexpr int key_multiplier = 301;
inline constexpr int key_offset = -5117;

template <key_range range>
MORVANE_INLINE uint8_t key_from_luma(const uint8_t y) {
  return range == key_range::full ? clamp_to_byte((key_multiplier * y + key_offset) >> 8) : y;
}

// Pairs to a key made of their luma. An odd line completes its last pair.
struct uyvy_to_key : each_begun_pair<from<4>, to<2>> {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t odd = src[3];
    dst[0] = key_from_luma<key_range::full>(src[1]);
    dst[1] = key_from_luma<key_range::full>(odd);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::template linear_of_odd_bytes<key_multiplier, key_offset>(V::load(src), V::load(src + V::block_bytes));
  }
};

// A key of full range to grey pairs of video range.
struct key_to_uyvy : each_pixel<from<1>, to<2>> {
  static constexpr int multiplier = 220;
  static constexpr int offset = 16 * 256;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t luma = clamp_to_byte((multiplier * src[0] + offset) >> 8);
    dst[0] = y_to_uyvy::neutral;
    dst[1] = luma;
  }
  // No product exceeds 16 bits, and its upper byte stands where luma belongs.
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto products = V::multiply(V::widen(V::load_bytes(src)), V::widen(V::same(multiplier)));
    const auto neutral = V::widen_repeated(V::same(y_to_uyvy::neutral));
    return V::template add_to_bytes<0, offset / 256>(V::upper_bytes(neutral, products));
  }
};

// 16-bit video-range luma (4096 to 60160) stretched to a key of full range.
struct y16_to_key : each_pixel<from<2>, to<2>> {
  static constexpr int multiplier = 1197;
  static constexpr int offset = -4902912;
  static constexpr int bits = 10;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    store_word(dst, clamp_to_word((multiplier * word_at(src) + offset) >> bits));
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::template linear_words<multiplier, offset, bits>(V::load(src));
  }
};

// The luma of a fill with the key made of the luma of a second image, for the first pair of a line alone; the rest of
// the line is left as it is.
template <key_range range>
struct first_pair_to_ya_uv : each_begun_pair<from<4>, from<4>, to<4>, to<2>> {
  MORVANE_INLINE static void rule(const uint8_t* fill, const uint8_t* key, uint8_t* ya, uint8_t* cbcr) {
    cbcr[0] = fill[0];
    cbcr[1] = fill[2];
    ya[0] = fill[1];
    ya[1] = key_from_luma<range>(key[1]);
    ya[2] = fill[3];
    ya[3] = key_from_luma<range>(key[3]);
  }
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* fill, const uint8_t* key, uint8_t* ya, uint8_t* cbcr,
                                  const int no_pixels) {
    if (no_pixels > 0) rule(fill, key, ya, cbcr);
  }
};

// A pair and its two alphas to luma with alpha, Y A Y A, and chroma. An odd line completes its last pair.
struct uyvy_a_to_ya_uv : each_begun_pair<from<4>, from<2>, to<4>, to<2>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* src, const uint8_t* alpha, uint8_t* ya, uint8_t* cbcr) {
    ya[0] = src[1];
    ya[1] = alpha[0];
    ya[2] = src[3];
    ya[3] = alpha[1];
    cbcr[0] = src[0];
    cbcr[1] = src[2];
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src, const uint8_t* alpha) {
    const auto split = even_and_odd_bytes<V>(src);
    return to_planes(V::interleave2(split.second, V::load(alpha)), split.first);
  }
};

// Over black: each sample moves towards its black value by the weight (A + 1) / 256 of its own pixel. Cb is the chroma
// of the even pixel and Cr that of the odd one, so they may be weighted differently.
struct over_black {
  static constexpr int black_luma = 16;
  static constexpr int black_chroma = 128;

  template <int black>
  MORVANE_INLINE static uint8_t sample(const int value, const int alpha) {
    return static_cast<uint8_t>(black + (((value - black) * (alpha + 1)) >> 8));
  }
  MORVANE_INLINE static void pair(uint8_t* dst, const int cb, const int y0, const int cr, const int y1,
                                  const int alpha0, const int alpha1) {
    dst[0] = sample<black_chroma>(cb, alpha0);
    dst[1] = sample<black_luma>(y0, alpha0);
    dst[2] = sample<black_chroma>(cr, alpha1);
    dst[3] = sample<black_luma>(y1, alpha1);
  }

  // The products span less than 65536, so that their upper bytes are right modulo 256, and so is what black adds.
  template <class V>
  MORVANE_INLINE static auto words(const typename V::words uyvy, const typename V::words alpha) {
    const auto weight = V::template add<1>(alpha);
    const auto chroma = V::multiply(V::template add<-black_chroma>(V::low_bytes(uyvy)), weight);
    const auto luma = V::multiply(V::template add<-black_luma>(V::high_bytes(uyvy)), weight);
    return V::template add_to_bytes<black_chroma, black_luma>(V::upper_bytes(chroma, luma));
  }
};

// Pairs and their alphas to pairs over black. An odd line completes its last pair.
struct uyvy_a_to_uyvy : each_begun_pair<from<4>, from<2>, to<4>> {
  MORVANE_INLINE static void rule(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    over_black::pair(dst, src[0], src[1], src[2], src[3], alpha[0], alpha[1]);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src, const uint8_t* alpha) {
    return over_black::words<V>(V::load_words(src), V::widen(V::load_bytes(alpha)));
  }
};

using key_kernels = kernel_list<uyvy_to_key, key_to_uyvy, y16_to_key, first_pair_to_ya_uv<key_range::of_video>,
                                first_pair_to_ya_uv<key_range::full>, uyvy_a_to_ya_uv, uyvy_a_to_uyvy>;

}  // namespace Processing::Morvane::format_conversion::kernel
