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

#include <immintrin.h>

#include <cstdint>

#include "../format_conversion_matrix.h"
#include "../format_conversion_utils.h"
#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx2 {
  static constexpr int lanes = 32;
  static constexpr int block_bytes = 32;
  static constexpr int vectors_a_turn = 2;
  static constexpr int float_lanes = 8;
  static constexpr int cache_line = 64;
  static constexpr int stores_expected_ahead = 512;
  static constexpr size_t least_repeated_store = 2048;

  struct block {
    __m256i v;
  };
  struct bytes {
    __m256i v;
  };
  struct words {
    __m256i lo, hi;
  };
  struct pair_words {
    __m256i lo, hi;
  };
  struct pair_bytes {
    __m256i v;
  };
  struct pixels {
    __m256i q01, q23, q45, q67;
  };
  // The bytes of each pixel as two words.
  struct weighable {
    words first_and_second, third_and_fourth;
  };
  struct pairs {
    pair_words uyvy;
  };
  struct floats {
    __m256 v;
  };

  MORVANE_INLINE static __m256i load_256(const uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  }
  MORVANE_INLINE static __m256i load_halves(const uint8_t* low, const uint8_t* high) {
    return _mm256_loadu2_m128i(reinterpret_cast<const __m128i*>(high), reinterpret_cast<const __m128i*>(low));
  }
  MORVANE_INLINE static void store_256(uint8_t* p, const __m256i v) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
  }
  // Repeats eight bytes four times.
  MORVANE_INLINE static __m256i load_four_times(const uint8_t* p) {
    return _mm256_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
  }
  // Repeats 16 bytes in both halves.
  MORVANE_INLINE static __m256i twice(const __m128i v) { return _mm256_broadcastsi128_si256(v); }
  // q0 q1 | q2 q3 to q0 q2 | q1 q3 and back, for quads of eight bytes.
  MORVANE_INLINE static __m256i exchange_middle(const __m256i v) {
    return _mm256_permute4x64_epi64(v, _MM_SHUFFLE(3, 1, 2, 0));
  }

  static constexpr int negative(const int w) { return w < 0 ? w : 0; }
  static constexpr int positive(const int w) { return w > 0 ? w : 0; }

  MORVANE_INLINE static void expect_store(uint8_t* p) { _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_T0); }

  // A 16-bit value over and over, to whole cache lines. The processor knows of the whole run in advance and does not
  // read lines that it will overwrite, but is slow to begin, and runs half as fast at addresses that are not aligned.
  MORVANE_INLINE static void store_repeatedly(uint8_t* p, size_t bytes, const uint16_t value) {
    size_t quads = bytes / 8;
    asm volatile("rep stosq" : "+D"(p), "+c"(quads) : "a"(value * 0x0001000100010001U) : "memory");
  }

  MORVANE_INLINE static block load(const uint8_t* p) { return {load_256(p)}; }
  MORVANE_INLINE static void store(uint8_t* p, const block b) { store_256(p, b.v); }
  MORVANE_INLINE static block repeat(const uint16_t value) { return {_mm256_set1_epi16(static_cast<short>(value))}; }
  MORVANE_INLINE static block swap_bytes(const block b) {
    return {_mm256_shuffle_epi8(b.v, twice(_mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14)))};
  }
  MORVANE_INLINE static block and_blocks(const block a, const block b) { return {_mm256_and_si256(a.v, b.v)}; }
  MORVANE_INLINE static block or_blocks(const block a, const block b) { return {_mm256_or_si256(a.v, b.v)}; }
  template <int bits, uint32_t mask>
  MORVANE_INLINE static block shift_left_and_mask(const block b) {
    return {_mm256_and_si256(_mm256_slli_epi32(b.v, bits), _mm256_set1_epi32(static_cast<int>(mask)))};
  }
  template <int bits>
  MORVANE_INLINE static block shift_right_words(const block b) {
    return {_mm256_srli_epi16(b.v, bits)};
  }
  template <int bits>
  MORVANE_INLINE static block shift_left_words(const block b) {
    return {_mm256_slli_epi16(b.v, bits)};
  }
  MORVANE_INLINE static block add_words(const block a, const block b) { return {_mm256_add_epi16(a.v, b.v)}; }
  MORVANE_INLINE static block repeat_even_words(const block b) {
    return {_mm256_shuffle_epi8(b.v, twice(_mm_setr_epi8(0, 1, 0, 1, 4, 5, 4, 5, 8, 9, 8, 9, 12, 13, 12, 13)))};
  }
  // (x - offset) * (a + 1) = 65536 * (x - offset) + (offset - x) * b with b = 65535 - a, so the result is x plus the
  // upper half of the second product. Where x > offset, the unsigned product takes offset - x for 65536 more, and its
  // upper half is b too large.
  template <int offset>
  MORVANE_INLINE static block scale_words(const block x, const block a) {
    const __m256i first = _mm256_set1_epi16(static_cast<short>(offset));
    const __m256i b = _mm256_xor_si256(a.v, _mm256_set1_epi16(-1));
    const __m256i upper = _mm256_mulhi_epu16(_mm256_sub_epi16(first, x.v), b);
    const __m256i is_not_above = _mm256_cmpeq_epi16(_mm256_min_epu16(x.v, first), x.v);
    return {_mm256_sub_epi16(_mm256_add_epi16(x.v, upper), _mm256_andnot_si256(is_not_above, b))};
  }
  struct two_blocks {
    block first, second;
  };
  MORVANE_INLINE static two_blocks deinterleave2(const block a, const block b) {
    const __m256i low_bytes = _mm256_set1_epi16(0x00ff);
    const __m256i first = _mm256_packus_epi16(_mm256_and_si256(a.v, low_bytes), _mm256_and_si256(b.v, low_bytes));
    const __m256i second = _mm256_packus_epi16(_mm256_srli_epi16(a.v, 8), _mm256_srli_epi16(b.v, 8));
    return {{exchange_middle(first)}, {exchange_middle(second)}};
  }
  MORVANE_INLINE static two_blocks deinterleave2_words(const block a, const block b) {
    const __m256i low_words = _mm256_set1_epi32(0x0000ffff);
    const __m256i first = _mm256_packus_epi32(_mm256_and_si256(a.v, low_words), _mm256_and_si256(b.v, low_words));
    const __m256i second = _mm256_packus_epi32(_mm256_srli_epi32(a.v, 16), _mm256_srli_epi32(b.v, 16));
    return {{exchange_middle(first)}, {exchange_middle(second)}};
  }
  MORVANE_INLINE static two_blocks interleave2(const block a, const block b) {
    const __m256i first = exchange_middle(a.v);
    const __m256i second = exchange_middle(b.v);
    return {{_mm256_unpacklo_epi8(first, second)}, {_mm256_unpackhi_epi8(first, second)}};
  }
  MORVANE_INLINE static two_blocks interleave2_words(const block a, const block b) {
    const __m256i first = exchange_middle(a.v);
    const __m256i second = exchange_middle(b.v);
    return {{_mm256_unpacklo_epi16(first, second)}, {_mm256_unpackhi_epi16(first, second)}};
  }
  MORVANE_INLINE static two_blocks interleave2_dwords(const block a, const block b) {
    const __m256i first = exchange_middle(a.v);
    const __m256i second = exchange_middle(b.v);
    return {{_mm256_unpacklo_epi32(first, second)}, {_mm256_unpackhi_epi32(first, second)}};
  }
  // A byte of a pair, in two bits each Cr Y1 Cb Y0 from the top, in both words of its double word, and what lifts the
  // two bits of a word's sample to bits 7 and 6: the first of luma by 6, the second by 2.
  MORVANE_INLINE static two_blocks load_pair_bits(const uint8_t* p) {
    const __m256i in_words = _mm256_shuffle_epi8(
        load_four_times(p), _mm256_setr_epi8(0, -1, 0, -1, 1, -1, 1, -1, 2, -1, 2, -1, 3, -1, 3, -1, 4, -1, 4, -1, 5,
                                             -1, 5, -1, 6, -1, 6, -1, 7, -1, 7, -1));
    const __m256i bits = _mm256_set1_epi16(0x00c0);
    const __m256i luma = _mm256_mullo_epi16(in_words, _mm256_set1_epi32(1 << 6 | 1 << 2 << 16));
    const __m256i chroma = _mm256_mullo_epi16(in_words, _mm256_set1_epi32(1 << 4 | 1 << 16));
    return {{_mm256_and_si256(luma, bits)}, {_mm256_and_si256(chroma, bits)}};
  }
  // Sums of products move the bits of both words of a pair to the second byte of its double word: Y0 from bits 7 and 6
  // to 9 and 8, Cb to 11 and 10, Y1 to 13 and 12, Cr to 15 and 14.
  template <bool cr_as_cb>
  MORVANE_INLINE static void store_pair_bits(uint8_t* p, const block luma, const block cbcr) {
    const __m256i bits = _mm256_set1_epi16(0x00c0);
    constexpr int of_chroma = cr_as_cb ? (1 << 4 | 1 << 8) : (1 << 4 | 1 << 8 << 16);
    const __m256i y = _mm256_madd_epi16(_mm256_and_si256(luma.v, bits), _mm256_set1_epi32(1 << 2 | 1 << 6 << 16));
    const __m256i c = _mm256_madd_epi16(_mm256_and_si256(cbcr.v, bits), _mm256_set1_epi32(of_chroma));
    const __m256i second_bytes = _mm256_shuffle_epi8(
        _mm256_or_si256(y, c), twice(_mm_setr_epi8(1, 5, 9, 13, 1, 5, 9, 13, 1, 5, 9, 13, 1, 5, 9, 13)));
    const __m128i of_all =
        _mm_unpacklo_epi32(_mm256_castsi256_si128(second_bytes), _mm256_extracti128_si256(second_bytes, 1));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), of_all);
  }
  // multiplier * x = 256 * x + rest * x; 256 * x is added after the shift.
  template <int rest, int offset>
  MORVANE_INLINE static __m256i linear_words(const __m256i x) {
    const __m256i sum = _mm256_add_epi16(_mm256_mullo_epi16(x, _mm256_set1_epi16(rest)), _mm256_set1_epi16(offset));
    return _mm256_add_epi16(x, _mm256_srai_epi16(sum, 8));
  }
  template <int multiplier, int offset>
  MORVANE_INLINE static block linear(const block b) {
    constexpr int rest = multiplier - 256;
    static_assert(offset + 255 * negative(rest) >= -32768 && offset + 255 * positive(rest) <= 32767);
    const __m256i zero = _mm256_setzero_si256();
    return {_mm256_packus_epi16(linear_words<rest, offset>(_mm256_unpacklo_epi8(b.v, zero)),
                                linear_words<rest, offset>(_mm256_unpackhi_epi8(b.v, zero)))};
  }
  // With x in the upper byte of a word and `low` in the lower one, the upper half of the product with the multiplier is
  // (multiplier * x + rest) >> 8, where offset = rest - 256 * below.
  template <int multiplier, int offset>
  MORVANE_INLINE static block linear_of_odd_bytes(const block a, const block b) {
    constexpr int below = (255 - offset) / 256;
    constexpr int rest = offset + 256 * below;
    constexpr int low = (256 * rest + multiplier - 1) / multiplier;
    static_assert(offset < 0 && low <= 255 && low * multiplier / 256 == rest &&
                  (multiplier * 255 + rest) / 256 <= 32767);
    const __m256i upper = _mm256_set1_epi16(-256);
    const __m256i lowest = _mm256_set1_epi16(low);
    const __m256i factor = _mm256_set1_epi16(multiplier);
    const __m256i a_product = _mm256_mulhi_epu16(_mm256_or_si256(_mm256_and_si256(a.v, upper), lowest), factor);
    const __m256i b_product = _mm256_mulhi_epu16(_mm256_or_si256(_mm256_and_si256(b.v, upper), lowest), factor);
    const __m256i lowered = _mm256_set1_epi16(below);
    return {exchange_middle(
        _mm256_packus_epi16(_mm256_subs_epu16(a_product, lowered), _mm256_subs_epu16(b_product, lowered)))};
  }
  // The samples are lowered by 32768 to be signed, and the offset, divided by 4096, is the weight of a constant 4096.
  template <int multiplier, int offset, int bits>
  MORVANE_INLINE static block linear_words(const block b) {
    constexpr int lifted = offset + 32768 * multiplier;
    static_assert(multiplier <= 32767 && lifted % 4096 == 0 && lifted / 4096 >= 0 && lifted / 4096 <= 32767);
    const __m256i x = _mm256_xor_si256(b.v, _mm256_set1_epi16(-32768));
    const __m256i constant = _mm256_set1_epi16(4096);
    const __m256i weights = _mm256_set1_epi32(multiplier | lifted / 4096 * 65536);
    const __m256i lo = _mm256_srai_epi32(_mm256_madd_epi16(_mm256_unpacklo_epi16(x, constant), weights), bits);
    const __m256i hi = _mm256_srai_epi32(_mm256_madd_epi16(_mm256_unpackhi_epi16(x, constant), weights), bits);
    return {_mm256_packus_epi32(lo, hi)};
  }
  MORVANE_INLINE static block without_first(const block b, const size_t count) {
    const __m256i place = _mm256_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
                                           22, 23, 24, 25, 26, 27, 28, 29, 30, 31);
    return {_mm256_andnot_si256(_mm256_cmpgt_epi8(_mm256_set1_epi8(static_cast<char>(count)), place), b.v)};
  }
  // The sum of |a - b| over all bytes, added to four sums of 64 bits.
  struct sums {
    __m256i v;
  };
  MORVANE_INLINE static sums no_sum() { return {_mm256_setzero_si256()}; }
  MORVANE_INLINE static sums add_differences(const sums s, const block a, const block b) {
    return {_mm256_add_epi64(s.v, _mm256_sad_epu8(a.v, b.v))};
  }
  MORVANE_INLINE static uint64_t total(const sums s) {
    const __m128i two = _mm_add_epi64(_mm256_castsi256_si128(s.v), _mm256_extracti128_si256(s.v, 1));
    return static_cast<uint64_t>(_mm_cvtsi128_si64(two)) + static_cast<uint64_t>(_mm_extract_epi64(two, 1));
  }
  MORVANE_INLINE static bool fourth_bytes_are_255(const block b) {
    const __m256i others_set = _mm256_or_si256(b.v, _mm256_set1_epi32(0x00ffffff));
    return _mm256_movemask_epi8(_mm256_cmpeq_epi8(others_set, _mm256_set1_epi8(-1))) == -1;
  }

  // Eight samples of ten bits, from `sample` on, begin in this 32-bit word of a run of 32; the 16 bytes from it on hold
  // them all, and none beyond the run.
  MORVANE_INLINE static constexpr int word_of_10(const int sample) { return sample / 3 < 28 ? sample / 3 : 28; }
  // The two bytes that the upper bits of sample + k lie in, as indices for both bytes of a word.
  MORVANE_INLINE static constexpr short bytes_of_10(const int sample, const int k) {
    const int first = ((sample + k) / 3 - word_of_10(sample)) * 4 + (sample + k) % 3;
    return static_cast<short>(first | (first + 1) << 8);
  }
  // The factor that moves them to the upper byte of the word.
  MORVANE_INLINE static constexpr short lift_of_10(const int sample, const int k) {
    return static_cast<short>(64 >> 2 * ((sample + k) % 3));
  }
  template <int s>
  MORVANE_INLINE static __m128i bytes_of_10() {
    return _mm_setr_epi16(bytes_of_10(s, 0), bytes_of_10(s, 1), bytes_of_10(s, 2), bytes_of_10(s, 3), bytes_of_10(s, 4),
                          bytes_of_10(s, 5), bytes_of_10(s, 6), bytes_of_10(s, 7));
  }
  template <int s>
  MORVANE_INLINE static __m128i lift_of_10() {
    return _mm_setr_epi16(lift_of_10(s, 0), lift_of_10(s, 1), lift_of_10(s, 2), lift_of_10(s, 3), lift_of_10(s, 4),
                          lift_of_10(s, 5), lift_of_10(s, 6), lift_of_10(s, 7));
  }
  // Eight samples from `low` on in one half, and as many from `high` on in the other, a byte in each word.
  template <int low, int high>
  MORVANE_INLINE static __m256i upper_bytes_of_10(const uint8_t* p) {
    const __m256i words = load_halves(p + 4 * word_of_10(low), p + 4 * word_of_10(high));
    const __m256i ten_bits = _mm256_shuffle_epi8(words, _mm256_set_m128i(bytes_of_10<high>(), bytes_of_10<low>()));
    const __m256i lifted = _mm256_mullo_epi16(ten_bits, _mm256_set_m128i(lift_of_10<high>(), lift_of_10<low>()));
    return _mm256_srli_epi16(lifted, 8);
  }
  template <int first>
  MORVANE_INLINE static void store_32_of_10(uint8_t* p, const uint8_t* from) {
    store_256(p + first, _mm256_packus_epi16(upper_bytes_of_10<first, first + 16>(from),
                                             upper_bytes_of_10<first + 8, first + 24>(from)));
  }
  MORVANE_INLINE static void store_upper_bytes_of_10(uint8_t* p, const uint8_t* from) {
    store_32_of_10<0>(p, from);
    store_32_of_10<32>(p, from);
    store_32_of_10<64>(p, from);
  }

  MORVANE_INLINE static pixels load4(const uint8_t* p) {
    return {load_256(p), load_256(p + 32), load_256(p + 64), load_256(p + 96)};
  }
  // Eight pixels 0 to 7 as words ab and cd of their bytes: within each half  ab0 ab1 ab2 ab3 cd0 cd1 cd2 cd3.
  MORVANE_INLINE static weighable gather_words(const __m256i q01, const __m256i q23, const __m256i q45,
                                               const __m256i q67) {
    return {{_mm256_unpacklo_epi64(q01, q23), _mm256_unpacklo_epi64(q45, q67)},
            {_mm256_unpackhi_epi64(q01, q23), _mm256_unpackhi_epi64(q45, q67)}};
  }
  MORVANE_INLINE static __m256i words_of_four(const uint8_t* p) {
    return _mm256_shuffle_epi8(load_256(p), twice(_mm_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15)));
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
    return _mm256_shuffle_epi8(load_halves(low, high), twice(words_of_three<skipped>()));
  }
  // Pixels 0 to 7 at p, which is read from four bytes before on.
  MORVANE_INLINE static __m256i words_of_three_before(const uint8_t* p) {
    return _mm256_shuffle_epi8(load_256(p - 4), _mm256_set_m128i(words_of_three<0>(), words_of_three<4>()));
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
  // The weights of one pixel as four signed bytes.
  static constexpr uint32_t packed(const line::weights w) {
    return (static_cast<uint32_t>(w.first) & 255) | (static_cast<uint32_t>(w.second) & 255) << 8 |
           (static_cast<uint32_t>(w.third) & 255) << 16 | (static_cast<uint32_t>(w.fourth) & 255) << 24;
  }
  static constexpr bool sum_fits(const int a, const int b) {
    return a >= -128 && a <= 127 && b >= -128 && b <= 127 && 255 * (positive(a) + positive(b)) <= 32767 &&
           255 * (negative(a) + negative(b)) >= -32768;
  }
  static constexpr bool pairs_fit(const line::weights w) {
    return sum_fits(w.first, w.second) && sum_fits(w.third, w.fourth);
  }
  // Weights of the bytes of two words, which alternate.
  MORVANE_INLINE static __m256i alternate(const int low, const int high, const int next_low, const int next_high) {
    return _mm256_set1_epi32((low & 255) | (high & 255) << 8 | (next_low & 255) << 16 | next_high * (1 << 24));
  }
  template <line::weights even, line::weights odd = even>
  MORVANE_INLINE static words weigh(const weighable& p) {
    static_assert(pairs_fit(even) && pairs_fit(odd), "pair sums saturate at 16 bits");
    constexpr line::weights e = even;
    constexpr line::weights o = odd;
    const __m256i w12 = alternate(e.first, e.second, o.first, o.second);
    const __m256i w34 = alternate(e.third, e.fourth, o.third, o.fourth);
    return {_mm256_add_epi16(_mm256_maddubs_epi16(p.first_and_second.lo, w12),
                             _mm256_maddubs_epi16(p.third_and_fourth.lo, w34)),
            _mm256_add_epi16(_mm256_maddubs_epi16(p.first_and_second.hi, w12),
                             _mm256_maddubs_epi16(p.third_and_fourth.hi, w34))};
  }

  MORVANE_INLINE static words fourth_words(const weighable& p) { return high_bytes(p.third_and_fourth); }
  MORVANE_INLINE static bytes fourth(const weighable& p) { return narrow<8>(p.third_and_fourth); }
  // The upper half of a signed product is the product >> 16; of twice the product it is the product >> 15.
  template <int bits, bool is_unsigned>
  MORVANE_INLINE static bytes scale_by_fourth(const words sum, const weighable& p) {
    static_assert(bits == 15 || bits == 16);
    const words a = shift_left<16 - bits>(fourth_words(p));
    const __m256i lo = _mm256_mulhi_epi16(sum.lo, a.lo);
    const __m256i hi = _mm256_mulhi_epi16(sum.hi, a.hi);
    if constexpr (is_unsigned) return {_mm256_packus_epi16(lo, hi)};
    return {_mm256_packs_epi16(lo, hi)};
  }

  // Double words 0 1 2 3 | 4 5 6 7 to 0 2 4 6 | 1 3 5 7 and back.
  MORVANE_INLINE static bytes load_bytes(const uint8_t* p) {
    return {_mm256_permutevar8x32_epi32(load_256(p), _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7))};
  }
  MORVANE_INLINE static void store_bytes(uint8_t* p, const bytes b) {
    store_256(p, _mm256_permutevar8x32_epi32(b.v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)));
  }
  MORVANE_INLINE static bytes and_bytes(const bytes a, const bytes b) { return {_mm256_and_si256(a.v, b.v)}; }
  MORVANE_INLINE static bool all_255(const bytes b) {
    return _mm256_movemask_epi8(_mm256_cmpeq_epi8(b.v, _mm256_set1_epi8(-1))) == -1;
  }
  MORVANE_INLINE static words widen(const bytes b) {
    const __m256i zero = _mm256_setzero_si256();
    return {_mm256_unpacklo_epi8(b.v, zero), _mm256_unpackhi_epi8(b.v, zero)};
  }
  MORVANE_INLINE static words widen_repeated(const bytes b) {
    return {_mm256_unpacklo_epi8(b.v, b.v), _mm256_unpackhi_epi8(b.v, b.v)};
  }
  template <int value>
  MORVANE_INLINE static words add(const words w) {
    const __m256i v = _mm256_set1_epi16(static_cast<short>(value));
    return {_mm256_add_epi16(w.lo, v), _mm256_add_epi16(w.hi, v)};
  }
  MORVANE_INLINE static words multiply(const words a, const words b) {
    return {_mm256_mullo_epi16(a.lo, b.lo), _mm256_mullo_epi16(a.hi, b.hi)};
  }
  MORVANE_INLINE static words low_bytes(const words w) {
    const __m256i mask = _mm256_set1_epi16(0x00ff);
    return {_mm256_and_si256(w.lo, mask), _mm256_and_si256(w.hi, mask)};
  }
  MORVANE_INLINE static words high_bytes(const words w) {
    return {_mm256_srli_epi16(w.lo, 8), _mm256_srli_epi16(w.hi, 8)};
  }
  template <int bits>
  MORVANE_INLINE static words shift_left(const words w) {
    if constexpr (bits == 0) return w;
    return {_mm256_slli_epi16(w.lo, bits), _mm256_slli_epi16(w.hi, bits)};
  }
  MORVANE_INLINE static words upper_bytes(const words low, const words high) {
    return {upper_bytes(high.lo, low.lo), upper_bytes(high.hi, low.hi)};
  }
  template <int low, int high>
  MORVANE_INLINE static words add_to_bytes(const words w) {
    const __m256i both = _mm256_set1_epi16(static_cast<short>(low | high * 256));
    return {_mm256_add_epi8(w.lo, both), _mm256_add_epi8(w.hi, both)};
  }
  MORVANE_INLINE static words load_words(const uint8_t* p) {
    return {exchange_middle(load_256(p)), exchange_middle(load_256(p + 32))};
  }
  MORVANE_INLINE static void store_words(uint8_t* p, const words w) {
    store_256(p, exchange_middle(w.lo));
    store_256(p + 32, exchange_middle(w.hi));
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
    return _mm256_shuffle_epi8(p, twice(_mm_setr_epi8(even, own, -1, -1, odd, 4 + own, -1, -1, 8 + even, 8 + own, -1,
                                                      -1, 8 + odd, 12 + own, -1, -1)));
  }
  template <int even, int odd, int own>
  MORVANE_INLINE static words pick_of_pairs(const pixels& p) {
    return {_mm256_packus_epi32(pick<even, odd, own>(p.q01), pick<even, odd, own>(p.q23)),
            _mm256_packus_epi32(pick<even, odd, own>(p.q45), pick<even, odd, own>(p.q67))};
  }

  template <int bits>
  MORVANE_INLINE static bytes narrow(const words w) {
    return {_mm256_packus_epi16(_mm256_srli_epi16(w.lo, bits), _mm256_srli_epi16(w.hi, bits))};
  }
  template <int value>
  MORVANE_INLINE static bytes add(const bytes b) {
    return {_mm256_add_epi8(b.v, _mm256_set1_epi8(static_cast<char>(value)))};
  }
  MORVANE_INLINE static bytes same(const uint8_t value) { return {_mm256_set1_epi8(static_cast<char>(value))}; }

  MORVANE_INLINE static void store_uyvy(uint8_t* p, const bytes chroma, const bytes luma) {
    store_256(p, exchange_middle(_mm256_unpacklo_epi8(chroma.v, luma.v)));
    store_256(p + 32, exchange_middle(_mm256_unpackhi_epi8(chroma.v, luma.v)));
  }

  MORVANE_INLINE static pairs load_uyvy(const uint8_t* p) { return {{load_256(p), load_256(p + 32)}}; }
  MORVANE_INLINE static __m256i upper_bytes(const __m256i luma, const __m256i chroma) {
    return _mm256_or_si256(_mm256_srli_epi16(chroma, 8), _mm256_and_si256(luma, _mm256_set1_epi16(-256)));
  }
  MORVANE_INLINE static pairs load_upper_bytes(const uint8_t* luma, const uint8_t* chroma) {
    return {{upper_bytes(load_256(luma), load_256(chroma)), upper_bytes(load_256(luma + 32), load_256(chroma + 32))}};
  }
  // Of Cb Y0 Cr Y1: both Y with Cb, or both Y with Cr. Each may be taken as 255 - Y, so that a sum whose weight of luma
  // is positive needs another constant, or none.
  template <bool with_cr, bool turned>
  MORVANE_INLINE static __m256i luma_and_chroma(const __m256i uyvy) {
    const __m256i from = turned ? _mm256_xor_si256(uyvy, _mm256_set1_epi16(-256)) : uyvy;
    if constexpr (with_cr)
      return _mm256_shuffle_epi8(from, twice(_mm_setr_epi8(1, 2, 3, 2, 5, 6, 7, 6, 9, 10, 11, 10, 13, 14, 15, 14)));
    else
      return _mm256_shuffle_epi8(from, twice(_mm_setr_epi8(1, 0, 3, 0, 5, 4, 7, 4, 9, 8, 11, 8, 13, 12, 15, 12)));
  }
  static constexpr bool stays_above(const int luma, const int chroma) {
    return 255 * (negative(luma) + negative(chroma)) >= -32768;
  }
  // Luma and chroma of each word, weighted and added.
  template <bool with_cr, bool turned, int luma, int chroma>
  MORVANE_INLINE static __m256i sum_bytes(const __m256i uyvy) {
    static_assert(luma >= -128 && luma <= 127 && chroma >= -128 && chroma <= 127);
    static_assert(stays_above(luma, chroma), "sums saturate at -32768");
    return _mm256_maddubs_epi16(luma_and_chroma<with_cr, turned>(uyvy),
                                _mm256_set1_epi16(static_cast<short>((luma & 255) | chroma * 256)));
  }
  template <line::ycbcr_weights w, bool turn>
  MORVANE_INLINE static __m256i weigh_words(const __m256i uyvy) {
    constexpr int cb = w.cb;
    constexpr int cr = w.cr;
    // Luma is weighed together with the greater of the weights of chroma, which keeps sums small.
    constexpr bool with_cr = cr != 0 && (cb == 0 || cr > cb);
    constexpr int with_luma = with_cr ? cr : cb;
    constexpr bool other_is_cr = !with_cr;
    constexpr int other = with_cr ? cb : cr;
    constexpr bool turned = turn && stays_above(-w.y, with_luma);
    constexpr int y = turned ? -w.y : w.y;
    constexpr int constant = turned ? w.constant + 255 * w.y : w.constant;
    __m256i sum = sum_bytes<with_cr, turned, y, with_luma>(uyvy);
    if constexpr (other != 0) sum = _mm256_add_epi16(sum, sum_bytes<other_is_cr, turned, 0, other>(uyvy));
    if constexpr (constant == 0) return sum;
    return _mm256_add_epi16(sum, _mm256_set1_epi16(static_cast<short>(constant)));
  }
  // The weighted sum and constant, modulo 65536. With turn, luma is taken as 255 - Y where that fits, because the whole
  // then needs no constant.
  template <line::ycbcr_weights w, bool turn>
  MORVANE_INLINE static pair_words weigh(const pairs& p) {
    return {weigh_words<w, turn>(p.uyvy.lo), weigh_words<w, turn>(p.uyvy.hi)};
  }
  // The same, but 0 where the sum is negative: the greatest sum less what 255 - Y and chroma take off it. Both words
  // have a share of luma, such that either stays within 16 bits.
  template <line::ycbcr_weights w>
  MORVANE_INLINE static __m256i weigh_words_at_least_zero(const __m256i uyvy) {
    constexpr int greatest = w.constant + 255 * w.y;
    constexpr int with_cr = w.y < 128 + w.cr ? w.y : 128 + w.cr;
    constexpr int with_cb = w.y - with_cr;
    const __m256i off =
        _mm256_add_epi16(sum_bytes<false, true, with_cb, -w.cb>(uyvy), sum_bytes<true, true, with_cr, -w.cr>(uyvy));
    return _mm256_subs_epu16(_mm256_set1_epi16(static_cast<short>(greatest)), off);
  }
  template <line::ycbcr_weights w>
  MORVANE_INLINE static pair_words weigh_at_least_zero(const pairs& p) {
    return {weigh_words_at_least_zero<w>(p.uyvy.lo), weigh_words_at_least_zero<w>(p.uyvy.hi)};
  }
  template <int bits, bool is_unsigned>
  MORVANE_INLINE static __m256i shift_right(const __m256i w) {
    if constexpr (is_unsigned) return _mm256_srli_epi16(w, bits);
    return _mm256_srai_epi16(w, bits);
  }
  template <int bits, bool is_unsigned>
  MORVANE_INLINE static pair_words add_shifted(const pair_words a, const pair_words b) {
    return {_mm256_add_epi16(a.lo, shift_right<bits, is_unsigned>(b.lo)),
            _mm256_add_epi16(a.hi, shift_right<bits, is_unsigned>(b.hi))};
  }
  template <int bits, bool is_unsigned>
  MORVANE_INLINE static pair_bytes narrow_saturating(const pair_words w) {
    return {_mm256_packus_epi16(shift_right<bits, is_unsigned>(w.lo), shift_right<bits, is_unsigned>(w.hi))};
  }

  template <line::ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_bytes clamped_sum(const pairs& p) {
    constexpr line::short_sum s = line::shorten(w, bits);
    if constexpr (line::is_exact(s)) {
      return narrow_saturating<s.bits, false>(weigh<s.weights, false>(p));
    } else if constexpr (line::stops_at_zero(s)) {
      return narrow_saturating<s.bits, true>(weigh_at_least_zero<s.weights>(p));
    } else {
      constexpr line::split_weights parts = line::split(w, bits);
      constexpr bool turn = line::is_of_turned_luma(parts);
      constexpr bool is_unsigned = line::fits_unsigned(parts.rest);
      static_assert(is_unsigned || line::fits_signed(parts.rest));
      return narrow_saturating<0, false>(
          add_shifted<bits, is_unsigned>(weigh<parts.whole, turn>(p), weigh<parts.rest, turn>(p)));
    }
  }

  MORVANE_INLINE static pair_bytes same_of_pairs(const uint8_t value) { return {same(value).v}; }
  MORVANE_INLINE static pair_bytes load_pair_bytes(const uint8_t* p) { return {exchange_middle(load_256(p))}; }
  MORVANE_INLINE static void store_pair_bytes(uint8_t* p, const pair_bytes b) { store_256(p, exchange_middle(b.v)); }

  // Four quads of pixels of each half, in the order of the bytes.
  struct interleaved {
    __m256i first, second, third, fourth;
  };
  MORVANE_INLINE static interleaved interleave4(const __m256i c0, const __m256i c1, const __m256i c2,
                                                const __m256i c3) {
    const __m256i lo01 = _mm256_unpacklo_epi8(c0, c1);
    const __m256i lo23 = _mm256_unpacklo_epi8(c2, c3);
    const __m256i hi01 = _mm256_unpackhi_epi8(c0, c1);
    const __m256i hi23 = _mm256_unpackhi_epi8(c2, c3);
    return {_mm256_unpacklo_epi16(lo01, lo23), _mm256_unpackhi_epi16(lo01, lo23), _mm256_unpacklo_epi16(hi01, hi23),
            _mm256_unpackhi_epi16(hi01, hi23)};
  }
  MORVANE_INLINE static void store4(uint8_t* p, const bytes c0, const bytes c1, const bytes c2, const bytes c3) {
    const interleaved i = interleave4(c0.v, c1.v, c2.v, c3.v);
    store_256(p, i.first);
    store_256(p + 32, i.second);
    store_256(p + 64, i.third);
    store_256(p + 96, i.fourth);
  }
  MORVANE_INLINE static __m128i low_half(const __m256i v) { return _mm256_castsi256_si128(v); }
  MORVANE_INLINE static __m128i high_half(const __m256i v) { return _mm256_extracti128_si256(v, 1); }
  MORVANE_INLINE static void store_128(uint8_t* p, const __m128i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
  }
  MORVANE_INLINE static void store_halves(uint8_t* low, uint8_t* high, const __m256i v) {
    store_128(low, low_half(v));
    store_128(high, high_half(v));
  }
  MORVANE_INLINE static void store4(uint8_t* p, const pair_bytes c0, const pair_bytes c1, const pair_bytes c2,
                                    const pair_bytes c3) {
    const interleaved i = interleave4(c0.v, c1.v, c2.v, c3.v);
    store_halves(p, p + 32, i.first);
    store_halves(p + 16, p + 48, i.second);
    store_halves(p + 64, p + 96, i.third);
    store_halves(p + 80, p + 112, i.fourth);
  }
  // Bits 8 to 15 of a sum are byte 1 already, and 128 is added by turning its highest bit.
  //
  //   sum ^ 32768   -- C  --  --        words of sum and pixel    -- C  -- A
  //   pixel         -- -- --  A         with bytes of before      b0 C  b2 A
  template <bool keeps_fourth>
  MORVANE_INLINE static void replace_second_and_fourth(uint8_t* p, const __m256i pixel, const __m256i weights) {
    const __m256i second = _mm256_xor_si256(sum_pixels(pixel, weights), _mm256_set1_epi32(0x8000));
    const __m256i fourth = keeps_fourth ? pixel : _mm256_set1_epi8(-1);
    const __m256i replaced = _mm256_blend_epi16(second, fourth, 0b10101010);
    const __m256i odd_bytes = _mm256_set1_epi16(-256);
    store_256(p, _mm256_blendv_epi8(load_256(p), replaced, odd_bytes));
  }
  template <line::weights w, bool keeps_fourth>
  MORVANE_INLINE static void replace_second_and_fourth(uint8_t* p, const pixels& from) {
    static_assert(pairs_fit(w));
    constexpr uint32_t of_pixel = packed(w);
    const __m256i weights = _mm256_set1_epi32(static_cast<int>(of_pixel));
    replace_second_and_fourth<keeps_fourth>(p, from.q01, weights);
    replace_second_and_fourth<keeps_fourth>(p + 32, from.q23, weights);
    replace_second_and_fourth<keeps_fourth>(p + 64, from.q45, weights);
    replace_second_and_fourth<keeps_fourth>(p + 96, from.q67, weights);
  }

  // The same 16 bytes, four pairs, in both halves: two of them become four pixels in each.
  template <bool is_crcby>
  MORVANE_INLINE static __m256i pixels_of_pairs(const uint8_t* p) {
    const __m256i pairs = twice(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
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
  MORVANE_INLINE static void store_444(uint8_t* p, const uint8_t* uyvy, const uint8_t* alpha) {
    for (int i = 0; i < lanes; i += 8)
      store_256(p + 4 * i, _mm256_or_si256(pixels_of_pairs<is_crcby>(uyvy + 2 * i), to_fourth_bytes(alpha + i)));
  }
  template <bool is_crcby>
  MORVANE_INLINE static void store_444(uint8_t* p, const uint8_t* uyvy) {
    const __m256i opaque = _mm256_set1_epi32(static_cast<int>(0xff000000));
    for (int i = 0; i < lanes; i += 8)
      store_256(p + 4 * i, _mm256_or_si256(pixels_of_pairs<is_crcby>(uyvy + 2 * i), opaque));
  }
  MORVANE_INLINE static void store_12(uint8_t* p, const __m128i v) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
    const int last = _mm_extract_epi32(v, 2);
    __builtin_memcpy(p + 8, &last, 4);
  }
  // The twelve bytes of a quad are stored with four zeros behind, which the next quad overwrites. Behind the last quad
  // nothing may be written: it has its zeros before it, on the place of the last but one, which is stored after it and
  // without any.
  MORVANE_INLINE static void store3(uint8_t* p, const pair_bytes c0, const pair_bytes c1, const pair_bytes c2) {
    const interleaved i = interleave4(c0.v, c1.v, c2.v, c2.v);
    const __m128i zeros_behind = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    const __m128i zeros_before = _mm_setr_epi8(-1, -1, -1, -1, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14);
    const __m256i q02 = _mm256_shuffle_epi8(i.first, twice(zeros_behind));
    const __m256i q13 = _mm256_shuffle_epi8(i.second, twice(zeros_behind));
    const __m256i q46 = _mm256_shuffle_epi8(i.third, twice(zeros_behind));
    const __m256i q57 = _mm256_shuffle_epi8(i.fourth, _mm256_set_m128i(zeros_before, zeros_behind));
    store_128(p, low_half(q02));
    store_128(p + 12, low_half(q13));
    store_128(p + 24, high_half(q02));
    store_128(p + 36, high_half(q13));
    store_128(p + 48, low_half(q46));
    store_128(p + 60, low_half(q57));
    store_128(p + 80, high_half(q57));
    store_12(p + 72, high_half(q46));
  }

  template <int bottom>
  MORVANE_INLINE static floats load_words_above(const uint8_t* p) {
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i above = _mm_subs_epu16(words, _mm_set1_epi16(bottom));
    return {_mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(above))};
  }
  MORVANE_INLINE static floats multiply(const floats f, const float factor) {
    return {_mm256_mul_ps(f.v, _mm256_set1_ps(factor))};
  }
  MORVANE_INLINE static floats add(const floats a, const floats b) { return {_mm256_add_ps(a.v, b.v)}; }
  MORVANE_INLINE static floats subtract(const floats f, const float subtrahend) {
    return {_mm256_sub_ps(f.v, _mm256_set1_ps(subtrahend))};
  }
  MORVANE_INLINE static floats at_most(const floats f, const float limit) {
    return {_mm256_min_ps(f.v, _mm256_set1_ps(limit))};
  }
  //   chroma   c0 c0' c1 c1' | c2 c2' c3 c3'     after the exchange, a pair of floats each
  //   ya.lo    y0 a0  y1 a1  | y4 a4  y5 a5
  //   ya.hi    y2 a2  y3 a3  | y6 a6  y7 a7
  MORVANE_INLINE static void store_vuya(uint8_t* p, const floats cbcr, const floats luma, const floats alpha) {
    const __m256d chroma = _mm256_castps_pd(_mm256_permute_ps(cbcr.v, _MM_SHUFFLE(2, 3, 0, 1)));
    const __m256d ya_lo = _mm256_castps_pd(_mm256_unpacklo_ps(luma.v, alpha.v));
    const __m256d ya_hi = _mm256_castps_pd(_mm256_unpackhi_ps(luma.v, alpha.v));
    const __m256d pixels_04 = _mm256_shuffle_pd(chroma, ya_lo, 0b0000);
    const __m256d pixels_15 = _mm256_shuffle_pd(chroma, ya_lo, 0b1010);
    const __m256d pixels_26 = _mm256_shuffle_pd(chroma, ya_hi, 0b0101);
    const __m256d pixels_37 = _mm256_shuffle_pd(chroma, ya_hi, 0b1111);
    store_halves(p, p + 64, _mm256_castpd_si256(pixels_04));
    store_halves(p + 16, p + 80, _mm256_castpd_si256(pixels_15));
    store_halves(p + 32, p + 96, _mm256_castpd_si256(pixels_26));
    store_halves(p + 48, p + 112, _mm256_castpd_si256(pixels_37));
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
