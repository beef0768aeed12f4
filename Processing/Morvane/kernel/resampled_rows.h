// Bytes that are arranged in another way, as in rearranged.h, with chroma between two rows: rows of 4:2:0 have equal
// parts of two rows of 4:2:2, and rows of 4:2:2 three parts of a near row of 4:2:0 and one of a far one. A sample is
// averaged as it is stored, before it is arranged, which gives the bytes that lines give.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "list.h"
#include "rearranged.h"

namespace Processing::Morvane::format_conversion::kernel {

enum class parts { equal, three_to_one };

// Samples of one byte or one word in a double word.
template <class Sample, parts of_rows>
MORVANE_INLINE uint32_t weighed(const uint32_t near, const uint32_t far) {
  constexpr int bits = 8 * sizeof(Sample);
  uint32_t dword = 0;
  for (int at = 0; at < 32; at += bits) {
    const auto a = static_cast<Sample>(near >> at), b = static_cast<Sample>(far >> at);
    const uint16_t between = of_rows == parts::equal ? average_up(a, b) : nearer_to_first(a, b);
    dword |= uint32_t{between} << at;
  }
  return dword;
}
template <class V, class Sample, parts of_rows>
MORVANE_INLINE auto weighed(const typename V::block near, const typename V::block far) {
  if constexpr (sizeof(Sample) == 2 && of_rows == parts::equal)
    return V::average_up(near, far);
  else if constexpr (sizeof(Sample) == 2)
    return nearer_to_first<V>(near, far);
  else if constexpr (of_rows == parts::equal)
    return V::average_bytes_up(near, far);
  else
    return V::average_bytes_up(near, V::average_bytes_down(near, far));
}

// What is read of two rows. Of words, only some bits are samples; and some bytes, luma beside chroma, are those of the
// near row.
struct bits_of_rows {
  uint32_t read;
  uint32_t near_alone;
};

template <class Sample, parts of_rows, bool has_luma>
struct two_rows {
  const uint8_t* near;
  const uint8_t* far;
  const bits_of_rows& bits;
};

template <class V, class Sample>
MORVANE_INLINE auto samples_of(const uint8_t* row, const int number, const bits_of_rows& bits) {
  if constexpr (sizeof(Sample) == 2)
    return V::and_blocks(block_of_row<V>(row, number), V::repeat_dword(bits.read));
  else
    return block_of_row<V>(row, number);
}
template <class V, class Sample, parts of_rows, bool has_luma>
MORVANE_INLINE auto block_of_row(const two_rows<Sample, of_rows, has_luma>& rows, const int number) {
  const auto near = samples_of<V, Sample>(rows.near, number, rows.bits);
  const auto between = weighed<V, Sample, of_rows>(near, samples_of<V, Sample>(rows.far, number, rows.bits));
  if constexpr (!has_luma) return between;
  const auto luma = V::repeat_dword(rows.bits.near_alone);
  return V::xor_blocks(between, V::and_blocks(V::xor_blocks(between, near), luma));
}

// Of planes of which one row is read, then of those with a near row, then of the same with a far one.
template <class Sample, parts of_rows, class Written, class One, class Two>
struct resample;

template <class Sample, parts of_rows, int... written, int... one, int... two>
struct resample<Sample, of_rows, of_planes<written...>, of_planes<one...>, of_planes<two...>>
    : line_kernel<resample<Sample, of_rows, of_planes<written...>, of_planes<one...>, of_planes<two...>>, from<one>...,
                  from<two>..., from<two>..., to<written>...> {
  static constexpr bool bound_by_memory = sizeof...(written) == 1 && sizeof...(one) + sizeof...(two) == 1;
  static constexpr bool fills_registers = true;
  static constexpr int gathered = of_planes<one..., two...>::count;
  static constexpr bool has_luma = of_rows == parts::equal && sizeof...(two) == 1 && sizeof...(written) > 1;
  byte_places places;
  bits_of_rows bits;
  bool streams;

  MORVANE_INLINE void rule(const read_bytes<one>... src, const read_bytes<two>... near, const read_bytes<two>... far,
                           const written_bytes<written>... dst) const {
    uint32_t nearer = 0, other = 0;
    int passed = 0;
    (append<one>(nearer, passed, src), ...);
    other = nearer;
    int passed_of_other = passed;
    (append<two>(nearer, passed, near), ...);
    (append<two>(other, passed_of_other, far), ...);
    if constexpr (sizeof(Sample) == 2) {
      nearer &= bits.read;
      other &= bits.read;
    }
    uint32_t dword = weighed<Sample, of_rows>(nearer, other);
    if constexpr (has_luma) dword ^= (dword ^ nearer) & bits.near_alone;
    if constexpr (sizeof(Sample) == 2) dword = places.rounded(dword);
    dword = places.arranged(dword);
    passed = 0;
    (take<written>(dword, passed, dst), ...);
  }
  template <class V>
  MORVANE_INLINE auto convert(const read_bytes<one>... src, const read_bytes<two>... near,
                              const read_bytes<two>... far) const {
    using rows = two_rows<Sample, of_rows, has_luma>;
    auto dwords = gather<V>(of_planes<one..., two...>(), src..., rows{near, far, bits}...);
    if constexpr (sizeof(Sample) == 2)
      dwords = {places.template rounded<V>(dwords.lower), places.template rounded<V>(dwords.upper)};
    return scatter<V>(of_planes<written...>(),
                      {places.template arranged<V>(dwords.lower), places.template arranged<V>(dwords.upper)});
  }
};

template <parts of_rows, class Written, class One, class Two>
using resample_bytes = resample<uint8_t, of_rows, Written, One, Two>;

// Planes of chroma alone, in either direction.
template <parts of_rows>
using resample_chroma = kernel_list<resample_bytes<of_rows, of_planes<4>, of_planes<>, of_planes<4>>,
                                    resample_bytes<of_rows, of_planes<4>, of_planes<>, of_planes<2, 2>>,
                                    resample_bytes<of_rows, of_planes<2, 2>, of_planes<>, of_planes<4>>,
                                    resample<uint16_t, of_rows, of_planes<4>, of_planes<>, of_planes<4>>>;

// And chroma that lies, or will lie, beside luma.
using resample_kernels =
    joined_lists<resample_chroma<parts::equal>, resample_chroma<parts::three_to_one>,
                 kernel_list<resample_bytes<parts::equal, of_planes<2, 1, 1>, of_planes<>, of_planes<4>>,
                             resample_bytes<parts::three_to_one, of_planes<4>, of_planes<2>, of_planes<2>>,
                             resample_bytes<parts::three_to_one, of_planes<4>, of_planes<2>, of_planes<1, 1>>>>::type;

}  // namespace Processing::Morvane::format_conversion::kernel
