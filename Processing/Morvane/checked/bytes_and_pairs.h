// Layouts between which kernels convert without lines: YCbCr, as a rule with chroma for every second pixel, and RGB.
#pragma once

#include <optional>

#include "../kernel/rgb_pixels.h"
#include "shape.h"

namespace Processing::Morvane::checked {

inline bool is_alone(const component c, const stored_plane& p) {
  return p.item_count == 1 && p.has(c);
}

// Luma or red first.
inline plane_numbers planes_of_colours(const shape& s) {
  plane_numbers planes;
  for (const component c : {first, second, third})
    if (!planes.contains(s.plane_with(c))) planes.add(s.plane_with(c));
  return planes;
}

// The planes in the order of the rows that kernels read or write; none where there is more in a plane.
inline plane_numbers planes_of_rows(const shape& s) {
  const plane_numbers planes = planes_of_colours(s);
  if (planes.size() == 1) return s.planes[planes[0]].has(alpha) ? plane_numbers() : planes;
  if (!is_alone(first, s.planes[planes[0]])) return {};
  return planes.size() == 3 || s.planes[planes[1]].item_count == 2 ? planes : plane_numbers();
}

// Whether Cr comes before Cb in a plane that has both.
inline bool begins_with_cr(const stored_plane& p) {
  for (const component c : p.items)
    if (c == second || c == third) return p.has(second) && c == third;
  return false;
}

// The kind of samples of RGB, if kernels know it.
inline std::optional<format_conversion::kernel::rgb_samples> samples_of(const stored_plane& p) {
  using catalogue::sample_type;
  using format_conversion::kernel::rgb_samples;
  const bool is_green_second = p.item_count > 1 && p.items[1] == second;
  switch (p.layout->sample) {
    case sample_type::u8:
      return rgb_samples::bytes;
    case sample_type::u16:
      if (!is_green_second || p.layout->depth() != 16) return {};
      return rgb_samples::words;
    case sample_type::u32_3x10:
      if (!is_green_second) return {};
      return p.layout->unused_low_bits == 0 ? rgb_samples::tens : rgb_samples::tens_above_two_bits;
    case sample_type::u16_low10:
      return rgb_samples::low_tens;
    case sample_type::stream_12:
      return rgb_samples::twelves;
    case sample_type::f32:
      return rgb_samples::floats;
    default:
      return {};
  }
}

}  // namespace Processing::Morvane::checked
