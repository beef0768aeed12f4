// Blocks on WebAssembly's SIMD128: runs of 32 bytes as they stand in memory. operations.h says what each operation
// does.
//
// A byte of a swizzle's table that is 255 gives 0. Tables that are constants cost one instruction on most processors.
#pragma once

#include <wasm_simd128.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"

namespace Processing::Morvane::format_conversion::vector {

struct wasm_blocks {
  static constexpr int block_bytes = 32;

  // Two registers: half as many steps through a line.
  struct block {
    static constexpr size_t stored_bytes = 32;
    v128_t lo, hi;
  };
  struct two_blocks {
    static constexpr size_t stored_bytes = 64;
    block first, second;
  };
  struct three_blocks {
    static constexpr size_t stored_bytes = 96;
    block first, second, third;
  };

  // One operation on both registers.
  template <auto operation>
  MORVANE_INLINE static block each(const block a, const block b) {
    return {operation(a.lo, b.lo), operation(a.hi, b.hi)};
  }
  template <auto operation>
  MORVANE_INLINE static block each_with(const block a, const v128_t b) {
    return {operation(a.lo, b), operation(a.hi, b)};
  }
  template <auto operation>
  MORVANE_INLINE static block each_by(const block a, const int bits) {
    const auto count = static_cast<uint32_t>(bits);
    return {operation(a.lo, count), operation(a.hi, count)};
  }

