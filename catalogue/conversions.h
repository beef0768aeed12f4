// Every conversion, copy and fill of the library, as data. An entry point of the public header that is missing here
// fails the tests; a row added here is tested, measured, documented and offered by the command without further work.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "call.h"
#include "formats.h"

namespace morvane::catalogue {

enum class matrix { none, bt601, bt709, by_argument };

enum class argument {
  none,
  color_space,  // call.argument is an e_ycbcr_color_space
  value,        // call.argument is the value of a fill
  opacity,      // call.opaque, when not null, receives whether all alpha was opaque
};

// Bytes that a call touches behind the tight bytes of a row, by design; behind the last row they are outside the image.
struct overrun {
  int bytes_per_pixel = 0;
  int bytes_at_odd_width = 0;

  constexpr std::int64_t bytes(int xres) const {
    return std::int64_t{xres} * bytes_per_pixel + (xres % 2 != 0 ? bytes_at_odd_width : 0);
  }
};

struct conversion {
  std::string_view name{};         // of the entry point: "uyvy::yuy2"
  std::string_view source{};       // a format; empty for a fill
  std::string_view destination{};  // a format
  matrix colors = matrix::none;
  argument extra = argument::none;
  thunk convert = nullptr;
  overrun read_past{};
  overrun written_past{};
  int margin_pixels = 0;         // a row must be this much wider than the pixels that are wanted from it
  std::string_view irregular{};  // empty, or one sentence on what its output does differently from what the name says
};

namespace detail {

namespace fc = Processing::Morvane::format_conversion;

using fill_u8 = void(std::uint8_t*, int, int, int, int);
using fill_u16 = void(std::uint16_t*, int, int, int, int);

inline constexpr std::string_view four_bytes_copied =
    "copies four bytes for every three-byte pixel, so each row writes past its end";
inline constexpr std::string_view blue_difference_in_v =
    "composites over black and writes the blue difference into V, where the red difference is expected";

inline constexpr auto conversions = std::to_array<conversion>({
    {.name = "black::uyvy", .destination = "uyvy", .convert = thunk_of<&fc::black::uyvy>},
    {.name = "black::alpha",
     .destination = "alpha",
     .extra = argument::value,
     .convert = thunk_of<static_cast<fill_u8*>(&fc::black::alpha)>},
    {.name = "black::alpha",
     .destination = "alpha_u16",
     .extra = argument::value,
     .convert = thunk_of<static_cast<fill_u16*>(&fc::black::alpha)>},
    {.name = "y::y", .source = "y", .destination = "y", .convert = thunk_of<&fc::y::y>},
    {.name = "uyvy::uyvy", .source = "uyvy", .destination = "uyvy", .convert = thunk_of<&fc::uyvy::uyvy>},
    {.name = "bgr::bgr",
     .source = "bgr",
     .destination = "bgr",
     .convert = thunk_of<&fc::bgr::bgr>,
     .read_past = {.bytes_per_pixel = 1},
     .written_past = {.bytes_per_pixel = 1},
     .irregular = four_bytes_copied},
    {.name = "bgr_601::bgr_601",
     .source = "bgr",
     .destination = "bgr",
     .convert = thunk_of<&fc::bgr_601::bgr_601>,
     .read_past = {.bytes_per_pixel = 1},
     .written_past = {.bytes_per_pixel = 1},
     .irregular = four_bytes_copied},
    {.name = "bgr_709::bgr_709",
     .source = "bgr",
     .destination = "bgr",
     .convert = thunk_of<&fc::bgr_709::bgr_709>,
     .read_past = {.bytes_per_pixel = 1},
     .written_past = {.bytes_per_pixel = 1},
     .irregular = four_bytes_copied},
    {.name = "bgrx::bgrx", .source = "bgrx", .destination = "bgrx", .convert = thunk_of<&fc::bgrx::bgrx>},
    {.name = "bgrx_601::bgrx_601",
     .source = "bgrx",
     .destination = "bgrx",
     .convert = thunk_of<&fc::bgrx_601::bgrx_601>},
    {.name = "bgrx_709::bgrx_709",
     .source = "bgrx",
     .destination = "bgrx",
     .convert = thunk_of<&fc::bgrx_709::bgrx_709>},
    {.name = "rgbx::rgbx", .source = "rgbx", .destination = "rgbx", .convert = thunk_of<&fc::rgbx::rgbx>},
    {.name = "rgbx_601::rgbx_601",
     .source = "rgbx",
     .destination = "rgbx",
     .convert = thunk_of<&fc::rgbx_601::rgbx_601>},
    {.name = "rgbx_709::rgbx_709",
     .source = "rgbx",
     .destination = "rgbx",
     .convert = thunk_of<&fc::rgbx_709::rgbx_709>},
    {.name = "ycbcrx::ycbcrx", .source = "ycbcrx", .destination = "ycbcrx", .convert = thunk_of<&fc::ycbcrx::ycbcrx>},
    {.name = "vuyx::vuyx", .source = "vuyx", .destination = "vuyx", .convert = thunk_of<&fc::vuyx::vuyx>},
    {.name = "bgra::bgra",
     .source = "bgra",
     .destination = "bgra",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::bgra::bgra>},
    {.name = "bgra_601::bgra_601",
     .source = "bgra",
     .destination = "bgra",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::bgra_601::bgra_601>},
    {.name = "bgra_709::bgra_709",
     .source = "bgra",
     .destination = "bgra",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::bgra_709::bgra_709>},
    {.name = "rgba::rgba",
     .source = "rgba",
     .destination = "rgba",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::rgba::rgba>},
    {.name = "rgba_601::rgba_601",
     .source = "rgba",
     .destination = "rgba",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::rgba_601::rgba_601>},
    {.name = "rgba_709::rgba_709",
     .source = "rgba",
     .destination = "rgba",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::rgba_709::rgba_709>},
    {.name = "ycbcra::ycbcra",
     .source = "ycbcra",
     .destination = "ycbcra",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::ycbcra::ycbcra>},
    {.name = "vuya::vuya",
     .source = "vuya",
     .destination = "vuya",
     .extra = argument::opacity,
     .convert = thunk_of<&fc::vuya::vuya>},
    {.name = "v210::uyvy",
     .source = "v210",
     .destination = "uyvy",
     .convert = thunk_of<&fc::v210::uyvy>,
     .margin_pixels = 6},
    {.name = "uyvy::yuy2", .source = "uyvy", .destination = "yuy2", .convert = thunk_of<&fc::uyvy::yuy2>},
    {.name = "yuy2::uyvy", .source = "yuy2", .destination = "uyvy", .convert = thunk_of<&fc::yuy2::uyvy>},
    {.name = "bgra::uyvy",
     .source = "bgra",
     .destination = "uyvy",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::bgra::uyvy>,
     .irregular = blue_difference_in_v},
    {.name = "rgba::uyvy",
     .source = "rgba",
     .destination = "uyvy",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::rgba::uyvy>,
     .irregular = blue_difference_in_v},
    {.name = "bgrx::uyvy",
     .source = "bgrx",
     .destination = "uyvy",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::bgrx::uyvy>},
    {.name = "bgrx_601::uyvy",
     .source = "bgrx",
     .destination = "uyvy",
     .colors = matrix::bt601,
     .convert = thunk_of<&fc::bgrx_601::uyvy>},
    {.name = "bgrx_709::uyvy",
     .source = "bgrx",
     .destination = "uyvy",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::bgrx_709::uyvy>},
    {.name = "rgbx::uyvy",
     .source = "rgbx",
     .destination = "uyvy",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::rgbx::uyvy>},
    {.name = "rgbx_601::uyvy",
     .source = "rgbx",
     .destination = "uyvy",
     .colors = matrix::bt601,
     .convert = thunk_of<&fc::rgbx_601::uyvy>},
    {.name = "rgbx_709::uyvy",
     .source = "rgbx",
     .destination = "uyvy",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::rgbx_709::uyvy>},
    {.name = "bgr::uyvy",
     .source = "bgr",
     .destination = "uyvy",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::bgr::uyvy>,
     .read_past = {.bytes_at_odd_width = 3},
     .written_past = {.bytes_at_odd_width = 2}},
    {.name = "uyvy::bgr",
     .source = "uyvy",
     .destination = "bgr",
     .colors = matrix::by_argument,
     .extra = argument::color_space,
     .convert = thunk_of<&fc::uyvy::bgr>,
     .read_past = {.bytes_at_odd_width = 2},
     .written_past = {.bytes_at_odd_width = 3}},
    {.name = "uyvy::bgr_601",
     .source = "uyvy",
     .destination = "bgr",
     .colors = matrix::bt601,
     .convert = thunk_of<&fc::uyvy::bgr_601>,
     .read_past = {.bytes_at_odd_width = 2},
     .written_past = {.bytes_at_odd_width = 3}},
    {.name = "uyvy::bgr_709",
     .source = "uyvy",
     .destination = "bgr",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::uyvy::bgr_709>,
     .read_past = {.bytes_at_odd_width = 2},
     .written_past = {.bytes_at_odd_width = 3}},
    {.name = "uyvy::bgra",
     .source = "uyvy",
     .destination = "bgra",
     .colors = matrix::by_argument,
     .extra = argument::color_space,
     .convert = thunk_of<&fc::uyvy::bgra>},
    {.name = "uyvy::bgra_601",
     .source = "uyvy",
     .destination = "bgra",
     .colors = matrix::bt601,
     .convert = thunk_of<&fc::uyvy::bgra_601>},
    {.name = "uyvy::bgra_709",
     .source = "uyvy",
     .destination = "bgra",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::uyvy::bgra_709>},
    {.name = "uyvy::rgba",
     .source = "uyvy",
     .destination = "rgba",
     .colors = matrix::by_argument,
     .extra = argument::color_space,
     .convert = thunk_of<&fc::uyvy::rgba>},
    {.name = "uyvy::rgba_601",
     .source = "uyvy",
     .destination = "rgba",
     .colors = matrix::bt601,
     .convert = thunk_of<&fc::uyvy::rgba_601>},
    {.name = "uyvy::rgba_709",
     .source = "uyvy",
     .destination = "rgba",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::uyvy::rgba_709>},
    {.name = "uyvy::bgrx",
     .source = "uyvy",
     .destination = "bgrx",
     .colors = matrix::by_argument,
     .extra = argument::color_space,
     .convert = thunk_of<&fc::uyvy::bgrx>},
    {.name = "uyvy::bgrx_601",
     .source = "uyvy",
     .destination = "bgrx",
     .colors = matrix::bt601,
     .convert = thunk_of<&fc::uyvy::bgrx_601>},
    {.name = "uyvy::bgrx_709",
     .source = "uyvy",
     .destination = "bgrx",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::uyvy::bgrx_709>},
    {.name = "uyvy::rgbx",
     .source = "uyvy",
     .destination = "rgbx",
     .colors = matrix::by_argument,
     .extra = argument::color_space,
     .convert = thunk_of<&fc::uyvy::rgbx>},
    {.name = "uyvy::rgbx_601",
     .source = "uyvy",
     .destination = "rgbx",
     .colors = matrix::bt601,
     .convert = thunk_of<&fc::uyvy::rgbx_601>},
    {.name = "uyvy::rgbx_709",
     .source = "uyvy",
     .destination = "rgbx",
     .colors = matrix::bt709,
     .convert = thunk_of<&fc::uyvy::rgbx_709>},
});

}  // namespace detail

using detail::conversions;

}  // namespace morvane::catalogue
