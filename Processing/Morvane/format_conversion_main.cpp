// The entry points of fills, copies, packed 4:2:2, planes and depths, and the predicates.
#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "format_conversion_line.h"
#include "format_conversion_line_black.h"

namespace Processing::Morvane::format_conversion {

namespace {

// Only the low four bits matter, so the low 32 bits of an address do.
uint32_t low_bits(const void* ptr, const int stride) {
  return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(ptr)) | static_cast<uint32_t>(stride);
}

bool all_multiples_of_16(const uint32_t bits) {
  return (bits & 15) == 0;
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
  const auto fill = [](uint8_t* p_dst, const int no_pixels) { line::black::uyvy(p_dst, no_pixels); };
  frame_if(dst_uyvy_stride == 2 * int64_t{xres}, fill, xres, yres, plane{p_dst_uyvy, dst_uyvy_stride});
}

void black::alpha(uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  const int bg_value) {
  const auto fill = [bg_value](uint8_t* p_dst, const int no_pixels) { line::black::alpha(p_dst, no_pixels, bg_value); };
  frame_if(dst_alpha_stride == xres, fill, xres, yres, plane{p_dst_alpha, dst_alpha_stride});
}

void black::alpha(uint16_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  const int bg_value) {
  const kernel::fill value(static_cast<uint16_t>(bg_value));
  const auto fill = [value](uint8_t* p_dst, const int no_pixels) { line::run<kernel::fill>(p_dst, no_pixels, value); };
  frame_if(dst_alpha_stride == 2 * int64_t{xres}, fill, xres, yres, plane{p_dst_alpha, dst_alpha_stride});
}

void y::y(const uint8_t* p_src_y, const int src_y_stride, uint8_t* p_dst_y, const int dst_y_stride, const int xres,
          const int yres) {
  copy<1>(plane{p_src_y, src_y_stride}, plane{p_dst_y, dst_y_stride}, xres, yres);
}

void uyvy::uyvy(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  copy<2>(plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_uyvy, dst_uyvy_stride}, xres, yres);
}

void bgr::bgr(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
              const int xres, const int yres) {
  copy<4>(plane{p_src_bgr, src_bgr_stride}, plane{p_dst_bgr, dst_bgr_stride}, xres, yres);
}

void bgr_601::bgr_601(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                      const int xres, const int yres) {
  copy<4>(plane{p_src_bgr, src_bgr_stride}, plane{p_dst_bgr, dst_bgr_stride}, xres, yres);
}

void bgr_709::bgr_709(const uint8_t* p_src_bgr, const int src_bgr_stride, uint8_t* p_dst_bgr, const int dst_bgr_stride,
                      const int xres, const int yres) {
  copy<4>(plane{p_src_bgr, src_bgr_stride}, plane{p_dst_bgr, dst_bgr_stride}, xres, yres);
}

void bgrx::bgrx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_bgrx, const int dst_bgrx_stride,
                const int xres, const int yres) {
  copy<4>(plane{p_src_bgrx, src_bgrx_stride}, plane{p_dst_bgrx, dst_bgrx_stride}, xres, yres);
}

void bgrx_601::bgrx_601(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_bgrx,
                        const int dst_bgrx_stride, const int xres, const int yres) {
  copy<4>(plane{p_src_bgrx, src_bgrx_stride}, plane{p_dst_bgrx, dst_bgrx_stride}, xres, yres);
}

void bgrx_709::bgrx_709(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_bgrx,
                        const int dst_bgrx_stride, const int xres, const int yres) {
  copy<4>(plane{p_src_bgrx, src_bgrx_stride}, plane{p_dst_bgrx, dst_bgrx_stride}, xres, yres);
}

void rgbx::rgbx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_rgbx, const int dst_rgbx_stride,
                const int xres, const int yres) {
  copy<4>(plane{p_src_rgbx, src_rgbx_stride}, plane{p_dst_rgbx, dst_rgbx_stride}, xres, yres);
}

