// Expectations: video to RGB, in one plane or three, and luminance to grey.
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

// Where the samples of a pixel lie; of four bytes, the last is 255 or alpha.
struct layout {
  int bytes, red, green, blue;
};
constexpr layout bgr{3, 2, 1, 0};
constexpr layout bgra{4, 2, 1, 0};
constexpr layout rgba{4, 0, 1, 2};

struct color {
  std::uint8_t r, g, b;
};

template <layout out>
void store(std::uint8_t* pixel, color c) {
  pixel[out.red] = c.r;
  pixel[out.green] = c.g;
  pixel[out.blue] = c.b;
}

// With 8 fractional bits. Of uyvy, pixel i of a line.

template <bool bt709>
color with_8_bits(int y, int cb, int cr) {
  if (bt709)
    return {clamped(floor_shift(298 * y + 459 * cr - 63240, 8)),
            clamped(floor_shift(298 * y - 54 * cb - 136 * cr + 19635, 8)),
            clamped(floor_shift(299 * y + 541 * cb - 73695, 8))};
  return {clamped(floor_shift(298 * y + 409 * cr - 56865, 8)),
          clamped(floor_shift(298 * y - 99 * cb - 207 * cr + 34680, 8)),
          clamped(floor_shift(298 * y + 517 * cb - 70635, 8))};
}

template <layout out, bool bt709>
void pairs_to_rgb(const line& l, int pairs) {
  for (int i = 0; i < 2 * pairs; ++i) {
    const std::uint8_t* uyvy = l.source[0] + 4 * (i / 2);
    std::uint8_t* rgb = l.destination[0] + out.bytes * i;
    store<out>(rgb, with_8_bits<bt709>(uyvy[i % 2 == 0 ? 1 : 3], uyvy[0], uyvy[2]));
    if (out.bytes == 4) rgb[3] = 255;
  }
}

// The pair of a last odd pixel is completed.
template <bool bt709>
void uyvy_to_bgr(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {4 * c.xres},
                       [](const line& l, int pixels) { pairs_to_rgb<bgr, bt709>(l, pairs(pixels)); });
}

template <layout out, bool bt709>
void uyvy_to_rgb(const call& c) {
  each_row(c, [](const line& l, int pixels) { pairs_to_rgb<out, bt709>(l, pixels / 2); });
}

// With 6 fractional bits, in whole pairs.

struct weights {
  int bu, gu, gv, rv;
};
constexpr weights bt601{128, 25, 52, 102};
constexpr weights bt709{128, 14, 34, 115};
constexpr weights bt2020{137, 12, 42, 107};

template <weights w>
color with_6_bits(int y, int cb, int cr) {
  const int u = cb - 128;
  const int v = cr - 128;
  const int luma = 74 * y - 1192;
  return {clamped(floor_shift(luma + w.rv * v, 6)), clamped(floor_shift(luma - w.gu * u - w.gv * v, 6)),
          clamped(floor_shift(luma + w.bu * u, 6))};
}

template <weights w>
color color_of_uyvy(const std::uint8_t* uyvy, int i) {
  const std::uint8_t* pair = uyvy + 4 * (i / 2);
  return with_6_bits<w>(pair[i % 2 == 0 ? 1 : 3], pair[0], pair[2]);
}

template <layout out, weights w>
void uyvy_a_to_rgb(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {4 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < pixels / 2 * 2; ++i) {
      std::uint8_t* pixel = l.destination[0] + 4 * i;
      store<out>(pixel, color_of_uyvy<w>(l.source[0], i));
      pixel[3] = l.source[1][i];
    }
  });
}

// The three planes share the stride of the last.
template <weights w>
void uyvy_to_r_g_b(const call& c) {
  call shared = c;
  shared.destination.stride[0] = shared.destination.stride[1] = c.destination.stride[2];
  one_line_or_each_row(shared, {2 * c.xres}, {c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < pixels / 2 * 2; ++i) {
      const color rgb = color_of_uyvy<w>(l.source[0], i);
      l.destination[0][i] = rgb.r;
      l.destination[1][i] = rgb.g;
      l.destination[2][i] = rgb.b;
    }
  });
}

