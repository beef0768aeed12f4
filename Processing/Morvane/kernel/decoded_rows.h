// Rows of YCbCr with chroma for every second pixel to rows of RGB, in one pass. A kernel is a reader, which knows where
// samples come from, a matrix and a writer: they meet in registers, with the bytes that lines give.
//
// A unit is a pair of pixels. The even pixel has the pair's chroma, the odd one the average of that and of the next
// pair's, `next` bytes further on, which is read behind the last pair too, unless `repeats_last`; `next` is 0 where
// chroma is repeated instead. Of planes of chroma there are a near row and a far one, which are the same where rows are
// not filtered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "decoded_writers.h"
#include "lines.h"
#include "lines_colour.h"
#include "lines_groups.h"
#include "lines_stored.h"
#include "list.h"
#include "stored.h"
#include "walk.h"

namespace Processing::Morvane::format_conversion::kernel {

// Working samples of the even and of the odd pixel.
struct samples_of_pair {
  uint16_t y[2], cb[2], cr[2];
};

// The same of the pixels in two blocks.
template <class V>
struct samples_of_pixels {
  typename V::two_blocks y, cb, cr;
};

template <class V>
MORVANE_INLINE typename V::two_blocks with_next(const typename V::block own, const typename V::block next) {
  return {own, V::average_up(own, next)};
}

// Bytes; words with the sample in their upper bits; and words with the sample in their lower ones. `block` is that of
// so many of a plane, `between_rows` of a near row and a far one.

struct samples_in_bytes {
  static constexpr int bytes = 1;
  static constexpr bool in_lower_bits = false;

  MORVANE_INLINE static uint16_t sample(const uint8_t* p) { return static_cast<uint16_t>(*p << 8); }
  template <class V>
  MORVANE_INLINE static auto between_rows(const typename V::block near, const typename V::block far) {
    return V::average_up(near, V::average_up(near, far));
  }
  template <class V>
  MORVANE_INLINE static auto block(const uint8_t* p, const int half) {
    const auto words = V::interleave2(V::repeat(0), V::load(p));
    return half == 0 ? words.first : words.second;
  }
  // Samples 0, 2, 4... and 1, 3, 5...
  template <class V>
  MORVANE_INLINE static typename V::two_blocks two_of(const uint8_t* p) {
    const auto both = V::load(p);
    return {V::template shift_left_words<8>(both), V::and_blocks(both, V::repeat(0xff00))};
  }
};

struct samples_in_words {
  static constexpr int bytes = 2;
  bool has_fine_bits;  // below the upper 14, without which no average is rounded

  template <class V>
  MORVANE_INLINE auto between_rows(const typename V::block near, const typename V::block far) const {
    return V::average_up(near, has_fine_bits ? V::average_down(near, far) : V::average_up(near, far));
  }
};

struct samples_in_upper_bits : samples_in_words {
  static constexpr bool in_lower_bits = false;
  uint16_t kept;

  MORVANE_INLINE uint16_t sample(const uint8_t* p) const { return stored_word(p) & kept; }
  template <class V>
  MORVANE_INLINE auto block(const uint8_t* p, const int number) const {
    return V::and_blocks(V::load(blocks_on<V>(p, number)), V::repeat(kept));
  }
};

struct samples_in_lower_bits : samples_in_words {
  static constexpr bool in_lower_bits = true;
  int32_t up;  // by so many bits

  MORVANE_INLINE uint16_t sample(const uint8_t* p) const { return static_cast<uint16_t>(stored_word(p) << up); }
  template <class V>
  MORVANE_INLINE auto block(const uint8_t* p, const int number) const {
    return V::shift_left_words(V::load(blocks_on<V>(p, number)), up);
  }
};

// Readers. Where words alternate between Cb and Cr, those of the even and of the odd pixels are transposed:
//   own Cb0 Cr0 Cb1 Cr1...  and  odd ones cb0 cr0 cb1 cr1...  to  Cb0 cb0 Cb1 cb1...  and  Cr0 cr0 Cr1 cr1...

template <first_of_pair begins>
struct packed_pairs {
  using planes = plane_list<from<4>>;
  static constexpr pixel_order order = pixel_order::in_sequence;
  static constexpr int bytes_to_next = 4;
  static constexpr bool in_lower_bits = false;
  static constexpr bool begins_with_luma = begins == first_of_pair::luma;
  static constexpr int y = begins_with_luma ? 0 : 1;

