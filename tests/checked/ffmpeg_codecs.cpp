// Layouts that FFmpeg has as codecs, as it reads and writes them, what rows end with included.
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

// FFmpeg's gbrp10le, and rgb48, of ten bits each.
bytes as_planes_of_rgb(const std::vector<std::uint16_t>& samples, std::size_t pixels_of_plane) {
  bytes made;
  for (const std::size_t plane : {1U, 2U, 0U})
    for (std::size_t i = 0; i < pixels_of_plane; ++i) append(made, samples[3 * i + plane]);
  return made;
}

bytes as_rgb48(const std::vector<std::uint16_t>& samples) {
  bytes made;
  for (const std::uint16_t sample : samples) append(made, sample << 6 | sample >> 4);
  return made;
}

std::vector<std::uint16_t> samples_of_rgb(int columns) {
  std::vector<std::uint16_t> samples(static_cast<std::size_t>(3 * columns * height));
  std::uint32_t seed = 2;
  std::generate(samples.begin(), samples.end(), [&] {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<std::uint16_t>(seed >> 22);
  });
  return samples;
}

bytes converted(const char* from, bytes source, const char* to, int columns = width) {
  const description source_is{.format = format_named(from), .width = columns, .height = height};
  const description result_is{.format = format_named(to), .width = columns, .height = height};
  image result(result_is);
  convert(source_is, picture_in(source.data(), lay_out(source_is)), result_is, result.picture());
  return {result.data(), result.data() + result.bytes()};
}

class ffmpeg_codecs : public testing::Test {
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

  bytes by_ffmpeg(const std::string& reading, const bytes& input, const std::string& writing,
                  int columns = width) const {
    std::ofstream(directory_ + "/in", std::ios::binary)
        .write(reinterpret_cast<const char*>(input.data()), static_cast<std::streamsize>(input.size()));
    const std::string call = "cd '" + directory_ + "' && ffmpeg -v error -y " + reading + " -video_size " +
                             std::to_string(columns) + "x4 -i in " + writing + " -f rawvideo out </dev/null";
    EXPECT_EQ(std::system(call.c_str()), 0) << call;
    std::ifstream out(directory_ + "/out", std::ios::binary);
    return {std::istreambuf_iterator<char>(out), std::istreambuf_iterator<char>()};
  }

 private:
  std::string directory_;
};

TEST_F(ffmpeg_codecs, v210_is_read_as_it_is_written_here) {
  const std::vector<std::uint16_t> samples = samples_at_random();
  const bytes written = converted("p216", as_p216(samples), "v210");
  EXPECT_EQ(by_ffmpeg("-f v210", written, "-pix_fmt yuv422p10le"), as_planes(samples));
}

TEST_F(ffmpeg_codecs, v210_is_written_as_it_is_read_here) {
  const std::vector<std::uint16_t> samples = samples_at_random();
  const bytes written = by_ffmpeg("-f rawvideo -pix_fmt yuv422p10le", as_planes(samples), "-c:v v210");
  const description d{.format = format_named("v210"), .width = width, .height = height};
  ASSERT_EQ(static_cast<std::int64_t>(written.size()), lay_out(d).bytes);
  EXPECT_EQ(converted("v210", written, "p216"), as_p216(samples));
}

TEST_F(ffmpeg_codecs, bitpacked_is_read_and_written_as_here) {
  const std::vector<std::uint16_t> samples = samples_at_random();
  const bytes written = converted("p216", as_p216(samples), "st2110_422_10");
  EXPECT_EQ(by_ffmpeg("-f bitpacked -pixel_format yuv422p10", written, "-pix_fmt yuv422p10le"), as_planes(samples));
  EXPECT_EQ(by_ffmpeg("-f rawvideo -pix_fmt yuv422p10le", as_planes(samples), "-c:v bitpacked"), written);
  EXPECT_EQ(converted("st2110_422_10", written, "p216"), as_p216(samples));
}

struct card_format {
  const char* format;
  const char* codec;
};
constexpr card_format card_formats[] = {{"r210", "r210"}, {"R10k", "r10k"}};

// FFmpeg takes a frame out of a file of raw video by the size of pixels of four bytes, so these rows have no padding.
TEST_F(ffmpeg_codecs, rgb_of_cards_is_read_as_it_is_written_here) {
  constexpr int columns = 128;
  const std::vector<std::uint16_t> samples = samples_of_rgb(columns);
  for (const card_format& f : card_formats) {
    const bytes written = converted("rgb48", as_rgb48(samples), f.format, columns);
    EXPECT_EQ(
        by_ffmpeg(std::string("-f rawvideo -pixel_format bgra -c:v ") + f.codec, written, "-pix_fmt gbrp10le", columns),
        as_planes_of_rgb(samples, columns * height))
        << f.format;
  }
}

TEST_F(ffmpeg_codecs, rgb_of_cards_is_written_as_it_is_read_here) {
  const std::vector<std::uint16_t> samples = samples_of_rgb(width);
  for (const card_format& f : card_formats) {
    const bytes written =
        by_ffmpeg("-f rawvideo -pix_fmt gbrp10le", as_planes_of_rgb(samples, pixels), std::string("-c:v ") + f.codec);
    const description d{.format = format_named(f.format), .width = width, .height = height};
    ASSERT_EQ(static_cast<std::int64_t>(written.size()), lay_out(d).bytes) << f.format;
    EXPECT_EQ(converted(f.format, written, "rgb48"), as_rgb48(samples)) << f.format;
  }
}

}  // namespace
}  // namespace morvane::tests
