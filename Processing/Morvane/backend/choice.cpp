// The choice of a backend when the program starts.
#include "choice.h"

#include "run.h"

namespace Processing::Morvane::backend {

#if defined(__aarch64__)

std::span<const kind> available() {
  static constexpr kind all[] = {kind::neon};
  return all;
}

kind chosen() {
  return kind::neon;
}

void choose(kind) {
}

#elif defined(__x86_64__)

namespace {

// Also asks the operating system, which must save the registers of AVX when it switches between threads.
bool offers_avx2() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2");
}

}  // namespace

// A conversion that runs before this is initialised takes the portable code.
bool use_avx2 = offers_avx2();

std::span<const kind> available() {
  static constexpr kind all[] = {kind::portable, kind::avx2};
  return std::span(all).first(offers_avx2() ? 2 : 1);
}

kind chosen() {
  return use_avx2 ? kind::avx2 : kind::portable;
}

void choose(const kind k) {
  use_avx2 = k == kind::avx2 && offers_avx2();
}

#else

std::span<const kind> available() {
  static constexpr kind all[] = {kind::portable};
  return all;
}

kind chosen() {
  return kind::portable;
}

void choose(kind) {
}

#endif

const char* name(const kind k) {
  switch (k) {
    case kind::portable:
      return "portable";
    case kind::avx2:
      return "avx2";
    case kind::neon:
      return "neon";
  }
  return "";
}

}  // namespace Processing::Morvane::backend
