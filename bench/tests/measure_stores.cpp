// Measuring stores through the caches and past them, and the table of it.
#include "measure/measure_stores.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "report/table.h"

namespace morvane::bench {
namespace {

const store_measurement made_up = {.source = "uyvy",
                                   .destination = "bgra",
                                   .bytes_written = 4000000,
                                   .cached_nanoseconds = 3000,
                                   .streaming_nanoseconds = 2000,
                                   .copy_nanoseconds = 2400,
                                   .cached_and_read_nanoseconds = 4000,
                                   .streaming_and_read_nanoseconds = 5000};

TEST(store_measurement, compares_both_kinds_of_stores) {
  EXPECT_DOUBLE_EQ(made_up.cached_share_of_memcpy(), 0.8);
  EXPECT_DOUBLE_EQ(made_up.streaming_share_of_memcpy(), 1.2);
  EXPECT_DOUBLE_EQ(made_up.gain(), 1.5);
  EXPECT_DOUBLE_EQ(made_up.gain_before_a_reader(), 0.8);
}

TEST(store_measurement, is_a_line_of_a_table) {
  std::ostringstream out;
  write_table(out, std::vector{made_up});
  EXPECT_EQ(out.str(),
            "pair       MB written     cached  streaming       gain gain, read\n"
            "uyvy:bgra         4.0       0.80       1.20       1.50       0.80\n");
}

TEST(store_measurement, is_an_entry_of_json) {
  std::ostringstream out;
  write_json(out, std::vector{made_up});
  const nlohmann::json list = nlohmann::json::parse(out.str());
  ASSERT_EQ(list.size(), 1);
  EXPECT_EQ(list[0]["source"], "uyvy");
  EXPECT_EQ(list[0]["bytes_written"], 4000000);
  EXPECT_EQ(list[0]["streaming_share_of_memcpy"], 1.2);
  EXPECT_EQ(list[0]["gain_before_a_reader"], 0.8);
}

TEST(measure_stores, gives_every_figure) {
  const std::vector<store_measurement> all =
      measure_stores({.pairs = pairs_named("uyvy:bgra,bgra:bgra"), .picture = {64, 16}, .bytes_of_ring = 1 << 20},
                     {"--benchmark_repetitions=1", "--benchmark_min_time=0.0001"});
  ASSERT_EQ(all.size(), 2);
  EXPECT_EQ(all[0].name(), "uyvy:bgra");
  for (const store_measurement& m : all) {
    EXPECT_EQ(m.bytes_written, 64 * 16 * 4);
    for (const double nanoseconds : {m.cached_nanoseconds, m.streaming_nanoseconds, m.copy_nanoseconds,
                                     m.cached_and_read_nanoseconds, m.streaming_and_read_nanoseconds})
      EXPECT_GT(nanoseconds, 0);
  }
}

}  // namespace
}  // namespace morvane::bench
