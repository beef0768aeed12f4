// Line kernels of the 16-bit family, of p216 to RGB, and of the 10-bit card formats. Their 16-bit planes are
// little-endian words at any address.
#pragma once

#include "format_conversion_line.h"

namespace Processing::Morvane::format_conversion::line {

namespace uyvy {

// Pairs to words of luma and of chroma: value * 256.
struct p216_kernel {
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* cbcr) {
    for (int i = 0; i < 2; ++i) {
      store_word(cbcr + 2 * i, src[2 * i] << 8);
      store_word(y + 2 * i, src[2 * i + 1] << 8);
    }
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 4;

  // Each word of uyvy is C | Y << 8.
  template <class V>
  MORVANE_INLINE static auto luma(const typename V::block words) {
    return V::and_blocks(words, V::repeat(0xff00));
  }
  template <class V>
  MORVANE_INLINE static auto chroma(const typename V::block words) {
    return V::template shift_left_words<8>(words);
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* y, uint8_t* cbcr) {
    const auto words = V::load(src);
    V::store(y, luma<V>(words));
    V::store(cbcr, chroma<V>(words));
  }
  template <class V>
  MORVANE_INLINE static void two_vectors(const uint8_t* src, uint8_t* y, uint8_t* cbcr) {
    const auto first = V::load(src);
    const auto second = V::load(src + V::block_bytes);
    store_blocks<V>(y, luma<V>(first), luma<V>(second));
    store_blocks<V>(cbcr, chroma<V>(first), chroma<V>(second));
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
    p216_kernel kernel;
    walk<V, 4, 4, 4>(kernel, begun_pairs(no_pixels), p_src_uyvy, p_dst_y, p_dst_cbcr);
  }
};

template <bool src_align, bool dst_align>
inline void p216(const uint8_t* p_src_uyvy, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
  backend::line_of<p216_kernel>()(p_src_uyvy, p_dst_y, p_dst_cbcr, no_pixels);
}

}  // namespace uyvy

namespace ycbcra {

// Two pixels of 4:4:4 to words of luma, of the even pixel's chroma, and of alpha. The line function returns whether all
// alpha is 255, or true when nobody asks.
template <bool track_alpha>
struct pa16_kernel {
  template <class V>
  struct walker {
    opacity<V> alphas = opacity<V>::none_seen();

    MORVANE_INLINE void rule(const uint8_t* src, uint8_t* y, uint8_t* cbcr, uint8_t* alpha) {
      for (int i = 0; i < 2; ++i) {
        store_word(y + 2 * i, src[4 * i] << 8);
        store_word(cbcr + 2 * i, src[1 + i] << 8);
        store_word(alpha + 2 * i, src[4 * i + 3] * 257);
      }
      if constexpr (track_alpha) alphas.see(static_cast<uint8_t>(src[3] & src[7]));
    }

    template <class>
    static constexpr size_t step = V::lanes / 2;

    template <class>
    MORVANE_INLINE void vector(const uint8_t* src, uint8_t* y, uint8_t* cbcr, uint8_t* alpha) {
      const auto pixels = V::load4(src);
      const auto fourth = V::fourth(pixels);
      const auto uyvy = V::template pick_of_pairs<1, 2, 0>(pixels);
      V::store_words(y, V::template shift_left<8>(V::high_bytes(uyvy)));
      V::store_words(cbcr, V::template shift_left<8>(uyvy));
      V::store_words(alpha, V::widen_repeated(fourth));
      if constexpr (track_alpha) alphas.see(fourth);
    }
  };

