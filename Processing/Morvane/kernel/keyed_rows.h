// Rows of 4:2:2 with a key to other such rows, without lines: readers and writers for regrouped_rows.h. They meet in
// registers as words of luma, of Cb and Cr in turn, and of alpha, with the bytes that lines give.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "lines_groups.h"
#include "list.h"
#include "regrouped_rows.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Working samples of a pair.
struct keyed_pair {
  uint16_t y[2], cb, cr, a[2];
};

template <class V>
struct keyed_pixels {
  typename V::two_blocks luma, chroma, alpha;
};

template <class V>
MORVANE_INLINE typename V::two_blocks load_two(const uint8_t* p) {
  return {V::load(p), V::load(blocks_on<V>(p, 1))};
}
template <class V>
MORVANE_INLINE typename V::two_blocks moved_to_top(const typename V::two_blocks& tens) {
  return {V::template shift_left_words<6>(tens.first), V::template shift_left_words<6>(tens.second)};
}

// Alpha of eight or ten bits, whose bits are repeated below it, and back.
template <class V>
MORVANE_INLINE auto with_repeated(const typename V::block tens_at_top) {
  return V::or_blocks(tens_at_top, V::template shift_right_words<10>(tens_at_top));
}
template <int bits>
MORVANE_INLINE uint16_t scaled_alpha(const uint16_t a) {
  return static_cast<uint16_t>(rounded_product(static_cast<int16_t>(a >> 1), (1 << bits) - 1));
}
template <class V, int bits>
MORVANE_INLINE auto scaled_alpha(const typename V::block a) {
  return V::rounded_product(V::template shift_right_words<1>(a), V::repeat((1 << bits) - 1));
}
template <class V, int bits>
MORVANE_INLINE typename V::two_blocks scaled_alpha(const typename V::two_blocks& a) {
  return {scaled_alpha<V, bits>(a.first), scaled_alpha<V, bits>(a.second)};
}
template <class V, int bits>
MORVANE_INLINE typename V::two_blocks both_rounded_at_top(const typename V::two_blocks& v) {
  return {rounded_at_top<V, bits>(v.first), rounded_at_top<V, bits>(v.second)};
}

// Readers.

struct read_yua_yva {
  using planes = plane_list<from<8>>;

  MORVANE_INLINE static keyed_pair pixels(const uint8_t* src) {
    keyed_pair p;
    split_yua_yva::rule(src, p.y, &p.cb, &p.cr, p.a);
    return p;
  }
  template <class V>
  MORVANE_INLINE static keyed_pixels<V> samples(const uint8_t* src) {
    const auto first = split_yua_yva::load_pixels<V>(src);
    const auto second = split_yua_yva::load_pixels<V>(blocks_on<V>(src, 2));
    return {{first.luma, second.luma}, {first.chroma, second.chroma}, {first.alpha, second.alpha}};
  }
};

struct read_keyed_words {
  using planes = plane_list<from<4>, from<4>, from<4>>;

  MORVANE_INLINE static keyed_pair pixels(const uint8_t* luma, const uint8_t* chroma, const uint8_t* alpha) {
    return {{stored_word(luma), stored_word(luma + 2)},
            stored_word(chroma),
            stored_word(chroma + 2),
            {stored_word(alpha), stored_word(alpha + 2)}};
  }
  template <class V>
  MORVANE_INLINE static keyed_pixels<V> samples(const uint8_t* luma, const uint8_t* chroma, const uint8_t* alpha) {
    return {load_two<V>(luma), load_two<V>(chroma), load_two<V>(alpha)};
  }
};

struct read_keyed_planes_of_tens {
  using planes = plane_list<from<4>, from<2>, from<2>, from<4>>;

  MORVANE_INLINE static uint16_t word(const uint8_t* p) { return static_cast<uint16_t>(stored_word(p) << 6); }
  MORVANE_INLINE static keyed_pair pixels(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr,
                                          const uint8_t* alpha) {
    return {{word(luma), word(luma + 2)},
            word(cb),
            word(cr),
            {split_yua_yva::with_repeated(word(alpha)), split_yua_yva::with_repeated(word(alpha + 2))}};
  }
  template <class V>
  MORVANE_INLINE static keyed_pixels<V> samples(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr,
                                                const uint8_t* alpha) {
    const auto a = moved_to_top<V>(load_two<V>(alpha));
    return {moved_to_top<V>(load_two<V>(luma)),
            moved_to_top<V>(V::interleave2_words(V::load(cb), V::load(cr))),
            {with_repeated<V>(a.first), with_repeated<V>(a.second)}};
  }
};

struct read_keyed_pairs {
  using planes = plane_list<from<4>, from<2>>;

