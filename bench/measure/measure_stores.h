// Measures plans that store to the destination through the caches beside those that store past them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "measure/caches.h"
#include "measure/ring.h"

namespace morvane::bench {

struct store_measurement {
  std::string source{};
  std::string destination{};
  std::int64_t bytes_written = 0;

  // Of one frame of a ring, with nobody who reads it.
  double cached_nanoseconds = 0;
  double streaming_nanoseconds = 0;
  double copy_nanoseconds = 0;  // of a memcpy that moves as many bytes

  // With a pass behind it that reads all of the destination.
  double cached_and_read_nanoseconds = 0;
  double streaming_and_read_nanoseconds = 0;

  std::string name() const { return source + ":" + destination; }
  double cached_share_of_memcpy() const { return copy_nanoseconds / cached_nanoseconds; }
  double streaming_share_of_memcpy() const { return copy_nanoseconds / streaming_nanoseconds; }
  // How many times as fast streaming is.
  double gain() const { return cached_nanoseconds / streaming_nanoseconds; }
  double gain_before_a_reader() const { return cached_and_read_nanoseconds / streaming_and_read_nanoseconds; }
};

struct store_request {
  std::vector<format_pair> pairs{};
  size picture = ultra_hd;
  std::int64_t bytes_of_ring = bytes_beyond_caches();
};

// The runs of each pair alternate in random order.
std::vector<store_measurement> measure_stores(const store_request& wanted, const std::vector<std::string>& options);

}  // namespace morvane::bench
