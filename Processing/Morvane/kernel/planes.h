// Packed 8-bit 4:2:2 and its planes, and copies that look at alpha.
#pragma once

#include <cstddef>
#include <cstdint>

#include "list.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Whether the planes of chroma are written, or left as they are.
enum class chroma : bool { left_out, written };

// The even bytes of two blocks and the odd ones.
template <class V>
MORVANE_INLINE auto even_and_odd_bytes(const uint8_t* src) {
  return V::deinterleave2(V::load(src), V::load(src + V::block_bytes));
}

// Exchanges the two bytes of a pixel, which is its own way back.
struct uyvy_to_yuy2 : each_pixel<from<2>, to<2>> {
  static constexpr bool in_order = true;
  static constexpr bool bound_by_memory = true;

  // Where the planes overlap, the order of reads and writes shows; it is the order of these lines.
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    dst[0] = src[1];
    dst[1] = src[0];
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::swap_bytes(V::load(src));
  }
};

// Pairs to luma and interleaved chroma. The last pixel of an odd line is neither read nor written.
template <chroma cbcr>
struct uyvy_to_y_uv : each_whole_pair<from<4>, to<2>, to<cbcr == chroma::written ? 2 : 0>> {
  static constexpr bool bound_by_memory = true;
  static constexpr bool in_order = true;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* uv) {
    y[0] = src[1];
    y[1] = src[3];
    if constexpr (cbcr == chroma::written) {
      uv[0] = src[0];
      uv[1] = src[2];
    }
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    auto split = even_and_odd_bytes<V>(src);
    if constexpr (cbcr == chroma::written)
      return to_planes(split.second, split.first);
    else
      return to_planes(split.second, nothing());
  }
};

// Pairs to luma, Cb and Cr. The last pixel of an odd line is neither read nor written.
template <chroma cbcr>
struct uyvy_to_y_u_v
    : each_whole_pair<from<4>, to<2>, to<cbcr == chroma::written ? 1 : 0>, to<cbcr == chroma::written ? 1 : 0>> {
  static constexpr bool in_order = true;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* cb, uint8_t* cr) {
    y[0] = src[1];
    y[1] = src[3];
    if constexpr (cbcr == chroma::written) {
      cb[0] = src[0];
      cr[0] = src[2];
    }
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    auto first = even_and_odd_bytes<V>(src);
    auto second = even_and_odd_bytes<V>(src + 2 * V::block_bytes);
    auto luma = in_a_row(first.second, second.second);
    if constexpr (cbcr == chroma::written) {
      auto split = V::deinterleave2(first.first, second.first);
      return to_planes(luma, split.first, split.second);
    } else {
      return to_planes(luma, nothing(), nothing());
    }
  }
};

// Pairs to luma alone. An odd line completes its last pair.
struct uyvy_to_y : each_begun_pair<from<4>, to<2>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t odd = src[3];
    dst[0] = src[1];
    dst[1] = odd;
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return even_and_odd_bytes<V>(src).second;
  }
};

// Luma to grey pairs: a neutral chroma byte before every luma byte.
struct y_to_uyvy : each_pixel<from<1>, to<2>> {
  static constexpr bool bound_by_memory = true;

  static constexpr uint8_t neutral = 128;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t luma = src[0];
    dst[0] = neutral;
    dst[1] = luma;
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::interleave2(V::repeat(neutral | neutral << 8), V::load(src));
  }
};

// Copies pixels of four bytes and tells whether the fourth byte of all of them is 255.
struct copy_with_opacity : each_pixel<from<4>, to<4>> {
  static constexpr bool bound_by_memory = true;
  using answer = bool;

  template <class V>
  struct seen {
    typename V::block all_vectors;
    uint8_t all_alpha = 255;

    MORVANE_INLINE static seen none() {
      seen s{};
      if constexpr (V::lanes > 0) s.all_vectors = V::repeat(0xffff);
      return s;
    }
    MORVANE_INLINE bool result() const {
      if constexpr (V::lanes > 0) {
        if (!V::fourth_bytes_are_255(all_vectors)) return false;
      }
      return all_alpha == 255;
    }
  };

  template <class V>
  MORVANE_INLINE static void rule(seen<V>& s, const uint8_t* src, uint8_t* dst) {
    for (int i = 0; i < 4; ++i) dst[i] = src[i];
    s.all_alpha = static_cast<uint8_t>(s.all_alpha & src[3]);
  }
  template <class V>
  MORVANE_INLINE static auto convert(seen<V>& s, const uint8_t* src) {
    const auto first = V::load(src);
    const auto second = V::load(src + V::block_bytes);
    s.all_vectors = V::and_blocks(s.all_vectors, V::and_blocks(first, second));
    return in_a_row(first, second);
  }
};

using planes_kernels = kernel_list<uyvy_to_yuy2, uyvy_to_y_uv<chroma::left_out>, uyvy_to_y_uv<chroma::written>,
                                   uyvy_to_y_u_v<chroma::left_out>, uyvy_to_y_u_v<chroma::written>, uyvy_to_y,
                                   y_to_uyvy, copy_with_opacity>;

}  // namespace Processing::Morvane::format_conversion::kernel
