// The vector operations on WebAssembly's SIMD128: 16 pixels at a time, in memory order. operations.h says what each
// does.
#pragma once

#include <wasm_simd128.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "opaque.h"
#include "portable.h"
#include "sums.h"
#include "wasm_sixes.h"
#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

struct wasm : wasm_sixes {
  using narrower = portable;
  using mover = wasm;

  static constexpr int lanes = 16;
  static constexpr int vectors_a_turn = 2;
  static constexpr int stored_together = 1;
  static constexpr int float_lanes = 4;
  static constexpr int stores_expected_ahead = 0;
  static constexpr bool announces_crowded_stores_alone = false;
  static constexpr int loads_expected_ahead = 0;

  struct bytes {
    static constexpr size_t stored_bytes = 16;
    v128_t v;
  };
  struct words {
    static constexpr size_t stored_bytes = 32;
    v128_t lo, hi;
  };
  using pair_bytes = bytes;
  // Bytes of each kind apart.
  struct pixels {
    v128_t channel[4];
  };
  using weighable = pixels;
  // As words, of eight pairs.
  struct pairs {
    v128_t cb, even_luma, cr, odd_luma;
  };
  struct floats {
    static constexpr size_t stored_bytes = 16;
    v128_t v;
  };
  struct four_floats {
    floats first, second, third, fourth;
  };

  using wasm_sixes::store;

  // Four registers of four double words, as rows and as columns.
  MORVANE_INLINE static pixels exchange_rows(const v128_t a, const v128_t b, const v128_t c, const v128_t d) {
    const v128_t ab_lower = lower_dwords_in_turn(a, b), ab_upper = upper_dwords_in_turn(a, b);
    const v128_t cd_lower = lower_dwords_in_turn(c, d), cd_upper = upper_dwords_in_turn(c, d);
    return {{lower_halves(ab_lower, cd_lower), upper_halves(ab_lower, cd_lower), lower_halves(ab_upper, cd_upper),
             upper_halves(ab_upper, cd_upper)}};
  }
  MORVANE_INLINE static block channels_apart(const block b) {
    return each_with<wasm_i8x16_swizzle>(b, wasm_u8x16_const(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15));
  }
  MORVANE_INLINE static pixels pixels_of(const two_blocks& fours) {
    const block first = channels_apart(fours.first), second = channels_apart(fours.second);
    return exchange_rows(first.lo, first.hi, second.lo, second.hi);
  }
  MORVANE_INLINE static pixels load4(const uint8_t* p) { return pixels_of({load(p), load(p + 32)}); }
  MORVANE_INLINE static weighable load4_weighable(const uint8_t* p) { return load4(p); }
  MORVANE_INLINE static weighable load3_weighable(const uint8_t* p) {
    const pixels three = pixels_of(load_threes(p));
    return {{three.channel[0], three.channel[1], three.channel[2], three.channel[1]}};
  }

  MORVANE_INLINE static words widen(const v128_t b) {
    return {wasm_u16x8_extend_low_u8x16(b), wasm_u16x8_extend_high_u8x16(b)};
  }
  template <int even, int odd>
  MORVANE_INLINE static words accumulate_alternating(const words sum, const v128_t channel) {
    if constexpr (even == 0 && odd == 0) return sum;
    const words x = widen(channel);
    const v128_t factors = alternate(even, odd);
    return {wasm_i16x8_add(sum.lo, wasm_i16x8_mul(x.lo, factors)),
            wasm_i16x8_add(sum.hi, wasm_i16x8_mul(x.hi, factors))};
  }
  template <weights even, weights odd = even>
  MORVANE_INLINE static words weigh(const pixels& p) {
    constexpr weights e = even, o = odd;
    const v128_t none = words_of(0);
    const words first = accumulate_alternating<e.first, o.first>({none, none}, p.channel[0]);
    const words second = accumulate_alternating<e.second, o.second>(first, p.channel[1]);
    const words third = accumulate_alternating<e.third, o.third>(second, p.channel[2]);
    return accumulate_alternating<e.fourth, o.fourth>(third, p.channel[3]);
  }
  // (sum * A) >> 8, of the upper byte of a sum, which is signed, and of the lower one.
  MORVANE_INLINE static v128_t scale(const v128_t sum, const v128_t a) {
    const v128_t upper = wasm_i16x8_mul(wasm_i16x8_shr(sum, 8), a);
    const v128_t lower = wasm_i16x8_mul(wasm_v128_and(sum, words_of(0x00ff)), a);
    return wasm_i16x8_add(upper, wasm_u16x8_shr(lower, 8));
  }
  template <bool scaled, weights even, weights odd = even>
  MORVANE_INLINE static words weigh_and_scale(const weighable& p) {
    const words sum = weigh<even, odd>(p);
    if constexpr (!scaled) return sum;
    const words a = widen(p.channel[3]);
    return {scale(sum.lo, a.lo), scale(sum.hi, a.hi)};
  }
  template <weights u, weights v, weights luma, int luma_bits, bool scaled>
  MORVANE_INLINE static words pairs_of_sums(const weighable& p) {
    const words chroma = weigh_and_scale<scaled, u, v>(p);
    const words y = weigh_and_scale<scaled, luma>(p);
    return add_to_bytes<128, 16>(upper_bytes(chroma, shift_left<8 - luma_bits>(y)));
  }

