// A conversion with a mistake in it, which the checker must report, and what such mistakes are made of. Each family of
// kernels has a table of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "checker/checker.h"
#include "support.h"

namespace morvane::tests {

struct fault {
  const char* name;
  const char* row;
  const char* destination;
  catalogue::thunk faulty;
  const char* reported;  // part of the report
};

std::span<const fault> faults_of_planes();
std::span<const fault> faults_of_chroma();
std::span<const fault> faults_of_depth();
std::span<const fault> faults_of_rgb_to_video();
std::span<const fault> faults_of_video_to_rgb();
std::span<const fault> faults_of_full_chroma();
std::span<const fault> faults_of_key();
std::span<const fault> faults_of_words();
std::span<const fault> faults_of_card_10();
std::span<const fault> faults_of_black();

// The conversion as it is.
inline void right(std::string_view row, std::string_view destination, const catalogue::call& c) {
  row_of(row, destination).convert(c);
}

inline bool has_pixels(const catalogue::call& c) {
  return c.xres > 0 && c.yres > 0;
}

inline std::uint8_t* row_of_plane(const catalogue::call& c, std::size_t plane, int row) {
  return c.destination.data[plane] + std::ptrdiff_t{row} * c.destination.stride[plane];
}

inline const std::uint8_t* source_row(const catalogue::call& c, std::size_t plane, int row) {
  return c.source.data[plane] + std::ptrdiff_t{row} * c.source.stride[plane];
}

inline unsigned word_at(const std::uint8_t* s) {
  return s[0] + 256U * s[1];
}

inline void put_word(std::uint8_t* d, unsigned value) {
  d[0] = static_cast<std::uint8_t>(value & 255);
  d[1] = static_cast<std::uint8_t>(value >> 8 & 255);
}

inline unsigned read(const catalogue::call& c, std::size_t plane, int row, int index) {
  return word_at(source_row(c, plane, row) + 2 * index);
}

inline void write(const catalogue::call& c, std::size_t plane, int row, int index, unsigned word) {
  put_word(row_of_plane(c, plane, row) + 2 * index, word);
}

template <class Damage>
void each_pixel(const catalogue::call& c, Damage damage) {
  for (int y = 0; y < c.yres; ++y)
    for (int x = 0; x < c.xres; ++x) damage(y, x);
}

inline void copy(const std::uint8_t* s, std::uint8_t* d, int bytes) {
  for (int i = 0; i < bytes; ++i) d[i] = s[i];
}

}  // namespace morvane::tests
