// Every value that a rule can meet, for 4:4:4, video with alpha, planar RGB, keys and luma, compared with the formulas
// written out in 32-bit arithmetic, on every backend. Thinned, a part of the large domains that reaches all of their
// corners.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Processing.Morvane.h"
#include "checker.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class exhaustive_planes : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_planes, all_backends(), backend_name);

using image_conversion = void(const std::uint8_t*, int, std::uint8_t*, int, int, int);

constexpr std::size_t values = 256;

// One in every so many rows of a domain; the stride shares no factor with 256, so each value of each component occurs.
unsigned row_step() {
  return thin() ? 37 : 1;
}

std::uint8_t low_byte(int value) {
  return static_cast<std::uint8_t>(value);
}

// RGB to YCbCr.

struct ycbcr {
  int y, cb, cr;
};

ycbcr to_601(int r, int g, int b) {
  return {(33 * r + 64 * g + 13 * b + 2048) >> 7, (-38 * r - 75 * g + 112 * b + 32768) >> 8,
          (112 * r - 94 * g - 18 * b + 32768) >> 8};
}

ycbcr to_709(int r, int g, int b) {
  return {(23 * r + 79 * g + 8 * b + 2048) >> 7, (-26 * r - 87 * g + 112 * b + 32768) >> 8,
          (112 * r - 102 * g - 10 * b + 32768) >> 8};
}

// Calls take(pixels, r, g) with rows that hold all values of blue, each in `repeats` pixels, for all red and green.
template <class Take>
void all_colors(bool red_first, std::size_t repeats, Take take) {
  std::vector<std::uint8_t> pixels(4 * repeats * values);
  for (unsigned row = 0; row < 65536; row += row_step()) {
    const auto r = static_cast<int>(row >> 8);
    const auto g = static_cast<int>(row & 255);
    for (std::size_t i = 0; i < repeats * values; ++i) {
      const int b = static_cast<int>(i / repeats);
      std::uint8_t* p = pixels.data() + 4 * i;
      p[0] = low_byte(red_first ? r : b);
      p[1] = low_byte(g);
      p[2] = low_byte(red_first ? b : r);
      p[3] = low_byte(static_cast<int>(i) + r);
    }
    if (!take(pixels.data(), r, g)) return;
  }
}

void blue_differences(image_conversion* convert, bool red_first, ycbcr (*rule)(int, int, int)) {
  std::array<std::uint8_t, 4 * values> result{};
  all_colors(red_first, 1, [&](const std::uint8_t* pixels, int r, int g) {
    convert(pixels, 4 * values, result.data(), 4 * values, values, 1);
    for (int b = 0; b < 256; ++b)
      if (result[static_cast<std::size_t>(4 * b + 1)] != rule(r, g, b).cb) {
        ADD_FAILURE() << "R " << r << " G " << g << " B " << b << ": got Cb "
                      << int{result[static_cast<std::size_t>(4 * b + 1)]} << ", expected " << rule(r, g, b).cb;
        return false;
      }
    return true;
  });
}

// Rows of one pixel, which hold its luma and Cr: Cr first, then Cb and luma.
void luma_and_red_differences(image_conversion* convert, bool red_first, ycbcr (*rule)(int, int, int)) {
  std::array<std::uint8_t, 8 * values> result{};
  all_colors(red_first, 1, [&](const std::uint8_t* pixels, int r, int g) {
    convert(pixels, 4, result.data(), 8, 1, values);
    for (int b = 0; b < 256; ++b) {
      const ycbcr wanted = rule(r, g, b);
      const std::uint8_t* got = result.data() + 8 * b;
      if (got[0] != wanted.cr || got[1] != wanted.cb || got[2] != wanted.y) {
        ADD_FAILURE() << "R " << r << " G " << g << " B " << b << ": got " << int{got[0]} << " " << int{got[1]} << " "
                      << int{got[2]};
        return false;
      }
    }
    return true;
  });
}

TEST_P(exhaustive_planes, all_colors_through_the_601_matrix_to_444) {
  blue_differences(&fc::bgra_601::ycbcra, false, to_601);
  blue_differences(&fc::rgbx_601::crcbyx, true, to_601);
  luma_and_red_differences(&fc::bgra_601::ycbcra, false, to_601);
}

