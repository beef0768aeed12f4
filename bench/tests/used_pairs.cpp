// What is said of the pairs that people use most: targets, tables and pages.
#include "report/used_pairs.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "made_up.h"
#include "report/html.h"
#include "report/page.h"

namespace morvane::bench {
namespace {

namespace fs = std::filesystem;

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

targets aims_of_used_pairs() {
  targets result = made_up_targets();
  result.pairs.used.share_of_memcpy = {0.35, 0.85, 0};
  result.pairs.reasons = {{.about = {.source = {"v210"}}, .because = "groups"}};
  return result;
}

// 1000 ns with linear chroma, 500 with nearest.
pair_beside_peers pair(const std::string& source, const std::string& destination, const times_at_sizes& shares,
                       std::vector<peer_of_pair> peers = {}) {
  pair_beside_peers m{
      .source = source, .destination = destination, .steps = {"read " + source, "write " + destination}};
  for (std::size_t s = 0; s < sizes.size(); ++s) {
    m.nanoseconds[s] = 1000;
    m.nearest_nanoseconds[s] = 500;
    m.copy_nanoseconds[s] = 1000 * shares[s];
  }
  m.peers = std::move(peers);
  return m;
}

// As many times as slow with linear chroma at the three sizes.
peer_of_pair peer_at(const std::string& library, const times_at_sizes& times, agreement label = agreement::close) {
  peer_of_pair p{.library = library, .function = "Convert, " + library, .like = {label, filter::linear}};
  for (std::size_t s = 0; s < sizes.size(); ++s) p.nanoseconds[s] = 1000 * times[s];
  return p;
}

used_pairs two_pairs() {
  return {pair("uyvy", "bgra", {0.5, 0.9, 0.7},
               {peer_at("libyuv", {2, 3, 4}), peer_at("libyuv", {3, 2.5, 4}, agreement::other_algorithm),
                peer_at("zimg", {5, 6, 7}, agreement::same_bytes)}),
          pair("v210", "p010", {0.3, 0.8, 0.1}, {peer_at("libyuv", {0.9, 1, 1})})};
}

TEST(misses_of_used_pairs, are_of_memcpy_and_of_each_library) {
  const std::vector<miss> found = misses(two_pairs(), aims_of_used_pairs());
  ASSERT_EQ(found.size(), 3);
  EXPECT_EQ(found[0].row, "v210:p010");
  EXPECT_EQ(found[0].where.nominal, in_cache);
  EXPECT_EQ(found[0].target, "of memcpy");
  EXPECT_NEAR(found[0].reached, 0.3, 1e-9);
  EXPECT_NEAR(found[0].wanted, 0.35, 1e-9);
  EXPECT_EQ(found[0].why, "groups");
  EXPECT_EQ(found[1].target, "of libyuv, Convert, libyuv");
  EXPECT_NEAR(found[1].reached, 0.9, 1e-9);
  EXPECT_EQ(found[2].where.nominal, full_hd);
  EXPECT_EQ(found[2].target, "of memcpy");
}

TEST(misses_of_used_pairs, within_noise_say_so) {
  const std::vector<miss> found = misses({pair("v210", "p010", {0.34, 1, 1})}, aims_of_used_pairs());
  ASSERT_EQ(found.size(), 1);
  EXPECT_EQ(found[0].why, "noise");
}

TEST(summary_of_used_pairs, has_shares_and_libraries_at_each_size) {
  std::vector<std::string> found;
  for (const pair_figure& f : summary(two_pairs(), aims_of_used_pairs())) found.push_back(sentence(f));
  const std::vector<std::string> expected = {
      "share of memcpy at 1920x16: median 0.40, least 0.30 (v210:p010), 0.50 (uyvy:bgra); 1 of 2 pairs below 0.35",
      "share of memcpy at 1920x1080: median 0.85, least 0.80 (v210:p010), 0.90 (uyvy:bgra); 1 of 2 pairs below 0.85",
      "share of memcpy at 3840x2160: median 0.40, least 0.10 (v210:p010), 0.70 (uyvy:bgra); 2 pairs",
      "times as fast as libyuv at 1920x16: median 1.45, least 0.90 (v210:p010), 2.00 (uyvy:bgra); 1 of 2 pairs below "
      "0.97",
      "times as fast as libyuv at 1920x1080: median 1.75, least 1.00 (v210:p010), 2.50 (uyvy:bgra); 0 of 2 pairs below "
      "0.97",
      "times as fast as libyuv at 3840x2160: median 2.50, least 1.00 (v210:p010), 4.00 (uyvy:bgra); 0 of 2 pairs below "
      "0.97",
      "times as fast as zimg at 1920x16: median 5.00, least 5.00 (uyvy:bgra); 0 of 1 pairs below 0.97",
      "times as fast as zimg at 1920x1080: median 6.00, least 6.00 (uyvy:bgra); 0 of 1 pairs below 0.97",
      "times as fast as zimg at 3840x2160: median 7.00, least 7.00 (uyvy:bgra); 0 of 1 pairs below 0.97"};
  EXPECT_EQ(found, expected);
  EXPECT_TRUE(summary(used_pairs(), aims_of_used_pairs()).empty());
}

TEST(counts_of_labels, has_a_line_for_each_library) {
  const std::vector<std::string> expected = {"libyuv: 2 close, 1 other algorithm", "zimg: 1 same bytes"};
  EXPECT_EQ(counts_of_labels(two_pairs()), expected);
}

TEST(table_of_used_pairs, shows_the_fastest_function_of_each_library) {
  const std::string expected =
      "| pair | 1920x16 | 1920x1080 | 3840x2160 | libyuv | swscale | OpenCV | zimg "
      "|\n|---|---|---|---|---|---|---|---|\n"
      "| `uyvy:bgra` | 0.50 | 0.90 | 0.70 | 2.5 \u2260 | | | 6.0 = |\n"
      "| `v210:p010` | 0.30 | 0.80 | 0.10 | 1.0 \u2248 | | | |\n";
  EXPECT_EQ(table_of(two_pairs()), expected);
}

TEST(csv_of_used_pairs, has_a_line_for_each_size_and_function) {
  std::ostringstream out;
  write_csv(out, {pair("uyvy", "bgra", {0.5, 0.9, 0.7}, {peer_at("libyuv", {2, 3, 4})}), pair("y", "y", {1, 1, 1})});
  const std::string text = out.str();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 7);
  EXPECT_TRUE(has(
      text, "\nuyvy,bgra,1920x1080,1000.0,500.0,900.0,0.9000,libyuv,\"Convert, libyuv\",close,linear,3000.0,3.0000\n"))
      << text;
  EXPECT_TRUE(has(text, "\ny,y,1920x16,1000.0,500.0,1000.0,1.0000,,,,,,\n"));
}

TEST(page_of_used_pairs, has_every_pair_and_function) {
  const results r = made_up_results({});
  const targets aims = aims_of_used_pairs();
  std::ostringstream out;
  write_html(out, {.machine = {}, .measured = r, .aims = aims, .used = two_pairs()});
  const std::string page = out.str();
  EXPECT_TRUE(has(page, "<h2>The pairs that people use most</h2>"));
  EXPECT_TRUE(has(page, "<h3>Missed: 3</h3>"));
  EXPECT_TRUE(has(page, "<li>libyuv: 2 close, 1 other algorithm</li>"));
  EXPECT_TRUE(has(page, "<td class=\"n\">0.50</td><td class=\"n\">0.90</td><td class=\"n\">0.70</td>")) << page;
  EXPECT_TRUE(
      has(page, "<td>libyuv</td><td>Convert, libyuv</td><td>close</td><td>linear</td><td class=\"n bad\">0.90</td>"));
  std::ostringstream without;
  write_html(without, {.machine = {}, .measured = r, .aims = aims});
  EXPECT_FALSE(has(without.str(), "people use most"));
}

TEST(performance_page_of_used_pairs, has_figures_labels_and_table) {
  const fs::path docs = fs::path(testing::TempDir()) / ("used_pairs_page_" + std::to_string(getpid()));
  fs::create_directories(docs);
  std::ofstream(docs / "performance.md")
      << "<!-- begin measured used pairs -->\nold\n<!-- end measured used pairs -->\n";
  refresh_performance_page(docs, two_pairs(), aims_of_used_pairs(), "abc");
  std::ifstream in(docs / "performance.md");
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  EXPECT_TRUE(has(text, ", commit abc.\n")) << text;
  EXPECT_TRUE(has(text, "\n| times as fast as zimg at 1920x1080 | 6.00 | 6.00 `uyvy:bgra` | 1 | 0 (0.97) |\n"));
  EXPECT_TRUE(has(text, "\n- libyuv: 2 close, 1 other algorithm\n"));
  EXPECT_TRUE(has(text, "\n| `v210:p010` | 0.30 | 0.80 | 0.10 | 1.0 \u2248 | | | |\n"));
  EXPECT_FALSE(has(text, "old"));
  fs::remove_all(docs);
}

}  // namespace
}  // namespace morvane::bench
