// What was counted and modelled for 64-bit Arm.
#include "report/arm_figures.h"

#include <gtest/gtest.h>

#include <fstream>

namespace morvane::bench {
namespace {

TEST(arm_figures, are_worse_by_more_than_what_surrounds_the_loops) {
  EXPECT_FALSE(is_worse(1.005, 1));
  EXPECT_TRUE(is_worse(1.02, 1));
  EXPECT_FALSE(is_worse(1, 1.02));
}

TEST(arm_figures, are_behind_with_one_of_them) {
  const arm_figure theirs{.instructions = 1, .n1_cycles = 1, .v1_cycles = 1};
  EXPECT_FALSE(is_behind(theirs, theirs));
  EXPECT_FALSE(is_behind({.instructions = 0.5, .n1_cycles = 0.5, .v1_cycles = 0.5}, theirs));
  EXPECT_TRUE(is_behind({.instructions = 2, .n1_cycles = 1, .v1_cycles = 1}, theirs));
  EXPECT_TRUE(is_behind({.instructions = 1, .n1_cycles = 2, .v1_cycles = 1}, theirs));
  EXPECT_TRUE(is_behind({.instructions = 1, .n1_cycles = 1, .v1_cycles = 2}, theirs));
}

TEST(arm_figures, libyuv_stands_beside_the_same_row) {
  const std::vector<arm_figure> all = {{.row = "y::y", .runner = "neon"},
                                       {.row = "uyvy::yuy2", .runner = "libyuv"},
                                       {.row = "y::y", .runner = "libyuv"}};
  EXPECT_EQ(libyuv_beside(all, all[0]), &all[2]);
  EXPECT_EQ(libyuv_beside({all[0], all[1]}, all[0]), nullptr);
}

TEST(arm_figures, are_read_from_a_file_that_may_be_missing) {
  const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "morvane_arm_figures.json";
  std::ofstream(file) << R"([{"conversion": "y::y", "runner": "neon", "function": "f", "agreement": "close",
    "instructions_per_pixel": 1, "neoverse_n1_cycles_per_pixel": 2, "neoverse_v1_cycles_per_pixel": 3,
    "modelled_share": 0.5}])";
  const std::vector<arm_figure> all = read_arm_figures(file);
  std::filesystem::remove(file);
  ASSERT_EQ(all.size(), 1);
  EXPECT_EQ(all[0].row, "y::y");
  EXPECT_EQ(all[0].instructions, 1);
  EXPECT_EQ(all[0].n1_cycles, 2);
  EXPECT_EQ(all[0].v1_cycles, 3);
  EXPECT_EQ(all[0].modelled, 0.5);
  EXPECT_TRUE(read_arm_figures(file).empty());
}

}  // namespace
}  // namespace morvane::bench
