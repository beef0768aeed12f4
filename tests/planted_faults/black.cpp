// Faults around and in place of conversions of fills.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void whole_group_written(const call& c) {
  right("yuyv_matrox_10::black", "yuyv_matrox_10", c);
  const int pairs = (c.xres + 1) / 2;
  if (has_pixels(c) && pairs % 8 != 0) row_of_plane(c, 0, c.yres - 1)[pairs / 8 * 40 + 39] = 0;
}

constexpr fault faults[] = {
    {"whole_group_written", "yuyv_matrox_10::black", "yuyv_matrox_10", whole_group_written, "byte 39 from the first"},
};

}  // namespace

std::span<const fault> faults_of_black() {
  return faults;
}

}  // namespace morvane::tests
