// Line kernels of the YCbCr and copy families, and of uyvy to RGB.
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
      V::store(dst, first);
      V::store(dst + V::block_bytes, second);
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
  MORVANE_INLINE static void samples(const uint8_t* src, uint8_t* dst, const int count) {
    for (int i = 0; i < count; ++i) dst[i] = sample(src, i);
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) { samples(src, dst, 12); }

  template <class V>
  static constexpr size_t step = 4 * V::block_bytes / 16;

  // bits     31 30 29 ... 20 19 ... 10 9 ... 0        31 ... 24 23 ... 16 15 ... 8 7 ... 0
  //                 sample 2  sample 1  sample 0  to          0  sample 2 sample 1 sample 0
  template <class V>
  MORVANE_INLINE static auto upper_eight_bits(const uint8_t* src) {
    const auto words = V::load(src);
    return V::or_blocks(V::or_blocks(V::template shift_right_and_mask<2, 0xff>(words),
                                     V::template shift_right_and_mask<4, 0xff00>(words)),
                        V::template shift_right_and_mask<6, 0xff0000>(words));
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* dst) {
    V::store_three_of_four(dst, upper_eight_bits<V>(src), upper_eight_bits<V>(src + V::block_bytes),
                           upper_eight_bits<V>(src + 2 * V::block_bytes),
                           upper_eight_bits<V>(src + 3 * V::block_bytes));
  }

  // The pair that holds the last pixel stays unwritten, whether it is whole or not.
  template <class V>
  static void line(const uint8_t* p_src_v210, uint8_t* p_dst_uyvy, const int no_pixels) {
    const size_t begun = begun_pairs(no_pixels);
    const size_t pairs = begun == 0 ? 0 : begun - 1;
    const size_t groups = pairs / 3;
    uyvy_kernel kernel;
    walk<V, 16, 12>(kernel, groups, p_src_v210, p_dst_uyvy);
    samples(p_src_v210 + 16 * groups, p_dst_uyvy + 12 * groups, static_cast<int>(pairs % 3) * 4);
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

// One component of RGB, for a pixel and for the pixels of a vector.
template <ycbcr_weights w>
MORVANE_INLINE uint8_t rgb_component(const int y, const int cb, const int cr) {
  constexpr ycbcr_weights k = w;
  return clamp_to_byte((k.y * y + k.cb * cb + k.cr * cr + k.constant) >> 8);
}

template <class V, ycbcr_weights w>
MORVANE_INLINE auto rgb_component(const typename V::pairs& pairs) {
  constexpr split_weights s = split(w);
  static_assert(fits_16_bits(s));
  return V::narrow_saturating(
      V::template add_shifted<8>(V::template weigh<s.whole>(pairs), V::template weigh<s.rest>(pairs)));
}

// Pairs to two pixels of three bytes, or of four bytes of which the fourth is 255. Both pixels take the pair's chroma.
template <bool ccir_709, bool is_rgba, int bytes_per_pixel>
struct rgb_kernel {
  using matrix = ycbcr_to_rgb<ccir_709>;

  static constexpr ycbcr_weights first = is_rgba ? matrix::r : matrix::b;
  static constexpr ycbcr_weights second = matrix::g;
  static constexpr ycbcr_weights third = is_rgba ? matrix::b : matrix::r;

  MORVANE_INLINE static void pixel(uint8_t* dst, const int y, const int cb, const int cr) {
    dst[0] = rgb_component<first>(y, cb, cr);
    dst[1] = rgb_component<second>(y, cb, cr);
    dst[2] = rgb_component<third>(y, cb, cr);
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
    const auto byte0 = rgb_component<V, first>(pairs);
    const auto byte1 = rgb_component<V, second>(pairs);
    const auto byte2 = rgb_component<V, third>(pairs);
    if constexpr (bytes_per_pixel == 4)
      V::store4(dst, byte0, byte1, byte2, V::same(255));
    else
      V::store3(dst, byte0, byte1, byte2);
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

}  // namespace Processing::Morvane::format_conversion::line
