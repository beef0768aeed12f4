// RGB to YCbCr with chroma for every second pixel, a row at a time or two that share chroma, without lines, where a
// kernel reads the one layout and writes the other.
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
  plane_numbers read;    // of the source, red first
  format_conversion::kernel::narrow_encoding narrow = {};
  format_conversion::kernel::wide_encoding wide = {};

  // Of a pixel: where the bytes of R, G and B are, or whether blue is first, and how a double word holds its samples.
  uint32_t places = 0;
  bool begins_with_blue = false;
  bool is_big_endian = false;
  int lowest = 0;

  // Of words that are written: half a step of a sample at their top, by how many bits they move down, and what is kept
  // then.
  uint16_t half = 0;
  int down = 0;
  uint16_t kept = 65535;
};

// Where it gives the bytes that lines give.
std::optional<encoder> find_encoder(const way& w);

void encode_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows);

}  // namespace Processing::Morvane::checked
