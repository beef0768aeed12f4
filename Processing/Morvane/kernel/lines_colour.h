// Colour of working samples: matrices and ranges with coefficients that are known when a picture is converted, and
// compositing. Coefficients are members of the kernels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "lines_chroma.h"
#include "list.h"
#include "samples.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

template <class V>
MORVANE_INLINE auto repeat_signed(const int value) {
  return V::repeat(static_cast<uint16_t>(value));
}

// Rounded products with one factor.
template <class V>
MORVANE_INLINE auto times(const typename V::block v, const int factor) {
  return V::rounded_product(v, repeat_signed<V>(factor));
}

template <class V>
struct rgb_blocks {
  typename V::block r, g, b;
};

// YCbCr to RGB with coefficients times 8192. The narrow form rounds every product and suffices for ten bits; its
// samples are those of 16 bits, in steps of four.
struct narrow_coefficients_to_rgb {
  using coefficients = narrow_coefficients_to_rgb;
  int16_t y, r_cr, g_cb, g_cr, b_cb;
  int16_t black;  // of luma, weighted

  // Sums lie between -24576 and 40959, so that they fit unsigned words when they are lifted.
  static constexpr uint16_t lift = 24576;

  MORVANE_INLINE static uint16_t clamped(const int lifted) {
    const auto sum = static_cast<uint16_t>(lifted);
    const int positive = sum > lift ? sum - lift : 0;
    return static_cast<uint16_t>(positive > 16383 ? 65535 : positive << 2);
  }
  // Doubling stops at 65535, twice.
  template <class V>
  MORVANE_INLINE static auto clamped(const typename V::block lifted) {
    const auto positive = V::subtract_words_to_zero(lifted, V::repeat(lift));
    const auto doubled = V::add_words_to_limit(positive, positive);
    return V::add_words_to_limit(doubled, doubled);
  }
  MORVANE_INLINE int lifted_grey(const uint16_t luma) const {
    return black + lift + rounded_product(around_middle(luma), y);
  }
  template <class V>
  MORVANE_INLINE auto lifted_grey(const typename V::block luma) const {
    return V::add_words(repeat_signed<V>(black + lift), times<V>(around_middle<V>(luma), y));
  }
  MORVANE_INLINE void rule_of_pixel(const uint16_t luma, const uint16_t cb, const uint16_t cr, uint16_t* r, uint16_t* g,
                                    uint16_t* b) const {
    const int16_t u = around_middle(cb);
    const int16_t v = around_middle(cr);
    const int grey = lifted_grey(luma);
    *r = clamped(grey + rounded_product(v, r_cr));
    *g = clamped(grey - rounded_product(u, g_cb) - rounded_product(v, g_cr));
    *b = clamped(grey + rounded_product(u, b_cb));
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> lifted_sums(const typename V::block luma, const typename V::block cb,
                                           const typename V::block cr) const {
    const auto u = around_middle<V>(cb);
    const auto v = around_middle<V>(cr);
    const auto grey = lifted_grey<V>(luma);
    return {V::add_words(grey, times<V>(v, r_cr)),
            V::subtract_words(V::subtract_words(grey, times<V>(u, g_cb)), times<V>(v, g_cr)),
            V::add_words(grey, times<V>(u, b_cb))};
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> rgb_of(const typename V::block luma, const typename V::block cb,
                                      const typename V::block cr) const {
    const auto sums = lifted_sums<V>(luma, cb, cr);
    return {clamped<V>(sums.r), clamped<V>(sums.g), clamped<V>(sums.b)};
  }
};

template <class Coefficients>
struct ycbcr_lines_to_rgb : line_kernel<ycbcr_lines_to_rgb<Coefficients>, read_line, read_line, read_line, written_line,
                                        written_line, written_line>,
                            Coefficients {
  MORVANE_INLINE void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint16_t* r, uint16_t* g,
                           uint16_t* b) const {
    this->rule_of_pixel(*luma, *cb, *cr, r, g, b);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) const {
    const auto rgb = this->template rgb_of<V>(V::load(luma), V::load(cb), V::load(cr));
    return to_planes(rgb.r, rgb.g, rgb.b);
  }
};
using ycbcr_lines_to_rgb_narrow = ycbcr_lines_to_rgb<narrow_coefficients_to_rgb>;

// Red, green and blue alike, of luma without chroma.
struct luma_line_to_grey_narrow : line_kernel<luma_line_to_grey_narrow, read_line, written_line>,
                                  narrow_coefficients_to_rgb {
  MORVANE_INLINE void rule(const uint16_t* luma, uint16_t* grey) const { *grey = clamped(lifted_grey(*luma)); }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* luma) const {
    return clamped<V>(lifted_grey<V>(V::load(luma)));
  }
};