  MORVANE_INLINE static uint16_t word(const uint8_t byte) { return static_cast<uint16_t>(byte << 8); }
  MORVANE_INLINE static samples_of_pair pair(const ptrdiff_t next, const uint8_t* p) {
    const uint16_t cb = word(p[1 - y]), cr = word(p[3 - y]);
    return {{word(p[y]), word(p[y + 2])},
            {cb, average_up(cb, word(p[next + 1 - y]))},
            {cr, average_up(cr, word(p[next + 3 - y]))}};
  }
  // The first or the second bytes of words.
  template <class V, bool second>
  MORVANE_INLINE static auto bytes(const typename V::block pairs) {
    if constexpr (second)
      return V::and_blocks(pairs, V::repeat(0xff00));
    else
      return V::template shift_left_words<8>(pairs);
  }
  template <class V>
  MORVANE_INLINE static typename V::two_blocks chroma(const ptrdiff_t next, const uint8_t* p) {
    const auto own = bytes<V, begins_with_luma>(V::load(p));
    return V::transpose2_words(own, V::average_up(own, bytes<V, begins_with_luma>(V::load(p + next))));
  }
  template <class V>
  MORVANE_INLINE static samples_of_pixels<V> pixels(const ptrdiff_t next, int, const uint8_t* p) {
    const auto* further = blocks_on<V>(p, 1);
    const auto first = chroma<V>(next, p), second = chroma<V>(next, further);
    return {{bytes<V, !begins_with_luma>(V::load(p)), bytes<V, !begins_with_luma>(V::load(further))},
            {first.first, second.first},
            {first.second, second.second}};
  }
};

// A plane of luma, and the near and the far row of a plane of Cb Cr.
template <class Samples>
struct two_planes : Samples {
  using planes = plane_list<from<2 * Samples::bytes>, from<2 * Samples::bytes>, from<2 * Samples::bytes>>;
  static constexpr pixel_order order = Samples::bytes == 1 ? pixel_order::even_and_odd : pixel_order::in_sequence;
  static constexpr int bytes_to_next = 2 * Samples::bytes;
  static constexpr bool begins_with_luma = true;

  MORVANE_INLINE uint16_t chroma(const uint8_t* near, const uint8_t* far, const ptrdiff_t at) const {
    return nearer_to_first(this->sample(near + at), this->sample(far + at));
  }
  MORVANE_INLINE samples_of_pair pair(const ptrdiff_t next, const uint8_t* luma, const uint8_t* near,
                                      const uint8_t* far) const {
    const uint16_t cb = chroma(near, far, 0), cr = chroma(near, far, Samples::bytes);
    return {{this->sample(luma), this->sample(luma + Samples::bytes)},
            {cb, average_up(cb, chroma(near, far, next))},
            {cr, average_up(cr, chroma(near, far, next + Samples::bytes))}};
  }
  // Cb and Cr of bytes.
  template <class V>
  MORVANE_INLINE typename V::two_blocks of_bytes(const uint8_t* near, const uint8_t* far) const {
    const auto n = this->template two_of<V>(near), f = this->template two_of<V>(far);
    return {this->template between_rows<V>(n.first, f.first), this->template between_rows<V>(n.second, f.second)};
  }
  // Of words, of the even and the odd pixels of a block.
  template <class V>
  MORVANE_INLINE auto between(const uint8_t* near, const uint8_t* far, const int number) const {
    return this->template between_rows<V>(this->template block<V>(near, number), this->template block<V>(far, number));
  }
  template <class V>
  MORVANE_INLINE typename V::two_blocks of_words(const ptrdiff_t next, const uint8_t* near, const uint8_t* far,
                                                 const int number) const {
    const auto own = between<V>(near, far, number);
    return V::transpose2_words(own, V::average_up(own, between<V>(near + next, far + next, number)));
  }
  template <class V>
  MORVANE_INLINE samples_of_pixels<V> pixels(const ptrdiff_t next, int, const uint8_t* luma, const uint8_t* near,
                                             const uint8_t* far) const {
    if constexpr (Samples::bytes == 1) {
      const auto own = of_bytes<V>(near, far), after = of_bytes<V>(near + next, far + next);
      return {this->template two_of<V>(luma), with_next<V>(own.first, after.first),
              with_next<V>(own.second, after.second)};
    } else {
      const auto first = of_words<V>(next, near, far, 0), second = of_words<V>(next, near, far, 1);
      return {{this->template block<V>(luma, 0), this->template block<V>(luma, 1)},
              {first.first, second.first},
              {first.second, second.second}};
    }
  }
};

// A plane of luma, and the near and the far row of a plane of Cb and of one of Cr.
template <class Samples>
struct three_planes : Samples {
  static constexpr int bytes = Samples::bytes;
  using planes = plane_list<from<2 * bytes>, from<bytes>, from<bytes>, from<bytes>, from<bytes>>;
  static constexpr pixel_order order = bytes == 1 ? pixel_order::even_and_odd : pixel_order::in_sequence;
  static constexpr int bytes_to_next = bytes;
  static constexpr bool begins_with_luma = true;

