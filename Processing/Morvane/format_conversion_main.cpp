// The entry points: planes with their tight row bytes, and the kernel.
#include <cstdlib>
#include <cstring>

#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "format_conversion_line.h"
#include "format_conversion_line_bgr.h"
#include "format_conversion_line_bgra.h"
#include "format_conversion_line_black.h"
#include "format_conversion_line_p216.h"
#include "format_conversion_line_r_g_b.h"

namespace Processing::Morvane::format_conversion {

namespace {

// Only the low four bits matter, so the low 32 bits of an address do.
uint32_t low_bits(const void* ptr, const int stride) {
  return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(ptr)) | static_cast<uint32_t>(stride);
}

bool all_multiples_of_16(const uint32_t bits) {
  return (bits & 15) == 0;
}

// Rows that follow each other without a gap, or run into each other, are one run of bytes where both planes hold them
// alike.
template <int bytes_per_pixel>
void copy(const uint8_t* p_src, const int src_stride, uint8_t* p_dst, const int dst_stride, const int xres,
          const int yres) {
  if (xres < 1 || yres < 1) return;
  const int64_t row_bytes = int64_t{xres} * bytes_per_pixel;
  const bool one_run = src_stride == dst_stride && src_stride >= 0 && src_stride <= row_bytes;
  if (one_run)
    std::memcpy(p_dst, p_src, static_cast<size_t>(int64_t{src_stride} * (yres - 1) + row_bytes));
  else
    frame_by_rows(&line::copy<bytes_per_pixel>, xres, yres, plane{p_src, src_stride, bytes_per_pixel},
                  plane{p_dst, dst_stride, bytes_per_pixel});
}

}  // namespace

bool is_aligned(const void* ptr0, const int stride0) {
  return all_multiples_of_16(low_bits(ptr0, stride0));
}

bool is_aligned(const void* ptr0, const int stride0, const void* ptr1, const int stride1) {
  return all_multiples_of_16(low_bits(ptr0, stride0) | low_bits(ptr1, stride1));
}

bool is_aligned(const void* ptr0, const int stride0, const void* ptr1, const int stride1, const void* ptr2,
                const int stride2) {
  return all_multiples_of_16(low_bits(ptr0, stride0) | low_bits(ptr1, stride1) | low_bits(ptr2, stride2));
}

bool is_aligned_avx2(const void* ptr0, const int stride0) {
  return is_aligned(ptr0, stride0);
}

bool is_aligned_avx2(const void* ptr0, const int stride0, const void* ptr1, const int stride1) {
  return is_aligned(ptr0, stride0, ptr1, stride1);
}

bool is_aligned_avx2(const void* ptr0, const int stride0, const void* ptr1, const int stride1, const void* ptr2,
                     const int stride2) {
  return is_aligned(ptr0, stride0, ptr1, stride1, ptr2, stride2);
}

void black::uyvy(uint8_t* p_dst_uyvy, const int dst_uyvy_stride, const int xres, const int yres) {
  frame(&line::black::uyvy, xres, yres, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void black::alpha(uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  const int bg_value) {
  const auto fill = [bg_value](uint8_t* p_dst, const int no_pixels) { line::black::alpha(p_dst, no_pixels, bg_value); };
  frame(fill, xres, yres, plane{p_dst_alpha, dst_alpha_stride, 1});
}

void black::alpha(uint16_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  const int bg_value) {
  const auto fill = [bg_value](uint16_t* p_dst, const int no_pixels) {
    line::black::alpha(p_dst, no_pixels, bg_value);
  };
  frame(fill, xres, yres, plane{p_dst_alpha, dst_alpha_stride, 2});
}

void y::y(const uint8_t* p_src_y, const int src_y_stride, uint8_t* p_dst_y, const int dst_y_stride, const int xres,
          const int yres) {
  copy<1>(p_src_y, src_y_stride, p_dst_y, dst_y_stride, xres, yres);
}

void uyvy::uyvy(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  copy<2>(p_src_uyvy, src_uyvy_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres);
}

void bgr::bgr(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
              const int xres, const int yres) {
  copy<4>(p_src_bgr, src_bgr_stride, p_dst_bgr, dst_bgr_stride, xres, yres);
}

void bgr_601::bgr_601(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                      const int xres, const int yres) {
  copy<4>(p_src_bgr, src_bgr_stride, p_dst_bgr, dst_bgr_stride, xres, yres);
}

void bgr_709::bgr_709(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                      const int xres, const int yres) {
  copy<4>(p_src_bgr, src_bgr_stride, p_dst_bgr, dst_bgr_stride, xres, yres);
}

void bgrx::bgrx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_bgrx, const int dst_bgrx_stride,
                const int xres, const int yres) {
  copy<4>(p_src_bgrx, src_bgrx_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres);
}

void bgrx_601::bgrx_601(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_bgrx,
                        const int dst_bgrx_stride, const int xres, const int yres) {
  copy<4>(p_src_bgrx, src_bgrx_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres);
}

void bgrx_709::bgrx_709(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_bgrx,
                        const int dst_bgrx_stride, const int xres, const int yres) {
  copy<4>(p_src_bgrx, src_bgrx_stride, p_dst_bgrx, dst_bgrx_stride, xres, yres);
}

void rgbx::rgbx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_rgbx, const int dst_rgbx_stride,
                const int xres, const int yres) {
  copy<4>(p_src_rgbx, src_rgbx_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres);
}

void rgbx_601::rgbx_601(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_rgbx,
                        const int dst_rgbx_stride, const int xres, const int yres) {
  copy<4>(p_src_rgbx, src_rgbx_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres);
}

