// The vector operations: what a backend with vectors offers to the kernels, under the same names on each.
//
// A backend works on `lanes` pixels at a time. Samples of those pixels are held in an order of the backend's own,
// the same in all its types, so a kernel may combine any of them lane by lane; loading and storing translate from and
// to memory order. Only a `block` is a run of memory as it stands.
//
// Types that can be stored have the number of bytes that they take in memory as `stored_bytes`, and a `store`.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>

#include "opaque.h"
#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

template <class Value, class Wanted>
concept gives = std::same_as<Value, Wanted>;

template <class V, class Value>
concept can_be_stored = requires(uint8_t* destination, const Value value) {
  { std::remove_cvref_t<Value>::stored_bytes } -> std::convertible_to<size_t>;
  V::store(destination, value);
};

template <class V>
concept has_sizes = requires {
  // The backend that converts what is too short for this one.
  typename V::narrower;
  // The backend whose vectors move bytes as fast as memory takes them: this one or a narrower one.
  typename V::mover;
  requires(V::lanes > 0);
  requires(V::block_bytes > 0);
  // How many vectors a line is walked over before the rest of it is looked at again, and how many of them are
  // converted before they are stored, where that is done to several planes: 1 or 2.
  requires(V::vectors_a_turn > 0);
  requires(V::stored_together == 1 || V::stored_together == 2);
  requires(V::float_lanes > 0);
  // How far behind the present place a line's stores are announced, all or those of kernels that crowd them, and loads
  // where a kernel asks for it; 0 where the processor finds out early enough by itself.
  requires(V::stores_expected_ahead >= 0);
  { V::announces_crowded_stores_alone } -> std::convertible_to<bool>;
  requires(V::loads_expected_ahead >= 0);
};

// Announces a store to the cache line that a byte lies in.
template <class V>
concept announces_stores = V::stores_expected_ahead == 0 || requires(uint8_t* destination) {
  requires(V::cache_line > 0);
  V::expect_store(destination);
};

// The same for a load.
template <class V>
concept announces_loads = V::loads_expected_ahead == 0 || requires(const uint8_t* source) {
  requires(V::cache_line > 0);
  V::expect_load(source);
};

// May be left out: repeats a 16-bit value over so many bytes, whole cache lines, for runs of memory of at least
// least_repeated_store bytes.
template <class V>
concept stores_repeatedly = requires(uint8_t* destination, size_t bytes) {
  requires(V::cache_line > 0);
  requires(V::least_repeated_store >= 2 * V::cache_line);
  V::store_repeatedly(destination, bytes, uint16_t{});
};

// May be left out: copies 64 bytes to an address that is a multiple of 64, without reading the cache line that they
// overwrite and without keeping it in the caches. Other threads may see such stores later than those that follow, until
// finish_streaming has been called.
template <class V>
concept streams = requires(uint8_t* destination, const uint8_t* source) {
  V::stream_cache_line(source, destination);
  V::finish_streaming();
};

