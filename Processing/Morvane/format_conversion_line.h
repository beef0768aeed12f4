// The line kernels of the 8-bit YCbCr, alpha, depth and copy families, and of uyvy to RGB, under the names and template
// parameters that callers know. `src_align` and `dst_align` say that planes are 16-byte aligned; no supported processor
// moves aligned data faster by other instructions, so all four combinations are one function.
#pragma once

#include "format_conversion_utils.h"
#include "kernel/card_10.h"
#include "kernel/chroma.h"
#include "kernel/depth.h"
#include "kernel/full_chroma.h"
#include "kernel/key.h"
#include "kernel/planes.h"
#include "kernel/video_to_rgb.h"

namespace Processing::Morvane::format_conversion::line {

namespace bgra {

template <bool src_align, bool dst_align, bool track_alpha>
inline bool bgra(const uint8_t* p_src_bgra, uint8_t* p_dst_bgra, const int no_pixels) {
  if constexpr (track_alpha) return run<kernel::copy_with_opacity>(p_src_bgra, p_dst_bgra, no_pixels);
  copy<4>(p_src_bgra, p_dst_bgra, no_pixels);
  return true;
}

template <bool src_align, bool dst_align>
inline bool bgra_ex(const uint8_t* p_src_bgra, uint8_t* p_dst_bgra, const int no_pixels) {
  return bgra<src_align, dst_align, true>(p_src_bgra, p_dst_bgra, no_pixels);
}

}  // namespace bgra

namespace v210 {

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_v210, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::v210_to_uyvy>(p_src_v210, p_dst_uyvy, no_pixels);
}

}  // namespace v210

namespace uyvy {

template <bool src_align, bool dst_align>
inline void yuy2(const uint8_t* p_src_uyvy, uint8_t* p_dst_yuy2, const int no_pixels) {
  run<kernel::uyvy_to_yuy2>(p_src_uyvy, p_dst_yuy2, no_pixels);
}

template <bool src_align, bool dst_align, bool write_chroma>
inline void y_uv(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
  run<kernel::uyvy_to_y_uv<kernel::chroma{write_chroma}>>(p_src_uyvy, p_dst_y, p_dst_cbcr, no_pixels);
}

template <bool src_align, bool dst_align, bool write_chroma>
inline void y_u_v(const uint8_t* p_src_ycbcr, uint8_t* p_dst_y, uint8_t* p_dst_cb, uint8_t* p_dst_cr,
                  const int no_pixels) {
  run<kernel::uyvy_to_y_u_v<kernel::chroma{write_chroma}>>(p_src_ycbcr, p_dst_y, p_dst_cb, p_dst_cr, no_pixels);
}

template <bool src_align, bool dst_align, bool key_color_alpha_rescale>
inline void y(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, const int no_pixels) {
  run<std::conditional_t<key_color_alpha_rescale, kernel::uyvy_to_key, kernel::uyvy_to_y>>(p_src_uyvy, p_dst_y,
                                                                                           no_pixels);
}

template <bool src_align, bool dst_align>
inline void ycbcrx(const uint8_t* p_src_uyvy, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  run<kernel::uyvy_to_ycbcrx>(p_src_uyvy, p_dst_ycbcrx, no_pixels);
}

template <bool src_align, bool dst_align, bool key_color_alpha_rescale>
inline void ya_uv(const uint8_t* p_src0_uyvy, const uint8_t* p_src1_uyvy, uint8_t* p_dst_ya, uint8_t* p_dst_cbcr,
                  const int no_pixels) {
  run<kernel::first_pair_to_ya_uv<kernel::key_range{key_color_alpha_rescale}>>(p_src0_uyvy, p_src1_uyvy, p_dst_ya,
                                                                               p_dst_cbcr, no_pixels);
}

template <bool src_align, bool dst_align, bool ccir_709>
inline void bgr(const uint8_t* p_src_uyvy, uint8_t* p_dst_bgr, const int no_pixels) {
  run<kernel::uyvy_to_bgr<kernel::matrix{ccir_709}>>(p_src_uyvy, p_dst_bgr, no_pixels);
}

template <bool src_align, bool dst_align>
inline void bgr_601(const uint8_t* p_src_uyvy, uint8_t* p_dst_bgr, const int no_pixels) {
  bgr<src_align, dst_align, false>(p_src_uyvy, p_dst_bgr, no_pixels);
}

template <bool src_align, bool dst_align>
inline void bgr_709(const uint8_t* p_src_uyvy, uint8_t* p_dst_bgr, const int no_pixels) {
  bgr<src_align, dst_align, true>(p_src_uyvy, p_dst_bgr, no_pixels);
}

template <bool src_align, bool dst_align, bool ccir_709, bool is_rgba>
inline void rgba_and_bgra(const uint8_t* p_src_uyvy, uint8_t* p_dst_bgra, const int no_pixels) {
  run<kernel::uyvy_to_rgb<kernel::matrix{ccir_709}, kernel::byte_order{is_rgba}>>(p_src_uyvy, p_dst_bgra, no_pixels);
}

}  // namespace uyvy

