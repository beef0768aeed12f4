// Words of lines on SIMD128, and what they are stored as. operations.h says what each operation does.
#pragma once

#include <wasm_simd128.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "wasm_blocks.h"

namespace Processing::Morvane::format_conversion::vector {

struct wasm_lines : wasm_blocks {
  using wasm_blocks::store;

  MORVANE_INLINE static block subtract_words(const block a, const block b) { return each<wasm_i16x8_sub>(a, b); }
  MORVANE_INLINE static block xor_blocks(const block a, const block b) { return each<wasm_v128_xor>(a, b); }
  MORVANE_INLINE static block least_words(const block a, const block b) { return each<wasm_u16x8_min>(a, b); }
  MORVANE_INLINE static block add_words_to_limit(const block a, const block b) {
    return each<wasm_u16x8_add_sat>(a, b);
  }
  MORVANE_INLINE static block subtract_words_to_zero(const block a, const block b) {
    return each<wasm_u16x8_sub_sat>(a, b);
  }
  MORVANE_INLINE static block add_signed_to_limit(const block a, const block b) {
    return each<wasm_i16x8_add_sat>(a, b);
  }
  // There is no average that is rounded down. It is one less where the sum is odd.
  MORVANE_INLINE static block average_up(const block a, const block b) { return each<wasm_u16x8_avgr>(a, b); }
  MORVANE_INLINE static block average_down(const block a, const block b) {
    return subtract_words(average_up(a, b), and_blocks(xor_blocks(a, b), repeat(0x0001)));
  }
  MORVANE_INLINE static block average_bytes_up(const block a, const block b) { return each<wasm_u8x16_avgr>(a, b); }
  MORVANE_INLINE static block average_bytes_down(const block a, const block b) {
    return each<wasm_i8x16_sub>(average_bytes_up(a, b), and_blocks(xor_blocks(a, b), repeat(0x0101)));
  }
  MORVANE_INLINE static block rounded_product(const block a, const block b) {
    return each<wasm_i16x8_q15mulr_sat>(a, b);
  }
  struct word_sums {
    v128_t first, second, third, fourth;
  };
  MORVANE_INLINE static word_sums repeat_sum(const int32_t constant) {
    const v128_t v = wasm_i32x4_splat(constant);
    return {v, v, v, v};
  }
  MORVANE_INLINE static word_sums add_products(const word_sums& s, const block x, const int16_t a, const block y,
                                               const int16_t b) {
    const v128_t factors = alternate(a, b);
    const auto plus = [&](const v128_t sum, const v128_t pairs) __attribute__((always_inline)) {
      return wasm_i32x4_add(sum, wasm_i32x4_dot_i16x8(pairs, factors));
    };
    return {plus(s.first, lower_words_in_turn(x.lo, y.lo)), plus(s.second, upper_words_in_turn(x.lo, y.lo)),
            plus(s.third, lower_words_in_turn(x.hi, y.hi)), plus(s.fourth, upper_words_in_turn(x.hi, y.hi))};
  }
  template <int bits>
  MORVANE_INLINE static block signed_words(const word_sums& s) {
    return {wasm_i16x8_narrow_i32x4(wasm_i32x4_shr(s.first, bits), wasm_i32x4_shr(s.second, bits)),
            wasm_i16x8_narrow_i32x4(wasm_i32x4_shr(s.third, bits), wasm_i32x4_shr(s.fourth, bits))};
  }
  MORVANE_INLINE static v128_t pack_words(const block b) { return wasm_u8x16_narrow_i16x8(b.lo, b.hi); }
  MORVANE_INLINE static block pack_words(const block a, const block b) { return {pack_words(a), pack_words(b)}; }
  MORVANE_INLINE static block pack_words_in_turn(const block a, const block b) {
    const v128_t first = pack_words(a), second = pack_words(b);
    return {lower_bytes_in_turn(first, second), upper_bytes_in_turn(first, second)};
  }
  MORVANE_INLINE static v128_t transposed_evens(const v128_t a, const v128_t b) {
    return wasm_i16x8_shuffle(a, b, 0, 8, 2, 10, 4, 12, 6, 14);
  }
  MORVANE_INLINE static v128_t transposed_odds(const v128_t a, const v128_t b) {
    return wasm_i16x8_shuffle(a, b, 1, 9, 3, 11, 5, 13, 7, 15);
  }
  MORVANE_INLINE static two_blocks transpose2_words(const block a, const block b) {
    return {each<transposed_evens>(a, b), each<transposed_odds>(a, b)};
  }

