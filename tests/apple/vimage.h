// What the stand-in for vImage was asked, and how it is to answer. It converts nothing.
#pragma once

#include <Accelerate/Accelerate.h>

#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace morvane::tests::vimage {

// One call that generates a conversion. `range` has the fields in the order of vImage_YpCbCrPixelRange.
struct generation {
  std::string function;
  std::string matrix;
  std::array<std::int32_t, 8> range;
  int ypcbcr_type;
  int argb_type;
  vImage_Flags flags;

  bool operator==(const generation&) const = default;
};

// A vImage_Buffer whose numbers are read as signed.
struct buffer {
  const void* data;
  std::int64_t height;
  std::int64_t width;
  std::int64_t row_bytes;

  bool operator==(const buffer&) const = default;
};

constexpr int no_alpha = -1;

// One call that converts an image. `matrix` is the one that its descriptor was generated with, and empty where nothing
// generated it.
struct conversion {
  std::string function;
  std::string matrix;
  buffer source;
  buffer destination;
  std::array<std::uint8_t, 4> permute_map;
  int alpha;
  vImage_Flags flags;

  bool operator==(const conversion&) const = default;
};

std::ostream& operator<<(std::ostream& out, const generation& call);
std::ostream& operator<<(std::ostream& out, const conversion& call);

// All calls since the program began, first to last.
std::vector<generation> generations();
std::vector<conversion> conversions();

// From now on every call returns an error, and generates nothing.
void refuse();

// While such an object lives, a call that generates a conversion with `matrix` does not return.
class held_generation {
 public:
  explicit held_generation(std::string matrix);
  ~held_generation();
  held_generation(const held_generation&) = delete;
  held_generation& operator=(const held_generation&) = delete;

  static void wait_until_begun();
};

}  // namespace morvane::tests::vimage
