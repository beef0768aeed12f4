// Expectations: luma stretched to a key and back, fill and key, and compositing over black.
#include "over_black.h"
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

// Luma of video range, stretched to full range.
std::uint8_t key(int luma) {
  if (luma * 301 >= 70397) return 255;
  return clamped(floor_shift(luma * 301 - 5117, 8));
}

std::uint8_t key_or_copy(std::uint8_t luma, bool rescale) {
  return rescale ? key(luma) : luma;
}

// In uyvy, the pair of a last odd pixel is completed.
void uyvy_to_y(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {c.xres}, [&](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      l.destination[0][2 * k] = key_or_copy(l.source[0][4 * k + 1], c.argument != 0);
      l.destination[0][2 * k + 1] = key_or_copy(l.source[0][4 * k + 3], c.argument != 0);
    }
  });
}

void y_to_uyvy(const call& c) {
  each_row(c, [&](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const int y = l.source[0][i];
      l.destination[0][2 * i] = 128;
      l.destination[0][2 * i + 1] = byte(c.argument != 0 ? floor_shift(y * 220, 8) + 16 : y);
    }
  });
}

int key_of_word(int y) {
  const int p = y * 1197;
  if (p >= 72010752) return 65535;
  const int t = floor_shift(p - 4902912, 10);
  return t > 0 ? t : 0;
}

void y16_to_y16(const call& c) {
  each_row(c, [&](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const int y = l.source[0][2 * i] + 256 * l.source[0][2 * i + 1];
      const int result = c.argument != 0 ? key_of_word(y) : y;
      l.destination[0][2 * i] = byte(result);
      l.destination[0][2 * i + 1] = byte(result / 256);
    }
  });
}

// A key in a second image, and one in a plane. All lines complete the pair of a last odd pixel.

// A line of fill and key converts its first pair alone.
void fill_and_key_to_ya_uv(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, 2 * c.xres}, {2 * c.xres, c.xres}, [&](const line& l, int) {
    const std::uint8_t* fill = l.source[0];
    const std::uint8_t* second = l.source[1];
    l.destination[1][0] = fill[0];
    l.destination[1][1] = fill[2];
    l.destination[0][0] = fill[1];
    l.destination[0][1] = key_or_copy(second[1], c.argument != 0);
    l.destination[0][2] = fill[3];
    l.destination[0][3] = key_or_copy(second[3], c.argument != 0);
  });
}

void uyvy_a_to_ya_uv(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {2 * c.xres, c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* uyvy = l.source[0] + 4 * k;
      const std::uint8_t* alpha = l.source[1] + 2 * k;
      std::uint8_t* ya = l.destination[0] + 4 * k;
      ya[0] = uyvy[1];
      ya[1] = alpha[0];
      ya[2] = uyvy[3];
      ya[3] = alpha[1];
      l.destination[1][2 * k] = uyvy[0];
      l.destination[1][2 * k + 1] = uyvy[2];
    }
  });
}

void uyvy_a_over_black(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* s = l.source[0] + 4 * k;
      store_over_black(l.destination[0] + 4 * k, s[0], s[1], s[2], s[3], l.source[1][2 * k], l.source[1][2 * k + 1]);
    }
  });
}

constexpr entry entries[] = {
    {"uyvy::y", "y", uyvy_to_y},
    {"y::uyvy", "uyvy", y_to_uyvy},
    {"y16::y16", "y16", y16_to_y16},
    {"uyvy::ya_uv", "ya_uv", fill_and_key_to_ya_uv},
    {"uyvy_a::ya_uv", "ya_uv", uyvy_a_to_ya_uv},
    {"uyvy_a::uyvy", "uyvy", uyvy_a_over_black},
};

}  // namespace

std::span<const entry> expectations_of_key() {
  return entries;
}

}  // namespace morvane::tests::oracle
