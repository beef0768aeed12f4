// What a run of the report measured.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "peers.h"
#include "rows.h"

namespace morvane::bench {

// One row, by one of those who can run it: a backend of the library ("avx2") or another library ("libyuv").
struct measurement {
  std::string row{};
  std::string runner{};
  size nominal{};  // of the odd shape too: 1920x1080
  shape memory = shape::tight;
  int threads = 1;
  bool is_peer = false;
  std::string function{};  // of a peer
  agreement label{};       // of a peer
  std::int64_t bytes = 0;  // read plus written
  std::int64_t pixels = 0;
  double nanoseconds = 0;
  double copy_nanoseconds = 0;  // of a memcpy that moves as many bytes, on one thread

  std::string size_name() const;
  std::string run_name() const;
  double share_of_memcpy() const { return copy_nanoseconds / nanoseconds; }
  double gigabytes_per_second() const { return static_cast<double>(bytes) / nanoseconds; }
  double nanoseconds_per_pixel() const { return nanoseconds / static_cast<double>(pixels); }
};

class results {
 public:
  results(std::vector<row> rows, std::vector<measurement> all);

  const std::vector<row>& rows() const { return rows_; }
  const std::vector<measurement>& all() const { return all_; }

  // The answers below are null where the filters left nothing.
  const measurement* find(const row& r, size nominal, shape memory, std::string_view runner, int threads = 1) const;
  // By the backend that the library chooses.
  const measurement* ours(const row& r, size nominal, shape memory = shape::tight, int threads = 1) const;
  const measurement* portable(const row& r, size nominal, shape memory = shape::tight) const;
  const measurement* best_peer(const row& r, size nominal) const;
  std::vector<const measurement*> peers_of(const row& r, size nominal) const;

 private:
  std::vector<row> rows_;
  std::vector<measurement> all_;
  std::map<std::string, const measurement*> by_name_;
};

// How many times as fast `fast` is, pixel for pixel.
double times_as_fast(const measurement& fast, const measurement& slow);

// A target that a row misses.
struct miss {
  const row* which = nullptr;
  std::string where{};   // "1920x1080, padded"
  std::string target{};  // "of memcpy"
  double reached = 0;
  double wanted = 0;
  std::string_view why{};
};

std::vector<miss> misses(const results& r);

}  // namespace morvane::bench
