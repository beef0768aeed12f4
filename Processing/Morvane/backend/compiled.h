// The line functions of the kernels, for the vectors of one backend.
#pragma once

#include "../kernel/units.h"
#include "../kernel/walk.h"

namespace Processing::Morvane::backend {

// The line function of a kernel, compiled for the vectors of V.
template <class V, class Kernel, class Function = format_conversion::kernel::line_function<Kernel>>
struct compiled;

template <class V, class Kernel, class Answer, class... Argument>
struct compiled<V, Kernel, Answer(Argument...)> {
  static Answer line(Argument... arguments) { return format_conversion::kernel::line_by<V, Kernel>::run(arguments...); }
};

}  // namespace Processing::Morvane::backend
