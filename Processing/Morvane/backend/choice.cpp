// The choice of a backend when the program starts.
#include "choice.h"

#include <array>
#include <iterator>

#include "dispatch.h"

#ifdef __x86_64__
#include <cpuid.h>
#endif

namespace Processing::Morvane::backend {

namespace {

#ifdef __x86_64__
// Not every compiler has a name for this, and every processor with AVX2 has it.
bool converts_half_floats() {
  unsigned a = 0, b = 0, c = 0, d = 0;
  return __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & bit_F16C) != 0;
}
#endif

struct backend_of_build {
  const char* name;
  const line_table* lines;
  bool (*works)();
};

#define MORVANE_BACKEND(tag, works) {#tag, &lines_of_##tag, [] { return (works) != 0; }},
constexpr backend_of_build all[] = {
#include "list.h"
};

const backend_of_build& entry_of(const kind k) {
  return all[static_cast<int>(k)];
}

struct working_backends {
  std::array<kind, std::size(all)> kinds{};
  std::size_t count = 0;

  working_backends() {
    for (std::size_t i = 0; i < std::size(all); ++i)
      if (all[i].works()) kinds[count++] = static_cast<kind>(i);
  }
};

kind kind_in_use{};

}  // namespace

// A conversion that runs before the choice takes the first backend, which every processor of the kind can run.
constinit const line_table* lines_in_use = all[0].lines;

std::span<const kind> available() {
  static const working_backends working;
  return {working.kinds.data(), working.count};
}

kind chosen() {
  return kind_in_use;
}

void choose(const kind k) {
  kind_in_use = k;
  lines_in_use = entry_of(k).lines;
}

const char* name(const kind k) {
  return entry_of(k).name;
}

namespace {

[[maybe_unused]] const bool chosen_at_start = (choose(available().back()), true);

}  // namespace

}  // namespace Processing::Morvane::backend