  MORVANE_INLINE static two_blocks load_threes(const uint8_t* p) {
    const v128_t a = wasm_v128_load(p), b = wasm_v128_load(p + 16), c = wasm_v128_load(p + 32);
    return {{wasm_i8x16_shuffle(a, a, 0, 1, 2, 0, 3, 4, 5, 0, 6, 7, 8, 0, 9, 10, 11, 0),
             wasm_i8x16_shuffle(a, b, 12, 13, 14, 0, 15, 16, 17, 0, 18, 19, 20, 0, 21, 22, 23, 0)},
            {wasm_i8x16_shuffle(b, c, 8, 9, 10, 0, 11, 12, 13, 0, 14, 15, 16, 0, 17, 18, 19, 0),
             wasm_i8x16_shuffle(c, c, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0, 13, 14, 15, 0)}};
  }
  // Of eight pixels of so many bytes, after the bytes skipped. Places beyond a register give 0.
  template <int bytes, int skipped>
  MORVANE_INLINE static v128_t byte_of_pixels(const block pixels, const uint32_t place) {
    constexpr uint8_t s = skipped, b = bytes;
    const v128_t first = wasm_u8x16_const(s, s, s + b, s + b, s + 2 * b, s + 2 * b, s + 3 * b, s + 3 * b, s + 4 * b,
                                          s + 4 * b, s + 5 * b, s + 5 * b, s + 6 * b, s + 6 * b, s + 7 * b, s + 7 * b);
    const v128_t from = wasm_i8x16_add(first, wasm_u8x16_splat(static_cast<uint8_t>(place)));
    return wasm_v128_or(wasm_i8x16_swizzle(pixels.lo, from),
                        wasm_i8x16_swizzle(pixels.hi, wasm_i8x16_sub(from, wasm_u8x16_splat(16))));
  }
  template <int bytes, int skipped>
  MORVANE_INLINE static three_blocks bytes_of_pixels(const block lo, const block hi, const uint32_t places) {
    const uint32_t second = places >> 8, third = places >> 16;
    return {{byte_of_pixels<bytes, 0>(lo, places), byte_of_pixels<bytes, skipped>(hi, places)},
            {byte_of_pixels<bytes, 0>(lo, second), byte_of_pixels<bytes, skipped>(hi, second)},
            {byte_of_pixels<bytes, 0>(lo, third), byte_of_pixels<bytes, skipped>(hi, third)}};
  }
  MORVANE_INLINE static three_blocks load_bytes_of_fours(const uint8_t* p, const uint32_t places) {
    return bytes_of_pixels<4, 0>(load(p), load(p + 32), places);
  }
  MORVANE_INLINE static three_blocks load_bytes_of_threes(const uint8_t* p, const uint32_t places) {
    return bytes_of_pixels<3, 8>(load(p), load(p + 16), places);
  }
  MORVANE_INLINE static block dwords_before(const block before, const block b) {
    return {wasm_i32x4_shuffle(before.hi, b.lo, 3, 4, 5, 6), wasm_i32x4_shuffle(b.lo, b.hi, 3, 4, 5, 6)};
  }
  struct packed_threes {
    static constexpr size_t stored_bytes = 48;
    two_blocks fours;
  };
  MORVANE_INLINE static packed_threes threes(const two_blocks& fours) { return {fours}; }
  MORVANE_INLINE static void store(uint8_t* p, const packed_threes& t) {
    store_three_of_four(p, t.fours.first, t.fours.second);
  }

