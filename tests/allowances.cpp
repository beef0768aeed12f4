// What the catalogue says of every conversion, written down a second time: a list of rows for each property. And where
// a row may touch more than its pixels, that it does: an allowance that no call uses would only keep the checker from
// seeing what is wrong there.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/conversions.h"
#include "checker/content.h"
#include "checker/geometry.h"
#include "recorder.h"
#include "support.h"

namespace morvane::tests {
namespace {

using catalogue::argument;
using catalogue::call;
using catalogue::conversion;
using catalogue::matrix;
using catalogue::overlap;
using catalogue::plane;

using names = std::set<std::string>;

names list(std::string_view text) {
  names result;
  std::istringstream words{std::string(text)};
  for (std::string word; words >> word;) result.insert(word);
  return result;
}

names rows_that(const std::function<bool(const conversion&)>& have) {
  names result;
  for (const conversion& row : catalogue::conversions)
    if (have(row)) result.emplace(row.name);
  return result;
}

TEST(allowances, bytes_past_every_pixel) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.bytes_past_per_pixel == 1; }),
            list("bgr::bgr bgr_601::bgr_601 bgr_709::bgr_709"));
  EXPECT_EQ(rows_that([](const conversion& row) { return row.bytes_past_per_pixel > 1; }), names());
}

TEST(allowances, completed_pairs) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.completes_pair; }), list(R"(
      bgr::uyvy uyvy::bgr uyvy::bgr_601 uyvy::bgr_709
      uyvy::y uyvy::ycbcrx cbcr_8_420::cbcr_16_422
      uyvy::ya_uv uyvy_a::ya_uv uyvy_a::uyvy uyvy_a::ycbcra uyvy_a::crcbya
      ycbcra::uyvy_a ycbcra::uyvy vuya::uyvy_a vuya::uyvy ycbcrx::uyvy vuyx::uyvy
      uyvy::p216 ycbcra::pa16 pa16::p216 pa16::vuya_16 pa16::vuya_f32
      yuyv_matrox_10::uyvy yuyv_matrox_10::p216 yuyv_matrox_10::black
      p216::yuyv_matrox_10 pa16::yuyv_matrox_10 alpha_u16::yuyv_matrox_10)"));
}

TEST(allowances, completed_row_pairs) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.completes_row_pair; }), list("y_uv::p216"));
}

TEST(allowances, copied_padding) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.copies_padding == "cbcr"; }), list("pa16::ya_uv"));
  EXPECT_EQ(rows_that([](const conversion& row) { return !row.copies_padding.empty(); }), list("pa16::ya_uv"));
}

TEST(allowances, rows_one_by_one) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.by_rows; }), list(R"(
      bgrx_601::uyvy bgrx_709::uyvy rgbx_601::uyvy rgbx_709::uyvy
      uyvy::bgra uyvy::bgra_601 uyvy::bgra_709 uyvy::rgba uyvy::rgba_601 uyvy::rgba_709
      uyvy::bgrx uyvy::bgrx_601 uyvy::bgrx_709 uyvy::rgbx uyvy::rgbx_601 uyvy::rgbx_709
      uyvy::y_uv_420 uyvy::y_u_v_420 y_uv::y_uv_to422 y_u_v::y_uv_to422
      cb_cr_8_420::cbcr_16_422 cb_cr_16_422::cbcr_16_422 cbcr_8_420::cbcr_16_422
      p216::rgbx_2020 yuyv_matrox_10::p216 yuyv_matrox_10::black)"));
}

TEST(allowances, planes_that_overlap) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.overlapping == overlap::of_all; }), list(R"(
      uyvy::yuy2 yuy2::uyvy bgra::uyvy rgba::uyvy bgrx::uyvy rgbx::uyvy
      uyvy::y_uv_422 uyvy::y_uv_420 uyvy::y_u_v_422 uyvy::y_u_v_420)"));
  EXPECT_EQ(rows_that([](const conversion& row) { return row.overlapping == overlap::with_source; }), list(R"(
      bgra::uyvy_a bgra_601::uyvy_a bgra_709::uyvy_a rgba::uyvy_a rgba_601::uyvy_a rgba_709::uyvy_a)"));
}

TEST(allowances, sizes_that_stand_for_more) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.pixels_per_xres == 2; }),
            list("cb_cr_8_420::cbcr_16_422 cb_cr_16_422::cbcr_16_422"));
  EXPECT_EQ(rows_that([](const conversion& row) { return row.rows_per_yres == 2; }),
            list("cb_cr_8_420::cbcr_16_422 cbcr_8_420::cbcr_16_422"));
  EXPECT_EQ(rows_that([](const conversion& row) {
              return row.pixels_per_xres < 1 || row.pixels_per_xres > 2 || row.rows_per_yres < 1 ||
                     row.rows_per_yres > 2;
            }),
            names());
}

