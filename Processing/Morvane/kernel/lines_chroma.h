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

struct repeat_samples : line_kernel<repeat_samples, read_line, written_words<2>> {
  MORVANE_INLINE static void rule(const uint16_t* src, uint16_t* dst) { dst[0] = dst[1] = *src; }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::interleave2_words(V::load(src), V::load(src));
  }
};

template <siting at>
struct double_samples : line_kernel<double_samples<at>, read_line, written_words<2>> {
  MORVANE_INLINE static void rule(const uint16_t* src, uint16_t* dst) {
    if constexpr (at == siting::left) {
      dst[0] = src[0];
      dst[1] = average_up(src[0], src[1]);
    } else {
      dst[0] = nearer_to_first(src[0], src[-1]);
      dst[1] = nearer_to_first(src[0], src[1]);
    }
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
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
struct halve_samples : line_kernel<halve_samples<at>, read_words<2>, written_line> {
  MORVANE_INLINE static void rule(const uint16_t* src, uint16_t* dst) {
    *dst = at == siting::left ? smoothed(src[-1], src[0], src[1]) : average_up(src[0], src[1]);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto own = load_pairs<V>(src);
    if constexpr (at == siting::left)
      return smoothed<V>(load_pairs<V>(src - 2).first, own.first, own.second);
    else
      return V::average_up(own.first, own.second);
  }
};

// Between two lines: three parts of the first and one of the second, or equal parts.
struct between_lines : line_kernel<between_lines, read_line, read_line, written_line> {
  MORVANE_INLINE static void rule(const uint16_t* near, const uint16_t* far, uint16_t* dst) {
    *dst = nearer_to_first(*near, *far);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* near, const uint8_t* far) {
    return nearer_to_first<V>(V::load(near), V::load(far));
  }
};

struct average_of_lines : line_kernel<average_of_lines, read_line, read_line, written_line> {
  MORVANE_INLINE static void rule(const uint16_t* upper, const uint16_t* lower, uint16_t* dst) {
    *dst = average_up(*upper, *lower);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* upper, const uint8_t* lower) {
    return V::average_up(V::load(upper), V::load(lower));
  }
};

using lines_chroma_kernels =
    kernel_list<repeat_samples, double_samples<siting::left>, double_samples<siting::center>, first_of_pairs,
                halve_samples<siting::left>, halve_samples<siting::center>, between_lines, average_of_lines>;

}  // namespace Processing::Morvane::format_conversion::kernel
