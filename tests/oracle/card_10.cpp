// Expectations: the 10-bit formats of capture and playout cards.
#include "card_10.h"

#include "parts.h"

namespace morvane::tests::oracle {
namespace {

// v210. Whole groups of six pixels and the pairs behind them, but not the pair that holds the last pixel.

int v210_sample(const std::uint8_t* line, int index) {
  const std::uint8_t* w = line + 4 * (index / 3);
  const std::uint32_t word = w[0] + 256U * w[1] + 65536U * w[2] + 16777216U * w[3];
  return static_cast<int>(word >> (10 * (index % 3)) & 1023U);
}

void v210_to_uyvy(const call& c) {
  const bool tight = c.source.stride[0] * 6 == c.xres * 16 && c.destination.stride[0] == 2 * c.xres;
  one_line_if(tight, c, [](const line& l, int pixels) {
    const int written = 2 * ((pixels - 1) / 2);
    for (int i = 0; i < 2 * written; ++i) l.destination[0][i] = byte(v210_sample(l.source[0], i) / 4);
  });
}

// yuyv_matrox_10. Every pair of a line, that of a last odd pixel included. The tight stride is 40 / 16 bytes a pixel:
// that of an odd width is no whole number of bytes, so its rows are never one line.
bool groups_are_tight(const call& c, int yuyv_stride) {
  return yuyv_stride * 16 == c.xres * 40;
}

// From yuyv_matrox_10.

std::uint32_t sample_of(const packed_pair<const std::uint8_t>& p, int index) {
  return p.upper[index] * 256U + (*p.lower >> (2 * index) & 3U) * 64U;
}

void yuyv_to_p216(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const auto p = pair_in_group(l.source[0], k);
      put_word(l.destination[0] + 4 * k, (*p.lower & 3U) * 64U);
      put_word(l.destination[1] + 4 * k, sample_of(p, 1));
      put_word(l.destination[0] + 4 * k + 2, sample_of(p, 2));
      put_word(l.destination[1] + 4 * k + 2, sample_of(p, 3));
    }
  });
}

void yuyv_to_uyvy(const call& c) {
  const bool tight = groups_are_tight(c, c.source.stride[0]) && c.destination.stride[0] == 2 * c.xres;
  one_line_if(tight, c, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k)
      for (int i = 0; i < 4; ++i) l.destination[0][4 * k + i] = pair_in_group(l.source[0], k).upper[i ^ 1];
  });
}

// To yuyv_matrox_10.

ten_bits of_word(std::uint32_t word) {
  return {word >> 8, word >> 6 & 3U};
}

void p216_to_yuyv(const call& c) {
  const int words = 2 * c.xres;
  const bool words_are_tight = c.source.stride[0] == words && c.source.stride[1] == words;
  one_line_if(words_are_tight && groups_are_tight(c, c.destination.stride[0]), c, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* y = l.source[0] + 4 * k;
      const std::uint8_t* cbcr = l.source[1] + 4 * k;
      put_pair(l.destination[0], k, of_word(word_at(y)), of_word(word_at(cbcr)), of_word(word_at(y + 2)),
               of_word(word_at(cbcr + 2)));
    }
  });
}

// The samples over black in the upper 16 of 32 bits; their offset comes back afterwards.
std::uint32_t weighted(std::uint32_t sample, std::uint32_t black, std::uint32_t alpha) {
  return (sample - black) * (alpha + 1);
}

ten_bits luma_of(std::uint32_t p) {
  return {((p >> 16) + 4096U) >> 8 & 255U, p >> 22 & 3U};
}

void pa16_to_yuyv(const call& c) {
  const int words = 2 * c.xres;
  const bool words_are_tight =
      c.source.stride[0] == words && c.source.stride[1] == words && c.source.stride[2] == words;
  one_line_if(words_are_tight && groups_are_tight(c, c.destination.stride[0]), c, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint32_t a0 = word_at(l.source[2] + 4 * k);
      const std::uint32_t a1 = word_at(l.source[2] + 4 * k + 2);
      const std::uint32_t p0 = weighted(word_at(l.source[0] + 4 * k), 4096, a0);
      const std::uint32_t p1 = weighted(word_at(l.source[0] + 4 * k + 2), 4096, a1);
      const std::uint32_t q = weighted(word_at(l.source[1] + 4 * k), 32768, a0);
      const std::uint32_t r = weighted(word_at(l.source[1] + 4 * k + 2), 32768, a0);
      const std::uint32_t bits_of_cb = q >> 22 & 3U;
      put_pair(l.destination[0], k, luma_of(p0), {q >> 24 ^ 128U, bits_of_cb}, luma_of(p1),
               {r >> 24 ^ 128U, bits_of_cb});
    }
  });
}

void alpha_to_yuyv(const call& c) {
  const bool tight = groups_are_tight(c, c.destination.stride[0]) && c.source.stride[0] == 2 * c.xres;
  one_line_if(tight, c, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k)
      put_pair(l.destination[0], k, of_word(word_at(l.source[0] + 4 * k)), {128, 0},
               of_word(word_at(l.source[0] + 4 * k + 2)), {128, 0});
  });
}

// yua_yva_matrox_10, pixel by pixel: chroma samples lie as close as pixels do.

void pa16_to_yua_yva(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const std::uint32_t y = word_at(l.source[0] + 2 * i);
      const std::uint32_t chroma = word_at(l.source[1] + 2 * i);
      const std::uint32_t alpha = word_at(l.source[2] + 2 * i);
      const std::uint32_t packed = y >> 6 | (chroma << 4 & 0xFFC00U) | (alpha << 14 & 0x3FF00000U);
      put_word(l.destination[0] + 4 * i, packed);
      put_word(l.destination[0] + 4 * i + 2, packed >> 16);
    }
  });
}

void yua_yva_to_pa16(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const std::uint32_t packed = word_at(l.source[0] + 4 * i) + 65536U * word_at(l.source[0] + 4 * i + 2);
      put_word(l.destination[0] + 2 * i, packed << 6);
      put_word(l.destination[1] + 2 * i, packed >> 4 & 0xFFC0U);
      put_word(l.destination[2] + 2 * i, packed >> 14 & 0xFFC0U);
    }
  });
}

constexpr entry entries[] = {
    {"v210::uyvy", "uyvy", v210_to_uyvy},

    {"yuyv_matrox_10::uyvy", "uyvy", yuyv_to_uyvy},
    {"yuyv_matrox_10::p216", "p216", yuyv_to_p216},
    {"p216::yuyv_matrox_10", "yuyv_matrox_10", p216_to_yuyv},
    {"pa16::yuyv_matrox_10", "yuyv_matrox_10", pa16_to_yuyv},
    {"alpha_u16::yuyv_matrox_10", "yuyv_matrox_10", alpha_to_yuyv},

    {"pa16::yua_yva_matrox_10", "yua_yva_matrox_10", pa16_to_yua_yva},
    {"yua_yva_matrox_10::pa16", "pa16", yua_yva_to_pa16},
};

}  // namespace

std::span<const entry> expectations_of_card_10() {
  return entries;
}

}  // namespace morvane::tests::oracle