  // An odd line completes its last pair.
  template <class V>
  static bool line(const uint8_t* p_src_ycbcra, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_alpha,
                   const int no_pixels) {
    walker<V> w;
    walk<V, 8, 4, 4, 4>(w, begun_pairs(no_pixels), p_src_ycbcra, p_dst_y, p_dst_cbcr, p_dst_alpha);
    return w.alphas.is_opaque();
  }
};

template <bool src_align, bool dst_align, bool track_alpha>
inline bool pa16(const uint8_t* p_src_ycbcra, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_alpha,
                 const int no_pixels) {
  return backend::line_of<pa16_kernel<track_alpha>>()(p_src_ycbcra, p_dst_y, p_dst_cbcr, p_dst_alpha, no_pixels);
}

template <bool src_align, bool dst_align>
inline bool pa16_ex(const uint8_t* p_src_ycbcra, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_alpha,
                    const int no_pixels) {
  return pa16<src_align, dst_align, true>(p_src_ycbcra, p_dst_y, p_dst_cbcr, p_dst_alpha, no_pixels);
}

}  // namespace ycbcra

// The upper bytes of two blocks of words, alternately.
template <class V>
MORVANE_INLINE auto upper_bytes_of(const typename V::block first, const typename V::block second) {
  return V::or_blocks(V::template shift_right_words<8>(first), V::and_blocks(second, V::repeat(0xff00)));
}

namespace group_10 {

// Packs the upper ten bits of the words of a pair. The two bits of Cr are those of the word `cr_low`.
MORVANE_INLINE void pack(const place<uint8_t> at, const int y0, const int cb, const int y1, const int cr,
                         const int cr_low) {
  at.upper[0] = static_cast<uint8_t>(y0 >> 8);
  at.upper[1] = static_cast<uint8_t>(cb >> 8);
  at.upper[2] = static_cast<uint8_t>(y1 >> 8);
  at.upper[3] = static_cast<uint8_t>(cr >> 8);
  at.low[0] = static_cast<uint8_t>((y0 >> 6 & 3) | (cb >> 6 & 3) << 2 | (y1 >> 6 & 3) << 4 | (cr_low >> 6 & 3) << 6);
}

// As pack, for the pairs of a block. The two bits of Cr may be those of Cb.
template <class V, bool cr_as_cb = false>
MORVANE_INLINE void pack(const place<uint8_t> at, const typename V::block y, const typename V::block cbcr) {
  V::store(at.upper, upper_bytes_of<V>(y, cbcr));
  V::template store_pair_bits<cr_as_cb>(at.low, y, cbcr);
}

}  // namespace group_10

namespace P216 {

// Words of luma and of chroma to their upper bytes: C Y, or with is_yuy2 Y C.
template <bool is_yuy2>
struct p216_to_p208_kernel {
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, uint8_t* dst) {
    dst[is_yuy2 ? 0 : 1] = y[1];
    dst[is_yuy2 ? 1 : 0] = cbcr[1];
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* y, const uint8_t* cbcr, uint8_t* dst) {
    const auto first = V::load(is_yuy2 ? y : cbcr);
    const auto second = V::load(is_yuy2 ? cbcr : y);
    V::store(dst, upper_bytes_of<V>(first, second));
  }

  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, uint8_t* p_dst, const int no_pixels) {
    p216_to_p208_kernel kernel;
    walk<V, 2, 2, 2>(kernel, at_least_zero(no_pixels), p_src_y, p_src_cbcr, p_dst);
  }
};

template <bool src_align, bool dst_align, bool is_yuy2>
inline void p216_to_p208(const uint16_t* p_src_y, const uint16_t* p_src_cbcr, uint8_t* p_dst, const int no_pixels) {
  backend::line_of<p216_to_p208_kernel<is_yuy2>>()(reinterpret_cast<const uint8_t*>(p_src_y),
                                                   reinterpret_cast<const uint8_t*>(p_src_cbcr), p_dst, no_pixels);
}

template <bool src_align, bool dst_align>
inline void uyvy(const uint16_t* p_src_y, const uint16_t* p_src_cbcr, uint8_t* p_dst_uyvy, const int no_pixels) {
  p216_to_p208<src_align, dst_align, false>(p_src_y, p_src_cbcr, p_dst_uyvy, no_pixels);
}

