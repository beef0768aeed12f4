// What the tests of whole domains share. Thinned, one in every so many rows of a large domain is converted; the rows
// are taken with a stride that shares no factor with 256, so that each value of each component occurs.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "Processing.Morvane.h"
#include "options.h"
#include "support.h"

namespace morvane::tests {

namespace fc = Processing::Morvane::format_conversion;

using image_conversion = void(const std::uint8_t*, int, std::uint8_t*, int, int, int);

constexpr std::size_t byte_values = 256;

inline unsigned row_step() {
  return thin() ? 37 : 1;
}

inline std::uint8_t low_byte(int value) {
  return static_cast<std::uint8_t>(value);
}

// Where the samples of an RGB pixel lie.
struct rgb_layout {
  std::size_t bytes, red, green, blue;
};
constexpr rgb_layout blue_first = {4, 2, 1, 0};
constexpr rgb_layout red_first = {4, 0, 1, 2};
constexpr rgb_layout three_bytes = {3, 2, 1, 0};

// got(i) must be wanted(i), for `count` of them.
template <class Got, class Wanted>
void compare(const char* what, std::size_t count, Got got, Wanted wanted) {
  for (std::size_t i = 0; i < count; ++i)
    if (got(i) != wanted(i)) {
      ADD_FAILURE() << what << " " << i << ": got " << got(i) << ", expected " << wanted(i);
      return;
    }
}

}  // namespace morvane::tests