TEST_P(exhaustive_planes, all_colors_through_the_709_matrix_to_444) {
  blue_differences(&fc::bgrx_709::ycbcrx, false, to_709);
  blue_differences(&fc::rgba_709::crcbya, true, to_709);
  luma_and_red_differences(&fc::rgba_709::ycbcra, true, to_709);
}

using with_alpha = void(const std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, int, int, bool*);

void colors_to_uyvy_a(with_alpha* convert, bool red_first, ycbcr (*rule)(int, int, int)) {
  std::array<std::uint8_t, 4 * values> uyvy{};
  std::array<std::uint8_t, 2 * values> alpha{};
  bool opaque = false;
  all_colors(red_first, 2, [&](const std::uint8_t* pixels, int r, int g) {
    convert(pixels, 8 * values, uyvy.data(), 4 * values, alpha.data(), 2 * values, 2 * values, 1, &opaque);
    for (int b = 0; b < 256; ++b) {
      const ycbcr wanted = rule(r, g, b);
      const std::uint8_t* got = uyvy.data() + 4 * b;
      if (got[0] != wanted.cb || got[1] != wanted.y || got[2] != wanted.cr || got[3] != wanted.y) {
        ADD_FAILURE() << "R " << r << " G " << g << " B " << b << ": got " << int{got[0]} << " " << int{got[1]} << " "
                      << int{got[2]} << " " << int{got[3]};
        return false;
      }
    }
    for (std::size_t i = 0; i < alpha.size(); ++i)
      if (alpha[i] != pixels[4 * i + 3]) {
        ADD_FAILURE() << "alpha of pixel " << i;
        return false;
      }
    return true;
  });
  EXPECT_FALSE(opaque);
}

TEST_P(exhaustive_planes, all_colors_to_uyvy_a) {
  colors_to_uyvy_a(&fc::bgra_601::uyvy_a, false, to_601);
  colors_to_uyvy_a(&fc::rgba_601::uyvy_a, true, to_601);
  colors_to_uyvy_a(&fc::bgra_709::uyvy_a, false, to_709);
  colors_to_uyvy_a(&fc::rgba_709::uyvy_a, true, to_709);
}

// Video to RGB with 6 fractional bits.

int clamp(int t) {
  return t < 64 ? 0 : t >= 16320 ? 255 : t >> 6;
}

struct rgb {
  int r, g, b;
};

rgb from_601(int y, int cb, int cr) {
  const int luma = 74 * y - 1192;
  return {clamp(luma + 102 * (cr - 128)), clamp(luma - 25 * (cb - 128) - 52 * (cr - 128)),
          clamp(luma + 128 * (cb - 128))};
}

rgb from_709(int y, int cb, int cr) {
  const int luma = 74 * y - 1192;
  return {clamp(luma + 115 * (cr - 128)), clamp(luma - 14 * (cb - 128) - 34 * (cr - 128)),
          clamp(luma + 128 * (cb - 128))};
}

constexpr std::size_t pixels_of_triples = 2 * values;

// A row of pairs holds every luma in both positions, in opposite directions. convert(video) converts it, and
// color(i) answers what pixel i has become.
template <class Convert, class Color>
void all_triples(rgb (*rule)(int, int, int), Convert convert, Color color) {
  std::array<std::uint8_t, 2 * pixels_of_triples> video{};
  for (unsigned row = 0; row < 65536; row += row_step()) {
    const int cb = static_cast<int>(row >> 8);
    const int cr = static_cast<int>(row & 255);
    for (std::size_t i = 0; i < values; ++i) {
      std::uint8_t* p = video.data() + 4 * i;
      p[0] = low_byte(cb), p[1] = static_cast<std::uint8_t>(i), p[2] = low_byte(cr);
      p[3] = static_cast<std::uint8_t>(255 - i);
    }
    convert(video.data());
    for (std::size_t i = 0; i < pixels_of_triples; ++i) {
      const int y = video[2 * i + 1];
      const rgb wanted = rule(y, cb, cr);
      const rgb got = color(i);
      if (got.r != wanted.r || got.g != wanted.g || got.b != wanted.b) {
        ADD_FAILURE() << "Y " << y << " Cb " << cb << " Cr " << cr << " (pixel " << i << "): got R " << got.r << " G "
                      << got.g << " B " << got.b << ", expected " << wanted.r << " " << wanted.g << " " << wanted.b;
        return;
      }
    }
  }
}

