// Single statements about planes of 16 bits and floats, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "examples/word_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class words_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, words_example, all_backends(), backend_name);

// 8 bits to 16.

TEST_P(words_example, video_in_16_bits_is_256_times_itself) {
  const bytes source = repeated({100, 16, 200, 235}, many / 2);
  p216_picture result;
  fc::uyvy::p216(source.data(), row_of_many, result.y.data(), row_of_many, result.cbcr.data(), row_of_many, many, 1);
  EXPECT_EQ(result, repeated_pair({4096, 60160}, {25600, 51200}));
}

TEST_P(words_example, three_pixels_of_uyvy_write_a_fourth) {
  words y(6, 77), cbcr(6, 77);
  fc::uyvy::p216(bytes{1, 2, 3, 4, 5, 6, 7, 8}.data(), 8, y.data(), 12, cbcr.data(), 12, 3, 1);
  EXPECT_EQ(y, (words{512, 1024, 1536, 2048, 77, 77}));
  EXPECT_EQ(cbcr, (words{256, 768, 1280, 1792, 77, 77}));
}

TEST_P(words_example, alpha_in_16_bits_repeats_its_byte_and_chroma_is_that_of_the_even_pixel) {
  const bytes source = repeated({10, 20, 30, 255, 40, 50, 60, 1}, many / 2);
  p216_picture result;
  words alpha(many);
  bool opaque = true;
  fc::ycbcra::pa16(source.data(), 4 * many, result.y.data(), row_of_many, result.cbcr.data(), row_of_many, alpha.data(),
                   row_of_many, many, 1, &opaque);
  EXPECT_EQ(result, repeated_pair({2560, 10240}, {5120, 7680}));
  EXPECT_EQ(alpha, repeated_words({65535, 257}, many / 2));
  EXPECT_FALSE(opaque);
}

struct keyed_words {
  words y, cbcr, alpha;
  bool opaque = false;

  bool operator==(const keyed_words&) const = default;
};

keyed_words convert_keyed(const bytes& ycbcra, int stride, int xres, int yres, bool asks = true) {
  keyed_words result{words(128, 77), words(128, 77), words(128, 77)};
  fc::ycbcra::pa16(ycbcra.data(), stride, result.y.data(), 80, result.cbcr.data(), 80, result.alpha.data(), 80, xres,
                   yres, asks ? &result.opaque : nullptr);
  return result;
}

TEST_P(words_example, a_single_alpha_of_254_is_reported_wherever_it_is) {
  bytes source = counted(4 * 3 * 40);
  for (std::size_t pixel = 0; pixel < 3 * 40; ++pixel) source[4 * pixel + 3] = 255;
  EXPECT_TRUE(convert_keyed(source, 160, 40, 3).opaque);
  for (std::size_t pixel = 0; pixel < 3 * 40; ++pixel) {
    source[4 * pixel + 3] = 254;
    keyed_words result = convert_keyed(source, 160, 40, 3);
    EXPECT_FALSE(result.opaque) << pixel;
    EXPECT_EQ(result.alpha[pixel], 254 * 257);
    EXPECT_EQ(result, convert_keyed(source, 160, 40, 3, false));
    source[4 * pixel + 3] = 255;
  }
}

TEST_P(words_example, the_completed_pixel_counts_for_the_report) {
  bytes source = filled(4 * 4, 255);
  EXPECT_TRUE(convert_keyed(source, 16, 3, 1).opaque);
  source[15] = 254;
  EXPECT_FALSE(convert_keyed(source, 16, 3, 1).opaque);
}

TEST_P(words_example, no_rows_or_pixels_are_opaque) {
  for (const auto& [xres, yres] : {std::pair{4, 0}, {4, -1}, {0, 4}, {-3, 4}, {-2, -2}}) {
    keyed_words nothing{words(128, 77), words(128, 77), words(128, 77), true};
    EXPECT_EQ(convert_keyed(bytes(64), 16, xres, yres), nothing);
    bytes written = filled(64, 77);
    bool opaque = false;
    fc::ycbcra::pa16(bytes(64).data(), 16, written.data(), 8, written.data(), 8, written.data(), 8, xres, yres,
                     &opaque);
    EXPECT_TRUE(opaque);
    EXPECT_EQ(written, filled(64, 77));
  }
}

// 16 bits to 8.

TEST_P(words_example, words_become_their_upper_bytes) {
  const p216_picture source = repeated_pair({60415, 60160}, {25600, 51455});
  bytes result(2 * many);
  fc::p216::uyvy(source.y.data(), row_of_many, source.cbcr.data(), row_of_many, result.data(), row_of_many, many, 1);
  EXPECT_EQ(result, repeated({100, 235, 200, 235}, many / 2));
}

TEST_P(words_example, three_pixels_of_p216_write_six_bytes) {
  bytes result = filled(8, 77);
  fc::p216::uyvy(words{256, 512, 768, 1024}.data(), 8, words{1280, 1536, 1792, 2048}.data(), 8, result.data(), 8, 3, 1);
  EXPECT_EQ(result, (bytes{5, 1, 6, 2, 7, 3, 77, 77}));
}

TEST_P(words_example, uyvy_comes_back_from_16_bits) {
  const bytes source = counted(2 * many);
  p216_picture wide;
  bytes result(2 * many);
  fc::uyvy::p216(source.data(), row_of_many, wide.y.data(), row_of_many, wide.cbcr.data(), row_of_many, many, 1);
  fc::p216::uyvy(wide.y.data(), row_of_many, wide.cbcr.data(), row_of_many, result.data(), row_of_many, many, 1);
  EXPECT_EQ(result, source);
}

