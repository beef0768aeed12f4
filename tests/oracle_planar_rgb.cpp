// Expectations: uyvy to planar RGB, and luminance to grey.
#include "oracle_parts.h"

namespace morvane::tests::oracle {
namespace {

// Whole pairs; the three planes share the stride of the last.
template <bool bt709>
void uyvy_to_r_g_b(const call& c) {
  call shared = c;
  shared.destination.stride[0] = shared.destination.stride[1] = c.destination.stride[2];
  one_line_or_each_row(shared, {2 * c.xres}, {c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < pixels / 2 * 2; ++i) {
      const std::uint8_t* pair = l.source[0] + 4 * (i / 2);
      const int u = pair[0] - 128;
      const int v = pair[2] - 128;
      const int y = 74 * pair[i % 2 == 0 ? 1 : 3] - 1192;
      const int green = bt709 ? 14 * u + 34 * v : 25 * u + 52 * v;
      l.destination[0][i] = clamped(floor_shift(y + (bt709 ? 115 : 102) * v, 6));
      l.destination[1][i] = clamped(floor_shift(y - green, 6));
      l.destination[2][i] = clamped(floor_shift(y + 128 * u, 6));
    }
  });
}

void luminance_to_bgra(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < 4 * pixels; ++i) l.destination[0][i] = i % 4 == 3 ? std::uint8_t{255} : l.source[0][i / 4];
  });
}

constexpr entry entries[] = {
    {"uyvy::r_g_b", "r_g_b", by_color_space<uyvy_to_r_g_b<false>, uyvy_to_r_g_b<true>>},
    {"uyvy::r_g_b_601", "r_g_b", uyvy_to_r_g_b<false>},
    {"uyvy::r_g_b_709", "r_g_b", uyvy_to_r_g_b<true>},
    {"L::bgra", "bgra", luminance_to_bgra},
};

}  // namespace

std::span<const entry> expectations_of_planar_rgb() {
  return entries;
}

}  // namespace morvane::tests::oracle
