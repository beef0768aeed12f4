// Where samples lie: groups, their ends, and strides.
#include "rules/layout.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "rules/promises/pictures.h"
#include "rules/samples.h"

namespace morvane::tests::rules {
namespace {

std::ptrdiff_t first_stride(std::string_view name, int width) {
  return natural_stride(format_of(name), 0, width);
}

TEST(rules_layout, natural_stride_is_that_of_the_groups_but_for_v210) {
  EXPECT_EQ(first_stride("v210", 1), 128);
  EXPECT_EQ(first_stride("v210", 48), 128);
  EXPECT_EQ(first_stride("v210", 49), 256);
  EXPECT_EQ(first_stride("v210", 1920), 5120);
  EXPECT_EQ(first_stride("uyvy", 3), 8);
  EXPECT_EQ(first_stride("yuyv_matrox_10", 16), 40);
  EXPECT_EQ(first_stride("yuyv_matrox_10", 17), 80);
  EXPECT_EQ(first_stride("yua_yva_matrox_10", 3), 16);
  EXPECT_EQ(first_stride("vuya_f32", 3), 48);
  EXPECT_EQ(first_stride("bgr", 5), 15);
  EXPECT_EQ(natural_stride(format_of("p010"), 1, 5), 12);
  EXPECT_EQ(natural_stride(format_of("y_u_v_420"), 2, 5), 3);
}

TEST(rules_layout, planes_of_chroma_have_half_the_rows_rounded_up) {
  EXPECT_EQ(rows_of_plane(format_of("y_u_v_420"), 0, 5), 5);
  EXPECT_EQ(rows_of_plane(format_of("y_u_v_420"), 1, 5), 3);
  EXPECT_EQ(rows_of_plane(format_of("y_u_v_422"), 1, 5), 5);
  EXPECT_EQ(rows_of_plane(format_of("cbcr_8_420"), 0, 1), 1);
}

TEST(rules_layout, rows_of_v210_are_shorter_than_their_stride) {
  EXPECT_EQ(row_bytes(format_of("v210"), 0, 7), 32);
}

std::vector<std::uint32_t> numbers_in(const group& g, const std::vector<std::uint8_t>& bytes) {
  std::vector<std::uint32_t> numbers;
  for (const field& f : g.fields) numbers.push_back(get(g, f, bytes.data()));
  return numbers;
}

// Each number comes out, and each goes where it came from.
void expect_both_ways(const group& g, const std::vector<std::uint8_t>& bytes,
                      const std::vector<std::uint32_t>& numbers) {
  ASSERT_EQ(static_cast<std::size_t>(g.bytes), bytes.size());
  EXPECT_EQ(numbers_in(g, bytes), numbers);
  std::vector<std::uint8_t> made(bytes.size());
  for (std::size_t i = 0; i < g.fields.size(); ++i) put(g, g.fields[i], made.data(), numbers[i]);
  EXPECT_EQ(made, bytes);
}

TEST(rules_layout, little_endian_fields_begin_at_the_lowest_bit) {
  expect_both_ways(group_of("Cb10 Y10 Cr10 -2", bit_order::little_endian), {0x01, 0x08, 0x30, 0x00}, {1, 2, 3});
  expect_both_ways(group_of("-6 Y10", bit_order::little_endian), {0x40, 0x80}, {513});
  expect_both_ways(group_of("R12 G12", bit_order::little_endian), {0x23, 0x61, 0x45}, {0x123, 0x456});
}

TEST(rules_layout, big_endian_fields_begin_at_the_highest_bit) {
  expect_both_ways(group_of("-2 R10 G10 B10", bit_order::big_endian), {0x00, 0x10, 0x08, 0x03}, {1, 2, 3});
  expect_both_ways(group_of("Cb10 Y10 Cr10 Y10", bit_order::big_endian), {0x00, 0x40, 0x20, 0x0c, 0x04}, {1, 2, 3, 4});
}

TEST(rules_layout, lower_bits_may_lie_elsewhere) {
  expect_both_ways(group_of("Y8 Cb8 Y8 Cr8 +2 +2 +2 +2", bit_order::little_endian), {0x80, 0x40, 0x20, 0x10, 0xe4},
                   {0x200, 0x101, 0x082, 0x043});
}

TEST(rules_layout, descriptions_that_make_no_sense_are_refused) {
  EXPECT_THROW(group_of("Y7", bit_order::little_endian), std::invalid_argument);
  EXPECT_THROW(group_of("Q8", bit_order::little_endian), std::invalid_argument);
  EXPECT_THROW(group_of("Y", bit_order::little_endian), std::invalid_argument);
  EXPECT_THROW(format_of("no format"), std::invalid_argument);
}

// The samples of a picture one pixel high, numbered from 1: luma 1, 2, 3..., and the others the same.
samples numbered(std::string_view name, int width, int bits) {
  samples made;
  const format& f = format_of(name);
  for (const channel what : {channel::y, channel::cb, channel::cr, channel::a}) {
    made[what] = grid(columns_of(f, what, width), 1);
    for (int x = 0; x < made[what].width; ++x) made[what].set(x, 0, (x + 1) << (16 - bits));
  }
  return made;
}

ints written_bytes(std::string_view name, int width, int bits) {
  stored_picture p(name, width, 1, 0xee);
  write(numbered(name, width, bits), p.of());
  return p.bytes(0);
}

TEST(rules_layout, last_groups_repeat_the_last_sample_of_each_component) {
  EXPECT_EQ(written_bytes("uyvy", 3, 8), (ints{1, 1, 1, 2, 2, 3, 2, 3}));
  EXPECT_EQ(written_bytes("yuy2", 1, 8), (ints{1, 1, 1, 1}));
}

TEST(rules_layout, v210_ends_with_a_whole_group_and_leaves_the_rest) {
  const ints bytes = written_bytes("v210", 3, 10);
  const auto sample = [&](int i) {
    const std::size_t at = static_cast<std::size_t>(i / 3 * 4);
    const int word = bytes[at] + (bytes[at + 1] << 8) + (bytes[at + 2] << 16) + (bytes[at + 3] << 24);
    EXPECT_EQ(word >> 30, 0);
    return word >> (i % 3 * 10) & 1023;
  };
  const ints cb_y_cr = {1, 1, 1, 2, 2, 3, 2, 3, 2, 3, 2, 3};
  for (int i = 0; i < 12; ++i) EXPECT_EQ(sample(i), cb_y_cr[static_cast<std::size_t>(i)]) << i;
  for (std::size_t i = 16; i < bytes.size(); ++i) EXPECT_EQ(bytes[i], 0xee);
}

TEST(rules_layout, yuyv_matrox_10_has_a_byte_of_lower_bits_for_a_pair) {
  const ints bytes = written_bytes("yuyv_matrox_10", 3, 10);
  ints expected(32, 0);
  expected.push_back(1 + 4 * 1 + 16 * 2 + 64 * 1);
  expected.push_back(3 + 4 * 2 + 16 * 3 + 64 * 2);
  for (int pair = 2; pair < 8; ++pair) expected.push_back(3 + 4 * 2 + 16 * 3 + 64 * 2);
  EXPECT_EQ(bytes, expected);
}

TEST(rules_layout, unused_samples_are_ones_and_unused_bits_zero) {
  stored_picture bgrx("bgrx", 1, 1);
  samples black;
  for (const channel what : {channel::r, channel::g, channel::b}) black[what] = grid(1, 1);
  write(black, bgrx.of());
  EXPECT_EQ(bgrx.bytes(0), (ints{0, 0, 0, 255}));

  stored_picture y_10u16("y_10u16", 1, 1, 0xff);
  samples dark;
  dark[channel::y] = grid(1, 1);
  write(dark, y_10u16.of());
  EXPECT_EQ(y_10u16.words(0), ints{0});
}

TEST(rules_layout, unused_bits_are_ignored) {
  stored_picture p("y_10u16", 1, 1, 0xff);
  EXPECT_EQ(read(p.of())[channel::y].at(0, 0), 1023 << 6);
  stored_picture q("p010", 1, 1, 0x3f);
  EXPECT_EQ(read(q.of())[channel::y].at(0, 0), 0x3f00);
}

}  // namespace
}  // namespace morvane::tests::rules
