// What is measured: each conversion at several sizes and in several shapes of memory, and the copies that it is
// compared with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/conversions.h"

namespace morvane::bench {

enum class shape {
  tight,      // every row follows the one before
  padded,     // a cache line between the rows
  odd,        // one pixel narrower, tight
  unaligned,  // tight, every plane beginning at an address that is not a multiple of 4
};

std::string_view name_of(shape s);

struct size {
  int xres = 0;
  int yres = 0;
};

struct workload {
  const catalogue::conversion* conversion = nullptr;
  size picture{};
  shape memory = shape::tight;
  std::int64_t bytes_read = 0;
  std::int64_t bytes_written = 0;

  std::int64_t bytes() const { return bytes_read + bytes_written; }
  std::string size_name() const;
  std::string_view shape_name() const { return name_of(memory); }
  // "uyvy::yuy2/1920x1080/tight"
  std::string name() const;
};

// Every conversion in the order of the catalogue, and the difference of two images.
std::vector<const catalogue::conversion*> all_conversions();

// "uyvy::yuy2"; a name of the catalogue that stands for several rows is followed by the destination.
std::string display_name(const catalogue::conversion& c);

// The shape `odd` takes one pixel off the width.
workload make_workload(const catalogue::conversion& c, size picture, shape memory);

// All conversions in the sizes and shapes that are measured when nobody asks for others.
std::vector<workload> all_workloads();

// Memory for the largest workload, filled with noise and touched, so that no page is missing when the clock runs.
class arena {
 public:
  explicit arena(const std::vector<workload>& workloads);

  catalogue::call prepare(const workload& w, bool* opaque) const;
  // Copies half of `bytes`, which reads and writes as many bytes as a conversion of `bytes` reads and writes.
  void copy(std::int64_t bytes) const;

 private:
  std::size_t half_;
  std::unique_ptr<std::uint8_t[]> memory_;

  std::uint8_t* source() const;
  std::uint8_t* destination() const;
};

}  // namespace morvane::bench
