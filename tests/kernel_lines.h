// What the tests of line kernels share. A line is compared with the expectation of an image of one row, or of a row
// pair, for every length and in all combinations of the kernel's alignment parameters.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <type_traits>
#include <utility>

#include "catalogue/call.h"
#include "oracle.h"
#include "support.h"

namespace morvane::tests {

inline constexpr int widest = 140;
inline constexpr int row_stride = 16 * widest;

struct alignas(64) plane_bytes {
  std::array<std::uint8_t, 2 * row_stride + 64> bytes{};
};
using memory = std::array<plane_bytes, catalogue::max_planes>;

inline memory random_memory(unsigned seed) {
  std::mt19937 random(seed);
  memory result;
  for (plane_bytes& plane : result)
    for (std::uint8_t& b : plane.bytes) b = static_cast<std::uint8_t>(random());
  return result;
}

struct kernel_case {
  const char* name;  // of the row of the catalogue that does the same
  const char* destination;
  int argument = 0;
  bool words = false;                   // 16-bit planes, whose addresses are even
  catalogue::thunk expected = nullptr;  // where no row of the catalogue does the same
};

inline catalogue::call call_on(const memory& source, memory& destination, bool src_align, bool dst_align,
                               const kernel_case& k) {
  catalogue::call c;
  for (std::size_t i = 0; i < catalogue::max_planes; ++i) {
    c.source.data[i] = source[i].bytes.data() + (src_align ? 16 : k.words ? 6 : 5);
    c.destination.data[i] = destination[i].bytes.data() + (dst_align ? 16 : k.words ? 10 : 7);
    c.source.stride[i] = c.destination.stride[i] = row_stride;
  }
  c.yres = 1;
  c.argument = k.argument;
  return c;
}

// `kernel` is called as kernel.template operator()<src_align, dst_align>(c), where c.xres is the count of the line; one
// that answers whether the line is opaque is held to it.
template <bool src_align, bool dst_align, class Kernel>
void expect_lines(Kernel kernel, const kernel_case& k, bool opaque_source) {
  using answer_type = decltype(kernel.template operator()<src_align, dst_align>(catalogue::call()));
  constexpr bool answers = std::is_same_v<answer_type, bool>;
  const catalogue::thunk expected = k.expected != nullptr ? k.expected : expectation(k.name, k.destination);
  ASSERT_NE(expected, nullptr) << k.name;
  memory source = random_memory(1);
  if (opaque_source) source[0].bytes.fill(255);
  const memory before = random_memory(2);
  for (int count = -1; count <= widest; ++count) {
    memory got = before;
    memory wanted = before;
    bool answer = true;
    bool expected_answer = true;
    catalogue::call c = call_on(source, got, src_align, dst_align, k);
    c.xres = count;
    if constexpr (answers)
      answer = kernel.template operator()<src_align, dst_align>(c);
    else
      kernel.template operator()<src_align, dst_align>(c);
    catalogue::call e = call_on(source, wanted, src_align, dst_align, k);
    e.xres = count;
    e.opaque = &expected_answer;
    expected(e);
    for (std::size_t i = 0; i < got.size(); ++i)
      ASSERT_EQ(got[i].bytes, wanted[i].bytes) << k.name << ", " << count << " pixels, plane " << i << ", src_align "
                                               << src_align << ", dst_align " << dst_align;
    ASSERT_TRUE(answer == expected_answer || !answers) << k.name << ", " << count << " pixels";
  }
}

template <class Kernel>
void expect_all_alignments(const kernel_case& k, Kernel kernel) {
  for (const bool opaque_source : {false, true}) {
    expect_lines<false, false>(kernel, k, opaque_source);
    expect_lines<false, true>(kernel, k, opaque_source);
    expect_lines<true, false>(kernel, k, opaque_source);
    expect_lines<true, true>(kernel, k, opaque_source);
  }
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
