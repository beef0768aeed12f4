// Is the checker awake for formats of more than 8 bits? Each test plants one fault around a conversion and expects a
// report of it.
#include <bit>
#include <cstddef>
#include <cstdint>

#include "planted_faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void right(const char* row, const char* destination, const call& c) {
  row_of(row, destination).convert(c);
}

const std::uint8_t* source_row(const call& c, std::size_t plane, int row) {
  return c.source.data[plane] + std::ptrdiff_t{row} * c.source.stride[plane];
}

unsigned word_at(const std::uint8_t* s) {
  return s[0] + 256U * s[1];
}

void put_word(std::uint8_t* d, unsigned value) {
  d[0] = static_cast<std::uint8_t>(value & 255);
  d[1] = static_cast<std::uint8_t>(value >> 8 & 255);
}

unsigned read(const call& c, std::size_t plane, int row, int index) {
  return word_at(source_row(c, plane, row) + 2 * index);
}

void write(const call& c, std::size_t plane, int row, int index, unsigned word) {
  put_word(row_of_plane(c, plane, row) + 2 * index, word);
}

template <class Damage>
void each_pixel(const call& c, Damage damage) {
  for (int y = 0; y < c.yres; ++y)
    for (int x = 0; x < c.xres; ++x) damage(y, x);
}

void copy(const std::uint8_t* s, std::uint8_t* d, int bytes) {
  for (int i = 0; i < bytes; ++i) d[i] = s[i];
}

// 16-bit planes.

void word_behind_completed_pair(const call& c) {
  right("uyvy::p216", "p216", c);
  if (has_pixels(c) && c.destination.stride[1] > 0) row_of_plane(c, 1, c.yres - 1)[2 * (c.xres + c.xres % 2)] ^= 255;
}

void completed_pair_left_out(const call& c) {
  call shorter = c;
  shorter.xres -= c.xres % 2;
  right("pa16::vuya_16", "vuya_16", shorter);
}

void chroma_of_odd_height_left_out(const call& c) {
  call even = c;
  even.yres -= c.yres % 2;
  right("y_uv::p216", "p216", even);
  if (!has_pixels(c)) return;
  for (int x = 0; x < c.xres; ++x) write(c, 0, c.yres - 1, x, source_row(c, 0, c.yres - 1)[x] * 256U);
}

void last_chroma_row_written_once(const call& c) {
  right("y_uv::p216", "p216", c);
  if (has_pixels(c) && c.yres % 2 == 0) write(c, 1, c.yres - 1, 0, 0x1234);
}

void completed_pixel_not_in_report(const call& c) {
  right("ycbcra::pa16", "pa16", c);
  if (c.opaque == nullptr || c.yres != 1 || c.xres % 2 == 0) return;
  call shorter = c;
  shorter.xres -= 1;
  right("ycbcra::pa16", "pa16", shorter);
  if (c.source.data[0][4 * c.xres - 1] != 255) *c.opaque = false;
}

void rounded_to_bytes(const call& c) {
  right("p216::uyvy", "uyvy", c);
  each_pixel(c, [&](int y, int x) {
    const unsigned luma = read(c, 0, y, x);
    row_of_plane(c, 0, y)[2 * x + 1] = static_cast<std::uint8_t>(luma >= 65408 ? 255 : (luma + 128) >> 8);
  });
}

void lower_chroma_rows_kept(const call& c) {
  call lower = c;
  if (c.yres > 1) lower.source.data[1] += c.source.stride[1];
  right("p216::p010", "p010", lower);
}

void chroma_row_for_odd_last_row(const call& c) {
  right("p216::p010", "p010", c);
  if (has_pixels(c) && c.yres % 2 != 0) copy(source_row(c, 1, c.yres - 1), row_of_plane(c, 1, c.yres / 2), 2 * c.xres);
}

void green_weight_off_by_one(const call& c) {
  right("p216::rgbx_2020", "rgbx", c);
  each_pixel(c, [&](int y, int x) {
    if (x >= c.xres / 2 * 2) return;
    const std::uint8_t* cbcr = source_row(c, 1, y) + x / 2 * 4;
    const int luma = 74 * source_row(c, 0, y)[2 * x + 1] - 1192;
    const int t = (luma - 12 * (cbcr[1] - 128) - 43 * (cbcr[3] - 128)) >> 6;
    row_of_plane(c, 0, y)[4 * x + 1] = static_cast<std::uint8_t>(t < 0 ? 0 : t > 255 ? 255 : t);
  });
}

