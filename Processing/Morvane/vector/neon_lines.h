// Words of lines on NEON, and what they are stored as. operations.h says what each operation does.
#pragma once

#include <arm_neon.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "neon_blocks.h"

namespace Processing::Morvane::format_conversion::vector {

struct neon_lines : neon_blocks {
  using neon_blocks::store;

  MORVANE_INLINE static block subtract_words(const block a, const block b) {
    return block_of(vsubq_u16(as_words(a.lo), as_words(b.lo)), vsubq_u16(as_words(a.hi), as_words(b.hi)));
  }
  MORVANE_INLINE static block xor_blocks(const block a, const block b) {
    return {veorq_u8(a.lo, b.lo), veorq_u8(a.hi, b.hi)};
  }
  MORVANE_INLINE static block least_words(const block a, const block b) {
    return block_of(vminq_u16(as_words(a.lo), as_words(b.lo)), vminq_u16(as_words(a.hi), as_words(b.hi)));
  }
  MORVANE_INLINE static block add_words_to_limit(const block a, const block b) {
    return block_of(vqaddq_u16(as_words(a.lo), as_words(b.lo)), vqaddq_u16(as_words(a.hi), as_words(b.hi)));
  }
  MORVANE_INLINE static block subtract_words_to_zero(const block a, const block b) {
    return block_of(vqsubq_u16(as_words(a.lo), as_words(b.lo)), vqsubq_u16(as_words(a.hi), as_words(b.hi)));
  }
  MORVANE_INLINE static int16x8_t signed_lanes(const uint8x16_t v) { return vreinterpretq_s16_u8(v); }
  MORVANE_INLINE static block add_signed_to_limit(const block a, const block b) {
    return {vreinterpretq_u8_s16(vqaddq_s16(signed_lanes(a.lo), signed_lanes(b.lo))),
            vreinterpretq_u8_s16(vqaddq_s16(signed_lanes(a.hi), signed_lanes(b.hi)))};
  }
  MORVANE_INLINE static block average_up(const block a, const block b) {
    return block_of(vrhaddq_u16(as_words(a.lo), as_words(b.lo)), vrhaddq_u16(as_words(a.hi), as_words(b.hi)));
  }
  MORVANE_INLINE static block average_down(const block a, const block b) {
    return block_of(vhaddq_u16(as_words(a.lo), as_words(b.lo)), vhaddq_u16(as_words(a.hi), as_words(b.hi)));
  }
  MORVANE_INLINE static block average_bytes_up(const block a, const block b) {
    return {vrhaddq_u8(a.lo, b.lo), vrhaddq_u8(a.hi, b.hi)};
  }
  MORVANE_INLINE static block average_bytes_down(const block a, const block b) {
    return {vhaddq_u8(a.lo, b.lo), vhaddq_u8(a.hi, b.hi)};
  }
  MORVANE_INLINE static block rounded_product(const block a, const block b) {
    return {vreinterpretq_u8_s16(vqrdmulhq_s16(signed_lanes(a.lo), signed_lanes(b.lo))),
            vreinterpretq_u8_s16(vqrdmulhq_s16(signed_lanes(a.hi), signed_lanes(b.hi)))};
  }
  struct word_sums {
    int32x4_t first, second, third, fourth;
  };
  MORVANE_INLINE static word_sums repeat_sum(const int32_t constant) {
    const int32x4_t v = vdupq_n_s32(constant);
    return {v, v, v, v};
  }
  MORVANE_INLINE static word_sums add_products(const word_sums& s, const int16x8_t lo, const int16x8_t hi,
                                               const int16_t factor) {
    return {vmlal_n_s16(s.first, vget_low_s16(lo), factor), vmlal_high_n_s16(s.second, lo, factor),
            vmlal_n_s16(s.third, vget_low_s16(hi), factor), vmlal_high_n_s16(s.fourth, hi, factor)};
  }
  MORVANE_INLINE static word_sums add_products(const word_sums& s, const block x, const int16_t a, const block y,
                                               const int16_t b) {
    return add_products(add_products(s, signed_lanes(x.lo), signed_lanes(x.hi), a), signed_lanes(y.lo),
                        signed_lanes(y.hi), b);
  }
  template <int bits>
  MORVANE_INLINE static block signed_words(const word_sums& s) {
    return {vreinterpretq_u8_s16(vcombine_s16(vqshrn_n_s32(s.first, bits), vqshrn_n_s32(s.second, bits))),
            vreinterpretq_u8_s16(vcombine_s16(vqshrn_n_s32(s.third, bits), vqshrn_n_s32(s.fourth, bits)))};
  }
  MORVANE_INLINE static uint8x16_t pack_words(const block b) {
    return vcombine_u8(vqmovun_s16(signed_lanes(b.lo)), vqmovun_s16(signed_lanes(b.hi)));
  }
  MORVANE_INLINE static block pack_words(const block a, const block b) { return {pack_words(a), pack_words(b)}; }
  MORVANE_INLINE static block pack_words_in_turn(const block a, const block b) {
    const uint8x16_t first = pack_words(a), second = pack_words(b);
    return {vzip1q_u8(first, second), vzip2q_u8(first, second)};
  }
  MORVANE_INLINE static two_blocks transpose2_words(const block a, const block b) {
    return {block_of(vtrn1q_u16(as_words(a.lo), as_words(b.lo)), vtrn1q_u16(as_words(a.hi), as_words(b.hi))),
            block_of(vtrn2q_u16(as_words(a.lo), as_words(b.lo)), vtrn2q_u16(as_words(a.hi), as_words(b.hi)))};
  }

