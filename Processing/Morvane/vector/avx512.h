// The vector operations on AVX-512: 64 pixels at a time. operations.h says what each does.
//
// Every register is in memory order, because one instruction rearranges the bytes of two registers by a table. Sums of
// products are formed in words or, where 16 bits do not hold them, in the double words of 16 pixels, from where such a
// table picks the bytes that are the result.
#pragma once

#include <cstddef>
#include <cstdint>

#include "avx2.h"
#include "avx512_sixes.h"
#include "inline.h"
#include "opaque.h"
#include "weights.h"
#include "x86_intrinsics.h"
#include "zmm.h"

namespace Processing::Morvane::format_conversion::vector {

struct avx512 : avx512_sixes {
  using narrower = avx2;
  // Where stores take the time, those of 64 bytes take more of it, as soon as they do not begin with a cache line.
  using mover = avx2;

  static constexpr int vectors_a_turn = 1;
  static constexpr int stored_together = 1;
  // A store is a cache line; announcing it costs images that fit no cache up to a fifth, where stores are not crowded.
  static constexpr int stores_expected_ahead = 1024;
  static constexpr bool announces_crowded_stores_alone = true;
  static constexpr int loads_expected_ahead = 512;

  // Four registers of 16 pixels.
  struct pixels {
    __m512i p0, p16, p32, p48;
  };
  using weighable = pixels;
  // Words that become bytes when they are stored, by packing, which stops at 0 and 255.
  struct pair_bytes {
    static constexpr size_t stored_bytes = 64;
    pair_words of;
  };
  // A sum for each pixel of pairs, formed when it is stored.
  template <ycbcr_weights w, int bits>
  struct pair_sum {
    static constexpr size_t stored_bytes = 64;
    pairs of;
  };

  using avx512_blocks::interleave2;
  using avx512_sixes::store;

  MORVANE_INLINE static pixels load4(const uint8_t* p) {
    return {zmm::load(p), zmm::load(p + 64), zmm::load(p + 128), zmm::load(p + 192)};
  }
  MORVANE_INLINE static weighable load4_weighable(const uint8_t* p) { return load4(p); }
  // 16 pixels of three bytes, 48 of the 64 bytes that are read, with the second byte once more as the fourth.
  template <int skipped>
  MORVANE_INLINE static __m512i pixels_of_three(const uint8_t* p) {
    constexpr byte_table spread = bytes_from([](const int i) { return skipped + i / 4 * 3 + (i % 4 < 3 ? i % 4 : 1); });
    return rearrange(zmm::load(p - skipped), spread);
  }
  MORVANE_INLINE static weighable load3_weighable(const uint8_t* p) {
    return {pixels_of_three<0>(p), pixels_of_three<0>(p + 48), pixels_of_three<0>(p + 96),
            pixels_of_three<16>(p + 144)};
  }

