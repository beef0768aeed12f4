// The conversions between uyvy and 32-bit RGB that a platform may offer itself.
#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "format_conversion_line.h"
#include "format_conversion_line_bgra.h"

namespace Processing::Morvane::format_conversion {

namespace {

template <bool ccir_709, bool is_rgba>
void uyvy_to_rgb(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst, const int dst_stride,
                 const int xres, const int yres) {
  frame_by_rows(backend::line_of<line::uyvy::rgb_kernel<ccir_709, is_rgba, 4>>(), xres, yres,
                plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_dst, dst_stride, 4});
}

template <bool colorspace_709, bool is_rgba>
void rgb_to_uyvy(const uint8_t* p_src, const int src_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                 const int xres, const int yres) {
  frame_by_rows(backend::line_of<line::rgba_and_bgra::uyvy_kernel<false, colorspace_709, is_rgba>>(), xres, yres,
                plane{p_src, src_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

}  // namespace

void uyvy::bgra_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgra,
                    const int dst_bgra_stride, const int xres, const int yres) {
  uyvy_to_rgb<false, false>(p_src_uyvy, src_uyvy_stride, p_dst_bgra, dst_bgra_stride, xres, yres);
}

void uyvy::rgba_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgba,
                    const int dst_rgba_stride, const int xres, const int yres) {
  uyvy_to_rgb<false, true>(p_src_uyvy, src_uyvy_stride, p_dst_rgba, dst_rgba_stride, xres, yres);
}

void uyvy::bgrx_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgrx,
                    const int dst_bgrx_stride, const int xres, const int yres) {
  uyvy_to_rgb<false, false>(p_src_uyvy, src_uyvy_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres);
}

void uyvy::rgbx_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgbx,
                    const int dst_rgbx_stride, const int xres, const int yres) {
  uyvy_to_rgb<false, true>(p_src_uyvy, src_uyvy_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres);
}

void uyvy::bgra_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgra,
                    const int dst_bgra_stride, const int xres, const int yres) {
  uyvy_to_rgb<true, false>(p_src_uyvy, src_uyvy_stride, p_dst_bgra, dst_bgra_stride, xres, yres);
}

void uyvy::rgba_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgba,
                    const int dst_rgba_stride, const int xres, const int yres) {
  uyvy_to_rgb<true, true>(p_src_uyvy, src_uyvy_stride, p_dst_rgba, dst_rgba_stride, xres, yres);
}

void uyvy::bgrx_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgrx,
                    const int dst_bgrx_stride, const int xres, const int yres) {
  uyvy_to_rgb<true, false>(p_src_uyvy, src_uyvy_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres);
}

void uyvy::rgbx_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgbx,
                    const int dst_rgbx_stride, const int xres, const int yres) {
  uyvy_to_rgb<true, true>(p_src_uyvy, src_uyvy_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres);
}

void bgrx_601::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  rgb_to_uyvy<false, false>(p_src_bgrx, src_bgrx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres);
}

void rgbx_601::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  rgb_to_uyvy<false, true>(p_src_rgbx, src_rgbx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres);
}

void bgrx_709::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  rgb_to_uyvy<true, false>(p_src_bgrx, src_bgrx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres);
}

void rgbx_709::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, const int xres, const int yres) {
  rgb_to_uyvy<true, true>(p_src_rgbx, src_rgbx_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres);
}

}  // namespace Processing::Morvane::format_conversion