void rgbx_601::rgbx_601(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_rgbx,
                        const int dst_rgbx_stride, const int xres, const int yres) {
  copy<4>(plane{p_src_rgbx, src_rgbx_stride}, plane{p_dst_rgbx, dst_rgbx_stride}, xres, yres);
}

void rgbx_709::rgbx_709(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_rgbx,
                        const int dst_rgbx_stride, const int xres, const int yres) {
  copy<4>(plane{p_src_rgbx, src_rgbx_stride}, plane{p_dst_rgbx, dst_rgbx_stride}, xres, yres);
}

void ycbcrx::ycbcrx(const uint8_t* p_src_ycbcrx, const int src_ycbcrx_stride, uint8_t* p_dst_ycbcrx,
                    const int dst_ycbcrx_stride, const int xres, const int yres) {
  copy<4>(plane{p_src_ycbcrx, src_ycbcrx_stride}, plane{p_dst_ycbcrx, dst_ycbcrx_stride}, xres, yres);
}

void vuyx::vuyx(const uint8_t* p_src_vuyx, const int src_vuyx_stride, uint8_t* p_dst_vuyx, const int dst_vuyx_stride,
                const int xres, const int yres) {
  copy<4>(plane{p_src_vuyx, src_vuyx_stride}, plane{p_dst_vuyx, dst_vuyx_stride}, xres, yres);
}

void bgra::bgra(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_bgra, const int dst_bgra_stride,
                const int xres, const int yres, bool* p_alpha_is_all_255) {
  const plane source{p_src_bgra, src_bgra_stride};
  const plane destination{p_dst_bgra, dst_bgra_stride};
  if (p_alpha_is_all_255 == nullptr)
    copy<4>(source, destination, xres, yres);
  else
    *p_alpha_is_all_255 = convert<kernel::copy_with_opacity>(xres, yres, source, destination);
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
  convert<kernel::v210_to_uyvy>(xres, yres, plane{p_src_v210, src_v210_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void uyvy::yuy2(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_yuy2, const int dst_yuy2_stride,
                const int xres, const int yres) {
  convert<kernel::uyvy_to_yuy2>(xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_yuy2, dst_yuy2_stride});
}

void yuy2::uyvy(const uint8_t* p_src_yuy2, const int src_yuy2_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  uyvy::yuy2(p_src_yuy2, src_yuy2_stride, p_dst_uyvy, dst_uyvy_stride, xres, yres);
}

void uyvy::y_uv_422(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                    uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  convert<kernel::uyvy_to_y_uv<kernel::chroma::written>>(
      xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_y, dst_y_stride}, plane{p_dst_cbcr, dst_cbcr_stride});
}

void uyvy::y_uv_420(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                    uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  frame_to_420(backend::line_of<kernel::uyvy_to_y_uv<kernel::chroma::written>>(),
               backend::line_of<kernel::uyvy_to_y_uv<kernel::chroma::left_out>>(), xres, yres,
               plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_y, dst_y_stride}, plane{p_dst_cbcr, dst_cbcr_stride});
}

void uyvy::y_u_v_422(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                     uint8_t* p_dst_u, const int dst_u_stride, uint8_t* p_dst_v, const int dst_v_stride, const int xres,
                     const int yres) {
  const bool tight = dst_y_stride == xres && src_uyvy_stride == 2 * int64_t{xres} && dst_u_stride == dst_y_stride / 2 &&
                     dst_v_stride == dst_y_stride / 2;
  frame_if(tight, backend::line_of<kernel::uyvy_to_y_u_v<kernel::chroma::written>>(), xres, yres,
           plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_y, dst_y_stride}, plane{p_dst_u, dst_u_stride},
           plane{p_dst_v, dst_v_stride});
}

