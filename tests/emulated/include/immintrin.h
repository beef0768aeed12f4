// In place of the compiler's header: AVX-512 on any processor with AVX2. The library simde computes the instructions
// that it knows, and the loops below the others, lane by lane.
#pragma once

#include_next <immintrin.h>

#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/avx512.h>

#include <cstdint>
#include <cstring>

namespace emulated {

using bytes [[gnu::vector_size(64)]] = std::uint8_t;
using words [[gnu::vector_size(64)]] = std::uint16_t;
using dwords [[gnu::vector_size(64)]] = std::uint32_t;
using qwords [[gnu::vector_size(64)]] = std::uint64_t;
using signed_dwords [[gnu::vector_size(64)]] = std::int32_t;
using floats [[gnu::vector_size(64)]] = float;
using half_of_bytes [[gnu::vector_size(32)]] = std::uint8_t;
using half_of_words [[gnu::vector_size(32)]] = std::uint16_t;

inline __m512i mulhi_epu16(const __m512i a, const __m512i b) {
  const auto x = reinterpret_cast<words>(a);
  const auto y = reinterpret_cast<words>(b);
  words upper{};
  for (int i = 0; i < 32; ++i) upper[i] = static_cast<std::uint16_t>(std::uint32_t{x[i]} * y[i] >> 16);
  return reinterpret_cast<__m512i>(upper);
}

inline __mmask32 cmpgt_epu16_mask(const __m512i a, const __m512i b) {
  const auto x = reinterpret_cast<words>(a);
  const auto y = reinterpret_cast<words>(b);
  __mmask32 greater = 0;
  for (int i = 0; i < 32; ++i) greater |= __mmask32{x[i] > y[i]} << i;
  return greater;
}

inline __m512i mask_sub_epi16(const __m512i otherwise, const __mmask32 mask, const __m512i a, const __m512i b) {
  const auto x = reinterpret_cast<words>(a);
  const auto y = reinterpret_cast<words>(b);
  auto difference = reinterpret_cast<words>(otherwise);
  for (int i = 0; i < 32; ++i)
    if ((mask >> i & 1) != 0) difference[i] = static_cast<std::uint16_t>(x[i] - y[i]);
  return reinterpret_cast<__m512i>(difference);
}

inline __m512i srai_epi32(const __m512i v, const unsigned bits) {
  auto shifted = reinterpret_cast<signed_dwords>(v);
  for (int i = 0; i < 16; ++i) shifted[i] >>= bits < 32 ? bits : 31;
  return reinterpret_cast<__m512i>(shifted);
}

inline __m512i cvtepu8_epi16(const __m256i v) {
  const auto narrow = reinterpret_cast<half_of_bytes>(v);
  words wide{};
  for (int i = 0; i < 32; ++i) wide[i] = narrow[i];
  return reinterpret_cast<__m512i>(wide);
}

inline __m512i cvtepu16_epi32(const __m256i v) {
  const auto narrow = reinterpret_cast<half_of_words>(v);
  dwords wide{};
  for (int i = 0; i < 16; ++i) wide[i] = narrow[i];
  return reinterpret_cast<__m512i>(wide);
}

inline __m512 cvtepi32_ps(const __m512i v) {
  const auto whole = reinterpret_cast<signed_dwords>(v);
  floats converted{};
  for (int i = 0; i < 16; ++i) converted[i] = static_cast<float>(whole[i]);
  return reinterpret_cast<__m512>(converted);
}

inline __m512i cvttps_epi32(const __m512 v) {
  const auto fractions = reinterpret_cast<floats>(v);
  signed_dwords whole{};
  for (int i = 0; i < 16; ++i) whole[i] = static_cast<std::int32_t>(fractions[i]);
  return reinterpret_cast<__m512i>(whole);
}

inline __m256i cvtepi32_epi16(const __m512i v) {
  const auto wide = reinterpret_cast<dwords>(v);
  half_of_words narrow{};
  for (int i = 0; i < 16; ++i) narrow[i] = static_cast<std::uint16_t>(wide[i]);
  return reinterpret_cast<__m256i>(narrow);
}

inline __m512 cvtph_ps(const __m256i v) {
  floats converted{};
  for (int i = 0; i < 16; ++i) converted[i] = _cvtsh_ss(reinterpret_cast<half_of_words>(v)[i]);
  return reinterpret_cast<__m512>(converted);
}

inline __m256i cvtps_ph(const __m512 v, const int) {
  half_of_words halves{};
  for (int i = 0; i < 16; ++i) halves[i] = _cvtss_sh(reinterpret_cast<floats>(v)[i], _MM_FROUND_TO_NEAREST_INT);
  return reinterpret_cast<__m256i>(halves);
}

// What is masked out is neither read nor written.
inline __m512i maskz_loadu_epi32(const __mmask16 mask, const void* from) {
  dwords loaded{};
  for (int i = 0; i < 16; ++i)
    if ((mask >> i & 1) != 0) {
      std::uint32_t dword = 0;
      std::memcpy(&dword, static_cast<const std::uint32_t*>(from) + i, 4);
      loaded[i] = dword;
    }
  return reinterpret_cast<__m512i>(loaded);
}

inline __m256i maskz_loadu_epi32_256(const __mmask8 mask, const void* from) {
  return _mm512_castsi512_si256(maskz_loadu_epi32(mask, from));
}

inline void mask_storeu_epi32(void* to, const __mmask16 mask, const __m512i v) {
  const auto stored = reinterpret_cast<dwords>(v);
  for (int i = 0; i < 16; ++i)
    if ((mask >> i & 1) != 0) {
      const std::uint32_t dword = stored[i];
      std::memcpy(static_cast<std::uint32_t*>(to) + i, &dword, 4);
    }
}

inline void stream_si512(void* const to, const __m512i v) {
  auto* halves = static_cast<__m256i*>(to);
  _mm256_stream_si256(halves, _mm512_castsi512_si256(v));
  _mm256_stream_si256(halves + 1, _mm512_extracti64x4_epi64(v, 1));
}

inline long long reduce_add_epi64(const __m512i v) {
  const auto addends = reinterpret_cast<qwords>(v);
  std::uint64_t sum = 0;
  for (int i = 0; i < 8; ++i) sum += addends[i];
  return static_cast<long long>(sum);
}

// Eight bits from any bit on, of which bit 63 is followed by bit 0.
inline __m512i mask_multishift_epi64_epi8(const __m512i otherwise, const __mmask64 mask, const __m512i first_bits,
                                          const __m512i v) {
  const auto first = reinterpret_cast<bytes>(first_bits);
  const auto source = reinterpret_cast<qwords>(v);
  auto shifted = reinterpret_cast<bytes>(otherwise);
  for (int i = 0; i < 64; ++i) {
    const int bit = first[i] % 64;
    const std::uint64_t turned = source[i / 8] >> bit | source[i / 8] << (64 - bit) % 64;
    if ((mask >> i & 1) != 0) shifted[i] = static_cast<std::uint8_t>(turned);
  }
  return reinterpret_cast<__m512i>(shifted);
}

inline __m512i multishift_epi64_epi8(const __m512i first_bits, const __m512i v) {
  return mask_multishift_epi64_epi8(v, ~__mmask64{0}, first_bits, v);
}

}  // namespace emulated

