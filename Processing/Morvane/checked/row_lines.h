// The lines of working samples that a row passes through, in scratch memory.
#pragma once

#include <array>
#include <cstdint>

#include "way.h"

namespace Processing::Morvane::checked {

// Cb and Cr.
struct chroma_lines {
  uint16_t* cb = nullptr;
  uint16_t* cr = nullptr;

  chroma_lines from(const int sample) const { return {cb + sample, cr + sample}; }
};

// Lines of a piece of a row, and the few lines of whole rows that later rows need. Each has room for whole groups, and
// for a margin on both sides. Lines that a way does not need are null, so that those that it needs lie together.
struct row_lines {
  component_lines read;   // of the source
  component_lines keyed;  // of another row, whose alpha a row of chroma needs
  component_lines rgb;
  component_lines ycbcr;
  chroma_lines between;  // rows of chroma of a 4:2:0 source
  chroma_lines doubled;
  chroma_lines halved;
  chroma_lines averaged;
  uint16_t* alpha_of_pairs = nullptr;
  uint16_t* neutral = nullptr;  // chroma of grey
  uint16_t* ones = nullptr;

  chroma_lines kept[3];  // rows of chroma of a 4:2:0 source
  chroma_lines upper;    // chroma of the upper one of two rows of a 4:2:0 destination
};

// What a way does with a row, apart from the steps that it says itself.
struct row_needs {
  std::array<bool, component_count> components{};  // which ones of the source are read
  bool chroma = false;                             // of the destination, written from lines
  bool half_rows = false;                          // the same, of a 4:2:0 destination
  bool average_of_rows = false;                    // for which two rows are made into one
  bool alpha = false;
  bool halves_in_matrix = false;  // chroma, along rows
};

row_needs needs_of(const way& w);

int64_t bytes_of_row_lines(const way& w);
// At any address.
row_lines row_lines_in(void* scratch, const way& w, const row_needs& needs);

}  // namespace Processing::Morvane::checked
