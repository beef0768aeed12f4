// The line kernels of the 16-bit family, of p216 to RGB, and of the 10-bit card formats, under the names that callers
// know. 16-bit planes are little-endian words at any address.
#pragma once

#include "format_conversion_line.h"
#include "format_conversion_utils.h"
#include "kernel/card_10.h"
#include "kernel/video_to_rgb.h"
#include "kernel/words.h"

namespace Processing::Morvane::format_conversion::line {

namespace uyvy {

template <bool src_align, bool dst_align>
inline void p216(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
  run<kernel::uyvy_to_p216>(p_src_uyvy, p_dst_y, p_dst_cbcr, no_pixels);
}

}  // namespace uyvy

namespace ycbcra {

template <bool src_align, bool dst_align, bool track_alpha>
inline bool pa16(const uint8_t* p_src_ycbcra, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_alpha,
                 const int no_pixels) {
  return run<kernel::ycbcra_to_pa16<kernel::alpha_report{track_alpha}>>(p_src_ycbcra, p_dst_y, p_dst_cbcr, p_dst_alpha,
                                                                        no_pixels);
}

template <bool src_align, bool dst_align>
inline bool pa16_ex(const uint8_t* p_src_ycbcra, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_alpha,
                    const int no_pixels) {
  return pa16<src_align, dst_align, true>(p_src_ycbcra, p_dst_y, p_dst_cbcr, p_dst_alpha, no_pixels);
}

}  // namespace ycbcra

namespace P216 {

template <bool src_align, bool dst_align, bool is_yuy2>
inline void p216_to_p208(const uint16_t* p_src_y, const uint16_t* p_src_cbcr, uint8_t* p_dst, const int no_pixels) {
  run<kernel::p216_to_p208<kernel::luma_place{is_yuy2}>>(bytes_of(p_src_y), bytes_of(p_src_cbcr), p_dst, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy(const uint16_t* p_src_y, const uint16_t* p_src_cbcr, uint8_t* p_dst_uyvy, const int no_pixels) {
  p216_to_p208<src_align, dst_align, false>(p_src_y, p_src_cbcr, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align>
inline void rgbx_2020(const uint8_t* p_src_y, const uint8_t* p_src_uv, uint8_t* p_dst_rgbx, const int no_pixels) {
  run<kernel::p216_to_rgbx_2020>(p_src_y, p_src_uv, p_dst_rgbx, no_pixels);
}

template <bool src_align, bool dst_align>
inline void yuyv_matrox_10(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, uint8_t* p_dst_yuyv,
                           const int no_pixels) {
  run<kernel::p216_to_yuyv_10>(p_src_y, p_src_cbcr, p_dst_yuyv, no_pixels);
}

}  // namespace P216

namespace pa16 {

// Luma and alpha side by side.
template <bool src_align, bool dst_align>
inline void ya(const uint16_t* p_src_y, const uint16_t* p_src_a, uint16_t* p_dst_ya, const int no_pixels) {
  u_v::uv<src_align, dst_align>(p_src_y, p_src_a, p_dst_ya, no_pixels);
}

template <bool src_align, bool dst_align>
inline void vuya_16(const uint16_t* p_src_y, const uint16_t* p_src_cbcr, const uint16_t* p_src_a, uint16_t* p_dst_vuya,
                    const int no_pixels) {
  run<kernel::pa16_to_vuya_16>(bytes_of(p_src_y), bytes_of(p_src_cbcr), bytes_of(p_src_a), bytes_of(p_dst_vuya),
                               no_pixels);
}

template <bool src_align, bool dst_align>
inline void vuya_f32(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_a, uint8_t* p_dst_vuya,
                     const int no_pixels) {
  run<kernel::pa16_to_vuya_f32>(p_src_y, p_src_cbcr, p_src_a, p_dst_vuya, no_pixels);
}

template <bool src_align, bool dst_align>
inline void p216(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha, uint8_t* p_dst_y,
                 uint8_t* p_dst_cbcr, const int no_pixels) {
  run<kernel::pa16_to_p216>(p_src_y, p_src_cbcr, p_src_alpha, p_dst_y, p_dst_cbcr, no_pixels);
}

template <bool src_align, bool dst_align>
inline void yuyv_matrox_10(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha,
                           uint8_t* p_dst_yuyv, const int no_pixels) {
  run<kernel::pa16_to_yuyv_10>(p_src_y, p_src_cbcr, p_src_alpha, p_dst_yuyv, no_pixels);
}

template <bool src_align, bool dst_align>
inline void yua_yva_matrox_10(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha,
                              uint8_t* p_dst_yua_yva, const int no_pixels) {
  run<kernel::pa16_to_yua_yva_10>(p_src_y, p_src_cbcr, p_src_alpha, p_dst_yua_yva, no_pixels);
}

}  // namespace pa16

namespace yuyv_matrox_10 {

template <bool src_align, bool dst_align>
inline void p216(const uint8_t* p_src_yuyv, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
  run<kernel::yuyv_10_to_p216>(p_src_yuyv, p_dst_y, p_dst_cbcr, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_yuyv, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::yuyv_10_to_uyvy>(p_src_yuyv, p_dst_uyvy, no_pixels);
}

}  // namespace yuyv_matrox_10

namespace yua_yva_matrox_10 {

template <bool src_align, bool dst_align>
inline void pa16(const uint8_t* p_src_yua_yva, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_a,
                 const int no_pixels) {
  run<kernel::yua_yva_10_to_pa16>(p_src_yua_yva, p_dst_y, p_dst_cbcr, p_dst_a, no_pixels);
}

}  // namespace yua_yva_matrox_10

namespace alpha_u16 {

template <bool src_align, bool dst_align>
inline void yuyv_matrox_10(const uint8_t* p_src_alpha, uint8_t* p_dst_yuyv, const int no_pixels) {
  run<kernel::alpha_to_yuyv_10>(p_src_alpha, p_dst_yuyv, no_pixels);
}

}  // namespace alpha_u16

}  // namespace Processing::Morvane::format_conversion::line
