// The entry points of RGB to video and of video to RGB.
#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "kernel/rgb_to_video.h"
#include "kernel/video_to_rgb.h"

namespace Processing::Morvane::format_conversion {

void bgra::uyvy(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  convert<kernel::rgb_over_black_to_uyvy<kernel::byte_order::bgra>>(xres, yres, plane{p_src_bgra, src_bgra_stride},
                                                                    plane{p_dst_uyvy, dst_uyvy_stride});
}

void rgba::uyvy(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  convert<kernel::rgb_over_black_to_uyvy<kernel::byte_order::rgba>>(xres, yres, plane{p_src_rgba, src_rgba_stride},
                                                                    plane{p_dst_uyvy, dst_uyvy_stride});
}

void bgrx::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  convert<kernel::direct_rgb_to_uyvy<kernel::matrix::bt709, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_bgrx, src_bgrx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void rgbx::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  convert<kernel::direct_rgb_to_uyvy<kernel::matrix::bt709, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_rgbx, src_rgbx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void bgr::uyvy(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
               const int xres, const int yres) {
  convert<kernel::bgr_to_uyvy>(xres, yres, plane{p_src_bgr, src_bgr_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void uyvy::bgr_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                   const int xres, const int yres) {
  const bool tight = src_uyvy_stride == 2 * int64_t{xres} && dst_bgr_stride == 4 * int64_t{xres};
  frame_if(tight, backend::line_of<kernel::uyvy_to_bgr<kernel::matrix::bt601>>(), xres, yres,
           plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_bgr, dst_bgr_stride});
}

void uyvy::bgr_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                   const int xres, const int yres) {
  const bool tight = src_uyvy_stride == 2 * int64_t{xres} && dst_bgr_stride == 4 * int64_t{xres};
  frame_if(tight, backend::line_of<kernel::uyvy_to_bgr<kernel::matrix::bt709>>(), xres, yres,
           plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_bgr, dst_bgr_stride});
}

void uyvy::bgr(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
               const int xres, const int yres, const e_ycbcr_color_space color_space) {
  (color_space == ccir_601 ? bgr_601 : bgr_709)(p_src_uyvy, src_uyvy_stride, p_dst_bgr, dst_bgr_stride, xres, yres);
}

void uyvy::bgra(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride,
                const int xres, const int yres, const e_ycbcr_color_space color_space) {
  (color_space == ccir_601 ? bgra_601 : bgra_709)(p_src_uyvy, src_uyvy_stride, p_dst_bgra, dst_bgra_stride, xres, yres);
}

void uyvy::rgba(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgba, const int dst_rgba_stride,
                const int xres, const int yres, const e_ycbcr_color_space color_space) {
  (color_space == ccir_601 ? rgba_601 : rgba_709)(p_src_uyvy, src_uyvy_stride, p_dst_rgba, dst_rgba_stride, xres, yres);
}

void uyvy::bgrx(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgrx, const int dst_bgrx_stride,
                const int xres, const int yres, const e_ycbcr_color_space color_space) {
  bgra(p_src_uyvy, src_uyvy_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres, color_space);
}

void uyvy::rgbx(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_rgbx, const int dst_rgbx_stride,
                const int xres, const int yres, const e_ycbcr_color_space color_space) {
  rgba(p_src_uyvy, src_uyvy_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres, color_space);
}

