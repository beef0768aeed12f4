// The way from one format to another over the conversions of the catalogue.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "catalogue/conversions.h"
#include "catalogue/formats.h"
#include "image.h"

namespace morvane::tool {

struct route {
  const catalogue::format* first = nullptr;
  std::vector<const catalogue::conversion*> steps;
  int matrix = 709;
  bool rescale = false;  // luma, in the steps that can

  // The formats that a picture passes through, source and destination included.
  std::vector<const catalogue::format*> formats() const;
  const format_info& source() const;
  const format_info& destination() const;
};

struct route_wish {
  std::optional<int> matrix;     // 601, 709 or 2020; when absent, that of `via`, or else 709
  std::string via;               // an entry point that must be part of the route; empty for none
  bool allow_irregular = false;  // also for entry points that `via` does not name
  bool rescale = false;          // fails where no step of the route can
};

// The route with the fewest irregular steps, then the fewest losses of alpha or colour, then the fewest steps, then the
// earliest in the catalogue. A format leads to itself by its copy, or without a step where it has no regular one. A
// route that has left colour behind leads to no format with colour: the picture of a key is not that of its fill. Fails
// with the reason when there is no route.
route find_route(const format_info& source, const format_info& destination, const route_wish& wish);

// The best route of regular conversions to an RGB format that a PNG can hold, if there is one; of equal ones, one that
// ends with alpha when the source has it and without when it has none.
std::optional<route> find_route_to_rgb(const format_info& source, int matrix);

// The smallest size from this one on that is whole in all formats of the route.
extent padded_size(extent size, const route& way);

// "v210 -> uyvy by v210::uyvy, uyvy -> bgra by uyvy::bgra with BT.709"
std::string described(const route& way);

}  // namespace morvane::tool