// block: block_bytes bytes as they stand in memory.
template <class V>
concept has_blocks = requires(const uint8_t* source, typename V::block block, typename V::two_blocks two) {
  requires can_be_stored<V, typename V::block>;
  requires can_be_stored<V, typename V::two_blocks>;
  { V::load(source) } -> gives<typename V::block>;
  // A 16-bit value over and over, low byte first.
  { V::repeat(uint16_t{}) } -> gives<typename V::block>;
  // A 32-bit value over and over.
  { V::repeat_dword(uint32_t{}) } -> gives<typename V::block>;
  // Byte k of each 32-bit word becomes that which byte k of the second argument says, a number from 0 to 3.
  { V::rearrange_dwords(block, uint32_t{}) } -> gives<typename V::block>;
  // Exchanges bytes 2k and 2k + 1.
  { V::swap_bytes(block) } -> gives<typename V::block>;
  { V::and_blocks(block, block) } -> gives<typename V::block>;
  { V::or_blocks(block, block) } -> gives<typename V::block>;
  // (x & kept) | set of every 32-bit word.
  { V::with_bits(block, uint32_t{}, uint32_t{}) } -> gives<typename V::block>;
  // (x << bits) & mask of every 32-bit word.
  { V::template shift_left_and_mask<2, 0xff00>(block) } -> gives<typename V::block>;
  // x >> bits, x << bits and a + b of every 16-bit word, modulo 65536.
  { V::template shift_right_words<6>(block) } -> gives<typename V::block>;
  { V::template shift_left_words<6>(block) } -> gives<typename V::block>;
  { V::shift_right_words(block, int{}) } -> gives<typename V::block>;
  { V::shift_left_words(block, int{}) } -> gives<typename V::block>;
  { V::add_words(block, block) } -> gives<typename V::block>;
  // Words 0 0 2 2 4 4...
  { V::repeat_even_words(block) } -> gives<typename V::block>;
  // offset + (((x - offset) * (a + 1)) >> 16) of words x and a, modulo 65536.
  { V::template scale_words<4096>(block, block) } -> gives<typename V::block>;
  // Bytes 0, 2, 4... and 1, 3, 5... of two blocks, or their 16-bit words; and the way back, of bytes, of 16-bit words
  // or of 32-bit ones.
  { V::deinterleave2(block, block) } -> gives<typename V::two_blocks>;
  { V::deinterleave2_words(block, block) } -> gives<typename V::two_blocks>;
  { V::interleave2(block, block) } -> gives<typename V::two_blocks>;
  { V::interleave2_words(block, block) } -> gives<typename V::two_blocks>;
  { V::interleave2_dwords(block, block) } -> gives<typename V::two_blocks>;
  // clamp((multiplier * x + offset) >> 8) of bytes 1, 3, 5... of two blocks; the offset is negative, and (multiplier -
  // 256) * x + offset fits 16 signed bits.
  { V::template linear_of_odd_bytes<301, -5117>(block, block) } -> gives<typename V::block>;
  // clamp((multiplier * x + offset) >> bits) of every 16-bit word; the offset is a multiple of 4096.
  { V::template linear_words<1197, -4902912, 10>(block) } -> gives<typename V::block>;
  // The block with zeros for so many of its first bytes.
  { V::without_first(block, size_t{}) } -> gives<typename V::block>;
  // 64-bit sums of the absolute differences of bytes.
  { V::add_differences(V::no_sum(), block, block) } -> gives<typename V::sums>;
  { V::add_differences(V::no_sum(), two, two) } -> gives<typename V::sums>;
  { V::total(V::no_sum()) } -> gives<uint64_t>;
  // Whether bytes 3, 7, 11... are all 255.
  { V::fourth_bytes_are_255(block) } -> gives<bool>;
};

// What lines of samples need: 16-bit words, unsigned where nothing else is said.
template <class V>
concept has_lines = requires(const uint8_t* source, typename V::block block, typename V::two_blocks two,
                             typename V::word_sums sums) {
  { V::subtract_words(block, block) } -> gives<typename V::block>;
  { V::xor_blocks(block, block) } -> gives<typename V::block>;
  { V::least_words(block, block) } -> gives<typename V::block>;
  // a + b, at most 65535, and a - b, at least 0.
  { V::add_words_to_limit(block, block) } -> gives<typename V::block>;
  { V::subtract_words_to_zero(block, block) } -> gives<typename V::block>;
  // a + b of signed words, at least -32768 and at most 32767.
  { V::add_signed_to_limit(block, block) } -> gives<typename V::block>;
  // (a + b + 1) >> 1 and (a + b) >> 1.
  { V::average_up(block, block) } -> gives<typename V::block>;
  { V::average_down(block, block) } -> gives<typename V::block>;
  // The same of bytes.
  { V::average_bytes_up(block, block) } -> gives<typename V::block>;
  { V::average_bytes_down(block, block) } -> gives<typename V::block>;
  // (a * b + 16384) >> 15 of signed words, not both -32768.
  { V::rounded_product(block, block) } -> gives<typename V::block>;
  // Sums of 32 bits, which begin with a constant: plus x * a + y * b of signed words, and sum >> bits as signed words,
  // at least -32768 and at most 32767.
  { V::repeat_sum(int32_t{}) } -> gives<typename V::word_sums>;
  { V::add_products(sums, block, int16_t{}, block, int16_t{}) } -> gives<typename V::word_sums>;
  { V::template signed_words<13>(sums) } -> gives<typename V::block>;
  // Words a0 b0 a2 b2... and a1 b1 a3 b3...
  { V::transpose2_words(block, block) } -> gives<typename V::two_blocks>;
  // Signed words of two blocks as bytes, at least 0 and at most 255: those of the one and then of the other, or in
  // turn.
  { V::pack_words(block, block) } -> gives<typename V::block>;
  { V::pack_words_in_turn(block, block) } -> gives<typename V::block>;
  // Pixels of three bytes as pixels of four, of which the fourth byte may be anything, and back.
  { V::load_threes(source) } -> gives<typename V::two_blocks>;
  requires can_be_stored<V, decltype(V::threes(two))>;
  // Three bytes of each pixel, as many pixels as a block has words: each byte twice in a word of the block of its own.
  // The lower three bytes of the second argument say which bytes of a pixel these are.
  { V::load_bytes_of_fours(source, uint32_t{}) } -> gives<typename V::three_blocks>;
  { V::load_bytes_of_threes(source, uint32_t{}) } -> gives<typename V::three_blocks>;
  // The last 32-bit word of the first block, and those of the second one but its last.
  { V::dwords_before(block, block) } -> gives<typename V::block>;
  // Words 0, 3, 6..., words 1, 4, 7... and words 2, 5, 8... of three blocks in a row, and back.
  { V::deinterleave3_words(block, block, block) } -> gives<typename V::three_blocks>;
  { V::interleave3_words(block, block, block) } -> gives<typename V::three_blocks>;
};

