// Line kernels of the 8-bit YCbCr, alpha, depth and copy families, and of uyvy to RGB.
//
// Every kernel is one rule, a vector body that computes the same for many units at once, and line<V>, which walks a
// line with them. The functions below a kernel run it on the backend in use, under the name and template parameters
// that callers know. `src_align` and `dst_align` say that planes are 16-byte aligned. No supported processor moves
// aligned data faster by other instructions, so all four combinations are the one kernel.
#pragma once

#include <cstring>

#include "backend/run.h"
#include "format_conversion_matrix.h"
#include "format_conversion_utils.h"

namespace Processing::Morvane::format_conversion::line {

// A copy of pixels as they are.
template <int bytes_per_pixel>
inline void copy(const uint8_t* p_src, uint8_t* p_dst, const int no_pixels) {
  if (no_pixels > 0) std::memcpy(p_dst, p_src, static_cast<size_t>(no_pixels) * bytes_per_pixel);
}

// Video-range luma stretched to a key of full range: 17 and below give 0, 234 and above 255.
inline constexpr int key_multiplier = 301;
inline constexpr int key_offset = -5117;

MORVANE_INLINE uint8_t key_from_luma(const int y) {
  return clamp_to_byte((key_multiplier * y + key_offset) >> 8);
}

namespace bgra {

// Copies pixels of four bytes and tells whether the fourth byte of all of them is 255.
struct bgra_kernel {
  template <class V>
  struct walker {
    typename V::block all_vectors;
    uint8_t all_alpha = 255;

    template <class>
    static constexpr size_t step = 2 * V::block_bytes / 4;

    template <class>
    MORVANE_INLINE void vector(const uint8_t* src, uint8_t* dst) {
      const auto first = V::load(src);
      const auto second = V::load(src + V::block_bytes);
      store_blocks<V>(dst, first, second);
      all_vectors = V::and_blocks(all_vectors, V::and_blocks(first, second));
    }
    MORVANE_INLINE void rule(const uint8_t* src, uint8_t* dst) {
      for (int i = 0; i < 4; ++i) dst[i] = src[i];
      all_alpha = static_cast<uint8_t>(all_alpha & src[3]);
    }
  };

  template <class V>
  static bool line(const uint8_t* p_src_bgra, uint8_t* p_dst_bgra, const int no_pixels) {
    walker<V> w{};
    if constexpr (V::lanes > 0) w.all_vectors = V::repeat(0xffff);
    walk<V, 4, 4>(w, at_least_zero(no_pixels), p_src_bgra, p_dst_bgra);
    if constexpr (V::lanes > 0) {
      if (!V::fourth_bytes_are_255(w.all_vectors)) return false;
    }
    return w.all_alpha == 255;
  }
};

template <bool src_align, bool dst_align, bool track_alpha>
inline bool bgra(const uint8_t* p_src_bgra, uint8_t* p_dst_bgra, const int no_pixels) {
  if constexpr (track_alpha) return backend::line_of<bgra_kernel>()(p_src_bgra, p_dst_bgra, no_pixels);
  copy<4>(p_src_bgra, p_dst_bgra, no_pixels);
  return true;
}

template <bool src_align, bool dst_align>
inline bool bgra_ex(const uint8_t* p_src_bgra, uint8_t* p_dst_bgra, const int no_pixels) {
  return bgra<src_align, dst_align, true>(p_src_bgra, p_dst_bgra, no_pixels);
}

}  // namespace bgra

namespace v210 {

// Groups of six pixels: 16 bytes to 12. Of every 10-bit sample the upper eight bits are kept.
struct uyvy_kernel {
  MORVANE_INLINE static uint8_t sample(const uint8_t* src, const int index) {
    const uint8_t* p = src + index / 3 * 4;
    const uint32_t word =
        p[0] | static_cast<uint32_t>(p[1]) << 8 | static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
    return static_cast<uint8_t>(word >> (index % 3 * 10 + 2));
  }
  MORVANE_INLINE static void pair(const uint8_t* src, uint8_t* dst, const int index) {
    for (int i = 4 * index; i < 4 * index + 4; ++i) dst[i] = sample(src, i);
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    for (int i = 0; i < 3; ++i) pair(src, dst, i);
  }

  template <class V>
  static constexpr size_t step = 4 * V::block_bytes / 16;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    V::store_upper_bytes_of_10(dst, src);
  }

  // The pair that holds the last pixel stays unwritten, whether it is whole or not.
  template <class V>
  static void line(const uint8_t* p_src_v210, uint8_t* p_dst_uyvy, const int no_pixels) {
    const size_t begun = begun_pairs(no_pixels);
    const size_t pairs = begun == 0 ? 0 : begun - 1;
    const size_t groups = pairs / 3;
    uyvy_kernel kernel;
    walk<V, 16, 12>(kernel, groups, p_src_v210, p_dst_uyvy);
    const uint8_t* last_group = p_src_v210 + 16 * groups;
    uint8_t* last_pairs = p_dst_uyvy + 12 * groups;
    if (pairs % 3 > 0) pair(last_group, last_pairs, 0);
    if (pairs % 3 > 1) pair(last_group, last_pairs, 1);
  }
};

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_v210, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<uyvy_kernel>()(p_src_v210, p_dst_uyvy, no_pixels);
}

}  // namespace v210