// (sum >> bits) + 32768, clamped.
template <class V, int bits>
MORVANE_INLINE auto clamped_words(const typename V::word_sums& sums) {
  return around_middle<V>(V::template signed_words<bits>(sums));
}

// A constant, and the products of words with weights.
template <class V>
MORVANE_INLINE auto weighed(const int constant, const typename V::block x, const int a, const typename V::block y,
                            const int b) {
  return V::add_products(V::repeat_sum(constant), x, static_cast<int16_t>(a), y, static_cast<int16_t>(b));
}
template <class V>
MORVANE_INLINE auto weighed(const int constant, const typename V::block x, const int a, const typename V::block y,
                            const int b, const typename V::block z, const int c) {
  return V::add_products(weighed<V>(constant, x, a, y, b), z, static_cast<int16_t>(c), V::repeat(0), int16_t{0});
}

struct wide_coefficients_to_rgb {
  using coefficients = wide_coefficients_to_rgb;
  int32_t y, r_cr, g_cb, g_cr, b_cb;
  int32_t black;  // where luma begins

  MORVANE_INLINE int scaled_grey(const uint16_t luma) const { return y * (luma - black) + 4096; }
  // What is left of it when luma and the result are taken around 32768.
  MORVANE_INLINE int scaled_middle() const { return y * (32768 - black) + 4096 - (32768 << 13); }

