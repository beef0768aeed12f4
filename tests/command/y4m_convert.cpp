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

TEST_F(y4m_convert, words_of_single_frames_are_dropped) {
  const std::string words[] = {"", " Ip", " Itpp Xmine=FRAME Xa  "};
  bytes content = text_bytes(header);
  for (std::size_t i = 0; i < 3; ++i)
    content = content + text_bytes("FRAME" + words[i] + "\n") + part(frames, i * 59, 59);
  write("words.y4m", content);
  quietly("morvane convert words.y4m out.raw -t y_u_v_420 && morvane convert words.y4m out.y4m");
  EXPECT_EQ(read("out.raw"), frames);
  EXPECT_EQ(read("out.y4m"), file("YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C420jpeg\n", frames, 3));
  quietly("morvane convert words.y4m last.raw -t y_u_v_420 --skip 2");
  EXPECT_EQ(read("last.raw"), part(frames, 118, 59));
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

// Of an input the beginning tells, of an output an option.
TEST_F(y4m_convert, pipes_take_it_too) {
  quietly(
      "cat in.y4m | morvane convert - out.raw -t y_u_v_420 && cp in.y4m clip && morvane convert clip - --y4m > out");
  EXPECT_EQ(read("out.raw"), frames);
  EXPECT_EQ(read("out"), file("YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C420jpeg\n", frames, 3));
  quietly("cat in.y4m | morvane convert - - --y4m -t yuv422p | cat > 422");
  const bytes wide = converted(frames, "y_u_v_420", "y_u_v_422", 7, 5, {.siting = siting::center});
  EXPECT_EQ(read("422"), file("YUV4MPEG2 W7 H5 F30000:1001 Ip A1:1 C422\n", wide, 3));
  quietly("morvane show --frame 2 in.y4m by_name.png && morvane show --frame 2 - by_content.png < in.y4m");
  EXPECT_EQ(read("by_content.png"), read("by_name.png"));
  EXPECT_EQ(run("cat in.y4m | morvane compare - in.y4m").out, run("morvane compare in.y4m in.y4m").out);
  EXPECT_EQ(run("morvane info clip").out, run("morvane info in.y4m").out);
}

// However few bytes come at a time.
TEST_F(y4m_convert, an_input_is_known_by_its_first_bytes_as_they_come) {
  quietly(
      "{ for i in 0 1 2 3 4 5 6 7 8 9; do dd bs=1 count=1 skip=$i if=in.y4m status=none; sleep 0.01; done; "
      "tail -c +11 in.y4m; } | morvane convert - out.raw -t y_u_v_420");
  EXPECT_EQ(read("out.raw"), frames);
}

// With format and size an input is what they say, and with one of them it must be that.
TEST_F(y4m_convert, an_input_that_is_described_is_not_asked) {
  const auto size = static_cast<int>(read("in.y4m").size());
  quietly("cat in.y4m | morvane convert - out.raw -f y -t y -s " + std::to_string(size) + "x1");
  EXPECT_EQ(read("out.raw"), read("in.y4m"));
  quietly("cat in.y4m | morvane convert - out.raw -f yuv420p -t y_u_v_420");
  EXPECT_EQ(read("out.raw"), frames);
  const std::pair<const char*, const char*> mistakes[] = {
      {"morvane convert - out -t uyvy -f uyvy", "standard input is y_u_v_420, not uyvy"},
      {"morvane convert - out -t uyvy -s 8x5", "standard input is 7x5, not 8x5"},
      {"tail -c +2 | morvane convert - out -t uyvy", "the format of - is missing; give it with -f"},
      {"head -c 8 | morvane convert - out -t uyvy", "the format of - is missing; give it with -f"},
      {"morvane convert - out -t uyvy -f y4m",
       "y4m is no pixel format: YUV4MPEG2 says its own, and 'morvane convert --y4m' writes it"},
      {"morvane convert - out.png --y4m", "--y4m writes YUV4MPEG2, and out.png is a PNG"},
      {"morvane convert - --dst-planes a,b,c --y4m", "--y4m writes all planes to one file; there are 3 files"},
      {"morvane convert - - --y4m --dst-stride 9,9,9", "standard output is YUV4MPEG2, which has no stride"},
  };
  for (const auto& [line, message] : mistakes) {
    const outcome o = run(std::string("cat in.y4m | ") + line);
    EXPECT_EQ(o.exit_code, 2) << line;
    EXPECT_EQ(o.out, "");
    EXPECT_EQ(o.err, std::string("morvane: ") + message + "\n");
  }
  const outcome empty = run("morvane convert - out -t uyvy");
  EXPECT_EQ(empty.exit_code, 1);
  EXPECT_EQ(empty.err, "morvane: standard input is empty\n");
  EXPECT_EQ(files(), (std::vector<std::string>{"in.y4m", "out.raw"}));
}

TEST_F(y4m_convert, ffmpeg_is_at_both_ends_of_a_pipe) {
  if (run("command -v ffmpeg").exit_code != 0) GTEST_SKIP() << "there is no ffmpeg here";
  const std::string ffmpeg = "ffmpeg -v error -nostdin -y ";
  quietly(ffmpeg + "-f lavfi -i testsrc2=s=10x6:r=24 -frames:v 3 -pix_fmt yuv422p -f rawvideo theirs.raw");
  quietly(ffmpeg +
          "-f rawvideo -pix_fmt yuv422p -s 10x6 -r 24 -i theirs.raw -f yuv4mpegpipe - | "
          "morvane convert - - --y4m | " +
          ffmpeg + "-f yuv4mpegpipe -i - -f rawvideo ours.raw");
  EXPECT_EQ(read("theirs.raw").size(), 3u * 120);
  EXPECT_EQ(read("ours.raw"), read("theirs.raw"));
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
