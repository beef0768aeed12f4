#include "stored.h"

#include <iterator>
#include <string_view>
#include <type_traits>
#include <utility>

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

// Of four, the last one is null if it is that of what is unused.
item_lines lines_of_items(const stored_plane& p, const component_lines& lines) {
  item_lines items{};
  for (size_t i = 0; i < static_cast<size_t>(p.item_count); ++i) items[i] = lines.of[p.items[i]];
  if (p.item_count == 4 && items[3] == lines.of[unused]) items[3] = nullptr;
  return items;
}

// Calls run(items, lines) with both numbers as types: as many lines as items, or one less where the fourth has none.
template <class Run>
void with_numbers(const stored_plane& p, const item_lines& lines, const Run run) {
  using std::integral_constant, std::make_index_sequence;
  if (p.item_count == 1) return run(integral_constant<int, 1>(), make_index_sequence<1>());
  if (p.item_count == 2) return run(integral_constant<int, 2>(), make_index_sequence<2>());
  if (p.item_count == 3) return run(integral_constant<int, 3>(), make_index_sequence<3>());
  if (lines[3] == nullptr) return run(integral_constant<int, 4>(), make_index_sequence<3>());
  run(integral_constant<int, 4>(), make_index_sequence<4>());
}

template <class Line, size_t>
using each = Line;

// Reading.

template <template <int, class...> class Split, class Set>
void split(const stored_plane& p, const uint8_t* row, const item_lines& to, const int groups, const Set set) {
  with_numbers(
      p, to, [&]<int items, size_t... i>(std::integral_constant<int, items>, std::index_sequence<i...>) {
        Split<items, each<kernel::written_line, i>...> k{};
        set(k);
        line_of<decltype(k)>()(row, to[i]..., groups, k);
      });
}

void split_bytes(const stored_plane& p, const uint8_t* row, const item_lines& to, const int groups,
                 const bool fills_words) {
  split<kernel::split_bytes>(p, row, to, groups, [&](auto& k) {
    for (size_t i = 0; i < std::size(k.repeated); ++i) k.repeated[i] = is_filled(p.items[i], fills_words) ? 255 : 0;
  });
}

void split_words(const stored_plane& p, const uint8_t* row, const item_lines& to, const int groups) {
  split<kernel::split_words>(p, row, to, groups, [&](auto& k) { k.kept = kept_bits(p); });
}

template <int bits>
void split_low(const stored_plane& p, const uint8_t* row, uint16_t* to, const int groups, const bool fills_words) {
  kernel::split_low<bits> k{};
  k.repeated = is_filled(p.items[0], fills_words) ? 65535 : 0;
  line_of<kernel::split_low<bits>>()(row, to, groups, k);
}

// Writing.

template <template <int, class...> class Join, class Set>
void join(const stored_plane& p, const item_lines& from, uint8_t* row, const int groups, const Set set) {
  with_numbers(
      p, from, [&]<int items, size_t... i>(std::integral_constant<int, items>, std::index_sequence<i...>) {
        Join<items, each<kernel::read_line, i>...> k{};
        set(k);
        line_of<decltype(k)>()(from[i]..., row, groups, k);
      });
}

void join_bytes(const stored_plane& p, const item_lines& from, uint8_t* row, const int groups, const bool fills_words) {
  join<kernel::join_bytes>(p, from, row, groups, [&](auto& k) {
    for (size_t i = 0; i < std::size(k.by); ++i) k.by[i] = {is_filled(p.items[i], fills_words)};
  });
}

void join_words(const stored_plane& p, const item_lines& from, uint8_t* row, const int groups) {
  join<kernel::join_words>(p, from, row, groups, [&](auto& k) {
    k.kept = kept_bits(p);
    k.half = half_step(p);
  });
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

// Chroma in the order in which it is stored.
struct chroma_of_pairs {
  uint16_t* first;
  uint16_t* second;
};

chroma_of_pairs chroma_of(const stored_plane& p, const component_lines& lines) {
  const size_t first_chroma = begins_with_luma(p) ? 1 : 0;
  return {lines.of[p.items[first_chroma]], lines.of[p.items[first_chroma + 2]]};
}

void split_pairs(const stored_plane& p, const uint8_t* row, const component_lines& to, const int groups) {
  const auto [one, other] = chroma_of(p, to);
  if (begins_with_luma(p))
    line_of<kernel::split_pairs<kernel::first_of_pair::luma>>()(row, to.of[first], one, other, groups);
  else
    line_of<kernel::split_pairs<kernel::first_of_pair::chroma>>()(row, to.of[first], one, other, groups);
}

void join_pairs(const stored_plane& p, const component_lines& from, uint8_t* row, const int groups) {
  const auto [one, other] = chroma_of(p, from);
  if (begins_with_luma(p))
    line_of<kernel::join_pairs<kernel::first_of_pair::luma>>()(from.of[first], one, other, row, groups);
  else
    line_of<kernel::join_pairs<kernel::first_of_pair::chroma>>()(from.of[first], one, other, row, groups);
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

uint16_t kept_bits(const stored_plane& p) {
  return static_cast<uint16_t>(65535 << (16 - p.layout->depth()));
}

uint16_t half_step(const stored_plane& p) {
  return static_cast<uint16_t>((1 << (16 - p.layout->depth())) >> 1);
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
      if (is_pairs(p)) return split_pairs(p, row, to, groups);
      return split_bytes(p, row, items, groups, fills_words);
    case sample_type::u16:
      if (p.layout->group_pixels == 2 && p.has(first)) return split_deep_pairs(p, row, to, groups);
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
      if (is_pairs(p)) return join_pairs(p, lines, row, groups);
      return join_bytes(p, items, row, groups, fills_words);
    case sample_type::u16:
      if (p.layout->group_pixels == 2 && p.has(first)) return join_deep_pairs(p, lines, row, groups);
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
