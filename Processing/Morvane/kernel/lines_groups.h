// Between rows of pairs or larger groups of pixels and lines of working samples: 4:2:2 in bytes and in ten bits.
#pragma once

#include <cstddef>
#include <cstdint>

#include "group_10.h"
#include "lines.h"
#include "list.h"
#include "samples.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Pairs of 4:2:2 in four bytes, chroma or luma first. Lines of luma have two samples for each pair.
enum class first_of_pair : bool { chroma, luma };

template <first_of_pair begins>
struct split_pairs : line_kernel<split_pairs<begins>, from<4>, written_words<2>, written_line, written_line> {
  static constexpr int y = begins == first_of_pair::luma ? 0 : 1;

  MORVANE_INLINE static void rule(const uint8_t* src, uint16_t* luma, uint16_t* cb, uint16_t* cr) {
    luma[0] = static_cast<uint16_t>(src[y] << 8);
    luma[1] = static_cast<uint16_t>(src[y + 2] << 8);
    *cb = static_cast<uint16_t>(src[1 - y] << 8);
    *cr = static_cast<uint16_t>(src[3 - y] << 8);
  }
  template <class V>
  MORVANE_INLINE static auto lower(const typename V::block pairs) {
    return V::template shift_left_words<8>(pairs);
  }
  template <class V>
  MORVANE_INLINE static auto upper(const typename V::block pairs) {
    return V::and_blocks(pairs, V::repeat(0xff00));
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto first = V::load(src);
    const auto second = V::load(blocks_on<V>(src, 1));
    if constexpr (y == 0) {
      const auto chroma = V::deinterleave2_words(upper<V>(first), upper<V>(second));
      return to_planes(in_a_row(lower<V>(first), lower<V>(second)), chroma.first, chroma.second);
    } else {
      const auto chroma = V::deinterleave2_words(lower<V>(first), lower<V>(second));
      return to_planes(in_a_row(upper<V>(first), upper<V>(second)), chroma.first, chroma.second);
    }
  }
};

// YCbCr of eight or ten bits is rounded by half a step, which then is in the upper bits.
template <int bits>
MORVANE_INLINE constexpr uint16_t rounded_at_top(const uint16_t v) {
  return add_to_limit(v, 1 << (15 - bits));
}
template <class V, int bits>
MORVANE_INLINE auto load_rounded(const uint8_t* line, const int blocks = 0) {
  return V::add_words_to_limit(V::load(blocks_on<V>(line, blocks)), V::repeat(1 << (15 - bits)));
}

template <first_of_pair begins>
struct join_pairs : line_kernel<join_pairs<begins>, read_words<2>, read_line, read_line, to<4>> {
  static constexpr int y = begins == first_of_pair::luma ? 0 : 1;

  MORVANE_INLINE static uint8_t byte(const uint16_t v) { return static_cast<uint8_t>(rounded_at_top<8>(v) >> 8); }
  MORVANE_INLINE static void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint8_t* dst) {
    dst[y] = byte(luma[0]);
    dst[y + 2] = byte(luma[1]);
    dst[1 - y] = byte(*cb);
    dst[3 - y] = byte(*cr);
  }
  template <class V>
  MORVANE_INLINE static auto upper_bytes(const typename V::block luma, const typename V::block chroma) {
    return y == 0 ? group_10::upper_bytes_of<V>(luma, chroma) : group_10::upper_bytes_of<V>(chroma, luma);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    const auto chroma = V::interleave2_words(load_rounded<V, 8>(cb), load_rounded<V, 8>(cr));
    return in_a_row(upper_bytes<V>(load_rounded<V, 8>(luma), chroma.first),
                    upper_bytes<V>(load_rounded<V, 8>(luma, 1), chroma.second));
  }
};

// Three samples of ten bits in a little-endian double word, the first one lowest.
MORVANE_INLINE uint32_t three_tens(const uint8_t* p) {
  return word_at(p) | static_cast<uint32_t>(word_at(p + 2)) << 16;
}

MORVANE_INLINE void store_three_tens(uint8_t* p, const int first, const int second, const int third) {
  const uint32_t word =
      static_cast<uint32_t>(first) | static_cast<uint32_t>(second) << 10 | static_cast<uint32_t>(third) << 20;
  store_word(p, static_cast<int>(word & 65535));
  store_word(p + 2, static_cast<int>(word >> 16));
}

template <int place>
MORVANE_INLINE uint16_t ten_at_top(const uint32_t word) {
  return static_cast<uint16_t>((word >> (10 * place) & 1023) << 6);
}
MORVANE_INLINE int ten_of(const uint16_t v) {
  return rounded_at_top<10>(v) >> 6;
}

