#include "measure/rows.h"

#include <algorithm>

namespace morvane::bench {

namespace {

using catalogue::color_model;
using catalogue::conversion;
using catalogue::format;

// The difference of two images of uyvy, which converts nothing and so is not in the catalogue.
void difference(const catalogue::call& c) {
  Processing::Morvane::sum_absolute_differences::difference(c.source.data[0], c.source.stride[0], c.source.data[1],
                                                            c.source.stride[1], 2 * c.xres, c.yres);
}

constexpr conversion difference_row = {
    .name = "sum_absolute_differences::difference", .source = "uyvy_uyvy", .entry = {difference}};

// A picture with alpha becomes one without.
bool composites(const format& source, const format& destination) {
  return source.model == color_model::ycbcr && source.alpha && !destination.alpha;
}

kind kind_of(const conversion& c, bool rescale) {
  if (c.source.empty()) return kind::copy;
  if (c.destination.empty()) return kind::rearrangement;
  const format& source = *catalogue::find_format(c.source);
  const format& destination = *catalogue::find_format(c.destination);
  if (c.colors != catalogue::matrix::none)
    return destination.model == color_model::rgb ? kind::ycbcr_to_rgb : kind::rgb_to_ycbcr;
  if (rescale || composites(source, destination) || destination.planes[0].sample == catalogue::sample_type::f32)
    return kind::weighting;
  return c.source == c.destination ? kind::copy : kind::rearrangement;
}

std::string row_name(const conversion& c, bool rescale) {
  const auto same_name = [&c](const conversion& other) { return c.name == other.name; };
  const bool shared = std::count_if(catalogue::conversions.begin(), catalogue::conversions.end(), same_name) > 1;
  std::string result(c.name);
  if (shared) result.append("(").append(c.destination).append(")");
  return rescale ? result + "(rescale)" : result;
}

row make_row(const conversion& c, bool rescale) {
  return {&c, rescale, row_name(c, rescale), kind_of(c, rescale)};
}

}  // namespace

std::string_view name_of(kind k) {
  switch (k) {
    case kind::copy:
      return "copy";
    case kind::rearrangement:
      return "rearrangement";
    case kind::weighting:
      return "weighting";
    case kind::rgb_to_ycbcr:
      return "rgb_to_ycbcr";
    case kind::ycbcr_to_rgb:
      return "ycbcr_to_rgb";
  }
  return {};
}

std::vector<row> all_rows() {
  std::vector<row> result;
  for (const conversion& c : catalogue::conversions) {
    result.push_back(make_row(c, false));
    if (c.extra == catalogue::argument::rescale) result.push_back(make_row(c, true));
  }
  result.push_back(make_row(difference_row, false));
  return result;
}

}  // namespace morvane::bench