  MORVANE_INLINE uint16_t chroma(const uint8_t* near, const uint8_t* far) const {
    return nearer_to_first(this->sample(near), this->sample(far));
  }
  MORVANE_INLINE samples_of_pair pair(const ptrdiff_t next, const uint8_t* luma, const uint8_t* near_cb,
                                      const uint8_t* far_cb, const uint8_t* near_cr, const uint8_t* far_cr) const {
    const uint16_t cb = chroma(near_cb, far_cb), cr = chroma(near_cr, far_cr);
    return {{this->sample(luma), this->sample(luma + bytes)},
            {cb, average_up(cb, chroma(near_cb + next, far_cb + next))},
            {cr, average_up(cr, chroma(near_cr + next, far_cr + next))}};
  }
  template <class V>
  MORVANE_INLINE auto chroma(const uint8_t* near, const uint8_t* far, const int number) const {
    return this->template between_rows<V>(this->template block<V>(near, number), this->template block<V>(far, number));
  }
  template <class V>
  MORVANE_INLINE auto chroma(const ptrdiff_t next, const uint8_t* near, const uint8_t* far, const int number) const {
    return with_next<V>(chroma<V>(near, far, number), chroma<V>(near + next, far + next, number));
  }
  template <class V>
  MORVANE_INLINE samples_of_pixels<V> pixels(const ptrdiff_t next, const int number, const uint8_t* luma,
                                             const uint8_t* near_cb, const uint8_t* far_cb, const uint8_t* near_cr,
                                             const uint8_t* far_cr) const {
    const auto cb = chroma<V>(next, near_cb, far_cb, number), cr = chroma<V>(next, near_cr, far_cr, number);
    if constexpr (bytes == 1)
      return {this->template two_of<V>(blocks_on<V>(luma, number)), cb, cr};
    else
      return {{this->template block<V>(luma, 0), this->template block<V>(luma, 1)},
              V::interleave2_words(cb.first, cb.second),
              V::interleave2_words(cr.first, cr.second)};
  }
};

// Matrices: to working samples, to samples of ten bits, or towards bytes as far as signed words that packing limits.

struct narrow_matrix : narrow_coefficients_to_rgb {
  // A sum t becomes the sample 4 t, and that the byte (2 t * 255 + 16384) >> 15, both within limits: what is beyond
  // them stays so, and packing cuts it off.
  template <class V>
  MORVANE_INLINE static auto steps_of_bytes(const typename V::block sum) {
    return times<V>(sum, 510);
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> bytes_of(const typename V::block luma, const typename V::block cb,
                                        const typename V::block cr) const {
    const auto u = around_middle<V>(cb);
    const auto v = around_middle<V>(cr);
    const auto grey = V::add_words(repeat_signed<V>(black), times<V>(around_middle<V>(luma), y));
    const auto green = V::subtract_words(V::subtract_words(grey, times<V>(u, g_cb)), times<V>(v, g_cr));
    return {steps_of_bytes<V>(V::add_signed_to_limit(grey, times<V>(v, r_cr))), steps_of_bytes<V>(green),
            steps_of_bytes<V>(V::add_signed_to_limit(grey, times<V>(u, b_cb)))};
  }
  // And the sample (2 t * 1023 + 16384) >> 15, of t within limits.
  template <class V>
  MORVANE_INLINE static auto ten_of(const typename V::block lifted) {
    const auto positive = V::subtract_words_to_zero(lifted, V::repeat(lift));
    return times<V>(V::least_words(positive, V::repeat(16383)), 2046);
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> tens_of(const typename V::block luma, const typename V::block cb,
                                       const typename V::block cr) const {
    const auto sums = lifted_sums<V>(luma, cb, cr);
    return {ten_of<V>(sums.r), ten_of<V>(sums.g), ten_of<V>(sums.b)};
  }
};

struct wide_matrix : wide_coefficients_to_rgb {
  template <class V>
  MORVANE_INLINE rgb_blocks<V> bytes_of(const typename V::block luma, const typename V::block cb,
                                        const typename V::block cr) const {
    constexpr rounding<8> by{true};
    const auto rgb = this->template rgb_of<V>(luma, cb, cr);
    return {by.unlimited<V>(rgb.r), by.unlimited<V>(rgb.g), by.unlimited<V>(rgb.b)};
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> tens_of(const typename V::block luma, const typename V::block cb,
                                       const typename V::block cr) const {
    constexpr rounding<10> by{true};
    const auto rgb = this->template rgb_of<V>(luma, cb, cr);
    return {by.of<V>(rgb.r), by.of<V>(rgb.g), by.of<V>(rgb.b)};
  }
};

// Without vectors, compilers make better use of a loop for each of the three, over pieces of a line. Kernels share
// them.

struct samples_of_piece {
  static constexpr int pairs = 256;
  uint16_t luma[2 * pairs], cb[2 * pairs], cr[2 * pairs];
  uint16_t r[2 * pairs], g[2 * pairs], b[2 * pairs];
};

template <class V, class Reader, class... From>
__attribute__((noinline)) void read_piece(const Reader from, const ptrdiff_t next, const int first, const int end,
                                          samples_of_piece& to, const typename From::pointer... src) {
  for (int i = first; i < end; ++i) {
    const samples_of_pair pair = from.pair(next, From::at(src, at_least_zero(i))...);
    for (int k = 0; k < 2; ++k) {
      to.luma[2 * i + k] = pair.y[k];
      to.cb[2 * i + k] = pair.cb[k];
      to.cr[2 * i + k] = pair.cr[k];
    }
  }
}
template <class V, class Matrix>
__attribute__((noinline)) void decode_piece(const Matrix by, const int pairs, samples_of_piece& s) {
  for (int i = 0; i < 2 * pairs; ++i) by.rule_of_pixel(s.luma[i], s.cb[i], s.cr[i], s.r + i, s.g + i, s.b + i);
}
template <class V, class Writer, class... To>
__attribute__((noinline)) void write_piece(const Writer to, const int pairs, const samples_of_piece& s,
                                           const typename To::pointer __restrict... dst) {
  for (int i = 0; i < 2 * pairs; ++i) to.put(i, {s.r[i], s.g[i], s.b[i]}, dst...);
}

template <class Reader, class Matrix, class Writer, class Sources = typename Reader::planes,
          class Destinations = typename Writer::planes>
struct decode;

template <class Reader, class Matrix, class Writer, class... From, class... To>
struct decode<Reader, Matrix, Writer, plane_list<From...>, plane_list<To...>>
    : line_kernel<decode<Reader, Matrix, Writer>, From..., To...>, Matrix {
  static constexpr bool crowds_stores = Reader::bytes_to_next == 1;  // of twice as many pixels as of other readers
  static constexpr int bytes_to_next = Reader::bytes_to_next;
  Reader from;
  Writer to;
  int32_t next;       // bytes_to_next, or 0
  bool repeats_last;  // behind the last pair of a line comes its chroma once more, and not that of a next pair
  bool streams;

  MORVANE_INLINE void rule(const typename From::pointer... src, const typename To::pointer... dst) const {
    const samples_of_pair pair = from.pair(next, src...);
    for (int i = 0; i < 2; ++i) {
      rgb_sample rgb;
      this->rule_of_pixel(pair.y[i], pair.cb[i], pair.cr[i], &rgb.r, &rgb.g, &rgb.b);
      to.put(i, rgb, dst...);
    }
  }
  template <class V>
  MORVANE_INLINE void line(const typename From::pointer __restrict... src, const typename To::pointer __restrict... dst,
                           const int count) const {
    const decode k = *this;
    if constexpr (V::lanes > 0)
      k.template line_of_vectors<V>({{src...}}, {{dst...}}, at_least_zero(count), std::index_sequence_for<From...>(),
                                    std::index_sequence_for<To...>());
    else
      k.template line_of_pieces<V>(src..., dst..., count);
  }
  template <class V>
  MORVANE_INLINE rgb_blocks<V> rgb(const typename V::block luma, const typename V::block cb,
                                   const typename V::block cr) const {
    if constexpr (Writer::samples == rgb_samples::bytes)
      return this->template bytes_of<V>(luma, cb, cr);
    else if constexpr (Writer::samples == rgb_samples::tens || Writer::samples == rgb_samples::tens_above_two_bits ||
                       Writer::samples == rgb_samples::low_tens)
      return this->template tens_of<V>(luma, cb, cr);
    else
      return this->template rgb_of<V>(luma, cb, cr);
  }
  template <class V>
  MORVANE_INLINE auto converted(const int number, const typename From::pointer... src) const {
    const auto [luma, cb, cr] = from.template pixels<V>(next, number, src...);
    const rgb_pixels<V> both = {rgb<V>(luma.first, cb.first, cr.first), rgb<V>(luma.second, cb.second, cr.second)};
    return to.template pixels<V, Reader::order>(both);
  }
  // Planes of chroma in bytes have twice as many pairs in a block.
  template <class V>
  MORVANE_INLINE auto convert(const typename From::pointer... src) const {
    if constexpr (bytes_to_next == 1)
      return in_a_row(converted<V>(0, src...), converted<V>(1, src...));
    else
      return converted<V>(0, src...);
  }

  // There is one vector body: it goes over all vectors but the last one, and then over that, which ends with the line.
  // What is less than a vector, or behind which chroma is repeated, passes through memory of its size. So neither
  // another body nor the rule is compiled into kernels of which there are many.
  using source_rows = places_read<sizeof...(From)>;
  using destination_rows = places_written<sizeof...(To)>;
  template <size_t pairs_of_vector>
  struct vector_memory {
    static constexpr size_t most_bytes = 4, most_bytes_made = 24;  // of a unit
    uint8_t read[sizeof...(From)][(pairs_of_vector + 1) * most_bytes];
    uint8_t made[sizeof...(To)][pairs_of_vector * most_bytes_made];
  };

  template <class V, size_t... s, size_t... d>
  MORVANE_INLINE void line_of_vectors(source_rows src, destination_rows dst, size_t pairs,
                                      const std::index_sequence<s...> sources,
                                      const std::index_sequence<d...> destinations) const {
    if constexpr (vector::streams<V>)
      if (streams && walk_of<V, decode>::can_stream(pairs)) {
        const size_t streamed = repeats_last ? pairs - 1 : pairs;
        stream_line<V, V>(*this, streamed, src.at[s]..., dst.at[d]...);
        ((src.at[s] += streamed * From::bytes), ...);
        ((dst.at[d] += streamed * To::bytes), ...);
        pairs -= streamed;
      }
    if (pairs > 0) convert_vectors<V>(src, dst, pairs, sources, destinations);
  }
  template <class V, size_t... s, size_t... d>
  MORVANE_INLINE void convert_vectors(const source_rows src, const destination_rows dst, const size_t pairs,
                                      const std::index_sequence<s...>, const std::index_sequence<d...>) const {
    constexpr size_t step = walk_of<V, decode>::step();
    const bool is_less = pairs < step;
    vector_memory<step> memory;
    source_rows p = src;
    destination_rows q = dst;
    // What passes through memory is gathered some vectors before it is read, so that no vector waits until it has been
    // stored, and so few that a processor which fetches rows in advance does not lose their order.
    const size_t before_last = (pairs - 1) / step;
    const size_t behind_gathering = before_last < 3 ? before_last : 3;
    size_t vectors = before_last - behind_gathering;
    for (int round = 0;; ++round) {
#pragma GCC unroll 1
      for (; vectors > 0; --vectors) {
        (expect_stores<V, decode, step * To::bytes>(q.at[d]), ...);
        const auto items = convert<V>(p.at[s]...);
        (store<V>(q.at[d], item_of<d>(items)), ...);
        ((p.at[s] += step * From::bytes), ...);
        ((q.at[d] += step * To::bytes), ...);
      }
      if (round == 0) {
        if (is_less) {
          __builtin_memset(memory.read, 0, sizeof memory.read);
          (gather<s>(src.at[s], pairs, memory.read[s]), ...);
        } else if (repeats_last) {
          (gather<s>(src.at[s] + (pairs - step) * From::bytes, step, memory.read[s]), ...);
        }
        vectors = behind_gathering;
      } else if (round == 1) {
        ((p.at[s] = is_less || repeats_last ? memory.read[s] : src.at[s] + (pairs - step) * From::bytes), ...);
        ((q.at[d] = is_less ? memory.made[d] : dst.at[d] + (pairs - step) * To::bytes), ...);
        vectors = 1;
      } else {
        break;
      }
    }
    if (is_less) (__builtin_memcpy(dst.at[d], memory.made[d], pairs * To::bytes), ...);
  }
  // With the unit behind the last one, where it is read. That of luma is not, and may be half a unit.
  template <size_t row>
  MORVANE_INLINE void gather(const uint8_t* p, const size_t pairs, uint8_t* gathered) const {
    constexpr size_t bytes = source_bytes<row>;
    __builtin_memcpy(gathered, p, pairs * bytes);
    if (next == 0 || (row == 0 && sizeof...(From) > 1)) return;
    __builtin_memcpy(gathered + pairs * bytes, p + (repeats_last ? pairs - 1 : pairs) * bytes, bytes);
  }
  template <size_t row>
  static constexpr size_t source_bytes = plane_list<From...>::template type<row>::bytes;

  // Without vectors.
  template <class V>
  MORVANE_INLINE void line_of_pieces(const typename From::pointer __restrict... src,
                                     const typename To::pointer __restrict... dst, const int count) const {
    constexpr int most = samples_of_piece::pairs;
    samples_of_piece samples;
    for (int at = 0; at < count; at += most) {
      const int pairs = count - at < most ? count - at : most;
      const int filtered = repeats_last && at + pairs == count ? pairs - 1 : pairs;
      const size_t unit = at_least_zero(at);
      read_piece<V, Reader, From...>(from, next, 0, filtered, samples, From::at(src, unit)...);
      read_piece<V, Reader, From...>(from, 0, filtered, pairs, samples, From::at(src, unit)...);
      decode_piece<V, Matrix>(*this, pairs, samples);
      write_piece<V, Writer, To...>(to, pairs, samples, To::at(dst, unit)...);
    }
  }
};

// The matrix is the one that the destination and the source ask for.
template <class Reader, class Matrix>
using decoders_to_bytes =
    kernel_list<decode<Reader, Matrix, bytes_in_order<4>>, decode<Reader, Matrix, bytes_in_order<3>>>;
template <class Reader>
using decoders_of_any = typename joined_lists<
    decoders_to_bytes<Reader, narrow_matrix>,
    kernel_list<decode<Reader, narrow_matrix, bytes_of_luminance>, decode<Reader, wide_matrix, floats_in_order>,
                decode<Reader, wide_matrix, floats_in_planes>>>::type;
template <class Reader>
using decoders_of_deep =
    kernel_list<decode<Reader, narrow_matrix, tens_in_order<0>>, decode<Reader, narrow_matrix, tens_in_order<2>>,
                decode<Reader, wide_matrix, words_in_order<3>>, decode<Reader, wide_matrix, words_in_order<4>>>;
using decoders_of_words =
    joined_lists<decoders_to_bytes<two_planes<samples_in_upper_bits>, wide_matrix>,
                 kernel_list<decode<two_planes<samples_in_upper_bits>, wide_matrix, tens_in_order<0>>,
                             decode<two_planes<samples_in_upper_bits>, wide_matrix, bytes_of_luminance>,
                             decode<three_planes<samples_in_lower_bits>, wide_matrix, bytes_of_luminance>>>::type;
template <class Reader>
using decoders_to_planes =
    kernel_list<decode<Reader, narrow_matrix, bytes_in_planes>, decode<Reader, narrow_matrix, tens_in_planes>>;

using decode_kernels = joined_lists<
    decoders_of_any<packed_pairs<first_of_pair::chroma>>, decoders_of_any<packed_pairs<first_of_pair::luma>>,
    decoders_of_any<two_planes<samples_in_bytes>>, decoders_of_any<two_planes<samples_in_upper_bits>>,
    decoders_of_any<three_planes<samples_in_bytes>>, decoders_of_any<three_planes<samples_in_lower_bits>>,
    decoders_of_deep<two_planes<samples_in_upper_bits>>, decoders_of_deep<three_planes<samples_in_lower_bits>>,
    decoders_of_words, decoders_to_planes<three_planes<samples_in_bytes>>,
    decoders_to_planes<three_planes<samples_in_lower_bits>>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