// v210: Cb0 Y0 Cr0 | Y1 Cb1 Y2 | Cr1 Y3 Cb2 | Y4 Cr2 Y5. Vectors read and write up to 16 bytes behind the ends of
// lines.
struct split_v210 : line_kernel<split_v210, from<16>, written_words<6>, written_words<3>, written_words<3>> {
  MORVANE_INLINE static void rule(const uint8_t* src, uint16_t* luma, uint16_t* cb, uint16_t* cr) {
    const uint32_t word0 = three_tens(src), word1 = three_tens(src + 4);
    const uint32_t word2 = three_tens(src + 8), word3 = three_tens(src + 12);
    cb[0] = ten_at_top<0>(word0);
    luma[0] = ten_at_top<1>(word0);
    cr[0] = ten_at_top<2>(word0);
    luma[1] = ten_at_top<0>(word1);
    cb[1] = ten_at_top<1>(word1);
    luma[2] = ten_at_top<2>(word1);
    cr[1] = ten_at_top<0>(word2);
    luma[3] = ten_at_top<1>(word2);
    cb[2] = ten_at_top<2>(word2);
    luma[4] = ten_at_top<0>(word3);
    cr[2] = ten_at_top<1>(word3);
    luma[5] = ten_at_top<2>(word3);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto lines = V::split_v210(V::load(src));
    return to_planes(lines.luma, lines.cb, lines.cr);
  }
};

struct join_v210 : line_kernel<join_v210, read_words<6>, read_words<3>, read_words<3>, to<16>> {
  MORVANE_INLINE static void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint8_t* dst) {
    store_three_tens(dst, ten_of(cb[0]), ten_of(luma[0]), ten_of(cr[0]));
    store_three_tens(dst + 4, ten_of(luma[1]), ten_of(cb[1]), ten_of(luma[2]));
    store_three_tens(dst + 8, ten_of(cr[1]), ten_of(luma[3]), ten_of(cb[2]));
    store_three_tens(dst + 12, ten_of(luma[4]), ten_of(cr[2]), ten_of(luma[5]));
  }
  template <class V>
  MORVANE_INLINE static auto rounded(const typename V::block v) {
    return V::template shift_right_words<6>(V::add_words_to_limit(v, V::repeat(32)));
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    const auto lines = V::load_for_v210(luma, cb, cr);
    return V::join_v210({rounded<V>(lines.first), rounded<V>(lines.second)});
  }
};

// Pairs in two double words: Y Cb A | Y Cr A, of which alpha's bits are repeated below it.
struct split_yua_yva
    : line_kernel<split_yua_yva, from<8>, written_words<2>, written_line, written_line, written_words<2>> {
  MORVANE_INLINE static uint16_t with_repeated(const uint16_t a) { return static_cast<uint16_t>(a | a >> 10); }
  MORVANE_INLINE static void rule(const uint8_t* src, uint16_t* luma, uint16_t* cb, uint16_t* cr, uint16_t* alpha) {
    const uint32_t even = three_tens(src);
    const uint32_t odd = three_tens(src + 4);
    luma[0] = ten_at_top<0>(even);
    luma[1] = ten_at_top<0>(odd);
    *cb = ten_at_top<1>(even);
    *cr = ten_at_top<1>(odd);
    alpha[0] = with_repeated(ten_at_top<2>(even));
    alpha[1] = with_repeated(ten_at_top<2>(odd));
  }
  // Luma, chroma and alpha of the pixels in two blocks, of which the words are
  //   lower   C C C C C C Y Y Y Y Y Y Y Y Y Y     upper   0 0 A A A A A A A A A A C C C C
  template <class V>
  struct pixels {
    typename V::block luma, chroma, alpha;
  };
  template <class V>
  MORVANE_INLINE static pixels<V> load_pixels(const uint8_t* src) {
    const auto words = V::deinterleave2_words(V::load(src), V::load(blocks_on<V>(src, 1)));
    const auto ten_bits = V::repeat(0xffc0);
    const auto chroma =
        V::or_blocks(V::template shift_right_words<4>(words.first), V::template shift_left_words<12>(words.second));
    const auto alpha = V::and_blocks(V::template shift_left_words<2>(words.second), ten_bits);
    return {V::template shift_left_words<6>(words.first), V::and_blocks(chroma, ten_bits),
            V::or_blocks(alpha, V::template shift_right_words<10>(alpha))};
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto first = load_pixels<V>(src);
    const auto second = load_pixels<V>(blocks_on<V>(src, 2));
    const auto chroma = V::deinterleave2_words(first.chroma, second.chroma);
    return to_planes(in_a_row(first.luma, second.luma), chroma.first, chroma.second,
                     in_a_row(first.alpha, second.alpha));
  }
};

