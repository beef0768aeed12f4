// The rows of the benchmark: every conversion of the catalogue, those that can stretch luma once without and once with
// it, and the difference of two images.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/conversions.h"

namespace morvane::bench {

// What bounds the speed of a row.
enum class kind {
  copy,           // copies and fills
  rearrangement,  // bytes that change place or width, and what costs no more than that
  weighting,      // a product a sample: keys, compositing, floats
  rgb_to_ycbcr,
  ycbcr_to_rgb,
};

inline constexpr std::array kinds = {kind::copy, kind::rearrangement, kind::weighting, kind::rgb_to_ycbcr,
                                     kind::ycbcr_to_rgb};

std::string_view name_of(kind k);

struct row {
  const catalogue::conversion* conversion = nullptr;
  bool rescale = false;
  std::string name{};  // "uyvy::yuy2"; the destination follows where the catalogue has a name twice
  kind what = kind::copy;
};

// In the order of the catalogue.
std::vector<row> all_rows();

}  // namespace morvane::bench
