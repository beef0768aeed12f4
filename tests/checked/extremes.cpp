// Numbers at the ends of their types: sizes, strides and byte counts beyond all memory are refused, no sum overflows,
// and none of them changes what is done where it does not matter.
#include <array>
#include <climits>

#include "checked/attempt.h"
#include "rules/convert.h"
#include "rules/layout.h"

namespace morvane::tests {
namespace {

// Wide enough for every product of two sizes.
__extension__ using wide = __int128;

constexpr std::int32_t extents[] = {1, 2, 3, 65536, 1 << 30, INT_MAX - 64, INT_MAX - 1, INT_MAX};
constexpr std::int64_t alignments[] = {0, 1, 64, 4096};

wide up_to_multiple(wide value, wide unit) {
  return (value + unit - 1) / unit * unit;
}

// The bytes of all planes, or -1 where there are too many.
wide bytes_needed(const rules::format& f, int width, int height, std::int64_t alignment) {
  wide bytes = 0;
  for (std::size_t i = 0; i < f.planes.size(); ++i) {
    const wide stride = alignment == 0 ? wide{rules::natural_stride(f, i, width)}
                                       : up_to_multiple(rules::row_bytes(f, i, width), alignment);
    bytes += stride * rules::rows_of_plane(f, i, height);
  }
  return bytes > INT64_MAX ? wide{-1} : bytes;
}

template <class Take>
void each_extreme_size(Take take) {
  for (const std::string_view name : rules::format_names())
    for (const std::int32_t width : extents)
      for (const std::int32_t height : extents) {
        const description d{.format = format_named(std::string(name)), .width = width, .height = height};
        take(rules::format_of(name), d);
        if (testing::Test::HasFailure()) return;
      }
}

TEST(checked_extremes, layouts) {
  each_extreme_size([](const rules::format& f, const description& d) {
    for (const std::int64_t alignment : alignments) {
      const morvane_description described = d;
      morvane_layout layout{};
      layout.struct_size = sizeof layout;
      morvane_error e;
      const wide expected = bytes_needed(f, d.width, d.height, alignment);
      const bool fits = morvane_lay_out(&described, alignment, &layout, &e) == MORVANE_OK;
      ASSERT_EQ(fits, expected >= 0) << f.name << " " << d.width << "x" << d.height << ": " << e.message;
      ASSERT_EQ(layout.bytes, fits ? static_cast<std::int64_t>(expected) : 0) << f.name;
      ASSERT_EQ(refusal_of(e), fits ? refusal() : (refusal{MORVANE_SIZE, "size", d.height, 0}));
    }
  });
}

// A plan of them has numbers for everything, and no picture of eight bytes is taken for one.
TEST(checked_extremes, plans_and_runs) {
  each_extreme_size([](const rules::format& f, const description& d) {
    if (d.width < 65536 || !rules::convertible(f.name, f.name)) return;
    const morvane_description described = d;
    morvane_error e;
    morvane_plan* plan = morvane_plan_create(&described, &described, nullptr, &e);
    const bool fits = bytes_needed(f, d.width, d.height, 0) >= 0;
    ASSERT_EQ(plan != nullptr, fits && d.width <= 1 << 28) << e.message;
    EXPECT_GE(morvane_plan_scratch_bytes(plan), 0);
    morvane_plan_destroy(plan);
    std::array<std::uint8_t, 8> read{}, written{};
    morvane_picture source{sizeof source, {}, {}, {}}, destination{sizeof destination, {}, {}, {}};
    for (std::size_t i = 0; i < f.planes.size(); ++i) {
      source.data[i] = read.data();
      destination.data[i] = written.data();
      source.stride[i] = destination.stride[i] = rules::row_bytes(f, i, d.width);
      source.bytes[i] = destination.bytes[i] = 8;
    }
    const std::int32_t code = morvane_convert(&described, &source, &described, &destination, nullptr, &e);
    EXPECT_EQ(code, plan == nullptr ? MORVANE_SIZE : MORVANE_PLANE_TOO_SHORT) << e.message;
    EXPECT_EQ(e.got, plan != nullptr ? 8 : fits ? d.width : d.height);
    EXPECT_EQ(written, (std::array<std::uint8_t, 8>{}));
  });
}

// Three times as much is a little more than 64 bits count.
constexpr std::int64_t once_around = 6148915424244269056;

constexpr std::int64_t strides[] = {
    INT64_MAX,         INT64_MAX - 1, INT64_MAX / 2,        INT64_MAX / 3, INT64_MAX / 4, 4611686018427387904,
    INT64_MAX / 3 - 3, 1LL << 40,     once_around,          INT64_MIN,     INT64_MIN + 1, INT64_MIN / 2,
    INT64_MIN / 3,     INT64_MIN / 4, -4611686018427387904, INT_MIN,       -(1LL << 40),  -once_around};

// What a plane of so many rows, a stride apart, is refused with.
refusal of_stride(const std::string& picture, int plane, std::int64_t stride, int rows, int row_bytes,
                  std::int64_t bytes) {
  const std::string place = "[" + std::to_string(plane) + "]";
  const wide span = (stride < 0 ? -wide{stride} : wide{stride}) * (rows - 1) + row_bytes;
  if (span > INT64_MAX) return {MORVANE_STRIDE, picture + ".stride" + place, stride, row_bytes};
  return {MORVANE_PLANE_TOO_SHORT, picture + ".bytes" + place, bytes, static_cast<std::int64_t>(span)};
}

TEST(checked_extremes, strides) {
  for (const std::int64_t stride : strides) {
    EXPECT_EQ(after([&](attempt& a) { a.source.stride[0] = stride; }), of_stride("source", 0, stride, 4, 12, 48));
    EXPECT_EQ(after([&](attempt& a) { a.destination.stride[0] = stride; }),
              of_stride("destination", 0, stride, 4, 6, 24));
    EXPECT_EQ(after([&](attempt& a) { a.destination.stride[1] = stride; }),
              of_stride("destination", 1, stride, 2, 6, 12));
  }
}

TEST(checked_extremes, bytes_of_planes) {
  for (const std::int64_t bytes : {INT64_MIN, std::int64_t{INT_MIN}, std::int64_t{0}, std::int64_t{11}})
    EXPECT_EQ(after([&](attempt& a) { a.destination.bytes[1] = bytes; }),
              (refusal{MORVANE_PLANE_TOO_SHORT, "destination.bytes[1]", bytes, 12}));
  for (const std::int64_t bytes : {std::int64_t{13}, std::int64_t{INT_MAX}, INT64_MAX})
    EXPECT_EQ(after([&](attempt& a) { a.destination.bytes[1] = bytes; }), refusal());
}

// Nothing follows a single row, so that it has any stride.
TEST(checked_extremes, strides_of_a_single_row) {
  for (const std::int64_t stride : {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, INT64_MIN, INT64_MAX}) {
    const auto one_row = [&](attempt& a) {
      a.from.height = a.to.height = 1;
      a.source.stride[0] = a.destination.stride[0] = a.destination.stride[1] = stride;
    };
    EXPECT_EQ(after(one_row), refusal()) << stride;
    EXPECT_EQ(after([&](attempt& a) {
                one_row(a);
                a.destination.data[1] = a.written + 5;
              }),
              (refusal{MORVANE_OVERLAP, "destination.data[1]", 0, 0}))
        << stride;
    EXPECT_EQ(after([&](attempt& a) {
                one_row(a);
                a.source.bytes[0] = 11;
              }),
              (refusal{MORVANE_PLANE_TOO_SHORT, "source.bytes[0]", 11, 12}));
  }
}

TEST(checked_extremes, numbers_of_enumerations) {
  for (const std::int32_t number : {INT_MIN, INT_MAX}) {
    EXPECT_EQ(after([&](attempt& a) { a.from.format = number; }),
              (refusal{MORVANE_UNKNOWN_FORMAT, "source.format", number, 0}));
    EXPECT_EQ(after([&](attempt& a) { a.from.matrix = number; }),
              (refusal{MORVANE_OPTION, "source.matrix", number, 709}));
    EXPECT_EQ(after([&](attempt& a) { a.from.range = number; }), (refusal{MORVANE_OPTION, "source.range", number, 1}));
    EXPECT_EQ(after([&](attempt& a) { a.how.filter = number; }),
              (refusal{MORVANE_OPTION, "options.filter", number, 0}));
    EXPECT_EQ(after([&](attempt& a) { a.how.siting = number; }),
              (refusal{MORVANE_OPTION, "options.siting", number, 0}));
    EXPECT_EQ(after([&](attempt& a) { a.how.threads = number; }),
              (refusal{MORVANE_OPTION, "options.threads", number, 256}));
    EXPECT_EQ(after([&](attempt& a) { a.how.has_background = number; }), refusal());
  }
  EXPECT_EQ(after([](attempt& a) { a.from.width = INT_MIN; }), (refusal{MORVANE_SIZE, "source.width", INT_MIN, 1}));
  EXPECT_EQ(after([](attempt& a) { a.to.height = INT_MIN; }),
            (refusal{MORVANE_SIZE, "destination.height", INT_MIN, 1}));
}

}  // namespace
}  // namespace morvane::tests
