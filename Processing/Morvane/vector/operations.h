// The vector operations: what a backend with vectors offers to the kernels, under the same names on each.
//
// A backend works on `lanes` pixels at a time. Samples of those pixels are held in an order of the backend's own,
// the same in all its types, so a kernel may combine any of them lane by lane; loading and storing translate from and
// to memory order. Only a `block` is a run of memory as it stands.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>

#include "weights.h"

namespace Processing::Morvane::format_conversion::vector {

template <class V>
concept backend_with_vectors = requires(const uint8_t* source, uint8_t* destination, typename V::block block,
                                        typename V::bytes bytes, typename V::words words,
                                        typename V::pair_bytes pair_bytes, typename V::pixels pixels,
                                        typename V::weighable weighable, typename V::pairs pairs,
                                        typename V::floats floats) {
  requires V::lanes >
  0;
  requires V::block_bytes >
  0;
  // How many vectors a line is walked over before the rest of it is looked at again.
  requires V::vectors_a_turn >
  0;
  // How far behind the present place a line's stores are announced, by expect_store for each cache line; 0 where the
  // processor finds out early enough by itself.
  requires V::stores_expected_ahead >= 0;

  // block: block_bytes bytes as they stand in memory.
  { V::load(source) } -> std::same_as<typename V::block>;
  V::store(destination, block);
  // A 16-bit value over and over, low byte first.
  { V::repeat(uint16_t{}) } -> std::same_as<typename V::block>;
  // Exchanges bytes 2k and 2k + 1.
  { V::swap_bytes(block) } -> std::same_as<typename V::block>;
  { V::and_blocks(block, block) } -> std::same_as<typename V::block>;
  { V::or_blocks(block, block) } -> std::same_as<typename V::block>;
  // (x << bits) & mask of every 32-bit word.
  { V::template shift_left_and_mask<2, 0xff00>(block) } -> std::same_as<typename V::block>;
  // x >> bits, x << bits and a + b of every 16-bit word, modulo 65536.
  { V::template shift_right_words<6>(block) } -> std::same_as<typename V::block>;
  { V::template shift_left_words<6>(block) } -> std::same_as<typename V::block>;
  { V::add_words(block, block) } -> std::same_as<typename V::block>;
  // Words 0 0 2 2 4 4...
  { V::repeat_even_words(block) } -> std::same_as<typename V::block>;
  // offset + (((x - offset) * (a + 1)) >> 16) of words x and a, modulo 65536.
  { V::template scale_words<4096>(block, block) } -> std::same_as<typename V::block>;
  // Bytes 0, 2, 4... and 1, 3, 5... of two blocks, or their 16-bit words; and the way back, of bytes, of 16-bit words
  // or of 32-bit ones.
  { V::deinterleave2(block, block) } -> std::same_as<typename V::two_blocks>;
  { V::deinterleave2_words(block, block) } -> std::same_as<typename V::two_blocks>;
  { V::interleave2(block, block) } -> std::same_as<typename V::two_blocks>;
  { V::interleave2_words(block, block) } -> std::same_as<typename V::two_blocks>;
  { V::interleave2_dwords(block, block) } -> std::same_as<typename V::two_blocks>;
  // A byte for each pair of words of luma and of chroma, in two bits each from the top: Cr Y1 Cb Y0. In the words,
  // those are bits 7 and 6; loading leaves all other bits zero. If true, Cb gives its bits for Cr as well.
  { V::load_pair_bits(source) } -> std::same_as<typename V::two_blocks>;
  V::template store_pair_bits<true>(destination, block, block);
  // clamp((multiplier * x + offset) >> 8) of every byte; (multiplier - 256) * x + offset fits 16 signed bits.
  { V::template linear<301, -5117>(block) } -> std::same_as<typename V::block>;
  // The same of bytes 1, 3, 5... of two blocks, with a negative offset.
  { V::template linear_of_odd_bytes<301, -5117>(block, block) } -> std::same_as<typename V::block>;
  // clamp((multiplier * x + offset) >> bits) of every 16-bit word; the offset is a multiple of 4096.
  { V::template linear_words<1197, -4902912, 10>(block) } -> std::same_as<typename V::block>;
  // The block with zeros for so many of its first bytes.
  { V::without_first(block, size_t{}) } -> std::same_as<typename V::block>;
  // 64-bit sums of the absolute differences of bytes.
  { V::add_differences(V::no_sum(), block, block) } -> std::same_as<typename V::sums>;
  { V::total(V::no_sum()) } -> std::same_as<uint64_t>;
  // Whether bytes 3, 7, 11... are all 255.
  { V::fourth_bytes_are_255(block) } -> std::same_as<bool>;
  // Reads four blocks of 32-bit words of three 10-bit samples each, the first in the lowest bits, and stores the upper
  // eight bits of every sample: 3 * block_bytes bytes.
  V::store_upper_bytes_of_10(destination, source);

  // pixels: four bytes of each pixel. weighable: the same, arranged for weighing; load3_weighable reads three-byte
  // pixels and repeats byte 1 as the fourth.
  { V::load4(source) } -> std::same_as<typename V::pixels>;
  { V::load4_weighable(source) } -> std::same_as<typename V::weighable>;
  { V::load3_weighable(source) } -> std::same_as<typename V::weighable>;
  // words: a 16-bit word for each pixel. weigh sums the weighted bytes of a pixel, modulo 65536; with two sets of
  // weights, the first is for the even pixels and the second for the odd ones. A weight is at least -128 and at most
  // 127, and the sums of bytes 0 and 1 and of bytes 2 and 3 are -32768..32767.
  { V::template weigh<line::weights{1, 2, 3, 0}>(weighable) } -> std::same_as<typename V::words>;
  {
    V::template weigh<line::weights{1, 2, 3, 0}, line::weights{3, 2, 1, 0}>(weighable)
    } -> std::same_as<typename V::words>;
  // (x * A) >> bits of signed words, A being the pixel's fourth byte, and bits 15 or 16. The results are -128..127 or,
  // if true, 0..255.
  { V::template scale_by_fourth<16, false>(words, weighable) } -> std::same_as<typename V::bytes>;
  { V::template add<16>(words) } -> std::same_as<typename V::words>;
  // The low 16 bits of the products.
  { V::multiply(words, words) } -> std::same_as<typename V::words>;
  { V::low_bytes(words) } -> std::same_as<typename V::words>;
  { V::high_bytes(words) } -> std::same_as<typename V::words>;
  { V::template shift_left<8>(words) } -> std::same_as<typename V::words>;
  { V::load_words(source) } -> std::same_as<typename V::words>;
  V::store_words(destination, words);
  // The upper byte of the first words as the low byte, and that of the second ones as the high byte.
  { V::upper_bytes(words, words) } -> std::same_as<typename V::words>;
  // Adds to the low and to the high bytes, each modulo 256.
  { V::template add_to_bytes<128, 16>(words) } -> std::same_as<typename V::words>;
  // Two bytes of each pixel as a word: the low one is byte `even` (for even pixels) or `odd` (for odd ones) of the
  // pair's even pixel, the high one byte `own` of the pixel itself.
  { V::template pick_of_pairs<1, 2, 0>(pixels) } -> std::same_as<typename V::words>;
  // bytes: a byte for each pixel.
  { V::load_bytes(source) } -> std::same_as<typename V::bytes>;
  V::store_bytes(destination, bytes);
  { V::and_bytes(bytes, bytes) } -> std::same_as<typename V::bytes>;
  { V::all_255(bytes) } -> std::same_as<bool>;
  { V::widen(bytes) } -> std::same_as<typename V::words>;
  // The byte in both halves of the word.
  { V::widen_repeated(bytes) } -> std::same_as<typename V::words>;
  { V::fourth(pixels) } -> std::same_as<typename V::bytes>;
  { V::fourth(weighable) } -> std::same_as<typename V::bytes>;
  { V::fourth_words(pixels) } -> std::same_as<typename V::words>;
  // narrow shifts right and keeps the low byte, which must hold the whole result.
  { V::template narrow<7>(words) } -> std::same_as<typename V::bytes>;
  // Adds modulo 256.
  { V::template add<16>(bytes) } -> std::same_as<typename V::bytes>;
  { V::same(uint8_t{}) } -> std::same_as<typename V::bytes>;
  // Stores four bytes a pixel.
  V::store4(destination, bytes, bytes, bytes, bytes);
  // Stores chroma and luma alternately.
  V::store_uyvy(destination, bytes, bytes);

  // pairs: luma of each pixel and chroma of its pair, the same for both pixels. pair_bytes: a byte for each of these
  // pixels.
  { V::load_uyvy(source) } -> std::same_as<typename V::pairs>;
  // From 16-bit planes of luma and of Cb Cr: the upper bytes.
  { V::load_upper_bytes(source, source) } -> std::same_as<typename V::pairs>;
  // clamp((weighted sum and constant) >> bits, 0, 255), with 6 or 8 bits. The sums need up to 18 bits, and each backend
  // has its own means to form them exactly in 16-bit lanes.
  {
    V::template clamped_sum<line::ycbcr_weights{74, 128, 0, -17576}, 6>(pairs)
    } -> std::same_as<typename V::pair_bytes>;

  { V::same_of_pairs(uint8_t{}) } -> std::same_as<typename V::pair_bytes>;
  { V::load_pair_bytes(source) } -> std::same_as<typename V::pair_bytes>;
  V::store_pair_bytes(destination, pair_bytes);
  // Stores three or four bytes a pixel.
  V::store3(destination, pair_bytes, pair_bytes, pair_bytes);
  V::store4(destination, pair_bytes, pair_bytes, pair_bytes, pair_bytes);

  // Pairs of uyvy to two pixels of four bytes each, Y Cb Cr A or, if true, Cr Cb Y A, which share the pair's chroma.
  // Alpha comes from a plane or is 255.
  V::template store_444<true>(destination, source, source);
  V::template store_444<false>(destination, source);
  // Replaces bytes 1 and 3 of pixels of four bytes: byte 1 by the byte 128 + (weighted sum of the given pixel >> 8),
  // and byte 3 by that of the given pixel or, if false, by 255.
  V::template replace_second_and_fourth<line::weights{112, -87, -26, 0}, true>(destination, pixels);

  // floats: float_lanes of them, in memory order.
  requires V::float_lanes >
  0;
  // max(x, bottom) - bottom of 16-bit words.
  { V::template load_words_above<4096>(source) } -> std::same_as<typename V::floats>;
  { V::multiply(floats, float{}) } -> std::same_as<typename V::floats>;
  { V::add(floats, floats) } -> std::same_as<typename V::floats>;
  { V::subtract(floats, float{}) } -> std::same_as<typename V::floats>;
  { V::at_most(floats, float{}) } -> std::same_as<typename V::floats>;
  // Pixels Cr Cb Y A of chroma in pairs, Cb Cr, luma and alpha.
  V::store_vuya(destination, floats, floats, floats);
};

}  // namespace Processing::Morvane::format_conversion::vector
