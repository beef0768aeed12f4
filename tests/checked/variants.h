// What the tests of the checked interface ask for, and the same in the words of the C interface.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "morvane.h"
#include "rules/picture.h"
#include "rules/promises/pictures.h"

namespace morvane::tests {

struct colour {
  rules::matrix of;
  std::optional<rules::range> in;
};

struct variant {
  colour source;
  colour destination;
  rules::options how;
};

// All filters and sitings, ranges and matrices, and backgrounds.
inline const std::array<variant, 8>& variants() {
  using enum rules::matrix;
  using enum rules::filter;
  constexpr rules::siting left = rules::siting::left, center = rules::siting::center;
  constexpr rules::range video = rules::range::video, full = rules::range::full;
  static const std::array<variant, 8> all = {{
      {{bt709, {}}, {bt709, {}}, {}},
      {{bt709, {}}, {bt709, {}}, {nearest, left, {}}},
      {{bt601, {}}, {bt601, {}}, {linear, center, rules::rgb8{200, 100, 50}}},
      {{bt601, full}, {bt709, video}, {linear, left, {}}},
      {{bt2020, video}, {bt2020, full}, {linear, center, {}}},
      {{bt709, full}, {bt709, full}, {nearest, center, {}}},
      {{bt709, video}, {bt709, video}, {linear, left, rules::rgb8{1, 254, 77}}},
      {{bt2020, full}, {bt601, full}, {nearest, left, rules::rgb8{0, 128, 255}}},
  }};
  return all;
}

inline std::int32_t number_of(rules::matrix m) {
  return m == rules::matrix::bt601 ? MORVANE_BT601 : m == rules::matrix::bt2020 ? MORVANE_BT2020 : MORVANE_BT709;
}

inline morvane_description described(const rules::picture& p) {
  morvane_description d{sizeof d,        morvane_format_named(std::string(p.format).c_str()),
                        p.width,         p.height,
                        number_of(p.of), MORVANE_RANGE_DEFAULT};
  if (p.in) d.range = *p.in == rules::range::full ? MORVANE_FULL : MORVANE_VIDEO;
  return d;
}

inline morvane_picture planes_of(rules::stored_picture& stored) {
  morvane_picture result{};
  result.struct_size = sizeof result;
  for (std::size_t i = 0; i < MORVANE_MAX_PLANES; ++i) {
    result.data[i] = stored.of().data[i];
    result.stride[i] = stored.of().stride[i];
    result.bytes[i] = static_cast<std::int64_t>(stored.plane(i).size());
  }
  return result;
}

inline morvane_options options_of(const rules::options& how) {
  morvane_options o{};
  o.struct_size = sizeof o;
  o.filter = how.chroma_filter == rules::filter::nearest ? MORVANE_NEAREST : MORVANE_LINEAR;
  o.siting = how.chroma_siting == rules::siting::center ? MORVANE_CENTER : MORVANE_LEFT;
  if (how.background) {
    o.has_background = 1;
    o.background[0] = how.background->r;
    o.background[1] = how.background->g;
    o.background[2] = how.background->b;
  }
  return o;
}

}  // namespace morvane::tests