  MORVANE_INLINE static two_blocks load_threes(const uint8_t* p) {
    const uint8x16_t from_first = {0, 1, 2, 255, 3, 4, 5, 255, 6, 7, 8, 255, 9, 10, 11, 255};
    const uint8x16_t from_fifth = {4, 5, 6, 255, 7, 8, 9, 255, 10, 11, 12, 255, 13, 14, 15, 255};
    const uint8x16_t middle = vld1q_u8(p + 16);
    return {{vqtbl1q_u8(vld1q_u8(p), from_first), vqtbl1q_u8(vextq_u8(vld1q_u8(p), middle, 12), from_first)},
            {vqtbl1q_u8(vextq_u8(middle, vld1q_u8(p + 32), 8), from_first), vqtbl1q_u8(vld1q_u8(p + 32), from_fifth)}};
  }
  // Of eight pixels of so many bytes, after the bytes skipped.
  template <int bytes, int skipped>
  MORVANE_INLINE static uint8x16_t byte_of_pixels(const uint8x16x2_t& pixels, const uint32_t place) {
    constexpr uint8_t s = skipped, b = bytes;
    const uint8x16_t first = {s,         s,         s + b,     s + b,     s + 2 * b, s + 2 * b, s + 3 * b, s + 3 * b,
                              s + 4 * b, s + 4 * b, s + 5 * b, s + 5 * b, s + 6 * b, s + 6 * b, s + 7 * b, s + 7 * b};
    return vqtbl2q_u8(pixels, vaddq_u8(first, vdupq_n_u8(static_cast<uint8_t>(place))));
  }
  template <int bytes, int skipped>
  MORVANE_INLINE static three_blocks bytes_of_pixels(const uint8x16x2_t& lo, const uint8x16x2_t& hi,
                                                     const uint32_t places) {
    const uint32_t second = places >> 8, third = places >> 16;
    return {{byte_of_pixels<bytes, 0>(lo, places), byte_of_pixels<bytes, skipped>(hi, places)},
            {byte_of_pixels<bytes, 0>(lo, second), byte_of_pixels<bytes, skipped>(hi, second)},
            {byte_of_pixels<bytes, 0>(lo, third), byte_of_pixels<bytes, skipped>(hi, third)}};
  }
  MORVANE_INLINE static uint8x16x2_t two_registers(const uint8_t* p) { return {{vld1q_u8(p), vld1q_u8(p + 16)}}; }
  MORVANE_INLINE static three_blocks load_bytes_of_fours(const uint8_t* p, const uint32_t places) {
    return bytes_of_pixels<4, 0>(two_registers(p), two_registers(p + 32), places);
  }
  MORVANE_INLINE static three_blocks load_bytes_of_threes(const uint8_t* p, const uint32_t places) {
    return bytes_of_pixels<3, 8>(two_registers(p), two_registers(p + 16), places);
  }
  MORVANE_INLINE static block dwords_before(const block before, const block b) {
    return {vextq_u8(before.hi, b.lo, 12), vextq_u8(b.lo, b.hi, 12)};
  }
  struct packed_threes {
    static constexpr size_t stored_bytes = 48;
    two_blocks fours;
  };
  MORVANE_INLINE static packed_threes threes(const two_blocks& fours) { return {fours}; }
  MORVANE_INLINE static void store(uint8_t* p, const packed_threes& t) {
    store_three_of_four(p, t.fours.first, t.fours.second);
  }

