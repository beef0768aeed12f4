// Drawing patterns, a pixel at a time. All but the table of the zone plate is arithmetic that is the same everywhere.
#include "test_pattern.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <utility>

#include "errors.h"

namespace morvane::tool {

namespace {

constexpr std::uint16_t full = 65535;

struct pixel {
  std::uint16_t b = 0;
  std::uint16_t g = 0;
  std::uint16_t r = 0;
  std::uint16_t a = full;
};

// `pixel_at` tells the pixel of a column and a row.
template <class At>
void draw(image& into, At pixel_at) {
  const extent size = into.size();
  for (int y = 0; y < size.height; ++y) {
    std::uint8_t* to = into.row(0, y);
    for (int x = 0; x < size.width; ++x, to += sizeof(pixel)) {
      const pixel p = pixel_at(x, y);
      std::memcpy(to, &p, sizeof p);
    }
  }
}

// Three quarters of full brightness: white, yellow, cyan, green, magenta, red, blue, black.
void bars(std::int64_t, image& into) {
  constexpr std::uint16_t on = 49151;
  constexpr std::int64_t count = 8;
  const int width = into.size().width;
  draw(into, [=](int x, int) {
    const std::int64_t bar = x * count / width;
    const auto level = [bar](std::int64_t bit) { return (bar & bit) == 0 ? on : std::uint16_t{0}; };
    return pixel{.b = level(1), .g = level(4), .r = level(2)};
  });
}

// From black on the left to full brightness on the right: grey in the upper half, below it red, green and blue.
void ramp(std::int64_t, image& into) {
  const extent size = into.size();
  const std::int64_t last = std::max(size.width - 1, 1);
  draw(into, [=](int x, int y) {
    const auto level = static_cast<std::uint16_t>((std::int64_t{x} * full + last / 2) / last);
    const std::int64_t sixth = std::int64_t{y} * 6 / size.height;
    const auto in = [=](std::int64_t band) { return sixth < 3 || sixth == band ? level : std::uint16_t{0}; };
    return pixel{.b = in(5), .g = in(4), .r = in(3)};
  });
}

// Brightness over one turn of a wave, from white to black and back.
const std::vector<std::uint16_t>& wave() {
  static const std::vector<std::uint16_t> levels = [] {
    std::vector<std::uint16_t> all(std::size_t{1} << 16);
    for (std::size_t i = 0; i < all.size(); ++i) {
      const double angle = 2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(all.size());
      all[i] = static_cast<std::uint16_t>((1 + std::cos(angle)) * (full / 2.0) + 0.5);
    }
    return all;
  }();
  return levels;
}

// Rings around the centre, finer and finer: where the longer side ends, they are two pixels wide. They grow by one ring
// in 32 frames.
void zone(std::int64_t frame, image& into) {
  const extent size = into.size();
  // A turn is 2^64, so that sums overflow into the same phase. Distances are doubled to be whole.
  const std::uint64_t growth = (std::uint64_t{1} << 61) / static_cast<std::uint64_t>(std::max(size.width, size.height));
  const std::uint64_t moved = static_cast<std::uint64_t>(frame) << 59;
  const std::vector<std::uint16_t>& levels = wave();
  const auto square = [](std::int64_t d) { return static_cast<std::uint64_t>(d * d); };
  draw(into, [=, &levels](int x, int y) {
    const std::uint64_t distance = square(2 * x - (size.width - 1)) + square(2 * y - (size.height - 1));
    const std::uint16_t level = levels[(distance * growth - moved) >> 48];
    return pixel{level, level, level};
  });
}

// Where the disc of the key is, from -16 at the left to 16 at the right: to and fro in 64 frames, from the middle on.
std::int64_t swing(std::int64_t frame) {
  const std::int64_t at = frame % 64;
  return at < 16 ? at : at < 48 ? 32 - at : at - 64;
}

// A disc as high as the picture, or as wide where that is less, opaque from its centre half-way to its edge and
// transparent from there on. What it covers is orange, and what is transparent is blue, of which nothing may be seen
// when the picture is laid over another.
void key(std::int64_t frame, image& into) {
  constexpr pixel inside = {.b = 0, .g = 32896, .r = full};
  constexpr pixel outside = {.b = full, .g = 0, .r = 0, .a = 0};
  const extent size = into.size();
  // Distances are doubled, as that of the centre from the middle of the picture is not whole either.
  const double diameter = std::min(size.width, size.height);
  const double centre = size.width - 1 + static_cast<double>(swing(frame)) * size.width / 32;
  draw(into, [=](int x, int y) {
    const double across = 2.0 * x - centre;
    const double down = 2.0 * y - (size.height - 1);
    const double opacity = std::clamp(2 - 2 * std::sqrt(across * across + down * down) / diameter, 0.0, 1.0);
    const auto alpha = static_cast<std::uint16_t>(opacity * full + 0.5);
    return alpha == 0 ? outside : pixel{inside.b, inside.g, inside.r, alpha};
  });
}

}  // namespace

test_pattern pattern_named(const std::string& name) {
  constexpr std::array<std::pair<std::string_view, test_pattern>, 4> patterns = {
      {{"bars", bars}, {"ramp", ramp}, {"zone", zone}, {"key", key}}};
  for (const auto& [known, draw_it] : patterns)
    if (known == name) return draw_it;
  wrong_arguments("unknown pattern ", name, "; there are bars, ramp, zone and key");
}

}  // namespace morvane::tool
