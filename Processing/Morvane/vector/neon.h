// The vector operations on NEON: 16 pixels at a time, in memory order. operations.h says what each does.
#pragma once

#include <arm_neon.h>

#include <cstdint>

#include "../format_conversion_matrix.h"
#include "../format_conversion_utils.h"
#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

struct neon {
  static constexpr int lanes = 16;
  static constexpr int block_bytes = 32;
  static constexpr int vectors_a_turn = 4;  // vectors are short, and counting them costs as much as a few operations
  static constexpr int float_lanes = 4;
  static constexpr int stores_expected_ahead = 0;

  // Two registers: loaded and stored in pairs, and half as many steps through a line.
  struct block {
    uint8x16_t lo, hi;
  };
  struct bytes {
    uint8x16_t v;
  };
  struct words {
    uint16x8_t lo, hi;
  };
  using pair_bytes = bytes;
  struct pixels {
    uint8x16x4_t channel;
  };
  using weighable = pixels;
  struct pairs {
    uint8x8_t cb, even_luma, cr, odd_luma;
  };
  struct floats {
    float32x4_t v;
  };

  MORVANE_INLINE static block load(const uint8_t* p) { return {vld1q_u8(p), vld1q_u8(p + 16)}; }
  MORVANE_INLINE static void store(uint8_t* p, const block b) {
    vst1q_u8(p, b.lo);
    vst1q_u8(p + 16, b.hi);
  }
  MORVANE_INLINE static uint16x8_t as_words(const uint8x16_t v) { return vreinterpretq_u16_u8(v); }
  MORVANE_INLINE static int16x8_t as_signed(const uint16x8_t v) { return vreinterpretq_s16_u16(v); }
  MORVANE_INLINE static uint32x4_t as_dwords(const uint8x16_t v) { return vreinterpretq_u32_u8(v); }
  MORVANE_INLINE static block block_of(const uint16x8_t lo, const uint16x8_t hi) {
    return {vreinterpretq_u8_u16(lo), vreinterpretq_u8_u16(hi)};
  }
  MORVANE_INLINE static block block_of(const uint32x4_t lo, const uint32x4_t hi) {
    return {vreinterpretq_u8_u32(lo), vreinterpretq_u8_u32(hi)};
  }
  MORVANE_INLINE static block repeat(const uint16_t value) {
    const uint16x8_t words = vdupq_n_u16(value);
    return block_of(words, words);
  }
  MORVANE_INLINE static block swap_bytes(const block b) { return {vrev16q_u8(b.lo), vrev16q_u8(b.hi)}; }
  MORVANE_INLINE static block and_blocks(const block a, const block b) {
    return {vandq_u8(a.lo, b.lo), vandq_u8(a.hi, b.hi)};
  }
  MORVANE_INLINE static block or_blocks(const block a, const block b) {
    return {vorrq_u8(a.lo, b.lo), vorrq_u8(a.hi, b.hi)};
  }
  template <int bits, uint32_t mask>
  MORVANE_INLINE static block shift_right_and_mask(const block b) {
    const uint32x4_t m = vdupq_n_u32(mask);
    return block_of(vandq_u32(vshrq_n_u32(as_dwords(b.lo), bits), m), vandq_u32(vshrq_n_u32(as_dwords(b.hi), bits), m));
  }
  template <int bits, uint32_t mask>
  MORVANE_INLINE static block shift_left_and_mask(const block b) {
    const uint32x4_t m = vdupq_n_u32(mask);
    return block_of(vandq_u32(vshlq_n_u32(as_dwords(b.lo), bits), m), vandq_u32(vshlq_n_u32(as_dwords(b.hi), bits), m));
  }
  template <int bits>
  MORVANE_INLINE static block shift_right_words(const block b) {
    return block_of(vshrq_n_u16(as_words(b.lo), bits), vshrq_n_u16(as_words(b.hi), bits));
  }
  template <int bits>
  MORVANE_INLINE static block shift_left_words(const block b) {
    return block_of(vshlq_n_u16(as_words(b.lo), bits), vshlq_n_u16(as_words(b.hi), bits));
  }
  MORVANE_INLINE static block add_words(const block a, const block b) {
    return block_of(vaddq_u16(as_words(a.lo), as_words(b.lo)), vaddq_u16(as_words(a.hi), as_words(b.hi)));
  }
  MORVANE_INLINE static block repeat_even_words(const block b) {
    return block_of(vtrn1q_u16(as_words(b.lo), as_words(b.lo)), vtrn1q_u16(as_words(b.hi), as_words(b.hi)));
  }
  // (x - offset) * (a + 1) = 65536 * (x - offset) + (offset - x) * b with b = 65535 - a, so the result is x plus the
  // upper half of the second product. Where x > offset, the unsigned product takes offset - x for 65536 more, and its
  // upper half is b too large.
  template <int offset>
  MORVANE_INLINE static uint16x8_t scale_words(const uint16x8_t x, const uint16x8_t a) {
    const uint16x8_t first = vdupq_n_u16(offset);
    const uint16x8_t b = vmvnq_u16(a);
    const uint16x8_t distance = vsubq_u16(first, x);
    const uint32x4_t lo = vmull_u16(vget_low_u16(distance), vget_low_u16(b));
    const uint32x4_t hi = vmull_high_u16(distance, b);
    const uint16x8_t upper = vuzp2q_u16(vreinterpretq_u16_u32(lo), vreinterpretq_u16_u32(hi));
    const uint16x8_t too_much = vandq_u16(vcgtq_u16(x, first), b);
    return vsubq_u16(vaddq_u16(x, upper), too_much);
  }
  template <int offset>
  MORVANE_INLINE static block scale_words(const block x, const block a) {
    return block_of(scale_words<offset>(as_words(x.lo), as_words(a.lo)),
                    scale_words<offset>(as_words(x.hi), as_words(a.hi)));
  }
  struct two_blocks {
    block first, second;
  };
  MORVANE_INLINE static two_blocks deinterleave2(const block a, const block b) {
    return {{vuzp1q_u8(a.lo, a.hi), vuzp1q_u8(b.lo, b.hi)}, {vuzp2q_u8(a.lo, a.hi), vuzp2q_u8(b.lo, b.hi)}};
  }
  MORVANE_INLINE static two_blocks deinterleave2_words(const block a, const block b) {
    return {block_of(vuzp1q_u16(as_words(a.lo), as_words(a.hi)), vuzp1q_u16(as_words(b.lo), as_words(b.hi))),
            block_of(vuzp2q_u16(as_words(a.lo), as_words(a.hi)), vuzp2q_u16(as_words(b.lo), as_words(b.hi)))};
  }
  MORVANE_INLINE static two_blocks interleave2(const block a, const block b) {
    return {{vzip1q_u8(a.lo, b.lo), vzip2q_u8(a.lo, b.lo)}, {vzip1q_u8(a.hi, b.hi), vzip2q_u8(a.hi, b.hi)}};
  }
  MORVANE_INLINE static two_blocks interleave2_words(const block a, const block b) {
    return {block_of(vzip1q_u16(as_words(a.lo), as_words(b.lo)), vzip2q_u16(as_words(a.lo), as_words(b.lo))),
            block_of(vzip1q_u16(as_words(a.hi), as_words(b.hi)), vzip2q_u16(as_words(a.hi), as_words(b.hi)))};
  }
  MORVANE_INLINE static two_blocks interleave2_dwords(const block a, const block b) {
    return {block_of(vzip1q_u32(as_dwords(a.lo), as_dwords(b.lo)), vzip2q_u32(as_dwords(a.lo), as_dwords(b.lo))),
            block_of(vzip1q_u32(as_dwords(a.hi), as_dwords(b.hi)), vzip2q_u32(as_dwords(a.hi), as_dwords(b.hi)))};
  }
  // Two words over and over.
  MORVANE_INLINE static uint16x8_t alternate(const uint16_t even, const uint16_t odd) {
    return vreinterpretq_u16_u32(vdupq_n_u32(even | static_cast<uint32_t>(odd) << 16));
  }
  MORVANE_INLINE static block pair_bits(const uint16x8_t lo, const uint16x8_t hi, const uint16x8_t factors) {
    const uint16x8_t bits = vdupq_n_u16(0x00c0);
    return block_of(vandq_u16(vmulq_u16(lo, factors), bits), vandq_u16(vmulq_u16(hi, factors), bits));
  }
  // A byte of a pair, in two bits each Cr Y1 Cb Y0 from the top, in both words of its double word, and what lifts the
  // two bits of a word's sample to bits 7 and 6.
  MORVANE_INLINE static two_blocks load_pair_bits(const uint8_t* p) {
    const uint16x8_t words = vmovl_u8(vld1_u8(p));
    const uint16x8_t lo = vzip1q_u16(words, words);
    const uint16x8_t hi = vzip2q_u16(words, words);
    return {pair_bits(lo, hi, alternate(1 << 6, 1 << 2)), pair_bits(lo, hi, alternate(1 << 4, 1))};
  }
  // The bits of both words of a pair, moved within the upper byte and added.
  template <bool cr_as_cb>
  MORVANE_INLINE static uint16x8_t pair_bits(const uint16x8_t luma, const uint16x8_t cbcr) {
    const uint16x8_t bits = vdupq_n_u16(0x00c0);
    const uint16x8_t of_luma = vmulq_u16(vandq_u16(luma, bits), alternate(1 << 2, 1 << 6));
    constexpr uint16_t of_cb = cr_as_cb ? 1 << 4 | 1 << 8 : 1 << 4;
    return vmlaq_u16(of_luma, vandq_u16(cbcr, bits), alternate(of_cb, cr_as_cb ? 0 : 1 << 8));
  }
  template <bool cr_as_cb>
  MORVANE_INLINE static void store_pair_bits(uint8_t* p, const block luma, const block cbcr) {
    const uint16x8_t lo = pair_bits<cr_as_cb>(as_words(luma.lo), as_words(cbcr.lo));
    const uint16x8_t hi = pair_bits<cr_as_cb>(as_words(luma.hi), as_words(cbcr.hi));
    vst1_u8(p, vshrn_n_u16(vpaddq_u16(lo, hi), 8));
  }
  // multiplier * x = 256 * x + rest * x; 256 * x is added after the shift.
  template <int multiplier, int offset>
  MORVANE_INLINE static uint8x8_t linear(const uint8x8_t x) {
    const uint16x8_t rest = accumulate<multiplier - 256>(vdupq_n_u16(static_cast<uint16_t>(offset)), x);
    const int16x8_t wide = as_signed(vmovl_u8(x));
    return vqmovun_s16(vsraq_n_s16(wide, as_signed(rest), 8));
  }
  template <int multiplier, int offset>
  MORVANE_INLINE static uint8x16_t linear(const uint8x16_t x) {
    return vcombine_u8(linear<multiplier, offset>(vget_low_u8(x)), linear<multiplier, offset>(vget_high_u8(x)));
  }
  template <int multiplier, int offset>
  MORVANE_INLINE static block linear(const block b) {
    return {linear<multiplier, offset>(b.lo), linear<multiplier, offset>(b.hi)};
  }
  template <int multiplier, int offset>
  MORVANE_INLINE static block linear_of_odd_bytes(const block a, const block b) {
    return linear<multiplier, offset>(deinterleave2(a, b).second);
  }
  template <int multiplier, int offset, int bits>
  MORVANE_INLINE static uint16x4_t linear_words(const uint16x4_t x) {
    const uint32x4_t sum = vmlal_n_u16(vdupq_n_u32(static_cast<uint32_t>(offset)), x, multiplier);
    return vqshrun_n_s32(vreinterpretq_s32_u32(sum), bits);
  }
  template <int multiplier, int offset, int bits>
  MORVANE_INLINE static uint16x8_t linear_words(const uint16x8_t x) {
    return vcombine_u16(linear_words<multiplier, offset, bits>(vget_low_u16(x)),
                        linear_words<multiplier, offset, bits>(vget_high_u16(x)));
  }
  template <int multiplier, int offset, int bits>
  MORVANE_INLINE static block linear_words(const block b) {
    return block_of(linear_words<multiplier, offset, bits>(as_words(b.lo)),
                    linear_words<multiplier, offset, bits>(as_words(b.hi)));
  }
  MORVANE_INLINE static block without_first(const block b, const size_t count) {
    const uint8x16_t place = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    const uint8x16_t first = vdupq_n_u8(static_cast<uint8_t>(count));
    return {vandq_u8(b.lo, vcgeq_u8(place, first)), vandq_u8(b.hi, vcgeq_u8(vaddq_u8(place, vdupq_n_u8(16)), first))};
  }
  struct sums {
    uint64x2_t v;
  };
  MORVANE_INLINE static sums no_sum() { return {vdupq_n_u64(0)}; }
  MORVANE_INLINE static sums add_differences(const sums s, const block a, const block b) {
    const uint16x8_t of_pairs = vpadalq_u8(vpaddlq_u8(vabdq_u8(a.lo, b.lo)), vabdq_u8(a.hi, b.hi));
    return {vpadalq_u32(s.v, vpaddlq_u16(of_pairs))};
  }
  MORVANE_INLINE static uint64_t total(const sums s) { return vaddvq_u64(s.v); }
  MORVANE_INLINE static bool fourth_bytes_are_255(const block b) {
    return vminvq_u32(vminq_u32(as_dwords(b.lo), as_dwords(b.hi))) >= 0xff000000;
  }