// The upper bytes of pairs to two pixels R G B 255. Both pixels take the pair's chroma.
struct rgbx_2020_kernel {
  using rgb = line::uyvy::rgb_bytes<ycbcr_to_rgb_2020, true, 6>;

  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, uint8_t* dst) {
    for (int i = 0; i < 2; ++i) {
      rgb::store(dst + 4 * i, y[2 * i + 1], cbcr[1], cbcr[3]);
      dst[4 * i + 3] = 255;
    }
  }

  template <class V>
  static constexpr size_t step = V::lanes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* y, const uint8_t* cbcr, uint8_t* dst) {
    rgb::template store4<V>(dst, V::load_upper_bytes(y, cbcr), V::same_of_pairs(255));
  }

  // The last pixel of an odd line is neither read nor written.
  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_uv, uint8_t* p_dst_rgbx, const int no_pixels) {
    rgbx_2020_kernel kernel;
    walk<V, 4, 4, 8>(kernel, whole_pairs(no_pixels), p_src_y, p_src_uv, p_dst_rgbx);
  }
};

template <bool src_align, bool dst_align>
inline void rgbx_2020(const uint8_t* p_src_y, const uint8_t* p_src_uv, uint8_t* p_dst_rgbx, const int no_pixels) {
  backend::line_of<rgbx_2020_kernel>()(p_src_y, p_src_uv, p_dst_rgbx, no_pixels);
}

// The upper ten bits of every word.
struct yuyv_matrox_10_kernel {
  MORVANE_INLINE static void rule(const group_10::place<uint8_t> at, const uint8_t* y, const uint8_t* cbcr) {
    const int cr = word_at(cbcr + 2);
    group_10::pack(at, word_at(y), word_at(cbcr), word_at(y + 2), cr, cr);
  }

  template <class V>
  MORVANE_INLINE static void vector(const group_10::place<uint8_t> at, const uint8_t* y, const uint8_t* cbcr) {
    group_10::pack<V>(at, V::load(y), V::load(cbcr));
  }

  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, uint8_t* p_dst_yuyv, const int no_pixels) {
    yuyv_matrox_10_kernel kernel;
    group_10::walk<V, 4, 4>(kernel, no_pixels, p_dst_yuyv, p_src_y, p_src_cbcr);
  }
};

template <bool src_align, bool dst_align>
inline void yuyv_matrox_10(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, uint8_t* p_dst_yuyv,
                           const int no_pixels) {
  backend::line_of<yuyv_matrox_10_kernel>()(p_src_y, p_src_cbcr, p_dst_yuyv, no_pixels);
}

}  // namespace P216

namespace pa16 {

// Luma and alpha side by side.
template <bool src_align, bool dst_align>
inline void ya(const uint16_t* p_src_y, const uint16_t* p_src_a, uint16_t* p_dst_ya, const int no_pixels) {
  u_v::uv<src_align, dst_align>(p_src_y, p_src_a, p_dst_ya, no_pixels);
}

// Pairs to two pixels Cb Cr Y A.
struct vuya_16_kernel {
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    for (int i = 0; i < 2; ++i) {
      store_word(dst + 8 * i, word_at(cbcr));
      store_word(dst + 8 * i + 2, word_at(cbcr + 2));
      store_word(dst + 8 * i + 4, word_at(y + 2 * i));
      store_word(dst + 8 * i + 6, word_at(a + 2 * i));
    }
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 4;

  // In double words, of which a pair has one of chroma and two of luma and alpha:
  //   C0 C1 C2 C3...  to  C0 C0 C1 C1...  with  YA0 YA1 YA2 YA3...  to  C0 YA0 C0 YA1 C1 YA2 C1 YA3...
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    const auto chroma = V::load(cbcr);
    const auto of_pixels = V::interleave2_dwords(chroma, chroma);
    const auto luma_alpha = V::interleave2_words(V::load(y), V::load(a));
    const auto first = V::interleave2_dwords(of_pixels.first, luma_alpha.first);
    const auto second = V::interleave2_dwords(of_pixels.second, luma_alpha.second);
    store_blocks<V>(dst, first.first, first.second, second.first, second.second);
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_a, uint8_t* p_dst_vuya,
                   const int no_pixels) {
    vuya_16_kernel kernel;
    walk<V, 4, 4, 4, 16>(kernel, begun_pairs(no_pixels), p_src_y, p_src_cbcr, p_src_a, p_dst_vuya);
  }
};

