// Each backend beside the next narrower one.
#include "report/steps.h"

#include <gtest/gtest.h>

#include "made_up.h"

namespace morvane::bench {
namespace {

const step widening{"widest", "wide"};

TEST(steps, lead_from_each_backend_to_the_next_wider_one) {
  const results r = made_up_results({});
  const std::vector<step> steps = steps_of(r);
  ASSERT_EQ(steps.size(), 2);
  EXPECT_EQ(steps[0].wider, "wide");
  EXPECT_EQ(steps[0].narrower, "plain");
  EXPECT_EQ(steps[1].wider, "widest");
  EXPECT_EQ(steps[1].narrower, "wide");
}

TEST(steps, there_are_none_where_there_is_one_backend) {
  EXPECT_TRUE(steps_of(results({}, {"only"}, {})).empty());
}

TEST(gain, is_more_than_one_where_the_wider_backend_is_faster) {
  const results r =
      made_up_results({made_up("y::y", "wide", {in_cache}, 300), made_up("y::y", "widest", {in_cache}, 200)});
  EXPECT_DOUBLE_EQ(*gain(r, row_named("y::y"), {in_cache}, widening), 1.5);
}

TEST(gain, is_nothing_where_one_backend_was_not_measured) {
  const results r = made_up_results({made_up("y::y", "wide", {in_cache}, 300)});
  EXPECT_FALSE(gain(r, row_named("y::y"), {in_cache}, widening));
}

// Copies gain 2, 4 and 10 times, a rearrangement 1.
results gains_of_two_kinds() {
  std::vector<measurement> all;
  const auto add = [&all](const char* row_name, double narrower) {
    all.push_back(made_up(row_name, "wide", {in_cache}, narrower));
    all.push_back(made_up(row_name, "widest", {in_cache}, 100));
  };
  add("y::y", 1000);
  add("uyvy::uyvy", 200);
  add("bgra::bgra", 400);
  add("uyvy::yuy2", 100);
  add("uyvy::ya_uv", 100000);
  return made_up_results(all);
}

TEST(median_gain, is_that_of_one_kind_or_of_all_rows_with_a_target) {
  const results r = gains_of_two_kinds();
  const targets aims = made_up_targets();
  EXPECT_DOUBLE_EQ(*median_gain(r, aims, aims.of(row_named("y::y")), {in_cache}, widening), 4);
  EXPECT_DOUBLE_EQ(*median_gain(r, aims, aims.of(row_named("uyvy::yuy2")), {in_cache}, widening), 1);
  EXPECT_DOUBLE_EQ(*median_gain(r, aims, nullptr, {in_cache}, widening), 3);
  EXPECT_FALSE(median_gain(r, aims, nullptr, {full_hd}, widening));
}

}  // namespace
}  // namespace morvane::bench
