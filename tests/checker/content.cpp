#include "checker/content.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <random>
#include <vector>

namespace morvane::tests {

namespace {

// No multiple of what lies between the rows of an image.
constexpr std::size_t pool_bytes = 4 * piece_bytes + 29;

// A long run of bytes of one kind of content; cases take pieces of it.
std::vector<std::uint8_t> make_pool(content pattern) {
  constexpr std::uint8_t limits[] = {0,   1,   15,  16,  17,  18,  127, 128, 129, 130,
                                     234, 235, 236, 239, 240, 241, 253, 254, 255, 255};
  std::mt19937 random(static_cast<unsigned>(pattern) + 1);
  std::vector<std::uint8_t> pool(pool_bytes);
  for (std::uint8_t& b : pool) {
    const auto n = static_cast<unsigned>(random() >> 8);
    switch (pattern) {
      case content::extremes:
        b = n % 2 == 0 ? 0 : 255;
        break;
      case content::thresholds:
        b = limits[n % std::size(limits)];
        break;
      case content::zeros:
        b = 0;
        break;
      case content::ones:
        b = 255;
        break;
      default:
        b = static_cast<std::uint8_t>(n);
    }
  }
  return pool;
}

const std::vector<std::uint8_t>& pool_of(content pattern) {
  static std::array<std::vector<std::uint8_t>, static_cast<std::size_t>(content::count_of_all)> pools;
  std::vector<std::uint8_t>& pool = pools[static_cast<std::size_t>(pattern)];
  if (pool.empty()) pool = make_pool(pattern);
  return pool;
}

}  // namespace

const char* name_of(content c) {
  constexpr const char* names[] = {"random", "extremes", "thresholds", "zeros", "ones", "opaque", "one less"};
  return names[static_cast<std::size_t>(c)];
}

std::span<const std::uint8_t> piece_of(content pattern, std::uint32_t piece) {
  const std::vector<std::uint8_t>& pool = pool_of(pattern);
  return std::span(pool).subspan(std::size_t{piece} * 7919 % (pool.size() - piece_bytes));
}

void fill(std::span<std::uint8_t> plane, content pattern, std::uint32_t piece) {
  std::span<const std::uint8_t> from = piece_of(pattern, piece);
  while (!plane.empty()) {
    const std::size_t bytes = std::min(plane.size(), from.size());
    std::memcpy(plane.data(), from.data(), bytes);
    plane = plane.subspan(bytes);
    from = pool_of(pattern);
  }
}

std::span<const std::uint16_t> limits_of(catalogue::sample_type sample) {
  static constexpr std::uint16_t wide[] = {0,     1,     255,   256,   257,   4095,  4096,  4097,  32767, 32768, 32769,
                                           60159, 60160, 60161, 61439, 61440, 61441, 65279, 65280, 65534, 65535};
  static constexpr std::uint16_t of_10_bits[] = {0,    1,    3,    4,    15,   16,   511,  512,
                                                 1022, 1023, 1024, 1025, 4095, 4096, 65535};
  static constexpr std::uint16_t of_12_bits[] = {0,    1,    15,   16,   255,  256,  1023, 1024,
                                                 2047, 2048, 4094, 4095, 4096, 4097, 65535};
  if (sample == catalogue::sample_type::u16) return wide;
  if (sample == catalogue::sample_type::u16_low10) return of_10_bits;
  if (sample == catalogue::sample_type::u16_low12) return of_12_bits;
  return {};
}

}  // namespace morvane::tests