void uyvy::y_u_v_420(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                     uint8_t* p_dst_u, const int dst_u_stride, uint8_t* p_dst_v, const int dst_v_stride, const int xres,
                     const int yres) {
  frame_to_420(backend::line_of<kernel::uyvy_to_y_u_v<kernel::chroma::written>>(),
               backend::line_of<kernel::uyvy_to_y_u_v<kernel::chroma::left_out>>(), xres, yres,
               plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_y, dst_y_stride}, plane{p_dst_u, dst_u_stride},
               plane{p_dst_v, dst_v_stride});
}

void uyvy::y(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
             const int xres, const int yres, const bool key_color_alpha_rescale) {
  convert_by<kernel::uyvy_to_key, kernel::uyvy_to_y>(key_color_alpha_rescale, xres, yres,
                                                     plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_y, dst_y_stride});
}

void y::y16(const uint8_t* p_src_y, const int src_y_stride, uint16_t* p_dst_y, const int dst_y_stride, const int xres,
            const int yres) {
  convert<kernel::y_to_y16>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_dst_y, dst_y_stride});
}

void y::uyvy(const uint8_t* p_src_y, const int src_y_stride, uint8_t* p_dst_ycbcr, const int dst_ycbcr_stride,
             const int xres, const int yres, const bool alpha_rescale) {
  convert_by<kernel::key_to_uyvy, kernel::y_to_uyvy>(alpha_rescale, xres, yres, plane{p_src_y, src_y_stride},
                                                     plane{p_dst_ycbcr, dst_ycbcr_stride});
}

void y16::y16(const uint16_t* p_src_y, const int src_y_stride, uint16_t* p_dst_y, const int dst_y_stride,
              const int xres, const int yres, const bool alpha_rescale) {
  if (alpha_rescale)
    convert<kernel::y16_to_key>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_dst_y, dst_y_stride});
  else
    copy<2>(plane{p_src_y, src_y_stride}, plane{p_dst_y, dst_y_stride}, xres, yres);
}

void y_uv::y_uv(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                uint8_t* p_dst_y, const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, xres, yres);
  copy<1>(plane{p_src_uv, src_uv_stride}, plane{p_dst_cbcr, dst_cbcr_stride}, xres / 2 * 2, yres / 2);
}

void y_uv::y_uv_to422(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                      uint8_t* p_dst_y, const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride,
                      const int input_xres, const int input_yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, input_xres, input_yres);
  frame_to_422(&line::copy<1>, input_xres, input_yres / 2, plane{p_dst_cbcr, dst_cbcr_stride},
               plane{p_src_uv, src_uv_stride});
}

void y_u_v::y_uv(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_u, const int src_u_stride,
                 const uint8_t* p_src_v, const int src_v_stride, uint8_t* p_dst_y, const int dst_y_stride,
                 uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int input_yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, xres, input_yres);
  const bool tight = dst_cbcr_stride == xres && src_u_stride == xres / 2 && src_v_stride == xres / 2;
  frame_if(tight, backend::line_of<kernel::u_v_to_uv<1>>(), xres / 2, input_yres / 2, plane{p_src_u, src_u_stride},
           plane{p_src_v, src_v_stride}, plane{p_dst_cbcr, dst_cbcr_stride});
}

void y_u_v::y_uv_to422(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_u, const int src_u_stride,
                       const uint8_t* p_src_v, const int src_v_stride, uint8_t* p_dst_y, const int dst_y_stride,
                       uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int input_yres) {
  y::y(p_src_y, src_y_stride, p_dst_y, dst_y_stride, xres, input_yres);
  frame_to_422(backend::line_of<kernel::u_v_to_uv<1>>(), xres / 2, input_yres / 2, plane{p_dst_cbcr, dst_cbcr_stride},
               plane{p_src_u, src_u_stride}, plane{p_src_v, src_v_stride});
}

void cb_cr_8_420::cbcr_16_422(const uint8_t* p_src_cb, const int src_cb_stride, const uint8_t* p_src_cr,
                              const int src_cr_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                              const int yres) {
  cbcr_16_422(p_src_cb, src_cb_stride, p_src_cr, src_cr_stride, bytes_of(p_dst_cbcr), dst_cbcr_stride, xres, yres);
}

