// The sum of absolute differences of two images: all small sizes, places and strides against a plain sum, on every
// backend.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

#include "Processing.Morvane.h"
#include "checker.h"
#include "sum_absolute_differences_inc.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace sad = Processing::Morvane::sum_absolute_differences;

class difference : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, difference, all_backends(), backend_name);

std::uint64_t plain_sum(const std::uint8_t* a, int a_stride, const std::uint8_t* b, int b_stride, int xres, int yres) {
  std::uint64_t sum = 0;
  for (int y = 0; y < yres; ++y)
    for (int x = 0; x < xres; ++x)
      sum += static_cast<std::uint64_t>(
          std::abs(a[std::ptrdiff_t{y} * a_stride + x] - b[std::ptrdiff_t{y} * b_stride + x]));
  return sum;
}

std::vector<std::uint8_t> random_bytes(std::size_t size, unsigned seed, bool extremes) {
  std::mt19937 random(seed);
  std::vector<std::uint8_t> result(size);
  for (std::uint8_t& b : result) b = static_cast<std::uint8_t>(extremes ? random() % 2 * 255 : random());
  return result;
}

constexpr int widest = 200;

TEST_P(difference, of_all_small_sizes_and_strides) {
  constexpr int rows = 5;
  constexpr int paddings[] = {0, 1, 16, 37};
  for (const bool extremes : {false, true}) {
    const auto a = random_bytes(rows * (widest + 40), 1, extremes);
    const auto b = random_bytes(rows * (widest + 40), 2, extremes);
    for (int xres = 0; xres <= widest; xres += thin() ? 7 : 1)
      for (int yres = -1; yres <= rows; ++yres)
        for (const int a_padding : paddings)
          for (const int b_padding : paddings)
            for (const int signs : {0, 1, 2, 3}) {
              const int last = yres < 1 ? 0 : yres - 1;
              const int a_size = xres + a_padding;
              const int b_size = xres + b_padding;
              const bool a_up = signs % 2 != 0;
              const bool b_up = signs / 2 != 0;
              const std::uint8_t* a_first = a.data() + (a_up ? a_size * last : 0);
              const std::uint8_t* b_first = b.data() + (b_up ? b_size * last : 0);
              const int a_stride = a_up ? -a_size : a_size;
              const int b_stride = b_up ? -b_size : b_size;
              ASSERT_EQ(sad::difference(a_first, a_stride, b_first, b_stride, xres, yres),
                        plain_sum(a_first, a_stride, b_first, b_stride, xres, yres))
                  << xres << "x" << yres << ", strides " << a_stride << " and " << b_stride;
            }
  }
}

TEST_P(difference, of_all_offsets) {
  const auto a = random_bytes(widest + 32, 1, false);
  const auto b = random_bytes(widest + 32, 2, false);
  for (int xres = 1; xres <= widest; xres += thin() ? 13 : 1)
    for (int first = 0; first < 32; ++first)
      for (const int second : {0, 1, first, 31 - first})
        ASSERT_EQ(sad::difference(a.data() + first, xres, b.data() + second, xres, xres, 1),
                  plain_sum(a.data() + first, xres, b.data() + second, xres, xres, 1))
            << xres << " bytes at " << first << " and " << second;
}

// A read outside an image ends the test program.
TEST_P(difference, reads_nothing_outside_the_images) {
  fenced_memory left(widest), right(widest);
  for (std::uint8_t& b : left.bytes()) b = 3;
  for (std::uint8_t& b : right.bytes()) b = 10;
  for (int xres = 0; xres <= widest; ++xres) {
    const auto width = static_cast<std::size_t>(xres);
    const std::uint8_t* begins[] = {left.bytes().data(), right.bytes().data()};
    const std::uint8_t* ends[] = {left.bytes().last(width).data(), right.bytes().last(width).data()};
    ASSERT_EQ(sad::difference(begins[0], xres, begins[1], xres, xres, 1), 7U * width);
    ASSERT_EQ(sad::difference(ends[0], xres, ends[1], xres, xres, 1), 7U * width);
    ASSERT_EQ(sad::difference(begins[0], xres, ends[1], xres, xres, 1), 7U * width);
  }
}

