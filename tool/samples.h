// The samples of a row, whatever their storage.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/formats.h"
#include "formats.h"

namespace morvane::tool {

// How the samples of one plane lie in its rows.
class sample_layout {
 public:
  sample_layout(const format_info& format, std::size_t plane);

  // Samples in a row of so many pixels; the last group counts as whole.
  std::size_t row_samples(int width) const;
  // All samples of the row in storage order: integers as they are, floats by their bits.
  void read(const std::uint8_t* row, int width, std::vector<std::uint32_t>& samples) const;

  // The component of the i-th sample of a row, and the first pixel it belongs to.
  const std::string& component(std::size_t i) const { return components_[i % components_.size()]; }
  int pixel(std::size_t i) const;

  bool has_floats() const { return plane_.sample == catalogue::sample_type::f32; }
  // What such a sample is: the integer or the float.
  double number(std::uint32_t sample) const;

  // The bits of a level, and the level of the i-th sample of a row. Words that have room for more than these bits may
  // hold more. A float has the level of the 16-bit sample that it stands for.
  int bits() const;
  int level(std::size_t i, std::uint32_t sample) const;
  // The upper eight bits of the level.
  std::uint8_t shade(std::size_t i, std::uint32_t sample) const;

 private:
  catalogue::plane plane_;
  std::vector<std::string> components_;
  std::vector<int> pixels_;  // within the group
};

}  // namespace morvane::tool