  MORVANE_INLINE static block load(const uint8_t* p) { return {wasm_v128_load(p), wasm_v128_load(p + 16)}; }
  MORVANE_INLINE static void store(uint8_t* p, const block b) {
    wasm_v128_store(p, b.lo);
    wasm_v128_store(p + 16, b.hi);
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
  MORVANE_INLINE static v128_t words_of(const int value) { return wasm_i16x8_splat(static_cast<int16_t>(value)); }
  MORVANE_INLINE static v128_t dwords_of(const uint32_t value) { return wasm_u32x4_splat(value); }
  // Two words over and over.
  MORVANE_INLINE static v128_t alternate(const int even, const int odd) {
    return dwords_of((static_cast<uint32_t>(even) & 0xffff) | static_cast<uint32_t>(odd) << 16);
  }
  MORVANE_INLINE static block repeat(const uint16_t value) { return {words_of(value), words_of(value)}; }
  MORVANE_INLINE static block repeat_dword(const uint32_t value) { return {dwords_of(value), dwords_of(value)}; }
  MORVANE_INLINE static block rearrange_dwords(const block b, const uint32_t from) {
    const v128_t first_of_dword = wasm_u8x16_const(0, 0, 0, 0, 4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12);
    return each_with<wasm_i8x16_swizzle>(b, wasm_v128_or(first_of_dword, dwords_of(from)));
  }
  MORVANE_INLINE static block swap_bytes(const block b) {
    return each_with<wasm_i8x16_swizzle>(b, wasm_u8x16_const(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14));
  }
  MORVANE_INLINE static block and_blocks(const block a, const block b) { return each<wasm_v128_and>(a, b); }
  MORVANE_INLINE static block or_blocks(const block a, const block b) { return each<wasm_v128_or>(a, b); }
  MORVANE_INLINE static block with_bits(const block b, const uint32_t kept, const uint32_t set) {
    return each_with<wasm_v128_or>(each_with<wasm_v128_and>(b, dwords_of(kept)), dwords_of(set));
  }
  template <int bits, uint32_t mask>
  MORVANE_INLINE static block shift_right_and_mask(const block b) {
    return each_with<wasm_v128_and>(each_by<wasm_u32x4_shr>(b, bits), dwords_of(mask));
  }
  template <int bits, uint32_t mask>
  MORVANE_INLINE static block shift_left_and_mask(const block b) {
    return each_with<wasm_v128_and>(each_by<wasm_i32x4_shl>(b, bits), dwords_of(mask));
  }
  // Of 0 to 15 bits.
  MORVANE_INLINE static block shift_right_words(const block b, const int bits) {
    return each_by<wasm_u16x8_shr>(b, bits);
  }
  MORVANE_INLINE static block shift_left_words(const block b, const int bits) {
    return each_by<wasm_i16x8_shl>(b, bits);
  }
  template <int bits>
  MORVANE_INLINE static block shift_right_words(const block b) {
    return shift_right_words(b, bits);
  }
  template <int bits>
  MORVANE_INLINE static block shift_left_words(const block b) {
    return shift_left_words(b, bits);
  }
  MORVANE_INLINE static block add_words(const block a, const block b) { return each<wasm_i16x8_add>(a, b); }
  MORVANE_INLINE static block repeat_even_words(const block b) {
    return each_with<wasm_i8x16_swizzle>(b, wasm_u8x16_const(0, 1, 0, 1, 4, 5, 4, 5, 8, 9, 8, 9, 12, 13, 12, 13));
  }
  // (x - offset) * (a + 1) = 65536 * (x - offset) + (offset - x) * b with b = 65535 - a, so the result is x plus the
  // upper half of the second product. Where x > offset, the unsigned product takes offset - x for 65536 more, and its
  // upper half is b too large.
  template <int offset>
  MORVANE_INLINE static v128_t scale_words(const v128_t x, const v128_t a) {
    const v128_t first = words_of(offset);
    const v128_t b = wasm_v128_not(a);
    const v128_t distance = wasm_i16x8_sub(first, x);
    const v128_t upper = odd_words(wasm_u32x4_extmul_low_u16x8(distance, b), wasm_u32x4_extmul_high_u16x8(distance, b));
    const v128_t too_much = wasm_v128_and(wasm_u16x8_gt(x, first), b);
    return wasm_i16x8_sub(wasm_i16x8_add(x, upper), too_much);
  }
  template <int offset>
  MORVANE_INLINE static block scale_words(const block x, const block a) {
    return {scale_words<offset>(x.lo, a.lo), scale_words<offset>(x.hi, a.hi)};
  }

  // Parts of two registers in a row, and parts of both in turn.
  MORVANE_INLINE static v128_t even_bytes(const v128_t a, const v128_t b) {
    return wasm_i8x16_shuffle(a, b, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
  }
  MORVANE_INLINE static v128_t odd_bytes(const v128_t a, const v128_t b) {
    return wasm_i8x16_shuffle(a, b, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
  }
  MORVANE_INLINE static v128_t even_words(const v128_t a, const v128_t b) {
    return wasm_i16x8_shuffle(a, b, 0, 2, 4, 6, 8, 10, 12, 14);
  }
  MORVANE_INLINE static v128_t odd_words(const v128_t a, const v128_t b) {
    return wasm_i16x8_shuffle(a, b, 1, 3, 5, 7, 9, 11, 13, 15);
  }
  MORVANE_INLINE static v128_t lower_bytes_in_turn(const v128_t a, const v128_t b) {
    return wasm_i8x16_shuffle(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
  }
  MORVANE_INLINE static v128_t upper_bytes_in_turn(const v128_t a, const v128_t b) {
    return wasm_i8x16_shuffle(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
  }
  MORVANE_INLINE static v128_t lower_words_in_turn(const v128_t a, const v128_t b) {
    return wasm_i16x8_shuffle(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
  }
  MORVANE_INLINE static v128_t upper_words_in_turn(const v128_t a, const v128_t b) {
    return wasm_i16x8_shuffle(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
  }
  MORVANE_INLINE static v128_t lower_dwords_in_turn(const v128_t a, const v128_t b) {
    return wasm_i32x4_shuffle(a, b, 0, 4, 1, 5);
  }
  MORVANE_INLINE static v128_t upper_dwords_in_turn(const v128_t a, const v128_t b) {
    return wasm_i32x4_shuffle(a, b, 2, 6, 3, 7);
  }
  MORVANE_INLINE static v128_t lower_halves(const v128_t a, const v128_t b) { return wasm_i64x2_shuffle(a, b, 0, 2); }
  MORVANE_INLINE static v128_t upper_halves(const v128_t a, const v128_t b) { return wasm_i64x2_shuffle(a, b, 1, 3); }

  MORVANE_INLINE static two_blocks deinterleave2(const block a, const block b) {
    return {{even_bytes(a.lo, a.hi), even_bytes(b.lo, b.hi)}, {odd_bytes(a.lo, a.hi), odd_bytes(b.lo, b.hi)}};
  }
  MORVANE_INLINE static two_blocks deinterleave2_words(const block a, const block b) {
    return {{even_words(a.lo, a.hi), even_words(b.lo, b.hi)}, {odd_words(a.lo, a.hi), odd_words(b.lo, b.hi)}};
  }
  MORVANE_INLINE static two_blocks interleave2(const block a, const block b) {
    return {{lower_bytes_in_turn(a.lo, b.lo), upper_bytes_in_turn(a.lo, b.lo)},
            {lower_bytes_in_turn(a.hi, b.hi), upper_bytes_in_turn(a.hi, b.hi)}};
  }
  MORVANE_INLINE static two_blocks interleave2_words(const block a, const block b) {
    return {{lower_words_in_turn(a.lo, b.lo), upper_words_in_turn(a.lo, b.lo)},
            {lower_words_in_turn(a.hi, b.hi), upper_words_in_turn(a.hi, b.hi)}};
  }
  MORVANE_INLINE static two_blocks interleave2_dwords(const block a, const block b) {
    return {{lower_dwords_in_turn(a.lo, b.lo), upper_dwords_in_turn(a.lo, b.lo)},
            {lower_dwords_in_turn(a.hi, b.hi), upper_dwords_in_turn(a.hi, b.hi)}};
  }

  // A byte of a pair, in two bits each Cr Y1 Cb Y0 from the top, in both words of its double word, and what lifts the
  // two bits of a word's sample to bits 7 and 6.
  MORVANE_INLINE static block pair_bits(const block words, const v128_t factors) {
    return each_with<wasm_v128_and>(each_with<wasm_i16x8_mul>(words, factors), words_of(0x00c0));
  }
  MORVANE_INLINE static block load_upper_of_groups(const uint8_t* p) { return load(p); }
  MORVANE_INLINE static two_blocks load_lower_of_groups(const uint8_t* p) {
    const v128_t words = wasm_u16x8_load8x8(p + 32);
    const block twice = {lower_words_in_turn(words, words), upper_words_in_turn(words, words)};
    return {pair_bits(twice, alternate(1 << 6, 1 << 2)), pair_bits(twice, alternate(1 << 4, 1))};
  }
  // The bits of both words of a pair, moved within the upper byte and added.
  template <bool cr_as_cb>
  MORVANE_INLINE static v128_t pair_bits(const v128_t luma, const v128_t cbcr) {
    const v128_t bits = words_of(0x00c0);
    constexpr int of_cb = cr_as_cb ? 1 << 4 | 1 << 8 : 1 << 4;
    return wasm_i16x8_add(wasm_i16x8_mul(wasm_v128_and(luma, bits), alternate(1 << 2, 1 << 6)),
                          wasm_i16x8_mul(wasm_v128_and(cbcr, bits), alternate(of_cb, cr_as_cb ? 0 : 1 << 8)));
  }
  struct groups {
    static constexpr size_t stored_bytes = 40;
    block upper;
    v128_t lower;
  };
  template <bool cr_as_cb>
  MORVANE_INLINE static groups join_groups(const block upper, const block luma, const block cbcr) {
    const v128_t lo = pair_bits<cr_as_cb>(luma.lo, cbcr.lo);
    const v128_t hi = pair_bits<cr_as_cb>(luma.hi, cbcr.hi);
    const v128_t sums = wasm_u16x8_shr(wasm_i16x8_add(even_words(lo, hi), odd_words(lo, hi)), 8);
    return {upper, wasm_u8x16_narrow_i16x8(sums, sums)};
  }
  MORVANE_INLINE static void store(uint8_t* p, const groups& g) {
    store(p, g.upper);
    wasm_v128_store64_lane(p + 32, g.lower, 0);
  }

  // sum + weight * x of words, modulo 65536.
  template <int weight>
  MORVANE_INLINE static v128_t accumulate(const v128_t sum, const v128_t x) {
    if constexpr (weight == 0)
      return sum;
    else if constexpr (weight == 1)
      return wasm_i16x8_add(sum, x);
    else if constexpr (weight == -1)
      return wasm_i16x8_sub(sum, x);
    else
      return wasm_i16x8_add(sum, wasm_i16x8_mul(x, words_of(weight)));
  }
  // multiplier * x = 256 * x + rest * x; 256 * x is added after the shift.
  template <int multiplier, int offset>
  MORVANE_INLINE static v128_t linear(const v128_t x) {
    return wasm_i16x8_add(x, wasm_i16x8_shr(accumulate<multiplier - 256>(words_of(offset), x), 8));
  }
  template <int multiplier, int offset>
  MORVANE_INLINE static v128_t linear_of_odd_bytes(const block b) {
    return wasm_u8x16_narrow_i16x8(linear<multiplier, offset>(wasm_u16x8_shr(b.lo, 8)),
                                   linear<multiplier, offset>(wasm_u16x8_shr(b.hi, 8)));
  }
  template <int multiplier, int offset>
  MORVANE_INLINE static block linear_of_odd_bytes(const block a, const block b) {
    return {linear_of_odd_bytes<multiplier, offset>(a), linear_of_odd_bytes<multiplier, offset>(b)};
  }
  template <int multiplier, int offset, int bits>
  MORVANE_INLINE static v128_t linear_words(const v128_t x) {
    const v128_t factors = words_of(multiplier);
    const v128_t first = wasm_i32x4_splat(offset);
    return wasm_u16x8_narrow_i32x4(
        wasm_i32x4_shr(wasm_i32x4_add(first, wasm_u32x4_extmul_low_u16x8(x, factors)), bits),
        wasm_i32x4_shr(wasm_i32x4_add(first, wasm_u32x4_extmul_high_u16x8(x, factors)), bits));
  }
  template <int multiplier, int offset, int bits>
  MORVANE_INLINE static block linear_words(const block b) {
    return {linear_words<multiplier, offset, bits>(b.lo), linear_words<multiplier, offset, bits>(b.hi)};
  }
  MORVANE_INLINE static block without_first(const block b, const size_t count) {
    const v128_t place = wasm_u8x16_const(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    const v128_t first = wasm_u8x16_splat(static_cast<uint8_t>(count));
    return {wasm_v128_and(b.lo, wasm_u8x16_ge(place, first)),
            wasm_v128_and(b.hi, wasm_u8x16_ge(wasm_i8x16_add(place, wasm_u8x16_splat(16)), first))};
  }
  struct sums {
    v128_t v;
  };
  MORVANE_INLINE static sums no_sum() { return {wasm_i64x2_splat(0)}; }
  MORVANE_INLINE static v128_t difference(const v128_t a, const v128_t b) {
    return wasm_v128_or(wasm_u8x16_sub_sat(a, b), wasm_u8x16_sub_sat(b, a));
  }
  MORVANE_INLINE static v128_t differences_of_pairs(const block a, const block b) {
    return wasm_i16x8_add(wasm_u16x8_extadd_pairwise_u8x16(difference(a.lo, b.lo)),
                          wasm_u16x8_extadd_pairwise_u8x16(difference(a.hi, b.hi)));
  }
  MORVANE_INLINE static sums add_to_sums(const sums s, const v128_t words) {
    const v128_t dwords = wasm_u32x4_extadd_pairwise_u16x8(words);
    return {
        wasm_i64x2_add(s.v, wasm_i64x2_add(wasm_u64x2_extend_low_u32x4(dwords), wasm_u64x2_extend_high_u32x4(dwords)))};
  }
  MORVANE_INLINE static sums add_differences(const sums s, const block a, const block b) {
    return add_to_sums(s, differences_of_pairs(a, b));
  }
  MORVANE_INLINE static sums add_differences(const sums s, const two_blocks& a, const two_blocks& b) {
    return add_to_sums(
        s, wasm_i16x8_add(differences_of_pairs(a.first, b.first), differences_of_pairs(a.second, b.second)));
  }
  MORVANE_INLINE static uint64_t total(const sums s) {
    return wasm_u64x2_extract_lane(s.v, 0) + wasm_u64x2_extract_lane(s.v, 1);
  }
  MORVANE_INLINE static bool fourth_bytes_are_255(const block b) {
    return wasm_i32x4_all_true(wasm_u32x4_ge(wasm_v128_and(b.lo, b.hi), dwords_of(0xff000000)));
  }

  // 64 bytes to 48: every fourth byte is left out.
  MORVANE_INLINE static void store_three_of_four(uint8_t* p, const block b0, const block b1) {
    wasm_v128_store(p, wasm_i8x16_shuffle(b0.lo, b0.hi, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20));
    wasm_v128_store(p + 16,
                    wasm_i8x16_shuffle(b0.hi, b1.lo, 5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25));
    wasm_v128_store(p + 32,
                    wasm_i8x16_shuffle(b1.lo, b1.hi, 10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25, 26, 28, 29, 30));
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
