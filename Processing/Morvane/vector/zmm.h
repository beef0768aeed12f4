// Registers of 512 bits, as the operations of x86.h take them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "x86_intrinsics.h"

namespace Processing::Morvane::format_conversion::vector {

struct zmm {
  using type = __m512i;
  using floats = __m512;
  static constexpr int bytes = 64;

  MORVANE_INLINE static type load(const uint8_t* p) { return _mm512_loadu_si512(p); }
  MORVANE_INLINE static void store(uint8_t* p, const type v) { _mm512_storeu_si512(p, v); }
  MORVANE_INLINE static void stream(uint8_t* p, const type v) { _mm512_stream_si512(reinterpret_cast<type*>(p), v); }
  MORVANE_INLINE static type zero() { return _mm512_setzero_si512(); }
  MORVANE_INLINE static type repeat_byte(const int value) { return _mm512_set1_epi8(static_cast<char>(value)); }
  MORVANE_INLINE static type repeat_word(const int value) { return _mm512_set1_epi16(static_cast<short>(value)); }
  MORVANE_INLINE static type repeat_dword(const int value) { return _mm512_set1_epi32(value); }
  MORVANE_INLINE static type repeat_lane(const __m128i v) { return _mm512_broadcast_i32x4(v); }

  MORVANE_INLINE static type bit_and(const type a, const type b) { return _mm512_and_si512(a, b); }
  MORVANE_INLINE static type bit_or(const type a, const type b) { return _mm512_or_si512(a, b); }
  // Compilers make of the exclusive or an instruction that waits for what its destination held before.
  MORVANE_INLINE static type invert(const type v) { return _mm512_ternarylogic_epi32(v, v, v, 0x55); }
  MORVANE_INLINE static type bit_xor(const type a, const type b) { return _mm512_xor_si512(a, b); }
  MORVANE_INLINE static type with_bits(const type a, const type kept, const type set) {
    constexpr int both_or_third = 0xea;
    return _mm512_ternarylogic_epi32(a, kept, set, both_or_third);
  }

  // Words 0, 2, 4... of the one and 1, 3, 5... of the other.
  MORVANE_INLINE static type even_and_odd_words(const type a, const type b) {
    return _mm512_mask_mov_epi16(a, 0xaaaaaaaa, b);
  }

  MORVANE_INLINE static type add_bytes(const type a, const type b) { return _mm512_add_epi8(a, b); }
  MORVANE_INLINE static type add_words(const type a, const type b) { return _mm512_add_epi16(a, b); }
  MORVANE_INLINE static type subtract_words(const type a, const type b) { return _mm512_sub_epi16(a, b); }
  MORVANE_INLINE static type subtract_words_to_zero(const type a, const type b) { return _mm512_subs_epu16(a, b); }
  MORVANE_INLINE static type add_words_to_limit(const type a, const type b) { return _mm512_adds_epu16(a, b); }
  MORVANE_INLINE static type add_signed_to_limit(const type a, const type b) { return _mm512_adds_epi16(a, b); }
  MORVANE_INLINE static type least_words(const type a, const type b) { return _mm512_min_epu16(a, b); }
  MORVANE_INLINE static type average_words(const type a, const type b) { return _mm512_avg_epu16(a, b); }
  MORVANE_INLINE static type average_bytes(const type a, const type b) { return _mm512_avg_epu8(a, b); }
  MORVANE_INLINE static type subtract_bytes(const type a, const type b) { return _mm512_sub_epi8(a, b); }
  MORVANE_INLINE static type rounded_product(const type a, const type b) { return _mm512_mulhrs_epi16(a, b); }
  MORVANE_INLINE static type add_dwords(const type a, const type b) { return _mm512_add_epi32(a, b); }
  MORVANE_INLINE static type multiply_words(const type a, const type b) { return _mm512_mullo_epi16(a, b); }
  MORVANE_INLINE static type upper_product(const type a, const type b) { return _mm512_mulhi_epi16(a, b); }
  MORVANE_INLINE static type upper_product_unsigned(const type a, const type b) { return _mm512_mulhi_epu16(a, b); }
  MORVANE_INLINE static type sum_word_products(const type a, const type b) { return _mm512_madd_epi16(a, b); }
  MORVANE_INLINE static type add_word_products(const type sum, const type a, const type b) {
    return _mm512_dpwssd_epi32(sum, a, b);
  }
  MORVANE_INLINE static type sum_byte_products(const type a, const type b) { return _mm512_maddubs_epi16(a, b); }
  MORVANE_INLINE static type add_qwords(const type a, const type b) { return _mm512_add_epi64(a, b); }
  MORVANE_INLINE static type sum_differences(const type a, const type b) { return _mm512_sad_epu8(a, b); }
  MORVANE_INLINE static type subtract_words_where_above(const type a, const type x, const type minuend, const type b) {
    return _mm512_mask_sub_epi16(minuend, _mm512_cmpgt_epu16_mask(a, x), minuend, b);
  }

