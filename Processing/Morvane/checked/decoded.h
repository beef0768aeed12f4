// YCbCr to RGB in bytes, a row at a time without lines, where a kernel reads the one layout and writes the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "../kernel/decoded_rows.h"
#include "rearranged.h"
#include "shape.h"

namespace Processing::Morvane::checked {

struct way;

struct decoder {
  size_t kernel = 0;      // its place among those that decode
  plane_numbers planes;   // of the source, luma first
  uint32_t places = 0;    // of R, G, B and 255 in a pixel
  uint16_t kept = 65535;  // of words with samples in their upper bits
  format_conversion::kernel::narrow_coefficients_to_rgb coefficients = {};
};

// Where it gives the bytes that lines give.
std::optional<decoder> find_decoder(const way& w);

void decode_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows);

}  // namespace Processing::Morvane::checked
