// Between what is stored and lines of working samples. Reading leaves the bits of a sample at the top of its word, and
// writing takes them at the bottom; the passes over a line at the end of this file make the one of the other.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "list.h"
#include "samples.h"

namespace Processing::Morvane::format_conversion::kernel {

// Items of one or two bytes, at any address.
template <int bytes>
MORVANE_INLINE uint16_t stored_item(const uint8_t* p) {
  if constexpr (bytes == 1) return *p;
  uint16_t word;
  __builtin_memcpy(&word, p, 2);
  return word;
}

template <int bytes>
MORVANE_INLINE void store_item(uint8_t* p, const uint16_t value) {
  if constexpr (bytes == 1)
    *p = static_cast<uint8_t>(value);
  else
    __builtin_memcpy(p, &value, 2);
}

// Groups of one to four items of so many bytes, of which each goes to a line of its own; `up` is how far it is shifted.
// Lines beyond the items are null.
template <int bytes, int items, int up>
struct split_items : each_sample<from<bytes * items>, written_line, written_line, written_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* __restrict src, uint16_t* __restrict first,
                                  uint16_t* __restrict second, uint16_t* __restrict third, uint16_t* __restrict fourth,
                                  const int count) {
    for (int i = 0; i < count; ++i) {
      const uint8_t* group = src + static_cast<ptrdiff_t>(i) * (bytes * items);
      first[i] = static_cast<uint16_t>(stored_item<bytes>(group) << up);
      if constexpr (items > 1) second[i] = static_cast<uint16_t>(stored_item<bytes>(group + bytes) << up);
      if constexpr (items > 2) third[i] = static_cast<uint16_t>(stored_item<bytes>(group + 2 * bytes) << up);
      if constexpr (items > 3) fourth[i] = static_cast<uint16_t>(stored_item<bytes>(group + 3 * bytes) << up);
    }
  }
};

template <int bytes, int items, int up>
struct join_items : each_sample<read_line, read_line, read_line, read_line, to<bytes * items>> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict first, const uint16_t* __restrict second,
                                  const uint16_t* __restrict third, const uint16_t* __restrict fourth,
                                  uint8_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) {
      uint8_t* group = dst + static_cast<ptrdiff_t>(i) * (bytes * items);
      store_item<bytes>(group, static_cast<uint16_t>(first[i] << up));
      if constexpr (items > 1) store_item<bytes>(group + bytes, static_cast<uint16_t>(second[i] << up));
      if constexpr (items > 2) store_item<bytes>(group + 2 * bytes, static_cast<uint16_t>(third[i] << up));
      if constexpr (items > 3) store_item<bytes>(group + 3 * bytes, static_cast<uint16_t>(fourth[i] << up));
    }
  }
};

// Pairs of 4:2:2 in four bytes, chroma or luma first. Lines of luma have two samples for each pair.
enum class first_of_pair : bool { chroma, luma };

template <first_of_pair begins>
struct split_pairs : each_sample<from<4>, written_line, written_line, written_line> {
  static constexpr int y = begins == first_of_pair::luma ? 0 : 1;

  template <class V>
  MORVANE_INLINE static void line(const uint8_t* __restrict src, uint16_t* __restrict luma, uint16_t* __restrict cb,
                                  uint16_t* __restrict cr, const int count) {
    for (int i = 0; i < count; ++i) {
      luma[2 * i] = static_cast<uint16_t>(src[4 * i + y] << 8);
      luma[2 * i + 1] = static_cast<uint16_t>(src[4 * i + y + 2] << 8);
      cb[i] = static_cast<uint16_t>(src[4 * i + 1 - y] << 8);
      cr[i] = static_cast<uint16_t>(src[4 * i + 3 - y] << 8);
    }
  }
};

