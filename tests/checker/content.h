// What planes hold before a call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "catalogue/formats.h"

namespace morvane::tests {

enum class content {
  random,
  extremes,    // bytes 0 and 255
  thresholds,  // samples beside the limits of video range, of the sign and of the byte
  zeros,
  ones,
  opaque,       // random, every alpha 255
  one_less,     // random, every alpha 255 except one
  count_of_all  // how many there are
};

const char* name_of(content c);

// At least this many bytes of content, one of many pieces of it.
inline constexpr std::size_t piece_bytes = 32768;
std::span<const std::uint8_t> piece_of(content pattern, std::uint32_t piece);

// Fills a plane with a piece of content, and with more of it where it is larger.
void fill(std::span<std::uint8_t> plane, content pattern, std::uint32_t piece);

// Words beside the limits of video range, of the sign, of the byte and of the narrow samples; none for bytes.
std::span<const std::uint16_t> limits_of(catalogue::sample_type sample);

}  // namespace morvane::tests
