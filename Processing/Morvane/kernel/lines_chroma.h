// Chroma from one sampling to another, a line at a time. Lines that are filtered along their length have a margin of
// one sample, which repeats the first and the last one. The counts are those of the line with fewer samples.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "list.h"

namespace Processing::Morvane::format_conversion::kernel {

// Where the chroma of a pair lies: at its first pixel, or between the two.
enum class siting : bool { left, center };

struct repeat_samples : each_sample<read_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict src, uint16_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) {
      dst[2 * i] = src[i];
      dst[2 * i + 1] = src[i];
    }
  }
};

template <siting at>
struct double_samples : each_sample<read_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict src, uint16_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) {
      if constexpr (at == siting::left) {
        dst[2 * i] = src[i];
        dst[2 * i + 1] = average_up(src[i], src[i + 1]);
      } else {
        dst[2 * i] = nearer_to_first(src[i], src[i - 1]);
        dst[2 * i + 1] = nearer_to_first(src[i], src[i + 1]);
      }
    }
  }
};

struct first_of_pairs : each_sample<read_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict src, uint16_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) dst[i] = src[2 * i];
  }
};

template <siting at>
struct halve_samples : each_sample<read_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict src, uint16_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) {
      if constexpr (at == siting::left)
        dst[i] = smoothed(src[2 * i - 1], src[2 * i], src[2 * i + 1]);
      else
        dst[i] = average_up(src[2 * i], src[2 * i + 1]);
    }
  }
};

// Between two lines: three parts of the first and one of the second, or equal parts.
struct between_lines : each_sample<read_line, read_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict near, const uint16_t* __restrict far,
                                  uint16_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) dst[i] = nearer_to_first(near[i], far[i]);
  }
};

struct average_of_lines : each_sample<read_line, read_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict upper, const uint16_t* __restrict lower,
                                  uint16_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) dst[i] = average_up(upper[i], lower[i]);
  }
};

using lines_chroma_kernels =
    kernel_list<repeat_samples, double_samples<siting::left>, double_samples<siting::center>, first_of_pairs,
                halve_samples<siting::left>, halve_samples<siting::center>, between_lines, average_of_lines>;

}  // namespace Processing::Morvane::format_conversion::kernel
