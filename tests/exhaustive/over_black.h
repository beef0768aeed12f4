// Compositing over black: every sample with every alpha, in all four positions of a pair. The other samples and the
// other alpha of the pair are complements, so that a mix-up shows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "exhaustive/domains.h"

namespace morvane::tests {

inline int byte_over_black(int sample, int black, int alpha) {
  const int product = (sample - black) * (alpha + 1);
  const int quotient = product >= 0 ? product / 256 : -((-product + 255) / 256);
  return (black + quotient) & 255;
}

// A pair whose even pixel has the sample and the alpha, or the odd one.
struct composed_pair {
  std::array<int, 4> uyvy;
  std::array<int, 2> alpha;
};

inline composed_pair pair_of(int sample, int alpha, bool odd) {
  if (odd) return {{255 - sample, 255 - sample, sample, sample}, {255 - alpha, alpha}};
  return {{sample, sample, 255 - sample, 255 - sample}, {alpha, 255 - alpha}};
}

using pairs_in_row = std::array<composed_pair, byte_values>;

// convert(pairs, video) composites a row of pairs.
template <class Convert>
void all_samples_with_all_alphas(Convert convert) {
  pairs_in_row pairs;
  std::array<std::uint8_t, 4 * byte_values> video{};
  for (const bool odd : {false, true})
    for (int alpha = 0; alpha < 256; ++alpha) {
      for (std::size_t i = 0; i < byte_values; ++i) pairs[i] = pair_of(static_cast<int>(i), alpha, odd);
      convert(pairs, video.data());
      for (std::size_t i = 0; i < byte_values; ++i)
        for (std::size_t k = 0; k < 4; ++k)
          ASSERT_EQ(video[4 * i + k], byte_over_black(pairs[i].uyvy[k], k % 2 == 0 ? 128 : 16, pairs[i].alpha[k / 2]))
              << "sample " << i << " alpha " << alpha << " byte " << k << (odd ? " of odd" : " of even");
    }
}

}  // namespace morvane::tests
