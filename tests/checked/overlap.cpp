// Planes of the destination that share bytes with another plane, by so much as one byte, and planes that lie between
// each other's rows and share none.
#include <algorithm>
#include <set>

#include "checked/attempt.h"

namespace morvane::tests {
namespace {

// A row of six bytes each: a picture of alpha, three rows high, so many bytes from the beginning of some memory.
struct place {
  int offset;
  int stride;

  std::set<int> bytes() const {
    std::set<int> all;
    for (int row = 0; row < 3; ++row)
      for (int x = 0; x < 6; ++x) all.insert(offset + row * stride + x);
    return all;
  }
};

bool share_bytes(const place& a, const place& b) {
  const std::set<int> of_a = a.bytes(), of_b = b.bytes();
  return std::any_of(of_a.begin(), of_a.end(), [&](int byte) { return of_b.contains(byte); });
}

refusal converted(const place& from, const place& to) {
  static std::vector<std::uint8_t> memory(400);
  const morvane_description d = description{.format = format_named("alpha"), .width = 6, .height = 3};
  std::generate(memory.begin(), memory.end(), [n = 0]() mutable { return static_cast<std::uint8_t>(n++ * 7); });
  const std::vector<std::uint8_t> before = memory;
  const morvane_picture source{sizeof source, {memory.data() + from.offset}, {from.stride}, {100}};
  const morvane_picture destination{sizeof destination, {memory.data() + to.offset}, {to.stride}, {100}};
  morvane_error e;
  if (morvane_convert(&d, &source, &d, &destination, nullptr, &e) != MORVANE_OK) {
    EXPECT_EQ(memory, before) << "bytes are written";
    return refusal_of(e);
  }
  for (int row = 0; row < 3; ++row)
    EXPECT_TRUE(std::equal(before.begin() + from.offset + row * from.stride,
                           before.begin() + from.offset + row * from.stride + 6,
                           memory.begin() + to.offset + row * to.stride));
  return {};
}

TEST(checked_overlap, is_that_of_bytes) {
  int shared = 0, between_rows = 0;
  for (const int from : {6, -6, 9, -9, 16, -16, 31})
    for (const int to : {6, -6, 7, -13, 16, -16, 32, -32})
      for (int offset = 120; offset < 280; ++offset) {
        const place source{200, from}, destination{offset, to};
        const bool shares = share_bytes(source, destination);
        const refusal expected = shares ? refusal{MORVANE_OVERLAP, "destination.data[0]", 0, 0} : refusal();
        ASSERT_EQ(converted(source, destination), expected) << from << " and " << to << ", " << offset - 200;
        const std::set<int> a = source.bytes(), b = destination.bytes();
        shared += shares ? 1 : 0;
        between_rows += !shares && *a.begin() < *b.rbegin() && *b.begin() < *a.rbegin() ? 1 : 0;
      }
  EXPECT_GT(shared, 500);
  EXPECT_GT(between_rows, 500);
}

TEST(checked_overlap, of_the_source_and_a_plane) {
  EXPECT_EQ(after([](attempt& a) { a.destination.data[0] = a.read.data() + 47; }),
            (refusal{MORVANE_OVERLAP, "destination.data[0]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.read.data(); }),
            (refusal{MORVANE_OVERLAP, "destination.data[1]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.read.data() - 11; }),
            (refusal{MORVANE_OVERLAP, "destination.data[1]", 0, 0}));
}

TEST(checked_overlap, of_two_planes_of_the_destination) {
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.written + 23; }),
            (refusal{MORVANE_OVERLAP, "destination.data[1]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.written - 11; }),
            (refusal{MORVANE_OVERLAP, "destination.data[1]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.written - 12; }), refusal());
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.written + 24; }), refusal());
}

// The two planes of a source may be one and the same.
TEST(checked_overlap, of_two_planes_of_the_source_is_allowed) {
  std::vector<std::uint8_t> read(32, 130), written(64);
  const description from{.format = format_named("y_u_v_422"), .width = 4, .height = 4};
  const description to{.format = format_named("uyvy"), .width = 4, .height = 4};
  convert(from, {sizeof(morvane_picture), {read.data(), read.data(), read.data()}, {4, 2, 2}, {16, 8, 8}}, to,
          {sizeof(morvane_picture), {written.data()}, {8}, {32}});
  EXPECT_EQ(std::count(written.begin(), written.end(), 130), 32);
}

}  // namespace
}  // namespace morvane::tests