namespace uyvy {

// Exchanges the two bytes of a pixel.
struct yuy2_kernel {
  // Where the planes overlap, the order of reads and writes shows; it is the order of these lines.
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    dst[0] = src[1];
    dst[1] = src[0];
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    V::store(dst, V::swap_bytes(V::load(src)));
  }

  template <class V>
  static void line(const uint8_t* p_src_uyvy, uint8_t* p_dst_yuy2, const int no_pixels) {
    yuy2_kernel kernel;
    walk_in_order<V, 2, 2>(kernel, at_least_zero(no_pixels), p_src_uyvy, p_dst_yuy2);
  }
};

template <bool src_align, bool dst_align>
inline void yuy2(const uint8_t* p_src_uyvy, uint8_t* p_dst_yuy2, const int no_pixels) {
  backend::line_of<yuy2_kernel>()(p_src_uyvy, p_dst_yuy2, no_pixels);
}

// Pairs to luma and interleaved chroma: four bytes to two and two.
template <bool write_chroma>
struct y_uv_kernel {
  static constexpr int chroma_bytes = write_chroma ? 2 : 0;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* cbcr) {
    y[0] = src[1];
    y[1] = src[3];
    if constexpr (write_chroma) {
      cbcr[0] = src[0];
      cbcr[1] = src[2];
    }
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* y, uint8_t* cbcr) {
    const auto split = even_and_odd_bytes<V>(src);
    V::store(y, split.second);
    if constexpr (write_chroma) V::store(cbcr, split.first);
  }
  template <class V>
  MORVANE_INLINE static void two_vectors(const uint8_t* src, uint8_t* y, uint8_t* cbcr) {
    const auto first = even_and_odd_bytes<V>(src);
    const auto second = even_and_odd_bytes<V>(src + 2 * V::block_bytes);
    store_blocks<V>(y, first.second, second.second);
    if constexpr (write_chroma) store_blocks<V>(cbcr, first.first, second.first);
  }

  // The last pixel of an odd line is neither read nor written.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
    y_uv_kernel kernel;
    walk_in_order<V, 4, 2, chroma_bytes>(kernel, whole_pairs(no_pixels), p_src_uyvy, p_dst_y, p_dst_cbcr);
  }
};

template <bool src_align, bool dst_align, bool write_chroma>
inline void y_uv(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
  backend::line_of<y_uv_kernel<write_chroma>>()(p_src_uyvy, p_dst_y, p_dst_cbcr, no_pixels);
}

// Pairs to luma, Cb and Cr: four bytes to two, one and one.
template <bool write_chroma>
struct y_u_v_kernel {
  static constexpr int chroma_bytes = write_chroma ? 1 : 0;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* cb, uint8_t* cr) {
    y[0] = src[1];
    y[1] = src[3];
    if constexpr (write_chroma) {
      cb[0] = src[0];
      cr[0] = src[2];
    }
  }

  template <class V>
  static constexpr size_t step = V::block_bytes;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* y, uint8_t* cb, uint8_t* cr) {
    const auto first = even_and_odd_bytes<V>(src);
    const auto second = even_and_odd_bytes<V>(src + 2 * V::block_bytes);
    store_blocks<V>(y, first.second, second.second);
    if constexpr (write_chroma) {
      const auto chroma = V::deinterleave2(first.first, second.first);
      V::store(cb, chroma.first);
      V::store(cr, chroma.second);
    }
  }
  template <class V>
  MORVANE_INLINE static void two_vectors(const uint8_t* src, uint8_t* y, uint8_t* cb, uint8_t* cr) {
    const auto first = even_and_odd_bytes<V>(src);
    const auto second = even_and_odd_bytes<V>(src + 2 * V::block_bytes);
    const auto third = even_and_odd_bytes<V>(src + 4 * V::block_bytes);
    const auto fourth = even_and_odd_bytes<V>(src + 6 * V::block_bytes);
    store_blocks<V>(y, first.second, second.second, third.second, fourth.second);
    if constexpr (write_chroma) {
      const auto chroma = V::deinterleave2(first.first, second.first);
      const auto next_chroma = V::deinterleave2(third.first, fourth.first);
      store_blocks<V>(cb, chroma.first, next_chroma.first);
      store_blocks<V>(cr, chroma.second, next_chroma.second);
    }
  }

  // The last pixel of an odd line is neither read nor written.
  template <class V>
  static void line(const uint8_t* p_src_ycbcr, uint8_t* p_dst_y, uint8_t* p_dst_cb, uint8_t* p_dst_cr,
                   const int no_pixels) {
    y_u_v_kernel kernel;
    walk_in_order<V, 4, 2, chroma_bytes, chroma_bytes>(kernel, whole_pairs(no_pixels), p_src_ycbcr, p_dst_y, p_dst_cb,
                                                       p_dst_cr);
  }
};

template <bool src_align, bool dst_align, bool write_chroma>
inline void y_u_v(const uint8_t* p_src_ycbcr, uint8_t* p_dst_y, uint8_t* p_dst_cb, uint8_t* p_dst_cr,
                  const int no_pixels) {
  backend::line_of<y_u_v_kernel<write_chroma>>()(p_src_ycbcr, p_dst_y, p_dst_cb, p_dst_cr, no_pixels);
}