void bgra::uyvy_a(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                  uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  bool* p_alpha_all_255) {
  convert_with_report<
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::bgra, kernel::alpha_report::none>,
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::bgra, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_bgra, src_bgra_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void bgra_601::uyvy_a(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  convert_with_report<
      kernel::rgb_to_uyvy_a<kernel::matrix::bt601, kernel::byte_order::bgra, kernel::alpha_report::none>,
      kernel::rgb_to_uyvy_a<kernel::matrix::bt601, kernel::byte_order::bgra, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_bgra, src_bgra_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void bgra_709::uyvy_a(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  convert_with_report<
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::bgra, kernel::alpha_report::none>,
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::bgra, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_bgra, src_bgra_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void rgba::uyvy_a(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                  uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  bool* p_alpha_all_255) {
  convert_with_report<
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::rgba, kernel::alpha_report::none>,
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::rgba, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_rgba, src_rgba_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void rgba_601::uyvy_a(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  convert_with_report<
      kernel::rgb_to_uyvy_a<kernel::matrix::bt601, kernel::byte_order::rgba, kernel::alpha_report::none>,
      kernel::rgb_to_uyvy_a<kernel::matrix::bt601, kernel::byte_order::rgba, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_rgba, src_rgba_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void rgba_709::uyvy_a(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  convert_with_report<
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::rgba, kernel::alpha_report::none>,
      kernel::rgb_to_uyvy_a<kernel::matrix::bt709, kernel::byte_order::rgba, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_rgba, src_rgba_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void uyvy_a::bgra(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                  const int src_alpha_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride, const int xres,
                  const int yres, const e_ycbcr_color_space color_space) {
  (color_space == ccir_601 ? bgra_601 : bgra_709)(p_src_uyvy, src_uyvy_stride, p_src_alpha, src_alpha_stride,
                                                  p_dst_bgra, dst_bgra_stride, xres, yres);
}

void uyvy_a::bgra_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                      const int src_alpha_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride, const int xres,
                      const int yres) {
  convert<kernel::uyvy_a_to_rgb<kernel::matrix::bt601, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_src_alpha, src_alpha_stride},
      plane{p_dst_bgra, dst_bgra_stride});
}

void uyvy_a::bgra_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                      const int src_alpha_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride, const int xres,
                      const int yres) {
  convert<kernel::uyvy_a_to_rgb<kernel::matrix::bt709, kernel::byte_order::bgra>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_src_alpha, src_alpha_stride},
      plane{p_dst_bgra, dst_bgra_stride});
}

void uyvy_a::rgba(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                  const int src_alpha_stride, uint8_t* p_dst_rgba, const int dst_rgba_stride, const int xres,
                  const int yres, const e_ycbcr_color_space color_space) {
  (color_space == ccir_601 ? rgba_601 : rgba_709)(p_src_uyvy, src_uyvy_stride, p_src_alpha, src_alpha_stride,
                                                  p_dst_rgba, dst_rgba_stride, xres, yres);
}

void uyvy_a::rgba_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                      const int src_alpha_stride, uint8_t* p_dst_rgba, const int dst_rgba_stride, const int xres,
                      const int yres) {
  convert<kernel::uyvy_a_to_rgb<kernel::matrix::bt601, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_src_alpha, src_alpha_stride},
      plane{p_dst_rgba, dst_rgba_stride});
}

void uyvy_a::rgba_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                      const int src_alpha_stride, uint8_t* p_dst_rgba, const int dst_rgba_stride, const int xres,
                      const int yres) {
  convert<kernel::uyvy_a_to_rgb<kernel::matrix::bt709, kernel::byte_order::rgba>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_src_alpha, src_alpha_stride},
      plane{p_dst_rgba, dst_rgba_stride});
}

void uyvy::r_g_b(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                 uint8_t* p_dst_b, const int dst_stride, const int xres, const int yres,
                 const e_ycbcr_color_space color_space) {
  (color_space == ccir_601 ? r_g_b_601 : r_g_b_709)(p_src_uyvy, src_uyvy_stride, p_dst_r, p_dst_g, p_dst_b, dst_stride,
                                                    xres, yres);
}

void uyvy::r_g_b_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                     uint8_t* p_dst_b, const int dst_stride, const int xres, const int yres) {
  convert<kernel::uyvy_to_r_g_b<kernel::matrix::bt601>>(xres, yres, plane{p_src_uyvy, src_uyvy_stride},
                                                        plane{p_dst_r, dst_stride}, plane{p_dst_g, dst_stride},
                                                        plane{p_dst_b, dst_stride});
}

void uyvy::r_g_b_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                     uint8_t* p_dst_b, const int dst_stride, const int xres, const int yres) {
  convert<kernel::uyvy_to_r_g_b<kernel::matrix::bt709>>(xres, yres, plane{p_src_uyvy, src_uyvy_stride},
                                                        plane{p_dst_r, dst_stride}, plane{p_dst_g, dst_stride},
                                                        plane{p_dst_b, dst_stride});
}

void L::bgra(const uint8_t* p_src_L, const int src_L_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride,
             const int xres, const int yres) {
  convert<kernel::luminance_to_bgra>(xres, yres, plane{p_src_L, src_L_stride}, plane{p_dst_bgra, dst_bgra_stride});
}

void p216::rgbx_2020(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                     uint8_t* p_dst_rgbx, const int dst_rgbx_stride, const int xres, const int yres) {
  convert_rows<kernel::p216_to_rgbx_2020>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_uv, src_uv_stride},
                                          plane{p_dst_rgbx, dst_rgbx_stride});
}

}  // namespace Processing::Morvane::format_conversion
