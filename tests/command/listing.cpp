// morvane formats, conversions, info and --version.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "catalogue/conversions.h"
#include "catalogue/formats.h"
#include "shell.h"

namespace morvane::tests {

namespace {

using nlohmann::json;

class listing : public command {
 protected:
  json printed(const std::string& line) const {
    const outcome o = run(line);
    EXPECT_EQ(o.exit_code, 0) << o.err;
    return json::parse(o.out);
  }
};

std::vector<std::string> lines(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> result;
  for (std::string line; std::getline(in, line);) result.push_back(line);
  return result;
}

TEST_F(listing, formats_prints_every_format_in_aligned_columns) {
  const outcome o = run("morvane formats");
  EXPECT_EQ(o.exit_code, 0);
  const std::vector<std::string> printed = lines(o.out);
  ASSERT_EQ(printed.size(), catalogue::formats.size() + 1);
  const std::size_t column = printed[0].find("DESCRIPTION");
  for (std::size_t i = 0; i < catalogue::formats.size(); ++i) {
    EXPECT_EQ(printed[i + 1].rfind(std::string(catalogue::formats[i].name) + " ", 0), 0u);
    EXPECT_EQ(printed[i + 1].substr(column), catalogue::formats[i].description);
  }
}

TEST_F(listing, formats_as_json) {
  const json all = printed("morvane formats --json");
  ASSERT_EQ(all.size(), catalogue::formats.size());
  const auto v210 = std::find_if(all.begin(), all.end(), [](const json& f) { return f["name"] == "v210"; });
  ASSERT_NE(v210, all.end());
  EXPECT_NEAR((*v210)["bytes_per_pixel"].get<double>(), 16.0 / 6, 1e-9);
  EXPECT_EQ((*v210)["planes"][0]["group_pixels"], 6);
  EXPECT_EQ((*v210)["other_names"]["fourcc"], "v210");
  EXPECT_TRUE((*v210)["other_names"]["v4l2"].is_null());
}

TEST_F(listing, rows_of_subsampled_planes) {
  const json all = printed("morvane formats --json");
  const auto nv12 = std::find_if(all.begin(), all.end(), [](const json& f) { return f["name"] == "y_uv_420"; });
  ASSERT_NE(nv12, all.end());
  EXPECT_EQ((*nv12)["bytes_per_pixel"], 1.5);
  EXPECT_EQ((*nv12)["height_multiple"], 2);
  EXPECT_EQ((*nv12)["planes"][0]["image_rows"], 1);
  EXPECT_EQ((*nv12)["planes"][1]["image_rows"], 2);
  const json i = printed("morvane info -f I420 -s 1920x1080 --json");
  EXPECT_EQ(i["format"], "y_u_v_420");
  EXPECT_EQ(i["frame_bytes"], 3110400);
  EXPECT_EQ(i["planes"][2], json({{"name", "cr"}, {"rows", 540}, {"stride", 960}, {"bytes", 518400}}));
  EXPECT_NE(run("morvane info -f NV12 -s 8x4").out.find("\ncbcr   2     8       16     Cb Cr\n"), std::string::npos);
}

TEST_F(listing, other_names_are_each_printed_once) {
  const std::vector<std::string> printed = lines(run("morvane formats").out);
  const auto y16 = std::find_if(printed.begin(), printed.end(), [](const auto& l) { return l.rfind("y16 ", 0) == 0; });
  ASSERT_NE(y16, printed.end());
  EXPECT_NE(y16->find("  Y16, gray16le, GRAY16_LE, L016  "), std::string::npos) << *y16;
}

TEST_F(listing, formats_of_a_name) {
  for (const char* name : {"NV12", "nv12", "y_uv_420", "420F", "v4l2_pix_fmt_nv12"}) {
    const std::vector<std::string> printed = lines(run(std::string("morvane formats ") + name).out);
    ASSERT_EQ(printed.size(), 2u) << name;
    EXPECT_EQ(printed[1].rfind("y_uv_420 ", 0), 0u) << printed[1];
  }
  const json both = printed("morvane formats AYUV --json");
  ASSERT_EQ(both.size(), 2u);
  EXPECT_EQ(both[0]["name"], "vuya");
  EXPECT_EQ(both[1]["name"], "ayuv");
  EXPECT_EQ(both[1]["other_names"]["apple"], "y408");
  EXPECT_EQ(both[0]["other_names"]["also"], "AYUV");
  const outcome unknown = run("morvane formats uyyv");
  EXPECT_EQ(unknown.exit_code, 2);
  EXPECT_EQ(unknown.err, "morvane: unknown format uyyv; nearest: uyvy, yuy2, y_u_v_420\n");
}

TEST_F(listing, conversions_prints_every_row_with_its_irregularity) {
  const outcome o = run("morvane conversions");
  EXPECT_EQ(o.exit_code, 0);
  const std::vector<std::string> printed = lines(o.out);
  ASSERT_EQ(printed.size(), catalogue::conversions.size() + 1);
  for (std::size_t i = 0; i < catalogue::conversions.size(); ++i) {
    const catalogue::conversion& c = catalogue::conversions[i];
    EXPECT_EQ(printed[i + 1].rfind(std::string(c.name) + " ", 0), 0u);
    EXPECT_NE(printed[i + 1].find(c.irregular), std::string::npos);
  }
}

TEST_F(listing, conversions_as_json) {
  const json all = printed("morvane conversions --json");
  ASSERT_EQ(all.size(), catalogue::conversions.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i]["name"], catalogue::conversions[i].name);
    EXPECT_EQ(all[i]["irregular"].is_null(), catalogue::conversions[i].irregular.empty());
    ASSERT_TRUE(all[i].contains("opacity_report")) << all[i]["name"];
    EXPECT_EQ(all[i]["opacity_report"], catalogue::conversions[i].extra == catalogue::argument::opacity)
        << all[i]["name"];
    if (all[i]["name"] == "uyvy::bgra") {
      EXPECT_EQ(all[i]["matrices"], json({601, 709}));
    }
    if (all[i]["name"] == "p216::rgbx_2020") {
      EXPECT_EQ(all[i]["matrices"], json({2020}));
    }
    EXPECT_EQ(all[i]["rescale"], catalogue::conversions[i].extra == catalogue::argument::rescale);
  }
}

