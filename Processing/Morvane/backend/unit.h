// The translation unit of a backend: every kernel, compiled for its vectors. It is included by those units alone, each
// of which the build compiles with the instructions that its backend needs.
#pragma once

#include "../vector/operations.h"
#include "compiled.h"
#include "dispatch.h"

namespace Processing::Morvane::backend {

template <class V, class... Kernel>
consteval table_of<kernel::kernel_list<Kernel...>> lines_for(kernel::kernel_list<Kernel...>) {
  return {{&compiled<V, Kernel>::line}...};
}

}  // namespace Processing::Morvane::backend

#define MORVANE_BACKEND_UNIT(tag)                                                    \
  namespace Processing::Morvane::backend {                                           \
  static_assert(format_conversion::vector::backend<vector::tag>);                    \
  constinit const line_table lines_of_##tag = lines_for<vector::tag>(all_kernels()); \
  }