void rgbx_709::rgbx_709(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_rgbx,
                        const int dst_rgbx_stride, const int xres, const int yres) {
  copy<4>(p_src_rgbx, src_rgbx_stride, p_dst_rgbx, dst_rgbx_stride, xres, yres);
}

void ycbcrx::ycbcrx(const uint8_t* p_src_ycbcrx, const int src_ycbcrx_stride, uint8_t* p_dst_ycbcrx,
                    const int dst_ycbcrx_stride, const int xres, const int yres) {
  copy<4>(p_src_ycbcrx, src_ycbcrx_stride, p_dst_ycbcrx, dst_ycbcrx_stride, xres, yres);
}

void vuyx::vuyx(const uint8_t* p_src_vuyx, const int src_vuyx_stride, uint8_t* p_dst_vuyx, const int dst_vuyx_stride,
                const int xres, const int yres) {
  copy<4>(p_src_vuyx, src_vuyx_stride, p_dst_vuyx, dst_vuyx_stride, xres, yres);
}

void bgra::bgra(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride,
                const int xres, const int yres, bool* p_alpha_is_all_255) {
  if (p_alpha_is_all_255 == nullptr) {
    copy<4>(p_src_bgra, src_bgra_stride, p_dst_bgra, dst_bgra_stride, xres, yres);
    return;
  }
  *p_alpha_is_all_255 = frame(backend::line_of<line::bgra::bgra_kernel>(), xres, yres,
                              plane{p_src_bgra, src_bgra_stride, 4}, plane{p_dst_bgra, dst_bgra_stride, 4});
}

void bgra_601::bgra_601(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_bgra,
                        const int dst_bgra_stride, const int xres, const int yres, bool* p_alpha_is_all_255) {
  bgra::bgra(p_src_bgra, src_bgra_stride, p_dst_bgra, dst_bgra_stride, xres, yres, p_alpha_is_all_255);
}

void bgra_709::bgra_709(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_bgra,
                        const int dst_bgra_stride, const int xres, const int yres, bool* p_alpha_is_all_255) {
  bgra::bgra(p_src_bgra, src_bgra_stride, p_dst_bgra, dst_bgra_stride, xres, yres, p_alpha_is_all_255);
}

void rgba::rgba(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_rgba, const int dst_rgba_stride,
                const int xres, const int yres, bool* p_alpha_is_all_255) {
  bgra::bgra(p_src_rgba, src_rgba_stride, p_dst_rgba, dst_rgba_stride, xres, yres, p_alpha_is_all_255);
}

void rgba_601::rgba_601(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_rgba,
                        const int dst_rgba_stride, const int xres, const int yres, bool* p_alpha_is_all_255) {
  bgra::bgra(p_src_rgba, src_rgba_stride, p_dst_rgba, dst_rgba_stride, xres, yres, p_alpha_is_all_255);
}

void rgba_709::rgba_709(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_rgba,
                        const int dst_rgba_stride, const int xres, const int yres, bool* p_alpha_is_all_255) {
  bgra::bgra(p_src_rgba, src_rgba_stride, p_dst_rgba, dst_rgba_stride, xres, yres, p_alpha_is_all_255);
}

void ycbcra::ycbcra(const uint8_t* p_src_ycbcra, const int src_ycbcra_stride, uint8_t* p_dst_ycbcra,
                    const int dst_ycbcra_stride, const int xres, const int yres, bool* p_alpha_is_all_255) {
  bgra::bgra(p_src_ycbcra, src_ycbcra_stride, p_dst_ycbcra, dst_ycbcra_stride, xres, yres, p_alpha_is_all_255);
}

void vuya::vuya(const uint8_t* p_src_vuya, const int src_vuya_stride, uint8_t* p_dst_vuya, const int dst_vuya_stride,
                const int xres, const int yres, bool* p_alpha_is_all_255) {
  bgra::bgra(p_src_vuya, src_vuya_stride, p_dst_vuya, dst_vuya_stride, xres, yres, p_alpha_is_all_255);
}

void v210::uyvy(const uint8_t* p_src_v210, const int src_v210_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::v210::uyvy_kernel>(), xres, yres, plane{p_src_v210, src_v210_stride, 16, 6},
        plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void uyvy::yuy2(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_yuy2, const int dst_yuy2_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::yuy2_kernel>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_yuy2, dst_yuy2_stride, 2});
}

void yuy2::uyvy(const uint8_t* p_src_yuy2, const int src_yuy2_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  uyvy::yuy2(p_src_yuy2, src_yuy2_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres);
}

