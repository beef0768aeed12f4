#include "difference.h"

#include <cstddef>
#include <cstdlib>

namespace morvane::tests {

std::uint64_t sum_of_differences(const std::uint8_t* a, int a_stride, const std::uint8_t* b, int b_stride, int xres,
                                 int yres) {
  std::uint64_t sum = 0;
  for (int y = 0; y < yres; ++y)
    for (int x = 0; x < xres; ++x)
      sum += static_cast<std::uint64_t>(
          std::abs(a[std::ptrdiff_t{y} * a_stride + x] - b[std::ptrdiff_t{y} * b_stride + x]));
  return sum;
}

}  // namespace morvane::tests
