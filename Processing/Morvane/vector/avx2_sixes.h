// Groups of six pixels on AVX2: six words of luma, or of Cb and Cr in turn, in each half of a register. What follows
// them there may be anything. operations.h says what each operation does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "avx2_blocks.h"
#include "inline.h"
#include "x86_intrinsics.h"
#include "ymm.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx2_sixes : avx2_blocks {
  using avx2_blocks::store;

  MORVANE_INLINE static two_blocks sixes_of_v210(const block groups) {
    const __m256i luma = tens_of(groups, _mm_setr_epi8(1, 2, 4, 5, 6, 7, 9, 10, 12, 13, 14, 15, -1, -1, -1, -1),
                                 _mm_setr_epi16(16, 64, 4, 16, 64, 4, 0, 0));
    const __m256i chroma = tens_of(groups, _mm_setr_epi8(0, 1, 2, 3, 5, 6, 8, 9, 10, 11, 13, 14, -1, -1, -1, -1),
                                   _mm_setr_epi16(64, 4, 16, 64, 4, 16, 0, 0));
    return {{luma}, {chroma}};
  }
  MORVANE_INLINE static block v210_of_sixes(const two_blocks& sixes) {
    return join_v210(sixes, _mm_setr_epi8(0, 1, -1, -1, -1, -1, 4, 5, 6, 7, -1, -1, -1, -1, 10, 11),
                     _mm_setr_epi8(-1, -1, 2, 3, -1, -1, -1, -1, -1, -1, 8, 9, -1, -1, -1, -1));
  }

  MORVANE_INLINE static __m128i load_128(const uint8_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  }
  MORVANE_INLINE static block load_sixes(const uint8_t* p) {
    return {_mm256_set_m128i(_mm_srli_si128(load_128(p + 8), 4), load_128(p))};
  }
  struct six_words {
    static constexpr size_t stored_bytes = 24;
    __m256i v;
  };
  MORVANE_INLINE static six_words sixes(const block b) { return {b.v}; }
  MORVANE_INLINE static void store(uint8_t* p, const six_words& w) {
    const __m256i in_a_row = _mm256_permutevar8x32_epi32(w.v, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
    store_128(p, low_half(in_a_row));
    store_64(p + 16, high_half(in_a_row));
  }

  // Three words of Cb and three of Cr to six, from planes of either.
  MORVANE_INLINE static __m128i six_of_threes(const __m128i cb, const __m128i cr) { return _mm_unpacklo_epi16(cb, cr); }
  MORVANE_INLINE static block load_sixes(const uint8_t* cb, const uint8_t* cr) {
    const __m128i high = six_of_threes(_mm_srli_si128(load_64(cb + 4), 2), _mm_srli_si128(load_64(cr + 4), 2));
    return {_mm256_set_m128i(high, six_of_threes(load_64(cb), load_64(cr)))};
  }
  struct three_words {
    static constexpr size_t stored_bytes = 12;
    __m128i v;
  };
  struct threes_of_planes {
    three_words first, second;
  };
  MORVANE_INLINE static threes_of_planes deinterleave_sixes(const block b) {
    const __m256i in_halves =
        _mm256_shuffle_epi8(b.v, ymm::repeat_lane(_mm_setr_epi8(0, 1, 4, 5, 8, 9, -1, -1, 2, 3, 6, 7, 10, 11, -1, -1)));
    const __m256i in_a_row =
        _mm256_shuffle_epi8(exchange_middle(in_halves),
                            ymm::repeat_lane(_mm_setr_epi8(0, 1, 2, 3, 4, 5, 8, 9, 10, 11, 12, 13, -1, -1, -1, -1)));
    return {{low_half(in_a_row)}, {high_half(in_a_row)}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_words& w) {
    store_64(p, w.v);
    const int last = _mm_extract_epi32(w.v, 2);
    std::memcpy(p + 8, &last, 4);
  }

  // Three groups of five bytes in each half: Cb Y Cr Y from the highest bit down, of which each begins two bits lower
  // in its byte than the one before. The second half is loaded from a byte before.
  MORVANE_INLINE static __m256i tens_of_fives(const __m256i fives, const __m128i places, const __m128i lifts) {
    const __m256i at =
        _mm256_add_epi8(ymm::repeat_lane(places), _mm256_set_m128i(_mm_set1_epi8(1), _mm_setzero_si128()));
    return _mm256_and_si256(_mm256_mullo_epi16(_mm256_shuffle_epi8(fives, at), ymm::repeat_lane(lifts)),
                            ymm::repeat_word(0xffc0));
  }
  MORVANE_INLINE static two_blocks sixes_of_fives(const uint8_t* p) {
    const __m256i fives = load_halves(p, p + 14);
    return {{tens_of_fives(fives, _mm_setr_epi8(2, 1, 4, 3, 7, 6, 9, 8, 12, 11, 14, 13, -128, -128, -128, -128),
                           _mm_setr_epi16(4, 64, 4, 64, 4, 64, 0, 0))},
            {tens_of_fives(fives, _mm_setr_epi8(1, 0, 3, 2, 6, 5, 8, 7, 11, 10, 13, 12, -128, -128, -128, -128),
                           _mm_setr_epi16(1, 16, 1, 16, 1, 16, 0, 0))}};
  }
  struct fifteen_bytes {
    static constexpr size_t stored_bytes = 30;
    __m256i v;
  };
  MORVANE_INLINE static fifteen_bytes fives_of_sixes(const two_blocks& sixes) {
    const __m256i luma = _mm256_mullo_epi16(sixes.first.v, ymm::repeat_lane(_mm_setr_epi16(16, 1, 16, 1, 16, 1, 0, 0)));
    const __m256i chroma =
        _mm256_mullo_epi16(sixes.second.v, ymm::repeat_lane(_mm_setr_epi16(64, 4, 64, 4, 64, 4, 0, 0)));
    return {_mm256_or_si256(
        _mm256_shuffle_epi8(luma,
                            ymm::repeat_lane(_mm_setr_epi8(-1, 1, 0, 3, 2, -1, 5, 4, 7, 6, -1, 9, 8, 11, 10, -1))),
        _mm256_shuffle_epi8(chroma,
                            ymm::repeat_lane(_mm_setr_epi8(1, 0, 3, 2, -1, 5, 4, 7, 6, -1, 9, 8, 11, 10, -1, -1))))};
  }
  // What is stored behind the first group is overwritten by the second one.
  MORVANE_INLINE static void store(uint8_t* p, const fifteen_bytes& f) {
    store_128(p, low_half(f.v));
    store_64(p + 15, high_half(f.v));
    store_64(p + 22, _mm_srli_si128(high_half(f.v), 7));
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
