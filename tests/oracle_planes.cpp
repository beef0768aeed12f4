// Expectations: uyvy to planes, and operations on planes of luma and chroma.
#include "oracle_parts.h"

namespace morvane::tests::oracle {
namespace {

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

// The pair of a last odd pixel is completed.
void uyvy_to_y(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {c.xres}, [&](const line& l, int pixels) {
    for (int k = 0; k < (pixels + 1) / 2; ++k) {
      l.destination[0][2 * k] = key_or_copy(l.source[0][4 * k + 1], c.argument != 0);
      l.destination[0][2 * k + 1] = key_or_copy(l.source[0][4 * k + 3], c.argument != 0);
    }
  });
}

void uyvy_to_ycbcrx(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {4 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < (pixels + 1) / 2 * 2; ++i) {
      const std::uint8_t* pair = l.source[0] + 4 * (i / 2);
      std::uint8_t* pixel = l.destination[0] + 4 * i;
      pixel[0] = pair[i % 2 == 0 ? 1 : 3];
      pixel[1] = pair[0];
      pixel[2] = pair[2];
      pixel[3] = 255;
    }
  });
}

// Luma alone.

void y_to_y16(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      l.destination[0][2 * i] = 0;
      l.destination[0][2 * i + 1] = l.source[0][i];
    }
  });
}

void y_to_uyvy(const call& c) {
  each_row(c, [&](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const int y = l.source[0][i];
      l.destination[0][2 * i] = 128;
      l.destination[0][2 * i + 1] = byte(c.argument != 0 ? floor_shift(y * 220, 8) + 16 : y);
    }
  });
}

int key_of_word(int y) {
  const int p = y * 1197;
  if (p >= 72010752) return 65535;
  const int t = floor_shift(p - 4902912, 10);
  return t > 0 ? t : 0;
}

void y16_to_y16(const call& c) {
  each_row(c, [&](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const int y = l.source[0][2 * i] + 256 * l.source[0][2 * i + 1];
      const int result = c.argument != 0 ? key_of_word(y) : y;
      l.destination[0][2 * i] = byte(result);
      l.destination[0][2 * i + 1] = byte(result / 256);
    }
  });
}

// Chroma of 4:2:0.

void copy_luma(const call& c) {
  for (int row = 0; row < c.yres; ++row) copy(read_row(c, 0, row), written_row(c, 0, row), c.xres);
}

void y_uv_copied(const call& c) {
  copy_luma(c);
  for (int row = 0; row < c.yres / 2; ++row) copy(read_row(c, 1, row), written_row(c, 1, row), c.xres / 2 * 2);
}

void y_uv_to_422(const call& c) {
  copy_luma(c);
  for (int row = 0; row < c.yres / 2 * 2; ++row) copy(read_row(c, 1, row / 2), written_row(c, 1, row), c.xres);
}

void interleave(const std::uint8_t* cb, const std::uint8_t* cr, std::uint8_t* cbcr, int pairs) {
  for (int k = 0; k < pairs; ++k) {
    cbcr[2 * k] = cb[k];
    cbcr[2 * k + 1] = cr[k];
  }
}

void y_u_v_to_y_uv(const call& c) {
  copy_luma(c);
  if (c.xres < 2 || c.yres < 2) return;
  const int half = c.xres / 2;
  const int rows = c.yres / 2;
  if (c.source.stride[1] == half && c.source.stride[2] == half && c.destination.stride[1] == c.xres)
    interleave(c.source.data[1], c.source.data[2], c.destination.data[1], rows * half);
  else
    for (int row = 0; row < rows; ++row)
      interleave(read_row(c, 1, row), read_row(c, 2, row), written_row(c, 1, row), half);
}

void y_u_v_to_y_uv_422(const call& c) {
  copy_luma(c);
  for (int row = 0; row < c.yres / 2 * 2; ++row)
    interleave(read_row(c, 1, row / 2), read_row(c, 2, row / 2), written_row(c, 1, row), c.xres / 2);
}

// Chroma alone. xres counts samples of each component, or bytes of an interleaved row.

void cb_cr_8_420_to_16_422(const call& c) {
  for (int row = 0; row < 2 * c.yres; ++row)
    for (int k = 0; k < c.xres; ++k) {
      put_word(written_row(c, 0, row) + 4 * k, read_row(c, 0, row / 2)[k] * 256U);
      put_word(written_row(c, 0, row) + 4 * k + 2, read_row(c, 1, row / 2)[k] * 256U);
    }
}

void cb_cr_16_422_interleaved(const call& c) {
  for (int row = 0; row < c.yres; ++row)
    for (int k = 0; k < c.xres; ++k) {
      copy(read_row(c, 0, row) + 2 * k, written_row(c, 0, row) + 4 * k, 2);
      copy(read_row(c, 1, row) + 2 * k, written_row(c, 0, row) + 4 * k + 2, 2);
    }
}

void cbcr_8_420_to_16_422(const call& c) {
  for (int row = 0; row < 2 * c.yres; ++row)
    for (int k = 0; 2 * k < c.xres; ++k) {
      const std::uint8_t* pair = read_row(c, 0, row / 2) + 2 * k;
      put_word(written_row(c, 0, row) + 4 * k, pair[0] * 256U);
      put_word(written_row(c, 0, row) + 4 * k + 2, pair[1] * 256U);
    }
}

constexpr entry entries[] = {
    {"uyvy::y_uv_422", "y_uv_422", uyvy_to_y_uv_422},
    {"uyvy::y_uv_420", "y_uv_420", uyvy_to_420<split_to_semi_planar>},
    {"uyvy::y_u_v_422", "y_u_v_422", uyvy_to_y_u_v_422},
    {"uyvy::y_u_v_420", "y_u_v_420", uyvy_to_420<split_to_planar>},
    {"uyvy::y", "y", uyvy_to_y},
    {"uyvy::ycbcrx", "ycbcrx", uyvy_to_ycbcrx},

    {"y::y16", "y16", y_to_y16},
    {"y::uyvy", "uyvy", y_to_uyvy},
    {"y16::y16", "y16", y16_to_y16},

    {"y_uv::y_uv", "y_uv_420", y_uv_copied},
    {"y_uv::y_uv_to422", "y_uv_422", y_uv_to_422},
    {"y_u_v::y_uv", "y_uv_420", y_u_v_to_y_uv},
    {"y_u_v::y_uv_to422", "y_uv_422", y_u_v_to_y_uv_422},

    {"cb_cr_8_420::cbcr_16_422", "cbcr_16_422", cb_cr_8_420_to_16_422},
    {"cb_cr_16_422::cbcr_16_422", "cbcr_16_422", cb_cr_16_422_interleaved},
    {"cbcr_8_420::cbcr_16_422", "cbcr_16_422", cbcr_8_420_to_16_422},
};

}  // namespace

std::span<const entry> expectations_of_planes() {
  return entries;
}

}  // namespace morvane::tests::oracle
