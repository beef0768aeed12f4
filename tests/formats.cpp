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
//   in ffmpeg, V4L2, GStreamer and CoreVideo (and more names): planes
// and of a plane
//   name bytes/pixels of a group, sample with its bits in the lower (:) or upper (^) part of a word, components, image
//   rows to a row where these are several, what is not usual of its words
constexpr std::string_view known_formats = R"(
uyvy: ycbcr 2x1, 'UYVY' uyvy422 UYVY UYVY 2vuy (UYNV HDYC): uyvy 4/2 u8 Cb Y Cr Y
yuy2: ycbcr 2x1, 'YUY2' yuyv422 YUYV YUY2 yuvs (YUNV yuvf): yuy2 4/2 u8 Y Cb Y Cr
yvyu: ycbcr 2x1, 'YVYU' yvyu422 YVYU YVYU -: yvyu 4/2 u8 Y Cr Y Cb
v210: ycbcr 2x1 128 bytes, 'v210' v210 - v210 v210: v210 16/6 3x10 Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y

bgra: rgb alpha 1x1, 'BGRA' bgra ABGR32 BGRA BGRA (AR24): bgra 4/1 u8 B G R A
rgba: rgb alpha 1x1, 'RGBA' rgba RGBA32 RGBA RGBA (AB24): rgba 4/1 u8 R G B A
bgrx: rgb 1x1, - bgr0 XBGR32 BGRx - (XR24): bgrx 4/1 u8 B G R x
rgbx: rgb 1x1, - rgb0 RGBX32 RGBx - (XB24): rgbx 4/1 u8 R G B x
argb: rgb alpha 1x1, 'BA24' argb ARGB32 ARGB 32ARGB: argb 4/1 u8 A R G B
abgr: rgb alpha 1x1, 'RA24' abgr BGRA32 ABGR ABGR: abgr 4/1 u8 A B G R
xrgb: rgb 1x1, 'BX24' 0rgb XRGB32 xRGB -: xrgb 4/1 u8 x R G B
xbgr: rgb 1x1, 'RX24' 0bgr BGRX32 xBGR -: xbgr 4/1 u8 x B G R
bgr: rgb 1x1, 'BGR3' bgr24 BGR24 BGR 24BG: bgr 3/1 u8 B G R
rgb: rgb 1x1, 'RGB3' rgb24 RGB24 RGB 24RGB: rgb 3/1 u8 R G B
r_g_b: rgb 1x1, - - - RGBP -: r 1/1 u8 R; g 1/1 u8 G; b 1/1 u8 B
g_b_r: rgb 1x1, - gbrp - GBR -: g 1/1 u8 G; b 1/1 u8 B; r 1/1 u8 R
g_b_r_a: rgb alpha 1x1, - gbrap - GBRA -: g 1/1 u8 G; b 1/1 u8 B; r 1/1 u8 R; alpha 1/1 u8 A
g_b_r_10u16: rgb 1x1, - gbrp10le - GBR_10LE -: g 2/1 u16:10 G; b 2/1 u16:10 B; r 2/1 u16:10 R
g_b_r_12u16: rgb 1x1, - gbrp12le - GBR_12LE -: g 2/1 u16:12 G; b 2/1 u16:12 B; r 2/1 u16:12 R
g_b_r_u16: rgb 1x1, - gbrp16le - GBR_16LE -: g 2/1 u16 G; b 2/1 u16 B; r 2/1 u16 R
g_b_r_a_10u16: rgb alpha 1x1, - gbrap10le - GBRA_10LE -: g 2/1 u16:10 G; b 2/1 u16:10 B; r 2/1 u16:10 R; alpha 2/1 u16:10 A
g_b_r_a_12u16: rgb alpha 1x1, - gbrap12le - GBRA_12LE -: g 2/1 u16:12 G; b 2/1 u16:12 B; r 2/1 u16:12 R; alpha 2/1 u16:12 A
g_b_r_a_u16: rgb alpha 1x1, - gbrap16le - - -: g 2/1 u16 G; b 2/1 u16 B; r 2/1 u16 R; alpha 2/1 u16 A
bgra64: rgb alpha 1x1, - bgra64le - BGRA64_LE -: bgra64 8/1 u16 B G R A
rgba64: rgb alpha 1x1, - rgba64le - RGBA64_LE l64r: rgba64 8/1 u16 R G B A
x2rgb10: rgb 1x1, 'XR30' x2rgb10le - - -: x2rgb10 4/1 3x10 B G R x
x2bgr10: rgb 1x1, 'XB30' x2bgr10le - - -: x2bgr10 4/1 3x10 R G B x
r210: rgb 1x1 256 bytes, 'r210' r210 - r210 -: r210 4/1 3x10 R G B big-endian
R10k: rgb 1x1, 'R10k' r10k - - -: R10k 4/1 3x10 R G B big-endian above 2 bits
R10l: rgb 1x1 256 bytes, 'R10l' - - - -: R10l 4/1 3x10 B G R above 2 bits
rgb48: rgb 1x1, - rgb48le - - -: rgb48 6/1 u16 R G B
bgr48: rgb 1x1, - bgr48le - - -: bgr48 6/1 u16 B G R
rgbf32: rgb 1x1, - rgbf32le - - -: rgb 12/1 f32 R G B
rgbaf32: rgb alpha 1x1, - rgbaf32le - - -: rgba 16/1 f32 R G B A
g_b_r_f32: rgb 1x1, - gbrpf32le - - -: g 4/1 f32 G; b 4/1 f32 B; r 4/1 f32 R
r_g_b_f32: rgb 1x1, - - - - -: r 4/1 f32 R; g 4/1 f32 G; b 4/1 f32 B
y210: ycbcr 2x1, 'Y210' y210le - Y210 -: y210 8/2 u16^10 Y Cb Y Cr
y212: ycbcr 2x1, 'Y212' y212le - Y212_LE -: y212 8/2 u16^12 Y Cb Y Cr
y216: ycbcr 2x1, 'Y216' y216le - Y216_LE -: y216 8/2 u16 Y Cb Y Cr
rgbaf16: rgb alpha 1x1, - rgbaf16le - - -: rgba 8/1 f16 R G B A
R12L: rgb 1x1, 'R12L' - - - -: R12L 36/8 12 R G B R G B R G B R G B R G B R G B R G B R G B
st2110_422_10: ycbcr 2x1, 'UYVP' - - UYVP -: st2110 5/2 10 Cb Y Cr Y big-endian
st2110_422_12: ycbcr 2x1, - - - - -: st2110 6/2 12 Cb Y Cr Y big-endian
xv30: ycbcr 1x1, 'XV30' xv30le - - -: xv30 4/1 3x10 Cb Y Cr x
y410: ycbcr alpha 1x1, 'Y410' - - Y410 -: y410 4/1 3x10 Cb Y Cr A

