// Expectations: 4:4:4 from RGB, and from and to video with and without a key.
#include "over_black.h"
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

// From RGB, pixel after pixel as they are stored.

enum class target { ycbcra, crcbya, ycbcrx, crcbyx };

struct sums {
  std::uint8_t y, cb, cr;
};

template <bool bt709>
sums of_color(int r, int g, int b) {
  if (bt709)
    return {byte(floor_shift(23 * r + 79 * g + 8 * b + 2048, 7)),
            byte(floor_shift(-26 * r - 87 * g + 112 * b + 32768, 8)),
            byte(floor_shift(112 * r - 102 * g - 10 * b + 32768, 8))};
  return {byte(floor_shift(33 * r + 64 * g + 13 * b + 2048, 7)),
          byte(floor_shift(-38 * r - 75 * g + 112 * b + 32768, 8)),
          byte(floor_shift(112 * r - 94 * g - 18 * b + 32768, 8))};
}

// Every pixel has its own Cb and fourth byte; luma and Cr of all pixels go to the line's first pixel.
template <target to>
void store(std::uint8_t* line_start, int i, sums p, std::uint8_t alpha) {
  const bool first = i == 0;
  int y_at = 0;
  switch (to) {
    case target::ycbcra:
      y_at = first ? 2 : 0;
      break;
    case target::crcbya:
      y_at = 0;
      break;
    case target::ycbcrx:
      y_at = first ? 0 : 2;
      break;
    case target::crcbyx:
      y_at = 2;
      break;
  }
  line_start[y_at] = p.y;
  line_start[2 - y_at] = p.cr;
  line_start[4 * i + 1] = p.cb;
  line_start[4 * i + 3] = to == target::ycbcra || to == target::crcbya ? alpha : std::uint8_t{255};
}

template <bool is_rgba, bool bt709, target to>
void rgb_to_444(const call& c) {
  one_line_or_each_row(c, {4 * c.xres}, {4 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < pixels; ++i) {
      const std::uint8_t* p = l.source[0] + 4 * i;
      store<to>(l.destination[0], i, of_color<bt709>(p[is_rgba ? 0 : 2], p[1], p[is_rgba ? 2 : 0]), p[3]);
    }
  });
}

// From and to video. All lines complete the pair of a last odd pixel.

void uyvy_to_ycbcrx(const call& c) {
  one_line_or_each_row(c, {2 * c.xres}, {4 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < 2 * pairs(pixels); ++i) {
      const std::uint8_t* pair = l.source[0] + 4 * (i / 2);
      std::uint8_t* pixel = l.destination[0] + 4 * i;
      pixel[0] = pair[i % 2 == 0 ? 1 : 3];
      pixel[1] = pair[0];
      pixel[2] = pair[2];
      pixel[3] = 255;
    }
  });
}

// Where luma, Cb and Cr lie in a 4:4:4 pixel, whose fourth byte is alpha or unused.
struct order {
  int y, cb, cr;
};
constexpr order ycbcr{0, 1, 2};
constexpr order crcby{2, 1, 0};

template <order to>
void uyvy_a_to_444(const call& c) {
  one_line_or_each_row(c, {2 * c.xres, c.xres}, {4 * c.xres}, [](const line& l, int pixels) {
    for (int i = 0; i < 2 * pairs(pixels); ++i) {
      const std::uint8_t* pair = l.source[0] + 4 * (i / 2);
      std::uint8_t* pixel = l.destination[0] + 4 * i;
      pixel[to.y] = pair[i % 2 == 0 ? 1 : 3];
      pixel[to.cb] = pair[0];
      pixel[to.cr] = pair[2];
      pixel[3] = l.source[1][i];
    }
  });
}

template <order from>
void full_chroma_over_black(const call& c) {
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* s = l.source[0] + 8 * k;
      store_over_black(l.destination[0] + 4 * k, s[from.cb], s[from.y], s[from.cr], s[4 + from.y], s[3], s[7]);
    }
  });
}

// Chroma is that of the even pixel.
template <order from>
void copy_pair(const std::uint8_t* s, std::uint8_t* uyvy) {
  uyvy[0] = s[from.cb];
  uyvy[1] = s[from.y];
  uyvy[2] = s[from.cr];
  uyvy[3] = s[4 + from.y];
}

template <order from>
void full_chroma_to_uyvy(const call& c) {
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres}, [](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) copy_pair<from>(l.source[0] + 8 * k, l.destination[0] + 4 * k);
  });
}

