// The formats, written by hand: a name, how chroma is sampled, and the groups of each plane.
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "rules/layout.h"

namespace morvane::tests::rules {
namespace {

constexpr sampling full = {1, 1};
constexpr sampling half = {2, 1};
constexpr sampling quarter = {2, 2};
constexpr bit_order big_endian = bit_order::big_endian;

format of(std::string_view name, sampling chroma, std::initializer_list<std::string_view> planes,
          bit_order order = bit_order::little_endian) {
  format made{.name = name, .chroma = chroma};
  for (const std::string_view plane : planes) made.planes.push_back(group_of(plane, order));
  return made;
}

format with_stride(format f, int pixels, int bytes) {
  f.stride_pixels = pixels;
  f.stride_bytes = bytes;
  return f;
}

// Four words of three samples and two bits.
constexpr std::string_view words_of_v210 =
    "Cb10 Y10 Cr10 -2 "
    "Y10 Cb10 Y10 -2 "
    "Cr10 Y10 Cb10 -2 "
    "Y10 Cr10 Y10 -2";

// The upper eight bits of all samples, and the lower two of all.
constexpr std::string_view bytes_of_yuyv_matrox_10 =
    "Y8 Cb8 Y8 Cr8  Y8 Cb8 Y8 Cr8  Y8 Cb8 Y8 Cr8  Y8 Cb8 Y8 Cr8 "
    "Y8 Cb8 Y8 Cr8  Y8 Cb8 Y8 Cr8  Y8 Cb8 Y8 Cr8  Y8 Cb8 Y8 Cr8 "
    "+2 +2 +2 +2  +2 +2 +2 +2  +2 +2 +2 +2  +2 +2 +2 +2 "
    "+2 +2 +2 +2  +2 +2 +2 +2  +2 +2 +2 +2  +2 +2 +2 +2";

std::vector<format> table() {
  return {
      // YCbCr of several samples a group.
      of("uyvy", half, {"Cb8 Y8 Cr8 Y8"}),
      of("yuy2", half, {"Y8 Cb8 Y8 Cr8"}),
      with_stride(of("v210", half, {words_of_v210}), 48, 128),
      of("yvyu", half, {"Y8 Cr8 Y8 Cb8"}),
      of("yuyv_matrox_10", half, {bytes_of_yuyv_matrox_10}),
      of("yua_yva_matrox_10", half, {"Y10 Cb10 A10 -2 Y10 Cr10 A10 -2"}),
      of("uyvy_a", half, {"Cb8 Y8 Cr8 Y8", "A8"}),
      of("uyvy_uyvy", half, {"Cb8 Y8 Cr8 Y8", "Cb8 Y8 Cr8 Y8"}),

      // YCbCr of a pixel a group.
      of("ycbcra", full, {"Y8 Cb8 Cr8 A8"}),
      of("ycbcrx", full, {"Y8 Cb8 Cr8 x8"}),
      of("crcbya", full, {"Cr8 Cb8 Y8 A8"}),
      of("crcbyx", full, {"Cr8 Cb8 Y8 x8"}),
      of("vuya", full, {"Cr8 Cb8 Y8 A8"}),
      of("vuyx", full, {"Cr8 Cb8 Y8 x8"}),
      of("ayuv", full, {"A8 Y8 Cb8 Cr8"}),
      of("xv36", full, {"-4 Cb12 -4 Y12 -4 Cr12 x16"}),
      of("y416", full, {"Cb16 Y16 Cr16 A16"}),
      of("ayuv64", full, {"A16 Y16 Cb16 Cr16"}),
      of("vuya_16", full, {"Cb16 Cr16 Y16 A16"}),
      of("y210", half, {"-6 Y10 -6 Cb10 -6 Y10 -6 Cr10"}),
      of("y212", half, {"-4 Y12 -4 Cb12 -4 Y12 -4 Cr12"}),
      of("y216", half, {"Y16 Cb16 Y16 Cr16"}),
      of("st2110_422_10", half, {"Cb10 Y10 Cr10 Y10"}, big_endian),
      of("st2110_422_12", half, {"Cb12 Y12 Cr12 Y12"}, big_endian),
      of("xv30", full, {"Cb10 Y10 Cr10 x2"}),
      of("y410", full, {"Cb10 Y10 Cr10 A2"}),
      of("vuya_f32", full, {"Cr32f Cb32f Y32f A32f"}),

      // YCbCr of a plane of luma and others of chroma.
      of("y_uv_422", half, {"Y8", "Cb8 Cr8"}),
      of("y_uv_420", quarter, {"Y8", "Cb8 Cr8"}),
      of("y_uv_444", full, {"Y8", "Cb8 Cr8"}),
      of("y_vu_422", half, {"Y8", "Cr8 Cb8"}),
      of("y_vu_420", quarter, {"Y8", "Cr8 Cb8"}),
      of("y_vu_444", full, {"Y8", "Cr8 Cb8"}),
      of("y_u_v_422", half, {"Y8", "Cb8", "Cr8"}),
      of("y_u_v_420", quarter, {"Y8", "Cb8", "Cr8"}),
      of("y_u_v_444", full, {"Y8", "Cb8", "Cr8"}),
      of("y_v_u_420", quarter, {"Y8", "Cr8", "Cb8"}),
      of("y_u_v_a_420", quarter, {"Y8", "Cb8", "Cr8", "A8"}),
      of("y_u_v_a_422", half, {"Y8", "Cb8", "Cr8", "A8"}),
      of("y_u_v_a_444", full, {"Y8", "Cb8", "Cr8", "A8"}),

      // The same of words.
      of("y_u_v_420_10u16", quarter, {"Y10 -6", "Cb10 -6", "Cr10 -6"}),
      of("y_u_v_422_10u16", half, {"Y10 -6", "Cb10 -6", "Cr10 -6"}),
      of("y_u_v_444_10u16", full, {"Y10 -6", "Cb10 -6", "Cr10 -6"}),
      of("y_u_v_420_12u16", quarter, {"Y12 -4", "Cb12 -4", "Cr12 -4"}),
      of("y_u_v_422_12u16", half, {"Y12 -4", "Cb12 -4", "Cr12 -4"}),
      of("y_u_v_444_12u16", full, {"Y12 -4", "Cb12 -4", "Cr12 -4"}),
      of("y_u_v_420_u16", quarter, {"Y16", "Cb16", "Cr16"}),
      of("y_u_v_422_u16", half, {"Y16", "Cb16", "Cr16"}),
      of("y_u_v_444_u16", full, {"Y16", "Cb16", "Cr16"}),
      of("y_u_v_a_422_10u16", half, {"Y10 -6", "Cb10 -6", "Cr10 -6", "A10 -6"}),
      of("y_u_v_a_444_10u16", full, {"Y10 -6", "Cb10 -6", "Cr10 -6", "A10 -6"}),
      of("y_u_v_a_444_12u16", full, {"Y12 -4", "Cb12 -4", "Cr12 -4", "A12 -4"}),
      of("y_u_v_a_444_u16", full, {"Y16", "Cb16", "Cr16", "A16"}),
      of("p012", quarter, {"-4 Y12", "-4 Cb12 -4 Cr12"}),
      of("p016", quarter, {"Y16", "Cb16 Cr16"}),
      of("p210", half, {"-6 Y10", "-6 Cb10 -6 Cr10"}),
      of("p212", half, {"-4 Y12", "-4 Cb12 -4 Cr12"}),
      of("p410", full, {"-6 Y10", "-6 Cb10 -6 Cr10"}),
      of("p412", full, {"-4 Y12", "-4 Cb12 -4 Cr12"}),
      of("p416", full, {"Y16", "Cb16 Cr16"}),
      of("p216", half, {"Y16", "Cb16 Cr16"}),
      of("p010", quarter, {"-6 Y10", "-6 Cb10 -6 Cr10"}),
      of("pa16", half, {"Y16", "Cb16 Cr16", "A16"}),
      of("ya_uv", half, {"Y8 A8", "Cb8 Cr8"}),
      of("ya_uv_16", half, {"Y16 A16", "Cb16 Cr16"}),

      of("bgra", full, {"B8 G8 R8 A8"}),
      of("rgba", full, {"R8 G8 B8 A8"}),
      of("bgrx", full, {"B8 G8 R8 x8"}),
      of("rgbx", full, {"R8 G8 B8 x8"}),
      of("bgr", full, {"B8 G8 R8"}),
      of("rgb", full, {"R8 G8 B8"}),
      of("argb", full, {"A8 R8 G8 B8"}),
      of("abgr", full, {"A8 B8 G8 R8"}),
      of("xrgb", full, {"x8 R8 G8 B8"}),
      of("xbgr", full, {"x8 B8 G8 R8"}),
      of("r_g_b", full, {"R8", "G8", "B8"}),
      of("g_b_r", full, {"G8", "B8", "R8"}),
      of("g_b_r_a", full, {"G8", "B8", "R8", "A8"}),
      of("g_b_r_10u16", full, {"G10 -6", "B10 -6", "R10 -6"}),
      of("g_b_r_12u16", full, {"G12 -4", "B12 -4", "R12 -4"}),
      of("g_b_r_u16", full, {"G16", "B16", "R16"}),
      of("g_b_r_a_10u16", full, {"G10 -6", "B10 -6", "R10 -6", "A10 -6"}),
      of("g_b_r_a_12u16", full, {"G12 -4", "B12 -4", "R12 -4", "A12 -4"}),
      of("g_b_r_a_u16", full, {"G16", "B16", "R16", "A16"}),
      of("rgba64", full, {"R16 G16 B16 A16"}),
      of("bgra64", full, {"B16 G16 R16 A16"}),
      of("rgb48", full, {"R16 G16 B16"}),
      of("bgr48", full, {"B16 G16 R16"}),
      of("rgbf32", full, {"R32f G32f B32f"}),
      of("rgbaf32", full, {"R32f G32f B32f A32f"}),
      of("g_b_r_f32", full, {"G32f", "B32f", "R32f"}),
      of("r_g_b_f32", full, {"R32f", "G32f", "B32f"}),
      of("rgbaf16", full, {"R16f G16f B16f A16f"}),
      of("R12L", full,
         {"R12 G12 B12 R12 G12 B12 R12 G12 B12 R12 G12 B12 "
          "R12 G12 B12 R12 G12 B12 R12 G12 B12 R12 G12 B12"}),
      of("x2rgb10", full, {"B10 G10 R10 x2"}),
      of("x2bgr10", full, {"R10 G10 B10 x2"}),
      with_stride(of("r210", full, {"-2 R10 G10 B10"}, big_endian), 64, 256),
      of("R10k", full, {"R10 G10 B10 -2"}, big_endian),
      with_stride(of("R10l", full, {"-2 B10 G10 R10"}), 64, 256),

      of("y", full, {"Y8"}),
      of("y_10u16", full, {"Y10 -6"}),
      of("y_12u16", full, {"Y12 -4"}),
      of("y16", full, {"Y16"}),
      of("L", full, {"L8"}),

      // A part of a picture.
      of("alpha", full, {"A8"}),
      of("alpha_10u16", full, {"A10 -6"}),
      of("alpha_12u16", full, {"A12 -4"}),
      of("alpha_u16", full, {"A16"}),
      of("cb_cr_8_420", quarter, {"Cb8", "Cr8"}),
      of("cbcr_8_420", quarter, {"Cb8 Cr8"}),
      of("cb_cr_16_422", half, {"Cb16", "Cr16"}),
      of("cbcr_16_422", half, {"Cb16 Cr16"}),
  };
}

const std::vector<format>& formats() {
  static const std::vector<format> all = table();
  return all;
}

}  // namespace

const format& format_of(std::string_view name) {
  for (const format& f : formats())
    if (f.name == name) return f;
  throw std::invalid_argument("no rules for a format " + std::string(name));
}

std::vector<std::string_view> format_names() {
  std::vector<std::string_view> names;
  for (const format& f : formats()) names.push_back(f.name);
  return names;
}

}  // namespace morvane::tests::rules
