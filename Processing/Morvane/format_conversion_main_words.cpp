// The entry points of the 16-bit family and of the 10-bit card formats.
#include <cstdlib>
#include <cstring>

#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "kernel/black.h"
#include "kernel/card_10.h"
#include "kernel/chroma.h"
#include "kernel/depth.h"
#include "kernel/words.h"

namespace Processing::Morvane::format_conversion {

namespace {

// The rows of a 4:2:0 chroma plane that are read for an image of yres rows: until yres * stride / 2 bytes are reached.
// That is one row more than yres / 2 when yres is odd.
int chroma_rows_reached(const int yres, const int stride) {
  const int64_t row = std::abs(int64_t{stride});
  if (row == 0 || yres < 1) return 0;
  return static_cast<int>((yres * row / 2 + row - 1) / row);
}

// A plane of chroma as it is: with equal strides in one run, the padding of every row included, and row by row to a
// greater stride. A smaller stride, and a common one that is negative, leave the destination as it was.
void copy_chroma(const plane<const uint8_t> source, const plane<uint8_t> destination, const int xres, const int yres) {
  if (xres < 1 || yres < 1) return;
  if (destination.stride > source.stride)
    copy<2>(source, destination, xres, yres);
  else if (destination.stride == source.stride && destination.stride > 0)
    std::memcpy(destination.data, source.data, static_cast<size_t>(yres) * static_cast<size_t>(destination.stride));
}

}  // namespace

void uyvy::p216(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint16_t* p_dst_y, const int dst_y_stride,
                uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  p216(p_src_uyvy, src_uyvy_stride, bytes_of(p_dst_y), dst_y_stride, bytes_of(p_dst_cbcr), dst_cbcr_stride, xres, yres);
}

void uyvy::p216(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_y, const int dst_y_stride,
                uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  convert<kernel::uyvy_to_p216>(xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_dst_y, dst_y_stride},
                                plane{p_dst_cbcr, dst_cbcr_stride});
}

void y_uv::p216(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                uint16_t* p_dst_y, const int dst_y_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  p216(p_src_y, src_y_stride, p_src_uv, src_uv_stride, bytes_of(p_dst_y), dst_y_stride, bytes_of(p_dst_cbcr),
       dst_cbcr_stride, xres, yres);
}

void y_uv::p216(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_uv, const int src_uv_stride,
                uint8_t* p_dst_y, const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  convert<kernel::y_to_y16>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_dst_y, dst_y_stride});
  frame_to_422(backend::line_of<kernel::y_to_y16>(), xres, chroma_rows_reached(yres, src_uv_stride),
               plane{p_dst_cbcr, dst_cbcr_stride}, plane{p_src_uv, src_uv_stride});
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
  convert_with_report<kernel::ycbcra_to_pa16<kernel::alpha_report::none>,
                      kernel::ycbcra_to_pa16<kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_ycbcra, src_ycbcra_stride}, plane{p_dst_y, dst_y_stride},
      plane{p_dst_cbcr, dst_cbcr_stride}, plane{p_dst_alpha, dst_alpha_stride});
}

void p216::uyvy(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr, const int src_cbcr_stride,
                uint8_t* p_dst_uyvy, const int dst_uyvy_stride, const int xres, const int yres) {
  convert<kernel::p216_to_p208<kernel::luma_place::second>>(
      xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_cbcr, src_cbcr_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void p216::p010(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr, const int src_cbcr_stride,
                uint16_t* p_dst_y, const int dst_y_stride, uint16_t* p_dst_cbcr, const int dst_cbcr_stride,
                const int xres, const int yres) {
  copy<2>(plane{p_src_y, src_y_stride}, plane{p_dst_y, dst_y_stride}, xres, yres);
  copy<2>(plane{p_src_cbcr, 2 * src_cbcr_stride}, plane{p_dst_cbcr, dst_cbcr_stride}, xres, yres / 2);
}

void pa16::ya_uv(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr, const int src_cbcr_stride,
                 const uint16_t* p_src_a, const int src_a_stride, uint16_t* p_dst_ya, const int dst_ya_stride,
                 uint16_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres, const int yres) {
  copy_chroma(plane{p_src_cbcr, src_cbcr_stride}, plane{p_dst_cbcr, dst_cbcr_stride}, xres, yres);
  convert<kernel::u_v_to_uv<2>>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_a, src_a_stride},
                                plane{p_dst_ya, dst_ya_stride});
}

