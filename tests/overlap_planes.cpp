// Conversions to several planes, of which one or all share bytes with the source. The result is that of a plain loop
// over pairs, whatever the distances.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string_view>
#include <vector>

#include "checker/checker.h"
#include "oracle/oracle.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;

class plane_over_source : public testing::TestWithParam<catalogue::conversion> {};
class planes_over_each_other : public testing::TestWithParam<catalogue::conversion> {};

std::vector<catalogue::conversion> rows_with(std::initializer_list<catalogue::overlap> wanted) {
  std::vector<catalogue::conversion> rows;
  for (const catalogue::conversion& row : catalogue::conversions)
    if (std::find(wanted.begin(), wanted.end(), row.overlapping) != wanted.end() &&
        catalogue::find_format(row.destination)->plane_count() > 1)
      rows.push_back(row);
  return rows;
}

struct shape {
  int xres, yres;
  int padding;  // of the rows of all planes
  int sign;     // of all strides
};

constexpr std::ptrdiff_t room = 2048;  // between planes that are apart

// Where the destination planes lie, counted from the source.
using distances = std::array<std::ptrdiff_t, catalogue::max_planes>;

catalogue::call call_in(std::vector<std::uint8_t>& memory, const catalogue::conversion& row, const shape& s,
                        const distances& at) {
  const catalogue::format* source = catalogue::find_format(row.source);
  const catalogue::format* destination = catalogue::find_format(row.destination);
  catalogue::call c;
  c.xres = s.xres;
  c.yres = s.yres;
  c.source.stride[0] = s.sign * (tight_stride(source->planes[0], s.xres) + s.padding);
  c.source.data[0] = memory.data() + room;
  for (std::size_t i = 0; i < destination->plane_count(); ++i) {
    c.destination.stride[i] = s.sign * (tight_stride(destination->planes[i], s.xres) + s.padding);
    c.destination.data[i] = memory.data() + room + at[i];
  }
  return c;
}

constexpr shape shapes[] = {{1, 1, 0, 1},  {2, 1, 0, 1},  {15, 1, 0, 1}, {33, 1, 0, 1},  {64, 1, 0, 1},  {131, 1, 0, 1},
                            {32, 3, 0, 1}, {33, 4, 5, 1}, {17, 4, 0, 1}, {32, 3, 0, -1}, {64, 2, 16, -1}};

void expect_plain_loop(const catalogue::conversion& row, const distances& at) {
  static const std::vector<std::uint8_t> before = [] {
    std::mt19937 random(1);
    std::vector<std::uint8_t> bytes(6 * room);
    for (std::uint8_t& b : bytes) b = static_cast<std::uint8_t>(random());
    return bytes;
  }();
  const catalogue::thunk expected = expectation(row.name, row.destination);
  for (const shape& s : shapes) {
    std::vector<std::uint8_t> converted = before;
    std::vector<std::uint8_t> wanted = before;
    row.convert(call_in(converted, row, s, at));
    expected(call_in(wanted, row, s, at));
    ASSERT_EQ(converted, wanted) << row.name << " on " << backend::name(backend::chosen()) << ", " << s.xres << "x"
                                 << s.yres << ", padding " << s.padding << ", stride sign " << s.sign
                                 << ", destinations " << at[0] << " " << at[1] << " " << at[2] << " bytes after source";
  }
}

std::vector<std::ptrdiff_t> near_distances() {
  std::vector<std::ptrdiff_t> result;
  for (std::ptrdiff_t d = -530; d <= 530; d += (d > -70 && d < 70) ? 1 : 19) result.push_back(d);
  return result;
}

TEST_P(plane_over_source, is_written_in_order) {
  on_every_backend([](backend::kind) {
    const std::size_t planes = catalogue::find_format(GetParam().destination)->plane_count();
    for (std::size_t near = 0; near < planes; ++near)
      for (const std::ptrdiff_t distance : near_distances()) {
        distances at{room, 2 * room, 3 * room};
        at[near] = distance;
        expect_plain_loop(GetParam(), at);
      }
  });
}

// Where two planes share bytes, what the later store leaves counts.
TEST_P(planes_over_each_other, are_written_in_order) {
  on_every_backend([](backend::kind) {
    for (const std::ptrdiff_t distance : near_distances())
      for (const std::ptrdiff_t spacing : {0, 1, -2, 30, -67, 130}) {
        expect_plain_loop(GetParam(), {distance, distance + spacing, distance + 2 * spacing});
        expect_plain_loop(GetParam(), {room, room + distance, room + distance + spacing});
      }
  });
}

INSTANTIATE_TEST_SUITE_P(catalogue, plane_over_source,
                         testing::ValuesIn(rows_with({catalogue::overlap::with_source, catalogue::overlap::of_all})),
                         row_name);
INSTANTIATE_TEST_SUITE_P(catalogue, planes_over_each_other, testing::ValuesIn(rows_with({catalogue::overlap::of_all})),
                         row_name);

}  // namespace
}  // namespace morvane::tests
