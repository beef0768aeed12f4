// The measured part of docs/performance.md.
#include "report/page.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "made_up.h"

namespace morvane::bench {
namespace {

namespace fs = std::filesystem;

// A directory with a page, for one test.
class performance_page : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(docs_ / "images");
    write("before\n<!-- begin measured -->\nold\n<!-- end measured -->\nafter\n");
  }
  void TearDown() override { fs::remove_all(docs_); }

  void write(const std::string& text) const { std::ofstream(docs_ / "performance.md") << text; }

  std::string refreshed(std::vector<measurement> all, const std::vector<arm_figure>& arm = {}) const {
    targets aims = made_up_targets();
    aims.examples = {"y::y"};
    refresh_performance_page(docs_, made_up_results(std::move(all)), aims, arm, "abc");
    return read();
  }
  std::string read() const {
    std::ifstream in(docs_ / "performance.md");
    return {std::istreambuf_iterator<char>(in), {}};
  }

  const fs::path docs_ = fs::path(testing::TempDir()) / ("performance_page_" + std::to_string(getpid()));
};

void expect_line(const std::string& text, const std::string& line) {
  EXPECT_NE(text.find("\n" + line + "\n"), std::string::npos) << line << "\nin\n" << text;
}

measurement ours(const std::string& row_name, double nanoseconds, const place& where = {full_hd}) {
  return made_up(row_name, made_up_backends.back(), where, nanoseconds);
}

TEST_F(performance_page, keeps_what_stands_around_the_measured_part) {
  const std::string text = refreshed({ours("y::y", 1000)});
  EXPECT_TRUE(text.starts_with("before\n<!-- begin measured -->\nMeasured on one core of ")) << text;
  EXPECT_TRUE(text.ends_with("<!-- end measured -->\nafter\n")) << text;
  EXPECT_EQ(text.find("old"), std::string::npos);
  EXPECT_TRUE(fs::exists(docs_ / "images/share_of_memcpy.svg"));
}

TEST_F(performance_page, tells_median_and_slowest_of_each_kind) {
  const std::string text =
      refreshed({ours("y::y", 1000), ours("uyvy::uyvy", 2000), ours("bgra::bgra", 500), ours("uyvy::yuy2", 4000)});
  expect_line(text, "| copy | - | 1.00 (0.50) | - |");
  expect_line(text, "| rearrangement | - | 0.25 (0.25) | - |");
  expect_line(text, "| weighting | - | - | - |");
}

TEST_F(performance_page, shows_the_examples_beside_the_fastest_library) {
  const std::string text =
      refreshed({ours("y::y", 2000), ours("uyvy::uyvy", 2000), made_up_peer("y::y", "libyuv", {full_hd}, 5000),
                 made_up_peer("y::y", "OpenCV", {full_hd}, 4000)});
  expect_line(text, "| `y::y` | 2 | 3.0 | 2.0 times as fast as OpenCV (close) |");
  EXPECT_EQ(text.find("`uyvy::uyvy`"), std::string::npos);
}

TEST_F(performance_page, shows_what_the_wider_backends_gain) {
  const std::string text = refreshed({made_up("y::y", "plain", {in_cache}, 9000),
                                      made_up("y::y", "wide", {in_cache}, 3000), ours("y::y", 2000, {in_cache})});
  expect_line(text, "| `wide` beside `plain` | 3.0 | - | - |");
  expect_line(text, "| `widest` beside `wide` | 1.5 | - | - |");
}

TEST_F(performance_page, tells_what_two_threads_gain) {
  std::vector<measurement> all;
  for (const double gain : {1.0, 1.5, 8.0}) {
    const char* name = gain == 1 ? "y::y" : gain == 8 ? "uyvy::uyvy" : "bgra::bgra";
    all.push_back(ours(name, 1000 * gain, {ultra_hd}));
    all.push_back(ours(name, 1000, {ultra_hd}));
    all.back().threads = 2;
  }
  EXPECT_NE(refreshed(all).find("were 1.5 times as fast as one (median)"), std::string::npos);
}

TEST_F(performance_page, tells_how_many_more_instructions_libyuv_takes_on_arm) {
  const std::string text = refreshed({ours("y::y", 1000)}, {{.row = "y::y", .runner = "neon", .instructions = 2},
                                                            {.row = "y::y", .runner = "libyuv", .instructions = 5},
                                                            {.row = "L::bgra", .runner = "neon", .instructions = 1}});
  EXPECT_NE(text.find("libyuv executes 2.50 times the instructions for the same job (median of 1 conversions)"),
            std::string::npos)
      << text;
}

TEST_F(performance_page, tells_of_plans_on_arm_in_a_section_of_its_own) {
  write("<!-- begin measured arm plans -->\n<!-- end measured arm plans -->\n");
  refresh_performance_page(docs_, {{.row = "y::y", .runner = "neon", .instructions = 2},
                                   {.row = "y::y", .runner = "libyuv", .instructions = 7},
                                   {.row = "y:y16", .runner = "neon", .instructions = 2},
                                   {.row = "y:y16", .runner = "libyuv", .instructions = 5},
                                   {.row = "uyvy:yuy2", .runner = "neon", .instructions = 4},
                                   {.row = "uyvy:yuy2", .runner = "libyuv", .instructions = 2},
                                   {.row = "uyvy:L", .runner = "neon", .instructions = 4}});
  const std::string text = read();
  EXPECT_NE(text.find("no more instructions than libyuv in 1 of 2 conversions"), std::string::npos) << text;
  EXPECT_NE(text.find("1.50 times as many (median), from 0.50 to 2.50 times"), std::string::npos) << text;
}

TEST_F(performance_page, says_when_the_section_is_missing) {
  write("nothing measured here\n");
  EXPECT_THROW(refreshed({ours("y::y", 1000)}), std::runtime_error);
}

}  // namespace
}  // namespace morvane::bench
