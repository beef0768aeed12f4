// The expectations of fills, copies, packed 4:2:2 and RGB, one function for each family of conversions, and the search
// through the tables of all files of expectations.
#include "oracle.h"

#include <cstddef>
#include <cstdint>

#include "oracle_parts.h"

namespace morvane::tests {
namespace {

using catalogue::call;
using oracle::by_color_space;
using oracle::byte;
using oracle::clamped;
using oracle::entry;
using oracle::floor_shift;

// Calls line(source, destination, pixels) for each row, first to last.
template <class Line>
void row_by_row(const call& c, Line line) {
  if (c.xres < 1) return;
  const std::uint8_t* source = c.source.data[0];
  std::uint8_t* destination = c.destination.data[0];
  for (int row = 0; row < c.yres; ++row) {
    line(source, destination, c.xres);
    source += c.source.stride[0];
    destination += c.destination.stride[0];
  }
}

// As above, but an image without gaps is one long line.
template <class Line>
void one_line_or_rows(const call& c, bool tight, Line line) {
  if (c.xres < 1 || c.yres < 1) return;
  if (c.yres == 1 || tight)
    line(c.source.data[0], c.destination.data[0], c.xres * c.yres);
  else
    row_by_row(c, line);
}

bool strides_are(const call& c, int source, int destination) {
  return c.source.stride[0] == source && c.destination.stride[0] == destination;
}

// Fills.

void black_uyvy(const call& c) {
  row_by_row(c, [](const std::uint8_t*, std::uint8_t* d, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      d[2 * i] = 128;
      d[2 * i + 1] = 16;
    }
  });
}

void alpha_of_bytes(const call& c) {
  row_by_row(c, [&](const std::uint8_t*, std::uint8_t* d, int pixels) {
    for (int i = 0; i < pixels; ++i) d[i] = byte(c.argument);
  });
}

void alpha_of_words(const call& c) {
  row_by_row(c, [&](const std::uint8_t*, std::uint8_t* d, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      d[2 * i] = byte(c.argument);
      d[2 * i + 1] = byte(floor_shift(c.argument, 8));
    }
  });
}

// Copies.

template <int bytes_per_pixel>
void copied(const call& c) {
  row_by_row(c, [](const std::uint8_t* s, std::uint8_t* d, int pixels) {
    for (int i = 0; i < bytes_per_pixel * pixels; ++i) d[i] = s[i];
  });
}

void copied_with_opacity(const call& c) {
  bool opaque = true;
  row_by_row(c, [&](const std::uint8_t* s, std::uint8_t* d, int pixels) {
    for (int i = 0; i < 4 * pixels; ++i) d[i] = s[i];
    for (int i = 0; i < pixels; ++i)
      if (s[4 * i + 3] != 255) opaque = false;
  });
  if (c.opaque != nullptr) *c.opaque = opaque;
}

// Reorders.

void bytes_exchanged(const call& c) {
  one_line_or_rows(c, strides_are(c, 2 * c.xres, 2 * c.xres), [](const std::uint8_t* s, std::uint8_t* d, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      d[2 * i] = s[2 * i + 1];
      d[2 * i + 1] = s[2 * i];
    }
  });
}

int v210_sample(const std::uint8_t* line, int index) {
  const std::uint8_t* w = line + 4 * (index / 3);
  const std::uint32_t word = w[0] + 256U * w[1] + 65536U * w[2] + 16777216U * w[3];
  return static_cast<int>(word >> (10 * (index % 3)) & 1023U);
}

void v210_to_uyvy(const call& c) {
  const bool tight = c.source.stride[0] * 6 == c.xres * 16 && c.destination.stride[0] == 2 * c.xres;
  one_line_or_rows(c, tight, [](const std::uint8_t* s, std::uint8_t* d, int pixels) {
    const int written = 2 * ((pixels - 1) / 2);
    for (int i = 0; i < 2 * written; ++i) d[i] = byte(v210_sample(s, i) / 4);
  });
}

// RGB and video. Where the samples of a pixel lie:
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

// Whole pairs: the last pixel of an odd line stays out.
template <layout in, pair_rule rule>
void whole_pairs_to_uyvy(const std::uint8_t* s, std::uint8_t* d, int pixels) {
  for (int k = 0; k < pixels / 2; ++k)
    store(d + 4 * k, rule(pixel<in>(s + 2 * k * in.bytes), pixel<in>(s + (2 * k + 1) * in.bytes)));
}

template <layout in, pair_rule rule>
void rgb_to_uyvy(const call& c) {
  one_line_or_rows(c, strides_are(c, in.bytes * c.xres, 2 * c.xres), whole_pairs_to_uyvy<in, rule>);
}

template <layout in, pair_rule rule>
void rgb_rows_to_uyvy(const call& c) {
  row_by_row(c, whole_pairs_to_uyvy<in, rule>);
}

// The pair of a last odd pixel is completed.
void bgr_to_uyvy(const call& c) {
  one_line_or_rows(c, strides_are(c, 3 * c.xres, 2 * c.xres), [](const std::uint8_t* s, std::uint8_t* d, int pixels) {
    for (int k = 0; 2 * k < pixels; ++k)
      store(d + 4 * k, offset_after_shift(pixel<bgr>(s + 6 * k), pixel<bgr>(s + 6 * k + 3)));
  });
}