// Of the words of p216, the upper bytes count.
void p216_to_rgbx_2020(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < pixels / 2 * 2; ++i) {
      const std::uint8_t* cbcr = l.source[1] + i / 2 * 4;
      std::uint8_t* rgbx = l.destination[0] + 4 * i;
      store<rgba>(rgbx, with_6_bits<bt2020>(l.source[0][2 * i + 1], cbcr[1], cbcr[3]));
      rgbx[3] = 255;
    }
  });
}

void luminance_to_bgra(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < 4 * pixels; ++i) l.destination[0][i] = i % 4 == 3 ? std::uint8_t{255} : l.source[0][i / 4];
  });
}

constexpr entry entries[] = {
    {"uyvy::bgr", "bgr", by_color_space<uyvy_to_bgr<false>, uyvy_to_bgr<true>>},
    {"uyvy::bgr_601", "bgr", uyvy_to_bgr<false>},
    {"uyvy::bgr_709", "bgr", uyvy_to_bgr<true>},
    {"uyvy::bgra", "bgra", by_color_space<uyvy_to_rgb<bgra, false>, uyvy_to_rgb<bgra, true>>},
    {"uyvy::bgra_601", "bgra", uyvy_to_rgb<bgra, false>},
    {"uyvy::bgra_709", "bgra", uyvy_to_rgb<bgra, true>},
    {"uyvy::rgba", "rgba", by_color_space<uyvy_to_rgb<rgba, false>, uyvy_to_rgb<rgba, true>>},
    {"uyvy::rgba_601", "rgba", uyvy_to_rgb<rgba, false>},
    {"uyvy::rgba_709", "rgba", uyvy_to_rgb<rgba, true>},
    {"uyvy::bgrx", "bgrx", by_color_space<uyvy_to_rgb<bgra, false>, uyvy_to_rgb<bgra, true>>},
    {"uyvy::bgrx_601", "bgrx", uyvy_to_rgb<bgra, false>},
    {"uyvy::bgrx_709", "bgrx", uyvy_to_rgb<bgra, true>},
    {"uyvy::rgbx", "rgbx", by_color_space<uyvy_to_rgb<rgba, false>, uyvy_to_rgb<rgba, true>>},
    {"uyvy::rgbx_601", "rgbx", uyvy_to_rgb<rgba, false>},
    {"uyvy::rgbx_709", "rgbx", uyvy_to_rgb<rgba, true>},

    {"uyvy_a::bgra", "bgra", by_color_space<uyvy_a_to_rgb<bgra, bt601>, uyvy_a_to_rgb<bgra, bt709>>},
    {"uyvy_a::bgra_601", "bgra", uyvy_a_to_rgb<bgra, bt601>},
    {"uyvy_a::bgra_709", "bgra", uyvy_a_to_rgb<bgra, bt709>},
    {"uyvy_a::rgba", "rgba", by_color_space<uyvy_a_to_rgb<rgba, bt601>, uyvy_a_to_rgb<rgba, bt709>>},
    {"uyvy_a::rgba_601", "rgba", uyvy_a_to_rgb<rgba, bt601>},
    {"uyvy_a::rgba_709", "rgba", uyvy_a_to_rgb<rgba, bt709>},

    {"uyvy::r_g_b", "r_g_b", by_color_space<uyvy_to_r_g_b<bt601>, uyvy_to_r_g_b<bt709>>},
    {"uyvy::r_g_b_601", "r_g_b", uyvy_to_r_g_b<bt601>},
    {"uyvy::r_g_b_709", "r_g_b", uyvy_to_r_g_b<bt709>},

    {"p216::rgbx_2020", "rgbx", p216_to_rgbx_2020},
    {"L::bgra", "bgra", luminance_to_bgra},
};

}  // namespace

std::span<const entry> expectations_of_video_to_rgb() {
  return entries;
}

}  // namespace morvane::tests::oracle