  MORVANE_INLINE void rule_of_pixel(const uint16_t luma, const uint16_t cb, const uint16_t cr, uint16_t* r, uint16_t* g,
                                    uint16_t* b) const {
    const int grey = scaled_grey(luma);
    const int u = cb - 32768;
    const int v = cr - 32768;
    *r = clamp_to_word((grey + r_cr * v) >> 13);
    *g = clamp_to_word((grey - g_cb * u - g_cr * v) >> 13);
    *b = clamp_to_word((grey + b_cb * u) >> 13);
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> rgb_of(const typename V::block luma, const typename V::block cb,
                                      const typename V::block cr) const {
    const auto l = around_middle<V>(luma);
    const auto u = around_middle<V>(cb);
    const auto v = around_middle<V>(cr);
    const int middle = scaled_middle();
    return {clamped_words<V, 13>(weighed<V>(middle, l, y, v, r_cr)),
            clamped_words<V, 13>(weighed<V>(middle, l, y, u, -g_cb, v, -g_cr)),
            clamped_words<V, 13>(weighed<V>(middle, l, y, u, b_cb))};
  }
};

using ycbcr_lines_to_rgb_wide = ycbcr_lines_to_rgb<wide_coefficients_to_rgb>;

// A kernel of lines to RGB, of pairs of pixels with chroma of every second one, which is doubled on the way. Lines of
// luma and of RGB have two samples for each sample of chroma.
template <class Whole, siting at>
struct line_pairs_to_rgb : line_kernel<line_pairs_to_rgb<Whole, at>, read_words<2>, read_line, read_line,
                                       written_words<2>, written_words<2>, written_words<2>>,
                           Whole::coefficients {
  static constexpr bool fills_registers = true;

  MORVANE_INLINE void rule(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint16_t* r, uint16_t* g,
                           uint16_t* b) const {
    uint16_t u[2], v[2];
    double_samples<at>::rule(cb, u);
    double_samples<at>::rule(cr, v);
    this->rule_of_pixel(luma[0], u[0], v[0], r, g, b);
    this->rule_of_pixel(luma[1], u[1], v[1], r + 1, g + 1, b + 1);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr) const {
    const auto u = double_samples<at>::template convert<V>(cb);
    const auto v = double_samples<at>::template convert<V>(cr);
    const auto first = this->template rgb_of<V>(V::load(luma), u.first, v.first);
    const auto second = this->template rgb_of<V>(V::load(blocks_on<V>(luma, 1)), u.second, v.second);
    return to_planes(in_a_row(first.r, second.r), in_a_row(first.g, second.g), in_a_row(first.b, second.b));
  }
  // Of the loops that there are without vectors, compilers make better use one after the other.
  template <class V>
  MORVANE_INLINE void line(const uint16_t* luma, const uint16_t* cb, const uint16_t* cr, uint16_t* r, uint16_t* g,
                           uint16_t* b, const int count) const {
    if constexpr (V::lanes > 0) {
      walk<V>(*this, at_least_zero(count), luma, cb, cr, r, g, b);
    } else {
      constexpr int most = 64;
      uint16_t u[2 * most], v[2 * most];
      Whole whole{};
      static_cast<typename Whole::coefficients&>(whole) = *this;
      for (int i = 0; i < count; i += most) {
        const int pairs = count - i < most ? count - i : most;
        double_samples<at>().template line<V>(cb + i, u, pairs);
        double_samples<at>().template line<V>(cr + i, v, pairs);
        whole.template line<V>(luma + 2 * i, u, v, r + 2 * i, g + 2 * i, b + 2 * i, 2 * pairs);
      }
    }
  }
};

struct luma_line_to_grey_wide : line_kernel<luma_line_to_grey_wide, read_line, written_line>, wide_coefficients_to_rgb {
  MORVANE_INLINE void rule(const uint16_t* luma, uint16_t* grey) const {
    *grey = clamp_to_word(scaled_grey(*luma) >> 13);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* luma) const {
    return clamped_words<V, 13>(weighed<V>(scaled_middle(), around_middle<V>(V::load(luma)), y, V::repeat(0), 0));
  }
};

// The coefficients of RGB to YCbCr, times 32768. Those of Cb for R and G, and of Cr for G and B, are subtracted.
template <class Coefficient>
struct rgb_coefficients {
  Coefficient y_r, y_g, y_b, cb_r, cb_g, cb_b, cr_r, cr_g, cr_b;
  int32_t black;  // where luma begins
};

// Spans of ten bits leave room for what rounding adds, so nothing needs clamping.
struct narrow_from_rgb {
  rgb_coefficients<int16_t> of;