// Pairs to luma alone, as it is or stretched to a key.
template <bool key_color_alpha_rescale>
struct y_kernel {
  MORVANE_INLINE static uint8_t luma(const uint8_t y) {
    if constexpr (key_color_alpha_rescale) return key_from_luma(y);
    return y;
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t odd = src[3];
    dst[0] = luma(src[1]);
    dst[1] = luma(odd);
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    if constexpr (key_color_alpha_rescale)
      V::store(dst, V::template linear_of_odd_bytes<key_multiplier, key_offset>(V::load(src),
                                                                                V::load(src + V::block_bytes)));
    else
      V::store(dst, even_and_odd_bytes<V>(src).second);
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, const int no_pixels) {
    y_kernel kernel;
    walk<V, 4, 2>(kernel, begun_pairs(no_pixels), p_src_uyvy, p_dst_y);
  }
};

template <bool src_align, bool dst_align, bool key_color_alpha_rescale>
inline void y(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, const int no_pixels) {
  backend::line_of<y_kernel<key_color_alpha_rescale>>()(p_src_uyvy, p_dst_y, no_pixels);
}

// Pairs to two pixels Y Cb Cr 255, which share the pair's chroma.
struct ycbcrx_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t pair[] = {src[1], src[0], src[2], 255, src[3], src[0], src[2], 255};
    for (int i = 0; i < 8; ++i) dst[i] = pair[i];
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    V::template store_444<false>(dst, src);
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, uint8_t* p_dst_ycbcrx, const int no_pixels) {
    ycbcrx_kernel kernel;
    walk<V, 4, 8>(kernel, begun_pairs(no_pixels), p_src_uyvy, p_dst_ycbcrx);
  }
};

template <bool src_align, bool dst_align>
inline void ycbcrx(const uint8_t* p_src_uyvy, uint8_t* p_dst_ycbcrx, const int no_pixels) {
  backend::line_of<ycbcrx_kernel>()(p_src_uyvy, p_dst_ycbcrx, no_pixels);
}

// The luma of a fill and the key made from the luma of a second image, for the first pair of a line alone.
template <bool src_align, bool dst_align, bool key_color_alpha_rescale>
inline void ya_uv(const uint8_t* p_src0_uyvy, const uint8_t* p_src1_uyvy, uint8_t* p_dst_ya, uint8_t* p_dst_cbcr,
                  const int no_pixels) {
  using key = y_kernel<key_color_alpha_rescale>;
  if (no_pixels < 1) return;
  p_dst_cbcr[0] = p_src0_uyvy[0];
  p_dst_cbcr[1] = p_src0_uyvy[2];
  p_dst_ya[0] = p_src0_uyvy[1];
  p_dst_ya[1] = key::luma(p_src1_uyvy[1]);
  p_dst_ya[2] = p_src0_uyvy[3];
  p_dst_ya[3] = key::luma(p_src1_uyvy[3]);
}

// One component of RGB of a pixel, as V::clamped_sum has it for vectors.
template <ycbcr_weights w, int bits>
MORVANE_INLINE uint8_t rgb_component(const int y, const int cb, const int cr) {
  constexpr ycbcr_weights k = w;
  return clamp_to_byte((k.y * y + k.cb * cb + k.cr * cr + k.constant) >> bits);
}

// The three bytes of RGB of a pixel, in the order in which they lie in memory.
template <class matrix, bool is_rgba, int bits>
struct rgb_bytes {
  static constexpr ycbcr_weights first = is_rgba ? matrix::r : matrix::b;
  static constexpr ycbcr_weights second = matrix::g;
  static constexpr ycbcr_weights third = is_rgba ? matrix::b : matrix::r;

  MORVANE_INLINE static void store(uint8_t* dst, const int y, const int cb, const int cr) {
    dst[0] = rgb_component<first, bits>(y, cb, cr);
    dst[1] = rgb_component<second, bits>(y, cb, cr);
    dst[2] = rgb_component<third, bits>(y, cb, cr);
  }
  template <class V>
  MORVANE_INLINE static void store3(uint8_t* dst, const typename V::pairs& pairs) {
    V::store3(dst, V::template clamped_sum<first, bits>(pairs), V::template clamped_sum<second, bits>(pairs),
              V::template clamped_sum<third, bits>(pairs));
  }
  template <class V>
  MORVANE_INLINE static void store4(uint8_t* dst, const typename V::pairs& pairs, const typename V::pair_bytes fourth) {
    V::store4(dst, V::template clamped_sum<first, bits>(pairs), V::template clamped_sum<second, bits>(pairs),
              V::template clamped_sum<third, bits>(pairs), fourth);
  }
};

// Pairs to two pixels of three bytes, or of four bytes of which the fourth is 255. Both pixels take the pair's chroma.
template <bool ccir_709, bool is_rgba, int bytes_per_pixel>
struct rgb_kernel {
  using rgb = rgb_bytes<ycbcr_to_rgb<ccir_709>, is_rgba, 8>;

