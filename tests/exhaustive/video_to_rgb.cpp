// All triples of Y, Cb and Cr to RGB, on every backend.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "exhaustive/domains.h"

namespace morvane::tests {
namespace {

class exhaustive_video_to_rgb : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_video_to_rgb, all_backends(), backend_name);

struct color {
  int r, g, b, a;

  bool operator==(const color&) const = default;
};

using rule_of_triples = color (*)(int y, int cb, int cr);

constexpr std::size_t pixels_of_triples = 2 * byte_values;
constexpr int width = pixels_of_triples;

// A row of pairs holds every luma in both positions, in opposite directions; in `row` the triples of a row are
// numbered. convert(video, row) converts it, color_of(i) answers what pixel i has become, and alpha_of(i) what its
// alpha must be.
template <class Convert, class Color, class Alpha>
void all_triples(rule_of_triples rule, Convert convert, Color color_of, Alpha alpha_of) {
  std::array<std::uint8_t, 2 * pixels_of_triples> video{};
  for (unsigned row = 0; row < 65536; row += row_step()) {
    const int cb = static_cast<int>(row >> 8);
    const int cr = static_cast<int>(row & 255);
    for (std::size_t i = 0; i < byte_values; ++i) {
      std::uint8_t* p = video.data() + 4 * i;
      p[0] = low_byte(cb), p[1] = static_cast<std::uint8_t>(i), p[2] = low_byte(cr);
      p[3] = static_cast<std::uint8_t>(255 - i);
    }
    convert(video.data(), row);
    for (std::size_t i = 0; i < pixels_of_triples; ++i) {
      const int y = video[2 * i + 1];
      color wanted = rule(y, cb, cr);
      wanted.a = alpha_of(i);
      const color got = color_of(i);
      if (got == wanted) continue;
      ADD_FAILURE() << "Y " << y << " Cb " << cb << " Cr " << cr << " (pixel " << i << "): got R " << got.r << " G "
                    << got.g << " B " << got.b << " A " << got.a << ", expected " << wanted.r << " " << wanted.g << " "
                    << wanted.b << " " << wanted.a;
      return;
    }
  }
}

constexpr auto opaque = [](std::size_t) { return 255; };

color color_at(const std::uint8_t* p, const rgb_layout& layout) {
  return {p[layout.red], p[layout.green], p[layout.blue], layout.bytes == 4 ? p[3] : 255};
}

// With 8 fractional bits.

int clamp_8(int t) {
  return t < 0 ? 0 : t > 65535 ? 255 : t >> 8;
}

color from_601(int y, int cb, int cr) {
  return {clamp_8(298 * y + 409 * cr - 56865), clamp_8(298 * y - 99 * cb - 207 * cr + 34680),
          clamp_8(298 * y + 517 * cb - 70635), 0};
}

color from_709(int y, int cb, int cr) {
  return {clamp_8(298 * y + 459 * cr - 63240), clamp_8(298 * y - 54 * cb - 136 * cr + 19635),
          clamp_8(299 * y + 541 * cb - 73695), 0};
}

void triples_to_rgb(image_conversion* convert, const rgb_layout& layout, rule_of_triples rule) {
  std::vector<std::uint8_t> picture(pixels_of_triples * layout.bytes);
  all_triples(
      rule,
      [&](const std::uint8_t* video, unsigned) {
        convert(video, 2 * width, picture.data(), static_cast<int>(picture.size()), width, 1);
      },
      [&](std::size_t i) { return color_at(picture.data() + layout.bytes * i, layout); }, opaque);
}

TEST_P(exhaustive_video_to_rgb, all_video_triples_to_bgr) {
  triples_to_rgb(&fc::uyvy::bgr_601, three_bytes, from_601);
  triples_to_rgb(&fc::uyvy::bgr_709, three_bytes, from_709);
}

TEST_P(exhaustive_video_to_rgb, all_video_triples_to_32_bit_rgb) {
  triples_to_rgb(&fc::uyvy::bgra_601, blue_first, from_601);
  triples_to_rgb(&fc::uyvy::bgra_709, blue_first, from_709);
  triples_to_rgb(&fc::uyvy::rgba_601, red_first, from_601);
  triples_to_rgb(&fc::uyvy::rgba_709, red_first, from_709);
}

// With 6 fractional bits.

int clamp_6(int t) {
  return t < 64 ? 0 : t >= 16320 ? 255 : t >> 6;
}

color coarsely_from_601(int y, int cb, int cr) {
  const int luma = 74 * y - 1192;
  return {clamp_6(luma + 102 * (cr - 128)), clamp_6(luma - 25 * (cb - 128) - 52 * (cr - 128)),
          clamp_6(luma + 128 * (cb - 128)), 0};
}

color coarsely_from_709(int y, int cb, int cr) {
  const int luma = 74 * y - 1192;
  return {clamp_6(luma + 115 * (cr - 128)), clamp_6(luma - 14 * (cb - 128) - 34 * (cr - 128)),
          clamp_6(luma + 128 * (cb - 128)), 0};
}

color from_2020(int y, int cb, int cr) {
  const int luma = 74 * y - 1192;
  return {clamp_6(luma + 107 * (cr - 128)), clamp_6(luma - 12 * (cb - 128) - 42 * (cr - 128)),
          clamp_6(luma + 137 * (cb - 128)), 0};
}

using key_conversion = void(const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*, int, int, int);

void triples_with_alpha(key_conversion* convert, const rgb_layout& layout, rule_of_triples rule) {
  std::array<std::uint8_t, pixels_of_triples> alpha{};
  for (std::size_t i = 0; i < alpha.size(); ++i) alpha[i] = static_cast<std::uint8_t>(7 * i);
  std::array<std::uint8_t, 4 * pixels_of_triples> picture{};
  all_triples(
      rule,
      [&](const std::uint8_t* video, unsigned) {
        convert(video, 2 * width, alpha.data(), width, picture.data(), 4 * width, width, 1);
      },
      [&](std::size_t i) { return color_at(picture.data() + 4 * i, layout); }, [&](std::size_t i) { return alpha[i]; });
}

TEST_P(exhaustive_video_to_rgb, all_video_triples_with_alpha_to_rgb) {
  triples_with_alpha(&fc::uyvy_a::bgra_601, blue_first, coarsely_from_601);
  triples_with_alpha(&fc::uyvy_a::bgra_709, blue_first, coarsely_from_709);
  triples_with_alpha(&fc::uyvy_a::rgba_601, red_first, coarsely_from_601);
  triples_with_alpha(&fc::uyvy_a::rgba_709, red_first, coarsely_from_709);
}

using planar_conversion = void(const std::uint8_t*, int, std::uint8_t*, std::uint8_t*, std::uint8_t*, int, int, int);

void triples_to_planes(planar_conversion* convert, rule_of_triples rule) {
  std::array<std::uint8_t, pixels_of_triples> r{}, g{}, b{};
  all_triples(
      rule,
      [&](const std::uint8_t* video, unsigned) {
        convert(video, 2 * width, r.data(), g.data(), b.data(), width, width, 1);
      },
      [&](std::size_t i) {
        return color{r[i], g[i], b[i], 255};
      },
      opaque);
}

TEST_P(exhaustive_video_to_rgb, all_video_triples_to_planar_rgb) {
  triples_to_planes(&fc::uyvy::r_g_b_601, coarsely_from_601);
  triples_to_planes(&fc::uyvy::r_g_b_709, coarsely_from_709);
}

// Of words, the upper bytes count; the lower ones are anything.
TEST_P(exhaustive_video_to_rgb, all_triples_through_the_2020_matrix) {
  std::array<std::uint8_t, 2 * pixels_of_triples> y{}, cbcr{};
  std::array<std::uint8_t, 4 * pixels_of_triples> rgbx{};
  all_triples(
      from_2020,
      [&](const std::uint8_t* video, unsigned row) {
        for (std::size_t i = 0; i < pixels_of_triples; ++i) {
          const std::size_t anything = 37 * i + row;
          y[2 * i] = static_cast<std::uint8_t>(anything);
          y[2 * i + 1] = video[2 * i + 1];
          cbcr[2 * i] = static_cast<std::uint8_t>(~anything);
          cbcr[2 * i + 1] = video[2 * i];
        }
        fc::p216::rgbx_2020(y.data(), 2 * width, cbcr.data(), 2 * width, rgbx.data(), 4 * width, width, 1);
      },
      [&](std::size_t i) { return color_at(rgbx.data() + 4 * i, red_first); }, opaque);
}

}  // namespace
}  // namespace morvane::tests
