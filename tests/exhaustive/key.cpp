// Every luma as a key and back, and every sample with every alpha over black, on every backend.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "exhaustive/over_black.h"

namespace morvane::tests {
namespace {

class exhaustive_key : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_key, all_backends(), backend_name);

int key(int luma) {
  const int t = luma * 301 - 5117;
  return luma * 301 >= 70397 ? 255 : t < 0 ? 0 : t >> 8;
}

TEST_P(exhaustive_key, all_keys_of_a_luma_plane) {
  std::array<std::uint8_t, 4 * byte_values> video{};
  std::array<std::uint8_t, 2 * byte_values> keys{};
  for (std::size_t i = 0; i < byte_values; ++i) {
    video[4 * i] = video[4 * i + 2] = static_cast<std::uint8_t>(3 * i);
    video[4 * i + 1] = static_cast<std::uint8_t>(i);
    video[4 * i + 3] = static_cast<std::uint8_t>(255 - i);
  }
  fc::uyvy::y(video.data(), 4 * byte_values, keys.data(), 2 * byte_values, 2 * byte_values, 1, true);
  for (std::size_t i = 0; i < 2 * byte_values; ++i) EXPECT_EQ(keys[i], key(video[2 * i + 1])) << int{video[2 * i + 1]};
}

TEST_P(exhaustive_key, all_keys_of_a_second_image) {
  constexpr std::array<std::uint8_t, 4> fill = {1, 2, 3, 4};
  for (int luma = 0; luma < 256; ++luma) {
    const std::array<std::uint8_t, 4> second = {9, low_byte(luma), 9, low_byte(255 - luma)};
    std::array<std::uint8_t, 4> ya{};
    std::array<std::uint8_t, 2> cbcr{};
    fc::uyvy::ya_uv(fill.data(), 4, second.data(), 4, ya.data(), 4, cbcr.data(), 2, 2, 1, true);
    EXPECT_EQ(ya[1], key(luma)) << luma;
    EXPECT_EQ(ya[3], key(255 - luma)) << 255 - luma;
  }
}

TEST_P(exhaustive_key, all_keys_of_16_bits) {
  std::vector<std::uint16_t> luma(65536), keys(65536);
  for (std::size_t i = 0; i < luma.size(); ++i) luma[i] = static_cast<std::uint16_t>(i * 40503);
  fc::y16::y16(luma.data(), 131072, keys.data(), 131072, 65536, 1, true);
  for (std::size_t i = 0; i < luma.size(); ++i) {
    const int p = luma[i] * 1197;
    const int t = p - 4902912;
    const int wanted = p >= 72010752 ? 65535 : t < 1024 ? 0 : t >> 10;
    ASSERT_EQ(keys[i], wanted) << luma[i];
  }
}

TEST_P(exhaustive_key, all_luma_to_grey_video) {
  std::array<std::uint8_t, byte_values> luma{};
  for (std::size_t i = 0; i < byte_values; ++i) luma[i] = static_cast<std::uint8_t>(i * 77);
  std::array<std::uint8_t, 2 * byte_values> video{};
  for (const bool rescale : {false, true}) {
    fc::y::uyvy(luma.data(), byte_values, video.data(), 2 * byte_values, byte_values, 1, rescale);
    for (std::size_t i = 0; i < byte_values; ++i) {
      EXPECT_EQ(video[2 * i], 128);
      EXPECT_EQ(video[2 * i + 1], rescale ? (luma[i] * 220 >> 8) + 16 : luma[i]) << int{luma[i]};
    }
  }
}

TEST_P(exhaustive_key, all_samples_of_uyvy_with_all_alphas_over_black) {
  all_samples_with_all_alphas([](const pairs_in_row& pairs, std::uint8_t* video) {
    std::array<std::uint8_t, 4 * byte_values> uyvy{};
    std::array<std::uint8_t, 2 * byte_values> alpha{};
    for (std::size_t i = 0; i < byte_values; ++i) {
      for (std::size_t k = 0; k < 4; ++k) uyvy[4 * i + k] = low_byte(pairs[i].uyvy[k]);
      for (std::size_t k = 0; k < 2; ++k) alpha[2 * i + k] = low_byte(pairs[i].alpha[k]);
    }
    fc::uyvy_a::uyvy(uyvy.data(), 4 * byte_values, alpha.data(), 2 * byte_values, video, 4 * byte_values,
                     2 * byte_values, 1);
  });
}

}  // namespace
}  // namespace morvane::tests
