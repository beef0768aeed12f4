// The questions that tables and plots ask.
#include "report/results.h"

#include <gtest/gtest.h>

#include "made_up.h"

namespace morvane::bench {
namespace {

TEST(results, ours_is_the_widest_backend_and_the_baseline_the_narrowest) {
  const results r = made_up_results({made_up("y::y", "plain", {full_hd}, 3), made_up("y::y", "wide", {full_hd}, 2),
                                     made_up("y::y", "widest", {full_hd}, 1)});
  EXPECT_EQ(r.ours(row_named("y::y"), {full_hd})->runner, "widest");
  EXPECT_EQ(r.baseline(row_named("y::y"), {full_hd})->runner, "plain");
}

TEST(results, tell_places_and_threads_apart) {
  measurement two = made_up("y::y", "widest", {full_hd}, 4);
  two.threads = 2;
  const results r =
      made_up_results({made_up("y::y", "widest", {full_hd}, 1), two,
                       made_up("y::y", "widest", {full_hd, shape::odd}, 2), made_up("y::y", "widest", {in_cache}, 3)});
  const row y = row_named("y::y");
  EXPECT_EQ(r.ours(y, {full_hd})->nanoseconds, 1);
  EXPECT_EQ(r.ours(y, {full_hd, shape::odd})->nanoseconds, 2);
  EXPECT_EQ(r.ours(y, {in_cache})->nanoseconds, 3);
  EXPECT_EQ(r.ours(y, {full_hd}, 2)->nanoseconds, 4);
  EXPECT_EQ(r.ours(y, {ultra_hd}), nullptr);
}

TEST(results, the_best_of_the_other_libraries_takes_the_least_time) {
  const results r =
      made_up_results({made_up("y::y", "widest", {full_hd}, 1), made_up_peer("y::y", "swscale", {full_hd}, 9),
                       made_up_peer("y::y", "libyuv", {full_hd}, 5), made_up_peer("y::y", "OpenCV", {full_hd}, 7)});
  EXPECT_EQ(r.best_peer(row_named("y::y"), {full_hd})->runner, "libyuv");
  EXPECT_EQ(r.best_peer(row_named("y::y"), {in_cache}), nullptr);
  EXPECT_EQ(r.libraries(), (std::vector<std::string>{"swscale", "libyuv", "OpenCV"}));
}

TEST(results, keep_the_rows_that_were_measured) {
  const results r = made_up_results({made_up("y::y", "widest", {full_hd}, 1)});
  ASSERT_EQ(r.rows().size(), 1);
  EXPECT_EQ(r.rows().front().name, "y::y");
}

}  // namespace
}  // namespace morvane::bench