template <bool src_align, bool dst_align>
inline void vuya_16(const uint16_t* p_src_y, const uint16_t* p_src_cbcr, const uint16_t* p_src_a, uint16_t* p_dst_vuya,
                    const int no_pixels) {
  backend::line_of<vuya_16_kernel>()(
      reinterpret_cast<const uint8_t*>(p_src_y), reinterpret_cast<const uint8_t*>(p_src_cbcr),
      reinterpret_cast<const uint8_t*>(p_src_a), reinterpret_cast<uint8_t*>(p_dst_vuya), no_pixels);
}

// 1 / divisor as the sum of a float of seven bits and a float for what that leaves.
struct reciprocal {
  float leading, rest;
};

MORVANE_INLINE constexpr reciprocal reciprocal_of(const int divisor) {
  double scale = 1;
  while (scale < 64.0 * divisor) scale *= 2;
  const double leading = static_cast<int>(scale / divisor + 0.5) / scale;
  return {static_cast<float>(leading), static_cast<float>(1.0 / divisor - leading)};
}

// Pairs to two pixels Cr Cb Y A of floats. Quotients are rounded as divisions are: a product with the reciprocal alone
// would differ.
struct vuya_f32_kernel {
  static constexpr int bottom = 4096;
  static constexpr int luma_span = 56064;    // (235 - 16) * 256
  static constexpr int chroma_span = 57344;  // (240 - 16) * 256
  static constexpr int alpha_span = 65535;

  MORVANE_INLINE static float above_bottom(const uint8_t* word) {
    const int value = word_at(word);
    return static_cast<float>(value < bottom ? 0 : value - bottom);
  }
  MORVANE_INLINE static float at_most(const float value, const float limit) { return value < limit ? value : limit; }
  MORVANE_INLINE static float chroma(const uint8_t* word) {
    return at_most(above_bottom(word) / static_cast<float>(chroma_span) - 0.5F, 0.5F);
  }
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    const float cb = chroma(cbcr);
    const float cr = chroma(cbcr + 2);
    for (int i = 0; i < 2; ++i) {
      const float pixel[] = {cr, cb, at_most(above_bottom(y + 2 * i) / static_cast<float>(luma_span), 1.0F),
                             static_cast<float>(word_at(a + 2 * i)) / static_cast<float>(alpha_span)};
      __builtin_memcpy(dst + 16 * i, pixel, 16);
    }
  }

  template <class V>
  static constexpr size_t step = V::float_lanes / 2;

  // A division takes a processor three times as long as two products and their sum. The first product is exact, because
  // 16 bits times 7 fit a float, and the second is small beside it. That the sum is the quotient rounded once holds for
  // these divisors and every word, as a test of all of them shows.
  template <class V, int divisor>
  MORVANE_INLINE static auto quotient(const typename V::floats words) {
    constexpr reciprocal r = reciprocal_of(divisor);
    return V::add(V::multiply(words, r.leading), V::multiply(words, r.rest));
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    const auto chroma = quotient<V, chroma_span>(V::template load_words_above<bottom>(cbcr));
    const auto luma = quotient<V, luma_span>(V::template load_words_above<bottom>(y));
    const auto alpha = quotient<V, alpha_span>(V::template load_words_above<0>(a));
    V::store_vuya(dst, V::at_most(V::subtract(chroma, 0.5F), 0.5F), V::at_most(luma, 1.0F), alpha);
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_a, uint8_t* p_dst_vuya,
                   const int no_pixels) {
    vuya_f32_kernel kernel;
    walk<V, 4, 4, 4, 32>(kernel, begun_pairs(no_pixels), p_src_y, p_src_cbcr, p_src_a, p_dst_vuya);
  }
};

