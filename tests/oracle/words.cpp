// Expectations: planes of 16 bits from and to 8-bit video, over black, and as 4:4:4 of words and of floats.
#include <algorithm>
#include <bit>

#include "parts.h"

namespace morvane::tests::oracle {
namespace {

// To 16 bits.

void uyvy_to_p216(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {2 * c.xres, 2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* uyvy = l.source[0] + 4 * k;
      put_word(l.destination[0] + 4 * k, uyvy[1] * 256U);
      put_word(l.destination[0] + 4 * k + 2, uyvy[3] * 256U);
      put_word(l.destination[1] + 4 * k, uyvy[0] * 256U);
      put_word(l.destination[1] + 4 * k + 2, uyvy[2] * 256U);
    }
  });
}

void ycbcra_to_pa16(const call& c) {
  bool opaque = true;
  const int words = 2 * c.xres;
  one_line_or_each_row(c, {4 * c.xres}, {words, words, words}, [&](const line& l, int pixels) {
    for (int i = 0; i < 2 * pairs(pixels); ++i) {
      const std::uint8_t* pixel = l.source[0] + 4 * i;
      put_word(l.destination[0] + 2 * i, pixel[0] * 256U);
      put_word(l.destination[2] + 2 * i, pixel[3] * 257U);
      if (pixel[3] != 255) opaque = false;
      if (i % 2 != 0) continue;
      put_word(l.destination[1] + 2 * i, pixel[1] * 256U);
      put_word(l.destination[1] + 2 * i + 2, pixel[2] * 256U);
    }
  });
  report(c, opaque);
}

// From p216.

void p216_to_yuy2(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, 2 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < 2 * pixels; i += 2) {
      l.destination[0][i] = l.source[0][i + 1];
      l.destination[0][i + 1] = l.source[1][i + 1];
    }
  });
}

void p216_to_uyvy(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, 2 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      l.destination[0][2 * i] = l.source[1][2 * i + 1];
      l.destination[0][2 * i + 1] = l.source[0][2 * i + 1];
    }
  });
}

// From pa16.

// Chroma takes the alpha of the even pixel for both of its samples.
void pa16_to_p216(const call& c) {
  const int words = 2 * c.xres;
  one_line_or_each_row(c, {words, words, words}, {words, words}, [](const line& l, int pixels) {
    for (int i = 0; i < 2 * pairs(pixels); ++i) {
      const std::uint32_t own_alpha = word_at(l.source[2] + 2 * i);
      const std::uint32_t even_alpha = word_at(l.source[2] + i / 2 * 4);
      const std::uint32_t luma = word_at(l.source[0] + 2 * i) - 4096U;
      const std::uint32_t chroma = word_at(l.source[1] + 2 * i) - 32768U;
      put_word(l.destination[0] + 2 * i, ((luma * own_alpha + luma) >> 16) + 4096U);
      put_word(l.destination[1] + 2 * i, ((chroma * even_alpha + chroma) >> 16) ^ 32768U);
    }
  });
}

void pa16_to_vuya_16(const call& c) {
  const int words = 2 * c.xres;
  one_line_or_each_row(c, {words, words, words}, {8 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < 2 * pairs(pixels); ++i) {
      std::uint8_t* pixel = l.destination[0] + 8 * i;
      copy(l.source[1] + i / 2 * 4, pixel, 4);
      copy(l.source[0] + 2 * i, pixel + 4, 2);
      copy(l.source[2] + 2 * i, pixel + 6, 2);
    }
  });
}

void put_float(std::uint8_t* d, float value) {
  const auto bits = std::bit_cast<std::uint32_t>(value);
  put_word(d, bits);
  put_word(d + 2, bits >> 16);
}

float above_black(std::uint32_t sample) {
  return static_cast<float>(static_cast<int>(std::max(sample, 4096U)) - 4096);
}

float chroma_of(std::uint32_t sample) {
  return std::min(above_black(sample) / 57344.0F - 0.5F, 0.5F);
}

void pa16_to_vuya_f32(const call& c) {
  const int words = 2 * c.xres;
  one_line_or_each_row(c, {words, words, words}, {16 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < 2 * pairs(pixels); ++i) {
      const std::uint8_t* cbcr = l.source[1] + i / 2 * 4;
      std::uint8_t* pixel = l.destination[0] + 16 * i;
      put_float(pixel, chroma_of(word_at(cbcr + 2)));
      put_float(pixel + 4, chroma_of(word_at(cbcr)));
      put_float(pixel + 8, std::min(above_black(word_at(l.source[0] + 2 * i)) / 56064.0F, 1.0F));
      put_float(pixel + 12, static_cast<float>(word_at(l.source[2] + 2 * i)) / 65535.0F);
    }
  });
}

constexpr entry entries[] = {
    {"uyvy::p216", "p216", uyvy_to_p216},
    {"ycbcra::pa16", "pa16", ycbcra_to_pa16},
    {"p216::uyvy", "uyvy", p216_to_uyvy},
    {"p216::yuy2", "yuy2", p216_to_yuy2},
    {"pa16::p216", "p216", pa16_to_p216},
    {"pa16::vuya_16", "vuya_16", pa16_to_vuya_16},
    {"pa16::vuya_f32", "vuya_f32", pa16_to_vuya_f32},
};

}  // namespace

std::span<const entry> expectations_of_words() {
  return entries;
}

}  // namespace morvane::tests::oracle