  // Components are halved before.
  MORVANE_INLINE static int16_t halved(const uint16_t v) { return static_cast<int16_t>(v >> 1); }
  template <class V>
  MORVANE_INLINE static auto halved(const uint8_t* p) {
    return V::template shift_right_words<1>(V::load(p));
  }
  MORVANE_INLINE static int sum(const int16_t x, const int a, const int16_t y, const int b, const int16_t z,
                                const int c) {
    return rounded_product(x, static_cast<int16_t>(a)) + rounded_product(y, static_cast<int16_t>(b)) +
           rounded_product(z, static_cast<int16_t>(c));
  }
  template <class V>
  MORVANE_INLINE static auto doubled(const int bottom, const typename V::block v) {
    return V::add_words(repeat_signed<V>(bottom), V::add_words(v, v));
  }
  template <class V>
  MORVANE_INLINE auto half_of_luma(const typename V::block r, const typename V::block g,
                                   const typename V::block b) const {
    return V::add_words(V::add_words(times<V>(r, of.y_r), times<V>(g, of.y_g)), times<V>(b, of.y_b));
  }
  template <class V>
  MORVANE_INLINE auto luma_of(const typename V::block r, const typename V::block g, const typename V::block b) const {
    return doubled<V>(of.black, half_of_luma<V>(r, g, b));
  }
  // Of the component with the positive weight, and of the two that are subtracted.
  template <class V>
  MORVANE_INLINE static auto half_of_chroma(const typename V::block x, const int a, const typename V::block y,
                                            const int b, const typename V::block z, const int c) {
    return V::subtract_words(V::subtract_words(times<V>(x, a), times<V>(y, b)), times<V>(z, c));
  }
  template <class V>
  MORVANE_INLINE static auto chroma_of(const typename V::block x, const int a, const typename V::block y, const int b,
                                       const typename V::block z, const int c) {
    return doubled<V>(32768, half_of_chroma<V>(x, a, y, b, z, c));
  }
};

struct rgb_lines_to_ycbcr_narrow
    : line_kernel<rgb_lines_to_ycbcr_narrow, read_line, read_line, read_line, written_line, written_line, written_line>,
      narrow_from_rgb {
  MORVANE_INLINE void rule(const uint16_t* r, const uint16_t* g, const uint16_t* b, uint16_t* luma, uint16_t* cb,
                           uint16_t* cr) const {
    const int16_t red = halved(*r), green = halved(*g), blue = halved(*b);
    *luma = static_cast<uint16_t>(of.black + 2 * sum(red, of.y_r, green, of.y_g, blue, of.y_b));
    *cb = difference(blue, of.cb_b, green, of.cb_g, red, of.cb_r);
    *cr = difference(red, of.cr_r, green, of.cr_g, blue, of.cr_b);
  }
  MORVANE_INLINE static uint16_t difference(const int16_t x, const int16_t a, const int16_t y, const int16_t b,
                                            const int16_t z, const int16_t c) {
    const int half = rounded_product(x, a) - rounded_product(y, b) - rounded_product(z, c);
    return static_cast<uint16_t>(32768 + 2 * half);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* r, const uint8_t* g, const uint8_t* b) const {
    const auto red = halved<V>(r);
    const auto green = halved<V>(g);
    const auto blue = halved<V>(b);
    return to_planes(luma_of<V>(red, green, blue), chroma_of<V>(blue, of.cb_b, green, of.cb_g, red, of.cb_r),
                     chroma_of<V>(red, of.cr_r, green, of.cr_g, blue, of.cr_b));
  }
};

struct rgb_lines_to_luma_narrow : line_kernel<rgb_lines_to_luma_narrow, read_line, read_line, read_line, written_line>,
                                  narrow_from_rgb {
  MORVANE_INLINE void rule(const uint16_t* r, const uint16_t* g, const uint16_t* b, uint16_t* luma) const {
    *luma = static_cast<uint16_t>(of.black + 2 * sum(halved(*r), of.y_r, halved(*g), of.y_g, halved(*b), of.y_b));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* r, const uint8_t* g, const uint8_t* b) const {
    return luma_of<V>(halved<V>(r), halved<V>(g), halved<V>(b));
  }
};

// (a X + b Y + c Z + 16384) >> 15 from a bottom on, of words around 32768.
template <class V>
MORVANE_INLINE auto weighed_sum(const typename V::block x, const int a, const typename V::block y, const int b,
                                const typename V::block z, const int c, const int bottom) {
  const int constant = 32768 * (a + b + c + bottom - 32768) + 16384;
  return clamped_words<V, 15>(weighed<V>(constant, x, a, y, b, z, c));
}

struct rgb_lines_to_ycbcr_wide
    : line_kernel<rgb_lines_to_ycbcr_wide, read_line, read_line, read_line, written_line, written_line, written_line> {
  rgb_coefficients<int32_t> of;

  MORVANE_INLINE void rule(const uint16_t* r, const uint16_t* g, const uint16_t* b, uint16_t* luma, uint16_t* cb,
                           uint16_t* cr) const {
    *luma = clamp_to_word(of.black + ((of.y_r * *r + of.y_g * *g + of.y_b * *b + 16384) >> 15));
    *cb = clamp_to_word(32768 + ((of.cb_b * *b - of.cb_g * *g - of.cb_r * *r + 16384) >> 15));
    *cr = clamp_to_word(32768 + ((of.cr_r * *r - of.cr_g * *g - of.cr_b * *b + 16384) >> 15));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* r, const uint8_t* g, const uint8_t* b) const {
    return ycbcr_of<V>({V::load(r), V::load(g), V::load(b)});
  }
  template <class V>
  MORVANE_INLINE auto ycbcr_of(const rgb_blocks<V>& rgb) const {
    const auto red = around_middle<V>(rgb.r);
    const auto green = around_middle<V>(rgb.g);
    const auto blue = around_middle<V>(rgb.b);
    return to_planes(weighed_sum<V>(red, of.y_r, green, of.y_g, blue, of.y_b, of.black),
                     weighed_sum<V>(red, -of.cb_r, green, -of.cb_g, blue, of.cb_b, 32768),
                     weighed_sum<V>(red, of.cr_r, green, -of.cr_g, blue, -of.cr_b, 32768));
  }
};

// (r R + g G + b B + 16384) >> 15 from a bottom on.
struct rgb_lines_to_luminance : line_kernel<rgb_lines_to_luminance, read_line, read_line, read_line, written_line> {
  int32_t r, g, b;
  int32_t bottom;

