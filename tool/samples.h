// The samples of a row, whatever their storage: each component of a plane as a line of numbers.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "formats.h"
#include "image.h"

namespace morvane::tool {

// A sample of a group in storage order.
struct stored_sample {
  std::string component;
  int line = 0;           // of the component, as morvane_component numbers them
  int position = 0;       // among the samples of the component in the group
  int pixel = 0;          // the first that it belongs to, in the group
  std::size_t order = 0;  // in the group
};

std::vector<stored_sample> stored_samples(const plane_info& plane);

// The samples of a component in a row of so many pixels, without those behind the last pixel.
std::size_t samples_of(const plane_info& plane, int line, int width);

// The lines of one row.
class sample_lines {
 public:
  sample_lines(const plane_info& plane, int width);

  void read(const image& source, std::size_t plane, int row);
  // Samples with their bits at the top of the words; floats as the words that they are converted by.
  const std::uint16_t* line(int index) const { return lines_[static_cast<std::size_t>(index)].data(); }

 private:
  std::array<std::vector<std::uint16_t>, MORVANE_COMPONENTS> lines_;
  std::int64_t room_ = 0;
};

}  // namespace morvane::tool