struct join_yua_yva : line_kernel<join_yua_yva, read_words<2>, read_line, read_line, read_words<2>, to<8>> {
  // Of alpha.
  MORVANE_INLINE static int scaled(const uint16_t a) { return rounded_product(static_cast<int16_t>(a >> 1), 1023); }
  MORVANE_INLINE static void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, const uint16_t* alpha,
                                  uint8_t* dst) {
    store_three_tens(dst, ten_of(luma[0]), ten_of(*cb), scaled(alpha[0]));
    store_three_tens(dst + 4, ten_of(luma[1]), ten_of(*cr), scaled(alpha[1]));
  }
  template <class V>
  MORVANE_INLINE static auto joined(const typename V::block y, const typename V::block c,
                                    const typename V::block alpha) {
    const auto a = V::rounded_product(V::template shift_right_words<1>(alpha), V::repeat(1023));
    const auto lower = V::or_blocks(V::template shift_right_words<6>(y),
                                    V::and_blocks(V::template shift_left_words<4>(c), V::repeat(0xfc00)));
    const auto upper = V::or_blocks(V::template shift_right_words<12>(c), V::template shift_left_words<4>(a));
    return V::interleave2_words(lower, upper);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr, const uint8_t* alpha) {
    const auto chroma = V::interleave2_words(load_rounded<V, 10>(cb), load_rounded<V, 10>(cr));
    return in_a_row(joined<V>(load_rounded<V, 10>(luma), chroma.first, V::load(alpha)),
                    joined<V>(load_rounded<V, 10>(luma, 1), chroma.second, V::load(blocks_on<V>(alpha, 1))));
  }
};

// Groups of eight pairs Y Cb Y Cr: 32 bytes with the upper eight bits, and eight with the lower two of four samples
// each, the first one lowest.
struct split_yuyv_10 : line_kernel<split_yuyv_10, from<group_10::bytes>, written_words<2 * group_10::pairs>,
                                   written_words<group_10::pairs>, written_words<group_10::pairs>> {
  MORVANE_INLINE static uint16_t sample(const uint8_t* group, const int pair, const int place) {
    const int low = group[group_10::upper_bytes + pair] >> (2 * place) & 3;
    return static_cast<uint16_t>(group[4 * pair + place] << 8 | low << 6);
  }
  MORVANE_INLINE static void rule(const uint8_t* group, uint16_t* luma, uint16_t* cb, uint16_t* cr) {
    for (int pair = 0; pair < group_10::pairs; ++pair) {
      luma[2 * pair] = sample(group, pair, 0);
      cb[pair] = sample(group, pair, 1);
      luma[2 * pair + 1] = sample(group, pair, 2);
      cr[pair] = sample(group, pair, 3);
    }
  }
  template <class V>
  MORVANE_INLINE static typename V::two_blocks luma_and_chroma(const uint8_t* groups) {
    const auto upper = V::load_upper_of_groups(groups);
    const auto lower = V::load_lower_of_groups(groups);
    return {V::or_blocks(V::template shift_left_words<8>(upper), lower.first),
            V::or_blocks(V::and_blocks(upper, V::repeat(0xff00)), lower.second)};
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* groups) {
    constexpr int bytes_of_block = V::block_bytes / group_10::upper_bytes * group_10::bytes;
    const auto first = luma_and_chroma<V>(groups);
    const auto second = luma_and_chroma<V>(groups + bytes_of_block);
    const auto chroma = V::deinterleave2_words(first.second, second.second);
    return to_planes(in_a_row(first.first, second.first), chroma.first, chroma.second);
  }
};

struct join_yuyv_10 : line_kernel<join_yuyv_10, read_words<2 * group_10::pairs>, read_words<group_10::pairs>,
                                  read_words<group_10::pairs>, to<group_10::bytes>> {
  MORVANE_INLINE static void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint8_t* group) {
    for (int pair = 0; pair < group_10::pairs; ++pair) {
      const int v = rounded_at_top<10>(cr[pair]);
      group_10::pack({group + 4 * pair, group + group_10::upper_bytes + pair}, rounded_at_top<10>(luma[2 * pair]),
                     rounded_at_top<10>(cb[pair]), rounded_at_top<10>(luma[2 * pair + 1]), v, v);
    }
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    const auto chroma = V::interleave2_words(load_rounded<V, 10>(cb), load_rounded<V, 10>(cr));
    return in_a_row(group_10::packed<V>(load_rounded<V, 10>(luma), chroma.first),
                    group_10::packed<V>(load_rounded<V, 10>(luma, 1), chroma.second));
  }
};

using lines_groups_kernels = kernel_list<split_pairs<first_of_pair::chroma>, split_pairs<first_of_pair::luma>,
                                         join_pairs<first_of_pair::chroma>, join_pairs<first_of_pair::luma>, split_v210,
                                         join_v210, split_yua_yva, join_yua_yva, split_yuyv_10, join_yuyv_10>;

}  // namespace Processing::Morvane::format_conversion::kernel
