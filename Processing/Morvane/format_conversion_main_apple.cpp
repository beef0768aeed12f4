// The entry points between uyvy and opaque 32-bit RGB on Apple systems, where the platform's vImage does the work, a
// whole image at a time.
#include <Accelerate/Accelerate.h>

#include <mutex>

#include "Processing.Morvane.h"

namespace Processing::Morvane::format_conversion {

namespace {

// The channel that each byte of a pixel holds: 0 is alpha (or X), 1 red, 2 green, 3 blue.
constexpr uint8_t g_bgra_permute_map[4] = {3, 2, 1, 0};
constexpr uint8_t g_rgba_permute_map[4] = {1, 2, 3, 0};

// Video range; results outside it are clamped only to what a byte holds.
constexpr vImage_YpCbCrPixelRange g_clamped_yuv_video_range = {
    .Yp_bias = 16,
    .CbCr_bias = 128,
    .YpRangeMax = 235,
    .CbCrRangeMax = 240,
    .YpMax = 255,
    .YpMin = 0,
    .CbCrMax = 255,
    .CbCrMin = 0,
};

vImage_Buffer buffer_of(const uint8_t* data, const int stride, const int xres, const int yres) {
  return {.data = const_cast<uint8_t*>(data),
          .height = static_cast<vImagePixelCount>(yres),
          .width = static_cast<vImagePixelCount>(xres),
          .rowBytes = static_cast<size_t>(stride)};
}

// The first caller of a routine generates its descriptor. What vImage returns is not looked at: an image that it
// refuses is left as it is. The type of the descriptors is that of Y, Cb, Y, Cr, although the conversions that use them
// are those of Cb, Y, Cr, Y; this is meant, and the other type could change the pictures.

template <bool ccir_709>
void uyvy_to_argb(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst, const int dst_stride,
                  const int xres, const int yres, const uint8_t* permute_map) {
  static std::once_flag flag;
  static vImage_YpCbCrToARGB conv_nfo;
  std::call_once(flag, [] {
    vImageConvert_YpCbCrToARGB_GenerateConversion(
        ccir_709 ? kvImage_YpCbCrToARGBMatrix_ITU_R_709_2 : kvImage_YpCbCrToARGBMatrix_ITU_R_601_4,
        &g_clamped_yuv_video_range, &conv_nfo, kvImage422YpCbYpCr8, kvImageARGB8888, kvImageNoFlags);
  });
  const vImage_Buffer src = buffer_of(p_src_uyvy, src_uyvy_stride, xres, yres);
  const vImage_Buffer dst = buffer_of(p_dst, dst_stride, xres, yres);
  vImageConvert_422CbYpCrYp8ToARGB8888(&src, &dst, &conv_nfo, permute_map, 255, kvImageNoFlags);
}

template <bool colorspace_709>
void argb_to_uyvy(const uint8_t* p_src, const int src_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                  const int xres, const int yres, const uint8_t* permute_map) {
  static std::once_flag flag;
  static vImage_ARGBToYpCbCr conv_nfo;
  std::call_once(flag, [] {
    vImageConvert_ARGBToYpCbCr_GenerateConversion(
        colorspace_709 ? kvImage_ARGBToYpCbCrMatrix_ITU_R_709_2 : kvImage_ARGBToYpCbCrMatrix_ITU_R_601_4,
        &g_clamped_yuv_video_range, &conv_nfo, kvImageARGB8888, kvImage422YpCbYpCr8, kvImageNoFlags);
  });
  const vImage_Buffer src = buffer_of(p_src, src_stride, xres, yres);
  const vImage_Buffer dst = buffer_of(p_dst_uyvy, dst_uyvy_stride, xres, yres);
  vImageConvert_ARGB8888To422CbYpCrYp8(&src, &dst, &conv_nfo, permute_map, kvImageNoFlags);
}

constexpr auto& uyvy_to_argb_601_accelerated = uyvy_to_argb<false>;
constexpr auto& uyvy_to_argb_709_accelerated = uyvy_to_argb<true>;
constexpr auto& argb_709_to_uyvy_accelerated = argb_to_uyvy<true>;
constexpr auto& argb_601_to_uyvy_accelerated = argb_to_uyvy<false>;

}  // namespace

void uyvy::bgra_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgra,
                    const int dst_bgra_stride, const int xres, const int yres) {
  uyvy_to_argb_601_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_bgra, dst_bgra_stride, xres, yres,
                               g_bgra_permute_map);
}

void uyvy::rgba_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgba,
                    const int dst_rgba_stride, const int xres, const int yres) {
  uyvy_to_argb_601_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_rgba, dst_rgba_stride, xres, yres,
                               g_rgba_permute_map);
}

void uyvy::bgrx_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgrx,
                    const int dst_bgrx_stride, const int xres, const int yres) {
  uyvy_to_argb_601_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres,
                               g_bgra_permute_map);
}

void uyvy::rgbx_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgbx,
                    const int dst_rgbx_stride, const int xres, const int yres) {
  uyvy_to_argb_601_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres,
                               g_rgba_permute_map);
}

void uyvy::bgra_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgra,
                    const int dst_bgra_stride, const int xres, const int yres) {
  uyvy_to_argb_709_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_bgra, dst_bgra_stride, xres, yres,
                               g_bgra_permute_map);
}

void uyvy::rgba_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgba,
                    const int dst_rgba_stride, const int xres, const int yres) {
  uyvy_to_argb_709_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_rgba, dst_rgba_stride, xres, yres,
                               g_rgba_permute_map);
}

void uyvy::bgrx_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgrx,
                    const int dst_bgrx_stride, const int xres, const int yres) {
  uyvy_to_argb_709_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres,
                               g_bgra_permute_map);
}

void uyvy::rgbx_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgbx,
                    const int dst_rgbx_stride, const int xres, const int yres) {
  uyvy_to_argb_709_accelerated(p_src_uyvy, src_uyvy_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres,
                               g_rgba_permute_map);
}

void bgrx_601::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  argb_601_to_uyvy_accelerated(p_src_bgrx, src_bgrx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres,
                               g_bgra_permute_map);
}

void rgbx_601::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  argb_601_to_uyvy_accelerated(p_src_rgbx, src_rgbx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres,
                               g_rgba_permute_map);
}

void bgrx_709::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  argb_709_to_uyvy_accelerated(p_src_bgrx, src_bgrx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres,
                               g_bgra_permute_map);
}

void rgbx_709::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  argb_709_to_uyvy_accelerated(p_src_rgbx, src_rgbx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres,
                               g_rgba_permute_map);
}

}  // namespace Processing::Morvane::format_conversion
