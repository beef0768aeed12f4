// What the sum of absolute differences must be.
#pragma once

#include <cstdint>

namespace morvane::tests {

std::uint64_t sum_of_differences(const std::uint8_t* a, int a_stride, const std::uint8_t* b, int b_stride, int xres,
                                 int yres);

}  // namespace morvane::tests