using key_conversion = void(const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*, int, int, int);

void triples_with_alpha(key_conversion* convert, bool red_first, rgb (*rule)(int, int, int)) {
  constexpr int width = pixels_of_triples;
  std::array<std::uint8_t, pixels_of_triples> alpha{};
  for (std::size_t i = 0; i < alpha.size(); ++i) alpha[i] = static_cast<std::uint8_t>(7 * i);
  std::array<std::uint8_t, 4 * pixels_of_triples> picture{};
  all_triples(
      rule,
      [&](const std::uint8_t* video) {
        convert(video, 2 * width, alpha.data(), width, picture.data(), 4 * width, width, 1);
      },
      [&](std::size_t i) {
        const std::uint8_t* p = picture.data() + 4 * i;
        EXPECT_EQ(p[3], alpha[i]);
        return red_first ? rgb{p[0], p[1], p[2]} : rgb{p[2], p[1], p[0]};
      });
}

TEST_P(exhaustive_planes, all_video_triples_with_alpha_to_rgb) {
  triples_with_alpha(&fc::uyvy_a::bgra_601, false, from_601);
  triples_with_alpha(&fc::uyvy_a::bgra_709, false, from_709);
  triples_with_alpha(&fc::uyvy_a::rgba_601, true, from_601);
  triples_with_alpha(&fc::uyvy_a::rgba_709, true, from_709);
}

using planar_conversion = void(const std::uint8_t*, int, std::uint8_t*, std::uint8_t*, std::uint8_t*, int, int, int);

void triples_to_planes(planar_conversion* convert, rgb (*rule)(int, int, int)) {
  constexpr int width = pixels_of_triples;
  std::array<std::uint8_t, pixels_of_triples> r{}, g{}, b{};
  all_triples(
      rule,
      [&](const std::uint8_t* video) { convert(video, 2 * width, r.data(), g.data(), b.data(), width, width, 1); },
      [&](std::size_t i) {
        return rgb{r[i], g[i], b[i]};
      });
}

TEST_P(exhaustive_planes, all_video_triples_to_planar_rgb) {
  triples_to_planes(&fc::uyvy::r_g_b_601, from_601);
  triples_to_planes(&fc::uyvy::r_g_b_709, from_709);
}

// Compositing over black: every sample with every alpha, in all four positions of a pair. The other samples and the
// other alpha of the pair are complements, so that a mix-up shows.

int over_black(int sample, int black, int alpha) {
  const int product = (sample - black) * (alpha + 1);
  const int quotient = product >= 0 ? product / 256 : -((-product + 255) / 256);
  return (black + quotient) & 255;
}

// A pair whose even pixel has the sample and the alpha, or the odd one.
struct composed_pair {
  std::array<int, 4> uyvy;
  std::array<int, 2> alpha;
};

composed_pair pair_of(int sample, int alpha, bool odd) {
  if (odd) return {{255 - sample, 255 - sample, sample, sample}, {255 - alpha, alpha}};
  return {{sample, sample, 255 - sample, 255 - sample}, {alpha, 255 - alpha}};
}

// convert(pairs, video) composites a row of `values` pairs.
template <class Convert>
void all_samples_with_all_alphas(Convert convert) {
  std::array<composed_pair, values> pairs;
  std::array<std::uint8_t, 4 * values> video{};
  for (const bool odd : {false, true})
    for (int alpha = 0; alpha < 256; ++alpha) {
      for (std::size_t i = 0; i < values; ++i) pairs[i] = pair_of(static_cast<int>(i), alpha, odd);
      convert(pairs, video.data());
      for (std::size_t i = 0; i < values; ++i)
        for (std::size_t k = 0; k < 4; ++k)
          ASSERT_EQ(video[4 * i + k], over_black(pairs[i].uyvy[k], k % 2 == 0 ? 128 : 16, pairs[i].alpha[k / 2]))
              << "sample " << i << " alpha " << alpha << " byte " << k << (odd ? " of odd" : " of even");
    }
}

