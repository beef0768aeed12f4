// morvane show, of frames that FFmpeg has written, beside FFmpeg's own pictures of them. Without FFmpeg the tests are
// skipped.
#include <nlohmann/json.hpp>
#include <ostream>

#include "shell.h"

namespace morvane::tests {

namespace {

// The width is no whole number of v210 groups, whose rows FFmpeg fills up to whole multiples of 128 bytes.
const std::string size = "208x112";

struct written {
  const char* format;    // as both programs call it
  const char* encoding;  // how FFmpeg is told to write it
  const char* reading;   // how FFmpeg is told to read the file for its own picture; null where it cannot
  const char* picture;   // FFmpeg's format of the picture
};

void PrintTo(const written& w, std::ostream* out) {
  *out << w.format;
}

constexpr written all_written[] = {
    {"p010le", "-pix_fmt p010le", "-pix_fmt p010le", "rgb24"},
    {"p216le", "-pix_fmt p216le", "-pix_fmt p216le", "rgb24"},
    {"bgra64le", "-pix_fmt bgra64le", "-pix_fmt bgra64le", "rgb24"},
    {"gray10le", "-pix_fmt gray10le", "-pix_fmt gray10le", "gray"},
    {"v210", "-c:v v210", nullptr, "rgb24"},
};

class ffmpeg : public command, public testing::WithParamInterface<written> {
 protected:
  outcome ffmpeg_run(const std::string& arguments) const { return run("ffmpeg -v error -y " + arguments); }

  // A test picture that is drawn in 10 bits.
  static constexpr const char* source = "-f rawvideo -pix_fmt yuv422p10le -s 208x112 -i source.yuv ";
};

TEST_P(ffmpeg, frames_look_as_it_shows_them) {
  if (run("command -v ffmpeg").exit_code != 0) GTEST_SKIP() << "there is no ffmpeg here";
  const written& w = GetParam();
  ASSERT_EQ(ffmpeg_run("-f lavfi -i testsrc2=s=" + size + ",format=yuv422p10le -frames:v 1 -f rawvideo source.yuv").err,
            "");
  const outcome o = ffmpeg_run(std::string(source) + w.encoding + " -f rawvideo frame.raw");
  if (o.exit_code != 0) GTEST_SKIP() << "this ffmpeg cannot write " << w.format << ": " << o.err;

  const std::string filter =
      std::string(" -vf scale=in_color_matrix=bt709:flags=accurate_rnd+full_chroma_int+neighbor,format=") + w.picture;
  const std::string frame =
      w.reading ? "-f rawvideo " + std::string(w.reading) + " -s " + size + " -i frame.raw" : std::string(source);
  ASSERT_EQ(ffmpeg_run(frame + filter + " ffmpeg.png").err, "");

  const std::string what = " -f " + std::string(w.format) + " -s " + size;
  if (w.picture == std::string("gray"))
    quietly("morvane show frame.raw morvane.png" + what);
  else
    quietly("morvane convert frame.raw morvane.png -t rgbx --chroma nearest" + what);
  const outcome compared = run("morvane compare morvane.png ffmpeg.png --json");
  const auto psnr = nlohmann::json::parse(compared.out)["planes"][0]["psnr_db"];
  EXPECT_GT(psnr.is_string() ? 100.0 : psnr.get<double>(), 40.0);
}

INSTANTIATE_TEST_SUITE_P(every_layout, ffmpeg, testing::ValuesIn(all_written),
                         [](const auto& of) { return std::string(of.param.format); });

}  // namespace

}  // namespace morvane::tests