  template <weights even, weights odd = even>
  MORVANE_INLINE static __m512i weights_of_pixels() {
    constexpr uint64_t of_pair = static_cast<uint64_t>(packed(odd)) << 32 | packed(even);
    return _mm512_set1_epi64(static_cast<long long>(of_pair));
  }
  // Eight bits from `bit` on of each double word to its byte `to`, where v has them; all other bytes are those of rest.
  template <int to, int bit>
  MORVANE_INLINE static __m512i insert_byte(const __m512i rest, const __m512i v) {
    constexpr byte_table bits = bytes_from([](const int i) { return i / 4 % 2 * 32 + bit; });
    return _mm512_mask_multishift_epi64_epi8(rest, uint64_t{0x1111111111111111} << to, load_table(bits), v);
  }
  // Luma lies above chroma, which does not carry: 32768 and a sum stay below 65536.
  template <weights u, weights v, weights luma, int luma_bits>
  MORVANE_INLINE static __m512i sums_of_pixels(const __m512i p) {
    const __m512i y = _mm512_dpbusd_epi32(_mm512_set1_epi32(16 << luma_bits), p, weights_of_pixels<luma>());
    return _mm512_dpbusd_epi32(insert_byte<2, luma_bits>(_mm512_set1_epi32(128 << 8), y), p, weights_of_pixels<u, v>());
  }
  template <weights u, weights v, weights luma, int luma_bits>
  MORVANE_INLINE static __m512i direct_pairs(const __m512i low, const __m512i high) {
    constexpr byte_table middle = bytes_from([](const int i) { return i / 2 * 4 + 1 + i % 2; });
    return rearrange(sums_of_pixels<u, v, luma, luma_bits>(low), sums_of_pixels<u, v, luma, luma_bits>(high), middle);
  }
  // Sums fit signed words, four of the first register and four of the second in each 16-byte lane.
  template <weights even, weights odd = even>
  MORVANE_INLINE static __m512i packed_sums(const __m512i low, const __m512i high) {
    const __m512i none = _mm512_setzero_si512();
    const __m512i w = weights_of_pixels<even, odd>();
    return _mm512_packs_epi32(_mm512_dpbusd_epi32(none, low, w), _mm512_dpbusd_epi32(none, high, w));
  }
  // The upper half of a signed product is the product >> 16; of twice the product it is the product >> 15.
  template <weights u, weights v, weights luma, int luma_bits>
  MORVANE_INLINE static __m512i scaled_pairs(const __m512i low, const __m512i high) {
    constexpr byte_table fourth =
        bytes_from([](const int i) { return i % 16 / 8 * 64 + i / 16 * 16 + i % 8 / 2 * 4 + 3; });
    constexpr byte_table in_order = bytes_from([](const int i) {
      const int pixel = i / 2;
      return i % 2 * 64 + pixel % 16 / 4 * 16 + pixel / 16 * 8 + pixel % 4 * 2;
    });
    const __m512i a = _mm512_maskz_permutex2var_epi8(0x5555555555555555, low, load_table(fourth), high);
    const __m512i chroma = zmm::upper_product(packed_sums<u, v>(low, high), a);
    const __m512i y = zmm::upper_product(packed_sums<luma>(low, high), zmm::shift_words_left<8 - luma_bits>(a));
    return zmm::add_bytes(rearrange(chroma, y, in_order), zmm::repeat_word(128 | 16 << 8));
  }
  template <weights u, weights v, weights luma, int luma_bits, bool scaled>
  MORVANE_INLINE static words pairs_of_sums(const weighable& p) {
    if constexpr (scaled)
      return {scaled_pairs<u, v, luma, luma_bits>(p.p0, p.p16), scaled_pairs<u, v, luma, luma_bits>(p.p32, p.p48)};
    else
      return {direct_pairs<u, v, luma, luma_bits>(p.p0, p.p16), direct_pairs<u, v, luma, luma_bits>(p.p32, p.p48)};
  }

  MORVANE_INLINE static bytes load_bytes(const uint8_t* p) { return {zmm::load(p)}; }
  MORVANE_INLINE static void store(uint8_t* p, const bytes b) { zmm::store(p, b.v); }
  MORVANE_INLINE static words load_words(const uint8_t* p) { return {zmm::load(p), zmm::load(p + 64)}; }
  MORVANE_INLINE static void store(uint8_t* p, const words& w) {
    zmm::store(p, w.lo);
    zmm::store(p + 64, w.hi);
  }
  MORVANE_INLINE static words widen(const bytes b) {
    return {_mm512_cvtepu8_epi16(_mm512_castsi512_si256(b.v)), _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(b.v, 1))};
  }
  MORVANE_INLINE static words widen_repeated(const bytes b) {
    constexpr byte_table low = bytes_from([](const int i) { return i / 2; });
    constexpr byte_table high = bytes_from([](const int i) { return 32 + i / 2; });
    return {rearrange(b.v, low), rearrange(b.v, high)};
  }
  MORVANE_INLINE static __m512i upper_bytes(const __m512i low, const __m512i high) {
    constexpr byte_table odd = bytes_from([](const int i) { return i / 2 * 2 + 1 + i % 2 * 64; });
    return rearrange(low, high, odd);
  }
  MORVANE_INLINE static words upper_bytes(const words& low, const words& high) {
    return {upper_bytes(low.lo, high.lo), upper_bytes(low.hi, high.hi)};
  }

