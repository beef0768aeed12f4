// Blocks on AVX-512: runs of 64 bytes as they stand in memory. operations.h says what each operation does.
//
// One instruction rearranges the bytes of a whole register, or of two, by a table that says for each byte where it
// comes from. Hence all types are in memory order, and each exchange is stated as such a table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "inline.h"
#include "x86.h"
#include "x86_intrinsics.h"
#include "zmm.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx512;

struct avx512_blocks : x86_vectors<zmm, avx512> {
  using x86_vectors<zmm, avx512>::store;

  // For each item of a register the one that it comes from; of a pair of registers, those of the second one follow.
  template <class Item>
  struct table {
    static constexpr int items = 64 / sizeof(Item);
    Item from[items];
  };
  using byte_table = table<uint8_t>;
  using word_table = table<uint16_t>;
  using dword_table = table<uint32_t>;

  template <class Table, class Source>
  static constexpr Table table_of(const Source source_of) {
    Table t{};
    for (int i = 0; i < Table::items; ++i)
      t.from[i] = static_cast<std::remove_reference_t<decltype(t.from[0])>>(source_of(i));
    return t;
  }
  template <class Source>
  static constexpr byte_table bytes_from(const Source source_of) {
    return table_of<byte_table>(source_of);
  }
  template <class Source>
  static constexpr word_table words_from(const Source source_of) {
    return table_of<word_table>(source_of);
  }
  template <class Source>
  static constexpr dword_table dwords_from(const Source source_of) {
    return table_of<dword_table>(source_of);
  }
  // Items of two registers alternately, of their lower or of their upper halves.
  enum class half : bool { lower, upper };

  template <class Table>
  static constexpr Table alternating(const half h) {
    return table_of<Table>(
        [h](const int i) { return i / 2 + i % 2 * Table::items + (h == half::upper ? Table::items / 2 : 0); });
  }
  template <class Item>
  MORVANE_INLINE static __m512i load_table(const table<Item>& t) {
    return _mm512_loadu_si512(t.from);
  }

  MORVANE_INLINE static __m512i rearrange(const __m512i v, const byte_table& t) {
    return _mm512_permutexvar_epi8(load_table(t), v);
  }
  MORVANE_INLINE static __m512i rearrange(const __m512i a, const __m512i b, const byte_table& t) {
    return _mm512_permutex2var_epi8(a, load_table(t), b);
  }
  MORVANE_INLINE static __m512i rearrange(const __m512i a, const __m512i b, const word_table& t) {
    return _mm512_permutex2var_epi16(a, load_table(t), b);
  }
  MORVANE_INLINE static __m512i rearrange(const __m512i a, const __m512i b, const dword_table& t) {
    return _mm512_permutex2var_epi32(a, load_table(t), b);
  }
  MORVANE_INLINE static __m512 rearrange(const __m512 a, const __m512 b, const dword_table& t) {
    return _mm512_permutex2var_ps(a, load_table(t), b);
  }

