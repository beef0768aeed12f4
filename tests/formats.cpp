// Every format of the catalogue against what is known of it elsewhere: its names in other software, and its layout.
#include "catalogue/formats.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <sstream>
#include <string>
#include <string_view>

#if __has_include(<linux/videodev2.h>)
#include <linux/videodev2.h>
#endif

namespace morvane::tests {
namespace {

using catalogue::format;
using catalogue::plane;

// Written by hand. A line for each format:
//   name: model, whether it has alpha, multiples of width and height, that of rows where they have one, FourCC, names
//   in ffmpeg, V4L2 and GStreamer: planes
// and of a plane
//   name bytes/pixels of a group, sample, components, image rows to a row where these are several, what is not usual of
//   its words
constexpr std::string_view known_formats = R"(
uyvy: ycbcr 2x1, 'UYVY' uyvy422 UYVY UYVY: uyvy 4/2 u8 Cb Y Cr Y
yuy2: ycbcr 2x1, 'YUY2' yuyv422 YUYV YUY2: yuy2 4/2 u8 Y Cb Y Cr
v210: ycbcr 2x1 128 bytes, 'v210' v210 - v210: v210 16/6 3x10 Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y

bgra: rgb alpha 1x1, 'BGRA' bgra ABGR32 BGRA: bgra 4/1 u8 B G R A
rgba: rgb alpha 1x1, 'RGBA' rgba RGBA32 RGBA: rgba 4/1 u8 R G B A
bgrx: rgb 1x1, - bgr0 XBGR32 BGRx: bgrx 4/1 u8 B G R x
rgbx: rgb 1x1, - rgb0 RGBX32 RGBx: rgbx 4/1 u8 R G B x
bgr: rgb 1x1, 'BGR3' bgr24 BGR24 BGR: bgr 3/1 u8 B G R
r_g_b: rgb 1x1, - - - RGBP: r 1/1 u8 R; g 1/1 u8 G; b 1/1 u8 B
bgra64: rgb alpha 1x1, - bgra64le - -: bgra64 8/1 u16 B G R A
x2rgb10: rgb 1x1, 'XR30' x2rgb10le - -: x2rgb10 4/1 3x10 B G R x
x2bgr10: rgb 1x1, 'XB30' x2bgr10le - -: x2bgr10 4/1 3x10 R G B x
r210: rgb 1x1 256 bytes, 'r210' r210 - r210: r210 4/1 3x10 R G B big-endian
R10k: rgb 1x1, 'R10k' r10k - -: R10k 4/1 3x10 R G B big-endian above 2 bits
R10l: rgb 1x1 256 bytes, 'R10l' - - -: R10l 4/1 3x10 B G R above 2 bits

rgb48: rgb 1x1, - rgb48le - -: rgb48 6/1 u16 R G B
bgr48: rgb 1x1, - bgr48le - -: bgr48 6/1 u16 B G R
rgbf32: rgb 1x1, - rgbf32le - -: rgb 12/1 f32 R G B
rgbaf32: rgb alpha 1x1, - rgbaf32le - -: rgba 16/1 f32 R G B A
g_b_r_f32: rgb 1x1, - gbrpf32le - -: g 4/1 f32 G; b 4/1 f32 B; r 4/1 f32 R
r_g_b_f32: rgb 1x1, - - - -: r 4/1 f32 R; g 4/1 f32 G; b 4/1 f32 B

y210: ycbcr 2x1, 'Y210' y210le - Y210: y210 8/2 u16 Y Cb Y Cr
y212: ycbcr 2x1, 'Y212' y212le - Y212_LE: y212 8/2 u16 Y Cb Y Cr
y216: ycbcr 2x1, 'Y216' y216le - Y216_LE: y216 8/2 u16 Y Cb Y Cr
rgbaf16: rgb alpha 1x1, - rgbaf16le - -: rgba 8/1 f16 R G B A
R12L: rgb 1x1, 'R12L' - - -: R12L 36/8 12 R G B R G B R G B R G B R G B R G B R G B R G B
st2110_422_10: ycbcr 2x1, 'UYVP' - - UYVP: st2110 5/2 10 Cb Y Cr Y big-endian
st2110_422_12: ycbcr 2x1, - - - -: st2110 6/2 12 Cb Y Cr Y big-endian
xv30: ycbcr 1x1, 'XV30' xv30le - -: xv30 4/1 3x10 Cb Y Cr x
y410: ycbcr alpha 1x1, 'Y410' - - Y410: y410 4/1 3x10 Cb Y Cr A

ycbcra: ycbcr alpha 1x1, - - - -: ycbcra 4/1 u8 Y Cb Cr A
ycbcrx: ycbcr 1x1, - - - -: ycbcrx 4/1 u8 Y Cb Cr x
crcbya: ycbcr alpha 1x1, - - - -: crcbya 4/1 u8 Cr Cb Y A
crcbyx: ycbcr 1x1, - - - -: crcbyx 4/1 u8 Cr Cb Y x
vuya: ycbcr alpha 1x1, 'VUYA' vuya VUYA32 VUYA: vuya 4/1 u8 Cr Cb Y A
vuyx: ycbcr 1x1, - vuyx VUYX32 -: vuyx 4/1 u8 Cr Cb Y x
vuya_16: ycbcr alpha 1x1, - - - -: vuya 8/1 u16 Cb Cr Y A
vuya_f32: ycbcr alpha 1x1, - - - -: vuya 16/1 f32 Cr Cb Y A

uyvy_a: ycbcr alpha 2x1, - - - -: uyvy 4/2 u8 Cb Y Cr Y; alpha 1/1 u8 A
uyvy_uyvy: ycbcr 2x1, - - - -: fill 4/2 u8 Cb Y Cr Y; key 4/2 u8 Cb Y Cr Y
ya_uv: ycbcr alpha 2x1, - - - -: ya 2/1 u8 Y A; cbcr 2/2 u8 Cb Cr
ya_uv_16: ycbcr alpha 2x1, - - - -: ya 4/1 u16 Y A; cbcr 4/2 u16 Cb Cr
y_uv_422: ycbcr 2x1, 'NV16' nv16 NV16 NV16: y 1/1 u8 Y; cbcr 2/2 u8 Cb Cr
y_uv_420: ycbcr 2x2, 'NV12' nv12 NV12 NV12: y 1/1 u8 Y; cbcr 2/2 u8 Cb Cr 2 rows
y_u_v_422: ycbcr 2x1, '422P' yuv422p YUV422P Y42B: y 1/1 u8 Y; cb 1/2 u8 Cb; cr 1/2 u8 Cr
y_u_v_420: ycbcr 2x2, 'I420' yuv420p YUV420 I420: y 1/1 u8 Y; cb 1/2 u8 Cb 2 rows; cr 1/2 u8 Cr 2 rows
p216: ycbcr 2x1, 'P216' p216le - -: y 2/1 u16 Y; cbcr 4/2 u16 Cb Cr
p010: ycbcr 2x2, 'P010' p010le P010 P010_10LE: y 2/1 u16 Y; cbcr 4/2 u16 Cb Cr 2 rows
pa16: ycbcr alpha 2x1, 'PA16' - - -: y 2/1 u16 Y; cbcr 4/2 u16 Cb Cr; alpha 2/1 u16 A
yuyv_matrox_10: ycbcr 2x1, - - - -: yuyv 40/16 8+2 Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr
yua_yva_matrox_10: ycbcr alpha 2x1, - - - -: yua_yva 8/2 3x10 Y Cb A Y Cr A

cb_cr_8_420: chroma 2x2, - - - -: cb 1/2 u8 Cb 2 rows; cr 1/2 u8 Cr 2 rows
cb_cr_16_422: chroma 2x1, - - - -: cb 2/2 u16 Cb; cr 2/2 u16 Cr
cbcr_8_420: chroma 2x2, - - - -: cbcr 2/2 u8 Cb Cr 2 rows
cbcr_16_422: chroma 2x1, - - - -: cbcr 4/2 u16 Cb Cr

y: luma 1x1, 'GREY' gray GREY GRAY8: y 1/1 u8 Y
y16: luma 1x1, 'Y16 ' gray16le Y16 GRAY16_LE: y 2/1 u16 Y
y_10u16: luma 1x1, 'Y10 ' gray10le Y10 -: y 2/1 u16:10 Y
L: luma 1x1, - - - -: L 1/1 u8 L
alpha: alpha alpha 1x1, - - - -: alpha 1/1 u8 A
alpha_u16: alpha alpha 1x1, - - - -: alpha 2/1 u16 A
alpha_10u16: alpha alpha 1x1, - - - -: alpha 2/1 u16:10 A
alpha_12u16: alpha alpha 1x1, - - - -: alpha 2/1 u16:12 A
)";

const char* text_of(catalogue::color_model model) {
  constexpr const char* names[] = {"ycbcr", "rgb", "luma", "chroma", "alpha"};
  return names[static_cast<std::size_t>(model)];
}

const char* text_of(catalogue::sample_type sample) {
  constexpr const char* names[] = {"u8", "u16", "u16:10", "u16:12", "3x10", "8+2", "f32", "f16", "10", "12"};
  return names[static_cast<std::size_t>(sample)];
}

std::string_view name_or_dash(std::string_view name) {
  return name.empty() ? "-" : name;
}

constexpr std::string_view v4l2_prefix = "V4L2_PIX_FMT_";

std::string_view without_prefix(std::string_view v4l2) {
  return v4l2.starts_with(v4l2_prefix) ? v4l2.substr(v4l2_prefix.size()) : name_or_dash(v4l2);
}

std::string text_of(const plane& p) {
  std::ostringstream text;
  text << p.name << " " << p.group_bytes << "/" << p.group_pixels << " " << text_of(p.sample) << " " << p.components;
  if (p.image_rows != 1) text << " " << p.image_rows << " rows";
  if (p.order == catalogue::byte_order::big_endian) text << " big-endian";
  if (p.unused_low_bits != 0) text << " above " << p.unused_low_bits << " bits";
  return text.str();
}

std::string text_of(const format& f) {
  std::ostringstream text;
  text << text_of(f.model) << (f.alpha ? " alpha " : " ") << f.width_multiple << "x" << f.height_multiple;
  if (f.row_multiple != 1) text << " " << f.row_multiple << " bytes";
  text << ", ";
  if (f.fourcc.empty())
    text << "-";
  else
    text << "'" << f.fourcc << "'";
  text << " " << name_or_dash(f.ffmpeg) << " " << without_prefix(f.v4l2) << " " << name_or_dash(f.gstreamer) << ":";
  for (std::size_t i = 0; i < f.plane_count(); ++i) text << (i == 0 ? " " : "; ") << text_of(f.planes[i]);
  return text.str();
}

std::map<std::string, std::string> known_formats_by_name() {
  std::map<std::string, std::string> known;
  std::istringstream lines{std::string(known_formats)};
  for (std::string line; std::getline(lines, line);)
    if (const std::size_t colon = line.find(": "); colon != std::string::npos)
      known[line.substr(0, colon)] = line.substr(colon + 2);
  return known;
}

TEST(formats, are_as_they_are_known_elsewhere) {
  std::map<std::string, std::string> known = known_formats_by_name();
  for (const format& f : catalogue::formats) {
    EXPECT_EQ(text_of(f), known[std::string(f.name)]) << f.name;
    known.erase(std::string(f.name));
  }
  for (const auto& [name, text] : known) ADD_FAILURE() << "the catalogue lacks " << name;
}

// A name that the header of Linux has, and the code that it gives.
struct v4l2_name {
  std::string_view name;
  std::string_view code;
  unsigned value;
};

constexpr unsigned code_of(std::string_view four) {
  unsigned code = 0;
  for (std::size_t i = 0; i < 4; ++i) code |= static_cast<unsigned>(static_cast<unsigned char>(four[i])) << 8 * i;
  return code;
}

#ifdef V4L2_PIX_FMT_UYVY
#define MORVANE_V4L2(name, code) \
  { #name, code, name }
#else
#define MORVANE_V4L2(name, code) \
  { #name, code, code_of(code) }
#endif
constexpr v4l2_name v4l2_names[] = {
    MORVANE_V4L2(V4L2_PIX_FMT_UYVY, "UYVY"),    MORVANE_V4L2(V4L2_PIX_FMT_YUYV, "YUYV"),
    MORVANE_V4L2(V4L2_PIX_FMT_ABGR32, "AR24"),  MORVANE_V4L2(V4L2_PIX_FMT_RGBA32, "AB24"),
    MORVANE_V4L2(V4L2_PIX_FMT_XBGR32, "XR24"),  MORVANE_V4L2(V4L2_PIX_FMT_RGBX32, "XB24"),
    MORVANE_V4L2(V4L2_PIX_FMT_BGR24, "BGR3"),   MORVANE_V4L2(V4L2_PIX_FMT_VUYA32, "VUYA"),
    MORVANE_V4L2(V4L2_PIX_FMT_VUYX32, "VUYX"),  MORVANE_V4L2(V4L2_PIX_FMT_GREY, "GREY"),
    MORVANE_V4L2(V4L2_PIX_FMT_NV16, "NV16"),    MORVANE_V4L2(V4L2_PIX_FMT_NV12, "NV12"),
    MORVANE_V4L2(V4L2_PIX_FMT_YUV422P, "422P"), MORVANE_V4L2(V4L2_PIX_FMT_YUV420, "YU12"),
    MORVANE_V4L2(V4L2_PIX_FMT_Y16, "Y16 "),     MORVANE_V4L2(V4L2_PIX_FMT_P010, "P010"),
    MORVANE_V4L2(V4L2_PIX_FMT_Y10, "Y10 "),
};

// The names are compiled, so that one which Linux does not have is an error.
TEST(formats, have_names_of_v4l2_that_linux_has) {
  std::map<std::string_view, unsigned> known;
  for (const v4l2_name& n : v4l2_names) {
    EXPECT_EQ(n.value, code_of(n.code)) << n.name;
    known[n.name] = n.value;
  }
  for (const format& f : catalogue::formats)
    EXPECT_TRUE(f.v4l2.empty() || known.contains(f.v4l2)) << f.name << ": " << f.v4l2;
}

// Where V4L2 has a FourCC that others have too, it is the same.
TEST(formats, have_the_four_characters_of_v4l2_but_for_some) {
  const std::map<std::string_view, std::string_view> others = {
      {"yuy2", "YUYV"}, {"bgra", "AR24"}, {"rgba", "AB24"}, {"y_u_v_420", "YU12"}};
  for (const format& f : catalogue::formats)
    for (const v4l2_name& n : v4l2_names) {
      if (n.name != f.v4l2 || f.fourcc.empty()) continue;
      EXPECT_EQ(n.code, others.contains(f.name) ? others.at(f.name) : f.fourcc) << f.name;
    }
}

}  // namespace
}  // namespace morvane::tests