  // Four registers to one. The second pair is put into the places that the first one leaves: there the bytes of its
  // result are the table for the second pair.
  MORVANE_INLINE static __m512i join_four(const __m512i a, const __m512i b, const __m512i c, const __m512i d,
                                          const byte_table& table, const uint64_t from_first) {
    const __m512i first = _mm512_mask2_permutex2var_epi8(a, load_table(table), from_first, b);
    return _mm512_mask2_permutex2var_epi8(c, first, ~from_first, d);
  }
  MORVANE_INLINE static bytes fourth(const pixels& p) {
    constexpr byte_table fourth = bytes_from([](const int i) { return i % 32 * 4 + 3; });
    return {join_four(p.p0, p.p16, p.p32, p.p48, fourth, 0xffffffff)};
  }
  MORVANE_INLINE static words fourth_words(const pixels& p) {
    constexpr byte_table fourth = bytes_from([](const int i) { return i / 2 * 4 + 3; });
    constexpr uint64_t low_bytes_alone = 0x5555555555555555;
    const __m512i table = load_table(fourth);
    return {_mm512_maskz_permutex2var_epi8(low_bytes_alone, p.p0, table, p.p16),
            _mm512_maskz_permutex2var_epi8(low_bytes_alone, p.p32, table, p.p48)};
  }
  template <int even, int odd, int own>
  MORVANE_INLINE static words pick_of_pairs(const pixels& p) {
    constexpr byte_table picked = bytes_from([](const int i) {
      const int pixel = i / 2;
      return i % 2 == 1 ? 4 * pixel + own : 4 * (pixel - pixel % 2) + (pixel % 2 == 0 ? even : odd);
    });
    return {rearrange(p.p0, p.p16, picked), rearrange(p.p32, p.p48, picked)};
  }

  // Byte 1 of a sum and byte 3 of the pixel, or of the sum where that is 255, with bytes 0 and 2 of before.
  template <weights w, bool has_fourth>
  MORVANE_INLINE static __m512i replaced(const __m512i before, const __m512i pixel) {
    constexpr uint32_t opaque = has_fourth ? 0 : 0xff000000;
    constexpr int copies_odd_bytes = 0xb8;  // the third operand's where the second one is set, else the first one's
    const __m512i sum =
        _mm512_dpbusd_epi32(_mm512_set1_epi32(static_cast<int>(opaque | 128 << 8)), pixel, weights_of_pixels<w>());
    const __m512i both = has_fourth ? _mm512_mask_mov_epi8(sum, 0x8888888888888888, pixel) : sum;
    return _mm512_ternarylogic_epi32(before, _mm512_set1_epi16(-256), both, copies_odd_bytes);
  }
  template <weights w, bool has_fourth>
  struct second_and_fourth {
    static constexpr size_t stored_bytes = 256;
    pixels from;
  };
  template <weights w, bool has_fourth>
  MORVANE_INLINE static second_and_fourth<w, has_fourth> second_and_fourth_of(const pixels& from) {
    return {from};
  }
  template <weights w, bool has_fourth>
  MORVANE_INLINE static void store(uint8_t* p, const second_and_fourth<w, has_fourth>& s) {
    const pixels before = load4(p);
    // Otherwise a compiler reads each register just before it is replaced, which takes large images a tenth longer.
    asm volatile("" ::: "memory");
    zmm::store(p, replaced<w, has_fourth>(before.p0, s.from.p0));
    zmm::store(p + 64, replaced<w, has_fourth>(before.p16, s.from.p16));
    zmm::store(p + 128, replaced<w, has_fourth>(before.p32, s.from.p32));
    zmm::store(p + 192, replaced<w, has_fourth>(before.p48, s.from.p48));
  }

  MORVANE_INLINE static pairs load_uyvy(const uint8_t* p) { return {zmm::load(p), zmm::load(p + 64)}; }
  MORVANE_INLINE static pairs load_upper_bytes(const uint8_t* luma, const uint8_t* chroma) {
    return {upper_bytes(zmm::load(chroma), zmm::load(luma)), upper_bytes(zmm::load(chroma + 64), zmm::load(luma + 64))};
  }
  // Where a byte of pixel 0 to 31 of uyvy is: its luma, or its pair's Cb or Cr.
  static constexpr int luma_of(const int pixel) { return 2 * pixel + 1; }
  static constexpr int chroma_of(const int pixel, const bool cr) { return pixel / 2 * 4 + (cr ? 2 : 0); }

