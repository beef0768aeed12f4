// What the checked interface refuses: the code, the argument, what was got and needed, and that nothing is written
// then.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "morvane.hpp"

namespace morvane::tests {
namespace {

struct refusal {
  int code;
  std::string argument;
  std::int64_t got;
  std::int64_t needed;

  bool operator==(const refusal&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const refusal& r) {
    return out << "code " << r.code << " at " << r.argument << ": got " << r.got << ", needed " << r.needed;
  }
};

refusal refusal_of(const morvane_error& e) {
  return {e.code, e.argument, e.got, e.needed};
}

// A conversion that is right until something of it is changed.
struct attempt {
  morvane_description from = description{.format = format_named("uyvy"), .width = 6, .height = 4};
  morvane_description to = description{.format = format_named("y_uv_420"), .width = 6, .height = 4};
  morvane_options how = options{};
  std::vector<std::uint8_t> read = std::vector<std::uint8_t>(48, 77);
  std::vector<std::uint8_t> written = std::vector<std::uint8_t>(64, 3);
  morvane_picture source{sizeof(morvane_picture), {read.data()}, {12}, {48}};
  morvane_picture destination{sizeof(morvane_picture), {written.data(), written.data() + 40}, {6, 6}, {24, 12}};

  refusal result() {
    morvane_error e;
    morvane_convert(&from, &source, &to, &destination, &how, &e);
    if (e.code != MORVANE_OK) {
      EXPECT_EQ(written, std::vector<std::uint8_t>(64, 3)) << "bytes are written";
      EXPECT_TRUE(std::string(e.message).starts_with(std::string(e.argument) + " ")) << e.message;
    }
    return refusal_of(e);
  }
};

refusal after(const std::function<void(attempt&)>& change) {
  attempt a;
  change(a);
  return a.result();
}

TEST(checked_errors, a_right_call_is_done) {
  EXPECT_EQ(after([](attempt&) {}), (refusal{MORVANE_OK, "", 0, 0}));
}

TEST(checked_errors, descriptions) {
  constexpr std::int64_t size = sizeof(morvane_description);
  EXPECT_EQ(after([](attempt& a) { a.from.struct_size = 4; }),
            (refusal{MORVANE_STRUCT_SIZE, "source.struct_size", 4, size}));
  EXPECT_EQ(after([](attempt& a) { a.from.format = 0; }), (refusal{MORVANE_UNKNOWN_FORMAT, "source.format", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.to.format = 99999; }),
            (refusal{MORVANE_UNKNOWN_FORMAT, "destination.format", 99999, 0}));
  EXPECT_EQ(after([](attempt& a) { a.from.width = 0; }), (refusal{MORVANE_SIZE, "source.width", 0, 1}));
  EXPECT_EQ(after([](attempt& a) { a.to.height = -5; }), (refusal{MORVANE_SIZE, "destination.height", -5, 1}));
  EXPECT_EQ(after([](attempt& a) { a.from.matrix = 240; }), (refusal{MORVANE_OPTION, "source.matrix", 240, 709}));
  EXPECT_EQ(after([](attempt& a) { a.to.range = 3; }), (refusal{MORVANE_OPTION, "destination.range", 3, 1}));
  EXPECT_EQ(after([](attempt& a) { a.to.width = 7; }), (refusal{MORVANE_NO_WAY, "destination", 7, 6}));
  EXPECT_EQ(after([](attempt& a) { a.to.format = format_named("alpha"); }),
            (refusal{MORVANE_NO_WAY, "destination.format", format_named("alpha"), format_named("uyvy")}));
}

TEST(checked_errors, options) {
  EXPECT_EQ(after([](attempt& a) { a.how.struct_size = 0; }),
            (refusal{MORVANE_STRUCT_SIZE, "options.struct_size", 0, sizeof(morvane_options)}));
  EXPECT_EQ(after([](attempt& a) { a.how.filter = 2; }), (refusal{MORVANE_OPTION, "options.filter", 2, 0}));
  EXPECT_EQ(after([](attempt& a) { a.how.siting = -1; }), (refusal{MORVANE_OPTION, "options.siting", -1, 0}));
}

TEST(checked_errors, planes) {
  EXPECT_EQ(after([](attempt& a) { a.source.struct_size = 8; }),
            (refusal{MORVANE_STRUCT_SIZE, "source", 8, sizeof(morvane_picture)}));
  EXPECT_EQ(after([](attempt& a) { a.source.data[0] = nullptr; }), (refusal{MORVANE_NULL, "source.data[0]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = nullptr; }),
            (refusal{MORVANE_NULL, "destination.data[1]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.source.stride[0] = 11; }), (refusal{MORVANE_STRIDE, "source.stride[0]", 11, 12}));
  EXPECT_EQ(after([](attempt& a) { a.source.stride[0] = -11; }),
            (refusal{MORVANE_STRIDE, "source.stride[0]", -11, 12}));
  EXPECT_EQ(after([](attempt& a) { a.destination.stride[1] = 0; }),
            (refusal{MORVANE_STRIDE, "destination.stride[1]", 0, 6}));
  EXPECT_EQ(after([](attempt& a) { a.source.bytes[0] = 47; }),
            (refusal{MORVANE_PLANE_TOO_SHORT, "source.bytes[0]", 47, 48}));
  EXPECT_EQ(after([](attempt& a) { a.destination.bytes[1] = -1; }),
            (refusal{MORVANE_PLANE_TOO_SHORT, "destination.bytes[1]", -1, 12}));
}

TEST(checked_errors, strides_beyond_all_memory) {
  for (const std::int64_t stride : {INT64_MAX, INT64_MIN, INT64_MAX / 2, INT64_MIN / 3})
    EXPECT_EQ(after([&](attempt& a) { a.source.stride[0] = stride; }),
              (refusal{MORVANE_STRIDE, "source.stride[0]", stride, 12}));
  EXPECT_EQ(after([](attempt& a) { a.source.stride[0] = 1LL << 40; }),
            (refusal{MORVANE_PLANE_TOO_SHORT, "source.bytes[0]", 48, 3 * (1LL << 40) + 12}));
}

TEST(checked_errors, overlap) {
  EXPECT_EQ(after([](attempt& a) { a.destination.data[0] = a.read.data() + 47; }),
            (refusal{MORVANE_OVERLAP, "destination.data[0]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.written.data() + 23; }),
            (refusal{MORVANE_OVERLAP, "destination.data[1]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = a.written.data() + 24; }).code, MORVANE_OK);
}

TEST(checked_errors, nulls) {
  attempt a;
  morvane_error e;
  EXPECT_EQ(morvane_convert(nullptr, &a.source, &a.to, &a.destination, nullptr, &e), MORVANE_NULL);
  EXPECT_STREQ(e.message, "source is null");
  EXPECT_EQ(morvane_convert(&a.from, &a.source, nullptr, &a.destination, nullptr, &e), MORVANE_NULL);
  EXPECT_EQ(morvane_convert(&a.from, nullptr, &a.to, &a.destination, nullptr, &e), MORVANE_NULL);
  EXPECT_EQ(morvane_convert(&a.from, &a.source, &a.to, nullptr, nullptr, nullptr), MORVANE_NULL);
  EXPECT_EQ(morvane_plan_run(nullptr, &a.source, &a.destination, nullptr, 0, &e), MORVANE_NULL);
  EXPECT_EQ(morvane_lay_out(&a.from, 0, nullptr, &e), MORVANE_NULL);
  EXPECT_EQ(morvane_format_named(nullptr), 0);
  EXPECT_EQ(morvane_format_name(0), nullptr);
  EXPECT_EQ(morvane_plan_step(nullptr, 0), nullptr);
  morvane_plan_destroy(nullptr);
}

TEST(checked_errors, bands_and_scratch_memory) {
  attempt a;
  morvane_error e;
  morvane_plan* plan = morvane_plan_create(&a.from, &a.to, nullptr, &e);
  ASSERT_NE(plan, nullptr);
  const std::int64_t bytes = morvane_plan_scratch_bytes(plan);
  std::vector<std::uint8_t> scratch(static_cast<std::size_t>(bytes));
  const auto run = [&](std::int32_t first, std::int32_t rows) {
    morvane_plan_run_rows(plan, &a.source, &a.destination, first, rows, scratch.data(), bytes, &e);
    return refusal_of(e);
  };
  EXPECT_EQ(run(1, 2), (refusal{MORVANE_ROWS, "first", 1, 2}));
  EXPECT_EQ(run(-2, 2), (refusal{MORVANE_ROWS, "first", -2, 2}));
  EXPECT_EQ(run(4, 2), (refusal{MORVANE_ROWS, "first", 4, 2}));
  EXPECT_EQ(run(2, 0), (refusal{MORVANE_ROWS, "rows", 0, 2}));
  EXPECT_EQ(run(0, 3), (refusal{MORVANE_ROWS, "rows", 3, 2}));
  EXPECT_EQ(run(2, INT_MAX), (refusal{MORVANE_ROWS, "rows", INT_MAX, 2}));
  morvane_plan_run(plan, &a.source, &a.destination, scratch.data(), bytes - 1, &e);
  EXPECT_EQ(refusal_of(e), (refusal{MORVANE_SCRATCH, "scratch_bytes", bytes - 1, bytes}));
  morvane_plan_run(plan, &a.source, &a.destination, nullptr, bytes, &e);
  EXPECT_EQ(refusal_of(e), (refusal{MORVANE_NULL, "scratch", 0, bytes}));
  EXPECT_EQ(a.written, std::vector<std::uint8_t>(64, 3));
  EXPECT_EQ(run(2, 2).code, MORVANE_OK);
  morvane_plan_destroy(plan);
}

TEST(checked_errors, layouts) {
  const auto refused = [](const description& d, std::int64_t alignment) {
    try {
      lay_out(d, alignment);
    } catch (const error& e) {
      return refusal{e.code(), e.argument(), e.got(), e.needed()};
    }
    return refusal{};
  };
  const description small = {.format = format_named("v210"), .width = 1280, .height = 720};
  EXPECT_EQ(refused(small, 3), (refusal{MORVANE_OPTION, "alignment", 3, 4096}));
  EXPECT_EQ(refused(small, -64), (refusal{MORVANE_OPTION, "alignment", -64, 4096}));
  EXPECT_EQ(refused(small, 8192), (refusal{MORVANE_OPTION, "alignment", 8192, 4096}));
  const description huge = {.format = format_named("vuya_f32"), .width = INT_MAX, .height = INT_MAX};
  EXPECT_EQ(refused(huge, 0), (refusal{MORVANE_SIZE, "size", INT_MAX, 0}));
  EXPECT_THROW(format_named("no such format"), error);
}

}  // namespace
}  // namespace morvane::tests
