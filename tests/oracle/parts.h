// What the files of expectations share: plain arithmetic, the walk over the lines of an image with any number of
// planes, and their tables, one for each family of kernels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "catalogue/call.h"

namespace morvane::tests::oracle {

using catalogue::call;

inline int floor_shift(int value, int bits) {
  const int unit = 1 << bits;
  const int remainder = ((value % unit) + unit) % unit;
  return (value - remainder) / unit;
}

inline std::uint8_t byte(int value) {
  return static_cast<std::uint8_t>(((value % 256) + 256) % 256);
}

inline std::uint8_t clamped(int value) {
  return byte(value < 0 ? 0 : value > 255 ? 255 : value);
}

// Little-endian words, at any address.
inline std::uint32_t word_at(const std::uint8_t* s) {
  return s[0] + 256U * s[1];
}

// The low 16 bits of the value.
inline void put_word(std::uint8_t* d, std::uint32_t value) {
  d[0] = static_cast<std::uint8_t>(value & 255U);
  d[1] = static_cast<std::uint8_t>(value >> 8 & 255U);
}

inline void copy(const std::uint8_t* s, std::uint8_t* d, std::ptrdiff_t bytes) {
  for (std::ptrdiff_t i = 0; i < bytes; ++i) d[i] = s[i];
}

// The pairs of a line that completes that of a last odd pixel.
inline int pairs(int pixels) {
  return (pixels + 1) / 2;
}

// Where the current line begins in each plane.
struct line {
  std::array<const std::uint8_t*, catalogue::max_planes> source{};
  std::array<std::uint8_t*, catalogue::max_planes> destination{};
};

inline const std::uint8_t* read_row(const call& c, std::size_t plane, int row) {
  return c.source.data[plane] + std::ptrdiff_t{row} * c.source.stride[plane];
}

inline std::uint8_t* written_row(const call& c, std::size_t plane, int row) {
  return c.destination.data[plane] + std::ptrdiff_t{row} * c.destination.stride[plane];
}

// Calls convert(line, pixels) for each row, first to last.
template <class Convert>
void each_row(const call& c, Convert convert) {
  if (c.xres < 1) return;
  line at{c.source.data, c.destination.data};
  for (int row = 0; row < c.yres; ++row) {
    convert(at, c.xres);
    for (std::size_t i = 0; i < catalogue::max_planes; ++i) {
      if (at.source[i] != nullptr) at.source[i] += c.source.stride[i];
      if (at.destination[i] != nullptr) at.destination[i] += c.destination.stride[i];
    }
  }
}

// The strides of the planes, in bytes, in the order of the call.
inline bool strides_are(const call& c, std::initializer_list<int> source, std::initializer_list<int> destination) {
  std::size_t i = 0;
  for (const int stride : source)
    if (c.source.stride[i++] != stride) return false;
  i = 0;
  for (const int stride : destination)
    if (c.destination.stride[i++] != stride) return false;
  return true;
}

// As each_row, but a tight image is one long line.
template <class Convert>
void one_line_if(bool tight, const call& c, Convert convert) {
  if (c.xres < 1 || c.yres < 1) return;
  if (c.yres == 1 || tight)
    convert(line{c.source.data, c.destination.data}, c.xres * c.yres);
  else
    each_row(c, convert);
}

// The same, tight being an image whose strides are those given.
template <class Convert>
void one_line_or_each_row(const call& c, std::initializer_list<int> source, std::initializer_list<int> destination,
                          Convert convert) {
  one_line_if(strides_are(c, source, destination), c, convert);
}

inline void copy_luma(const call& c) {
  for (int row = 0; row < c.yres; ++row) copy(read_row(c, 0, row), written_row(c, 0, row), c.xres);
}

inline void report(const call& c, bool opaque) {
  if (c.opaque != nullptr) *c.opaque = opaque;
}

template <catalogue::thunk bt601, catalogue::thunk bt709>
void by_color_space(const call& c) {
  c.argument == 601 ? bt601(c) : bt709(c);
}

struct entry {
  std::string_view name;
  std::string_view destination;
  catalogue::thunk expected;
};

std::span<const entry> expectations_of_planes();
std::span<const entry> expectations_of_chroma();
std::span<const entry> expectations_of_depth();
std::span<const entry> expectations_of_rgb_to_video();
std::span<const entry> expectations_of_video_to_rgb();
std::span<const entry> expectations_of_full_chroma();
std::span<const entry> expectations_of_key();
std::span<const entry> expectations_of_words();
std::span<const entry> expectations_of_card_10();
std::span<const entry> expectations_of_black();

}  // namespace morvane::tests::oracle
