// The way from one picture to another: what is done to a row, with all coefficients, decided once for a plan.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "../catalogue/conversions.h"
#include "colour.h"
#include "decoded.h"
#include "encoded.h"
#include "rearranged.h"
#include "regrouped.h"
#include "shape.h"

namespace Processing::Morvane::checked {

enum class chroma_filter : bool { linear, nearest };

// Through the caches or past them; by size, past them where the destination is larger than they are.
enum class store_kind { cached, streaming, by_size };

struct choices {
  chroma_filter filter = chroma_filter::linear;
  kernel::siting siting = kernel::siting::left;
  bool has_background = false;
  uint8_t background[3] = {};
  bool has_via = false;  // an entry point converts, also where the rules have no conversion
  store_kind stores = store_kind::cached;
};

struct way {
  shape from;
  shape to;
  choices how;

  bool filters_chroma() const { return how.filter == chroma_filter::linear; }
  // Whether a pair's chroma, where it stands for one pixel, is that of the even one.
  bool has_chroma_at_even_pixels() const { return !filters_chroma() || how.siting == kernel::siting::left; }
  // Of the source, as a row of the image: what chroma of a row is filtered with, which may be the row itself.
  int far_row_of_chroma(const int row) const {
    return filters_chroma() && from.half_height != to.half_height ? from.far_row_of_chroma(row) : row;
  }

  bool composites = false;     // over the background
  bool scales_range = false;   // of YCbCr, without a matrix
  bool widens_rgb = false;     // from video range to full
  bool has_to_rgb = false;     // a matrix, with chroma at every pixel before it
  bool has_from_rgb = false;   // a matrix, with chroma at every pixel behind it
  bool has_luminance = false;  // of red, green and blue
  bool narrows_rgb = false;    // from full range to video
  bool reads_chroma = false;

  // Where chroma of the source goes without a matrix, from its own sampling, and with one up to every pixel; behind a
  // matrix it comes from every pixel.
  bool doubles_rows = false;
  bool doubles_columns = false;
  bool halves_columns = false;
  bool halves_rows = false;
  bool keeps_half_rows = false;  // rows of chroma are those of the source, of which there are half as many

  // Planes of the destination that need no lines: their rows are those of a plane of the source, or rearranged bytes.
  std::array<int, MORVANE_MAX_PLANES> copy_of = {-1, -1, -1, -1};
  rearrangements rearranged;
  bool is_direct(const size_t plane) const { return copy_of[plane] >= 0 || is_written(rearranged, plane); }

  // Without lines too, as what reads and what writes meet in registers: YCbCr to RGB, RGB to YCbCr, v210 to other
  // groups or from them, and fill with key to others.
  std::optional<decoder> decoded;
  std::optional<encoder> encoded;
  std::optional<regrouping> regrouped;
  bool meets_in_registers() const { return decoded || encoded || regrouped; }

  // Without lines: all planes are direct, or an entry point converts them, because the caller named it or because its
  // bytes are the same.
  bool needs_lines() const;
  const catalogue::conversion* by = nullptr;
  bool is_via = false;
  int argument = 0;

  bool streams = false;       // stores to the destination pass by the caches
  int64_t scratch_bytes = 0;  // of one thread

  bool narrow = false;  // the form of the matrices
  background behind = {};
  kernel::scale_line rgb_range = {};
  kernel::scale_line luma_range = {};
  kernel::scale_line chroma_range = {};
  kernel::ycbcr_lines_to_rgb_narrow narrow_to = {};
  kernel::ycbcr_lines_to_rgb_wide wide_to = {};
  kernel::rgb_lines_to_ycbcr_narrow narrow_from = {};
  kernel::rgb_lines_to_ycbcr_wide wide_from = {};
  kernel::rgb_lines_to_luminance luminance = {};
};

// Whether samples become others, apart from chroma of another sampling.
bool computes(const way& w);

// Whether all planes of the destination are copies.
bool copies_all(const way& w);

// Refuses pairs of formats between which there is no conversion, and pictures of different size.
problem find_way(const shape& from, const shape& to, const choices& how, way& result);

// What a way does, and what it loses, in words.
std::vector<std::string> steps_of(const way& w);
std::vector<std::string> losses_of(const way& w);

}  // namespace Processing::Morvane::checked
