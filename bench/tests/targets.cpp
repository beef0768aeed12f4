// bench/targets.json: what it says of a row, and what is wrong with a broken one.
#include "report/targets.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <sstream>

#include "made_up.h"

namespace morvane::bench {
namespace {

using nlohmann::json;

const std::filesystem::path file = MORVANE_TARGETS;

// What reading the file says after an edit of its content.
std::string complaint_after(const std::function<void(json&)>& edit) {
  std::ifstream in(file);
  json content = json::parse(in);
  edit(content);
  std::istringstream edited(content.dump());
  try {
    read_targets(edited, "targets.json");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return {};
}

TEST(targets, name_only_what_there_is) {
  EXPECT_NO_THROW(read_targets(file));
}

TEST(targets, hold_every_row_but_those_that_touch_next_to_nothing) {
  const targets aims = read_targets(file);
  for (const row& r : all_rows()) EXPECT_EQ(aims.of(r) == nullptr, r.conversion->name == "uyvy::ya_uv") << r.name;
  EXPECT_EQ(aims.of(row_named("y::y"))->what, kind::copy);
  EXPECT_EQ(aims.of(row_named("bgrx::uyvy"))->share_of_memcpy, (std::array{0.5, 0.75, 0.95}));
}

TEST(targets, some_rows_have_their_own_beside_libyuv_in_cache) {
  const targets aims = read_targets(file);
  EXPECT_EQ(aims.least_beside(row_named("bgrx::uyvy"), "libyuv", in_cache), 3.0);
  EXPECT_EQ(aims.least_beside(row_named("bgra::uyvy_a"), "libyuv", in_cache), 3.0);
  EXPECT_EQ(aims.least_beside(row_named("uyvy::bgra_601"), "libyuv", in_cache), 1.2);
  EXPECT_EQ(aims.least_beside(row_named("uyvy_a::bgra"), "libyuv", in_cache), aims.never_slower());
  EXPECT_EQ(aims.least_beside(row_named("bgrx::uyvy"), "libyuv", full_hd), aims.never_slower());
  EXPECT_EQ(aims.least_beside(row_named("bgrx::uyvy"), "swscale", in_cache), aims.never_slower());
}

TEST(targets, allow_as_much_less_than_one_as_noise) {
  EXPECT_DOUBLE_EQ(made_up_targets().never_slower(), 0.97);
}

TEST(targets, the_first_reason_for_a_row_counts) {
  targets aims = made_up_targets();
  aims.speed = {{.about = {.rows = {"y::y"}}, .because = "named"},
                {.about = {.what = kind::copy}, .because = "copy"},
                {.about = {}, .because = "any"}};
  EXPECT_EQ(aims.why(row_named("y::y")), "named");
  EXPECT_EQ(aims.why(row_named("uyvy::uyvy")), "copy");
  EXPECT_EQ(aims.why(row_named("uyvy::yuy2")), "any");
  aims.speed.clear();
  EXPECT_EQ(aims.why(row_named("y::y")), "");
}

TEST(targets, hold_pairs_of_formats) {
  const pair_targets aims = read_targets(file).pairs;
  EXPECT_EQ(aims.share_of_memcpy, 0.3);
  EXPECT_EQ(aims.median_share_of_memcpy, 0.45);
  EXPECT_EQ(aims.median_of_swscale, 8);
  EXPECT_EQ(aims.times_tiny_picture, 100);
  EXPECT_EQ(aims.two_threads, 1.8);
  EXPECT_EQ(aims.on_threads.front().name(), "uyvy:uyvy");
}

TEST(targets, hold_the_pairs_that_people_use) {
  const used_targets aims = read_targets(file).pairs.used;
  EXPECT_EQ(aims.share_of_memcpy[0], 0.35);
  EXPECT_EQ(aims.share_of_memcpy[1], 0.85);
  EXPECT_EQ(aims.share_of_memcpy[2], 0);
  const auto has = [&aims](const char* name) {
    return std::find(aims.pairs.begin(), aims.pairs.end(), pairs_named(name).front()) != aims.pairs.end();
  };
  for (const char* name : {"nv12:bgra", "bgra:yuv422p", "R12L:v210", "v210:uyvy", "p010:rgb48", "bgra:pa16"})
    EXPECT_TRUE(has(name)) << name;
  for (const char* name : {"bgra:bgra", "uyvy:rgb48", "yuy2:v210"}) EXPECT_FALSE(has(name)) << name;
  for (const format_pair& p : aims.pairs) EXPECT_EQ(std::count(aims.pairs.begin(), aims.pairs.end(), p), 1) << p.name();
}

TEST(targets, the_first_reason_for_a_pair_counts) {
  const pair_targets aims{
      .reasons = {{.about = {.source = {"uyvy"}, .destination = {"bgra", "rgba"}}, .because = "both"},
                  {.about = {.source = {"uyvy"}}, .because = "source"}}};
  EXPECT_EQ(aims.why("uyvy", "rgba"), "both");
  EXPECT_EQ(aims.why("uyvy", "y"), "source");
  EXPECT_EQ(aims.why("y", "rgba"), "");
}

TEST(selector, is_for_rows_with_everything_that_it_names) {
  const selector s{.what = kind::ycbcr_to_rgb, .source = {"uyvy"}, .destination = {"bgra", "rgba"}};
  EXPECT_TRUE(s.selects(row_named("uyvy::bgra_601")));
  EXPECT_TRUE(s.selects(row_named("uyvy::rgba")));
  EXPECT_FALSE(s.selects(row_named("uyvy::bgrx")));
  EXPECT_FALSE(s.selects(row_named("uyvy_a::bgra")));
  EXPECT_FALSE(s.selects(row_named("L::bgra")));
}

TEST(selector, knows_what_writes_only_and_what_writes_most) {
  const selector only{.moved = traffic::writes_only};
  EXPECT_TRUE(only.selects(row_named("black::uyvy")));
  EXPECT_FALSE(only.selects(row_named("y::y16")));
  const selector most{.moved = traffic::writes_most};
  EXPECT_TRUE(most.selects(row_named("y::y16")));
  EXPECT_TRUE(most.selects(row_named("uyvy::bgr")));
  EXPECT_FALSE(most.selects(row_named("y_uv::y_uv_to422")));
  EXPECT_FALSE(most.selects(row_named("bgra::uyvy")));
}

TEST(wrong_targets, are_named_with_their_place) {
  EXPECT_EQ(complaint_after([](json& j) { j["examples"][1] = "uyvy::nothing"; }),
            "targets.json: examples: 2: there is no row 'uyvy::nothing'");
  EXPECT_EQ(complaint_after([](json& j) { j["reasons"]["speed"][0]["rows"][0] = "x"; }),
            "targets.json: reasons: speed: 1: rows: 1: there is no row 'x'");
  EXPECT_EQ(complaint_after([](json& j) { j["touch_next_to_nothing"] = {"x"}; }),
            "targets.json: touch_next_to_nothing: 1: there is no row 'x'");
  EXPECT_EQ(complaint_after([](json& j) { j["libraries"][0]["destination"][0] = "x"; }),
            "targets.json: libraries: 1: destination: 1: there is no format 'x'");
  EXPECT_EQ(complaint_after([](json& j) { j["libraries"][0]["kind"] = "x"; }),
            "targets.json: libraries: 1: kind: there is no kind 'x'");
  EXPECT_EQ(complaint_after([](json& j) { j["libraries"][0]["library"] = "x"; }),
            "targets.json: libraries: 1: library: there is no library 'x'");
  EXPECT_EQ(complaint_after([](json& j) { j["libraries"][0]["size"] = "1x1"; }),
            "targets.json: libraries: 1: size: there is no size '1x1'");
  EXPECT_EQ(complaint_after([](json& j) { j["reasons"]["speed"][0]["traffic"] = "x"; }),
            "targets.json: reasons: speed: 1: traffic: there is no traffic 'x'");
}

TEST(wrong_targets, may_be_those_of_pairs) {
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"]["on_threads"][0] = "uyvy:x"; }),
            "targets.json: pairs: on_threads: 1: there is no format 'x' (uyvy:x)");
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"]["on_threads"][1] = "uyvy:*"; }),
            "targets.json: pairs: on_threads: 2: 'uyvy:*' is more than one pair");
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"]["on_threads"][0] = "alpha:y"; }),
            "targets.json: pairs: on_threads: 1: there is no way for alpha:y");
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"].erase("two_threads"); }),
            "targets.json: pairs: 'two_threads' is missing");
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"]["shares"] = 1; }),
            "targets.json: pairs: 'shares' has no meaning here");
  EXPECT_EQ(complaint_after([](json& j) {
              j["pairs"]["reasons"] = {{{"source", {"x"}}, {"because", "b"}}};
            }),
            "targets.json: pairs: reasons: 1: source: 1: there is no format 'x'");
  EXPECT_EQ(complaint_after([](json& j) {
              j["pairs"]["reasons"] = {{{"kind", "copy"}, {"because", "b"}}};
            }),
            "targets.json: pairs: reasons: 1: 'kind' has no meaning here");
}