  MORVANE_INLINE static void pixel(uint8_t* dst, const int y, const int cb, const int cr) {
    rgb::store(dst, y, cb, cr);
    if constexpr (bytes_per_pixel == 4) dst[3] = 255;
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t cb = src[0];
    const uint8_t cr = src[2];
    const uint8_t odd_luma = src[3];
    pixel(dst, src[1], cb, cr);
    pixel(dst + bytes_per_pixel, odd_luma, cb, cr);
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    const auto pairs = V::load_uyvy(src);
    if constexpr (bytes_per_pixel == 4)
      rgb::template store4<V>(dst, pairs, V::same_of_pairs(255));
    else
      rgb::template store3<V>(dst, pairs);
  }

  // An odd line completes its last pair of three-byte pixels; of four-byte pixels it leaves the last one out.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, uint8_t* p_dst, const int no_pixels) {
    const size_t pairs = bytes_per_pixel == 4 ? whole_pairs(no_pixels) : begun_pairs(no_pixels);
    rgb_kernel kernel;
    walk<V, 4, 2 * bytes_per_pixel>(kernel, pairs, p_src_uyvy, p_dst);
  }
};

template <bool src_align, bool dst_align, bool ccir_709>
inline void bgr(const uint8_t* p_src_uyvy, uint8_t* p_dst_bgr, const int no_pixels) {
  backend::line_of<rgb_kernel<ccir_709, false, 3>>()(p_src_uyvy, p_dst_bgr, no_pixels);
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
  backend::line_of<rgb_kernel<ccir_709, is_rgba, 4>>()(p_src_uyvy, p_dst_bgra, no_pixels);
}

}  // namespace uyvy

namespace uyvy_a {

// A pair and its two alphas to luma with alpha, and chroma: Y A Y A and Cb Cr.
struct ya_uv_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, const uint8_t* alpha, uint8_t* ya, uint8_t* cbcr) {
    ya[0] = src[1];
    ya[1] = alpha[0];
    ya[2] = src[3];
    ya[3] = alpha[1];
    cbcr[0] = src[0];
    cbcr[1] = src[2];
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, const uint8_t* alpha, uint8_t* ya, uint8_t* cbcr) {
    const auto split = even_and_odd_bytes<V>(src);
    const auto joined = V::interleave2(split.second, V::load(alpha));
    store_blocks<V>(ya, joined.first, joined.second);
    V::store(cbcr, split.first);
  }
  template <class V>
  MORVANE_INLINE static void two_vectors(const uint8_t* src, const uint8_t* alpha, uint8_t* ya, uint8_t* cbcr) {
    const auto first = even_and_odd_bytes<V>(src);
    const auto second = even_and_odd_bytes<V>(src + 2 * V::block_bytes);
    const auto joined = V::interleave2(first.second, V::load(alpha));
    const auto next_joined = V::interleave2(second.second, V::load(alpha + V::block_bytes));
    store_blocks<V>(ya, joined.first, joined.second, next_joined.first, next_joined.second);
    store_blocks<V>(cbcr, first.first, second.first);
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_ya, uint8_t* p_dst_cbcr,
                   const int no_pixels) {
    ya_uv_kernel kernel;
    walk<V, 4, 2, 4, 2>(kernel, begun_pairs(no_pixels), p_src_uyvy, p_src_alpha, p_dst_ya, p_dst_cbcr);
  }
};

template <bool src_align, bool dst_align>
inline void ya_uv(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_ya, uint8_t* p_dst_cbcr,
                  const int no_pixels) {
  backend::line_of<ya_uv_kernel>()(p_src_uyvy, p_src_alpha, p_dst_ya, p_dst_cbcr, no_pixels);
}

// A pair and its two alphas to two pixels of 4:4:4, which share the pair's chroma: Y Cb Cr A or Cr Cb Y A.
template <bool is_crcby>
struct ycbcra_kernel {
  MORVANE_INLINE static void pixel(uint8_t* dst, const uint8_t y, const uint8_t cb, const uint8_t cr, const uint8_t a) {
    dst[0] = is_crcby ? cr : y;
    dst[1] = cb;
    dst[2] = is_crcby ? y : cr;
    dst[3] = a;
  }
  MORVANE_INLINE static void rule(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    pixel(dst, src[1], src[0], src[2], alpha[0]);
    pixel(dst + 4, src[3], src[0], src[2], alpha[1]);
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    V::template store_444<is_crcby>(dst, src, alpha);
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_ycbcra, const int no_pixels) {
    ycbcra_kernel kernel;
    walk<V, 4, 2, 8>(kernel, begun_pairs(no_pixels), p_src_uyvy, p_src_alpha, p_dst_ycbcra);
  }
};

template <bool src_align, bool dst_align>
inline void ycbcra(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_ycbcra, const int no_pixels) {
  backend::line_of<ycbcra_kernel<false>>()(p_src_uyvy, p_src_alpha, p_dst_ycbcra, no_pixels);
}

template <bool src_align, bool dst_align>
inline void crcbya(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_crcbya, const int no_pixels) {
  backend::line_of<ycbcra_kernel<true>>()(p_src_uyvy, p_src_alpha, p_dst_crcbya, no_pixels);
}

// Pairs to pixels of RGB with the alpha of their plane, not premultiplied.
template <bool ccir_709, bool is_rgba>
struct rgba_and_bgra_kernel {
  using rgb = uyvy::rgb_bytes<ycbcr_to_rgb_coarse<ccir_709>, is_rgba, 6>;

