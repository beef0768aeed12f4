// What the checked interface tells of formats and entry points, and the samples of rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "catalogue/conversions.h"
#include "morvane.hpp"

namespace {

namespace catalogue = morvane::catalogue;

morvane_error error_of_format(const morvane_format format, morvane_format_info* info) {
  morvane_error e{};
  morvane_describe_format(format, info, &e);
  return e;
}

TEST(facts, of_every_format_are_those_of_the_catalogue) {
  for (const catalogue::format& f : catalogue::formats) {
    SCOPED_TRACE(f.name);
    const morvane_format_info info = morvane::describe(morvane::format_named(std::string(f.name)));
    EXPECT_EQ(info.format, f.id);
    EXPECT_EQ(info.name, f.name);
    EXPECT_EQ(info.description, f.description);
    EXPECT_EQ(info.fourcc, f.fourcc);
    EXPECT_EQ(info.ffmpeg, f.ffmpeg);
    EXPECT_EQ(info.v4l2, f.v4l2);
    EXPECT_EQ(info.gstreamer, f.gstreamer);
    EXPECT_EQ(info.apple, f.apple);
    EXPECT_EQ(info.also, f.also);
    EXPECT_EQ(info.has_alpha != 0, f.alpha);
    EXPECT_EQ(info.width_multiple, f.width_multiple);
    EXPECT_EQ(info.height_multiple, f.height_multiple);
    ASSERT_EQ(static_cast<std::size_t>(info.plane_count), f.plane_count());
    for (std::size_t i = 0; i < f.plane_count(); ++i) {
      EXPECT_EQ(info.planes[i].name, f.planes[i].name);
      EXPECT_EQ(info.planes[i].components, f.planes[i].components);
      EXPECT_EQ(info.planes[i].group_bytes, f.planes[i].group_bytes);
      EXPECT_EQ(info.planes[i].group_pixels, f.planes[i].group_pixels);
      EXPECT_EQ(info.planes[i].image_rows, f.planes[i].image_rows);
      EXPECT_EQ(info.planes[i].bits, f.planes[i].depth());
    }
  }
}

TEST(facts, count_the_samples_of_each_component_in_a_group) {
  const morvane_plane_info v210 = morvane::describe(morvane::format_named("v210")).planes[0];
  EXPECT_EQ(std::vector<int>(v210.samples, v210.samples + 5), (std::vector{6, 3, 3, 0, 0}));
  const morvane_plane_info bgrx = morvane::describe(morvane::format_named("bgrx")).planes[0];
  EXPECT_EQ(std::vector<int>(bgrx.samples, bgrx.samples + 5), (std::vector{1, 1, 1, 0, 1}));
  EXPECT_EQ(morvane::describe(morvane::format_named("vuya_f32")).planes[0].is_float, 1);
  EXPECT_EQ(bgrx.is_float, 0);
}

TEST(facts, of_models) {
  const auto model = [](const char* name) { return morvane::describe(morvane::format_named(name)).model; };
  EXPECT_EQ(model("uyvy"), MORVANE_YCBCR);
  EXPECT_EQ(model("bgra"), MORVANE_RGB);
  EXPECT_EQ(model("y"), MORVANE_LUMA);
  EXPECT_EQ(model("L"), MORVANE_LUMA);
  EXPECT_EQ(model("alpha"), MORVANE_ALPHA);
  for (const catalogue::format& f : catalogue::formats)
    EXPECT_EQ(morvane::describe(f.id).model == MORVANE_CHROMA, f.model == catalogue::color_model::chroma) << f.name;
}

TEST(facts, of_a_format_that_there_is_not_are_refused) {
  morvane_format_info info{};
  info.struct_size = sizeof info;
  const morvane_error e = error_of_format(4711, &info);
  EXPECT_EQ(e.code, MORVANE_UNKNOWN_FORMAT);
  EXPECT_STREQ(e.argument, "format");
  EXPECT_EQ(e.got, 4711);
  EXPECT_EQ(info.name, nullptr);
  EXPECT_EQ(error_of_format(1, nullptr).code, MORVANE_NULL);
  info.struct_size = 8;
  EXPECT_EQ(error_of_format(1, &info).code, MORVANE_STRUCT_SIZE);
}

TEST(formats_called, know_the_names_of_other_systems) {
  const auto called = [](const char* name) { return morvane::formats_called(name); };
  const auto named = [](const char* name) { return std::vector{morvane::format_named(name)}; };
  EXPECT_EQ(called("nv12"), named("y_uv_420"));
  EXPECT_EQ(called("NV12"), named("y_uv_420"));
  EXPECT_EQ(called("uyvy422"), named("uyvy"));
  EXPECT_EQ(called("YUY2"), named("yuy2"));
  EXPECT_EQ(called("V4L2_PIX_FMT_GREY"), named("y"));
  EXPECT_EQ(called("grey"), named("y"));
  EXPECT_EQ(called("y16"), named("y16"));
  EXPECT_EQ(called("yuv420p10"), named("y_u_v_420_10u16"));
  EXPECT_EQ(called("Gray10"), named("y_10u16"));
  EXPECT_EQ(called("420F"), named("y_uv_420"));
  EXPECT_EQ(called("yu12"), named("y_u_v_420"));
  EXPECT_EQ(called("2vuy"), named("uyvy"));
  EXPECT_TRUE(called("no such format").empty());
  EXPECT_TRUE(called("").empty());
  EXPECT_EQ(morvane_formats_called(nullptr, nullptr, 0), 0);
}

// The FourCC is one layout, the name in GStreamer another one.
TEST(formats_called, by_an_ambiguous_name_are_all) {
  const std::vector both = {morvane::format_named("vuya"), morvane::format_named("ayuv")};
  EXPECT_EQ(morvane::formats_called("AYUV"), both);
  EXPECT_EQ(morvane::formats_called("Ayuv"), both);
  EXPECT_EQ(morvane::formats_called("ayuv"), std::vector{morvane::format_named("ayuv")});
  EXPECT_EQ(morvane::formats_called("AYUV32"), std::vector{morvane::format_named("ayuv")});
}

// Whatever their case.
TEST(formats_called, are_found_by_the_names_that_people_use) {
  for (const char* name :
       {"nv12",       "nv16",       "nv21",       "nv61",      "nv24",      "nv42",      "yv12",      "yuv420p",
        "yuv422p",    "yuv444p",    "yuva420p",   "yuva422p",  "yuva444p",  "uyvy422",   "yuyv422",   "yvyu422",
        "AYUV32",     "vuya",       "rgb24",      "bgr24",     "argb",      "abgr",      "rgba",      "bgra",
        "0rgb",       "0bgr",       "rgb0",       "bgr0",      "gbrp",      "gbrap",     "yuv420p10", "yuv422p10",
        "yuv444p10",  "yuv420p12",  "yuv422p12",  "yuv444p12", "yuv420p16", "yuv422p16", "yuv444p16", "yuva422p10",
        "yuva444p10", "yuva444p12", "yuva444p16", "gbrp10",    "gbrp12",    "gbrp16",    "gbrap10",   "gbrap12",
        "gbrap16",    "gray",       "gray10",     "gray12",    "gray16",    "p010",      "p012",      "p016",
        "p210",       "p212",       "p216",       "p410",      "p412",      "p416",      "xv36",      "y416",
        "ayuv64",     "rgba64",     "bgra64",     "v210"}) {
    std::string word = name;
    const std::vector<morvane_format> found = morvane::formats_called(word);
    EXPECT_EQ(found.size(), 1U) << word;
    for (char& c : word) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(morvane::formats_called(word), found) << word;
  }
}

TEST(formats_called, by_their_own_names_are_found_alone) {
  for (const catalogue::format& f : catalogue::formats)
    EXPECT_EQ(morvane::formats_called(std::string(f.name)), std::vector{morvane_format{f.id}}) << f.name;
}

TEST(facts, of_every_entry_point_are_those_of_the_catalogue) {
  const std::vector<morvane_entry_point> all = morvane::entry_points();
  ASSERT_EQ(all.size(), catalogue::conversions.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    const catalogue::conversion& c = catalogue::conversions[i];
    SCOPED_TRACE(c.name);
    EXPECT_EQ(all[i].name, c.name);
    EXPECT_EQ(all[i].irregular, c.irregular);
    EXPECT_EQ(morvane::name_of(all[i].source), c.source);
    EXPECT_EQ(morvane::name_of(all[i].destination), c.destination);
    EXPECT_EQ(all[i].rescales != 0, c.extra == catalogue::argument::rescale);
    EXPECT_EQ(all[i].reports_opacity != 0, c.extra == catalogue::argument::opacity);
    std::set<int> expected;
    for (const catalogue::matrix m : catalogue::matrices)
      if (offers(c, m)) expected.insert(number_of(m));
    std::set<int> got(all[i].matrices, all[i].matrices + MORVANE_MAX_MATRICES);
    got.erase(0);
    EXPECT_EQ(got, expected);
  }
}

TEST(facts, of_an_entry_point_beyond_the_last_are_refused) {
  morvane_entry_point entry_point{};
  entry_point.struct_size = sizeof entry_point;
  for (const std::int32_t index : {-1, morvane_entry_point_count()}) {
    morvane_error e{};
    EXPECT_EQ(morvane_describe_entry_point(index, &entry_point, &e), MORVANE_OPTION);
    EXPECT_STREQ(e.argument, "index");
    EXPECT_EQ(e.got, index);
    EXPECT_EQ(e.needed, morvane_entry_point_count());
  }
  EXPECT_EQ(morvane_describe_entry_point(0, nullptr, nullptr), MORVANE_NULL);
}

// Two rows of three pixels, which end with the second half of a pair.
struct three_pixels {
  morvane::description d = {.format = morvane::format_named("uyvy"), .width = 3, .height = 2};
  std::uint8_t bytes[16] = {10, 1, 20, 2, 11, 3, 21, 4, 30, 5, 40, 6, 31, 7, 41, 8};
  morvane_picture picture() { return morvane::picture_in(bytes, morvane::lay_out(d)); }
};

TEST(read_row, gives_each_component_a_line_with_the_bits_at_the_top) {
  three_pixels p;
  std::vector<std::uint16_t> luma(4), cb(4), cr(4);
  morvane::read_row(p.d, p.picture(), 0, 1, {luma.data(), cb.data(), cr.data()}, 4);
  EXPECT_EQ(luma, (std::vector<std::uint16_t>{5 << 8, 6 << 8, 7 << 8, 8 << 8}));
  EXPECT_EQ(cb, (std::vector<std::uint16_t>{30 << 8, 31 << 8, 0, 0}));
  EXPECT_EQ(cr, (std::vector<std::uint16_t>{40 << 8, 41 << 8, 0, 0}));
}

TEST(read_row, leaves_out_what_is_unused_wherever_it_is) {
  std::uint8_t bytes[8] = {9, 10, 20, 30, 9, 11, 21, 31};
  const morvane::description d = {.format = morvane::format_named("xrgb"), .width = 2, .height = 1};
  std::vector<std::uint16_t> r(2), g(2), b(2);
  morvane::read_row(d, {sizeof(morvane_picture), {bytes}, {8}, {8}}, 0, 0, {r.data(), g.data(), b.data()}, 2);
  EXPECT_EQ(r, (std::vector<std::uint16_t>{10 << 8, 11 << 8}));
  EXPECT_EQ(g, (std::vector<std::uint16_t>{20 << 8, 21 << 8}));
  EXPECT_EQ(b, (std::vector<std::uint16_t>{30 << 8, 31 << 8}));
}

// Lines that end with the last sample of the last group, beside samples of another length of row.
TEST(read_row, writes_no_sample_behind_those_of_whole_groups) {
  constexpr std::uint16_t untouched = 0xa5a5;
  for (const morvane::format f : morvane::formats())
    for (const int width : {1, 5, 48, 97, 480, 481, 1001}) {
      SCOPED_TRACE(std::string(morvane::name_of(f)) + " " + std::to_string(width));
      const morvane::description d = {.format = f, .width = width, .height = 1};
      const morvane_plane_info plane = morvane::describe(f).planes[0];
      morvane::image picture(d);
      for (std::size_t i = 0; i < picture.bytes(); ++i) picture.data()[i] = static_cast<std::uint8_t>(i * 37 % 63);
      const int groups = (width + plane.group_pixels - 1) / plane.group_pixels;
      std::vector<std::vector<std::uint16_t>> samples;
      morvane::component_lines lines{};
      std::int64_t room = 0;
      for (std::size_t i = 0; i < MORVANE_X; ++i) {
        const int count = plane.samples[i] * groups;
        samples.emplace_back(static_cast<std::size_t>(count) + 64, untouched);
        lines[i] = count > 0 ? samples[i].data() : nullptr;
        room = std::max<std::int64_t>(room, count);
      }
      morvane::read_row(d, picture.picture(), 0, 0, lines, room);
      for (std::size_t i = 0; i < MORVANE_X; ++i) {
        const auto end = samples[i].begin() + plane.samples[i] * groups;
        EXPECT_EQ(std::count(end, samples[i].end(), untouched), 64);
        EXPECT_EQ(std::count(samples[i].begin(), end, untouched), 0);
      }
    }
}

TEST(read_row, refuses_planes_rows_and_lines_that_there_are_not) {
  three_pixels p;
  std::vector<std::uint16_t> luma(4, 7), cb(4, 7), cr(4, 7);
  const morvane::component_lines lines = {luma.data(), cb.data(), cr.data()};
  const auto code = [&](const int plane, const int row, const morvane::component_lines& to, const int room) {
    try {
      morvane::read_row(p.d, p.picture(), plane, row, to, room);
    } catch (const morvane::error& e) {
      return e.argument() + " " + std::to_string(e.got()) + " " + std::to_string(e.needed());
    }
    return std::string("nothing");
  };
  EXPECT_EQ(code(1, 0, lines, 4), "plane 1 1");
  EXPECT_EQ(code(-1, 0, lines, 4), "plane -1 1");
  EXPECT_EQ(code(0, 2, lines, 4), "row 2 2");
  EXPECT_EQ(code(0, -1, lines, 4), "row -1 2");
  EXPECT_EQ(code(0, 0, lines, 3), "room 3 4");
  EXPECT_EQ(code(0, 0, {luma.data(), nullptr, cr.data()}, 4), "lines[1] 0 2");
  EXPECT_EQ(luma, std::vector<std::uint16_t>(4, 7));
}

}  // namespace
