#include "peers.h"

#include <random>

namespace morvane::tests {

byte_plane noise(int row_bytes, int rows, std::uint32_t seed, int padding) {
  byte_plane result(row_bytes, rows, padding);
  std::mt19937 random(seed);
  for (std::uint8_t& byte : result.bytes) byte = static_cast<std::uint8_t>(random());
  return result;
}

byte_plane noise_of_words(int row_words, int rows, int bits) {
  byte_plane result = noise(2 * row_words, rows);
  const unsigned mask = (1U << bits) - 1;
  for (std::size_t i = 0; i < result.bytes.size(); i += 2) {
    result.bytes[i] = static_cast<std::uint8_t>(result.bytes[i] & mask);
    result.bytes[i + 1] = static_cast<std::uint8_t>(result.bytes[i + 1] & mask >> 8);
  }
  return result;
}

}  // namespace morvane::tests
