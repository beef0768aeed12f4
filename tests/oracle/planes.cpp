// Expectations: copies, packed 4:2:2, and the planes that it is split into.
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

// Copies.

template <int bytes_per_pixel>
void copied(const call& c) {
  each_row(c, [](const line& l, int pixels) { copy(l.source[0], l.destination[0], bytes_per_pixel * pixels); });
}

void copied_with_opacity(const call& c) {
  bool opaque = true;
  each_row(c, [&](const line& l, int pixels) {
    copy(l.source[0], l.destination[0], 4 * pixels);
    for (int i = 0; i < pixels; ++i)
      if (l.source[0][4 * i + 3] != 255) opaque = false;
  });
  report(c, opaque);
}

void y_uv_copied(const call& c) {
  copy_luma(c);
  for (int row = 0; row < c.yres / 2; ++row) copy(read_row(c, 1, row), written_row(c, 1, row), c.xres / 2 * 2);
}

void y_uv_to_422(const call& c) {
  copy_luma(c);
  for (int row = 0; row < c.yres / 2 * 2; ++row) copy(read_row(c, 1, row / 2), written_row(c, 1, row), c.xres);
}

void p216_to_p010(const call& c) {
  for (int row = 0; row < c.yres; ++row) copy(read_row(c, 0, row), written_row(c, 0, row), 2 * c.xres);
  for (int row = 0; row < c.yres / 2; ++row) copy(read_row(c, 1, 2 * row), written_row(c, 1, row), 2 * c.xres);
}

// Packed 4:2:2.

void bytes_exchanged(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      l.destination[0][2 * i] = l.source[0][2 * i + 1];
      l.destination[0][2 * i + 1] = l.source[0][2 * i];
    }
  });
}

// uyvy to planes. The splitting lines drop the last pixel of an odd count.

void split_to_semi_planar(const line& l, int pixels, bool chroma) {
  for (int k = 0; k < pixels / 2; ++k) {
    const std::uint8_t* pair = l.source[0] + 4 * k;
    l.destination[0][2 * k] = pair[1];
    l.destination[0][2 * k + 1] = pair[3];
    if (!chroma) continue;
    l.destination[1][2 * k] = pair[0];
    l.destination[1][2 * k + 1] = pair[2];
  }
}

void split_to_planar(const line& l, int pixels, bool chroma) {
  for (int k = 0; k < pixels / 2; ++k) {
    const std::uint8_t* pair = l.source[0] + 4 * k;
    l.destination[0][2 * k] = pair[1];
    l.destination[0][2 * k + 1] = pair[3];
    if (!chroma) continue;
    l.destination[1][k] = pair[0];
    l.destination[2][k] = pair[2];
  }
}

void uyvy_to_y_uv_422(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {c.xres, c.xres},
                       [](const line& l, int pixels) { split_to_semi_planar(l, pixels, true); });
}

void uyvy_to_y_u_v_422(const call& c) {
  const int half = c.destination.stride[0] / 2;
  one_line_or_each_row(c, {2 * c.xres}, {c.xres, half, half},
                       [](const line& l, int pixels) { split_to_planar(l, pixels, true); });
}

// Image row y writes luma row y, and chroma row y / 2 when y is even.
template <auto split>
void uyvy_to_420(const call& c) {
  for (int y = 0; y < c.yres; ++y) {
    line l;
    l.source[0] = c.source.data[0] + std::ptrdiff_t{y} * c.source.stride[0];
    l.destination[0] = c.destination.data[0] + std::ptrdiff_t{y} * c.destination.stride[0];
    for (std::size_t i = 1; i < catalogue::max_planes; ++i)
      if (c.destination.data[i] != nullptr)
        l.destination[i] = c.destination.data[i] + std::ptrdiff_t{y / 2} * c.destination.stride[i];
    split(l, c.xres, y % 2 == 0);
  }
}

constexpr entry entries[] = {
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

    {"y_uv::y_uv", "y_uv_420", y_uv_copied},
    {"y_uv::y_uv_to422", "y_uv_422", y_uv_to_422},
    {"p216::p010", "p010", p216_to_p010},

    {"uyvy::yuy2", "yuy2", bytes_exchanged},
    {"yuy2::uyvy", "uyvy", bytes_exchanged},

    {"uyvy::y_uv_422", "y_uv_422", uyvy_to_y_uv_422},
    {"uyvy::y_uv_420", "y_uv_420", uyvy_to_420<split_to_semi_planar>},
    {"uyvy::y_u_v_422", "y_u_v_422", uyvy_to_y_u_v_422},
    {"uyvy::y_u_v_420", "y_u_v_420", uyvy_to_420<split_to_planar>},
};

}  // namespace

std::span<const entry> expectations_of_planes() {
  return entries;
}

}  // namespace morvane::tests::oracle
