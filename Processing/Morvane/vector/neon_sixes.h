// Groups of six pixels on NEON: six words of luma, or of Cb and Cr in turn, in each register. What follows them there
// may be anything. operations.h says what each operation does.
#pragma once

#include <arm_neon.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "neon_lines.h"

namespace Processing::Morvane::format_conversion::vector {

struct neon_sixes : neon_lines {
  using neon_lines::store;

  MORVANE_INLINE static two_blocks sixes_of_v210(const block groups) {
    const uint8x16_t of_luma = {1, 2, 4, 5, 6, 7, 9, 10, 12, 13, 14, 15, 255, 255, 255, 255};
    const uint8x16_t of_chroma = {0, 1, 2, 3, 5, 6, 8, 9, 10, 11, 13, 14, 255, 255, 255, 255};
    const uint16x8_t lift_luma = {16, 64, 4, 16, 64, 4, 0, 0};
    const uint16x8_t lift_chroma = {64, 4, 16, 64, 4, 16, 0, 0};
    return {block_of(tens_of(groups.lo, of_luma, lift_luma), tens_of(groups.hi, of_luma, lift_luma)),
            block_of(tens_of(groups.lo, of_chroma, lift_chroma), tens_of(groups.hi, of_chroma, lift_chroma))};
  }
  MORVANE_INLINE static block v210_of_sixes(const two_blocks& sixes) {
    const uint8x16_t first_two = {16, 17, 0, 1, 2, 3, 20, 21, 22, 23, 6, 7, 8, 9, 26, 27};
    const uint8x16_t third = {18, 19, 255, 255, 4, 5, 255, 255, 24, 25, 255, 255, 10, 11, 255, 255};
    return {join_v210(sixes.first.lo, sixes.second.lo, first_two, third),
            join_v210(sixes.first.hi, sixes.second.hi, first_two, third)};
  }

  MORVANE_INLINE static block load_sixes(const uint8_t* p) {
    const uint8x16_t hi = vld1q_u8(p + 8);
    return {vld1q_u8(p), vextq_u8(hi, hi, 4)};
  }
  struct six_words {
    static constexpr size_t stored_bytes = 24;
    block b;
  };
  MORVANE_INLINE static six_words sixes(const block b) { return {b}; }
  MORVANE_INLINE static void store(uint8_t* p, const six_words& w) {
    vst1q_u8(p, w.b.lo);
    vst1_u8(p + 12, vget_low_u8(w.b.hi));
    vst1q_lane_u32(reinterpret_cast<uint32_t*>(p + 20), as_dwords(w.b.hi), 2);
  }

  MORVANE_INLINE static uint8x16_t six_of_threes(const uint8x8_t cb, const uint8x8_t cr) {
    const uint16x4x2_t both = vzip_u16(vreinterpret_u16_u8(cb), vreinterpret_u16_u8(cr));
    return vreinterpretq_u8_u16(vcombine_u16(both.val[0], both.val[1]));
  }
  MORVANE_INLINE static uint8x8_t last_three(const uint8_t* p) {
    const uint8x8_t four = vld1_u8(p + 4);
    return vext_u8(four, four, 2);
  }
  MORVANE_INLINE static block load_sixes(const uint8_t* cb, const uint8_t* cr) {
    return {six_of_threes(vld1_u8(cb), vld1_u8(cr)), six_of_threes(last_three(cb), last_three(cr))};
  }
  struct three_words {
    static constexpr size_t stored_bytes = 12;
    uint8x16_t v;
  };
  struct threes_of_planes {
    three_words first, second;
  };
  MORVANE_INLINE static threes_of_planes deinterleave_sixes(const block b) {
    const uint8x16_t first = {0, 1, 4, 5, 8, 9, 16, 17, 20, 21, 24, 25, 255, 255, 255, 255};
    const uint8x16_t second = {2, 3, 6, 7, 10, 11, 18, 19, 22, 23, 26, 27, 255, 255, 255, 255};
    const uint8x16x2_t both = {{b.lo, b.hi}};
    return {{vqtbl2q_u8(both, first)}, {vqtbl2q_u8(both, second)}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_words& w) {
    vst1_u8(p, vget_low_u8(w.v));
    vst1q_lane_u32(reinterpret_cast<uint32_t*>(p + 8), as_dwords(w.v), 2);
  }

  // Three groups of five bytes in each register: Cb Y Cr Y from the highest bit down, of which each begins two bits
  // lower in its byte than the one before.
  MORVANE_INLINE static uint16x8_t tens_of_fives(const uint8x16_t fives, const uint8x16_t places,
                                                 const uint16x8_t lifts) {
    return vandq_u16(vmulq_u16(as_words(vqtbl1q_u8(fives, places)), lifts), vdupq_n_u16(0xffc0));
  }
  MORVANE_INLINE static two_blocks sixes_of_fives(const uint8_t* p) {
    const uint8x16_t of_luma = {2, 1, 4, 3, 7, 6, 9, 8, 12, 11, 14, 13, 255, 255, 255, 255};
    const uint8x16_t of_chroma = {1, 0, 3, 2, 6, 5, 8, 7, 11, 10, 13, 12, 255, 255, 255, 255};
    const uint16x8_t lift_luma = {4, 64, 4, 64, 4, 64, 0, 0};
    const uint16x8_t lift_chroma = {1, 16, 1, 16, 1, 16, 0, 0};
    const uint8x16_t lo = vld1q_u8(p);
    const uint8x16_t before_hi = vld1q_u8(p + 14);
    const uint8x16_t hi = vextq_u8(before_hi, before_hi, 1);
    return {block_of(tens_of_fives(lo, of_luma, lift_luma), tens_of_fives(hi, of_luma, lift_luma)),
            block_of(tens_of_fives(lo, of_chroma, lift_chroma), tens_of_fives(hi, of_chroma, lift_chroma))};
  }
  struct fifteen_bytes {
    static constexpr size_t stored_bytes = 30;
    block b;
  };
  MORVANE_INLINE static uint8x16_t fives_of_six(const uint8x16_t luma, const uint8x16_t chroma) {
    const uint16x8_t lift_luma = {16, 1, 16, 1, 16, 1, 0, 0};
    const uint16x8_t lift_chroma = {64, 4, 64, 4, 64, 4, 0, 0};
    const uint8x16_t of_luma = {255, 1, 0, 3, 2, 255, 5, 4, 7, 6, 255, 9, 8, 11, 10, 255};
    const uint8x16_t of_chroma = {1, 0, 3, 2, 255, 5, 4, 7, 6, 255, 9, 8, 11, 10, 255, 255};
    const uint8x16_t luma_bytes = vreinterpretq_u8_u16(vmulq_u16(as_words(luma), lift_luma));
    const uint8x16_t chroma_bytes = vreinterpretq_u8_u16(vmulq_u16(as_words(chroma), lift_chroma));
    return vorrq_u8(vqtbl1q_u8(luma_bytes, of_luma), vqtbl1q_u8(chroma_bytes, of_chroma));
  }
  MORVANE_INLINE static fifteen_bytes fives_of_sixes(const two_blocks& sixes) {
    return {{fives_of_six(sixes.first.lo, sixes.second.lo), fives_of_six(sixes.first.hi, sixes.second.hi)}};
  }
  // What is stored behind the first group is overwritten by the second one.
  MORVANE_INLINE static void store(uint8_t* p, const fifteen_bytes& f) {
    vst1q_u8(p, f.b.lo);
    vst1_u8(p + 15, vget_low_u8(f.b.hi));
    vst1_u8(p + 22, vget_low_u8(vextq_u8(f.b.hi, f.b.hi, 7)));
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
