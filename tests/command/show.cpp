// morvane show.
#include <cmath>
#include <utility>

#include "library.h"

namespace morvane::tests {

namespace {

class show : public command {
 protected:
  // The picture's pixels as R, G, B bytes.
  bytes shown(const std::string& arguments) const {
    quietly("morvane show " + arguments + " shown.png");
    quietly("morvane convert -f rgbx -t rgbx shown.png shown.rgbx");
    bytes result;
    const bytes four = read("shown.rgbx");
    for (std::size_t i = 0; i < four.size(); ++i)
      if (i % 4 != 3) result.push_back(four[i]);
    return result;
  }
  std::vector<int> size_of_shown() const {
    const bytes b = read("shown.png");
    return {b[18] << 8 | b[19], b[22] << 8 | b[23]};
  }
};

bytes thrice(const bytes& grey) {
  bytes result;
  for (const std::uint8_t b : grey) result.insert(result.end(), 3, b);
  return result;
}

int checker(int x, int y) {
  return (x / 8 + y / 8) % 2 == 0 ? 255 : 204;
}

// What the library makes of a picture, laid over the checkerboard and rounded.
bytes expected_colours(const description& from, const bytes& file) {
  const bytes rgba = converted(file, from, described("rgba", from.width, from.height));
  bytes result;
  for (int i = 0; i < from.width * from.height; ++i) {
    const std::uint8_t* pixel = rgba.data() + std::ptrdiff_t{4} * i;
    const double opacity = pixel[3] / 255.0;
    for (int c = 0; c < 3; ++c)
      result.push_back(static_cast<std::uint8_t>(
          std::lround(pixel[c] * opacity + checker(i % from.width, i / from.width) * (1 - opacity))));
  }
  return result;
}

TEST_F(show, every_format_as_it_is_converted_over_a_checkerboard) {
  constexpr std::pair<int, int> sizes[] = {{1, 1}, {7, 3}, {18, 17}};
  std::size_t turn = 0;
  for (const format f : formats()) {
    const int model = describe(f).model;
    if ((model != MORVANE_YCBCR && model != MORVANE_RGB) || name_of(f) == "uyvy_uyvy") continue;
    const auto& [width, height] = sizes[turn++ % std::size(sizes)];
    description d = {.format = f, .width = width, .height = height};
    const bytes frame = noise_of(d);
    write("in.raw", frame);
    const std::string arguments =
        "in.raw -f " + std::string(name_of(f)) + " -s " + std::to_string(width) + "x" + std::to_string(height);
    EXPECT_EQ(shown(arguments), expected_colours(d, frame)) << arguments;
    d.matrix = matrix::bt601;
    EXPECT_EQ(shown(arguments + " --matrix bt601"), expected_colours(d, frame)) << arguments;
    if (model != MORVANE_YCBCR) continue;
    d.range = range::full;
    EXPECT_EQ(shown(arguments + " --matrix 601 --range full"), expected_colours(d, frame)) << arguments;
  }
}

TEST_F(show, the_first_of_two_images) {
  write("in.raw", noise(2 * 16 * 3));
  write("fill.raw", noise(16 * 3));
  quietly("morvane show fill.raw fill.png -f uyvy -s 8x3");
  shown("in.raw -f uyvy_uyvy -s 8x3");
  EXPECT_EQ(read("shown.png"), read("fill.png"));
}

TEST_F(show, alpha_over_a_checkerboard) {
  bytes row;
  for (int x = 0; x < 16; ++x) {
    const std::uint8_t alpha = x % 2 == 0 ? 0 : x == 1 ? 128 : 255;
    row.insert(row.end(), {10, 20, 30, alpha});
  }
  write("in.raw", row);
  const bytes pixels = shown("in.raw -f bgra -s 16x1");
  const auto pixel = [&](std::ptrdiff_t x) { return bytes(pixels.begin() + 3 * x, pixels.begin() + 3 * x + 3); };
  EXPECT_EQ(pixel(0), (bytes{255, 255, 255}));
  EXPECT_EQ(pixel(1), (bytes{142, 137, 132}));
  EXPECT_EQ(pixel(3), (bytes{30, 20, 10}));
  EXPECT_EQ(pixel(8), (bytes{204, 204, 204}));
  EXPECT_EQ(pixel(9), (bytes{30, 20, 10}));
}

TEST_F(show, one_component_in_grey) {
  write("in.raw", {1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_EQ(shown("in.raw -f uyvy -s 4x1 --plane Y"), thrice({2, 4, 6, 8}));
  EXPECT_EQ(shown("in.raw -f uyvy -s 4x1 --plane cb"), thrice({1, 5}));
  EXPECT_EQ(shown("in.raw -f rgba -s 2x1 --plane A"), thrice({4, 8}));
  EXPECT_EQ(shown("in.raw -f ycbcrx -s 2x1 --plane Cr"), thrice({3, 7}));
  EXPECT_EQ(shown("in.raw -f uyvy -s 4x1 --plane uyvy"), thrice({1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(show, one_plane_of_several_in_grey) {
  write("in.raw", {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14});  // 4x2, then two pairs of chroma
  EXPECT_EQ(shown("in.raw -f y_uv_420 -s 4x2 --plane y"), thrice({1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(size_of_shown(), (std::vector<int>{4, 2}));
  EXPECT_EQ(shown("in.raw -f y_uv_420 -s 4x2 --plane Cr"), thrice({12, 14}));
  EXPECT_EQ(size_of_shown(), (std::vector<int>{2, 1}));
  EXPECT_EQ(shown("in.raw -f y_uv_420 -s 4x2 --plane cbcr"), thrice({11, 12, 13, 14}));
  EXPECT_EQ(shown("in.raw -f y_u_v_420 -s 4x2 --plane cr"), thrice({13, 14}));
  write("in.raw", {1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_EQ(shown("in.raw -f uyvy_uyvy -s 2x1 --plane key"), thrice({5, 6, 7, 8}));
  EXPECT_EQ(shown("in.raw -f uyvy_uyvy -s 2x1 --plane key.y"), thrice({6, 8}));
  EXPECT_EQ(shown("in.raw -f uyvy_uyvy -s 2x1 --plane Y"), thrice({2, 4}));
  EXPECT_EQ(shown("in.raw -f cb_cr_16_422 -s 4x1 --plane cr"), thrice({6, 8}));
}

TEST_F(show, planes_of_rgb) {
  write("in.raw", {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(shown("in.raw -f r_g_b -s 2x1"), (bytes{1, 3, 5, 2, 4, 6}));
}

TEST_F(show, luma_and_alpha_as_they_are) {
  write("in.raw", {1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_EQ(shown("in.raw -f L -s 4x2"), thrice({1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(shown("in.raw -f y -s 1x8"), thrice({1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(shown("in.raw -f y16 -s 4x1"), thrice({2, 4, 6, 8}));
  EXPECT_EQ(shown("in.raw -f y -s 4x2"), thrice({1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(shown("in.raw -f alpha -s 2x4"), thrice({1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(shown("in.raw -f alpha_u16 -s 4x1"), thrice({2, 4, 6, 8}));
}

TEST_F(show, the_frame_that_is_named) {
  write("in.raw", {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(shown("in.raw -f y -s 2x1 --frame 2"), thrice({5, 6}));
  EXPECT_EQ(shown("in.raw -f y -s 1x1 --stride 3 --frame 1"), thrice({4}));
}

}  // namespace

}  // namespace morvane::tests
