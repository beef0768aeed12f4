// Layouts between which kernels convert without lines: YCbCr, as a rule with chroma for every second pixel, and RGB in
// bytes.
#pragma once

#include "rearranged.h"
#include "shape.h"

namespace Processing::Morvane::checked {

inline bool is_alone(const component c, const stored_plane& p) {
  return p.item_count == 1 && p.has(c);
}

// The planes in the order of the rows that kernels read or write; none where there is more in a plane.
inline plane_numbers planes_of_rows(const shape& s) {
  plane_numbers planes;
  const size_t luma = s.plane_with(first), cb = s.plane_with(second), cr = s.plane_with(third);
  planes.add(luma);
  if (luma == cb) return s.planes[luma].has(alpha) ? plane_numbers() : planes;
  if (!is_alone(first, s.planes[luma])) return {};
  planes.add(cb);
  if (cb == cr) return s.planes[cb].item_count == 2 ? planes : plane_numbers();
  planes.add(cr);
  return planes;
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