TEST(wrong_targets, may_be_those_of_used_pairs) {
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"]["used"]["pairs"][0]["from"][1] = "x"; }),
            "targets.json: pairs: used: pairs: 1: from: 2: there is no format 'x'");
  EXPECT_EQ(complaint_after([](json& j) {
              j["pairs"]["used"]["pairs"][1] = {{"from", {"alpha"}}, {"to", {"y"}}};
            }),
            "targets.json: pairs: used: pairs: 2: there is no way for alpha:y");
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"]["used"]["pairs"][0].erase("to"); }),
            "targets.json: pairs: used: pairs: 1: 'to' is missing");
  EXPECT_EQ(complaint_after([](json& j) { j["pairs"]["used"]["share_of_memcpy"]["1x1"] = 1; }),
            "targets.json: pairs: used: share_of_memcpy: '1x1' has no meaning here");
}

TEST(wrong_targets, may_lack_something) {
  EXPECT_EQ(complaint_after([](json& j) { j.erase("noise"); }), "targets.json: 'noise' is missing");
  EXPECT_EQ(complaint_after([](json& j) { j["kinds"].erase("copy"); }), "targets.json: kinds: 'copy' is missing");
  EXPECT_EQ(complaint_after([](json& j) { j["kinds"]["copy"]["share_of_memcpy"].erase("1920x16"); }),
            "targets.json: kinds: copy: share_of_memcpy: '1920x16' is missing");
}