  MORVANE_INLINE static void pixel(uint8_t* dst, const int y, const int cb, const int cr, const uint8_t alpha) {
    rgb::store(dst, y, cb, cr);
    dst[3] = alpha;
  }
  MORVANE_INLINE static void rule(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    pixel(dst, src[1], src[0], src[2], alpha[0]);
    pixel(dst + 4, src[3], src[0], src[2], alpha[1]);
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    rgb::template store4<V>(dst, V::load_uyvy(src), V::load_pair_bytes(alpha));
  }

  // The last pixel of an odd line is neither read nor written.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_bgra, const int no_pixels) {
    rgba_and_bgra_kernel kernel;
    walk<V, 4, 2, 8>(kernel, whole_pairs(no_pixels), p_src_uyvy, p_src_alpha, p_dst_bgra);
  }
};

template <bool src_align, bool dst_align, bool ccir_709, bool is_rgba>
inline void rgba_and_bgra(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_bgra,
                          const int no_pixels) {
  backend::line_of<rgba_and_bgra_kernel<ccir_709, is_rgba>>()(p_src_uyvy, p_src_alpha, p_dst_bgra, no_pixels);
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

// Over black: each sample moves towards its black value by the weight (A + 1) / 256 of its own pixel. Cb is the chroma
// of the even pixel and Cr that of the odd one, so they may be weighted differently.
struct over_black {
  static constexpr int black_luma = 16;
  static constexpr int black_chroma = 128;

  template <int black>
  MORVANE_INLINE static uint8_t sample(const int value, const int alpha) {
    return static_cast<uint8_t>(black + (((value - black) * (alpha + 1)) >> 8));
  }
  MORVANE_INLINE static void pair(uint8_t* dst, const int cb, const int y0, const int cr, const int y1,
                                  const int alpha0, const int alpha1) {
    dst[0] = sample<black_chroma>(cb, alpha0);
    dst[1] = sample<black_luma>(y0, alpha0);
    dst[2] = sample<black_chroma>(cr, alpha1);
    dst[3] = sample<black_luma>(y1, alpha1);
  }

  // The products span less than 65536, so that their upper bytes are right modulo 256, and so is what black adds.
  template <class V>
  MORVANE_INLINE static void store(uint8_t* dst, const typename V::words uyvy, const typename V::words alpha) {
    const auto weight = V::template add<1>(alpha);
    const auto chroma = V::multiply(V::template add<-black_chroma>(V::low_bytes(uyvy)), weight);
    const auto luma = V::multiply(V::template add<-black_luma>(V::high_bytes(uyvy)), weight);
    V::store_words(dst, V::template add_to_bytes<black_chroma, black_luma>(V::upper_bytes(chroma, luma)));
  }
};

struct uyvy_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    over_black::pair(dst, src[0], src[1], src[2], src[3], alpha[0], alpha[1]);
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, const uint8_t* alpha, uint8_t* dst) {
    over_black::store<V>(dst, V::load_words(src), V::widen(V::load_bytes(alpha)));
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_uyvy, const int no_pixels) {
    uyvy_kernel kernel;
    walk<V, 4, 2, 4>(kernel, begun_pairs(no_pixels), p_src_uyvy, p_src_alpha, p_dst_uyvy);
  }
};

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_uyvy, const uint8_t* p_src_alpha, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<uyvy_kernel>()(p_src_uyvy, p_src_alpha, p_dst_uyvy, no_pixels);
}

}  // namespace uyvy_a

// From pixels of 4:4:4 to pairs. Chroma is that of the even pixel alone.
namespace of_444 {

// The bytes of a pixel that hold its samples; alpha is the fourth.
struct sample_order {
  int y, cb, cr;
};

inline constexpr sample_order ycbcr = {0, 1, 2};
inline constexpr sample_order crcby = {2, 1, 0};

template <sample_order at, bool composite_over_black>
struct uyvy_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    constexpr sample_order order = at;
    const uint8_t pair[] = {src[order.cb], src[order.y], src[order.cr], src[4 + order.y]};
    if constexpr (composite_over_black)
      uyvy_a::over_black::pair(dst, pair[0], pair[1], pair[2], pair[3], src[3], src[7]);
    else
      for (int i = 0; i < 4; ++i) dst[i] = pair[i];
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  template <class V>
  MORVANE_INLINE static auto load(const uint8_t* src) {
    return V::load4(src);
  }
  template <class V>
  MORVANE_INLINE static void convert(const typename V::pixels& pixels, uint8_t* dst) {
    const auto words = V::template pick_of_pairs<at.cb, at.cr, at.y>(pixels);
    if constexpr (composite_over_black)
      uyvy_a::over_black::store<V>(dst, words, V::fourth_words(pixels));
    else
      V::store_words(dst, words);
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    convert<V>(load<V>(src), dst);
  }

  // An odd line completes its last pair.
  MORVANE_INLINE static size_t pairs(const int no_pixels) { return begun_pairs(no_pixels); }

  template <class V>
  static void line(const uint8_t* p_src, uint8_t* p_dst_uyvy, const int no_pixels) {
    uyvy_kernel kernel;
    walk<V, 8, 4>(kernel, pairs(no_pixels), p_src, p_dst_uyvy);
  }
};

}  // namespace of_444

