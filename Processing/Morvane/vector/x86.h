// What the vector operations on x86-64 have in common, over registers of either width: all that needs no exchange
// between the 128-bit lanes of a register. operations.h says what each operation does.
#pragma once

#include <cstddef>
#include <cstdint>

#include "inline.h"
#include "sums.h"
#include "weights.h"
#include "x86_intrinsics.h"

namespace Processing::Morvane::format_conversion::vector {

// Over the registers R, for the backend Self.
template <class R, class Self>
struct x86_vectors {
  using reg = typename R::type;

  static constexpr int block_bytes = R::bytes;
  static constexpr int lanes = R::bytes;
  static constexpr int float_lanes = R::bytes / 4;
  static constexpr int cache_line = 64;
  static constexpr size_t least_repeated_store = 2048;

  struct block {
    static constexpr size_t stored_bytes = R::bytes;
    reg v;
  };
  struct two_blocks {
    static constexpr size_t stored_bytes = 2 * R::bytes;
    block first, second;
  };
  struct three_blocks {
    static constexpr size_t stored_bytes = 3 * R::bytes;
    block first, second, third;
  };
  struct four_blocks {
    static constexpr size_t stored_bytes = 4 * R::bytes;
    block first, second, third, fourth;
  };
  struct bytes {
    static constexpr size_t stored_bytes = R::bytes;
    reg v;
  };
  struct words {
    static constexpr size_t stored_bytes = 2 * R::bytes;
    reg lo, hi;
  };
  struct pairs {
    reg lo, hi;  // uyvy as it stands in memory
  };
  // Of pixels that are computed from pairs of uyvy.
  struct pair_words {
    reg lo, hi;
  };
  struct sums {
    reg v;  // of 64 bits
  };
  struct floats {
    static constexpr size_t stored_bytes = R::bytes;
    typename R::floats v;
  };
  struct four_floats {
    floats first, second, third, fourth;
  };
  struct word_sums {
    reg lo, hi;  // of the words that unpacking takes
  };

  static constexpr int negative(const int w) { return w < 0 ? w : 0; }
  static constexpr int positive(const int w) { return w > 0 ? w : 0; }

