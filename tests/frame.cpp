// The row driver, with images that no memory would hold: line functions that count stand in for those that convert.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>

#include "format_conversion_frame.h"
#include "kernel/depth.h"
#include "kernel/full_chroma.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;
namespace line = Processing::Morvane::format_conversion::line;

TEST(next_line, steps_by_bytes_whatever_the_element) {
  std::array<std::uint16_t, 64> words{};
  std::uint16_t* row = words.data() + 32;
  const std::uint16_t* const_row = row;
  EXPECT_EQ(line::next_line(row, 10), words.data() + 37);
  EXPECT_EQ(line::next_line(const_row, -10), words.data() + 27);
  std::array<std::uint8_t, 64> bytes{};
  EXPECT_EQ(line::next_line(bytes.data() + 32, 10), bytes.data() + 42);
}

// An address far from all others, where nothing is read or written.
std::uint8_t* plane_nowhere(std::size_t number) {
  return reinterpret_cast<std::uint8_t*>((number + 1) << 42);
}

// The lines that a frame of one plane is made of.
struct counted_lines {
  std::int64_t calls = 0;
  std::int64_t pixels = 0;
  bool rows_follow = true;

  // Counts a line of the plane with this stride.
  auto counting(int stride) {
    return [this, stride](const std::uint8_t* row, int no_pixels) {
      rows_follow = rows_follow && row == plane_nowhere(0) + calls * stride;
      ++calls;
      pixels += no_pixels;
    };
  }
};

void expect_rows(int xres, int yres) {
  counted_lines lines;
  fc::frame_if(true, lines.counting(xres), xres, yres, fc::plane{plane_nowhere(0), xres});
  EXPECT_EQ(lines.calls, yres) << xres << "x" << yres;
  EXPECT_EQ(lines.pixels, std::int64_t{xres} * yres) << xres << "x" << yres;
  EXPECT_TRUE(lines.rows_follow) << xres << "x" << yres;
}

void expect_one_line(int xres, int yres) {
  counted_lines lines;
  fc::frame_if(true, lines.counting(xres), xres, yres, fc::plane{plane_nowhere(0), xres});
  EXPECT_EQ(lines.calls, 1) << xres << "x" << yres;
  EXPECT_EQ(lines.pixels, std::int64_t{xres} * yres) << xres << "x" << yres;
}

TEST(frame, is_one_line_of_as_many_pixels_as_an_int_counts) {
  expect_one_line(INT_MAX, 1);
  expect_one_line(1, INT_MAX);
  expect_one_line(1 << 30, 1);
  expect_one_line((1 << 30) - 1, 2);
  expect_one_line(46340, 46340);
}

TEST(frame, goes_row_by_row_where_an_int_cannot_count_its_pixels) {
  expect_rows(1 << 30, 2);
  expect_rows((1 << 30) + 5, 4);
  expect_rows(INT_MAX, 3);
  expect_rows(46341, 46341);
  expect_rows(65536, 65536);
  expect_rows(65537, 65536);
}

TEST(frame, steps_by_strides_of_more_than_all_an_int_counts) {
  for (const int stride : {INT_MAX, INT_MIN, 70000, -70000}) {
    counted_lines lines;
    fc::frame_if(false, lines.counting(stride), 3, 5, fc::plane{plane_nowhere(0), stride});
    EXPECT_EQ(lines.calls, 5);
    EXPECT_EQ(lines.pixels, 15);
    EXPECT_TRUE(lines.rows_follow) << stride;
  }
}

// The stride that looks tight where bytes are counted in 32 bits.
int in_32_bits(std::int64_t bytes) {
  return static_cast<int>(static_cast<std::uint32_t>(bytes));
}

template <class Kernel>
bool is_tight(int xres, int source_stride, int destination_stride) {
  return fc::all_tight<Kernel>(typename Kernel::planes(), xres, fc::plane{plane_nowhere(0), source_stride},
                               fc::plane{plane_nowhere(1), destination_stride});
}

TEST(frame, of_rows_longer_than_an_int_counts_is_not_tight) {
  using eight_to_two_bytes = fc::kernel::fourth_word;
  for (const int xres : {(1 << 28) - 1, 1 << 28, (1 << 29) - 3, 1 << 29, (1 << 29) + 8}) {
    const std::int64_t row = std::int64_t{8} * xres;
    EXPECT_EQ(is_tight<eight_to_two_bytes>(xres, in_32_bits(row), 2 * xres), row <= INT_MAX) << xres;
  }
}

// A unit of two pixels counts strides twice.
TEST(frame, of_strides_that_count_for_more_than_an_int_can_be_tight) {
  using four_to_two_bytes =
      fc::kernel::pixels_444_to_uyvy<fc::kernel::sample_order::ycbcr, fc::kernel::background::none>;
  static_assert(four_to_two_bytes::pixels == 2);
  for (const int xres : {(1 << 28) + 8, (1 << 29) - 1}) {
    const std::int64_t row = std::int64_t{4} * xres;
    EXPECT_TRUE(is_tight<four_to_two_bytes>(xres, static_cast<int>(row), 2 * xres)) << xres;
    EXPECT_FALSE(is_tight<four_to_two_bytes>(xres, in_32_bits(row + (std::int64_t{1} << 31)), 2 * xres)) << xres;
  }
}

}  // namespace
}  // namespace morvane::tests
