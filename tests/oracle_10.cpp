// Expectations: the 10-bit formats of Matrox cards, and the depths of planes of alpha and luma.
#include "oracle_parts.h"

namespace morvane::tests::oracle {
namespace {

// Every pair of a line, that of a last odd pixel included, and where it lies in its group of 16 pixels: four bytes with
// the upper eight bits of its samples, and one byte with their lower two, the first sample in the lowest bits.
template <class Byte>
struct packed_pair {
  Byte* upper;
  Byte* lower;
};

template <class Byte>
packed_pair<Byte> pair_in_group(Byte* line, int k) {
  Byte* group = line + k / 8 * 40;
  return {group + 4 * (k % 8), group + 32 + k % 8};
}

// As one_line_or_each_row, for calls with a plane of yuyv_matrox_10, whose tight stride is 40 / 16 bytes a pixel: that
// of an odd width is no whole number of bytes, so its rows are never one line.
template <class Convert>
void groups_in_one_line_or_rows(const call& c, int yuyv_stride, bool others_are_tight, Convert convert) {
  if (c.xres < 1 || c.yres < 1) return;
  if (c.yres == 1 || (others_are_tight && yuyv_stride * 16 == c.xres * 40))
    convert(line{c.source.data, c.destination.data}, c.xres * c.yres);
  else
    each_row(c, convert);
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
  groups_in_one_line_or_rows(c, c.source.stride[0], c.destination.stride[0] == 2 * c.xres,
                             [](const line& l, int pixels) {
                               for (int k = 0; k < pairs(pixels); ++k)
                                 for (int i = 0; i < 4; ++i)
                                   l.destination[0][4 * k + i] = pair_in_group(l.source[0], k).upper[i ^ 1];
                             });
}

// To yuyv_matrox_10.

struct ten_bits {
  std::uint32_t upper, lower;
};

ten_bits of_word(std::uint32_t word) {
  return {word >> 8, word >> 6 & 3U};
}

void put_pair(std::uint8_t* line, int k, ten_bits y0, ten_bits cb, ten_bits y1, ten_bits cr) {
  const auto p = pair_in_group(line, k);
  p.upper[0] = static_cast<std::uint8_t>(y0.upper);
  p.upper[1] = static_cast<std::uint8_t>(cb.upper);
  p.upper[2] = static_cast<std::uint8_t>(y1.upper);
  p.upper[3] = static_cast<std::uint8_t>(cr.upper);
  *p.lower = static_cast<std::uint8_t>(y0.lower + 4 * cb.lower + 16 * y1.lower + 64 * cr.lower);
}

void black_yuyv(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) put_pair(l.destination[0], k, {16, 0}, {128, 0}, {16, 0}, {128, 0});
  });
}

void p216_to_yuyv(const call& c) {
  groups_in_one_line_or_rows(c, c.destination.stride[0],
                             c.source.stride[0] == 2 * c.xres && c.source.stride[1] == 2 * c.xres,
                             [](const line& l, int pixels) {
                               for (int k = 0; k < pairs(pixels); ++k) {
                                 const std::uint8_t* y = l.source[0] + 4 * k;
                                 const std::uint8_t* cbcr = l.source[1] + 4 * k;
                                 put_pair(l.destination[0], k, of_word(word_at(y)), of_word(word_at(cbcr)),
                                          of_word(word_at(y + 2)), of_word(word_at(cbcr + 2)));
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
  groups_in_one_line_or_rows(c, c.destination.stride[0], words_are_tight, [](const line& l, int pixels) {
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
  groups_in_one_line_or_rows(c, c.destination.stride[0], c.source.stride[0] == 2 * c.xres,
                             [](const line& l, int pixels) {
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

// Depths. A sample is converted by itself, so that only its place in the row matters.

template <auto rule, int read_bytes, int first_byte, int written_bytes>
void each_sample(const call& c) {
  each_row(c, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const std::uint8_t* s = l.source[0] + read_bytes * i + first_byte;
      std::uint8_t* d = l.destination[0] + written_bytes * i;
      const std::uint32_t result = rule(read_bytes == 1 ? *s : word_at(s));
      if (written_bytes == 1)
        *d = static_cast<std::uint8_t>(result & 255U);
      else
        put_word(d, result);
    }
  });
}

std::uint32_t twice(std::uint32_t a) {
  return a * 257;
}
std::uint32_t upper_byte(std::uint32_t a) {
  return a >> 8;
}
std::uint32_t from_10_bits(std::uint32_t a) {
  return (a << 6) + (a >> 4);
}
std::uint32_t from_12_bits(std::uint32_t a) {
  return (a << 4) + (a >> 8);
}
std::uint32_t without_two_bits(std::uint32_t y) {
  return y >> 2;
}
std::uint32_t same(std::uint32_t a) {
  return a;
}

constexpr entry entries[] = {
    {"yuyv_matrox_10::uyvy", "uyvy", yuyv_to_uyvy},
    {"yuyv_matrox_10::p216", "p216", yuyv_to_p216},
    {"yuyv_matrox_10::black", "yuyv_matrox_10", black_yuyv},
    {"p216::yuyv_matrox_10", "yuyv_matrox_10", p216_to_yuyv},
    {"pa16::yuyv_matrox_10", "yuyv_matrox_10", pa16_to_yuyv},
    {"alpha_u16::yuyv_matrox_10", "yuyv_matrox_10", alpha_to_yuyv},

    {"pa16::yua_yva_matrox_10", "yua_yva_matrox_10", pa16_to_yua_yva},
    {"yua_yva_matrox_10::pa16", "pa16", yua_yva_to_pa16},

    {"alpha::alpha_u16", "alpha_u16", each_sample<twice, 1, 0, 2>},
    {"alpha_u16::alpha", "alpha", each_sample<upper_byte, 2, 0, 1>},
    {"alpha_10u16::alpha_u16", "alpha_u16", each_sample<from_10_bits, 2, 0, 2>},
    {"alpha_12u16::alpha_u16", "alpha_u16", each_sample<from_12_bits, 2, 0, 2>},
    {"y_10u16::y", "y", each_sample<without_two_bits, 2, 0, 1>},
    {"bgra64::alpha16", "alpha_u16", each_sample<same, 8, 6, 2>},
};

}  // namespace

std::span<const entry> expectations_of_10_bits_and_depths() {
  return entries;
}

}  // namespace morvane::tests::oracle