  // Bytes first.. of two registers with every fourth byte of the 32 left out.
  MORVANE_INLINE static uint8x16_t three_of_four(const uint8x16_t a, const uint8x16_t b, const uint8x16_t index) {
    const uint8x16x2_t both = {{a, b}};
    return vqtbl2q_u8(both, index);
  }
  // 64 bytes to 48.
  MORVANE_INLINE static void store_three_of_four(uint8_t* p, const block b0, const block b1) {
    const uint8x16_t from_first = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20};
    const uint8x16_t from_sixth = {5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25};
    const uint8x16_t from_eleventh = {10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25, 26, 28, 29, 30};
    vst1q_u8(p, three_of_four(b0.lo, b0.hi, from_first));
    vst1q_u8(p + 16, three_of_four(b0.hi, b1.lo, from_sixth));
    vst1q_u8(p + 32, three_of_four(b1.lo, b1.hi, from_eleventh));
  }
  // bits     31 30 29 ... 20 19 ... 10 9 ... 0        31 ... 24 23 ... 16 15 ... 8 7 ... 0
  //                 sample 2  sample 1  sample 0  to          0  sample 2 sample 1 sample 0
  MORVANE_INLINE static block upper_bytes_of_10(const uint8_t* p) {
    const block words = load(p);
    return or_blocks(or_blocks(shift_right_and_mask<2, 0xff>(words), shift_right_and_mask<4, 0xff00>(words)),
                     shift_right_and_mask<6, 0xff0000>(words));
  }
  MORVANE_INLINE static void store_upper_bytes_of_10(uint8_t* p, const uint8_t* from) {
    store_three_of_four(p, upper_bytes_of_10(from), upper_bytes_of_10(from + 32));
    store_three_of_four(p + 48, upper_bytes_of_10(from + 64), upper_bytes_of_10(from + 96));
  }

  MORVANE_INLINE static pixels load4(const uint8_t* p) { return {vld4q_u8(p)}; }
  MORVANE_INLINE static weighable load4_weighable(const uint8_t* p) { return load4(p); }
  MORVANE_INLINE static weighable load3_weighable(const uint8_t* p) {
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
    const int16x8_t a128 = as_signed(vshll_n_u8(a, 7));
    return vreinterpretq_u16_s16(vqdmulhq_s16(as_signed(sum), a128));
  }
  template <int bits, bool is_unsigned>
  MORVANE_INLINE static bytes scale_by_fourth(const words sum, const weighable& p) {
    return narrow<bits - 8>(
        words{scale(sum.lo, vget_low_u8(p.channel.val[3])), scale(sum.hi, vget_high_u8(p.channel.val[3]))});
  }

  MORVANE_INLINE static bytes load_bytes(const uint8_t* p) { return {vld1q_u8(p)}; }
  MORVANE_INLINE static void store_bytes(uint8_t* p, const bytes b) { vst1q_u8(p, b.v); }
  MORVANE_INLINE static pair_bytes same_of_pairs(const uint8_t value) { return same(value); }
  MORVANE_INLINE static pair_bytes load_pair_bytes(const uint8_t* p) { return load_bytes(p); }
  MORVANE_INLINE static void store_pair_bytes(uint8_t* p, const pair_bytes b) { store_bytes(p, b); }
  MORVANE_INLINE static bytes and_bytes(const bytes a, const bytes b) { return {vandq_u8(a.v, b.v)}; }
  MORVANE_INLINE static bool all_255(const bytes b) { return vminvq_u8(b.v) == 255; }
  MORVANE_INLINE static words widen(const bytes b) { return {vmovl_u8(vget_low_u8(b.v)), vmovl_high_u8(b.v)}; }
  MORVANE_INLINE static words widen_repeated(const bytes b) {
    return {vreinterpretq_u16_u8(vzip1q_u8(b.v, b.v)), vreinterpretq_u16_u8(vzip2q_u8(b.v, b.v))};
  }
  template <int value>
  MORVANE_INLINE static words add(const words w) {
    const uint16x8_t v = vdupq_n_u16(static_cast<uint16_t>(value));
    return {vaddq_u16(w.lo, v), vaddq_u16(w.hi, v)};
  }
  MORVANE_INLINE static words multiply(const words a, const words b) {
    return {vmulq_u16(a.lo, b.lo), vmulq_u16(a.hi, b.hi)};
  }
  MORVANE_INLINE static words low_bytes(const words w) {
    const uint16x8_t mask = vdupq_n_u16(0x00ff);
    return {vandq_u16(w.lo, mask), vandq_u16(w.hi, mask)};
  }
  MORVANE_INLINE static words high_bytes(const words w) { return {vshrq_n_u16(w.lo, 8), vshrq_n_u16(w.hi, 8)}; }
  template <int bits>
  MORVANE_INLINE static words shift_left(const words w) {
    return {vshlq_n_u16(w.lo, bits), vshlq_n_u16(w.hi, bits)};
  }
  MORVANE_INLINE static words load_words(const uint8_t* p) {
    return {vreinterpretq_u16_u8(vld1q_u8(p)), vreinterpretq_u16_u8(vld1q_u8(p + 16))};
  }
  MORVANE_INLINE static void store_words(uint8_t* p, const words w) {
    vst1q_u8(p, vreinterpretq_u8_u16(w.lo));
    vst1q_u8(p + 16, vreinterpretq_u8_u16(w.hi));
  }
  MORVANE_INLINE static bytes fourth(const pixels& p) { return {p.channel.val[3]}; }
  MORVANE_INLINE static words fourth_words(const pixels& p) { return widen(fourth(p)); }
  MORVANE_INLINE static words upper_bytes(const words low, const words high) {
    return {vsriq_n_u16(high.lo, low.lo, 8), vsriq_n_u16(high.hi, low.hi, 8)};
  }
  template <int low, int high>
  MORVANE_INLINE static words add_to_bytes(const words w) {
    const uint8x16_t both = vreinterpretq_u8_u16(vdupq_n_u16(low | high << 8));
    return {vreinterpretq_u16_u8(vaddq_u8(vreinterpretq_u8_u16(w.lo), both)),
            vreinterpretq_u16_u8(vaddq_u8(vreinterpretq_u8_u16(w.hi), both))};
  }
  template <int even, int odd, int own>
  MORVANE_INLINE static words pick_of_pairs(const pixels& p) {
    const uint8x16_t of_pair = vtrn1q_u8(p.channel.val[even], p.channel.val[odd]);
    return {vreinterpretq_u16_u8(vzip1q_u8(of_pair, p.channel.val[own])),
            vreinterpretq_u16_u8(vzip2q_u8(of_pair, p.channel.val[own]))};
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

  MORVANE_INLINE static bytes zip(const uint8x8_t even, const uint8x8_t odd) {
    return {vcombine_u8(vzip1_u8(even, odd), vzip2_u8(even, odd))};
  }
  MORVANE_INLINE static pairs load_uyvy(const uint8_t* p) {
    const uint8x8x4_t c = vld4_u8(p);
    return {c.val[0], c.val[1], c.val[2], c.val[3]};
  }
  MORVANE_INLINE static pairs load_upper_bytes(const uint8_t* luma, const uint8_t* chroma) {
    const uint8x8x4_t y = vld4_u8(luma);
    const uint8x8x4_t c = vld4_u8(chroma);
    return {c.val[1], y.val[1], c.val[3], y.val[3]};
  }
  // The chroma of a pair is weighed once for both its pixels.
  template <int cb, int cr, int constant>
  MORVANE_INLINE static uint16x8_t weigh_chroma(const pairs& p) {
    const uint16x8_t sum = vdupq_n_u16(static_cast<uint16_t>(constant));
    return accumulate<cr>(accumulate<cb>(sum, p.cb), p.cr);
  }
  // Half of the weighted chroma, which takes up to 17 bits, rounded down. Half of three times x is x + (x >> 1).
  template <int cb, int cr, int constant>
  MORVANE_INLINE static uint16x8_t half_of_chroma(const pairs& p) {
    constexpr line::ycbcr_weights whole = {0, cb, cr, constant};
    static_assert(line::lowest(whole) >= 0 && line::highest(whole) / 2 <= 65535);
    if constexpr (cb % 2 == 0 && cr % 2 == 0) {
      return weigh_chroma<cb / 2, cr / 2, constant / 2>(p);
    } else if constexpr (line::highest(whole) <= 65535) {
      const uint16x8_t twice = weigh_chroma<cb, cr, constant>(p);
      return vshrq_n_u16(twice, 1);
    } else if constexpr (cb % 3 == 0 && cr % 3 == 0 && constant % 3 == 0) {
      const uint16x8_t third = weigh_chroma<cb / 3, cr / 3, constant / 3>(p);
      return vsraq_n_u16(third, third, 1);
    } else {
      static_assert(cb == 0 && cr % 2 == 1 && constant % 2 == 1);
      const uint8x8_t half_of_odd_parts = vrshr_n_u8(p.cr, 1);  // (Cr + 1) >> 1
      return vaddw_u8(weigh_chroma<0, cr / 2, constant / 2>(p), half_of_odd_parts);
    }
  }
  // clamp(sum >> bits), 0 to 255. The saturating shift leaves this byte in the upper half of the word:
  //
  //   even   . E0  . E1  . E2  . E3 ...
  //   odd    . O0  . O1  . O2  . O3 ...  to  E0 O0 E1 O1 E2 O2 E3 O3 ...
  template <int bits>
  MORVANE_INLINE static pair_bytes clamp(const int16x8_t even, const int16x8_t odd) {
    return {vtrn2q_u8(vreinterpretq_u8_u16(vqshluq_n_s16(even, 8 - bits)),
                      vreinterpretq_u8_u16(vqshluq_n_s16(odd, 8 - bits)))};
  }
  // Luma and chroma fit a word each. Their sum may stop at 32767, which is past the largest byte anyway.
  template <line::ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_bytes clamped_sum_of_words(const pairs& p) {
    constexpr line::ycbcr_weights k = w;
    constexpr line::ycbcr_weights chroma_alone = {0, k.cb, k.cr, k.constant};
    static_assert(255 * k.y <= 32767 && 32767 >= 256 << bits);
    static_assert(line::fits_signed(chroma_alone));
    const int16x8_t chroma = as_signed(weigh_chroma<k.cb, k.cr, k.constant>(p));
    const uint8x8_t weight = vdup_n_u8(k.y);
    return clamp<bits>(vqaddq_s16(chroma, as_signed(vmull_u8(p.even_luma, weight))),
                       vqaddq_s16(chroma, as_signed(vmull_u8(p.odd_luma, weight))));
  }
  // With Z = 255 - Y, half of the chroma and half of the luma are unsigned words, and the subtraction halves their
  // difference once more, to a signed word. Where chroma would not fit, 512 * Cb are added last; that sum may stop as
  // above.
  template <line::ycbcr_weights w>
  MORVANE_INLINE static pair_bytes clamped_difference_of_halves(const pairs& p) {
    constexpr line::ycbcr_weights k = w;
    static_assert(k.y % 2 == 0);
    constexpr bool adds_last = k.cb > 512;
    constexpr int cb = adds_last ? k.cb - 512 : k.cb;
    constexpr int constant = k.constant + 255 * k.y;
    const uint16x8_t chroma = half_of_chroma<cb, k.cr, constant>(p);
    const uint8x8_t weight = vdup_n_u8(k.y / 2);
    const int16x8_t even = as_signed(vhsubq_u16(chroma, vmull_u8(vmvn_u8(p.even_luma), weight)));
    const int16x8_t odd = as_signed(vhsubq_u16(chroma, vmull_u8(vmvn_u8(p.odd_luma), weight)));
    if constexpr (adds_last) {
      const int16x8_t last = as_signed(vshll_n_u8(p.cb, 7));
      return clamp<6>(vqaddq_s16(last, even), vqaddq_s16(last, odd));
    } else {
      return clamp<6>(even, odd);
    }
  }
  // 256 * (2 * Cb - Z), with Z = 255 - Y, and a rest of 16 bits.
  template <line::ycbcr_weights w>
  MORVANE_INLINE static pair_bytes clamped_whole_and_rest(const pairs& p) {
    constexpr line::ycbcr_weights k = w;
    constexpr line::ycbcr_weights chroma_rest = {0, k.cb - 512, 0, k.constant + 255 * k.y};
    constexpr int luma_rest = 256 - k.y;
    static_assert(k.cr == 0 && luma_rest < 0);
    static_assert(line::lowest(chroma_rest) + 255 * luma_rest >= -32768 && line::highest(chroma_rest) <= 32767);
    const uint16x8_t whole = vshll_n_u8(p.cb, 1);
    const uint16x8_t rest = weigh_chroma<chroma_rest.cb, 0, chroma_rest.constant>(p);
    const uint8x8_t even = vmvn_u8(p.even_luma);
    const uint8x8_t odd = vmvn_u8(p.odd_luma);
    return clamp<0>(vsraq_n_s16(as_signed(vsubw_u8(whole, even)), as_signed(accumulate<luma_rest>(rest, even)), 8),
                    vsraq_n_s16(as_signed(vsubw_u8(whole, odd)), as_signed(accumulate<luma_rest>(rest, odd)), 8));
  }
  template <line::ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_bytes clamped_sum(const pairs& p) {
    static_assert(bits == 6 || bits == 8);
    if constexpr (bits == 6)
      return clamped_sum_of_words<w, bits>(p);
    else if constexpr (w.y % 2 == 0)
      return clamped_difference_of_halves<w>(p);
    else
      return clamped_whole_and_rest<w>(p);
  }

  template <bool is_crcby>
  MORVANE_INLINE static void store_444(uint8_t* p, const pairs& uyvy, const bytes fourth) {
    const bytes y = zip(uyvy.even_luma, uyvy.odd_luma);
    const bytes cb = zip(uyvy.cb, uyvy.cb);
    const bytes cr = zip(uyvy.cr, uyvy.cr);
    store4(p, is_crcby ? cr : y, cb, is_crcby ? y : cr, fourth);
  }
  template <bool is_crcby>
  MORVANE_INLINE static void store_444(uint8_t* p, const uint8_t* uyvy, const uint8_t* alpha) {
    store_444<is_crcby>(p, load_uyvy(uyvy), load_bytes(alpha));
  }
  template <bool is_crcby>
  MORVANE_INLINE static void store_444(uint8_t* p, const uint8_t* uyvy) {
    store_444<is_crcby>(p, load_uyvy(uyvy), same(255));
  }

  MORVANE_INLINE static void store4(uint8_t* p, const bytes c0, const bytes c1, const bytes c2, const bytes c3) {
    const uint8x16x4_t all = {{c0.v, c1.v, c2.v, c3.v}};
    vst4q_u8(p, all);
  }
  template <line::weights w, bool keeps_fourth>
  MORVANE_INLINE static void replace_second_and_fourth(uint8_t* p, const pixels& from) {
    uint8x16x4_t replaced = vld4q_u8(p);
    replaced.val[1] = add<128>(narrow<8>(weigh<w>(from))).v;
    replaced.val[3] = keeps_fourth ? from.channel.val[3] : vdupq_n_u8(255);
    vst4q_u8(p, replaced);
  }
  MORVANE_INLINE static void store3(uint8_t* p, const bytes c0, const bytes c1, const bytes c2) {
    const uint8x16x3_t all = {{c0.v, c1.v, c2.v}};
    vst3q_u8(p, all);
  }

  template <int bottom>
  MORVANE_INLINE static floats load_words_above(const uint8_t* p) {
    const uint16x4_t words = vreinterpret_u16_u8(vld1_u8(p));
    return {vcvtq_f32_u32(vmovl_u16(vqsub_u16(words, vdup_n_u16(bottom))))};
  }
  MORVANE_INLINE static floats multiply(const floats f, const float factor) { return {vmulq_n_f32(f.v, factor)}; }
  MORVANE_INLINE static floats add(const floats a, const floats b) { return {vaddq_f32(a.v, b.v)}; }
  MORVANE_INLINE static floats subtract(const floats f, const float subtrahend) {
    return {vsubq_f32(f.v, vdupq_n_f32(subtrahend))};
  }
  MORVANE_INLINE static floats at_most(const floats f, const float limit) {
    return {vminq_f32(f.v, vdupq_n_f32(limit))};
  }
  MORVANE_INLINE static void store_pixel(uint8_t* p, const float32x2_t chroma, const float32x2_t luma_alpha) {
    vst1q_u8(p, vreinterpretq_u8_f32(vcombine_f32(chroma, luma_alpha)));
  }
  MORVANE_INLINE static void store_vuya(uint8_t* p, const floats cbcr, const floats luma, const floats alpha) {
    const float32x4_t crcb = vrev64q_f32(cbcr.v);
    const float32x4_t first = vzip1q_f32(luma.v, alpha.v);
    const float32x4_t second = vzip2q_f32(luma.v, alpha.v);
    store_pixel(p, vget_low_f32(crcb), vget_low_f32(first));
    store_pixel(p + 16, vget_low_f32(crcb), vget_high_f32(first));
    store_pixel(p + 32, vget_high_f32(crcb), vget_low_f32(second));
    store_pixel(p + 48, vget_high_f32(crcb), vget_high_f32(second));
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
