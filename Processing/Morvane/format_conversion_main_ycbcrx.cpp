// The entry points of 32-bit RGB to 4:4:4 YCbCr, of which each pixel gets its Cb and alpha alone, and the line's first
// pixel the luma and Cr of the last one.
#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "kernel/full_chroma.h"

namespace Processing::Morvane::format_conversion {

namespace {

template <bool colorspace_709, bool is_rgba, bool is_crcby, bool has_alpha>
void convert(const uint8_t* p_src, const int src_stride, uint8_t* p_dst, const int dst_stride, const int xres,
             const int yres) {
  using pixels = kernel::rgb_to_444<kernel::matrix{colorspace_709}, kernel::byte_order{is_rgba},
                                    kernel::sample_order{is_crcby}, has_alpha>;
  convert<pixels>(xres, yres, plane{p_src, src_stride}, plane{p_dst, dst_stride});
}

}  // namespace

void bgra_601::ycbcra(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_ycbcra,
                      const int dst_ycbcra_stride, const int xres, const int yres) {
  convert<false, false, false, true>(p_src_bgra, src_bgra_stride, p_dst_ycbcra, dst_ycbcra_stride, xres, yres);
}

void bgra_601::crcbya(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_crcbya,
                      const int dst_crcbya_stride, const int xres, const int yres) {
  convert<false, false, true, true>(p_src_bgra, src_bgra_stride, p_dst_crcbya, dst_crcbya_stride, xres, yres);
}

void bgra_709::ycbcra(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_ycbcra,
                      const int dst_ycbcra_stride, const int xres, const int yres) {
  convert<true, false, false, true>(p_src_bgra, src_bgra_stride, p_dst_ycbcra, dst_ycbcra_stride, xres, yres);
}

void bgra_709::crcbya(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_crcbya,
                      const int dst_crcbya_stride, const int xres, const int yres) {
  convert<true, false, true, true>(p_src_bgra, src_bgra_stride, p_dst_crcbya, dst_crcbya_stride, xres, yres);
}

void bgra::ycbcra(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_ycbcra,
                  const int dst_ycbcra_stride, const int xres, const int yres) {
  convert<true, false, false, true>(p_src_bgra, src_bgra_stride, p_dst_ycbcra, dst_ycbcra_stride, xres, yres);
}

void bgra::crcbya(const uint8_t* p_src_bgra, const int src_bgra_stride, uint8_t* p_dst_crcbya,
                  const int dst_crcbya_stride, const int xres, const int yres) {
  convert<true, false, true, true>(p_src_bgra, src_bgra_stride, p_dst_crcbya, dst_crcbya_stride, xres, yres);
}

void rgba_601::ycbcra(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_ycbcra,
                      const int dst_ycbcra_stride, const int xres, const int yres) {
  convert<false, true, false, true>(p_src_rgba, src_rgba_stride, p_dst_ycbcra, dst_ycbcra_stride, xres, yres);
}

void rgba_601::crcbya(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_crcbya,
                      const int dst_crcbya_stride, const int xres, const int yres) {
  convert<false, true, true, true>(p_src_rgba, src_rgba_stride, p_dst_crcbya, dst_crcbya_stride, xres, yres);
}

void rgba_709::ycbcra(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_ycbcra,
                      const int dst_ycbcra_stride, const int xres, const int yres) {
  convert<true, true, false, true>(p_src_rgba, src_rgba_stride, p_dst_ycbcra, dst_ycbcra_stride, xres, yres);
}

void rgba_709::crcbya(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_crcbya,
                      const int dst_crcbya_stride, const int xres, const int yres) {
  convert<true, true, true, true>(p_src_rgba, src_rgba_stride, p_dst_crcbya, dst_crcbya_stride, xres, yres);
}

void rgba::ycbcra(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_ycbcra,
                  const int dst_ycbcra_stride, const int xres, const int yres) {
  convert<true, true, false, true>(p_src_rgba, src_rgba_stride, p_dst_ycbcra, dst_ycbcra_stride, xres, yres);
}

void rgba::crcbya(const uint8_t* p_src_rgba, const int src_rgba_stride, uint8_t* p_dst_crcbya,
                  const int dst_crcbya_stride, const int xres, const int yres) {
  convert<true, true, true, true>(p_src_rgba, src_rgba_stride, p_dst_crcbya, dst_crcbya_stride, xres, yres);
}

void bgrx_601::ycbcrx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_ycbcrx,
                      const int dst_ycbcrx_stride, const int xres, const int yres) {
  convert<false, false, false, false>(p_src_bgrx, src_bgrx_stride, p_dst_ycbcrx, dst_ycbcrx_stride, xres, yres);
}

