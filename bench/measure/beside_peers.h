// Measures plans of the checked interface at several sizes, beside memcpy and every other library that has the pair.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "measure/caches.h"
#include "measure/likeness.h"
#include "measure/ring.h"

namespace morvane::bench {

using times_at_sizes = std::array<double, sizes.size()>;  // nanoseconds

struct peer_of_pair {
  std::string library{};
  std::string function{};
  likeness like{};
  times_at_sizes nanoseconds{};
};

struct pair_beside_peers {
  std::string source{};
  std::string destination{};
  std::vector<std::string> steps{};  // of the plan
  times_at_sizes nanoseconds{};      // with linear chroma
  times_at_sizes nearest_nanoseconds{};
  times_at_sizes copy_nanoseconds{};  // of a memcpy that moves as many bytes
  std::vector<peer_of_pair> peers{};

  std::string name() const { return source + ":" + destination; }
  double share_of_memcpy(std::size_t size) const { return copy_nanoseconds[size] / nanoseconds[size]; }
  // How many times as fast the plan is, with the filter of the other library.
  double times(const peer_of_pair& other, std::size_t size) const {
    const bool is_nearest = other.like.chroma == filter::nearest;
    return other.nanoseconds[size] / (is_nearest ? nearest_nanoseconds : nanoseconds)[size];
  }
};

struct peer_request {
  std::vector<format_pair> pairs{};
  std::array<size, sizes.size()> pictures = sizes;  // the first of them stays in the caches
  std::int64_t bytes_of_ring = bytes_beyond_caches();
};

std::vector<pair_beside_peers> measure_beside_peers(const peer_request& wanted,
                                                    const std::vector<std::string>& options);

}  // namespace morvane::bench
