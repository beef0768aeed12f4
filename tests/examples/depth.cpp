// Single statements about samples from one depth to another, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "examples/word_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class depth_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, depth_example, all_backends(), backend_name);

// 8 bits to 16.

TEST_P(depth_example, luma_in_16_bits_is_256_times_itself) {
  const bytes source = counted(100);
  words result(100);
  fc::y::y16(source.data(), 20, result.data(), 40, 20, 5);
  for (std::size_t i = 0; i < 100; ++i) EXPECT_EQ(result[i], source[i] * 256);
}

TEST_P(depth_example, y_uv_in_16_bits_repeats_every_row_of_chroma) {
  const bytes y = counted(4 * 4);
  p216_picture result(16);
  fc::y_uv::p216(y.data(), 4, bytes{1, 2, 3, 4, 5, 6, 7, 8}.data(), 4, result.y.data(), 8, result.cbcr.data(), 8, 4, 4);
  EXPECT_EQ(result.y, times_256(y));
  EXPECT_EQ(result.cbcr, times_256({1, 2, 3, 4, 1, 2, 3, 4, 5, 6, 7, 8, 5, 6, 7, 8}));
}

TEST_P(depth_example, y_uv_of_three_rows_reads_two_and_writes_four_rows_of_chroma) {
  const bytes y = counted(2 * 3);
  words to_y(8, 77), to_cbcr(10, 77);
  fc::y_uv::p216(y.data(), 2, bytes{1, 2, 3, 4}.data(), 2, to_y.data(), 4, to_cbcr.data(), 4, 2, 3);
  EXPECT_EQ(part(to_y, 0, 6), times_256(y));
  EXPECT_EQ(part(to_y, 6, 2), words(2, 77));
  EXPECT_EQ(to_cbcr, (words{256, 512, 256, 512, 768, 1024, 768, 1024, 77, 77}));
}

TEST_P(depth_example, y_uv_of_three_pixels_converts_three_bytes_of_chroma_in_each_row) {
  const bytes y = counted(3 * 2);
  words to_y(6), to_cbcr(8, 77);
  fc::y_uv::p216(y.data(), 3, bytes{1, 2, 3}.data(), 3, to_y.data(), 6, to_cbcr.data(), 8, 3, 2);
  EXPECT_EQ(to_y, times_256(y));
  EXPECT_EQ(to_cbcr, (words{256, 512, 768, 77, 256, 512, 768, 77}));
}

TEST_P(depth_example, a_row_of_three_bytes_of_chroma_is_two_pairs) {
  words result(8);
  fc::cbcr_8_420::cbcr_16_422(bytes{1, 2, 3, 4}.data(), 3, result.data(), 8, 3, 1);
  EXPECT_EQ(result, (words{256, 512, 768, 1024, 256, 512, 768, 1024}));
}

// With rows closer than their last, completed pair, what the later row writes counts.
TEST_P(depth_example, a_completed_pair_lies_under_the_next_row) {
  bytes result = filled(8, 77);
  fc::cbcr_8_420::cbcr_16_422(bytes{1, 2}.data(), 1, result.data(), 2, 1, 1);
  EXPECT_EQ(result, (bytes{0, 1, 0, 1, 0, 2, 77, 77}));
}

// Alpha and luma alone.

TEST_P(depth_example, ten_bits_of_alpha_become_sixteen) {
  for (const auto& [from, to] : {std::pair{0, 0}, {1, 64}, {512, 32800}, {1023, 65535}, {1024, 64}}) {
    const words source(many, static_cast<std::uint16_t>(from));
    words result(many);
    fc::alpha_10u16::alpha_u16(as_bytes(source), row_of_many, as_bytes(result), row_of_many, many, 1);
    EXPECT_EQ(result, words(many, static_cast<std::uint16_t>(to))) << from;
  }
}

TEST_P(depth_example, twelve_bits_of_alpha_become_sixteen) {
  for (const auto& [from, to] : {std::pair{0, 0}, {1, 16}, {2048, 32776}, {4095, 65535}, {4096, 16}}) {
    const words source(many, static_cast<std::uint16_t>(from));
    words result(many);
    fc::alpha_12u16::alpha_u16(as_bytes(source), row_of_many, as_bytes(result), row_of_many, many, 1);
    EXPECT_EQ(result, words(many, static_cast<std::uint16_t>(to))) << from;
  }
}

TEST_P(depth_example, eight_bits_of_alpha_become_sixteen_and_come_back) {
  for (int a = 0; a < 256; ++a) {
    const bytes source = filled(many, static_cast<std::uint8_t>(a));
    words wide(many);
    fc::alpha::alpha_u16(source.data(), many, as_bytes(wide), row_of_many, many, 1);
    EXPECT_EQ(wide, words(many, static_cast<std::uint16_t>(257 * a)));
    bytes narrow(many);
    fc::alpha_u16::alpha(wide.data(), row_of_many, narrow.data(), many, many, 1);
    EXPECT_EQ(narrow, source);
  }
}

TEST_P(depth_example, sixteen_bits_of_alpha_are_cut_to_eight) {
  for (const auto& [from, to] : {std::pair{65535, 255}, {65279, 254}, {32896, 128}, {255, 0}, {256, 1}}) {
    bytes result(many);
    fc::alpha_u16::alpha(words(many, static_cast<std::uint16_t>(from)).data(), row_of_many, result.data(), many, many,
                         1);
    EXPECT_EQ(result, filled(many, static_cast<std::uint8_t>(to))) << from;
  }
}

TEST_P(depth_example, ten_bits_of_luma_are_cut_to_eight) {
  for (const auto& [from, to] : {std::pair{940, 235}, {64, 16}, {67, 16}, {1023, 255}, {1024, 0}, {65535, 255}}) {
    bytes result(many);
    fc::y_10u16::y(words(many, static_cast<std::uint16_t>(from)).data(), row_of_many, result.data(), many, many, 1);
    EXPECT_EQ(result, filled(many, static_cast<std::uint8_t>(to))) << from;
  }
}

TEST_P(depth_example, alpha_of_bgra64_is_its_fourth_word) {
  words source = counted_words(4 * many);
  words wanted(many);
  for (std::size_t i = 0; i < many; ++i) wanted[i] = source[4 * i + 3];
  for (const unsigned color : {0U, 0x1234U, 0xffffU}) {
    for (std::size_t i = 0; i < source.size(); ++i)
      if (i % 4 != 3) source[i] = static_cast<std::uint16_t>(color);
    words result(many);
    fc::bgra64::alpha16(as_bytes(source), 8 * many, as_bytes(result), row_of_many, many, 1);
    EXPECT_EQ(result, wanted);
  }
}

TEST_P(depth_example, depths_are_exact_at_odd_widths) {
  for (const std::string_view name : {"alpha::alpha_u16", "alpha_u16::alpha", "alpha_10u16::alpha_u16",
                                      "alpha_12u16::alpha_u16", "y_10u16::y", "bgra64::alpha16"})
    for (const catalogue::conversion& row : catalogue::conversions)
      if (row.name == name) {
        const words source = counted_words(64);
        words result(64, 0x4d4d);
        catalogue::call c;
        c.source.data[0] = as_bytes(source);
        c.destination.data[0] = as_bytes(result);
        c.xres = 3;
        c.yres = 1;
        row.convert(c);
        const std::size_t written = row.destination == "alpha_u16" ? 6 : 3;
        EXPECT_EQ(as_bytes(result)[written], 77) << name;
      }
}

}  // namespace
}  // namespace morvane::tests
