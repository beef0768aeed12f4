// Between rows of pairs of pixels and lines of working samples, where each sample is a word or has its bits in a
// stream.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "lines_stored.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Samples of a pair, at the top of words.
struct pair_of_words {
  uint16_t y0, cb, y1, cr;
};

template <class V>
struct luma_and_chroma {
  typename V::block luma, chroma;
};

// Words Y0 Cb Y1 Cr, of which the bits of `kept` are used.
struct words_in_pairs {
  static constexpr int bytes = 8;
  uint16_t kept, half;

  MORVANE_INLINE uint16_t load(const uint8_t* p) const { return static_cast<uint16_t>(stored_word(p) & kept); }
  MORVANE_INLINE pair_of_words load_pair(const uint8_t* p) const {
    return {load(p), load(p + 2), load(p + 4), load(p + 6)};
  }
  MORVANE_INLINE static void put_pair(uint8_t* p, const pair_of_words& pair) {
    put_word(p, pair.y0);
    put_word(p + 2, pair.cb);
    put_word(p + 4, pair.y1);
    put_word(p + 6, pair.cr);
  }
  // A block of each, of the pairs at p.
  template <class V>
  MORVANE_INLINE luma_and_chroma<V> load(const uint8_t* p) const {
    const auto words = V::deinterleave2_words(V::load(p), V::load(blocks_on<V>(p, 1)));
    return {V::and_blocks(words.first, V::repeat(kept)), V::and_blocks(words.second, V::repeat(kept))};
  }
  template <class V>
  MORVANE_INLINE static auto stored(const luma_and_chroma<V>& pairs) {
    return V::interleave2_words(pairs.luma, pairs.chroma);
  }
};

// Big-endian streams Cb Y0 Cr Y1: of ten bits, a pair in five bytes.
struct tens_in_pairs {
  static constexpr int bytes = 5;
  static constexpr uint16_t kept = 0xffc0, half = 32;

  // The sample that begins in byte i of a pair lies 2 i bits below the top of that byte.
  MORVANE_INLINE static uint16_t load(const uint8_t* pair, const int i) {
    return static_cast<uint16_t>((pair[i] << 8 | pair[i + 1]) << 2 * i & kept);
  }
  MORVANE_INLINE static pair_of_words load_pair(const uint8_t* p) {
    return {load(p, 1), load(p, 0), load(p, 3), load(p, 2)};
  }
  MORVANE_INLINE static void put_pair(uint8_t* p, const pair_of_words& pair) {
    p[0] = static_cast<uint8_t>(pair.cb >> 8);
    p[1] = static_cast<uint8_t>(pair.cb | pair.y0 >> 10);
    p[2] = static_cast<uint8_t>(pair.y0 >> 2 | pair.cr >> 12);
    p[3] = static_cast<uint8_t>(pair.cr >> 4 | pair.y1 >> 14);
    p[4] = static_cast<uint8_t>(pair.y1 >> 6);
  }
  template <class V>
  MORVANE_INLINE static luma_and_chroma<V> load(const uint8_t* p) {
    const auto words =
        V::deinterleave2_words(V::load_tens_of_fives(p), V::load_tens_of_fives(p + V::block_bytes / 8 * bytes));
    return {words.second, words.first};
  }
  template <class V>
  MORVANE_INLINE static auto stored(const luma_and_chroma<V>& pairs) {
    const auto words = V::interleave2_words(pairs.chroma, pairs.luma);
    return in_a_row(V::fives_of_tens(words.first), V::fives_of_tens(words.second));
  }
};

// Two samples of twelve bits in three bytes, as words that have them at the top.
struct two_twelves {
  uint16_t first, second;
};
template <class V>
struct blocks_of_twelves {
  typename V::block first, second;
};

// A number of 24 bits has one sample in its lower half and one in its upper half: in a little-endian stream the first
// one in the lower half, and in a big-endian one, whose bytes are the other way round, in the upper half.
template <bool big_endian>
struct twelves {
  static constexpr uint16_t kept = 0xfff0, half = 8;

