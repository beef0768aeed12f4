// The sum of absolute differences of two images: all small sizes, places and strides against a plain sum, on every
// backend.
#include "oracle/difference.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "checker/memory.h"
#include "options.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace sad = Processing::Morvane::sum_absolute_differences;

class difference : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, difference, all_backends(), backend_name);

constexpr int widest = 200;

bytes random_extremes(std::size_t size, unsigned seed) {
  bytes result = random_bytes(size, seed);
  for (std::uint8_t& b : result) b = static_cast<std::uint8_t>(b % 2 * 255);
  return result;
}

TEST_P(difference, of_all_small_sizes_and_strides) {
  constexpr int rows = 5;
  constexpr int paddings[] = {0, 1, 16, 37};
  for (const bool extremes : {false, true}) {
    const auto a = extremes ? random_extremes(rows * (widest + 40), 1) : random_bytes(rows * (widest + 40), 1);
    const auto b = extremes ? random_extremes(rows * (widest + 40), 2) : random_bytes(rows * (widest + 40), 2);
    for (int xres = 0; xres <= widest; xres += thin_widths() ? 7 : 1)
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
                        sum_of_differences(a_first, a_stride, b_first, b_stride, xres, yres))
                  << xres << "x" << yres << ", strides " << a_stride << " and " << b_stride;
            }
  }
}

TEST_P(difference, of_all_offsets) {
  const auto a = random_bytes(widest + 32, 1);
  const auto b = random_bytes(widest + 32, 2);
  for (int xres = 1; xres <= widest; xres += thin_widths() ? 13 : 1)
    for (int first = 0; first < 32; ++first)
      for (const int second : {0, 1, first, 31 - first})
        ASSERT_EQ(sad::difference(a.data() + first, xres, b.data() + second, xres, xres, 1),
                  sum_of_differences(a.data() + first, xres, b.data() + second, xres, xres, 1))
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

}  // namespace
}  // namespace morvane::tests