void last_odd_pixel_converted(const call& c) {
  right("p216::rgbx_2020", "rgbx", c);
  if (has_pixels(c) && c.xres % 2 != 0) row_of_plane(c, 0, 0)[4 * c.xres - 1] ^= 255;
}

void cr_with_alpha_of_odd_pixel(const call& c) {
  right("pa16::p216", "p216", c);
  each_pixel(c, [&](int y, int x) {
    if (x % 2 == 0) return;
    const unsigned cr = read(c, 1, y, x) - 32768U;
    write(c, 1, y, x, ((cr * read(c, 2, y, x) + cr) >> 16) ^ 32768U);
  });
}

void weighted_by_alpha_alone(const call& c) {
  right("pa16::p216", "p216", c);
  each_pixel(c,
             [&](int y, int x) { write(c, 0, y, x, (((read(c, 0, y, x) - 4096U) * read(c, 2, y, x)) >> 16) + 4096U); });
}

// Copies chroma as given, in place of the library.
template <bool (*in_rows)(const call&)>
void ya_uv_with_own_chroma(const call& c) {
  if (!in_rows(c)) return right("pa16::ya_uv", "ya_uv_16", c);
  call luma_alone = c;
  luma_alone.source.stride[1] = c.destination.stride[1] + 1;
  right("pa16::ya_uv", "ya_uv_16", luma_alone);
  if (has_pixels(c))
    for (int y = 0; y < c.yres; ++y) copy(source_row(c, 1, y), row_of_plane(c, 1, y), 2 * c.xres);
}

bool strides_are_equal(const call& c) {
  return c.source.stride[1] == c.destination.stride[1] && c.source.stride[1] > 0;
}
bool strides_are_equal_and_negative(const call& c) {
  return c.source.stride[1] == c.destination.stride[1] && c.source.stride[1] < 0;
}
bool written_stride_is_smaller(const call& c) {
  return c.destination.stride[1] < c.source.stride[1];
}

void cr_first(const call& c) {
  right("pa16::vuya_16", "vuya_16", c);
  each_pixel(c, [&](int y, int x) {
    const unsigned cb = word_at(row_of_plane(c, 0, y) + 8 * x);
    write(c, 0, y, 4 * x, word_at(row_of_plane(c, 0, y) + 8 * x + 2));
    write(c, 0, y, 4 * x + 1, cb);
  });
}

void multiplied_by_reciprocal(const call& c) {
  right("pa16::vuya_f32", "vuya_f32", c);
  each_pixel(c, [&](int y, int x) {
    const auto alpha = std::bit_cast<std::uint32_t>(static_cast<float>(read(c, 2, y, x)) * (1.0F / 65535.0F));
    write(c, 0, y, 8 * x + 6, alpha);
    write(c, 0, y, 8 * x + 7, alpha >> 16);
  });
}

// Cards.

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

