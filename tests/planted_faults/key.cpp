// Faults around and in place of conversions of video with a key.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void key_threshold_off_by_one(const call& c) {
  right("uyvy::y", "y", c);
  if (c.argument == 0) return;
  for (int y = 0; y < c.yres; ++y)
    for (int x = 0; x < c.xres; ++x)
      if (row_of_plane(c, 0, y)[x] == 253) row_of_plane(c, 0, y)[x] = 255;
}

void key_stretch_of_copies(const call& c) {
  call wrong = c;
  wrong.argument = 1;
  right("uyvy::ya_uv", "ya_uv", wrong);
}

constexpr fault faults[] = {
    {"key_threshold_off_by_one", "uyvy::y", "y", key_threshold_off_by_one, "expected 253, got 255"},
    {"key_stretch_of_copies", "uyvy::ya_uv", "ya_uv", key_stretch_of_copies, "argument 0"},
};

}  // namespace

std::span<const fault> faults_of_key() {
  return faults;
}

}  // namespace morvane::tests
