// Line kernel of uyvy to planar RGB.
#pragma once

#include "format_conversion_line.h"

namespace Processing::Morvane::format_conversion::line::uyvy {

// Pairs to two pixels in three planes. Both pixels take the pair's chroma.
template <bool ccir_709>
struct r_g_b_kernel {
  using matrix = ycbcr_to_rgb_coarse<ccir_709>;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* r, uint8_t* g, uint8_t* b) {
    const uint8_t U = src[0];
    const uint8_t V = src[2];
    const uint8_t luma[] = {src[1], src[3]};
    for (int i = 0; i < 2; ++i) {
      r[i] = rgb_component<matrix::r, 6>(luma[i], U, V);
      g[i] = rgb_component<matrix::g, 6>(luma[i], U, V);
      b[i] = rgb_component<matrix::b, 6>(luma[i], U, V);
    }
  }

  template <class Vector>
  static constexpr size_t step = Vector::lanes / 2;

  template <class Vector>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* r, uint8_t* g, uint8_t* b) {
    const auto pairs = Vector::load_uyvy(src);
    Vector::store_pair_bytes(r, Vector::template clamped_sum<matrix::r, 6>(pairs));
    Vector::store_pair_bytes(g, Vector::template clamped_sum<matrix::g, 6>(pairs));
    Vector::store_pair_bytes(b, Vector::template clamped_sum<matrix::b, 6>(pairs));
  }

  // The last pixel of an odd line is neither read nor written.
  template <class Vector>
  static void line(const uint8_t* p_src_uyvy, uint8_t* p_dst_r, uint8_t* p_dst_g, uint8_t* p_dst_b,
                   const int no_pixels) {
    r_g_b_kernel kernel;
    walk<Vector, 4, 2, 2, 2>(kernel, whole_pairs(no_pixels), p_src_uyvy, p_dst_r, p_dst_g, p_dst_b);
  }
};

template <bool src_align, bool dst_align, bool ccir_709>
inline void r_g_b(const uint8_t* p_src_uyvy, uint8_t* p_dst_r, uint8_t* p_dst_g, uint8_t* p_dst_b,
                  const int no_pixels) {
  backend::line_of<r_g_b_kernel<ccir_709>>()(p_src_uyvy, p_dst_r, p_dst_g, p_dst_b, no_pixels);
}

template <bool src_align, bool dst_align>
inline void r_g_b_601(const uint8_t* p_src_uyvy, uint8_t* p_dst_r, uint8_t* p_dst_g, uint8_t* p_dst_b,
                      const int no_pixels) {
  r_g_b<src_align, dst_align, false>(p_src_uyvy, p_dst_r, p_dst_g, p_dst_b, no_pixels);
}

template <bool src_align, bool dst_align>
inline void r_g_b_709(const uint8_t* p_src_uyvy, uint8_t* p_dst_r, uint8_t* p_dst_g, uint8_t* p_dst_b,
                      const int no_pixels) {
  r_g_b<src_align, dst_align, true>(p_src_uyvy, p_dst_r, p_dst_g, p_dst_b, no_pixels);
}

}  // namespace Processing::Morvane::format_conversion::line::uyvy