void cb_cr_8_420::cbcr_16_422(const uint8_t* p_src_cb, const int src_cb_stride, const uint8_t* p_src_cr,
                              const int src_cr_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                              const int yres) {
  frame_to_422(backend::line_of<kernel::u_v_to_uv16>(), xres, yres, plane{p_dst_cbcr, dst_cbcr_stride},
               plane{p_src_cb, src_cb_stride}, plane{p_src_cr, src_cr_stride});
}

void cb_cr_16_422::cbcr_16_422(const uint16_t* p_src_cb, const int src_cb_stride, const uint16_t* p_src_cr,
                               const int src_cr_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                               const int yres) {
  convert_rows<kernel::u_v_to_uv<2>>(xres, yres, plane{p_src_cb, src_cb_stride}, plane{p_src_cr, src_cr_stride},
                                     plane{p_dst_cbcr, dst_cbcr_stride});
}

void cbcr_8_420::cbcr_16_422(const uint8_t* p_src_cbcr, const int src_cbcr_stride, uint16_t* p_dst_cbcr,
                             const int dst_cbcr_stride, const int xres, const int yres) {
  cbcr_16_422(p_src_cbcr, src_cbcr_stride, bytes_of(p_dst_cbcr), dst_cbcr_stride, xres, yres);
}

void cbcr_8_420::cbcr_16_422(const uint8_t* p_src_cbcr, const int src_cbcr_stride, uint8_t* p_dst_cbcr,
                             const int dst_cbcr_stride, const int xres, const int yres) {
  const auto widen = [](const uint8_t* src, uint8_t* dst, const int bytes) {
    line::run<kernel::y_to_y16>(src, dst, line::uv::whole_pair_bytes(bytes));
  };
  frame_to_422(widen, xres, yres, plane{p_dst_cbcr, dst_cbcr_stride}, plane{p_src_cbcr, src_cbcr_stride});
}

void alpha::alpha_u16(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                      const int dst_alpha_stride, const int xres, const int yres) {
  convert<kernel::repeat_byte>(xres, yres, plane{p_src_alpha, src_alpha_stride}, plane{p_dst_alpha, dst_alpha_stride});
}

void alpha_u16::alpha(const uint16_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                      const int dst_alpha_stride, const int xres, const int yres) {
  convert<kernel::word_to_byte<8>>(xres, yres, plane{p_src_alpha, src_alpha_stride},
                                   plane{p_dst_alpha, dst_alpha_stride});
}

void alpha_10u16::alpha_u16(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                            const int dst_alpha_stride, const int xres, const int yres) {
  convert<kernel::fill_up_word<10>>(xres, yres, plane{p_src_alpha, src_alpha_stride},
                                    plane{p_dst_alpha, dst_alpha_stride});
}

void alpha_12u16::alpha_u16(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_alpha,
                            const int dst_alpha_stride, const int xres, const int yres) {
  convert<kernel::fill_up_word<12>>(xres, yres, plane{p_src_alpha, src_alpha_stride},
                                    plane{p_dst_alpha, dst_alpha_stride});
}

void y_10u16::y(const uint16_t* p_src_y, const int src_y_stride, uint8_t* p_dst_y, const int dst_y_stride,
                const int xres, const int yres) {
  convert<kernel::word_to_byte<2>>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_dst_y, dst_y_stride});
}

void bgra64::alpha16(const uint8_t* p_src_bgra64, const int src_bgra64_stride, uint8_t* p_dst_alpha,
                     const int dst_alpha_stride, const int xres, const int yres) {
  convert<kernel::fourth_word>(xres, yres, plane{p_src_bgra64, src_bgra64_stride},
                               plane{p_dst_alpha, dst_alpha_stride});
}

}  // namespace Processing::Morvane::format_conversion