ycbcra: ycbcr alpha 1x1, - - - - -: ycbcra 4/1 u8 Y Cb Cr A
ycbcrx: ycbcr 1x1, - - - - -: ycbcrx 4/1 u8 Y Cb Cr x
crcbya: ycbcr alpha 1x1, - - - - -: crcbya 4/1 u8 Cr Cb Y A
crcbyx: ycbcr 1x1, - - - - -: crcbyx 4/1 u8 Cr Cb Y x
vuya: ycbcr alpha 1x1, 'VUYA' vuya VUYA32 VUYA - (AYUV): vuya 4/1 u8 Cr Cb Y A
vuyx: ycbcr 1x1, - vuyx VUYX32 - -: vuyx 4/1 u8 Cr Cb Y x
ayuv: ycbcr alpha 1x1, - ayuv AYUV32 AYUV y408: ayuv 4/1 u8 A Y Cb Cr
xv36: ycbcr 1x1, 'XV36' xv36le - - -: xv36 8/1 u16^12 Cb Y Cr x
y416: ycbcr alpha 1x1, 'Y416' - - - -: y416 8/1 u16 Cb Y Cr A
ayuv64: ycbcr alpha 1x1, - ayuv64le - AYUV64 y416: ayuv64 8/1 u16 A Y Cb Cr
vuya_16: ycbcr alpha 1x1, - - - - -: vuya 8/1 u16 Cb Cr Y A
vuya_f32: ycbcr alpha 1x1, - - - - -: vuya 16/1 f32 Cr Cb Y A