template <order from>
void full_chroma_to_uyvy_a(const call& c) {
  bool opaque = true;
  one_line_or_each_row(c, {4 * c.xres}, {2 * c.xres, c.xres}, [&](const line& l, int pixels) {
    for (int k = 0; k < pairs(pixels); ++k) {
      const std::uint8_t* s = l.source[0] + 8 * k;
      copy_pair<from>(s, l.destination[0] + 4 * k);
      l.destination[1][2 * k] = s[3];
      l.destination[1][2 * k + 1] = s[7];
      if (s[3] != 255 || s[7] != 255) opaque = false;
    }
  });
  report(c, opaque);
}

constexpr entry entries[] = {
    {"bgra::ycbcra", "ycbcra", rgb_to_444<false, true, target::ycbcra>},
    {"bgra_601::ycbcra", "ycbcra", rgb_to_444<false, false, target::ycbcra>},
    {"bgra_709::ycbcra", "ycbcra", rgb_to_444<false, true, target::ycbcra>},
    {"rgba::ycbcra", "ycbcra", rgb_to_444<true, true, target::ycbcra>},
    {"rgba_601::ycbcra", "ycbcra", rgb_to_444<true, false, target::ycbcra>},
    {"rgba_709::ycbcra", "ycbcra", rgb_to_444<true, true, target::ycbcra>},

    {"bgra::crcbya", "crcbya", rgb_to_444<false, true, target::crcbya>},
    {"bgra_601::crcbya", "crcbya", rgb_to_444<false, false, target::crcbya>},
    {"bgra_709::crcbya", "crcbya", rgb_to_444<false, true, target::crcbya>},
    {"rgba::crcbya", "crcbya", rgb_to_444<true, true, target::crcbya>},
    {"rgba_601::crcbya", "crcbya", rgb_to_444<true, false, target::crcbya>},
    {"rgba_709::crcbya", "crcbya", rgb_to_444<true, true, target::crcbya>},

    {"bgrx::ycbcrx", "ycbcrx", rgb_to_444<false, true, target::ycbcrx>},
    {"bgrx_601::ycbcrx", "ycbcrx", rgb_to_444<false, false, target::ycbcrx>},
    {"bgrx_709::ycbcrx", "ycbcrx", rgb_to_444<false, true, target::ycbcrx>},
    {"rgbx::ycbcrx", "ycbcrx", rgb_to_444<true, true, target::ycbcrx>},
    {"rgbx_601::ycbcrx", "ycbcrx", rgb_to_444<true, false, target::ycbcrx>},
    {"rgbx_709::ycbcrx", "ycbcrx", rgb_to_444<true, true, target::ycbcrx>},

    {"bgrx::crcbyx", "crcbyx", rgb_to_444<false, true, target::crcbyx>},
    {"bgrx_601::crcbyx", "crcbyx", rgb_to_444<false, false, target::crcbyx>},
    {"bgrx_709::crcbyx", "crcbyx", rgb_to_444<false, true, target::crcbyx>},
    {"rgbx::crcbyx", "crcbyx", rgb_to_444<true, true, target::crcbyx>},
    {"rgbx_601::crcbyx", "crcbyx", rgb_to_444<true, false, target::crcbyx>},
    {"rgbx_709::crcbyx", "crcbyx", rgb_to_444<true, true, target::crcbyx>},

    {"uyvy::ycbcrx", "ycbcrx", uyvy_to_ycbcrx},
    {"uyvy_a::ycbcra", "ycbcra", uyvy_a_to_444<ycbcr>},
    {"uyvy_a::crcbya", "crcbya", uyvy_a_to_444<crcby>},

    {"ycbcra::uyvy", "uyvy", full_chroma_over_black<ycbcr>},
    {"vuya::uyvy", "uyvy", full_chroma_over_black<crcby>},
    {"ycbcrx::uyvy", "uyvy", full_chroma_to_uyvy<ycbcr>},
    {"vuyx::uyvy", "uyvy", full_chroma_to_uyvy<crcby>},
    {"ycbcra::uyvy_a", "uyvy_a", full_chroma_to_uyvy_a<ycbcr>},
    {"vuya::uyvy_a", "uyvy_a", full_chroma_to_uyvy_a<crcby>},
};

}  // namespace

std::span<const entry> expectations_of_full_chroma() {
  return entries;
}

}  // namespace morvane::tests::oracle
