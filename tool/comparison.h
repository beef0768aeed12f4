// How far frames differ, sample by sample.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "image.h"
#include "samples.h"

namespace morvane::tool {

struct difference {
  std::int64_t frame = 0;
  std::string plane;
  std::string component;
  int x = 0;
  int y = 0;
  bool floats = false;
  double first = 0;
  double second = 0;
};

// Over all frames.
struct component_sums {
  std::string component;
  int line = 0;
  std::int64_t count = 0;
  int maximum = 0;
  std::uint64_t absolute = 0;
  double squares = 0;  // in shares of the greatest sample, so that depths may be added
};

component_sums added(std::span<const component_sums> all);

// In decibels; none when there is no difference.
std::optional<double> psnr(const component_sums& sums);

class comparison {
 public:
  comparison(const format_info& format, extent size);

  void add_frame(const image& a, const image& b);

  std::int64_t frames() const { return frames_; }
  const format_info& format() const { return format_; }
  const std::optional<difference>& first() const { return first_; }
  // Of a plane, in storage order.
  const std::vector<component_sums>& sums(std::size_t plane) const { return planes_[plane].sums; }
  std::vector<component_sums> all_sums() const;

 private:
  struct compared_plane {
    compared_plane(const plane_info& plane, int width);

    std::vector<stored_sample> samples;  // that carry something
    std::vector<component_sums> sums;
    sample_lines first;
    sample_lines second;
  };

  void add_row(std::size_t p, int y, const image& a, const image& b);
  void add_line(compared_plane& plane, component_sums& sums, int bits, std::size_t samples) const;
  void find_first(std::size_t p, int y, const image& a, const image& b);

  const format_info& format_;
  extent size_;
  std::vector<compared_plane> planes_;
  std::optional<difference> first_;
  std::int64_t frames_ = 0;
};

}  // namespace morvane::tool
