// The 10-bit formats of capture and playout cards.
#pragma once

#include <cstddef>
#include <cstdint>

#include "group_10.h"
#include "list.h"
#include "samples.h"
#include "walk.h"
#include "words.h"

namespace Processing::Morvane::format_conversion::kernel {

// Six pixels in 16 bytes to 12. Of every 10-bit sample the upper eight bits are kept.
struct v210_to_uyvy : units<6, last_unit::whole, from<16>, to<12>> {
  MORVANE_INLINE static uint8_t sample(const uint8_t* src, const int index) {
    const uint8_t* p = src + index / 3 * 4;
    const uint32_t word =
        p[0] | static_cast<uint32_t>(p[1]) << 8 | static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
    return static_cast<uint8_t>(word >> (index % 3 * 10 + 2));
  }
  MORVANE_INLINE static void pair(const uint8_t* src, uint8_t* dst, const int index) {
    for (int i = 4 * index; i < 4 * index + 4; ++i) dst[i] = sample(src, i);
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    for (int i = 0; i < 3; ++i) pair(src, dst, i);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::upper_bytes_of_10(src);
  }

  // The pair that holds the last pixel stays unwritten, whether it is whole or not.
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* src, uint8_t* dst, const int no_pixels) {
    const size_t pairs = no_pixels < 1 ? 0 : (at_least_zero(no_pixels) - 1) / 2;
    const size_t groups = pairs / 3;
    walk<V>(v210_to_uyvy(), groups, src, dst);
    const uint8_t* last_group = src + 16 * groups;
    uint8_t* last_pairs = dst + 12 * groups;
    if (pairs % 3 > 0) pair(last_group, last_pairs, 0);
    if (pairs % 3 > 1) pair(last_group, last_pairs, 1);
  }
};

// The upper ten bits of every word. An odd line completes its last pair, as in all that follow.
struct p216_to_yuyv_10 : each_begun_pair<from<4>, from<4>, group_10::to_groups> {
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const group_10::place<uint8_t> at) {
    const int cr = word_at(cbcr + 2);
    group_10::pack(at, word_at(y), word_at(cbcr), word_at(y + 2), cr, cr);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* y, const uint8_t* cbcr) {
    return group_10::packed<V>(V::load(y), V::load(cbcr));
  }
};

// Over black, and of the result the upper ten bits; but the lower two of Cr are those of Cb.
struct pa16_to_yuyv_10 : each_begun_pair<from<4>, from<4>, from<4>, group_10::to_groups> {
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* alpha,
                                  const group_10::place<uint8_t> at) {
    uint8_t luma[4];
    uint8_t chroma[4];
    pa16_to_p216::rule(y, cbcr, alpha, luma, chroma);
    const int cb = word_at(chroma);
    group_10::pack(at, word_at(luma), cb, word_at(luma + 2), word_at(chroma + 2), cb);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* y, const uint8_t* cbcr, const uint8_t* alpha) {
    const auto a = V::load(alpha);
    return group_10::packed<V, true>(words_over_black::luma<V>(y, a), words_over_black::chroma<V>(cbcr, a));
  }
};

// Alpha as luma, with neutral chroma.
struct alpha_to_yuyv_10 : each_begun_pair<from<4>, group_10::to_groups> {
  static constexpr uint16_t neutral = 32768;

  MORVANE_INLINE static void rule(const uint8_t* alpha, const group_10::place<uint8_t> at) {
    group_10::pack(at, word_at(alpha), neutral, word_at(alpha + 2), neutral, neutral);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* alpha) {
    return group_10::packed<V>(V::load(alpha), V::repeat(neutral));
  }
};

// Ten bits to the upper ones of words; but of Y0 only the lower two bits.
struct yuyv_10_to_p216 : each_begun_pair<group_10::from_groups, to<4>, to<4>> {
  MORVANE_INLINE static void rule(const group_10::place<const uint8_t> at, uint8_t* y, uint8_t* cbcr) {
    const int bits = at.low[0];
    store_word(y, (bits & 3) << 6);
    store_word(cbcr, at.upper[1] << 8 | (bits >> 2 & 3) << 6);
    store_word(y + 2, at.upper[2] << 8 | (bits >> 4 & 3) << 6);
    store_word(cbcr + 2, at.upper[3] << 8 | (bits >> 6 & 3) << 6);
  }
  // The upper bytes in the double word of a pair: Cr Y1 Cb Y0.
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* group) {
    const auto upper = V::load_upper_of_groups(group);
    const auto lower = V::load_lower_of_groups(group);
    return to_planes(V::or_blocks(V::template shift_left_and_mask<8, 0xff000000>(upper), lower.first),
                     V::or_blocks(V::and_blocks(upper, V::repeat(0xff00)), lower.second));
  }
};

// The upper bytes, luma and chroma exchanged.
struct yuyv_10_to_uyvy : each_begun_pair<group_10::from_groups, to<4>> {
  MORVANE_INLINE static void rule(const group_10::place<const uint8_t> at, uint8_t* dst) {
    for (int i = 0; i < 4; ++i) dst[i] = at.upper[i ^ 1];
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* group) {
    return V::swap_bytes(V::load_upper_of_groups(group));
  }
};

// The upper ten bits of luma, chroma and alpha to a double word, luma lowest. As two words:
//   lower   C C C C C C Y Y Y Y Y Y Y Y Y Y     upper   0 0 A A A A A A A A A A C C C C
struct pa16_to_yua_yva_10 : each_pixel<from<2>, from<2>, from<2>, to<4>> {
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    const int c = word_at(cbcr);
    store_word(dst, word_at(y) >> 6 | (c << 4 & 0xfc00));
    store_word(dst + 2, c >> 12 | (word_at(a) >> 2 & 0x3ff0));
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a) {
    const auto c = V::load(cbcr);
    const auto lower = V::or_blocks(V::template shift_right_words<6>(V::load(y)),
                                    V::and_blocks(V::template shift_left_words<4>(c), V::repeat(0xfc00)));
    const auto upper = V::or_blocks(V::template shift_right_words<12>(c),
                                    V::and_blocks(V::template shift_right_words<2>(V::load(a)), V::repeat(0x3ff0)));
    return V::interleave2_words(lower, upper);
  }
};

// Ten bits to the upper ones of words; the two words of a pixel as above.
struct yua_yva_10_to_pa16 : each_pixel<from<4>, to<2>, to<2>, to<2>> {
  static constexpr uint16_t ten_bits = 0xffc0;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* cbcr, uint8_t* a) {
    const int lower = word_at(src);
    const int upper = word_at(src + 2);
    store_word(y, lower << 6);
    store_word(cbcr, (lower >> 4 | upper << 12) & ten_bits);
    store_word(a, upper << 2 & ten_bits);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto words = V::deinterleave2_words(V::load(src), V::load(src + V::block_bytes));
    const auto chroma =
        V::or_blocks(V::template shift_right_words<4>(words.first), V::template shift_left_words<12>(words.second));
    return to_planes(V::template shift_left_words<6>(words.first), V::and_blocks(chroma, V::repeat(ten_bits)),
                     V::and_blocks(V::template shift_left_words<2>(words.second), V::repeat(ten_bits)));
  }
};

using card_10_kernels = kernel_list<v210_to_uyvy, p216_to_yuyv_10, pa16_to_yuyv_10, alpha_to_yuyv_10, yuyv_10_to_p216,
                                    yuyv_10_to_uyvy, pa16_to_yua_yva_10, yua_yva_10_to_pa16>;

}  // namespace Processing::Morvane::format_conversion::kernel
