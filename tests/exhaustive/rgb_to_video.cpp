// All colours to video, on every backend.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "exhaustive/colors.h"

namespace morvane::tests {
namespace {

class exhaustive_rgb_to_video : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_rgb_to_video, all_backends(), backend_name);

struct pair {
  int u, y0, v, y1;
};

using pair_rule = pair (*)(int r, int g, int b, int alpha);

bool is_pair(const std::uint8_t* uyvy, const pair& wanted, int r, int g, int b) {
  if (uyvy[0] == low_byte(wanted.u) && uyvy[1] == low_byte(wanted.y0) && uyvy[2] == low_byte(wanted.v) &&
      uyvy[3] == low_byte(wanted.y1))
    return true;
  ADD_FAILURE() << "R " << r << " G " << g << " B " << b << ": got " << int{uyvy[0]} << " " << int{uyvy[1]} << " "
                << int{uyvy[2]} << " " << int{uyvy[3]} << ", expected " << wanted.u << " " << wanted.y0 << " "
                << wanted.v << " " << wanted.y1;
  return false;
}

// Both pixels of a pair have the same colour.
void colors_to_uyvy(image_conversion* convert, const rgb_layout& layout, pair_rule rule, int alpha) {
  constexpr int width = 2 * byte_values;
  std::array<std::uint8_t, 2 * width> video{};
  const auto same_alpha = [alpha](int) { return alpha; };
  all_colors(layout, 2, same_alpha, [&](const std::uint8_t* pixels, int r, int g) {
    convert(pixels, static_cast<int>(layout.bytes) * width, video.data(), 2 * width, width, 1);
    for (int b = 0; b < 256; ++b)
      if (!is_pair(video.data() + 4 * b, rule(r, g, b, alpha), r, g, b)) return false;
    return true;
  });
}

pair same_in_both(const ycbcr& color) {
  return {color.cb, color.y, color.cr, color.y};
}

pair direct_709(int r, int g, int b, int) {
  return same_in_both(to_709(r, g, b));
}

pair direct_601(int r, int g, int b, int) {
  return same_in_both(to_601(r, g, b));
}

pair of_bgr(int r, int g, int b, int) {
  return same_in_both({((16 * b + 157 * g + 47 * r) >> 8) + 16, ((112 * b - 87 * g - 26 * r) >> 8) + 128,
                       ((112 * r - 102 * g - 10 * b) >> 8) + 128});
}

pair over_black(int r, int g, int b, int a) {
  const int y = ((((23 * r + 80 * g + 8 * b) * a) >> 8) + 2048) >> 7;
  const int c = ((((112 * b - 87 * g - 26 * r) * a) >> 8) + 32768) >> 8;
  return {c, y, c, y};
}

TEST_P(exhaustive_rgb_to_video, all_colors_through_the_direct_709_matrix) {
  colors_to_uyvy(&fc::bgrx::uyvy, blue_first, direct_709, 255);
  colors_to_uyvy(&fc::rgbx::uyvy, red_first, direct_709, 3);
}

TEST_P(exhaustive_rgb_to_video, all_colors_through_the_direct_601_matrix) {
  colors_to_uyvy(&fc::bgrx_601::uyvy, blue_first, direct_601, 255);
  colors_to_uyvy(&fc::rgbx_601::uyvy, red_first, direct_601, 200);
}

TEST_P(exhaustive_rgb_to_video, all_colors_through_the_bgr_matrix) {
  colors_to_uyvy(&fc::bgr::uyvy, three_bytes, of_bgr, 255);
}

TEST_P(exhaustive_rgb_to_video, all_colors_over_black_with_some_alphas) {
  for (const int alpha : {255, 254, 128, 1}) colors_to_uyvy(&fc::bgra::uyvy, blue_first, over_black, alpha);
  for (const int alpha : {255, 127, 0}) colors_to_uyvy(&fc::rgba::uyvy, red_first, over_black, alpha);
}

// The result over black depends on a colour only through its two weighted sums. A colour for each value of each sum
// therefore meets every alpha.
std::vector<std::array<std::uint8_t, 3>> a_color_for_every_sum() {
  constexpr int lowest_chroma = -(87 + 26) * 255;
  std::vector<bool> luma_seen(111 * 255 + 1), chroma_seen(225 * 255 + 1);
  std::vector<std::array<std::uint8_t, 3>> colors;
  for (int r = 0; r < 256; ++r)
    for (int g = 0; g < 256; ++g)
      for (int b = 0; b < 256; ++b) {
        const auto luma = static_cast<std::size_t>(23 * r + 80 * g + 8 * b);
        const auto chroma = static_cast<std::size_t>(112 * b - 87 * g - 26 * r - lowest_chroma);
        if (luma_seen[luma] && chroma_seen[chroma]) continue;
        luma_seen[luma] = chroma_seen[chroma] = true;
        colors.push_back({low_byte(b), low_byte(g), low_byte(r)});
      }
  return colors;
}

TEST_P(exhaustive_rgb_to_video, every_weighted_sum_over_black_with_all_alphas) {
  static const auto colors = a_color_for_every_sum();
  std::array<std::uint8_t, 2048> source{};
  std::array<std::uint8_t, 1024> video{};
  for (std::size_t n = 0; n < colors.size(); n += thin() ? 17 : 1) {
    const auto [b, g, r] = colors[n];
    for (std::size_t i = 0; i < 512; ++i) {
      std::uint8_t* p = source.data() + 4 * i;
      p[0] = b, p[1] = g, p[2] = r, p[3] = low_byte(static_cast<int>(i / 2));
    }
    fc::bgra::uyvy(source.data(), 2048, video.data(), 1024, 512, 1);
    for (int alpha = 0; alpha < 256; ++alpha)
      ASSERT_TRUE(is_pair(video.data() + 4 * alpha, over_black(r, g, b, alpha), r, g, b)) << "A " << alpha;
  }
}

using with_alpha = void(const std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, int, int, bool*);

void colors_to_uyvy_a(with_alpha* convert, const rgb_layout& layout, ycbcr_rule rule) {
  constexpr int width = 2 * byte_values;
  std::array<std::uint8_t, 2 * width> uyvy{};
  std::array<std::uint8_t, width> alpha{};
  bool opaque = false;
  all_colors(layout, 2, any_alpha, [&](const std::uint8_t* pixels, int r, int g) {
    convert(pixels, 4 * width, uyvy.data(), 2 * width, alpha.data(), width, width, 1, &opaque);
    for (int b = 0; b < 256; ++b)
      if (!is_pair(uyvy.data() + 4 * b, same_in_both(rule(r, g, b)), r, g, b)) return false;
    for (std::size_t i = 0; i < alpha.size(); ++i)
      if (alpha[i] != pixels[4 * i + 3]) {
        ADD_FAILURE() << "alpha of pixel " << i;
        return false;
      }
    return true;
  });
  EXPECT_FALSE(opaque);
}

TEST_P(exhaustive_rgb_to_video, all_colors_to_uyvy_a) {
  colors_to_uyvy_a(&fc::bgra_601::uyvy_a, blue_first, to_601);
  colors_to_uyvy_a(&fc::rgba_601::uyvy_a, red_first, to_601);
  colors_to_uyvy_a(&fc::bgra_709::uyvy_a, blue_first, to_709);
  colors_to_uyvy_a(&fc::rgba_709::uyvy_a, red_first, to_709);
}

}  // namespace
}  // namespace morvane::tests
