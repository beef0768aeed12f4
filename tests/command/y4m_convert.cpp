// morvane convert, from and to YUV4MPEG2.
#include "library.h"

namespace morvane::tests {

namespace {

class y4m_convert : public command {
 protected:
  const bytes frames = noise(3 * (7 * 5 + 2 * 4 * 3));
  const std::string header = "YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C420jpeg XYSCSS=420JPEG\n";

  static bytes text_bytes(const std::string& text) { return {text.begin(), text.end()}; }
  // The file of so many frames, behind a first line.
  static bytes file(const std::string& first_line, const bytes& content, std::size_t count) {
    bytes all = text_bytes(first_line);
    const std::size_t size = content.size() / count;
    for (std::size_t i = 0; i < count; ++i) all = all + text_bytes("FRAME\n") + part(content, i * size, size);
    return all;
  }
  void SetUp() override {
    command::SetUp();
    write("in.y4m", file(header, frames, 3));
  }
};

TEST_F(y4m_convert, format_and_size_come_from_the_file) {
  quietly("morvane convert in.y4m out.raw -t y_u_v_420");
  EXPECT_EQ(read("out.raw"), frames);
  quietly("morvane convert in.y4m out.raw -t uyvy --skip 1 --frames 1");
  EXPECT_EQ(read("out.raw"), converted(part(frames, 59, 59), "y_u_v_420", "uyvy", 7, 5, {.siting = siting::center}));
}

TEST_F(y4m_convert, what_is_known_of_the_video_is_handed_on) {
  quietly("morvane convert in.y4m same.y4m");
  EXPECT_EQ(read("same.y4m"), file("YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C420jpeg\n", frames, 3));
  quietly("morvane convert in.y4m 422.y4m -t y_u_v_422");
  const bytes wide = converted(frames, "y_u_v_420", "y_u_v_422", 7, 5, {.siting = siting::center});
  EXPECT_EQ(read("422.y4m"), file("YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C422\n", wide, 3));
  quietly("morvane convert in.y4m again.y4m --siting left --to-range full");
  const bytes first = part(read("again.y4m"), 0, 62);
  EXPECT_EQ(std::string(first.begin(), first.end()), "YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C420mpeg2 XCOLORRANGE=FULL");
}

TEST_F(y4m_convert, the_range_of_the_file_is_that_of_its_picture) {
  write("full.y4m", file("YUV4MPEG2 W7 H5 C420mpeg2 XCOLORRANGE=FULL\n", frames, 3));
  write("raw", frames);
  quietly("morvane convert full.y4m out.raw -t bgra");
  quietly("morvane convert raw expected.raw -f y_u_v_420 -s 7x5 -t bgra --range full");
  EXPECT_EQ(read("out.raw"), read("expected.raw"));
  quietly("morvane convert full.y4m out.raw -t bgra --range video");
  EXPECT_NE(read("out.raw"), read("expected.raw"));
}

TEST_F(y4m_convert, raw_frames_and_pictures_become_video) {
  write("raw", noise(2 * 8 * 5 * 2));
  quietly("morvane convert raw out.y4m -f uyvy -s 8x5");
  EXPECT_EQ(read("out.y4m"), file("YUV4MPEG2 W8 H5 C420mpeg2\n", converted(read("raw"), "uyvy", "y_u_v_420", 8, 5), 2));
  quietly("morvane convert raw cropped.y4m -f uyvy -s 8x5 -t y --crop 3x2 --frames 1");
  const bytes luma = converted(part(read("raw"), 0, 80), "uyvy", "y", 8, 5);
  EXPECT_EQ(read("cropped.y4m"), file("YUV4MPEG2 W3 H2 Cmono\n", part(luma, 0, 3) + part(luma, 8, 3), 1));
  quietly("morvane convert in.y4m a.png --frames 1 && morvane convert a.png b.y4m && rm raw");
  EXPECT_EQ(read("b.y4m").size(), std::string("YUV4MPEG2 W7 H5 C420mpeg2\nFRAME\n").size() + 59);
}

TEST_F(y4m_convert, whole_frames_before_a_short_one_are_kept_on_request) {
  quietly("head -c 200 in.y4m > short.y4m");
  const outcome o = run("morvane convert --keep short.y4m out.y4m");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(o.err,
            "morvane: short.y4m ended inside frame 2: expected 59 bytes, one frame of y_u_v_420 7x5, got 4; 2 whole "
            "frames are left in out.y4m\n");
  EXPECT_EQ(read("out.y4m"), file("YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C420jpeg\n", part(frames, 0, 118), 2));
}

TEST_F(y4m_convert, refuses_what_the_file_is_not) {
  const std::pair<const char*, const char*> mistakes[] = {
      {"morvane convert in.y4m out -t uyvy -f uyvy", "in.y4m is y_u_v_420, not uyvy"},
      {"morvane convert in.y4m out -t uyvy -s 8x5", "in.y4m is 7x5, not 8x5"},
      {"morvane convert in.y4m out -t uyvy --src-stride 9,9,9", "in.y4m is YUV4MPEG2, which has no stride"},
      {"morvane convert in.y4m out.y4m --dst-stride 9,9,9", "out.y4m is YUV4MPEG2, which has no stride"},
      {"morvane convert in.y4m out -t uyvy --skip 4", "in.y4m has no frame 4: it has 3, numbered from 0"},
      {"morvane convert in.y4m -t y_uv_420 --dst-planes a.y4m,b.y4m",
       "a.y4m is YUV4MPEG2, which holds all planes and not one of them"},
  };
  for (const auto& [line, message] : mistakes) {
    const outcome o = run(line);
    EXPECT_EQ(o.exit_code, 2) << line;
    EXPECT_EQ(o.err, std::string("morvane: ") + message + "\n");
  }
  const outcome o = run("morvane convert in.y4m out.y4m -t uyvy");
  EXPECT_EQ(o.exit_code, 2);
  EXPECT_EQ(o.err.rfind("morvane: out.y4m is YUV4MPEG2, which holds y_u_v_420, ", 0), 0u) << o.err;
  EXPECT_EQ(files(), std::vector<std::string>{"in.y4m"});
}

}  // namespace

}  // namespace morvane::tests