  // Of 16-byte lanes, first 0 2 4 6 of two packed registers and then 1 3 5 7, in units of eight bytes.
  MORVANE_INLINE static __m512i from_packing(const __m512i v) {
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), v);
  }

  MORVANE_INLINE static two_blocks deinterleave2(const block a, const block b) {
    constexpr byte_table even = bytes_from([](const int i) { return 2 * i; });
    constexpr byte_table odd = bytes_from([](const int i) { return 2 * i + 1; });
    return {{rearrange(a.v, b.v, even)}, {rearrange(a.v, b.v, odd)}};
  }
  MORVANE_INLINE static two_blocks deinterleave2_words(const block a, const block b) {
    constexpr word_table even = words_from([](const int i) { return 2 * i; });
    constexpr word_table odd = words_from([](const int i) { return 2 * i + 1; });
    return {{rearrange(a.v, b.v, even)}, {rearrange(a.v, b.v, odd)}};
  }
  MORVANE_INLINE static two_blocks interleave2(const block a, const block b) {
    constexpr byte_table low = alternating<byte_table>(half::lower);
    constexpr byte_table high = alternating<byte_table>(half::upper);
    return {{rearrange(a.v, b.v, low)}, {rearrange(a.v, b.v, high)}};
  }
  MORVANE_INLINE static two_blocks interleave2_words(const block a, const block b) {
    constexpr word_table low = alternating<word_table>(half::lower);
    constexpr word_table high = alternating<word_table>(half::upper);
    return {{rearrange(a.v, b.v, low)}, {rearrange(a.v, b.v, high)}};
  }
  MORVANE_INLINE static two_blocks interleave2_dwords(const block a, const block b) {
    constexpr dword_table low = alternating<dword_table>(half::lower);
    constexpr dword_table high = alternating<dword_table>(half::upper);
    return {{rearrange(a.v, b.v, low)}, {rearrange(a.v, b.v, high)}};
  }
  MORVANE_INLINE static block without_first(const block b, const size_t count) {
    return {_mm512_maskz_mov_epi8(~uint64_t{0} << count, b.v)};
  }

  // Blocks hold the upper bytes of two groups of 40 bytes; pairs 8 to 15 are in the second group.
  static constexpr int group_bytes = 40;
  static constexpr int upper_bytes = 32;

  MORVANE_INLINE static block load_upper_of_groups(const uint8_t* p) {
    const __m256i first = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    const __m256i second = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + group_bytes));
    return {_mm512_inserti64x4(_mm512_castsi256_si512(first), second, 1)};
  }
  // Eight bits of each double word to its first word and eight to its second one, of which bits 7 and 6 are kept.
  template <int first_bit, int second_bit>
  MORVANE_INLINE static block two_bits_of_dwords(const __m512i v) {
    constexpr byte_table bits =
        bytes_from([](const int i) { return i / 4 % 2 * 32 + (i % 4 < 2 ? first_bit : second_bit) - 6; });
    return {_mm512_and_si512(_mm512_multishift_epi64_epi8(load_table(bits), v), _mm512_set1_epi16(0x00c0))};
  }
  // The byte of a pair, in two bits each Cr Y1 Cb Y0 from the top, becomes the second byte of its double word.
  MORVANE_INLINE static two_blocks load_lower_of_groups(const uint8_t* p) {
    constexpr int from = 2 * group_bytes - 64;
    constexpr byte_table of_pairs = bytes_from([](const int i) {
      const int pair = i / 4;
      return pair / 8 * group_bytes + upper_bytes + pair % 8 - from;
    });
    const __m512i bytes = rearrange(zmm::load(p + from), of_pairs);
    return {two_bits_of_dwords<8, 12>(bytes), two_bits_of_dwords<10, 14>(bytes)};
  }
  struct groups {
    static constexpr size_t stored_bytes = 2 * group_bytes;
    __m512i first_64;
    __m128i last_16;
  };
  // Where byte i of the groups is, in the upper bytes or, behind them, in the second bytes of the pairs' double words.
  static constexpr int byte_of_groups(const int i) {
    const int group = i / group_bytes;
    const int place = i % group_bytes;
    const int pair = 8 * group + place - upper_bytes;
    return place < upper_bytes ? group * upper_bytes + place : 64 + 4 * pair + 1;
  }
  template <bool cr_as_cb>
  MORVANE_INLINE static groups join_groups(const block upper, const block luma, const block cbcr) {
    constexpr byte_table first = bytes_from([](const int i) { return byte_of_groups(i); });
    constexpr byte_table last = bytes_from([](const int i) { return byte_of_groups(64 + i % 16); });
    const __m512i lower = bits_of_pairs<cr_as_cb>(luma.v, cbcr.v);
    return {rearrange(upper.v, lower, first), _mm512_castsi512_si128(rearrange(upper.v, lower, last))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const groups& g) {
    zmm::store(p, g.first_64);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p + 64), g.last_16);
  }

  // Two 32-bit words hold six samples, whose upper eight bits become the first six of eight bytes.
  MORVANE_INLINE static __m512i six_of_eight_bytes(const uint8_t* p) {
    constexpr byte_table bits = bytes_from([](const int i) { return i % 8 / 3 % 2 * 32 + i % 8 % 3 * 10 + 2; });
    return _mm512_multishift_epi64_epi8(load_table(bits), zmm::load(p));
  }
  // Each register has 48 such bytes: block b takes those from 64 * b on, of registers b and b + 1.
  template <int b>
  MORVANE_INLINE static block without_gaps(const __m512i low, const __m512i high) {
    constexpr byte_table gathered = bytes_from([](const int i) {
      const int sample = 64 * b - 48 * b + i;
      return sample / 6 * 8 + sample % 6;
    });
    return {rearrange(low, high, gathered)};
  }
  MORVANE_INLINE static three_blocks upper_bytes_of_10(const uint8_t* p) {
    const __m512i v0 = six_of_eight_bytes(p);
    const __m512i v1 = six_of_eight_bytes(p + 64);
    const __m512i v2 = six_of_eight_bytes(p + 128);
    const __m512i v3 = six_of_eight_bytes(p + 192);
    return {without_gaps<0>(v0, v1), without_gaps<1>(v1, v2), without_gaps<2>(v2, v3)};
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
