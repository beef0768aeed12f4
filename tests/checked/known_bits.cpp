// Pictures of a few pixels, written by hand in each layout that has room for their samples. Each becomes all others.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "checker/checker.h"
#include "morvane.hpp"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
using bytes = std::vector<std::uint8_t>;

struct layout_of_picture {
  const char* format;
  bytes row;
};

struct known_picture {
  const char* samples;
  int width;
  std::vector<layout_of_picture> in;
};

const known_picture pictures[] = {
    {"R 3ab 001, G 155 200, B 0f1 3fe",
     2,
     {{"r210", {0x3a, 0xb5, 0x54, 0xf1, 0x00, 0x18, 0x03, 0xfe}},
      {"R10k", {0xea, 0xd5, 0x53, 0xc4, 0x00, 0x60, 0x0f, 0xf8}},
      {"R10l", {0xc4, 0x53, 0xd5, 0xea, 0xf8, 0x0f, 0x60, 0x00}},
      {"x2rgb10", {0xf1, 0x54, 0xb5, 0xfa, 0xfe, 0x03, 0x18, 0xc0}},
      {"x2bgr10", {0xab, 0x57, 0x15, 0xcf, 0x01, 0x00, 0xe8, 0xff}}}},
    {"Cb 123, Y 2c7, Cr 3e1, A 3", 1, {{"y410", {0x23, 0x1d, 0x1b, 0xfe}}, {"xv30", {0x23, 0x1d, 0x1b, 0xfe}}}},
    {"Cb 123, Y 2c7 0ab, Cr 3e1",
     2,
     {{"y210", {0xc0, 0xb1, 0xc0, 0x48, 0xc0, 0x2a, 0x40, 0xf8}}, {"st2110_422_10", {0x48, 0xec, 0x7f, 0x84, 0xab}}}},
    {"Cb 123, Y abc 789, Cr f0e",
     2,
     {{"y212", {0xc0, 0xab, 0x30, 0x12, 0x90, 0x78, 0xe0, 0xf0}},
      {"st2110_422_12", {0x12, 0x3a, 0xbc, 0xf0, 0xe7, 0x89}}}},
    {"R 123, G 456, B 789, then R abc, G def, B 012, then 0, at last fff",
     8,
     {{"R12L", {0x23, 0x61, 0x45, 0x89, 0xc7, 0xab, 0xef, 0x2d, 0x01, 0, 0, 0, 0, 0,    0,    0,    0,    0,
                0,    0,    0,    0,    0,    0,    0,    0,    0,    0, 0, 0, 0, 0xf0, 0xff, 0xff, 0xff, 0xff}},
      {"rgb48", {0x31, 0x12, 0x64, 0x45, 0x97, 0x78, 0xca, 0xab, 0xfd, 0xde, 0x20, 0x01, 0,    0,    0,    0,
                 0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
                 0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0xff, 0xff, 0xff, 0xff, 0xff, 0xff}}}},
    {"R 1, G 0, B 1/2, A 2^-14", 1, {{"rgbaf16", {0x00, 0x3c, 0x00, 0x00, 0x00, 0x38, 0x00, 0x04}}}},
    {"R 1234, G 5678, B 9abc",
     1,
     {{"rgb48", {0x34, 0x12, 0x78, 0x56, 0xbc, 0x9a}}, {"bgr48", {0xbc, 0x9a, 0x78, 0x56, 0x34, 0x12}}}},
    {"R 1, G 0, B 32768/65535",
     1,
     {{"rgbf32", {0x00, 0x00, 0x80, 0x3f, 0x00, 0x00, 0x00, 0x00, 0x80, 0x00, 0x00, 0x3f}},
      {"rgb48", {0xff, 0xff, 0x00, 0x00, 0x00, 0x80}}}},
    {"Cb 123, Y 2c7, Cr 3e1, A 2", 1, {{"y410", {0x23, 0x1d, 0x1b, 0xbe}}}},
};

bytes first_row(const char* from, int width, const bytes& row, const char* to) {
  const description source_is{.format = format_named(from), .width = width, .height = 1};
  const description result_is{.format = format_named(to), .width = width, .height = 1};
  image source(source_is), result(result_is);
  std::copy(row.begin(), row.end(), source.data());
  convert(source_is, source.picture(), result_is, result.picture());
  return {result.data(), result.data() + lay_out(result_is).planes[0].row_bytes};
}

TEST(known_bits, are_read_and_written) {
  on_every_backend([](backend::kind) {
    for (const known_picture& p : pictures)
      for (const layout_of_picture& from : p.in)
        for (const layout_of_picture& to : p.in)
          EXPECT_EQ(first_row(from.format, p.width, from.row, to.format), to.row)
              << p.samples << ": " << from.format << " to " << to.format;
  });
}

TEST(known_bits, that_are_unused_are_ignored) {
  EXPECT_EQ(first_row("r210", 1, {0xff, 0xff, 0xff, 0xff}, "r210"), (bytes{0x3f, 0xff, 0xff, 0xff}));
  EXPECT_EQ(first_row("R10k", 1, {0x00, 0x00, 0x00, 0x03}, "R10k"), (bytes{0x00, 0x00, 0x00, 0x00}));
  EXPECT_EQ(first_row("x2rgb10", 1, {0x00, 0x00, 0x00, 0x00}, "x2rgb10"), (bytes{0x00, 0x00, 0x00, 0xc0}));
}

}  // namespace
}  // namespace morvane::tests