void bgra::uyvy(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::rgba_and_bgra::uyvy_kernel<true, true, false>>(), xres, yres,
        plane{p_src_bgra, src_bgra_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void rgba::uyvy(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::rgba_and_bgra::uyvy_kernel<true, true, true>>(), xres, yres,
        plane{p_src_rgba, src_rgba_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void bgrx::uyvy(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::rgba_and_bgra::uyvy_kernel<false, true, false>>(), xres, yres,
        plane{p_src_bgrx, src_bgrx_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void rgbx::uyvy(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::rgba_and_bgra::uyvy_kernel<false, true, true>>(), xres, yres,
        plane{p_src_rgbx, src_rgbx_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void bgr::uyvy(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
               const int xres, const int yres) {
  frame(backend::line_of<line::bgr::uyvy_kernel>(), xres, yres, plane{p_src_bgr, src_bgr_stride, 3},
        plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

// Four bytes a pixel count as tight, although a pixel has three: tight rows of three are converted one by one.
void uyvy::bgr_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                   const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::rgb_kernel<false, false, 3>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_bgr, dst_bgr_stride, 4});
}

void uyvy::bgr_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                   const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::rgb_kernel<true, false, 3>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_bgr, dst_bgr_stride, 4});
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

void uyvy::y_uv_422(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                    uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::y_uv_kernel<true>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_y, dst_y_stride, 1}, plane{p_dst_cbcr, dst_cbcr_stride, 1});
}

void uyvy::y_uv_420(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                    uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  frame_to_420(backend::line_of<line::uyvy::y_uv_kernel<true>>(), backend::line_of<line::uyvy::y_uv_kernel<false>>(),
               xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_dst_y, dst_y_stride, 1},
               plane{p_dst_cbcr, dst_cbcr_stride, 1});
}

void uyvy::y_u_v_422(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                     uint8_t* p_dst_u, const int dst_u_stride, uint8_t* p_dst_v, const int dst_v_stride, const int xres,
                     const int yres) {
  const bool tight = dst_y_stride == xres && src_uyvy_stride == 2 * xres && dst_u_stride == dst_y_stride / 2 &&
                     dst_v_stride == dst_y_stride / 2;
  frame_if(tight, backend::line_of<line::uyvy::y_u_v_kernel<true>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
           plane{p_dst_y, dst_y_stride, 1}, plane{p_dst_u, dst_u_stride, 1}, plane{p_dst_v, dst_v_stride, 1});
}

void uyvy::y_u_v_420(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                     uint8_t* p_dst_u, const int dst_u_stride, uint8_t* p_dst_v, const int dst_v_stride, const int xres,
                     const int yres) {
  frame_to_420(backend::line_of<line::uyvy::y_u_v_kernel<true>>(), backend::line_of<line::uyvy::y_u_v_kernel<false>>(),
               xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_dst_y, dst_y_stride, 1},
               plane{p_dst_u, dst_u_stride, 1}, plane{p_dst_v, dst_v_stride, 1});
}

void uyvy::y(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
             const int xres, const int yres, const bool key_color_alpha_rescale) {
  frame(key_color_alpha_rescale ? backend::line_of<line::uyvy::y_kernel<true>>()
                                : backend::line_of<line::uyvy::y_kernel<false>>(),
        xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_dst_y, dst_y_stride, 1});
}

void uyvy::ycbcrx(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_ycbcrx,
                  const int dst_ycbcrx_stride, const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::ycbcrx_kernel>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_ycbcrx, dst_ycbcrx_stride, 4});
}

void y::y16(const uint8_t* p_src_y, const int src_y_stride, uint16_t* p_dst_y, const int dst_y_stride, const int xres,
            const int yres) {
  frame(&line::y::y16<false, false>, xres, yres, plane{p_src_y, src_y_stride, 1}, plane{p_dst_y, dst_y_stride, 2});
}

void y::uyvy(const uint8_t* p_src_y, const int src_y_stride, uint8_t* p_dst_ycbcr, const int dst_ycbcr_stride,
             const int xres, const int yres, const bool alpha_rescale) {
  frame(
      alpha_rescale ? backend::line_of<line::y::uyvy_kernel<true>>() : backend::line_of<line::y::uyvy_kernel<false>>(),
      xres, yres, plane{p_src_y, src_y_stride, 1}, plane{p_dst_ycbcr, dst_ycbcr_stride, 2});
}

void y16::y16(const uint16_t* p_src_y, const int src_y_stride, uint16_t* p_dst_y, const int dst_y_stride,
              const int xres, const int yres, const bool alpha_rescale) {
  frame(alpha_rescale ? &line::y16::y16<false, false, true> : &line::y16::y16<false, false, false>, xres, yres,
        plane{p_src_y, src_y_stride, 2}, plane{p_dst_y, dst_y_stride, 2});
}

void y_uv::y_uv(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                uint8_t* p_dst_y, const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, xres, yres);
  copy<1>(p_src_uv, src_uv_stride, p_dst_cbcr, dst_cbcr_stride, xres / 2 * 2, yres / 2);
}

void y_uv::y_uv_to422(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                      uint8_t* p_dst_y, const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride,
                      const int input_xres, const int input_yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, input_xres, input_yres);
  frame_to_422(&line::copy<1>, input_xres, input_yres / 2, plane{p_dst_cbcr, dst_cbcr_stride, 1},
               plane{p_src_uv, src_uv_stride, 1});
}

void y_u_v::y_uv(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_u, const int src_u_stride,
                 const uint8_t* p_src_v, const int src_v_stride, uint8_t* p_dst_y, const int dst_y_stride,
                 uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int input_yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, xres, input_yres);
  const bool tight = dst_cbcr_stride == xres && src_u_stride == xres / 2 && src_v_stride == xres / 2;
  frame_if(tight, backend::line_of<line::u_v::uv_kernel<1>>(), xres / 2, input_yres / 2,
           plane{p_src_u, src_u_stride, 1}, plane{p_src_v, src_v_stride, 1}, plane{p_dst_cbcr, dst_cbcr_stride, 2});
}

void y_u_v::y_uv_to422(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_u, const int src_u_stride,
                       const uint8_t* p_src_v, const int src_v_stride, uint8_t* p_dst_y, const int dst_y_stride,
                       uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int input_yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, xres, input_yres);
  frame_to_422(backend::line_of<line::u_v::uv_kernel<1>>(), xres / 2, input_yres / 2,
               plane{p_dst_cbcr, dst_cbcr_stride, 2}, plane{p_src_u, src_u_stride, 1}, plane{p_src_v, src_v_stride, 1});
}

