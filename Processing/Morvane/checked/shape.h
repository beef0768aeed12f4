// What conversions need to know of a described picture, all of it from the catalogue.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "few.h"
#include "problem.h"
#include "stored.h"

namespace Processing::Morvane::checked {

// What the components mean. Luminance stands for red, green and blue alike.
enum class model { ycbcr, rgb, luminance, chroma, alpha };

using plane_numbers = few<size_t, MORVANE_MAX_PLANES>;

struct shape {
  const catalogue::format* format = nullptr;
  std::array<stored_plane, MORVANE_MAX_PLANES> planes{};
  size_t plane_count = 0;
  int width = 0;
  int height = 0;
  int matrix = 709;
  bool full_range = false;
  model colour = model::ycbcr;
  bool has_alpha = false;
  bool has_chroma = false;
  bool half_width = false;   // of chroma
  bool half_height = false;  // of chroma
  int depth = 8;             // that of two bits of alpha does not count
  int alpha_depth = 0;

  // In so many columns of the image.
  int samples_of(const int component, const int columns) const {
    return has_chroma && (component == second || component == third) ? chroma_samples(columns) : columns;
  }
  int chroma_samples(const int columns) const { return half_width ? columns - columns / 2 : columns; }
  int chroma_height() const { return half_height ? height - height / 2 : height; }
  // Of 4:2:0: the row of chroma on the other side of a row of the image, or its own at the edge.
  int chroma_row_beside(const int row) const {
    return std::clamp(row % 2 == 0 ? row / 2 - 1 : row / 2 + 1, 0, chroma_height() - 1);
  }

  // As a row of the image: the other row whose chroma is filtered into that of a row, of 4:2:0 the one beside it, and
  // of 4:2:2 the next one.
  int far_row_of_chroma(const int row) const {
    return half_height ? 2 * chroma_row_beside(row) : std::min(row + 1, height - 1);
  }

  size_t plane_with(const component c) const {
    size_t plane = 0;
    while (!planes[plane].has(c)) ++plane;
    return plane;
  }
};

// Whether the largest sample of red, green, blue or luminance stands for 65535.
bool fills_words(const shape& s);

// Whether all samples of the rows of a plane are of the picture.
bool is_full(const stored_plane& p, const shape& s);

const catalogue::format* format_of_id(int32_t id);

problem unknown_format(const char* argument, int32_t id);

// `name` is that of the description in messages.
problem describe(const morvane_description* description, const char* name, shape& result);

}  // namespace Processing::Morvane::checked