  // Words 0, 3, 6... of three registers, or those behind them.
  template <int first>
  MORVANE_INLINE static uint8x16_t every_third_word(const uint8x16x3_t& words) {
    const uint8x16_t from = {0, 1, 6, 7, 12, 13, 18, 19, 24, 25, 30, 31, 36, 37, 42, 43};
    return vqtbl3q_u8(words, vaddq_u8(from, vdupq_n_u8(2 * first)));
  }
  MORVANE_INLINE static three_blocks deinterleave3_words(const block a, const block b, const block c) {
    const uint8x16x3_t lo = {{a.lo, a.hi, b.lo}};
    const uint8x16x3_t hi = {{b.hi, c.lo, c.hi}};
    return {{every_third_word<0>(lo), every_third_word<0>(hi)},
            {every_third_word<1>(lo), every_third_word<1>(hi)},
            {every_third_word<2>(lo), every_third_word<2>(hi)}};
  }
  MORVANE_INLINE static three_blocks interleave3_words(const block a, const block b, const block c) {
    const uint8x16_t first = {0, 1, 16, 17, 32, 33, 2, 3, 18, 19, 34, 35, 4, 5, 20, 21};
    const uint8x16_t second = {36, 37, 6, 7, 22, 23, 38, 39, 8, 9, 24, 25, 40, 41, 10, 11};
    const uint8x16_t third = {26, 27, 42, 43, 12, 13, 28, 29, 44, 45, 14, 15, 30, 31, 46, 47};
    const uint8x16x3_t lo = {{a.lo, b.lo, c.lo}};
    const uint8x16x3_t hi = {{a.hi, b.hi, c.hi}};
    return {{vqtbl3q_u8(lo, first), vqtbl3q_u8(lo, second)},
            {vqtbl3q_u8(lo, third), vqtbl3q_u8(hi, first)},
            {vqtbl3q_u8(hi, second), vqtbl3q_u8(hi, third)}};
  }

  // Two groups of five bytes in each register. Word i of a group is its bytes i and i + 1, in which the sample lies 2 i
  // bits below the top.
  MORVANE_INLINE static uint16x8_t tens_at_top(const uint8x16_t bytes, const uint8x16_t places) {
    const uint16x8_t lifts = {1, 4, 16, 64, 1, 4, 16, 64};
    return vandq_u16(vmulq_u16(as_words(vqtbl1q_u8(bytes, places)), lifts), vdupq_n_u16(0xffc0));
  }
  MORVANE_INLINE static block load_tens_of_fives(const uint8_t* p) {
    const uint8x16_t places = {1, 0, 2, 1, 3, 2, 4, 3, 6, 5, 7, 6, 8, 7, 9, 8};
    return block_of(tens_at_top(vld1q_u8(p), places), tens_at_top(vld1q_u8(p + 4), vaddq_u8(places, vdupq_n_u8(6))));
  }
  struct groups_of_five {
    static constexpr size_t stored_bytes = 20;
    block b;
  };
  MORVANE_INLINE static uint8x16_t fives_of_tens(const uint8x16_t samples) {
    const uint16x8_t lifts = {64, 16, 4, 1, 64, 16, 4, 1};
    const uint8x16_t begun = {1, 3, 5, 7, 6, 9, 11, 13, 15, 14, 255, 255, 255, 255, 255, 255};
    const uint8x16_t ended = {255, 0, 2, 4, 255, 255, 8, 10, 12, 255, 255, 255, 255, 255, 255, 255};
    const uint8x16_t words = vreinterpretq_u8_u16(vmulq_u16(vshrq_n_u16(as_words(samples), 6), lifts));
    return vorrq_u8(vqtbl1q_u8(words, begun), vqtbl1q_u8(words, ended));
  }
  MORVANE_INLINE static groups_of_five fives_of_tens(const block samples) {
    return {{fives_of_tens(samples.lo), fives_of_tens(samples.hi)}};
  }
  // What is stored behind the first two groups is overwritten by the others.
  MORVANE_INLINE static void store(uint8_t* p, const groups_of_five& g) {
    vst1q_u8(p, g.b.lo);
    vst1_u8(p + 10, vget_low_u8(g.b.hi));
    const uint16_t last = vgetq_lane_u16(as_words(g.b.hi), 4);
    __builtin_memcpy(p + 18, &last, 2);
  }

