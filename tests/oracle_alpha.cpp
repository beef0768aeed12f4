// Expectations: video with alpha, from and to RGB, 4:4:4 and semi-planar.
#include "oracle_parts.h"

namespace morvane::tests::oracle {
namespace {

// RGB to uyvy_a. Whole pairs: a last odd pixel is neither converted nor counted.

template <bool bt709>
int luma(int r, int g, int b) {
  return floor_shift((bt709 ? 23 * r + 79 * g + 8 * b : 33 * r + 64 * g + 13 * b) + 2048, 7);
}

template <bool bt709>
int blue_difference(int r, int g, int b) {
  return floor_shift((bt709 ? -26 * r - 87 * g + 112 * b : -38 * r - 75 * g + 112 * b) + 32768, 8);
}

template <bool bt709>
int red_difference(int r, int g, int b) {
  return floor_shift((bt709 ? 112 * r - 102 * g - 10 * b : 112 * r - 94 * g - 18 * b) + 32768, 8);
}

template <bool is_rgba, bool bt709>
void rgb_to_uyvy_a(const call& c) {
  bool opaque = true;
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres, c.xres}, [&](const line& l, int pixels) {
    constexpr int red = is_rgba ? 0 : 2;
    for (int k = 0; k < pixels / 2; ++k) {
      std::array<int, 8> p{};
      for (std::size_t i = 0; i < 8; ++i) p[i] = l.source[0][8 * k + static_cast<int>(i)];
      std::uint8_t* uyvy = l.destination[0] + 4 * k;
      std::uint8_t* alpha = l.destination[1] + 2 * k;
      uyvy[0] = byte(blue_difference<bt709>(p[red], p[1], p[2 - red]));
      uyvy[1] = byte(luma<bt709>(p[red], p[1], p[2 - red]));
      alpha[0] = byte(p[3]);
      uyvy[2] = byte(red_difference<bt709>(p[4 + red], p[5], p[6 - red]));
      uyvy[3] = byte(luma<bt709>(p[4 + red], p[5], p[6 - red]));
      alpha[1] = byte(p[7]);
      if (p[3] != 255 || p[7] != 255) opaque = false;
    }
  });
  report(c, opaque);
}

// uyvy_a to RGB, in whole pairs, with 6 fractional bits.

struct weights {
  int gu, gv, rv;
};

template <bool is_rgba, bool bt709>
void uyvy_a_to_rgb(const call& c) {
  constexpr weights w = bt709 ? weights{14, 34, 115} : weights{25, 52, 102};
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {4 * c.xres}, [&](const line& l, int pixels) {
    for (int i = 0; i < pixels / 2 * 2; ++i) {
      const std::uint8_t* pair = l.source[0] + 4 * (i / 2);
      const int u = pair[0] - 128;
      const int v = pair[2] - 128;
      const int y = 74 * pair[i % 2 == 0 ? 1 : 3] - 1192;
      std::uint8_t* pixel = l.destination[0] + 4 * i;
      pixel[is_rgba ? 2 : 0] = clamped(floor_shift(y + 128 * u, 6));
      pixel[1] = clamped(floor_shift(y - w.gu * u - w.gv * v, 6));
      pixel[is_rgba ? 0 : 2] = clamped(floor_shift(y + w.rv * v, 6));
      pixel[3] = l.source[1][i];
    }
  });
}

// All further lines complete the pair of a last odd pixel.

// A line of fill and key converts its first pair alone.
void fill_and_key_to_ya_uv(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, 2 * c.xres}, {2 * c.xres, c.xres}, [&](const line& l, int) {
    const std::uint8_t* fill = l.source[0];
    const std::uint8_t* second = l.source[1];
    l.destination[1][0] = fill[0];
    l.destination[1][1] = fill[2];
    l.destination[0][0] = fill[1];
    l.destination[0][1] = key_or_copy(second[1], c.argument != 0);
    l.destination[0][2] = fill[3];
    l.destination[0][3] = key_or_copy(second[3], c.argument != 0);
  });
}

void uyvy_a_to_ya_uv(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {2 * c.xres, c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* uyvy = l.source[0] + 4 * k;
      const std::uint8_t* alpha = l.source[1] + 2 * k;
      std::uint8_t* ya = l.destination[0] + 4 * k;
      ya[0] = uyvy[1];
      ya[1] = alpha[0];
      ya[2] = uyvy[3];
      ya[3] = alpha[1];
      l.destination[1][2 * k] = uyvy[0];
      l.destination[1][2 * k + 1] = uyvy[2];
    }
  });
}

// Where luma, Cb and Cr lie in a 4:4:4 pixel, whose fourth byte is alpha or unused.
struct order {
  int y, cb, cr;
};
constexpr order ycbcr{0, 1, 2};
constexpr order crcby{2, 1, 0};

