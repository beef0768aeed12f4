// Every sample of 16 bits to bytes, words and floats and over black, on every backend.
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "exhaustive/all_words.h"

namespace morvane::tests {
namespace {

class exhaustive_words : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_words, all_backends(), backend_name);

TEST_P(exhaustive_words, all_words_of_p216_to_uyvy) {
  images_of_all_words([](const image& m) {
    bytes uyvy(2 * values);
    fc::p216::uyvy(m.y.data(), row, m.cbcr.data(), row, uyvy.data(), row, width, 1);
    compare(
        "byte", 2 * values, [&](std::size_t i) { return int{uyvy[i]}; },
        [&](std::size_t i) { return (i % 2 == 0 ? m.cbcr : m.y)[i / 2] / 256; });
  });
}

TEST_P(exhaustive_words, all_bytes_of_uyvy_widen_and_return) {
  bytes uyvy(2 * values), back(2 * values);
  for (std::size_t i = 0; i < uyvy.size(); ++i) uyvy[i] = static_cast<std::uint8_t>(i * 77 + i / 256);
  words y(values), cbcr(values);
  fc::uyvy::p216(uyvy.data(), row, y.data(), row, cbcr.data(), row, width, 1);
  compare(
      "sample", 2 * values, [&](std::size_t i) { return int{(i % 2 == 0 ? cbcr : y)[i / 2]}; },
      [&](std::size_t i) { return uyvy[i] * 256; });
  fc::p216::uyvy(y.data(), row, cbcr.data(), row, back.data(), row, width, 1);
  EXPECT_TRUE(back == uyvy);
}

TEST_P(exhaustive_words, all_bytes_of_ycbcra_to_pa16) {
  bytes pixels(4 * values);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<std::uint8_t>(i * 77 + i / 256);
  words y(values), cbcr(values), alpha(values);
  bool opaque = true;
  fc::ycbcra::pa16(pixels.data(), 4 * width, y.data(), row, cbcr.data(), row, alpha.data(), row, width, 1, &opaque);
  EXPECT_FALSE(opaque);
  compare(
      "luma", values, [&](std::size_t i) { return int{y[i]}; }, [&](std::size_t i) { return pixels[4 * i] * 256; });
  compare(
      "chroma", values, [&](std::size_t i) { return int{cbcr[i]}; },
      [&](std::size_t i) { return pixels[i / 2 * 8 + 1 + i % 2] * 256; });
  compare(
      "alpha", values, [&](std::size_t i) { return int{alpha[i]}; },
      [&](std::size_t i) { return pixels[4 * i + 3] * 257; });
}

// Floats. Of the quotient of two whole numbers of up to 24 bits, the nearest float is that of the nearest double.

float nearest(double value) {
  return static_cast<float>(value);
}

float normal_luma(int sample) {
  return sample < 4096 ? 0.0F : sample > 60160 ? 1.0F : nearest((sample - 4096) / 56064.0);
}

float normal_chroma(int sample) {
  if (sample < 4096) return -0.5F;
  if (sample > 61440) return 0.5F;
  return nearest(double{nearest((sample - 4096) / 57344.0)} - 0.5);
}

TEST_P(exhaustive_words, all_words_to_floats) {
  images_of_all_words([](const image& m) {
    std::vector<float> pixels(4 * values);
    fc::pa16::vuya_f32(m.y.data(), row, m.cbcr.data(), row, m.alpha.data(), row,
                       reinterpret_cast<std::uint8_t*>(pixels.data()), 16 * width, width, 1);
    compare(
        "float", 4 * values, [&](std::size_t i) { return std::bit_cast<std::uint32_t>(pixels[i]); },
        [&](std::size_t i) {
          const std::size_t pixel = i / 4;
          const std::size_t cb = pixel / 2 * 2;
          const std::array<float, 4> wanted = {normal_chroma(m.cbcr[cb + 1]), normal_chroma(m.cbcr[cb]),
                                               normal_luma(m.y[pixel]), nearest(m.alpha[pixel] / 65535.0)};
          return std::bit_cast<std::uint32_t>(wanted[i % 4]);
        });
  });
}

TEST_P(exhaustive_words, all_words_to_64_bit_pixels) {
  images_of_all_words([](const image& m) {
    words pixels(4 * values);
    fc::pa16::vuya_16(m.y.data(), row, m.cbcr.data(), row, m.alpha.data(), row, pixels.data(), 4 * row, width, 1);
    compare(
        "word", 4 * values, [&](std::size_t i) { return int{pixels[i]}; },
        [&](std::size_t i) {
          const std::size_t pixel = i / 4;
          const std::size_t cb = pixel / 2 * 2;
          return int{std::array{m.cbcr[cb], m.cbcr[cb + 1], m.y[pixel], m.alpha[pixel]}[i % 4]};
        });
  });
}

// Over black.

TEST_P(exhaustive_words, samples_with_alphas_over_black) {
  bytes y(2 * pixels_of_pairs), cbcr(2 * pixels_of_pairs);
  samples_with_alphas([&](const composed& pairs) {
    fc::pa16::p216(pairs.y.data(), row_of_pairs, pairs.cbcr.data(), row_of_pairs, pairs.alpha.data(), row_of_pairs,
                   y.data(), row_of_pairs, cbcr.data(), row_of_pairs, pixels_of_pairs, 1);
    for (std::size_t i = 0; i < 2 * values; ++i) {
      const int luma = word_over_black(pairs.y[i], 4096, pairs.alpha[i]);
      const int chroma = word_over_black(pairs.cbcr[i], 32768, pairs.alpha[i / 2 * 2]);
      ASSERT_EQ(word_in(y, i), luma) << pair_text(pairs, i / 2) << (i % 2 == 0 ? ", even" : ", odd");
      ASSERT_EQ(word_in(cbcr, i), chroma) << pair_text(pairs, i / 2) << (i % 2 == 0 ? ", Cb" : ", Cr");
    }
  });
}

TEST_P(exhaustive_words, opaque_samples_stay_as_they_are) {
  images_of_all_words([](const image& m) {
    const words opaque(values, 65535);
    words y(values), cbcr(values);
    fc::pa16::p216(as_bytes(m.y), row, as_bytes(m.cbcr), row, as_bytes(opaque), row, as_bytes(y), row, as_bytes(cbcr),
                   row, width, 1);
    EXPECT_TRUE(y == m.y);
    EXPECT_TRUE(cbcr == m.cbcr);
  });
}

}  // namespace
}  // namespace morvane::tests
