// Every sample from and to the 10-bit formats of cards, on every backend.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "exhaustive/all_words.h"

namespace morvane::tests {
namespace {

class exhaustive_card_10 : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_card_10, all_backends(), backend_name);

// v210: every sample in every position of a group, in each of nine groups, the others being its complement; the two
// unused bits of the words are set in every other group.
TEST_P(exhaustive_card_10, all_v210_samples_in_all_positions) {
  constexpr unsigned groups = 9;
  std::array<std::uint8_t, 16 * groups> source{};
  std::array<std::uint8_t, 12 * groups> video{};
  for (unsigned position = 0; position < 12; ++position)
    for (unsigned value = 0; value < 1024; ++value) {
      const auto sample = [&](unsigned i) { return i % 12 == position ? value : 1023 - value; };
      for (unsigned word = 0; word < 4 * groups; ++word) {
        const unsigned packed = sample(3 * word) | sample(3 * word + 1) << 10 | sample(3 * word + 2) << 20 |
                                (word / 4 % 2 != 0 ? 3U << 30 : 0U);
        for (unsigned byte = 0; byte < 4; ++byte)
          source[4 * word + byte] = static_cast<std::uint8_t>(packed >> (8 * byte));
      }
      fc::v210::uyvy(source.data(), 16 * groups, video.data(), 12 * groups, 6 * groups, 1);
      for (unsigned i = 0; i + 4 < 12 * groups; ++i)
        ASSERT_EQ(video[i], sample(i) >> 2) << "sample " << i << " of value " << value << " at position " << position;
    }
}

// A pair of yuyv_matrox_10, taken out of its group.

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

TEST_P(exhaustive_card_10, all_words_packed_in_10_bits_and_returned) {
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

TEST_P(exhaustive_card_10, all_10_bit_samples_to_uyvy) {
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

TEST_P(exhaustive_card_10, all_alphas_packed_as_a_picture) {
  images_of_all_words([](const image& m) {
    bytes yuyv(packed_bytes(values));
    fc::alpha_u16::yuyv_matrox_10(as_bytes(m.alpha), row, yuyv.data(), packed_row, width, 1);
    for (std::size_t k = 0; k < values / 2; ++k)
      expect_pair(yuyv, k, packed_from(m.alpha[2 * k], 32768, m.alpha[2 * k + 1], 32768));
  });
}

TEST_P(exhaustive_card_10, samples_with_alphas_over_black_packed_in_10_bits) {
  bytes yuyv(packed_bytes(2 * values));
  const auto stride = static_cast<int>(yuyv.size());
  samples_with_alphas([&](const composed& pairs) {
    fc::pa16::yuyv_matrox_10(as_bytes(pairs.y), row_of_pairs, as_bytes(pairs.cbcr), row_of_pairs, as_bytes(pairs.alpha),
                             row_of_pairs, yuyv.data(), stride, pixels_of_pairs, 1);
    for (std::size_t k = 0; k < values; ++k) {
      const int even = pairs.alpha[2 * k];
      const int y0 = word_over_black(pairs.y[2 * k], 4096, even);
      const int y1 = word_over_black(pairs.y[2 * k + 1], 4096, pairs.alpha[2 * k + 1]);
      const int cb = word_over_black(pairs.cbcr[2 * k], 32768, even);
      const int cr = word_over_black(pairs.cbcr[2 * k + 1], 32768, even);
      expect_pair(yuyv, k, packed_from(y0, cb, y1, cr / 256 * 256 + cb % 256));
      if (testing::Test::HasFatalFailure()) FAIL() << pair_text(pairs, k);
    }
  });
}

// In the pairs above Cb and Cr are one sample, whose lower bits cannot be told apart.
TEST_P(exhaustive_card_10, lower_bits_of_packed_cr_are_those_of_cb) {
  images_of_all_words([](const image& m) {
    bytes yuyv(packed_bytes(values));
    fc::pa16::yuyv_matrox_10(as_bytes(m.y), row, as_bytes(m.cbcr), row, as_bytes(m.alpha), row, yuyv.data(), packed_row,
                             width, 1);
    for (std::size_t k = 0; k < values / 2; ++k) {
      const int cb = word_over_black(m.cbcr[2 * k], 32768, m.alpha[2 * k]);
      const int cr = word_over_black(m.cbcr[2 * k + 1], 32768, m.alpha[2 * k]);
      expect_pair(yuyv, k,
                  packed_from(word_over_black(m.y[2 * k], 4096, m.alpha[2 * k]), cb,
                              word_over_black(m.y[2 * k + 1], 4096, m.alpha[2 * k + 1]), cr / 256 * 256 + cb % 256));
      if (testing::Test::HasFatalFailure()) return;
    }
  });
}

TEST_P(exhaustive_card_10, all_words_in_32_bit_pixels_and_returned) {
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

}  // namespace
}  // namespace morvane::tests
