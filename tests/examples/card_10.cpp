// Single statements about the 10-bit formats of cards, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "examples/word_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class card_10_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, card_10_example, all_backends(), backend_name);

// Six pixels in sixteen bytes.

bytes little_endian(std::initializer_list<std::uint32_t> words) {
  bytes result;
  for (const std::uint32_t w : words)
    for (int shift = 0; shift < 32; shift += 8) result.push_back(static_cast<std::uint8_t>(w >> shift));
  return result;
}

const bytes v210_group = little_endian({0x20010200, 0x08020080, 0x20010200, 0x08020080});
const bytes v210_group_in_uyvy = {128, 16, 128, 32, 32, 32, 128, 16, 128, 32, 32, 32};

TEST_P(card_10_example, a_v210_group_becomes_twelve_bytes) {
  const bytes result = convert_row(&fc::v210::uyvy, repeated(v210_group, 2), 7, 24);
  EXPECT_EQ(part(result, 0, 12), v210_group_in_uyvy);
}

TEST_P(card_10_example, v210_samples_keep_their_upper_eight_bits) {
  for (const auto& [sample, byte] : {std::pair{1023U, 255}, {64U, 16}, {512U, 128}, {515U, 128}}) {
    const std::uint32_t word = sample | sample << 10 | sample << 20;
    const bytes result = convert_row(&fc::v210::uyvy, little_endian({word, word, word, word}), 6, 12);
    EXPECT_EQ(part(result, 0, 8), filled(8, static_cast<std::uint8_t>(byte)));
  }
}

TEST_P(card_10_example, six_v210_pixels_leave_their_last_pair_unwritten) {
  const bytes result = convert_row(&fc::v210::uyvy, v210_group, 6, 12);
  EXPECT_EQ(part(result, 0, 8), part(v210_group_in_uyvy, 0, 8));
  EXPECT_EQ(part(result, 8, 4), filled(4, 77));
}

TEST_P(card_10_example, seven_v210_pixels_write_one_full_group_and_no_more) {
  const bytes result = convert_row(&fc::v210::uyvy, repeated(v210_group, 2), 7, 24);
  EXPECT_EQ(part(result, 0, 12), v210_group_in_uyvy);
  EXPECT_EQ(part(result, 12, 12), filled(12, 77));
}

TEST_P(card_10_example, two_v210_pixels_write_nothing) {
  EXPECT_EQ(convert_row(&fc::v210::uyvy, v210_group, 2, 12), filled(12, 77));
}

TEST_P(card_10_example, a_tight_v210_image_leaves_only_its_very_last_pair_unwritten) {
  bytes destination = filled(48, 77);
  const bytes source = repeated(v210_group, 4);
  fc::v210::uyvy(source.data(), 32, destination.data(), 24, 12, 2);
  const bytes whole = repeated(v210_group_in_uyvy, 4);
  EXPECT_EQ(part(destination, 0, 44), part(whole, 0, 44));
  EXPECT_EQ(part(destination, 44, 4), filled(4, 77));
}

TEST_P(card_10_example, a_padded_v210_image_leaves_the_last_pair_of_each_row_unwritten) {
  bytes destination = filled(48, 77);
  const bytes source = repeated(v210_group, 6);
  fc::v210::uyvy(source.data(), 48, destination.data(), 24, 12, 2);
  const bytes row = repeated(v210_group_in_uyvy, 2);
  for (std::size_t y = 0; y < 2; ++y) {
    EXPECT_EQ(part(destination, 24 * y, 20), part(row, 0, 20));
    EXPECT_EQ(part(destination, 24 * y + 20, 4), filled(4, 77));
  }
}

// Sixteen pixels in forty bytes.

// The upper bytes are 0x12 0x34 0x56 0x78, the lower bits 1, 2, 3 and 0.
const words luma_of_pair = {0x1240, 0x56c0};
const words chroma_of_pair = {0x3480, 0x7800};
constexpr std::uint8_t lower_bits_of_pair = 1 | 2 << 2 | 3 << 4;

