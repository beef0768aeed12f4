// Where rows are copied, or an entry point gives the bytes that lines give.
#include <algorithm>
#include <iterator>

#include "direct.h"

namespace Processing::Morvane::checked {

namespace {

// Chroma of another sampling is repeated and dropped by entry points, so they have the bytes of the nearest filter.
struct short_cut {
  std::string_view name;
  bool nearest_alone = false;
};

constexpr short_cut short_cuts[] = {
    {"L::bgra"},
    {"alpha::alpha_u16"},
    {"cb_cr_16_422::cbcr_16_422"},
    {"pa16::ya_uv"},
    {"uyvy::p216"},
    {"uyvy::y"},
    {"uyvy::y_u_v_422"},
    {"uyvy::y_uv_422"},
    {"uyvy::yuy2"},
    {"uyvy_a::ya_uv"},
    {"y::uyvy"},
    {"y::y16"},
    {"y_u_v::y_uv"},
    {"yuy2::uyvy"},
    {"cb_cr_8_420::cbcr_16_422", true},
    {"cbcr_8_420::cbcr_16_422", true},
    {"pa16::vuya_16", true},
    {"pa16::vuya_f32", true},
    {"uyvy::y_u_v_420", true},
    {"uyvy::y_uv_420", true},
    {"uyvy::ycbcrx", true},
    {"uyvy_a::crcbya", true},
    {"uyvy_a::ycbcra", true},
    {"vuya::uyvy_a", true},
    {"vuyx::uyvy", true},
    {"y_u_v::y_uv_to422", true},
    {"y_uv::p216", true},
    {"y_uv::y_uv_to422", true},
    {"ycbcra::pa16", true},
    {"ycbcra::uyvy_a", true},
    {"ycbcrx::uyvy", true},
};

bool is_between(const catalogue::conversion& c, const way& w) {
  return c.source == w.from.format->name && c.destination == w.to.format->name;
}

// The last group of a row repeats the last sample, which copying it would not do.
bool has_whole_groups(const shape& s) {
  if (s.half_height && s.height % 2 != 0) return false;
  const auto begin = s.planes.begin();
  return std::all_of(begin, begin + static_cast<ptrdiff_t>(s.plane_count),
                     [&](const stored_plane& p) { return s.width % p.layout->group_pixels == 0; });
}

// Every bit of a row belongs to a sample, and comes back as it was.
bool is_copied(const stored_plane& p) {
  using catalogue::sample_type;
  const sample_type sample = p.layout->sample;
  return !p.has(unused) && p.layout->upper_bits == 0 &&
         (sample == sample_type::u8 || sample == sample_type::u16 || sample == sample_type::u8_and_2);
}

bool same_planes(const way& w) {
  if (w.from.plane_count != w.to.plane_count) return false;
  for (size_t i = 0; i < w.from.plane_count; ++i) {
    const catalogue::plane& a = *w.from.planes[i].layout;
    const catalogue::plane& b = *w.to.planes[i].layout;
    if (a.components != b.components || a.group_bytes != b.group_bytes || a.group_pixels != b.group_pixels ||
        a.image_rows != b.image_rows || !is_copied(w.from.planes[i]) || !is_copied(w.to.planes[i]))
      return false;
  }
  return true;
}

bool computes(const way& w) {
  return w.composites || w.scales_range || w.widens_rgb || w.narrows_rgb || w.has_to_rgb || w.has_from_rgb ||
         w.has_luminance;
}

}  // namespace

void find_short_cut(way& w) {
  if (computes(w) || !has_whole_groups(w.from) || !has_whole_groups(w.to)) return;
  w.copies = same_planes(w);
  if (w.copies) return;
  for (const short_cut& s : short_cuts) {
    if (s.nearest_alone && w.how.filter != chroma_filter::nearest) continue;
    for (const catalogue::conversion& c : catalogue::conversions)
      if (c.name == s.name && is_between(c, w)) w.by = &c;
  }
}

}  // namespace Processing::Morvane::checked