void bgrx_601::crcbyx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_crcbyx,
                      const int dst_crcbyx_stride, const int xres, const int yres) {
  convert<false, false, true, false>(p_src_bgrx, src_bgrx_stride, p_dst_crcbyx, dst_crcbyx_stride, xres, yres);
}

void bgrx_709::ycbcrx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_ycbcrx,
                      const int dst_ycbcrx_stride, const int xres, const int yres) {
  convert<true, false, false, false>(p_src_bgrx, src_bgrx_stride, p_dst_ycbcrx, dst_ycbcrx_stride, xres, yres);
}

void bgrx_709::crcbyx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_crcbyx,
                      const int dst_crcbyx_stride, const int xres, const int yres) {
  convert<true, false, true, false>(p_src_bgrx, src_bgrx_stride, p_dst_crcbyx, dst_crcbyx_stride, xres, yres);
}

void bgrx::ycbcrx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_ycbcrx,
                  const int dst_ycbcrx_stride, const int xres, const int yres) {
  convert<true, false, false, false>(p_src_bgrx, src_bgrx_stride, p_dst_ycbcrx, dst_ycbcrx_stride, xres, yres);
}

void bgrx::crcbyx(const uint8_t* p_src_bgrx, const int src_bgrx_stride, uint8_t* p_dst_crcbyx,
                  const int dst_crcbyx_stride, const int xres, const int yres) {
  convert<true, false, true, false>(p_src_bgrx, src_bgrx_stride, p_dst_crcbyx, dst_crcbyx_stride, xres, yres);
}

void rgbx_601::ycbcrx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_ycbcrx,
                      const int dst_ycbcrx_stride, const int xres, const int yres) {
  convert<false, true, false, false>(p_src_rgbx, src_rgbx_stride, p_dst_ycbcrx, dst_ycbcrx_stride, xres, yres);
}

void rgbx_601::crcbyx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_crcbyx,
                      const int dst_crcbyx_stride, const int xres, const int yres) {
  convert<false, true, true, false>(p_src_rgbx, src_rgbx_stride, p_dst_crcbyx, dst_crcbyx_stride, xres, yres);
}

void rgbx_709::ycbcrx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_ycbcrx,
                      const int dst_ycbcrx_stride, const int xres, const int yres) {
  convert<true, true, false, false>(p_src_rgbx, src_rgbx_stride, p_dst_ycbcrx, dst_ycbcrx_stride, xres, yres);
}

void rgbx_709::crcbyx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_crcbyx,
                      const int dst_crcbyx_stride, const int xres, const int yres) {
  convert<true, true, true, false>(p_src_rgbx, src_rgbx_stride, p_dst_crcbyx, dst_crcbyx_stride, xres, yres);
}

void rgbx::ycbcrx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_ycbcrx,
                  const int dst_ycbcrx_stride, const int xres, const int yres) {
  convert<true, true, false, false>(p_src_rgbx, src_rgbx_stride, p_dst_ycbcrx, dst_ycbcrx_stride, xres, yres);
}

void rgbx::crcbyx(const uint8_t* p_src_rgbx, const int src_rgbx_stride, uint8_t* p_dst_crcbyx,
                  const int dst_crcbyx_stride, const int xres, const int yres) {
  convert<true, true, true, false>(p_src_rgbx, src_rgbx_stride, p_dst_crcbyx, dst_crcbyx_stride, xres, yres);
}

}  // namespace Processing::Morvane::format_conversion