template <order to>
void uyvy_a_to_444(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {4 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < 2 * pairs(pixels); ++i) {
      const std::uint8_t* pair = l.source[0] + 4 * (i / 2);
      std::uint8_t* pixel = l.destination[0] + 4 * i;
      pixel[to.y] = pair[i % 2 == 0 ? 1 : 3];
      pixel[to.cb] = pair[0];
      pixel[to.cr] = pair[2];
      pixel[3] = l.source[1][i];
    }
  });
}

std::uint8_t over_black(int sample, int black, int alpha) {
  return byte(black + floor_shift((sample - black) * (alpha + 1), 8));
}

void store_over_black(std::uint8_t* uyvy, int cb, int y0, int cr, int y1, int a0, int a1) {
  uyvy[0] = over_black(cb, 128, a0);
  uyvy[1] = over_black(y0, 16, a0);
  uyvy[2] = over_black(cr, 128, a1);
  uyvy[3] = over_black(y1, 16, a1);
}

void uyvy_a_over_black(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* s = l.source[0] + 4 * k;
      store_over_black(l.destination[0] + 4 * k, s[0], s[1], s[2], s[3], l.source[1][2 * k], l.source[1][2 * k + 1]);
    }
  });
}

template <order from>
void full_chroma_over_black(const call& c) {
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* s = l.source[0] + 8 * k;
      store_over_black(l.destination[0] + 4 * k, s[from.cb], s[from.y], s[from.cr], s[4 + from.y], s[3], s[7]);
    }
  });
}

// Chroma is that of the even pixel.
template <order from>
void copy_pair(const std::uint8_t* s, std::uint8_t* uyvy) {
  uyvy[0] = s[from.cb];
  uyvy[1] = s[from.y];
  uyvy[2] = s[from.cr];
  uyvy[3] = s[4 + from.y];
}

template <order from>
void full_chroma_to_uyvy(const call& c) {
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) copy_pair<from>(l.source[0] + 8 * k, l.destination[0] + 4 * k);
  });
}

template <order from>
void full_chroma_to_uyvy_a(const call& c) {
  bool opaque = true;
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres, c.xres}, [&](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* s = l.source[0] + 8 * k;
      copy_pair<from>(s, l.destination[0] + 4 * k);
      l.destination[1][2 * k] = s[3];
      l.destination[1][2 * k + 1] = s[7];
      if (s[3] != 255 || s[7] != 255) opaque = false;
    }
  });
  report(c, opaque);
}

constexpr entry entries[] = {
    {"bgra::uyvy_a", "uyvy_a", rgb_to_uyvy_a<false, true>},
    {"bgra_601::uyvy_a", "uyvy_a", rgb_to_uyvy_a<false, false>},
    {"bgra_709::uyvy_a", "uyvy_a", rgb_to_uyvy_a<false, true>},
    {"rgba::uyvy_a", "uyvy_a", rgb_to_uyvy_a<true, true>},
    {"rgba_601::uyvy_a", "uyvy_a", rgb_to_uyvy_a<true, false>},
    {"rgba_709::uyvy_a", "uyvy_a", rgb_to_uyvy_a<true, true>},

    {"uyvy_a::bgra", "bgra", by_color_space<uyvy_a_to_rgb<false, false>, uyvy_a_to_rgb<false, true>>},
    {"uyvy_a::bgra_601", "bgra", uyvy_a_to_rgb<false, false>},
    {"uyvy_a::bgra_709", "bgra", uyvy_a_to_rgb<false, true>},
    {"uyvy_a::rgba", "rgba", by_color_space<uyvy_a_to_rgb<true, false>, uyvy_a_to_rgb<true, true>>},
    {"uyvy_a::rgba_601", "rgba", uyvy_a_to_rgb<true, false>},
    {"uyvy_a::rgba_709", "rgba", uyvy_a_to_rgb<true, true>},

    {"uyvy::ya_uv", "ya_uv", fill_and_key_to_ya_uv},
    {"uyvy_a::ya_uv", "ya_uv", uyvy_a_to_ya_uv},
    {"uyvy_a::ycbcra", "ycbcra", uyvy_a_to_444<ycbcr>},
    {"uyvy_a::crcbya", "crcbya", uyvy_a_to_444<crcby>},

    {"uyvy_a::uyvy", "uyvy", uyvy_a_over_black},
    {"ycbcra::uyvy", "uyvy", full_chroma_over_black<ycbcr>},
    {"vuya::uyvy", "uyvy", full_chroma_over_black<crcby>},
    {"ycbcrx::uyvy", "uyvy", full_chroma_to_uyvy<ycbcr>},
    {"vuyx::uyvy", "uyvy", full_chroma_to_uyvy<crcby>},
    {"ycbcra::uyvy_a", "uyvy_a", full_chroma_to_uyvy_a<ycbcr>},
    {"vuya::uyvy_a", "uyvy_a", full_chroma_to_uyvy_a<crcby>},
};

}  // namespace

std::span<const entry> expectations_of_alpha() {
  return entries;
}

}  // namespace morvane::tests::oracle
