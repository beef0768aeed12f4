// Rows of a plane to lines of working samples, and back.
#pragma once

#include <cstdint>

#include "shape.h"

namespace Processing::Morvane::checked {

// A line for each component: luma, red or luminance; Cb or green; Cr or blue; alpha. The last one takes and gives what
// is unused. Lines have room for whole groups.
enum component { first, second, third, alpha, unused, component_count };

struct component_lines {
  uint16_t* of[component_count] = {};
};

// The samples of a row, with their bits at the top of the words.
void read_row(const catalogue::plane& p, const uint8_t* row, int width, const component_lines& lines);

// From samples with their bits at the bottom of the words.
void write_row(const catalogue::plane& p, uint8_t* row, int width, const component_lines& lines);

// The components of a plane, a bit for each.
unsigned components_of(const catalogue::plane& p);

}  // namespace Processing::Morvane::checked
