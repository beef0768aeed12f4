// What a vector body returns: for each destination plane what is to be stored there, one after the other.
//
// The vector types of a backend that can be stored say how many bytes they take, `stored_bytes`, and the backend has a
// `store` for each.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../vector/inline.h"

namespace Processing::Morvane::format_conversion::kernel {

// For a plane that gets nothing.
struct nothing {
  static constexpr size_t stored_bytes = 0;
};

// For one plane: items that follow each other.
template <class First, class Rest>
struct row_of {
  static constexpr size_t stored_bytes = First::stored_bytes + Rest::stored_bytes;
  First first;
  Rest rest;
};

template <class Item>
MORVANE_INLINE Item in_a_row(const Item& item) {
  return item;
}

template <class First, class... Rest>
MORVANE_INLINE auto in_a_row(const First& first, const Rest&... rest) {
  return row_of<First, decltype(in_a_row(rest...))>{first, in_a_row(rest...)};
}

// For several planes: an item for each.
template <class... Item>
struct items_of_planes {};

template <class First, class... Rest>
struct items_of_planes<First, Rest...> {
  First first;
  items_of_planes<Rest...> rest;
};

MORVANE_INLINE items_of_planes<> to_planes() {
  return {};
}

template <class First, class... Rest>
MORVANE_INLINE items_of_planes<First, Rest...> to_planes(const First& first, const Rest&... rest) {
  return {first, to_planes(rest...)};
}

template <class First, class... Rest>
MORVANE_INLINE items_of_planes<First, Rest...> prepended(const First& first, const items_of_planes<Rest...>& rest) {
  return {first, rest};
}

// Of each plane the items of the one and behind them those of the other.
MORVANE_INLINE items_of_planes<> in_a_row(const items_of_planes<>&, const items_of_planes<>&) {
  return {};
}

template <class A, class... As, class B, class... Bs>
MORVANE_INLINE auto in_a_row(const items_of_planes<A, As...>& a, const items_of_planes<B, Bs...>& b) {
  return prepended(in_a_row(a.first, b.first), in_a_row(a.rest, b.rest));
}

// The item of a plane; a body with one destination plane returns its item alone.
template <size_t plane, class Item>
MORVANE_INLINE const auto& item_of(const Item& item) {
  static_assert(plane == 0);
  return item;
}

template <size_t plane, class First, class... Rest>
MORVANE_INLINE const auto& item_of(const items_of_planes<First, Rest...>& items) {
  if constexpr (plane == 0)
    return items.first;
  else
    return item_of<plane - 1>(items.rest);
}

template <class V, class Item>
MORVANE_INLINE void store(uint8_t* dst, const Item& item) {
  V::store(dst, item);
}

template <class V>
MORVANE_INLINE void store(uint8_t*, const nothing&) {
}

template <class V, class First, class Rest>
MORVANE_INLINE void store(uint8_t* dst, const row_of<First, Rest>& row) {
  store<V>(dst, row.first);
  store<V>(dst + First::stored_bytes, row.rest);
}

}  // namespace Processing::Morvane::format_conversion::kernel
