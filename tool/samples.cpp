// Decoding of rows into samples.
#include "samples.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace morvane::tool {

namespace {

std::uint32_t little_endian(const std::uint8_t* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = count; i-- > 0;) value = value << 8 | bytes[i];
  return value;
}

// Ten bits of three in every word.
std::uint32_t third_of_word(const std::uint8_t* row, std::size_t i) {
  return little_endian(row + i / 3 * 4, 4) >> (i % 3 * 10) & 1023;
}

// The upper eight bits of the group's samples, then the lower two.
std::uint32_t eight_and_two_bits(const std::uint8_t* group, std::size_t i, std::size_t samples) {
  const std::uint32_t low = group[samples + i / 4] >> (i % 4 * 2) & 3;
  return std::uint32_t{group[i]} << 2 | low;
}

// In 16 bits, the level of a float 0 and how far from it that of a float 1 is.
struct scale {
  double zero;
  double span;
};

scale scale_of(const std::string& component) {
  if (component == "Y") return {4096, 56064};
  if (component == "Cb" || component == "Cr") return {32768, 57344};
  return {0, 65535};
}

// What lies outside 16 bits has the level of their end, and what is no number that of their start.
int level_of(double number, scale s) {
  const double level = s.zero + s.span * number;
  return level >= 65535 ? 65535 : level > 0 ? static_cast<int>(std::lround(level)) : 0;
}

}  // namespace

sample_layout::sample_layout(const format_info& format, std::size_t plane)
    : plane_(catalogue::find_format(format.name)->planes[plane]), components_(components_of(format.planes[plane])) {
  for (auto at = components_.begin(); at != components_.end(); ++at) {
    const auto before = std::count(components_.begin(), at, *at);
    const auto all = std::count(components_.begin(), components_.end(), *at);
    pixels_.push_back(static_cast<int>(before * plane_.group_pixels / all));
  }
}

std::size_t sample_layout::row_samples(int width) const {
  return static_cast<std::size_t>(plane_.row_bytes(width) / plane_.group_bytes) * components_.size();
}

int sample_layout::pixel(std::size_t i) const {
  return static_cast<int>(i / components_.size()) * plane_.group_pixels + pixels_[i % components_.size()];
}

double sample_layout::number(std::uint32_t sample) const {
  return has_floats() ? std::bit_cast<float>(sample) : static_cast<double>(sample);
}

int sample_layout::bits() const {
  switch (plane_.sample) {
    case catalogue::sample_type::u16_low10:
    case catalogue::sample_type::u32_3x10:
    case catalogue::sample_type::u8_and_2:
      return 10;
    case catalogue::sample_type::u16_low12:
      return 12;
    case catalogue::sample_type::u16:
    case catalogue::sample_type::f32:
      return 16;
    case catalogue::sample_type::u8:
      break;
  }
  return 8;
}

int sample_layout::level(std::size_t i, std::uint32_t sample) const {
  return has_floats() ? level_of(number(sample), scale_of(component(i))) : static_cast<int>(sample);
}

std::uint8_t sample_layout::shade(std::size_t i, std::uint32_t sample) const {
  return static_cast<std::uint8_t>(std::min(level(i, sample) >> (bits() - 8), 255));
}

void sample_layout::read(const std::uint8_t* row, int width, std::vector<std::uint32_t>& samples) const {
  const auto fill = [&](const auto& sample_at) {
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = sample_at(i);
  };
  samples.resize(row_samples(width));
  switch (plane_.sample) {
    case catalogue::sample_type::u8:
      return fill([&](std::size_t i) { return std::uint32_t{row[i]}; });
    case catalogue::sample_type::u16:
    case catalogue::sample_type::u16_low10:
    case catalogue::sample_type::u16_low12:
      return fill([&](std::size_t i) { return little_endian(row + 2 * i, 2); });
    case catalogue::sample_type::f32:
      return fill([&](std::size_t i) { return little_endian(row + 4 * i, 4); });
    case catalogue::sample_type::u32_3x10:
      return fill([&](std::size_t i) { return third_of_word(row, i); });
    case catalogue::sample_type::u8_and_2:
      return fill([&](std::size_t i) {
        const std::size_t samples_of_group = components_.size();
        const std::size_t group = i / samples_of_group * static_cast<std::size_t>(plane_.group_bytes);
        return eight_and_two_bits(row + group, i % samples_of_group, samples_of_group);
      });
  }
}

}  // namespace morvane::tool
