// What the terminal shows, and the JSON.
#include "report/table.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "made_up.h"

namespace morvane::bench {
namespace {

std::string table_of(std::vector<measurement> all) {
  std::ostringstream out;
  write_table(out, made_up_results(std::move(all)));
  return out.str();
}

TEST(table, shows_the_backends_beside_each_other) {
  EXPECT_EQ(table_of({made_up("y::y", "plain", {full_hd}, 4000), made_up("y::y", "wide", {full_hd}, 2000),
                      made_up("y::y", "widest", {full_hd}, 500),
                      made_up("uyvy::yuy2", "plain", {full_hd, shape::unaligned}, 3000)}),
            "                                                            plain"
            "                             wide                           widest\n"
            "conversion  size       shape           GB/s  of memcpy   ns/pixel"
            "       GB/s  of memcpy   ns/pixel       GB/s  of memcpy   ns/pixel\n"
            "y::y        1920x1080  tight           1.50       0.25       4.00"
            "       3.00       0.50       2.00      12.00       2.00       0.50\n"
            "uyvy::yuy2  1920x1080  unaligned       2.00       0.33       3.00"
            "          -          -          -          -          -          -\n");
}

TEST(table, leaves_out_backends_that_were_not_measured) {
  EXPECT_EQ(table_of({made_up("y::y", "wide", {in_cache}, 2000)}),
            "                                                             wide\n"
            "conversion  size       shape           GB/s  of memcpy   ns/pixel\n"
            "y::y        1920x16    tight           3.00       0.50       2.00\n");
}

TEST(json, has_an_entry_for_each_measurement) {
  std::ostringstream out;
  write_json(out, made_up_results({made_up("y::y", "plain", {full_hd, shape::odd}, 4000),
                                   made_up("y::y", "widest", {full_hd}, 2000)}));
  const auto list = nlohmann::json::parse(out.str());
  ASSERT_EQ(list.size(), 2);
  const nlohmann::json first = {
      {"conversion", "y::y"},        {"size", "1920x1080"},     {"shape", "odd"},
      {"backend", "plain"},          {"bytes", 6000},           {"nanoseconds", 4000.0},
      {"gigabytes_per_second", 1.5}, {"share_of_memcpy", 0.25}, {"nanoseconds_per_pixel", 4.0}};
  EXPECT_EQ(list[0], first);
  EXPECT_EQ(list[1].at("backend"), "widest");
}

}  // namespace
}  // namespace morvane::bench