template <bool bt709>
color to_rgb(int y, int cb, int cr) {
  if (bt709)
    return {clamped(floor_shift(298 * y + 459 * cr - 63240, 8)),
            clamped(floor_shift(298 * y - 54 * cb - 136 * cr + 19635, 8)),
            clamped(floor_shift(299 * y + 541 * cb - 73695, 8)), 255};
  return {clamped(floor_shift(298 * y + 409 * cr - 56865, 8)),
          clamped(floor_shift(298 * y - 99 * cb - 207 * cr + 34680, 8)),
          clamped(floor_shift(298 * y + 517 * cb - 70635, 8)), 255};
}

template <layout out, bool bt709>
void pairs_to_rgb(const std::uint8_t* s, std::uint8_t* d, int pairs) {
  for (int i = 0; i < 2 * pairs; ++i) {
    const std::uint8_t* uyvy = s + 4 * (i / 2);
    const color p = to_rgb<bt709>(uyvy[i % 2 == 0 ? 1 : 3], uyvy[0], uyvy[2]);
    std::uint8_t* rgb = d + out.bytes * i;
    rgb[out.red] = byte(p.r);
    rgb[out.green] = byte(p.g);
    rgb[out.blue] = byte(p.b);
    if (out.bytes == 4) rgb[3] = 255;
  }
}

template <bool bt709>
void uyvy_to_bgr(const call& c) {
  one_line_or_rows(c, strides_are(c, 2 * c.xres, 4 * c.xres), [](const std::uint8_t* s, std::uint8_t* d, int pixels) {
    pairs_to_rgb<bgr, bt709>(s, d, (pixels + 1) / 2);
  });
}

template <layout out, bool bt709>
void uyvy_to_rgb(const call& c) {
  row_by_row(c, [](const std::uint8_t* s, std::uint8_t* d, int pixels) { pairs_to_rgb<out, bt709>(s, d, pixels / 2); });
}

constexpr entry entries[] = {
    {"black::uyvy", "uyvy", black_uyvy},
    {"black::alpha", "alpha", alpha_of_bytes},
    {"black::alpha", "alpha_u16", alpha_of_words},

    {"y::y", "y", copied<1>},
    {"uyvy::uyvy", "uyvy", copied<2>},
    {"bgr::bgr", "bgr", copied<4>},
    {"bgr_601::bgr_601", "bgr", copied<4>},
    {"bgr_709::bgr_709", "bgr", copied<4>},
    {"bgrx::bgrx", "bgrx", copied<4>},
    {"bgrx_601::bgrx_601", "bgrx", copied<4>},
    {"bgrx_709::bgrx_709", "bgrx", copied<4>},
    {"rgbx::rgbx", "rgbx", copied<4>},
    {"rgbx_601::rgbx_601", "rgbx", copied<4>},
    {"rgbx_709::rgbx_709", "rgbx", copied<4>},
    {"ycbcrx::ycbcrx", "ycbcrx", copied<4>},
    {"vuyx::vuyx", "vuyx", copied<4>},

    {"bgra::bgra", "bgra", copied_with_opacity},
    {"bgra_601::bgra_601", "bgra", copied_with_opacity},
    {"bgra_709::bgra_709", "bgra", copied_with_opacity},
    {"rgba::rgba", "rgba", copied_with_opacity},
    {"rgba_601::rgba_601", "rgba", copied_with_opacity},
    {"rgba_709::rgba_709", "rgba", copied_with_opacity},
    {"ycbcra::ycbcra", "ycbcra", copied_with_opacity},
    {"vuya::vuya", "vuya", copied_with_opacity},

    {"v210::uyvy", "uyvy", v210_to_uyvy},
    {"uyvy::yuy2", "yuy2", bytes_exchanged},
    {"yuy2::uyvy", "uyvy", bytes_exchanged},

    {"bgra::uyvy", "uyvy", rgb_to_uyvy<bgra, over_black>},
    {"rgba::uyvy", "uyvy", rgb_to_uyvy<rgba, over_black>},
    {"bgrx::uyvy", "uyvy", rgb_to_uyvy<bgra, direct_709>},
    {"rgbx::uyvy", "uyvy", rgb_to_uyvy<rgba, direct_709>},
    {"bgrx_601::uyvy", "uyvy", rgb_rows_to_uyvy<bgra, direct_601>},
    {"rgbx_601::uyvy", "uyvy", rgb_rows_to_uyvy<rgba, direct_601>},
    {"bgrx_709::uyvy", "uyvy", rgb_rows_to_uyvy<bgra, direct_709>},
    {"rgbx_709::uyvy", "uyvy", rgb_rows_to_uyvy<rgba, direct_709>},
    {"bgr::uyvy", "uyvy", bgr_to_uyvy},

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
};

// Every table of expectations.
std::vector<std::span<const entry>> tables() {
  return {entries,
          oracle::expectations_of_planes(),
          oracle::expectations_of_full_chroma(),
          oracle::expectations_of_alpha(),
          oracle::expectations_of_planar_rgb(),
          oracle::expectations_of_16_bits(),
          oracle::expectations_of_10_bits_and_depths()};
}

}  // namespace

catalogue::thunk expectation(std::string_view name, std::string_view destination) {
  for (const std::span<const entry> table : tables())
    for (const entry& e : table)
      if (e.name == name && e.destination == destination) return e.expected;
  return nullptr;
}

std::vector<std::pair<std::string_view, std::string_view>> expected_conversions() {
  std::vector<std::pair<std::string_view, std::string_view>> result;
  for (const std::span<const entry> table : tables())
    for (const entry& e : table) result.emplace_back(e.name, e.destination);
  return result;
}

}  // namespace morvane::tests
