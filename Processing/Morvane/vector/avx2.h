// The vector operations on AVX2: 32 pixels at a time. operations.h says what each does.
//
// Most AVX2 instructions work within the two 128-bit halves of a register. So the samples of 32 pixels lie in an order
// of their own, in which interleaving, widening and narrowing within the halves bring them back to memory order by
// themselves. In quads of pixels (q0 = pixels 0 to 3):
//
//                 low half        high half
//   bytes         q0 q2 q4 q6     q1 q3 q5 q7
//   words.lo      q0 q2           q1 q3
//   words.hi      q4 q6           q5 q7
//
// Pixels that are computed from pairs of uyvy lie otherwise: words in memory order, so that loading needs no exchange,
// and bytes as narrowing leaves them. Their bytes of RGB are stored by halves.
//
//   pair_words.lo q0 q1           q2 q3
//   pair_words.hi q4 q5           q6 q7
//   pair_bytes    q0 q1 q4 q5     q2 q3 q6 q7
#pragma once

#include <cstddef>
#include <cstdint>

#include "avx2_sixes.h"
#include "inline.h"
#include "opaque.h"
#include "portable.h"
#include "weights.h"
#include "x86.h"
#include "x86_intrinsics.h"
#include "ymm.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx2 : avx2_sixes {
  using narrower = portable;
  using mover = avx2;

  static constexpr int stores_expected_ahead = 512;
  static constexpr bool announces_crowded_stores_alone = false;
  static constexpr int loads_expected_ahead = 768;
  static constexpr int vectors_a_turn = 2;
  static constexpr int stored_together = 2;

  struct pair_bytes {
    static constexpr size_t stored_bytes = 32;
    __m256i v;
  };
  struct pixels {
    __m256i q01, q23, q45, q67;
  };
  // The bytes of each pixel as two words.
  struct weighable {
    words first_and_second, third_and_fourth;
  };
  using avx2_blocks::interleave2;
  using avx2_sixes::store;

  MORVANE_INLINE static pixels load4(const uint8_t* p) {
    return {ymm::load(p), ymm::load(p + 32), ymm::load(p + 64), ymm::load(p + 96)};
  }
  // Eight pixels 0 to 7 as words ab and cd of their bytes: within each half  ab0 ab1 ab2 ab3 cd0 cd1 cd2 cd3.
  MORVANE_INLINE static weighable gather_words(const __m256i q01, const __m256i q23, const __m256i q45,
                                               const __m256i q67) {
    return {{_mm256_unpacklo_epi64(q01, q23), _mm256_unpacklo_epi64(q45, q67)},
            {_mm256_unpackhi_epi64(q01, q23), _mm256_unpackhi_epi64(q45, q67)}};
  }
  MORVANE_INLINE static __m256i words_of_four(const uint8_t* p) {
    return _mm256_shuffle_epi8(ymm::load(p),
                               ymm::repeat_lane(_mm_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15)));
  }
  MORVANE_INLINE static weighable load4_weighable(const uint8_t* p) {
    return gather_words(words_of_four(p), words_of_four(p + 32), words_of_four(p + 64), words_of_four(p + 96));
  }
  // The same of pixels of three bytes; cd is then the third byte and the second once more. Each half holds four pixels,
  // in twelve bytes after those skipped.
  template <int skipped>
  MORVANE_INLINE static __m128i words_of_three() {
    constexpr char s = skipped;
    return _mm_setr_epi8(s, s + 1, s + 3, s + 4, s + 6, s + 7, s + 9, s + 10, s + 2, s + 1, s + 5, s + 4, s + 8, s + 7,
                         s + 11, s + 10);
  }
  template <int skipped>
  MORVANE_INLINE static __m256i words_of_three(const uint8_t* low, const uint8_t* high) {
    return _mm256_shuffle_epi8(load_halves(low, high), ymm::repeat_lane(words_of_three<skipped>()));
  }
  // Pixels 0 to 7 at p, which is read from four bytes before on.
  MORVANE_INLINE static __m256i words_of_three_before(const uint8_t* p) {
    return _mm256_shuffle_epi8(ymm::load(p - 4), _mm256_set_m128i(words_of_three<0>(), words_of_three<4>()));
  }
  // Nothing before the first byte and nothing behind the last one is read.
  MORVANE_INLINE static weighable load3_weighable(const uint8_t* p) {
    return gather_words(words_of_three<0>(p, p + 12), words_of_three_before(p + 24), words_of_three_before(p + 48),
                        words_of_three<4>(p + 68, p + 80));
  }

  // Four pixels' bytes to two words of pair sums each, then to one double word each.
  MORVANE_INLINE static __m256i sum_pixels(const __m256i p, const __m256i w) {
    return _mm256_madd_epi16(_mm256_maddubs_epi16(p, w), _mm256_set1_epi16(1));
  }
  static constexpr bool sum_fits(const int a, const int b) {
    return a >= -128 && a <= 127 && b >= -128 && b <= 127 && 255 * (positive(a) + positive(b)) <= 32767 &&
           255 * (negative(a) + negative(b)) >= -32768;
  }
  static constexpr bool pairs_fit(const weights w) {
    return sum_fits(w.first, w.second) && sum_fits(w.third, w.fourth);
  }
  // Weights of the bytes of two words, which alternate.
  MORVANE_INLINE static __m256i alternate(const int low, const int high, const int next_low, const int next_high) {
    return _mm256_set1_epi32((low & 255) | (high & 255) << 8 | (next_low & 255) << 16 | next_high * (1 << 24));
  }
  // The sum of the weighted bytes of a pixel, modulo 65536.
  template <weights even, weights odd = even>
  MORVANE_INLINE static words weigh(const weighable& p) {
    static_assert(pairs_fit(even) && pairs_fit(odd), "pair sums saturate at 16 bits");
    constexpr weights e = even;
    constexpr weights o = odd;
    const __m256i w12 = alternate(e.first, e.second, o.first, o.second);
    const __m256i w34 = alternate(e.third, e.fourth, o.third, o.fourth);
    return {_mm256_add_epi16(_mm256_maddubs_epi16(p.first_and_second.lo, w12),
                             _mm256_maddubs_epi16(p.third_and_fourth.lo, w34)),
            _mm256_add_epi16(_mm256_maddubs_epi16(p.first_and_second.hi, w12),
                             _mm256_maddubs_epi16(p.third_and_fourth.hi, w34))};
  }

  MORVANE_INLINE static words fourth_words(const weighable& p) { return high_bytes(p.third_and_fourth); }
  MORVANE_INLINE static bytes fourth(const weighable& p) {
    const words w = fourth_words(p);
    return {_mm256_packus_epi16(w.lo, w.hi)};
  }
  MORVANE_INLINE static words upper_products(const words a, const words b) {
    return {_mm256_mulhi_epi16(a.lo, b.lo), _mm256_mulhi_epi16(a.hi, b.hi)};
  }
  // The upper half of a signed product is the product >> 16; of twice the product it is the product >> 15.
  template <weights u, weights v, weights luma, int luma_bits, bool scaled>
  MORVANE_INLINE static words pairs_of_sums(const weighable& p) {
    const words chroma = weigh<u, v>(p);
    const words y = weigh<luma>(p);
    words both;
    if constexpr (scaled) {
      const words a = fourth_words(p);
      const words c = upper_products(chroma, a);
      const words l = upper_products(y, shift_left<8 - luma_bits>(a));
      both = interleave_bytes(_mm256_packs_epi16(c.lo, c.hi), _mm256_packus_epi16(l.lo, l.hi));
    } else {
      both = upper_bytes(chroma, shift_left<8 - luma_bits>(y));
    }
    return add_to_bytes<128, 16>(both);
  }

  // Double words 0 1 2 3 | 4 5 6 7 to 0 2 4 6 | 1 3 5 7 and back.
  MORVANE_INLINE static bytes load_bytes(const uint8_t* p) {
    return {_mm256_permutevar8x32_epi32(ymm::load(p), _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const bytes b) {
    ymm::store(p, _mm256_permutevar8x32_epi32(b.v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)));
  }
  MORVANE_INLINE static words interleave_bytes(const __m256i first, const __m256i second) {
    return {_mm256_unpacklo_epi8(first, second), _mm256_unpackhi_epi8(first, second)};
  }
  MORVANE_INLINE static words widen(const bytes b) { return interleave_bytes(b.v, _mm256_setzero_si256()); }
  MORVANE_INLINE static words widen_repeated(const bytes b) { return interleave_bytes(b.v, b.v); }
  MORVANE_INLINE static words load_words(const uint8_t* p) {
    return {exchange_middle(ymm::load(p)), exchange_middle(ymm::load(p + 32))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const words w) {
    ymm::store(p, exchange_middle(w.lo));
    ymm::store(p + 32, exchange_middle(w.hi));
  }
  MORVANE_INLINE static words fourth_words(const pixels& p) {
    return {_mm256_packus_epi32(_mm256_srli_epi32(p.q01, 24), _mm256_srli_epi32(p.q23, 24)),
            _mm256_packus_epi32(_mm256_srli_epi32(p.q45, 24), _mm256_srli_epi32(p.q67, 24))};
  }
  MORVANE_INLINE static bytes fourth(const pixels& p) {
    const words w = fourth_words(p);
    return {_mm256_packus_epi16(w.lo, w.hi)};
  }
  // Two bytes of each pixel to its double word, the first from the pair's even pixel for both pixels.
  template <int even, int odd, int own>
  MORVANE_INLINE static __m256i pick(const __m256i p) {
    return _mm256_shuffle_epi8(p, ymm::repeat_lane(_mm_setr_epi8(even, own, -1, -1, odd, 4 + own, -1, -1, 8 + even,
                                                                 8 + own, -1, -1, 8 + odd, 12 + own, -1, -1)));
  }
  template <int even, int odd, int own>
  MORVANE_INLINE static words pick_of_pairs(const pixels& p) {
    return {_mm256_packus_epi32(pick<even, odd, own>(p.q01), pick<even, odd, own>(p.q23)),
            _mm256_packus_epi32(pick<even, odd, own>(p.q45), pick<even, odd, own>(p.q67))};
  }

  MORVANE_INLINE static __m256i upper_bytes(const __m256i low, const __m256i high) {
    return _mm256_or_si256(_mm256_srli_epi16(low, 8), _mm256_and_si256(high, _mm256_set1_epi16(-256)));
  }
  MORVANE_INLINE static words upper_bytes(const words low, const words high) {
    return {upper_bytes(low.lo, high.lo), upper_bytes(low.hi, high.hi)};
  }
  MORVANE_INLINE static pairs load_uyvy(const uint8_t* p) { return {ymm::load(p), ymm::load(p + 32)}; }
  MORVANE_INLINE static pairs load_upper_bytes(const uint8_t* luma, const uint8_t* chroma) {
    return {upper_bytes(ymm::load(chroma), ymm::load(luma)), upper_bytes(ymm::load(chroma + 32), ymm::load(luma + 32))};
  }
  // Of Cb Y0 Cr Y1: both Y with Cb, or both Y with Cr.
  template <bool with_cr>
  MORVANE_INLINE static __m256i luma_and_chroma(const __m256i uyvy) {
    if constexpr (with_cr)
      return _mm256_shuffle_epi8(
          uyvy, ymm::repeat_lane(_mm_setr_epi8(1, 2, 3, 2, 5, 6, 7, 6, 9, 10, 11, 10, 13, 14, 15, 14)));
    else
      return _mm256_shuffle_epi8(uyvy,
                                 ymm::repeat_lane(_mm_setr_epi8(1, 0, 3, 0, 5, 4, 7, 4, 9, 8, 11, 8, 13, 12, 15, 12)));
  }
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_bytes clamped_sum(const pairs& p) {
    const pair_words sum = sum_of_words<w, bits>(p);
    return {_mm256_packus_epi16(sum.lo, sum.hi)};
  }

  MORVANE_INLINE static pair_bytes load_pair_bytes(const uint8_t* p) { return {exchange_middle(ymm::load(p))}; }
  MORVANE_INLINE static void store(uint8_t* p, const pair_bytes b) { ymm::store(p, exchange_middle(b.v)); }

  MORVANE_INLINE static four_blocks opaque_grey(const bytes b) {
    return interleave_in_lanes(b.v, b.v, b.v, ymm::repeat_byte(255));
  }
  // Quads  q0 | q2,  q1 | q3,  q4 | q6  and  q5 | q7  of pixels of four bytes.
  struct pair_pixels {
    static constexpr size_t stored_bytes = 128;
    four_blocks quads;
  };
  MORVANE_INLINE static pair_pixels interleave4(const pair_bytes c0, const pair_bytes c1, const pair_bytes c2,
                                                const pair_bytes c3) {
    return {interleave_in_lanes(c0.v, c1.v, c2.v, c3.v)};
  }
  MORVANE_INLINE static pair_pixels interleave4(const pair_bytes c0, const pair_bytes c1, const pair_bytes c2, opaque) {
    return {interleave_in_lanes(c0.v, c1.v, c2.v, ymm::repeat_byte(255))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const pair_pixels& pixels) {
    store_halves(p, p + 32, pixels.quads.first.v);
    store_halves(p + 16, p + 48, pixels.quads.second.v);
    store_halves(p + 64, p + 96, pixels.quads.third.v);
    store_halves(p + 80, p + 112, pixels.quads.fourth.v);
  }
  // Bits 8 to 15 of a sum are byte 1 already, and 128 is added by turning its highest bit.
  //
  //   sum ^ 32768   -- C  --  --        words of sum and pixel    -- C  -- A
  //   pixel         -- -- --  A         with bytes of before      b0 C  b2 A
  template <bool has_fourth>
  MORVANE_INLINE static void replace_second_and_fourth(uint8_t* p, const __m256i pixel, const __m256i of_pixel) {
    const __m256i second = _mm256_xor_si256(sum_pixels(pixel, of_pixel), _mm256_set1_epi32(0x8000));
    const __m256i fourth = has_fourth ? pixel : _mm256_set1_epi8(-1);
    const __m256i replaced = _mm256_blend_epi16(second, fourth, 0b10101010);
    const __m256i odd_bytes = _mm256_set1_epi16(-256);
    ymm::store(p, _mm256_blendv_epi8(ymm::load(p), replaced, odd_bytes));
  }
  template <weights w, bool has_fourth>
  struct second_and_fourth {
    static constexpr size_t stored_bytes = 128;
    pixels from;
  };
  template <weights w, bool has_fourth>
  MORVANE_INLINE static second_and_fourth<w, has_fourth> second_and_fourth_of(const pixels& from) {
    return {from};
  }
  template <weights w, bool has_fourth>
  MORVANE_INLINE static void store(uint8_t* p, const second_and_fourth<w, has_fourth>& s) {
    static_assert(pairs_fit(w));
    constexpr uint32_t four_bytes = packed(w);
    const __m256i of_pixel = _mm256_set1_epi32(static_cast<int>(four_bytes));
    replace_second_and_fourth<has_fourth>(p, s.from.q01, of_pixel);
    replace_second_and_fourth<has_fourth>(p + 32, s.from.q23, of_pixel);
    replace_second_and_fourth<has_fourth>(p + 64, s.from.q45, of_pixel);
    replace_second_and_fourth<has_fourth>(p + 96, s.from.q67, of_pixel);
  }

  // The same 16 bytes, four pairs, in both halves: two of them become four pixels in each.
  template <bool is_crcby>
  MORVANE_INLINE static __m256i pixels_of_pairs(const uint8_t* p) {
    const __m256i pairs = ymm::repeat_lane(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
    if constexpr (is_crcby)
      return _mm256_shuffle_epi8(pairs, _mm256_setr_epi8(2, 0, 1, -1, 2, 0, 3, -1, 6, 4, 5, -1, 6, 4, 7, -1, 10, 8, 9,
                                                         -1, 10, 8, 11, -1, 14, 12, 13, -1, 14, 12, 15, -1));
    else
      return _mm256_shuffle_epi8(pairs, _mm256_setr_epi8(1, 0, 2, -1, 3, 0, 2, -1, 5, 4, 6, -1, 7, 4, 6, -1, 9, 8, 10,
                                                         -1, 11, 8, 10, -1, 13, 12, 14, -1, 15, 12, 14, -1));
  }
  // Eight bytes to the fourth bytes of eight pixels.
  MORVANE_INLINE static __m256i to_fourth_bytes(const uint8_t* p) {
    return _mm256_shuffle_epi8(
        load_four_times(p), _mm256_setr_epi8(-1, -1, -1, 0, -1, -1, -1, 1, -1, -1, -1, 2, -1, -1, -1, 3, -1, -1, -1, 4,
                                             -1, -1, -1, 5, -1, -1, -1, 6, -1, -1, -1, 7));
  }
  template <bool is_crcby>
  MORVANE_INLINE static block eight_of_444(const uint8_t* uyvy, const __m256i fourth) {
    return {_mm256_or_si256(pixels_of_pairs<is_crcby>(uyvy), fourth)};
  }
  template <bool is_crcby>
  MORVANE_INLINE static four_blocks pixels_of_444(const uint8_t* uyvy, const uint8_t* alpha) {
    return {eight_of_444<is_crcby>(uyvy, to_fourth_bytes(alpha)),
            eight_of_444<is_crcby>(uyvy + 16, to_fourth_bytes(alpha + 8)),
            eight_of_444<is_crcby>(uyvy + 32, to_fourth_bytes(alpha + 16)),
            eight_of_444<is_crcby>(uyvy + 48, to_fourth_bytes(alpha + 24))};
  }
  template <bool is_crcby>
  MORVANE_INLINE static four_blocks pixels_of_444(const uint8_t* uyvy) {
    const __m256i opaque = _mm256_set1_epi32(static_cast<int>(0xff000000));
    return {eight_of_444<is_crcby>(uyvy, opaque), eight_of_444<is_crcby>(uyvy + 16, opaque),
            eight_of_444<is_crcby>(uyvy + 32, opaque), eight_of_444<is_crcby>(uyvy + 48, opaque)};
  }
  MORVANE_INLINE static void store_12(uint8_t* p, const __m128i v) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
    const int last = _mm_extract_epi32(v, 2);
    __builtin_memcpy(p + 8, &last, 4);
  }
  struct pair_pixels_of_three {
    static constexpr size_t stored_bytes = 96;
    four_blocks quads;  // as pair_pixels, with the third byte once more as the fourth
  };
  MORVANE_INLINE static pair_pixels_of_three interleave3(const pair_bytes c0, const pair_bytes c1,
                                                         const pair_bytes c2) {
    return {interleave_in_lanes(c0.v, c1.v, c2.v, c2.v)};
  }
  // The twelve bytes of a quad are stored with four zeros behind, which the next quad overwrites. Behind the last quad
  // nothing may be written: it has its zeros before it, on the place of the last but one, which is stored after it and
  // without any.
  MORVANE_INLINE static void store(uint8_t* p, const pair_pixels_of_three& pixels) {
    const __m128i zeros_behind = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    const __m128i zeros_before = _mm_setr_epi8(-1, -1, -1, -1, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14);
    const __m256i q02 = _mm256_shuffle_epi8(pixels.quads.first.v, ymm::repeat_lane(zeros_behind));
    const __m256i q13 = _mm256_shuffle_epi8(pixels.quads.second.v, ymm::repeat_lane(zeros_behind));
    const __m256i q46 = _mm256_shuffle_epi8(pixels.quads.third.v, ymm::repeat_lane(zeros_behind));
    const __m256i q57 = _mm256_shuffle_epi8(pixels.quads.fourth.v, _mm256_set_m128i(zeros_before, zeros_behind));
    store_128(p, low_half(q02));
    store_128(p + 12, low_half(q13));
    store_128(p + 24, high_half(q02));
    store_128(p + 36, high_half(q13));
    store_128(p + 48, low_half(q46));
    store_128(p + 60, low_half(q57));
    store_128(p + 80, high_half(q57));
    store_12(p + 72, high_half(q46));
  }

  // A pixel in each half, to or from the same of four pixels.
  MORVANE_INLINE static four_floats exchange_rows(const __m256 a, const __m256 b, const __m256 c, const __m256 d) {
    const __m256d ab_lo = _mm256_castps_pd(_mm256_unpacklo_ps(a, b));
    const __m256d ab_hi = _mm256_castps_pd(_mm256_unpackhi_ps(a, b));
    const __m256d cd_lo = _mm256_castps_pd(_mm256_unpacklo_ps(c, d));
    const __m256d cd_hi = _mm256_castps_pd(_mm256_unpackhi_ps(c, d));
    return {{_mm256_castpd_ps(_mm256_unpacklo_pd(ab_lo, cd_lo))},
            {_mm256_castpd_ps(_mm256_unpackhi_pd(ab_lo, cd_lo))},
            {_mm256_castpd_ps(_mm256_unpacklo_pd(ab_hi, cd_hi))},
            {_mm256_castpd_ps(_mm256_unpackhi_pd(ab_hi, cd_hi))}};
  }
  MORVANE_INLINE static __m256 load_pixels(const uint8_t* low, const uint8_t* high) {
    return _mm256_castsi256_ps(load_halves(low, high));
  }
  MORVANE_INLINE static four_floats load_four_floats(const uint8_t* p) {
    return exchange_rows(load_pixels(p, p + 64), load_pixels(p + 16, p + 80), load_pixels(p + 32, p + 96),
                         load_pixels(p + 48, p + 112));
  }
  struct pixels_of_floats {
    static constexpr size_t stored_bytes = 128;
    four_floats pixels_04_to_37;
  };
  MORVANE_INLINE static pixels_of_floats interleave4_floats(const floats a, const floats b, const floats c,
                                                            const floats d) {
    return {exchange_rows(a.v, b.v, c.v, d.v)};
  }
  MORVANE_INLINE static void store_pixels(uint8_t* low, uint8_t* high, const floats f) {
    store_halves(low, high, _mm256_castps_si256(f.v));
  }
  MORVANE_INLINE static void store(uint8_t* p, const pixels_of_floats& pixels) {
    store_pixels(p, p + 64, pixels.pixels_04_to_37.first);
    store_pixels(p + 16, p + 80, pixels.pixels_04_to_37.second);
    store_pixels(p + 32, p + 96, pixels.pixels_04_to_37.third);
    store_pixels(p + 48, p + 112, pixels.pixels_04_to_37.fourth);
  }
  MORVANE_INLINE static void store(uint8_t* p, const ymm::half_register& w) { store_128(p, w.v); }

  //   chroma   c0 c0' c1 c1' | c2 c2' c3 c3'     after the exchange, a pair of floats each
  //   ya.lo    y0 a0  y1 a1  | y4 a4  y5 a5
  //   ya.hi    y2 a2  y3 a3  | y6 a6  y7 a7
  struct vuya {
    static constexpr size_t stored_bytes = 128;
    __m256d pixels_04, pixels_15, pixels_26, pixels_37;
  };
  MORVANE_INLINE static vuya join_vuya(const floats cbcr, const floats luma, const floats alpha) {
    const __m256d chroma = _mm256_castps_pd(_mm256_permute_ps(cbcr.v, _MM_SHUFFLE(2, 3, 0, 1)));
    const __m256d ya_lo = _mm256_castps_pd(_mm256_unpacklo_ps(luma.v, alpha.v));
    const __m256d ya_hi = _mm256_castps_pd(_mm256_unpackhi_ps(luma.v, alpha.v));
    return {_mm256_shuffle_pd(chroma, ya_lo, 0b0000), _mm256_shuffle_pd(chroma, ya_lo, 0b1010),
            _mm256_shuffle_pd(chroma, ya_hi, 0b0101), _mm256_shuffle_pd(chroma, ya_hi, 0b1111)};
  }
  MORVANE_INLINE static void store(uint8_t* p, const vuya& pixels) {
    store_halves(p, p + 64, _mm256_castpd_si256(pixels.pixels_04));
    store_halves(p + 16, p + 80, _mm256_castpd_si256(pixels.pixels_15));
    store_halves(p + 32, p + 96, _mm256_castpd_si256(pixels.pixels_26));
    store_halves(p + 48, p + 112, _mm256_castpd_si256(pixels.pixels_37));
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
