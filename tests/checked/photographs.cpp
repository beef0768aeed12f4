// What the way of a photograph to video and back costs: linear filters keep it near.
#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "morvane.hpp"

namespace morvane::tests {
namespace {

struct photograph {
  explicit photograph(const std::string& name) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    const std::string path = MORVANE_PICTURES "/" + name + ".png";
    if (png_image_begin_read_from_file(&png, path.c_str()) == 0) return;
    png.format = PNG_FORMAT_BGR;
    is = {.format = format_named("bgr"),
          .width = static_cast<std::int32_t>(png.width),
          .height = static_cast<std::int32_t>(png.height)};
    bytes.resize(PNG_IMAGE_SIZE(png));
    if (png_image_finish_read(&png, nullptr, bytes.data(), 0, nullptr) == 0) bytes.clear();
  }
  morvane_picture picture() { return picture_in(bytes.data(), lay_out(is)); }

  description is;
  std::vector<std::uint8_t> bytes;
};

// In dB, of all samples.
double psnr(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
  return 10 * std::log10(255.0 * 255.0 * static_cast<double>(a.size()) / sum);
}

double psnr_by_way_of(const std::string& format, const std::string& name, matrix m, const options& how) {
  photograph original(name), back(name);
  EXPECT_FALSE(original.bytes.empty()) << name << " cannot be read";
  if (original.bytes.empty()) return 0;
  const description video = {
      .format = format_named(format), .width = original.is.width, .height = original.is.height, .matrix = m};
  image between(video);
  convert(original.is, original.picture(), video, between.picture(), how);
  std::fill(back.bytes.begin(), back.bytes.end(), std::uint8_t{0});
  convert(video, between.picture(), back.is, back.picture(), how);
  return psnr(original.bytes, back.bytes);
}

void expect_quality(const std::string& name, double linear, double nearest) {
  for (const matrix m : {matrix::bt601, matrix::bt709})
    for (const siting s : {siting::left, siting::center}) {
      const double of_linear = psnr_by_way_of("uyvy", name, m, {.siting = s});
      const double of_nearest = psnr_by_way_of("uyvy", name, m, {.filter = filter::nearest, .siting = s});
      std::printf("%s by BT.%d, %s: %.2f dB, nearest %.2f dB\n", name.c_str(), static_cast<int>(m),
                  s == siting::left ? "left" : "center", of_linear, of_nearest);
      EXPECT_GE(of_linear, linear) << name;
      EXPECT_GE(of_nearest, nearest) << name;
    }
}

TEST(photographs, survive_the_way_to_video_and_back) {
  expect_quality("astronaut", 41, 37);
  expect_quality("cat", 48, 44);
}

}  // namespace
}  // namespace morvane::tests
