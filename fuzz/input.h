// What a fuzzer takes its decisions from.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace morvane::fuzz {

// Bytes at random, the same for the same input, and then the input. FuzzedDataProvider takes numbers from the end on,
// so that a short input takes the first decisions and chance all others; it would answer zeros otherwise.
inline std::vector<std::uint8_t> prolonged(const std::uint8_t* input, const std::size_t size) {
  std::minstd_rand random;
  for (std::size_t i = 0; i < size; ++i) random.seed(random() ^ input[i]);
  std::vector<std::uint8_t> bytes(1024);
  std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(random() >> 8); });
  bytes.insert(bytes.end(), input, input + size);
  return bytes;
}

}  // namespace morvane::fuzz
