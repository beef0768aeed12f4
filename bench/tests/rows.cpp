// The rows and their kinds.
#include "measure/rows.h"

#include <gtest/gtest.h>

#include <set>

#include "made_up.h"

namespace morvane::bench {
namespace {

TEST(rows, have_names_of_their_own) {
  std::set<std::string> names;
  for (const row& r : all_rows()) EXPECT_TRUE(names.insert(r.name).second) << r.name;
}

TEST(rows, hold_every_conversion_and_the_difference) {
  std::set<const catalogue::conversion*> seen;
  for (const row& r : all_rows()) seen.insert(r.conversion);
  EXPECT_EQ(seen.size(), catalogue::conversions.size() + 1);
}

TEST(rows, hold_what_stretches_luma_twice) {
  EXPECT_FALSE(row_named("uyvy::y").rescale);
  EXPECT_TRUE(row_named("uyvy::y(rescale)").rescale);
  EXPECT_THROW(row_named("uyvy::yuy2(rescale)"), std::invalid_argument);
}

TEST(rows, of_a_name_that_stands_for_several_tell_the_destination) {
  EXPECT_EQ(row_named("black::alpha(alpha_u16)").conversion->destination, "alpha_u16");
}

TEST(rows, have_the_kind_of_what_bounds_them) {
  EXPECT_EQ(row_named("black::uyvy").what, kind::copy);
  EXPECT_EQ(row_named("y::y").what, kind::copy);
  EXPECT_EQ(row_named("uyvy::yuy2").what, kind::rearrangement);
  EXPECT_EQ(row_named("sum_absolute_differences::difference").what, kind::rearrangement);
  EXPECT_EQ(row_named("alpha_u16::yuyv_matrox_10").what, kind::rearrangement);
  EXPECT_EQ(row_named("uyvy_a::ya_uv").what, kind::rearrangement);
  EXPECT_EQ(row_named("y16::y16(rescale)").what, kind::weighting);
  EXPECT_EQ(row_named("uyvy_a::uyvy").what, kind::weighting);
  EXPECT_EQ(row_named("pa16::vuya_f32").what, kind::weighting);
  EXPECT_EQ(row_named("bgra::uyvy").what, kind::rgb_to_ycbcr);
  EXPECT_EQ(row_named("p216::rgbx_2020").what, kind::ycbcr_to_rgb);
}

}  // namespace
}  // namespace morvane::bench
