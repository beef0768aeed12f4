// The line kernels under their own names, in all combinations of their alignment parameters, on every backend. A line
// is compared with the expectation of an image of one row.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "format_conversion_line.h"
#include "format_conversion_line_bgr.h"
#include "format_conversion_line_bgra.h"
#include "format_conversion_line_black.h"
#include "oracle.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;

class kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, kernel, all_backends(), backend_name);

constexpr int widest = 120;
constexpr std::size_t room = 4 * widest + 64;

struct alignas(64) buffer {
  std::array<std::uint8_t, room> bytes{};
};

buffer random_bytes(unsigned seed) {
  std::mt19937 random(seed);
  buffer result;
  for (std::uint8_t& b : result.bytes) b = static_cast<std::uint8_t>(random());
  return result;
}

using line_function = std::function<void(const std::uint8_t*, std::uint8_t*, int)>;

// Converts lines of all lengths and compares them with the expectation of a row of the catalogue.
void expect_row(const line_function& convert, bool src_align, bool dst_align, const char* name,
                const char* destination) {
  const catalogue::thunk expected = expectation(name, destination);
  ASSERT_NE(expected, nullptr) << name;
  const buffer source = random_bytes(1);
  const buffer before = random_bytes(2);
  for (int pixels = -1; pixels <= widest; ++pixels) {
    buffer got = before;
    buffer wanted = before;
    const std::uint8_t* from = source.bytes.data() + (src_align ? 16 : 5);
    const std::size_t to = dst_align ? 16 : 7;
    convert(from, got.bytes.data() + to, pixels);
    catalogue::call c;
    c.source.data[0] = from;
    c.destination.data[0] = wanted.bytes.data() + to;
    c.xres = pixels;
    c.yres = 1;
    expected(c);
    ASSERT_EQ(got.bytes, wanted.bytes) << name << ", " << pixels << " pixels, src_align " << src_align << ", dst_align "
                                       << dst_align;
  }
}

// `convert` is called as convert.template operator()<src_align, dst_align>(source, destination, pixels).
template <class Convert>
void expect_all_alignments(Convert convert, const char* name, const char* destination) {
  const auto with = [&]<bool src_align, bool dst_align>() {
    const line_function one = [&](const std::uint8_t* s, std::uint8_t* d, int pixels) {
      convert.template operator()<src_align, dst_align>(s, d, pixels);
    };
    expect_row(one, src_align, dst_align, name, destination);
  };
  with.template operator()<false, false>();
  with.template operator()<false, true>();
  with.template operator()<true, false>();
  with.template operator()<true, true>();
}

TEST_P(kernel, line_uyvy_yuy2) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::yuy2<s, d>(a...); }, "uyvy::yuy2", "yuy2");
}

TEST_P(kernel, line_v210_uyvy) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::v210::uyvy<s, d>(a...); }, "v210::uyvy", "uyvy");
}

TEST_P(kernel, line_rgba_and_bgra_uyvy_over_black) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgba_and_bgra::uyvy<s, d, true, true, false>(a...); },
                        "bgra::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgba_and_bgra::uyvy<s, d, true, true, true>(a...); },
                        "rgba::uyvy", "uyvy");
}

TEST_P(kernel, line_rgba_and_bgra_uyvy_direct) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgba_and_bgra::uyvy<s, d, false, true, false>(a...); },
                        "bgrx_709::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgba_and_bgra::uyvy<s, d, false, true, true>(a...); },
                        "rgbx_709::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgba_and_bgra::uyvy<s, d, false, false, false>(a...); },
                        "bgrx_601::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgba_and_bgra::uyvy<s, d, false, false, true>(a...); },
                        "rgbx_601::uyvy", "uyvy");
}

TEST_P(kernel, line_bgrx_uyvy_and_line_rgbx_uyvy) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::bgrx::uyvy_709<s, d>(a...); }, "bgrx::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgbx::uyvy_709<s, d>(a...); }, "rgbx::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::bgrx::uyvy_601<s, d>(a...); }, "bgrx_601::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::rgbx::uyvy_601<s, d>(a...); }, "rgbx_601::uyvy", "uyvy");
}

TEST_P(kernel, line_bgr_uyvy) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::bgr::uyvy<s, d, true>(a...); }, "bgr::uyvy", "uyvy");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::bgr::uyvy_709<s, d>(a...); }, "bgr::uyvy", "uyvy");
}