template <bool src_align, bool dst_align>
inline void vuya_f32(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_a, uint8_t* p_dst_vuya,
                     const int no_pixels) {
  backend::line_of<vuya_f32_kernel>()(p_src_y, p_src_cbcr, p_src_a, p_dst_vuya, no_pixels);
}

// Over black: each sample moves towards its black value by the weight (A + 1) / 65536. Luma is weighed by its own
// pixel's alpha, both chroma samples of a pair by that of the even pixel.
struct over_black {
  static constexpr int black_luma = 4096;
  static constexpr int black_chroma = 32768;

  // The product needs 32 bits and the sign of its own; its upper half is exact modulo 65536.
  template <int black>
  MORVANE_INLINE static uint16_t sample(const uint8_t* value, const uint8_t* alpha) {
    const uint32_t distance = static_cast<uint32_t>(word_at(value) - black);
    const uint32_t product = distance * word_at(alpha) + distance;
    return static_cast<uint16_t>((product >> 16) + black);
  }
  template <class V>
  MORVANE_INLINE static auto luma(const uint8_t* y, const typename V::block alpha) {
    return V::template scale_words<black_luma>(V::load(y), alpha);
  }
  template <class V>
  MORVANE_INLINE static auto chroma(const uint8_t* cbcr, const typename V::block alpha) {
    return V::template scale_words<black_chroma>(V::load(cbcr), V::repeat_even_words(alpha));
  }
};

struct p216_kernel {
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* alpha, uint8_t* dst_y,
                                  uint8_t* dst_cbcr) {
    for (int i = 0; i < 4; i += 2) {
      store_word(dst_y + i, over_black::sample<over_black::black_luma>(y + i, alpha + i));
      store_word(dst_cbcr + i, over_black::sample<over_black::black_chroma>(cbcr + i, alpha));
    }
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 4;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* y, const uint8_t* cbcr, const uint8_t* alpha, uint8_t* dst_y,
                                    uint8_t* dst_cbcr) {
    const auto a = V::load(alpha);
    V::store(dst_y, over_black::luma<V>(y, a));
    V::store(dst_cbcr, over_black::chroma<V>(cbcr, a));
  }
  template <class V>
  MORVANE_INLINE static void two_vectors(const uint8_t* y, const uint8_t* cbcr, const uint8_t* alpha, uint8_t* dst_y,
                                         uint8_t* dst_cbcr) {
    constexpr int next = V::block_bytes;
    const auto first = V::load(alpha);
    const auto second = V::load(alpha + next);
    store_blocks<V>(dst_y, over_black::luma<V>(y, first), over_black::luma<V>(y + next, second));
    store_blocks<V>(dst_cbcr, over_black::chroma<V>(cbcr, first), over_black::chroma<V>(cbcr + next, second));
  }

  // An odd line completes its last pair.
  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha, uint8_t* p_dst_y,
                   uint8_t* p_dst_cbcr, const int no_pixels) {
    p216_kernel kernel;
    walk<V, 4, 4, 4, 4, 4>(kernel, begun_pairs(no_pixels), p_src_y, p_src_cbcr, p_src_alpha, p_dst_y, p_dst_cbcr);
  }
};

template <bool src_align, bool dst_align>
inline void p216(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha, uint8_t* p_dst_y,
                 uint8_t* p_dst_cbcr, const int no_pixels) {
  backend::line_of<p216_kernel>()(p_src_y, p_src_cbcr, p_src_alpha, p_dst_y, p_dst_cbcr, no_pixels);
}

