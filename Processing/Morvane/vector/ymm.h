// Registers of 256 bits, as the operations of x86.h take them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "x86_intrinsics.h"

namespace Processing::Morvane::format_conversion::vector {

struct ymm {
  using type = __m256i;
  using floats = __m256;
  static constexpr int bytes = 32;

  MORVANE_INLINE static type load(const uint8_t* p) { return _mm256_loadu_si256(reinterpret_cast<const type*>(p)); }
  MORVANE_INLINE static void store(uint8_t* p, const type v) { _mm256_storeu_si256(reinterpret_cast<type*>(p), v); }
  MORVANE_INLINE static void stream(uint8_t* p, const type v) { _mm256_stream_si256(reinterpret_cast<type*>(p), v); }
  MORVANE_INLINE static type zero() { return _mm256_setzero_si256(); }
  MORVANE_INLINE static type repeat_byte(const int value) { return _mm256_set1_epi8(static_cast<char>(value)); }
  MORVANE_INLINE static type repeat_word(const int value) { return _mm256_set1_epi16(static_cast<short>(value)); }
  MORVANE_INLINE static type repeat_dword(const int value) { return _mm256_set1_epi32(value); }
  // The same 16 bytes in every lane.
  MORVANE_INLINE static type repeat_lane(const __m128i v) { return _mm256_broadcastsi128_si256(v); }

  MORVANE_INLINE static type bit_and(const type a, const type b) { return _mm256_and_si256(a, b); }
  MORVANE_INLINE static type bit_or(const type a, const type b) { return _mm256_or_si256(a, b); }
  MORVANE_INLINE static type invert(const type v) { return _mm256_xor_si256(v, _mm256_set1_epi16(-1)); }
  MORVANE_INLINE static type bit_xor(const type a, const type b) { return _mm256_xor_si256(a, b); }
  MORVANE_INLINE static type with_bits(const type a, const type kept, const type set) {
    return bit_or(bit_and(a, kept), set);
  }

  // Words 0, 2, 4... of the one and 1, 3, 5... of the other.
  MORVANE_INLINE static type even_and_odd_words(const type a, const type b) { return _mm256_blend_epi16(a, b, 0xaa); }

  MORVANE_INLINE static type add_bytes(const type a, const type b) { return _mm256_add_epi8(a, b); }
  MORVANE_INLINE static type add_words(const type a, const type b) { return _mm256_add_epi16(a, b); }
  MORVANE_INLINE static type subtract_words(const type a, const type b) { return _mm256_sub_epi16(a, b); }
  // At least 0.
  MORVANE_INLINE static type subtract_words_to_zero(const type a, const type b) { return _mm256_subs_epu16(a, b); }
  // At most 65535.
  MORVANE_INLINE static type add_words_to_limit(const type a, const type b) { return _mm256_adds_epu16(a, b); }
  MORVANE_INLINE static type add_signed_to_limit(const type a, const type b) { return _mm256_adds_epi16(a, b); }
  MORVANE_INLINE static type least_words(const type a, const type b) { return _mm256_min_epu16(a, b); }
  MORVANE_INLINE static type average_words(const type a, const type b) { return _mm256_avg_epu16(a, b); }
  MORVANE_INLINE static type average_bytes(const type a, const type b) { return _mm256_avg_epu8(a, b); }
  MORVANE_INLINE static type subtract_bytes(const type a, const type b) { return _mm256_sub_epi8(a, b); }
  MORVANE_INLINE static type rounded_product(const type a, const type b) { return _mm256_mulhrs_epi16(a, b); }
  MORVANE_INLINE static type add_dwords(const type a, const type b) { return _mm256_add_epi32(a, b); }
  MORVANE_INLINE static type multiply_words(const type a, const type b) { return _mm256_mullo_epi16(a, b); }
  MORVANE_INLINE static type upper_product(const type a, const type b) { return _mm256_mulhi_epi16(a, b); }
  MORVANE_INLINE static type upper_product_unsigned(const type a, const type b) { return _mm256_mulhi_epu16(a, b); }
  // Sums of the products of two neighbouring words, or of two unsigned bytes with two signed ones.
  MORVANE_INLINE static type sum_word_products(const type a, const type b) { return _mm256_madd_epi16(a, b); }
  MORVANE_INLINE static type add_word_products(const type sum, const type a, const type b) {
    return _mm256_add_epi32(sum, _mm256_madd_epi16(a, b));
  }
  MORVANE_INLINE static type sum_byte_products(const type a, const type b) { return _mm256_maddubs_epi16(a, b); }
  MORVANE_INLINE static type add_qwords(const type a, const type b) { return _mm256_add_epi64(a, b); }
  MORVANE_INLINE static type sum_differences(const type a, const type b) { return _mm256_sad_epu8(a, b); }
  // minuend - b where a > x, unsigned words.
  MORVANE_INLINE static type subtract_words_where_above(const type a, const type x, const type minuend, const type b) {
    const type is_not_above = _mm256_cmpeq_epi16(_mm256_min_epu16(a, x), a);
    return _mm256_sub_epi16(minuend, _mm256_andnot_si256(is_not_above, b));
  }

