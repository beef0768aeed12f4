// Words of one to four components in turn, as blocks, and a block of each component.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lines.h"
#include "stored.h"

namespace Processing::Morvane::format_conversion::kernel {

template <class V>
MORVANE_INLINE auto deinterleaved(const typename V::block a) {
  return to_planes(a);
}
template <class V>
MORVANE_INLINE auto deinterleaved(const typename V::block first, const typename V::block second) {
  const auto words = V::deinterleave2_words(first, second);
  return to_planes(words.first, words.second);
}
template <class V>
MORVANE_INLINE auto deinterleaved(const typename V::block first, const typename V::block second,
                                  const typename V::block third) {
  const auto words = V::deinterleave3_words(first, second, third);
  return to_planes(words.first, words.second, words.third);
}
template <class V>
MORVANE_INLINE auto deinterleaved(const typename V::block first, const typename V::block second,
                                  const typename V::block third, const typename V::block fourth) {
  const auto lower = V::deinterleave2_words(first, second);
  const auto upper = V::deinterleave2_words(third, fourth);
  const auto even = V::deinterleave2_words(lower.first, upper.first);
  const auto odd = V::deinterleave2_words(lower.second, upper.second);
  return to_planes(even.first, odd.first, even.second, odd.second);
}

// What `store_as` makes of each block, in a row.
template <class V, class StoreAs>
MORVANE_INLINE auto interleaved(const StoreAs store_as, const typename V::block a) {
  return store_as(a);
}
template <class V, class StoreAs>
MORVANE_INLINE auto interleaved(const StoreAs store_as, const typename V::block a, const typename V::block b,
                                const typename V::block c) {
  const auto words = V::interleave3_words(a, b, c);
  return in_a_row(store_as(words.first), store_as(words.second), store_as(words.third));
}
template <class V, class StoreAs>
MORVANE_INLINE auto interleaved(const StoreAs store_as, const typename V::block a, const typename V::block b,
                                const typename V::block c, const typename V::block d) {
  const auto ab = V::interleave2_words(a, b);
  const auto cd = V::interleave2_words(c, d);
  const auto lower = V::interleave2_dwords(ab.first, cd.first);
  const auto upper = V::interleave2_dwords(ab.second, cd.second);
  return in_a_row(store_as(lower.first), store_as(lower.second), store_as(upper.first), store_as(upper.second));
}

}  // namespace Processing::Morvane::format_conversion::kernel
