// Planes of 16 bits. Their samples are little-endian words at any address.
#pragma once

#include <cstdint>

#include "group_10.h"
#include "list.h"
#include "opacity.h"
#include "samples.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Pairs to words of luma and of chroma: value * 256. An odd line completes its last pair.
struct uyvy_to_p216 : each_begun_pair<from<4>, to<4>, to<4>> {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* cbcr) {
    for (int i = 0; i < 2; ++i) {
      store_word(cbcr + 2 * i, src[2 * i] << 8);
      store_word(y + 2 * i, src[2 * i + 1] << 8);
    }
  }
  // Each word of uyvy is C | Y << 8.
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto words = V::load(src);
    return to_planes(V::and_blocks(words, V::repeat(0xff00)), V::template shift_left_words<8>(words));
  }
};

// Two pixels of 4:4:4 to words of luma, of the even pixel's chroma, and of alpha. An odd line completes its last pair.
template <alpha_report report>
struct ycbcra_to_pa16 : each_begun_pair<from<8>, to<4>, to<4>, to<4>> {
  using answer = bool;
  template <class V>
  using seen = seen_alpha<V, report>;

  template <class Seen>
  MORVANE_INLINE static void rule(Seen& alphas, const uint8_t* src, uint8_t* y, uint8_t* cbcr, uint8_t* alpha) {
    for (int i = 0; i < 2; ++i) {
      store_word(y + 2 * i, src[4 * i] << 8);
      store_word(cbcr + 2 * i, src[1 + i] << 8);
      store_word(alpha + 2 * i, src[4 * i + 3] * 257);
    }
    alphas.see(static_cast<uint8_t>(src[3] & src[7]));
  }
  template <class V>
  MORVANE_INLINE static auto convert(seen<V>& alphas, const uint8_t* src) {
    const auto pixels = V::load4(src);
    const auto fourth = V::fourth(pixels);
    const auto uyvy = V::template pick_of_pairs<1, 2, 0>(pixels);
    alphas.see(fourth);
    return to_planes(V::template shift_left<8>(V::high_bytes(uyvy)), V::template shift_left<8>(uyvy),
                     V::widen_repeated(fourth));
  }
};

// Of 8-bit 4:2:2, in which of two bytes luma stands.
enum class luma_place : bool { second, first };

// Words of luma and of chroma to their upper bytes: C Y or Y C.
template <luma_place luma>
struct p216_to_p208 : each_pixel<from<2>, from<2>, to<2>> {
  static constexpr bool luma_first = luma == luma_place::first;

  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, uint8_t* dst) {
    dst[luma_first ? 0 : 1] = y[1];
    dst[luma_first ? 1 : 0] = cbcr[1];
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* y, const uint8_t* cbcr) {
    return group_10::upper_bytes_of<V>(V::load(luma_first ? y : cbcr), V::load(luma_first ? cbcr : y));
  }
};

// Pairs to two pixels Cb Cr Y A. An odd line completes its last pair.
struct pa16_to_vuya_16 : each_begun_pair<from<4>, from<4>, from<4>, to<16>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    for (int i = 0; i < 2; ++i) {
      store_word(dst + 8 * i, word_at(cbcr));
      store_word(dst + 8 * i + 2, word_at(cbcr + 2));
      store_word(dst + 8 * i + 4, word_at(y + 2 * i));
      store_word(dst + 8 * i + 6, word_at(a + 2 * i));
    }
  }
  // In double words, of which a pair has one of chroma and two of luma and alpha:
  //   C0 C1 C2 C3...  to  C0 C0 C1 C1...  with  YA0 YA1 YA2 YA3...  to  C0 YA0 C0 YA1 C1 YA2 C1 YA3...
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a) {
    const auto chroma = V::load(cbcr);
    const auto of_pixels = V::interleave2_dwords(chroma, chroma);
    const auto luma_alpha = V::interleave2_words(V::load(y), V::load(a));
    return in_a_row(V::interleave2_dwords(of_pixels.first, luma_alpha.first),
                    V::interleave2_dwords(of_pixels.second, luma_alpha.second));
  }
};

// 1 / divisor as the sum of a float of seven bits and a float for what that leaves.
struct reciprocal {
  float leading, rest;
};

constexpr reciprocal reciprocal_of(const int divisor) {
  double scale = 1;
  while (scale < 64.0 * divisor) scale *= 2;
  const double leading = static_cast<int>(scale / divisor + 0.5) / scale;
  return {static_cast<float>(leading), static_cast<float>(1.0 / divisor - leading)};
}