  template <int bits>
  MORVANE_INLINE static type shift_words_right(const type v) {
    return _mm256_srli_epi16(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_words_right_signed(const type v) {
    return _mm256_srai_epi16(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_words_left(const type v) {
    return _mm256_slli_epi16(v, bits);
  }
  MORVANE_INLINE static type shift_words_right(const type v, const int bits) {
    return _mm256_srl_epi16(v, _mm_cvtsi32_si128(bits));
  }
  MORVANE_INLINE static type shift_words_left(const type v, const int bits) {
    return _mm256_sll_epi16(v, _mm_cvtsi32_si128(bits));
  }
  template <int bits>
  MORVANE_INLINE static type shift_dwords_left(const type v) {
    return _mm256_slli_epi32(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_dwords_right(const type v) {
    return _mm256_srli_epi32(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_dwords_right_signed(const type v) {
    return _mm256_srai_epi32(v, bits);
  }

  // Within each lane of 128 bits.
  MORVANE_INLINE static type shuffle(const type v, const type index) { return _mm256_shuffle_epi8(v, index); }
  MORVANE_INLINE static type unpack_low_bytes(const type a, const type b) { return _mm256_unpacklo_epi8(a, b); }
  MORVANE_INLINE static type unpack_high_bytes(const type a, const type b) { return _mm256_unpackhi_epi8(a, b); }
  MORVANE_INLINE static type unpack_low_words(const type a, const type b) { return _mm256_unpacklo_epi16(a, b); }
  MORVANE_INLINE static type unpack_high_words(const type a, const type b) { return _mm256_unpackhi_epi16(a, b); }
  // Signed words to unsigned bytes, and signed double words to unsigned words, stopping at the limits.
  MORVANE_INLINE static type pack_words(const type a, const type b) { return _mm256_packus_epi16(a, b); }
  MORVANE_INLINE static type pack_signed_dwords(const type a, const type b) { return _mm256_packs_epi32(a, b); }
  MORVANE_INLINE static type pack_dwords(const type a, const type b) { return _mm256_packus_epi32(a, b); }

  MORVANE_INLINE static bool all_ones(const type v) {
    return _mm256_movemask_epi8(_mm256_cmpeq_epi8(v, _mm256_set1_epi8(-1))) == -1;
  }
  MORVANE_INLINE static uint64_t sum_of_qwords(const type v) {
    const __m128i two = _mm_add_epi64(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1));
    return static_cast<uint64_t>(_mm_cvtsi128_si64(two)) + static_cast<uint64_t>(_mm_extract_epi64(two, 1));
  }

  // As many 16-bit words as there are floats, less `bottom` and at least 0.
  template <int bottom>
  MORVANE_INLINE static floats load_words_above(const uint8_t* p) {
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    return _mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(_mm_subs_epu16(words, _mm_set1_epi16(bottom))));
  }
  struct half_register {
    static constexpr size_t stored_bytes = 16;
    __m128i v;
  };
  MORVANE_INLINE static half_register words_of_dwords(const type v) {
    return {_mm_packus_epi32(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1))};
  }
  MORVANE_INLINE static type join_halves(const half_register low, const half_register high) {
    return _mm256_set_m128i(high.v, low.v);
  }
  MORVANE_INLINE static floats load_floats(const uint8_t* p) {
    return _mm256_loadu_ps(reinterpret_cast<const float*>(p));
  }
  MORVANE_INLINE static void store_floats(uint8_t* p, const floats v) {
    _mm256_storeu_ps(reinterpret_cast<float*>(p), v);
  }
  MORVANE_INLINE static floats load_half_floats(const uint8_t* p) {
    return _mm256_cvtph_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  }
  MORVANE_INLINE static half_register half_floats(const floats v) {
    return {_mm256_cvtps_ph(v, _MM_FROUND_TO_NEAREST_INT)};
  }
  // Of the lower half of the words or of the upper one.
  template <int part>
  MORVANE_INLINE static floats floats_of_words(const type v) {
    return _mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(_mm256_extracti128_si256(v, part)));
  }
  MORVANE_INLINE static floats repeat_float(const float value) { return _mm256_set1_ps(value); }
  MORVANE_INLINE static floats multiply(const floats a, const floats b) { return _mm256_mul_ps(a, b); }
  MORVANE_INLINE static floats add(const floats a, const floats b) { return _mm256_add_ps(a, b); }
  MORVANE_INLINE static floats subtract(const floats a, const floats b) { return _mm256_sub_ps(a, b); }
  MORVANE_INLINE static floats divide(const floats a, const floats b) { return _mm256_div_ps(a, b); }
  MORVANE_INLINE static floats greatest(const floats a, const floats b) { return _mm256_max_ps(a, b); }
  MORVANE_INLINE static type truncate(const floats v) { return _mm256_cvttps_epi32(v); }
  MORVANE_INLINE static floats least(const floats a, const floats b) { return _mm256_min_ps(a, b); }
};

}  // namespace Processing::Morvane::format_conversion::vector