void whole_group_written(const call& c) {
  right("yuyv_matrox_10::black", "yuyv_matrox_10", c);
  const int pairs = (c.xres + 1) / 2;
  if (has_pixels(c) && pairs % 8 != 0) row_of_plane(c, 0, c.yres - 1)[pairs / 8 * 40 + 39] = 0;
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

// Depths.

template <unsigned (*rule)(unsigned)>
void words_by(const call& c) {
  each_pixel(c, [&](int y, int x) { write(c, 0, y, x, rule(read(c, 0, y, x))); });
}

unsigned without_replication(unsigned a) {
  return a << 6;
}
unsigned clamped_to_12_bits(unsigned a) {
  return a > 4095 ? 65535 : (a << 4) + (a >> 8);
}

void low_byte_of_alpha_zero(const call& c) {
  each_pixel(c, [&](int y, int x) { write(c, 0, y, x, source_row(c, 0, y)[x] * 256U); });
}

void luma_clamped(const call& c) {
  each_pixel(c, [&](int y, int x) {
    const unsigned luma = read(c, 0, y, x) >> 2;
    row_of_plane(c, 0, y)[x] = static_cast<std::uint8_t>(luma > 255 ? 255 : luma);
  });
}

void words_swapped_at_odd_addresses(const call& c) {
  right("alpha_u16::alpha", "alpha", c);
  if (has_pixels(c) && reinterpret_cast<std::uintptr_t>(c.source.data[0]) % 2 != 0)
    c.destination.data[0][0] = c.source.data[0][0];
}

void one_word_of_red(const call& c) {
  right("bgra64::alpha16", "alpha_u16", c);
  if (has_pixels(c)) write(c, 0, c.yres - 1, c.xres - 1, read(c, 0, c.yres - 1, 4 * c.xres - 2));
}

constexpr fault faults[] = {
    {"word_behind_completed_pair", "uyvy::p216", "p216", word_behind_completed_pair, "destination plane cbcr"},
    {"completed_pair_left_out", "pa16::vuya_16", "vuya_16", completed_pair_left_out, "destination plane vuya"},
    {"chroma_of_odd_height_left_out", "y_uv::p216", "p216", chroma_of_odd_height_left_out, "destination plane cbcr"},
    {"last_chroma_row_written_once", "y_uv::p216", "p216", last_chroma_row_written_once, "destination plane cbcr"},
    {"completed_pixel_not_in_report", "ycbcra::pa16", "pa16", completed_pixel_not_in_report, "opacity report"},
    {"rounded_to_bytes", "p216::uyvy", "uyvy", rounded_to_bytes, "destination plane uyvy"},
    {"lower_chroma_rows_kept", "p216::p010", "p010", lower_chroma_rows_kept, "destination plane cbcr"},
    {"chroma_row_for_odd_last_row", "p216::p010", "p010", chroma_row_for_odd_last_row, "destination plane cbcr"},
    {"green_weight_off_by_one", "p216::rgbx_2020", "rgbx", green_weight_off_by_one, "destination plane rgbx"},
    {"last_odd_pixel_converted", "p216::rgbx_2020", "rgbx", last_odd_pixel_converted, "(row 0, byte 3)"},
    {"cr_with_alpha_of_odd_pixel", "pa16::p216", "p216", cr_with_alpha_of_odd_pixel, "destination plane cbcr"},
    {"weighted_by_alpha_alone", "pa16::p216", "p216", weighted_by_alpha_alone, "destination plane y"},
    {"padding_of_chroma_left_out", "pa16::ya_uv", "ya_uv_16", ya_uv_with_own_chroma<strides_are_equal>,
     "destination plane cbcr"},
    {"chroma_copied_upwards", "pa16::ya_uv", "ya_uv_16", ya_uv_with_own_chroma<strides_are_equal_and_negative>,
     "destination plane cbcr"},
    {"chroma_copied_to_smaller_stride", "pa16::ya_uv", "ya_uv_16", ya_uv_with_own_chroma<written_stride_is_smaller>,
     "destination plane cbcr"},
    {"cr_first", "pa16::vuya_16", "vuya_16", cr_first, "destination plane vuya"},
    {"multiplied_by_reciprocal", "pa16::vuya_f32", "vuya_f32", multiplied_by_reciprocal, "destination plane vuya"},
    {"lower_bits_in_opposite_order", "p216::yuyv_matrox_10", "yuyv_matrox_10", lower_bits_in_opposite_order,
     "(row 0, byte 32)"},
    {"lower_bits_beside_upper_ones", "alpha_u16::yuyv_matrox_10", "yuyv_matrox_10", lower_bits_beside_upper_ones,
     "(row 0, byte 4)"},
    {"touched_between_the_parts", "p216::yuyv_matrox_10", "yuyv_matrox_10", touched_between_the_parts, "byte 31"},
    {"whole_group_written", "yuyv_matrox_10::black", "yuyv_matrox_10", whole_group_written, "byte 39 from the first"},
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
    {"without_replication", "alpha_10u16::alpha_u16", "alpha_u16", words_by<without_replication>,
     "destination plane alpha"},
    {"clamped_to_12_bits", "alpha_12u16::alpha_u16", "alpha_u16", words_by<clamped_to_12_bits>,
     "destination plane alpha"},
    {"low_byte_of_alpha_zero", "alpha::alpha_u16", "alpha_u16", low_byte_of_alpha_zero, "(row 0, byte 0)"},
    {"luma_clamped", "y_10u16::y", "y", luma_clamped, "got 255"},
    {"words_swapped_at_odd_addresses", "alpha_u16::alpha", "alpha", words_swapped_at_odd_addresses, "byte 0"},
    {"one_word_of_red", "bgra64::alpha16", "alpha_u16", one_word_of_red, "destination plane alpha"},
};

class planted_fault_of_16_bits : public testing::TestWithParam<fault> {};

TEST_P(planted_fault_of_16_bits, is_reported) {
  expect_report(GetParam());
}

INSTANTIATE_TEST_SUITE_P(checker, planted_fault_of_16_bits, testing::ValuesIn(faults), fault_name);

}  // namespace
}  // namespace morvane::tests