void cb_cr_8_420::cbcr_16_422(const uint8_t* p_src_cb, const int src_cb_stride, const uint8_t* p_src_cr,
                              const int src_cr_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                              const int yres) {
  cbcr_16_422(p_src_cb, src_cb_stride, p_src_cr, src_cr_stride, reinterpret_cast<uint8_t*>(p_dst_cbcr), dst_cbcr_stride,
              xres, yres);
}

void cb_cr_8_420::cbcr_16_422(const uint8_t* p_src_cb, const int src_cb_stride, const uint8_t* p_src_cr,
                              const int src_cr_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                              const int yres) {
  frame_to_422(backend::line_of<line::u_v::uv16_kernel>(), xres, yres, plane{p_dst_cbcr, dst_cbcr_stride, 4},
               plane{p_src_cb, src_cb_stride, 1}, plane{p_src_cr, src_cr_stride, 1});
}

void cb_cr_16_422::cbcr_16_422(const uint16_t* p_src_cb, const int src_cb_stride, const uint16_t* p_src_cr,
                               const int src_cr_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                               const int yres) {
  const auto convert = [](const uint16_t* cb, const uint16_t* cr, uint16_t* cbcr, const int no_pairs) {
    line::u_v::uv<false, false>(cb, cr, cbcr, no_pairs);
  };
  frame_by_rows(convert, xres, yres, plane{p_src_cb, src_cb_stride, 2}, plane{p_src_cr, src_cr_stride, 2},
                plane{p_dst_cbcr, dst_cbcr_stride, 4});
}

void cbcr_8_420::cbcr_16_422(const uint8_t* p_src_cbcr, const int src_cbcr_stride, uint16_t* p_dst_cbcr,
                             const int dst_cbcr_stride, const int xres, const int yres) {
  cbcr_16_422(p_src_cbcr, src_cbcr_stride, reinterpret_cast<uint8_t*>(p_dst_cbcr), dst_cbcr_stride, xres, yres);
}

void cbcr_8_420::cbcr_16_422(const uint8_t* p_src_cbcr, const int src_cbcr_stride, uint8_t* p_dst_cbcr,
                             const int dst_cbcr_stride, const int xres, const int yres) {
  const auto widen = [line = backend::line_of<line::y::y16_kernel>()](const uint8_t* src, uint8_t* dst,
                                                                      const int bytes) {
    line(src, dst, line::uv::whole_pair_bytes(bytes));
  };
  frame_to_422(widen, xres, yres, plane{p_dst_cbcr, dst_cbcr_stride, 2}, plane{p_src_cbcr, src_cbcr_stride, 1});
}

namespace {

// Pixels of four bytes to uyvy by the kernel `Colors`, and their alpha to its plane, with a report where one is asked
// for.
template <class Colors>
void to_uyvy_a(const uint8_t* p_src, const int src_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
               uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
               bool* p_alpha_all_255) {
  const bool track = p_alpha_all_255 != nullptr;
  const auto convert = track ? backend::line_of<line::uyvy_a_kernel<Colors, true>>()
                             : backend::line_of<line::uyvy_a_kernel<Colors, false>>();
  const bool opaque = frame(convert, xres, yres, plane{p_src, src_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2},
                            plane{p_dst_alpha, dst_alpha_stride, 1});
  if (track) *p_alpha_all_255 = opaque;
}

template <bool colorspace_709, bool is_rgba>
using rgb_to_uyvy = line::rgba_and_bgra::uyvy_kernel<false, colorspace_709, is_rgba>;

template <line::of_444::sample_order at>
using yuv_444_to_uyvy = line::of_444::uyvy_kernel<at, false>;

}  // namespace