  template <int bits>
  MORVANE_INLINE static type shift_words_right(const type v) {
    return _mm512_srli_epi16(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_words_right_signed(const type v) {
    return _mm512_srai_epi16(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_words_left(const type v) {
    return _mm512_slli_epi16(v, bits);
  }
  MORVANE_INLINE static type shift_words_right(const type v, const int bits) {
    return _mm512_srl_epi16(v, _mm_cvtsi32_si128(bits));
  }
  MORVANE_INLINE static type shift_words_left(const type v, const int bits) {
    return _mm512_sll_epi16(v, _mm_cvtsi32_si128(bits));
  }
  template <int bits>
  MORVANE_INLINE static type shift_dwords_left(const type v) {
    return _mm512_slli_epi32(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_dwords_right(const type v) {
    return _mm512_srli_epi32(v, bits);
  }
  template <int bits>
  MORVANE_INLINE static type shift_dwords_right_signed(const type v) {
    return _mm512_srai_epi32(v, bits);
  }

  MORVANE_INLINE static type shuffle(const type v, const type index) { return _mm512_shuffle_epi8(v, index); }
  MORVANE_INLINE static type unpack_low_bytes(const type a, const type b) { return _mm512_unpacklo_epi8(a, b); }
  MORVANE_INLINE static type unpack_high_bytes(const type a, const type b) { return _mm512_unpackhi_epi8(a, b); }
  MORVANE_INLINE static type unpack_low_words(const type a, const type b) { return _mm512_unpacklo_epi16(a, b); }
  MORVANE_INLINE static type unpack_high_words(const type a, const type b) { return _mm512_unpackhi_epi16(a, b); }
  MORVANE_INLINE static type pack_words(const type a, const type b) { return _mm512_packus_epi16(a, b); }
  MORVANE_INLINE static type pack_signed_dwords(const type a, const type b) { return _mm512_packs_epi32(a, b); }
  MORVANE_INLINE static type pack_dwords(const type a, const type b) { return _mm512_packus_epi32(a, b); }

  MORVANE_INLINE static bool all_ones(const type v) {
    return _mm512_cmpeq_epi32_mask(v, _mm512_set1_epi32(-1)) == 0xffff;
  }
  MORVANE_INLINE static uint64_t sum_of_qwords(const type v) {
    return static_cast<uint64_t>(_mm512_reduce_add_epi64(v));
  }

  template <int bottom>
  MORVANE_INLINE static floats load_words_above(const uint8_t* p) {
    const __m256i words = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    return _mm512_cvtepi32_ps(_mm512_cvtepu16_epi32(_mm256_subs_epu16(words, _mm256_set1_epi16(bottom))));
  }
  struct half_register {
    static constexpr size_t stored_bytes = 32;
    __m256i v;
  };
  MORVANE_INLINE static half_register words_of_dwords(const type v) { return {_mm512_cvtepi32_epi16(v)}; }
  MORVANE_INLINE static type join_halves(const half_register low, const half_register high) {
    return _mm512_inserti64x4(_mm512_castsi256_si512(low.v), high.v, 1);
  }
  MORVANE_INLINE static floats load_floats(const uint8_t* p) { return _mm512_castsi512_ps(load(p)); }
  MORVANE_INLINE static void store_floats(uint8_t* p, const floats v) { _mm512_storeu_ps(p, v); }
  MORVANE_INLINE static floats load_half_floats(const uint8_t* p) {
    return _mm512_cvtph_ps(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
  }
  MORVANE_INLINE static half_register half_floats(const floats v) {
    return {_mm512_cvtps_ph(v, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC)};
  }
  template <int part>
  MORVANE_INLINE static floats floats_of_words(const type v) {
    return _mm512_cvtepi32_ps(_mm512_cvtepu16_epi32(_mm512_extracti64x4_epi64(v, part)));
  }
  MORVANE_INLINE static floats repeat_float(const float value) { return _mm512_set1_ps(value); }
  MORVANE_INLINE static floats multiply(const floats a, const floats b) { return _mm512_mul_ps(a, b); }
  MORVANE_INLINE static floats add(const floats a, const floats b) { return _mm512_add_ps(a, b); }
  MORVANE_INLINE static floats subtract(const floats a, const floats b) { return _mm512_sub_ps(a, b); }
  MORVANE_INLINE static floats divide(const floats a, const floats b) { return _mm512_div_ps(a, b); }
  MORVANE_INLINE static floats greatest(const floats a, const floats b) { return _mm512_max_ps(a, b); }
  MORVANE_INLINE static type truncate(const floats v) { return _mm512_cvttps_epi32(v); }
  MORVANE_INLINE static floats least(const floats a, const floats b) { return _mm512_min_ps(a, b); }
};

}  // namespace Processing::Morvane::format_conversion::vector
