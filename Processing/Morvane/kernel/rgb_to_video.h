// RGB to pairs of uyvy, with and without a plane of alpha. U comes from the even pixel of a pair and V from the odd
// one.
#pragma once

#include <cstdint>

#include "list.h"
#include "matrix.h"
#include "opacity.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// What happens to the alpha of 32-bit RGB.
enum class background : bool { none, black };

// Pixels of four bytes. The last pixel of an odd line is neither read nor written.
//
// Over black every sum is first scaled by alpha / 256, the weight of green in luma is 80, and both chroma bytes are
// blue differences.
template <background over, matrix of, byte_order order>
requires(of == matrix::bt709 || over == background::none) struct rgb_to_uyvy : each_whole_pair<from<8>, to<4>> {
  static constexpr bool in_order = true;
  static constexpr bool composites = over == background::black;
  using colors = rgb_to_ycbcr<of>;

  static constexpr weights luma = in_memory_order<order>(composites ? rgb_weights{23, 80, 8} : colors::y);
  static constexpr weights u = in_memory_order<order>(colors::cb);
  static constexpr weights v = in_memory_order<order>(composites ? colors::cb : colors::cr);

  template <weights w>
  MORVANE_INLINE static int sum(const uint8_t* pixel) {
    const int s = weighted_sum<w>(pixel);
    return composites ? (s * pixel[3]) >> 8 : s;
  }
  MORVANE_INLINE static uint8_t luma_byte(const int sum) { return static_cast<uint8_t>((sum + 16 * 128) >> 7); }
  MORVANE_INLINE static uint8_t chroma_byte(const int sum) { return static_cast<uint8_t>((sum + 128 * 256) >> 8); }
  // All of the pair is read before any of it is written, which shows where the planes overlap.
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t pair[] = {chroma_byte(sum<u>(src)), luma_byte(sum<luma>(src)), chroma_byte(sum<v>(src + 4)),
                            luma_byte(sum<luma>(src + 4))};
    for (int i = 0; i < 4; ++i) dst[i] = pair[i];
  }

  template <class V>
  MORVANE_INLINE static auto load(const uint8_t* src) {
    return V::load4_weighable(src);
  }
  // The offsets are whole multiples of the divisors, so they may as well be added to the shifted sums.
  template <class V>
  MORVANE_INLINE static auto pairs_of(const typename V::weighable& pixels) {
    return V::template pairs_of_sums<u, v, luma, 7, composites>(pixels);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    return pairs_of<V>(load<V>(src));
  }
};

// As the kernel `Pairs` converts pixels of four bytes to pairs of uyvy, with the fourth bytes in a plane of alpha.
template <class Pairs, alpha_report report>
struct with_plane_of_alpha : Pairs {
  using planes = plane_list<from<8>, to<4>, to<2>>;
  using answer = bool;
  template <class V>
  using seen = seen_alpha<V, report>;

  template <class Seen>
  MORVANE_INLINE static void rule(Seen& alphas, const uint8_t* src, uint8_t* dst, uint8_t* alpha) {
    const uint8_t alpha0 = src[3];
    const uint8_t alpha1 = src[7];
    Pairs::rule(src, dst);
    alpha[0] = alpha0;
    alpha[1] = alpha1;
    alphas.see(static_cast<uint8_t>(alpha0 & alpha1));
  }
  template <class V>
  MORVANE_INLINE static auto convert(seen<V>& alphas, const uint8_t* src) {
    const auto pixels = Pairs::template load<V>(src);
    const auto alpha = V::fourth(pixels);
    alphas.see(alpha);
    return to_planes(Pairs::template pairs_of<V>(pixels), alpha);
  }
};

template <matrix of, byte_order order, alpha_report report>
using rgb_to_uyvy_a = with_plane_of_alpha<rgb_to_uyvy<background::none, of, order>, report>;

// Pixels of three bytes. Luma has 8 fractional bits, finer than that of 32-bit RGB. An odd line completes its last
// pair.
struct bgr_to_uyvy : each_begun_pair<from<6>, to<4>> {
  using colors = rgb_to_ycbcr<matrix::bt709>;

  static constexpr weights luma = {16, 157, 47, 0};
  static constexpr weights u = in_memory_order<byte_order::bgra>(colors::cb);
  static constexpr weights v = in_memory_order<byte_order::bgra>(colors::cr);

  template <weights w, int offset>
  MORVANE_INLINE static uint8_t byte(const uint8_t* pixel) {
    return static_cast<uint8_t>((weighted_sum<w>(pixel) >> 8) + offset);
  }
  MORVANE_INLINE static void rule(const uint8_t* src, uint8_t* dst) {
    const uint8_t pair[] = {byte<u, 128>(src), byte<luma, 16>(src), byte<v, 128>(src + 3), byte<luma, 16>(src + 3)};
    for (int i = 0; i < 4; ++i) dst[i] = pair[i];
  }

  // A weight of 157 is more than a signed byte holds; green stands twice among the bytes, so it is split in two.
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    constexpr weights luma_with_green_twice = {luma.first, luma.second - luma.second / 2, luma.third, luma.second / 2};
    return V::template pairs_of_sums<u, v, luma_with_green_twice, 8, false>(V::load3_weighable(src));
  }
};

template <matrix of, byte_order order>
using direct_rgb_to_uyvy = rgb_to_uyvy<background::none, of, order>;
template <byte_order order>
using rgb_over_black_to_uyvy = rgb_to_uyvy<background::black, matrix::bt709, order>;

template <byte_order order>
using rgb_to_video_kernels_of = kernel_list<
    rgb_over_black_to_uyvy<order>, direct_rgb_to_uyvy<matrix::bt601, order>, direct_rgb_to_uyvy<matrix::bt709, order>,
    rgb_to_uyvy_a<matrix::bt601, order, alpha_report::none>, rgb_to_uyvy_a<matrix::bt601, order, alpha_report::given>,
    rgb_to_uyvy_a<matrix::bt709, order, alpha_report::none>, rgb_to_uyvy_a<matrix::bt709, order, alpha_report::given>>;

using rgb_to_video_kernels = joined_lists<rgb_to_video_kernels_of<byte_order::bgra>,
                                          rgb_to_video_kernels_of<byte_order::rgba>, kernel_list<bgr_to_uyvy>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