uyvy_a: ycbcr alpha 2x1, - - - - a2vy: uyvy 4/2 u8 Cb Y Cr Y; alpha 1/1 u8 A
uyvy_uyvy: ycbcr 2x1, - - - - -: fill 4/2 u8 Cb Y Cr Y; key 4/2 u8 Cb Y Cr Y
ya_uv: ycbcr alpha 2x1, - - - - -: ya 2/1 u8 Y A; cbcr 2/2 u8 Cb Cr
ya_uv_16: ycbcr alpha 2x1, - - - - -: ya 4/1 u16 Y A; cbcr 4/2 u16 Cb Cr
y_uv_422: ycbcr 2x1, 'NV16' nv16 NV16 NV16 422v (422f): y 1/1 u8 Y; cbcr 2/2 u8 Cb Cr
y_uv_420: ycbcr 2x2, 'NV12' nv12 NV12 NV12 420v (420f): y 1/1 u8 Y; cbcr 2/2 u8 Cb Cr 2 rows
y_uv_444: ycbcr 1x1, 'NV24' nv24 NV24 NV24 444v (444f): y 1/1 u8 Y; cbcr 2/1 u8 Cb Cr
y_vu_420: ycbcr 2x2, 'NV21' nv21 NV21 NV21 -: y 1/1 u8 Y; crcb 2/2 u8 Cr Cb 2 rows
y_vu_422: ycbcr 2x1, 'NV61' - NV61 NV61 -: y 1/1 u8 Y; crcb 2/2 u8 Cr Cb
y_vu_444: ycbcr 1x1, 'NV42' nv42 NV42 - -: y 1/1 u8 Y; crcb 2/1 u8 Cr Cb
y_u_v_422: ycbcr 2x1, '422P' yuv422p YUV422P Y42B - (I422): y 1/1 u8 Y; cb 1/2 u8 Cb; cr 1/2 u8 Cr
y_u_v_420: ycbcr 2x2, 'I420' yuv420p YUV420 I420 y420 (f420 IYUV YU12): y 1/1 u8 Y; cb 1/2 u8 Cb 2 rows; cr 1/2 u8 Cr 2 rows
y_u_v_444: ycbcr 1x1, 'I444' yuv444p - Y444 -: y 1/1 u8 Y; cb 1/1 u8 Cb; cr 1/1 u8 Cr
y_v_u_420: ycbcr 2x2, 'YV12' - YVU420 YV12 -: y 1/1 u8 Y; cr 1/2 u8 Cr 2 rows; cb 1/2 u8 Cb 2 rows
y_u_v_a_420: ycbcr alpha 2x2, - yuva420p - A420 -: y 1/1 u8 Y; cb 1/2 u8 Cb 2 rows; cr 1/2 u8 Cr 2 rows; alpha 1/1 u8 A
y_u_v_a_422: ycbcr alpha 2x1, - yuva422p - A422 -: y 1/1 u8 Y; cb 1/2 u8 Cb; cr 1/2 u8 Cr; alpha 1/1 u8 A
y_u_v_a_444: ycbcr alpha 1x1, - yuva444p - A444 -: y 1/1 u8 Y; cb 1/1 u8 Cb; cr 1/1 u8 Cr; alpha 1/1 u8 A
y_u_v_420_10u16: ycbcr 2x2, 'I010' yuv420p10le - I420_10LE -: y 2/1 u16:10 Y; cb 2/2 u16:10 Cb 2 rows; cr 2/2 u16:10 Cr 2 rows
y_u_v_422_10u16: ycbcr 2x1, 'I210' yuv422p10le - I422_10LE -: y 2/1 u16:10 Y; cb 2/2 u16:10 Cb; cr 2/2 u16:10 Cr
y_u_v_444_10u16: ycbcr 1x1, 'I410' yuv444p10le - Y444_10LE -: y 2/1 u16:10 Y; cb 2/1 u16:10 Cb; cr 2/1 u16:10 Cr
y_u_v_420_12u16: ycbcr 2x2, 'I012' yuv420p12le - I420_12LE -: y 2/1 u16:12 Y; cb 2/2 u16:12 Cb 2 rows; cr 2/2 u16:12 Cr 2 rows
y_u_v_422_12u16: ycbcr 2x1, 'I212' yuv422p12le - I422_12LE -: y 2/1 u16:12 Y; cb 2/2 u16:12 Cb; cr 2/2 u16:12 Cr
y_u_v_444_12u16: ycbcr 1x1, 'I412' yuv444p12le - Y444_12LE -: y 2/1 u16:12 Y; cb 2/1 u16:12 Cb; cr 2/1 u16:12 Cr
y_u_v_420_u16: ycbcr 2x2, - yuv420p16le - - -: y 2/1 u16 Y; cb 2/2 u16 Cb 2 rows; cr 2/2 u16 Cr 2 rows
y_u_v_422_u16: ycbcr 2x1, - yuv422p16le - - -: y 2/1 u16 Y; cb 2/2 u16 Cb; cr 2/2 u16 Cr
y_u_v_444_u16: ycbcr 1x1, - yuv444p16le - Y444_16LE -: y 2/1 u16 Y; cb 2/1 u16 Cb; cr 2/1 u16 Cr
y_u_v_a_422_10u16: ycbcr alpha 2x1, - yuva422p10le - A422_10LE -: y 2/1 u16:10 Y; cb 2/2 u16:10 Cb; cr 2/2 u16:10 Cr; alpha 2/1 u16:10 A
y_u_v_a_444_10u16: ycbcr alpha 1x1, - yuva444p10le - A444_10LE -: y 2/1 u16:10 Y; cb 2/1 u16:10 Cb; cr 2/1 u16:10 Cr; alpha 2/1 u16:10 A
y_u_v_a_444_12u16: ycbcr alpha 1x1, - yuva444p12le - A444_12LE -: y 2/1 u16:12 Y; cb 2/1 u16:12 Cb; cr 2/1 u16:12 Cr; alpha 2/1 u16:12 A
y_u_v_a_444_u16: ycbcr alpha 1x1, - yuva444p16le - A444_16LE -: y 2/1 u16 Y; cb 2/1 u16 Cb; cr 2/1 u16 Cr; alpha 2/1 u16 A
p010: ycbcr 2x2, 'P010' p010le P010 P010_10LE x420 (xf20): y 2/1 u16^10 Y; cbcr 4/2 u16^10 Cb Cr 2 rows
p012: ycbcr 2x2, 'P012' p012le P012 P012_LE -: y 2/1 u16^12 Y; cbcr 4/2 u16^12 Cb Cr 2 rows
p016: ycbcr 2x2, 'P016' p016le - P016_LE -: y 2/1 u16 Y; cbcr 4/2 u16 Cb Cr 2 rows
p210: ycbcr 2x1, 'P210' p210le - - x422 (xf22): y 2/1 u16^10 Y; cbcr 4/2 u16^10 Cb Cr
p212: ycbcr 2x1, - p212le - - -: y 2/1 u16^12 Y; cbcr 4/2 u16^12 Cb Cr
p216: ycbcr 2x1, 'P216' p216le - - sv22: y 2/1 u16 Y; cbcr 4/2 u16 Cb Cr
p410: ycbcr 1x1, - p410le - - x444 (xf44): y 2/1 u16^10 Y; cbcr 4/1 u16^10 Cb Cr
p412: ycbcr 1x1, - p412le - - -: y 2/1 u16^12 Y; cbcr 4/1 u16^12 Cb Cr
p416: ycbcr 1x1, - p416le - - sv44: y 2/1 u16 Y; cbcr 4/1 u16 Cb Cr
pa16: ycbcr alpha 2x1, 'PA16' - - - -: y 2/1 u16 Y; cbcr 4/2 u16 Cb Cr; alpha 2/1 u16 A
yuyv_matrox_10: ycbcr 2x1, - - - - -: yuyv 40/16 8+2 Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr
yua_yva_matrox_10: ycbcr alpha 2x1, - - - - -: yua_yva 8/2 3x10 Y Cb A Y Cr A