// Compositing 16 bits over black.

p216_picture over_black(const p216_picture& source, const words& alpha) {
  p216_picture result;
  fc::pa16::p216(source.y.data(), row_of_many, source.cbcr.data(), row_of_many, alpha.data(), row_of_many,
                 as_bytes(result.y), row_of_many, as_bytes(result.cbcr), row_of_many, many, 1);
  return result;
}

TEST_P(words_example, full_alpha_leaves_words_unchanged) {
  const p216_picture source(counted_words(many), counted_words(many, 7919));
  EXPECT_EQ(over_black(source, words(many, 65535)), source);
}

TEST_P(words_example, no_alpha_gives_black_or_nearly) {
  EXPECT_EQ(over_black(repeated_pair({60160, 4096}, {61440, 32768}), words(many, 0)),
            repeated_pair({4096, 4096}, {32768, 32768}));
  EXPECT_EQ(over_black(repeated_pair({4095, 0}, {32767, 0}), words(many, 0)),
            repeated_pair({4095, 4095}, {32767, 32767}));
}

TEST_P(words_example, half_alpha_halves_the_distance_to_black) {
  EXPECT_EQ(over_black(repeated_pair({60160, 2096}, {61440, 4096}), words(many, 32767)),
            repeated_pair({32128, 3096}, {47104, 18432}));
}

TEST_P(words_example, both_cb_and_cr_follow_the_first_alpha) {
  const p216_picture source = repeated_pair({60160, 60160}, {61440, 4096});
  EXPECT_EQ(over_black(source, repeated_words({65535, 0}, many / 2)), repeated_pair({60160, 4096}, {61440, 4096}));
  EXPECT_EQ(over_black(source, repeated_words({0, 65535}, many / 2)), repeated_pair({4096, 60160}, {32768, 32767}));
}

// 4:4:4 in words and floats.

TEST_P(words_example, vuya_16_has_cb_first) {
  const p216_picture source = repeated_pair({1, 2}, {3, 65534});
  words result(4 * many);
  fc::pa16::vuya_16(source.y.data(), row_of_many, source.cbcr.data(), row_of_many,
                    repeated_words({5, 6}, many / 2).data(), row_of_many, result.data(), 8 * many, many, 1);
  EXPECT_EQ(result, repeated_words({3, 65534, 1, 5, 3, 65534, 2, 6}, many / 2));
}

TEST_P(words_example, three_pixels_of_vuya_16_write_a_fourth) {
  const words source = {1, 2, 3, 4};
  words result(20, 77);
  fc::pa16::vuya_16(source.data(), 8, source.data(), 8, source.data(), 8, result.data(), 40, 3, 1);
  EXPECT_EQ(result, (words{1, 2, 1, 1, 1, 2, 2, 2, 3, 4, 3, 3, 3, 4, 4, 4, 77, 77, 77, 77}));
}

void expect_floats(const words& y, const words& cbcr, const words& alpha, const floats& wanted) {
  const p216_picture source = repeated_pair(y, cbcr);
  floats result(4 * many);
  fc::pa16::vuya_f32(source.y.data(), row_of_many, source.cbcr.data(), row_of_many,
                     repeated_words(alpha, many / 2).data(), row_of_many,
                     reinterpret_cast<std::uint8_t*>(result.data()), 16 * many, many, 1);
  EXPECT_EQ(result, repeated_samples(wanted, many / 2));
}

TEST_P(words_example, the_ends_of_video_range_are_the_ends_of_floats) {
  expect_floats({4096, 60160}, {4096, 32768}, {0, 65535}, {0.0F, -0.5F, 0, 0, 0.0F, -0.5F, 1, 1});
  expect_floats({4096, 60160}, {61440, 4096}, {0, 65535}, {-0.5F, 0.5F, 0, 0, -0.5F, 0.5F, 1, 1});
}

TEST_P(words_example, floats_are_clamped_beyond_video_range) {
  expect_floats({0, 65535}, {0, 65535}, {1, 65534}, {0.5F, -0.5F, 0, 1 / 65535.0F, 0.5F, -0.5F, 1, 65534 / 65535.0F});
  expect_floats({4095, 60161}, {4095, 61441}, {0, 65535}, {0.5F, -0.5F, 0, 0, 0.5F, -0.5F, 1, 1});
}

TEST_P(words_example, floats_between_have_cr_first) {
  expect_floats({32128, 18112}, {47104, 18432}, {13107, 52428},
                {-0.25F, 0.25F, 0.5F, 0.2F, -0.25F, 0.25F, 0.25F, 0.8F});
}

// A third in luma, and chroma whose quotient does not end either. Multiplying by a reciprocal rounds some of them
// otherwise.
TEST_P(words_example, floats_are_quotients) {
  for (int v = 0; v < 65536; v += 251) {
    const auto w = static_cast<std::uint16_t>(v);
    const float above_black = static_cast<float>(v < 4096 ? 0 : v - 4096);
    const float y = above_black / 56064.0F;
    const float c = above_black / 57344.0F - 0.5F;
    const float luma = y > 1 ? 1 : y;
    const float chroma = c > 0.5F ? 0.5F : c;
    const float alpha = static_cast<float>(v) / 65535.0F;
    expect_floats({w, w}, {w, w}, {w, w}, {chroma, chroma, luma, alpha, chroma, chroma, luma, alpha});
  }
}

}  // namespace
}  // namespace morvane::tests
