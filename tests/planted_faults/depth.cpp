// Faults around and in place of conversions of samples from one depth to another.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void chroma_of_odd_height_left_out(const call& c) {
  call even = c;
  even.yres -= c.yres % 2;
  right("y_uv::p216", "p216", even);
  if (!has_pixels(c)) return;
  for (int x = 0; x < c.xres; ++x) write(c, 0, c.yres - 1, x, source_row(c, 0, c.yres - 1)[x] * 256U);
}

void last_chroma_row_written_once(const call& c) {
  right("y_uv::p216", "p216", c);
  if (has_pixels(c) && c.yres % 2 == 0) write(c, 1, c.yres - 1, 0, 0x1234);
}

template <unsigned (*rule)(unsigned)>
void words_by(const call& c) {
  each_pixel(c, [&](int y, int x) { write(c, 0, y, x, rule(read(c, 0, y, x))); });
}

unsigned without_replication(unsigned a) {
  return a << 6;
}

unsigned clamped_to_12_bits(unsigned a) {
  return a > 4095 ? 65535 : (a << 4) + (a >> 8);
}

void low_byte_of_alpha_zero(const call& c) {
  each_pixel(c, [&](int y, int x) { write(c, 0, y, x, source_row(c, 0, y)[x] * 256U); });
}

void luma_clamped(const call& c) {
  each_pixel(c, [&](int y, int x) {
    const unsigned luma = read(c, 0, y, x) >> 2;
    row_of_plane(c, 0, y)[x] = static_cast<std::uint8_t>(luma > 255 ? 255 : luma);
  });
}

void words_swapped_at_odd_addresses(const call& c) {
  right("alpha_u16::alpha", "alpha", c);
  if (has_pixels(c) && reinterpret_cast<std::uintptr_t>(c.source.data[0]) % 2 != 0)
    c.destination.data[0][0] = c.source.data[0][0];
}

void one_word_of_red(const call& c) {
  right("bgra64::alpha16", "alpha_u16", c);
  if (has_pixels(c)) write(c, 0, c.yres - 1, c.xres - 1, read(c, 0, c.yres - 1, 4 * c.xres - 2));
}

constexpr fault faults[] = {
    {"chroma_of_odd_height_left_out", "y_uv::p216", "p216", chroma_of_odd_height_left_out, "destination plane cbcr"},
    {"last_chroma_row_written_once", "y_uv::p216", "p216", last_chroma_row_written_once, "destination plane cbcr"},
    {"without_replication", "alpha_10u16::alpha_u16", "alpha_u16", words_by<without_replication>,
     "destination plane alpha"},
    {"clamped_to_12_bits", "alpha_12u16::alpha_u16", "alpha_u16", words_by<clamped_to_12_bits>,
     "destination plane alpha"},
    {"low_byte_of_alpha_zero", "alpha::alpha_u16", "alpha_u16", low_byte_of_alpha_zero, "(row 0, byte 0)"},
    {"luma_clamped", "y_10u16::y", "y", luma_clamped, "got 255"},
    {"words_swapped_at_odd_addresses", "alpha_u16::alpha", "alpha", words_swapped_at_odd_addresses, "byte 0"},
    {"one_word_of_red", "bgra64::alpha16", "alpha_u16", one_word_of_red, "destination plane alpha"},
};

}  // namespace

std::span<const fault> faults_of_depth() {
  return faults;
}

}  // namespace morvane::tests