  MORVANE_INLINE void rule(const uint16_t* red, const uint16_t* green, const uint16_t* blue,
                           uint16_t* luminance) const {
    *luminance = clamp_to_word(bottom + ((r * *red + g * *green + b * *blue + 16384) >> 15));
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* red, const uint8_t* green, const uint8_t* blue) const {
    return weighed_sum<V>(around_middle<V>(V::load(red)), r, around_middle<V>(V::load(green)), g,
                          around_middle<V>(V::load(blue)), b, bottom);
  }
};

// clamp(to + ((factor * (v - from) + half) >> bits)), in place, half being that of 1 << bits: from one range to
// another.
struct scale_line : each_pixel<written_line> {
  int32_t from, to, factor, bits;

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const auto k = *this;
    const int32_t half = 1 << (k.bits - 1);
    for (int i = 0; i < count; ++i)
      values[i] = clamp_to_word(k.to + ((k.factor * (values[i] - k.from) + half) >> k.bits));
  }
};

// Over a background by alpha, in place: (v * A + background * (65535 - A)) / 65535, rounded.
struct line_over_background : each_pixel<read_line, written_line> {
  uint32_t background;

  template <class V>
  MORVANE_INLINE void line(const uint16_t* __restrict alpha, uint16_t* __restrict values, const int count) const {
    const uint32_t behind = background;
    for (int i = 0; i < count; ++i) {
      const uint32_t t = values[i] * uint32_t{alpha[i]} + behind * (65535U - alpha[i]) + 32768U;
      values[i] = static_cast<uint16_t>((t + (t >> 16)) >> 16);
    }
  }
};

// One value over and over.
struct fill_line : each_pixel<written_line> {
  uint16_t value;

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const uint16_t v = value;
    for (int i = 0; i < count; ++i) values[i] = v;
  }
};

using lines_colour_kernels =
    kernel_list<ycbcr_lines_to_rgb_narrow, line_pairs_to_rgb<ycbcr_lines_to_rgb_narrow, siting::left>,
                line_pairs_to_rgb<ycbcr_lines_to_rgb_narrow, siting::center>,
                line_pairs_to_rgb<ycbcr_lines_to_rgb_wide, siting::left>,
                line_pairs_to_rgb<ycbcr_lines_to_rgb_wide, siting::center>, luma_line_to_grey_narrow,
                ycbcr_lines_to_rgb_wide, luma_line_to_grey_wide, rgb_lines_to_ycbcr_narrow, rgb_lines_to_luma_narrow,
                rgb_lines_to_ycbcr_wide, rgb_lines_to_luminance, scale_line, line_over_background, fill_line>;

}  // namespace Processing::Morvane::format_conversion::kernel