TEST(allowances, margins_and_strides) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.margin_pixels == 6; }), list("v210::uyvy"));
  EXPECT_EQ(rows_that([](const conversion& row) { return row.margin_pixels != 0; }), list("v210::uyvy"));
  EXPECT_EQ(rows_that([](const conversion& row) { return row.one_stride; }),
            list("uyvy::r_g_b uyvy::r_g_b_601 uyvy::r_g_b_709"));
}

// Of the two fills of alpha, one takes words.
TEST(allowances, words) {
  EXPECT_EQ(rows_that([](const conversion& row) { return row.entry.takes_words; }), list(R"(
      black::alpha y::y16 y16::y16 cb_cr_16_422::cbcr_16_422 p216::uyvy p216::p010 pa16::ya_uv pa16::vuya_16
      alpha_u16::alpha y_10u16::y)"));
  EXPECT_FALSE(row_of("black::alpha", "alpha").entry.takes_words);
  EXPECT_EQ(rows_that([](const conversion& row) { return !row.entry.is_declared; }), list("p216::yuy2"));
}

TEST(allowances, arguments) {
  const auto rows_with = [](argument a) { return rows_that([a](const conversion& row) { return row.extra == a; }); };
  EXPECT_EQ(rows_with(argument::color_space),
            list("uyvy::bgr uyvy::bgra uyvy::rgba uyvy::bgrx uyvy::rgbx uyvy_a::bgra uyvy_a::rgba uyvy::r_g_b"));
  EXPECT_EQ(rows_with(argument::value), list("black::alpha"));
  EXPECT_EQ(rows_with(argument::rescale), list("uyvy::y y::uyvy y16::y16 uyvy::ya_uv"));
  EXPECT_EQ(rows_with(argument::opacity), list(R"(
      bgra::bgra bgra_601::bgra_601 bgra_709::bgra_709 rgba::rgba rgba_601::rgba_601 rgba_709::rgba_709
      ycbcra::ycbcra vuya::vuya ycbcra::uyvy_a vuya::uyvy_a ycbcra::pa16
      bgra::uyvy_a bgra_601::uyvy_a bgra_709::uyvy_a rgba::uyvy_a rgba_601::uyvy_a rgba_709::uyvy_a)"));
}

bool is_rgb(std::string_view format) {
  const catalogue::format* f = catalogue::find_format(format);
  return f != nullptr && f->model == catalogue::color_model::rgb;
}

// A name says its matrix; RGB to video without one is 709, and video to RGB takes it from the caller.
TEST(allowances, matrices) {
  for (const conversion& row : catalogue::conversions) {
    const auto named = [&](std::string_view suffix) { return row.name.find(suffix) != std::string_view::npos; };
    const bool converts_color =
        is_rgb(row.source) != is_rgb(row.destination) && row.name != "L::bgra" && row.name != "bgra64::alpha16";
    const matrix expected = !converts_color                      ? matrix::none
                            : named("_601")                      ? matrix::bt601
                            : named("_709")                      ? matrix::bt709
                            : named("_2020")                     ? matrix::bt2020
                            : row.extra == argument::color_space ? matrix::by_argument
                                                                 : matrix::bt709;
    EXPECT_EQ(row.colors, expected) << row.name;
  }
}

// Planes of noise with room behind every row, and a conversion of them.
struct scene {
  static constexpr int stride = 512;
  static constexpr int rows = 12;
  static constexpr std::size_t room = stride * rows;
  using memory = std::array<std::array<std::uint8_t, room>, catalogue::max_planes>;

  memory source{}, destination{};
  std::array<int, catalogue::max_planes> source_stride{}, destination_stride{};
  bool report = false;

  scene() {
    source_stride.fill(stride);
    destination_stride.fill(stride);
    for (std::size_t i = 0; i < source.size(); ++i) fill(source[i], content::random, static_cast<std::uint32_t>(i));
  }

  scene& convert(const conversion& row, int xres, int yres, std::uint8_t before) {
    call c;
    for (std::size_t i = 0; i < source.size(); ++i) {
      destination[i].fill(before);
      c.source.data[i] = source[i].data();
      c.destination.data[i] = destination[i].data();
    }
    c.source.stride = source_stride;
    c.destination.stride = destination_stride;
    c.xres = xres;
    c.yres = yres;
    c.argument = 709;
    c.opaque = &report;
    row.convert(c);
    return *this;
  }
};

// Where a row of a plane ends, and how far an allowance goes beyond it.
struct behind {
  std::size_t plane, first, bytes;
};

bool is_written(const conversion& row, const behind& b, int xres, int yres) {
  for (const std::uint8_t before : std::to_array<std::uint8_t>({0x55, 0xaa})) {
    const scene s = scene().convert(row, xres, yres, before);
    const std::uint8_t* first = s.destination[b.plane].data() + b.first;
    if (std::any_of(first, first + b.bytes, [before](std::uint8_t byte) { return byte != before; })) return true;
  }
  return false;
}

bool is_read(const conversion& row, const behind& b, int xres, int yres) {
  scene changed;
  for (std::size_t i = 0; i < b.bytes; ++i) changed.source[b.plane][b.first + i] ^= 255;
  return changed.convert(row, xres, yres, 0x55).destination != scene().convert(row, xres, yres, 0x55).destination;
}

// Where the bytes are that a row may touch behind xres pixels.
template <class Touched>
void expect_touched(const conversion& row, std::string_view format, int xres, Touched touched) {
  const catalogue::format* f = catalogue::find_format(format);
  for (std::size_t i = 0; f != nullptr && i < f->plane_count(); ++i) {
    const plane& p = f->planes[i];
    if (in_parts(p)) continue;
    const behind b = {i, static_cast<std::size_t>(row_extent(p, xres)),
                      static_cast<std::size_t>(row.bytes_past(p, xres))};
    EXPECT_TRUE(b.bytes == 0 || touched(row, b, xres, 1)) << row.name << ", plane " << p.name;
  }
}

TEST(allowances, of_bytes_behind_a_row_are_needed) {
  for (const conversion& row : catalogue::conversions) {
    expect_touched(row, row.source, 1, is_read);
    expect_touched(row, row.destination, 1, is_written);
  }
}

// Groups with their samples in two parts have the completed pair within them.
TEST(allowances, of_completed_pairs_in_groups_are_needed) {
  int tested = 0;
  for (const conversion& row : catalogue::conversions) {
    const catalogue::format* f = catalogue::find_format(row.destination);
    if (!row.completes_pair || !in_parts(f->planes[0])) continue;
    ++tested;
    EXPECT_EQ(scene().convert(row, 5, 1, 0x55).destination, scene().convert(row, 6, 1, 0x55).destination) << row.name;
    EXPECT_NE(scene().convert(row, 5, 1, 0x55).destination, scene().convert(row, 4, 1, 0x55).destination) << row.name;
  }
  EXPECT_EQ(tested, 4);
}

TEST(allowances, of_completed_row_pairs_are_needed) {
  for (const conversion& row : catalogue::conversions) {
    if (!row.completes_row_pair) continue;
    EXPECT_TRUE(is_read(row, {1, scene::stride, 4}, 4, 3)) << row.name;
    EXPECT_TRUE(is_written(row, {1, 3 * scene::stride, 8}, 4, 3)) << row.name;
  }
}

TEST(allowances, of_copied_padding_are_needed) {
  for (const conversion& row : catalogue::conversions) {
    if (row.copies_padding.empty()) continue;
    std::size_t index = 0;
    while (catalogue::find_format(row.destination)->planes.at(index).name != row.copies_padding) ++index;
    EXPECT_TRUE(is_written(row, {index, 100, 50}, 4, 3)) << row.name;
  }
}

// The pixels of the longest line that an image is converted by whose rows follow each other; none for copies. To pixels
// of three bytes, rows follow each other where a pixel has room for four.
int longest_line(const conversion& row, int xres, int yres) {
  int longest = 0;
  const recorder recording([&](const line_call& line) { longest = std::max(longest, line.count); });
  scene s;
  const auto set_tight = [&](std::string_view format, auto& strides, int room_for_three) {
    const catalogue::format* f = catalogue::find_format(format);
    for (std::size_t i = 0; f != nullptr && i < f->plane_count(); ++i)
      strides[i] = f->planes[i].group_bytes == 3 ? room_for_three * xres
                                                 : tight_stride(f->planes[i], xres * row.pixels_per_xres);
  };
  set_tight(row.source, s.source_stride, 3);
  set_tight(row.destination, s.destination_stride, 4);
  s.convert(row, xres, yres, 0);
  return longest;
}

TEST(allowances, of_rows_one_by_one_are_right) {
  if (!calls_can_be_recorded) GTEST_SKIP() << "calls of line functions are direct";
  for (const conversion& row : catalogue::conversions) {
    constexpr int width = 48;  // whole groups of every format
    const int longest = longest_line(row, width, 8 / row.rows_per_yres);
    EXPECT_EQ(longest <= width, row.by_rows || longest == 0) << row.name << ", " << longest;
  }
}

}  // namespace
}  // namespace morvane::tests
