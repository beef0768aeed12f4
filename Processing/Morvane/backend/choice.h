// The backends of this build, and the choice among them.
//
// Where there are several, the library takes the widest that the processor and the operating system can run; it is
// chosen when the program starts.
#pragma once

#include <span>

namespace Processing::Morvane::backend {

// A backend of this build: its place among them, narrowest first.
enum class kind : int {};

// The backends that this processor can run, the library's own choice last.
std::span<const kind> available();

kind chosen();

// For tests and benchmarks: makes every later call use `k`, which must be one of available(). No conversion may be
// running meanwhile.
void choose(kind k);

const char* name(kind k);

}  // namespace Processing::Morvane::backend