  MORVANE_INLINE static two_twelves load(const uint8_t* p) {
    const auto lower = static_cast<uint16_t>((p[big_endian ? 2 : 0] | p[1] << 8) << 4);
    const auto upper = static_cast<uint16_t>((p[1] | p[big_endian ? 0 : 2] << 8) & kept);
    return big_endian ? two_twelves{upper, lower} : two_twelves{lower, upper};
  }
  MORVANE_INLINE static void put(uint8_t* p, const two_twelves& samples) {
    const uint16_t lower = big_endian ? samples.second : samples.first;
    const uint16_t upper = big_endian ? samples.first : samples.second;
    p[big_endian ? 2 : 0] = static_cast<uint8_t>(lower >> 4);
    p[1] = static_cast<uint8_t>(lower >> 12 | (upper & 0xf0));
    p[big_endian ? 0 : 2] = static_cast<uint8_t>(upper >> 8);
  }
  // Of twelve bits for each word of a block.
  template <class V>
  MORVANE_INLINE static blocks_of_twelves<V> load(const uint8_t* p) {
    constexpr uint32_t both_words = big_endian ? 0x00010102 : 0x02010100;
    const auto fours = V::load_threes(p);
    const auto halves = V::deinterleave2_words(V::rearrange_dwords(fours.first, both_words),
                                               V::rearrange_dwords(fours.second, both_words));
    const auto lower = V::template shift_left_words<4>(halves.first);
    const auto upper = V::and_blocks(halves.second, V::repeat(kept));
    if constexpr (big_endian)
      return {upper, lower};
    else
      return {lower, upper};
  }
  template <class V>
  MORVANE_INLINE static auto stored(const blocks_of_twelves<V>& samples) {
    const auto lower = big_endian ? samples.second : samples.first;
    const auto upper = big_endian ? samples.first : samples.second;
    const auto fours =
        V::interleave2_words(V::or_blocks(V::template shift_right_words<4>(lower),
                                          V::template shift_left_words<12>(V::template shift_right_words<4>(upper))),
                             V::template shift_right_words<8>(upper));
    if constexpr (!big_endian) return V::threes(fours);
    constexpr uint32_t turned = 0x03000102;
    return V::threes({V::rearrange_dwords(fours.first, turned), V::rearrange_dwords(fours.second, turned)});
  }
};

// Of twelve bits, a pair in six bytes.
struct twelves_in_pairs {
  using stream = twelves<true>;
  static constexpr int bytes = 6;
  static constexpr uint16_t kept = stream::kept, half = stream::half;

  MORVANE_INLINE static pair_of_words load_pair(const uint8_t* p) {
    const two_twelves first = stream::load(p);
    const two_twelves second = stream::load(p + 3);
    return {first.second, first.first, second.second, second.first};
  }
  MORVANE_INLINE static void put_pair(uint8_t* p, const pair_of_words& pair) {
    stream::put(p, {pair.cb, pair.y0});
    stream::put(p + 3, {pair.cr, pair.y1});
  }
  template <class V>
  MORVANE_INLINE static luma_and_chroma<V> load(const uint8_t* p) {
    const auto samples = stream::load<V>(p);
    return {samples.second, samples.first};
  }
  template <class V>
  MORVANE_INLINE static auto stored(const luma_and_chroma<V>& pairs) {
    return stream::stored<V>({pairs.chroma, pairs.luma});
  }
};

template <class Pairs>
struct split_422 : line_kernel<split_422<Pairs>, from<Pairs::bytes>, written_words<2>, written_line, written_line>,
                   Pairs {
  MORVANE_INLINE void rule(const uint8_t* src, uint16_t* luma, uint16_t* cb, uint16_t* cr) const {
    const pair_of_words pair = this->load_pair(src);
    luma[0] = pair.y0;
    luma[1] = pair.y1;
    *cb = pair.cb;
    *cr = pair.cr;
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* src) const {
    const auto first = this->template load<V>(src);
    const auto second = this->template load<V>(src + V::block_bytes / 4 * Pairs::bytes);
    const auto chroma = V::deinterleave2_words(first.chroma, second.chroma);
    return to_planes(in_a_row(first.luma, second.luma), chroma.first, chroma.second);
  }
};

template <class Pairs>
struct join_422 : line_kernel<join_422<Pairs>, read_words<2>, read_line, read_line, to<Pairs::bytes>>, Pairs {
  MORVANE_INLINE uint16_t rounded(const uint16_t v) const {
    return static_cast<uint16_t>(add_to_limit(v, this->half) & this->kept);
  }
  MORVANE_INLINE void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint8_t* dst) const {
    this->put_pair(dst, {rounded(luma[0]), rounded(*cb), rounded(luma[1]), rounded(*cr)});
  }
  template <class V>
  MORVANE_INLINE auto rounded(const uint8_t* line) const {
    return V::and_blocks(V::add_words_to_limit(V::load(line), V::repeat(this->half)), V::repeat(this->kept));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) const {
    const auto chroma = V::interleave2_words(rounded<V>(cb), rounded<V>(cr));
    const luma_and_chroma<V> first = {rounded<V>(luma), chroma.first};
    const luma_and_chroma<V> second = {rounded<V>(blocks_on<V>(luma, 1)), chroma.second};
    return in_a_row(this->template stored<V>(first), this->template stored<V>(second));
  }
};

