// Pixels of YCbCr as numbers of n bits, and what the tests of the matrices go through.
#pragma once

#include <cstdint>

#include "rules/colour.h"
#include "rules/picture.h"
#include "rules/samples.h"

namespace morvane::tests::rules {

inline constexpr matrix matrices[] = {matrix::bt601, matrix::bt709, matrix::bt2020};
inline constexpr range ranges[] = {range::video, range::full};
inline constexpr int depths[] = {8, 10, 12, 16};
inline constexpr int depths_with_exact_ends[] = {8, 10, 12};

struct numbers {
  std::uint32_t y, cb, cr;

  bool operator==(const numbers&) const = default;
};

inline numbers stored(const ycbcr& of, int bits) {
  return {number_of(of.y, bits, meaning::luma), number_of(of.cb, bits, meaning::chroma),
          number_of(of.cr, bits, meaning::chroma)};
}

inline ycbcr working(const numbers& of, int bits) {
  return {working_sample(of.y, bits, meaning::luma), working_sample(of.cb, bits, meaning::chroma),
          working_sample(of.cr, bits, meaning::chroma)};
}

}  // namespace morvane::tests::rules