// 10-bit samples.
template <class V>
concept has_tens = requires(const uint8_t* source, const uint8_t* line, typename V::block block,
                            typename V::two_blocks two) {
  // Reads 32-bit words of three 10-bit samples each, the first in the lowest bits, and keeps the upper eight bits of
  // every sample.
  requires can_be_stored<V, decltype(V::upper_bytes_of_10(source))>;
  // Groups of 40 bytes: 32 are a part of a block, and a byte of the other eight holds two bits each, from the top Cr Y1
  // Cb Y0, for two words of luma and two of chroma, of which those are bits 7 and 6. Loading leaves all other bits of
  // the words zero. If true, Cb gives its bits for Cr as well.
  { V::load_upper_of_groups(source) } -> gives<typename V::block>;
  { V::load_lower_of_groups(source) } -> gives<typename V::two_blocks>;
  requires can_be_stored<V, decltype(V::template join_groups<true>(block, block, block))>;
  // Six pixels of v210 in 16 bytes. Their luma, Cb and Cr are stored as words of which the upper ten bits are used;
  // up to 16 bytes behind them may be overwritten with anything. Back, words with samples in their lower ten bits are
  // loaded from three lines, of which up to 16 bytes more are read.
  requires can_be_stored<V, decltype(V::split_v210(block).luma)>;
  requires can_be_stored<V, decltype(V::split_v210(block).cb)>;
  requires can_be_stored<V, decltype(V::split_v210(block).cr)>;
  { V::load_for_v210(line, line, line) } -> gives<typename V::two_blocks>;
  { V::join_v210(two) } -> gives<typename V::block>;
  // Groups of six pixels, as two blocks in an order of the backend's own: words of luma, and words of Cb and Cr in
  // turn. From v210 and from big-endian groups of five bytes the samples lie in the upper ten bits, with nothing below;
  // to these, in the lower ten. A block of such words is loaded from twelve bytes of each group and stored there, or
  // from and to planes of Cb and Cr with six bytes each. No other bytes are read or written.
  { V::sixes_of_v210(block) } -> gives<typename V::two_blocks>;
  { V::v210_of_sixes(two) } -> gives<typename V::block>;
  { V::sixes_of_fives(source) } -> gives<typename V::two_blocks>;
  requires can_be_stored<V, decltype(V::fives_of_sixes(two))>;
  { V::load_sixes(source) } -> gives<typename V::block>;
  { V::load_sixes(source, source) } -> gives<typename V::block>;
  requires can_be_stored<V, decltype(V::sixes(block))>;
  requires can_be_stored<V, decltype(V::deinterleave_sixes(block).first)>;
  requires can_be_stored<V, decltype(V::deinterleave_sixes(block).second)>;
  // Big-endian groups of four samples in five bytes, as words with the samples in the upper bits and nothing below, and
  // back.
  { V::load_tens_of_fives(source) } -> gives<typename V::block>;
  requires can_be_stored<V, decltype(V::fives_of_tens(block))>;
};

