// Pairs of pixels of YCbCr to RGB, and luminance to RGB. Both pixels of a pair take the pair's chroma.
//
// A kernel is one body between a reader, which knows where pairs come from, and a writer, which knows where pixels go.
#pragma once

#include <cstdint>

#include "../vector/opaque.h"
#include "list.h"
#include "matrix.h"
#include "samples.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// A pair of pixels with its alphas.
struct pair_of_samples {
  int cb, y0, cr, y1;
  uint8_t alpha0 = 255;
  uint8_t alpha1 = 255;
};

// Readers: one pair at given places of their planes, and a vector of pairs with its alphas.

struct read_uyvy {
  using planes = plane_list<from<4>>;

  MORVANE_INLINE static pair_of_samples pair(const uint8_t* uyvy) { return {uyvy[0], uyvy[1], uyvy[2], uyvy[3]}; }
  template <class V>
  MORVANE_INLINE static auto pairs(const uint8_t* uyvy) {
    return V::load_uyvy(uyvy);
  }
  template <class V>
  MORVANE_INLINE static auto alpha(const uint8_t*) {
    return vector::opaque();
  }
};

struct read_uyvy_a {
  using planes = plane_list<from<4>, from<2>>;

  MORVANE_INLINE static pair_of_samples pair(const uint8_t* uyvy, const uint8_t* alpha) {
    return {uyvy[0], uyvy[1], uyvy[2], uyvy[3], alpha[0], alpha[1]};
  }
  template <class V>
  MORVANE_INLINE static auto pairs(const uint8_t* uyvy, const uint8_t*) {
    return V::load_uyvy(uyvy);
  }
  template <class V>
  MORVANE_INLINE static auto alpha(const uint8_t*, const uint8_t* plane) {
    return V::load_pair_bytes(plane);
  }
};

// The upper bytes of 16-bit samples.
struct read_upper_bytes_of_p216 {
  using planes = plane_list<from<4>, from<4>>;

  MORVANE_INLINE static pair_of_samples pair(const uint8_t* y, const uint8_t* cbcr) {
    return {cbcr[1], y[1], cbcr[3], y[3]};
  }
  template <class V>
  MORVANE_INLINE static auto pairs(const uint8_t* y, const uint8_t* cbcr) {
    return V::load_upper_bytes(y, cbcr);
  }
  template <class V>
  MORVANE_INLINE static auto alpha(const uint8_t*, const uint8_t*) {
    return vector::opaque();
  }
};

struct rgb_pixel {
  uint8_t r, g, b, alpha;
};

// Writers: two pixels to given places of their planes, and a vector of pixels as it is stored.

template <byte_order order>
struct write_four_bytes {
  using planes = plane_list<to<8>>;

  MORVANE_INLINE static void pixel(uint8_t* dst, const rgb_pixel& p) {
    dst[0] = order == byte_order::rgba ? p.r : p.b;
    dst[1] = p.g;
    dst[2] = order == byte_order::rgba ? p.b : p.r;
    dst[3] = p.alpha;
  }
  MORVANE_INLINE static void pair(const rgb_pixel& even, const rgb_pixel& odd, uint8_t* dst) {
    pixel(dst, even);
    pixel(dst + 4, odd);
  }
  template <class V, class R, class G, class B, class Alpha>
  MORVANE_INLINE static auto pixels(const R& r, const G& g, const B& b, const Alpha& alpha) {
    if constexpr (order == byte_order::rgba)
      return V::interleave4(r, g, b, alpha);
    else
      return V::interleave4(b, g, r, alpha);
  }
};

struct write_bgr {
  using planes = plane_list<to<6>>;

  MORVANE_INLINE static void pixel(uint8_t* dst, const rgb_pixel& p) {
    dst[0] = p.b;
    dst[1] = p.g;
    dst[2] = p.r;
  }
  MORVANE_INLINE static void pair(const rgb_pixel& even, const rgb_pixel& odd, uint8_t* dst) {
    pixel(dst, even);
    pixel(dst + 3, odd);
  }
  template <class V, class R, class G, class B>
  MORVANE_INLINE static auto pixels(const R& r, const G& g, const B& b, vector::opaque) {
    return V::interleave3(b, g, r);
  }
};

struct write_r_g_b {
  using planes = plane_list<to<2>, to<2>, to<2>>;

