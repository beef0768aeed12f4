// Every sample that a rule of more than 8 bits can meet, compared with the formulas written out in plain arithmetic, on
// every backend: all words in all places of a vector, words with alphas on a dense grid and beside every threshold, all
// triples through the BT.2020 matrix, and the way there and back. Thinned, a part of the large domains.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Processing.Morvane.h"
#include "checker.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class exhaustive_16 : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_16, all_backends(), backend_name);

using words = std::vector<std::uint16_t>;
using bytes = std::vector<std::uint8_t>;

constexpr std::size_t values = 65536;
constexpr int width = 65536;
constexpr int row = 2 * width;  // bytes of a row of words

const std::uint8_t* as_bytes(const words& w) {
  return reinterpret_cast<const std::uint8_t*>(w.data());
}
std::uint8_t* as_bytes(words& w) {
  return reinterpret_cast<std::uint8_t*>(w.data());
}

int word_in(const bytes& b, std::size_t index) {
  return b[2 * index] + 256 * b[2 * index + 1];
}

// All words, one after the other in steps of an odd number.
words all_words(std::size_t step, std::size_t first) {
  words result(values);
  for (std::size_t i = 0; i < values; ++i) result[i] = static_cast<std::uint16_t>(i * step + first);
  return result;
}

struct image {
  words y, cbcr, alpha;
};

// Calls take(image) with images of a row that hold every word in every plane. Neighbours in a row differ by an odd
// step, so a place in a group of 16 pixels holds one word in 16; with 16 images it meets all of them.
template <class Take>
void images_of_all_words(Take take) {
  for (std::size_t first = 0; first < 16; first += thin() ? 5 : 1) {
    take(image{all_words(40503, first), all_words(28411, first), all_words(51787, first)});
    if (testing::Test::HasFailure()) return;
  }
}

// got(i) must be wanted(i), for `count` of them.
template <class Got, class Wanted>
void compare(const char* what, std::size_t count, Got got, Wanted wanted) {
  for (std::size_t i = 0; i < count; ++i)
    if (got(i) != wanted(i)) {
      ADD_FAILURE() << what << " " << i << ": got " << got(i) << ", expected " << wanted(i);
      return;
    }
}

// Depths.

using of_bytes = void(const std::uint8_t*, int, std::uint8_t*, int, int, int);

