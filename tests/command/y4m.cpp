// The lines of text in YUV4MPEG2.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "errors.h"
#include "y4m_file.h"

namespace morvane::tests {

namespace {

using namespace tool;

next_byte bytes_of(std::string text) {
  return [in = std::make_shared<std::istringstream>(std::move(text))] { return in->get(); };
}

y4m_stream header_of(const std::string& line) {
  return read_y4m_header(bytes_of(line + '\n'), "a.y4m");
}

// What the command answers to a header that it refuses.
template <class Call>
std::string refusal(const Call& call) {
  try {
    call();
  } catch (const failure& f) {
    return f.what();
  }
  return "nothing";
}

std::string refused_header(const std::string& text) {
  return refusal([&] { read_y4m_header(bytes_of(text), "a.y4m"); });
}

const std::string start = "cannot read a.y4m as YUV4MPEG2: ";

TEST(y4m, header_as_ffmpeg_writes_it) {
  const std::string line = "YUV4MPEG2 W16 H9 F30000:1001 Ip A1:1 C420jpeg XYSCSS=420JPEG XCOLORRANGE=LIMITED X Xmine";
  const y4m_stream s = header_of(line);
  EXPECT_EQ(name_of(s.format), "y_u_v_420");
  EXPECT_EQ(s.width, 16);
  EXPECT_EQ(s.height, 9);
  EXPECT_EQ(s.rate, "30000:1001");
  EXPECT_EQ(s.interlacing, "p");
  EXPECT_EQ(s.aspect, "1:1");
  EXPECT_EQ(s.range, range::video);
  EXPECT_EQ(s.extensions, std::vector<std::string>{"mine"});
  EXPECT_EQ(y4m_header(s, siting::left, "b.y4m"),
            "YUV4MPEG2 W16 H9 F30000:1001 Ip A1:1 C420jpeg Xmine XCOLORRANGE=LIMITED\n");
}

TEST(y4m, what_is_unsaid_stays_unsaid) {
  const y4m_stream s = header_of("YUV4MPEG2 H2 W3");
  EXPECT_EQ(name_of(s.format), "y_u_v_420");
  EXPECT_EQ(s.range, range::unsaid);
  EXPECT_EQ(y4m_header(s, siting::left, "b.y4m"), "YUV4MPEG2 W3 H2 C420jpeg\n");
}

TEST(y4m, colours_are_the_formats_of_the_same_name) {
  for (const auto& [colour, format] : {std::pair{"C420mpeg2", "y_u_v_420"},
                                       {"C420paldv", "y_u_v_420"},
                                       {"C420", "y_u_v_420"},
                                       {"C422", "y_u_v_422"},
                                       {"C444", "y_u_v_444"},
                                       {"C444alpha", "y_u_v_a_444"},
                                       {"C420p10", "y_u_v_420_10u16"},
                                       {"C422p12", "y_u_v_422_12u16"},
                                       {"C444p16", "y_u_v_444_u16"},
                                       {"Cmono", "y"},
                                       {"Cmono10", "y_10u16"},
                                       {"Cmono12", "y_12u16"},
                                       {"Cmono16", "y16"}})
    EXPECT_EQ(name_of(header_of(std::string("YUV4MPEG2 W2 H2 ") + colour).format), format);
}

TEST(y4m, the_word_for_the_colour_follows_format_and_siting) {
  const auto written = [](const char* format, siting s) {
    y4m_stream stream = header_of("YUV4MPEG2 W2 H2 Cmono");
    stream.format = format_named(format);
    return y4m_header(stream, s, "b.y4m");
  };
  EXPECT_EQ(written("y_u_v_420", siting::left), "YUV4MPEG2 W2 H2 C420mpeg2\n");
  EXPECT_EQ(written("y_u_v_420", siting::center), "YUV4MPEG2 W2 H2 C420jpeg\n");
  EXPECT_EQ(written("y_u_v_422", siting::center), "YUV4MPEG2 W2 H2 C422\n");
  EXPECT_EQ(written("y16", siting::left), "YUV4MPEG2 W2 H2 Cmono16\n");
  EXPECT_EQ(written("y_u_v_422_10u16", siting::left), "YUV4MPEG2 W2 H2 C422p10\n");
  EXPECT_EQ(written("y_u_v_a_444", siting::left), "YUV4MPEG2 W2 H2 C444alpha\n");
  const std::string refused = refusal([&] { written("uyvy", siting::left); });
  EXPECT_EQ(refused.rfind("b.y4m is YUV4MPEG2, which holds y_u_v_420, y_u_v_422, ", 0), 0u) << refused;
  EXPECT_TRUE(refused.ends_with(", not uyvy")) << refused;
}

TEST(y4m, frames_may_have_words_of_their_own) {
  const next_byte next = bytes_of("FRAME\nFRAME Ip Xmine\nFRAMES\n");
  EXPECT_TRUE(read_y4m_frame_header(next, "a.y4m"));
  EXPECT_TRUE(read_y4m_frame_header(next, "a.y4m"));
  EXPECT_EQ(refusal([&] { read_y4m_frame_header(next, "a.y4m"); }),
            start + "a frame begins with FRAMES, not with FRAME");
  EXPECT_FALSE(read_y4m_frame_header(next, "a.y4m"));
  EXPECT_EQ(refusal([&] { read_y4m_frame_header(bytes_of("FRA"), "a.y4m"); }), start + "it ends inside the line FRA");
}

TEST(y4m, nonsense_is_refused) {
  for (const auto& [text, message] : {
           std::pair{"", "it is empty"},
           {"\n", "it begins with , not with YUV4MPEG2"},
           {"YUV4MPEG W2 H2\n", "it begins with YUV4MPEG W2 H2, not with YUV4MPEG2"},
           {"YUV4MPEG2 W2 H2", "it ends inside the line YUV4MPEG2 W2 H2"},
           {"YUV4MPEG2 H2\n", "the header has no width"},
           {"YUV4MPEG2 W2\n", "the header has no height"},
           {"YUV4MPEG2 W0 H2\n", "the width W0 is not a number of pixels"},
           {"YUV4MPEG2 W-2 H2\n", "the width W-2 is not a number of pixels"},
           {"YUV4MPEG2 W2 H4294967298\n", "the height H4294967298 is not a number of pixels"},
           {"YUV4MPEG2 W2 H2x\n", "the height H2x is not a number of pixels"},
           {"YUV4MPEG2 W2 W2 H2\n", "the header says twice how much its width is"},
           {"YUV4MPEG2 W2 H2 F25\n", "the header's word F25 is not valid"},
           {"YUV4MPEG2 W2 H2 A1:\n", "the header's word A1: is not valid"},
           {"YUV4MPEG2 W2 H2 Ix\n", "the header's word Ix is not valid"},
           {"YUV4MPEG2 W2 H2 C\n", "the header's word C is not valid"},
           {"YUV4MPEG2 W2 H2 C422 C420\n", "the header has two words of the kind C420"},
           {"YUV4MPEG2 W2 H2 Z\n", "the header has the unknown word Z"},
           {"YUV4MPEG2 W2 H2 \x1b[2J\n", "the header has the unknown word ?[2J"},
           {"YUV4MPEG2 W2 H2 C411\n", "there is no format for its colour space C411"},
           {"YUV4MPEG2 W2 H2 XCOLORRANGE=\n", "its range  is neither FULL nor LIMITED"},
       })
    EXPECT_EQ(refused_header(text), start + message);
  EXPECT_EQ(refused_header(std::string(5000, 'Y')),
            start + "a line is longer than 4096 bytes: " + std::string(40, 'Y') + "...");
}

// The formats that both programs have.
TEST(y4m, ffmpeg_is_understood_and_understands) {
  if (std::system("command -v ffmpeg > /dev/null") != 0) GTEST_SKIP() << "there is no ffmpeg here";
  const std::string path = testing::TempDir() + "morvane_y4m_test.y4m";
  for (const auto& [theirs, ours] : {std::pair{"yuv420p", "y_u_v_420"},
                                     {"yuv422p", "y_u_v_422"},
                                     {"gray", "y"},
                                     {"gray10le", "y_10u16"},
                                     {"gray16le", "y16"}}) {
    const std::string call = text("ffmpeg -v error -y -f lavfi -i testsrc2=s=10x6:r=24 -frames:v 2 -strict -1 ",
                                  "-pix_fmt ", theirs, " '", path, "'");
    ASSERT_EQ(std::system(call.c_str()), 0) << call;
    std::ifstream file(path, std::ios::binary);
    const next_byte next = [&] { return file.get(); };
    const y4m_stream s = read_y4m_header(next, path);
    EXPECT_EQ(name_of(s.format), ours);
    EXPECT_EQ(s.width, 10);
    EXPECT_EQ(s.rate, "24:1");
    std::stringstream copy;
    copy << y4m_header(s, siting::left, path);
    const auto bytes = static_cast<std::size_t>(lay_out({.format = s.format, .width = 10, .height = 6}).bytes);
    std::string frames;
    for (int i = 0; i < 2; ++i) {
      ASSERT_TRUE(read_y4m_frame_header(next, path));
      std::string frame(bytes, ' ');
      ASSERT_TRUE(file.read(frame.data(), static_cast<std::streamsize>(bytes)));
      copy << y4m_frame_header << frame;
      frames += frame;
    }
    EXPECT_FALSE(read_y4m_frame_header(next, path));
    file.close();
    std::ofstream(path, std::ios::binary) << copy.str();
    const std::string raw = path + ".raw";
    const std::string decoding =
        text("ffmpeg -v error -y -i '", path, "' -f rawvideo -pix_fmt ", theirs, " '", raw, "'");
    ASSERT_EQ(std::system(decoding.c_str()), 0) << decoding;
    std::stringstream back;
    back << std::ifstream(raw, std::ios::binary).rdbuf();
    EXPECT_EQ(back.str(), frames) << theirs;
    std::remove(raw.c_str());
  }
  std::remove(path.c_str());
}

}  // namespace

}  // namespace morvane::tests