  MORVANE_INLINE static keyed_pair pixels(const uint8_t* pair, const uint8_t* alpha) {
    keyed_pair p;
    split_pairs<first_of_pair::chroma>::rule(pair, p.y, &p.cb, &p.cr);
    for (int i = 0; i < 2; ++i) p.a[i] = static_cast<uint16_t>(alpha[i] * 257);
    return p;
  }
  template <class V>
  MORVANE_INLINE static keyed_pixels<V> samples(const uint8_t* pairs, const uint8_t* alpha) {
    using split = split_pairs<first_of_pair::chroma>;
    const auto both = load_two<V>(pairs);
    const auto a = V::load(alpha);
    return {{split::template upper<V>(both.first), split::template upper<V>(both.second)},
            {split::template lower<V>(both.first), split::template lower<V>(both.second)},
            V::interleave2(a, a)};
  }
};

// Writers.

struct write_yua_yva {
  using planes = plane_list<to<8>>;

  MORVANE_INLINE static void put(const keyed_pair& p, uint8_t* dst) { join_yua_yva::rule(p.y, &p.cb, &p.cr, p.a, dst); }
  template <class V>
  MORVANE_INLINE static auto stored(const keyed_pixels<V>& p) {
    const auto luma = both_rounded_at_top<V, 10>(p.luma), chroma = both_rounded_at_top<V, 10>(p.chroma);
    return in_a_row(join_yua_yva::joined<V>(luma.first, chroma.first, p.alpha.first),
                    join_yua_yva::joined<V>(luma.second, chroma.second, p.alpha.second));
  }
};

struct write_keyed_words {
  using planes = plane_list<to<4>, to<4>, to<4>>;

  MORVANE_INLINE static void put(const keyed_pair& p, uint8_t* luma, uint8_t* chroma, uint8_t* alpha) {
    for (int i = 0; i < 2; ++i) {
      put_word(luma + 2 * i, p.y[i]);
      put_word(chroma + 2 * i, i == 0 ? p.cb : p.cr);
      put_word(alpha + 2 * i, p.a[i]);
    }
  }
  template <class V>
  MORVANE_INLINE static auto stored(const keyed_pixels<V>& p) {
    return to_planes(p.luma, p.chroma, p.alpha);
  }
};

struct write_keyed_planes_of_tens {
  using planes = plane_list<to<4>, to<2>, to<2>, to<4>>;

  MORVANE_INLINE static uint16_t ten(const uint16_t v) { return static_cast<uint16_t>(ten_of(v)); }
  MORVANE_INLINE static void put(const keyed_pair& p, uint8_t* luma, uint8_t* cb, uint8_t* cr, uint8_t* alpha) {
    put_word(cb, ten(p.cb));
    put_word(cr, ten(p.cr));
    for (int i = 0; i < 2; ++i) {
      put_word(luma + 2 * i, ten(p.y[i]));
      put_word(alpha + 2 * i, scaled_alpha<10>(p.a[i]));
    }
  }
  template <class V>
  MORVANE_INLINE static auto stored(const keyed_pixels<V>& p) {
    const auto luma = in_lower_ten_bits<V>(both_rounded_at_top<V, 10>(p.luma));
    const auto pairs = in_lower_ten_bits<V>(both_rounded_at_top<V, 10>(p.chroma));
    const auto chroma = V::deinterleave2_words(pairs.first, pairs.second);
    return to_planes(luma, chroma.first, chroma.second, scaled_alpha<V, 10>(p.alpha));
  }
};

struct write_keyed_pairs {
  using planes = plane_list<to<4>, to<2>>;

  MORVANE_INLINE static void put(const keyed_pair& p, uint8_t* pair, uint8_t* alpha) {
    join_pairs<first_of_pair::chroma>::rule(p.y, &p.cb, &p.cr, pair);
    for (int i = 0; i < 2; ++i) alpha[i] = static_cast<uint8_t>(scaled_alpha<8>(p.a[i]));
  }
  template <class V>
  MORVANE_INLINE static auto stored(const keyed_pixels<V>& p) {
    using join = join_pairs<first_of_pair::chroma>;
    const auto luma = both_rounded_at_top<V, 8>(p.luma), chroma = both_rounded_at_top<V, 8>(p.chroma);
    const auto alpha = scaled_alpha<V, 8>(p.alpha);
    return to_planes(in_a_row(join::template upper_bytes<V>(luma.first, chroma.first),
                              join::template upper_bytes<V>(luma.second, chroma.second)),
                     V::pack_words(alpha.first, alpha.second));
  }
};

using keyed_kernels =
    kernel_list<regroup<read_yua_yva, write_keyed_words>, regroup<read_yua_yva, write_keyed_planes_of_tens>,
                regroup<read_yua_yva, write_keyed_pairs>, regroup<read_keyed_words, write_yua_yva>,
                regroup<read_keyed_words, write_keyed_planes_of_tens>, regroup<read_keyed_words, write_keyed_pairs>,
                regroup<read_keyed_planes_of_tens, write_yua_yva>,
                regroup<read_keyed_planes_of_tens, write_keyed_words>,
                regroup<read_keyed_planes_of_tens, write_keyed_pairs>, regroup<read_keyed_pairs, write_yua_yva>,
                regroup<read_keyed_pairs, write_keyed_planes_of_tens>>;

}  // namespace Processing::Morvane::format_conversion::kernel
