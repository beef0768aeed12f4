// Faults around and in place of conversions of 4:4:4.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void later_pixel_touched(const call& c) {
  right("bgra_601::ycbcra", "ycbcra", c);
  if (has_pixels(c) && c.xres > 1) c.destination.data[0][4] ^= 1;
}

template <bool (*when)(const call&)>
void report_of_completed_pair(const call& c) {
  right("ycbcra::uyvy_a", "uyvy_a", c);
  if (c.opaque != nullptr && has_pixels(c) && when(c)) *c.opaque = true;
}

bool one_odd_row(const call& c) {
  return c.xres % 2 != 0 && c.yres == 1 && c.source.data[0][4 * c.xres + 3] != 255;
}

constexpr fault faults[] = {
    {"later_pixel_touched", "bgra_601::ycbcra", "ycbcra", later_pixel_touched, "byte 4"},
    {"completed_pair_not_in_report", "ycbcra::uyvy_a", "uyvy_a", report_of_completed_pair<one_odd_row>,
     "opacity report"},
};

}  // namespace

std::span<const fault> faults_of_full_chroma() {
  return faults;
}

}  // namespace morvane::tests
