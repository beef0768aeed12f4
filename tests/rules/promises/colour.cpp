// The matrices: their coefficients, grey, the ends of their domains, and their largest sums.
#include "rules/colour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "rules/promises/pixels.h"
#include "rules/samples.h"

namespace morvane::tests::rules {
namespace {

// Calls take(matrix, range, bits of the YCbCr picture).
template <class Take>
void every_matrix(Take take) {
  for (const matrix m : matrices)
    for (const range in : ranges)
      for (const int bits : depths) take(m, in, bits);
}

TEST(rules_matrices, coefficients_of_709_in_video_range) {
  EXPECT_EQ(to_rgb_of(matrix::bt709, span_of(range::video, 8)), (to_rgb{9576, 14744, 1754, 4383, 17372}));
}

// One colour in both forms, from the formulas by hand.
void expect_example(matrix m, const span& s, form f, const rgb& to, const ycbcr& from) {
  EXPECT_EQ(rgb_of({30003, 20001, 41003}, to_rgb_of(m, s), s, f), to);
  EXPECT_EQ(ycbcr_of({50001, 30003, 10007}, from_rgb_of(m, s), s, f), from);
}

TEST(rules_matrices, by_hand) {
  const span video = span_of(range::video, 10);
  expect_example(matrix::bt709, video, form::narrow, {45104, 28608, 3212}, {32164, 22016, 42320});
  expect_example(matrix::bt709, video, form::wide, {45105, 28611, 3210}, {32165, 22015, 42320});
  const span full = span_of(range::full, 10);
  expect_example(matrix::bt2020, full, form::narrow, {42188, 27428, 5988}, {34036, 19990, 43560});
  expect_example(matrix::bt2020, full, form::wide, {42188, 27425, 5990}, {34038, 19990, 43560});
  const span full_words = span_of(range::full, 16);
  expect_example(matrix::bt601, full_words, form::narrow, {41548, 28516, 7380}, {33700, 19398, 44392});
  expect_example(matrix::bt601, full_words, form::wide, {41548, 28516, 7380}, {33703, 19396, 44393});
}

TEST(rules_matrices, the_deeper_picture_decides_on_the_form) {
  EXPECT_EQ(form_of(8, 10), form::narrow);
  EXPECT_EQ(form_of(10, 10), form::narrow);
  EXPECT_EQ(form_of(8, 12), form::wide);
  EXPECT_EQ(form_of(12, 10), form::wide);
  EXPECT_EQ(form_of(16, 8), form::wide);
}

TEST(rules_matrices, no_coefficient_lies_on_a_tie) {
  every_matrix([](matrix m, range in, int bits) {
    EXPECT_NO_THROW(to_rgb_of(m, span_of(in, bits)));
    EXPECT_NO_THROW(from_rgb_of(m, span_of(in, bits)));
    for (const range other : ranges)
      for (const int other_bits : depths) {
        EXPECT_NO_THROW(luma_in(span_of(in, bits), 0, span_of(other, other_bits)));
        EXPECT_NO_THROW(chroma_in(span_of(in, bits), 0, span_of(other, other_bits)));
      }
  });
}

TEST(rules_matrices, grey_stays_grey) {
  every_matrix([](matrix m, range in, int bits) {
    const span s = span_of(in, bits);
    const int step = bits == 16 ? 97 : 1;
    for (int number = 0; number < 1 << bits; number += step) {
      const int sample = working_sample(static_cast<std::uint32_t>(number), bits, meaning::fraction);
      const ycbcr there = ycbcr_of({sample, sample, sample}, from_rgb_of(m, s), s, form_of(bits, bits));
      const numbers n = stored(there, bits);
      const std::uint32_t none = 1U << (bits - 1);
      ASSERT_EQ(n, (numbers{n.y, none, none})) << number << " of " << bits << " bits";
      const rgb back = rgb_of(working(n, bits), to_rgb_of(m, s), s, form_of(bits, bits));
      ASSERT_EQ(back, (rgb{back.r, back.r, back.r})) << number << " of " << bits << " bits";
    }
  });
}

std::uint32_t darkest(range in, int bits) {
  return in == range::full ? 0 : 16U << (bits - 8);
}

std::uint32_t brightest(range in, int bits) {
  return in == range::full ? (1U << bits) - 1 : 235U << (bits - 8);
}

void expect_ends_both_ways(matrix m, range in, int bits, int bits_of_rgb) {
  const span s = span_of(in, bits);
  const form f = form_of(bits, bits_of_rgb);
  const std::uint32_t none = 1U << (bits - 1);
  const numbers black = {darkest(in, bits), none, none};
  const numbers white = {brightest(in, bits), none, none};
  EXPECT_EQ(stored(ycbcr_of({0, 0, 0}, from_rgb_of(m, s), s, f), bits), black);
  EXPECT_EQ(stored(ycbcr_of({65535, 65535, 65535}, from_rgb_of(m, s), s, f), bits), white);
  const rgb dark = rgb_of(working(black, bits), to_rgb_of(m, s), s, f);
  const rgb bright = rgb_of(working(white, bits), to_rgb_of(m, s), s, f);
  EXPECT_EQ(number_of(dark.g, bits_of_rgb, meaning::fraction), 0U);
  EXPECT_EQ(number_of(bright.g, bits_of_rgb, meaning::fraction), (1U << bits_of_rgb) - 1);
}

TEST(rules_matrices, black_and_white_are_exact_up_to_12_bits) {
  for (const matrix m : matrices)
    for (const range in : ranges)
      for (const int bits : depths_with_exact_ends)
        for (const int bits_of_rgb : depths_with_exact_ends) expect_ends_both_ways(m, in, bits, bits_of_rgb);
}

TEST(rules_matrices, white_of_16_bits_lacks_one) {
  const span s = span_of(range::video, 16);
  for (const matrix m : matrices) {
    EXPECT_EQ(ycbcr_of({65535, 65535, 65535}, from_rgb_of(m, s), s, form::wide), (ycbcr{60159, 32768, 32768}));
    EXPECT_EQ(rgb_of({60160, 32768, 32768}, to_rgb_of(m, s), s, form::wide), (rgb{65535, 65535, 65535}));
  }
}

// Every sum grows or falls with each of its terms, so its ends are at the corners of its domain.
template <class Take>
void each_corner(Take take) {
  for (const int y : {0, 65535})
    for (const int cb : {0, 65535})
      for (const int cr : {0, 65535}) take(ycbcr{y, cb, cr});
}

TEST(rules_matrices, of_the_narrow_sums_only_blue_leaves_16_bits) {
  int greatest_blue = 0;
  int least = 0;
  int greatest = 0;
  every_matrix([&](matrix m, range in, int bits) {
    if (bits > 10) return;
    const span s = span_of(in, bits);
    each_corner([&](const ycbcr& corner) {
      const rgb sums = narrow_sums(corner, to_rgb_of(m, s), s);
      greatest_blue = std::max(greatest_blue, sums.b);
      least = std::min({least, sums.r, sums.g, sums.b});
      greatest = std::max({greatest, sums.r, sums.g});
    });
  });
  EXPECT_EQ(greatest_blue, 35568);
  EXPECT_LE(greatest, 32767);
  EXPECT_GE(least, -32768);
}

TEST(rules_matrices, wide_sums_stay_within_32_bits) {
  every_matrix([](matrix m, range in, int bits) {
    const span s = span_of(in, bits);
    const from_rgb by = from_rgb_of(m, s);
    const auto fits = [](std::int64_t sum) { return std::abs(sum) <= std::numeric_limits<std::int32_t>::max(); };
    constexpr std::int64_t all = 65535;
    EXPECT_TRUE(fits((by.y_r + by.y_g + by.y_b) * all + 16384));
    EXPECT_TRUE(fits(by.cb_b * all + 16384) && fits(-(by.cb_g + by.cb_r) * all));
    EXPECT_TRUE(fits(by.cr_r * all + 16384) && fits(-(by.cr_g + by.cr_b) * all));
    const to_rgb to = to_rgb_of(m, s);
    EXPECT_TRUE(fits(to.luma * all + std::int64_t{std::max(to.cb_to_b, to.cr_to_r)} * 32768 + 4096));
    EXPECT_TRUE(fits((to.cb_to_g + to.cr_to_g + to.luma) * all));
  });
  const from_rgb full = from_rgb_of(matrix::bt709, span_of(range::full, 16));
  EXPECT_EQ((full.y_r + full.y_g + full.y_b) * 65535 + 16384, 2147467264);
}

TEST(rules_matrices, luminance_of_grey_is_the_grey) {
  for (const matrix m : matrices)
    for (int grey = 0; grey < 65536; ++grey) ASSERT_EQ(luminance_of({grey, grey, grey}, m), grey);
}

TEST(rules_matrices, video_of_full_rgb_comes_back_within_10_bits) {
  EXPECT_EQ(video_of_full(0), 4096);
  EXPECT_EQ(video_of_full(65535), 60159);
  EXPECT_EQ(full_of_video(4096), 0);
  EXPECT_EQ(full_of_video(60160), 65535);
  EXPECT_EQ(full_of_video(5001), 1058);
  EXPECT_EQ(video_of_full(30003), 29763);
  EXPECT_EQ(full_of_video(0), 0);
  EXPECT_EQ(full_of_video(65535), 65535);
  for (std::uint32_t number = 64; number <= 940; ++number) {
    const int full = full_of_video(working_sample(number, 10, meaning::luma));
    ASSERT_EQ(number_of(video_of_full(full), 10, meaning::luma), number);
  }
}

TEST(rules_matrices, ranges_of_ycbcr_have_the_same_black_white_and_grey) {
  for (const int bits : depths_with_exact_ends) {
    const span video = span_of(range::video, bits);
    const span full = span_of(range::full, bits);
    const int white = working_sample((1U << bits) - 1, bits, meaning::luma);
    EXPECT_EQ(luma_in(full, 4096, video), 0);
    EXPECT_EQ(luma_in(video, 0, full), 4096);
    EXPECT_EQ(number_of(luma_in(full, 60160, video), bits, meaning::luma), (1U << bits) - 1);
    EXPECT_EQ(number_of(luma_in(video, white, full), bits, meaning::luma), 235U << (bits - 8));
    EXPECT_EQ(chroma_in(full, 32768, video), 32768);
    EXPECT_EQ(chroma_in(video, 32768, full), 32768);
  }
}

}  // namespace
}  // namespace morvane::tests::rules