using pairs_in_row = std::array<composed_pair, values>;

TEST_P(exhaustive_planes, all_samples_of_uyvy_with_all_alphas_over_black) {
  all_samples_with_all_alphas([](const pairs_in_row& pairs, std::uint8_t* video) {
    std::array<std::uint8_t, 4 * values> uyvy{};
    std::array<std::uint8_t, 2 * values> alpha{};
    for (std::size_t i = 0; i < values; ++i) {
      for (std::size_t k = 0; k < 4; ++k) uyvy[4 * i + k] = low_byte(pairs[i].uyvy[k]);
      for (std::size_t k = 0; k < 2; ++k) alpha[2 * i + k] = low_byte(pairs[i].alpha[k]);
    }
    fc::uyvy_a::uyvy(uyvy.data(), 4 * values, alpha.data(), 2 * values, video, 4 * values, 2 * values, 1);
  });
}

void composite_444(image_conversion* convert, const pairs_in_row& pairs, std::uint8_t* video, bool luma_first) {
  std::array<std::uint8_t, 8 * values> pixels{};
  for (std::size_t i = 0; i < values; ++i) {
    const composed_pair& p = pairs[i];
    const std::array<int, 8> luma_cb_cr_alpha = {p.uyvy[1], p.uyvy[0], p.uyvy[2], p.alpha[0],
                                                 p.uyvy[3], 3,         4,         p.alpha[1]};
    for (std::size_t k = 0; k < 8; ++k)
      pixels[8 * i + (luma_first || k % 2 != 0 ? k : k ^ 2)] = low_byte(luma_cb_cr_alpha[k]);
  }
  convert(pixels.data(), 8 * values, video, 4 * values, 2 * values, 1);
}

TEST_P(exhaustive_planes, all_samples_of_444_with_all_alphas_over_black) {
  all_samples_with_all_alphas(
      [](const pairs_in_row& pairs, std::uint8_t* video) { composite_444(&fc::ycbcra::uyvy, pairs, video, true); });
  all_samples_with_all_alphas(
      [](const pairs_in_row& pairs, std::uint8_t* video) { composite_444(&fc::vuya::uyvy, pairs, video, false); });
}

// Keys and luma.

int key(int luma) {
  const int t = luma * 301 - 5117;
  return luma * 301 >= 70397 ? 255 : t < 0 ? 0 : t >> 8;
}

TEST_P(exhaustive_planes, all_keys_of_a_luma_plane) {
  std::array<std::uint8_t, 4 * values> video{};
  std::array<std::uint8_t, 2 * values> keys{};
  for (std::size_t i = 0; i < values; ++i) {
    video[4 * i] = video[4 * i + 2] = static_cast<std::uint8_t>(3 * i);
    video[4 * i + 1] = static_cast<std::uint8_t>(i);
    video[4 * i + 3] = static_cast<std::uint8_t>(255 - i);
  }
  fc::uyvy::y(video.data(), 4 * values, keys.data(), 2 * values, 2 * values, 1, true);
  for (std::size_t i = 0; i < 2 * values; ++i) EXPECT_EQ(keys[i], key(video[2 * i + 1])) << int{video[2 * i + 1]};
}

TEST_P(exhaustive_planes, all_keys_of_a_second_image) {
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

TEST_P(exhaustive_planes, all_keys_of_16_bits) {
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

TEST_P(exhaustive_planes, all_luma_to_grey_video) {
  std::array<std::uint8_t, values> luma{};
  for (std::size_t i = 0; i < values; ++i) luma[i] = static_cast<std::uint8_t>(i * 77);
  std::array<std::uint8_t, 2 * values> video{};
  for (const bool rescale : {false, true}) {
    fc::y::uyvy(luma.data(), values, video.data(), 2 * values, values, 1, rescale);
    for (std::size_t i = 0; i < values; ++i) {
      EXPECT_EQ(video[2 * i], 128);
      EXPECT_EQ(video[2 * i + 1], rescale ? (luma[i] * 220 >> 8) + 16 : luma[i]) << int{luma[i]};
    }
  }
}

}  // namespace
}  // namespace morvane::tests