  // Of Cb Y0 Cr Y1: both Y with Cb, or both Y with Cr.
  template <bool with_cr>
  MORVANE_INLINE static __m512i luma_and_chroma(const __m512i uyvy) {
    constexpr byte_table from =
        bytes_from([](const int i) { return i % 2 == 0 ? luma_of(i / 2) : chroma_of(i / 2, with_cr); });
    return rearrange(uyvy, from);
  }
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_sum<w, bits> clamped_sum(const pairs& p) {
    return {p};
  }
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_bytes bytes_of(const pair_sum<w, bits>& s) {
    return {sum_of_words<w, bits>(s.of)};
  }
  MORVANE_INLINE static pair_bytes bytes_of(const pair_bytes& b) { return b; }
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static void store(uint8_t* p, const pair_sum<w, bits>& s) {
    store(p, bytes_of(s));
  }
  MORVANE_INLINE static pair_bytes load_pair_bytes(const uint8_t* p) {
    const __m256i lo = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    const __m256i hi = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32));
    return {{_mm512_cvtepu8_epi16(lo), _mm512_cvtepu8_epi16(hi)}};
  }
  MORVANE_INLINE static void store(uint8_t* p, const pair_bytes& b) {
    zmm::store(p, from_packing(_mm512_packus_epi16(b.of.lo, b.of.hi)));
  }
  // Two registers of words, of pixels 0 to 31, are packed lane by lane. Where the byte of a pixel then is.
  static constexpr int packed_byte(const int pixel, const bool of_second) {
    return pixel / 8 * 16 + (of_second ? 8 : 0) + pixel % 8;
  }
  // 16 pixels from `first` on, of which the first two bytes are packed together and the others too.
  template <int first>
  MORVANE_INLINE static block join_packed(const __m512i c01, const __m512i c23) {
    constexpr byte_table in_order =
        bytes_from([](const int i) { return i % 4 / 2 * 64 + packed_byte(first + i / 4, i % 2 == 1); });
    return {rearrange(c01, c23, in_order)};
  }
  MORVANE_INLINE static four_blocks interleave_bytes(const pair_bytes& c0, const pair_bytes& c1, const pair_bytes& c2,
                                                     const pair_bytes& c3) {
    const __m512i c01_lo = _mm512_packus_epi16(c0.of.lo, c1.of.lo);
    const __m512i c01_hi = _mm512_packus_epi16(c0.of.hi, c1.of.hi);
    const __m512i c23_lo = _mm512_packus_epi16(c2.of.lo, c3.of.lo);
    const __m512i c23_hi = _mm512_packus_epi16(c2.of.hi, c3.of.hi);
    return {join_packed<0>(c01_lo, c23_lo), join_packed<16>(c01_lo, c23_lo), join_packed<0>(c01_hi, c23_hi),
            join_packed<16>(c01_hi, c23_hi)};
  }
  template <class First, class Second, class Third>
  MORVANE_INLINE static four_blocks interleave4(const First& c0, const Second& c1, const Third& c2,
                                                const pair_bytes& c3) {
    return interleave_bytes(bytes_of(c0), bytes_of(c1), bytes_of(c2), c3);
  }
  template <class First, class Second, class Third>
  MORVANE_INLINE static four_blocks interleave4(const First& c0, const Second& c1, const Third& c2, opaque) {
    const __m512i full = zmm::repeat_word(255);
    return interleave4(c0, c1, c2, pair_bytes{{full, full}});
  }

  // Luma and a sample of chroma of the 16 pixels from `first` on, as the two words of a double word.
  template <int first, bool with_cr>
  MORVANE_INLINE static __m512i words_of_pixels(const __m512i uyvy) {
    constexpr byte_table spread = bytes_from([](const int i) {
      const int pixel = first + i / 4;
      return i % 4 < 2 ? luma_of(pixel) : chroma_of(pixel, with_cr);
    });
    return _mm512_maskz_permutexvar_epi8(0x5555555555555555, load_table(spread), uyvy);
  }
  template <ycbcr_weights w, int first, int offset = 0>
  MORVANE_INLINE static __m512i sum_of_pixels(const __m512i uyvy) {
    constexpr int y = w.y;
    constexpr int cb = w.cb * 65536;
    constexpr int cr = w.cr * 65536;
    __m512i sum = _mm512_set1_epi32(w.constant + offset);
    if constexpr (cb != 0)
      sum = _mm512_dpwssd_epi32(sum, words_of_pixels<first, false>(uyvy), _mm512_set1_epi32(cb | y));
    if constexpr (cr != 0)
      sum = _mm512_dpwssd_epi32(sum, words_of_pixels<first, true>(uyvy), _mm512_set1_epi32(cb != 0 ? cr : cr | y));
    return sum;
  }
  // Sums of 18 bits are formed in double words, of which bits 8 to 15 are the byte when the whole is clamped. Packing
  // does that, four words of the first sums and four of the second in each 16-byte lane; for the third ones, with 255
  // above, two comparisons take less.
  template <ycbcr_weights w0, ycbcr_weights w1, ycbcr_weights w2, int first>
  MORVANE_INLINE static block opaque_pixels(const __m512i uyvy) {
    constexpr byte_table in_order = bytes_from([](const int i) {
      const int pixel = i / 4;
      return i % 4 < 2 ? pixel / 4 * 16 + i % 4 * 8 + pixel % 4 * 2 + 1 : 64 + 4 * pixel + i % 2 * 2 + 1;
    });
    constexpr int black = static_cast<int>(0xff000000);
    constexpr int white = static_cast<int>(0xff00ffff);
    const __m512i third = _mm512_max_epi32(sum_of_pixels<w2, first, black>(uyvy), _mm512_set1_epi32(black));
    return {rearrange(_mm512_packus_epi32(sum_of_pixels<w0, first>(uyvy), sum_of_pixels<w1, first>(uyvy)),
                      _mm512_min_epi32(third, _mm512_set1_epi32(white)), in_order)};
  }
  template <ycbcr_weights w0, ycbcr_weights w1, ycbcr_weights w2>
  MORVANE_INLINE static four_blocks interleave4(const pair_sum<w0, 8>& c0, const pair_sum<w1, 8>&,
                                                const pair_sum<w2, 8>&, opaque) {
    return {opaque_pixels<w0, w1, w2, 0>(c0.of.lo), opaque_pixels<w0, w1, w2, 16>(c0.of.lo),
            opaque_pixels<w0, w1, w2, 0>(c0.of.hi), opaque_pixels<w0, w1, w2, 16>(c0.of.hi)};
  }

  // Of 64 pixels of three bytes the first two channels are packed in a register for each 32 pixels, and the third one
  // in a register for all. The byte that becomes byte i of these, from register `part` of the first two on.
  static constexpr int byte_of_three(const int i, const int part) {
    const int pixel = i / 3;
    const int channel = i % 3;
    if (channel < 2) return (pixel / 32 - part) * 64 + packed_byte(pixel % 32, channel == 1);
    return 64 + packed_byte(pixel % 32, pixel / 32 == 1);
  }
  template <int first, int part>
  MORVANE_INLINE static block join_three(const __m512i c01, const __m512i c2) {
    constexpr byte_table in_order = bytes_from([](const int i) { return byte_of_three(first + i, part); });
    return {rearrange(c01, c2, in_order)};
  }
  static constexpr uint64_t third_bytes(const int first) {
    uint64_t mask = 0;
    for (int i = 0; i < 64; ++i) mask |= static_cast<uint64_t>((first + i) % 3 == 2) << i;
    return mask;
  }
  template <ycbcr_weights w0, ycbcr_weights w1, ycbcr_weights w2, int bits>
  MORVANE_INLINE static three_blocks interleave3(const pair_sum<w0, bits>& s0, const pair_sum<w1, bits>& s1,
                                                 const pair_sum<w2, bits>& s2) {
    const pair_words c0 = bytes_of(s0).of;
    const pair_words c1 = bytes_of(s1).of;
    const pair_words c2 = bytes_of(s2).of;
    const __m512i c01_lo = _mm512_packus_epi16(c0.lo, c1.lo);
    const __m512i c01_hi = _mm512_packus_epi16(c0.hi, c1.hi);
    const __m512i third = _mm512_packus_epi16(c2.lo, c2.hi);
    constexpr byte_table of_both = bytes_from([](const int i) { return byte_of_three(64 + i, 0); });
    const __m512i table = load_table(of_both);
    const __m512i first_two = _mm512_permutex2var_epi8(c01_lo, table, c01_hi);
    const __m512i middle = _mm512_mask_permutexvar_epi8(first_two, third_bytes(64), table, third);
    return {join_three<0, 0>(c01_lo, third), {middle}, join_three<128, 1>(c01_hi, third)};
  }

  template <int first>
  MORVANE_INLINE static block opaque_grey_from(const bytes b) {
    constexpr byte_table repeated = bytes_from([](const int i) { return first + i / 4; });
    return {_mm512_mask_permutexvar_epi8(zmm::repeat_byte(255), 0x7777777777777777, load_table(repeated), b.v)};
  }
  MORVANE_INLINE static four_blocks opaque_grey(const bytes b) {
    return {opaque_grey_from<0>(b), opaque_grey_from<16>(b), opaque_grey_from<32>(b), opaque_grey_from<48>(b)};
  }

  // The byte of uyvy that becomes a pixel's byte, of pixels Y Cb Cr or Cr Cb Y.
  static constexpr int byte_of_444(const bool is_crcby, const int pixel, const int byte) {
    return byte == (is_crcby ? 2 : 0) ? luma_of(pixel) : chroma_of(pixel, byte != 1);
  }
  template <bool is_crcby, int first>
  MORVANE_INLINE static block opaque_444(const __m512i uyvy) {
    constexpr byte_table from =
        bytes_from([](const int i) { return byte_of_444(is_crcby, first + i / 4, i % 4) % 64; });
    return {_mm512_mask_permutexvar_epi8(_mm512_set1_epi8(-1), 0x7777777777777777, load_table(from), uyvy)};
  }
  template <bool is_crcby>
  MORVANE_INLINE static four_blocks pixels_of_444(const uint8_t* uyvy) {
    const __m512i low = zmm::load(uyvy);
    const __m512i high = zmm::load(uyvy + 64);
    return {opaque_444<is_crcby, 0>(low), opaque_444<is_crcby, 16>(low), opaque_444<is_crcby, 0>(high),
            opaque_444<is_crcby, 16>(high)};
  }
  // Alpha of the pixels from `alpha` on.
  template <bool is_crcby, int first, int alpha>
  MORVANE_INLINE static block pixels_with_alpha(const __m512i uyvy, const __m512i plane) {
    constexpr byte_table from = bytes_from(
        [](const int i) { return i % 4 == 3 ? 64 + alpha + i / 4 : byte_of_444(is_crcby, first + i / 4, i % 4); });
    return {rearrange(uyvy, plane, from)};
  }
  template <bool is_crcby>
  MORVANE_INLINE static four_blocks pixels_of_444(const uint8_t* uyvy, const uint8_t* alpha) {
    const __m512i low = zmm::load(uyvy);
    const __m512i high = zmm::load(uyvy + 64);
    const __m512i plane = zmm::load(alpha);
    return {pixels_with_alpha<is_crcby, 0, 0>(low, plane), pixels_with_alpha<is_crcby, 16, 16>(low, plane),
            pixels_with_alpha<is_crcby, 0, 32>(high, plane), pixels_with_alpha<is_crcby, 16, 48>(high, plane)};
  }

  // Four pixels from pixel `first` on, of which those from `luma` on have luma and alpha.
  template <int first, int luma>
  MORVANE_INLINE static __m512 pixels_of_floats(const __m512 cbcr, const __m512 luma_alpha) {
    constexpr dword_table crcbya = dwords_from([](const int i) {
      const int pixel = first + i / 4;
      return i % 4 < 2 ? pixel / 2 * 2 + 1 - i % 4 : 16 + 2 * (pixel - luma) + i % 2;
    });
    return rearrange(cbcr, luma_alpha, crcbya);
  }
  struct vuya {
    static constexpr size_t stored_bytes = 256;
    __m512 p0, p4, p8, p12;
  };
  MORVANE_INLINE static vuya join_vuya(const floats cbcr, const floats luma, const floats alpha) {
    constexpr dword_table low = alternating<dword_table>(half::lower);
    constexpr dword_table high = alternating<dword_table>(half::upper);
    const __m512 ya_0 = rearrange(luma.v, alpha.v, low);
    const __m512 ya_8 = rearrange(luma.v, alpha.v, high);
    return {pixels_of_floats<0, 0>(cbcr.v, ya_0), pixels_of_floats<4, 0>(cbcr.v, ya_0),
            pixels_of_floats<8, 8>(cbcr.v, ya_8), pixels_of_floats<12, 8>(cbcr.v, ya_8)};
  }
  MORVANE_INLINE static void store(uint8_t* p, const vuya& pixels) {
    _mm512_storeu_ps(p, pixels.p0);
    _mm512_storeu_ps(p + 64, pixels.p4);
    _mm512_storeu_ps(p + 128, pixels.p8);
    _mm512_storeu_ps(p + 192, pixels.p12);
  }

  // Of pixels of four floats, the items `first` and `first` + 1 of eight pixels, and then each for 16 pixels.
  template <int first>
  MORVANE_INLINE static __m512 two_of_pixels(const __m512 low, const __m512 high) {
    constexpr dword_table items = dwords_from([](const int i) { return i % 8 * 4 + first + i / 8; });
    return rearrange(low, high, items);
  }
  template <int half>
  MORVANE_INLINE static floats join_halves(const __m512 low, const __m512 high) {
    constexpr dword_table items = dwords_from([](const int i) { return i / 8 * 16 + half * 8 + i % 8; });
    return {rearrange(low, high, items)};
  }
  MORVANE_INLINE static __m512 load_floats(const uint8_t* p) { return _mm512_castsi512_ps(zmm::load(p)); }
  MORVANE_INLINE static four_floats load_four_floats(const uint8_t* p) {
    const __m512 p0 = load_floats(p), p4 = load_floats(p + 64), p8 = load_floats(p + 128), p12 = load_floats(p + 192);
    const __m512 low_01 = two_of_pixels<0>(p0, p4), high_01 = two_of_pixels<0>(p8, p12);
    const __m512 low_23 = two_of_pixels<2>(p0, p4), high_23 = two_of_pixels<2>(p8, p12);
    return {join_halves<0>(low_01, high_01), join_halves<1>(low_01, high_01), join_halves<0>(low_23, high_23),
            join_halves<1>(low_23, high_23)};
  }
  // Two items of eight pixels alternately, and then the four of four pixels.
  template <int first>
  MORVANE_INLINE static __m512 alternate_floats(const floats a, const floats b) {
    constexpr dword_table items = dwords_from([](const int i) { return i % 2 * 16 + first + i / 2; });
    return rearrange(a.v, b.v, items);
  }
  template <int first>
  MORVANE_INLINE static block four_pixels(const __m512 ab, const __m512 cd) {
    constexpr dword_table items =
        dwords_from([](const int i) { return i % 4 / 2 * 16 + first * 2 + i / 4 * 2 + i % 2; });
    return {_mm512_castps_si512(rearrange(ab, cd, items))};
  }
  MORVANE_INLINE static four_blocks interleave4_floats(const floats a, const floats b, const floats c, const floats d) {
    const __m512 low_ab = alternate_floats<0>(a, b), high_ab = alternate_floats<8>(a, b);
    const __m512 low_cd = alternate_floats<0>(c, d), high_cd = alternate_floats<8>(c, d);
    return {four_pixels<0>(low_ab, low_cd), four_pixels<4>(low_ab, low_cd), four_pixels<0>(high_ab, high_cd),
            four_pixels<4>(high_ab, high_cd)};
  }
  MORVANE_INLINE static void store(uint8_t* p, const zmm::half_register& w) { store_256(p, w.v); }
};

}  // namespace Processing::Morvane::format_conversion::vector
