// Between rows of floats and lines of working samples. Each operation rounds by itself, in single precision.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "interleaved_words.h"
#include "lines.h"
#include "list.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

// What is not a number counts as 0.
MORVANE_INLINE float between_0_and_1(const float x) {
  return x > 0.0F ? (x < 1.0F ? x : 1.0F) : 0.0F;
}

// bottom + x * span, rounded, of x between 0 and 1.
MORVANE_INLINE uint16_t scaled(const float x, const float span, const int bottom) {
  const float steps = between_0_and_1(x) * span + 0.5F;
  return static_cast<uint16_t>(bottom + static_cast<int>(steps));
}
template <class V, int bottom>
MORVANE_INLINE auto scaled(const typename V::floats x, const float span) {
  return V::template words_of_floats<bottom>(V::subtract(V::multiply(V::between_0_and_1(x), span), -0.5F));
}

inline constexpr float all_of_word = 65535.0F;

// How numbers from 0 to 1 are stored.
struct single_floats {
  static constexpr int bytes = 4;

  MORVANE_INLINE static float at(const uint8_t* p) {
    float value;
    __builtin_memcpy(&value, p, bytes);
    return value;
  }
  MORVANE_INLINE static void put(uint8_t* p, const float value) { __builtin_memcpy(p, &value, bytes); }
  template <class V>
  MORVANE_INLINE static auto load(const uint8_t* p) {
    return V::floats_at(p);
  }
  template <class V>
  MORVANE_INLINE static auto stored(const typename V::floats f) {
    return f;
  }
};

// Of 16 bits.
struct half_floats {
  static constexpr int bytes = 2;
  static constexpr float least_normal = 0x1p-14F;
  static constexpr uint32_t exponents_apart = 112U << 23;

  MORVANE_INLINE static float at(const uint8_t* p) {
    const uint32_t half = stored_word(p);
    const uint32_t exponent = half >> 10 & 31;
    const auto mantissa = half & 1023;
    const float subnormal = static_cast<float>(mantissa) * 0x1p-24F;
    const uint32_t wider = (half & 0x7fff) << 13;
    const uint32_t magnitude = exponent == 31  ? wider + 2 * exponents_apart
                               : exponent == 0 ? __builtin_bit_cast(uint32_t, subnormal)
                                               : wider + exponents_apart;
    return __builtin_bit_cast(float, magnitude | (half & 0x8000) << 16);
  }
  // Of 0 to 1. A sum from 0.5 on has the steps of the smallest halves.
  MORVANE_INLINE static void put(uint8_t* p, const float value) {
    const auto bits = __builtin_bit_cast(uint32_t, value);
    const uint32_t normal = (bits - exponents_apart + 0xfff + (bits >> 13 & 1)) >> 13;
    const uint32_t subnormal = __builtin_bit_cast(uint32_t, value + 0.5F) - __builtin_bit_cast(uint32_t, 0.5F);
    put_word(p, static_cast<uint16_t>(value < least_normal ? subnormal : normal));
  }
  template <class V>
  MORVANE_INLINE static auto load(const uint8_t* p) {
    return V::half_floats_at(p);
  }
  template <class V>
  MORVANE_INLINE static auto stored(const typename V::floats f) {
    return V::half_floats(f);
  }
};

// v / 65535 of words, which is v (2^-16 + 2^-32 + 2^-48...). The first product is exact, and the second one as near as
// it takes for the sum to be rounded as the quotient is.
template <class V>
MORVANE_INLINE auto share_of_word(const typename V::floats v) {
  return V::add(V::multiply(v, 0x1p-16F), V::multiply(v, 0x1p-32F + 0x1p-48F));
}

// The floats of a block's words.
template <class V>
using parts_of_block = std::make_index_sequence<V::block_bytes / 2 / V::float_lanes>;

template <class V, class Number, size_t... part>
MORVANE_INLINE auto numbers_of(const typename V::block words, std::index_sequence<part...>) {
  return in_a_row(
      Number::template stored<V>(share_of_word<V>(V::template floats_of_words<static_cast<int>(part)>(words)))...);
}
template <class V, class Number>
MORVANE_INLINE auto numbers_of(const typename V::block words) {
  return numbers_of<V, Number>(words, parts_of_block<V>());
}

// Groups of one, three or four numbers, each to a line of its own.
template <class Number, int items, class... Line>
struct split_floats : line_kernel<split_floats<Number, items, Line...>, from<Number::bytes * items>, Line...> {
  template <class... Word>
  MORVANE_INLINE static void rule(const uint8_t* group, Word*... to) {
    int i = 0;
    ((*to = scaled(Number::at(group + Number::bytes * i++), all_of_word, 0)), ...);
  }
  template <class V, size_t... part>
  MORVANE_INLINE static auto words(const uint8_t* src, std::index_sequence<part...>) {
    return V::join_words(
        scaled<V, 0>(Number::template load<V>(src + part * V::float_lanes * Number::bytes), all_of_word)...);
  }
  // Of block `i`.
  template <class V>
  MORVANE_INLINE static auto words(const uint8_t* src, const int i) {
    return words<V>(src + i * V::block_bytes / 2 * Number::bytes, parts_of_block<V>());
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    if constexpr (items == 1)
      return words<V>(src, 0);
    else if constexpr (items == 3)
      return deinterleaved<V>(words<V>(src, 0), words<V>(src, 1), words<V>(src, 2));
    else
      return deinterleaved<V>(words<V>(src, 0), words<V>(src, 1), words<V>(src, 2), words<V>(src, 3));
  }
};

