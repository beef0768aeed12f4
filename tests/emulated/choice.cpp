// In place of the library's choice of a backend: AVX-512, whatever the processor has.
#include "backend/choice.h"

#include "backend/dispatch.h"

namespace Processing::Morvane::backend {

constinit const line_table* lines_in_use = &lines_of_avx512;

std::span<const kind> available() {
  static constexpr kind all[] = {kind{}};
  return all;
}

kind chosen() {
  return {};
}

void choose(kind) {
}

const char* name(kind) {
  return "avx512";
}

}  // namespace Processing::Morvane::backend