template <first_of_pair begins>
struct join_pairs : each_sample<read_line, read_line, read_line, to<4>> {
  static constexpr int y = begins == first_of_pair::luma ? 0 : 1;

  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict luma, const uint16_t* __restrict cb,
                                  const uint16_t* __restrict cr, uint8_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) {
      dst[4 * i + y] = static_cast<uint8_t>(luma[2 * i]);
      dst[4 * i + y + 2] = static_cast<uint8_t>(luma[2 * i + 1]);
      dst[4 * i + 1 - y] = static_cast<uint8_t>(cb[i]);
      dst[4 * i + 3 - y] = static_cast<uint8_t>(cr[i]);
    }
  }
};

// Three samples of ten bits in a little-endian double word, the first one lowest.
MORVANE_INLINE uint32_t three_tens(const uint8_t* p) {
  uint32_t word;
  __builtin_memcpy(&word, p, 4);
  return word;
}

MORVANE_INLINE void store_three_tens(uint8_t* p, const uint16_t first, const uint16_t second, const uint16_t third) {
  const uint32_t word = first | uint32_t{second} << 10 | uint32_t{third} << 20;
  __builtin_memcpy(p, &word, 4);
}

template <int place>
MORVANE_INLINE uint16_t ten_at_top(const uint32_t word) {
  return static_cast<uint16_t>((word >> (10 * place) & 1023) << 6);
}

// v210: Cb0 Y0 Cr0 | Y1 Cb1 Y2 | Cr1 Y3 Cb2 | Y4 Cr2 Y5.
struct split_v210 : each_sample<from<16>, written_line, written_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* __restrict src, uint16_t* __restrict luma, uint16_t* __restrict cb,
                                  uint16_t* __restrict cr, const int count) {
    for (int i = 0; i < count; ++i, src += 16, luma += 6, cb += 3, cr += 3) {
      const uint32_t words[] = {three_tens(src), three_tens(src + 4), three_tens(src + 8), three_tens(src + 12)};
      cb[0] = ten_at_top<0>(words[0]);
      luma[0] = ten_at_top<1>(words[0]);
      cr[0] = ten_at_top<2>(words[0]);
      luma[1] = ten_at_top<0>(words[1]);
      cb[1] = ten_at_top<1>(words[1]);
      luma[2] = ten_at_top<2>(words[1]);
      cr[1] = ten_at_top<0>(words[2]);
      luma[3] = ten_at_top<1>(words[2]);
      cb[2] = ten_at_top<2>(words[2]);
      luma[4] = ten_at_top<0>(words[3]);
      cr[2] = ten_at_top<1>(words[3]);
      luma[5] = ten_at_top<2>(words[3]);
    }
  }
};

struct join_v210 : each_sample<read_line, read_line, read_line, to<16>> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict luma, const uint16_t* __restrict cb,
                                  const uint16_t* __restrict cr, uint8_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i, dst += 16, luma += 6, cb += 3, cr += 3) {
      store_three_tens(dst, cb[0], luma[0], cr[0]);
      store_three_tens(dst + 4, luma[1], cb[1], luma[2]);
      store_three_tens(dst + 8, cr[1], luma[3], cb[2]);
      store_three_tens(dst + 12, luma[4], cr[2], luma[5]);
    }
  }
};

// Pairs in two double words: Y Cb A | Y Cr A.
struct split_yua_yva : each_sample<from<8>, written_line, written_line, written_line, written_line> {
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* __restrict src, uint16_t* __restrict luma, uint16_t* __restrict cb,
                                  uint16_t* __restrict cr, uint16_t* __restrict alpha, const int count) {
    for (int i = 0; i < count; ++i) {
      const uint32_t even = three_tens(src + 8 * i);
      const uint32_t odd = three_tens(src + 8 * i + 4);
      luma[2 * i] = ten_at_top<0>(even);
      luma[2 * i + 1] = ten_at_top<0>(odd);
      cb[i] = ten_at_top<1>(even);
      cr[i] = ten_at_top<1>(odd);
      alpha[2 * i] = ten_at_top<2>(even);
      alpha[2 * i + 1] = ten_at_top<2>(odd);
    }
  }
};