namespace ycbcra {

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_ycbcra, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<of_444::uyvy_kernel<of_444::ycbcr, true>>()(p_src_ycbcra, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align, bool track_alpha>
inline bool uyvy_a(const uint8_t* p_src_ycbcra, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return backend::line_of<uyvy_a_kernel<of_444::uyvy_kernel<of_444::ycbcr, false>, track_alpha>>()(
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
  backend::line_of<of_444::uyvy_kernel<of_444::crcby, true>>()(p_src_vuya, p_dst_uyvy, no_pixels);
}

template <bool src_align, bool dst_align, bool track_alpha>
inline bool uyvy_a(const uint8_t* p_src_vuya, uint8_t* p_dst_uyvy, uint8_t* p_dst_alpha, const int no_pixels) {
  return backend::line_of<uyvy_a_kernel<of_444::uyvy_kernel<of_444::crcby, false>, track_alpha>>()(
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
  backend::line_of<of_444::uyvy_kernel<of_444::ycbcr, false>>()(p_src_ycbcrx, p_dst_uyvy, no_pixels);
}

}  // namespace ycbcrx

namespace vuyx {

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_vuyx, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<of_444::uyvy_kernel<of_444::crcby, false>>()(p_src_vuyx, p_dst_uyvy, no_pixels);
}

}  // namespace vuyx

namespace y {

// The same line to two rows.
inline void y_x2(const uint8_t* p_src_y, uint8_t* p_dst_y0, uint8_t* p_dst_y1, const int no_pixels) {
  copy<1>(p_src_y, p_dst_y0, no_pixels);
  copy<1>(p_src_y, p_dst_y1, no_pixels);
}

// Samples to 16 bits: value * 256.
struct y16_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t value = src[0];
    dst[0] = 0;
    dst[1] = value;
  }

  template <class V>
  static constexpr size_t step = V::block_bytes;

  template <class V>
  MORVANE_INLINE static void store_wide(uint8_t* dst, const typename V::block samples) {
    const auto wide = V::interleave2(V::repeat(0), samples);
    store_blocks<V>(dst, wide.first, wide.second);
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    store_wide<V>(dst, V::load(src));
  }

  template <class V>
  static void line(const uint8_t* p_src_y, uint8_t* p_dst_y, const int no_pixels) {
    y16_kernel kernel;
    walk<V, 1, 2>(kernel, at_least_zero(no_pixels), p_src_y, p_dst_y);
  }
};

template <bool src_align, bool dst_align>
inline void y16(const uint8_t* p_src_y, uint16_t* p_dst_y, const int no_pixels) {
  backend::line_of<y16_kernel>()(p_src_y, reinterpret_cast<uint8_t*>(p_dst_y), no_pixels);
}

// The same line to two rows that are dst_y_stride bytes apart.
template <bool src_align, bool dst_align>
inline void y16_x2_lines(const uint8_t* p_src_y, uint16_t* p_dst_y, const int dst_y_stride, const int no_pixels) {
  y16<src_align, dst_align>(p_src_y, p_dst_y, no_pixels);
  y16<src_align, dst_align>(p_src_y, next_line(p_dst_y, dst_y_stride), no_pixels);
}

// Luma to grey pairs: a neutral chroma byte before every luma byte, which is taken as it is or brought from full range
// to video range.
template <bool normalize>
struct uyvy_kernel {
  static constexpr int multiplier = 220;
  static constexpr int offset = 16 * 256;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const int value = src[0];
    dst[0] = 128;
    dst[1] = normalize ? clamp_to_byte((multiplier * value + offset) >> 8) : static_cast<uint8_t>(value);
  }

  template <class V>
  static constexpr size_t step = V::block_bytes;

  template <class V>
  MORVANE_INLINE static auto luma(const uint8_t* src) {
    if constexpr (normalize)
      return V::template linear<multiplier, offset>(V::load(src));
    else
      return V::load(src);
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    const auto pairs = V::interleave2(V::repeat(128 | 128 << 8), luma<V>(src));
    store_blocks<V>(dst, pairs.first, pairs.second);
  }

  template <class V>
  static void line(const uint8_t* p_src_y, uint8_t* p_dst_uyvy, const int no_pixels) {
    uyvy_kernel kernel;
    walk<V, 1, 2>(kernel, at_least_zero(no_pixels), p_src_y, p_dst_uyvy);
  }
};

template <bool src_align, bool dst_align, bool normalize>
inline void uyvy(const uint8_t* p_src_y, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<uyvy_kernel<normalize>>()(p_src_y, p_dst_uyvy, no_pixels);
}

}  // namespace y

namespace y16 {

// 16-bit video-range key luma (4096 to 60160) stretched to full range.
struct y16_kernel {
  static constexpr int multiplier = 1197;
  static constexpr int offset = -4902912;
  static constexpr int bits = 10;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const int t = (multiplier * word_at(src) + offset) >> bits;
    store_word(dst, t < 0 ? 0 : t > 65535 ? 65535 : t);
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    V::store(dst, V::template linear_words<multiplier, offset, bits>(V::load(src)));
  }

