#include "stored.h"

#include <string_view>

#include "../backend/dispatch.h"
#include "stored_packed.h"

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

component last_of(const stored_plane& p) {
  return p.items[static_cast<size_t>(p.item_count - 1)];
}

// Of four, the last one is null if it is that of what is unused.
item_lines lines_of_items(const stored_plane& p, const component_lines& lines) {
  item_lines items{};
  for (size_t i = 0; i < static_cast<size_t>(p.item_count); ++i) items[i] = lines.of[p.items[i]];
  if (p.item_count == 4 && items[3] == lines.of[unused]) items[3] = nullptr;
  return items;
}

// Reading.

template <class Kernel>
Kernel widening(const stored_plane& p, const bool fills_words) {
  Kernel k{};
  k.repeated = fills_words ? 255 : 0;
  k.last_repeated = is_filled(last_of(p), fills_words) ? 255 : 0;
  return k;
}

void split_bytes(const stored_plane& p, const uint8_t* row, const item_lines& to, const int groups,
                 const bool fills_words) {
  const auto& [a, b, c, d] = to;
  using one = kernel::split_bytes<1, kernel::written_line>;
  using two = kernel::split_bytes<2, kernel::written_line, kernel::written_line>;
  using three = kernel::split_bytes_to_three<3>;
  using three_of_four = kernel::split_bytes_to_three<4>;
  using four = kernel::split_four_bytes;
  if (p.item_count == 1) return line_of<one>()(row, a, groups, widening<one>(p, fills_words));
  if (p.item_count == 2) return line_of<two>()(row, a, b, groups, widening<two>(p, fills_words));
  if (p.item_count == 3) return line_of<three>()(row, a, b, c, groups, widening<three>(p, fills_words));
  if (d == nullptr) return line_of<three_of_four>()(row, a, b, c, groups, widening<three_of_four>(p, fills_words));
  line_of<four>()(row, a, b, c, d, groups, widening<four>(p, fills_words));
}

template <class Kernel>
Kernel keeping(const stored_plane& p) {
  Kernel k{};
  k.kept = static_cast<uint16_t>(65535 << (16 - p.layout->depth()));
  return k;
}

void split_words(const stored_plane& p, const uint8_t* row, const item_lines& to, const int groups) {
  const auto& [a, b, c, d] = to;
  using one = kernel::split_words<1, kernel::written_line>;
  using two = kernel::split_words<2, kernel::written_line, kernel::written_line>;
  using three_of_four = kernel::split_three_of_four_words;
  using four = kernel::split_four_words;
  if (p.item_count == 1) return line_of<one>()(row, a, groups, keeping<one>(p));
  if (p.item_count == 2) return line_of<two>()(row, a, b, groups, keeping<two>(p));
  if (d == nullptr) return line_of<three_of_four>()(row, a, b, c, groups, keeping<three_of_four>(p));
  line_of<four>()(row, a, b, c, d, groups, keeping<four>(p));
}

template <int bits>
void split_low(const stored_plane& p, const uint8_t* row, uint16_t* to, const int groups, const bool fills_words) {
  kernel::split_low<bits> k{};
  k.repeated = is_filled(p.items[0], fills_words) ? 65535 : 0;
  line_of<kernel::split_low<bits>>()(row, to, groups, k);
}

// Writing.

template <class Kernel>
Kernel rounding_to_bytes(const stored_plane& p, const bool fills_words) {
  Kernel k{};
  k.all = {fills_words};
  k.last = {is_filled(last_of(p), fills_words)};
  return k;
}

void join_bytes(const stored_plane& p, const item_lines& from, uint8_t* row, const int groups, const bool fills_words) {
  const auto& [a, b, c, d] = from;
  using one = kernel::join_bytes<1, kernel::read_line>;
  using two = kernel::join_bytes<2, kernel::read_line, kernel::read_line>;
  using three = kernel::join_bytes_of_three<3>;
  using three_to_four = kernel::join_bytes_of_three<4>;
  using four = kernel::join_four_bytes;
  if (p.item_count == 1) return line_of<one>()(a, row, groups, rounding_to_bytes<one>(p, fills_words));
  if (p.item_count == 2) return line_of<two>()(a, b, row, groups, rounding_to_bytes<two>(p, fills_words));
  if (p.item_count == 3) return line_of<three>()(a, b, c, row, groups, rounding_to_bytes<three>(p, fills_words));
  if (d == nullptr)
    return line_of<three_to_four>()(a, b, c, row, groups, rounding_to_bytes<three_to_four>(p, fills_words));
  line_of<four>()(a, b, c, d, row, groups, rounding_to_bytes<four>(p, fills_words));
}

template <class Kernel>
Kernel rounding_to_words(const stored_plane& p) {
  Kernel k = keeping<Kernel>(p);
  k.half = static_cast<uint16_t>(static_cast<uint16_t>(~k.kept) / 2 + (k.kept == 65535 ? 0 : 1));
  return k;
}

void join_words(const stored_plane& p, const item_lines& from, uint8_t* row, const int groups) {
  const auto& [a, b, c, d] = from;
  using one = kernel::join_words<1, kernel::read_line>;
  using two = kernel::join_words<2, kernel::read_line, kernel::read_line>;
  using three_to_four = kernel::join_words_of_three;
  using four = kernel::join_four_words;
  if (p.item_count == 1) return line_of<one>()(a, row, groups, rounding_to_words<one>(p));
  if (p.item_count == 2) return line_of<two>()(a, b, row, groups, rounding_to_words<two>(p));
  if (d == nullptr) return line_of<three_to_four>()(a, b, c, row, groups, rounding_to_words<three_to_four>(p));
  line_of<four>()(a, b, c, d, row, groups, rounding_to_words<four>(p));
}