// Pairs to two pixels Cr Cb Y A of floats. Quotients are rounded as divisions are: a product with the reciprocal alone
// would differ. An odd line completes its last pair.
struct pa16_to_vuya_f32 : each_begun_pair<from<4>, from<4>, from<4>, to<32>> {
  static constexpr int bottom = 4096;
  static constexpr int luma_span = 56064;    // (235 - 16) * 256
  static constexpr int chroma_span = 57344;  // (240 - 16) * 256
  static constexpr int alpha_span = 65535;

  MORVANE_INLINE static float above_bottom(const uint8_t* word) {
    const int value = word_at(word);
    return static_cast<float>(value < bottom ? 0 : value - bottom);
  }
  MORVANE_INLINE static float at_most(const float value, const float limit) { return value < limit ? value : limit; }
  MORVANE_INLINE static float chroma(const uint8_t* word) {
    return at_most(above_bottom(word) / static_cast<float>(chroma_span) - 0.5F, 0.5F);
  }
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    const float cb = chroma(cbcr);
    const float cr = chroma(cbcr + 2);
    for (int i = 0; i < 2; ++i) {
      const float pixel[] = {cr, cb, at_most(above_bottom(y + 2 * i) / static_cast<float>(luma_span), 1.0F),
                             static_cast<float>(word_at(a + 2 * i)) / static_cast<float>(alpha_span)};
      __builtin_memcpy(dst + 16 * i, pixel, 16);
    }
  }

  // A division takes a processor three times as long as two products and their sum. The first product is exact, because
  // 16 bits times 7 fit a float, and the second is small beside it. That the sum is the quotient rounded once holds for
  // these divisors and every word, as a test of all of them shows.
  template <class V, int divisor>
  MORVANE_INLINE static auto quotient(const typename V::floats words) {
    constexpr reciprocal r = reciprocal_of(divisor);
    return V::add(V::multiply(words, r.leading), V::multiply(words, r.rest));
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a) {
    const auto cb_cr = quotient<V, chroma_span>(V::template load_words_above<bottom>(cbcr));
    const auto luma = quotient<V, luma_span>(V::template load_words_above<bottom>(y));
    const auto alpha = quotient<V, alpha_span>(V::template load_words_above<0>(a));
    return V::join_vuya(V::at_most(V::subtract(cb_cr, 0.5F), 0.5F), V::at_most(luma, 1.0F), alpha);
  }
};

// Over black: each sample moves towards its black value by the weight (A + 1) / 65536. Luma is weighed by its own
// pixel's alpha, both chroma samples of a pair by that of the even pixel.
struct words_over_black {
  static constexpr int black_luma = 4096;
  static constexpr int black_chroma = 32768;

  // The product needs 32 bits and the sign of its own; its upper half is exact modulo 65536.
  template <int black>
  MORVANE_INLINE static uint16_t sample(const uint8_t* value, const uint8_t* alpha) {
    const uint32_t distance = static_cast<uint32_t>(word_at(value) - black);
    const uint32_t product = distance * word_at(alpha) + distance;
    return static_cast<uint16_t>((product >> 16) + black);
  }
  template <class V>
  MORVANE_INLINE static auto luma(const uint8_t* y, const typename V::block alpha) {
    return V::template scale_words<black_luma>(V::load(y), alpha);
  }
  template <class V>
  MORVANE_INLINE static auto chroma(const uint8_t* cbcr, const typename V::block alpha) {
    return V::template scale_words<black_chroma>(V::load(cbcr), V::repeat_even_words(alpha));
  }
};

// An odd line completes its last pair.
struct pa16_to_p216 : each_begun_pair<from<4>, from<4>, from<4>, to<4>, to<4>> {
  using over = words_over_black;

  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* alpha, uint8_t* dst_y,
                                  uint8_t* dst_cbcr) {
    for (int i = 0; i < 4; i += 2) {
      store_word(dst_y + i, over::sample<over::black_luma>(y + i, alpha + i));
      store_word(dst_cbcr + i, over::sample<over::black_chroma>(cbcr + i, alpha));
    }
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* y, const uint8_t* cbcr, const uint8_t* alpha) {
    const auto a = V::load(alpha);
    return to_planes(over::luma<V>(y, a), over::chroma<V>(cbcr, a));
  }
};

using words_kernels = kernel_list<uyvy_to_p216, ycbcra_to_pa16<alpha_report::none>, ycbcra_to_pa16<alpha_report::given>,
                                  p216_to_p208<luma_place::second>, p216_to_p208<luma_place::first>, pa16_to_vuya_16,
                                  pa16_to_vuya_f32, pa16_to_p216>;

}  // namespace Processing::Morvane::format_conversion::kernel