// pixels: four bytes of each pixel. weighable: the same, arranged for weighing; load3_weighable reads three-byte pixels
// and repeats byte 1 as the fourth. words: a 16-bit word for each pixel. bytes: a byte for each pixel.
template <class V>
concept has_pixels = requires(const uint8_t* source, typename V::bytes bytes, typename V::words words,
                              typename V::pixels pixels, typename V::weighable weighable) {
  requires can_be_stored<V, typename V::words>;
  requires can_be_stored<V, typename V::bytes>;
  { V::load4(source) } -> gives<typename V::pixels>;
  { V::load4_weighable(source) } -> gives<typename V::weighable>;
  { V::load3_weighable(source) } -> gives<typename V::weighable>;
  // Pairs of uyvy from sums of the weighted bytes of each pixel: chroma is 128 + (sum >> 8), with the first weights for
  // even pixels and the second ones for odd pixels, and luma is 16 + (sum >> luma_bits) with the third ones, luma_bits
  // being 7 or 8. If true, sums are (sum * A) >> 8 first, A being the pixel's fourth byte. Weights are -128..127, and
  // the results are bytes without clamping.
  requires can_be_stored<V, decltype(V::template pairs_of_sums<weights{112, -87, -25, 0}, weights{-10, -102, 112, 0},
                                                               weights{8, 79, 23, 0}, 7, true>(weighable))>;
  { V::template add<16>(words) } -> gives<typename V::words>;
  // The low 16 bits of the products.
  { V::multiply(words, words) } -> gives<typename V::words>;
  { V::low_bytes(words) } -> gives<typename V::words>;
  { V::high_bytes(words) } -> gives<typename V::words>;
  { V::template shift_left<8>(words) } -> gives<typename V::words>;
  { V::load_words(source) } -> gives<typename V::words>;
  // The upper byte of the first words as the low byte, and that of the second ones as the high byte.
  { V::upper_bytes(words, words) } -> gives<typename V::words>;
  // Adds to the low and to the high bytes, each modulo 256.
  { V::template add_to_bytes<128, 16>(words) } -> gives<typename V::words>;
  // Two bytes of each pixel as a word: the low one is byte `even` (for even pixels) or `odd` (for odd ones) of the
  // pair's even pixel, the high one byte `own` of the pixel itself.
  { V::template pick_of_pairs<1, 2, 0>(pixels) } -> gives<typename V::words>;
  { V::load_bytes(source) } -> gives<typename V::bytes>;
  { V::and_bytes(bytes, bytes) } -> gives<typename V::bytes>;
  { V::all_255(bytes) } -> gives<bool>;
  { V::widen(bytes) } -> gives<typename V::words>;
  // The byte in both halves of the word.
  { V::widen_repeated(bytes) } -> gives<typename V::words>;
  { V::fourth(pixels) } -> gives<typename V::bytes>;
  { V::fourth(weighable) } -> gives<typename V::bytes>;
  { V::fourth_words(pixels) } -> gives<typename V::words>;
  { V::same(uint8_t{}) } -> gives<typename V::bytes>;
  // Stored, four bytes a pixel: the byte three times and 255.
  requires can_be_stored<V, decltype(V::opaque_grey(bytes))>;
  // Stored over pixels of four bytes, of which bytes 0 and 2 are stored again as they were found: byte 1 becomes 128 +
  // (weighted sum of the given pixel >> 8), and byte 3 that of the given pixel or, if false, 255.
  requires can_be_stored<V, decltype(V::template second_and_fourth_of<weights{112, -87, -26, 0}, true>(pixels))>;
};

// Clamped sums of pairs, of which a backend may form the bytes when they are stored.
template <class V, int y, int cb, int cr, int constant, int bits>
using sum_of_pairs = decltype(V::template clamped_sum<ycbcr_weights{y, cb, cr, constant}, bits>(typename V::pairs()));