// Over black, and of the result the upper ten bits; but the lower two of Cr are those of Cb.
struct yuyv_matrox_10_kernel {
  MORVANE_INLINE static void rule(const group_10::place<uint8_t> at, const uint8_t* y, const uint8_t* cbcr,
                                  const uint8_t* alpha) {
    uint8_t luma[4];
    uint8_t chroma[4];
    p216_kernel::rule(y, cbcr, alpha, luma, chroma);
    const int cb = word_at(chroma);
    group_10::pack(at, word_at(luma), cb, word_at(luma + 2), word_at(chroma + 2), cb);
  }

  template <class V>
  MORVANE_INLINE static void vector(const group_10::place<uint8_t> at, const uint8_t* y, const uint8_t* cbcr,
                                    const uint8_t* alpha) {
    const auto a = V::load(alpha);
    group_10::pack<V, true>(at, over_black::luma<V>(y, a), over_black::chroma<V>(cbcr, a));
  }

  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha, uint8_t* p_dst_yuyv,
                   const int no_pixels) {
    yuyv_matrox_10_kernel kernel;
    group_10::walk<V, 4, 4, 4>(kernel, no_pixels, p_dst_yuyv, p_src_y, p_src_cbcr, p_src_alpha);
  }
};

template <bool src_align, bool dst_align>
inline void yuyv_matrox_10(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha,
                           uint8_t* p_dst_yuyv, const int no_pixels) {
  backend::line_of<yuyv_matrox_10_kernel>()(p_src_y, p_src_cbcr, p_src_alpha, p_dst_yuyv, no_pixels);
}

// The upper ten bits of luma, chroma and alpha to a double word, luma lowest. As two words:
//   lower   C C C C C C Y Y Y Y Y Y Y Y Y Y     upper   0 0 A A A A A A A A A A C C C C
struct yua_yva_matrox_10_kernel {
  MORVANE_INLINE static void rule(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    const int c = word_at(cbcr);
    store_word(dst, word_at(y) >> 6 | (c << 4 & 0xfc00));
    store_word(dst + 2, c >> 12 | (word_at(a) >> 2 & 0x3ff0));
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* y, const uint8_t* cbcr, const uint8_t* a, uint8_t* dst) {
    const auto c = V::load(cbcr);
    const auto lower = V::or_blocks(V::template shift_right_words<6>(V::load(y)),
                                    V::and_blocks(V::template shift_left_words<4>(c), V::repeat(0xfc00)));
    const auto upper = V::or_blocks(V::template shift_right_words<12>(c),
                                    V::and_blocks(V::template shift_right_words<2>(V::load(a)), V::repeat(0x3ff0)));
    const auto double_words = V::interleave2_words(lower, upper);
    store_blocks<V>(dst, double_words.first, double_words.second);
  }

  template <class V>
  static void line(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha,
                   uint8_t* p_dst_yua_yva, const int no_pixels) {
    yua_yva_matrox_10_kernel kernel;
    walk<V, 2, 2, 2, 4>(kernel, at_least_zero(no_pixels), p_src_y, p_src_cbcr, p_src_alpha, p_dst_yua_yva);
  }
};

template <bool src_align, bool dst_align>
inline void yua_yva_matrox_10(const uint8_t* p_src_y, const uint8_t* p_src_cbcr, const uint8_t* p_src_alpha,
                              uint8_t* p_dst_yua_yva, const int no_pixels) {
  backend::line_of<yua_yva_matrox_10_kernel>()(p_src_y, p_src_cbcr, p_src_alpha, p_dst_yua_yva, no_pixels);
}

}  // namespace pa16

namespace yuyv_matrox_10 {

// Ten bits to the upper ones of words; but of Y0 only the lower two bits.
struct p216_kernel {
  MORVANE_INLINE static void rule(const group_10::place<const uint8_t> at, uint8_t* y, uint8_t* cbcr) {
    const int bits = at.low[0];
    store_word(y, (bits & 3) << 6);
    store_word(cbcr, at.upper[1] << 8 | (bits >> 2 & 3) << 6);
    store_word(y + 2, at.upper[2] << 8 | (bits >> 4 & 3) << 6);
    store_word(cbcr + 2, at.upper[3] << 8 | (bits >> 6 & 3) << 6);
  }

