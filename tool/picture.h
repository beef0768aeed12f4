// A displayable picture of bytes, grey, RGB or RGB with alpha, and its exchange with images of RGB formats.
#pragma once

#include <cstdint>
#include <vector>

#include "image.h"

namespace morvane::tool {

struct picture {
  extent size;
  int channels = 0;  // 1 grey, 3 RGB, 4 RGB with straight alpha
  std::vector<std::uint8_t> samples;

  picture(extent e, int n);
  std::uint8_t* pixel(int x, int y) { return samples.data() + offset(x, y); }
  const std::uint8_t* pixel(int x, int y) const { return samples.data() + offset(x, y); }

 private:
  std::size_t offset(int x, int y) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) + static_cast<std::size_t>(x)) *
           static_cast<std::size_t>(channels);
  }
};

// True for the RGB formats of bytes: those that a PNG holds without loss.
bool fits_png(const format_info& format);

// The top left of an image whose format fits a PNG; with alpha when the format has it.
picture to_picture(const image& source, extent size);

// Writes the picture into the top left of such an image. A missing alpha, and the unused byte, become 255.
void from_picture(const picture& source, image& destination);

}  // namespace morvane::tool
