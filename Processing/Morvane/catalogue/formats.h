// Every pixel format that a conversion reads or writes, as data.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace morvane::catalogue {

// How the samples of a group are stored.
enum class sample_type {
  u8,         // bytes
  u16,        // little-endian 16-bit words
  u16_low10,  // words that hold the sample in their lower 10 bits
  u16_low12,  // and in their lower 12 bits
  u32_3x10,   // three 10-bit samples in each little-endian 32-bit word, at bits 0, 10 and 20
  u8_and_2,  // 32 bytes with the upper eight bits of 32 samples, then 8 bytes with their lower two, first sample lowest
  f32,       // little-endian IEEE floats: 0 to 1, chroma -0.5 to 0.5
};

// The bits of a sample that its word has in its lower part; 0 where they are not there.
constexpr int low_bits(sample_type sample) {
  return sample == sample_type::u16_low10 ? 10 : sample == sample_type::u16_low12 ? 12 : 0;
}

// The bits of a sample in a word of its own or in a group.
constexpr int bits_of(sample_type sample) {
  switch (sample) {
    case sample_type::u8:
      return 8;
    case sample_type::u16_low10:
    case sample_type::u32_3x10:
    case sample_type::u8_and_2:
      return 10;
    case sample_type::u16_low12:
      return 12;
    case sample_type::u16:
    case sample_type::f32:
      return 16;
  }
  return 0;
}

// One plane. Its rows are made of groups of pixels; a picture whose width is not a whole number of groups ends every
// row with a whole group, and one whose height is not a whole number of plane rows ends with a whole row.
struct plane {
  std::string_view name{};
  int group_bytes = 0;
  int group_pixels = 0;
  sample_type sample = sample_type::u8;
  std::string_view components{};  // the samples of a group in storage order: "Cb Y Cr Y"
  int image_rows = 1;             // image rows to a row of the plane: 2 for the chroma of 4:2:0
  int upper_bits = 0;             // of words that hold the sample in so many of their upper bits; 0 for all of them

  // Calls take(component) for each of the components in their order.
  template <class Take>
  constexpr void each_component(Take take) const {
    for (std::size_t at = 0; at < components.size();) {
      const std::size_t end = std::min(components.find(' ', at), components.size());
      take(components.substr(at, end - at));
      at = end + 1;
    }
  }

  constexpr int depth() const { return upper_bits != 0 ? upper_bits : bits_of(sample); }

  constexpr std::int64_t rows(int yres) const { return (std::int64_t{yres} + image_rows - 1) / image_rows; }

  constexpr std::int64_t row_bytes(int xres) const {
    return (std::int64_t{xres} + group_pixels - 1) / group_pixels * group_bytes;
  }
};

enum class color_model { ycbcr, rgb, luma, chroma, alpha };

struct format {
  std::string_view name{};
  int id = 0;  // for programs that store it: it never changes, and no other format ever gets it
  std::string_view description{};
  color_model model{};
  bool alpha = false;
  int width_multiple = 1;   // pictures whose width is no multiple of this have no whole rows
  int height_multiple = 1;  // and those whose height is no multiple of this have no whole planes
  int row_multiple = 1;     // in files, rows begin at multiples of so many bytes
  std::string_view fourcc{};
  std::string_view ffmpeg{};
  std::string_view v4l2{};
  std::string_view gstreamer{};
  std::array<plane, 4> planes{};

  constexpr std::size_t plane_count() const {
    return static_cast<std::size_t>(
        std::find_if(planes.begin(), planes.end(), [](const plane& p) { return p.group_bytes == 0; }) - planes.begin());
  }
  constexpr std::int64_t frame_bytes(int xres, int yres) const {
    std::int64_t bytes = 0;
    for (const plane& p : planes)
      if (p.group_bytes != 0) bytes += p.row_bytes(xres) * p.rows(yres);
    return bytes;
  }
};

