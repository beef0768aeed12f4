// Expectations: samples from one depth to another. A sample is converted by itself, so that only its place in the row
// matters.
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

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

std::uint32_t times_256(std::uint32_t y) {
  return y * 256;
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

void widen(const std::uint8_t* s, std::uint8_t* d, int samples) {
  for (int i = 0; i < samples; ++i) put_word(d + 2 * i, times_256(s[i]));
}

// Chroma alone: xres counts the bytes of a row, of which the last pair is completed.
void cbcr_8_420_to_16_422(const call& c) {
  for (int row = 0; row < 2 * c.yres; ++row) widen(read_row(c, 0, row / 2), written_row(c, 0, row), 2 * pairs(c.xres));
}

// Rows of chroma are read until yres * stride / 2 bytes are passed. At odd heights that is a row more than yres / 2,
// unless the stride is a single byte, whose half is nothing.
void y_uv_to_p216(const call& c) {
  if (c.xres < 1 || c.yres < 1) return;
  for (int row = 0; row < c.yres; ++row) widen(read_row(c, 0, row), written_row(c, 0, row), c.xres);
  const std::ptrdiff_t stride = c.source.stride[1];
  const std::ptrdiff_t end = c.yres * stride / 2;
  int row = 0;
  for (std::ptrdiff_t at = 0; stride > 0 ? at < end : at > end; at += stride) {
    widen(c.source.data[1] + at, written_row(c, 1, row), c.xres);
    widen(c.source.data[1] + at, written_row(c, 1, row + 1), c.xres);
    row += 2;
  }
}

constexpr entry entries[] = {
    {"y::y16", "y16", each_sample<times_256, 1, 0, 2>},
    {"y_uv::p216", "p216", y_uv_to_p216},
    {"cbcr_8_420::cbcr_16_422", "cbcr_16_422", cbcr_8_420_to_16_422},
    {"alpha::alpha_u16", "alpha_u16", each_sample<twice, 1, 0, 2>},
    {"alpha_u16::alpha", "alpha", each_sample<upper_byte, 2, 0, 1>},
    {"alpha_10u16::alpha_u16", "alpha_u16", each_sample<from_10_bits, 2, 0, 2>},
    {"alpha_12u16::alpha_u16", "alpha_u16", each_sample<from_12_bits, 2, 0, 2>},
    {"y_10u16::y", "y", each_sample<without_two_bits, 2, 0, 1>},
    {"bgra64::alpha16", "alpha_u16", each_sample<same, 8, 6, 2>},
};

}  // namespace

std::span<const entry> expectations_of_depth() {
  return entries;
}

}  // namespace morvane::tests::oracle
