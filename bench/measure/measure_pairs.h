// Measures plans of the checked interface, each beside memcpy and swscale.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "measure/caches.h"
#include "measure/ring.h"

namespace morvane::bench {

struct pair_measurement {
  std::string source{};
  std::string destination{};
  std::vector<std::string> steps{};  // of the plan
  std::int64_t bytes = 0;            // read plus written
  std::int64_t pixels = 0;

  // Of one frame of a ring, so that all of it comes from memory and goes there.
  double nanoseconds = 0;          // with linear chroma
  double nearest_nanoseconds = 0;  // with nearest chroma, which is the same where none is resampled
  double copy_nanoseconds = 0;     // of a memcpy that moves as many bytes

  // The same, by swscale; nothing where it has no such pair.
  std::optional<double> swscale_nearest_nanoseconds{};
  std::optional<double> swscale_bilinear_nanoseconds{};

  std::optional<double> tiny_nanoseconds{};  // of a picture with next to no rows

  // Of one and the same picture of in_cache, which stays in the nearest caches.
  double in_cache_nanoseconds = 0;
  double in_cache_copy_nanoseconds = 0;

  // Of the plan, over different pictures of in_cache; nothing where that was not wanted.
  std::optional<double> gain_of_two_threads{};

  std::string name() const { return source + ":" + destination; }
  // Whether the plan takes rows through lines of samples; another one is a single step.
  bool goes_by_lines() const { return steps.size() > 1; }
  double share_of_memcpy() const { return copy_nanoseconds / nanoseconds; }
  double share_in_cache() const { return in_cache_copy_nanoseconds / in_cache_nanoseconds; }
  double gigabytes_per_second() const { return static_cast<double>(bytes) / nanoseconds; }
  double copied_gigabytes_per_second() const { return static_cast<double>(bytes) / copy_nanoseconds; }
  std::optional<double> times_tiny() const {
    return tiny_nanoseconds ? std::optional(nanoseconds / *tiny_nanoseconds) : std::nullopt;
  }
  // How many times as fast as swscale, both with nearest chroma, or linear beside bilinear.
  std::optional<double> times_nearest() const { return times(swscale_nearest_nanoseconds, nearest_nanoseconds); }
  std::optional<double> times_bilinear() const { return times(swscale_bilinear_nanoseconds, nanoseconds); }
  // The lesser of both.
  std::optional<double> times_swscale() const;
  // The same of memcpy: no conversion that waits for memory can be faster.
  std::optional<double> copy_times_swscale() const;

 private:
  static std::optional<double> times(std::optional<double> theirs, double own) {
    return theirs ? std::optional(*theirs / own) : std::nullopt;
  }
};

enum class thoroughness {
  thorough,
  // A frame or two at a time and no more than each figure needs, for ten thousand pairs: an overview.
  brief,
};

struct pair_request {
  std::vector<format_pair> pairs{};
  // Those of them that are measured on two threads as well; briefly, no others are as tiny pictures.
  std::vector<format_pair> on_threads{};
  thoroughness how = thoroughness::thorough;
  size picture = full_hd;
  std::int64_t bytes_of_ring = bytes_beyond_caches();
};

// Each pair by itself, its runs alternating with those that it is compared with: what disturbs the machine for a while
// then disturbs all of them.
std::vector<pair_measurement> measure_pairs(const pair_request& wanted, const std::vector<std::string>& options);

}  // namespace morvane::bench