// pairs: luma of each pixel and chroma of its pair, the same for both pixels. pair_bytes: a byte for each of these
// pixels.
template <class V>
concept has_pairs = requires(const uint8_t* source, typename V::pair_bytes pair_bytes,
                             sum_of_pairs<V, 298, 517, 0, -70635, 8> fine,
                             sum_of_pairs<V, 74, 128, 0, -17576, 6> coarse) {
  { V::load_uyvy(source) } -> gives<typename V::pairs>;
  // From 16-bit planes of luma and of Cb Cr: the upper bytes.
  { V::load_upper_bytes(source, source) } -> gives<typename V::pairs>;
  // clamped_sum: clamp((weighted sum and constant) >> bits, 0, 255), with 6 or 8 bits. The sums need up to 18 bits, and
  // each backend has its own means to form them exactly.
  requires can_be_stored<V, decltype(coarse)>;
  { V::load_pair_bytes(source) } -> gives<typename V::pair_bytes>;
  requires can_be_stored<V, typename V::pair_bytes>;
  // Stored, three or four bytes a pixel.
  requires can_be_stored<V, decltype(V::interleave3(fine, fine, fine))>;
  requires can_be_stored<V, decltype(V::interleave4(fine, fine, fine, opaque()))>;
  requires can_be_stored<V, decltype(V::interleave4(coarse, coarse, coarse, opaque()))>;
  requires can_be_stored<V, decltype(V::interleave4(coarse, coarse, coarse, pair_bytes))>;
  // Reads pairs of uyvy: two pixels of four bytes each, Y Cb Cr A or, if true, Cr Cb Y A, which share the pair's
  // chroma. Alpha comes from a plane or is 255.
  requires can_be_stored<V, decltype(V::template pixels_of_444<true>(source, source))>;
  requires can_be_stored<V, decltype(V::template pixels_of_444<false>(source))>;
};

template <class V, class Words>
concept joins_words = requires(const Words words) {
  { V::join_words(words, words) } -> gives<typename V::block>;
}
|| requires(const Words words) {
  { V::join_words(words, words, words, words) } -> gives<typename V::block>;
};

// floats: float_lanes of them, in memory order.
template <class V>
concept has_floats = requires(const uint8_t* source, typename V::floats floats, typename V::block block) {
  // max(x, bottom) - bottom of 16-bit words.
  { V::template load_words_above<4096>(source) } -> gives<typename V::floats>;
  requires can_be_stored<V, typename V::floats>;
  { V::floats_at(source) } -> gives<typename V::floats>;
  // From half floats, and to them, rounded to the nearest and to even ones between two.
  { V::half_floats_at(source) } -> gives<typename V::floats>;
  requires can_be_stored<V, decltype(V::half_floats(floats))>;
  // The words of a block in parts, each as many as there are floats: those of the first part, of the second...
  { V::template floats_of_words<0>(block) } -> gives<typename V::floats>;
  { V::multiply(floats, float{}) } -> gives<typename V::floats>;
  { V::add(floats, floats) } -> gives<typename V::floats>;
  { V::subtract(floats, float{}) } -> gives<typename V::floats>;
  { V::at_most(floats, float{}) } -> gives<typename V::floats>;
  { V::divide(floats, float{}) } -> gives<typename V::floats>;
  // What is not a number becomes 0.
  { V::between_0_and_1(floats) } -> gives<typename V::floats>;
  // bottom + x of floats that are at least 0, without a fraction, as words below 65536.
  requires can_be_stored<V, decltype(V::template words_of_floats<4096>(floats))>;
  // As many of these as fill a block, one after the other.
  requires joins_words<V, decltype(V::template words_of_floats<0>(floats))>;
  // Pixels of four floats, each kind to floats of its own, and back.
  { V::load_four_floats(source) } -> gives<typename V::four_floats>;
  requires can_be_stored<V, decltype(V::interleave4_floats(floats, floats, floats, floats))>;
  // Pixels Cr Cb Y A of chroma in pairs, Cb Cr, luma and alpha.
  requires can_be_stored<V, decltype(V::join_vuya(floats, floats, floats))>;
};

template <class V>
concept backend_with_vectors = has_sizes<V> && announces_stores<V> && announces_loads<V> && has_blocks<V> &&
    has_lines<V> && has_tens<V> && has_pixels<V> && has_pairs<V> && has_floats<V>;

template <class V>
concept backend = V::lanes == 0 || backend_with_vectors<V>;

}  // namespace Processing::Morvane::format_conversion::vector
