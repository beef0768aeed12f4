// What several of the rules share.
#pragma once

#include <algorithm>

namespace morvane::tests::rules {

// The product of two numbers of which one has 15 fractional bits, rounded.
inline int rounded_product(int a, int b) {
  return (a * b + 16384) >> 15;
}

inline int clamped_to_word(int value) {
  return std::clamp(value, 0, 65535);
}

}  // namespace morvane::tests::rules
