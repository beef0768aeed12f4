// Blocks on AVX2: runs of 32 bytes as they stand in memory. operations.h says what each operation does.
#pragma once

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "x86.h"
#include "x86_intrinsics.h"
#include "ymm.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx2;

struct avx2_blocks : x86_vectors<ymm, avx2> {
  using x86_vectors<ymm, avx2>::store;

  MORVANE_INLINE static __m256i load_halves(const uint8_t* low, const uint8_t* high) {
    return _mm256_loadu2_m128i(reinterpret_cast<const __m128i*>(high), reinterpret_cast<const __m128i*>(low));
  }
  MORVANE_INLINE static __m128i low_half(const __m256i v) { return _mm256_castsi256_si128(v); }
  MORVANE_INLINE static __m128i high_half(const __m256i v) { return _mm256_extracti128_si256(v, 1); }
  MORVANE_INLINE static void store_128(uint8_t* p, const __m128i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
  }
  MORVANE_INLINE static void store_64(uint8_t* p, const __m128i v) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
  }
  MORVANE_INLINE static void store_halves(uint8_t* low, uint8_t* high, const __m256i v) {
    store_128(low, low_half(v));
    store_128(high, high_half(v));
  }
  // Repeats eight bytes four times.
  MORVANE_INLINE static __m256i load_four_times(const uint8_t* p) {
    return _mm256_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
  }
  // q0 q1 | q2 q3 to q0 q2 | q1 q3 and back, for quads of eight bytes.
  MORVANE_INLINE static __m256i exchange_middle(const __m256i v) {
    return _mm256_permute4x64_epi64(v, _MM_SHUFFLE(3, 1, 2, 0));
  }

  // What packing two registers leaves to memory order.
  MORVANE_INLINE static __m256i from_packing(const __m256i v) { return exchange_middle(v); }

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
  // Four pixels of three bytes in each half, after the bytes skipped.
  template <int skipped>
  MORVANE_INLINE static block fours_of_threes(const uint8_t* low, const uint8_t* high) {
    constexpr char s = skipped;
    return {_mm256_shuffle_epi8(load_halves(low, high),
                                ymm::repeat_lane(_mm_setr_epi8(s, s + 1, s + 2, -1, s + 3, s + 4, s + 5, -1, s + 6,
                                                               s + 7, s + 8, -1, s + 9, s + 10, s + 11, -1)))};
  }
  MORVANE_INLINE static two_blocks load_threes(const uint8_t* p) {
    return {fours_of_threes<0>(p, p + 12), fours_of_threes<4>(p + 20, p + 32)};
  }
  // Where four pixels of so many bytes, after the bytes skipped, have the bytes that `which` numbers.
  template <int bytes, int skipped>
  MORVANE_INLINE static __m256i twice_of_pixels(const uint32_t places, const __m128i which) {
    constexpr char a = skipped, b = a + bytes, c = b + bytes, d = c + bytes;
    const __m128i of_pixel = _mm_shuffle_epi8(_mm_set1_epi32(static_cast<int>(places)), which);
    return ymm::repeat_lane(_mm_add_epi8(of_pixel, _mm_setr_epi8(a, a, b, b, c, c, d, d, a, a, b, b, c, c, d, d)));
  }
  template <int bytes, int skipped>
  MORVANE_INLINE static two_blocks bytes_of_pixels(const __m256i v, const uint32_t places) {
    const __m128i first_and_second = _mm_setr_epi8(0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1);
    return {{_mm256_shuffle_epi8(v, twice_of_pixels<bytes, skipped>(places, first_and_second))},
            {_mm256_shuffle_epi8(v, twice_of_pixels<bytes, skipped>(places, _mm_set1_epi8(2)))}};
  }
  MORVANE_INLINE static three_blocks join_quads(const two_blocks& even, const two_blocks& odd) {
    return {{_mm256_unpacklo_epi64(even.first.v, odd.first.v)},
            {_mm256_unpackhi_epi64(even.first.v, odd.first.v)},
            {_mm256_unpacklo_epi64(even.second.v, odd.second.v)}};
  }
  // Quads of pixels 0 and 2 in one register, 1 and 3 in the other.
  MORVANE_INLINE static three_blocks load_bytes_of_fours(const uint8_t* p, const uint32_t places) {
    return join_quads(bytes_of_pixels<4, 0>(load_halves(p, p + 32), places),
                      bytes_of_pixels<4, 0>(load_halves(p + 16, p + 48), places));
  }
  MORVANE_INLINE static three_blocks load_bytes_of_threes(const uint8_t* p, const uint32_t places) {
    return join_quads(bytes_of_pixels<3, 0>(load_halves(p, p + 24), places),
                      bytes_of_pixels<3, 4>(load_halves(p + 8, p + 32), places));
  }
  MORVANE_INLINE static block dwords_before(const block before, const block b) {
    return {_mm256_alignr_epi8(b.v, _mm256_permute2x128_si256(before.v, b.v, 0x21), 12)};
  }
  // 24 bytes each, and eight of any value behind them.
  struct packed_threes {
    static constexpr size_t stored_bytes = 48;
    __m256i first, second;
  };
  MORVANE_INLINE static __m256i threes_of_fours(const block b) {
    const __m256i in_halves = _mm256_shuffle_epi8(
        b.v, ymm::repeat_lane(_mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1)));
    return _mm256_permutevar8x32_epi32(in_halves, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
  }
  MORVANE_INLINE static packed_threes threes(const two_blocks& fours) {
    return {threes_of_fours(fours.first), threes_of_fours(fours.second)};
  }
  MORVANE_INLINE static void store(uint8_t* p, const packed_threes& t) {
    ymm::store(p, t.first);
    store_128(p + 24, low_half(t.second));
    store_64(p + 40, high_half(t.second));
  }

  // 48 words in three registers, which hold eight of the first 24 in one half and eight of the others in the other one.
  // There the words of one component, every third, have all places modulo 8 once.
  //
  //   first of 0 1 2   0 . . 0 . . 0 .     second   . 0 . . 0 . . 0     third   . . 0 . . 0 . .
  static constexpr int places_0_3_6 = 0b01001001;
  static constexpr int places_1_4_7 = 0b10010010;
  static constexpr int places_2_5 = 0b00100100;

  template <int second, int third>
  MORVANE_INLINE static __m256i blend_three(const __m256i a, const __m256i b, const __m256i c) {
    return _mm256_blend_epi16(_mm256_blend_epi16(a, b, second), c, third);
  }
  MORVANE_INLINE static constexpr short word_at_place(const int place) {
    return static_cast<short>(place % 8 * 2 | (place % 8 * 2 + 1) << 8);
  }
  // Word k of a component is at the place 3 k + component modulo 8, and at a place the word 3 (place - component).
  template <int component>
  MORVANE_INLINE static block words_in_order(const __m256i v) {
    constexpr int c = component;
    return {_mm256_shuffle_epi8(
        v, ymm::repeat_lane(_mm_setr_epi16(word_at_place(c), word_at_place(3 + c), word_at_place(6 + c),
                                           word_at_place(9 + c), word_at_place(12 + c), word_at_place(15 + c),
                                           word_at_place(18 + c), word_at_place(21 + c))))};
  }
  template <int component>
  MORVANE_INLINE static __m256i words_at_places(const block b) {
    constexpr int c = 24 - 3 * component;
    return _mm256_shuffle_epi8(
        b.v, ymm::repeat_lane(_mm_setr_epi16(word_at_place(c), word_at_place(c + 3), word_at_place(c + 6),
                                             word_at_place(c + 9), word_at_place(c + 12), word_at_place(c + 15),
                                             word_at_place(c + 18), word_at_place(c + 21))));
  }
  MORVANE_INLINE static three_blocks deinterleave3_words(const block first, const block second, const block third) {
    const __m256i a = _mm256_permute2x128_si256(first.v, second.v, 0x30);
    const __m256i b = _mm256_permute2x128_si256(first.v, third.v, 0x21);
    const __m256i c = _mm256_permute2x128_si256(second.v, third.v, 0x30);
    return {words_in_order<0>(blend_three<places_1_4_7, places_2_5>(a, b, c)),
            words_in_order<1>(blend_three<places_2_5, places_0_3_6>(a, b, c)),
            words_in_order<2>(blend_three<places_0_3_6, places_1_4_7>(a, b, c))};
  }
  MORVANE_INLINE static three_blocks interleave3_words(const block first, const block second, const block third) {
    const __m256i a = words_at_places<0>(first);
    const __m256i b = words_at_places<1>(second);
    const __m256i c = words_at_places<2>(third);
    const __m256i words_0 = blend_three<places_1_4_7, places_2_5>(a, b, c);
    const __m256i words_8 = blend_three<places_2_5, places_0_3_6>(a, b, c);
    const __m256i words_16 = blend_three<places_0_3_6, places_1_4_7>(a, b, c);
    return {{_mm256_permute2x128_si256(words_0, words_8, 0x20)},
            {_mm256_permute2x128_si256(words_16, words_0, 0x30)},
            {_mm256_permute2x128_si256(words_8, words_16, 0x31)}};
  }

  // A group of v210 in each half.
  struct three_lines {
    struct six_words {
      static constexpr size_t stored_bytes = 24;
      __m256i v;
    } luma;
    struct lower_three_words {
      static constexpr size_t stored_bytes = 12;
      __m256i v;
    } cb;
    struct upper_three_words {
      static constexpr size_t stored_bytes = 12;
      __m256i v;
    } cr;
  };
  MORVANE_INLINE static __m256i tens_of(const block words, const __m128i places, const __m128i factors) {
    const __m256i samples = _mm256_shuffle_epi8(words.v, ymm::repeat_lane(places));
    return _mm256_and_si256(_mm256_mullo_epi16(samples, ymm::repeat_lane(factors)), ymm::repeat_word(0xffc0));
  }
  MORVANE_INLINE static three_lines split_v210(const block words) {
    const __m256i luma = tens_of(words, _mm_setr_epi8(1, 2, 4, 5, 6, 7, 9, 10, 12, 13, 14, 15, -1, -1, -1, -1),
                                 _mm_setr_epi16(16, 64, 4, 16, 64, 4, 0, 0));
    const __m256i chroma = tens_of(words, _mm_setr_epi8(0, 1, 5, 6, 10, 11, -1, -1, 2, 3, 8, 9, 13, 14, -1, -1),
                                   _mm_setr_epi16(64, 16, 4, 0, 4, 64, 16, 0));
    return {{luma}, {chroma}, {chroma}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::six_words& w) { store_halves(p, p + 12, w.v); }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::lower_three_words& w) {
    store_64(p, low_half(w.v));
    store_64(p + 6, high_half(w.v));
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::upper_three_words& w) {
    const __m256i lower = _mm256_unpackhi_epi64(w.v, w.v);
    store_64(p, low_half(lower));
    store_64(p + 6, high_half(lower));
  }
  MORVANE_INLINE static __m128i load_64(const uint8_t* p) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
  }
  MORVANE_INLINE static __m128i load_two_64(const uint8_t* low, const uint8_t* high) {
    return _mm_unpacklo_epi64(load_64(low), load_64(high));
  }
  // In each half six words of luma, and three of Cb and of Cr with one of any value behind each.
  MORVANE_INLINE static two_blocks load_for_v210(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    return {{load_halves(luma, luma + 12)}, {_mm256_set_m128i(load_two_64(cb + 6, cr + 6), load_two_64(cb, cr))}};
  }
  // Samples as in load_for_v210, or with chroma at other places.
  MORVANE_INLINE static block join_v210(const two_blocks& lines, const __m128i first_two_of_chroma,
                                        const __m128i third_of_chroma) {
    const auto places = [&](const __m128i of_luma, const __m128i of_chroma) __attribute__((always_inline)) {
      return _mm256_or_si256(_mm256_shuffle_epi8(lines.first.v, ymm::repeat_lane(of_luma)),
                             _mm256_shuffle_epi8(lines.second.v, ymm::repeat_lane(of_chroma)));
    };
    const __m256i first_two =
        places(_mm_setr_epi8(-1, -1, 0, 1, 2, 3, -1, -1, -1, -1, 6, 7, 8, 9, -1, -1), first_two_of_chroma);
    const __m256i third =
        places(_mm_setr_epi8(-1, -1, -1, -1, -1, -1, 4, 5, -1, -1, -1, -1, -1, -1, 10, 11), third_of_chroma);
    return {
        _mm256_or_si256(_mm256_madd_epi16(first_two, _mm256_set1_epi32(1 | 1024 << 16)), _mm256_slli_epi32(third, 4))};
  }
  MORVANE_INLINE static block join_v210(const two_blocks& lines) {
    return join_v210(lines, _mm_setr_epi8(0, 1, -1, -1, -1, -1, 2, 3, 10, 11, -1, -1, -1, -1, 12, 13),
                     _mm_setr_epi8(-1, -1, 8, 9, -1, -1, -1, -1, -1, -1, 4, 5, -1, -1, -1, -1));
  }
  // Two groups of five bytes in each half. Word i of a group is its bytes i and i + 1, in which the sample lies 2 i
  // bits below the top.
  MORVANE_INLINE static block load_tens_of_fives(const uint8_t* p) {
    const __m256i words = _mm256_shuffle_epi8(
        load_halves(p, p + 4), _mm256_setr_epi8(1, 0, 2, 1, 3, 2, 4, 3, 6, 5, 7, 6, 8, 7, 9, 8, 7, 6, 8, 7, 9, 8, 10, 9,
                                                12, 11, 13, 12, 14, 13, 15, 14));
    const __m256i at_top = _mm256_mullo_epi16(words, ymm::repeat_lane(_mm_setr_epi16(1, 4, 16, 64, 1, 4, 16, 64)));
    return {_mm256_and_si256(at_top, ymm::repeat_word(0xffc0))};
  }
  struct groups_of_five {
    static constexpr size_t stored_bytes = 20;
    __m256i v;
  };
  MORVANE_INLINE static groups_of_five fives_of_tens(const block samples) {
    const __m256i words = _mm256_mullo_epi16(_mm256_srli_epi16(samples.v, 6),
                                             ymm::repeat_lane(_mm_setr_epi16(64, 16, 4, 1, 64, 16, 4, 1)));
    const __m256i upper = _mm256_shuffle_epi8(
        words, ymm::repeat_lane(_mm_setr_epi8(1, 3, 5, 7, 6, 9, 11, 13, 15, 14, -1, -1, -1, -1, -1, -1)));
    const __m256i lower = _mm256_shuffle_epi8(
        words, ymm::repeat_lane(_mm_setr_epi8(-1, 0, 2, 4, -1, -1, 8, 10, 12, -1, -1, -1, -1, -1, -1, -1)));
    return {_mm256_or_si256(upper, lower)};
  }
  // What is stored behind the first two groups is overwritten by the others.
  MORVANE_INLINE static void store(uint8_t* p, const groups_of_five& g) {
    store_128(p, low_half(g.v));
    store_64(p + 10, high_half(g.v));
    const auto last = static_cast<uint16_t>(_mm_extract_epi16(high_half(g.v), 4));
    __builtin_memcpy(p + 18, &last, 2);
  }
  MORVANE_INLINE static block load_upper_of_groups(const uint8_t* p) { return load(p); }
  // A byte of a pair, in two bits each Cr Y1 Cb Y0 from the top, in both words of its double word, and what lifts the
  // two bits of a word's sample to bits 7 and 6: the first of luma by 6, the second by 2.
  MORVANE_INLINE static two_blocks load_lower_of_groups(const uint8_t* p) {
    const __m256i in_words = _mm256_shuffle_epi8(
        load_four_times(p + 32), _mm256_setr_epi8(0, -1, 0, -1, 1, -1, 1, -1, 2, -1, 2, -1, 3, -1, 3, -1, 4, -1, 4, -1,
                                                  5, -1, 5, -1, 6, -1, 6, -1, 7, -1, 7, -1));
    const __m256i bits = _mm256_set1_epi16(0x00c0);
    const __m256i luma = _mm256_mullo_epi16(in_words, _mm256_set1_epi32(1 << 6 | 1 << 2 << 16));
    const __m256i chroma = _mm256_mullo_epi16(in_words, _mm256_set1_epi32(1 << 4 | 1 << 16));
    return {{_mm256_and_si256(luma, bits)}, {_mm256_and_si256(chroma, bits)}};
  }
  // The lower bits are joined when they are stored: a compiler that does all at once reads the words twice instead of
  // keeping them.
  template <bool cr_as_cb>
  struct groups {
    static constexpr size_t stored_bytes = 40;
    block upper, luma, cbcr;
  };
  template <bool cr_as_cb>
  MORVANE_INLINE static groups<cr_as_cb> join_groups(const block upper, const block luma, const block cbcr) {
    return {upper, luma, cbcr};
  }
  template <bool cr_as_cb>
  MORVANE_INLINE static void store(uint8_t* p, const groups<cr_as_cb>& g) {
    store(p, g.upper);
    const __m256i second_bytes =
        _mm256_shuffle_epi8(bits_of_pairs<cr_as_cb>(g.luma.v, g.cbcr.v),
                            ymm::repeat_lane(_mm_setr_epi8(1, 5, 9, 13, 1, 5, 9, 13, 1, 5, 9, 13, 1, 5, 9, 13)));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 32),
                     _mm_unpacklo_epi32(low_half(second_bytes), high_half(second_bytes)));
  }
  MORVANE_INLINE static block without_first(const block b, const size_t count) {
    const __m256i place = _mm256_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
                                           22, 23, 24, 25, 26, 27, 28, 29, 30, 31);
    return {_mm256_andnot_si256(_mm256_cmpgt_epi8(_mm256_set1_epi8(static_cast<char>(count)), place), b.v)};
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
  MORVANE_INLINE static block block_of_10(const uint8_t* p) {
    return {_mm256_packus_epi16(upper_bytes_of_10<first, first + 16>(p), upper_bytes_of_10<first + 8, first + 24>(p))};
  }
  MORVANE_INLINE static three_blocks upper_bytes_of_10(const uint8_t* p) {
    return {block_of_10<0>(p), block_of_10<32>(p), block_of_10<64>(p)};
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
