// All words in all places of a vector, and words with alphas on a dense grid and beside every threshold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "exhaustive/domains.h"

namespace morvane::tests {

using words = std::vector<std::uint16_t>;
using bytes = std::vector<std::uint8_t>;

inline constexpr std::size_t values = 65536;
inline constexpr int width = 65536;
inline constexpr int row = 2 * width;  // bytes of a row of words

inline const std::uint8_t* as_bytes(const words& w) {
  return reinterpret_cast<const std::uint8_t*>(w.data());
}
inline std::uint8_t* as_bytes(words& w) {
  return reinterpret_cast<std::uint8_t*>(w.data());
}

inline int word_in(const bytes& b, std::size_t index) {
  return b[2 * index] + 256 * b[2 * index + 1];
}

// All words, one after the other in steps of an odd number.
inline words all_words(std::size_t step, std::size_t first) {
  words result(values);
  for (std::size_t i = 0; i < values; ++i) result[i] = static_cast<std::uint16_t>(i * step + first);
  return result;
}

struct image {
  words y, cbcr, alpha;
};

// Calls take(image) with images of a row that hold every word in every plane. Neighbours in a row differ by an odd
// step, so a place in a group of 16 pixels holds one word in 16; with 16 images it meets all of them.
template <class Take>
void images_of_all_words(Take take) {
  for (std::size_t first = 0; first < 16; first += thin() ? 5 : 1) {
    take(image{all_words(40503, first), all_words(28411, first), all_words(51787, first)});
    if (testing::Test::HasFailure()) return;
  }
}

// Over black.

inline std::int64_t floor_of(std::int64_t product) {
  return product >= 0 ? product / 65536 : -((-product + 65535) / 65536);
}

inline int word_over_black(int sample, int black, int alpha) {
  const std::int64_t product = (std::int64_t{sample} - black) * (std::int64_t{alpha} + 1);
  return static_cast<int>((black + floor_of(product)) & 65535);
}

// Pairs of one sample in all four places. The odd pixel has the complement of the alpha, so that a mix-up shows.
struct composed {
  words y, cbcr, alpha;

  void set(std::size_t pair, std::size_t sample, std::size_t even_alpha) {
    const auto s = static_cast<std::uint16_t>(sample);
    y[2 * pair] = y[2 * pair + 1] = cbcr[2 * pair] = cbcr[2 * pair + 1] = s;
    alpha[2 * pair] = static_cast<std::uint16_t>(even_alpha);
    alpha[2 * pair + 1] = static_cast<std::uint16_t>(65535 - even_alpha);
  }
};

inline constexpr int pixels_of_pairs = 2 * width;
inline constexpr int row_of_pairs = 2 * pixels_of_pairs;

// Calls take(pairs) with a row of 65536 pairs for every threshold of a sample with all alphas, and for every threshold
// of alpha and a grid of others with all samples.
template <class Take>
void samples_with_alphas(Take take) {
  composed pairs{words(2 * values), words(2 * values), words(2 * values)};
  const auto converted = [&] {
    take(pairs);
    return !testing::Test::HasFailure();
  };
  for (const std::size_t sample : {0U, 1U, 4094U, 4095U, 4096U, 4097U, 4098U, 32766U, 32767U, 32768U, 32769U, 32770U,
                                   60159U, 60160U, 61440U, 65534U, 65535U}) {
    for (std::size_t a = 0; a < values; ++a) pairs.set(a, sample, a);
    if (!converted()) return;
  }
  std::vector<std::size_t> alphas = {0, 1, 2, 255, 256, 257, 32767, 32768, 65534, 65535};
  for (std::size_t a = 3; a < values; a += thin() ? 8191 : 211) alphas.push_back(a);
  for (const std::size_t alpha : alphas) {
    for (std::size_t s = 0; s < values; ++s) pairs.set(s, s, alpha);
    if (!converted()) return;
  }
}

inline std::string pair_text(const composed& pairs, std::size_t pair) {
  return "sample " + std::to_string(pairs.y[2 * pair]) + " alphas " + std::to_string(pairs.alpha[2 * pair]) + " and " +
         std::to_string(pairs.alpha[2 * pair + 1]);
}

}  // namespace morvane::tests
