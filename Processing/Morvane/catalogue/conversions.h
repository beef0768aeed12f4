// What the catalogue says of every conversion, copy and fill of the library.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "call.h"
#include "formats.h"

namespace morvane::catalogue {

enum class matrix { none, bt601, bt709, bt2020, by_argument };

enum class argument {
  none,
  color_space,  // call.argument is an e_ycbcr_color_space
  value,        // call.argument is the value of a fill
  rescale,      // call.argument is whether luma is stretched
  opacity,      // call.opaque, when not null, receives whether all alpha was opaque
};

// Which planes may share bytes. Where they may, pixels or pairs are converted one after the other, each as its formula
// lists its stores.
enum class overlap {
  undefined,
  with_source,  // every destination plane with the source; not the destination planes with each other
  of_all,
};

struct conversion {
  std::string_view name{};         // of the entry point: "uyvy::yuy2"
  std::string_view source{};       // a format; empty for a fill
  std::string_view destination{};  // a format
  entry_point entry{};
  matrix colors = matrix::none;
  argument extra = argument::none;

  // What a call touches behind the pixels of a row, in every plane; behind the last row it is outside the image.
  int bytes_past_per_pixel = 0;
  bool completes_pair = false;  // of an odd width, the last pair

  int margin_pixels = 0;    // a row must be this much wider than the pixels that are wanted from it
  int pixels_per_xres = 1;  // image pixels that one of the call's xres stands for: 2 where it counts chroma samples
  int rows_per_yres = 1;    // image rows that one of the call's yres stands for
  bool one_stride = false;  // the destination planes share the stride of the last
  bool completes_row_pair = false;  // at an odd height, chroma is read and written as for one row more
  bool by_rows = false;             // never as one line, whatever the strides
  overlap overlapping = overlap::undefined;
  std::string_view copies_padding{};  // the plane whose rows are copied with their padding where both strides are equal
  std::string_view irregular{};  // empty, or one sentence on what its output does differently from what the name says

  void convert(const call& c) const { entry.convert(c); }

  // What a call touches behind the xres pixels of a plane's row.
  constexpr std::int64_t bytes_past(const plane& p, int xres) const {
    const std::int64_t exact = std::int64_t{xres} * p.group_bytes / p.group_pixels;
    const std::int64_t completed = (std::int64_t{xres} + 1) * p.group_bytes / p.group_pixels;
    return std::int64_t{xres} * bytes_past_per_pixel + (completes_pair && xres % 2 != 0 ? completed - exact : 0);
  }
};

// The matrices that there are, and the number in their names.
inline constexpr matrix matrices[] = {matrix::bt601, matrix::bt709, matrix::bt2020};

constexpr int number_of(matrix m) {
  return m == matrix::bt601 ? 601 : m == matrix::bt709 ? 709 : m == matrix::bt2020 ? 2020 : 0;
}

// Whether a conversion has this matrix, by itself or where its argument says so.
constexpr bool offers(const conversion& c, matrix m) {
  return c.colors == m || (c.colors == matrix::by_argument && (m == matrix::bt601 || m == matrix::bt709));
}

// Every entry point of the public header. A row added here is tested, measured, documented and offered by the command
// without further work.
extern const std::span<const conversion> conversions;

}  // namespace morvane::catalogue
