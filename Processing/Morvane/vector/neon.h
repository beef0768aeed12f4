// The vector operations on NEON: 16 pixels at a time, in memory order. operations.h says what each does.
#pragma once

#include <arm_neon.h>

#include <cstdint>

#include "../format_conversion_utils.h"
#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

struct neon {
  static constexpr int lanes = 16;
  static constexpr int block_bytes = 16;

  struct block {
    uint8x16_t v;
  };
  struct bytes {
    uint8x16_t v;
  };
  struct words {
    uint16x8_t lo, hi;
  };
  // Sums over `pairs`: the even and the odd pixels of eight pairs.
  struct pair_words {
    uint16x8_t even, odd;
  };
  struct pixels {
    uint8x16x4_t channel;
  };
  struct pairs {
    uint8x8_t cb, even_luma, cr, odd_luma;
  };

  MORVANE_INLINE static block load(const uint8_t* p) { return {vld1q_u8(p)}; }
  MORVANE_INLINE static void store(uint8_t* p, const block b) { vst1q_u8(p, b.v); }
  MORVANE_INLINE static block repeat(const uint16_t value) { return {vreinterpretq_u8_u16(vdupq_n_u16(value))}; }
  MORVANE_INLINE static block swap_bytes(const block b) { return {vrev16q_u8(b.v)}; }
  MORVANE_INLINE static block and_blocks(const block a, const block b) { return {vandq_u8(a.v, b.v)}; }
  MORVANE_INLINE static block or_blocks(const block a, const block b) { return {vorrq_u8(a.v, b.v)}; }
  template <int bits, uint32_t mask>
  MORVANE_INLINE static block shift_right_and_mask(const block b) {
    return {vreinterpretq_u8_u32(vandq_u32(vshrq_n_u32(vreinterpretq_u32_u8(b.v), bits), vdupq_n_u32(mask)))};
  }
  MORVANE_INLINE static bool fourth_bytes_are_255(const block b) {
    return vminvq_u32(vreinterpretq_u32_u8(b.v)) >= 0xff000000;
  }

