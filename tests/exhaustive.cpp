// Every value that a rule can meet: all colours, all video triples, all 10-bit samples, compared with the formulas
// written out in 32-bit arithmetic, on every backend. Thinned, a part of each domain that reaches all of its corners.
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

class exhaustive : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive, all_backends(), backend_name);

using image_conversion = void(const std::uint8_t*, int, std::uint8_t*, int, int, int);

// One in every so many rows of a domain is converted; the rows are taken with a stride that shares no factor with 256,
// so that each value of each component occurs.
unsigned row_step() {
  return thin() ? 37 : 1;
}

std::uint8_t low_byte(int value) {
  return static_cast<std::uint8_t>(value);
}

// RGB to uyvy.

struct pair {
  int u, y0, v, y1;
};

// A row of 256 pairs, in which both pixels have the same colour: red and green of the row, blue of the pair.
template <class Layout, class Rule>
void all_colors(image_conversion* convert, Layout layout, Rule rule, int alpha) {
  std::vector<std::uint8_t> source(512 * layout.bytes);
  std::array<std::uint8_t, 1024> video{};
  for (unsigned row = 0; row < 65536; row += row_step()) {
    const int r = static_cast<int>(row >> 8);
    const int g = static_cast<int>(row & 255);
    for (std::size_t i = 0; i < 512; ++i) {
      std::uint8_t* p = source.data() + layout.bytes * i;
      p[layout.red] = low_byte(r);
      p[layout.green] = low_byte(g);
      p[layout.blue] = low_byte(static_cast<int>(i / 2));
      if (layout.bytes == 4) p[3] = low_byte(alpha);
    }
    convert(source.data(), static_cast<int>(source.size()), video.data(), 1024, 512, 1);
    for (int b = 0; b < 256; ++b) {
      const pair wanted = rule(r, g, b, alpha);
      const std::uint8_t* got = video.data() + 4 * b;
      if (got[0] != low_byte(wanted.u) || got[1] != low_byte(wanted.y0) || got[2] != low_byte(wanted.v) ||
          got[3] != low_byte(wanted.y1)) {
        ADD_FAILURE() << "R " << r << " G " << g << " B " << b << " A " << alpha << ": got " << int{got[0]} << " "
                      << int{got[1]} << " " << int{got[2]} << " " << int{got[3]} << ", expected " << wanted.u << " "
                      << wanted.y0 << " " << wanted.v << " " << wanted.y1;
        return;
      }
    }
  }
}

struct blue_first {
  static constexpr std::size_t bytes = 4, red = 2, green = 1, blue = 0;
};
struct red_first {
  static constexpr std::size_t bytes = 4, red = 0, green = 1, blue = 2;
};
struct three_bytes {
  static constexpr std::size_t bytes = 3, red = 2, green = 1, blue = 0;
};

pair direct_709(int r, int g, int b, int) {
  const int y = (23 * r + 79 * g + 8 * b + 2048) >> 7;
  return {(112 * b - 87 * g - 26 * r + 32768) >> 8, y, (112 * r - 102 * g - 10 * b + 32768) >> 8, y};
}

pair direct_601(int r, int g, int b, int) {
  const int y = (33 * r + 64 * g + 13 * b + 2048) >> 7;
  return {(112 * b - 75 * g - 38 * r + 32768) >> 8, y, (112 * r - 94 * g - 18 * b + 32768) >> 8, y};
}

pair of_bgr(int r, int g, int b, int) {
  const int y = ((16 * b + 157 * g + 47 * r) >> 8) + 16;
  return {((112 * b - 87 * g - 26 * r) >> 8) + 128, y, ((112 * r - 102 * g - 10 * b) >> 8) + 128, y};
}

pair over_black(int r, int g, int b, int a) {
  const int y = ((((23 * r + 80 * g + 8 * b) * a) >> 8) + 2048) >> 7;
  const int c = ((((112 * b - 87 * g - 26 * r) * a) >> 8) + 32768) >> 8;
  return {c, y, c, y};
}

TEST_P(exhaustive, all_colors_through_the_direct_709_matrix) {
  all_colors(&fc::bgrx::uyvy, blue_first{}, direct_709, 255);
  all_colors(&fc::rgbx::uyvy, red_first{}, direct_709, 3);
}

TEST_P(exhaustive, all_colors_through_the_direct_601_matrix) {
  all_colors(&fc::bgrx_601::uyvy, blue_first{}, direct_601, 255);
  all_colors(&fc::rgbx_601::uyvy, red_first{}, direct_601, 200);
}

TEST_P(exhaustive, all_colors_through_the_bgr_matrix) {
  all_colors(&fc::bgr::uyvy, three_bytes{}, of_bgr, 255);
}