struct join_yua_yva : each_sample<read_line, read_line, read_line, read_line, to<8>> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict luma, const uint16_t* __restrict cb,
                                  const uint16_t* __restrict cr, const uint16_t* __restrict alpha,
                                  uint8_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) {
      store_three_tens(dst + 8 * i, luma[2 * i], cb[i], alpha[2 * i]);
      store_three_tens(dst + 8 * i + 4, luma[2 * i + 1], cr[i], alpha[2 * i + 1]);
    }
  }
};

// Groups of eight pairs Y Cb Y Cr: 32 bytes with the upper eight bits, and eight with the lower two of four samples
// each, the first one lowest.
struct split_yuyv_10 : each_sample<from<40>, written_line, written_line, written_line> {
  MORVANE_INLINE static uint16_t sample(const uint8_t* group, const int pair, const int place) {
    const int low = group[32 + pair] >> (2 * place) & 3;
    return static_cast<uint16_t>(group[4 * pair + place] << 8 | low << 6);
  }
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* __restrict src, uint16_t* __restrict luma, uint16_t* __restrict cb,
                                  uint16_t* __restrict cr, const int count) {
    for (int i = 0; i < count; ++i, src += 40, luma += 16, cb += 8, cr += 8)
      for (int pair = 0; pair < 8; ++pair) {
        luma[2 * pair] = sample(src, pair, 0);
        cb[pair] = sample(src, pair, 1);
        luma[2 * pair + 1] = sample(src, pair, 2);
        cr[pair] = sample(src, pair, 3);
      }
  }
};

struct join_yuyv_10 : each_sample<read_line, read_line, read_line, to<40>> {
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict luma, const uint16_t* __restrict cb,
                                  const uint16_t* __restrict cr, uint8_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i, dst += 40, luma += 16, cb += 8, cr += 8)
      for (int pair = 0; pair < 8; ++pair) {
        const int y0 = luma[2 * pair], u = cb[pair], y1 = luma[2 * pair + 1], v = cr[pair];
        dst[4 * pair] = static_cast<uint8_t>(y0 >> 2);
        dst[4 * pair + 1] = static_cast<uint8_t>(u >> 2);
        dst[4 * pair + 2] = static_cast<uint8_t>(y1 >> 2);
        dst[4 * pair + 3] = static_cast<uint8_t>(v >> 2);
        dst[32 + pair] = static_cast<uint8_t>((y0 & 3) | (u & 3) << 2 | (y1 & 3) << 4 | (v & 3) << 6);
      }
  }
};

// Pixels of four floats, Cr Cb Y A, in video range.
struct split_vuya_f32 : each_sample<from<16>, written_line, written_line, written_line, written_line> {
  // What is not a number counts as 0.
  MORVANE_INLINE static float between_0_and_1(const float x) { return x > 0.0F ? (x < 1.0F ? x : 1.0F) : 0.0F; }
  MORVANE_INLINE static uint16_t scaled(const float x, const float span, const int bottom) {
    const float steps = between_0_and_1(x) * span + 0.5F;
    return static_cast<uint16_t>(bottom + static_cast<int>(steps));
  }
  template <class V>
  MORVANE_INLINE static void line(const uint8_t* __restrict src, uint16_t* __restrict cr, uint16_t* __restrict cb,
                                  uint16_t* __restrict luma, uint16_t* __restrict alpha, const int count) {
    for (int i = 0; i < count; ++i) {
      float pixel[4];
      __builtin_memcpy(pixel, src + 16 * static_cast<ptrdiff_t>(i), 16);
      cr[i] = scaled(pixel[0] + 0.5F, 57344.0F, 4096);
      cb[i] = scaled(pixel[1] + 0.5F, 57344.0F, 4096);
      luma[i] = scaled(pixel[2], 56064.0F, 4096);
      alpha[i] = scaled(pixel[3], 65535.0F, 0);
    }
  }
};