void pa16::vuya_16(const uint16_t* p_src_y, const int src_y_stride, const uint16_t* p_src_cbcr,
                   const int src_cbcr_stride, const uint16_t* p_src_a, const int src_a_stride, uint16_t* p_dst_vuya,
                   const int dst_vuya_stride, const int xres, const int yres) {
  convert<kernel::pa16_to_vuya_16>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_cbcr, src_cbcr_stride},
                                   plane{p_src_a, src_a_stride}, plane{p_dst_vuya, dst_vuya_stride});
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
  convert<kernel::pa16_to_vuya_f32>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_cbcr, src_cbcr_stride},
                                    plane{p_src_a, src_a_stride}, plane{p_dst_vuya, dst_vuya_stride});
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
  convert<kernel::pa16_to_p216>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_cbcr, src_cbcr_stride},
                                plane{p_src_alpha, src_alpha_stride}, plane{p_dst_y, dst_y_stride},
                                plane{p_dst_cbcr, dst_cbcr_stride});
}

void yuyv_matrox_10::p216(const uint8_t* p_src_yuyv, const int src_yuyv_stride, uint8_t* p_dst_y,
                          const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride, const int xres,
                          const int yres) {
  convert_rows<kernel::yuyv_10_to_p216>(xres, yres, plane{p_src_yuyv, src_yuyv_stride}, plane{p_dst_y, dst_y_stride},
                                        plane{p_dst_cbcr, dst_cbcr_stride});
}

void yuyv_matrox_10::uyvy(const uint8_t* p_src_yuyv, const int src_yuyv_stride, uint8_t* p_dst_uyvy,
                          const int dst_uyvy_stride, const int xres, const int yres) {
  convert<kernel::yuyv_10_to_uyvy>(xres, yres, plane{p_src_yuyv, src_yuyv_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void yuyv_matrox_10::black(uint8_t* p_dst_yuyv, const int dst_yuyv_stride, const int xres, const int yres) {
  convert_rows<kernel::black_yuyv_10>(xres, yres, plane{p_dst_yuyv, dst_yuyv_stride});
}

void p216::yuyv_matrox_10(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr,
                          const int src_cbcr_stride, uint8_t* p_dst_yuyv, const int dst_yuyv_stride, const int xres,
                          const int yres) {
  convert<kernel::p216_to_yuyv_10>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_cbcr, src_cbcr_stride},
                                   plane{p_dst_yuyv, dst_yuyv_stride});
}

void pa16::yuyv_matrox_10(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr,
                          const int src_cbcr_stride, const uint8_t* p_src_alpha, const int src_alpha_stride,
                          uint8_t* p_dst_yuyv, const int dst_yuyv_stride, const int xres, const int yres) {
  convert<kernel::pa16_to_yuyv_10>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_cbcr, src_cbcr_stride},
                                   plane{p_src_alpha, src_alpha_stride}, plane{p_dst_yuyv, dst_yuyv_stride});
}

void pa16::yua_yva_matrox_10(const uint8_t* p_src_y, const int src_y_stride, const uint8_t* p_src_cbcr,
                             const int src_cbcr_stride, const uint8_t* p_src_alpha, const int src_alpha_stride,
                             uint8_t* p_dst_yua_yva, const int dst_yua_yva_stride, const int xres, const int yres) {
  convert<kernel::pa16_to_yua_yva_10>(xres, yres, plane{p_src_y, src_y_stride}, plane{p_src_cbcr, src_cbcr_stride},
                                      plane{p_src_alpha, src_alpha_stride}, plane{p_dst_yua_yva, dst_yua_yva_stride});
}

void yua_yva_matrox_10::pa16(const uint8_t* p_src_yua_yva, const int src_yua_yva_stride, uint8_t* p_dst_y,
                             const int dst_y_stride, uint8_t* p_dst_cbcr, const int dst_cbcr_stride, uint8_t* p_dst_a,
                             const int dst_a_stride, const int xres, const int yres) {
  convert<kernel::yua_yva_10_to_pa16>(xres, yres, plane{p_src_yua_yva, src_yua_yva_stride},
                                      plane{p_dst_y, dst_y_stride}, plane{p_dst_cbcr, dst_cbcr_stride},
                                      plane{p_dst_a, dst_a_stride});
}

void alpha_u16::yuyv_matrox_10(const uint8_t* p_src_alpha, const int src_alpha_stride, uint8_t* p_dst_yuyv,
                               const int dst_yuyv_stride, const int xres, const int yres) {
  convert<kernel::alpha_to_yuyv_10>(xres, yres, plane{p_src_alpha, src_alpha_stride},
                                    plane{p_dst_yuyv, dst_yuyv_stride});
}

}  // namespace Processing::Morvane::format_conversion
