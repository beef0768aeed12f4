// The backends of a processor and the choice among them.
//
// On 64-bit Arm there is one backend, NEON, and nothing to choose. On x86-64 the library takes AVX2 where the processor
// and the operating system offer it, and the portable code elsewhere; the choice is made when the program starts.
#pragma once

#include <span>

namespace Processing::Morvane::backend {

enum class kind { portable, avx2, neon };

// The backends that this processor can run, the library's own choice last.
std::span<const kind> available();

kind chosen();

// For tests and benchmarks: makes every later call use `k`, which must be one of available(). No conversion may be
// running meanwhile.
void choose(kind k);

const char* name(kind k);

}  // namespace Processing::Morvane::backend