bytes packed(const p216_picture& source, int pixels, std::size_t size, std::uint8_t before = 77) {
  bytes result = filled(size, before);
  fc::p216::yuyv_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, result.data(),
                           static_cast<int>(size), pixels, 1);
  return result;
}

TEST_P(card_10_example, sixteen_pixels_are_forty_bytes) {
  const bytes result = packed(repeated_pair(luma_of_pair, chroma_of_pair), 16, 48);
  EXPECT_EQ(part(result, 0, 32), repeated({0x12, 0x34, 0x56, 0x78}, 8));
  EXPECT_EQ(part(result, 32, 8), filled(8, lower_bits_of_pair));
  EXPECT_EQ(part(result, 40, 8), filled(8, 77));
}

TEST_P(card_10_example, the_lowest_six_bits_are_dropped) {
  EXPECT_EQ(packed(repeated_pair({0x127f, 0x56ff}, {0x34bf, 0x783f}), 70, 200),
            packed(repeated_pair(luma_of_pair, chroma_of_pair), 70, 200));
}

TEST_P(card_10_example, six_pixels_are_bytes_0_to_11_and_32_to_34) {
  for (const int pixels : {5, 6}) {
    const bytes result = packed(repeated_pair(luma_of_pair, chroma_of_pair), pixels, 40);
    EXPECT_EQ(part(result, 0, 12), repeated({0x12, 0x34, 0x56, 0x78}, 3));
    EXPECT_EQ(part(result, 12, 20), filled(20, 77));
    EXPECT_EQ(part(result, 32, 3), filled(3, lower_bits_of_pair));
    EXPECT_EQ(part(result, 35, 5), filled(5, 77));
  }
}

TEST_P(card_10_example, every_group_of_sixteen_has_its_own_pixels) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  const bytes result = packed(source, many, 200);
  for (std::size_t pair = 0; pair < many / 2; ++pair) {
    const std::size_t group = pair / 8 * 40;
    const words samples = {source.y[2 * pair], source.cbcr[2 * pair], source.y[2 * pair + 1],
                           source.cbcr[2 * pair + 1]};
    int lower_bits = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(result[group + 4 * (pair % 8) + i], samples[i] / 256);
      lower_bits |= samples[i] / 64 % 4 << 2 * i;
    }
    EXPECT_EQ(result[group + 32 + pair % 8], lower_bits);
  }
}

p216_picture unpacked(const bytes& source, int pixels) {
  p216_picture result{words(many, 77), words(many, 77)};
  fc::yuyv_matrox_10::p216(source.data(), static_cast<int>(source.size()), as_bytes(result.y), row_of_many,
                           as_bytes(result.cbcr), row_of_many, pixels, 1);
  return result;
}

TEST_P(card_10_example, even_luma_comes_back_with_bits_6_and_7_alone) {
  for (const std::size_t pixels : {2U, 6U, 16U, 18U, 70U}) {
    p216_picture wanted = repeated_pair({0x0040, 0x56c0}, chroma_of_pair);
    for (std::size_t i = pixels; i < many; ++i) wanted.y[i] = wanted.cbcr[i] = 77;
    const bytes source = packed(repeated_pair(luma_of_pair, chroma_of_pair), static_cast<int>(pixels), 200);
    EXPECT_EQ(unpacked(source, static_cast<int>(pixels)), wanted);
    EXPECT_EQ(unpacked(source, static_cast<int>(pixels) - 1), wanted);
  }
}

TEST_P(card_10_example, other_samples_come_back_without_their_lowest_six_bits) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  p216_picture wanted{masked(source.y, 0xffc0), masked(source.cbcr, 0xffc0)};
  for (std::size_t i = 0; i < many; i += 2) wanted.y[i] &= 0xc0;
  EXPECT_EQ(unpacked(packed(source, many, 200), many), wanted);
}