  MORVANE_INLINE static bytes load_bytes(const uint8_t* p) { return {wasm_v128_load(p)}; }
  MORVANE_INLINE static void store(uint8_t* p, const bytes b) { wasm_v128_store(p, b.v); }
  MORVANE_INLINE static pair_bytes load_pair_bytes(const uint8_t* p) { return load_bytes(p); }
  MORVANE_INLINE static bytes and_bytes(const bytes a, const bytes b) { return {wasm_v128_and(a.v, b.v)}; }
  MORVANE_INLINE static bool all_255(const bytes b) {
    return wasm_i8x16_all_true(wasm_i8x16_eq(b.v, wasm_u8x16_splat(255)));
  }
  MORVANE_INLINE static words widen(const bytes b) { return widen(b.v); }
  MORVANE_INLINE static words widen_repeated(const bytes b) {
    return {lower_bytes_in_turn(b.v, b.v), upper_bytes_in_turn(b.v, b.v)};
  }
  template <int value>
  MORVANE_INLINE static words add(const words w) {
    return {wasm_i16x8_add(w.lo, words_of(value)), wasm_i16x8_add(w.hi, words_of(value))};
  }
  MORVANE_INLINE static words multiply(const words a, const words b) {
    return {wasm_i16x8_mul(a.lo, b.lo), wasm_i16x8_mul(a.hi, b.hi)};
  }
  MORVANE_INLINE static words low_bytes(const words w) {
    return {wasm_v128_and(w.lo, words_of(0x00ff)), wasm_v128_and(w.hi, words_of(0x00ff))};
  }
  MORVANE_INLINE static words high_bytes(const words w) { return {wasm_u16x8_shr(w.lo, 8), wasm_u16x8_shr(w.hi, 8)}; }
  template <int bits>
  MORVANE_INLINE static words shift_left(const words w) {
    return {wasm_i16x8_shl(w.lo, bits), wasm_i16x8_shl(w.hi, bits)};
  }
  MORVANE_INLINE static words load_words(const uint8_t* p) { return {wasm_v128_load(p), wasm_v128_load(p + 16)}; }
  MORVANE_INLINE static void store(uint8_t* p, const words w) {
    wasm_v128_store(p, w.lo);
    wasm_v128_store(p + 16, w.hi);
  }
  MORVANE_INLINE static bytes fourth(const pixels& p) { return {p.channel[3]}; }
  MORVANE_INLINE static words fourth_words(const pixels& p) { return widen(p.channel[3]); }
  MORVANE_INLINE static v128_t upper_bytes(const v128_t low, const v128_t high) {
    return wasm_v128_or(wasm_u16x8_shr(low, 8), wasm_v128_and(high, words_of(0xff00)));
  }
  MORVANE_INLINE static words upper_bytes(const words low, const words high) {
    return {upper_bytes(low.lo, high.lo), upper_bytes(low.hi, high.hi)};
  }
  template <int low, int high>
  MORVANE_INLINE static words add_to_bytes(const words w) {
    const v128_t both = words_of(low | high << 8);
    return {wasm_i8x16_add(w.lo, both), wasm_i8x16_add(w.hi, both)};
  }
  template <int even, int odd, int own>
  MORVANE_INLINE static words pick_of_pairs(const pixels& p) {
    const v128_t of_pair =
        wasm_v128_or(wasm_v128_and(p.channel[even], words_of(0x00ff)), wasm_i16x8_shl(p.channel[odd], 8));
    return {lower_bytes_in_turn(of_pair, p.channel[own]), upper_bytes_in_turn(of_pair, p.channel[own])};
  }
  MORVANE_INLINE static bytes same(const uint8_t value) { return {wasm_u8x16_splat(value)}; }

