// Layouts between which kernels convert without lines: YCbCr, as a rule with chroma for every second pixel, and RGB.
#pragma once

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

// RGB of one plane of bytes.
inline bool is_of_bytes(const shape& s) {
  const catalogue::plane& p = *s.planes[0].layout;
  return s.colour == model::rgb && s.plane_count == 1 && p.sample == catalogue::sample_type::u8 && p.group_pixels == 1;
}

}  // namespace Processing::Morvane::checked
