// Blocks on NEON: runs of 32 bytes as they stand in memory. operations.h says what each operation does.
#pragma once

#include <arm_neon.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"

namespace Processing::Morvane::format_conversion::vector {

struct neon_blocks {
  static constexpr int block_bytes = 32;

  // Two registers: loaded and stored in pairs, and half as many steps through a line.
  struct block {
    static constexpr size_t stored_bytes = 32;
    uint8x16_t lo, hi;
  };
  struct two_blocks {
    static constexpr size_t stored_bytes = 64;
    block first, second;
  };
  struct three_blocks {
    static constexpr size_t stored_bytes = 96;
    block first, second, third;
  };
  MORVANE_INLINE static block load(const uint8_t* p) { return {vld1q_u8(p), vld1q_u8(p + 16)}; }
  MORVANE_INLINE static void store(uint8_t* p, const block b) {
    vst1q_u8(p, b.lo);
    vst1q_u8(p + 16, b.hi);
  }
  MORVANE_INLINE static void store(uint8_t* p, const two_blocks& b) {
    store(p, b.first);
    store(p + 32, b.second);
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_blocks& b) {
    store(p, b.first);
    store(p + 32, b.second);
    store(p + 64, b.third);
  }
  // A hint that nobody reads the bytes soon; compilers have no intrinsic for it.
  MORVANE_INLINE static void stream(uint8_t* p, const block b) {
    asm volatile("stnp %q0, %q1, [%2]" : : "w"(b.lo), "w"(b.hi), "r"(p) : "memory");
  }
  MORVANE_INLINE static void stream_cache_line(const uint8_t* p, uint8_t* to) {
    stream(to, load(p));
    stream(to + 32, load(p + 32));
  }
  MORVANE_INLINE static void finish_streaming() { asm volatile("dmb ishst" : : : "memory"); }
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
  MORVANE_INLINE static block repeat_dword(const uint32_t value) {
    const uint32x4_t dwords = vdupq_n_u32(value);
    return block_of(dwords, dwords);
  }
  MORVANE_INLINE static block rearrange_dwords(const block b, const uint32_t from) {
    const uint8x16_t first_of_dword = {0, 0, 0, 0, 4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12};
    const uint8x16_t index = vorrq_u8(first_of_dword, vreinterpretq_u8_u32(vdupq_n_u32(from)));
    return {vqtbl1q_u8(b.lo, index), vqtbl1q_u8(b.hi, index)};
  }
  MORVANE_INLINE static block swap_bytes(const block b) { return {vrev16q_u8(b.lo), vrev16q_u8(b.hi)}; }
  MORVANE_INLINE static block and_blocks(const block a, const block b) {
    return {vandq_u8(a.lo, b.lo), vandq_u8(a.hi, b.hi)};
  }
  MORVANE_INLINE static block or_blocks(const block a, const block b) {
    return {vorrq_u8(a.lo, b.lo), vorrq_u8(a.hi, b.hi)};
  }
  MORVANE_INLINE static block with_bits(const block b, const uint32_t kept, const uint32_t set) {
    const uint8x16_t mask = vreinterpretq_u8_u32(vdupq_n_u32(kept & ~set));
    const uint8x16_t others = vreinterpretq_u8_u32(vdupq_n_u32(set));
    return {vbslq_u8(mask, b.lo, others), vbslq_u8(mask, b.hi, others)};
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
  // To the right where `bits` is negative.
  MORVANE_INLINE static block shifted_words(const block b, const int bits) {
    const int16x8_t by = vdupq_n_s16(static_cast<int16_t>(bits));
    return block_of(vshlq_u16(as_words(b.lo), by), vshlq_u16(as_words(b.hi), by));
  }
  MORVANE_INLINE static block shift_right_words(const block b, const int bits) { return shifted_words(b, -bits); }
  MORVANE_INLINE static block shift_left_words(const block b, const int bits) { return shifted_words(b, bits); }
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
  MORVANE_INLINE static block load_upper_of_groups(const uint8_t* p) { return load(p); }
  MORVANE_INLINE static two_blocks load_lower_of_groups(const uint8_t* p) {
    const uint16x8_t words = vmovl_u8(vld1_u8(p + 32));
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
  struct groups {
    static constexpr size_t stored_bytes = 40;
    block upper;
    uint8x8_t lower;
  };
  template <bool cr_as_cb>
  MORVANE_INLINE static groups join_groups(const block upper, const block luma, const block cbcr) {
    const uint16x8_t lo = pair_bits<cr_as_cb>(as_words(luma.lo), as_words(cbcr.lo));
    const uint16x8_t hi = pair_bits<cr_as_cb>(as_words(luma.hi), as_words(cbcr.hi));
    return {upper, vshrn_n_u16(vpaddq_u16(lo, hi), 8)};
  }
  MORVANE_INLINE static void store(uint8_t* p, const groups& g) {
    store(p, g.upper);
    vst1_u8(p + 32, g.lower);
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
  MORVANE_INLINE static uint16x8_t differences_of_pairs(const block a, const block b) {
    return vpadalq_u8(vpaddlq_u8(vabdq_u8(a.lo, b.lo)), vabdq_u8(a.hi, b.hi));
  }
  MORVANE_INLINE static sums add_differences(const sums s, const block a, const block b) {
    return {vpadalq_u32(s.v, vpaddlq_u16(differences_of_pairs(a, b)))};
  }
  MORVANE_INLINE static sums add_differences(const sums s, const two_blocks& a, const two_blocks& b) {
    const uint16x8_t both = vaddq_u16(differences_of_pairs(a.first, b.first), differences_of_pairs(a.second, b.second));
    return {vpadalq_u32(s.v, vpaddlq_u16(both))};
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
  MORVANE_INLINE static block upper_bytes_of_words(const uint8_t* p) {
    const block words = load(p);
    return or_blocks(or_blocks(shift_right_and_mask<2, 0xff>(words), shift_right_and_mask<4, 0xff00>(words)),
                     shift_right_and_mask<6, 0xff0000>(words));
  }
  // They are taken from their words when they are stored, one half after the other: both would fill all registers.
  struct tens {
    static constexpr size_t stored_bytes = 96;
    const uint8_t* words;
  };
  MORVANE_INLINE static tens upper_bytes_of_10(const uint8_t* p) { return {p}; }
  MORVANE_INLINE static void store(uint8_t* p, const tens t) {
    store_three_of_four(p, upper_bytes_of_words(t.words), upper_bytes_of_words(t.words + 32));
    store_three_of_four(p + 48, upper_bytes_of_words(t.words + 64), upper_bytes_of_words(t.words + 96));
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
