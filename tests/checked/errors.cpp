// What the checked interface refuses: the code, the argument, what was got and needed, the message, and that nothing is
// written then. Numbers at the ends of their types are in extremes.cpp, planes that share bytes in overlap.cpp, and
// memory that is not there in memory.cpp.
#include <algorithm>
#include <climits>
#include <set>

#include "checked/attempt.h"

namespace morvane::tests {
namespace {

TEST(checked_errors, a_right_call_is_done) {
  attempt a;
  a.from.matrix = a.to.matrix;  // grey stays as it is
  EXPECT_EQ(a.result(), refusal());
  std::vector<std::uint8_t> expected = attempt::untouched();
  std::fill_n(expected.begin() + 16, 24, std::uint8_t{77});
  std::fill_n(expected.begin() + 56, 12, std::uint8_t{77});
  EXPECT_EQ(a.memory, expected) << "all bytes of both planes, and no others";
}

// A refusal with its whole message: what is changed, the row that a band begins with, and the scratch memory it lacks.
struct coded {
  refusal of;
  std::string message;
  std::function<void(attempt&)> change = [](attempt&) {};
  int first = 0;
  std::int64_t missing_scratch = 0;
};

std::int64_t scratch_needed() {
  const attempt a;
  morvane_plan* plan = morvane_plan_create(&a.from, &a.to, &a.how, nullptr);
  const std::int64_t bytes = morvane_plan_scratch_bytes(plan);
  morvane_plan_destroy(plan);
  return bytes;
}

std::vector<coded> one_of_each_code() {
  const std::int64_t scratch = scratch_needed();
  const std::string of_scratch =
      "scratch_bytes is " + std::to_string(scratch - 1) + ", and " + std::to_string(scratch) + " are needed";
  return {
      {{MORVANE_NULL, "source.data[0]", 0, 0},
       "source.data[0] is null, and uyvy has a plane 0",
       [](attempt& a) { a.source.data[0] = nullptr; }},
      {{MORVANE_STRUCT_SIZE, "source.struct_size", 4, sizeof(morvane_description)},
       "source.struct_size is 4, where sizeof gives 24",
       [](attempt& a) { a.from.struct_size = 4; }},
      {{MORVANE_UNKNOWN_FORMAT, "destination.format", -7, 0},
       "destination.format is -7, which no format has as its id",
       [](attempt& a) { a.to.format = -7; }},
      {{MORVANE_SIZE, "source.width", 0, 1},
       "source.width is 0, and must be at least 1",
       [](attempt& a) { a.from.width = 0; }},
      {{MORVANE_OPTION, "options.filter", 2, 0},
       "options.filter is 2, not 0 (linear) or 1 (nearest)",
       [](attempt& a) { a.how.filter = 2; }},
      {{MORVANE_NO_WAY, "destination", 7, 6},
       "destination is of 7x4 pixels and the source of 6x4; sizes are not changed",
       [](attempt& a) { a.to.width = 7; }},
      {{MORVANE_STRIDE, "destination.stride[1]", 5, 6},
       "destination.stride[1] is 5, shorter than a row of 6 bytes",
       [](attempt& a) { a.destination.stride[1] = 5; }},
      {{MORVANE_PLANE_TOO_SHORT, "source.bytes[0]", 47, 48},
       "source.bytes[0] is 47, and 4 rows need 48 bytes",
       [](attempt& a) { a.source.bytes[0] = 47; }},
      {{MORVANE_OVERLAP, "destination.data[1]", 0, 0},
       "destination.data[1] shares bytes with plane 0 of the destination",
       [](attempt& a) { a.destination.data[1] = a.written + 23; }},
      {{MORVANE_ROWS, "first", 1, 2}, "first is 1, not a multiple of 2 from 0 to 3", [](attempt&) {}, 1},
      {{MORVANE_SCRATCH, "scratch_bytes", scratch - 1, scratch}, of_scratch, [](attempt&) {}, 0, 1},
      {{MORVANE_VIA, "options.via", 0, 0},
       "options.via is \"uyvy::yuy2\", which does not convert between these formats",
       [](attempt& a) { a.how.via = "uyvy::yuy2"; }},
  };
}

// By the steps that morvane_convert takes in one.
morvane_error run_by_a_plan(attempt& a, const coded& of) {
  morvane_error e = smeared_error();
  morvane_plan* plan = morvane_plan_create(&a.from, &a.to, &a.how, &e);
  if (plan == nullptr) return e;
  std::vector<std::uint8_t> scratch(static_cast<std::size_t>(morvane_plan_scratch_bytes(plan)));
  const std::int64_t bytes = static_cast<std::int64_t>(scratch.size()) - of.missing_scratch;
  EXPECT_EQ(morvane_plan_run_rows(plan, &a.source, &a.destination, of.first, 2, scratch.data(), bytes, nullptr),
            of.of.code);
  EXPECT_EQ(morvane_plan_run_rows(plan, &a.source, &a.destination, of.first, 2, scratch.data(), bytes, &e), of.of.code);
  morvane_plan_destroy(plan);
  return e;
}

TEST(checked_errors, of_every_code_say_all) {
  std::set<int> codes;
  for (const coded& of : one_of_each_code()) {
    attempt a;
    of.change(a);
    const morvane_error e = run_by_a_plan(a, of);
    EXPECT_EQ(refusal_of(e), of.of);
    EXPECT_EQ(e.message, of.message);
    a.expect_fields(e);
    if (of.first == 0 && of.missing_scratch == 0) {
      EXPECT_EQ(a.result(), of.of) << "by morvane_convert";
    }
    codes.insert(e.code);
  }
  std::set<int> all;
  for (int code = MORVANE_NULL; code <= MORVANE_VIA; ++code) all.insert(code);
  all.erase(MORVANE_NO_MEMORY);
  EXPECT_EQ(codes, all);
}

TEST(checked_errors, descriptions) {
  EXPECT_EQ(after([](attempt& a) { a.from.format = 0; }), (refusal{MORVANE_UNKNOWN_FORMAT, "source.format", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.to.format = 99999; }),
            (refusal{MORVANE_UNKNOWN_FORMAT, "destination.format", 99999, 0}));
  EXPECT_EQ(after([](attempt& a) { a.to.height = -5; }), (refusal{MORVANE_SIZE, "destination.height", -5, 1}));
  EXPECT_EQ(after([](attempt& a) { a.from.matrix = 240; }), (refusal{MORVANE_OPTION, "source.matrix", 240, 709}));
  EXPECT_EQ(after([](attempt& a) { a.to.matrix = -1; }), (refusal{MORVANE_OPTION, "destination.matrix", -1, 709}));
  EXPECT_EQ(after([](attempt& a) { a.from.range = -1; }), (refusal{MORVANE_OPTION, "source.range", -1, 1}));
  EXPECT_EQ(after([](attempt& a) { a.to.range = 3; }), (refusal{MORVANE_OPTION, "destination.range", 3, 1}));
  EXPECT_EQ(after([](attempt& a) { a.to.height = 5; }), (refusal{MORVANE_NO_WAY, "destination", 6, 6}));
  EXPECT_EQ(after([](attempt& a) { a.to.format = format_named("alpha"); }),
            (refusal{MORVANE_NO_WAY, "destination.format", format_named("alpha"), format_named("uyvy")}));
}

TEST(checked_errors, options) {
  EXPECT_EQ(after([](attempt& a) { a.how.siting = -1; }), (refusal{MORVANE_OPTION, "options.siting", -1, 0}));
  EXPECT_EQ(after([](attempt& a) { a.how.siting = 2; }), (refusal{MORVANE_OPTION, "options.siting", 2, 0}));
  EXPECT_EQ(after([](attempt& a) { a.how.filter = -1; }), (refusal{MORVANE_OPTION, "options.filter", -1, 0}));
  EXPECT_EQ(after([](attempt& a) { a.how.stores = -1; }), (refusal{MORVANE_OPTION, "options.stores", -1, 0}));
  EXPECT_EQ(after([](attempt& a) { a.how.stores = 3; }), (refusal{MORVANE_OPTION, "options.stores", 3, 0}));
}

// Of each struct: a size below its own, above it, and none.
TEST(checked_errors, sizes_of_structs) {
  const auto refused = [](const char* argument, std::uint32_t right, auto change) {
    for (const std::uint32_t size : {0U, right - 4, right + 4, UINT32_MAX})
      EXPECT_EQ(after([&](attempt& a) { change(a) = size; }), (refusal{MORVANE_STRUCT_SIZE, argument, size, right}));
  };
  refused(
      "source.struct_size", sizeof(morvane_description), [](attempt & a) -> auto& { return a.from.struct_size; });
  refused(
      "destination.struct_size", sizeof(morvane_description), [](attempt & a) -> auto& { return a.to.struct_size; });
  refused(
      "options.struct_size", sizeof(morvane_options), [](attempt & a) -> auto& { return a.how.struct_size; });
  refused(
      "source", sizeof(morvane_picture), [](attempt & a) -> auto& { return a.source.struct_size; });
  refused(
      "destination", sizeof(morvane_picture), [](attempt & a) -> auto& { return a.destination.struct_size; });
}

TEST(checked_errors, planes) {
  EXPECT_EQ(after([](attempt& a) { a.destination.data[1] = nullptr; }),
            (refusal{MORVANE_NULL, "destination.data[1]", 0, 0}));
  EXPECT_EQ(after([](attempt& a) { a.source.stride[0] = 11; }), (refusal{MORVANE_STRIDE, "source.stride[0]", 11, 12}));
  EXPECT_EQ(after([](attempt& a) { a.source.stride[0] = -11; }),
            (refusal{MORVANE_STRIDE, "source.stride[0]", -11, 12}));
  EXPECT_EQ(after([](attempt& a) { a.destination.stride[1] = 0; }),
            (refusal{MORVANE_STRIDE, "destination.stride[1]", 0, 6}));
  EXPECT_EQ(after([](attempt& a) { a.destination.bytes[1] = -1; }),
            (refusal{MORVANE_PLANE_TOO_SHORT, "destination.bytes[1]", -1, 12}));
  EXPECT_EQ(after([](attempt& a) { a.destination.bytes[1] = 11; }),
            (refusal{MORVANE_PLANE_TOO_SHORT, "destination.bytes[1]", 11, 12}));
}

// Padding belongs to all rows but the last.
TEST(checked_errors, planes_with_padding) {
  const auto padded = [](std::int64_t stride, std::int64_t bytes) {
    attempt a;
    a.read.resize(60);
    a.source.data[0] = stride < 0 ? a.read.data() + 3 * 15 : a.read.data();
    a.source.stride[0] = stride;
    a.source.bytes[0] = bytes;
    return a.result();
  };
  for (const std::int64_t stride : {15, -15}) {
    EXPECT_EQ(padded(stride, 57), refusal());
    EXPECT_EQ(padded(stride, 56), (refusal{MORVANE_PLANE_TOO_SHORT, "source.bytes[0]", 56, 57}));
  }
}

// Planes that a format does not have are nobody's concern.
TEST(checked_errors, planes_beyond_the_last_are_ignored) {
  EXPECT_EQ(after([](attempt& a) {
              a.source.stride[1] = INT64_MIN;
              a.source.bytes[3] = -1;
              a.destination.data[2] = a.read.data();
            }),
            refusal());
}

TEST(checked_errors, nulls) {
  attempt a;
  morvane_plan* plan = morvane_plan_create(&a.from, &a.to, nullptr, nullptr);
  ASSERT_NE(plan, nullptr);
  const auto expect_null = [&a](const char* argument, auto call) {
    morvane_error e = smeared_error();
    EXPECT_EQ(call(&e), MORVANE_NULL);
    EXPECT_EQ(refusal_of(e), (refusal{MORVANE_NULL, argument, 0, e.needed}));
    EXPECT_EQ(e.message, std::string(argument) + " is null");
    EXPECT_EQ(call(nullptr), MORVANE_NULL);
    a.expect_fields(e);
  };
  const morvane_description *from = &a.from, *to = &a.to;
  const morvane_picture *source = &a.source, *destination = &a.destination;
  std::vector<std::uint8_t> scratch(static_cast<std::size_t>(morvane_plan_scratch_bytes(plan)));
  const auto bytes = static_cast<std::int64_t>(scratch.size());
  void* s = scratch.data();
  expect_null("source",
              [&](morvane_error* e) { return morvane_convert(nullptr, source, to, destination, nullptr, e); });
  expect_null("source", [&](morvane_error* e) { return morvane_convert(from, nullptr, to, destination, nullptr, e); });
  expect_null("destination",
              [&](morvane_error* e) { return morvane_convert(from, source, nullptr, destination, nullptr, e); });
  expect_null("destination", [&](morvane_error* e) { return morvane_convert(from, source, to, nullptr, nullptr, e); });
  expect_null("plan", [&](morvane_error* e) { return morvane_plan_run(nullptr, source, destination, s, bytes, e); });
  expect_null("plan",
              [&](morvane_error* e) { return morvane_plan_run_rows(nullptr, source, destination, 0, 2, s, bytes, e); });
  expect_null("source", [&](morvane_error* e) { return morvane_plan_run(plan, nullptr, destination, s, bytes, e); });
  expect_null("destination", [&](morvane_error* e) { return morvane_plan_run(plan, source, nullptr, s, bytes, e); });
  expect_null("scratch",
              [&](morvane_error* e) { return morvane_plan_run(plan, source, destination, nullptr, bytes, e); });
  expect_null("layout", [&](morvane_error* e) { return morvane_lay_out(from, 0, nullptr, e); });
  morvane_layout layout{};
  layout.struct_size = sizeof layout;
  expect_null("description", [&](morvane_error* e) { return morvane_lay_out(nullptr, 0, &layout, e); });
  morvane_plan_destroy(plan);
}

TEST(checked_errors, of_plans_are_answered_by_none) {
  const attempt a;
  morvane_error e = smeared_error();
  EXPECT_EQ(morvane_plan_create(nullptr, &a.to, nullptr, &e), nullptr);
  EXPECT_EQ(refusal_of(e), (refusal{MORVANE_NULL, "source", 0, 0}));
  EXPECT_EQ(morvane_plan_create(&a.from, nullptr, nullptr, &e), nullptr);
  EXPECT_EQ(refusal_of(e), (refusal{MORVANE_NULL, "destination", 0, 0}));
  EXPECT_EQ(morvane_plan_create(&a.from, nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(morvane_plan_step(nullptr, 0), nullptr);
  EXPECT_EQ(morvane_plan_loss(nullptr, 0), nullptr);
  EXPECT_EQ(morvane_plan_scratch_bytes(nullptr), 0);
  EXPECT_EQ(morvane_plan_row_granularity(nullptr), 0);
  morvane_plan_destroy(nullptr);
}

TEST(checked_errors, names_without_a_format) {
  EXPECT_EQ(morvane_format_named(nullptr), 0);
  EXPECT_EQ(morvane_format_named(""), 0);
  EXPECT_EQ(morvane_format_named("uyv"), 0);
  EXPECT_EQ(morvane_format_name(0), nullptr);
  try {
    format_named("no such format");
    ADD_FAILURE() << "nothing is thrown";
  } catch (const error& e) {
    EXPECT_EQ((refusal{e.code(), e.argument(), e.got(), e.needed()}), (refusal{MORVANE_UNKNOWN_FORMAT, "name", 0, 0}));
    EXPECT_STREQ(e.what(), "no format has the name no such format");
  }
}

TEST(checked_errors, texts_of_a_plan_end_with_none) {
  const attempt a;
  morvane_plan* plan = morvane_plan_create(&a.from, &a.to, nullptr, nullptr);
  EXPECT_NE(morvane_plan_step(plan, 0), nullptr);
  for (const int index : {-1, 1000, INT_MIN, INT_MAX}) {
    EXPECT_EQ(morvane_plan_step(plan, index), nullptr) << index;
    EXPECT_EQ(morvane_plan_loss(plan, index), nullptr) << index;
  }
  morvane_plan_destroy(plan);
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
  for (const std::int32_t first : {1, 3, -1, -2, 4, 6, INT_MIN, INT_MAX})
    EXPECT_EQ(run(first, 2), (refusal{MORVANE_ROWS, "first", first, 2}));
  for (const std::int32_t rows : {0, -2, 1, 3, 5, 6, INT_MIN, INT_MAX})
    EXPECT_EQ(run(0, rows), (refusal{MORVANE_ROWS, "rows", rows, 2}));
  EXPECT_EQ(run(2, 4), (refusal{MORVANE_ROWS, "rows", 4, 2}));
  for (const std::int64_t given : {bytes - 1, std::int64_t{0}, std::int64_t{-1}, INT64_MIN}) {
    morvane_plan_run(plan, &a.source, &a.destination, scratch.data(), given, &e);
    EXPECT_EQ(refusal_of(e), (refusal{MORVANE_SCRATCH, "scratch_bytes", given, bytes}));
  }
  EXPECT_EQ(a.memory, attempt::untouched());
  EXPECT_EQ(run(2, 2), refusal());
  EXPECT_EQ(run(0, 4), refusal());
  morvane_plan_destroy(plan);
}

// A band may end with the last row, wherever that is.
TEST(checked_errors, bands_of_an_odd_height) {
  attempt a;
  a.from.height = a.to.height = 3;
  const plan p(description{.format = a.from.format, .width = 6, .height = 3},
               description{.format = a.to.format, .width = 6, .height = 3});
  std::vector<std::uint8_t> scratch(p.scratch_bytes());
  const auto run = [&](std::int32_t first, std::int32_t rows) {
    try {
      p.run_rows(a.source, a.destination, first, rows, scratch.data(), scratch.size());
    } catch (const error& e) {
      return refusal{e.code(), e.argument(), e.got(), e.needed()};
    }
    return refusal();
  };
  EXPECT_EQ(run(2, 2), (refusal{MORVANE_ROWS, "rows", 2, 2}));
  EXPECT_EQ(run(0, 1), (refusal{MORVANE_ROWS, "rows", 1, 2}));
  EXPECT_EQ(a.memory, attempt::untouched());
  EXPECT_EQ(run(2, 1), refusal());
  EXPECT_EQ(run(0, 3), refusal());
}

TEST(checked_errors, layouts) {
  const morvane_description small = description{.format = format_named("v210"), .width = 1280, .height = 720};
  const auto refused = [](const morvane_description& d, std::int64_t alignment, std::uint32_t size) {
    morvane_layout layout;
    std::fill_n(reinterpret_cast<std::uint8_t*>(&layout), sizeof layout, std::uint8_t{0x5a});
    layout.struct_size = size;
    const std::vector<std::uint8_t> before(reinterpret_cast<std::uint8_t*>(&layout),
                                           reinterpret_cast<std::uint8_t*>(&layout + 1));
    morvane_error e = smeared_error();
    EXPECT_EQ(morvane_lay_out(&d, alignment, &layout, &e), e.code);
    EXPECT_TRUE(std::equal(before.begin(), before.end(), reinterpret_cast<std::uint8_t*>(&layout)));
    attempt().expect_fields(e);
    return refusal_of(e);
  };
  constexpr std::uint32_t size = sizeof(morvane_layout);
  for (const std::int64_t alignment : {std::int64_t{3}, std::int64_t{-1}, std::int64_t{-64}, std::int64_t{4097},
                                       std::int64_t{8192}, std::int64_t{1} << 62, INT64_MAX, INT64_MIN})
    EXPECT_EQ(refused(small, alignment, size), (refusal{MORVANE_OPTION, "alignment", alignment, 4096}));
  EXPECT_EQ(refused(small, 0, size - 8), (refusal{MORVANE_STRUCT_SIZE, "layout.struct_size", size - 8, size}));
  morvane_description wrong = small;
  wrong.width = -1;
  EXPECT_EQ(refused(wrong, 0, size), (refusal{MORVANE_SIZE, "description.width", -1, 1}));
  wrong = small;
  wrong.format = 44444;
  EXPECT_EQ(refused(wrong, 0, size), (refusal{MORVANE_UNKNOWN_FORMAT, "description.format", 44444, 0}));
  wrong = small;
  wrong.struct_size = 0;
  EXPECT_EQ(refused(wrong, 0, size),
            (refusal{MORVANE_STRUCT_SIZE, "description.struct_size", 0, sizeof(morvane_description)}));
}

}  // namespace
}  // namespace morvane::tests
