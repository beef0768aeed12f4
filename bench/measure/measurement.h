// One measurement, and what follows from it alone.
#pragma once

#include <cstdint>
#include <string>

#include "measure/workload.h"
#include "peers/agreement.h"

namespace morvane::bench {

// One row, by one of those who can run it: a backend of the library or another library.
struct measurement {
  std::string row{};
  std::string runner{};
  place where{};
  int threads = 1;
  bool is_peer = false;
  std::string function{};  // of a peer
  agreement label{};       // of a peer
  std::int64_t bytes = 0;  // read plus written
  std::int64_t pixels = 0;
  double nanoseconds = 0;
  double copy_nanoseconds = 0;  // of a memcpy that moves as many bytes, on one thread

  // "uyvy::yuy2/1920x1080/tight/" and the runner
  std::string run_name() const;
  double share_of_memcpy() const { return copy_nanoseconds / nanoseconds; }
  double gigabytes_per_second() const { return static_cast<double>(bytes) / nanoseconds; }
  double nanoseconds_per_pixel() const { return nanoseconds / static_cast<double>(pixels); }
};

// How many times as fast `fast` is, pixel for pixel.
double times_as_fast(const measurement& fast, const measurement& slow);

// Of an even count, halfway between the two in the middle. There must be one value at least.
double median(std::vector<double> values);

}  // namespace morvane::bench
