// How a kernel is reached: line_of<Kernel>() is the function that converts a line, compiled for the backend in use.
//
// Where a build has several backends, that is a look into the table of the one in use, and the functions themselves are
// in the translation units of their backends alone. Where it has one, there is nothing to choose: calls are direct.
#pragma once

#include <type_traits>

#include "../kernel/units.h"
#include "../vector/inline.h"
#include "kernels.h"

#ifdef MORVANE_ONLY_BACKEND
#include MORVANE_ONLY_BACKEND_HEADER

#include "compiled.h"
#endif

namespace Processing::Morvane::backend {

namespace vector = format_conversion::vector;

// The line functions of a backend, by kernel.
template <class Kernel>
struct table_entry {
  kernel::line_function<Kernel>* line;
};

template <class List>
struct table_of;

template <class... Kernel>
struct table_of<kernel::kernel_list<Kernel...>> : table_entry<Kernel>... {};

using line_table = table_of<all_kernels>;

#define MORVANE_BACKEND(tag, works) extern const line_table lines_of_##tag;
#include "list.h"

// Those of the backend in use.
extern const line_table* lines_in_use;

template <class Kernel>
MORVANE_INLINE kernel::line_function<Kernel>* line_of() {
#ifdef MORVANE_ONLY_BACKEND
  return &compiled<vector::MORVANE_ONLY_BACKEND, Kernel>::line;
#else
  return static_cast<const table_entry<Kernel>*>(lines_in_use)->line;
#endif
}

}  // namespace Processing::Morvane::backend
