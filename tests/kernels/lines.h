// What the tests of line kernels share. A line is compared with the expectation of an image of one row, or of a row
// pair, for every length and in all combinations of the kernel's alignment parameters.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>

#include "catalogue/call.h"
#include "oracle/oracle.h"
#include "support.h"

namespace morvane::tests {

inline constexpr int widest = 140;
inline constexpr int row_stride = 16 * widest;

struct alignas(64) plane_bytes {
  std::array<std::uint8_t, 2 * row_stride + 64> bytes{};
};
using memory = std::array<plane_bytes, catalogue::max_planes>;

memory random_memory(unsigned seed);

struct kernel_case {
  const char* name;  // of the row of the catalogue that does the same
  const char* destination;
  int argument = 0;
  bool words = false;                   // 16-bit planes, whose addresses are even
  catalogue::thunk expected = nullptr;  // where no row of the catalogue does the same
};

// A kernel of certain alignment parameters. c.xres is the count of the line; the answer is whether the line is opaque,
// from kernels that say so.
struct aligned_kernel {
  std::optional<bool> (*convert)(const catalogue::call& c);
  bool src_align, dst_align;
};

void expect_lines(const kernel_case& k, std::span<const aligned_kernel> kernels);

template <bool src_align, bool dst_align, class Kernel>
std::optional<bool> answer_of(const catalogue::call& c) {
  using answer = decltype(Kernel().template operator()<src_align, dst_align>(c));
  if constexpr (std::is_same_v<answer, bool>) {
    return Kernel().template operator()<src_align, dst_align>(c);
  } else {
    Kernel().template operator()<src_align, dst_align>(c);
    return {};
  }
}

// `kernel` is called as kernel.template operator()<src_align, dst_align>(c).
template <class Kernel>
void expect_all_alignments(const kernel_case& k, Kernel /*kernel*/) {
  constexpr aligned_kernel all[] = {{&answer_of<false, false, Kernel>, false, false},
                                    {&answer_of<false, true, Kernel>, false, true},
                                    {&answer_of<true, false, Kernel>, true, false},
                                    {&answer_of<true, true, Kernel>, true, true}};
  expect_lines(k, all);
}

inline std::uint16_t* words(std::uint8_t* p) {
  return reinterpret_cast<std::uint16_t*>(p);
}

inline const std::uint16_t* words(const std::uint8_t* p) {
  return reinterpret_cast<const std::uint16_t*>(p);
}

// A plane as a kernel takes it, by bytes or by words.
template <class Byte>
struct plane_pointer {
  Byte* bytes;

  operator Byte*() const { return bytes; }
  operator decltype(words(std::declval<Byte*>()))() const { return words(bytes); }
};

// Calls kernel(source..., destination..., xres) with the first planes of a call.
template <int sources, int destinations, class Kernel>
auto on_planes(Kernel kernel, const catalogue::call& c) {
  return [&]<std::size_t... source, std::size_t... destination>(std::index_sequence<source...>,
                                                                std::index_sequence<destination...>) {
    return kernel(plane_pointer<const std::uint8_t>{c.source.data[source]}...,
                  plane_pointer<std::uint8_t>{c.destination.data[destination]}..., c.xres);
  }
  (std::make_index_sequence<sources>(), std::make_index_sequence<destinations>());
}

// A kernel of the given template arguments after the two of alignment, over so many source and destination planes.
#define MORVANE_TEST_KERNEL(sources, destinations, name, ...)                                \
  []<bool s, bool d>(const catalogue::call& c) {                                             \
    return on_planes<sources, destinations>(                                                 \
        [](auto... planes) { return name<s, d __VA_OPT__(, ) __VA_ARGS__>(planes...); }, c); \
  }

}  // namespace morvane::tests
