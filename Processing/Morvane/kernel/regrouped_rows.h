// Rows of 4:2:2 in groups of six pixels to rows of other groups, without lines. A kernel is a reader and a writer,
// which meet in registers as six words of luma and six of chroma, with the bytes that lines give.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "lines_groups.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Working samples.
struct six_pixels {
  uint16_t y[6], cb[3], cr[3];
};

// In an order of the backend's own, chroma as Cb and Cr in turn.
template <class V>
using sixes = typename V::two_blocks;

// The upper ten bits.
MORVANE_INLINE constexpr uint16_t ten_bits_of(const uint16_t v) {
  return rounded_at_top<10>(v) & 0xffc0;
}
template <class V, int bits>
MORVANE_INLINE auto rounded_at_top(const typename V::block v) {
  return V::add_words_to_limit(v, V::repeat(1 << (15 - bits)));
}

// Readers.

struct read_v210 {
  using planes = plane_list<from<16>>;

  MORVANE_INLINE static six_pixels pixels(const uint8_t* groups) {
    six_pixels p;
    split_v210::rule(groups, p.y, p.cb, p.cr);
    return p;
  }
  template <class V>
  MORVANE_INLINE static sixes<V> samples(const uint8_t* groups) {
    return V::sixes_of_v210(V::load(groups));
  }
};

// Chroma between two rows.
struct read_two_rows_of_v210 {
  using planes = plane_list<from<16>, from<16>>;

  MORVANE_INLINE static six_pixels pixels(const uint8_t* near, const uint8_t* far) {
    six_pixels p = read_v210::pixels(near);
    const six_pixels other = read_v210::pixels(far);
    for (int i = 0; i < 3; ++i) {
      p.cb[i] = ten_bits_of(average_up(p.cb[i], other.cb[i]));
      p.cr[i] = ten_bits_of(average_up(p.cr[i], other.cr[i]));
    }
    return p;
  }
  template <class V>
  MORVANE_INLINE static sixes<V> samples(const uint8_t* near, const uint8_t* far) {
    const auto own = read_v210::samples<V>(near);
    const auto between = V::average_up(own.second, read_v210::samples<V>(far).second);
    return {own.first, V::and_blocks(rounded_at_top<V, 10>(between), V::repeat(0xffc0))};
  }
};

// Words with samples in their upper bits.
struct read_words_of_six {
  using planes = plane_list<from<12>, from<12>>;
  uint16_t kept;

  MORVANE_INLINE uint16_t word(const uint8_t* p) const { return stored_word(p) & kept; }
  MORVANE_INLINE six_pixels pixels(const uint8_t* luma, const uint8_t* chroma) const {
    six_pixels p;
    for (int i = 0; i < 6; ++i) p.y[i] = word(luma + 2 * i);
    for (int i = 0; i < 3; ++i) {
      p.cb[i] = word(chroma + 4 * i);
      p.cr[i] = word(chroma + 4 * i + 2);
    }
    return p;
  }
  template <class V>
  MORVANE_INLINE auto words(const uint8_t* p) const {
    return V::and_blocks(V::load_sixes(p), V::repeat(kept));
  }
  template <class V>
  MORVANE_INLINE sixes<V> samples(const uint8_t* luma, const uint8_t* chroma) const {
    return {words<V>(luma), words<V>(chroma)};
  }
};

// And with chroma between a near row and a far one.
struct read_words_between_rows : read_words_of_six {
  using planes = plane_list<from<12>, from<12>, from<12>>;

  MORVANE_INLINE six_pixels pixels(const uint8_t* luma, const uint8_t* near, const uint8_t* far) const {
    six_pixels p = read_words_of_six::pixels(luma, near);
    const six_pixels other = read_words_of_six::pixels(luma, far);
    for (int i = 0; i < 3; ++i) {
      p.cb[i] = nearer_to_first(p.cb[i], other.cb[i]);
      p.cr[i] = nearer_to_first(p.cr[i], other.cr[i]);
    }
    return p;
  }
  template <class V>
  MORVANE_INLINE sixes<V> samples(const uint8_t* luma, const uint8_t* near, const uint8_t* far) const {
    return {words<V>(luma), nearer_to_first<V>(words<V>(near), words<V>(far))};
  }
};