TEST_P(exhaustive, all_colors_over_black_with_some_alphas) {
  for (const int alpha : {255, 254, 128, 1}) all_colors(&fc::bgra::uyvy, blue_first{}, over_black, alpha);
  for (const int alpha : {255, 127, 0}) all_colors(&fc::rgba::uyvy, red_first{}, over_black, alpha);
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

TEST_P(exhaustive, every_weighted_sum_over_black_with_all_alphas) {
  static const auto colors = a_color_for_every_sum();
  std::array<std::uint8_t, 2048> source{};
  std::array<std::uint8_t, 1024> video{};
  for (std::size_t n = 0; n < colors.size(); n += thin() ? 17 : 1) {
    const auto [b, g, r] = colors[n];
    for (std::size_t i = 0; i < 512; ++i) {
      const std::uint8_t alpha = low_byte(static_cast<int>(i / 2));
      std::uint8_t* p = source.data() + 4 * i;
      p[0] = b, p[1] = g, p[2] = r, p[3] = alpha;
    }
    fc::bgra::uyvy(source.data(), 2048, video.data(), 1024, 512, 1);
    for (int alpha = 0; alpha < 256; ++alpha) {
      const pair wanted = over_black(r, g, b, alpha);
      for (int i = 0; i < 4; ++i)
        ASSERT_EQ(video[static_cast<std::size_t>(4 * alpha + i)], i % 2 == 0 ? wanted.u : wanted.y0)
            << "R " << int{r} << " G " << int{g} << " B " << int{b} << " A " << alpha << " byte " << i;
    }
  }
}

// uyvy to RGB.

int clamp(int t) {
  return t < 0 ? 0 : t > 65535 ? 255 : t >> 8;
}

struct rgb {
  int r, g, b;
};

rgb from_601(int y, int cb, int cr) {
  return {clamp(298 * y + 409 * cr - 56865), clamp(298 * y - 99 * cb - 207 * cr + 34680),
          clamp(298 * y + 517 * cb - 70635)};
}

rgb from_709(int y, int cb, int cr) {
  return {clamp(298 * y + 459 * cr - 63240), clamp(298 * y - 54 * cb - 136 * cr + 19635),
          clamp(299 * y + 541 * cb - 73695)};
}

// A row of 256 pairs holds every luma in both positions, in opposite directions.
template <class Layout>
void all_triples(image_conversion* convert, Layout layout, rgb (*rule)(int, int, int)) {
  std::array<std::uint8_t, 1024> video{};
  std::vector<std::uint8_t> picture(512 * layout.bytes);
  for (unsigned row = 0; row < 65536; row += row_step()) {
    const int cb = static_cast<int>(row >> 8);
    const int cr = static_cast<int>(row & 255);
    for (std::size_t i = 0; i < 256; ++i) {
      std::uint8_t* p = video.data() + 4 * i;
      p[0] = low_byte(cb), p[1] = static_cast<std::uint8_t>(i), p[2] = low_byte(cr);
      p[3] = static_cast<std::uint8_t>(255 - i);
    }
    convert(video.data(), 1024, picture.data(), static_cast<int>(picture.size()), 512, 1);
    for (std::size_t i = 0; i < 512; ++i) {
      const int y = video[2 * i + 1];
      const rgb wanted = rule(y, cb, cr);
      const std::uint8_t* got = picture.data() + layout.bytes * i;
      if (got[layout.red] != wanted.r || got[layout.green] != wanted.g || got[layout.blue] != wanted.b ||
          (layout.bytes == 4 && got[3] != 255)) {
        ADD_FAILURE() << "Y " << y << " Cb " << cb << " Cr " << cr << " (pixel " << i << "): got R "
                      << int{got[layout.red]} << " G " << int{got[layout.green]} << " B " << int{got[layout.blue]}
                      << ", expected " << wanted.r << " " << wanted.g << " " << wanted.b;
        return;
      }
    }
  }
}

TEST_P(exhaustive, all_video_triples_to_bgr) {
  all_triples(&fc::uyvy::bgr_601, three_bytes{}, from_601);
  all_triples(&fc::uyvy::bgr_709, three_bytes{}, from_709);
}

TEST_P(exhaustive, all_video_triples_to_32_bit_rgb) {
  all_triples(&fc::uyvy::bgra_601, blue_first{}, from_601);
  all_triples(&fc::uyvy::bgra_709, blue_first{}, from_709);
  all_triples(&fc::uyvy::rgba_601, red_first{}, from_601);
  all_triples(&fc::uyvy::rgba_709, red_first{}, from_709);
}

// v210: every sample in every position of a group, in each of nine groups, the others being its complement; the two
// unused bits of the words are set in every other group.
TEST_P(exhaustive, all_v210_samples_in_all_positions) {
  constexpr unsigned groups = 9;
  std::array<std::uint8_t, 16 * groups> source{};
  std::array<std::uint8_t, 12 * groups> video{};
  for (unsigned position = 0; position < 12; ++position)
    for (unsigned value = 0; value < 1024; ++value) {
      const auto sample = [&](unsigned i) { return i % 12 == position ? value : 1023 - value; };
      for (unsigned word = 0; word < 4 * groups; ++word) {
        const unsigned packed = sample(3 * word) | sample(3 * word + 1) << 10 | sample(3 * word + 2) << 20 |
                                (word / 4 % 2 != 0 ? 3U << 30 : 0U);
        for (unsigned byte = 0; byte < 4; ++byte)
          source[4 * word + byte] = static_cast<std::uint8_t>(packed >> (8 * byte));
      }
      fc::v210::uyvy(source.data(), 16 * groups, video.data(), 12 * groups, 6 * groups, 1);
      for (unsigned i = 0; i + 4 < 12 * groups; ++i)
        ASSERT_EQ(video[i], sample(i) >> 2) << "sample " << i << " of value " << value << " at position " << position;
    }
}

}  // namespace
}  // namespace morvane::tests
