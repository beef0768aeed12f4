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
  // The bytes that `which` numbers of 16 pixels of so many bytes, after the bytes skipped, each twice.
  template <int bytes, int skipped>
  MORVANE_INLINE static __m512i bytes_of_pixels(const __m512i v, const uint32_t places, const byte_table& which) {
    constexpr byte_table pixels = bytes_from([](const int i) { return skipped + i / 2 % 16 * bytes; });
    const __m512i of_pixel = rearrange(_mm512_set1_epi32(static_cast<int>(places)), which);
    return _mm512_permutexvar_epi8(_mm512_add_epi8(of_pixel, load_table(pixels)), v);
  }
  template <int bytes, int skipped>
  MORVANE_INLINE static three_blocks bytes_of_pixels(const __m512i a, const __m512i b, const uint32_t places) {
    constexpr byte_table first_and_second = bytes_from([](const int i) { return i / 32; });
    constexpr byte_table third = bytes_from([](int) { return 2; });
    constexpr dword_table lower = dwords_from([](const int i) { return i / 8 * 8 + i; });
    constexpr dword_table upper = dwords_from([](const int i) { return i / 8 * 8 + i + 8; });
    const __m512i a_12 = bytes_of_pixels<bytes, 0>(a, places, first_and_second);
    const __m512i b_12 = bytes_of_pixels<bytes, skipped>(b, places, first_and_second);
    return {{rearrange(a_12, b_12, lower)},
            {rearrange(a_12, b_12, upper)},
            {rearrange(bytes_of_pixels<bytes, 0>(a, places, third), bytes_of_pixels<bytes, skipped>(b, places, third),
                       lower)}};
  }
  MORVANE_INLINE static three_blocks load_bytes_of_fours(const uint8_t* p, const uint32_t places) {
    return bytes_of_pixels<4, 0>(load(p).v, load(p + 64).v, places);
  }
  MORVANE_INLINE static three_blocks load_bytes_of_threes(const uint8_t* p, const uint32_t places) {
    return bytes_of_pixels<3, 16>(load(p).v, load(p + 32).v, places);
  }
  MORVANE_INLINE static block dwords_before(const block before, const block b) {
    constexpr dword_table one_before = dwords_from([](const int i) { return i + 15; });
    return {rearrange(before.v, b.v, one_before)};
  }
  MORVANE_INLINE static block without_first(const block b, const size_t count) {
    return {_mm512_maskz_mov_epi8(~uint64_t{0} << count, b.v)};
  }

  // Blocks hold the upper bytes of two groups of 40 bytes; pairs 8 to 15 are in the second group.
  MORVANE_INLINE static __m256i load_256(const uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  }
  MORVANE_INLINE static void store_256(uint8_t* p, const __m256i v) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
  }
  static constexpr int group_bytes = 40;
  static constexpr int upper_bytes = 32;

  MORVANE_INLINE static block load_upper_of_groups(const uint8_t* p) {
    return {_mm512_inserti64x4(_mm512_castsi256_si512(load_256(p)), load_256(p + group_bytes), 1)};
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

  // Pixels of three bytes, of which so many bytes are skipped.
  template <int skipped>
  MORVANE_INLINE static block fours_of_threes(const uint8_t* p) {
    constexpr byte_table spread = bytes_from([](const int i) { return skipped + i / 4 * 3 + (i % 4 < 3 ? i % 4 : 2); });
    return {rearrange(zmm::load(p), spread)};
  }
  MORVANE_INLINE static two_blocks load_threes(const uint8_t* p) {
    return {fours_of_threes<0>(p), fours_of_threes<16>(p + 32)};
  }
  struct packed_threes {
    static constexpr size_t stored_bytes = 96;
    __m512i first_64;
    __m256i last_32;
  };
  MORVANE_INLINE static packed_threes threes(const two_blocks& fours) {
    constexpr byte_table first = bytes_from([](const int i) { return i / 3 * 4 + i % 3; });
    constexpr byte_table last = bytes_from([](const int i) { return (64 + i % 32) / 3 * 4 + (64 + i % 32) % 3; });
    return {rearrange(fours.first.v, fours.second.v, first),
            _mm512_castsi512_si256(rearrange(fours.first.v, fours.second.v, last))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const packed_threes& t) {
    zmm::store(p, t.first_64);
    store_256(p + 64, t.last_32);
  }

  // Words of three registers.
  template <class Source>
  MORVANE_INLINE static block rearrange_three(const block a, const block b, const block c, const Source) {
    constexpr word_table of_two = words_from([](const int i) { return Source()(i) % 64; });
    constexpr word_table with_third = words_from([](const int i) { return Source()(i) < 64 ? i : Source()(i) - 32; });
    return {rearrange(rearrange(a.v, b.v, of_two), c.v, with_third)};
  }
  MORVANE_INLINE static three_blocks deinterleave3_words(const block a, const block b, const block c) {
    return {rearrange_three(a, b, c, [](const int i) { return 3 * i; }),
            rearrange_three(a, b, c, [](const int i) { return 3 * i + 1; }),
            rearrange_three(a, b, c, [](const int i) { return 3 * i + 2; })};
  }
  // Word `i` of three components in turn.
  static constexpr int word_of_three(const int i) { return i % 3 * 32 + i / 3; }
  MORVANE_INLINE static three_blocks interleave3_words(const block a, const block b, const block c) {
    return {rearrange_three(a, b, c, [](const int i) { return word_of_three(i); }),
            rearrange_three(a, b, c, [](const int i) { return word_of_three(32 + i); }),
            rearrange_three(a, b, c, [](const int i) { return word_of_three(64 + i); })};
  }

  // Four groups of v210. Of each sample, in the order of its line, the first byte that it lies in, and the factor that
  // moves it to the top of the word that begins there.
  struct sample_of_v210 {
    int byte;
    int lift;
  };
  static constexpr sample_of_v210 at_ten(const int place) { return {place / 3 * 4 + place % 3, 64 >> 2 * (place % 3)}; }
  static constexpr sample_of_v210 luma_of_v210(const int i) {
    const sample_of_v210 s = at_ten(2 * (i % 6) + 1);
    return {i / 6 * 16 + s.byte, s.lift};
  }
  static constexpr sample_of_v210 chroma_of_v210(const int i) {
    const sample_of_v210 s = at_ten(4 * (i % 16 % 3) + (i < 16 ? 0 : 2));
    return {i % 16 / 3 * 16 % 64 + s.byte, s.lift};
  }
  template <class Sample>
  MORVANE_INLINE static __m512i tens_of(const block words, const Sample) {
    constexpr byte_table bytes = bytes_from([](const int i) { return (Sample()(i / 2).byte + i % 2) % 64; });
    constexpr word_table lifts = words_from([](const int i) { return Sample()(i).lift; });
    return _mm512_and_si512(_mm512_mullo_epi16(rearrange(words.v, bytes), load_table(lifts)), zmm::repeat_word(0xffc0));
  }
  struct three_lines {
    struct luma_words {
      static constexpr size_t stored_bytes = 48;
      __m512i v;
    } luma;
    struct chroma_words {
      static constexpr size_t stored_bytes = 24;
      __m256i v;
    } cb, cr;
  };
  MORVANE_INLINE static three_lines split_v210(const block words) {
    const __m512i luma = tens_of(words, [](const int i) { return luma_of_v210(i % 24); });
    const __m512i chroma = tens_of(words, [](const int i) { return chroma_of_v210(i); });
    return {{luma}, {_mm512_castsi512_si256(chroma)}, {_mm512_extracti64x4_epi64(chroma, 1)}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::luma_words& w) { zmm::store(p, w.v); }
  MORVANE_INLINE static void store(uint8_t* p, const three_lines::chroma_words& w) { store_256(p, w.v); }

  // 24 words of luma; twelve of Cb in the lower half, and twelve of Cr in the upper one.
  MORVANE_INLINE static two_blocks load_for_v210(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    return {{zmm::load(luma)}, {_mm512_inserti64x4(_mm512_castsi256_si512(load_256(cb)), load_256(cr), 1)}};
  }
  // Where a sample of v210 is in these two.
  static constexpr int word_of_v210(const int sample) {
    const int group = sample / 12;
    const int place = sample % 12;
    if (place % 2 == 1) return 6 * group + place / 2;
    return 32 + (place % 4 == 0 ? 0 : 16) + 3 * group + place / 4;
  }
  MORVANE_INLINE static block join_v210(const two_blocks& lines, const word_table& first_two, const word_table& third) {
    const __m512i lower =
        _mm512_madd_epi16(rearrange(lines.first.v, lines.second.v, first_two), _mm512_set1_epi32(1 | 1024 << 16));
    const __m512i upper = _mm512_slli_epi32(rearrange(lines.first.v, lines.second.v, third), 20);
    return {_mm512_or_si512(lower, upper)};
  }
  MORVANE_INLINE static block join_v210(const two_blocks& lines) {
    constexpr word_table first_two = words_from([](const int i) { return word_of_v210(i / 2 * 3 + i % 2); });
    constexpr word_table third = words_from([](const int i) { return word_of_v210(i / 2 * 3 + 2); });
    return join_v210(lines, first_two, third);
  }

  // Eight groups of five bytes. Word i of a group is its bytes i and i + 1, in which the sample lies 2 i bits below the
  // top.
  static constexpr int bytes_of_fives = 40;

  MORVANE_INLINE static block load_tens_of_fives(const uint8_t* p) {
    constexpr int skipped = bytes_of_fives - 32;
    constexpr byte_table words = bytes_from([](const int i) {
      const int byte = i / 8 * 5 + i % 8 / 2 + 1 - i % 2;
      return byte < 32 ? byte : 32 + byte - skipped;
    });
    constexpr word_table lifts = words_from([](const int i) { return 1 << 2 * (i % 4); });
    const __m512i all = _mm512_inserti64x4(_mm512_castsi256_si512(load_256(p)), load_256(p + skipped), 1);
    return {_mm512_and_si512(_mm512_mullo_epi16(rearrange(all, words), load_table(lifts)), zmm::repeat_word(0xffc0))};
  }
  struct groups_of_five {
    static constexpr size_t stored_bytes = bytes_of_fives;
    __m512i v;
  };
  // The bytes between the first and the last one of a group end a word and begin the next.
  MORVANE_INLINE static constexpr uint64_t bytes_of_two_words() {
    uint64_t mask = 0;
    for (int i = 0; i < bytes_of_fives; ++i) mask |= static_cast<uint64_t>(i % 5 > 0 && i % 5 < 4) << i;
    return mask;
  }
  MORVANE_INLINE static groups_of_five fives_of_tens(const block samples) {
    constexpr word_table lifts = words_from([](const int i) { return 64 >> 2 * (i % 4); });
    constexpr byte_table begun = bytes_from([](const int i) { return i / 5 * 8 + (i % 5 < 4 ? i % 5 * 2 + 1 : 6); });
    constexpr byte_table ended = bytes_from([](const int i) { return i / 5 * 8 + (i % 5 + 3) % 4 * 2; });
    const __m512i words = _mm512_mullo_epi16(_mm512_srli_epi16(samples.v, 6), load_table(lifts));
    return {_mm512_or_si512(rearrange(words, begun),
                            _mm512_maskz_permutexvar_epi8(bytes_of_two_words(), load_table(ended), words))};
  }
  MORVANE_INLINE static void store(uint8_t* p, const groups_of_five& g) {
    store_256(p, _mm512_castsi512_si256(g.v));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 32), _mm256_castsi256_si128(_mm512_extracti64x4_epi64(g.v, 1)));
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
