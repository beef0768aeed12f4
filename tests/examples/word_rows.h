// Rows of words and floats, as the examples write them down.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "byte_rows.h"

namespace morvane::tests {

using words = std::vector<std::uint16_t>;
using floats = std::vector<float>;

// Enough pixels for the vectors of every backend, and some more.
inline constexpr std::size_t many = 70;
inline constexpr int row_of_many = static_cast<int>(2 * many);  // the bytes of a word for each of them

template <class Sample>
std::vector<Sample> repeated_samples(const std::vector<Sample>& unit, std::size_t count) {
  std::vector<Sample> result(unit.size() * count);
  for (std::size_t i = 0; i < result.size(); ++i) result[i] = unit[i % unit.size()];
  return result;
}

inline words repeated_words(const words& unit, std::size_t count) {
  return repeated_samples(unit, count);
}

inline words counted_words(std::size_t size, unsigned step = 9973) {
  words result(size);
  for (std::size_t i = 0; i < size; ++i) result[i] = static_cast<std::uint16_t>(i * step + 12345);
  return result;
}

inline words part(const words& from, std::size_t first, std::size_t size) {
  const auto begin = from.begin() + static_cast<std::ptrdiff_t>(first);
  return {begin, begin + static_cast<std::ptrdiff_t>(size)};
}

inline words masked(words of, unsigned mask) {
  for (std::uint16_t& w : of) w = static_cast<std::uint16_t>(w & mask);
  return of;
}

inline words times_256(const bytes& of) {
  words result;
  for (const std::uint8_t b : of) result.push_back(static_cast<std::uint16_t>(b * 256));
  return result;
}

// The same memory as bytes: what the functions take that have byte pointers alone.
inline const std::uint8_t* as_bytes(const words& w) {
  return reinterpret_cast<const std::uint8_t*>(w.data());
}

inline std::uint8_t* as_bytes(words& w) {
  return reinterpret_cast<std::uint8_t*>(w.data());
}

struct p216_picture {
  words y, cbcr;

  explicit p216_picture(std::size_t pixels = many) : y(pixels), cbcr(pixels) {}
  p216_picture(words luma, words chroma) : y(std::move(luma)), cbcr(std::move(chroma)) {}
  bool operator==(const p216_picture&) const = default;
};

inline p216_picture repeated_pair(const words& y, const words& cbcr) {
  return {repeated_words(y, many / 2), repeated_words(cbcr, many / 2)};
}

}  // namespace morvane::tests
