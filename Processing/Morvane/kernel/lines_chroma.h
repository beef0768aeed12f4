// Chroma from one sampling to another, a line at a time. Lines that are filtered along their length have a margin of
// one sample, which repeats the first and the last one. The counts are those of the line with fewer samples.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Where the chroma of a pair lies: at its first pixel, or between the two.
enum class siting : bool { left, center };

// Kernels of lines of Cb and of Cr alike: `Own` knows what becomes of one of them.
template <class Own, class Read, class Written>
struct both_lines : line_kernel<Own, Read, Read, Written, Written> {
  MORVANE_INLINE static void rule(const uint16_t* cb, const uint16_t* cr, uint16_t* to_cb, uint16_t* to_cr) {
    Own::rule_of_line(cb, to_cb);
    Own::rule_of_line(cr, to_cr);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* cb, const uint8_t* cr) {
    return to_planes(Own::template of_line<V>(cb), Own::template of_line<V>(cr));
  }
  // Where there are no vectors, one line after the other.
  template <class V>
  [[gnu::noinline]] static void loop(const uint16_t* __restrict line, uint16_t* __restrict written, const int count) {
    for (size_t i = 0; i < at_least_zero(count); ++i) Own::rule_of_line(Read::at(line, i), Written::at(written, i));
  }
  template <class V>
  MORVANE_INLINE void line(const uint16_t* cb, const uint16_t* cr, uint16_t* to_cb, uint16_t* to_cr,
                           const int count) const {
    if constexpr (V::lanes > 0) {
      walk<V>(Own(), at_least_zero(count), cb, cr, to_cb, to_cr);
    } else {
      loop<V>(cb, to_cb, count);
      loop<V>(cr, to_cr, count);
    }
  }
};

struct repeat_samples : both_lines<repeat_samples, read_line, written_words<2>> {
  MORVANE_INLINE static void rule_of_line(const uint16_t* src, uint16_t* dst) { dst[0] = dst[1] = *src; }
  template <class V>
  MORVANE_INLINE static auto of_line(const uint8_t* src) {
    return V::interleave2_words(V::load(src), V::load(src));
  }
};

template <siting at>
struct double_samples : both_lines<double_samples<at>, read_line, written_words<2>> {
  MORVANE_INLINE static void rule_of_line(const uint16_t* src, uint16_t* dst) {
    if constexpr (at == siting::left) {
      dst[0] = src[0];
      dst[1] = average_up(src[0], src[1]);
    } else {
      dst[0] = nearer_to_first(src[0], src[-1]);
      dst[1] = nearer_to_first(src[0], src[1]);
    }
  }
  template <class V>
  MORVANE_INLINE static auto of_line(const uint8_t* src) {
    const auto own = V::load(src);
    const auto next = V::load(src + 2);
    if constexpr (at == siting::left)
      return V::interleave2_words(own, V::average_up(own, next));
    else
      return V::interleave2_words(nearer_to_first<V>(own, V::load(src - 2)), nearer_to_first<V>(own, next));
  }
};

// Words 0, 2, 4... and 1, 3, 5... of a line.
template <class V>
MORVANE_INLINE auto load_pairs(const uint8_t* src) {
  return V::deinterleave2_words(V::load(src), V::load(blocks_on<V>(src, 1)));
}

struct first_of_pairs : line_kernel<first_of_pairs, read_words<2>, written_line> {
  MORVANE_INLINE static void rule(const uint16_t* src, uint16_t* dst) { *dst = src[0]; }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return load_pairs<V>(src).first;
  }
};

template <siting at>
struct halve_samples : both_lines<halve_samples<at>, read_words<2>, written_line> {
  MORVANE_INLINE static void rule_of_line(const uint16_t* src, uint16_t* dst) {
    *dst = at == siting::left ? smoothed(src[-1], src[0], src[1]) : average_up(src[0], src[1]);
  }
  template <class V>
  MORVANE_INLINE static auto of_line(const uint8_t* src) {
    const auto own = load_pairs<V>(src);
    if constexpr (at == siting::left)
      return smoothed<V>(load_pairs<V>(src - 2).first, own.first, own.second);
    else
      return V::average_up(own.first, own.second);
  }
};

// Between two lines: three parts of the first and one of the second, or equal parts.
template <class Own>
struct lines_into_one : line_kernel<Own, read_line, read_line, read_line, read_line, written_line, written_line> {
  MORVANE_INLINE static void rule(const uint16_t* cb, const uint16_t* cr, const uint16_t* other_cb,
                                  const uint16_t* other_cr, uint16_t* to_cb, uint16_t* to_cr) {
    *to_cb = Own::sample(*cb, *other_cb);
    *to_cr = Own::sample(*cr, *other_cr);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* cb, const uint8_t* cr, const uint8_t* other_cb,
                                     const uint8_t* other_cr) {
    return to_planes(Own::template samples<V>(V::load(cb), V::load(other_cb)),
                     Own::template samples<V>(V::load(cr), V::load(other_cr)));
  }
};

struct between_lines : lines_into_one<between_lines> {
  MORVANE_INLINE static uint16_t sample(const uint16_t near, const uint16_t far) { return nearer_to_first(near, far); }
  template <class V>
  MORVANE_INLINE static auto samples(const typename V::block near, const typename V::block far) {
    return nearer_to_first<V>(near, far);
  }
};

struct average_of_lines : lines_into_one<average_of_lines> {
  MORVANE_INLINE static uint16_t sample(const uint16_t upper, const uint16_t lower) { return average_up(upper, lower); }
  template <class V>
  MORVANE_INLINE static auto samples(const typename V::block upper, const typename V::block lower) {
    return V::average_up(upper, lower);
  }
};

using lines_chroma_kernels =
    kernel_list<repeat_samples, double_samples<siting::left>, double_samples<siting::center>, first_of_pairs,
                halve_samples<siting::left>, halve_samples<siting::center>, between_lines, average_of_lines>;

}  // namespace Processing::Morvane::format_conversion::kernel
