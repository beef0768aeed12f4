// Where a row is measured: the sizes of pictures, the shapes that their planes have in memory, and that memory, which
// the copies share that it is compared with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "measure/rows.h"

namespace morvane::bench {

enum class shape {
  tight,      // every row follows the one before
  padded,     // a cache line between the rows
  odd,        // one pixel narrower, tight
  unaligned,  // tight, every plane beginning at an address that is not a multiple of 4
};

inline constexpr shape shapes[] = {shape::tight, shape::padded, shape::odd, shape::unaligned};

std::string_view name_of(shape s);

struct size {
  int xres = 0;
  int yres = 0;

  bool operator==(const size&) const = default;
};

inline constexpr size in_cache{1920, 16};
inline constexpr size full_hd{1920, 1080};
inline constexpr size ultra_hd{3840, 2160};
inline constexpr std::array sizes = {in_cache, full_hd, ultra_hd};

// As many pixels as in_cache, in rows of 64.
inline constexpr size short_rows{64, 480};

// "1920x1080"
std::string name_of(const size& s);

struct place {
  size nominal{};  // the shape `odd` takes one pixel off the width
  shape memory = shape::tight;
};

// Every size in every shape, and the short rows, padded.
std::vector<place> all_places();

struct workload {
  const catalogue::conversion* conversion = nullptr;
  bool rescale = false;
  size picture{};
  shape memory = shape::tight;
  std::int64_t bytes_read = 0;
  std::int64_t bytes_written = 0;

  std::int64_t bytes() const { return bytes_read + bytes_written; }
  std::int64_t pixels() const { return std::int64_t{picture.xres} * picture.yres; }
};

workload make_workload(const row& r, const place& where);

// The sizes and the argument of a call; its planes are left to the caller.
catalogue::call make_call(const catalogue::conversion& c, bool rescale, const size& picture);

using job = std::function<void()>;

// The call of a conversion, where it reports opacity too.
job make_job(const catalogue::conversion& c, catalogue::call call);

void fill_with_noise(std::uint8_t* memory, std::size_t bytes);

// Memory for the largest workload, filled with noise and touched, so that no page is missing when the clock runs.
class arena {
 public:
  explicit arena(const std::vector<workload>& workloads);
  explicit arena(std::size_t bytes_of_a_half);

  catalogue::call prepare(const workload& w) const;
  // Copies half of `bytes`, which reads and writes as many bytes as a conversion of `bytes` reads and writes.
  void copy(std::int64_t bytes) const;

  std::uint8_t* source() const;
  std::uint8_t* destination() const;

 private:
  std::size_t half_;
  std::unique_ptr<std::uint8_t[]> memory_;
};

}  // namespace morvane::bench