  // Three registers take two steps: the words of the first two, and then those of the third one in their places.
  struct three_registers {
    v128_t first, second, third;
  };
  MORVANE_INLINE static three_registers every_third_word(const v128_t a, const v128_t b, const v128_t c) {
    return {wasm_i16x8_shuffle(wasm_i16x8_shuffle(a, b, 0, 3, 6, 9, 12, 15, 0, 0), c, 0, 1, 2, 3, 4, 5, 10, 13),
            wasm_i16x8_shuffle(wasm_i16x8_shuffle(a, b, 1, 4, 7, 10, 13, 0, 0, 0), c, 0, 1, 2, 3, 4, 8, 11, 14),
            wasm_i16x8_shuffle(wasm_i16x8_shuffle(a, b, 2, 5, 8, 11, 14, 0, 0, 0), c, 0, 1, 2, 3, 4, 9, 12, 15)};
  }
  MORVANE_INLINE static three_blocks deinterleave3_words(const block a, const block b, const block c) {
    const three_registers lo = every_third_word(a.lo, a.hi, b.lo);
    const three_registers hi = every_third_word(b.hi, c.lo, c.hi);
    return {{lo.first, hi.first}, {lo.second, hi.second}, {lo.third, hi.third}};
  }
  MORVANE_INLINE static three_registers words_in_turn(const v128_t a, const v128_t b, const v128_t c) {
    return {wasm_i16x8_shuffle(wasm_i16x8_shuffle(a, b, 0, 8, 0, 1, 9, 0, 2, 10), c, 0, 1, 8, 3, 4, 9, 6, 7),
            wasm_i16x8_shuffle(wasm_i16x8_shuffle(a, b, 0, 3, 11, 0, 4, 12, 0, 5), c, 10, 1, 2, 11, 4, 5, 12, 7),
            wasm_i16x8_shuffle(wasm_i16x8_shuffle(a, b, 13, 0, 6, 14, 0, 7, 15, 0), c, 0, 13, 2, 3, 14, 5, 6, 15)};
  }
  MORVANE_INLINE static three_blocks interleave3_words(const block a, const block b, const block c) {
    const three_registers lo = words_in_turn(a.lo, b.lo, c.lo);
    const three_registers hi = words_in_turn(a.hi, b.hi, c.hi);
    return {{lo.first, lo.second}, {lo.third, hi.first}, {hi.second, hi.third}};
  }