// Plain names: a macro with parameters, as simde and compilers have them, would take a comma between template arguments
// for one between its own. Of those that simde has, madd_epi16 has two parameters too many, and the multishifts shift
// 64 bits by 64.
#undef _mm512_cmpgt_epu16_mask
#undef _mm512_srai_epi32
#undef _mm512_cvtph_ps
#undef _mm512_cvtps_ph
#undef _mm512_madd_epi16
#undef _mm512_max_epi32
#undef _mm512_packus_epi32
#undef _mm512_dpbusd_epi32
#undef _mm512_dpwssd_epi32
#undef _mm512_multishift_epi64_epi8
#undef _mm512_mask_multishift_epi64_epi8
#define _mm512_mulhi_epu16 emulated::mulhi_epu16
#define _mm512_stream_si512 emulated::stream_si512
#define _mm512_maskz_loadu_epi32 emulated::maskz_loadu_epi32
#define _mm256_maskz_loadu_epi32 emulated::maskz_loadu_epi32_256
#define _mm512_mask_storeu_epi32 emulated::mask_storeu_epi32
#define _mm512_cmpgt_epu16_mask emulated::cmpgt_epu16_mask
#define _mm512_mask_sub_epi16 emulated::mask_sub_epi16
#define _mm512_srai_epi32 emulated::srai_epi32
#define _mm512_cvtepu8_epi16 emulated::cvtepu8_epi16
#define _mm512_cvtepu16_epi32 emulated::cvtepu16_epi32
#define _mm512_cvttps_epi32 emulated::cvttps_epi32
#define _mm512_cvtepi32_epi16 emulated::cvtepi32_epi16
#define _mm512_cvtepi32_ps emulated::cvtepi32_ps
#define _mm512_cvtph_ps emulated::cvtph_ps
#define _mm512_cvtps_ph emulated::cvtps_ph
#define _mm512_reduce_add_epi64 emulated::reduce_add_epi64
#define _mm512_mask_multishift_epi64_epi8 emulated::mask_multishift_epi64_epi8
#define _mm512_multishift_epi64_epi8 emulated::multishift_epi64_epi8
#define _mm512_madd_epi16 simde_mm512_madd_epi16
#define _mm512_max_epi32 simde_mm512_max_epi32
#define _mm512_packus_epi32 simde_mm512_packus_epi32
#define _mm512_dpbusd_epi32 simde_mm512_dpbusd_epi32
#define _mm512_dpwssd_epi32 simde_mm512_dpwssd_epi32
