#include "peers.h"

#include <random>

namespace morvane::tests {

byte_plane noise(int row_bytes, int rows, std::uint32_t seed, int padding) {
  byte_plane result(row_bytes, rows, padding);
  std::mt19937 random(seed);
  for (std::uint8_t& byte : result.bytes) byte = static_cast<std::uint8_t>(random());
  return result;
}

}  // namespace morvane::tests