  // Samples of ten bits at the top of words: the bytes around each, lifted by a factor.
  MORVANE_INLINE static v128_t tens_of(const v128_t bytes, const v128_t places, const v128_t lifts) {
    return wasm_v128_and(wasm_i16x8_mul(wasm_i8x16_swizzle(bytes, places), lifts), words_of(0xffc0));
  }
  // Two groups of five bytes in each register. Word i of a group is its bytes i and i + 1, in which the sample lies 2 i
  // bits below the top.
  MORVANE_INLINE static block load_tens_of_fives(const uint8_t* p) {
    const v128_t lifts = wasm_u16x8_const(1, 4, 16, 64, 1, 4, 16, 64);
    const v128_t places = wasm_u8x16_const(1, 0, 2, 1, 3, 2, 4, 3, 6, 5, 7, 6, 8, 7, 9, 8);
    const v128_t later = wasm_u8x16_const(7, 6, 8, 7, 9, 8, 10, 9, 12, 11, 13, 12, 14, 13, 15, 14);
    return {tens_of(wasm_v128_load(p), places, lifts), tens_of(wasm_v128_load(p + 4), later, lifts)};
  }
  struct groups_of_five {
    static constexpr size_t stored_bytes = 20;
    block b;
  };
  MORVANE_INLINE static v128_t fives_of_tens(const v128_t samples) {
    const v128_t lifts = wasm_u16x8_const(64, 16, 4, 1, 64, 16, 4, 1);
    const v128_t begun = wasm_u8x16_const(1, 3, 5, 7, 6, 9, 11, 13, 15, 14, 255, 255, 255, 255, 255, 255);
    const v128_t ended = wasm_u8x16_const(255, 0, 2, 4, 255, 255, 8, 10, 12, 255, 255, 255, 255, 255, 255, 255);
    const v128_t words = wasm_i16x8_mul(wasm_u16x8_shr(samples, 6), lifts);
    return wasm_v128_or(wasm_i8x16_swizzle(words, begun), wasm_i8x16_swizzle(words, ended));
  }
  MORVANE_INLINE static groups_of_five fives_of_tens(const block samples) {
    return {{fives_of_tens(samples.lo), fives_of_tens(samples.hi)}};
  }
  // What is stored behind the first two groups is overwritten by the others.
  MORVANE_INLINE static void store(uint8_t* p, const groups_of_five& g) {
    wasm_v128_store(p, g.b.lo);
    wasm_v128_store64_lane(p + 10, g.b.hi, 0);
    wasm_v128_store16_lane(p + 18, g.b.hi, 4);
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
  MORVANE_INLINE static block tens_of(const block bytes, const v128_t places, const v128_t lifts) {
    return {tens_of(bytes.lo, places, lifts), tens_of(bytes.hi, places, lifts)};
  }
  MORVANE_INLINE static block luma_of_v210(const block groups) {
    return tens_of(groups, wasm_u8x16_const(1, 2, 4, 5, 6, 7, 9, 10, 12, 13, 14, 15, 255, 255, 255, 255),
                   wasm_u16x8_const(16, 64, 4, 16, 64, 4, 0, 0));
  }
  MORVANE_INLINE static three_lines split_v210(const block groups) {
    const block chroma = tens_of(groups, wasm_u8x16_const(0, 1, 5, 6, 10, 11, 255, 255, 2, 3, 8, 9, 13, 14, 255, 255),
                                 wasm_u16x8_const(64, 16, 4, 0, 4, 64, 16, 0));
    return {{luma_of_v210(groups)}, {chroma}, {chroma}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::six_words& w) {
    wasm_v128_store(p, w.b.lo);
    wasm_v128_store(p + 12, w.b.hi);
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::lower_three_words& w) {
    wasm_v128_store64_lane(p, w.b.lo, 0);
    wasm_v128_store64_lane(p + 6, w.b.hi, 0);
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::upper_three_words& w) {
    wasm_v128_store64_lane(p, w.b.lo, 1);
    wasm_v128_store64_lane(p + 6, w.b.hi, 1);
  }
  MORVANE_INLINE static v128_t load_half(const uint8_t* p) { return wasm_v128_load64_zero(p); }
  MORVANE_INLINE static two_blocks load_for_v210(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    return {{wasm_v128_load(luma), wasm_v128_load(luma + 12)},
            {lower_halves(load_half(cb), load_half(cr)), lower_halves(load_half(cb + 6), load_half(cr + 6))}};
  }
  // The samples at bits 0 and 10 of each double word as its words, and that at bit 20 in its lower one.
  MORVANE_INLINE static v128_t dwords_of_tens(const v128_t first_two, const v128_t third) {
    const v128_t second = wasm_i32x4_shl(wasm_u32x4_shr(first_two, 16), 10);
    const v128_t lower = wasm_v128_or(wasm_v128_and(first_two, dwords_of(1023)), second);
    return wasm_v128_or(lower, wasm_i32x4_shl(third, 20));
  }
  MORVANE_INLINE static v128_t group_of_v210(const v128_t luma, const v128_t chroma) {
    return dwords_of_tens(wasm_i16x8_shuffle(luma, chroma, 8, 0, 1, 9, 13, 3, 4, 14),
                          wasm_i16x8_shuffle(luma, chroma, 12, 0, 2, 0, 10, 0, 5, 0));
  }
  MORVANE_INLINE static block join_v210(const two_blocks& lines) {
    return each<group_of_v210>(lines.first, lines.second);
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
