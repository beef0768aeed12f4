// What a kernel states about itself as data.
//
// A kernel is a type. What it converts at once is a unit: a pixel, a pair of pixels or a group of them. By the base
// that it derives from it states the pixels of a unit, the bytes of a unit in each plane, and how a line ends. Its
// `rule` converts one unit in plain C++ and is the formula. Its `convert<V>` makes of the units that begin at the given
// places of the source planes what the backend V then stores:
//
//   struct uyvy_to_yuy2 : each_pixel<from<2>, to<2>> {
//     static void rule(const uint8_t* src, uint8_t* dst);
//     template <class V> static auto convert(const uint8_t* src);
//   };
//
// The number of units in a vector, the walk over a line, its end, the function that converts a line, and which strides
// are tight follow from that. Further, a kernel may have
//   in_order           true: where planes overlap, the rule converts unit by unit and so defines the result
//   fills_registers    true: one vector needs all registers of a backend, so that two are not converted at once
//   bound_by_memory    true: moving the bytes takes the time, and hardly anything else
//   expects_loads      true: so much is computed that a processor looks too little ahead, so that loads are announced
//                      too
//   crowds_stores      true: so many vectors are stored at once that a processor cannot hold them until it has their
//                      cache lines
//   seen<V>            what is remembered of the units seen; rule and convert take it first, and its result() is the
//                      `answer` of the line function
//   looks_back         true: only the unit before is remembered, and seen_before<V>(begins, sources...) finds it in
//                      memory, `begins` saying whether the unit at these places is the first of a line; the rule takes
//                      `begins` instead of what is remembered
//   count(no_pixels)   the units of a line, where no base has the right number
//   line<V>(...)       the function that converts a line, where a walk is not all of it
//   streams            a member, true: what fills whole cache lines is stored past the caches
//   members            what a caller says beside the planes; the line function takes the kernel as its last argument
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "../vector/inline.h"

namespace Processing::Morvane::format_conversion::kernel {

// A plane with so many bytes for each unit.
template <class Byte, int bytes_of_unit>
struct unit_by_unit {
  using pointer = Byte*;
  static constexpr int bytes = bytes_of_unit;
  static constexpr bool begins_anywhere = true;  // a vector may begin with any unit

  MORVANE_INLINE static constexpr Byte* at(Byte* line, const size_t unit) { return line + unit * bytes; }
};

template <int bytes_of_unit>
using from = unit_by_unit<const uint8_t, bytes_of_unit>;
template <int bytes_of_unit>
using to = unit_by_unit<uint8_t, bytes_of_unit>;

template <class Plane>
inline constexpr bool is_source = std::is_const_v<std::remove_pointer_t<typename Plane::pointer>>;

// True when the two ranges share no byte; an empty range shares none.
MORVANE_INLINE bool apart(const void* a, const size_t a_bytes, const void* b, const size_t b_bytes) {
  const auto a_begin = reinterpret_cast<uintptr_t>(a);
  const auto b_begin = reinterpret_cast<uintptr_t>(b);
  return a_bytes == 0 || b_bytes == 0 || a_begin + a_bytes <= b_begin || b_begin + b_bytes <= a_begin;
}

// True when no two of the planes of a line share a byte; each plane has `units` times its own number of bytes.
template <int first_bytes, int... bytes, class First, class... Plane>
MORVANE_INLINE bool all_apart(const size_t units, First* first, Plane*... planes) {
  if constexpr (sizeof...(Plane) == 0)
    return true;
  else
    return (apart(first, units * first_bytes, planes, units * bytes) && ...) && all_apart<bytes...>(units, planes...);
}

template <size_t index, class First, class... Rest>
struct plane_at : plane_at<index - 1, Rest...> {};

template <class First, class... Rest>
struct plane_at<0, First, Rest...> {
  using type = First;
};

// The planes of a kernel, the sources first.
template <class... Plane>
struct plane_list {
  static constexpr size_t sources = (size_t{0} + ... + (is_source<Plane> ? 1 : 0));
  static constexpr size_t destinations = sizeof...(Plane) - sources;
  static constexpr bool begin_anywhere = (Plane::begins_anywhere && ...);

  template <size_t index>
  using type = typename plane_at<index, Plane...>::type;

  MORVANE_INLINE static bool apart(const size_t units, const typename Plane::pointer... planes) {
    return all_apart<Plane::bytes...>(units, planes...);
  }
};

MORVANE_INLINE constexpr size_t at_least_zero(const int count) {
  return count < 0 ? 0 : static_cast<size_t>(count);
}

// The last unit of a line: one that lies wholly within it, or one that at least begins in it, whose other pixels are
// read and written too.
enum class last_unit { whole, begun };

template <int pixels_of_unit, last_unit last, class... Plane>
struct units {
  using planes = plane_list<Plane...>;
  static constexpr int pixels = pixels_of_unit;
  using answer = void;
  static constexpr bool in_order = false;
  static constexpr bool fills_registers = false;
  static constexpr bool bound_by_memory = false;
  static constexpr bool expects_loads = false;
  static constexpr bool crowds_stores = false;
  static constexpr bool looks_back = false;

  MORVANE_INLINE static constexpr size_t count(const int no_pixels) {
    constexpr size_t begun = last == last_unit::begun ? pixels - 1 : 0;
    return (at_least_zero(no_pixels) + begun) / pixels;
  }
};

template <class... Plane>
using each_pixel = units<1, last_unit::whole, Plane...>;
template <class... Plane>
using each_whole_pair = units<2, last_unit::whole, Plane...>;
template <class... Plane>
using each_begun_pair = units<2, last_unit::begun, Plane...>;

// The function that converts a line of so many pixels.
template <class Kernel, class Planes = typename Kernel::planes>
struct line_type;

template <class Kernel, class... Plane>
requires std::is_empty_v<Kernel>
struct line_type<Kernel, plane_list<Plane...>> {
  using function = typename Kernel::answer(typename Plane::pointer..., int);
};

template <class Kernel, class... Plane>
struct line_type<Kernel, plane_list<Plane...>> {
  using function = typename Kernel::answer(typename Plane::pointer..., int, Kernel);
};

template <class Kernel>
using line_function = typename line_type<Kernel>::function;

}  // namespace Processing::Morvane::format_conversion::kernel