template <class Number, int items, class... Line>
struct join_floats : line_kernel<join_floats<Number, items, Line...>, Line..., to<Number::bytes * items>> {
  MORVANE_INLINE static void put(const uint16_t* line, uint8_t* dst, const int i) {
    Number::put(dst + Number::bytes * i, static_cast<float>(*line) / all_of_word);
  }
  MORVANE_INLINE static void rule(const uint16_t* a, uint8_t* dst) { put(a, dst, 0); }
  MORVANE_INLINE static void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, uint8_t* dst) {
    put(a, dst, 0);
    put(b, dst, 1);
    put(c, dst, 2);
  }
  MORVANE_INLINE static void rule(const uint16_t* a, const uint16_t* b, const uint16_t* c, const uint16_t* d,
                                  uint8_t* dst) {
    rule(a, b, c, dst);
    put(d, dst, 3);
  }
  template <class V, class... Words>
  MORVANE_INLINE static auto convert(const Words*... lines) {
    const auto as_numbers = [](const typename V::block words) __attribute__((always_inline)) {
      return numbers_of<V, Number>(words);
    };
    return interleaved<V>(as_numbers, V::load(lines)...);
  }
};

// Pixels of four floats, Cr Cb Y A, in video range.
struct split_vuya_f32 : line_kernel<split_vuya_f32, from<16>, written_line, written_line, written_line, written_line> {
  MORVANE_INLINE static void rule(const uint8_t* src, uint16_t* cr, uint16_t* cb, uint16_t* luma, uint16_t* alpha) {
    *cr = scaled(single_floats::at(src) + 0.5F, 57344.0F, 4096);
    *cb = scaled(single_floats::at(src + 4) + 0.5F, 57344.0F, 4096);
    *luma = scaled(single_floats::at(src + 8), 56064.0F, 4096);
    *alpha = scaled(single_floats::at(src + 12), all_of_word, 0);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* src) {
    const auto pixels = V::load_four_floats(src);
    return to_planes(scaled<V, 4096>(V::subtract(pixels.first, -0.5F), 57344.0F),
                     scaled<V, 4096>(V::subtract(pixels.second, -0.5F), 57344.0F),
                     scaled<V, 4096>(pixels.third, 56064.0F), scaled<V, 0>(pixels.fourth, all_of_word));
  }
};

struct join_vuya_f32 : line_kernel<join_vuya_f32, read_line, read_line, read_line, read_line, to<16>> {
  MORVANE_INLINE static float above_bottom(const uint16_t v) { return static_cast<float>(v < 4096 ? 0 : v - 4096); }
  MORVANE_INLINE static float at_most(const float value, const float limit) { return value < limit ? value : limit; }
  MORVANE_INLINE static void rule(const uint16_t* cr, const uint16_t* cb, const uint16_t* luma, const uint16_t* alpha,
                                  uint8_t* dst) {
    const float pixel[] = {at_most(above_bottom(*cr) / 57344.0F - 0.5F, 0.5F),
                           at_most(above_bottom(*cb) / 57344.0F - 0.5F, 0.5F),
                           at_most(above_bottom(*luma) / 56064.0F, 1.0F), static_cast<float>(*alpha) / all_of_word};
    __builtin_memcpy(dst, pixel, 16);
  }
  template <class V>
  MORVANE_INLINE static auto chroma(const uint8_t* line) {
    const auto quotient = V::divide(V::template load_words_above<4096>(line), 57344.0F);
    return V::at_most(V::subtract(quotient, 0.5F), 0.5F);
  }
  template <class V>
  MORVANE_INLINE static auto convert(const uint8_t* cr, const uint8_t* cb, const uint8_t* luma, const uint8_t* alpha) {
    const auto y = V::at_most(V::divide(V::template load_words_above<4096>(luma), 56064.0F), 1.0F);
    const auto a = share_of_word<V>(V::template load_words_above<0>(alpha));
    return V::interleave4_floats(chroma<V>(cr), chroma<V>(cb), y, a);
  }
};

template <class Number>
using split_three_numbers = split_floats<Number, 3, written_line, written_line, written_line>;
template <class Number>
using split_four_numbers = split_floats<Number, 4, written_line, written_line, written_line, written_line>;
template <class Number>
using join_three_numbers = join_floats<Number, 3, read_line, read_line, read_line>;
template <class Number>
using join_four_numbers = join_floats<Number, 4, read_line, read_line, read_line, read_line>;

using lines_floats_kernels =
    kernel_list<split_vuya_f32, join_vuya_f32, split_floats<single_floats, 1, written_line>,
                split_three_numbers<single_floats>, split_four_numbers<single_floats>,
                join_floats<single_floats, 1, read_line>, join_three_numbers<single_floats>,
                join_four_numbers<single_floats>, split_four_numbers<half_floats>, join_four_numbers<half_floats>>;

}  // namespace Processing::Morvane::format_conversion::kernel
