// What follows from one measurement, or from two.
#include "measure/measurement.h"

#include <gtest/gtest.h>

#include "made_up.h"

namespace morvane::bench {
namespace {

TEST(median, is_the_one_in_the_middle) {
  EXPECT_EQ(median({7}), 7);
  EXPECT_EQ(median({100, 1, 2}), 2);
  EXPECT_EQ(median({5, 1, 100, 4, 3}), 4);
}

TEST(median, of_an_even_count_is_halfway_between_the_two_in_the_middle) {
  EXPECT_EQ(median({4, 8}), 6);
  EXPECT_EQ(median({1, 100, 8, 4}), 6);
}

TEST(measurement, share_of_memcpy_is_less_than_one_where_memcpy_is_faster) {
  EXPECT_DOUBLE_EQ(made_up("y::y", "plain", {}, 4000).share_of_memcpy(), 0.25);
  EXPECT_DOUBLE_EQ(made_up("y::y", "plain", {}, 500).share_of_memcpy(), 2);
}

TEST(measurement, a_byte_in_a_nanosecond_is_a_gigabyte_in_a_second) {
  EXPECT_DOUBLE_EQ(made_up("y::y", "plain", {}, 2000).gigabytes_per_second(), 3);
}

TEST(measurement, time_is_shared_by_the_pixels) {
  EXPECT_DOUBLE_EQ(made_up("y::y", "plain", {}, 250).nanoseconds_per_pixel(), 0.25);
}

TEST(measurement, name_tells_row_place_runner_and_threads) {
  measurement m = made_up("y::y", "plain", {full_hd, shape::odd}, 1);
  EXPECT_EQ(m.run_name(), "y::y/1920x1080/odd/plain");
  m.threads = 2;
  EXPECT_EQ(m.run_name(), "y::y/1920x1080/odd/plain/2 threads");
}

TEST(times_as_fast, is_more_than_one_where_the_first_takes_less_time) {
  const measurement fast = made_up("y::y", "wide", {}, 100);
  const measurement slow = made_up("y::y", "plain", {}, 400);
  EXPECT_DOUBLE_EQ(times_as_fast(fast, slow), 4);
  EXPECT_DOUBLE_EQ(times_as_fast(slow, fast), 0.25);
}

TEST(times_as_fast, compares_pixels_not_pictures) {
  const measurement whole = made_up("y::y", "wide", {}, 100);
  measurement half = whole;
  half.pixels /= 2;
  EXPECT_DOUBLE_EQ(times_as_fast(half, whole), 0.5);
}

}  // namespace
}  // namespace morvane::bench
