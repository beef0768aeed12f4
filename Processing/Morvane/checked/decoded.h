// YCbCr to RGB or to luminance, a row at a time without lines, where a kernel reads the one layout and writes the
// other.
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
  plane_numbers written;  // of the destination, red first
  uint16_t kept = 65535;  // of words with samples in their upper bits
  bool has_fine_bits = false;
  int up = 0;  // by so many bits samples in lower bits lie below the top
  format_conversion::kernel::narrow_matrix narrow = {};
  format_conversion::kernel::wide_matrix wide = {};
  format_conversion::kernel::rgb_lines_to_luminance luminance = {};

  // Of a pixel: what its bytes are of R, G, B and 255, or whether its blue is first, and what a double word has beside
  // its samples.
  uint32_t places = 0;
  bool begins_with_blue = false;
  bool is_big_endian = false;
  bool fills_unused_bits = false;
};

// Where it gives the bytes that lines give.
std::optional<decoder> find_decoder(const way& w);

void decode_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, int first, int rows,
                 bool streams);

}  // namespace Processing::Morvane::checked