  template <class V>
  static void line(const uint8_t* p_src_y, uint8_t* p_dst_y, const int no_pixels) {
    y16_kernel kernel;
    walk<V, 2, 2>(kernel, at_least_zero(no_pixels), p_src_y, p_dst_y);
  }
};

template <bool src_align, bool dst_align, bool key_color_alpha_rescale>
inline void y16(const uint16_t* p_src_y, uint16_t* p_dst_y, const int no_pixels) {
  const auto* src = reinterpret_cast<const uint8_t*>(p_src_y);
  auto* dst = reinterpret_cast<uint8_t*>(p_dst_y);
  if constexpr (key_color_alpha_rescale)
    backend::line_of<y16_kernel>()(src, dst, no_pixels);
  else
    copy<2>(src, dst, no_pixels);
}

}  // namespace y16

// Planes of Cb and Cr, one sample each for a pair.
namespace u_v {

// Samples of one or two bytes to interleaved chroma.
template <int sample_bytes>
struct uv_kernel {
  MORVANE_INLINE static void rule(const uint8_t* cb, const uint8_t* cr, uint8_t* dst) {
    for (int i = 0; i < sample_bytes; ++i) dst[i] = cb[i];
    for (int i = 0; i < sample_bytes; ++i) dst[sample_bytes + i] = cr[i];
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / sample_bytes;

  template <class V>
  MORVANE_INLINE static auto interleave(const uint8_t* cb, const uint8_t* cr) {
    if constexpr (sample_bytes == 1)
      return V::interleave2(V::load(cb), V::load(cr));
    else
      return V::interleave2_words(V::load(cb), V::load(cr));
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* cb, const uint8_t* cr, uint8_t* dst) {
    const auto cbcr = interleave<V>(cb, cr);
    store_blocks<V>(dst, cbcr.first, cbcr.second);
  }

  template <class V>
  static void line(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint8_t* p_dst_cbcr, const int no_pairs) {
    uv_kernel kernel;
    walk<V, sample_bytes, sample_bytes, 2 * sample_bytes>(kernel, at_least_zero(no_pairs), p_src_cb, p_src_cr,
                                                          p_dst_cbcr);
  }
};

template <bool src_align, bool dst_align>
inline void uv(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint8_t* p_dst_cbcr, const int no_pairs) {
  backend::line_of<uv_kernel<1>>()(p_src_cb, p_src_cr, p_dst_cbcr, no_pairs);
}

template <bool src_align, bool dst_align>
inline void uv(const uint16_t* p_src_cb, const uint16_t* p_src_cr, uint16_t* p_dst_cbcr, const int no_pairs) {
  backend::line_of<uv_kernel<2>>()(reinterpret_cast<const uint8_t*>(p_src_cb),
                                   reinterpret_cast<const uint8_t*>(p_src_cr), reinterpret_cast<uint8_t*>(p_dst_cbcr),
                                   no_pairs);
}

// Samples of bytes to interleaved chroma of 16-bit words: value * 256.
struct uv16_kernel {
  MORVANE_INLINE static void rule(const uint8_t* cb, const uint8_t* cr, uint8_t* dst) {
    const uint8_t words[] = {0, cb[0], 0, cr[0]};
    for (int i = 0; i < 4; ++i) dst[i] = words[i];
  }

  template <class V>
  static constexpr size_t step = V::block_bytes;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* cb, const uint8_t* cr, uint8_t* dst) {
    const auto cbcr = V::interleave2(V::load(cb), V::load(cr));
    y::y16_kernel::store_wide<V>(dst, cbcr.first);
    y::y16_kernel::store_wide<V>(dst + 2 * V::block_bytes, cbcr.second);
  }

  template <class V>
  static void line(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint8_t* p_dst_cbcr, const int no_pairs) {
    uv16_kernel kernel;
    walk<V, 1, 1, 4>(kernel, at_least_zero(no_pairs), p_src_cb, p_src_cr, p_dst_cbcr);
  }
};

template <bool src_align, bool dst_align>
inline void uv_x2(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint8_t* p_dst_cbcr0, uint8_t* p_dst_cbcr1,
                  const int no_pairs) {
  uv<src_align, dst_align>(p_src_cb, p_src_cr, p_dst_cbcr0, no_pairs);
  uv<src_align, dst_align>(p_src_cb, p_src_cr, p_dst_cbcr1, no_pairs);
}

inline void uv16(const uint8_t* p_src_cb, const uint8_t* p_src_cr, uint16_t* p_dst_cbcr, const int no_pairs) {
  backend::line_of<uv16_kernel>()(p_src_cb, p_src_cr, reinterpret_cast<uint8_t*>(p_dst_cbcr), no_pairs);
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
MORVANE_INLINE constexpr int whole_pair_bytes(const int bytes) {
  return bytes < 1 ? 0 : bytes + bytes % 2;
}

// Interleaved chroma to 16 bits, value * 256, in two rows. no_pixels is the length of the source row in bytes.
template <bool src_align, bool dst_align>
inline void uv16_x2(const uint8_t* p_src_cbcr, uint16_t* p_dst_cbcr0, uint16_t* p_dst_cbcr1, const int no_pixels) {
  y::y16<src_align, dst_align>(p_src_cbcr, p_dst_cbcr0, whole_pair_bytes(no_pixels));
  y::y16<src_align, dst_align>(p_src_cbcr, p_dst_cbcr1, whole_pair_bytes(no_pixels));
}

}  // namespace uv

// Planes of one sample a pixel, from one depth to another. Sources and destinations of 16 bits are words at any
// address.
namespace depth {

// Words to bytes: the lower eight bits of value >> bits.
template <int bits>
struct to_byte_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    dst[0] = static_cast<uint8_t>(word_at(src) >> bits);
  }

