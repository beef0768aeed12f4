// Rows of a plane to lines of working samples, and back.
#pragma once

#include <array>
#include <cstdint>

#include "../catalogue/formats.h"

namespace Processing::Morvane::checked {

namespace catalogue = morvane::catalogue;

// A line for each component: luma, red or luminance; Cb or green; Cr or blue; alpha. The last one is for what is
// unused. Lines have room for whole groups.
enum component { first, second, third, alpha, unused, component_count };

struct component_lines {
  uint16_t* of[component_count] = {};
};

// A plane with its components, which the catalogue has as text.
struct stored_plane {
  const catalogue::plane* layout = nullptr;
  std::array<int, component_count> samples{};  // of each component in a group
  std::array<component, 4> items{};            // the first components of a group, as they are stored
  int item_count = 0;

  bool has(const component c) const { return samples[c] > 0; }
  int groups(const int width) const { return (width - 1) / layout->group_pixels + 1; }
};

// The lines of the items of a group, in the order in which they are stored.
using item_lines = std::array<uint16_t*, 4>;

stored_plane stored(const catalogue::plane& p);

// The largest sample of alpha always stands for 65535; whether that of the other components does is said by
// `fills_words`, of a source or of a destination.
bool is_filled(component c, bool fills_words);

// Of samples in the upper bits of words: those bits, and half a step of a sample, by which it is rounded.
uint16_t kept_bits(const stored_plane& p);
uint16_t half_step(const stored_plane& p);

// Components without a line are left out. The line for what is unused is there, and overwritten.
void read_row(const stored_plane& p, const uint8_t* row, int width, const component_lines& lines, bool fills_words);

// All components that are stored have a line. That of what is unused holds 65535, and is that of opaque alpha too.
void write_row(const stored_plane& p, uint8_t* row, int width, const component_lines& lines, bool fills_words);

}  // namespace Processing::Morvane::checked
