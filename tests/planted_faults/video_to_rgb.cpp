// Faults around and in place of conversions of video to RGB.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

// uyvy::bgr_601 with 518 in place of 517.
void coefficient_off_by_one(const call& c) {
  right("uyvy::bgra_601", "bgra", c);
  for (int y = 0; y < c.yres; ++y)
    for (int x = 0; x < c.xres / 2 * 2; ++x) {
      const std::uint8_t* pair = c.source.data[0] + std::ptrdiff_t{y} * c.source.stride[0] + x / 2 * 4;
      const int t = (298 * pair[x % 2 == 0 ? 1 : 3] + 518 * pair[0] - 70635) >> 8;
      c.destination.data[0][std::ptrdiff_t{y} * c.destination.stride[0] + x * 4] =
          static_cast<std::uint8_t>(t < 0     ? 0
                                    : t > 255 ? 255
                                              : t);
    }
}

void colors_exchanged_between_planes(const call& c) {
  call wrong = c;
  wrong.destination.data[0] = c.destination.data[2];
  wrong.destination.data[2] = c.destination.data[0];
  right("uyvy::r_g_b_709", "r_g_b", wrong);
}

void green_weight_off_by_one(const call& c) {
  right("p216::rgbx_2020", "rgbx", c);
  each_pixel(c, [&](int y, int x) {
    if (x >= c.xres / 2 * 2) return;
    const std::uint8_t* cbcr = source_row(c, 1, y) + x / 2 * 4;
    const int luma = 74 * source_row(c, 0, y)[2 * x + 1] - 1192;
    const int t = (luma - 12 * (cbcr[1] - 128) - 43 * (cbcr[3] - 128)) >> 6;
    row_of_plane(c, 0, y)[4 * x + 1] = static_cast<std::uint8_t>(t < 0 ? 0 : t > 255 ? 255 : t);
  });
}

void last_odd_pixel_converted(const call& c) {
  right("p216::rgbx_2020", "rgbx", c);
  if (has_pixels(c) && c.xres % 2 != 0) row_of_plane(c, 0, 0)[4 * c.xres - 1] ^= 255;
}

constexpr fault faults[] = {
    {"coefficient_off_by_one", "uyvy::bgra_601", "bgra", coefficient_off_by_one, "destination plane"},
    {"colors_exchanged_between_planes", "uyvy::r_g_b_709", "r_g_b", colors_exchanged_between_planes, "plane r"},
    {"green_weight_off_by_one", "p216::rgbx_2020", "rgbx", green_weight_off_by_one, "destination plane rgbx"},
    {"last_odd_pixel_converted", "p216::rgbx_2020", "rgbx", last_odd_pixel_converted, "(row 0, byte 3)"},
};

}  // namespace

std::span<const fault> faults_of_video_to_rgb() {
  return faults;
}

}  // namespace morvane::tests
