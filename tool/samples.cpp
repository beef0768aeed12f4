// Decoding of rows into samples.
#include "samples.h"

#include <algorithm>
#include <sstream>

namespace morvane::tool {

namespace {

std::uint32_t little_endian(const std::uint8_t* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = count; i-- > 0;) value = value << 8 | bytes[i];
  return value;
}

}  // namespace

std::vector<std::string> components_of(const catalogue::plane& plane) {
  std::istringstream words{std::string(plane.components)};
  std::vector<std::string> result;
  for (std::string word; words >> word;) result.push_back(word);
  return result;
}

sample_layout::sample_layout(const catalogue::plane& plane) : plane_(plane), components_(components_of(plane)) {
  for (auto at = components_.begin(); at != components_.end(); ++at) {
    const auto before = std::count(components_.begin(), at, *at);
    const auto all = std::count(components_.begin(), components_.end(), *at);
    pixels_.push_back(static_cast<int>(before * plane.group_pixels / all));
  }
}

std::size_t sample_layout::row_samples(int width) const {
  return static_cast<std::size_t>(plane_.row_bytes(width) / plane_.group_bytes) * components_.size();
}

int sample_layout::pixel(std::size_t i) const {
  return static_cast<int>(i / components_.size()) * plane_.group_pixels + pixels_[i % components_.size()];
}

int sample_layout::bits() const {
  switch (plane_.sample) {
    case catalogue::sample_type::v210:
      return 10;
    case catalogue::sample_type::u16:
      return 16;
    case catalogue::sample_type::u8:
      break;
  }
  return 8;
}

void sample_layout::read(const std::uint8_t* row, int width, std::vector<int>& samples) const {
  samples.resize(row_samples(width));
  switch (plane_.sample) {
    case catalogue::sample_type::u8:
      std::copy_n(row, samples.size(), samples.begin());
      break;
    case catalogue::sample_type::u16:
      for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<int>(little_endian(row + 2 * i, 2));
      break;
    case catalogue::sample_type::v210:
      for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<int>(little_endian(row + i / 3 * 4, 4) >> (i % 3 * 10) & 1023);
      break;
  }
}

}  // namespace morvane::tool
