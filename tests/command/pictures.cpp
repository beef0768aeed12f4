// morvane convert, from and to PNG.
#include "shell.h"

namespace morvane::tests {

namespace {

class pictures : public command {
 protected:
  // The width, height and colour type that a PNG's header states.
  std::vector<int> header(const std::string& name) const {
    const bytes b = read(name);
    if (b.size() < 26) return {};
    return {b[18] << 8 | b[19], b[22] << 8 | b[23], b[25]};
  }
};

constexpr int rgb = 2;
constexpr int rgb_with_alpha = 6;

TEST_F(pictures, formats_with_alpha_survive_a_png) {
  for (const char* name : {"bgra", "rgba"}) {
    const std::string format = name;
    write("in.raw", noise(13 * 5 * 4));
    quietly("morvane convert -f " + format + " -t " + format + " -s 13x5 in.raw a.png");
    EXPECT_EQ(header("a.png"), (std::vector<int>{13, 5, rgb_with_alpha}));
    quietly("morvane convert -f " + format + " -t " + format + " a.png out.raw");
    EXPECT_EQ(read("out.raw"), read("in.raw")) << format;
  }
}

TEST_F(pictures, formats_without_alpha_survive_a_png) {
  for (const char* name : {"bgrx", "rgbx"}) {
    const std::string format = name;
    bytes frame = noise(13 * 5 * 4);
    write("in.raw", frame);
    quietly("morvane convert -f " + format + " -t " + format + " -s 13x5 in.raw a.png");
    EXPECT_EQ(header("a.png"), (std::vector<int>{13, 5, rgb}));
    quietly("morvane convert -f " + format + " -t " + format + " a.png out.raw");
    for (std::size_t i = 3; i < frame.size(); i += 4) frame[i] = 255;
    EXPECT_EQ(read("out.raw"), frame) << format;
  }
}

TEST_F(pictures, bgr_survives_a_png) {
  write("in.raw", noise(13 * 5 * 3));
  quietly("morvane convert -f bgr -t bgr -s 13x5 in.raw a.png");
  quietly("morvane convert -f bgr -t bgr a.png out.raw");
  EXPECT_EQ(read("out.raw"), read("in.raw"));
}

TEST_F(pictures, planes_of_rgb_survive_a_png) {
  write("in.raw", noise(13 * 5 * 3));
  quietly("morvane convert -f r_g_b -t r_g_b -s 13x5 in.raw a.png");
  EXPECT_EQ(header("a.png"), (std::vector<int>{13, 5, rgb}));
  quietly("morvane convert -f r_g_b -t r_g_b a.png out.raw");
  EXPECT_EQ(read("out.raw"), read("in.raw"));
  quietly("morvane convert -f bgr -t bgr a.png first.raw");
  EXPECT_EQ(read("first.raw")[2], read("in.raw")[0]);
}

// Eight shades of a colour, each of two columns, with the alpha of every pixel its own.
TEST_F(pictures, alpha_survives_video) {
  bytes frame;
  for (int y = 0; y < 6; ++y)
    for (int x = 0; x < 16; ++x) {
      const auto shade = static_cast<std::uint8_t>(x / 2 * 32);
      frame.insert(frame.end(), {60, shade, 200, static_cast<std::uint8_t>(16 * x + y)});
    }
  write("in.raw", frame);
  quietly("morvane convert -f bgra -t bgra -s 16x6 in.raw a.png");
  quietly("morvane convert -t uyvy_a --chroma nearest a.png --dst-planes video.uyvy,alpha.y");
  quietly("morvane convert -f uyvy_a --chroma nearest -s 16x6 --planes video.uyvy,alpha.y b.png");
  EXPECT_EQ(header("b.png"), (std::vector<int>{16, 6, rgb_with_alpha}));
  quietly("morvane convert -t bgra b.png out.raw");
  const bytes back = read("out.raw");
  ASSERT_EQ(back.size(), frame.size());
  for (std::size_t i = 0; i < frame.size(); ++i) EXPECT_NEAR(back[i], frame[i], i % 4 == 3 ? 0 : 6) << i;
}

TEST_F(pictures, the_channels_have_their_places) {
  write("in.raw", {10, 20, 30, 40});
  quietly("morvane convert -f bgra -t bgra -s 1x1 in.raw a.png");
  quietly("morvane convert -f rgba -t rgba a.png out.raw");
  EXPECT_EQ(read("out.raw"), (bytes{30, 20, 10, 40}));
}

TEST_F(pictures, the_format_of_a_png_may_be_left_out) {
  write("in.raw", noise(8 * 4 * 4));
  quietly("morvane convert -f bgrx -t bgrx -s 8x4 in.raw a.png");
  EXPECT_EQ(run("morvane convert -v -t uyvy a.png out.raw").err.rfind("morvane: steps: read bgrx, ", 0), 0u);
  EXPECT_NE(run("morvane convert -v -f uyvy -s 8x4 out.raw b.png").err.find(", write bgrx\n"), std::string::npos);
  EXPECT_EQ(header("b.png"), (std::vector<int>{8, 4, rgb}));
}

TEST_F(pictures, dropped_alpha_is_mentioned) {
  write("in.raw", noise(8 * 4 * 4));
  quietly("morvane convert -f bgra -t bgra -s 8x4 in.raw a.png");
  const outcome o = run("morvane convert -f bgrx -t uyvy a.png out.raw");
  EXPECT_EQ(o.exit_code, 0);
  EXPECT_EQ(o.err, "morvane: the alpha of a.png is dropped: bgrx has none\n");
}

TEST_F(pictures, an_odd_width_needs_nothing_more) {
  write("in.raw", noise(5 * 3 * 4));
  quietly("morvane convert -f bgrx -t bgrx -s 5x3 in.raw a.png");
  quietly("morvane convert -t uyvy a.png out.uyvy");
  quietly("morvane convert -f bgrx -t uyvy -s 5x3 in.raw same.uyvy");
  EXPECT_EQ(read("out.uyvy").size(), 6u * 3 * 2);
  EXPECT_EQ(read("out.uyvy"), read("same.uyvy"));
  quietly("morvane convert -f uyvy -s 5x3 out.uyvy back.png");
  EXPECT_EQ(header("back.png"), (std::vector<int>{5, 3, rgb}));
  quietly("morvane convert -f uyvy -s 5x3 --crop 4x2 out.uyvy part.png");
  EXPECT_EQ(header("part.png"), (std::vector<int>{4, 2, rgb}));
}

TEST_F(pictures, one_frame_of_many) {
  const bytes frames = noise(3 * 8 * 4 * 4);
  write("in.raw", frames);
  quietly("morvane convert -f bgra -t bgra -s 8x4 --skip 1 --frames 1 in.raw a.png");
  quietly("morvane convert -f bgra -t bgra a.png out.raw");
  EXPECT_EQ(read("out.raw"), bytes(frames.begin() + 128, frames.begin() + 256));
}

TEST_F(pictures, a_damaged_png_is_one_line_and_no_output) {
  write("in.raw", noise(64 * 64 * 4));
  quietly("morvane convert -f bgra -t bgra -s 64x64 in.raw a.png && head -c 5000 a.png > cut.png && rm in.raw a.png");
  const outcome o = run("morvane convert -t bgra cut.png out.raw");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(o.err.rfind("morvane: cannot read cut.png as a PNG: ", 0), 0u) << o.err;
  EXPECT_EQ(files(), std::vector<std::string>{"cut.png"});
}

}  // namespace

}  // namespace morvane::tests