  // A group of v210 in each register.
  struct three_lines {
    struct six_words {
      static constexpr size_t stored_bytes = 24;
      block b;
    } luma;
    struct lower_three_words {
      static constexpr size_t stored_bytes = 12;
      block b;
    } cb;
    struct upper_three_words {
      static constexpr size_t stored_bytes = 12;
      block b;
    } cr;
  };
  MORVANE_INLINE static uint16x8_t tens_of(const uint8x16_t words, const uint8x16_t places, const uint16x8_t factors) {
    return vandq_u16(vmulq_u16(as_words(vqtbl1q_u8(words, places)), factors), vdupq_n_u16(0xffc0));
  }
  MORVANE_INLINE static three_lines split_v210(const block words) {
    const uint8x16_t of_luma = {1, 2, 4, 5, 6, 7, 9, 10, 12, 13, 14, 15, 255, 255, 255, 255};
    const uint8x16_t of_chroma = {0, 1, 5, 6, 10, 11, 255, 255, 2, 3, 8, 9, 13, 14, 255, 255};
    const uint16x8_t lift_luma = {16, 64, 4, 16, 64, 4, 0, 0};
    const uint16x8_t lift_chroma = {64, 16, 4, 0, 4, 64, 16, 0};
    const block luma = block_of(tens_of(words.lo, of_luma, lift_luma), tens_of(words.hi, of_luma, lift_luma));
    const block chroma = block_of(tens_of(words.lo, of_chroma, lift_chroma), tens_of(words.hi, of_chroma, lift_chroma));
    return {{luma}, {chroma}, {chroma}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::six_words& w) {
    vst1q_u8(p, w.b.lo);
    vst1q_u8(p + 12, w.b.hi);
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::lower_three_words& w) {
    vst1_u8(p, vget_low_u8(w.b.lo));
    vst1_u8(p + 6, vget_low_u8(w.b.hi));
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::upper_three_words& w) {
    vst1_u8(p, vget_high_u8(w.b.lo));
    vst1_u8(p + 6, vget_high_u8(w.b.hi));
  }
  MORVANE_INLINE static two_blocks load_for_v210(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    return {{vld1q_u8(luma), vld1q_u8(luma + 12)},
            {vcombine_u8(vld1_u8(cb), vld1_u8(cr)), vcombine_u8(vld1_u8(cb + 6), vld1_u8(cr + 6))}};
  }
  // The samples at bits 0 and 10 of each double word as its words, and that at bit 20 in its lower one.
  MORVANE_INLINE static uint8x16_t join_v210(const uint8x16_t luma, const uint8x16_t chroma, const uint8x16_t first_two,
                                             const uint8x16_t third) {
    const uint8x16x2_t both = {{luma, chroma}};
    const uint32x4_t pairs = as_dwords(vqtbl2q_u8(both, first_two));
    const uint32x4_t second = vshlq_n_u32(vshrq_n_u32(pairs, 16), 10);
    const uint32x4_t lower = vorrq_u32(vandq_u32(pairs, vdupq_n_u32(1023)), second);
    return vreinterpretq_u8_u32(vorrq_u32(lower, vshlq_n_u32(as_dwords(vqtbl2q_u8(both, third)), 20)));
  }
  MORVANE_INLINE static block join_v210(const two_blocks& lines) {
    const uint8x16_t first_two = {16, 17, 0, 1, 2, 3, 18, 19, 26, 27, 6, 7, 8, 9, 28, 29};
    const uint8x16_t third = {24, 25, 255, 255, 4, 5, 255, 255, 20, 21, 255, 255, 10, 11, 255, 255};
    return {join_v210(lines.first.lo, lines.second.lo, first_two, third),
            join_v210(lines.first.hi, lines.second.hi, first_two, third)};
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
