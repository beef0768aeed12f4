// Blocks on AVX2: runs of 32 bytes as they stand in memory. operations.h says what each operation does.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "inline.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx2_blocks {
  static constexpr int block_bytes = 32;
  static constexpr int cache_line = 64;

  struct block {
    static constexpr size_t stored_bytes = 32;
    __m256i v;
  };
  struct two_blocks {
    static constexpr size_t stored_bytes = 64;
    block first, second;
  };
  struct three_blocks {
    static constexpr size_t stored_bytes = 96;
    block first, second, third;
  };
  struct four_blocks {
    static constexpr size_t stored_bytes = 128;
    block first, second, third, fourth;
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
  MORVANE_INLINE static __m128i low_half(const __m256i v) { return _mm256_castsi256_si128(v); }
  MORVANE_INLINE static __m128i high_half(const __m256i v) { return _mm256_extracti128_si256(v, 1); }
  MORVANE_INLINE static void store_128(uint8_t* p, const __m128i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
  }
  MORVANE_INLINE static void store_halves(uint8_t* low, uint8_t* high, const __m256i v) {
    store_128(low, low_half(v));
    store_128(high, high_half(v));
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
  MORVANE_INLINE static void store(uint8_t* p, const two_blocks& b) {
    store(p, b.first);
    store(p + 32, b.second);
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_blocks& b) {
    store(p, b.first);
    store(p + 32, b.second);
    store(p + 64, b.third);
  }
  MORVANE_INLINE static void store(uint8_t* p, const four_blocks& b) {
    store(p, b.first);
    store(p + 32, b.second);
    store(p + 64, b.third);
    store(p + 96, b.fourth);
  }
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
  struct groups {
    static constexpr size_t stored_bytes = 40;
    block upper;
    __m128i lower;  // in the first eight bytes
  };
  // Sums of products move the bits of both words of a pair to the second byte of its double word: Y0 from bits 7 and 6
  // to 9 and 8, Cb to 11 and 10, Y1 to 13 and 12, Cr to 15 and 14.
  template <bool cr_as_cb>
  MORVANE_INLINE static groups join_groups(const block upper, const block luma, const block cbcr) {
    const __m256i bits = _mm256_set1_epi16(0x00c0);
    constexpr int of_chroma = cr_as_cb ? (1 << 4 | 1 << 8) : (1 << 4 | 1 << 8 << 16);
    const __m256i y = _mm256_madd_epi16(_mm256_and_si256(luma.v, bits), _mm256_set1_epi32(1 << 2 | 1 << 6 << 16));
    const __m256i c = _mm256_madd_epi16(_mm256_and_si256(cbcr.v, bits), _mm256_set1_epi32(of_chroma));
    const __m256i second_bytes = _mm256_shuffle_epi8(
        _mm256_or_si256(y, c), twice(_mm_setr_epi8(1, 5, 9, 13, 1, 5, 9, 13, 1, 5, 9, 13, 1, 5, 9, 13)));
    return {upper, _mm_unpacklo_epi32(_mm256_castsi256_si128(second_bytes), _mm256_extracti128_si256(second_bytes, 1))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const groups& g) {
    store(p, g.upper);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 32), g.lower);
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
  MORVANE_INLINE static sums add_differences(const sums s, const two_blocks& a, const two_blocks& b) {
    return add_differences(add_differences(s, a.first, b.first), a.second, b.second);
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
  MORVANE_INLINE static block block_of_10(const uint8_t* p) {
    return {_mm256_packus_epi16(upper_bytes_of_10<first, first + 16>(p), upper_bytes_of_10<first + 8, first + 24>(p))};
  }
  MORVANE_INLINE static three_blocks upper_bytes_of_10(const uint8_t* p) {
    return {block_of_10<0>(p), block_of_10<32>(p), block_of_10<64>(p)};
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
