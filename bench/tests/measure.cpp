// Running a plan.
#include "measure/measure.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "made_up.h"

namespace morvane::bench {
namespace {

TEST(measure, gives_nanoseconds_of_one_run_and_of_its_copy) {
  const row r = row_named("y::y");
  const workload w = make_workload(r, {in_cache});
  const auto sleep = [](const arena&) { return [] { std::this_thread::sleep_for(std::chrono::milliseconds(2)); }; };
  measurement what{.row = r.name, .runner = "sleeper", .where = {in_cache}, .bytes = w.bytes(), .pixels = w.pixels()};
  const std::vector<measurement> all =
      measure({{what, w, sleep}}, {"--benchmark_repetitions=3", "--benchmark_min_time=0.004"});
  ASSERT_EQ(all.size(), 1);
  EXPECT_EQ(all.front().run_name(), what.run_name());
  EXPECT_GE(all.front().nanoseconds, 2e6);
  EXPECT_LT(all.front().nanoseconds, 1e9);
  EXPECT_GT(all.front().copy_nanoseconds, 0);
  EXPECT_LT(all.front().copy_nanoseconds, all.front().nanoseconds);
}

TEST(medians_of, has_as_many_repetitions_and_iterations_as_a_run_says) {
  int set_up = 0;
  int done = 0;
  const auto count = [&] {
    ++set_up;
    return [&done] { ++done; };
  };
  timed_run run{.name = "counted", .set_up = count, .repetitions = 3, .iterations = 5};
  EXPECT_GT(medians_of({run}, {"--benchmark_repetitions=1"}).at("counted"), 0);
  EXPECT_EQ(set_up, 3);
  EXPECT_EQ(done, 3 * (5 + 1));
  run.warms_up = false;
  medians_of({run}, {"--benchmark_repetitions=1"});
  EXPECT_EQ(done, 3 * (5 + 1) + 3 * 5);
}

TEST(counted, is_set_up_and_done_once_beforehand) {
  int set_up = 0;
  int done = 0;
  const auto count = [&] {
    ++set_up;
    return [&done] { ++done; };
  };
  const timed_run once = counted("counted", count, 3, 1);
  EXPECT_EQ(done, 1);
  medians_of({once}, {});
  EXPECT_EQ(set_up, 1);
  EXPECT_EQ(done, 1 + 3);
  medians_of({counted("counted", count, 3, 5)}, {});
  EXPECT_EQ(set_up, 2);
  EXPECT_EQ(done, 1 + 3 + 1 + 3 * (5 + 1));
}

TEST(measure, refuses_options_that_google_benchmark_does_not_know) {
  EXPECT_THROW(measure({}, {"--benchmark_no_such_option"}), std::runtime_error);
}

}  // namespace
}  // namespace morvane::bench
