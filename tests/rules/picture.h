// A picture of any format, and what a conversion is asked for, as the expectation of "any picture to any other" sees
// them. Nothing in this directory includes anything of the library.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace morvane::tests::rules {

enum class matrix { bt601, bt709, bt2020 };
enum class range { video, full };
enum class siting { left, center };
enum class filter { linear, nearest };

struct rgb8 {
  std::uint8_t r, g, b;
};

struct picture {
  std::string_view format;
  int width = 0;
  int height = 0;
  matrix of = matrix::bt709;
  std::optional<range> in{};  // where nothing is said, YCbCr is of video range and RGB of full range
  std::array<std::uint8_t*, 4> data{};
  std::array<std::ptrdiff_t, 4> stride{};
};

struct options {
  filter chroma_filter = filter::linear;
  siting chroma_siting = siting::left;
  std::optional<rgb8> background{};
};

}  // namespace morvane::tests::rules
