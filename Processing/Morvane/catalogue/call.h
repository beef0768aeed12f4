// One call of any conversion over plain arrays of planes, and the thunk that unpacks it into the entry point's own
// parameters. The catalogue holds such a thunk for every conversion, so that tests, benchmark and command call all of
// them in one way.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "../Processing.Morvane.h"

namespace morvane::catalogue {

inline constexpr std::size_t max_planes = 4;

template <class Byte>
struct planes {
  std::array<Byte*, max_planes> data{};
  std::array<int, max_planes> stride{};
};

struct call {
  planes<const std::uint8_t> source;
  planes<std::uint8_t> destination;
  int xres = 0;
  int yres = 0;
  int argument = 0;        // the colour space, fill value or switch of the conversions that take one
  bool* opaque = nullptr;  // where the conversions with an opacity report store it; null asks for none
};

using thunk = void (*)(const call&);

namespace detail {

// What one parameter of an entry point is, read off the types of all its parameters. Every plane is a pointer,
// followed by its stride; pointers without a stride of their own share that of the last. Then come xres, yres and, for
// some, one more argument.
enum class role { source_plane, destination_plane, source_stride, destination_stride, xres, yres, argument, opaque };

struct parameter {
  role what{};
  std::size_t plane = 0;
};

template <class P>
inline constexpr bool is_source = std::is_pointer_v<P>&& std::is_const_v<std::remove_pointer_t<P>>;

template <class... P>
constexpr std::array<parameter, sizeof...(P)> roles() {
  constexpr bool pointer[] = {(std::is_pointer_v<P> && !std::is_same_v<P, bool*>)...};
  constexpr bool source[] = {is_source<P>...};
  constexpr bool flag[] = {std::is_same_v<P, bool*>...};
  std::array<parameter, sizeof...(P)> result{};
  std::size_t sources = 0;
  std::size_t destinations = 0;
  int sizes = 0;
  for (std::size_t i = 0; i < sizeof...(P); ++i) {
    if (pointer[i])
      result[i] =
          source[i] ? parameter{role::source_plane, sources++} : parameter{role::destination_plane, destinations++};
    else if (i > 0 && pointer[i - 1])
      result[i] = source[i - 1] ? parameter{role::source_stride, sources - 1}
                                : parameter{role::destination_stride, destinations - 1};
    else if (flag[i])
      result[i] = {role::opaque};
    else
      result[i] = {sizes == 0 ? role::xres : sizes == 1 ? role::yres : role::argument}, ++sizes;
  }
  return result;
}

template <parameter p, class P>
P unpack(const call& c) {
  if constexpr (p.what == role::source_plane)
    return reinterpret_cast<P>(c.source.data[p.plane]);
  else if constexpr (p.what == role::destination_plane)
    return reinterpret_cast<P>(c.destination.data[p.plane]);
  else if constexpr (p.what == role::source_stride)
    return c.source.stride[p.plane];
  else if constexpr (p.what == role::destination_stride)
    return c.destination.stride[p.plane];
  else if constexpr (p.what == role::xres)
    return c.xres;
  else if constexpr (p.what == role::yres)
    return c.yres;
  else if constexpr (p.what == role::opaque)
    return c.opaque;
  else
    return static_cast<P>(c.argument);
}

template <auto entry_point, class... P>
constexpr thunk make_thunk(void (*)(P...)) {
  return [](const call& c) {
    [&c]<std::size_t... i>(std::index_sequence<i...>) {
      constexpr auto r = roles<P...>();
      entry_point(unpack<r[i], P>(c)...);
    }
    (std::index_sequence_for<P...>{});
  };
}

template <class... P>
constexpr bool takes_words(void (*)(P...)) {
  return ((std::is_same_v<P, const std::uint16_t*> || std::is_same_v<P, std::uint16_t*>) || ...);
}

}  // namespace detail

// What a conversion is called by.
struct entry_point {
  thunk convert = nullptr;
  bool takes_words = false;  // 16-bit planes are given as words, whose addresses are even
  bool is_declared = true;   // in the public header; otherwise the catalogue alone leads to it
};

// An entry point of the public header. An overloaded one is named with its type:
// entry_of<static_cast<void (*)(...)>(&f)>.
template <auto function>
inline constexpr entry_point entry_of = {detail::make_thunk<function>(function), detail::takes_words(function)};

}  // namespace morvane::catalogue