  template <class V>
  static constexpr size_t step = V::block_bytes;

  template <class V>
  MORVANE_INLINE static auto shifted(const uint8_t* src) {
    return V::template shift_right_words<bits>(V::load(src));
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    if constexpr (bits == 8)
      V::store(dst, even_and_odd_bytes<V>(src).second);
    else
      V::store(dst, V::deinterleave2(shifted<V>(src), shifted<V>(src + V::block_bytes)).first);
  }

  template <class V>
  static void line(const uint8_t* p_src, uint8_t* p_dst, const int no_pixels) {
    to_byte_kernel kernel;
    walk<V, 2, 1>(kernel, at_least_zero(no_pixels), p_src, p_dst);
  }
};

// The lower `bits` bits of words to the whole of 16, filled up with the value's own upper bits, so that the largest
// value becomes 65535.
template <int bits>
struct from_low_bits_kernel {
  static constexpr int up = 16 - bits;
  static constexpr int down = bits - up;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const int value = word_at(src);
    store_word(dst, (value << up) + (value >> down));
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    const auto values = V::load(src);
    V::store(dst, V::add_words(V::template shift_left_words<up>(values), V::template shift_right_words<down>(values)));
  }

  template <class V>
  static void line(const uint8_t* p_src, uint8_t* p_dst, const int no_pixels) {
    from_low_bits_kernel kernel;
    walk<V, 2, 2>(kernel, at_least_zero(no_pixels), p_src, p_dst);
  }
};

// Bytes to words: 257 * value, the byte in both halves.
struct repeat_byte_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t value = src[0];
    dst[0] = value;
    dst[1] = value;
  }

  template <class V>
  static constexpr size_t step = V::block_bytes;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    const auto values = V::load(src);
    const auto words = V::interleave2(values, values);
    store_blocks<V>(dst, words.first, words.second);
  }

  template <class V>
  static void line(const uint8_t* p_src, uint8_t* p_dst, const int no_pixels) {
    repeat_byte_kernel kernel;
    walk<V, 1, 2>(kernel, at_least_zero(no_pixels), p_src, p_dst);
  }
};

// The fourth of four words.
struct fourth_word_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) { store_word(dst, word_at(src + 6)); }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static auto odd_words(const uint8_t* src) {
    return V::deinterleave2_words(V::load(src), V::load(src + V::block_bytes)).second;
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    V::store(dst, V::deinterleave2_words(odd_words<V>(src), odd_words<V>(src + 2 * V::block_bytes)).second);
  }

  template <class V>
  static void line(const uint8_t* p_src, uint8_t* p_dst, const int no_pixels) {
    fourth_word_kernel kernel;
    walk<V, 8, 2>(kernel, at_least_zero(no_pixels), p_src, p_dst);
  }
};

}  // namespace depth

namespace alpha {

template <bool src_align, bool dst_align>
inline void alpha_u16(const uint8_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  backend::line_of<depth::repeat_byte_kernel>()(p_src_alpha, p_dst_alpha, no_pixels);
}

}  // namespace alpha

namespace alpha_u16 {

template <bool src_align, bool dst_align>
inline void alpha(const uint16_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  backend::line_of<depth::to_byte_kernel<8>>()(reinterpret_cast<const uint8_t*>(p_src_alpha), p_dst_alpha, no_pixels);
}

}  // namespace alpha_u16

namespace alpha_10u16 {

template <bool src_align, bool dst_align>
inline void alpha16(const uint8_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  backend::line_of<depth::from_low_bits_kernel<10>>()(p_src_alpha, p_dst_alpha, no_pixels);
}

}  // namespace alpha_10u16

namespace alpha_12u16 {

template <bool src_align, bool dst_align>
inline void alpha16(const uint8_t* p_src_alpha, uint8_t* p_dst_alpha, const int no_pixels) {
  backend::line_of<depth::from_low_bits_kernel<12>>()(p_src_alpha, p_dst_alpha, no_pixels);
}

}  // namespace alpha_12u16

namespace y_10u16 {

template <bool src_align, bool dst_align>
inline void y(const uint16_t* p_src_y, uint8_t* p_dst_y, const int no_pixels) {
  backend::line_of<depth::to_byte_kernel<2>>()(reinterpret_cast<const uint8_t*>(p_src_y), p_dst_y, no_pixels);
}

}  // namespace y_10u16

namespace bgra64 {

template <bool src_align, bool dst_align>
inline void alpha16(const uint8_t* p_src_bgra64, uint8_t* p_dst_alpha, const int no_pixels) {
  backend::line_of<depth::fourth_word_kernel>()(p_src_bgra64, p_dst_alpha, no_pixels);
}

}  // namespace bgra64

}  // namespace Processing::Morvane::format_conversion::line
