// Faults around and in place of conversions of the 10-bit formats of cards.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

std::uint8_t& lower_bits(std::uint8_t* row, int pair) {
  return row[pair / 8 * 40 + 32 + pair % 8];
}

void lower_bits_in_opposite_order(const call& c) {
  right("p216::yuyv_matrox_10", "yuyv_matrox_10", c);
  if (!has_pixels(c)) return;
  std::uint8_t& bits = lower_bits(row_of_plane(c, 0, c.yres - 1), (c.xres - 1) / 2);
  bits = static_cast<std::uint8_t>((bits & 3) << 6 | (bits & 12) << 2 | (bits & 48) >> 2 | bits >> 6);
}

void lower_bits_beside_upper_ones(const call& c) {
  right("alpha_u16::yuyv_matrox_10", "yuyv_matrox_10", c);
  const int pairs = (c.xres + 1) / 2;
  if (!has_pixels(c) || c.yres > 1 || pairs % 8 == 0) return;
  c.destination.data[0][pairs / 8 * 40 + pairs % 8 * 4] = lower_bits(c.destination.data[0], pairs - 1);
}

// In a last group of fewer than 8 pairs.
void touched_between_the_parts(const call& c) {
  right("p216::yuyv_matrox_10", "yuyv_matrox_10", c);
  const int pairs = (c.xres + 1) / 2;
  if (has_pixels(c) && pairs % 8 != 0) row_of_plane(c, 0, c.yres - 1)[pairs / 8 * 40 + 31] ^= 255;
}

void whole_group_read(const call& c) {
  right("yuyv_matrox_10::p216", "p216", c);
  const int pairs = (c.xres + 1) / 2;
  if (!has_pixels(c) || pairs % 8 == 0) return;
  static_cast<void>(*static_cast<const volatile std::uint8_t*>(source_row(c, 0, c.yres - 1) + pairs / 8 * 40 + 39));
}

void even_luma_with_upper_byte(const call& c) {
  right("yuyv_matrox_10::p216", "p216", c);
  if (has_pixels(c)) row_of_plane(c, 0, 0)[1] = c.source.data[0][0];
}

// Takes a row of xres * 40 / 16 bytes for a tight one, although an odd width leaves half a byte.
template <std::size_t source_planes, std::size_t destination_planes>
bool is_tight_but_for_half_a_byte(const call& c, int yuyv_stride) {
  if (c.xres < 1 || c.xres % 2 == 0 || yuyv_stride != c.xres * 40 / 16) return false;
  for (std::size_t i = 0; i < source_planes; ++i)
    if (c.source.stride[i] != 2 * c.xres) return false;
  for (std::size_t i = 0; i < destination_planes; ++i)
    if (c.destination.stride[i] != 2 * c.xres) return false;
  return true;
}

call as_one_line(const call& c) {
  call line = c;
  line.xres *= c.yres;
  line.yres = 1;
  return line;
}

void read_as_tight(const call& c) {
  right("yuyv_matrox_10::uyvy", "uyvy", is_tight_but_for_half_a_byte<0, 1>(c, c.source.stride[0]) ? as_one_line(c) : c);
}

void written_as_tight(const call& c) {
  right("p216::yuyv_matrox_10", "yuyv_matrox_10",
        is_tight_but_for_half_a_byte<2, 0>(c, c.destination.stride[0]) ? as_one_line(c) : c);
}

// yuyv_matrox_10::p216 goes row by row, which shows where the last group of a tight row is a partial one.
void one_line_where_rows_are_due(const call& c) {
  const bool tight = c.source.stride[0] * 16 == c.xres * 40 && c.destination.stride[0] == 2 * c.xres &&
                     c.destination.stride[1] == 2 * c.xres && has_pixels(c);
  right("yuyv_matrox_10::p216", "p216", tight ? as_one_line(c) : c);
}

void own_lower_bits_of_cr(const call& c) {
  right("pa16::yuyv_matrox_10", "yuyv_matrox_10", c);
  each_pixel(c, [&](int y, int x) {
    if (x % 2 == 0) return;
    const unsigned cr = (read(c, 1, y, x) - 32768U) * (read(c, 2, y, x - 1) + 1);
    std::uint8_t& bits = lower_bits(row_of_plane(c, 0, y), x / 2);
    bits = static_cast<std::uint8_t>((bits & 63) | (cr >> 22 & 3) << 6);
  });
}

void alpha_one_bit_too_high(const call& c) {
  right("pa16::yua_yva_matrox_10", "yua_yva_matrox_10", c);
  each_pixel(c, [&](int y, int x) {
    std::uint8_t* packed = row_of_plane(c, 0, y) + 4 * x;
    const unsigned word = word_at(packed) + 65536U * word_at(packed + 2);
    put_word(packed + 2, ((word & 0xFFFFF) | (word >> 20) << 21) >> 16);
  });
}

void unused_bits_in_chroma(const call& c) {
  right("yua_yva_matrox_10::pa16", "pa16", c);
  each_pixel(c, [&](int y, int x) {
    const unsigned unused = source_row(c, 0, y)[4 * x + 3] >> 6;
    write(c, 1, y, x, word_at(row_of_plane(c, 1, y) + 2 * x) | unused);
  });
}

constexpr fault faults[] = {
    {"lower_bits_in_opposite_order", "p216::yuyv_matrox_10", "yuyv_matrox_10", lower_bits_in_opposite_order,
     "(row 0, byte 32)"},
    {"lower_bits_beside_upper_ones", "alpha_u16::yuyv_matrox_10", "yuyv_matrox_10", lower_bits_beside_upper_ones,
     "(row 0, byte 4)"},
    {"touched_between_the_parts", "p216::yuyv_matrox_10", "yuyv_matrox_10", touched_between_the_parts, "byte 31"},
    {"whole_group_read", "yuyv_matrox_10::p216", "p216", whole_group_read, "crashed"},
    {"even_luma_with_upper_byte", "yuyv_matrox_10::p216", "p216", even_luma_with_upper_byte, "destination plane y"},
    {"read_as_tight", "yuyv_matrox_10::uyvy", "uyvy", read_as_tight, "source yuyv stride 2 "},
    {"written_as_tight", "p216::yuyv_matrox_10", "yuyv_matrox_10", written_as_tight, "destination yuyv stride 2 "},
    {"one_line_where_rows_are_due", "yuyv_matrox_10::p216", "p216", one_line_where_rows_are_due,
     "source yuyv stride 5 "},
    {"own_lower_bits_of_cr", "pa16::yuyv_matrox_10", "yuyv_matrox_10", own_lower_bits_of_cr, "destination plane yuyv"},
    {"alpha_one_bit_too_high", "pa16::yua_yva_matrox_10", "yua_yva_matrox_10", alpha_one_bit_too_high,
     "destination plane yua_yva"},
    {"unused_bits_in_chroma", "yua_yva_matrox_10::pa16", "pa16", unused_bits_in_chroma, "destination plane cbcr"},
};

}  // namespace

std::span<const fault> faults_of_card_10() {
  return faults;
}

}  // namespace morvane::tests
