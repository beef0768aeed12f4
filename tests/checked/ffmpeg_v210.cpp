// v210 as FFmpeg's codec reads and writes it, rows of 128 bytes for every 48 pixels included.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "morvane.hpp"

namespace morvane::tests {
namespace {

using bytes = std::vector<std::uint8_t>;

// 70 pixels are eleven groups and four pixels, in two times 128 bytes.
constexpr int width = 70;
constexpr int height = 4;
constexpr std::size_t pixels = width * height;

// Luma, Cb and Cr one after the other: samples that video allows, because FFmpeg clamps all others.
std::vector<std::uint16_t> samples_at_random() {
  std::vector<std::uint16_t> samples(2 * pixels);
  std::uint32_t seed = 1;
  std::generate(samples.begin(), samples.end(), [&] {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<std::uint16_t>(4 + (seed >> 16) % 1016);
  });
  return samples;
}

void append(bytes& to, int word) {
  to.push_back(static_cast<std::uint8_t>(word));
  to.push_back(static_cast<std::uint8_t>(word >> 8));
}

// FFmpeg's yuv422p10le.
bytes as_planes(const std::vector<std::uint16_t>& samples) {
  bytes made;
  for (const std::uint16_t sample : samples) append(made, sample);
  return made;
}

// Cb and Cr in turn, and the bits at the top.
bytes as_p216(const std::vector<std::uint16_t>& samples) {
  bytes made;
  for (std::size_t i = 0; i < pixels; ++i) append(made, samples[i] << 6);
  for (std::size_t i = 0; i < pixels; ++i) append(made, samples[pixels + i / 2 + i % 2 * pixels / 2] << 6);
  return made;
}

bytes converted(const char* from, bytes source, const char* to) {
  const description source_is{.format = format_named(from), .width = width, .height = height};
  const description result_is{.format = format_named(to), .width = width, .height = height};
  image result(result_is);
  convert(source_is, picture_in(source.data(), lay_out(source_is)), result_is, result.picture());
  return {result.data(), result.data() + result.bytes()};
}

class ffmpeg_v210 : public testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v ffmpeg >/dev/null") != 0) GTEST_SKIP() << "there is no ffmpeg here";
    std::string pattern = (std::filesystem::temp_directory_path() / "morvane-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    directory_ = pattern;
  }
  void TearDown() override {
    if (!directory_.empty()) std::filesystem::remove_all(directory_);
  }

  bytes by_ffmpeg(const std::string& reading, const bytes& input, const std::string& writing) const {
    std::ofstream(directory_ + "/in", std::ios::binary)
        .write(reinterpret_cast<const char*>(input.data()), static_cast<std::streamsize>(input.size()));
    const std::string call = "cd '" + directory_ + "' && ffmpeg -v error -y " + reading + " -video_size 70x4 -i in " +
                             writing + " -f rawvideo out </dev/null";
    EXPECT_EQ(std::system(call.c_str()), 0) << call;
    std::ifstream out(directory_ + "/out", std::ios::binary);
    return {std::istreambuf_iterator<char>(out), std::istreambuf_iterator<char>()};
  }

 private:
  std::string directory_;
};

TEST_F(ffmpeg_v210, is_read_as_it_is_written_here) {
  const std::vector<std::uint16_t> samples = samples_at_random();
  const bytes written = converted("p216", as_p216(samples), "v210");
  EXPECT_EQ(by_ffmpeg("-f v210", written, "-pix_fmt yuv422p10le"), as_planes(samples));
}

TEST_F(ffmpeg_v210, is_written_as_it_is_read_here) {
  const std::vector<std::uint16_t> samples = samples_at_random();
  const bytes written = by_ffmpeg("-f rawvideo -pix_fmt yuv422p10le", as_planes(samples), "-c:v v210");
  const description d{.format = format_named("v210"), .width = width, .height = height};
  ASSERT_EQ(static_cast<std::int64_t>(written.size()), lay_out(d).bytes);
  EXPECT_EQ(converted("v210", written, "p216"), as_p216(samples));
}

}  // namespace
}  // namespace morvane::tests
