// Every sample from one depth to another, on every backend.
#include <cstddef>
#include <cstdint>

#include "exhaustive/all_words.h"

namespace morvane::tests {
namespace {

class exhaustive_depth : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_depth, all_backends(), backend_name);

void all_words_to_words(image_conversion* convert, int (*rule)(int)) {
  images_of_all_words([&](const image& m) {
    bytes result(2 * values);
    convert(as_bytes(m.y), row, result.data(), row, width, 1);
    compare(
        "word", values, [&](std::size_t i) { return word_in(result, i); }, [&](std::size_t i) { return rule(m.y[i]); });
  });
}

void all_words_to_bytes(void (*convert)(const std::uint16_t*, int, std::uint8_t*, int, int, int), int (*rule)(int)) {
  images_of_all_words([&](const image& m) {
    bytes result(values);
    convert(m.y.data(), row, result.data(), width, width, 1);
    compare(
        "byte", values, [&](std::size_t i) { return int{result[i]}; }, [&](std::size_t i) { return rule(m.y[i]); });
  });
}

TEST_P(exhaustive_depth, all_words_as_10_bit_alpha) {
  all_words_to_words(&fc::alpha_10u16::alpha_u16, [](int a) { return (a * 64 + a / 16) % 65536; });
}

TEST_P(exhaustive_depth, all_words_as_12_bit_alpha) {
  all_words_to_words(&fc::alpha_12u16::alpha_u16, [](int a) { return (a * 16 + a / 256) % 65536; });
}

TEST_P(exhaustive_depth, all_words_as_16_bit_alpha) {
  all_words_to_bytes(&fc::alpha_u16::alpha, [](int a) { return a / 256; });
}

TEST_P(exhaustive_depth, all_words_as_10_bit_luma) {
  all_words_to_bytes(&fc::y_10u16::y, [](int y) { return y / 4 % 256; });
}

TEST_P(exhaustive_depth, all_words_as_alpha_of_64_bit_pixels) {
  images_of_all_words([](const image& m) {
    words pixels(4 * values), alpha(values);
    for (std::size_t i = 0; i < values; ++i) {
      pixels[4 * i] = m.cbcr[i];
      pixels[4 * i + 1] = pixels[4 * i + 2] = m.y[i];
      pixels[4 * i + 3] = m.alpha[i];
    }
    fc::bgra64::alpha16(as_bytes(pixels), 4 * row, as_bytes(alpha), row, width, 1);
    EXPECT_TRUE(alpha == m.alpha);
  });
}

TEST_P(exhaustive_depth, all_bytes_of_alpha_widen_and_return) {
  bytes alpha(values), narrow(values);
  for (std::size_t i = 0; i < values; ++i) alpha[i] = static_cast<std::uint8_t>(i * 77 + i / 256);
  words wide(values);
  fc::alpha::alpha_u16(alpha.data(), width, as_bytes(wide), row, width, 1);
  compare(
      "alpha", values, [&](std::size_t i) { return int{wide[i]}; }, [&](std::size_t i) { return alpha[i] * 257; });
  fc::alpha_u16::alpha(wide.data(), row, narrow.data(), width, width, 1);
  EXPECT_TRUE(narrow == alpha);
}

TEST_P(exhaustive_depth, all_bytes_of_4_2_0_to_p216) {
  constexpr int rows = 256;
  bytes luma(rows * 256), chroma(rows / 2 * 256);
  for (std::size_t i = 0; i < luma.size(); ++i) luma[i] = static_cast<std::uint8_t>(i * 77 + i / 256);
  for (std::size_t i = 0; i < chroma.size(); ++i) chroma[i] = static_cast<std::uint8_t>(i * 35 + i / 256);
  words y(luma.size()), cbcr(luma.size());
  fc::y_uv::p216(luma.data(), 256, chroma.data(), 256, y.data(), 512, cbcr.data(), 512, 256, rows);
  compare(
      "luma", y.size(), [&](std::size_t i) { return int{y[i]}; }, [&](std::size_t i) { return luma[i] * 256; });
  compare(
      "chroma", cbcr.size(), [&](std::size_t i) { return int{cbcr[i]}; },
      [&](std::size_t i) { return chroma[i / 512 * 256 + i % 256] * 256; });
}

}  // namespace
}  // namespace morvane::tests
