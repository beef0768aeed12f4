// Single statements about the sum of absolute differences, with their numbers, one test each, on every backend.
#include "oracle/difference.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace sad = Processing::Morvane::sum_absolute_differences;

class difference_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, difference_example, all_backends(), backend_name);

TEST_P(difference_example, of_identical_images_is_0) {
  const auto a = random_bytes(1920, 1);
  const auto b = a;
  EXPECT_EQ(sad::difference(a.data(), 64, b.data(), 64, 60, 30), 0U);
}

TEST_P(difference_example, of_black_and_white_is_255_for_every_sample) {
  const std::vector<std::uint8_t> black(64 * 30, 0);
  const std::vector<std::uint8_t> white(64 * 30, 255);
  EXPECT_EQ(sad::difference(black.data(), 60, white.data(), 60, 60, 30), 255U * 60 * 30);
  EXPECT_EQ(sad::difference(white.data(), 64, black.data(), 64, 60, 30), 255U * 60 * 30);
}

TEST_P(difference_example, of_no_samples_is_0) {
  const std::vector<std::uint8_t> a(64, 1);
  const std::vector<std::uint8_t> b(64, 2);
  for (const int size : {0, -1, -3}) {
    EXPECT_EQ(sad::difference(a.data(), 8, b.data(), 9, 4, size), 0U);
    EXPECT_EQ(sad::difference(a.data(), 8, b.data(), 9, size, 4), 0U);
    EXPECT_EQ(sad::difference(a.data(), size, b.data(), size, size, size), 0U);
  }
}

TEST_P(difference_example, of_one_row_ignores_the_strides) {
  const auto a = random_bytes(100, 1);
  const auto b = random_bytes(100, 2);
  EXPECT_EQ(sad::difference(a.data(), 1 << 20, b.data(), -(1 << 20), 100, 1),
            sum_of_differences(a.data(), 0, b.data(), 0, 100, 1));
}

TEST_P(difference_example, never_counts_padding) {
  std::vector<std::uint8_t> a(40 * 3, 0);
  std::vector<std::uint8_t> b(40 * 3, 255);
  for (std::size_t y = 0; y < 3; ++y)
    for (std::size_t x = 0; x < 37; ++x) a[40 * y + x] = b[40 * y + x] = 9;
  EXPECT_EQ(sad::difference(a.data(), 40, b.data(), 40, 37, 3), 0U);
}

// 255 * 70 million is more than four lanes of 32 bits hold.
TEST_P(difference_example, of_a_line_too_long_for_32_bits_is_exact) {
  constexpr std::size_t size = 70'000'001;
  const std::vector<std::uint8_t> black(size, 0);
  const std::vector<std::uint8_t> white(size, 255);
  EXPECT_EQ(sad::difference(black.data(), size, white.data(), size, size, 1), 255U * std::uint64_t{size});
}

}  // namespace
}  // namespace morvane::tests