  // Bytes first.. of two registers with every fourth byte of the 32 left out.
  MORVANE_INLINE static uint8x16_t three_of_four(const block a, const block b, const uint8x16_t index) {
    const uint8x16x2_t both = {{a.v, b.v}};
    return vqtbl2q_u8(both, index);
  }
  MORVANE_INLINE static void store_three_of_four(uint8_t* p, const block b0, const block b1, const block b2,
                                                 const block b3) {
    const uint8x16_t from_first = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20};
    const uint8x16_t from_sixth = {5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25};
    const uint8x16_t from_eleventh = {10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25, 26, 28, 29, 30};
    vst1q_u8(p, three_of_four(b0, b1, from_first));
    vst1q_u8(p + 16, three_of_four(b1, b2, from_sixth));
    vst1q_u8(p + 32, three_of_four(b2, b3, from_eleventh));
  }

  MORVANE_INLINE static pixels load4(const uint8_t* p) { return {vld4q_u8(p)}; }
  MORVANE_INLINE static pixels load3_second_twice(const uint8_t* p) {
    const uint8x16x3_t c = vld3q_u8(p);
    return {{{c.val[0], c.val[1], c.val[2], c.val[1]}}};
  }

  // sum + weight * x, modulo 65536.
  template <int weight>
  MORVANE_INLINE static uint16x8_t accumulate(const uint16x8_t sum, const uint8x8_t x) {
    static_assert(weight >= -255 && weight <= 255);
    if constexpr (weight == 0)
      return sum;
    else if constexpr (weight == 1)
      return vaddw_u8(sum, x);
    else if constexpr (weight == -1)
      return vsubw_u8(sum, x);
    else if constexpr (weight > 0)
      return vmlal_u8(sum, x, vdup_n_u8(weight));
    else
      return vmlsl_u8(sum, x, vdup_n_u8(-weight));
  }
  // Begins with a positive weight, which needs no sum to add to.
  template <line::weights w>
  MORVANE_INLINE static uint16x8_t sum_pixels(const uint8x8_t c0, const uint8x8_t c1, const uint8x8_t c2,
                                              const uint8x8_t c3) {
    constexpr int w0 = w.first;
    constexpr int w1 = w.second;
    constexpr int w2 = w.third;
    constexpr int w3 = w.fourth;
    if constexpr (w0 > 0) {
      const uint16x8_t sum = vmull_u8(c0, vdup_n_u8(w0));
      return accumulate<w3>(accumulate<w2>(accumulate<w1>(sum, c1), c2), c3);
    } else {
      static_assert(w2 > 0);
      const uint16x8_t sum = vmull_u8(c2, vdup_n_u8(w2));
      return accumulate<w3>(accumulate<w1>(accumulate<w0>(sum, c0), c1), c3);
    }
  }
  template <int even, int odd>
  MORVANE_INLINE static uint16x8_t accumulate_alternating(const uint16x8_t sum, const uint8x8_t x) {
    constexpr uint32_t both = (static_cast<uint32_t>(even) & 0xffff) | static_cast<uint32_t>(odd) << 16;
    return vmlaq_u16(sum, vmovl_u8(x), vreinterpretq_u16_u32(vdupq_n_u32(both)));
  }
  template <line::weights even, line::weights odd>
  MORVANE_INLINE static uint16x8_t sum_pixels_alternating(const uint8x8_t c0, const uint8x8_t c1, const uint8x8_t c2) {
    static_assert(even.fourth == 0 && odd.fourth == 0);
    const uint16x8_t sum = accumulate_alternating<even.first, odd.first>(vdupq_n_u16(0), c0);
    return accumulate_alternating<even.third, odd.third>(accumulate_alternating<even.second, odd.second>(sum, c1), c2);
  }
  template <line::weights even, line::weights odd = even>
  MORVANE_INLINE static words weigh(const pixels& p) {
    const uint8x16_t* c = p.channel.val;
    if constexpr (even == odd)
      return {sum_pixels<even>(vget_low_u8(c[0]), vget_low_u8(c[1]), vget_low_u8(c[2]), vget_low_u8(c[3])),
              sum_pixels<even>(vget_high_u8(c[0]), vget_high_u8(c[1]), vget_high_u8(c[2]), vget_high_u8(c[3]))};
    else
      return {sum_pixels_alternating<even, odd>(vget_low_u8(c[0]), vget_low_u8(c[1]), vget_low_u8(c[2])),
              sum_pixels_alternating<even, odd>(vget_high_u8(c[0]), vget_high_u8(c[1]), vget_high_u8(c[2]))};
  }

  // The multiplication doubles, so 128 * A gives (2 * 128 * sum * A) >> 16.
  MORVANE_INLINE static uint16x8_t scale(const uint16x8_t sum, const uint8x8_t a) {
    const int16x8_t a128 = vreinterpretq_s16_u16(vshll_n_u8(a, 7));
    return vreinterpretq_u16_s16(vqdmulhq_s16(vreinterpretq_s16_u16(sum), a128));
  }
  MORVANE_INLINE static words scale_by_fourth(const words sum, const pixels& p) {
    return {scale(sum.lo, vget_low_u8(p.channel.val[3])), scale(sum.hi, vget_high_u8(p.channel.val[3]))};
  }

  template <int bits>
  MORVANE_INLINE static bytes narrow(const words w) {
    if constexpr (bits == 8)
      return {vuzp2q_u8(vreinterpretq_u8_u16(w.lo), vreinterpretq_u8_u16(w.hi))};
    else
      return {vshrn_high_n_u16(vshrn_n_u16(w.lo, bits), w.hi, bits)};
  }
  template <int value>
  MORVANE_INLINE static bytes add(const bytes b) {
    return {vaddq_u8(b.v, vdupq_n_u8(value))};
  }
  MORVANE_INLINE static bytes same(const uint8_t value) { return {vdupq_n_u8(value)}; }

  MORVANE_INLINE static void store_uyvy(uint8_t* p, const bytes chroma, const bytes luma) {
    const uint8x16x2_t both = {{chroma.v, luma.v}};
    vst2q_u8(p, both);
  }

  MORVANE_INLINE static pairs load_uyvy(const uint8_t* p) {
    const uint8x8x4_t c = vld4_u8(p);
    return {c.val[0], c.val[1], c.val[2], c.val[3]};
  }
  // The chroma of a pair is weighed once for both its pixels.
  template <line::ycbcr_weights w>
  MORVANE_INLINE static pair_words weigh(const pairs& p) {
    const uint16x8_t constant = vdupq_n_u16(static_cast<uint16_t>(w.constant));
    const uint16x8_t chroma = accumulate<w.cr>(accumulate<w.cb>(constant, p.cb), p.cr);
    return {accumulate<w.y>(chroma, p.even_luma), accumulate<w.y>(chroma, p.odd_luma)};
  }
  template <int bits>
  MORVANE_INLINE static pair_words add_shifted(const pair_words a, const pair_words b) {
    return {vsraq_n_u16(a.even, b.even, bits), vsraq_n_u16(a.odd, b.odd, bits)};
  }
  MORVANE_INLINE static bytes narrow_saturating(const pair_words w) {
    const uint8x8_t even = vqmovun_s16(vreinterpretq_s16_u16(w.even));
    const uint8x8_t odd = vqmovun_s16(vreinterpretq_s16_u16(w.odd));
    return {vcombine_u8(vzip1_u8(even, odd), vzip2_u8(even, odd))};
  }

  MORVANE_INLINE static void store4(uint8_t* p, const bytes c0, const bytes c1, const bytes c2, const bytes c3) {
    const uint8x16x4_t all = {{c0.v, c1.v, c2.v, c3.v}};
    vst4q_u8(p, all);
  }
  MORVANE_INLINE static void store3(uint8_t* p, const bytes c0, const bytes c1, const bytes c2) {
    const uint8x16x3_t all = {{c0.v, c1.v, c2.v}};
    vst3q_u8(p, all);
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