template <int bits>
void join_low(const stored_plane& p, const uint16_t* from, uint8_t* row, const int groups, const bool fills_words) {
  kernel::join_low<bits> k{};
  k.by = {is_filled(p.items[0], fills_words)};
  line_of<kernel::join_low<bits>>()(from, row, groups, k);
}

bool is_pairs(const stored_plane& p) {
  return p.layout->group_bytes == 4 && p.layout->group_pixels == 2;
}

bool begins_with_luma(const stored_plane& p) {
  return p.items[0] == first;
}

// Of floats, whose range differs then.
bool is_ycbcr(const stored_plane& p) {
  return p.layout->components.find("Y") != std::string_view::npos;
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

bool is_filled(const component c, const bool fills_words) {
  return c == alpha || fills_words;
}

void read_row(const stored_plane& p, const uint8_t* row, const int width, const component_lines& lines,
              const bool fills_words) {
  component_lines to = lines;
  for (uint16_t*& line : to.of)
    if (line == nullptr) line = lines.of[unused];
  const auto& [y, cb, cr, a, rest] = to.of;
  const int groups = p.groups(width);
  const item_lines items = lines_of_items(p, to);
  switch (p.layout->sample) {
    case sample_type::u8:
      if (!is_pairs(p)) return split_bytes(p, row, items, groups, fills_words);
      if (begins_with_luma(p))
        return line_of<kernel::split_pairs<kernel::first_of_pair::luma>>()(row, y, cb, cr, groups);
      return line_of<kernel::split_pairs<kernel::first_of_pair::chroma>>()(row, y, cb, cr, groups);
    case sample_type::u16:
      if (p.layout->group_pixels == 2 && p.has(first)) return split_deep_pairs(p, row, to, groups);
      if (p.item_count == 3) return split_threes(p, row, items, groups);
      return split_words(p, row, items, groups);
    case sample_type::u16_low10:
      return split_low<10>(p, row, items[0], groups, fills_words);
    case sample_type::u16_low12:
      return split_low<12>(p, row, items[0], groups, fills_words);
    case sample_type::u32_3x10:
      if (p.layout->has_words_of_pixels()) return split_tens(p, row, items, groups, fills_words);
      if (p.has(alpha)) return line_of<kernel::split_yua_yva>()(row, y, cb, cr, a, groups);
      return line_of<kernel::split_v210>()(row, y, cb, cr, groups);
    case sample_type::u8_and_2:
      return line_of<kernel::split_yuyv_10>()(row, y, cb, cr, groups);
    case sample_type::f32:
      if (!is_ycbcr(p)) return split_floats(p, row, to, groups);
      return line_of<kernel::split_vuya_f32>()(row, cr, cb, y, a, groups);
    case sample_type::f16:
      return split_floats(p, row, to, groups);
    case sample_type::stream_10:
    case sample_type::stream_12:
      return split_stream(p, row, to, groups, fills_words);
  }
}

void write_row(const stored_plane& p, uint8_t* row, const int width, const component_lines& lines,
               const bool fills_words) {
  const auto& [y, cb, cr, a, rest] = lines.of;
  const int groups = p.groups(width);
  const item_lines items = lines_of_items(p, lines);
  switch (p.layout->sample) {
    case sample_type::u8:
      if (!is_pairs(p)) return join_bytes(p, items, row, groups, fills_words);
      if (begins_with_luma(p))
        return line_of<kernel::join_pairs<kernel::first_of_pair::luma>>()(y, cb, cr, row, groups);
      return line_of<kernel::join_pairs<kernel::first_of_pair::chroma>>()(y, cb, cr, row, groups);
    case sample_type::u16:
      if (p.layout->group_pixels == 2 && p.has(first)) return join_deep_pairs(p, lines, row, groups);
      if (p.item_count == 3) return join_threes(p, items, row, groups);
      return join_words(p, items, row, groups);
    case sample_type::u16_low10:
      return join_low<10>(p, items[0], row, groups, fills_words);
    case sample_type::u16_low12:
      return join_low<12>(p, items[0], row, groups, fills_words);
    case sample_type::u32_3x10:
      if (p.layout->has_words_of_pixels()) return join_tens(p, items, row, groups, fills_words);
      if (p.has(alpha)) return line_of<kernel::join_yua_yva>()(y, cb, cr, a, row, groups);
      return line_of<kernel::join_v210>()(y, cb, cr, row, groups);
    case sample_type::u8_and_2:
      return line_of<kernel::join_yuyv_10>()(y, cb, cr, row, groups);
    case sample_type::f32:
      if (!is_ycbcr(p)) return join_floats(p, lines, row, groups);
      return line_of<kernel::join_vuya_f32>()(cr, cb, y, a, row, groups);
    case sample_type::f16:
      return join_floats(p, lines, row, groups);
    case sample_type::stream_10:
    case sample_type::stream_12:
      return join_stream(p, lines, row, groups, fills_words);
  }
}

}  // namespace Processing::Morvane::checked
