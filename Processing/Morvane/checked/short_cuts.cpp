// Where planes are copied or rearranged, or an entry point gives the bytes that lines give.
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

// All bits of a group belong to its samples.
bool has_no_unused_bits(const catalogue::plane& p) {
  using catalogue::sample_type;
  const sample_type sample = p.sample;
  return sample == sample_type::u8 || sample == sample_type::u16 || sample == sample_type::u8_and_2 ||
         sample == sample_type::stream_10 || sample == sample_type::stream_12;
}

// Every bit of a row belongs to a sample, and comes back as it was.
bool is_copied(const stored_plane& p) {
  const bool has_all_of_words = p.layout->has_words_of_pixels() && p.has(alpha);
  return !p.has(unused) && p.layout->upper_bits == 0 && (has_no_unused_bits(*p.layout) || has_all_of_words);
}

bool is_same(const catalogue::plane& a, const catalogue::plane& b) {
  return a.components == b.components && a.sample == b.sample && a.group_bytes == b.group_bytes &&
         a.group_pixels == b.group_pixels && a.image_rows == b.image_rows && a.upper_bits == b.upper_bits &&
         a.order == b.order && a.unused_low_bits == b.unused_low_bits;
}

int find_original(const stored_plane& p, const way& w) {
  if (!is_copied(p) || !is_full(p, w.to)) return -1;
  for (size_t i = 0; i < w.from.plane_count; ++i)
    if (is_same(*p.layout, *w.from.planes[i].layout)) return static_cast<int>(i);
  return -1;
}

void find_direct_planes(way& w) {
  plane_numbers others;
  for (size_t i = 0; i < w.to.plane_count; ++i) {
    w.copy_of[i] = find_original(w.to.planes[i], w);
    if (w.copy_of[i] < 0) others.add(i);
  }
  w.rearranged = find_rearrangements(w.from, w.to, !w.filters_chroma(), others);
}

bool shares_components(const stored_plane& a, const stored_plane& b) {
  for (const component c : {first, second, third, alpha})
    if (a.has(c) && b.has(c)) return true;
  return false;
}

// Whether lines read a plane of the source, for one of the destination that needs them.
bool is_read_by_lines(const stored_plane& p, const way& w) {
  for (size_t i = 0; i < w.to.plane_count; ++i)
    if (!w.is_direct(i) && shares_components(p, w.to.planes[i])) return true;
  return false;
}

// A plane that lines read would be read twice, once for the planes beside them.
void leave_to_lines(way& w) {
  const auto is_apart = [&](const rearrangement& r) {
    return std::none_of(r.read.begin(), r.read.end(),
                        [&](const size_t i) { return is_read_by_lines(w.from.planes[i], w); });
  };
  size_t before = 0;
  do {
    before = w.rearranged.size();
    rearrangements apart = w.rearranged;
    apart.keep_if(is_apart);
    w.rearranged = apart;
  } while (w.rearranged.size() < before);
}

}  // namespace

void find_short_cut(way& w) {
  if (computes(w)) return;
  find_direct_planes(w);
  leave_to_lines(w);
  if (copies_all(w) || !has_whole_groups(w.from) || !has_whole_groups(w.to)) return;
  for (const short_cut& s : short_cuts) {
    if (s.nearest_alone && w.filters_chroma()) continue;
    for (const catalogue::conversion& c : catalogue::conversions)
      if (c.name == s.name && is_between(c, w)) w.by = &c;
  }
}

}  // namespace Processing::Morvane::checked
