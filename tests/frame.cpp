// The row driver.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "format_conversion_frame.h"

namespace morvane::tests {
namespace {

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

}  // namespace
}  // namespace morvane::tests
