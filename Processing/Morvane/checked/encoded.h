// RGB in bytes to YCbCr in bytes with chroma for every second pixel, a row at a time or two that share chroma, without
// lines, where a kernel reads the one layout and writes the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "../kernel/encoded_rows.h"
#include "rearranged.h"
#include "shape.h"

namespace Processing::Morvane::checked {

struct way;

struct encoder {
  size_t of_row = 0;     // kernels, by their places among those that encode
  size_t of_rows = 0;    // the same for 4:2:0, which takes two rows at once
  plane_numbers planes;  // of the destination, luma first
  uint32_t places = 0;   // of R, G and B in a pixel
  format_conversion::kernel::rgb_lines_to_ycbcr_narrow matrix = {};
};

// Where it gives the bytes that lines give.
std::optional<encoder> find_encoder(const way& w);

void encode_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows);

}  // namespace Processing::Morvane::checked
