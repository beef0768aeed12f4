// How a kernel is reached: line_of<Kernel>() is the function that runs Kernel over one line, compiled for the backend
// in use.
//
// A kernel is a type with a member template line<V>(planes..., no_pixels), V being a backend of vector/.
#pragma once

#include "../format_conversion_utils.h"

#if defined(__aarch64__)

#include "../vector/neon.h"
#include "../vector/operations.h"

namespace Processing::Morvane::backend {

static_assert(format_conversion::vector::backend_with_vectors<format_conversion::vector::neon>);

template <class Kernel>
MORVANE_INLINE constexpr auto line_of() {
  return &Kernel::template line<format_conversion::vector::neon>;
}

}  // namespace Processing::Morvane::backend

#else

#include "../vector/portable.h"

namespace Processing::Morvane::backend {

template <class Kernel>
using line_function = decltype(&Kernel::template line<format_conversion::vector::portable>);

#if defined(__x86_64__)

// The line function compiled for AVX2. It is defined in avx2.cpp alone, which lists the kernels.
template <class Kernel, class Function = line_function<Kernel> >
struct on_avx2;

template <class Kernel, class Result, class... Argument>
struct on_avx2<Kernel, Result (*)(Argument...)> {
  static Result line(Argument... arguments);
};

extern bool use_avx2;

template <class Kernel>
line_function<Kernel> line_of() {
  return use_avx2 ? &on_avx2<Kernel>::line : &Kernel::template line<format_conversion::vector::portable>;
}

#else

template <class Kernel>
constexpr line_function<Kernel> line_of() {
  return &Kernel::template line<format_conversion::vector::portable>;
}

#endif

}  // namespace Processing::Morvane::backend

#endif
