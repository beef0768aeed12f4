// Faults around and in place of conversions of planes of 16 bits.
#include <bit>
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void word_behind_completed_pair(const call& c) {
  right("uyvy::p216", "p216", c);
  if (has_pixels(c) && c.destination.stride[1] > 0) row_of_plane(c, 1, c.yres - 1)[2 * (c.xres + c.xres % 2)] ^= 255;
}

void completed_pair_left_out(const call& c) {
  call shorter = c;
  shorter.xres -= c.xres % 2;
  right("pa16::vuya_16", "vuya_16", shorter);
}

void completed_pixel_not_in_report(const call& c) {
  right("ycbcra::pa16", "pa16", c);
  if (c.opaque == nullptr || c.yres != 1 || c.xres % 2 == 0) return;
  call shorter = c;
  shorter.xres -= 1;
  right("ycbcra::pa16", "pa16", shorter);
  if (c.source.data[0][4 * c.xres - 1] != 255) *c.opaque = false;
}

void rounded_to_bytes(const call& c) {
  right("p216::uyvy", "uyvy", c);
  each_pixel(c, [&](int y, int x) {
    const unsigned luma = read(c, 0, y, x);
    row_of_plane(c, 0, y)[2 * x + 1] = static_cast<std::uint8_t>(luma >= 65408 ? 255 : (luma + 128) >> 8);
  });
}

void cr_with_alpha_of_odd_pixel(const call& c) {
  right("pa16::p216", "p216", c);
  each_pixel(c, [&](int y, int x) {
    if (x % 2 == 0) return;
    const unsigned cr = read(c, 1, y, x) - 32768U;
    write(c, 1, y, x, ((cr * read(c, 2, y, x) + cr) >> 16) ^ 32768U);
  });
}

void weighted_by_alpha_alone(const call& c) {
  right("pa16::p216", "p216", c);
  each_pixel(c,
             [&](int y, int x) { write(c, 0, y, x, (((read(c, 0, y, x) - 4096U) * read(c, 2, y, x)) >> 16) + 4096U); });
}

void cr_first(const call& c) {
  right("pa16::vuya_16", "vuya_16", c);
  each_pixel(c, [&](int y, int x) {
    const unsigned cb = word_at(row_of_plane(c, 0, y) + 8 * x);
    write(c, 0, y, 4 * x, word_at(row_of_plane(c, 0, y) + 8 * x + 2));
    write(c, 0, y, 4 * x + 1, cb);
  });
}

void multiplied_by_reciprocal(const call& c) {
  right("pa16::vuya_f32", "vuya_f32", c);
  each_pixel(c, [&](int y, int x) {
    const auto alpha = std::bit_cast<std::uint32_t>(static_cast<float>(read(c, 2, y, x)) * (1.0F / 65535.0F));
    write(c, 0, y, 8 * x + 6, alpha);
    write(c, 0, y, 8 * x + 7, alpha >> 16);
  });
}

constexpr fault faults[] = {
    {"word_behind_completed_pair", "uyvy::p216", "p216", word_behind_completed_pair, "destination plane cbcr"},
    {"completed_pair_left_out", "pa16::vuya_16", "vuya_16", completed_pair_left_out, "destination plane vuya"},
    {"completed_pixel_not_in_report", "ycbcra::pa16", "pa16", completed_pixel_not_in_report, "opacity report"},
    {"rounded_to_bytes", "p216::uyvy", "uyvy", rounded_to_bytes, "destination plane uyvy"},
    {"cr_with_alpha_of_odd_pixel", "pa16::p216", "p216", cr_with_alpha_of_odd_pixel, "destination plane cbcr"},
    {"weighted_by_alpha_alone", "pa16::p216", "p216", weighted_by_alpha_alone, "destination plane y"},
    {"cr_first", "pa16::vuya_16", "vuya_16", cr_first, "destination plane vuya"},
    {"multiplied_by_reciprocal", "pa16::vuya_f32", "vuya_f32", multiplied_by_reciprocal, "destination plane vuya"},
};

}  // namespace

std::span<const fault> faults_of_words() {
  return faults;
}

}  // namespace morvane::tests