TEST_P(kernel, line_uyvy_bgr) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::bgr<s, d, false>(a...); }, "uyvy::bgr_601", "bgr");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::bgr<s, d, true>(a...); }, "uyvy::bgr_709", "bgr");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::bgr_601<s, d>(a...); }, "uyvy::bgr_601", "bgr");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::bgr_709<s, d>(a...); }, "uyvy::bgr_709", "bgr");
}

TEST_P(kernel, line_uyvy_rgba_and_bgra) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::rgba_and_bgra<s, d, false, false>(a...); },
                        "uyvy::bgra_601", "bgra");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::rgba_and_bgra<s, d, true, false>(a...); },
                        "uyvy::bgra_709", "bgra");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::rgba_and_bgra<s, d, false, true>(a...); },
                        "uyvy::rgba_601", "rgba");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::uyvy::rgba_and_bgra<s, d, true, true>(a...); },
                        "uyvy::rgba_709", "rgba");
}

TEST_P(kernel, line_bgra_bgra_copies) {
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::bgra::bgra<s, d, false>(a...); }, "bgra::bgra", "bgra");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::bgra::bgra<s, d, true>(a...); }, "bgra::bgra", "bgra");
  expect_all_alignments([]<bool s, bool d>(auto... a) { line::bgra::bgra_ex<s, d>(a...); }, "bgra::bgra", "bgra");
}

TEST_P(kernel, line_bgra_bgra_answers_whether_the_line_is_opaque) {
  for (int pixels = 0; pixels <= widest; ++pixels)
    for (int transparent = -1; transparent < pixels; ++transparent) {
      buffer source = random_bytes(1);
      buffer destination;
      for (std::size_t i = 3; i < room; i += 4) source.bytes[i] = 255;
      if (transparent >= 0) source.bytes[static_cast<std::size_t>(4 * transparent + 3)] = 254;
      const bool opaque = transparent < 0;
      ASSERT_EQ((line::bgra::bgra<true, true, true>(source.bytes.data(), destination.bytes.data(), pixels)), opaque);
      ASSERT_EQ((line::bgra::bgra<false, true, true>(source.bytes.data(), destination.bytes.data(), pixels)), opaque);
      ASSERT_EQ((line::bgra::bgra_ex<true, false>(source.bytes.data(), destination.bytes.data(), pixels)), opaque);
      ASSERT_EQ((line::bgra::bgra_ex<false, false>(source.bytes.data(), destination.bytes.data(), pixels)), opaque);
    }
}

TEST_P(kernel, line_black_uyvy) {
  const line_function fill = [](const std::uint8_t*, std::uint8_t* d, int pixels) { line::black::uyvy(d, pixels); };
  expect_row(fill, false, false, "black::uyvy", "uyvy");
  expect_row(fill, false, true, "black::uyvy", "uyvy");
}

TEST_P(kernel, line_black_alpha) {
  for (const int value : {0, 255, 300, -1, 0x1234}) {
    for (int pixels = -1; pixels <= widest; ++pixels) {
      buffer got = random_bytes(3);
      buffer wanted = got;
      line::black::alpha(got.bytes.data() + 1, pixels, value);
      for (int i = 0; i < pixels; ++i) wanted.bytes[static_cast<std::size_t>(1 + i)] = static_cast<std::uint8_t>(value);
      ASSERT_EQ(got.bytes, wanted.bytes);

      std::array<std::uint16_t, widest + 2> words{};
      line::black::alpha(words.data() + 1, pixels, value);
      for (int i = 0; i < widest; ++i)
        ASSERT_EQ(words[static_cast<std::size_t>(1 + i)], i < pixels ? static_cast<std::uint16_t>(value) : 0);
    }
  }
}

TEST(next_line, steps_by_bytes_whatever_the_element) {
  std::array<std::uint16_t, 64> words{};
  std::uint16_t* row = words.data() + 32;
  const std::uint16_t* const_row = row;
  EXPECT_EQ(line::next_line(row, 10), words.data() + 37);
  EXPECT_EQ(line::next_line(const_row, -10), words.data() + 27);
  std::array<std::uint8_t, 64> bytes{};
  EXPECT_EQ(line::next_line(bytes.data() + 32, 10), bytes.data() + 42);
}

}  // namespace
}  // namespace morvane::tests