inline constexpr auto formats = std::to_array<format>({
    {.name = "uyvy",
     .id = 1,
     .description = "8-bit packed YCbCr 4:2:2, chroma first: the common format of capture cards",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "UYVY",
     .ffmpeg = "uyvy422",
     .v4l2 = "V4L2_PIX_FMT_UYVY",
     .gstreamer = "UYVY",
     .planes = {{{"uyvy", 4, 2, sample_type::u8, "Cb Y Cr Y"}}}},
    {.name = "yuy2",
     .id = 2,
     .description = "8-bit packed YCbCr 4:2:2, luma first: the common format of webcams",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "YUY2",
     .ffmpeg = "yuyv422",
     .v4l2 = "V4L2_PIX_FMT_YUYV",
     .gstreamer = "YUY2",
     .planes = {{{"yuy2", 4, 2, sample_type::u8, "Y Cb Y Cr"}}}},
    {.name = "v210",
     .id = 3,
     .description = "10-bit packed YCbCr 4:2:2, six pixels in sixteen bytes",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .row_multiple = 128,
     .fourcc = "v210",
     .ffmpeg = "v210",
     .gstreamer = "v210",
     .planes = {{{"v210", 16, 6, sample_type::u32_3x10, "Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y"}}}},
    {.name = "bgra",
     .id = 4,
     .description = "8-bit RGB with alpha, blue first",
     .model = color_model::rgb,
     .alpha = true,
     .fourcc = "BGRA",
     .ffmpeg = "bgra",
     .v4l2 = "V4L2_PIX_FMT_ABGR32",
     .gstreamer = "BGRA",
     .planes = {{{"bgra", 4, 1, sample_type::u8, "B G R A"}}}},
    {.name = "rgba",
     .id = 5,
     .description = "8-bit RGB with alpha, red first",
     .model = color_model::rgb,
     .alpha = true,
     .fourcc = "RGBA",
     .ffmpeg = "rgba",
     .v4l2 = "V4L2_PIX_FMT_RGBA32",
     .gstreamer = "RGBA",
     .planes = {{{"rgba", 4, 1, sample_type::u8, "R G B A"}}}},
    {.name = "bgrx",
     .id = 6,
     .description = "8-bit RGB in four bytes, blue first, the fourth byte unused",
     .model = color_model::rgb,
     .ffmpeg = "bgr0",
     .v4l2 = "V4L2_PIX_FMT_XBGR32",
     .gstreamer = "BGRx",
     .planes = {{{"bgrx", 4, 1, sample_type::u8, "B G R x"}}}},
    {.name = "rgbx",
     .id = 7,
     .description = "8-bit RGB in four bytes, red first, the fourth byte unused",
     .model = color_model::rgb,
     .ffmpeg = "rgb0",
     .v4l2 = "V4L2_PIX_FMT_RGBX32",
     .gstreamer = "RGBx",
     .planes = {{{"rgbx", 4, 1, sample_type::u8, "R G B x"}}}},
    {.name = "bgr",
     .id = 8,
     .description = "8-bit RGB in three bytes, blue first",
     .model = color_model::rgb,
     .fourcc = "BGR3",
     .ffmpeg = "bgr24",
     .v4l2 = "V4L2_PIX_FMT_BGR24",
     .gstreamer = "BGR",
     .planes = {{{"bgr", 3, 1, sample_type::u8, "B G R"}}}},
    {.name = "ycbcra",
     .id = 9,
     .description = "8-bit YCbCr 4:4:4 with alpha, luma first",
     .model = color_model::ycbcr,
     .alpha = true,
     .planes = {{{"ycbcra", 4, 1, sample_type::u8, "Y Cb Cr A"}}}},
    {.name = "ycbcrx",
     .id = 10,
     .description = "8-bit YCbCr 4:4:4 in four bytes, luma first, the fourth byte unused",
     .model = color_model::ycbcr,
     .planes = {{{"ycbcrx", 4, 1, sample_type::u8, "Y Cb Cr x"}}}},
    {.name = "vuya",
     .id = 11,
     .description = "8-bit YCbCr 4:4:4 with alpha, Cr first",
     .model = color_model::ycbcr,
     .alpha = true,
     .fourcc = "VUYA",
     .ffmpeg = "vuya",
     .v4l2 = "V4L2_PIX_FMT_VUYA32",
     .gstreamer = "VUYA",
     .planes = {{{"vuya", 4, 1, sample_type::u8, "Cr Cb Y A"}}}},
    {.name = "vuyx",
     .id = 12,
     .description = "8-bit YCbCr 4:4:4 in four bytes, Cr first, the fourth byte unused",
     .model = color_model::ycbcr,
     .ffmpeg = "vuyx",
     .v4l2 = "V4L2_PIX_FMT_VUYX32",
     .planes = {{{"vuyx", 4, 1, sample_type::u8, "Cr Cb Y x"}}}},
    {.name = "y",
     .id = 13,
     .description = "8-bit luma alone",
     .model = color_model::luma,
     .fourcc = "GREY",
     .ffmpeg = "gray",
     .v4l2 = "V4L2_PIX_FMT_GREY",
     .gstreamer = "GRAY8",
     .planes = {{{"y", 1, 1, sample_type::u8, "Y"}}}},
    {.name = "crcbya",
     .id = 14,
     .description = "8-bit YCbCr 4:4:4 with alpha, Cr first: the bytes of vuya",
     .model = color_model::ycbcr,
     .alpha = true,
     .planes = {{{"crcbya", 4, 1, sample_type::u8, "Cr Cb Y A"}}}},
    {.name = "crcbyx",
     .id = 15,
     .description = "8-bit YCbCr 4:4:4 in four bytes, Cr first: the bytes of vuyx",
     .model = color_model::ycbcr,
     .planes = {{{"crcbyx", 4, 1, sample_type::u8, "Cr Cb Y x"}}}},
    {.name = "uyvy_a",
     .id = 16,
     .description = "8-bit packed YCbCr 4:2:2 with a plane of alpha",
     .model = color_model::ycbcr,
     .alpha = true,
     .width_multiple = 2,
     .planes = {{{"uyvy", 4, 2, sample_type::u8, "Cb Y Cr Y"}, {"alpha", 1, 1, sample_type::u8, "A"}}}},
    {.name = "uyvy_uyvy",
     .id = 17,
     .description = "fill and key: two images of uyvy, of which the second carries alpha in its luma",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .planes = {{{"fill", 4, 2, sample_type::u8, "Cb Y Cr Y"}, {"key", 4, 2, sample_type::u8, "Cb Y Cr Y"}}}},
    {.name = "ya_uv",
     .id = 18,
     .description = "8-bit semi-planar YCbCr 4:2:2 with alpha beside luma",
     .model = color_model::ycbcr,
     .alpha = true,
     .width_multiple = 2,
     .planes = {{{"ya", 2, 1, sample_type::u8, "Y A"}, {"cbcr", 2, 2, sample_type::u8, "Cb Cr"}}}},
    {.name = "y_uv_422",
     .id = 19,
     .description = "8-bit semi-planar YCbCr 4:2:2",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "NV16",
     .ffmpeg = "nv16",
     .v4l2 = "V4L2_PIX_FMT_NV16",
     .gstreamer = "NV16",
     .planes = {{{"y", 1, 1, sample_type::u8, "Y"}, {"cbcr", 2, 2, sample_type::u8, "Cb Cr"}}}},
    {.name = "y_uv_420",
     .id = 20,
     .description = "8-bit semi-planar YCbCr 4:2:0: the common format of decoders",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .height_multiple = 2,
     .fourcc = "NV12",
     .ffmpeg = "nv12",
     .v4l2 = "V4L2_PIX_FMT_NV12",
     .gstreamer = "NV12",
     .planes = {{{"y", 1, 1, sample_type::u8, "Y"}, {"cbcr", 2, 2, sample_type::u8, "Cb Cr", 2}}}},
    {.name = "y_u_v_422",
     .id = 21,
     .description = "8-bit planar YCbCr 4:2:2",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "422P",
     .ffmpeg = "yuv422p",
     .v4l2 = "V4L2_PIX_FMT_YUV422P",
     .gstreamer = "Y42B",
     .planes = {{{"y", 1, 1, sample_type::u8, "Y"},
                 {"cb", 1, 2, sample_type::u8, "Cb"},
                 {"cr", 1, 2, sample_type::u8, "Cr"}}}},
    {.name = "y_u_v_420",
     .id = 22,
     .description = "8-bit planar YCbCr 4:2:0",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .height_multiple = 2,
     .fourcc = "I420",
     .ffmpeg = "yuv420p",
     .v4l2 = "V4L2_PIX_FMT_YUV420",
     .gstreamer = "I420",
     .planes = {{{"y", 1, 1, sample_type::u8, "Y"},
                 {"cb", 1, 2, sample_type::u8, "Cb", 2},
                 {"cr", 1, 2, sample_type::u8, "Cr", 2}}}},
    {.name = "r_g_b",
     .id = 23,
     .description = "8-bit planar RGB",
     .model = color_model::rgb,
     .gstreamer = "RGBP",
     .planes =
         {{{"r", 1, 1, sample_type::u8, "R"}, {"g", 1, 1, sample_type::u8, "G"}, {"b", 1, 1, sample_type::u8, "B"}}}},
    {.name = "L",
     .id = 24,
     .description = "8-bit luminance alone, of full range",
     .model = color_model::luma,
     .planes = {{{"L", 1, 1, sample_type::u8, "L"}}}},
    {.name = "y16",
     .id = 25,
     .description = "16-bit luma alone",
     .model = color_model::luma,
     .fourcc = "Y16 ",
     .ffmpeg = "gray16le",
     .v4l2 = "V4L2_PIX_FMT_Y16",
     .gstreamer = "GRAY16_LE",
     .planes = {{{"y", 2, 1, sample_type::u16, "Y"}}}},
    {.name = "cb_cr_8_420",
     .id = 26,
     .description = "8-bit chroma planes of a 4:2:0 image, without its luma",
     .model = color_model::chroma,
     .width_multiple = 2,
     .height_multiple = 2,
     .planes = {{{"cb", 1, 2, sample_type::u8, "Cb", 2}, {"cr", 1, 2, sample_type::u8, "Cr", 2}}}},
    {.name = "cb_cr_16_422",
     .id = 27,
     .description = "16-bit chroma planes of a 4:2:2 image, without its luma",
     .model = color_model::chroma,
     .width_multiple = 2,
     .planes = {{{"cb", 2, 2, sample_type::u16, "Cb"}, {"cr", 2, 2, sample_type::u16, "Cr"}}}},
    {.name = "cbcr_8_420",
     .id = 28,
     .description = "8-bit interleaved chroma of a 4:2:0 image, without its luma",
     .model = color_model::chroma,
     .width_multiple = 2,
     .height_multiple = 2,
     .planes = {{{"cbcr", 2, 2, sample_type::u8, "Cb Cr", 2}}}},
    {.name = "cbcr_16_422",
     .id = 29,
     .description = "16-bit interleaved chroma of a 4:2:2 image, without its luma",
     .model = color_model::chroma,
     .width_multiple = 2,
     .planes = {{{"cbcr", 4, 2, sample_type::u16, "Cb Cr"}}}},
    {.name = "alpha",
     .id = 30,
     .description = "8-bit alpha alone",
     .model = color_model::alpha,
     .alpha = true,
     .planes = {{{"alpha", 1, 1, sample_type::u8, "A"}}}},
    {.name = "alpha_u16",
     .id = 31,
     .description = "16-bit alpha alone",
     .model = color_model::alpha,
     .alpha = true,
     .planes = {{{"alpha", 2, 1, sample_type::u16, "A"}}}},
    {.name = "p216",
     .id = 32,
     .description = "16-bit semi-planar YCbCr 4:2:2: the common format of high-end capture",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .fourcc = "P216",
     .ffmpeg = "p216le",
     .planes = {{{"y", 2, 1, sample_type::u16, "Y"}, {"cbcr", 4, 2, sample_type::u16, "Cb Cr"}}}},
    {.name = "p010",
     .id = 33,
     .description = "10-bit semi-planar YCbCr 4:2:0 in the upper bits of 16: the format of 10-bit decoders",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .height_multiple = 2,
     .fourcc = "P010",
     .ffmpeg = "p010le",
     .v4l2 = "V4L2_PIX_FMT_P010",
     .gstreamer = "P010_10LE",
     .planes = {{{"y", 2, 1, sample_type::u16, "Y", 1, 10}, {"cbcr", 4, 2, sample_type::u16, "Cb Cr", 2, 10}}}},
    {.name = "pa16",
     .id = 34,
     .description = "16-bit semi-planar YCbCr 4:2:2 with a plane of alpha",
     .model = color_model::ycbcr,
     .alpha = true,
     .width_multiple = 2,
     .fourcc = "PA16",
     .planes = {{{"y", 2, 1, sample_type::u16, "Y"},
                 {"cbcr", 4, 2, sample_type::u16, "Cb Cr"},
                 {"alpha", 2, 1, sample_type::u16, "A"}}}},
    {.name = "ya_uv_16",
     .id = 35,
     .description = "16-bit semi-planar YCbCr 4:2:2 with alpha beside luma",
     .model = color_model::ycbcr,
     .alpha = true,
     .width_multiple = 2,
     .planes = {{{"ya", 4, 1, sample_type::u16, "Y A"}, {"cbcr", 4, 2, sample_type::u16, "Cb Cr"}}}},
    {.name = "vuya_16",
     .id = 36,
     .description = "16-bit YCbCr 4:4:4 with alpha, Cb first",
     .model = color_model::ycbcr,
     .alpha = true,
     .planes = {{{"vuya", 8, 1, sample_type::u16, "Cb Cr Y A"}}}},
    {.name = "vuya_f32",
     .id = 37,
     .description = "YCbCr 4:4:4 with alpha in 32-bit floats, Cr first",
     .model = color_model::ycbcr,
     .alpha = true,
     .planes = {{{"vuya", 16, 1, sample_type::f32, "Cr Cb Y A"}}}},
    {.name = "yuyv_matrox_10",
     .id = 38,
     .description = "10-bit YCbCr 4:2:2 of Matrox cards, sixteen pixels in forty bytes",
     .model = color_model::ycbcr,
     .width_multiple = 2,
     .planes = {{{"yuyv", 40, 16, sample_type::u8_and_2,
                  "Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr Y Cb Y Cr"}}}},
    {.name = "yua_yva_matrox_10",
     .id = 39,
     .description = "10-bit YCbCr 4:2:2 with a key of Matrox cards, four bytes a pixel",
     .model = color_model::ycbcr,
     .alpha = true,
     .width_multiple = 2,
     .planes = {{{"yua_yva", 8, 2, sample_type::u32_3x10, "Y Cb A Y Cr A"}}}},
    {.name = "alpha_10u16",
     .id = 40,
     .description = "10-bit alpha alone, in the lower bits of 16",
     .model = color_model::alpha,
     .alpha = true,
     .planes = {{{"alpha", 2, 1, sample_type::u16_low10, "A"}}}},
    {.name = "alpha_12u16",
     .id = 41,
     .description = "12-bit alpha alone, in the lower bits of 16",
     .model = color_model::alpha,
     .alpha = true,
     .planes = {{{"alpha", 2, 1, sample_type::u16_low12, "A"}}}},
    {.name = "y_10u16",
     .id = 42,
     .description = "10-bit luma alone, in the lower bits of 16",
     .model = color_model::luma,
     .fourcc = "Y10 ",
     .ffmpeg = "gray10le",
     .v4l2 = "V4L2_PIX_FMT_Y10",
     .planes = {{{"y", 2, 1, sample_type::u16_low10, "Y"}}}},
    {.name = "bgra64",
     .id = 43,
     .description = "16-bit RGB with alpha, blue first",
     .model = color_model::rgb,
     .alpha = true,
     .ffmpeg = "bgra64le",
     .planes = {{{"bgra64", 8, 1, sample_type::u16, "B G R A"}}}},
});

// The format of a name, or null.
constexpr const format* find_format(std::string_view name) {
  for (const format& f : formats)
    if (f.name == name) return &f;
  return nullptr;
}

}  // namespace morvane::catalogue
