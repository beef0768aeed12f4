// Conversions whose source and destination share bytes. Where their result is defined, it is that of a plain loop over
// pixels or pairs, whatever the distance between the two.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "oracle/oracle.h"
#include "support.h"

namespace morvane::tests {
namespace {

class overlapping_row : public testing::TestWithParam<catalogue::conversion> {};

std::vector<catalogue::conversion> rows_with_defined_overlap() {
  std::vector<catalogue::conversion> rows;
  for (const catalogue::conversion& row : catalogue::conversions)
    if (row.overlapping != catalogue::overlap::undefined && catalogue::find_format(row.destination)->plane_count() == 1)
      rows.push_back(row);
  return rows;
}

struct shape {
  int xres, yres;
  int padding;  // of the rows of both sides
  int sign;     // of the strides of both sides
};

constexpr int room = 2048;

catalogue::call call_in(std::vector<std::uint8_t>& memory, const catalogue::conversion& row, const shape& s,
                        int distance) {
  const auto pixel_bytes = [](std::string_view format) {
    const catalogue::plane& p = catalogue::find_format(format)->planes[0];
    return p.group_bytes / p.group_pixels;
  };
  catalogue::call c;
  c.xres = s.xres;
  c.yres = s.yres;
  c.source.stride[0] = s.sign * (pixel_bytes(row.source) * s.xres + s.padding);
  c.destination.stride[0] = s.sign * (pixel_bytes(row.destination) * s.xres + s.padding);
  c.source.data[0] = memory.data() + room;
  c.destination.data[0] = memory.data() + room + distance;
  return c;
}

TEST_P(overlapping_row, is_converted_one_after_the_other) {
  const catalogue::conversion& row = GetParam();
  const catalogue::thunk expected = expectation(row.name, row.destination);
  std::mt19937 random(1);
  std::vector<std::uint8_t> before(3 * room);
  for (std::uint8_t& b : before) b = static_cast<std::uint8_t>(random());

  constexpr shape shapes[] = {{1, 1, 0, 1},  {2, 1, 0, 1},   {15, 1, 0, 1},  {16, 1, 0, 1}, {17, 1, 0, 1},
                              {33, 1, 0, 1}, {64, 1, 0, 1},  {97, 1, 0, 1},  {32, 3, 0, 1}, {33, 3, 5, 1},
                              {17, 4, 0, 1}, {32, 3, 0, -1}, {48, 2, 16, -1}};
  for (const Processing::Morvane::backend::kind k : Processing::Morvane::backend::available()) {
    Processing::Morvane::backend::choose(k);
    for (const shape& s : shapes)
      for (int distance = -450; distance <= 450; distance += (distance > -70 && distance < 70) ? 1 : 19) {
        std::vector<std::uint8_t> converted = before;
        std::vector<std::uint8_t> wanted = before;
        row.convert(call_in(converted, row, s, distance));
        expected(call_in(wanted, row, s, distance));
        ASSERT_EQ(converted, wanted) << row.name << " on " << Processing::Morvane::backend::name(k) << ", " << s.xres
                                     << "x" << s.yres << ", padding " << s.padding << ", stride sign " << s.sign
                                     << ", destination " << distance << " bytes after source";
      }
  }
}

INSTANTIATE_TEST_SUITE_P(catalogue, overlapping_row, testing::ValuesIn(rows_with_defined_overlap()), row_name);

}  // namespace
}  // namespace morvane::tests