TEST_P(difference, of_the_line_kernel_in_all_alignments) {
  alignas(16) std::uint8_t a[widest + 16];
  alignas(16) std::uint8_t b[widest + 16];
  const auto first = random_bytes(sizeof a, 1, false);
  const auto second = random_bytes(sizeof b, 2, false);
  std::copy(first.begin(), first.end(), a);
  std::copy(second.begin(), second.end(), b);
  for (int pixels = 0; pixels <= widest; ++pixels) {
    EXPECT_EQ((sad::line::sum_absolute_differences_line<true, true>(a, b, pixels)), plain_sum(a, 0, b, 0, pixels, 1));
    EXPECT_EQ((sad::line::sum_absolute_differences_line<true, false>(a, b + 3, pixels)),
              plain_sum(a, 0, b + 3, 0, pixels, 1));
    EXPECT_EQ((sad::line::sum_absolute_differences_line<false, true>(a + 5, b, pixels)),
              plain_sum(a + 5, 0, b, 0, pixels, 1));
    EXPECT_EQ((sad::line::sum_absolute_differences_line<false, false>(a + 7, b + 9, pixels)),
              plain_sum(a + 7, 0, b + 9, 0, pixels, 1));
  }
}

TEST_P(difference, of_identical_images_is_0) {
  const auto a = random_bytes(1920, 1, false);
  const auto b = a;
  EXPECT_EQ(sad::difference(a.data(), 64, b.data(), 64, 60, 30), 0U);
}

TEST_P(difference, of_black_and_white_is_255_for_every_sample) {
  const std::vector<std::uint8_t> black(64 * 30, 0);
  const std::vector<std::uint8_t> white(64 * 30, 255);
  EXPECT_EQ(sad::difference(black.data(), 60, white.data(), 60, 60, 30), 255U * 60 * 30);
  EXPECT_EQ(sad::difference(white.data(), 64, black.data(), 64, 60, 30), 255U * 60 * 30);
}

TEST_P(difference, of_no_samples_is_0) {
  const std::vector<std::uint8_t> a(64, 1);
  const std::vector<std::uint8_t> b(64, 2);
  for (const int size : {0, -1, -3}) {
    EXPECT_EQ(sad::difference(a.data(), 8, b.data(), 9, 4, size), 0U);
    EXPECT_EQ(sad::difference(a.data(), 8, b.data(), 9, size, 4), 0U);
    EXPECT_EQ(sad::difference(a.data(), size, b.data(), size, size, size), 0U);
  }
}

TEST_P(difference, of_one_row_ignores_the_strides) {
  const auto a = random_bytes(100, 1, false);
  const auto b = random_bytes(100, 2, false);
  EXPECT_EQ(sad::difference(a.data(), 1 << 20, b.data(), -(1 << 20), 100, 1),
            plain_sum(a.data(), 0, b.data(), 0, 100, 1));
}

TEST_P(difference, never_counts_padding) {
  std::vector<std::uint8_t> a(40 * 3, 0);
  std::vector<std::uint8_t> b(40 * 3, 255);
  for (std::size_t y = 0; y < 3; ++y)
    for (std::size_t x = 0; x < 37; ++x) a[40 * y + x] = b[40 * y + x] = 9;
  EXPECT_EQ(sad::difference(a.data(), 40, b.data(), 40, 37, 3), 0U);
}

// 255 * 70 million is more than four lanes of 32 bits hold.
TEST_P(difference, of_a_line_too_long_for_32_bits_is_exact) {
  constexpr std::size_t size = 70'000'001;
  const std::vector<std::uint8_t> black(size, 0);
  const std::vector<std::uint8_t> white(size, 255);
  EXPECT_EQ(sad::difference(black.data(), size, white.data(), size, size, 1), 255U * std::uint64_t{size});
}

}  // namespace
}  // namespace morvane::tests
