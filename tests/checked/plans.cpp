// Layouts, plans and bands of the checked interface.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "morvane.hpp"

namespace morvane::tests {
namespace {

using texts = std::vector<std::string>;

description of(const std::string& name, int width, int height) {
  return {.format = format_named(name), .width = width, .height = height};
}

void fill(image& picture) {
  std::uint32_t value = 1;
  std::generate_n(picture.data(), picture.bytes(), [&] {
    value = value * 1664525U + 1013904223U;
    return static_cast<std::uint8_t>(value >> 24);
  });
}

std::vector<std::uint8_t> bytes_of(const image& picture) {
  return {picture.data(), picture.data() + picture.bytes()};
}

TEST(checked_formats, have_ids_that_never_change) {
  EXPECT_EQ(format_named("uyvy"), 1);
  EXPECT_EQ(format_named("bgra"), 4);
  EXPECT_EQ(format_named("y_uv_420"), 20);
  EXPECT_EQ(format_named("bgra64"), 43);
  std::set<format> ids;
  for (const format f : formats()) {
    EXPECT_TRUE(ids.insert(f).second) << f;
    EXPECT_EQ(format_named(std::string(name_of(f))), f);
  }
  EXPECT_EQ(morvane_format_at(morvane_format_count()), 0);
  EXPECT_EQ(morvane_format_at(-1), 0);
}

TEST(checked_layouts, have_the_strides_of_files) {
  EXPECT_EQ(lay_out(of("v210", 1280, 720)).bytes, 2488320);
  EXPECT_EQ(lay_out(of("v210", 1280, 720)).planes[0].stride, 3456);
  EXPECT_EQ(lay_out(of("v210", 1280, 720)).planes[0].row_bytes, 3424);
  EXPECT_EQ(lay_out(of("uyvy", 3, 3)).bytes, 24);
  const morvane_layout planes = lay_out(of("y_u_v_420", 5, 3));
  EXPECT_EQ(planes.plane_count, 3);
  EXPECT_EQ(planes.bytes, 15 + 6 + 6);
  EXPECT_EQ(planes.planes[2].offset, 21);
  EXPECT_EQ(planes.planes[2].rows, 2);
}

TEST(checked_layouts, are_aligned_where_asked) {
  const morvane_layout planes = lay_out(of("y_u_v_420", 70, 3), 64);
  EXPECT_EQ(planes.planes[0].stride, 128);
  EXPECT_EQ(planes.planes[1].stride, 64);
  EXPECT_EQ(planes.planes[1].offset, 384);
}

TEST(checked_plans, tell_steps_and_losses) {
  const plan p(of("bgra64", 4, 4), of("y_uv_420", 4, 4));
  EXPECT_EQ(p.steps(), (texts{"read bgra64", "RGB to BT.709", "chroma 4:4:4 to 4:2:0", "write y_uv_420"}));
  EXPECT_EQ(p.losses(), (texts{"16 to 8 bits", "chroma 4:4:4 to 4:2:0", "alpha dropped"}));
  EXPECT_EQ(p.row_granularity(), 2);
  EXPECT_EQ(plan(of("uyvy", 4, 4), of("yuy2", 4, 4)).losses(), texts());
  EXPECT_EQ(plan(of("bgra", 4, 4), of("L", 4, 4)).losses(), (texts{"colour dropped", "alpha dropped"}));
  EXPECT_EQ(plan(of("vuya", 4, 4), of("y410", 4, 4)).losses(), texts{"alpha to 2 bits"});
  EXPECT_EQ(plan(of("bgra64", 4, 4), of("rgbaf16", 4, 4)).losses(), texts{"16 bits to half floats"});
  EXPECT_EQ(plan(of("R10k", 4, 4), of("rgbaf16", 4, 4)).losses(), texts());
  EXPECT_EQ(plan(of("rgbaf16", 4, 4), of("bgra", 4, 4)).losses(), texts{"16 to 8 bits"});
  EXPECT_EQ(plan(of("rgbaf16", 4, 4), of("rgbaf16", 4, 4)).losses(), texts());
  EXPECT_EQ(plan(of("bgra", 4, 4), of("vuya", 4, 4)).losses(), texts());
}

// Pairs whose ways look at neighbouring rows.
const std::pair<const char*, const char*> pairs_with_neighbours[] = {
    {"y_uv_420", "bgra"}, {"bgra", "y_uv_420"}, {"uyvy", "y_u_v_420"}, {"y_uv_420", "p010"}, {"p010", "uyvy"}};

TEST(checked_plans, convert_bands_in_any_order) {
  for (const auto& [from, to] : pairs_with_neighbours) {
    const plan p(of(from, 37, 11), of(to, 37, 11));
    image source(of(from, 37, 11)), whole(of(to, 37, 11)), banded(of(to, 37, 11));
    fill(source);
    p.run(source.picture(), whole.picture());
    std::vector<std::uint8_t> scratch(p.scratch_bytes());
    for (const auto& [first, rows] : {std::pair{8, 3}, {2, 2}, {0, 2}, {4, 4}})
      p.run_rows(source.picture(), banded.picture(), first, rows, scratch.data(), scratch.size());
    EXPECT_EQ(bytes_of(whole), bytes_of(banded)) << from << " to " << to;
  }
}

TEST(checked_plans, are_run_by_threads_at_once) {
  const description from = of("y_uv_420", 200, 64), to = of("bgra", 200, 64);
  const plan p(from, to);
  image source(from), whole(to), banded(to);
  fill(source);
  p.run(source.picture(), whole.picture());
  const morvane_picture in = source.picture(), out = banded.picture();
  std::vector<std::thread> threads;
  for (int band = 0; band < 4; ++band)
    threads.emplace_back([&, band] {
      std::vector<std::uint8_t> scratch(p.scratch_bytes());
      p.run_rows(in, out, 16 * band, 16, scratch.data(), scratch.size());
    });
  for (std::thread& t : threads) t.join();
  EXPECT_EQ(bytes_of(whole), bytes_of(banded));
}

TEST(checked_plans, turn_pictures_over_by_negative_strides) {
  const description from = of("uyvy", 9, 5), to = of("rgba", 9, 5);
  image source(from), straight(to), turned(to);
  fill(source);
  convert(from, source.picture(), to, straight.picture());
  morvane_picture upwards = turned.picture();
  upwards.data[0] = static_cast<std::uint8_t*>(upwards.data[0]) + 4 * upwards.stride[0];
  upwards.stride[0] = -upwards.stride[0];
  convert(from, source.picture(), to, upwards);
  for (int row = 0; row < 5; ++row)
    EXPECT_TRUE(
        std::equal(straight.data() + 36 * row, straight.data() + 36 * (row + 1), turned.data() + 36 * (4 - row)));
}

TEST(checked_plans, use_scratch_memory_at_any_address) {
  const description from = of("uyvy", 33, 4), to = of("bgra64", 33, 4);
  const plan p(from, to);
  ASSERT_GT(p.scratch_bytes(), 0U);
  image source(from), first(to), second(to);
  fill(source);
  p.run(source.picture(), first.picture());
  std::vector<std::uint8_t> scratch(p.scratch_bytes() + 64);
  for (const std::size_t offset : {std::size_t{1}, std::size_t{17}, std::size_t{63}}) {
    p.run(source.picture(), second.picture(), scratch.data() + offset, p.scratch_bytes());
    EXPECT_EQ(bytes_of(first), bytes_of(second)) << offset;
  }
}

// What a kernel reads, matrices and writes in one pass, by the formats that it reads and writes. Over lines it would
// have the same bytes, and take longer.
bool goes_in_one_pass(const description& from, const description& to, const options& how) {
  const plan p(from, to, how);
  return p.scratch_bytes() == 0 && p.steps().back() == "write " + std::string(name_of(to.format));
}

TEST(checked_plans, decode_without_lines) {
  const auto is_decoded = [](const char* from, const char* to, const options& how) {
    return goes_in_one_pass(of(from, 34, 4), of(to, 34, 4), how);
  };
  for (const char* from : {"uyvy", "yuy2", "uyvy_a", "y_uv_420", "y_uv_422", "y_u_v_420", "y_u_v_422", "p010"})
    for (const char* to : {"bgra", "rgba", "bgrx", "rgbx", "bgr"}) {
      const bool has_two_alphas = std::string(from) == "uyvy_a" && std::string(to).ends_with("a");
      EXPECT_EQ(is_decoded(from, to, {}), !has_two_alphas) << from << " to " << to;
      EXPECT_EQ(is_decoded(from, to, {.filter = filter::nearest, .siting = siting::center}), !has_two_alphas);
      EXPECT_FALSE(is_decoded(from, to, {.siting = siting::center}));
    }
  for (const char* from : {"p010", "p210", "y_u_v_420_10u16", "y_u_v_422_10u16"})
    for (const char* to : {"rgb48", "bgr48", "rgba64", "bgra64", "x2rgb10", "x2bgr10", "r210", "R10k", "R10l"}) {
      EXPECT_TRUE(is_decoded(from, to, {})) << from << " to " << to;
      EXPECT_TRUE(is_decoded(from, to, {.filter = filter::nearest, .siting = siting::center}));
      EXPECT_FALSE(is_decoded(from, to, {.siting = siting::center}));
    }
  for (const char* from :
       {"uyvy", "yuy2", "yvyu", "y_uv_420", "y_vu_420", "y_u_v_420", "p010", "p216", "y_u_v_422_10u16"})
    for (const char* to : {"rgbf32", "r_g_b_f32", "g_b_r_f32"}) {
      EXPECT_TRUE(is_decoded(from, to, {})) << from << " to " << to;
      EXPECT_TRUE(is_decoded(from, to, {.filter = filter::nearest, .siting = siting::center}));
      EXPECT_FALSE(is_decoded(from, to, {.siting = siting::center}));
    }
  EXPECT_FALSE(is_decoded("uyvy", "rgbaf32", {}));
  for (const char* from :
       {"uyvy", "yuy2", "y_uv_420", "y_vu_420", "y_u_v_420", "y_u_v_a_422", "p010", "y_u_v_420_10u16"})
    EXPECT_TRUE(is_decoded(from, "L", {})) << from;
  for (const char* from : {"p016", "y_u_v_420_12u16", "y_u_v_422_12u16", "y_u_v_420_u16"})
    EXPECT_TRUE(is_decoded(from, "L", {})) << from;
  EXPECT_FALSE(is_decoded("y", "L", {}));
  EXPECT_TRUE(is_decoded("p012", "rgb48", {}));
  for (const char* from : {"p016", "y_u_v_420_12u16", "y_u_v_420_u16"})
    for (const filter f : {filter::linear, filter::nearest})
      EXPECT_TRUE(is_decoded(from, "rgb48", {.filter = f})) << from;
  for (const char* from : {"y_u_v_420", "y_u_v_422", "y_v_u_420", "y_u_v_420_10u16", "y_u_v_422_10u16"})
    for (const char* to : {"g_b_r", "r_g_b", "g_b_r_10u16"}) {
      EXPECT_TRUE(is_decoded(from, to, {})) << from << " to " << to;
      EXPECT_TRUE(is_decoded(from, to, {.filter = filter::nearest, .siting = siting::center}));
      EXPECT_FALSE(is_decoded(from, to, {.siting = siting::center}));
    }
  EXPECT_FALSE(is_decoded("y_u_v_420", "g_b_r_a", {}));
  EXPECT_FALSE(is_decoded("y_u_v_420", "g_b_r_12u16", {}));
  for (const char* to : {"bgra", "rgbx", "bgr", "rgb48", "rgba64", "x2rgb10", "R10k", "rgbf32", "r_g_b_f32"})
    EXPECT_EQ(is_decoded("p216", to, {}), std::string(to) != "R10k") << to;
  EXPECT_FALSE(is_decoded("v210", "bgra", {}));
  EXPECT_FALSE(is_decoded("uyvy_a", "bgrx", {.background = color{1, 2, 3}}));
  EXPECT_FALSE(is_decoded("uyvy", "r_g_b", {}));
}

TEST(checked_plans, regroup_without_lines) {
  const auto is_regrouped = [](const std::string& from, const std::string& to, const options& how) {
    return goes_in_one_pass(of(from, 34, 4), of(to, 34, 4), how);
  };
  for (const char* other : {"uyvy", "yuy2", "p210", "p216", "p010", "y_u_v_422_10u16", "st2110_422_10"})
    for (const options& how : {options{}, options{.filter = filter::nearest, .siting = siting::center}}) {
      EXPECT_TRUE(is_regrouped("v210", other, how)) << other;
      EXPECT_TRUE(is_regrouped(other, "v210", how)) << other;
    }
  for (const char* from : {"uyvy_a", "pa16", "y_u_v_a_422_10u16", "yua_yva_matrox_10"})
    for (const char* to : {"uyvy_a", "y_u_v_a_422_10u16", "yua_yva_matrox_10"})
      EXPECT_EQ(is_regrouped(from, to, {}), std::string(from) != to) << from << " to " << to;
  for (const char* other : {"uyvy_a", "yvyu", "y_uv_420", "y_u_v_420_10u16", "pa16", "yuyv_matrox_10"})
    EXPECT_FALSE(is_regrouped("v210", other, {})) << other;
  EXPECT_FALSE(is_regrouped("uyvy", "st2110_422_10", {}));
}

TEST(checked_plans, encode_without_lines) {
  const auto is_encoded = [](const char* from, const char* to, const options& how) {
    return goes_in_one_pass(of(from, 34, 4), of(to, 34, 4), how);
  };
  for (const char* from : {"bgra", "rgba", "bgrx", "rgbx", "argb", "xbgr", "bgr", "rgb"})
    for (const char* to : {"uyvy", "yuy2", "yvyu", "y_uv_420", "y_vu_420", "y_u_v_420", "y_v_u_420", "y_uv_422",
                           "y_vu_422", "y_u_v_422"}) {
      EXPECT_TRUE(is_encoded(from, to, {})) << from << " to " << to;
      EXPECT_TRUE(is_encoded(from, to, {.filter = filter::nearest, .siting = siting::center}));
      EXPECT_FALSE(is_encoded(from, to, {.siting = siting::center}));
    }
  for (const auto& [from, to] : {std::pair{"bgra", "uyvy_a"},
                                 {"bgra", "p216"},
                                 {"r_g_b", "uyvy"},
                                 {"bgra", "y_u_v_444"},
                                 {"bgra", "y_u_v_422_10u16"},
                                 {"rgb48", "uyvy"},
                                 {"x2rgb10", "p016"},
                                 {"R12L", "y_uv_422"},
                                 {"rgbf32", "p210"},
                                 {"rgb48", "v210"}})
    EXPECT_FALSE(is_encoded(from, to, {})) << from << " to " << to;
  for (const char* from : {"g_b_r", "r_g_b", "g_b_r_a", "g_b_r_10u16"})
    for (const char* to : {"y_u_v_420", "y_v_u_420", "y_u_v_422", "y_u_v_420_10u16", "y_u_v_422_10u16"}) {
      EXPECT_TRUE(is_encoded(from, to, {})) << from << " to " << to;
      EXPECT_TRUE(is_encoded(from, to, {.filter = filter::nearest, .siting = siting::center}));
      EXPECT_FALSE(is_encoded(from, to, {.siting = siting::center}));
    }
  EXPECT_FALSE(is_encoded("g_b_r_12u16", "y_u_v_420_10u16", {}));
  EXPECT_FALSE(is_encoded("bgra", "uyvy", {.background = color{1, 2, 3}}));
  description video = of("bgra", 34, 4);
  video.range = range::video;
  EXPECT_FALSE(goes_in_one_pass(video, of("uyvy", 34, 4), {}));
}

TEST(checked_plans, encode_deep_pictures_without_lines) {
  const auto is_encoded = [](const char* from, const char* to) {
    return goes_in_one_pass(of(from, 34, 4), of(to, 34, 4), {}) &&
           goes_in_one_pass(of(from, 34, 4), of(to, 34, 4), {.filter = filter::nearest});
  };
  for (const char* from : {"rgb48", "bgr48", "rgba64", "bgra64", "x2rgb10", "x2bgr10", "r210", "R10k", "R10l"})
    for (const char* to : {"p010", "p210", "p216", "y_u_v_420_10u16", "y_u_v_422_10u16", "y_uv_420", "y_vu_422"})
      EXPECT_TRUE(is_encoded(from, to)) << from << " to " << to;
  for (const char* from : {"rgb48", "bgra64"})
    for (const char* to : {"p012", "p016", "p212", "y_u_v_420_12u16", "y_u_v_422_12u16"})
      EXPECT_TRUE(is_encoded(from, to)) << from << " to " << to;
  for (const char* to : {"p010", "p210", "p212", "p216", "y_u_v_420_10u16", "y_u_v_422_10u16"})
    EXPECT_TRUE(is_encoded("R12L", to)) << to;
  EXPECT_FALSE(goes_in_one_pass(of("R12L", 33, 4), of("p010", 33, 4), {})) << "a last pixel is half a pair";
  for (const char* from : {"bgra", "rgb"})
    for (const char* to : {"p010", "p210"}) EXPECT_TRUE(is_encoded(from, to)) << from << " to " << to;
}

TEST(checked_plans, need_no_scratch_memory_without_lines) {
  for (const auto& [from_name, to_name] :
       {std::pair{"uyvy", "bgra"}, {"bgra", "rgba"}, {"uyvy", "uyvy"}, {"p010", "v210"}, {"v210", "p010"}}) {
    const description from = of(from_name, 34, 4), to = of(to_name, 34, 4);
    const plan p(from, to);
    EXPECT_EQ(p.scratch_bytes(), 0U) << from_name;
    image source(from), made(to), again(to);
    fill(source);
    p.run(source.picture(), made.picture(), nullptr, 0);
    p.run(source.picture(), again.picture());
    EXPECT_EQ(bytes_of(made), bytes_of(again)) << from_name;
  }
}

}  // namespace
}  // namespace morvane::tests