void all_words_to_words(of_bytes* convert, int (*rule)(int)) {
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

TEST_P(exhaustive_16, all_words_as_10_bit_alpha) {
  all_words_to_words(&fc::alpha_10u16::alpha_u16, [](int a) { return (a * 64 + a / 16) % 65536; });
}

TEST_P(exhaustive_16, all_words_as_12_bit_alpha) {
  all_words_to_words(&fc::alpha_12u16::alpha_u16, [](int a) { return (a * 16 + a / 256) % 65536; });
}

TEST_P(exhaustive_16, all_words_as_16_bit_alpha) {
  all_words_to_bytes(&fc::alpha_u16::alpha, [](int a) { return a / 256; });
}

TEST_P(exhaustive_16, all_words_as_10_bit_luma) {
  all_words_to_bytes(&fc::y_10u16::y, [](int y) { return y / 4 % 256; });
}

TEST_P(exhaustive_16, all_words_as_alpha_of_64_bit_pixels) {
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

TEST_P(exhaustive_16, all_bytes_of_alpha_widen_and_return) {
  bytes alpha(values), narrow(values);
  for (std::size_t i = 0; i < values; ++i) alpha[i] = static_cast<std::uint8_t>(i * 77 + i / 256);
  words wide(values);
  fc::alpha::alpha_u16(alpha.data(), width, as_bytes(wide), row, width, 1);
  compare(
      "alpha", values, [&](std::size_t i) { return int{wide[i]}; }, [&](std::size_t i) { return alpha[i] * 257; });
  fc::alpha_u16::alpha(wide.data(), row, narrow.data(), width, width, 1);
  EXPECT_TRUE(narrow == alpha);
}

// Between 8 and 16 bits.

TEST_P(exhaustive_16, all_words_of_p216_to_uyvy) {
  images_of_all_words([](const image& m) {
    bytes uyvy(2 * values);
    fc::p216::uyvy(m.y.data(), row, m.cbcr.data(), row, uyvy.data(), row, width, 1);
    compare(
        "byte", 2 * values, [&](std::size_t i) { return int{uyvy[i]}; },
        [&](std::size_t i) { return (i % 2 == 0 ? m.cbcr : m.y)[i / 2] / 256; });
  });
}

TEST_P(exhaustive_16, all_bytes_of_uyvy_widen_and_return) {
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

TEST_P(exhaustive_16, all_bytes_of_4_2_0_to_p216) {
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

TEST_P(exhaustive_16, all_bytes_of_ycbcra_to_pa16) {
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

TEST_P(exhaustive_16, all_words_to_floats) {
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

TEST_P(exhaustive_16, all_words_to_64_bit_pixels) {
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

std::int64_t floor_of(std::int64_t product) {
  return product >= 0 ? product / 65536 : -((-product + 65535) / 65536);
}

int over_black(int sample, int black, int alpha) {
  const std::int64_t product = (std::int64_t{sample} - black) * (std::int64_t{alpha} + 1);
  return static_cast<int>((black + floor_of(product)) & 65535);
}

// Pairs of one sample in all four places. The odd pixel has the complement of the alpha, so that a mix-up shows.
struct composed {
  words y, cbcr, alpha;

  void set(std::size_t pair, std::size_t sample, std::size_t even_alpha) {
    const auto s = static_cast<std::uint16_t>(sample);
    y[2 * pair] = y[2 * pair + 1] = cbcr[2 * pair] = cbcr[2 * pair + 1] = s;
    alpha[2 * pair] = static_cast<std::uint16_t>(even_alpha);
    alpha[2 * pair + 1] = static_cast<std::uint16_t>(65535 - even_alpha);
  }
};

constexpr int pixels_of_pairs = 2 * width;
constexpr int row_of_pairs = 2 * pixels_of_pairs;

// Calls take(pairs) with a row of 65536 pairs for every threshold of a sample with all alphas, and for every threshold
// of alpha and a grid of others with all samples.
template <class Take>
void samples_with_alphas(Take take) {
  composed pairs{words(2 * values), words(2 * values), words(2 * values)};
  const auto converted = [&] {
    take(pairs);
    return !testing::Test::HasFailure();
  };
  for (const std::size_t sample : {0U, 1U, 4094U, 4095U, 4096U, 4097U, 4098U, 32766U, 32767U, 32768U, 32769U, 32770U,
                                   60159U, 60160U, 61440U, 65534U, 65535U}) {
    for (std::size_t a = 0; a < values; ++a) pairs.set(a, sample, a);
    if (!converted()) return;
  }
  std::vector<std::size_t> alphas = {0, 1, 2, 255, 256, 257, 32767, 32768, 65534, 65535};
  for (std::size_t a = 3; a < values; a += thin() ? 8191 : 211) alphas.push_back(a);
  for (const std::size_t alpha : alphas) {
    for (std::size_t s = 0; s < values; ++s) pairs.set(s, s, alpha);
    if (!converted()) return;
  }
}

std::string pair_text(const composed& pairs, std::size_t pair) {
  return "sample " + std::to_string(pairs.y[2 * pair]) + " alphas " + std::to_string(pairs.alpha[2 * pair]) + " and " +
         std::to_string(pairs.alpha[2 * pair + 1]);
}

TEST_P(exhaustive_16, samples_with_alphas_over_black) {
  bytes y(2 * pixels_of_pairs), cbcr(2 * pixels_of_pairs);
  samples_with_alphas([&](const composed& pairs) {
    fc::pa16::p216(pairs.y.data(), row_of_pairs, pairs.cbcr.data(), row_of_pairs, pairs.alpha.data(), row_of_pairs,
                   y.data(), row_of_pairs, cbcr.data(), row_of_pairs, pixels_of_pairs, 1);
    for (std::size_t i = 0; i < 2 * values; ++i) {
      const int luma = over_black(pairs.y[i], 4096, pairs.alpha[i]);
      const int chroma = over_black(pairs.cbcr[i], 32768, pairs.alpha[i / 2 * 2]);
      ASSERT_EQ(word_in(y, i), luma) << pair_text(pairs, i / 2) << (i % 2 == 0 ? ", even" : ", odd");
      ASSERT_EQ(word_in(cbcr, i), chroma) << pair_text(pairs, i / 2) << (i % 2 == 0 ? ", Cb" : ", Cr");
    }
  });
}

TEST_P(exhaustive_16, opaque_samples_stay_as_they_are) {
  images_of_all_words([](const image& m) {
    const words opaque(values, 65535);
    words y(values), cbcr(values);
    fc::pa16::p216(as_bytes(m.y), row, as_bytes(m.cbcr), row, as_bytes(opaque), row, as_bytes(y), row, as_bytes(cbcr),
                   row, width, 1);
    EXPECT_TRUE(y == m.y);
    EXPECT_TRUE(cbcr == m.cbcr);
  });
}

// The 10-bit formats of cards. A pair of yuyv_matrox_10, taken out of its group.

struct packed {
  std::array<int, 4> upper;  // Y0 Cb Y1 Cr
  int lower;
};

packed pair_of(const bytes& yuyv, std::size_t pair) {
  const std::size_t group = pair / 8 * 40;
  packed result{};
  for (std::size_t i = 0; i < 4; ++i) result.upper[i] = yuyv[group + pair % 8 * 4 + i];
  result.lower = yuyv[group + 32 + pair % 8];
  return result;
}

void put(bytes& yuyv, std::size_t pair, const packed& p) {
  const std::size_t group = pair / 8 * 40;
  for (std::size_t i = 0; i < 4; ++i) yuyv[group + pair % 8 * 4 + i] = static_cast<std::uint8_t>(p.upper[i]);
  yuyv[group + 32 + pair % 8] = static_cast<std::uint8_t>(p.lower);
}

packed packed_from(int y0, int cb, int y1, int cr) {
  const auto lower = [](int word) { return word / 64 % 4; };
  return {{y0 / 256, cb / 256, y1 / 256, cr / 256}, lower(y0) + 4 * lower(cb) + 16 * lower(y1) + 64 * lower(cr)};
}

void expect_pair(const bytes& yuyv, std::size_t pair, const packed& wanted) {
  const packed got = pair_of(yuyv, pair);
  ASSERT_EQ(got.upper, wanted.upper) << "pair " << pair;
  ASSERT_EQ(got.lower, wanted.lower) << "pair " << pair;
}

constexpr std::size_t packed_bytes(std::size_t pixels) {
  return pixels / 16 * 40;
}
constexpr int packed_row = static_cast<int>(packed_bytes(values));

TEST_P(exhaustive_16, all_words_packed_in_10_bits_and_returned) {
  images_of_all_words([](const image& m) {
    bytes yuyv(packed_bytes(values));
    fc::p216::yuyv_matrox_10(as_bytes(m.y), row, as_bytes(m.cbcr), row, yuyv.data(), packed_row, width, 1);
    for (std::size_t k = 0; k < values / 2; ++k)
      expect_pair(yuyv, k, packed_from(m.y[2 * k], m.cbcr[2 * k], m.y[2 * k + 1], m.cbcr[2 * k + 1]));

    words y(values), cbcr(values);
    fc::yuyv_matrox_10::p216(yuyv.data(), packed_row, as_bytes(y), row, as_bytes(cbcr), row, width, 1);
    compare(
        "luma", values, [&](std::size_t i) { return int{y[i]}; },
        [&](std::size_t i) { return m.y[i] & (i % 2 == 0 ? 0xC0 : 0xFFC0); });
    compare(
        "chroma", values, [&](std::size_t i) { return int{cbcr[i]}; },
        [&](std::size_t i) { return m.cbcr[i] & 0xFFC0; });
  });
}

TEST_P(exhaustive_16, all_10_bit_samples_to_uyvy) {
  images_of_all_words([](const image& m) {
    bytes yuyv(packed_bytes(values)), uyvy(2 * values);
    for (std::size_t k = 0; k < values / 2; ++k)
      put(yuyv, k, packed_from(m.y[2 * k], m.cbcr[2 * k], m.y[2 * k + 1], m.cbcr[2 * k + 1]));
    fc::yuyv_matrox_10::uyvy(yuyv.data(), packed_row, uyvy.data(), row, width, 1);
    compare(
        "byte", 2 * values, [&](std::size_t i) { return int{uyvy[i]}; },
        [&](std::size_t i) { return (i % 2 == 0 ? m.cbcr : m.y)[i / 2] / 256; });
  });
}

TEST_P(exhaustive_16, all_alphas_packed_as_a_picture) {
  images_of_all_words([](const image& m) {
    bytes yuyv(packed_bytes(values));
    fc::alpha_u16::yuyv_matrox_10(as_bytes(m.alpha), row, yuyv.data(), packed_row, width, 1);
    for (std::size_t k = 0; k < values / 2; ++k)
      expect_pair(yuyv, k, packed_from(m.alpha[2 * k], 32768, m.alpha[2 * k + 1], 32768));
  });
}

TEST_P(exhaustive_16, samples_with_alphas_over_black_packed_in_10_bits) {
  bytes yuyv(packed_bytes(2 * values));
  const auto stride = static_cast<int>(yuyv.size());
  samples_with_alphas([&](const composed& pairs) {
    fc::pa16::yuyv_matrox_10(as_bytes(pairs.y), row_of_pairs, as_bytes(pairs.cbcr), row_of_pairs, as_bytes(pairs.alpha),
                             row_of_pairs, yuyv.data(), stride, pixels_of_pairs, 1);
    for (std::size_t k = 0; k < values; ++k) {
      const int even = pairs.alpha[2 * k];
      const int y0 = over_black(pairs.y[2 * k], 4096, even);
      const int y1 = over_black(pairs.y[2 * k + 1], 4096, pairs.alpha[2 * k + 1]);
      const int cb = over_black(pairs.cbcr[2 * k], 32768, even);
      const int cr = over_black(pairs.cbcr[2 * k + 1], 32768, even);
      expect_pair(yuyv, k, packed_from(y0, cb, y1, cr / 256 * 256 + cb % 256));
      if (testing::Test::HasFatalFailure()) FAIL() << pair_text(pairs, k);
    }
  });
}

// In the pairs above Cb and Cr are one sample, whose lower bits cannot be told apart.
TEST_P(exhaustive_16, lower_bits_of_packed_cr_are_those_of_cb) {
  images_of_all_words([](const image& m) {
    bytes yuyv(packed_bytes(values));
    fc::pa16::yuyv_matrox_10(as_bytes(m.y), row, as_bytes(m.cbcr), row, as_bytes(m.alpha), row, yuyv.data(), packed_row,
                             width, 1);
    for (std::size_t k = 0; k < values / 2; ++k) {
      const int cb = over_black(m.cbcr[2 * k], 32768, m.alpha[2 * k]);
      const int cr = over_black(m.cbcr[2 * k + 1], 32768, m.alpha[2 * k]);
      expect_pair(yuyv, k,
                  packed_from(over_black(m.y[2 * k], 4096, m.alpha[2 * k]), cb,
                              over_black(m.y[2 * k + 1], 4096, m.alpha[2 * k + 1]), cr / 256 * 256 + cb % 256));
      if (testing::Test::HasFatalFailure()) return;
    }
  });
}

TEST_P(exhaustive_16, all_words_in_32_bit_pixels_and_returned) {
  images_of_all_words([](const image& m) {
    std::vector<std::uint32_t> pixels(values);
    auto* data = reinterpret_cast<std::uint8_t*>(pixels.data());
    fc::pa16::yua_yva_matrox_10(as_bytes(m.y), row, as_bytes(m.cbcr), row, as_bytes(m.alpha), row, data, 4 * width,
                                width, 1);
    compare(
        "pixel", values, [&](std::size_t i) { return pixels[i]; },
        [&](std::size_t i) { return m.y[i] / 64U + m.cbcr[i] / 64U * 1024U + m.alpha[i] / 64U * 1048576U; });

    for (std::size_t i = 0; i < values; ++i) pixels[i] |= static_cast<std::uint32_t>(i / 3 % 4) << 30;
    words y(values), cbcr(values), alpha(values);
    fc::yua_yva_matrox_10::pa16(data, 4 * width, as_bytes(y), row, as_bytes(cbcr), row, as_bytes(alpha), row, width, 1);
    const auto returned = [](const words& got, const words& from) {
      compare(
          "word", values, [&](std::size_t i) { return int{got[i]}; }, [&](std::size_t i) { return from[i] & 0xFFC0; });
    };
    returned(y, m.y);
    returned(cbcr, m.cbcr);
    returned(alpha, m.alpha);
  });
}

// BT.2020.

int clamp(int t) {
  return t < 64 ? 0 : t >= 16320 ? 255 : t >> 6;
}

// A row of pairs holds every luma in both places, in opposite directions; the low bytes, which do not count, are
// anything.
TEST_P(exhaustive_16, all_triples_through_the_2020_matrix) {
  constexpr std::size_t pixels = 512;
  words y(pixels), cbcr(pixels);
  bytes rgbx(4 * pixels);
  for (int chroma = 0; chroma < 65536; chroma += thin() ? 37 : 1) {
    const int u = chroma / 256;
    const int v = chroma % 256;
    for (std::size_t i = 0; i < pixels; ++i) {
      const auto anything = static_cast<int>(i * 37 + static_cast<std::size_t>(chroma)) % 256;
      const auto luma = static_cast<int>(i % 2 == 0 ? i / 2 : 255 - i / 2);
      y[i] = static_cast<std::uint16_t>(luma * 256 + anything);
      cbcr[i] = static_cast<std::uint16_t>((i % 2 == 0 ? u : v) * 256 + 255 - anything);
    }
    fc::p216::rgbx_2020(as_bytes(y), 1024, as_bytes(cbcr), 1024, rgbx.data(), 2048, pixels, 1);
    for (std::size_t i = 0; i < pixels; ++i) {
      const int luma = 74 * (y[i] / 256) - 1192;
      const std::array<int, 4> wanted = {clamp(luma + 107 * (v - 128)), clamp(luma - 12 * (u - 128) - 42 * (v - 128)),
                                         clamp(luma + 137 * (u - 128)), 255};
      const std::array<int, 4> got = {rgbx[4 * i], rgbx[4 * i + 1], rgbx[4 * i + 2], rgbx[4 * i + 3]};
      ASSERT_EQ(got, wanted) << "Y " << y[i] / 256 << " Cb " << u << " Cr " << v << " pixel " << i;
    }
  }
}

}  // namespace
}  // namespace morvane::tests
