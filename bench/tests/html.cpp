// The numbers of the report's page, and which of them it marks as bad.
#include "report/html.h"

#include <gtest/gtest.h>

#include <sstream>

#include "made_up.h"

namespace morvane::bench {
namespace {

std::string page_of(std::vector<measurement> all, std::vector<arm_figure> arm = {}) {
  const results r = made_up_results(std::move(all));
  const targets aims = made_up_targets();
  std::ostringstream out;
  write_html(out, {{{"processor", "<fast>"}}, r, aims, std::move(arm)});
  return out.str();
}

// The part of the page from one heading to the next.
std::string section(const std::string& page, const std::string& heading) {
  const std::size_t begin = page.find("<h2>" + heading + "</h2>");
  if (begin == std::string::npos) return "no such section";
  return page.substr(begin, page.find("<h2>", begin + 1) - begin);
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t result = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++result;
  return result;
}

void expect_part(const std::string& text, const std::string& part) {
  EXPECT_EQ(count(text, part), 1) << part << "\nin\n" << text;
}

std::vector<measurement> three_backends() {
  return {made_up("y::y", "plain", {in_cache}, 4000), made_up("y::y", "wide", {in_cache}, 2000),
          made_up("y::y", "widest", {in_cache}, 2500)};
}

TEST(page, escapes_what_html_would_read) {
  expect_part(page_of({}), "<td>&lt;fast&gt;</td>");
}

TEST(page, shows_every_backend_of_a_measurement) {
  const std::string part = section(page_of(three_backends()), "Every measurement");
  expect_part(part,
              "<tr><td>y::y</td><td class=\"wide\">copy</td>"
              "<td class=\"n\">1.5</td><td class=\"n\">3.0</td><td class=\"n\">2.4</td>"
              "<td class=\"n\">0.25</td><td class=\"n\">0.50</td><td class=\"n\">0.40</td>"
              "<td class=\"n\">2.00</td><td class=\"n\">1.60</td><td class=\"n\">2.5000</td></tr>");
  EXPECT_EQ(count(part, "<th class=\"group\" colspan=\"3\">of memcpy</th>"), all_places().size());
  EXPECT_EQ(count(part, "<th class=\"group\" colspan=\"2\">over plain</th>"), all_places().size());
}

TEST(page, compares_shapes_with_tight_planes_on_each_backend) {
  const std::string part = section(
      page_of({made_up("y::y", "wide", {in_cache}, 1000), made_up("y::y", "wide", {in_cache, shape::odd}, 4000)}),
      "Every measurement");
  expect_part(part,
              "<td class=\"n\">0.25</td><td class=\"n weak\">-</td><td class=\"n weak\">-</td>"
              "<td class=\"n\">0.25</td><td class=\"n weak\">-</td>");
}

TEST(page, shows_each_backend_beside_the_next_narrower_one) {
  const std::string part = section(page_of(three_backends()), "Each backend beside the next narrower one");
  expect_part(part, "<h3>wide beside plain</h3>");
  expect_part(part, "<h3>widest beside wide</h3>");
  expect_part(part, "<tr><td>y::y</td><td class=\"n\">2.00</td>");
  expect_part(part, "<tr><td>y::y</td><td class=\"n bad\">0.80</td>");
  EXPECT_EQ(count(part, "<td>all</td>"), 2);
}

TEST(page, shows_gains_below_their_size_and_shape) {
  std::vector<measurement> all;
  const auto add = [&all](const place& where, double gain) {
    all.push_back(made_up("y::y", "plain", where, 1000 * gain));
    all.push_back(made_up("y::y", "wide", where, 1000));
  };
  add({in_cache}, 2);
  add({full_hd, shape::odd}, 3);
  add({short_rows, shape::padded}, 4);
  const std::string part = section(page_of(all), "Each backend beside the next narrower one");
  const std::string blank = "<td class=\"n weak\">-</td>";
  const std::string gains = "<td class=\"n\">2.00</td>" + blank + blank + blank + blank + blank +
                            "<td class=\"n\">3.00</td>" + blank + blank + blank + blank + blank +
                            "<td class=\"n\">4.00</td></tr>";
  expect_part(part, "<td>y::y</td>" + gains);
  expect_part(part, "<td>copy</td>" + gains);
  expect_part(part, "<td>all</td>" + gains);
  const std::string shapes_of_a_size =
      "<th class=\"n\">tight</th><th class=\"n\">padded</th><th class=\"n\">odd</th><th class=\"n\">unaligned</th>";
  const std::string head =
      "<th class=\"group\" colspan=\"4\">1920x16</th><th class=\"group\" colspan=\"4\">1920x1080</th>"
      "<th class=\"group\" colspan=\"4\">3840x2160</th><th class=\"group\" colspan=\"1\">64x480</th>";
  EXPECT_EQ(count(part, head), 4);
  EXPECT_EQ(count(part, shapes_of_a_size + shapes_of_a_size + shapes_of_a_size + "<th class=\"n\">padded</th>"), 4);
}

TEST(page, has_no_steps_where_there_is_one_backend) {
  const results r({}, {"only"}, {});
  const targets aims = made_up_targets();
  std::ostringstream out;
  write_html(out, {{}, r, aims, {}});
  EXPECT_EQ(section(out.str(), "Each backend beside the next narrower one"), "no such section");
}

TEST(page, lists_the_targets_and_what_misses_them) {
  const std::string part = section(page_of(three_backends()), "Targets");
  expect_part(part, "<td>copy</td><td class=\"n\">0.50</td><td class=\"n\">0.70</td><td class=\"n\">0.90</td>");
  expect_part(part, "<h3>Missed: 2</h3>");
  expect_part(part,
              "<td>1920x16, tight</td><td>of memcpy</td><td class=\"wide\">speed</td>"
              "<td class=\"n bad\">0.40</td><td class=\"n\">0.50</td>");
  expect_part(part, "<td>of wide</td>");
}

TEST(page, compares_with_other_libraries) {
  const std::string part =
      section(page_of({made_up("y::y", "widest", {in_cache}, 1000), made_up_peer("y::y", "libyuv", {in_cache}, 500),
                       made_up("y::y", "widest", {full_hd}, 1000), made_up_peer("y::y", "libyuv", {full_hd}, 3000)}),
              "Beside other libraries");
  expect_part(part,
              "<td>y::y</td><td>libyuv</td><td>Convert, twice</td><td>close</td>"
              "<td class=\"n bad\">0.50</td><td class=\"n\">3.00</td><td class=\"n weak\">-</td>");
}

TEST(page, shows_what_two_threads_gain) {
  measurement two = made_up("y::y", "widest", {ultra_hd}, 500);
  two.threads = 2;
  const std::string part = section(page_of({made_up("y::y", "widest", {ultra_hd}, 1000), two}), "Threads");
  expect_part(part, "<td>y::y</td><td class=\"n\">6.0</td><td class=\"n\">12.0</td><td class=\"n\">2.00</td>");
}

TEST(page, shows_arm_beside_libyuv) {
  const std::string part = section(
      page_of({}, {{.row = "y::y", .runner = "neon", .instructions = 1, .n1_cycles = 2, .v1_cycles = 1, .modelled = 1},
                   {.row = "y::y", .runner = "libyuv", .instructions = 3, .n1_cycles = 1, .v1_cycles = 1}}),
      "64-bit Arm");
  expect_part(part,
              "<td class=\"n\">1.000</td><td class=\"n\">(3.000)</td>"
              "<td class=\"n bad\">2.000</td><td class=\"n\">(1.000)</td>"
              "<td class=\"n\">1.000</td><td class=\"n\">(1.000)</td><td class=\"n\">100 %</td>");
  expect_part(part, "Of 1 conversions that libyuv has too, 1 are behind it");
}

}  // namespace
}  // namespace morvane::bench
