// Groups of six pixels on AVX-512: the words of four groups in a row. operations.h says what each operation does.
#pragma once

#include <cstddef>
#include <cstdint>

#include "avx512_blocks.h"
#include "inline.h"
#include "x86_intrinsics.h"
#include "zmm.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx512_sixes : avx512_blocks {
  using avx512_blocks::store;

  static constexpr int words_of_sixes = 24;
  static constexpr __mmask16 dwords_of_sixes = 0x0fff;
  static constexpr __mmask16 dwords_of_fives = 0x7fff;

  // Sample `place` of a group of v210.
  static constexpr sample_of_v210 ten_of_group(const int group, const int place) {
    const sample_of_v210 s = at_ten(place);
    return {16 * group + s.byte, s.lift};
  }
  MORVANE_INLINE static two_blocks sixes_of_v210(const block groups) {
    return {{tens_of(groups, [](const int i) { return ten_of_group(i % 24 / 6, 2 * (i % 6) + 1); })},
            {tens_of(groups, [](const int i) { return ten_of_group(i % 24 / 6, 2 * (i % 6)); })}};
  }
  // Where sample `i` of v210 is in the words of luma or, behind them, in those of chroma.
  static constexpr int word_of_sixes(const int i) { return i / 12 * 6 + i % 12 / 2 + (i % 2 == 0 ? 32 : 0); }
  MORVANE_INLINE static block v210_of_sixes(const two_blocks& sixes) {
    constexpr word_table first_two = words_from([](const int i) { return word_of_sixes(i / 2 * 3 + i % 2); });
    constexpr word_table third = words_from([](const int i) { return word_of_sixes(i / 2 * 3 + 2); });
    return join_v210(sixes, first_two, third);
  }

  MORVANE_INLINE static block load_sixes(const uint8_t* p) { return {_mm512_maskz_loadu_epi32(dwords_of_sixes, p)}; }
  struct six_words {
    static constexpr size_t stored_bytes = 2 * words_of_sixes;
    __m512i v;
  };
  MORVANE_INLINE static six_words sixes(const block b) { return {b.v}; }
  MORVANE_INLINE static void store(uint8_t* p, const six_words& w) {
    store_256(p, _mm512_castsi512_si256(w.v));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p + 32), _mm512_extracti32x4_epi32(w.v, 2));
  }

  static constexpr __mmask8 dwords_of_threes = 0x3f;

  MORVANE_INLINE static block load_sixes(const uint8_t* cb, const uint8_t* cr) {
    const __m512i first = _mm512_castsi256_si512(_mm256_maskz_loadu_epi32(dwords_of_threes, cb));
    const __m512i second = _mm512_castsi256_si512(_mm256_maskz_loadu_epi32(dwords_of_threes, cr));
    constexpr word_table in_turn = words_from([](const int i) { return i / 2 + i % 2 * 32; });
    return {rearrange(first, second, in_turn)};
  }
  struct three_words {
    static constexpr size_t stored_bytes = words_of_sixes;
    __m256i v;
  };
  struct threes_of_planes {
    three_words first, second;
  };
  MORVANE_INLINE static threes_of_planes deinterleave_sixes(const block b) {
    constexpr word_table apart = words_from([](const int i) { return i % 16 * 2 + i / 16; });
    const __m512i planes = _mm512_permutexvar_epi16(load_table(apart), b.v);
    return {{_mm512_castsi512_si256(planes)}, {_mm512_extracti64x4_epi64(planes, 1)}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_words& w) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(w.v));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 16), _mm256_extracti128_si256(w.v, 1));
  }

  // Groups of five bytes: Cb Y Cr Y from the highest bit down, of which each begins two bits lower in its byte than the
  // one before. Of the words of luma or of chroma, the first byte, the lower one last.
  static constexpr int byte_of_fives(const int i, const bool is_luma) {
    return (i / 4 * 5 + i % 4 / 2 * 2 + (is_luma ? 1 : 0) + 1 - i % 2) % 64;
  }
  MORVANE_INLINE static two_blocks sixes_of_fives(const uint8_t* p) {
    constexpr byte_table of_luma = bytes_from([](const int i) { return byte_of_fives(i, true); });
    constexpr byte_table of_chroma = bytes_from([](const int i) { return byte_of_fives(i, false); });
    constexpr word_table lift_luma = words_from([](const int i) { return i % 2 == 0 ? 4 : 64; });
    constexpr word_table lift_chroma = words_from([](const int i) { return i % 2 == 0 ? 1 : 16; });
    const __m512i fives = _mm512_maskz_loadu_epi32(dwords_of_fives, p);
    const __m512i ten_bits = zmm::repeat_word(0xffc0);
    return {{_mm512_and_si512(_mm512_mullo_epi16(rearrange(fives, of_luma), load_table(lift_luma)), ten_bits)},
            {_mm512_and_si512(_mm512_mullo_epi16(rearrange(fives, of_chroma), load_table(lift_chroma)), ten_bits)}};
  }
  struct fifteen_bytes {
    static constexpr size_t stored_bytes = 60;
    __m512i v;
  };
  // In a group the first byte is of chroma alone and the last one of luma alone.
  static constexpr uint64_t all_bytes_of_fives_but(const int place) {
    uint64_t mask = 0;
    for (int i = 0; i < 64; ++i) mask |= static_cast<uint64_t>(i % 5 != place) << i;
    return mask;
  }
  // The upper byte of a word comes before its lower one.
  static constexpr int byte_of_word(const int group, const int place) { return (4 * group + (place ^ 1)) % 64; }
  MORVANE_INLINE static fifteen_bytes fives_of_sixes(const two_blocks& sixes) {
    constexpr word_table lift_luma = words_from([](const int i) { return i % 2 == 0 ? 16 : 1; });
    constexpr word_table lift_chroma = words_from([](const int i) { return i % 2 == 0 ? 64 : 4; });
    constexpr byte_table of_luma = bytes_from([](const int i) { return byte_of_word(i / 5, (i % 5 + 3) % 4); });
    constexpr byte_table of_chroma = bytes_from([](const int i) { return byte_of_word(i / 5, i % 5 % 4); });
    const __m512i luma = _mm512_mullo_epi16(sixes.first.v, load_table(lift_luma));
    const __m512i chroma = _mm512_mullo_epi16(sixes.second.v, load_table(lift_chroma));
    return {_mm512_or_si512(_mm512_maskz_permutexvar_epi8(all_bytes_of_fives_but(0), load_table(of_luma), luma),
                            _mm512_maskz_permutexvar_epi8(all_bytes_of_fives_but(4), load_table(of_chroma), chroma))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const fifteen_bytes& f) {
    _mm512_mask_storeu_epi32(p, dwords_of_fives, f.v);
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