void bgra::uyvy_a(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                  uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  bool* p_alpha_all_255) {
  to_uyvy_a<rgb_to_uyvy<true, false>>(p_src_bgra, src_bgra_stride, p_dst_uyvy, dst_uyvy_stride, p_dst_alpha,
                                      dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void bgra_601::uyvy_a(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  to_uyvy_a<rgb_to_uyvy<false, false>>(p_src_bgra, src_bgra_stride, p_dst_uyvy, dst_uyvy_stride, p_dst_alpha,
                                       dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void bgra_709::uyvy_a(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  to_uyvy_a<rgb_to_uyvy<true, false>>(p_src_bgra, src_bgra_stride, p_dst_uyvy, dst_uyvy_stride, p_dst_alpha,
                                      dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void rgba::uyvy_a(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                  uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  bool* p_alpha_all_255) {
  to_uyvy_a<rgb_to_uyvy<true, true>>(p_src_rgba, src_rgba_stride, p_dst_uyvy, dst_uyvy_stride, p_dst_alpha,
                                     dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void rgba_601::uyvy_a(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  to_uyvy_a<rgb_to_uyvy<false, true>>(p_src_rgba, src_rgba_stride, p_dst_uyvy, dst_uyvy_stride, p_dst_alpha,
                                      dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void rgba_709::uyvy_a(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_uyvy,
                      const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                      const int yres, bool* p_alpha_all_255) {
  to_uyvy_a<rgb_to_uyvy<true, true>>(p_src_rgba, src_rgba_stride, p_dst_uyvy, dst_uyvy_stride, p_dst_alpha,
                                     dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void uyvy::ya_uv(const uint8_t* p_src0_uyvy, const int src0_uyvy_stride, const uint8_t* p_src1_uyvy,
                 const int src1_uyvy_stride, uint8_t* p_dst_ya, const int dst_ya_stride, uint8_t* p_dst_cbcr,
                 const int dst_cbcr_stride, const int xres, const int yres, const bool key_color_alpha_rescale) {
  frame(key_color_alpha_rescale ? &line::uyvy::ya_uv<false, false, true> : &line::uyvy::ya_uv<false, false, false>,
        xres, yres, plane{p_src0_uyvy, src0_uyvy_stride, 2}, plane{p_src1_uyvy, src1_uyvy_stride, 2},
        plane{p_dst_ya, dst_ya_stride, 2}, plane{p_dst_cbcr, dst_cbcr_stride, 1});
}

void uyvy_a::ya_uv(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                   const int src_alpha_stride, uint8_t* p_dst_ya, const int dst_ya_stride, uint8_t* p_dst_cbcr,
                   const int dst_cbcr_stride, const int xres, const int yres) {
  frame(backend::line_of<line::uyvy_a::ya_uv_kernel>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_src_alpha, src_alpha_stride, 1}, plane{p_dst_ya, dst_ya_stride, 2},
        plane{p_dst_cbcr, dst_cbcr_stride, 1});
}

void uyvy_a::uyvy(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                  const int src_alpha_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride, const int xres,
                  const int yres) {
  frame(backend::line_of<line::uyvy_a::uyvy_kernel>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_src_alpha, src_alpha_stride, 1}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void uyvy_a::ycbcra(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                    const int src_alpha_stride, uint8_t* p_dst_ycbcra, const int dst_ycbcra_stride, const int xres,
                    const int yres) {
  frame(backend::line_of<line::uyvy_a::ycbcra_kernel<false>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_src_alpha, src_alpha_stride, 1}, plane{p_dst_ycbcra, dst_ycbcra_stride, 4});
}

void uyvy_a::crcbya(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                    const int src_alpha_stride, uint8_t* p_dst_crcbya, const int dst_crcbya_stride, const int xres,
                    const int yres) {
  frame(backend::line_of<line::uyvy_a::ycbcra_kernel<true>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_src_alpha, src_alpha_stride, 1}, plane{p_dst_crcbya, dst_crcbya_stride, 4});
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
  frame(backend::line_of<line::uyvy_a::rgba_and_bgra_kernel<false, false>>(), xres, yres,
        plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_src_alpha, src_alpha_stride, 1},
        plane{p_dst_bgra, dst_bgra_stride, 4});
}

void uyvy_a::bgra_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                      const int src_alpha_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride, const int xres,
                      const int yres) {
  frame(backend::line_of<line::uyvy_a::rgba_and_bgra_kernel<true, false>>(), xres, yres,
        plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_src_alpha, src_alpha_stride, 1},
        plane{p_dst_bgra, dst_bgra_stride, 4});
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
  frame(backend::line_of<line::uyvy_a::rgba_and_bgra_kernel<false, true>>(), xres, yres,
        plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_src_alpha, src_alpha_stride, 1},
        plane{p_dst_rgba, dst_rgba_stride, 4});
}

void uyvy_a::rgba_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                      const int src_alpha_stride, uint8_t* p_dst_rgba, const int dst_rgba_stride, const int xres,
                      const int yres) {
  frame(backend::line_of<line::uyvy_a::rgba_and_bgra_kernel<true, true>>(), xres, yres,
        plane{p_src_uyvy, src_uyvy_stride, 2}, plane{p_src_alpha, src_alpha_stride, 1},
        plane{p_dst_rgba, dst_rgba_stride, 4});
}

void ycbcra::uyvy(const uint8_t* p_src_ycbcra, const int src_ycbcra_stride, uint8_t* p_dst_uyvy,
                  const int dst_uyvy_stride, const int xres, const int yres) {
  frame(backend::line_of<line::of_444::uyvy_kernel<line::of_444::ycbcr, true>>(), xres, yres,
        plane{p_src_ycbcra, src_ycbcra_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void ycbcra::uyvy_a(const uint8_t* p_src_ycbcra, const int src_ycbcra_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                    const int yres, bool* p_alpha_all_255) {
  to_uyvy_a<yuv_444_to_uyvy<line::of_444::ycbcr>>(p_src_ycbcra, src_ycbcra_stride, p_dst_uyvy, dst_uyvy_stride,
                                                  p_dst_alpha, dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void vuya::uyvy(const uint8_t* p_src_vuya, const int src_vuya_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::of_444::uyvy_kernel<line::of_444::crcby, true>>(), xres, yres,
        plane{p_src_vuya, src_vuya_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void vuya::uyvy_a(const uint8_t* p_src_vuya, const int src_vuya_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                  uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  bool* p_alpha_all_255) {
  to_uyvy_a<yuv_444_to_uyvy<line::of_444::crcby>>(p_src_vuya, src_vuya_stride, p_dst_uyvy, dst_uyvy_stride, p_dst_alpha,
                                                  dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void ycbcrx::uyvy(const uint8_t* p_src_ycbcrx, const int src_ycbcrx_stride, uint8_t* p_dst_uyvy,
                  const int dst_uyvy_stride, const int xres, const int yres) {
  frame(backend::line_of<line::of_444::uyvy_kernel<line::of_444::ycbcr, false>>(), xres, yres,
        plane{p_src_ycbcrx, src_ycbcrx_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void vuyx::uyvy(const uint8_t* p_src_vuyx, const int src_vuyx_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::of_444::uyvy_kernel<line::of_444::crcby, false>>(), xres, yres,
        plane{p_src_vuyx, src_vuyx_stride, 4}, plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void uyvy::r_g_b(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                 uint8_t* p_dst_b, const int dst_stride, const int xres, const int yres,
                 const e_ycbcr_color_space color_space) {
  (color_space == ccir_601 ? r_g_b_601 : r_g_b_709)(p_src_uyvy, src_uyvy_stride, p_dst_r, p_dst_g, p_dst_b, dst_stride,
                                                    xres, yres);
}

void uyvy::r_g_b_601(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                     uint8_t* p_dst_b, const int dst_stride, const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::r_g_b_kernel<false>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_r, dst_stride, 1}, plane{p_dst_g, dst_stride, 1}, plane{p_dst_b, dst_stride, 1});
}

void uyvy::r_g_b_709(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                     uint8_t* p_dst_b, const int dst_stride, const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::r_g_b_kernel<true>>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_r, dst_stride, 1}, plane{p_dst_g, dst_stride, 1}, plane{p_dst_b, dst_stride, 1});
}

void L::bgra(const uint8_t* p_src_L, const int src_L_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride,
             const int xres, const int yres) {
  frame(backend::line_of<line::L::bgra_kernel>(), xres, yres, plane{p_src_L, src_L_stride, 1},
        plane{p_dst_bgra, dst_bgra_stride, 4});
}

namespace {

// 16-bit planes as the kernels take them, at any address.
const uint8_t* bytes_of(const uint16_t* p_words) {
  return reinterpret_cast<const uint8_t*>(p_words);
}

uint8_t* bytes_of(uint16_t* p_words) {
  return reinterpret_cast<uint8_t*>(p_words);
}

}  // namespace

void uyvy::p216(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint16_t* p_dst_y, const int dst_y_stride,
                uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  p216(p_src_uyvy, src_uyvy_stride, bytes_of(p_dst_y), dst_y_stride, bytes_of(p_dst_cbcr), dst_cbcr_stride, xres, yres);
}

void uyvy::p216(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  frame(backend::line_of<line::uyvy::p216_kernel>(), xres, yres, plane{p_src_uyvy, src_uyvy_stride, 2},
        plane{p_dst_y, dst_y_stride, 2}, plane{p_dst_cbcr, dst_cbcr_stride, 2});
}

namespace {

// The rows of a 4:2:0 chroma plane that are read for an image of yres rows: until yres * stride / 2 bytes are reached.
// That is one row more than yres / 2 when yres is odd.
int chroma_rows_reached(const int yres, const int stride) {
  const int64_t row = std::abs(int64_t{stride});
  if (row == 0 || yres < 1) return 0;
  return static_cast<int>((yres * row / 2 + row - 1) / row);
}

}  // namespace

void y_uv::p216(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                uint16_t* p_dst_y, const int dst_y_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  p216(p_src_y, src_y_stride, p_src_uv, src_uv_stride, bytes_of(p_dst_y), dst_y_stride, bytes_of(p_dst_cbcr),
       dst_cbcr_stride, xres, yres);
}

void y_uv::p216(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                uint8_t* p_dst_y, const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  const auto widen = backend::line_of<line::y::y16_kernel>();
  frame(widen, xres, yres, plane{p_src_y, src_y_stride, 1}, plane{p_dst_y, dst_y_stride, 2});
  frame_to_422(widen, xres, chroma_rows_reached(yres, src_uv_stride), plane{p_dst_cbcr, dst_cbcr_stride, 2},
               plane{p_src_uv, src_uv_stride, 1});
}

void ycbcra::pa16(const uint8_t* p_src_ycbcra, const int src_ycbcra_stride, uint16_t* p_dst_y, const int dst_y_stride,
                  uint16_t* p_dst_cbcr, const int dst_cbcr_stride, uint16_t* p_dst_alpha, const int dst_alpha_stride,
                  const int xres, const int yres, bool* p_alpha_all_255) {
  pa16(p_src_ycbcra, src_ycbcra_stride, bytes_of(p_dst_y), dst_y_stride, bytes_of(p_dst_cbcr), dst_cbcr_stride,
       bytes_of(p_dst_alpha), dst_alpha_stride, xres, yres, p_alpha_all_255);
}

void ycbcra::pa16(const uint8_t* p_src_ycbcra, const int src_ycbcra_stride, uint8_t* p_dst_y, const int dst_y_stride,
                  uint8_t* p_dst_cbcr, const int dst_cbcr_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride,
                  const int xres, const int yres, bool* p_alpha_all_255) {
  const bool track = p_alpha_all_255 != nullptr;
  const auto convert = track ? backend::line_of<line::ycbcra::pa16_kernel<true>>()
                             : backend::line_of<line::ycbcra::pa16_kernel<false>>();
  const bool opaque =
      frame(convert, xres, yres, plane{p_src_ycbcra, src_ycbcra_stride, 4}, plane{p_dst_y, dst_y_stride, 2},
            plane{p_dst_cbcr, dst_cbcr_stride, 2}, plane{p_dst_alpha, dst_alpha_stride, 2});
  if (track) *p_alpha_all_255 = opaque;
}

void p216::uyvy(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr, const int src_cbcr_stride,
                uint8_t* p_dst_uyvy, const int dst_uyvy_stride, const int xres, const int yres) {
  frame(backend::line_of<line::P216::p216_to_p208_kernel<false>>(), xres, yres,
        plane{bytes_of(p_src_y), src_y_stride, 2}, plane{bytes_of(p_src_cbcr), src_cbcr_stride, 2},
        plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void p216::p010(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr, const int src_cbcr_stride,
                uint16_t* p_dst_y, const int dst_y_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  copy<2>(bytes_of(p_src_y), src_y_stride, bytes_of(p_dst_y), dst_y_stride, xres, yres);
  copy<2>(bytes_of(p_src_cbcr), 2 * src_cbcr_stride, bytes_of(p_dst_cbcr), dst_cbcr_stride, xres, yres / 2);
}

void p216::rgbx_2020(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                     uint8_t* p_dst_rgbx, const int dst_rgbx_stride, const int xres, const int yres) {
  frame_by_rows(backend::line_of<line::P216::rgbx_2020_kernel>(), xres, yres, plane{p_src_y, src_y_stride, 2},
                plane{p_src_uv, src_uv_stride, 2}, plane{p_dst_rgbx, dst_rgbx_stride, 4});
}

namespace {

// A plane of chroma as it is: with equal strides in one run, the padding of every row included, and row by row to a
// greater stride. A smaller stride, and a common one that is negative, leave the destination as it was.
void copy_chroma(const uint8_t* p_src, const int src_stride, uint8_t* p_dst, const int dst_stride, const int xres,
                 const int yres) {
  if (xres < 1 || yres < 1) return;
  if (dst_stride > src_stride)
    copy<2>(p_src, src_stride, p_dst, dst_stride, xres, yres);
  else if (dst_stride == src_stride && dst_stride > 0)
    std::memcpy(p_dst, p_src, static_cast<size_t>(yres) * static_cast<size_t>(dst_stride));
}

}  // namespace

void pa16::ya_uv(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr, const int src_cbcr_stride,
                 const uint16_t* p_src_a, const int src_a_stride, uint16_t* p_dst_ya, const int dst_ya_stride,
                 uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  copy_chroma(bytes_of(p_src_cbcr), src_cbcr_stride, bytes_of(p_dst_cbcr), dst_cbcr_stride, xres, yres);
  frame(backend::line_of<line::u_v::uv_kernel<2>>(), xres, yres, plane{bytes_of(p_src_y), src_y_stride, 2},
        plane{bytes_of(p_src_a), src_a_stride, 2}, plane{bytes_of(p_dst_ya), dst_ya_stride, 4});
}

void pa16::vuya_16(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr,
                   const int src_cbcr_stride, const uint16_t* p_src_a, const int src_a_stride, uint16_t* p_dst_vuya,
                   const int dst_vuya_stride, const int xres, const int yres) {
  frame(backend::line_of<line::pa16::vuya_16_kernel>(), xres, yres, plane{bytes_of(p_src_y), src_y_stride, 2},
        plane{bytes_of(p_src_cbcr), src_cbcr_stride, 2}, plane{bytes_of(p_src_a), src_a_stride, 2},
        plane{bytes_of(p_dst_vuya), dst_vuya_stride, 8});
}

void pa16::vuya_f32(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr,
                    const int src_cbcr_stride, const uint16_t* p_src_a, const int src_a_stride, uint8_t* p_dst_vuya,
                    const int dst_vuya_stride, const int xres, const int yres) {
  vuya_f32(bytes_of(p_src_y), src_y_stride, bytes_of(p_src_cbcr), src_cbcr_stride, bytes_of(p_src_a), src_a_stride,
           p_dst_vuya, dst_vuya_stride, xres, yres);
}

void pa16::vuya_f32(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr,
                    const int src_cbcr_stride, const uint8_t* p_src_a, const int src_a_stride, uint8_t* p_dst_vuya,
                    const int dst_vuya_stride, const int xres, const int yres) {
  frame(backend::line_of<line::pa16::vuya_f32_kernel>(), xres, yres, plane{p_src_y, src_y_stride, 2},
        plane{p_src_cbcr, src_cbcr_stride, 2}, plane{p_src_a, src_a_stride, 2}, plane{p_dst_vuya, dst_vuya_stride, 16});
}

void pa16::p216(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr, const int src_cbcr_stride,
                const uint16_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_y, const int dst_y_stride,
                uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  p216(bytes_of(p_src_y), src_y_stride, bytes_of(p_src_cbcr), src_cbcr_stride, bytes_of(p_src_alpha), src_alpha_stride,
       p_dst_y, dst_y_stride, p_dst_cbcr, dst_cbcr_stride, xres, yres);
}

void pa16::p216(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr, const int src_cbcr_stride,
                const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_y, const int dst_y_stride,
                uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  frame(backend::line_of<line::pa16::p216_kernel>(), xres, yres, plane{p_src_y, src_y_stride, 2},
        plane{p_src_cbcr, src_cbcr_stride, 2}, plane{p_src_alpha, src_alpha_stride, 2}, plane{p_dst_y, dst_y_stride, 2},
        plane{p_dst_cbcr, dst_cbcr_stride, 2});
}

void yuyv_matrox_10::p216(const uint8_t* p_src_yuyv, const int src_yuyv_stride, uint8_t* p_dst_y,
                          const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                          const int yres) {
  frame_by_rows(backend::line_of<line::yuyv_matrox_10::p216_kernel>(), xres, yres,
                plane{p_src_yuyv, src_yuyv_stride, 40, 16}, plane{p_dst_y, dst_y_stride, 2},
                plane{p_dst_cbcr, dst_cbcr_stride, 2});
}

void yuyv_matrox_10::uyvy(const uint8_t* p_src_yuyv, const int src_yuyv_stride, uint8_t* p_dst_uyvy,
                          const int dst_uyvy_stride, const int xres, const int yres) {
  frame(backend::line_of<line::yuyv_matrox_10::uyvy_kernel>(), xres, yres, plane{p_src_yuyv, src_yuyv_stride, 40, 16},
        plane{p_dst_uyvy, dst_uyvy_stride, 2});
}

void yuyv_matrox_10::black(uint8_t* p_dst_yuyv, const int dst_yuyv_stride, const int xres, const int yres) {
  frame_by_rows(backend::line_of<line::black::yuyv_matrox_10_kernel>(), xres, yres,
                plane{p_dst_yuyv, dst_yuyv_stride, 40, 16});
}

void p216::yuyv_matrox_10(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr,
                          const int src_cbcr_stride, uint8_t* p_dst_yuyv, const int dst_yuyv_stride, const int xres,
                          const int yres) {
  frame(backend::line_of<line::P216::yuyv_matrox_10_kernel>(), xres, yres, plane{p_src_y, src_y_stride, 2},
        plane{p_src_cbcr, src_cbcr_stride, 2}, plane{p_dst_yuyv, dst_yuyv_stride, 40, 16});
}

void pa16::yuyv_matrox_10(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr,
                          const int src_cbcr_stride, const uint8_t* p_src_alpha, const int src_alpha_stride,
                          uint8_t* p_dst_yuyv, const int dst_yuyv_stride, const int xres, const int yres) {
  frame(backend::line_of<line::pa16::yuyv_matrox_10_kernel>(), xres, yres, plane{p_src_y, src_y_stride, 2},
        plane{p_src_cbcr, src_cbcr_stride, 2}, plane{p_src_alpha, src_alpha_stride, 2},
        plane{p_dst_yuyv, dst_yuyv_stride, 40, 16});
}

void pa16::yua_yva_matrox_10(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr,
                             const int src_cbcr_stride, const uint8_t* p_src_alpha, const int src_alpha_stride,
                             uint8_t* p_dst_yua_yva, const int dst_yua_yva_stride, const int xres, const int yres) {
  frame(backend::line_of<line::pa16::yua_yva_matrox_10_kernel>(), xres, yres, plane{p_src_y, src_y_stride, 2},
        plane{p_src_cbcr, src_cbcr_stride, 2}, plane{p_src_alpha, src_alpha_stride, 2},
        plane{p_dst_yua_yva, dst_yua_yva_stride, 4});
}

void yua_yva_matrox_10::pa16(const uint8_t* p_src_yua_yva, const int src_yua_yva_stride, uint8_t* p_dst_y,
                             const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride, uint8_t* p_dst_a,
                             const int dst_a_stride, const int xres, const int yres) {
  frame(backend::line_of<line::yua_yva_matrox_10::pa16_kernel>(), xres, yres,
        plane{p_src_yua_yva, src_yua_yva_stride, 4}, plane{p_dst_y, dst_y_stride, 2},
        plane{p_dst_cbcr, dst_cbcr_stride, 2}, plane{p_dst_a, dst_a_stride, 2});
}

void alpha_u16::yuyv_matrox_10(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_yuyv,
                               const int dst_yuyv_stride, const int xres, const int yres) {
  frame(backend::line_of<line::alpha_u16::yuyv_matrox_10_kernel>(), xres, yres, plane{p_src_alpha, src_alpha_stride, 2},
        plane{p_dst_yuyv, dst_yuyv_stride, 40, 16});
}

void alpha::alpha_u16(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                      const int dst_alpha_stride, const int xres, const int yres) {
  frame(backend::line_of<line::depth::repeat_byte_kernel>(), xres, yres, plane{p_src_alpha, src_alpha_stride, 1},
        plane{p_dst_alpha, dst_alpha_stride, 2});
}

void alpha_u16::alpha(const uint16_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                      const int dst_alpha_stride, const int xres, const int yres) {
  frame(backend::line_of<line::depth::to_byte_kernel<8>>(), xres, yres,
        plane{bytes_of(p_src_alpha), src_alpha_stride, 2}, plane{p_dst_alpha, dst_alpha_stride, 1});
}

void alpha_10u16::alpha_u16(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                            const int dst_alpha_stride, const int xres, const int yres) {
  frame(backend::line_of<line::depth::from_low_bits_kernel<10>>(), xres, yres, plane{p_src_alpha, src_alpha_stride, 2},
        plane{p_dst_alpha, dst_alpha_stride, 2});
}

void alpha_12u16::alpha_u16(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                            const int dst_alpha_stride, const int xres, const int yres) {
  frame(backend::line_of<line::depth::from_low_bits_kernel<12>>(), xres, yres, plane{p_src_alpha, src_alpha_stride, 2},
        plane{p_dst_alpha, dst_alpha_stride, 2});
}

void y_10u16::y(const uint16_t* p_src_y, const int src_y_stride, uint8_t* p_dst_y, const int dst_y_stride,
                const int xres, const int yres) {
  frame(backend::line_of<line::depth::to_byte_kernel<2>>(), xres, yres, plane{bytes_of(p_src_y), src_y_stride, 2},
        plane{p_dst_y, dst_y_stride, 1});
}

void bgra64::alpha16(const uint8_t* p_src_bgra64, const int src_bgra64_stride, uint8_t* p_dst_alpha,
                     const int dst_alpha_stride, const int xres, const int yres) {
  frame(backend::line_of<line::depth::fourth_word_kernel>(), xres, yres, plane{p_src_bgra64, src_bgra64_stride, 8},
        plane{p_dst_alpha, dst_alpha_stride, 2});
}

}  // namespace Processing::Morvane::format_conversion
