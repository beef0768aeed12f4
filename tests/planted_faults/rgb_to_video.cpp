// Faults around and in place of conversions of RGB to video.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void report_with_last_odd_pixel(const call& c) {
  right("bgra::uyvy_a", "uyvy_a", c);
  if (c.opaque == nullptr || c.xres < 1 || c.xres % 2 == 0) return;
  for (int y = 0; y < c.yres; ++y)
    if (c.source.data[0][std::ptrdiff_t{y} * c.source.stride[0] + 4 * c.xres - 1] != 255) *c.opaque = false;
}

constexpr fault faults[] = {
    {"report_with_last_odd_pixel", "bgra::uyvy_a", "uyvy_a", report_with_last_odd_pixel, "opacity report"},
};

}  // namespace

std::span<const fault> faults_of_rgb_to_video() {
  return faults;
}

}  // namespace morvane::tests
