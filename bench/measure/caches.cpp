#include "measure/caches.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace morvane::bench {

std::int64_t last_level_cache() {
  constexpr std::int64_t where_nothing_is_known = std::int64_t{32} << 20;
  std::int64_t largest = 0;
  for (const benchmark::CPUInfo::CacheInfo& cache : benchmark::CPUInfo::Get().caches)
    largest = std::max(largest, std::int64_t{cache.size});
  return largest > 0 ? largest : where_nothing_is_known;
}

std::int64_t bytes_beyond_caches() {
  return 2 * last_level_cache();
}

}  // namespace morvane::bench