  MORVANE_INLINE static two_blocks interleave4(const bytes c0, const bytes c1, const bytes c2, const bytes c3) {
    const v128_t first_lo = lower_bytes_in_turn(c0.v, c1.v), second_lo = lower_bytes_in_turn(c2.v, c3.v);
    const v128_t first_hi = upper_bytes_in_turn(c0.v, c1.v), second_hi = upper_bytes_in_turn(c2.v, c3.v);
    return {{lower_words_in_turn(first_lo, second_lo), upper_words_in_turn(first_lo, second_lo)},
            {lower_words_in_turn(first_hi, second_hi), upper_words_in_turn(first_hi, second_hi)}};
  }
  MORVANE_INLINE static two_blocks interleave4(const bytes c0, const bytes c1, const bytes c2, opaque) {
    return interleave4(c0, c1, c2, same(255));
  }
  MORVANE_INLINE static packed_threes interleave3(const bytes c0, const bytes c1, const bytes c2) {
    return threes(interleave4(c0, c1, c2, c2));
  }
  MORVANE_INLINE static two_blocks opaque_grey(const bytes b) { return interleave4(b, b, b, opaque()); }

  // Registers of which the lower half has words for the one, and the upper half words for the other.
  struct halves {
    v128_t lower, upper;
  };
  MORVANE_INLINE static halves join_halves(const v128_t a, const v128_t b) {
    return {lower_halves(a, b), upper_halves(a, b)};
  }
  MORVANE_INLINE static pairs load_uyvy(const uint8_t* p) {
    const block b = channels_apart(load(p));
    const v128_t lower = lower_dwords_in_turn(b.lo, b.hi), upper = upper_dwords_in_turn(b.lo, b.hi);
    return {wasm_u16x8_extend_low_u8x16(lower), wasm_u16x8_extend_high_u8x16(lower), wasm_u16x8_extend_low_u8x16(upper),
            wasm_u16x8_extend_high_u8x16(upper)};
  }
  // The upper bytes of words 0, 2, 4... and of words 1, 3, 5...
  MORVANE_INLINE static halves upper_bytes_apart(const uint8_t* p) {
    const block b = each_with<wasm_i8x16_swizzle>(
        load(p), wasm_u8x16_const(1, 255, 5, 255, 9, 255, 13, 255, 3, 255, 7, 255, 11, 255, 15, 255));
    return join_halves(b.lo, b.hi);
  }
  MORVANE_INLINE static pairs load_upper_bytes(const uint8_t* luma, const uint8_t* chroma) {
    const halves y = upper_bytes_apart(luma), c = upper_bytes_apart(chroma);
    return {c.lower, y.lower, c.upper, y.upper};
  }
  // The chroma of a pair is weighed once for both its pixels.
  template <ycbcr_weights w>
  MORVANE_INLINE static v128_t weigh_chroma(const pairs& p) {
    constexpr ycbcr_weights k = w;
    return accumulate<k.cr>(accumulate<k.cb>(words_of(k.constant), p.cb), p.cr);
  }
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static v128_t shift_sum(const v128_t sum) {
    constexpr ycbcr_weights k = w;
    static_assert(fits_signed(k) || fits_unsigned(k));
    return fits_signed(k) ? wasm_i16x8_shr(sum, bits) : wasm_u16x8_shr(sum, bits);
  }
  // A whole and a rest that fit a word each; see sums.h. Words of even pixels and then those of odd ones become bytes
  // in turn.
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_bytes clamped_sum(const pairs& p) {
    constexpr split_weights s = split(w, bits);
    static_assert(fits_signed(s.whole));
    const v128_t whole = weigh_chroma<s.whole>(p);
    const v128_t rest = weigh_chroma<s.rest>(p);
    const auto of_luma = [&](const v128_t y) __attribute__((always_inline)) {
      return wasm_i16x8_add(accumulate<s.whole.y>(whole, y), shift_sum<s.rest, bits>(accumulate<s.rest.y>(rest, y)));
    };
    const v128_t clamped = wasm_u8x16_narrow_i16x8(of_luma(p.even_luma), of_luma(p.odd_luma));
    return {wasm_i8x16_swizzle(clamped, wasm_u8x16_const(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15))};
  }

