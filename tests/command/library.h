// What the library makes of the bytes of a file.
#pragma once

#include <algorithm>
#include <morvane.hpp>
#include <string>

#include "shell.h"

namespace morvane::tests {

inline description described(const std::string& format, int width, int height) {
  return {.format = format_named(format), .width = width, .height = height};
}

// One frame, by a checked call.
inline bytes converted(const bytes& frame, const description& from, const description& to, const options& how = {}) {
  image source(from);
  image destination(to);
  EXPECT_EQ(frame.size(), source.bytes());
  std::copy_n(frame.begin(), std::min(frame.size(), source.bytes()), source.data());
  morvane::convert(from, source.picture(), to, destination.picture(), how);
  return {destination.data(), destination.data() + destination.bytes()};
}

// All frames.
inline bytes all_converted(const bytes& frames, const description& from, const description& to,
                           const options& how = {}) {
  bytes result;
  const auto size = static_cast<std::ptrdiff_t>(lay_out(from).bytes);
  for (auto at = frames.begin(); at != frames.end(); at += size) {
    const bytes frame = converted({at, at + size}, from, to, how);
    result.insert(result.end(), frame.begin(), frame.end());
  }
  return result;
}

// The same from and to formats of one size.
inline bytes converted(const bytes& frame, const std::string& from, const std::string& to, int width, int height,
                       const options& how = {}) {
  return all_converted(frame, described(from, width, height), described(to, width, height), how);
}

inline bytes part(const bytes& all, std::size_t from, std::size_t count) {
  const auto start = all.begin() + static_cast<std::ptrdiff_t>(from);
  return {start, start + static_cast<std::ptrdiff_t>(count)};
}

inline bytes operator+(bytes a, const bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// A frame of noise in the format.
inline bytes noise_of(const description& d, unsigned seed = 1) {
  return noise(static_cast<std::size_t>(lay_out(d).bytes), seed);
}

}  // namespace morvane::tests
