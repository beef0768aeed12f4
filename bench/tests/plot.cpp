// The numbers of the plot: how long bars are, and where marks stand. The scale is 280 units for 1.25 of memcpy and
// begins at 190.
#include "report/plot.h"

#include <gtest/gtest.h>

#include "made_up.h"

namespace morvane::bench {
namespace {

std::string plot_of(std::vector<measurement> all, const size& nominal = full_hd) {
  return share_plot(made_up_results(std::move(all)), made_up_targets(), nominal);
}

bool has(const std::string& plot, const std::string& part) {
  return plot.find(part) != std::string::npos;
}

measurement ours(const std::string& row_name, double share) {
  return made_up(row_name, made_up_backends.back(), {full_hd}, 1000 / share);
}

TEST(plot, is_empty_where_nothing_of_the_size_was_measured) {
  EXPECT_EQ(plot_of({ours("y::y", 1)}, in_cache), "");
}

TEST(plot, bars_are_as_long_as_the_share_of_memcpy) {
  const std::string plot = plot_of({ours("y::y", 0.75)});
  EXPECT_TRUE(has(plot, "<rect class=\"ours\" x=\"190\" y=\"116\" width=\"168\" height=\"9\"/>")) << plot;
  EXPECT_TRUE(has(plot, ">copy of y</text>"));
  EXPECT_TRUE(has(plot, "\">0.75</text>\n<line class=\"aim\""));
}

TEST(plot, bars_end_with_the_scale_and_tell_more) {
  const std::string plot = plot_of({ours("y::y", 2.5)});
  EXPECT_TRUE(has(plot, "width=\"280\" height=\"9\""));
  EXPECT_TRUE(has(plot, ">2.50</text>"));
}

TEST(plot, bars_below_the_target_have_another_colour) {
  EXPECT_TRUE(has(plot_of({ours("y::y", 0.71)}), "class=\"ours\" x=\"190\""));
  EXPECT_TRUE(has(plot_of({ours("y::y", 0.69)}), "class=\"behind\" x=\"190\""));
}

TEST(plot, targets_stand_at_their_share) {
  EXPECT_TRUE(has(plot_of({ours("y::y", 1)}), "<line class=\"aim\" x1=\"346.8\" x2=\"346.8\""));
}

TEST(plot, rows_of_the_same_formats_are_one_bar_of_the_slowest) {
  const std::string plot = plot_of({ours("bgra::bgra", 0.75), ours("bgra_601::bgra_601", 0.25)});
  EXPECT_TRUE(has(plot, "width=\"56\" height=\"9\""));
  EXPECT_FALSE(has(plot, "width=\"168\" height=\"9\""));
}

TEST(plot, narrower_backends_are_ticks) {
  const std::string plot = plot_of({ours("y::y", 1), made_up("y::y", "wide", {full_hd}, 4000)});
  EXPECT_TRUE(has(plot, "<line class=\"narrower\" x1=\"246\" x2=\"246\" y1=\"116\""));
  EXPECT_FALSE(has(plot_of({ours("y::y", 1)}), "y1=\"116\" y2=\"125\""));
}

TEST(plot, the_fastest_other_library_has_a_mark) {
  const std::string plot = plot_of({ours("y::y", 1), made_up_peer("y::y", "libyuv", {full_hd}, 2000),
                                    made_up_peer("y::y", "swscale", {full_hd}, 4000)});
  EXPECT_TRUE(has(plot, "<circle class=\"peer\" cx=\"302\" cy=\"121\""));
  EXPECT_FALSE(has(plot, "<rect class=\"peer\" x=\"243\""));
}

}  // namespace
}  // namespace morvane::bench
