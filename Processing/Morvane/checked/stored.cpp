#include "stored.h"

#include <string_view>

#include "../backend/dispatch.h"

namespace Processing::Morvane::checked {

namespace {

namespace kernel = format_conversion::kernel;
using backend::line_of;
using catalogue::sample_type;

component component_named(const std::string_view name) {
  if (name == "Y" || name == "R" || name == "L") return first;
  if (name == "Cb" || name == "G") return second;
  if (name == "Cr" || name == "B") return third;
  return name == "A" ? alpha : unused;
}

// The lines of the items of a group, in the order in which they are stored.
struct item_lines {
  std::array<uint16_t*, 4> of{};
  int count = 0;
};

item_lines items_of(const stored_plane& p, const component_lines& lines) {
  item_lines items;
  for (; items.count < p.item_count; ++items.count) {
    const auto i = static_cast<size_t>(items.count);
    items.of[i] = lines.of[p.items[i]];
  }
  return items;
}

template <int bytes, int items, int up>
void split(const uint8_t* row, const item_lines& to, const int groups) {
  line_of<kernel::split_items<bytes, items, up>>()(row, to.of[0], to.of[1], to.of[2], to.of[3], groups);
}

template <int bytes, int items, int up>
void join(const item_lines& from, uint8_t* row, const int groups) {
  line_of<kernel::join_items<bytes, items, up>>()(from.of[0], from.of[1], from.of[2], from.of[3], row, groups);
}

void split_bytes(const uint8_t* row, const item_lines& to, const int groups) {
  switch (to.count) {
    case 1:
      return split<1, 1, 8>(row, to, groups);
    case 2:
      return split<1, 2, 8>(row, to, groups);
    case 3:
      return split<1, 3, 8>(row, to, groups);
    default:
      return split<1, 4, 8>(row, to, groups);
  }
}

void join_bytes(const item_lines& from, uint8_t* row, const int groups) {
  switch (from.count) {
    case 1:
      return join<1, 1, 0>(from, row, groups);
    case 2:
      return join<1, 2, 0>(from, row, groups);
    case 3:
      return join<1, 3, 0>(from, row, groups);
    default:
      return join<1, 4, 0>(from, row, groups);
  }
}

void split_words(const uint8_t* row, const item_lines& to, const int groups) {
  switch (to.count) {
    case 1:
      return split<2, 1, 0>(row, to, groups);
    case 2:
      return split<2, 2, 0>(row, to, groups);
    default:
      return split<2, 4, 0>(row, to, groups);
  }
}

void join_words(const item_lines& from, uint8_t* row, const int groups) {
  switch (from.count) {
    case 1:
      return join<2, 1, 0>(from, row, groups);
    case 2:
      return join<2, 2, 0>(from, row, groups);
    default:
      return join<2, 4, 0>(from, row, groups);
  }
}

void join_upper_tens(const item_lines& from, uint8_t* row, const int groups) {
  if (from.count == 1)
    join<2, 1, 6>(from, row, groups);
  else
    join<2, 2, 6>(from, row, groups);
}

bool is_pairs(const stored_plane& p) {
  return p.layout->group_bytes == 4 && p.layout->group_pixels == 2;
}

bool begins_with_luma(const stored_plane& p) {
  return p.items[0] == first;
}

}  // namespace

stored_plane stored(const catalogue::plane& p) {
  stored_plane result{};
  result.layout = &p;
  p.each_component([&](const std::string_view name) {
    const component c = component_named(name);
    result.samples[c] += 1;
    if (result.item_count < 4) result.items[static_cast<size_t>(result.item_count++)] = c;
  });
  return result;
}

void read_row(const stored_plane& p, const uint8_t* row, const int width, const component_lines& lines) {
  const auto& [y, cb, cr, a, rest] = lines.of;
  const int groups = p.groups(width);
  switch (p.layout->sample) {
    case sample_type::u8:
      if (!is_pairs(p)) return split_bytes(row, items_of(p, lines), groups);
      if (begins_with_luma(p))
        return line_of<kernel::split_pairs<kernel::first_of_pair::luma>>()(row, y, cb, cr, groups);
      return line_of<kernel::split_pairs<kernel::first_of_pair::chroma>>()(row, y, cb, cr, groups);
    case sample_type::u16:
      return split_words(row, items_of(p, lines), groups);
    case sample_type::u16_low10:
      return split<2, 1, 6>(row, items_of(p, lines), groups);
    case sample_type::u16_low12:
      return split<2, 1, 4>(row, items_of(p, lines), groups);
    case sample_type::u32_3x10:
      if (p.has(alpha)) return line_of<kernel::split_yua_yva>()(row, y, cb, cr, a, groups);
      return line_of<kernel::split_v210>()(row, y, cb, cr, groups);
    case sample_type::u8_and_2:
      return line_of<kernel::split_yuyv_10>()(row, y, cb, cr, groups);
    case sample_type::f32:
      return line_of<kernel::split_vuya_f32>()(row, cr, cb, y, a, groups);
  }
}

void write_row(const stored_plane& p, uint8_t* row, const int width, const component_lines& lines) {
  const auto& [y, cb, cr, a, rest] = lines.of;
  const int groups = p.groups(width);
  switch (p.layout->sample) {
    case sample_type::u8:
      if (!is_pairs(p)) return join_bytes(items_of(p, lines), row, groups);
      if (begins_with_luma(p))
        return line_of<kernel::join_pairs<kernel::first_of_pair::luma>>()(y, cb, cr, row, groups);
      return line_of<kernel::join_pairs<kernel::first_of_pair::chroma>>()(y, cb, cr, row, groups);
    case sample_type::u16:
      if (p.layout->upper_bits == 10) return join_upper_tens(items_of(p, lines), row, groups);
      return join_words(items_of(p, lines), row, groups);
    case sample_type::u16_low10:
    case sample_type::u16_low12:
      return join<2, 1, 0>(items_of(p, lines), row, groups);
    case sample_type::u32_3x10:
      if (p.has(alpha)) return line_of<kernel::join_yua_yva>()(y, cb, cr, a, row, groups);
      return line_of<kernel::join_v210>()(y, cb, cr, row, groups);
    case sample_type::u8_and_2:
      return line_of<kernel::join_yuyv_10>()(y, cb, cr, row, groups);
    case sample_type::f32:
      return line_of<kernel::join_vuya_f32>()(cr, cb, y, a, row, groups);
  }
}

}  // namespace Processing::Morvane::checked
