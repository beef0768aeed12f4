// What the tests against other libraries share: planes of bytes.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace morvane::tests {

// Sizes that end inside a vector of any backend.
inline constexpr int width = 1926;
inline constexpr int height = 34;

struct byte_plane {
  int stride;
  std::vector<std::uint8_t> bytes;

  byte_plane(int row_bytes, int rows, int padding = 0)
      : stride(row_bytes + padding), bytes(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows)) {}

  std::uint8_t* data() { return bytes.data(); }
  const std::uint8_t* data() const { return bytes.data(); }
  std::uint16_t* words() { return reinterpret_cast<std::uint16_t*>(bytes.data()); }
  const std::uint16_t* words() const { return reinterpret_cast<const std::uint16_t*>(bytes.data()); }
  bool operator==(const byte_plane&) const = default;
};

// Bytes without a pattern, the same in every run.
byte_plane noise(int row_bytes, int rows, std::uint32_t seed = 1, int padding = 0);

// 16-bit words without a pattern, `bits` of them in use.
byte_plane noise_of_words(int row_words, int rows, int bits = 16);

}  // namespace morvane::tests