cb_cr_8_420: chroma 2x2, - - - - -: cb 1/2 u8 Cb 2 rows; cr 1/2 u8 Cr 2 rows
cb_cr_16_422: chroma 2x1, - - - - -: cb 2/2 u16 Cb; cr 2/2 u16 Cr
cbcr_8_420: chroma 2x2, - - - - -: cbcr 2/2 u8 Cb Cr 2 rows
cbcr_16_422: chroma 2x1, - - - - -: cbcr 4/2 u16 Cb Cr

y: luma 1x1, 'GREY' gray GREY GRAY8 - (Y800 Y8): y 1/1 u8 Y
y16: luma 1x1, 'Y16 ' gray16le Y16 GRAY16_LE L016: y 2/1 u16 Y
y_10u16: luma 1x1, 'Y10 ' gray10le Y10 GRAY10_LE16 -: y 2/1 u16:10 Y
y_12u16: luma 1x1, 'Y12 ' gray12le Y12 - -: y 2/1 u16:12 Y
L: luma 1x1, - - - - L008: L 1/1 u8 L
alpha: alpha alpha 1x1, - - - - -: alpha 1/1 u8 A
alpha_u16: alpha alpha 1x1, - - - - -: alpha 2/1 u16 A
alpha_10u16: alpha alpha 1x1, - - - - -: alpha 2/1 u16:10 A
alpha_12u16: alpha alpha 1x1, - - - - -: alpha 2/1 u16:12 A
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
  text << p.name << " " << p.group_bytes << "/" << p.group_pixels << " " << text_of(p.sample);
  if (p.upper_bits != 0) text << "^" << p.upper_bits;
  text << " " << p.components;
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
  text << " " << name_or_dash(f.ffmpeg) << " " << without_prefix(f.v4l2) << " " << name_or_dash(f.gstreamer) << " "
       << name_or_dash(f.apple);
  if (!f.also.empty()) text << " (" << f.also << ")";
  text << ":";
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
#if defined(V4L2_PIX_FMT_UYVY) && !defined(V4L2_PIX_FMT_P012)
#define V4L2_PIX_FMT_P012 v4l2_fourcc('P', '0', '1', '2')  // younger than some headers
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
    MORVANE_V4L2(V4L2_PIX_FMT_Y10, "Y10 "),     MORVANE_V4L2(V4L2_PIX_FMT_YVYU, "YVYU"),
    MORVANE_V4L2(V4L2_PIX_FMT_RGB24, "RGB3"),   MORVANE_V4L2(V4L2_PIX_FMT_ARGB32, "BA24"),
    MORVANE_V4L2(V4L2_PIX_FMT_BGRA32, "RA24"),  MORVANE_V4L2(V4L2_PIX_FMT_XRGB32, "BX24"),
    MORVANE_V4L2(V4L2_PIX_FMT_BGRX32, "RX24"),  MORVANE_V4L2(V4L2_PIX_FMT_AYUV32, "AYUV"),
    MORVANE_V4L2(V4L2_PIX_FMT_NV21, "NV21"),    MORVANE_V4L2(V4L2_PIX_FMT_NV61, "NV61"),
    MORVANE_V4L2(V4L2_PIX_FMT_NV24, "NV24"),    MORVANE_V4L2(V4L2_PIX_FMT_NV42, "NV42"),
    MORVANE_V4L2(V4L2_PIX_FMT_YVU420, "YV12"),  MORVANE_V4L2(V4L2_PIX_FMT_P012, "P012"),
    MORVANE_V4L2(V4L2_PIX_FMT_Y12, "Y12 "),
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
