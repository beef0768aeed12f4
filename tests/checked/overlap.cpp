// Planes of the destination and scratch memory that share bytes with another plane, by so much as one byte, and those
// that lie between a plane's rows and share none.
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

// Two pictures in one piece of memory, their rows so far apart that scratch memory fits between any two of them.
class run_in_one_memory {
 public:
  static constexpr int rows = 4, row_bytes = 12, gap = 7;

  explicit run_in_one_memory(int threads) {
    const morvane_description from = description{.format = format_named("uyvy"), .width = 6, .height = rows};
    const morvane_description to =
        description{.format = format_named("yuy2"), .width = 6, .height = rows, .matrix = matrix::bt601};
    const morvane_options how = options{.threads = threads};
    plan_ = morvane_plan_create(&from, &to, &how, nullptr);
    needed_ = morvane_plan_scratch_bytes(plan_);
    EXPECT_GT(needed_, 0);
    memory_.resize(static_cast<std::size_t>((2 * rows + 2) * step()));
  }
  ~run_in_one_memory() { morvane_plan_destroy(plan_); }
  run_in_one_memory(const run_in_one_memory&) = delete;
  run_in_one_memory& operator=(const run_in_one_memory&) = delete;

  std::int64_t needed() const { return needed_; }
  // Of the last refusal.
  const std::string& message() const { return message_; }
  // The rows of the source come first; those of the destination follow from the last one on.
  std::int64_t begin_of(int row) const { return (row + 1) * step(); }
  bool is_shared(int row, std::int64_t scratch, std::int64_t bytes) const {
    return scratch < begin_of(row) + row_bytes && begin_of(row) < scratch + bytes;
  }

  refusal all(std::int64_t scratch, std::int64_t bytes) {
    return done([&](const morvane_picture& in, const morvane_picture& out, morvane_error& e) {
      return morvane_plan_run(plan_, &in, &out, memory_.data() + scratch, bytes, &e);
    });
  }
  refusal band(std::int64_t scratch, std::int64_t bytes) {
    return done([&](const morvane_picture& in, const morvane_picture& out, morvane_error& e) {
      return morvane_plan_run_rows(plan_, &in, &out, 1, 1, memory_.data() + scratch, bytes, &e);
    });
  }

 private:
  std::int64_t step() const { return needed_ + row_bytes + 2 * gap; }

  template <class Call>
  refusal done(const Call& call) {
    std::generate(memory_.begin(), memory_.end(), [n = 0]() mutable { return static_cast<std::uint8_t>(n++ * 7); });
    const std::vector<std::uint8_t> before = memory_;
    const std::int64_t bytes = (rows - 1) * step() + row_bytes;
    const morvane_picture in{sizeof in, {memory_.data() + begin_of(0)}, {step()}, {bytes}};
    const morvane_picture out{sizeof out, {memory_.data() + begin_of(2 * rows - 1)}, {-step()}, {bytes}};
    morvane_error e;
    EXPECT_EQ(call(in, out, e), e.code);
    if (e.code == MORVANE_OK) return {};
    EXPECT_EQ(memory_, before) << "bytes are written";
    message_ = e.message;
    return refusal_of(e);
  }

  std::vector<std::uint8_t> memory_;
  morvane_plan* plan_ = nullptr;
  std::int64_t needed_ = 0;
  std::string message_;
};

TEST(checked_overlap, of_scratch_memory_is_that_of_bytes) {
  run_in_one_memory run(1);
  const refusal shared{MORVANE_OVERLAP, "scratch", 0, 0};
  for (int row = 0; row < 2 * run.rows; ++row)
    for (const std::int64_t edge : {run.begin_of(row) - run.needed(), run.begin_of(row) + run.row_bytes})
      for (std::int64_t at = edge - run.gap + 1; at < edge + run.gap; ++at) {
        const refusal expected = run.is_shared(row, at, run.needed()) ? shared : refusal();
        ASSERT_EQ(run.all(at, run.needed()), expected) << at - edge << " from row " << row;
        ASSERT_EQ(run.band(at, run.needed()), expected) << at - edge << " from row " << row;
        const std::string whose = row < run.rows ? "source" : "destination";
        if (expected == shared) {
          ASSERT_EQ(run.message(), "scratch shares bytes with plane 0 of the " + whose);
        }
      }
}

TEST(checked_overlap, of_scratch_memory_and_any_plane) {
  attempt a;
  morvane_plan* plan = morvane_plan_create(&a.to, &a.from, nullptr, nullptr);
  std::vector<std::uint8_t> scratch(static_cast<std::size_t>(morvane_plan_scratch_bytes(plan)));
  const auto bytes = static_cast<std::int64_t>(scratch.size());
  a.destination.data[1] = scratch.data() + bytes - 1;
  morvane_error e;
  EXPECT_EQ(morvane_plan_run(plan, &a.destination, &a.source, scratch.data(), bytes, &e), MORVANE_OVERLAP);
  EXPECT_STREQ(e.message, "scratch shares bytes with plane 1 of the source");
  morvane_plan_destroy(plan);
}

// What is given beyond the need is not used.
TEST(checked_overlap, of_more_scratch_memory_than_is_needed_is_allowed) {
  run_in_one_memory run(1);
  EXPECT_EQ(run.all(run.begin_of(0) - run.needed(), run.needed() + run.row_bytes), refusal());
  EXPECT_EQ(run.all(run.begin_of(0) - run.needed(), INT64_MAX), refusal());
}

// A band is converted by its caller alone, whatever threads the plan has.
TEST(checked_overlap, of_the_scratch_memory_of_every_thread) {
  run_in_one_memory run(3);
  const std::int64_t last = run.begin_of(0) - run.needed() + 1;
  EXPECT_EQ(run.all(last, run.needed()), (refusal{MORVANE_OVERLAP, "scratch", 0, 0}));
  EXPECT_EQ(run.all(last - 1, run.needed()), refusal());
  EXPECT_EQ(run.band(last, run.needed()), refusal());
}

}  // namespace
}  // namespace morvane::tests