// A little-endian stream R G B of twelve bits: two pixels in nine bytes.
struct split_rgb_12 : line_kernel<split_rgb_12, from<9>, written_words<2>, written_words<2>, written_words<2>> {
  using stream = twelves<false>;
  static constexpr bool fills_registers = true;
  uint16_t repeated;  // of the upper bits of a sample, below it once more

  MORVANE_INLINE uint16_t filled(const uint16_t top) const {
    return static_cast<uint16_t>(top | (top >> 12 & repeated));
  }
  MORVANE_INLINE void rule(const uint8_t* src, uint16_t* r, uint16_t* g, uint16_t* b) const {
    const two_twelves rg = stream::load(src), br = stream::load(src + 3), gb = stream::load(src + 6);
    r[0] = filled(rg.first);
    g[0] = filled(rg.second);
    b[0] = filled(br.first);
    r[1] = filled(br.second);
    g[1] = filled(gb.first);
    b[1] = filled(gb.second);
  }
  template <class V>
  MORVANE_INLINE auto filled(const typename V::block top) const {
    return V::or_blocks(top, V::and_blocks(V::template shift_right_words<12>(top), V::repeat(repeated)));
  }
  // Red, green and blue of the pixels in two blocks. The first samples of the twos are red and blue of even pixels and
  // green of odd ones, and the second ones are the others.
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* src) const {
    constexpr int bytes_of_block = V::block_bytes / 2 * 3;
    const auto a = stream::load<V>(src);
    const auto b = stream::load<V>(src + bytes_of_block);
    const auto c = stream::load<V>(src + 2 * bytes_of_block);
    const auto first = V::deinterleave3_words(filled<V>(a.first), filled<V>(b.first), filled<V>(c.first));
    const auto second = V::deinterleave3_words(filled<V>(a.second), filled<V>(b.second), filled<V>(c.second));
    return to_planes(V::interleave2_words(first.first, second.second), V::interleave2_words(second.first, first.third),
                     V::interleave2_words(first.second, second.third));
  }
};

struct join_rgb_12 : line_kernel<join_rgb_12, read_words<2>, read_words<2>, read_words<2>, to<9>> {
  using stream = twelves<false>;
  static constexpr bool fills_registers = true;
  rounding<12> by;

  MORVANE_INLINE uint16_t rounded(const uint16_t v) const { return static_cast<uint16_t>(by.of(v) << 4); }
  MORVANE_INLINE void rule(const uint16_t* r, const uint16_t* g, const uint16_t* b, uint8_t* dst) const {
    stream::put(dst, {rounded(r[0]), rounded(g[0])});
    stream::put(dst + 3, {rounded(b[0]), rounded(r[1])});
    stream::put(dst + 6, {rounded(g[1]), rounded(b[1])});
  }
  template <class V>
  MORVANE_INLINE auto rounded(const uint8_t* line) const {
    return V::template shift_left_words<4>(by.of<V>(V::load(line)));
  }
  template <class V>
  MORVANE_INLINE auto of_pixels(const uint8_t* line) const {
    return V::deinterleave2_words(rounded<V>(line), rounded<V>(blocks_on<V>(line, 1)));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* r, const uint8_t* g, const uint8_t* b) const {
    const auto red = of_pixels<V>(r);
    const auto green = of_pixels<V>(g);
    const auto blue = of_pixels<V>(b);
    const auto first = V::interleave3_words(red.first, blue.first, green.second);
    const auto second = V::interleave3_words(green.first, red.second, blue.second);
    return in_a_row(stream::stored<V>({first.first, second.first}), stream::stored<V>({first.second, second.second}),
                    stream::stored<V>({first.third, second.third}));
  }
};

using lines_pairs_kernels =
    kernel_list<split_422<words_in_pairs>, join_422<words_in_pairs>, split_422<tens_in_pairs>, join_422<tens_in_pairs>,
                split_422<twelves_in_pairs>, join_422<twelves_in_pairs>, split_rgb_12, join_rgb_12>;

}  // namespace Processing::Morvane::format_conversion::kernel
