// The table of conversions.
#include "conversions.h"

#include <array>

#include "../kernel/words.h"
#include "kernel_entry.h"

namespace morvane::catalogue {

namespace {

namespace fc = Processing::Morvane::format_conversion;
namespace kernel = fc::kernel;

using fill_u8 = void(std::uint8_t*, int, int, int, int);
using fill_u16 = void(std::uint16_t*, int, int, int, int);

using chroma_of_planes = void(const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*, int, int, int);
using chroma_of_pairs = void(const std::uint8_t*, int, std::uint8_t*, int, int, int);
using one_to_two = void(const std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, int, int);
using two_to_two = void(const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, int,
                        int);
using three_to_one = void(const std::uint8_t*, int, const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*,
                          int, int, int);
using three_to_two = void(const std::uint8_t*, int, const std::uint8_t*, int, const std::uint8_t*, int, std::uint8_t*,
                          int, std::uint8_t*, int, int, int);
using one_to_three = void(const std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, std::uint8_t*, int, int,
                          int, bool*);

constexpr conversion row(std::string_view name, std::string_view source, std::string_view destination,
                         entry_point entry, conversion rest = {}) {
  rest.name = name;
  rest.source = source;
  rest.destination = destination;
  rest.entry = entry;
  return rest;
}

// What several rows have in common.

constexpr conversion with_601 = {.colors = matrix::bt601};
constexpr conversion with_709 = {.colors = matrix::bt709};
constexpr conversion by_color_space = {.colors = matrix::by_argument, .extra = argument::color_space};
constexpr conversion completes_pair = {.completes_pair = true};
constexpr conversion reports_opacity = {.extra = argument::opacity};

constexpr conversion rows_with(matrix m) {
  return {.colors = m, .by_rows = true};
}

constexpr conversion rgb_with_key(matrix m) {
  return {.colors = m, .extra = argument::opacity, .overlapping = overlap::with_source};
}

constexpr conversion four_bytes_copied = {
    .bytes_past_per_pixel = 1,
    .irregular = "copies four bytes for every three-byte pixel, so each row writes past its end"};

constexpr conversion blue_difference_in_v = {
    .colors = matrix::bt709,
    .overlapping = overlap::of_all,
    .irregular = "composites over black and writes the blue difference into V, where the red difference is expected"};

constexpr conversion last_pixel_in_first(matrix m) {
  return {.colors = m, .irregular = "stores luma and Cr of each line's last pixel alone, in the line's first pixel"};
}

constexpr std::string_view first_pair_alone = "converts the first pair of each line and leaves the rest unwritten";
constexpr std::string_view even_luma_without_upper_byte = "leaves the upper byte of every even luma sample zero";
constexpr std::string_view cr_with_bits_of_cb = "stores the lower two bits of Cb for Cr as well";

constexpr auto table = std::to_array<conversion>({
    row("black::uyvy", "", "uyvy", entry_of<&fc::black::uyvy>),
    row("black::alpha", "", "alpha", entry_of<static_cast<fill_u8*>(&fc::black::alpha)>, {.extra = argument::value}),
    row("black::alpha", "", "alpha_u16", entry_of<static_cast<fill_u16*>(&fc::black::alpha)>,
        {.extra = argument::value}),
    row("y::y", "y", "y", entry_of<&fc::y::y>),
    row("uyvy::uyvy", "uyvy", "uyvy", entry_of<&fc::uyvy::uyvy>),
    row("bgr::bgr", "bgr", "bgr", entry_of<&fc::bgr::bgr>, four_bytes_copied),
    row("bgr_601::bgr_601", "bgr", "bgr", entry_of<&fc::bgr_601::bgr_601>, four_bytes_copied),
    row("bgr_709::bgr_709", "bgr", "bgr", entry_of<&fc::bgr_709::bgr_709>, four_bytes_copied),
    row("bgrx::bgrx", "bgrx", "bgrx", entry_of<&fc::bgrx::bgrx>),
    row("bgrx_601::bgrx_601", "bgrx", "bgrx", entry_of<&fc::bgrx_601::bgrx_601>),
    row("bgrx_709::bgrx_709", "bgrx", "bgrx", entry_of<&fc::bgrx_709::bgrx_709>),
    row("rgbx::rgbx", "rgbx", "rgbx", entry_of<&fc::rgbx::rgbx>),
    row("rgbx_601::rgbx_601", "rgbx", "rgbx", entry_of<&fc::rgbx_601::rgbx_601>),
    row("rgbx_709::rgbx_709", "rgbx", "rgbx", entry_of<&fc::rgbx_709::rgbx_709>),
    row("ycbcrx::ycbcrx", "ycbcrx", "ycbcrx", entry_of<&fc::ycbcrx::ycbcrx>),
    row("vuyx::vuyx", "vuyx", "vuyx", entry_of<&fc::vuyx::vuyx>),
    row("bgra::bgra", "bgra", "bgra", entry_of<&fc::bgra::bgra>, reports_opacity),
    row("bgra_601::bgra_601", "bgra", "bgra", entry_of<&fc::bgra_601::bgra_601>, reports_opacity),
    row("bgra_709::bgra_709", "bgra", "bgra", entry_of<&fc::bgra_709::bgra_709>, reports_opacity),
    row("rgba::rgba", "rgba", "rgba", entry_of<&fc::rgba::rgba>, reports_opacity),
    row("rgba_601::rgba_601", "rgba", "rgba", entry_of<&fc::rgba_601::rgba_601>, reports_opacity),
    row("rgba_709::rgba_709", "rgba", "rgba", entry_of<&fc::rgba_709::rgba_709>, reports_opacity),
    row("ycbcra::ycbcra", "ycbcra", "ycbcra", entry_of<&fc::ycbcra::ycbcra>, reports_opacity),
    row("vuya::vuya", "vuya", "vuya", entry_of<&fc::vuya::vuya>, reports_opacity),
    row("v210::uyvy", "v210", "uyvy", entry_of<&fc::v210::uyvy>, {.margin_pixels = 6}),
    row("uyvy::yuy2", "uyvy", "yuy2", entry_of<&fc::uyvy::yuy2>, {.overlapping = overlap::of_all}),
    row("yuy2::uyvy", "yuy2", "uyvy", entry_of<&fc::yuy2::uyvy>, {.overlapping = overlap::of_all}),
    row("bgra::uyvy", "bgra", "uyvy", entry_of<&fc::bgra::uyvy>, blue_difference_in_v),
    row("rgba::uyvy", "rgba", "uyvy", entry_of<&fc::rgba::uyvy>, blue_difference_in_v),
    row("bgrx::uyvy", "bgrx", "uyvy", entry_of<&fc::bgrx::uyvy>,
        {.colors = matrix::bt709, .overlapping = overlap::of_all}),
    row("bgrx_601::uyvy", "bgrx", "uyvy", entry_of<&fc::bgrx_601::uyvy>, rows_with(matrix::bt601)),
    row("bgrx_709::uyvy", "bgrx", "uyvy", entry_of<&fc::bgrx_709::uyvy>, rows_with(matrix::bt709)),
    row("rgbx::uyvy", "rgbx", "uyvy", entry_of<&fc::rgbx::uyvy>,
        {.colors = matrix::bt709, .overlapping = overlap::of_all}),
    row("rgbx_601::uyvy", "rgbx", "uyvy", entry_of<&fc::rgbx_601::uyvy>, rows_with(matrix::bt601)),
    row("rgbx_709::uyvy", "rgbx", "uyvy", entry_of<&fc::rgbx_709::uyvy>, rows_with(matrix::bt709)),
    row("bgr::uyvy", "bgr", "uyvy", entry_of<&fc::bgr::uyvy>, {.colors = matrix::bt709, .completes_pair = true}),
    row("uyvy::bgr", "uyvy", "bgr", entry_of<&fc::uyvy::bgr>,
        {.colors = matrix::by_argument, .extra = argument::color_space, .completes_pair = true}),
    row("uyvy::bgr_601", "uyvy", "bgr", entry_of<&fc::uyvy::bgr_601>,
        {.colors = matrix::bt601, .completes_pair = true}),
    row("uyvy::bgr_709", "uyvy", "bgr", entry_of<&fc::uyvy::bgr_709>,
        {.colors = matrix::bt709, .completes_pair = true}),
    row("uyvy::bgra", "uyvy", "bgra", entry_of<&fc::uyvy::bgra>,
        {.colors = matrix::by_argument, .extra = argument::color_space, .by_rows = true}),
    row("uyvy::bgra_601", "uyvy", "bgra", entry_of<&fc::uyvy::bgra_601>, rows_with(matrix::bt601)),
    row("uyvy::bgra_709", "uyvy", "bgra", entry_of<&fc::uyvy::bgra_709>, rows_with(matrix::bt709)),
    row("uyvy::rgba", "uyvy", "rgba", entry_of<&fc::uyvy::rgba>,
        {.colors = matrix::by_argument, .extra = argument::color_space, .by_rows = true}),
    row("uyvy::rgba_601", "uyvy", "rgba", entry_of<&fc::uyvy::rgba_601>, rows_with(matrix::bt601)),
    row("uyvy::rgba_709", "uyvy", "rgba", entry_of<&fc::uyvy::rgba_709>, rows_with(matrix::bt709)),
    row("uyvy::bgrx", "uyvy", "bgrx", entry_of<&fc::uyvy::bgrx>,
        {.colors = matrix::by_argument, .extra = argument::color_space, .by_rows = true}),
    row("uyvy::bgrx_601", "uyvy", "bgrx", entry_of<&fc::uyvy::bgrx_601>, rows_with(matrix::bt601)),
    row("uyvy::bgrx_709", "uyvy", "bgrx", entry_of<&fc::uyvy::bgrx_709>, rows_with(matrix::bt709)),
    row("uyvy::rgbx", "uyvy", "rgbx", entry_of<&fc::uyvy::rgbx>,
        {.colors = matrix::by_argument, .extra = argument::color_space, .by_rows = true}),
    row("uyvy::rgbx_601", "uyvy", "rgbx", entry_of<&fc::uyvy::rgbx_601>, rows_with(matrix::bt601)),
    row("uyvy::rgbx_709", "uyvy", "rgbx", entry_of<&fc::uyvy::rgbx_709>, rows_with(matrix::bt709)),
    row("uyvy::y_uv_422", "uyvy", "y_uv_422", entry_of<&fc::uyvy::y_uv_422>, {.overlapping = overlap::of_all}),
    row("uyvy::y_uv_420", "uyvy", "y_uv_420", entry_of<&fc::uyvy::y_uv_420>,
        {.by_rows = true, .overlapping = overlap::of_all}),
    row("uyvy::y_u_v_422", "uyvy", "y_u_v_422", entry_of<&fc::uyvy::y_u_v_422>, {.overlapping = overlap::of_all}),
    row("uyvy::y_u_v_420", "uyvy", "y_u_v_420", entry_of<&fc::uyvy::y_u_v_420>,
        {.by_rows = true, .overlapping = overlap::of_all}),
    row("uyvy::y", "uyvy", "y", entry_of<&fc::uyvy::y>, {.extra = argument::rescale, .completes_pair = true}),
    row("uyvy::ycbcrx", "uyvy", "ycbcrx", entry_of<&fc::uyvy::ycbcrx>, completes_pair),
    row("y::y16", "y", "y16", entry_of<&fc::y::y16>),
    row("y::uyvy", "y", "uyvy", entry_of<&fc::y::uyvy>, {.extra = argument::rescale}),
    row("y16::y16", "y16", "y16", entry_of<&fc::y16::y16>, {.extra = argument::rescale}),
    row("y_uv::y_uv", "y_uv_420", "y_uv_420", entry_of<&fc::y_uv::y_uv>),
    row("y_uv::y_uv_to422", "y_uv_420", "y_uv_422", entry_of<&fc::y_uv::y_uv_to422>, {.by_rows = true}),
    row("y_u_v::y_uv", "y_u_v_420", "y_uv_420", entry_of<&fc::y_u_v::y_uv>),
    row("y_u_v::y_uv_to422", "y_u_v_420", "y_uv_422", entry_of<&fc::y_u_v::y_uv_to422>, {.by_rows = true}),
    row("cb_cr_8_420::cbcr_16_422", "cb_cr_8_420", "cbcr_16_422",
        entry_of<static_cast<chroma_of_planes*>(&fc::cb_cr_8_420::cbcr_16_422)>,
        {.pixels_per_xres = 2, .rows_per_yres = 2, .by_rows = true}),
    row("cb_cr_16_422::cbcr_16_422", "cb_cr_16_422", "cbcr_16_422", entry_of<&fc::cb_cr_16_422::cbcr_16_422>,
        {.pixels_per_xres = 2, .by_rows = true}),
    row("cbcr_8_420::cbcr_16_422", "cbcr_8_420", "cbcr_16_422",
        entry_of<static_cast<chroma_of_pairs*>(&fc::cbcr_8_420::cbcr_16_422)>,
        {.completes_pair = true, .rows_per_yres = 2, .by_rows = true}),
    row("bgra::ycbcra", "bgra", "ycbcra", entry_of<&fc::bgra::ycbcra>, last_pixel_in_first(matrix::bt709)),
    row("bgra::crcbya", "bgra", "crcbya", entry_of<&fc::bgra::crcbya>, last_pixel_in_first(matrix::bt709)),
    row("bgra_601::ycbcra", "bgra", "ycbcra", entry_of<&fc::bgra_601::ycbcra>, last_pixel_in_first(matrix::bt601)),
    row("bgra_601::crcbya", "bgra", "crcbya", entry_of<&fc::bgra_601::crcbya>, last_pixel_in_first(matrix::bt601)),
    row("bgra_709::ycbcra", "bgra", "ycbcra", entry_of<&fc::bgra_709::ycbcra>, last_pixel_in_first(matrix::bt709)),
    row("bgra_709::crcbya", "bgra", "crcbya", entry_of<&fc::bgra_709::crcbya>, last_pixel_in_first(matrix::bt709)),
    row("rgba::ycbcra", "rgba", "ycbcra", entry_of<&fc::rgba::ycbcra>, last_pixel_in_first(matrix::bt709)),
    row("rgba::crcbya", "rgba", "crcbya", entry_of<&fc::rgba::crcbya>, last_pixel_in_first(matrix::bt709)),
    row("rgba_601::ycbcra", "rgba", "ycbcra", entry_of<&fc::rgba_601::ycbcra>, last_pixel_in_first(matrix::bt601)),
    row("rgba_601::crcbya", "rgba", "crcbya", entry_of<&fc::rgba_601::crcbya>, last_pixel_in_first(matrix::bt601)),
    row("rgba_709::ycbcra", "rgba", "ycbcra", entry_of<&fc::rgba_709::ycbcra>, last_pixel_in_first(matrix::bt709)),
    row("rgba_709::crcbya", "rgba", "crcbya", entry_of<&fc::rgba_709::crcbya>, last_pixel_in_first(matrix::bt709)),
    row("bgrx::ycbcrx", "bgrx", "ycbcrx", entry_of<&fc::bgrx::ycbcrx>, last_pixel_in_first(matrix::bt709)),
    row("bgrx::crcbyx", "bgrx", "crcbyx", entry_of<&fc::bgrx::crcbyx>, last_pixel_in_first(matrix::bt709)),
    row("bgrx_601::ycbcrx", "bgrx", "ycbcrx", entry_of<&fc::bgrx_601::ycbcrx>, last_pixel_in_first(matrix::bt601)),
    row("bgrx_601::crcbyx", "bgrx", "crcbyx", entry_of<&fc::bgrx_601::crcbyx>, last_pixel_in_first(matrix::bt601)),
    row("bgrx_709::ycbcrx", "bgrx", "ycbcrx", entry_of<&fc::bgrx_709::ycbcrx>, last_pixel_in_first(matrix::bt709)),
    row("bgrx_709::crcbyx", "bgrx", "crcbyx", entry_of<&fc::bgrx_709::crcbyx>, last_pixel_in_first(matrix::bt709)),
    row("rgbx::ycbcrx", "rgbx", "ycbcrx", entry_of<&fc::rgbx::ycbcrx>, last_pixel_in_first(matrix::bt709)),
    row("rgbx::crcbyx", "rgbx", "crcbyx", entry_of<&fc::rgbx::crcbyx>, last_pixel_in_first(matrix::bt709)),
    row("rgbx_601::ycbcrx", "rgbx", "ycbcrx", entry_of<&fc::rgbx_601::ycbcrx>, last_pixel_in_first(matrix::bt601)),
    row("rgbx_601::crcbyx", "rgbx", "crcbyx", entry_of<&fc::rgbx_601::crcbyx>, last_pixel_in_first(matrix::bt601)),
    row("rgbx_709::ycbcrx", "rgbx", "ycbcrx", entry_of<&fc::rgbx_709::ycbcrx>, last_pixel_in_first(matrix::bt709)),
    row("rgbx_709::crcbyx", "rgbx", "crcbyx", entry_of<&fc::rgbx_709::crcbyx>, last_pixel_in_first(matrix::bt709)),
    row("bgra::uyvy_a", "bgra", "uyvy_a", entry_of<&fc::bgra::uyvy_a>, rgb_with_key(matrix::bt709)),
    row("bgra_601::uyvy_a", "bgra", "uyvy_a", entry_of<&fc::bgra_601::uyvy_a>, rgb_with_key(matrix::bt601)),
    row("bgra_709::uyvy_a", "bgra", "uyvy_a", entry_of<&fc::bgra_709::uyvy_a>, rgb_with_key(matrix::bt709)),
    row("rgba::uyvy_a", "rgba", "uyvy_a", entry_of<&fc::rgba::uyvy_a>, rgb_with_key(matrix::bt709)),
    row("rgba_601::uyvy_a", "rgba", "uyvy_a", entry_of<&fc::rgba_601::uyvy_a>, rgb_with_key(matrix::bt601)),
    row("rgba_709::uyvy_a", "rgba", "uyvy_a", entry_of<&fc::rgba_709::uyvy_a>, rgb_with_key(matrix::bt709)),
    row("uyvy_a::bgra", "uyvy_a", "bgra", entry_of<&fc::uyvy_a::bgra>, by_color_space),
    row("uyvy_a::bgra_601", "uyvy_a", "bgra", entry_of<&fc::uyvy_a::bgra_601>, with_601),
    row("uyvy_a::bgra_709", "uyvy_a", "bgra", entry_of<&fc::uyvy_a::bgra_709>, with_709),
    row("uyvy_a::rgba", "uyvy_a", "rgba", entry_of<&fc::uyvy_a::rgba>, by_color_space),
    row("uyvy_a::rgba_601", "uyvy_a", "rgba", entry_of<&fc::uyvy_a::rgba_601>, with_601),
    row("uyvy_a::rgba_709", "uyvy_a", "rgba", entry_of<&fc::uyvy_a::rgba_709>, with_709),
    row("uyvy::ya_uv", "uyvy_uyvy", "ya_uv", entry_of<&fc::uyvy::ya_uv>,
        {.extra = argument::rescale, .completes_pair = true, .irregular = first_pair_alone}),
    row("uyvy_a::ya_uv", "uyvy_a", "ya_uv", entry_of<&fc::uyvy_a::ya_uv>, completes_pair),
    row("uyvy_a::uyvy", "uyvy_a", "uyvy", entry_of<&fc::uyvy_a::uyvy>, completes_pair),
    row("uyvy_a::ycbcra", "uyvy_a", "ycbcra", entry_of<&fc::uyvy_a::ycbcra>, completes_pair),
    row("uyvy_a::crcbya", "uyvy_a", "crcbya", entry_of<&fc::uyvy_a::crcbya>, completes_pair),
    row("ycbcra::uyvy_a", "ycbcra", "uyvy_a", entry_of<&fc::ycbcra::uyvy_a>,
        {.extra = argument::opacity, .completes_pair = true}),
    row("ycbcra::uyvy", "ycbcra", "uyvy", entry_of<&fc::ycbcra::uyvy>, completes_pair),
    row("vuya::uyvy_a", "vuya", "uyvy_a", entry_of<&fc::vuya::uyvy_a>,
        {.extra = argument::opacity, .completes_pair = true}),
    row("vuya::uyvy", "vuya", "uyvy", entry_of<&fc::vuya::uyvy>, completes_pair),
    row("ycbcrx::uyvy", "ycbcrx", "uyvy", entry_of<&fc::ycbcrx::uyvy>, completes_pair),
    row("vuyx::uyvy", "vuyx", "uyvy", entry_of<&fc::vuyx::uyvy>, completes_pair),
    row("uyvy::r_g_b", "uyvy", "r_g_b", entry_of<&fc::uyvy::r_g_b>,
        {.colors = matrix::by_argument, .extra = argument::color_space, .one_stride = true}),
    row("uyvy::r_g_b_601", "uyvy", "r_g_b", entry_of<&fc::uyvy::r_g_b_601>,
        {.colors = matrix::bt601, .one_stride = true}),
    row("uyvy::r_g_b_709", "uyvy", "r_g_b", entry_of<&fc::uyvy::r_g_b_709>,
        {.colors = matrix::bt709, .one_stride = true}),
    row("L::bgra", "L", "bgra", entry_of<&fc::L::bgra>),
    row("uyvy::p216", "uyvy", "p216", entry_of<static_cast<one_to_two*>(&fc::uyvy::p216)>, completes_pair),
    row("y_uv::p216", "y_uv_420", "p216", entry_of<static_cast<two_to_two*>(&fc::y_uv::p216)>,
        {.completes_row_pair = true}),
    row("ycbcra::pa16", "ycbcra", "pa16", entry_of<static_cast<one_to_three*>(&fc::ycbcra::pa16)>,
        {.extra = argument::opacity, .completes_pair = true}),
    row("p216::uyvy", "p216", "uyvy", entry_of<&fc::p216::uyvy>),
    row("p216::yuy2", "p216", "yuy2", entry_of_kernel<kernel::p216_to_p208<kernel::luma_place::first>>),
    row("p216::p010", "p216", "p010", entry_of<&fc::p216::p010>),
    row("p216::rgbx_2020", "p216", "rgbx", entry_of<&fc::p216::rgbx_2020>, {.colors = matrix::bt2020, .by_rows = true}),
    row("pa16::p216", "pa16", "p216", entry_of<static_cast<three_to_two*>(&fc::pa16::p216)>, completes_pair),
    row("pa16::ya_uv", "pa16", "ya_uv_16", entry_of<&fc::pa16::ya_uv>, {.copies_padding = "cbcr"}),
    row("pa16::vuya_16", "pa16", "vuya_16", entry_of<&fc::pa16::vuya_16>, completes_pair),
    row("pa16::vuya_f32", "pa16", "vuya_f32", entry_of<static_cast<three_to_one*>(&fc::pa16::vuya_f32)>,
        completes_pair),
    row("yuyv_matrox_10::uyvy", "yuyv_matrox_10", "uyvy", entry_of<&fc::yuyv_matrox_10::uyvy>, completes_pair),
    row("yuyv_matrox_10::p216", "yuyv_matrox_10", "p216", entry_of<&fc::yuyv_matrox_10::p216>,
        {.completes_pair = true, .by_rows = true, .irregular = even_luma_without_upper_byte}),
    row("yuyv_matrox_10::black", "", "yuyv_matrox_10", entry_of<&fc::yuyv_matrox_10::black>,
        {.completes_pair = true, .by_rows = true}),
    row("p216::yuyv_matrox_10", "p216", "yuyv_matrox_10", entry_of<&fc::p216::yuyv_matrox_10>, completes_pair),
    row("pa16::yuyv_matrox_10", "pa16", "yuyv_matrox_10", entry_of<&fc::pa16::yuyv_matrox_10>,
        {.completes_pair = true, .irregular = cr_with_bits_of_cb}),
    row("pa16::yua_yva_matrox_10", "pa16", "yua_yva_matrox_10", entry_of<&fc::pa16::yua_yva_matrox_10>),
    row("yua_yva_matrox_10::pa16", "yua_yva_matrox_10", "pa16", entry_of<&fc::yua_yva_matrox_10::pa16>),
    row("alpha_u16::yuyv_matrox_10", "alpha_u16", "yuyv_matrox_10", entry_of<&fc::alpha_u16::yuyv_matrox_10>,
        completes_pair),
    row("alpha::alpha_u16", "alpha", "alpha_u16", entry_of<&fc::alpha::alpha_u16>),
    row("alpha_u16::alpha", "alpha_u16", "alpha", entry_of<&fc::alpha_u16::alpha>),
    row("alpha_10u16::alpha_u16", "alpha_10u16", "alpha_u16", entry_of<&fc::alpha_10u16::alpha_u16>),
    row("alpha_12u16::alpha_u16", "alpha_12u16", "alpha_u16", entry_of<&fc::alpha_12u16::alpha_u16>),
    row("y_10u16::y", "y_10u16", "y", entry_of<&fc::y_10u16::y>),
    row("bgra64::alpha16", "bgra64", "alpha_u16", entry_of<&fc::bgra64::alpha16>),
});

}  // namespace

constinit const std::span<const conversion> conversions = table;

}  // namespace morvane::catalogue
