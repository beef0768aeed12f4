#include "stored_packed.h"

#include <utility>

#include "../backend/dispatch.h"

namespace Processing::Morvane::checked {

namespace {

namespace kernel = format_conversion::kernel;
using backend::line_of;
using catalogue::byte_order;

bool is_big_endian(const stored_plane& p) {
  return p.layout->order == byte_order::big_endian;
}

uint16_t all_bits_if(const bool is_set) {
  return is_set ? 65535 : 0;
}

// Kernels take samples from the lowest bit on.
item_lines from_lowest_bit(const stored_plane& p, item_lines lines) {
  if (is_big_endian(p)) std::swap(lines[0], lines[2]);
  return lines;
}

template <class Kernel>
Kernel splitting(const stored_plane& p, const bool fills_words) {
  Kernel k{};
  k.order = {is_big_endian(p)};
  k.repeated = all_bits_if(is_filled(p.items[0], fills_words));
  return k;
}

template <int lowest>
void split_three_tens(const stored_plane& p, const uint8_t* row, const item_lines& to, const int groups,
                      const bool fills_words) {
  using three = kernel::split_three_tens<lowest>;
  line_of<three>()(row, to[0], to[1], to[2], groups, splitting<three>(p, fills_words));
}

// An unused sample is all ones, and other unused bits are zero.
template <class Kernel>
Kernel joining(const stored_plane& p, const item_lines& from, const bool fills_words) {
  Kernel k{};
  k.order = {is_big_endian(p)};
  k.by = {is_filled(p.items[0], fills_words)};
  k.set = p.item_count == 4 && from[3] == nullptr ? 0xc000 : 0;
  return k;
}

template <int lowest>
void join_three_tens(const stored_plane& p, const item_lines& from, uint8_t* row, const int groups,
                     const bool fills_words) {
  using three = kernel::join_three_tens<lowest>;
  line_of<three>()(from[0], from[1], from[2], row, groups, joining<three>(p, from, fills_words));
}

// Three samples of every pixel, and not four of every two.
bool is_rgb_stream(const stored_plane& p) {
  return p.samples[first] == p.samples[second];
}

item_lines with_all_lines(const stored_plane& p, const component_lines& lines) {
  item_lines items{};
  for (size_t i = 0; i < static_cast<size_t>(p.item_count); ++i) items[i] = lines.of[p.items[i]];
  return items;
}

}  // namespace

void split_tens(const stored_plane& p, const uint8_t* row, const item_lines& to, const int groups,
                const bool fills_words) {
  const item_lines lines = from_lowest_bit(p, to);
  using and_two = kernel::split_tens_and_two;
  if (lines[3] != nullptr)
    return line_of<and_two>()(row, lines[0], lines[1], lines[2], lines[3], groups, splitting<and_two>(p, fills_words));
  if (p.layout->unused_low_bits == 2) return split_three_tens<2>(p, row, lines, groups, fills_words);
  split_three_tens<0>(p, row, lines, groups, fills_words);
}

void join_tens(const stored_plane& p, const item_lines& from, uint8_t* row, const int groups, const bool fills_words) {
  const item_lines lines = from_lowest_bit(p, from);
  using and_two = kernel::join_tens_and_two;
  if (lines[3] != nullptr)
    return line_of<and_two>()(lines[0], lines[1], lines[2], lines[3], row, groups,
                              joining<and_two>(p, lines, fills_words));
  if (p.layout->unused_low_bits == 2) return join_three_tens<2>(p, lines, row, groups, fills_words);
  join_three_tens<0>(p, lines, row, groups, fills_words);
}

void split_deep_pairs(const stored_plane& p, const uint8_t* row, const component_lines& to, const int groups) {
  const auto& [y, cb, cr, a, rest] = to.of;
  using in_words = kernel::split_422<kernel::words_in_pairs>;
  in_words k{};
  k.kept = kept_bits(p);
  line_of<in_words>()(row, y, cb, cr, groups, k);
}

void join_deep_pairs(const stored_plane& p, const component_lines& from, uint8_t* row, const int groups) {
  const auto& [y, cb, cr, a, rest] = from.of;
  using in_words = kernel::join_422<kernel::words_in_pairs>;
  in_words k{};
  k.kept = kept_bits(p);
  k.half = half_step(p);
  line_of<in_words>()(y, cb, cr, row, groups, k);
}

void split_stream(const stored_plane& p, const uint8_t* row, const component_lines& to, const int groups,
                  const bool fills_words) {
  const auto& [a, b, c, d, rest] = to.of;
  if (is_rgb_stream(p)) {
    kernel::split_rgb_12 k{};
    k.repeated = all_bits_if(fills_words);
    line_of<kernel::split_rgb_12>()(row, a, b, c, groups * p.layout->group_pixels / 2, k);
  } else if (p.layout->depth() == 10) {
    line_of<kernel::split_422<kernel::tens_in_pairs>>()(row, a, b, c, groups);
  } else {
    line_of<kernel::split_422<kernel::twelves_in_pairs>>()(row, a, b, c, groups);
  }
}

void join_stream(const stored_plane& p, const component_lines& from, uint8_t* row, const int groups,
                 const bool fills_words) {
  const auto& [a, b, c, d, rest] = from.of;
  if (is_rgb_stream(p)) {
    kernel::join_rgb_12 k{};
    k.by = {fills_words};
    line_of<kernel::join_rgb_12>()(a, b, c, row, groups * p.layout->group_pixels / 2, k);
  } else if (p.layout->depth() == 10) {
    line_of<kernel::join_422<kernel::tens_in_pairs>>()(a, b, c, row, groups);
  } else {
    line_of<kernel::join_422<kernel::twelves_in_pairs>>()(a, b, c, row, groups);
  }
}

void split_floats(const stored_plane& p, const uint8_t* row, const component_lines& to, const int groups) {
  using kernel::single_floats;
  const auto [a, b, c, d] = with_all_lines(p, to);
  if (p.layout->sample == catalogue::sample_type::f16)
    return line_of<kernel::split_four_numbers<kernel::half_floats>>()(row, a, b, c, d, groups);
  if (p.item_count == 1) return line_of<kernel::split_floats<single_floats, 1, kernel::written_line>>()(row, a, groups);
  if (p.item_count == 3) return line_of<kernel::split_three_numbers<single_floats>>()(row, a, b, c, groups);
  line_of<kernel::split_four_numbers<single_floats>>()(row, a, b, c, d, groups);
}

void join_floats(const stored_plane& p, const component_lines& from, uint8_t* row, const int groups) {
  using kernel::single_floats;
  const auto [a, b, c, d] = with_all_lines(p, from);
  if (p.layout->sample == catalogue::sample_type::f16)
    return line_of<kernel::join_four_numbers<kernel::half_floats>>()(a, b, c, d, row, groups);
  if (p.item_count == 1) return line_of<kernel::join_floats<single_floats, 1, kernel::read_line>>()(a, row, groups);
  if (p.item_count == 3) return line_of<kernel::join_three_numbers<single_floats>>()(a, b, c, row, groups);
  line_of<kernel::join_four_numbers<single_floats>>()(a, b, c, d, row, groups);
}

}  // namespace Processing::Morvane::checked