TEST(wrong_targets, may_hold_what_has_no_meaning) {
  EXPECT_EQ(complaint_after([](json& j) { j["nois"] = 1; }), "targets.json: 'nois' has no meaning here");
  EXPECT_EQ(complaint_after([](json& j) { j["kinds"]["copies"] = j["kinds"]["copy"]; }),
            "targets.json: kinds: 'copies' has no meaning here");
  EXPECT_EQ(complaint_after([](json& j) { j["reasons"]["short_rows"][0]["row"] = "y::y"; }),
            "targets.json: reasons: short_rows: 1: 'row' has no meaning here");
}

TEST(wrong_targets, may_be_of_another_type) {
  EXPECT_EQ(complaint_after([](json& j) { j["noise"] = "0.03"; }), "targets.json: noise: a number is wanted");
  EXPECT_EQ(complaint_after([](json& j) { j["examples"] = "y::y"; }), "targets.json: examples: a list is wanted");
  EXPECT_EQ(complaint_after([](json& j) { j["kinds"] = 1; }), "targets.json: kinds: an object is wanted");
}

TEST(wrong_targets, may_be_no_json_or_not_there) {
  std::istringstream broken("{");
  EXPECT_THROW(read_targets(broken, "targets.json"), std::runtime_error);
  EXPECT_THROW(read_targets(file.parent_path() / "no_such_file.json"), std::runtime_error);
}

}  // namespace
}  // namespace morvane::bench