TEST_P(card_10_example, upper_bytes_become_uyvy) {
  for (const std::size_t pixels : {2U, 6U, 16U, 18U, 70U}) {
    const bytes source = packed(repeated_pair(luma_of_pair, chroma_of_pair), static_cast<int>(pixels), 200, 255);
    bytes result = filled(2 * many, 77);
    fc::yuyv_matrox_10::uyvy(source.data(), 200, result.data(), 2 * many, static_cast<int>(pixels) - 1, 1);
    EXPECT_EQ(part(result, 0, 2 * pixels), repeated({0x34, 0x12, 0x78, 0x56}, pixels / 2));
    EXPECT_EQ(part(result, 2 * pixels, 2 * (many - pixels)), filled(2 * (many - pixels), 77));
  }
}

// A stride of 5 bytes is tight for two pixels, so eight rows of them are one line of one group; black and the reader
// of p216 take rows all the same.
TEST_P(card_10_example, tight_rows_of_part_of_a_group_are_one_line_where_rows_are_not_stated) {
  const bytes upper = repeated({16, 128, 16, 128}, 8);
  const words y(16, 0x1000), cbcr(16, 0x8000);
  bytes line = filled(80, 77);
  fc::p216::yuyv_matrox_10(as_bytes(y), 4, as_bytes(cbcr), 4, line.data(), 5, 2, 8);
  EXPECT_EQ(part(line, 0, 32), upper);
  EXPECT_EQ(part(line, 32, 8), filled(8, 0));
  EXPECT_EQ(part(line, 40, 40), filled(40, 77));

  bytes uyvy(32);
  fc::yuyv_matrox_10::uyvy(line.data(), 5, uyvy.data(), 4, 2, 8);
  EXPECT_EQ(uyvy, repeated({128, 16, 128, 16}, 8));

  bytes rows = filled(80, 77);
  fc::yuyv_matrox_10::black(rows.data(), 5, 2, 8);
  for (std::size_t row = 0; row < 6; ++row) EXPECT_EQ(part(rows, 5 * row, 5), (bytes{16, 128, 16, 128, 77})) << row;
  EXPECT_EQ(rows[32 + 5 * 7], 0);

  const bytes source = counted(80);
  p216_picture read(16);
  fc::yuyv_matrox_10::p216(source.data(), 5, as_bytes(read.y), 4, as_bytes(read.cbcr), 4, 2, 8);
  for (std::size_t row = 0; row < 8; ++row) {
    const bytes group = part(source, 5 * row, 40);
    EXPECT_EQ(read.y[2 * row + 1], group[2] * 256 + group[32] / 16 % 4 * 64);
    EXPECT_EQ(read.cbcr[2 * row], group[1] * 256 + group[32] / 4 % 4 * 64);
  }
}

bytes packed_over_black(const p216_picture& source, const words& alpha) {
  bytes result = filled(200, 77);
  fc::pa16::yuyv_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, as_bytes(alpha),
                           row_of_many, result.data(), 200, many, 1);
  return result;
}

void expect_packed_pairs(const bytes& result, const bytes& upper, std::uint8_t lower_bits) {
  for (std::size_t pair = 0; pair < many / 2; ++pair) {
    EXPECT_EQ(part(result, pair / 8 * 40 + pair % 8 * 4, 4), upper) << pair;
    EXPECT_EQ(result[pair / 8 * 40 + 32 + pair % 8], lower_bits) << pair;
  }
}

TEST_P(card_10_example, opaque_pixels_are_packed_with_the_lower_bits_of_cb_for_cr) {
  expect_packed_pairs(packed_over_black(repeated_pair(luma_of_pair, chroma_of_pair), words(many, 65535)),
                      {0x12, 0x34, 0x56, 0x78}, 1 | 2 << 2 | 3 << 4 | 2 << 6);
}

// Half of 60160 is 32128 = 0x7d80, of Cb 61568 it is 47168 = 0xb840, of Cr 4096 it is 18432 = 0x4800.
TEST_P(card_10_example, half_transparent_pixels_are_packed_over_black) {
  const p216_picture source = repeated_pair({60160, 0x56c0}, {61568, 4096});
  expect_packed_pairs(packed_over_black(source, repeated_words({32767, 65535}, many / 2)), {0x7d, 0xb8, 0x56, 0x48},
                      2 | 1 << 2 | 3 << 4 | 1 << 6);
}

