// Sums of differences.
#include "comparison.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace morvane::tool {

namespace {

// Whether a sample differs, and what it is on both sides.
struct pair_of_samples {
  bool differ = false;
  double first = 0;
  double second = 0;
};

pair_of_samples integers(int first, int second) {
  return {first != second, static_cast<double>(first), static_cast<double>(second)};
}

// Floats are the same when all their bits are.
pair_of_samples floats(const std::uint8_t* first, const std::uint8_t* second) {
  float a = 0;
  float b = 0;
  std::memcpy(&a, first, sizeof a);
  std::memcpy(&b, second, sizeof b);
  return {std::memcmp(first, second, sizeof a) != 0, a, b};
}

}  // namespace

component_sums added(std::span<const component_sums> all) {
  component_sums result;
  for (const component_sums& s : all) {
    result.count += s.count;
    result.maximum = std::max(result.maximum, s.maximum);
    result.absolute += s.absolute;
    result.squares += s.squares;
  }
  return result;
}

std::optional<double> psnr(const component_sums& sums) {
  if (sums.squares == 0) return std::nullopt;
  return 10 * std::log10(static_cast<double>(sums.count) / sums.squares);
}

comparison::compared_plane::compared_plane(const plane_info& plane, int width)
    : samples(stored_samples(plane)), first(plane, width), second(plane, width) {
  std::erase_if(samples, [](const stored_sample& s) { return is_unused(s.component); });
  for (const stored_sample& s : samples)
    if (s.position == 0) sums.push_back({.component = s.component, .line = s.line});
}

comparison::comparison(const format_info& format, extent size) : format_(format), size_(size) {
  for (const plane_info& plane : planes_of(format)) planes_.emplace_back(plane, size.width);
}

std::vector<component_sums> comparison::all_sums() const {
  std::vector<component_sums> all;
  for (const compared_plane& plane : planes_) all.insert(all.end(), plane.sums.begin(), plane.sums.end());
  return all;
}

void comparison::add_frame(const image& a, const image& b) {
  for (std::size_t p = 0; p < planes_.size(); ++p) {
    for (component_sums& s : planes_[p].sums)
      s.count += std::int64_t{a.rows(p)} * static_cast<std::int64_t>(samples_of(a.plane(p), s.line, size_.width));
    for (int y = 0; y < a.rows(p); ++y) add_row(p, y, a, b);
  }
  ++frames_;
}

void comparison::add_row(std::size_t p, int y, const image& a, const image& b) {
  if (std::memcmp(a.row(p, y), b.row(p, y), static_cast<std::size_t>(a.row_bytes(p))) == 0) return;
  compared_plane& plane = planes_[p];
  plane.first.read(a, p, y);
  plane.second.read(b, p, y);
  if (!first_) find_first(p, y, a, b);
  for (component_sums& s : plane.sums) add_line(plane, s, a.plane(p).bits, samples_of(a.plane(p), s.line, size_.width));
}

void comparison::add_line(compared_plane& plane, component_sums& sums, int bits, std::size_t samples) const {
  const std::uint16_t* first = plane.first.line(sums.line);
  const std::uint16_t* second = plane.second.line(sums.line);
  const int unused_bits = 16 - bits;
  std::uint64_t squares = 0;
  for (std::size_t i = 0; i < samples; ++i) {
    const int gap = std::abs((first[i] >> unused_bits) - (second[i] >> unused_bits));
    sums.maximum = std::max(sums.maximum, gap);
    sums.absolute += static_cast<std::uint64_t>(gap);
    squares += static_cast<std::uint64_t>(gap) * static_cast<std::uint64_t>(gap);
  }
  const double peak = (1 << bits) - 1;
  sums.squares += static_cast<double>(squares) / (peak * peak);
}

// In storage order.
void comparison::find_first(std::size_t p, int y, const image& a, const image& b) {
  const plane_info& info = a.plane(p);
  const compared_plane& plane = planes_[p];
  const int unused_bits = 16 - info.bits;
  for (int start = 0; start < size_.width; start += info.group_pixels)
    for (const stored_sample& s : plane.samples) {
      if (start + s.pixel >= size_.width) continue;
      const int group = start / info.group_pixels;
      const std::size_t i = static_cast<std::size_t>(group * info.samples[s.line] + s.position);
      const std::size_t at = static_cast<std::size_t>(group * info.group_bytes) + sizeof(float) * s.order;
      const pair_of_samples pair = info.is_float ? floats(a.row(p, y) + at, b.row(p, y) + at)
                                                 : integers(plane.first.line(s.line)[i] >> unused_bits,
                                                            plane.second.line(s.line)[i] >> unused_bits);
      if (!pair.differ) continue;
      first_ = difference{frames_,    info.name,  s.component, start + s.pixel, y * info.image_rows, info.is_float != 0,
                          pair.first, pair.second};
      return;
    }
}

}  // namespace morvane::tool
