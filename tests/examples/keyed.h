// Video with a plane of alpha, as the examples convert it.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>

#include "byte_rows.h"

namespace morvane::tests {

using to_uyvy_a = void(const std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, int, int, bool*);

struct keyed {
  bytes uyvy, alpha;
};

inline keyed convert_keyed(to_uyvy_a* convert, const bytes& source, int xres, int yres, bool* opaque = nullptr) {
  const auto pixels = static_cast<std::size_t>(xres * yres);
  keyed result{filled(2 * pixels, 77), filled(pixels, 77)};
  convert(source.data(), 4 * xres, result.uyvy.data(), 2 * xres, result.alpha.data(), xres, xres, yres, opaque);
  return result;
}

using from_uyvy_a = void(const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*, int, int, int);

inline bytes convert_key_row(from_uyvy_a* convert, const bytes& uyvy, const bytes& alpha, int pixels,
                             std::size_t size) {
  bytes result = filled(size, 77);
  convert(uyvy.data(), static_cast<int>(uyvy.size()), alpha.data(), static_cast<int>(alpha.size()), result.data(),
          static_cast<int>(size), pixels, 1);
  return result;
}

inline void expect_report_of_one_alpha(to_uyvy_a* convert) {
  bool opaque = false;
  convert_keyed(convert, opaque_picture(96), 32, 3, &opaque);
  EXPECT_TRUE(opaque);
  for (std::size_t pixel = 0; pixel < 96; ++pixel) {
    bytes source = opaque_picture(96);
    source[4 * pixel + 3] = 254;
    const keyed unasked = convert_keyed(convert, source, 32, 3);
    const keyed result = convert_keyed(convert, source, 32, 3, &opaque);
    EXPECT_FALSE(opaque) << "pixel " << pixel;
    EXPECT_EQ(result.alpha[pixel], 254);
    EXPECT_EQ(result.uyvy, unasked.uyvy);
    EXPECT_EQ(result.alpha, unasked.alpha);
  }
}

inline void expect_nothing_to_be_opaque(to_uyvy_a* convert) {
  for (const auto& [xres, yres] : {std::pair{4, 0}, {4, -1}, {0, 4}, {-3, 4}, {-2, -2}}) {
    const bytes source(64);
    bytes written = filled(64, 77);
    bool opaque = false;
    convert(source.data(), 4 * xres, written.data(), 2 * xres, written.data(), xres, xres, yres, &opaque);
    EXPECT_TRUE(opaque);
    EXPECT_EQ(written, filled(64, 77));
  }
}

}  // namespace morvane::tests