  MORVANE_INLINE static void pair(const rgb_pixel& even, const rgb_pixel& odd, uint8_t* r, uint8_t* g, uint8_t* b) {
    r[0] = even.r;
    r[1] = odd.r;
    g[0] = even.g;
    g[1] = odd.g;
    b[0] = even.b;
    b[1] = odd.b;
  }
  template <class V, class R, class G, class B>
  MORVANE_INLINE static auto pixels(const R& r, const G& g, const B& b, vector::opaque) {
    return to_planes(r, g, b);
  }
};

template <class Colors, class Reader, class Writer, last_unit last, class Sources = typename Reader::planes,
          class Destinations = typename Writer::planes>
struct pairs_to_rgb;

template <class Colors, class Reader, class Writer, last_unit last, class... Source, class... Destination>
struct pairs_to_rgb<Colors, Reader, Writer, last, plane_list<Source...>, plane_list<Destination...>>
    : units<2, last, Source..., Destination...> {
  static constexpr bool fills_registers = true;
  static constexpr int bits = Colors::bits;

  // One component of a pixel, as V::clamped_sum has it for vectors.
  template <ycbcr_weights w>
  MORVANE_INLINE static uint8_t component(const int y, const int cb, const int cr) {
    constexpr ycbcr_weights k = w;
    return clamp_to_byte((k.y * y + k.cb * cb + k.cr * cr + k.constant) >> bits);
  }
  MORVANE_INLINE static rgb_pixel pixel(const int y, const int cb, const int cr, const uint8_t alpha) {
    return {component<Colors::r>(y, cb, cr), component<Colors::g>(y, cb, cr), component<Colors::b>(y, cb, cr), alpha};
  }
  MORVANE_INLINE static void rule(const typename Source::pointer... sources,
                                  const typename Destination::pointer... destinations) {
    const pair_of_samples p = Reader::pair(sources...);
    Writer::pair(pixel(p.y0, p.cb, p.cr, p.alpha0), pixel(p.y1, p.cb, p.cr, p.alpha1), destinations...);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const typename Source::pointer... sources) {
    const auto pairs = Reader::template pairs<V>(sources...);
    return Writer::template pixels<V>(
        V::template clamped_sum<Colors::r, bits>(pairs), V::template clamped_sum<Colors::g, bits>(pairs),
        V::template clamped_sum<Colors::b, bits>(pairs), Reader::template alpha<V>(sources...));
  }
};

// An odd line completes its last pair of three-byte pixels; where pixels have four bytes or a plane for each component
// it leaves the last one out.
template <matrix of>
using uyvy_to_bgr = pairs_to_rgb<ycbcr_to_rgb<of>, read_uyvy, write_bgr, last_unit::begun>;
template <matrix of, byte_order order>
using uyvy_to_rgb = pairs_to_rgb<ycbcr_to_rgb<of>, read_uyvy, write_four_bytes<order>, last_unit::whole>;
// With the alpha of their plane, not premultiplied.
template <matrix of, byte_order order>
using uyvy_a_to_rgb = pairs_to_rgb<ycbcr_to_rgb_coarse<of>, read_uyvy_a, write_four_bytes<order>, last_unit::whole>;
template <matrix of>
using uyvy_to_r_g_b = pairs_to_rgb<ycbcr_to_rgb_coarse<of>, read_uyvy, write_r_g_b, last_unit::whole>;
using p216_to_rgbx_2020 =
    pairs_to_rgb<ycbcr_to_rgb_2020, read_upper_bytes_of_p216, write_four_bytes<byte_order::rgba>, last_unit::whole>;

// Luminance to grey, opaque pixels.
struct luminance_to_bgra : each_pixel<from<1>, to<4>> {
  static constexpr bool bound_by_memory = true;

  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t luminance = src[0];
    dst[0] = dst[1] = dst[2] = luminance;
    dst[3] = 255;
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return V::opaque_grey(V::load_bytes(src));
  }
};

template <matrix of>
using kernels_to_rgb_of =
    kernel_list<uyvy_to_bgr<of>, uyvy_to_rgb<of, byte_order::bgra>, uyvy_to_rgb<of, byte_order::rgba>,
                uyvy_a_to_rgb<of, byte_order::bgra>, uyvy_a_to_rgb<of, byte_order::rgba>, uyvy_to_r_g_b<of>>;

using video_to_rgb_kernels = joined_lists<kernels_to_rgb_of<matrix::bt601>, kernels_to_rgb_of<matrix::bt709>,
                                          kernel_list<p216_to_rgbx_2020, luminance_to_bgra>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
