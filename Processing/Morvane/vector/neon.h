// The vector operations on NEON: 16 pixels at a time, in memory order. operations.h says what each does.
#pragma once

#include <arm_neon.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "neon_sixes.h"
#include "opaque.h"
#include "portable.h"
#include "sums.h"
#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

struct neon : neon_sixes {
  using narrower = portable;
  using mover = neon;

  static constexpr int lanes = 16;
  static constexpr int vectors_a_turn = 4;  // vectors are short, and counting them costs as much as a few operations
  static constexpr int stored_together = 1;
  static constexpr int float_lanes = 4;
  static constexpr int stores_expected_ahead = 0;
  static constexpr bool announces_crowded_stores_alone = false;
  static constexpr int loads_expected_ahead = 0;

  struct bytes {
    static constexpr size_t stored_bytes = 16;
    uint8x16_t v;
  };
  struct words {
    static constexpr size_t stored_bytes = 32;
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
    static constexpr size_t stored_bytes = 16;
    float32x4_t v;
  };
  struct four_floats {
    floats first, second, third, fourth;
  };

  using neon_lines::interleave2;
  using neon_sixes::store;

  MORVANE_INLINE static pixels load4(const uint8_t* p) { return {vld4q_u8(p)}; }
  MORVANE_INLINE static weighable load4_weighable(const uint8_t* p) { return load4(p); }
  MORVANE_INLINE static weighable load3_weighable(const uint8_t* p) {
    const uint8x16x3_t c = vld3q_u8(p);
    return {{{c.val[0], c.val[1], c.val[2], c.val[1]}}};
  }

  // Begins with a positive weight, which needs no sum to add to.
  template <weights w>
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
  template <weights even, weights odd>
  MORVANE_INLINE static uint16x8_t sum_pixels_alternating(const uint8x8_t c0, const uint8x8_t c1, const uint8x8_t c2) {
    static_assert(even.fourth == 0 && odd.fourth == 0);
    const uint16x8_t sum = accumulate_alternating<even.first, odd.first>(vdupq_n_u16(0), c0);
    return accumulate_alternating<even.third, odd.third>(accumulate_alternating<even.second, odd.second>(sum, c1), c2);
  }
  template <weights even, weights odd = even>
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
  template <bool scaled, weights even, weights odd = even>
  MORVANE_INLINE static words weigh_and_scale(const weighable& p) {
    const words sum = weigh<even, odd>(p);
    if constexpr (!scaled) return sum;
    return {scale(sum.lo, vget_low_u8(p.channel.val[3])), scale(sum.hi, vget_high_u8(p.channel.val[3]))};
  }
  template <weights u, weights v, weights luma, int luma_bits, bool scaled>
  MORVANE_INLINE static auto pairs_of_sums(const weighable& p) {
    const words chroma = weigh_and_scale<scaled, u, v>(p);
    const words y = weigh_and_scale<scaled, luma>(p);
    if constexpr (luma_bits == 8)
      return add_to_bytes<128, 16>(upper_bytes(chroma, y));
    else
      return interleave2(add<128>(narrow<8>(chroma)), add<16>(narrow<luma_bits>(y)));
  }