TEST_F(listing, info_prints_strides_and_bytes) {
  const outcome o = run("morvane info -f v210 -s 1280x720");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_NE(o.out.find("v210   720   3456    2488320  Cb Y Cr Y"), std::string::npos) << o.out;
  EXPECT_NE(o.out.find("frame: 2488320 bytes"), std::string::npos) << o.out;
}

TEST_F(listing, info_counts_whole_groups_and_every_plane) {
  const json card = printed("morvane info -f yuyv_matrox_10 -s 18x2 --json");
  EXPECT_EQ(card["planes"][0]["stride"], 80);
  EXPECT_EQ(card["frame_bytes"], 160);
  const json p010 = printed("morvane info -f p010le -s 1920x1080 --json");
  EXPECT_EQ(p010["format"], "p010");
  EXPECT_EQ(p010["planes"][1], json({{"name", "cbcr"}, {"rows", 540}, {"stride", 3840}, {"bytes", 2073600}}));
  EXPECT_EQ(printed("morvane info -f I420 -s 7x5 --json")["frame_bytes"], 35 + 2 * 12);
  EXPECT_EQ(printed("morvane info -f vuya_f32 -s 3x3 --json")["frame_bytes"], 144);
  EXPECT_EQ(printed("morvane info -f pa16 -s 2x1 --json")["frame_bytes"], 12);
}

TEST_F(listing, info_as_json_under_the_name_of_another_program) {
  const json i = printed("morvane info -f YUYV422 -s 720x576 --json");
  EXPECT_EQ(i["format"], "yuy2");
  EXPECT_EQ(i["frame_bytes"], 829440);
  EXPECT_EQ(i["planes"][0]["stride"], 1440);
  EXPECT_EQ(i["planes"][0]["rows"], 576);
}

TEST_F(listing, info_of_a_file_by_its_name) {
  write("clip_8x4_uyvy.raw", bytes(192));
  for (const char* arguments :
       {"clip_8x4_uyvy.raw", "-f uyvy clip_8x4_uyvy.raw", "-s 8x4 ./clip_8x4_uyvy.raw", "clip_8x4_uyvy.raw -f UYVY"}) {
    const outcome o = run(std::string("morvane info ") + arguments);
    EXPECT_EQ(o.exit_code, 0);
    EXPECT_EQ(o.out.rfind("uyvy 8x4: ", 0), 0u) << o.out;
    EXPECT_NE(o.out.find("frame: 64 bytes\nfile: 3 frames\n"), std::string::npos) << o.out;
    EXPECT_EQ(o.err.rfind("morvane: taking ", 0), 0u) << o.err;
  }
  EXPECT_EQ(run("morvane info clip_8x4_uyvy.raw").err, "morvane: taking clip_8x4_uyvy.raw for uyvy 8x4, by its name\n");
  EXPECT_EQ(run("morvane info clip_8x4_uyvy.raw -s 4x4 -f y").err, "");
  write("foreman.y_uv_422.16X4.2.raw", bytes(128));
  EXPECT_EQ(printed("morvane info foreman.y_uv_422.16X4.2.raw --json")["format"], "y_uv_422");
  EXPECT_EQ(printed("morvane info foreman.y_uv_422.16X4.2.raw --json")["frames"], 1);
  EXPECT_TRUE(printed("morvane info -f uyvy -s 8x4 --json")["frames"].is_null());
}

TEST_F(listing, info_of_a_file_that_says_it_itself) {
  write("in.raw", bytes(64));
  quietly("morvane convert in.raw nv12_1x1.y4m -f uyvy -s 8x4 && morvane convert in.raw a.png -f uyvy -s 8x4");
  EXPECT_EQ(run("morvane info nv12_1x1.y4m").out.rfind("y_u_v_420 8x4: ", 0), 0u);
  EXPECT_EQ(run("morvane info nv12_1x1.y4m").err, "");
  EXPECT_EQ(run("morvane info a.png").out.rfind("bgrx 8x4: ", 0), 0u);
}

TEST_F(listing, version) {
  const outcome o = run("morvane --version");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(o.out.rfind("morvane ", 0), 0u);
}

TEST_F(listing, a_full_disk_is_noticed) {
  const outcome o = run("morvane formats > /dev/full");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(o.err, "morvane: cannot write standard output: No space left on device\n");
}

}  // namespace

}  // namespace morvane::tests
