// The entry points between uyvy and opaque 32-bit RGB, row by row. On Apple systems format_conversion_main_apple.cpp
// takes the place of this file.
#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "kernel/rgb_to_video.h"
#include "kernel/video_to_rgb.h"

namespace Processing::Morvane::format_conversion {

void uyvy::bgra_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgra,
                    const int dst_bgra_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt601, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_bgra, dst_bgra_stride});
}

void uyvy::rgba_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgba,
                    const int dst_rgba_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt601, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_rgba, dst_rgba_stride});
}

void uyvy::bgrx_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgrx,
                    const int dst_bgrx_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt601, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_bgrx, dst_bgrx_stride});
}

void uyvy::rgbx_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgbx,
                    const int dst_rgbx_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt601, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_rgbx, dst_rgbx_stride});
}

void uyvy::bgra_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgra,
                    const int dst_bgra_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt709, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_bgra, dst_bgra_stride});
}

void uyvy::rgba_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgba,
                    const int dst_rgba_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt709, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_rgba, dst_rgba_stride});
}

void uyvy::bgrx_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgrx,
                    const int dst_bgrx_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt709, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_bgrx, dst_bgrx_stride});
}

void uyvy::rgbx_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgbx,
                    const int dst_rgbx_stride, const int xres, const int yres) {
  convert_rows<kernel::uyvy_to_rgb<kernel::matrix::bt709, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_rgbx, dst_rgbx_stride});
}

void bgrx_601::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  convert_rows<kernel::direct_rgb_to_uyvy<kernel::matrix::bt601, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_bgrx, src_bgrx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void rgbx_601::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  convert_rows<kernel::direct_rgb_to_uyvy<kernel::matrix::bt601, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_rgbx, src_rgbx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void bgrx_709::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  convert_rows<kernel::direct_rgb_to_uyvy<kernel::matrix::bt709, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_bgrx, src_bgrx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void rgbx_709::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  convert_rows<kernel::direct_rgb_to_uyvy<kernel::matrix::bt709, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_rgbx, src_rgbx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

}  // namespace Processing::Morvane::format_conversion
