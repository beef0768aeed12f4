// Groups of six pixels on SIMD128: six words of luma, or of Cb and Cr in turn, in each register. What follows them
// there may be anything. operations.h says what each operation does.
#pragma once

#include <wasm_simd128.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "wasm_lines.h"

namespace Processing::Morvane::format_conversion::vector {

struct wasm_sixes : wasm_lines {
  using wasm_lines::store;

  MORVANE_INLINE static two_blocks sixes_of_v210(const block groups) {
    return {luma_of_v210(groups),
            tens_of(groups, wasm_u8x16_const(0, 1, 2, 3, 5, 6, 8, 9, 10, 11, 13, 14, 255, 255, 255, 255),
                    wasm_u16x8_const(64, 4, 16, 64, 4, 16, 0, 0))};
  }
  MORVANE_INLINE static v128_t v210_of_six(const v128_t luma, const v128_t chroma) {
    return dwords_of_tens(wasm_i16x8_shuffle(luma, chroma, 8, 0, 1, 10, 11, 3, 4, 13),
                          wasm_i16x8_shuffle(luma, chroma, 9, 0, 2, 0, 12, 0, 5, 0));
  }
  MORVANE_INLINE static block v210_of_sixes(const two_blocks& sixes) {
    return each<v210_of_six>(sixes.first, sixes.second);
  }

  MORVANE_INLINE static block load_sixes(const uint8_t* p) {
    const v128_t hi = wasm_v128_load(p + 8);
    return {wasm_v128_load(p), wasm_i32x4_shuffle(hi, hi, 1, 2, 3, 0)};
  }
  struct six_words {
    static constexpr size_t stored_bytes = 24;
    block b;
  };
  MORVANE_INLINE static six_words sixes(const block b) { return {b}; }
  MORVANE_INLINE static void store(uint8_t* p, const six_words& w) {
    wasm_v128_store(p, w.b.lo);
    wasm_v128_store64_lane(p + 12, w.b.hi, 0);
    wasm_v128_store32_lane(p + 20, w.b.hi, 2);
  }

  MORVANE_INLINE static block load_sixes(const uint8_t* cb, const uint8_t* cr) {
    return {lower_words_in_turn(load_half(cb), load_half(cr)),
            wasm_i16x8_shuffle(load_half(cb + 4), load_half(cr + 4), 1, 9, 2, 10, 3, 11, 0, 0)};
  }
  struct three_words {
    static constexpr size_t stored_bytes = 12;
    v128_t v;
  };
  struct threes_of_planes {
    three_words first, second;
  };
  MORVANE_INLINE static threes_of_planes deinterleave_sixes(const block b) {
    return {{wasm_i16x8_shuffle(b.lo, b.hi, 0, 2, 4, 8, 10, 12, 0, 0)},
            {wasm_i16x8_shuffle(b.lo, b.hi, 1, 3, 5, 9, 11, 13, 0, 0)}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_words& w) {
    wasm_v128_store64_lane(p, w.v, 0);
    wasm_v128_store32_lane(p + 8, w.v, 2);
  }

  // Three groups of five bytes in each register: Cb Y Cr Y from the highest bit down, of which each begins two bits
  // lower in its byte than the one before.
  MORVANE_INLINE static two_blocks sixes_of_fives(const uint8_t* p) {
    const v128_t before_hi = wasm_v128_load(p + 14);
    const block fives = {wasm_v128_load(p), wasm_i8x16_shuffle(before_hi, before_hi, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11,
                                                               12, 13, 14, 15, 0)};
    return {tens_of(fives, wasm_u8x16_const(2, 1, 4, 3, 7, 6, 9, 8, 12, 11, 14, 13, 255, 255, 255, 255),
                    wasm_u16x8_const(4, 64, 4, 64, 4, 64, 0, 0)),
            tens_of(fives, wasm_u8x16_const(1, 0, 3, 2, 6, 5, 8, 7, 11, 10, 13, 12, 255, 255, 255, 255),
                    wasm_u16x8_const(1, 16, 1, 16, 1, 16, 0, 0))};
  }
  struct fifteen_bytes {
    static constexpr size_t stored_bytes = 30;
    block b;
  };
  MORVANE_INLINE static v128_t fives_of_six(const v128_t luma, const v128_t chroma) {
    const v128_t lift_luma = wasm_u16x8_const(16, 1, 16, 1, 16, 1, 0, 0);
    const v128_t lift_chroma = wasm_u16x8_const(64, 4, 64, 4, 64, 4, 0, 0);
    const v128_t of_luma = wasm_u8x16_const(255, 1, 0, 3, 2, 255, 5, 4, 7, 6, 255, 9, 8, 11, 10, 255);
    const v128_t of_chroma = wasm_u8x16_const(1, 0, 3, 2, 255, 5, 4, 7, 6, 255, 9, 8, 11, 10, 255, 255);
    return wasm_v128_or(wasm_i8x16_swizzle(wasm_i16x8_mul(luma, lift_luma), of_luma),
                        wasm_i8x16_swizzle(wasm_i16x8_mul(chroma, lift_chroma), of_chroma));
  }
  MORVANE_INLINE static fifteen_bytes fives_of_sixes(const two_blocks& sixes) {
    return {each<fives_of_six>(sixes.first, sixes.second)};
  }
  // What is stored behind the first group is overwritten by the second one.
  MORVANE_INLINE static void store(uint8_t* p, const fifteen_bytes& f) {
    wasm_v128_store(p, f.b.lo);
    wasm_v128_store64_lane(p + 15, f.b.hi, 0);
    const v128_t last = wasm_i8x16_shuffle(f.b.hi, f.b.hi, 7, 8, 9, 10, 11, 12, 13, 14, 0, 0, 0, 0, 0, 0, 0, 0);
    wasm_v128_store64_lane(p + 22, last, 0);
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