  // Two pairs become four pixels, whose fourth byte is still 0.
  template <bool is_crcby>
  MORVANE_INLINE static two_blocks pixels_without_fourth(const uint8_t* uyvy) {
    const block b = load(uyvy);
    const v128_t lower = is_crcby ? wasm_u8x16_const(2, 0, 1, 255, 2, 0, 3, 255, 6, 4, 5, 255, 6, 4, 7, 255)
                                  : wasm_u8x16_const(1, 0, 2, 255, 3, 0, 2, 255, 5, 4, 6, 255, 7, 4, 6, 255);
    const v128_t upper = is_crcby ? wasm_u8x16_const(10, 8, 9, 255, 10, 8, 11, 255, 14, 12, 13, 255, 14, 12, 15, 255)
                                  : wasm_u8x16_const(9, 8, 10, 255, 11, 8, 10, 255, 13, 12, 14, 255, 15, 12, 14, 255);
    return {{wasm_i8x16_swizzle(b.lo, lower), wasm_i8x16_swizzle(b.lo, upper)},
            {wasm_i8x16_swizzle(b.hi, lower), wasm_i8x16_swizzle(b.hi, upper)}};
  }
  MORVANE_INLINE static two_blocks or_both(const two_blocks& a, const two_blocks& b) {
    return {or_blocks(a.first, b.first), or_blocks(a.second, b.second)};
  }
  template <bool is_crcby>
  MORVANE_INLINE static two_blocks pixels_of_444(const uint8_t* uyvy, const uint8_t* alpha) {
    const bytes none = same(0);
    return or_both(pixels_without_fourth<is_crcby>(uyvy), interleave4(none, none, none, load_bytes(alpha)));
  }
  template <bool is_crcby>
  MORVANE_INLINE static two_blocks pixels_of_444(const uint8_t* uyvy) {
    const block opaque_pixels = repeat_dword(0xff000000);
    return or_both(pixels_without_fourth<is_crcby>(uyvy), {opaque_pixels, opaque_pixels});
  }

  template <weights w, bool has_fourth>
  struct second_and_fourth {
    static constexpr size_t stored_bytes = 64;
    pixels from;
  };
  template <weights w, bool has_fourth>
  MORVANE_INLINE static second_and_fourth<w, has_fourth> second_and_fourth_of(const pixels& from) {
    return {from};
  }
  template <weights w, bool has_fourth>
  MORVANE_INLINE static void store(uint8_t* p, const second_and_fourth<w, has_fourth>& s) {
    const words sum = weigh<w>(s.from);
    const bytes none = same(0);
    const bytes second = {wasm_i8x16_add(odd_bytes(sum.lo, sum.hi), wasm_u8x16_splat(128))};
    const bytes fourth_byte = has_fourth ? fourth(s.from) : same(255);
    const block kept = repeat(0x00ff);
    const two_blocks found = {and_blocks(load(p), kept), and_blocks(load(p + 32), kept)};
    store(p, or_both(found, interleave4(none, second, none, fourth_byte)));
  }

