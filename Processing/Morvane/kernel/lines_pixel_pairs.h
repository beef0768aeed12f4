// Colour of pairs of pixels: matrices between RGB of every pixel and chroma of every second one, which is doubled or
// halved on the way. Lines of luma and of RGB have two samples for each sample of chroma, and a margin as filters need.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "lines_chroma.h"
#include "lines_colour.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// Without vectors there are loops instead, over so many pairs, of which compilers make better use one after the other.
inline constexpr int pairs_of_loops = 256;

MORVANE_INLINE constexpr int pairs_from(const int first, const int count) {
  return count - first < pairs_of_loops ? count - first : pairs_of_loops;
}
template <class Whole, siting at>
struct line_pairs_to_rgb : line_kernel<line_pairs_to_rgb<Whole, at>, read_words<2>, read_line, read_line,
                                       written_words<2>, written_words<2>, written_words<2>>,
                           Whole::coefficients {
  static constexpr bool fills_registers = true;

  MORVANE_INLINE void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint16_t* r, uint16_t* g,
                           uint16_t* b) const {
    uint16_t u[2], v[2];
    double_samples<at>::rule_of_line(cb, u);
    double_samples<at>::rule_of_line(cr, v);
    this->rule_of_pixel(luma[0], u[0], v[0], r, g, b);
    this->rule_of_pixel(luma[1], u[1], v[1], r + 1, g + 1, b + 1);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) const {
    const auto u = double_samples<at>::template of_line<V>(cb);
    const auto v = double_samples<at>::template of_line<V>(cr);
    const auto first = this->template rgb_of<V>(V::load(luma), u.first, v.first);
    const auto second = this->template rgb_of<V>(V::load(blocks_on<V>(luma, 1)), u.second, v.second);
    return to_planes(in_a_row(first.r, second.r), in_a_row(first.g, second.g), in_a_row(first.b, second.b));
  }
  template <class V>
  MORVANE_INLINE void line(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint16_t* r, uint16_t* g,
                           uint16_t* b, const int count) const {
    const auto k = *this;
    if constexpr (V::lanes > 0) {
      walk<V>(k, at_least_zero(count), luma, cb, cr, r, g, b);
    } else {
      uint16_t u[2 * pairs_of_loops], v[2 * pairs_of_loops];
      Whole whole{};
      static_cast<typename Whole::coefficients&>(whole) = k;
      for (int i = 0; i < count; i += pairs_of_loops) {
        const int pairs = pairs_from(i, count);
        double_samples<at>().template line<V>(cb + i, cr + i, u, v, pairs);
        whole.template line<V>(luma + 2 * i, u, v, r + 2 * i, g + 2 * i, b + 2 * i, 2 * pairs);
      }
    }
  }
};

// RGB to luma and to the chroma of pairs at their first pixels, in the narrow form. The odd pixel before a pair counts
// too, which is read before a line as well.
struct rgb_line_pairs_to_ycbcr_narrow : line_kernel<rgb_line_pairs_to_ycbcr_narrow, read_words<2>, read_words<2>,
                                                    read_words<2>, written_words<2>, written_line, written_line> {
  static constexpr bool fills_registers = true;
  static constexpr bool looks_back = true;
  template <class V>
  requires(V::lanes > 0) using seen = chroma_of_odd_pixels<V, 1>;
  using halve = halve_samples<siting::left>;

  rgb_lines_to_ycbcr_narrow matrix;

  MORVANE_INLINE void rule(bool, const uint16_t* r, const uint16_t* g, const uint16_t* b, uint16_t* luma, uint16_t* cb,
                           uint16_t* cr) const {
    uint16_t y[3], u[3], v[3];
    for (int i = 0; i < 3; ++i) matrix.rule(r + i - 1, g + i - 1, b + i - 1, y + i, u + i, v + i);
    luma[0] = y[1];
    luma[1] = y[2];
    halve::rule_of_line(u + 1, cb);
    halve::rule_of_line(v + 1, cr);
  }
  template <class V>
  MORVANE_INLINE seen<V> seen_before(bool, const uint8_t* r, const uint8_t* g, const uint8_t* b) const {
    uint16_t y, cb, cr;
    matrix.rule(read_line::at(r, 0) - 1, read_line::at(g, 0) - 1, read_line::at(b, 0) - 1, &y, &cb, &cr);
    return {{V::repeat_dword(matrix.remembered(cb) | uint32_t{matrix.remembered(cr)} << 16)}};
  }
  // Pairs Cb Cr.
  template <class V>
  MORVANE_INLINE auto chroma(seen<V>& before, const typename V::block cb, const typename V::block cr) const {
    const auto halves = V::transpose2_words(cb, cr);
    return matrix.template filtered<V>(before.of[0], halves.first, halves.second);
  }
  template <class V>
  MORVANE_INLINE auto convert(seen<V>& before, const uint8_t* r, const uint8_t* g, const uint8_t* b) const {
    const auto one = matrix.template for_pairs<V>({V::load(r), V::load(g), V::load(b)});
    const auto other = matrix.template for_pairs<V>(
        {V::load(blocks_on<V>(r, 1)), V::load(blocks_on<V>(g, 1)), V::load(blocks_on<V>(b, 1))});
    const auto first = chroma<V>(before, one.cb, one.cr);
    const auto second = chroma<V>(before, other.cb, other.cr);
    const auto halved = V::deinterleave2_words(first, second);
    return to_planes(in_a_row(one.y, other.y), halved.first, halved.second);
  }
  template <class V>
  MORVANE_INLINE void line(const uint16_t* r, const uint16_t* g, const uint16_t* b, uint16_t* luma, uint16_t* cb,
                           uint16_t* cr, const int count) const {
    const auto k = *this;
    if constexpr (V::lanes > 0) {
      walk<V>(k, at_least_zero(count), r, g, b, luma, cb, cr);
    } else {
      uint16_t none, u[2 * pairs_of_loops + 1], v[2 * pairs_of_loops + 1];
      k.matrix.rule(r - 1, g - 1, b - 1, &none, u, v);
      for (int i = 0; i < count; i += pairs_of_loops) {
        const int samples = 2 * pairs_from(i, count);
        k.matrix.line<V>(r + 2 * i, g + 2 * i, b + 2 * i, luma + 2 * i, u + 1, v + 1, samples);
        halve().line<V>(u + 1, v + 1, cb + i, cr + i, samples / 2);
        u[0] = u[samples];
        v[0] = v[samples];
      }
    }
  }
};

using lines_pixel_pairs_kernels =
    kernel_list<line_pairs_to_rgb<ycbcr_lines_to_rgb_narrow, siting::left>,
                line_pairs_to_rgb<ycbcr_lines_to_rgb_narrow, siting::center>,
                line_pairs_to_rgb<ycbcr_lines_to_rgb_wide, siting::left>,
                line_pairs_to_rgb<ycbcr_lines_to_rgb_wide, siting::center>, rgb_line_pairs_to_ycbcr_narrow>;

}  // namespace Processing::Morvane::format_conversion::kernel
