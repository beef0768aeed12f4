// Bits that are known, and formats that are known to hold each other.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "format_bits.h"
#include "format_losses.h"
#include "format_picture.h"

namespace morvane::docs {
namespace {

// A byte's bits, from the highest one: "Y0 5 4 3 2 1 0 Cb0 9 8"; a dash for each that is unused.
std::string byte_of(const std::string& format, std::size_t byte, int plane = 0) {
  const std::vector<stored_bit> bits = bits_of_group(describe(format_named(format)), plane);
  std::ostringstream text;
  std::string sample;
  for (std::size_t i = 8 * byte; i < 8 * byte + 8; ++i) {
    if (i > 8 * byte) text << ' ';
    if (!bits[i].is_used()) {
      text << '-';
    } else {
      if (bits[i].sample != sample) text << bits[i].sample << ' ';
      text << bits[i].number;
    }
    sample = bits[i].sample;
  }
  return text.str();
}

TEST(bits, of_bytes) {
  EXPECT_EQ(byte_of("uyvy", 0), "Cb 7 6 5 4 3 2 1 0");
  EXPECT_EQ(byte_of("uyvy", 1), "Y0 7 6 5 4 3 2 1 0");
  EXPECT_EQ(byte_of("uyvy", 3), "Y1 7 6 5 4 3 2 1 0");
  EXPECT_EQ(byte_of("bgrx", 2), "R 7 6 5 4 3 2 1 0");
  EXPECT_EQ(byte_of("bgrx", 3), "- - - - - - - -");
  EXPECT_EQ(byte_of("y_uv_420", 1, 1), "Cr 7 6 5 4 3 2 1 0");
}

TEST(bits, of_words) {
  EXPECT_EQ(byte_of("bgra64", 2), "G 7 6 5 4 3 2 1 0");
  EXPECT_EQ(byte_of("bgra64", 3), "G 15 14 13 12 11 10 9 8");
  EXPECT_EQ(byte_of("p010", 0), "Y 1 0 - - - - - -");
  EXPECT_EQ(byte_of("p010", 3, 1), "Cr 9 8 7 6 5 4 3 2");
  EXPECT_EQ(byte_of("alpha_10u16", 0), "A 7 6 5 4 3 2 1 0");
  EXPECT_EQ(byte_of("alpha_10u16", 1), "- - - - - - A 9 8");
}

TEST(bits, of_three_samples_in_a_word) {
  EXPECT_EQ(byte_of("v210", 0), "Cb0 7 6 5 4 3 2 1 0");
  EXPECT_EQ(byte_of("v210", 1), "Y0 5 4 3 2 1 0 Cb0 9 8");
  EXPECT_EQ(byte_of("v210", 2), "Cr0 3 2 1 0 Y0 9 8 7 6");
  EXPECT_EQ(byte_of("v210", 3), "- - Cr0 9 8 7 6 5 4");
  EXPECT_EQ(byte_of("v210", 15), "- - Y5 9 8 7 6 5 4");
  EXPECT_EQ(byte_of("yua_yva_matrox_10", 7), "- - A1 9 8 7 6 5 4");
}

TEST(bits, of_a_group_with_its_lower_bits_behind_it) {
  EXPECT_EQ(byte_of("yuyv_matrox_10", 0), "Y0 9 8 7 6 5 4 3 2");
  EXPECT_EQ(byte_of("yuyv_matrox_10", 31), "Cr14 9 8 7 6 5 4 3 2");
  EXPECT_EQ(byte_of("yuyv_matrox_10", 32), "Cr0 1 0 Y1 1 0 Cb0 1 0 Y0 1 0");
  EXPECT_EQ(byte_of("yuyv_matrox_10", 39), "Cr14 1 0 Y15 1 0 Cb14 1 0 Y14 1 0");
}

TEST(bits, of_floats) {
  EXPECT_EQ(byte_of("vuya_f32", 3), "Cr 31 30 29 28 27 26 25 24");
  EXPECT_EQ(byte_of("vuya_f32", 12), "A 7 6 5 4 3 2 1 0");
}

TEST(pictures, of_all_formats_are_small) {
  for (const format f : formats()) EXPECT_LT(picture_of_bits(describe(f)).size(), 12000U) << name_of(f);
}

bool holds(const std::string& destination, const std::string& source) {
  const std::vector<format> all = lossless_from(format_named(source));
  return std::find(all.begin(), all.end(), format_named(destination)) != all.end();
}

TEST(losses, are_none_where_a_format_holds_all_of_another) {
  EXPECT_TRUE(holds("yuy2", "uyvy"));
  EXPECT_TRUE(holds("v210", "uyvy"));
  EXPECT_TRUE(holds("uyvy", "y_uv_420"));
  EXPECT_TRUE(holds("bgra64", "r_g_b"));
  EXPECT_TRUE(holds("alpha_12u16", "alpha_10u16"));
  EXPECT_TRUE(holds("vuya_16", "vuya_f32"));
}

TEST(losses, are_known) {
  EXPECT_FALSE(holds("uyvy", "v210"));      // bits
  EXPECT_FALSE(holds("y_uv_420", "uyvy"));  // rows of chroma
  EXPECT_FALSE(holds("bgra64", "uyvy"));    // colours that RGB has not
  EXPECT_FALSE(holds("bgrx", "bgra"));      // alpha
  EXPECT_FALSE(holds("y", "uyvy"));         // chroma
  EXPECT_FALSE(holds("uyvy", "uyvy"));      // is no other format
  EXPECT_TRUE(lossless_from(format_named("uyvy_uyvy")).empty());
}

}  // namespace
}  // namespace morvane::docs
