// A fuzzer that finds a promise broken ends by a signal, as it does at an invalid access.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace morvane::fuzz {

inline void expect(const bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

}  // namespace morvane::fuzz
