// What the measured pairs of formats say together: targets, pictures, pages and tables.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "made_up.h"
#include "report/csv.h"
#include "report/html.h"
#include "report/page.h"
#include "report/pairs.h"
#include "report/summary_of_pairs.h"
#include "report/table.h"

namespace morvane::bench {
namespace {

namespace fs = std::filesystem;

// 1000 ns and 6000 bytes, with or without the same of swscale.
pair_measurement pair(const std::string& source, const std::string& destination, double share,
                      std::optional<double> times_swscale = {}) {
  pair_measurement m{.source = source,
                     .destination = destination,
                     .steps = {"read " + source, "write " + destination},
                     .bytes = 6000,
                     .pixels = 1000,
                     .nanoseconds = 1000,
                     .nearest_nanoseconds = 1000,
                     .copy_nanoseconds = 1000 * share,
                     .tiny_nanoseconds = 1,
                     .in_cache_nanoseconds = 50,
                     .in_cache_copy_nanoseconds = 50 * share / 2};
  if (!times_swscale) return m;
  m.swscale_nearest_nanoseconds = 1000 * *times_swscale;
  m.swscale_bilinear_nanoseconds = 2000 * *times_swscale;
  return m;
}

// Good enough for every target that the test does not look at.
pair_measurement good_pair() {
  return pair("uyvy", "bgra", 0.9, 20);
}

targets aims_of_pairs() {
  targets result = made_up_targets();
  result.pairs = {.share_of_memcpy = 0.3,
                  .median_share_of_memcpy = 0.45,
                  .median_of_swscale = 8,
                  .times_tiny_picture = 100,
                  .two_threads = 1.8,
                  .reasons = {{.about = {.source = {"v210"}}, .because = "groups"}}};
  return result;
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Expects one miss beside those of medians, or none where `target` is empty.
void expect_miss(const pair_measurement& m, const std::string& target, double reached = 0, double wanted = 0) {
  std::vector<miss> found = misses({good_pair(), good_pair(), m}, aims_of_pairs());
  ASSERT_EQ(found.size(), target.empty() ? 0 : 1);
  if (target.empty()) return;
  EXPECT_EQ(found.front().row, m.name());
  EXPECT_EQ(found.front().target, target);
  EXPECT_NEAR(found.front().reached, reached, 1e-9);
  EXPECT_NEAR(found.front().wanted, wanted, 1e-9);
}

TEST(misses_of_pairs, each_pair_has_a_least_share_of_memcpy) {
  expect_miss(pair("uyvy", "y", 0.31), "");
  expect_miss(pair("uyvy", "y", 0.29), "of memcpy", 0.29, 0.3);
}

TEST(misses_of_pairs, a_pair_that_goes_by_no_lines_has_no_share_to_reach) {
  pair_measurement m = pair("uyvy", "y", 0.1);
  m.steps = {"uyvy::y"};
  expect_miss(m, "");
}

TEST(misses_of_pairs, swscale_may_not_be_faster_with_either_filter) {
  expect_miss(pair("uyvy", "y", 1, 0.98), "");
  expect_miss(pair("uyvy", "y", 1, 0.96), "of swscale, nearest", 0.96, 0.97);
  pair_measurement m = pair("uyvy", "y", 1, 2);
  m.swscale_bilinear_nanoseconds = 500;
  expect_miss(m, "of swscale, bilinear", 0.5, 0.97);
}

TEST(misses_of_pairs, checking_takes_no_more_than_its_part) {
  pair_measurement m = good_pair();
  m.tiny_nanoseconds = 9.9;
  expect_miss(m, "");
  m.tiny_nanoseconds = 12.5;
  expect_miss(m, "times a tiny picture", 80, 100);
}

TEST(misses_of_pairs, two_threads_gain_where_they_were_measured) {
  pair_measurement m = good_pair();
  m.gain_of_two_threads = 1.85;
  expect_miss(m, "");
  m.gain_of_two_threads = 1.5;
  expect_miss(m, "on two threads", 1.5, 1.8);
}

TEST(misses_of_pairs, have_the_reason_of_their_formats_or_noise) {
  const auto why = [](const pair_measurement& m) {
    return misses({good_pair(), good_pair(), m}, aims_of_pairs()).front().why;
  };
  EXPECT_EQ(why(pair("v210", "y", 0.1)), "groups");
  EXPECT_EQ(why(pair("uyvy", "y", 0.1)), "");
  EXPECT_EQ(why(pair("v210", "y", 0.28)), "noise");
}

TEST(misses_of_pairs, medians_have_targets_of_their_own) {
  const std::vector<miss> found =
      misses({pair("uyvy", "y", 0.4, 7), pair("y", "y", 0.44, 7.9), pair("y", "uyvy", 0.9, 9)}, aims_of_pairs());
  ASSERT_EQ(found.size(), 2);
  EXPECT_EQ(found[0].row, "median of pairs");
  EXPECT_EQ(found[0].target, "of memcpy");
  EXPECT_NEAR(found[0].reached, 0.44, 1e-9);
  EXPECT_EQ(found[1].target, "of swscale");
  EXPECT_NEAR(found[1].reached, 7.9, 1e-9);
  EXPECT_TRUE(misses(measured_pairs(), aims_of_pairs()).empty());
}

TEST(spread, has_the_pairs_with_the_figure) {
  pair_measurement copy = pair("uyvy", "uyvy", 0.01);
  copy.steps = {"copy"};
  const measured_pairs all = {pair("uyvy", "y", 0.5), pair("y", "y", 0.2, 3), pair("y", "uyvy", 0.4, 5), copy};
  const spread shares = shares_of_memcpy(all).value();
  EXPECT_EQ(shares.count(), 3);
  EXPECT_DOUBLE_EQ(shares.median(), 0.4);
  EXPECT_DOUBLE_EQ(shares.ascending()[0].figure, 0.2);
  EXPECT_EQ(shares.ascending()[0].pair, "y:y");
  EXPECT_EQ(shares.ascending()[1].pair, "y:uyvy");
  EXPECT_EQ(shares.ascending()[2].pair, "uyvy:y");
  EXPECT_DOUBLE_EQ(times_swscale(all).value().median(), 4);
  EXPECT_FALSE(times_swscale({copy}));
}

TEST(spread, counts_what_is_less) {
  const spread values({{0.3, "a"}, {0.1, "b"}, {0.2, "c"}});
  EXPECT_EQ(values.below(0.1), 0);
  EXPECT_EQ(values.below(0.3), 2);
  EXPECT_EQ(values.below(0.31), 3);
}

std::vector<std::string> sentences_of(const measured_pairs& all) {
  std::vector<std::string> result;
  for (const pair_figure& f : summary(all, aims_of_pairs())) result.push_back(sentence(f));
  return result;
}

TEST(summary_of_pairs, has_medians_and_names_the_worst) {
  pair_measurement copy = pair("uyvy", "uyvy", 0.01, 0.4);
  copy.steps = {"copy"};
  copy.gain_of_two_threads = 1.5;
  pair_measurement linear = pair("y16", "y", 0.4, 5);
  linear.swscale_bilinear_nanoseconds = 900;
  const std::vector<std::string> expected = {
      "share of memcpy at 1920x1080, by lines of samples: median 0.40 (target 0.45), least 0.20 (y:y), 0.29 (y:uyvy), "
      "0.40 (y16:y); 2 of 5 pairs below 0.30",
      "share of memcpy in cache, 1920x16, by lines of samples: median 0.20, least 0.10 (y:y), 0.14 (y:uyvy), 0.20 "
      "(y16:y); 5 pairs",
      "times as fast as swscale at 1920x1080, nearest chroma: median 3.00, least 0.40 (uyvy:uyvy), 0.96 (y:y), 3.00 "
      "(uyvy:y); 2 of 5 pairs below 0.97",
      "times as fast as swscale at 1920x1080, linear chroma: median 1.92, least 0.80 (uyvy:uyvy), 0.90 (y16:y), 1.92 "
      "(y:y); 2 of 5 pairs below 0.97",
      "times as fast as swscale at 1920x1080, the lesser of both: median 0.96 (target 8.00), least 0.40 (uyvy:uyvy), "
      "0.90 (y16:y), 0.96 (y:y); 3 of 5 pairs below 0.97",
      "times as fast as swscale at 1920x1080 that memcpy is: median 6.00, least 2.25 (y16:y), 4.80 (y:y), 6.00 "
      "(uyvy:y); "
      "5 pairs",
      "times as long as a picture of 48x2: median 1000, least 1000 (uyvy:y), 1000 (y:y), 1000 (y:uyvy); 0 of 6 pairs "
      "below 100",
      "times as fast on two threads, 1920x16: median 1.50, least 1.50 (uyvy:uyvy); 1 of 1 pairs below 1.80",
      "GB/s of memcpy at 1920x1080: median 17.8, least 12.0 (uyvy:y), 15.0 (y16:y), 15.0 (y:L); 6 pairs"};
  const std::vector<std::string> found = sentences_of({pair("uyvy", "y", 0.5, 3), pair("y", "y", 0.2, 0.96),
                                                       pair("y", "uyvy", 0.29, 6), linear, pair("y", "L", 0.4), copy});
  EXPECT_EQ(found, expected);
}

TEST(summary_of_pairs, leaves_out_what_was_not_measured) {
  EXPECT_TRUE(sentences_of({}).empty());
  EXPECT_EQ(sentences_of({pair("y", "L", 0.4)}).size(), 4);
}

TEST(pictures_of_pairs, have_the_measured_formats_on_both_axes) {
  const std::string picture = picture_of_shares({pair("bgra", "y", 0.5)}, aims_of_pairs());
  EXPECT_TRUE(has(picture, "text-anchor=\"end\">bgra</text>")) << picture;
  EXPECT_TRUE(has(picture, "text-anchor=\"end\">y</text>"));
  EXPECT_TRUE(has(picture, "rotate(-90)\">bgra</text>"));
  EXPECT_TRUE(has(picture, "rotate(-90)\">y</text>"));
  EXPECT_FALSE(has(picture, ">uyvy</text>"));
  EXPECT_EQ(picture_of_shares({}, aims_of_pairs()), "");
}

TEST(pictures_of_pairs, colour_shares_around_their_targets) {
  const std::pair<double, const char*> shares[] = {{0.14, "below2"}, {0.16, "below1"}, {0.29, "below1"},
                                                   {0.31, "above1"}, {0.46, "above2"}, {0.61, "above3"},
                                                   {0.81, "above4"}};
  for (const auto& [share, colour] : shares)
    EXPECT_TRUE(has(picture_of_shares({pair("y", "y", share)}, aims_of_pairs()),
                    std::string("<rect class=\"") + colour + "\" x=\"136\" y=\"208\""))
        << share;
}

TEST(pictures_of_pairs, colour_ratios_to_swscale_and_leave_others_grey) {
  const std::pair<double, const char*> ratios[] = {{0.4, "below2"}, {0.9, "below1"}, {1.1, "above1"},
                                                   {2.1, "above2"}, {4.1, "above3"}, {8.1, "above4"}};
  for (const auto& [ratio, colour] : ratios) {
    const std::string picture = picture_beside_swscale({pair("y", "y", 1, ratio), pair("y", "L", 1)}, aims_of_pairs());
    EXPECT_TRUE(has(picture, std::string("<rect class=\"") + colour + "\" x=\"136\" y=\"208\"")) << ratio;
    EXPECT_TRUE(has(picture, "<rect class=\"none\" x=\"155\" y=\"208\""));
    EXPECT_TRUE(has(picture, ">not in swscale</text>"));
  }
  EXPECT_EQ(picture_beside_swscale({pair("y", "y", 1)}, aims_of_pairs()), "");
}

// Of ten thousand pairs, one in ten of them below its target.
measured_pairs every_pair() {
  measured_pairs result;
  for (const catalogue::format& from : catalogue::formats)
    for (const catalogue::format& to : catalogue::formats)
      result.push_back(pair(std::string(from.name), std::string(to.name),
                            result.size() % 10 == 0 ? 0.2 : 0.4 + 0.5 * static_cast<double>(result.size() % 7) / 7));
  return result;
}

TEST(pictures_of_pairs, name_depths_and_floats) {
  const std::string picture = picture_of_shares(every_pair(), aims_of_pairs());
  for (const char* group :
       {"YCbCr, 8 bits", "YCbCr, 10 bits", "RGB, 16 bits", "RGB, floats", "luma, 8 bits", "alpha, 8 bits"})
    EXPECT_TRUE(has(picture, std::string(">") + group + "</text>")) << group;
  EXPECT_LT(picture.find(">RGB, 16 bits<"), picture.find(">RGB, floats<"));
}

TEST(pictures_of_pairs, stay_small_on_a_page) {
  EXPECT_LT(picture_of_shares(every_pair(), aims_of_pairs(), matrix::tips::of_low_ones).size(), 600'000);
}

TEST(pictures_of_pairs, tell_the_figures_of_a_cell) {
  EXPECT_TRUE(has(picture_of_shares({pair("y", "uyvy", 0.5, 3)}, aims_of_pairs()),
                  "<title>y to uyvy\n0.50 of memcpy, 6.0 GB/s\nin cache: 0.25 of memcpy\nbeside swscale, nearest "
                  "chroma: 3.0 times as fast\n"
                  "beside swscale, linear chroma: 6.0 times as fast</title>"));
  EXPECT_TRUE(has(picture_of_shares({pair("y", "L", 0.5)}, aims_of_pairs()),
                  "<title>y to L\n0.50 of memcpy, 6.0 GB/s\nin cache: 0.25 of memcpy</title>"));
}

std::string page_of(measured_pairs all) {
  const results r = made_up_results({});
  const targets aims = aims_of_pairs();
  std::ostringstream out;
  write_html(out, {{}, r, aims, {}, std::move(all)});
  return out.str();
}

TEST(page_of_pairs, has_pictures_misses_and_every_pair) {
  pair_measurement slow = pair("uyvy", "y", 0.25, 3);
  slow.gain_of_two_threads = 1.9;
  const std::string page = page_of({good_pair(), slow});
  EXPECT_TRUE(has(page, "<h2>Any picture to any other</h2>"));
  EXPECT_TRUE(has(page,
                  "<li>share of memcpy at 1920x1080, by lines of samples: median 0.57 (target 0.45), least 0.25 "
                  "(uyvy:y), 0.90 (uyvy:bgra); 1 of 2 pairs below 0.30</li>"))
      << page;
  EXPECT_TRUE(has(page, "<li>times as fast on two threads, 1920x16: median 1.90, least 1.90 (uyvy:y); 0 of 1 pairs"));
  EXPECT_TRUE(has(page, "<h3>Missed: 1</h3>"));
  EXPECT_TRUE(
      has(page,
          "<tr><td>uyvy</td><td>y</td><td class=\"wide\">read uyvy, write y</td><td class=\"n\">1</td>"
          "<td class=\"n\">6.0</td><td class=\"n bad\">0.25</td><td class=\"n\">0.12</td><td class=\"n\">3.00</td>"
          "<td class=\"n\">6.00</td><td class=\"n\">1000</td><td class=\"n\">1.90</td></tr>"));
  EXPECT_FALSE(has(page, "<h2>Targets</h2>"));
}

TEST(page_of_pairs, says_nothing_where_none_was_measured) {
  EXPECT_FALSE(has(page_of({}), "Any picture to any other"));
}

TEST(tables_of_pairs, have_a_line_for_each) {
  std::ostringstream text;
  write_table(text, {pair("uyvy", "y", 0.25, 3), pair("y", "L", 0.5)});
  EXPECT_EQ(text.str(),
            "pair           us       GB/s  of memcpy   in cache    nearest   bilinear       tiny  2 threads\n"
            "uyvy:y        1.0       6.00       0.25       0.12       3.00       6.00    0.100 %          -\n"
            "y:L           1.0       6.00       0.50       0.25          -          -    0.100 %          -\n");
  std::ostringstream csv;
  write_csv(csv, {pair("uyvy", "y", 0.25, 3), pair("y", "L", 0.5)});
  EXPECT_TRUE(
      has(csv.str(),
          "\nuyvy,y,\"read uyvy, write y\",1000,6000,1000.0,1000.0,6.000,250.0,0.2500,0.1250,1.0,3.0000,6.0000,\n"
          "y,L,\"read y, write L\",1000,6000,1000.0,1000.0,6.000,500.0,0.5000,0.2500,1.0,,,\n"))
      << csv.str();
}

TEST(tables_of_pairs, are_json_for_other_programs) {
  std::ostringstream out;
  write_json(out, {pair("uyvy", "y", 0.25, 3), pair("y", "L", 0.5)});
  const nlohmann::json list = nlohmann::json::parse(out.str());
  ASSERT_EQ(list.size(), 2);
  EXPECT_EQ(list[0]["source"], "uyvy");
  EXPECT_EQ(list[0]["steps"], nlohmann::json({"read uyvy", "write y"}));
  EXPECT_EQ(list[0]["share_of_memcpy"], 0.25);
  EXPECT_EQ(list[0]["share_in_cache"], 0.125);
  EXPECT_EQ(list[0]["times_swscale_bilinear"], 6);
  EXPECT_TRUE(list[1]["times_swscale_nearest"].is_null());
}

TEST(performance_page_of_pairs, renews_its_own_section_and_pictures) {
  const fs::path docs = fs::path(testing::TempDir()) / ("pairs_page_" + std::to_string(getpid()));
  fs::create_directories(docs / "images");
  std::ofstream(docs / "performance.md") << "<!-- begin measured pairs -->\nold\n<!-- end measured pairs -->\nafter\n";
  refresh_performance_page(docs, {good_pair(), pair("uyvy", "y", 0.25, 3)}, aims_of_pairs(), "abc");
  std::ifstream in(docs / "performance.md");
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  EXPECT_TRUE(has(text, ", commit abc.\n")) << text;
  EXPECT_TRUE(has(text, "\n| | median (target) | least | pairs | below the target of each |\n|---|---|---|---|---|\n"));
  EXPECT_TRUE(has(text,
                  "\n| share of memcpy at 1920x1080, by lines of samples | 0.57 (0.45) | 0.25 `uyvy:y`, 0.90 "
                  "`uyvy:bgra` | 2 | 1 (0.30) |\n"))
      << text;
  EXPECT_TRUE(has(text,
                  "\n| share of memcpy in cache, 1920x16, by lines of samples | 0.29 | 0.12 `uyvy:y`, 0.45 "
                  "`uyvy:bgra` | 2 |  |\n"));
  EXPECT_TRUE(has(text,
                  "\n| times as fast as swscale at 1920x1080, the lesser of both | 11.50 (8.00) | 3.00 `uyvy:y`, 20.00 "
                  "`uyvy:bgra` | 2 | 0 (0.97) |\n"));
  EXPECT_FALSE(has(text, "old"));
  EXPECT_TRUE(text.ends_with("<!-- end measured pairs -->\nafter\n"));
  for (const char* picture : {"images/pairs_of_memcpy.svg", "images/pairs_beside_swscale.svg"}) {
    EXPECT_TRUE(fs::exists(docs / picture));
    EXPECT_TRUE(has(text, picture));
  }
  fs::remove_all(docs);
}

TEST(readme, shows_every_pair_and_says_what_bounds_the_slowest) {
  const fs::path directory = fs::path(testing::TempDir()) / ("pairs_readme_" + std::to_string(getpid()));
  fs::create_directories(directory);
  const auto readme_of = [&directory](const measured_pairs& all) {
    std::ofstream(directory / "README.md")
        << "<!-- begin measured pairs -->\nold\n<!-- end measured pairs -->\nafter\n";
    refresh_readme(directory, all, aims_of_pairs());
    std::ifstream in(directory / "README.md");
    return std::string{std::istreambuf_iterator<char>(in), {}};
  };
  EXPECT_EQ(
      readme_of({pair("v210", "y", 0.2), pair("y", "y", 0.5), pair("y", "uyvy", 0.9)}),
      "<!-- begin measured pairs -->\n"
      "![share of memcpy of every pair of formats](docs/images/pairs_of_memcpy.svg)\n\n"
      "*Every format to every other at 1920x1080, as a share of memcpy: 3 pairs by lines of samples, median 0.50; "
      "the slowest is `v210:y` with 0.20: groups.*\n"
      "<!-- end measured pairs -->\nafter\n");
  EXPECT_TRUE(has(readme_of({pair("y", "y", 0.5)}), "the slowest is `y:y` with 0.50.*\n"));
  fs::remove_all(directory);
}

}  // namespace
}  // namespace morvane::bench