TEST_P(card_10_example, transparent_pixels_are_packed_as_black) {
  const p216_picture source = repeated_pair({60160, 60160}, {61440, 61440});
  expect_packed_pairs(packed_over_black(source, words(many, 0)), {16, 128, 16, 128}, 0);
}

TEST_P(card_10_example, a_key_is_packed_as_luma) {
  const words alpha = repeated_words({65535, 0x1240}, many / 2);
  bytes result = filled(200, 77);
  fc::alpha_u16::yuyv_matrox_10(as_bytes(alpha), row_of_many, result.data(), 200, many, 1);
  expect_packed_pairs(result, {255, 128, 0x12, 128}, 3 | 1 << 4);
}

// A word for each pixel, with a key.

TEST_P(card_10_example, a_pixel_with_its_key_is_one_word) {
  const p216_picture source = repeated_pair(luma_of_pair, chroma_of_pair);
  const words alpha = repeated_words({0xffff, 0x8000}, many / 2);
  bytes result(4 * many);
  fc::pa16::yua_yva_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, as_bytes(alpha),
                              row_of_many, result.data(), 4 * many, many, 1);
  // 0x3ff << 20 | 0xd2 << 10 | 0x49 and 0x200 << 20 | 0x1e0 << 10 | 0x15b
  EXPECT_EQ(result, repeated({0x49, 0x48, 0xf3, 0x3f, 0x5b, 0x81, 0x07, 0x20}, many / 2));
}

TEST_P(card_10_example, words_with_a_key_ignore_their_two_upper_bits) {
  const bytes source = repeated({0x49, 0x48, 0xf3, 0xff, 0x5b, 0x81, 0x07, 0x60}, many / 2);
  p216_picture result;
  words alpha(many);
  fc::yua_yva_matrox_10::pa16(source.data(), 4 * many, as_bytes(result.y), row_of_many, as_bytes(result.cbcr),
                              row_of_many, as_bytes(alpha), row_of_many, many, 1);
  EXPECT_EQ(result, repeated_pair(luma_of_pair, chroma_of_pair));
  EXPECT_EQ(alpha, repeated_words({0xffc0, 0x8000}, many / 2));
}

TEST_P(card_10_example, samples_come_back_from_words_with_a_key_without_their_lowest_six_bits) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  const words alpha = counted_words(many, 6007);
  bytes card(4 * many);
  fc::pa16::yua_yva_matrox_10(as_bytes(source.y), row_of_many, as_bytes(source.cbcr), row_of_many, as_bytes(alpha),
                              row_of_many, card.data(), 4 * many, many, 1);
  for (std::size_t i = 0; i < many; ++i) EXPECT_EQ(card[4 * i + 3] >> 6, 0);
  p216_picture result;
  words to_alpha(many);
  fc::yua_yva_matrox_10::pa16(card.data(), 4 * many, as_bytes(result.y), row_of_many, as_bytes(result.cbcr),
                              row_of_many, as_bytes(to_alpha), row_of_many, many, 1);
  EXPECT_EQ(result, p216_picture(masked(source.y, 0xffc0), masked(source.cbcr, 0xffc0)));
  EXPECT_EQ(to_alpha, masked(alpha, 0xffc0));
}

TEST_P(card_10_example, three_pixels_with_a_key_are_three_words) {
  const words source = counted_words(8);
  bytes card = filled(16, 77);
  fc::pa16::yua_yva_matrox_10(as_bytes(source), 8, as_bytes(source), 8, as_bytes(source), 8, card.data(), 16, 3, 1);
  EXPECT_EQ(part(card, 12, 4), filled(4, 77));
  words y(4, 77), cbcr(4, 77), alpha(4, 77);
  fc::yua_yva_matrox_10::pa16(card.data(), 16, as_bytes(y), 8, as_bytes(cbcr), 8, as_bytes(alpha), 8, 3, 1);
  for (const words& plane : {y, cbcr, alpha}) {
    EXPECT_EQ(part(plane, 0, 3), masked(part(source, 0, 3), 0xffc0));
    EXPECT_EQ(plane[3], 77);
  }
}

}  // namespace
}  // namespace morvane::tests
