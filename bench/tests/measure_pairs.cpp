// Measuring pairs of formats, and what follows from one measurement alone.
#include "measure/measure_pairs.h"

#include <gtest/gtest.h>

#include "peers/swscale.h"

namespace morvane::bench {
namespace {

const std::vector<std::string> at_once = {"--benchmark_repetitions=1", "--benchmark_min_time=0.0001"};

constexpr size small{64, 16};

TEST(pair_measurement, compares_each_filter_with_the_same_of_swscale) {
  const pair_measurement m{.bytes = 6000,
                           .nanoseconds = 1000,
                           .nearest_nanoseconds = 500,
                           .copy_nanoseconds = 400,
                           .swscale_nearest_nanoseconds = 2000,
                           .swscale_bilinear_nanoseconds = 3000,
                           .tiny_nanoseconds = 10,
                           .in_cache_nanoseconds = 50,
                           .in_cache_copy_nanoseconds = 10};
  EXPECT_DOUBLE_EQ(m.share_of_memcpy(), 0.4);
  EXPECT_DOUBLE_EQ(m.share_in_cache(), 0.2);
  EXPECT_DOUBLE_EQ(m.gigabytes_per_second(), 6);
  EXPECT_DOUBLE_EQ(m.copied_gigabytes_per_second(), 15);
  EXPECT_DOUBLE_EQ(m.times_tiny().value(), 100);
  EXPECT_DOUBLE_EQ(m.times_nearest().value(), 4);
  EXPECT_DOUBLE_EQ(m.times_bilinear().value(), 3);
  EXPECT_DOUBLE_EQ(m.times_swscale().value(), 3);
  EXPECT_DOUBLE_EQ(m.copy_times_swscale().value(), 5);
}

TEST(pair_measurement, without_swscale_there_is_nothing_to_compare) {
  const pair_measurement m{.nanoseconds = 1000, .nearest_nanoseconds = 500};
  EXPECT_FALSE(m.times_nearest());
  EXPECT_FALSE(m.times_bilinear());
  EXPECT_FALSE(m.times_swscale());
  EXPECT_FALSE(m.times_tiny());
}

TEST(pair_measurement, goes_by_lines_where_there_are_several_steps) {
  EXPECT_TRUE((pair_measurement{.steps = {"read uyvy", "write bgra"}}).goes_by_lines());
  EXPECT_FALSE((pair_measurement{.steps = {"copy uyvy"}}).goes_by_lines());
}

TEST(measure_pairs, gives_every_figure) {
  const std::vector<pair_measurement> all = measure_pairs({.pairs = pairs_named("uyvy:bgra,alpha:alpha"),
                                                           .on_threads = pairs_named("uyvy:bgra"),
                                                           .picture = small,
                                                           .bytes_of_ring = 1 << 20},
                                                          at_once);
  ASSERT_EQ(all.size(), 2);
  EXPECT_EQ(all[0].name(), "uyvy:bgra");
  EXPECT_EQ(all[0].bytes, 64 * 16 * 6);
  EXPECT_EQ(all[0].pixels, 64 * 16);
  EXPECT_TRUE(all[0].goes_by_lines());
  for (const pair_measurement& m : all) {
    EXPECT_GT(m.nanoseconds, 0);
    EXPECT_GT(m.nearest_nanoseconds, 0);
    EXPECT_GT(m.copy_nanoseconds, 0);
    EXPECT_GT(m.tiny_nanoseconds.value_or(0), 0);
    EXPECT_GT(m.in_cache_nanoseconds, 0);
    EXPECT_GT(m.in_cache_copy_nanoseconds, 0);
  }
  const bool has_swscale = swscale_has(*catalogue::find_format("uyvy"), *catalogue::find_format("bgra"));
  EXPECT_EQ(all[0].times_nearest().has_value(), has_swscale);
  EXPECT_EQ(all[0].times_bilinear().has_value(), has_swscale);
  EXPECT_GT(all[0].times_swscale().value_or(1), 0);
  EXPECT_FALSE(all[1].times_swscale());
  EXPECT_GT(all[0].gain_of_two_threads.value_or(0), 0);
  EXPECT_FALSE(all[1].gain_of_two_threads);
}

TEST(measure_pairs, briefly_takes_calls_and_threads_of_some_pairs_alone) {
  const std::vector<pair_measurement> all = measure_pairs({.pairs = pairs_named("y_uv_420:bgra,uyvy:bgra"),
                                                           .on_threads = pairs_named("uyvy:bgra"),
                                                           .how = thoroughness::brief,
                                                           .picture = small,
                                                           .bytes_of_ring = 1 << 20},
                                                          at_once);
  ASSERT_EQ(all.size(), 2);
  for (const pair_measurement& m : all) {
    EXPECT_GT(m.nanoseconds, 0);
    EXPECT_GT(m.copy_nanoseconds, 0);
    EXPECT_GT(m.share_in_cache(), 0);
    EXPECT_EQ(m.times_tiny().has_value(), m.source == "uyvy");
    EXPECT_EQ(m.gain_of_two_threads.has_value(), m.source == "uyvy");
    EXPECT_EQ(m.times_swscale().has_value(),
              swscale_has(*catalogue::find_format(m.source), *catalogue::find_format("bgra")));
  }
}

std::vector<pair_measurement> measured_briefly(const char* pair) {
  return measure_pairs(
      {.pairs = pairs_named(pair), .how = thoroughness::brief, .picture = small, .bytes_of_ring = 1 << 20}, at_once);
}

TEST(measure_pairs, briefly_takes_another_filter_where_chroma_is_resampled_alone) {
  for (const char* pair : {"bgra:vuya", "uyvy:v210"}) {
    const pair_measurement m = measured_briefly(pair).front();
    EXPECT_EQ(m.nearest_nanoseconds, m.nanoseconds) << pair;
  }
  // Two runs may take the same time once.
  bool differ = false;
  for (int i = 0; i < 10 && !differ; ++i) {
    const pair_measurement m = measured_briefly("uyvy:bgra").front();
    differ = m.nearest_nanoseconds != m.nanoseconds;
  }
  EXPECT_TRUE(differ);
}

}  // namespace
}  // namespace morvane::bench
