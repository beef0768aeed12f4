// Between rows of pairs of 4:2:2 and lines of working samples, where each sample is a word or has its bits in a stream.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
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

using lines_pairs_kernels = kernel_list<split_422<words_in_pairs>, join_422<words_in_pairs>>;

}  // namespace Processing::Morvane::format_conversion::kernel