  // The upper bytes in the double word of a pair: Cr Y1 Cb Y0.
  template <class V>
  MORVANE_INLINE static auto luma(const typename V::block upper, const typename V::two_blocks& bits) {
    return V::or_blocks(V::template shift_left_and_mask<8, 0xff000000>(upper), bits.first);
  }
  template <class V>
  MORVANE_INLINE static auto chroma(const typename V::block upper, const typename V::two_blocks& bits) {
    return V::or_blocks(V::and_blocks(upper, V::repeat(0xff00)), bits.second);
  }
  template <class V>
  MORVANE_INLINE static void vector(const group_10::place<const uint8_t> at, uint8_t* y, uint8_t* cbcr) {
    const auto upper = V::load(at.upper);
    const auto bits = V::load_pair_bits(at.low);
    V::store(y, luma<V>(upper, bits));
    V::store(cbcr, chroma<V>(upper, bits));
  }
  template <class V>
  MORVANE_INLINE static void two_vectors(const group_10::place<const uint8_t> at,
                                         const group_10::place<const uint8_t> next, uint8_t* y, uint8_t* cbcr) {
    const auto upper = V::load(at.upper);
    const auto bits = V::load_pair_bits(at.low);
    const auto next_upper = V::load(next.upper);
    const auto next_bits = V::load_pair_bits(next.low);
    store_blocks<V>(y, luma<V>(upper, bits), luma<V>(next_upper, next_bits));
    store_blocks<V>(cbcr, chroma<V>(upper, bits), chroma<V>(next_upper, next_bits));
  }

  template <class V>
  static void line(const uint8_t* p_src_yuyv, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
    p216_kernel kernel;
    group_10::walk<V, 4, 4>(kernel, no_pixels, p_src_yuyv, p_dst_y, p_dst_cbcr);
  }
};

template <bool src_align, bool dst_align>
inline void p216(const uint8_t* p_src_yuyv, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, const int no_pixels) {
  backend::line_of<p216_kernel>()(p_src_yuyv, p_dst_y, p_dst_cbcr, no_pixels);
}

// The upper bytes, luma and chroma exchanged.
struct uyvy_kernel {
  MORVANE_INLINE static void rule(const group_10::place<const uint8_t> at, uint8_t* dst) {
    for (int i = 0; i < 4; ++i) dst[i] = at.upper[i ^ 1];
  }

  template <class V>
  MORVANE_INLINE static void vector(const group_10::place<const uint8_t> at, uint8_t* dst) {
    V::store(dst, V::swap_bytes(V::load(at.upper)));
  }

  template <class V>
  static void line(const uint8_t* p_src_yuyv, uint8_t* p_dst_uyvy, const int no_pixels) {
    uyvy_kernel kernel;
    group_10::walk<V, 4>(kernel, no_pixels, p_src_yuyv, p_dst_uyvy);
  }
};

template <bool src_align, bool dst_align>
inline void uyvy(const uint8_t* p_src_yuyv, uint8_t* p_dst_uyvy, const int no_pixels) {
  backend::line_of<uyvy_kernel>()(p_src_yuyv, p_dst_uyvy, no_pixels);
}

}  // namespace yuyv_matrox_10

namespace yua_yva_matrox_10 {

// Ten bits to the upper ones of words; the two words of a pixel as pa16::yua_yva_matrox_10_kernel shows them.
struct pa16_kernel {
  static constexpr uint16_t ten_bits = 0xffc0;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* y, uint8_t* cbcr, uint8_t* a) {
    const int lower = word_at(src);
    const int upper = word_at(src + 2);
    store_word(y, lower << 6);
    store_word(cbcr, (lower >> 4 | upper << 12) & ten_bits);
    store_word(a, upper << 2 & ten_bits);
  }