  MORVANE_INLINE static bytes load_bytes(const uint8_t* p) { return {vld1q_u8(p)}; }
  MORVANE_INLINE static void store(uint8_t* p, const bytes b) { vst1q_u8(p, b.v); }
  MORVANE_INLINE static pair_bytes load_pair_bytes(const uint8_t* p) { return load_bytes(p); }
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
  MORVANE_INLINE static void store(uint8_t* p, const words w) {
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

  // Bytes of pixels that the storing instruction interleaves.
  struct channels2 {
    static constexpr size_t stored_bytes = 32;
    uint8x16x2_t all;
  };
  struct channels3 {
    static constexpr size_t stored_bytes = 48;
    uint8x16x3_t all;
  };
  struct channels4 {
    static constexpr size_t stored_bytes = 64;
    uint8x16x4_t all;
  };
  MORVANE_INLINE static channels2 interleave2(const bytes first, const bytes second) { return {{{first.v, second.v}}}; }
  MORVANE_INLINE static channels3 interleave3(const bytes c0, const bytes c1, const bytes c2) {
    return {{{c0.v, c1.v, c2.v}}};
  }
  MORVANE_INLINE static channels4 interleave4(const bytes c0, const bytes c1, const bytes c2, const bytes c3) {
    return {{{c0.v, c1.v, c2.v, c3.v}}};
  }
  MORVANE_INLINE static channels4 opaque_grey(const bytes b) { return interleave4(b, b, b, opaque()); }
  MORVANE_INLINE static channels4 interleave4(const bytes c0, const bytes c1, const bytes c2, opaque) {
    return interleave4(c0, c1, c2, same(255));
  }
  MORVANE_INLINE static void store(uint8_t* p, const channels2& c) { vst2q_u8(p, c.all); }
  MORVANE_INLINE static void store(uint8_t* p, const channels3& c) { vst3q_u8(p, c.all); }
  MORVANE_INLINE static void store(uint8_t* p, const channels4& c) { vst4q_u8(p, c.all); }

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
    constexpr ycbcr_weights whole = {0, cb, cr, constant};
    static_assert(lowest(whole) >= 0 && highest(whole) / 2 <= 65535);
    if constexpr (cb % 2 == 0 && cr % 2 == 0) {
      return weigh_chroma<cb / 2, cr / 2, constant / 2>(p);
    } else if constexpr (highest(whole) <= 65535) {
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
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_bytes clamped_sum_of_words(const pairs& p) {
    constexpr ycbcr_weights k = w;
    constexpr ycbcr_weights chroma_alone = {0, k.cb, k.cr, k.constant};
    static_assert(255 * k.y <= 32767 && 32767 >= 256 << bits);
    static_assert(fits_signed(chroma_alone));
    const int16x8_t chroma = as_signed(weigh_chroma<k.cb, k.cr, k.constant>(p));
    const uint8x8_t weight = vdup_n_u8(k.y);
    return clamp<bits>(vqaddq_s16(chroma, as_signed(vmull_u8(p.even_luma, weight))),
                       vqaddq_s16(chroma, as_signed(vmull_u8(p.odd_luma, weight))));
  }
  // With Z = 255 - Y, half of the chroma and half of the luma are unsigned words, and the subtraction halves their
  // difference once more, to a signed word. Where chroma would not fit, 512 * Cb are added last; that sum may stop as
  // above.
  template <ycbcr_weights w>
  MORVANE_INLINE static pair_bytes clamped_difference_of_halves(const pairs& p) {
    constexpr ycbcr_weights k = w;
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
  template <ycbcr_weights w>
  MORVANE_INLINE static pair_bytes clamped_whole_and_rest(const pairs& p) {
    constexpr ycbcr_weights k = w;
    constexpr ycbcr_weights chroma_rest = {0, k.cb - 512, 0, k.constant + 255 * k.y};
    constexpr int luma_rest = 256 - k.y;
    static_assert(k.cr == 0 && luma_rest < 0);
    static_assert(lowest(chroma_rest) + 255 * luma_rest >= -32768 && highest(chroma_rest) <= 32767);
    const uint16x8_t whole = vshll_n_u8(p.cb, 1);
    const uint16x8_t rest = weigh_chroma<chroma_rest.cb, 0, chroma_rest.constant>(p);
    const uint8x8_t even = vmvn_u8(p.even_luma);
    const uint8x8_t odd = vmvn_u8(p.odd_luma);
    return clamp<0>(vsraq_n_s16(as_signed(vsubw_u8(whole, even)), as_signed(accumulate<luma_rest>(rest, even)), 8),
                    vsraq_n_s16(as_signed(vsubw_u8(whole, odd)), as_signed(accumulate<luma_rest>(rest, odd)), 8));
  }
  template <ycbcr_weights w, int bits>
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
  MORVANE_INLINE static channels4 pixels_of_444(const pairs& uyvy, const bytes fourth) {
    const bytes y = zip(uyvy.even_luma, uyvy.odd_luma);
    const bytes cb = zip(uyvy.cb, uyvy.cb);
    const bytes cr = zip(uyvy.cr, uyvy.cr);
    return interleave4(is_crcby ? cr : y, cb, is_crcby ? y : cr, fourth);
  }
  template <bool is_crcby>
  MORVANE_INLINE static channels4 pixels_of_444(const uint8_t* uyvy, const uint8_t* alpha) {
    return pixels_of_444<is_crcby>(load_uyvy(uyvy), load_bytes(alpha));
  }
  template <bool is_crcby>
  MORVANE_INLINE static channels4 pixels_of_444(const uint8_t* uyvy) {
    return pixels_of_444<is_crcby>(load_uyvy(uyvy), same(255));
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
    uint8x16x4_t replaced = vld4q_u8(p);
    replaced.val[1] = add<128>(narrow<8>(weigh<w>(s.from))).v;
    replaced.val[3] = has_fourth ? s.from.channel.val[3] : vdupq_n_u8(255);
    vst4q_u8(p, replaced);
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
  MORVANE_INLINE static uint8x16_t pixel_of(const float32x2_t chroma, const float32x2_t luma_alpha) {
    return vreinterpretq_u8_f32(vcombine_f32(chroma, luma_alpha));
  }
  MORVANE_INLINE static two_blocks join_vuya(const floats cbcr, const floats luma, const floats alpha) {
    const float32x4_t crcb = vrev64q_f32(cbcr.v);
    const float32x4_t first = vzip1q_f32(luma.v, alpha.v);
    const float32x4_t second = vzip2q_f32(luma.v, alpha.v);
    return {
        {pixel_of(vget_low_f32(crcb), vget_low_f32(first)), pixel_of(vget_low_f32(crcb), vget_high_f32(first))},
        {pixel_of(vget_high_f32(crcb), vget_low_f32(second)), pixel_of(vget_high_f32(crcb), vget_high_f32(second))}};
  }
  MORVANE_INLINE static floats divide(const floats f, const float divisor) {
    return {vdivq_f32(f.v, vdupq_n_f32(divisor))};
  }
  // Of a number and what is none, the instruction takes the number.
  MORVANE_INLINE static floats between_0_and_1(const floats f) {
    return at_most({vmaxnmq_f32(f.v, vdupq_n_f32(0.0F))}, 1.0F);
  }
  struct float_words {
    static constexpr size_t stored_bytes = 8;
    uint16x4_t v;
  };
  template <int bottom>
  MORVANE_INLINE static float_words words_of_floats(const floats f) {
    return {vqmovun_s32(vaddq_s32(vcvtq_s32_f32(f.v), vdupq_n_s32(bottom)))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const float_words w) { vst1_u8(p, vreinterpret_u8_u16(w.v)); }
  MORVANE_INLINE static block join_words(const float_words a, const float_words b, const float_words c,
                                         const float_words d) {
    return block_of(vcombine_u16(a.v, b.v), vcombine_u16(c.v, d.v));
  }
  MORVANE_INLINE static floats half_floats_at(const uint8_t* p) {
    return {vcvt_f32_f16(vreinterpret_f16_u8(vld1_u8(p)))};
  }
  MORVANE_INLINE static float_words half_floats(const floats f) { return {vreinterpret_u16_f16(vcvt_f16_f32(f.v))}; }
  template <int part>
  MORVANE_INLINE static floats floats_of_words(const block b) {
    const uint16x8_t words = as_words(part < 2 ? b.lo : b.hi);
    return {vcvtq_f32_u32(vmovl_u16(part % 2 == 0 ? vget_low_u16(words) : vget_high_u16(words)))};
  }
  MORVANE_INLINE static floats floats_at(const uint8_t* p) { return {vreinterpretq_f32_u8(vld1q_u8(p))}; }
  MORVANE_INLINE static void store(uint8_t* p, const floats f) { vst1q_u8(p, vreinterpretq_u8_f32(f.v)); }
  // Four floats of each pixel, as rows and as columns.
  MORVANE_INLINE static four_floats exchange_rows(const floats a, const floats b, const floats c, const floats d) {
    const float64x2_t ab_even = vreinterpretq_f64_f32(vtrn1q_f32(a.v, b.v));
    const float64x2_t ab_odd = vreinterpretq_f64_f32(vtrn2q_f32(a.v, b.v));
    const float64x2_t cd_even = vreinterpretq_f64_f32(vtrn1q_f32(c.v, d.v));
    const float64x2_t cd_odd = vreinterpretq_f64_f32(vtrn2q_f32(c.v, d.v));
    return {{vreinterpretq_f32_f64(vtrn1q_f64(ab_even, cd_even))},
            {vreinterpretq_f32_f64(vtrn1q_f64(ab_odd, cd_odd))},
            {vreinterpretq_f32_f64(vtrn2q_f64(ab_even, cd_even))},
            {vreinterpretq_f32_f64(vtrn2q_f64(ab_odd, cd_odd))}};
  }
  MORVANE_INLINE static four_floats load_four_floats(const uint8_t* p) {
    return exchange_rows(floats_at(p), floats_at(p + 16), floats_at(p + 32), floats_at(p + 48));
  }
  MORVANE_INLINE static two_blocks interleave4_floats(const floats a, const floats b, const floats c, const floats d) {
    const four_floats pixels = exchange_rows(a, b, c, d);
    return {{vreinterpretq_u8_f32(pixels.first.v), vreinterpretq_u8_f32(pixels.second.v)},
            {vreinterpretq_u8_f32(pixels.third.v), vreinterpretq_u8_f32(pixels.fourth.v)}};
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
