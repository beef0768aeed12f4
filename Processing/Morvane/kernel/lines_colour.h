// Colour of working samples: matrices and ranges with coefficients that are known when a picture is converted, and
// compositing. Coefficients are members of the kernels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
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
template <class V>
struct ycbcr_blocks {
  typename V::block y, cb, cr;
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
  // The same of sums that are lowered to the middle of signed words, where doubling stops at both ends.
  template <class V>
  MORVANE_INLINE static auto times_four(const typename V::block lowered) {
    const auto doubled = V::add_signed_to_limit(lowered, lowered);
    return around_middle<V>(V::add_signed_to_limit(doubled, doubled));
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
    return sums_by<V>(lifted_grey<V>(luma), cb, cr);
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> sums_by(const typename V::block grey, const typename V::block cb,
                                       const typename V::block cr) const {
    const auto u = around_middle<V>(cb);
    const auto v = around_middle<V>(cr);
    return {V::add_words(grey, times<V>(v, r_cr)),
            V::subtract_words(V::subtract_words(grey, times<V>(u, g_cb)), times<V>(v, g_cr)),
            V::add_words(grey, times<V>(u, b_cb))};
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> rgb_of(const typename V::block luma, const typename V::block cb,
                                      const typename V::block cr) const {
    const auto grey = V::add_words(repeat_signed<V>(black - 8192), times<V>(around_middle<V>(luma), y));
    const auto sums = sums_by<V>(grey, cb, cr);
    return {times_four<V>(sums.r), times_four<V>(sums.g), times_four<V>(sums.b)};
  }
};

template <class Coefficients>
struct ycbcr_lines_to_rgb : shared_line_kernel<ycbcr_lines_to_rgb<Coefficients>, read_line, read_line, read_line,
                                               written_line, written_line, written_line>,
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

  // Chroma of pairs takes that of pixels as halves around 0, and that of odd pixels, which is remembered, as the same
  // around 32768.
  template <class V>
  MORVANE_INLINE ycbcr_blocks<V> for_pairs(const rgb_blocks<V>& rgb, const int added_to_luma = 0) const {
    const auto r = V::template shift_right_words<1>(rgb.r);
    const auto g = V::template shift_right_words<1>(rgb.g);
    const auto b = V::template shift_right_words<1>(rgb.b);
    return {doubled<V>(of.black + added_to_luma, half_of_luma<V>(r, g, b)),
            half_of_chroma<V>(b, of.cb_b, g, of.cb_g, r, of.cb_r),
            half_of_chroma<V>(r, of.cr_r, g, of.cr_g, b, of.cr_b)};
  }
  MORVANE_INLINE static uint16_t remembered(const uint16_t chroma) {
    return static_cast<uint16_t>((chroma >> 1) + 16384);
  }
  template <class V>
  MORVANE_INLINE static auto filtered(typename V::block& odd_before, const typename V::block even,
                                      const typename V::block odd_half) {
    const auto odd = around_middle<V>(odd_half);
    const auto before = V::dwords_before(odd_before, odd);
    odd_before = odd;
    return V::add_words(even, V::average_up(before, odd));
  }
};

// Chroma of the last odd pixels that were seen, in pairs Cb Cr.
template <class V, int rows>
struct chroma_of_odd_pixels {
  typename V::block of[rows];

  MORVANE_INLINE static chroma_of_odd_pixels none() { return {}; }
  MORVANE_INLINE static void result() {}
};

struct rgb_lines_to_ycbcr_narrow : shared_line_kernel<rgb_lines_to_ycbcr_narrow, read_line, read_line, read_line,
                                                      written_line, written_line, written_line>,
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
  MORVANE_INLINE auto luminance_of(const rgb_blocks<V>& rgb) const {
    return weighed_sum<V>(around_middle<V>(rgb.r), r, around_middle<V>(rgb.g), g, around_middle<V>(rgb.b), b, bottom);
  }
  template <class V>
  MORVANE_INLINE auto convert(const uint8_t* red, const uint8_t* green, const uint8_t* blue) const {
    return luminance_of<V>({V::load(red), V::load(green), V::load(blue)});
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
    kernel_list<ycbcr_lines_to_rgb_narrow, luma_line_to_grey_narrow, ycbcr_lines_to_rgb_wide, luma_line_to_grey_wide,
                rgb_lines_to_ycbcr_narrow, rgb_lines_to_luma_narrow, rgb_lines_to_ycbcr_wide, rgb_lines_to_luminance,
                scale_line, line_over_background, fill_line>;

}  // namespace Processing::Morvane::format_conversion::kernel
