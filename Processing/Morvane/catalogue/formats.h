// Every pixel format that a conversion reads or writes, as data.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "formats/card_rgb.h"
#include "formats/deep_rgb.h"
#include "formats/deep_video.h"
#include "formats/format.h"
#include "formats/packed_video.h"
#include "formats/planar_video.h"
#include "formats/planar_words.h"
#include "formats/rgb.h"
#include "formats/single_component.h"

namespace morvane::catalogue {

template <std::size_t... count>
constexpr auto joined(const std::array<format, count>&... families) {
  std::array<format, (count + ...)> all;
  auto end = all.begin();
  ((end = std::copy(families.begin(), families.end(), end)), ...);
  return all;
}

inline constexpr auto formats =
    joined(packed_video_formats, deep_video_formats, planar_video_formats, planar_word_formats, rgb_formats,
           deep_rgb_formats, card_rgb_formats, single_component_formats);

// The format of a name, or null.
constexpr const format* find_format(std::string_view name) {
  for (const format& f : formats)
    if (f.name == name) return &f;
  return nullptr;
}

}  // namespace morvane::catalogue
