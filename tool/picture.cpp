// Pictures to and from images, by the names of the components.
#include "picture.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace morvane::tool {

namespace {

constexpr std::array<std::string_view, 4> channel_names = {"R", "G", "B", "A"};

// Where the samples of one component stand.
struct place {
  std::size_t plane;
  std::size_t offset;
  std::size_t step;
  int channel;  // index into channel_names, or -1 for an unused byte
};

std::vector<place> places(const format_info& f) {
  std::vector<place> result;
  for (std::size_t p = 0; p < planes_of(f).size(); ++p) {
    const std::vector<std::string> components = components_of(f.planes[p]);
    for (std::size_t i = 0; i < components.size(); ++i) {
      const auto name = std::find(channel_names.begin(), channel_names.end(), components[i]);
      const int channel = name == channel_names.end() ? -1 : static_cast<int>(name - channel_names.begin());
      result.push_back({p, i, components.size(), channel});
    }
  }
  return result;
}

}  // namespace

picture::picture(extent e, int n)
    : size(e),
      channels(n),
      samples(static_cast<std::size_t>(e.width) * static_cast<std::size_t>(e.height) * static_cast<std::size_t>(n)) {
}

bool fits_png(const format_info& f) {
  const std::span<const plane_info> planes = planes_of(f);
  return f.model == MORVANE_RGB && std::all_of(planes.begin(), planes.end(),
                                               [](const plane_info& p) { return p.bits == 8 && p.group_pixels == 1; });
}

picture to_picture(const image& source, extent size) {
  picture result(size, source.format().has_alpha ? 4 : 3);
  for (const place& from : places(source.format())) {
    if (from.channel < 0) continue;
    for (int y = 0; y < size.height; ++y) {
      const std::uint8_t* sample = source.row(from.plane, y) + from.offset;
      for (int x = 0; x < size.width; ++x, sample += from.step) result.pixel(x, y)[from.channel] = *sample;
    }
  }
  return result;
}

void from_picture(const picture& source, image& destination) {
  for (const place& to : places(destination.format()))
    for (int y = 0; y < source.size.height; ++y) {
      std::uint8_t* sample = destination.row(to.plane, y) + to.offset;
      const bool present = to.channel >= 0 && to.channel < source.channels;
      for (int x = 0; x < source.size.width; ++x, sample += to.step)
        *sample = present ? source.pixel(x, y)[to.channel] : std::uint8_t{255};
    }
}

}  // namespace morvane::tool
