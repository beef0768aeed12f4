// Rows of bytes, as tests write them down.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace morvane::tests {

using bytes = std::vector<std::uint8_t>;

inline bytes counted(std::size_t size, unsigned step = 37) {
  bytes result(size);
  for (std::size_t i = 0; i < size; ++i) result[i] = static_cast<std::uint8_t>(i * step + 11);
  return result;
}

inline bytes filled(std::size_t size, std::uint8_t value) {
  return bytes(size, value);
}

inline bytes part(const bytes& from, std::size_t first, std::size_t size) {
  const auto begin = from.begin() + static_cast<std::ptrdiff_t>(first);
  return {begin, begin + static_cast<std::ptrdiff_t>(size)};
}

// Bytes without a pattern, the same in every run.
inline bytes random_bytes(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  bytes result(size);
  for (std::uint8_t& b : result) b = static_cast<std::uint8_t>(random());
  return result;
}

// Four bytes a pixel, of which the last is 255.
inline bytes opaque_picture(std::size_t pixels) {
  bytes result = counted(4 * pixels);
  for (std::size_t i = 0; i < pixels; ++i) result[4 * i + 3] = 255;
  return result;
}

// A picture of `count` equal pixels.
inline bytes repeated(const bytes& pixel, std::size_t count) {
  bytes result(pixel.size() * count);
  for (std::size_t i = 0; i < result.size(); ++i) result[i] = pixel[i % pixel.size()];
  return result;
}

inline bytes joined(const bytes& first, const bytes& second) {
  bytes result(first.size() + second.size());
  std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), result.begin()));
  return result;
}

using image_conversion = void(const std::uint8_t*, int, std::uint8_t*, int, int, int);

// One row of pixels converted into a destination that held `before` in every byte.
inline bytes convert_row(image_conversion* convert, const bytes& source, int pixels, std::size_t destination_bytes,
                         std::uint8_t before = 77) {
  bytes destination = filled(destination_bytes, before);
  convert(source.data(), static_cast<int>(source.size()), destination.data(), static_cast<int>(destination_bytes),
          pixels, 1);
  return destination;
}

}  // namespace morvane::tests