// Planes of words with samples in their lower ten bits.
struct read_planes_of_tens {
  using planes = plane_list<from<12>, from<6>, from<6>>;

  MORVANE_INLINE static uint16_t word(const uint8_t* p) { return static_cast<uint16_t>(stored_word(p) << 6); }
  MORVANE_INLINE static six_pixels pixels(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    six_pixels p;
    for (int i = 0; i < 6; ++i) p.y[i] = word(luma + 2 * i);
    for (int i = 0; i < 3; ++i) {
      p.cb[i] = word(cb + 2 * i);
      p.cr[i] = word(cr + 2 * i);
    }
    return p;
  }
  template <class V>
  MORVANE_INLINE static sixes<V> samples(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) {
    return {V::template shift_left_words<6>(V::load_sixes(luma)),
            V::template shift_left_words<6>(V::load_sixes(cb, cr))};
  }
};

template <first_of_pair begins>
struct read_pairs {
  using planes = plane_list<from<12>>;
  static constexpr int y = begins == first_of_pair::luma ? 0 : 1;

  MORVANE_INLINE static six_pixels pixels(const uint8_t* pairs) {
    six_pixels p;
    for (int i = 0; i < 3; ++i) split_pairs<begins>::rule(pairs + 4 * i, p.y + 2 * i, p.cb + i, p.cr + i);
    return p;
  }
  template <class V>
  MORVANE_INLINE static sixes<V> samples(const uint8_t* pairs) {
    const auto both = V::load_sixes(pairs);
    const auto lower = V::template shift_left_words<8>(both), upper = V::and_blocks(both, V::repeat(0xff00));
    if constexpr (y == 0)
      return {lower, upper};
    else
      return {upper, lower};
  }
};

// Big-endian groups of five bytes: Cb Y Cr Y.
struct read_fives {
  using planes = plane_list<from<15>>;

  MORVANE_INLINE static uint16_t sample(const uint8_t* p, const int i) {
    const uint8_t* at = p + i / 4 * 5 + i % 4;
    return static_cast<uint16_t>((at[0] << 8 | at[1]) << 2 * (i % 4)) & 0xffc0;
  }
  MORVANE_INLINE static six_pixels pixels(const uint8_t* groups) {
    six_pixels p;
    for (int i = 0; i < 6; ++i) p.y[i] = sample(groups, 2 * i + 1);
    for (int i = 0; i < 3; ++i) {
      p.cb[i] = sample(groups, 4 * i);
      p.cr[i] = sample(groups, 4 * i + 2);
    }
    return p;
  }
  template <class V>
  MORVANE_INLINE static sixes<V> samples(const uint8_t* groups) {
    return V::sixes_of_fives(groups);
  }
};

// Writers. Those of words and of groups of five bytes take samples of ten bits.

template <class V>
MORVANE_INLINE sixes<V> in_lower_ten_bits(const sixes<V>& s) {
  return {V::template shift_right_words<6>(s.first), V::template shift_right_words<6>(s.second)};
}

struct write_v210 {
  using planes = plane_list<to<16>>;

  MORVANE_INLINE static void put(const six_pixels& p, uint8_t* groups) { join_v210::rule(p.y, p.cb, p.cr, groups); }
  template <class V>
  MORVANE_INLINE static auto stored(const sixes<V>& s) {
    return V::v210_of_sixes(in_lower_ten_bits<V>({rounded_at_top<V, 10>(s.first), rounded_at_top<V, 10>(s.second)}));
  }
};

struct write_words {
  using planes = plane_list<to<12>, to<12>>;

  MORVANE_INLINE static void put(const six_pixels& p, uint8_t* luma, uint8_t* chroma) {
    for (int i = 0; i < 6; ++i) put_word(luma + 2 * i, p.y[i]);
    for (int i = 0; i < 3; ++i) {
      put_word(chroma + 4 * i, p.cb[i]);
      put_word(chroma + 4 * i + 2, p.cr[i]);
    }
  }
  template <class V>
  MORVANE_INLINE static auto stored(const sixes<V>& s) {
    return to_planes(V::sixes(s.first), V::sixes(s.second));
  }
};

struct write_luma {
  using planes = plane_list<to<12>>;