namespace uyvy_a {

template <bool src_align, bool dst_align>
inline void ya_uv(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_ya, uint8_t* p_dst_cbcr,
                  const int no_pixels) {
  run<kernel::uyvy_a_to_ya_uv>(p_src_uyvy, p_src_alpha, p_dst_ya, p_dst_cbcr, no_pixels);
}

template <bool src_align, bool dst_align>
inline void ycbcra(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_ycbcra, const int no_pixels) {
  run<kernel::uyvy_a_to_444<kernel::sample_order::ycbcr>>(p_src_uyvy, p_src_alpha, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbya(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_crcbya, const int no_pixels) {
  run<kernel::uyvy_a_to_444<kernel::sample_order::crcby>>(p_src_uyvy, p_src_alpha, p_dst_crcbya, no_pixels);
}

template <bool src_align, bool dst_align, bool ccir_709, bool is_rgba>
inline void rgba_and_bgra(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_bgra,
                          const int no_pixels) {
  run<kernel::uyvy_a_to_rgb<kernel::matrix{ccir_709}, kernel::byte_order{is_rgba}>>(p_src_uyvy, p_src_alpha, p_dst_bgra,
                                                                                    no_pixels);
}

template <bool src_align, bool dst_align>
inline void bgra_601(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_bgra, const int no_pixels) {
  rgba_and_bgra<src_align, dst_align, false, false>(p_src_uyvy, p_src_alpha, p_dst_bgra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void bgra_709(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_bgra, const int no_pixels) {
  rgba_and_bgra<src_align, dst_align, true, false>(p_src_uyvy, p_src_alpha, p_dst_bgra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void rgba_601(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_rgba, const int no_pixels) {
  rgba_and_bgra<src_align, dst_align, false, true>(p_src_uyvy, p_src_alpha, p_dst_rgba, no_pixels);
}

template <bool src_align, bool dst_align>
inline void rgba_709(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_rgba, const int no_pixels) {
  rgba_and_bgra<src_align, dst_align, true, true>(p_src_uyvy, p_src_alpha, p_dst_rgba, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::uyvy_a_to_uyvy>(p_src_uyvy, p_src_alpha, p_dst_uyvy, no_pixels);
}

}  // namespace uyvy_a

namespace ycbcra {

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_ycbcra, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::pixels_444_to_uyvy<kernel::sample_order::ycbcr, kernel::background::black>>(p_src_ycbcra, p_dst_uyvy,
                                                                                          no_pixels);
}

template <bool src_align, bool dst_align, bool track_alpha>
inline bool uyvy_a(const uint8_t* p_src_ycbcra, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return run<kernel::pixels_444_to_uyvy_a<kernel::sample_order::ycbcr, kernel::alpha_report{track_alpha}>>(
      p_src_ycbcra, p_dst_uyvy, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline bool uyvy_a_ex(const uint8_t* p_src_ycbcra, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return uyvy_a<src_align, dst_align, true>(p_src_ycbcra, p_dst_uyvy, p_dst_alpha, no_pixels);
}

}  // namespace ycbcra

namespace vuya {

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_vuya, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::pixels_444_to_uyvy<kernel::sample_order::crcby, kernel::background::black>>(p_src_vuya, p_dst_uyvy,
                                                                                          no_pixels);
}

template <bool src_align, bool dst_align, bool track_alpha>
inline bool uyvy_a(const uint8_t* p_src_vuya, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return run<kernel::pixels_444_to_uyvy_a<kernel::sample_order::crcby, kernel::alpha_report{track_alpha}>>(
      p_src_vuya, p_dst_uyvy, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline bool uyvy_a_ex(const uint8_t* p_src_vuya, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return uyvy_a<src_align, dst_align, true>(p_src_vuya, p_dst_uyvy, p_dst_alpha, no_pixels);
}

}  // namespace vuya

namespace ycbcrx {

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_ycbcrx, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::pixels_444_to_uyvy<kernel::sample_order::ycbcr, kernel::background::none>>(p_src_ycbcrx, p_dst_uyvy,
                                                                                         no_pixels);
}

}  // namespace ycbcrx

namespace vuyx {

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_vuyx, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<kernel::pixels_444_to_uyvy<kernel::sample_order::crcby, kernel::background::none>>(p_src_vuyx, p_dst_uyvy,
                                                                                         no_pixels);
}

}  // namespace vuyx

namespace y {

// The same line to two rows.
inline void y_x2(const uint8_t* p_src_y, uint8_t* p_dst_y0, uint8_t* p_dst_y1, const int no_pixels) {
  copy<1>(p_src_y, p_dst_y0, no_pixels);
  copy<1>(p_src_y, p_dst_y1, no_pixels);
}

template <bool src_align, bool dst_align>
inline void y16(const uint8_t* p_src_y, uint16_t* p_dst_y, const int no_pixels) {
  run<kernel::y_to_y16>(p_src_y, bytes_of(p_dst_y), no_pixels);
}

// The same line to two rows that are dst_y_stride bytes apart.
template <bool src_align, bool dst_align>
inline void y16_x2_lines(const uint8_t* p_src_y, uint16_t* p_dst_y, const int dst_y_stride, const int no_pixels) {
  y16<src_align, dst_align>(p_src_y, p_dst_y, no_pixels);
  y16<src_align, dst_align>(p_src_y, next_line(p_dst_y, dst_y_stride), no_pixels);
}

template <bool src_align, bool dst_align, bool normalize>
inline void uyvy(const uint8_t* p_src_y, uint8_t* p_dst_uyvy, const int no_pixels) {
  run<std::conditional_t<normalize, kernel::key_to_uyvy, kernel::y_to_uyvy>>(p_src_y, p_dst_uyvy, no_pixels);
}

}  // namespace y

namespace y16 {

template <bool src_align, bool dst_align, bool key_color_alpha_rescale>
inline void y16(const uint16_t* p_src_y, uint16_t* p_dst_y, const int no_pixels) {
  if constexpr (key_color_alpha_rescale)
    run<kernel::y16_to_key>(bytes_of(p_src_y), bytes_of(p_dst_y), no_pixels);
  else
    copy<2>(bytes_of(p_src_y), bytes_of(p_dst_y), no_pixels);
}

}  // namespace y16

namespace u_v {

template <bool src_align, bool dst_align>
inline void uv(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint8_t* p_dst_cbcr, const int no_pairs) {
  run<kernel::u_v_to_uv<1>>(p_src_cb, p_src_cr, p_dst_cbcr, no_pairs);
}

template <bool src_align, bool dst_align>
inline void uv(const uint16_t* p_src_cb, const uint16_t* p_src_cr, uint16_t* p_dst_cbcr, const int no_pairs) {
  run<kernel::u_v_to_uv<2>>(bytes_of(p_src_cb), bytes_of(p_src_cr), bytes_of(p_dst_cbcr), no_pairs);
}

template <bool src_align, bool dst_align>
inline void uv_x2(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint8_t* p_dst_cbcr0, uint8_t* p_dst_cbcr1,
                  const int no_pairs) {
  uv<src_align, dst_align>(p_src_cb, p_src_cr, p_dst_cbcr0, no_pairs);
  uv<src_align, dst_align>(p_src_cb, p_src_cr, p_dst_cbcr1, no_pairs);
}

inline void uv16(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint16_t* p_dst_cbcr, const int no_pairs) {
  run<kernel::u_v_to_uv16>(p_src_cb, p_src_cr, bytes_of(p_dst_cbcr), no_pairs);
}

template <bool src_align, bool dst_align>
inline void uv16_x2(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint16_t* p_dst_cbcr0, uint16_t* p_dst_cbcr1,
                    const int no_pairs) {
  uv16(p_src_cb, p_src_cr, p_dst_cbcr0, no_pairs);
  uv16(p_src_cb, p_src_cr, p_dst_cbcr1, no_pairs);
}

}  // namespace u_v

namespace uv {

// An odd length is rounded up to a whole pair.
inline int whole_pair_bytes(const int bytes) {
  return bytes < 1 ? 0 : bytes + bytes % 2;
}

// Interleaved chroma to 16 bits, value * 256, in two rows. no_pixels is the length of the source row in bytes.
template <bool src_align, bool dst_align>
inline void uv16_x2(const uint8_t* p_src_cbcr, uint16_t* p_dst_cbcr0, uint16_t* p_dst_cbcr1, const int no_pixels) {
  y::y16<src_align, dst_align>(p_src_cbcr, p_dst_cbcr0, whole_pair_bytes(no_pixels));
  y::y16<src_align, dst_align>(p_src_cbcr, p_dst_cbcr1, whole_pair_bytes(no_pixels));
}

}  // namespace uv

namespace alpha {

template <bool src_align, bool dst_align>
inline void alpha_u16(const uint8_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  run<kernel::repeat_byte>(p_src_alpha, p_dst_alpha, no_pixels);
}

}  // namespace alpha

namespace alpha_u16 {

template <bool src_align, bool dst_align>
inline void alpha(const uint16_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  run<kernel::word_to_byte<8>>(bytes_of(p_src_alpha), p_dst_alpha, no_pixels);
}

}  // namespace alpha_u16

namespace alpha_10u16 {

template <bool src_align, bool dst_align>
inline void alpha16(const uint8_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  run<kernel::fill_up_word<10>>(p_src_alpha, p_dst_alpha, no_pixels);
}

}  // namespace alpha_10u16

namespace alpha_12u16 {

template <bool src_align, bool dst_align>
inline void alpha16(const uint8_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  run<kernel::fill_up_word<12>>(p_src_alpha, p_dst_alpha, no_pixels);
}

}  // namespace alpha_12u16

namespace y_10u16 {

template <bool src_align, bool dst_align>
inline void y(const uint16_t* p_src_y, uint8_t* p_dst_y, const int no_pixels) {
  run<kernel::word_to_byte<2>>(bytes_of(p_src_y), p_dst_y, no_pixels);
}

}  // namespace y_10u16

namespace bgra64 {

template <bool src_align, bool dst_align>
inline void alpha16(const uint8_t* p_src_bgra64, uint8_t* p_dst_alpha, const int no_pixels) {
  run<kernel::fourth_word>(p_src_bgra64, p_dst_alpha, no_pixels);
}

}  // namespace bgra64

}  // namespace Processing::Morvane::format_conversion::line
