// The backend without vectors: kernels fall back to their rule, pixel by pixel.
#pragma once

namespace Processing::Morvane::format_conversion::vector {

struct portable {
  static constexpr int lanes = 0;

  struct block {};
  struct bytes {};
  struct sums {};
};

}  // namespace Processing::Morvane::format_conversion::vector