  MORVANE_INLINE static void put(const six_pixels& p, uint8_t* luma) {
    for (int i = 0; i < 6; ++i) put_word(luma + 2 * i, p.y[i]);
  }
  template <class V>
  MORVANE_INLINE static auto stored(const sixes<V>& s) {
    return V::sixes(s.first);
  }
};

struct write_planes_of_tens {
  using planes = plane_list<to<12>, to<6>, to<6>>;

  MORVANE_INLINE static void put(const six_pixels& p, uint8_t* luma, uint8_t* cb, uint8_t* cr) {
    for (int i = 0; i < 6; ++i) put_word(luma + 2 * i, static_cast<uint16_t>(p.y[i] >> 6));
    for (int i = 0; i < 3; ++i) {
      put_word(cb + 2 * i, static_cast<uint16_t>(p.cb[i] >> 6));
      put_word(cr + 2 * i, static_cast<uint16_t>(p.cr[i] >> 6));
    }
  }
  template <class V>
  MORVANE_INLINE static auto stored(const sixes<V>& s) {
    const auto tens = in_lower_ten_bits<V>(s);
    const auto chroma = V::deinterleave_sixes(tens.second);
    return to_planes(V::sixes(tens.first), chroma.first, chroma.second);
  }
};

template <first_of_pair begins>
struct write_pairs {
  using planes = plane_list<to<12>>;

  MORVANE_INLINE static void put(const six_pixels& p, uint8_t* pairs) {
    for (int i = 0; i < 3; ++i) join_pairs<begins>::rule(p.y + 2 * i, p.cb + i, p.cr + i, pairs + 4 * i);
  }
  template <class V>
  MORVANE_INLINE static auto stored(const sixes<V>& s) {
    return V::sixes(
        join_pairs<begins>::template upper_bytes<V>(rounded_at_top<V, 8>(s.first), rounded_at_top<V, 8>(s.second)));
  }
};

struct write_fives {
  using planes = plane_list<to<15>>;

  MORVANE_INLINE static void put_pair(uint8_t* p, const uint16_t cb, const uint16_t y0, const uint16_t cr,
                                      const uint16_t y1) {
    p[0] = static_cast<uint8_t>(cb >> 8);
    p[1] = static_cast<uint8_t>((cb & 0xff) | y0 >> 10);
    p[2] = static_cast<uint8_t>(y0 >> 2 | cr >> 12);
    p[3] = static_cast<uint8_t>(cr >> 4 | y1 >> 14);
    p[4] = static_cast<uint8_t>(y1 >> 6);
  }
  MORVANE_INLINE static void put(const six_pixels& p, uint8_t* groups) {
    for (int i = 0; i < 3; ++i) put_pair(groups + 5 * i, p.cb[i], p.y[2 * i], p.cr[i], p.y[2 * i + 1]);
  }
  template <class V>
  MORVANE_INLINE static auto stored(const sixes<V>& s) {
    return V::fives_of_sixes(in_lower_ten_bits<V>(s));
  }
};

template <class Reader, class Writer, class Sources = typename Reader::planes,
          class Destinations = typename Writer::planes>
struct regroup;

template <class Reader, class Writer, class... From, class... To>
struct regroup<Reader, Writer, plane_list<From...>, plane_list<To...>>
    : line_kernel<regroup<Reader, Writer>, From..., To...> {
  Reader from;
  bool streams;

  MORVANE_INLINE void rule(const typename From::pointer... src, const typename To::pointer... dst) const {
    Writer::put(from.pixels(src...), dst...);
  }
  template <class V>
  MORVANE_INLINE auto convert(const typename From::pointer... src) const {
    return Writer::template stored<V>(from.template samples<V>(src...));
  }
};

template <class... Writer>
using of_v210 = kernel_list<regroup<read_v210, Writer>...>;
template <class... Reader>
using to_v210 = kernel_list<regroup<Reader, write_v210>...>;

using regroup_kernels =
    joined_lists<of_v210<write_words, write_luma, write_planes_of_tens, write_pairs<first_of_pair::chroma>,
                         write_pairs<first_of_pair::luma>, write_fives>,
                 kernel_list<regroup<read_two_rows_of_v210, write_words>>,
                 to_v210<read_words_of_six, read_words_between_rows, read_planes_of_tens,
                         read_pairs<first_of_pair::chroma>, read_pairs<first_of_pair::luma>, read_fives>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
