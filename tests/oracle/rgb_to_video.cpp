// Expectations: RGB to video, with and without a plane of alpha.
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

// Where the samples of a pixel lie.
struct layout {
  int bytes, red, green, blue;
};
constexpr layout bgr{3, 2, 1, 0};
constexpr layout bgra{4, 2, 1, 0};
constexpr layout rgba{4, 0, 1, 2};

struct color {
  int r, g, b, a;
};

template <layout in>
color pixel(const std::uint8_t* p) {
  return {p[in.red], p[in.green], p[in.blue], in.bytes == 4 ? p[3] : 255};
}

struct pair {
  std::uint8_t u, y0, v, y1;
};

void store(std::uint8_t* d, pair p) {
  d[0] = p.u;
  d[1] = p.y0;
  d[2] = p.v;
  d[3] = p.y1;
}

pair direct_601(color even, color odd) {
  const auto luma = [](color p) { return byte(floor_shift(33 * p.r + 64 * p.g + 13 * p.b + 2048, 7)); };
  return {byte(floor_shift(-38 * even.r - 75 * even.g + 112 * even.b + 32768, 8)), luma(even),
          byte(floor_shift(112 * odd.r - 94 * odd.g - 18 * odd.b + 32768, 8)), luma(odd)};
}

pair direct_709(color even, color odd) {
  const auto luma = [](color p) { return byte(floor_shift(23 * p.r + 79 * p.g + 8 * p.b + 2048, 7)); };
  return {byte(floor_shift(-26 * even.r - 87 * even.g + 112 * even.b + 32768, 8)), luma(even),
          byte(floor_shift(112 * odd.r - 102 * odd.g - 10 * odd.b + 32768, 8)), luma(odd)};
}

pair over_black(color even, color odd) {
  const auto luma = [](color p) {
    return byte(floor_shift(floor_shift((23 * p.r + 80 * p.g + 8 * p.b) * p.a, 8) + 2048, 7));
  };
  const auto blue_difference = [](color p) {
    return byte(floor_shift(floor_shift((112 * p.b - 87 * p.g - 26 * p.r) * p.a, 8) + 32768, 8));
  };
  return {blue_difference(even), luma(even), blue_difference(odd), luma(odd)};
}

pair offset_after_shift(color even, color odd) {
  const auto luma = [](color p) { return byte(floor_shift(16 * p.b + 157 * p.g + 47 * p.r, 8) + 16); };
  return {byte(floor_shift(112 * even.b - 87 * even.g - 26 * even.r, 8) + 128), luma(even),
          byte(floor_shift(112 * odd.r - 102 * odd.g - 10 * odd.b, 8) + 128), luma(odd)};
}

using pair_rule = pair (*)(color, color);

// What a rule makes of the pair k of a line.
template <layout in, pair_rule rule>
pair pair_of(const line& l, int k) {
  const std::uint8_t* even = l.source[0] + 2 * k * in.bytes;
  return rule(pixel<in>(even), pixel<in>(even + in.bytes));
}

// Whole pairs: the last pixel of an odd line stays out.
template <layout in, pair_rule rule>
void whole_pairs_to_uyvy(const line& l, int pixels) {
  for (int k = 0; k < pixels / 2; ++k) store(l.destination[0] + 4 * k, pair_of<in, rule>(l, k));
}

template <layout in, pair_rule rule>
void rgb_to_uyvy(const call& c) {
  one_line_or_each_row(c, {in.bytes * c.xres}, {2 * c.xres}, whole_pairs_to_uyvy<in, rule>);
}

template <layout in, pair_rule rule>
void rgb_rows_to_uyvy(const call& c) {
  each_row(c, whole_pairs_to_uyvy<in, rule>);
}

// The pair of a last odd pixel is completed.
void bgr_to_uyvy(const call& c) {
  one_line_or_each_row(c, {3 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) store(l.destination[0] + 4 * k, pair_of<bgr, offset_after_shift>(l, k));
  });
}

// A last odd pixel is neither converted nor counted.
template <layout in, pair_rule rule>
void rgb_to_uyvy_a(const call& c) {
  bool opaque = true;
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres, c.xres}, [&](const line& l, int pixels) {
    for (int k = 0; k < pixels / 2; ++k) {
      const color even = pixel<in>(l.source[0] + 8 * k);
      const color odd = pixel<in>(l.source[0] + 8 * k + 4);
      store(l.destination[0] + 4 * k, rule(even, odd));
      l.destination[1][2 * k] = byte(even.a);
      l.destination[1][2 * k + 1] = byte(odd.a);
      if (even.a != 255 || odd.a != 255) opaque = false;
    }
  });
  report(c, opaque);
}

constexpr entry entries[] = {
    {"bgra::uyvy", "uyvy", rgb_to_uyvy<bgra, over_black>},
    {"rgba::uyvy", "uyvy", rgb_to_uyvy<rgba, over_black>},
    {"bgrx::uyvy", "uyvy", rgb_to_uyvy<bgra, direct_709>},
    {"rgbx::uyvy", "uyvy", rgb_to_uyvy<rgba, direct_709>},
    {"bgrx_601::uyvy", "uyvy", rgb_rows_to_uyvy<bgra, direct_601>},
    {"rgbx_601::uyvy", "uyvy", rgb_rows_to_uyvy<rgba, direct_601>},
    {"bgrx_709::uyvy", "uyvy", rgb_rows_to_uyvy<bgra, direct_709>},
    {"rgbx_709::uyvy", "uyvy", rgb_rows_to_uyvy<rgba, direct_709>},
    {"bgr::uyvy", "uyvy", bgr_to_uyvy},

    {"bgra::uyvy_a", "uyvy_a", rgb_to_uyvy_a<bgra, direct_709>},
    {"bgra_601::uyvy_a", "uyvy_a", rgb_to_uyvy_a<bgra, direct_601>},
    {"bgra_709::uyvy_a", "uyvy_a", rgb_to_uyvy_a<bgra, direct_709>},
    {"rgba::uyvy_a", "uyvy_a", rgb_to_uyvy_a<rgba, direct_709>},
    {"rgba_601::uyvy_a", "uyvy_a", rgb_to_uyvy_a<rgba, direct_601>},
    {"rgba_709::uyvy_a", "uyvy_a", rgb_to_uyvy_a<rgba, direct_709>},
};

}  // namespace

std::span<const entry> expectations_of_rgb_to_video() {
  return entries;
}

}  // namespace morvane::tests::oracle