  MORVANE_INLINE static void expect_load(const uint8_t* p) {
    _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_T0);
  }
  MORVANE_INLINE static void expect_store(uint8_t* p) { _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_T0); }

  // A 16-bit value over and over, to whole cache lines. The processor knows of the whole run in advance and does not
  // read lines that it will overwrite, but is slow to begin, and runs half as fast at addresses that are not aligned.
  MORVANE_INLINE static void store_repeatedly(uint8_t* p, size_t bytes_stored, const uint16_t value) {
    size_t quads = bytes_stored / 8;
    asm volatile("rep stosq" : "+D"(p), "+c"(quads) : "a"(value * 0x0001000100010001U) : "memory");
  }

  MORVANE_INLINE static void stream_cache_line(const uint8_t* p, uint8_t* to) {
    for (int i = 0; i < cache_line; i += R::bytes) R::stream(to + i, R::load(p + i));
  }
  MORVANE_INLINE static void finish_streaming() { _mm_sfence(); }

  MORVANE_INLINE static block load(const uint8_t* p) { return {R::load(p)}; }
  MORVANE_INLINE static void store(uint8_t* p, const block b) { R::store(p, b.v); }
  MORVANE_INLINE static void store(uint8_t* p, const two_blocks& b) {
    store(p, b.first);
    store(p + R::bytes, b.second);
  }
  MORVANE_INLINE static void store(uint8_t* p, const three_blocks& b) {
    store(p, b.first);
    store(p + R::bytes, b.second);
    store(p + 2 * R::bytes, b.third);
  }
  MORVANE_INLINE static void store(uint8_t* p, const four_blocks& b) {
    store(p, b.first);
    store(p + R::bytes, b.second);
    store(p + 2 * R::bytes, b.third);
    store(p + 3 * R::bytes, b.fourth);
  }

  MORVANE_INLINE static block repeat(const uint16_t value) { return {R::repeat_word(value)}; }
  MORVANE_INLINE static block repeat_dword(const uint32_t value) { return {R::repeat_dword(static_cast<int>(value))}; }
  MORVANE_INLINE static block rearrange_dwords(const block b, const uint32_t from) {
    const reg first_of_dword = R::repeat_lane(_mm_setr_epi8(0, 0, 0, 0, 4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12));
    return {R::shuffle(b.v, R::bit_or(first_of_dword, repeat_dword(from).v))};
  }
  MORVANE_INLINE static block swap_bytes(const block b) {
    const reg swapped = R::repeat_lane(_mm_setr_epi8(1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14));
    return {R::shuffle(b.v, swapped)};
  }
  MORVANE_INLINE static block and_blocks(const block a, const block b) { return {R::bit_and(a.v, b.v)}; }
  MORVANE_INLINE static block or_blocks(const block a, const block b) { return {R::bit_or(a.v, b.v)}; }
  MORVANE_INLINE static block with_bits(const block b, const uint32_t kept, const uint32_t set) {
    return {R::with_bits(b.v, repeat_dword(kept).v, repeat_dword(set).v)};
  }
  template <int bits, uint32_t mask>
  MORVANE_INLINE static block shift_left_and_mask(const block b) {
    return {R::bit_and(R::template shift_dwords_left<bits>(b.v), R::repeat_dword(static_cast<int>(mask)))};
  }
  template <int bits>
  MORVANE_INLINE static block shift_right_words(const block b) {
    return {R::template shift_words_right<bits>(b.v)};
  }
  template <int bits>
  MORVANE_INLINE static block shift_left_words(const block b) {
    return {R::template shift_words_left<bits>(b.v)};
  }
  MORVANE_INLINE static block shift_right_words(const block b, const int bits) {
    return {R::shift_words_right(b.v, bits)};
  }
  MORVANE_INLINE static block shift_left_words(const block b, const int bits) {
    return {R::shift_words_left(b.v, bits)};
  }
  MORVANE_INLINE static block add_words(const block a, const block b) { return {R::add_words(a.v, b.v)}; }
  MORVANE_INLINE static block subtract_words(const block a, const block b) { return {R::subtract_words(a.v, b.v)}; }
  MORVANE_INLINE static block xor_blocks(const block a, const block b) { return {R::bit_xor(a.v, b.v)}; }
  MORVANE_INLINE static block least_words(const block a, const block b) { return {R::least_words(a.v, b.v)}; }
  MORVANE_INLINE static block add_words_to_limit(const block a, const block b) {
    return {R::add_words_to_limit(a.v, b.v)};
  }
  MORVANE_INLINE static block subtract_words_to_zero(const block a, const block b) {
    return {R::subtract_words_to_zero(a.v, b.v)};
  }
  MORVANE_INLINE static block add_signed_to_limit(const block a, const block b) {
    return {R::add_signed_to_limit(a.v, b.v)};
  }
  MORVANE_INLINE static block average_up(const block a, const block b) { return {R::average_words(a.v, b.v)}; }
  MORVANE_INLINE static block average_down(const block a, const block b) {
    const reg rounded_up = R::bit_and(R::bit_xor(a.v, b.v), R::repeat_word(1));
    return {R::subtract_words(R::average_words(a.v, b.v), rounded_up)};
  }
  MORVANE_INLINE static block average_bytes_up(const block a, const block b) { return {R::average_bytes(a.v, b.v)}; }
  MORVANE_INLINE static block average_bytes_down(const block a, const block b) {
    const reg rounded_up = R::bit_and(R::bit_xor(a.v, b.v), R::repeat_byte(1));
    return {R::subtract_bytes(R::average_bytes(a.v, b.v), rounded_up)};
  }
  MORVANE_INLINE static block rounded_product(const block a, const block b) { return {R::rounded_product(a.v, b.v)}; }
  MORVANE_INLINE static word_sums repeat_sum(const int32_t constant) {
    return {R::repeat_dword(constant), R::repeat_dword(constant)};
  }
  MORVANE_INLINE static word_sums add_products(const word_sums& s, const block x, const int16_t a, const block y,
                                               const int16_t b) {
    const reg factors = R::repeat_dword(static_cast<int>(static_cast<uint16_t>(a) | static_cast<uint32_t>(b) << 16));
    return {R::add_word_products(s.lo, R::unpack_low_words(x.v, y.v), factors),
            R::add_word_products(s.hi, R::unpack_high_words(x.v, y.v), factors)};
  }
  template <int bits>
  MORVANE_INLINE static block signed_words(const word_sums& s) {
    return {R::pack_signed_dwords(R::template shift_dwords_right_signed<bits>(s.lo),
                                  R::template shift_dwords_right_signed<bits>(s.hi))};
  }
  MORVANE_INLINE static block pack_words(const block a, const block b) {
    return {Self::from_packing(R::pack_words(a.v, b.v))};
  }
  // Packing takes eight words of the one and eight of the other to each lane of 128 bits.
  MORVANE_INLINE static block pack_words_in_turn(const block a, const block b) {
    const reg in_turn = R::repeat_lane(_mm_setr_epi8(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15));
    return {R::shuffle(R::pack_words(a.v, b.v), in_turn)};
  }
  MORVANE_INLINE static two_blocks transpose2_words(const block a, const block b) {
    return {{R::even_and_odd_words(a.v, R::template shift_dwords_left<16>(b.v))},
            {R::even_and_odd_words(R::template shift_dwords_right<16>(a.v), b.v)}};
  }
  MORVANE_INLINE static block repeat_even_words(const block b) {
    const reg even = R::repeat_lane(_mm_setr_epi8(0, 1, 0, 1, 4, 5, 4, 5, 8, 9, 8, 9, 12, 13, 12, 13));
    return {R::shuffle(b.v, even)};
  }
  // (x - offset) * (a + 1) = 65536 * (x - offset) + (offset - x) * b with b = 65535 - a, so the result is x plus the
  // upper half of the second product. Where x > offset, the unsigned product takes offset - x for 65536 more, and its
  // upper half is b too large.
  template <int offset>
  MORVANE_INLINE static block scale_words(const block x, const block a) {
    const reg first = R::repeat_word(offset);
    const reg b = R::invert(a.v);
    const reg upper = R::upper_product_unsigned(R::subtract_words(first, x.v), b);
    return {R::subtract_words_where_above(x.v, first, R::add_words(x.v, upper), b)};
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
    const auto odd_bytes = [](const block of) __attribute__((always_inline)) {
      const reg with_lowest = R::bit_or(R::bit_and(of.v, R::repeat_word(-256)), R::repeat_word(low));
      return R::subtract_words_to_zero(R::upper_product_unsigned(with_lowest, R::repeat_word(multiplier)),
                                       R::repeat_word(below));
    };
    return {Self::from_packing(R::pack_words(odd_bytes(a), odd_bytes(b)))};
  }
  // The samples are lowered by 32768 to be signed, and the offset, divided by 4096, is the weight of a constant 4096.
  template <int multiplier, int offset, int bits>
  MORVANE_INLINE static block linear_words(const block b) {
    constexpr int lifted = offset + 32768 * multiplier;
    static_assert(multiplier <= 32767 && lifted % 4096 == 0 && lifted / 4096 >= 0 && lifted / 4096 <= 32767);
    const reg x = R::bit_xor(b.v, R::repeat_word(-32768));
    const reg constant = R::repeat_word(4096);
    const reg factors = R::repeat_dword(multiplier | lifted / 4096 * 65536);
    const reg lo = R::sum_word_products(R::unpack_low_words(x, constant), factors);
    const reg hi = R::sum_word_products(R::unpack_high_words(x, constant), factors);
    return {R::pack_dwords(R::template shift_dwords_right_signed<bits>(lo),
                           R::template shift_dwords_right_signed<bits>(hi))};
  }

  // The lower two bits of the ten of four samples, each in bits 7 and 6 of its word, to a byte for each pair. Sums of
  // products move those of both words to the second byte of a double word: Y0 to bits 9 and 8, Cb to 11 and 10, Y1 to
  // 13 and 12, Cr to 15 and 14.
  template <bool cr_as_cb>
  MORVANE_INLINE static reg bits_of_pairs(const reg luma, const reg cbcr) {
    const reg bits = R::repeat_word(0x00c0);
    constexpr int of_luma = 1 << 2 | 1 << 6 << 16;
    constexpr int of_chroma = cr_as_cb ? (1 << 4 | 1 << 8) : (1 << 4 | 1 << 8 << 16);
    return R::bit_or(R::sum_word_products(R::bit_and(luma, bits), R::repeat_dword(of_luma)),
                     R::sum_word_products(R::bit_and(cbcr, bits), R::repeat_dword(of_chroma)));
  }

  MORVANE_INLINE static sums no_sum() { return {R::zero()}; }
  MORVANE_INLINE static sums add_differences(const sums s, const block a, const block b) {
    return {R::add_qwords(s.v, R::sum_differences(a.v, b.v))};
  }
  MORVANE_INLINE static sums add_differences(const sums s, const two_blocks& a, const two_blocks& b) {
    return add_differences(add_differences(s, a.first, b.first), a.second, b.second);
  }
  MORVANE_INLINE static uint64_t total(const sums s) { return R::sum_of_qwords(s.v); }
  MORVANE_INLINE static bool fourth_bytes_are_255(const block b) {
    return R::all_ones(R::bit_or(b.v, R::repeat_dword(0x00ffffff)));
  }

  MORVANE_INLINE static bytes and_bytes(const bytes a, const bytes b) { return {R::bit_and(a.v, b.v)}; }
  MORVANE_INLINE static bool all_255(const bytes b) { return R::all_ones(b.v); }
  MORVANE_INLINE static bytes same(const uint8_t value) { return {R::repeat_byte(value)}; }
  template <int value>
  MORVANE_INLINE static words add(const words w) {
    const reg v = R::repeat_word(value);
    return {R::add_words(w.lo, v), R::add_words(w.hi, v)};
  }
  MORVANE_INLINE static words multiply(const words a, const words b) {
    return {R::multiply_words(a.lo, b.lo), R::multiply_words(a.hi, b.hi)};
  }
  MORVANE_INLINE static words low_bytes(const words w) {
    const reg mask = R::repeat_word(0x00ff);
    return {R::bit_and(w.lo, mask), R::bit_and(w.hi, mask)};
  }
  MORVANE_INLINE static words high_bytes(const words w) {
    return {R::template shift_words_right<8>(w.lo), R::template shift_words_right<8>(w.hi)};
  }
  template <int bits>
  MORVANE_INLINE static words shift_left(const words w) {
    return {R::template shift_words_left<bits>(w.lo), R::template shift_words_left<bits>(w.hi)};
  }
  template <int low, int high>
  MORVANE_INLINE static words add_to_bytes(const words w) {
    const reg both = R::repeat_word(low | high * 256);
    return {R::add_bytes(w.lo, both), R::add_bytes(w.hi, both)};
  }

  static constexpr bool stays_above(const int luma, const int chroma) {
    return 255 * (negative(luma) + negative(chroma)) >= -32768;
  }
  // Luma, or 255 less it, and one sample of chroma of each pixel, weighted and added.
  template <bool with_cr, bool turned, int luma, int chroma>
  MORVANE_INLINE static reg sum_bytes(const reg uyvy) {
    static_assert(luma >= -128 && luma <= 127 && chroma >= -128 && chroma <= 127);
    static_assert(stays_above(luma, chroma), "sums saturate at -32768");
    const reg from = turned ? R::bit_xor(uyvy, R::repeat_word(-256)) : uyvy;
    return R::sum_byte_products(Self::template luma_and_chroma<with_cr>(from),
                                R::repeat_word((luma & 255) | chroma * 256));
  }
  template <ycbcr_weights w, bool turn>
  MORVANE_INLINE static reg weigh_words(const reg uyvy) {
    constexpr int cb = w.cb;
    constexpr int cr = w.cr;
    // Luma is weighed together with the greater of the weights of chroma, which keeps sums small.
    constexpr bool with_cr = cr != 0 && (cb == 0 || cr > cb);
    constexpr int with_luma = with_cr ? cr : cb;
    constexpr bool other_is_cr = !with_cr;
    constexpr int other = with_cr ? cb : cr;
    constexpr bool turned = turn && stays_above(-w.y, with_luma);
    constexpr int y = turned ? -w.y : w.y;
    constexpr int constant = turned ? w.constant + 255 * w.y : w.constant;
    reg sum = sum_bytes<with_cr, turned, y, with_luma>(uyvy);
    if constexpr (other != 0) sum = R::add_words(sum, sum_bytes<other_is_cr, turned, 0, other>(uyvy));
    if constexpr (constant == 0) return sum;
    return R::add_words(sum, R::repeat_word(constant));
  }
  // The weighted sum and constant, modulo 65536. With turn, luma is taken as 255 - Y where that fits, because the whole
  // then needs no constant.
  template <ycbcr_weights w, bool turn>
  MORVANE_INLINE static pair_words weigh_pairs(const pairs& p) {
    return {weigh_words<w, turn>(p.lo), weigh_words<w, turn>(p.hi)};
  }
  // The same, but 0 where the sum is negative: the greatest sum less what 255 - Y and chroma take off it. Both words
  // have a share of luma, such that either stays within 16 bits.
  template <ycbcr_weights w>
  MORVANE_INLINE static reg weigh_words_at_least_zero(const reg uyvy) {
    constexpr int greatest = w.constant + 255 * w.y;
    constexpr int with_cr = w.y < 128 + w.cr ? w.y : 128 + w.cr;
    constexpr int with_cb = w.y - with_cr;
    const reg off =
        R::add_words(sum_bytes<false, true, with_cb, -w.cb>(uyvy), sum_bytes<true, true, with_cr, -w.cr>(uyvy));
    return R::subtract_words_to_zero(R::repeat_word(greatest), off);
  }
  template <ycbcr_weights w>
  MORVANE_INLINE static pair_words weigh_at_least_zero(const pairs& p) {
    return {weigh_words_at_least_zero<w>(p.lo), weigh_words_at_least_zero<w>(p.hi)};
  }
  template <int bits, bool is_unsigned>
  MORVANE_INLINE static reg shift_right(const reg w) {
    if constexpr (is_unsigned) return R::template shift_words_right<bits>(w);
    return R::template shift_words_right_signed<bits>(w);
  }
  template <int bits, bool is_unsigned>
  MORVANE_INLINE static pair_words shift_right(const pair_words w) {
    return {shift_right<bits, is_unsigned>(w.lo), shift_right<bits, is_unsigned>(w.hi)};
  }

  // (weighted sum and constant) >> bits, or what is beyond a byte on the same side.
  template <ycbcr_weights w, int bits>
  MORVANE_INLINE static pair_words sum_of_words(const pairs& p) {
    constexpr short_sum s = shorten(w, bits);
    if constexpr (is_exact(s)) {
      return shift_right<s.bits, false>(weigh_pairs<s.weights, false>(p));
    } else if constexpr (stops_at_zero(s)) {
      return shift_right<s.bits, true>(weigh_at_least_zero<s.weights>(p));
    } else {
      constexpr split_weights parts = split(w, bits);
      constexpr bool turn = is_of_turned_luma(parts);
      constexpr bool is_unsigned = fits_unsigned(parts.rest);
      static_assert(is_unsigned || fits_signed(parts.rest));
      const pair_words whole = weigh_pairs<parts.whole, turn>(p);
      const pair_words rest = shift_right<bits, is_unsigned>(weigh_pairs<parts.rest, turn>(p));
      return {R::add_words(whole.lo, rest.lo), R::add_words(whole.hi, rest.hi)};
    }
  }

  // Bytes of pixels to pixels of four bytes, a quad of them in each lane of a block.
  MORVANE_INLINE static four_blocks interleave_in_lanes(const reg c0, const reg c1, const reg c2, const reg c3) {
    const reg lo01 = R::unpack_low_bytes(c0, c1);
    const reg lo23 = R::unpack_low_bytes(c2, c3);
    const reg hi01 = R::unpack_high_bytes(c0, c1);
    const reg hi23 = R::unpack_high_bytes(c2, c3);
    return {{R::unpack_low_words(lo01, lo23)},
            {R::unpack_high_words(lo01, lo23)},
            {R::unpack_low_words(hi01, hi23)},
            {R::unpack_high_words(hi01, hi23)}};
  }

  template <int bottom>
  MORVANE_INLINE static floats load_words_above(const uint8_t* p) {
    return {R::template load_words_above<bottom>(p)};
  }
  MORVANE_INLINE static floats floats_at(const uint8_t* p) { return {R::load_floats(p)}; }
  MORVANE_INLINE static floats half_floats_at(const uint8_t* p) { return {R::load_half_floats(p)}; }
  MORVANE_INLINE static auto half_floats(const floats f) { return R::half_floats(f.v); }
  MORVANE_INLINE static void store(uint8_t* p, const floats f) { R::store_floats(p, f.v); }
  template <int part>
  MORVANE_INLINE static floats floats_of_words(const block words) {
    return {R::template floats_of_words<part>(words.v)};
  }
  MORVANE_INLINE static block join_words(const typename R::half_register first,
                                         const typename R::half_register second) {
    return {R::join_halves(first, second)};
  }
  MORVANE_INLINE static floats multiply(const floats f, const float factor) {
    return {R::multiply(f.v, R::repeat_float(factor))};
  }
  MORVANE_INLINE static floats add(const floats a, const floats b) { return {R::add(a.v, b.v)}; }
  MORVANE_INLINE static floats subtract(const floats f, const float subtrahend) {
    return {R::subtract(f.v, R::repeat_float(subtrahend))};
  }
  MORVANE_INLINE static floats at_most(const floats f, const float limit) {
    return {R::least(f.v, R::repeat_float(limit))};
  }
  MORVANE_INLINE static floats divide(const floats f, const float divisor) {
    return {R::divide(f.v, R::repeat_float(divisor))};
  }
  // Of a number and what is none, the instruction takes its second operand.
  MORVANE_INLINE static floats between_0_and_1(const floats f) {
    return at_most({R::greatest(f.v, R::repeat_float(0.0F))}, 1.0F);
  }
  template <int bottom>
  MORVANE_INLINE static auto words_of_floats(const floats f) {
    return R::words_of_dwords(R::add_dwords(R::truncate(f.v), R::repeat_dword(bottom)));
  }
};

}  // namespace Processing::Morvane::format_conversion::vector