  MORVANE_INLINE static floats floats_of_dwords(const v128_t d) { return {wasm_f32x4_convert_i32x4(d)}; }
  template <int bottom>
  MORVANE_INLINE static floats load_words_above(const uint8_t* p) {
    return floats_of_dwords(wasm_u32x4_extend_low_u16x8(wasm_u16x8_sub_sat(load_half(p), words_of(bottom))));
  }
  MORVANE_INLINE static floats floats_at(const uint8_t* p) { return {wasm_v128_load(p)}; }
  MORVANE_INLINE static void store(uint8_t* p, const floats f) { wasm_v128_store(p, f.v); }
  MORVANE_INLINE static floats multiply(const floats f, const float factor) {
    return {wasm_f32x4_mul(f.v, wasm_f32x4_splat(factor))};
  }
  MORVANE_INLINE static floats add(const floats a, const floats b) { return {wasm_f32x4_add(a.v, b.v)}; }
  MORVANE_INLINE static floats subtract(const floats f, const float subtrahend) {
    return {wasm_f32x4_sub(f.v, wasm_f32x4_splat(subtrahend))};
  }
  MORVANE_INLINE static floats divide(const floats f, const float divisor) {
    return {wasm_f32x4_div(f.v, wasm_f32x4_splat(divisor))};
  }
  MORVANE_INLINE static floats at_most(const floats f, const float limit) {
    return {wasm_f32x4_pmin(f.v, wasm_f32x4_splat(limit))};
  }
  // Takes its first operand unless the second one is greater, which what is no number never is.
  MORVANE_INLINE static floats between_0_and_1(const floats f) {
    return at_most({wasm_f32x4_pmax(wasm_f32x4_splat(0), f.v)}, 1);
  }
  // As double words below 65536.
  struct float_words {
    static constexpr size_t stored_bytes = 8;
    v128_t v;
  };
  template <int bottom>
  MORVANE_INLINE static float_words words_of_floats(const floats f) {
    return {wasm_i32x4_add(wasm_i32x4_trunc_sat_f32x4(f.v), wasm_i32x4_splat(bottom))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const float_words w) {
    wasm_v128_store64_lane(p, wasm_u16x8_narrow_i32x4(w.v, w.v), 0);
  }
  MORVANE_INLINE static block join_words(const float_words a, const float_words b, const float_words c,
                                         const float_words d) {
    return {wasm_u16x8_narrow_i32x4(a.v, b.v), wasm_u16x8_narrow_i32x4(c.v, d.v)};
  }
  template <int part>
  MORVANE_INLINE static floats floats_of_words(const block b) {
    const v128_t half = part < 2 ? b.lo : b.hi;
    return floats_of_dwords(part % 2 == 0 ? wasm_u32x4_extend_low_u16x8(half) : wasm_u32x4_extend_high_u16x8(half));
  }
  // There are no instructions for half floats. Their exponents are 112 less, which a product makes up for, also where
  // they are subnormal; infinite ones and those that are no numbers get the largest exponent.
  MORVANE_INLINE static floats half_floats_at(const uint8_t* p) {
    const v128_t halves_read = wasm_u32x4_load16x4(p);
    const v128_t sign = wasm_i32x4_shl(wasm_v128_and(halves_read, dwords_of(0x8000)), 16);
    const v128_t magnitude = wasm_i32x4_shl(wasm_v128_and(halves_read, dwords_of(0x7fff)), 13);
    const v128_t finite = wasm_f32x4_mul(magnitude, wasm_f32x4_splat(0x1p112F));
    const v128_t is_not_finite = wasm_i32x4_ge(magnitude, dwords_of(31U << 23));
    return {wasm_v128_or(wasm_v128_or(finite, sign), wasm_v128_and(is_not_finite, dwords_of(255U << 23)))};
  }
  // Of 0 to 1. A sum from 0.5 on has the steps of the smallest halves.
  MORVANE_INLINE static float_words half_floats(const floats f) {
    const v128_t odd = wasm_v128_and(wasm_u32x4_shr(f.v, 13), dwords_of(1));
    const v128_t rounded = wasm_i32x4_add(wasm_i32x4_add(f.v, dwords_of(0xfff - (112U << 23))), odd);
    const v128_t normal = wasm_u32x4_shr(rounded, 13);
    const v128_t first = wasm_f32x4_splat(0.5F);
    const v128_t subnormal = wasm_i32x4_sub(wasm_f32x4_add(f.v, first), first);
    return {wasm_v128_bitselect(subnormal, normal, wasm_f32x4_lt(f.v, wasm_f32x4_splat(0x1p-14F)))};
  }
  MORVANE_INLINE static two_blocks join_vuya(const floats cbcr, const floats luma, const floats alpha) {
    const v128_t crcb = wasm_i32x4_shuffle(cbcr.v, cbcr.v, 1, 0, 3, 2);
    const v128_t first = lower_dwords_in_turn(luma.v, alpha.v), second = upper_dwords_in_turn(luma.v, alpha.v);
    return {{lower_halves(crcb, first), wasm_i64x2_shuffle(crcb, first, 0, 3)},
            {wasm_i64x2_shuffle(crcb, second, 1, 2), upper_halves(crcb, second)}};
  }
  MORVANE_INLINE static four_floats load_four_floats(const uint8_t* p) {
    const pixels f =
        exchange_rows(wasm_v128_load(p), wasm_v128_load(p + 16), wasm_v128_load(p + 32), wasm_v128_load(p + 48));
    return {{f.channel[0]}, {f.channel[1]}, {f.channel[2]}, {f.channel[3]}};
  }
  MORVANE_INLINE static two_blocks interleave4_floats(const floats a, const floats b, const floats c, const floats d) {
    const pixels p = exchange_rows(a.v, b.v, c.v, d.v);
    return {{p.channel[0], p.channel[1]}, {p.channel[2], p.channel[3]}};
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