struct join_vuya_f32 : each_sample<read_line, read_line, read_line, read_line, to<16>> {
  MORVANE_INLINE static float above_bottom(const uint16_t v) { return static_cast<float>(v < 4096 ? 0 : v - 4096); }
  MORVANE_INLINE static float at_most(const float value, const float limit) { return value < limit ? value : limit; }
  template <class V>
  MORVANE_INLINE static void line(const uint16_t* __restrict cr, const uint16_t* __restrict cb,
                                  const uint16_t* __restrict luma, const uint16_t* __restrict alpha,
                                  uint8_t* __restrict dst, const int count) {
    for (int i = 0; i < count; ++i) {
      const float pixel[] = {at_most(above_bottom(cr[i]) / 57344.0F - 0.5F, 0.5F),
                             at_most(above_bottom(cb[i]) / 57344.0F - 0.5F, 0.5F),
                             at_most(above_bottom(luma[i]) / 56064.0F, 1.0F), static_cast<float>(alpha[i]) / 65535.0F};
      __builtin_memcpy(dst + 16 * static_cast<ptrdiff_t>(i), pixel, 16);
    }
  }
};

// Passes over a line, in place.

// The lower bits of a word become its upper ones once more, so that the largest sample is 65535.
struct repeat_upper_bits : each_sample<written_line> {
  int bits;  // of a sample

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const int down = bits;
    for (int i = 0; i < count; ++i) values[i] = static_cast<uint16_t>(values[i] | values[i] >> down);
  }
};

// Without the lower bits, which are unused.
struct keep_upper_bits : each_sample<written_line> {
  int bits;

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const auto kept = static_cast<uint16_t>(65535 << (16 - bits));
    for (int i = 0; i < count; ++i) values[i] = static_cast<uint16_t>(values[i] & kept);
  }
};

// The nearest sample of so many bits, whose unit is a power of two.
struct round_to_bits : each_sample<written_line> {
  int bits;

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const int down = 16 - bits;
    const auto half = static_cast<uint16_t>(1 << (down - 1));
    const auto most = static_cast<uint16_t>(65535 - half);
    for (int i = 0; i < count; ++i)
      values[i] = static_cast<uint16_t>(static_cast<uint16_t>((values[i] < most ? values[i] : most) + half) >> down);
  }
};

// The nearest sample of so many bits, whose largest value stands for 65535.
struct scale_to_bits : each_sample<written_line> {
  int bits;

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const auto most = static_cast<int16_t>((1 << bits) - 1);
    for (int i = 0; i < count; ++i)
      values[i] = static_cast<uint16_t>(rounded_product(static_cast<int16_t>(values[i] >> 1), most));
  }
};

// One value over and over.
struct fill_line : each_sample<written_line> {
  uint16_t value;

  template <class V>
  MORVANE_INLINE void line(uint16_t* values, const int count) const {
    const uint16_t v = value;
    for (int i = 0; i < count; ++i) values[i] = v;
  }
};

using lines_stored_kernels =
    kernel_list<split_items<1, 1, 8>, split_items<1, 2, 8>, split_items<1, 3, 8>, split_items<1, 4, 8>,
                split_items<2, 1, 0>, split_items<2, 2, 0>, split_items<2, 4, 0>, split_items<2, 1, 6>,
                split_items<2, 1, 4>, join_items<1, 1, 0>, join_items<1, 2, 0>, join_items<1, 3, 0>,
                join_items<1, 4, 0>, join_items<2, 1, 0>, join_items<2, 2, 0>, join_items<2, 4, 0>, join_items<2, 1, 6>,
                join_items<2, 2, 6>, split_pairs<first_of_pair::chroma>, split_pairs<first_of_pair::luma>,
                join_pairs<first_of_pair::chroma>, join_pairs<first_of_pair::luma>, split_v210, join_v210,
                split_yua_yva, join_yua_yva, split_yuyv_10, join_yuyv_10, split_vuya_f32, join_vuya_f32,
                repeat_upper_bits, keep_upper_bits, round_to_bits, scale_to_bits, fill_line>;

}  // namespace Processing::Morvane::format_conversion::kernel
