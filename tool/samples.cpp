// Rows of samples.
#include "samples.h"

#include <algorithm>
#include <utility>

namespace morvane::tool {

namespace {

int line_of(const std::string& component) {
  constexpr std::pair<std::string_view, int> lines[] = {{"Y", MORVANE_Y_R},   {"R", MORVANE_Y_R},  {"L", MORVANE_Y_R},
                                                        {"Cb", MORVANE_CB_G}, {"G", MORVANE_CB_G}, {"Cr", MORVANE_CR_B},
                                                        {"B", MORVANE_CR_B},  {"A", MORVANE_A}};
  const auto* const found =
      std::find_if(std::begin(lines), std::end(lines), [&](const auto& l) { return l.first == component; });
  return found == std::end(lines) ? MORVANE_X : found->second;
}

}  // namespace

std::vector<stored_sample> stored_samples(const plane_info& plane) {
  std::vector<stored_sample> result;
  std::array<int, MORVANE_COMPONENTS> before{};
  for (const std::string& component : components_of(plane)) {
    const int line = line_of(component);
    const int position = before[static_cast<std::size_t>(line)]++;
    result.push_back({component, line, position, position * plane.group_pixels / plane.samples[line], result.size()});
  }
  return result;
}

std::size_t samples_of(const plane_info& plane, int line, int width) {
  const std::int64_t samples = std::int64_t{width} * plane.samples[line];
  return static_cast<std::size_t>((samples + plane.group_pixels - 1) / plane.group_pixels);
}

sample_lines::sample_lines(const plane_info& plane, int width) {
  const std::int64_t groups = (width - 1) / plane.group_pixels + 1;
  room_ = groups * *std::max_element(plane.samples, plane.samples + MORVANE_COMPONENTS);
  for (std::vector<std::uint16_t>& line : lines_) line.resize(static_cast<std::size_t>(room_));
}

void sample_lines::read(const image& source, std::size_t plane, int row) {
  component_lines lines;
  std::transform(lines_.begin(), lines_.end(), lines.begin(), [](auto& line) { return line.data(); });
  const extent size = source.size();
  read_row({.format = source.format().format, .width = size.width, .height = size.height}, source.picture(),
           static_cast<std::int32_t>(plane), row, lines, room_);
}

}  // namespace morvane::tool