  template <class V>
  static constexpr size_t step = V::block_bytes / 2;

  template <class V>
  MORVANE_INLINE static auto luma(const typename V::two_blocks& words) {
    return V::template shift_left_words<6>(words.first);
  }
  template <class V>
  MORVANE_INLINE static auto chroma(const typename V::two_blocks& words) {
    return V::and_blocks(
        V::or_blocks(V::template shift_right_words<4>(words.first), V::template shift_left_words<12>(words.second)),
        V::repeat(ten_bits));
  }
  template <class V>
  MORVANE_INLINE static auto alpha(const typename V::two_blocks& words) {
    return V::and_blocks(V::template shift_left_words<2>(words.second), V::repeat(ten_bits));
  }
  template <class V>
  MORVANE_INLINE static auto words_of(const uint8_t* src) {
    return V::deinterleave2_words(V::load(src), V::load(src + V::block_bytes));
  }
  template <class V>
  MORVANE_INLINE static void vector(const uint8_t* src, uint8_t* y, uint8_t* cbcr, uint8_t* a) {
    const auto words = words_of<V>(src);
    V::store(y, luma<V>(words));
    V::store(cbcr, chroma<V>(words));
    V::store(a, alpha<V>(words));
  }
  template <class V>
  MORVANE_INLINE static void two_vectors(const uint8_t* src, uint8_t* y, uint8_t* cbcr, uint8_t* a) {
    const auto first = words_of<V>(src);
    const auto second = words_of<V>(src + 2 * V::block_bytes);
    store_blocks<V>(y, luma<V>(first), luma<V>(second));
    store_blocks<V>(cbcr, chroma<V>(first), chroma<V>(second));
    store_blocks<V>(a, alpha<V>(first), alpha<V>(second));
  }

  template <class V>
  static void line(const uint8_t* p_src_yua_yva, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_a,
                   const int no_pixels) {
    pa16_kernel kernel;
    walk<V, 4, 2, 2, 2>(kernel, at_least_zero(no_pixels), p_src_yua_yva, p_dst_y, p_dst_cbcr, p_dst_a);
  }
};

template <bool src_align, bool dst_align>
inline void pa16(const uint8_t* p_src_yua_yva, uint8_t* p_dst_y, uint8_t* p_dst_cbcr, uint8_t* p_dst_a,
                 const int no_pixels) {
  backend::line_of<pa16_kernel>()(p_src_yua_yva, p_dst_y, p_dst_cbcr, p_dst_a, no_pixels);
}

}  // namespace yua_yva_matrox_10

namespace alpha_u16 {

// Alpha as luma, with neutral chroma.
struct yuyv_matrox_10_kernel {
  static constexpr uint16_t neutral = 32768;

  MORVANE_INLINE static void rule(const group_10::place<uint8_t> at, const uint8_t* alpha) {
    group_10::pack(at, word_at(alpha), neutral, word_at(alpha + 2), neutral, neutral);
  }

  template <class V>
  MORVANE_INLINE static void vector(const group_10::place<uint8_t> at, const uint8_t* alpha) {
    group_10::pack<V>(at, V::load(alpha), V::repeat(neutral));
  }

  template <class V>
  static void line(const uint8_t* p_src_alpha, uint8_t* p_dst_yuyv, const int no_pixels) {
    yuyv_matrox_10_kernel kernel;
    group_10::walk<V, 4>(kernel, no_pixels, p_dst_yuyv, p_src_alpha);
  }
};

template <bool src_align, bool dst_align>
inline void yuyv_matrox_10(const uint8_t* p_src_alpha, uint8_t* p_dst_yuyv, const int no_pixels) {
  backend::line_of<yuyv_matrox_10_kernel>()(p_src_alpha, p_dst_yuyv, no_pixels);
}

}  // namespace alpha_u16

}  // namespace Processing::Morvane::format_conversion::line
