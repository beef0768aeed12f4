// In place of a backend: line functions that convert nothing and tell how they were called. So calls can be followed
// whose images no memory would hold. Builds with one backend call its line functions directly, where nothing can take
// their place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>

#include "catalogue/conversions.h"

namespace morvane::tests {

inline constexpr bool calls_can_be_recorded = MORVANE_NUMBER_OF_BACKENDS > 1;

struct line_call {
  std::size_t kernel = 0;                  // its place in the list of all kernels
  std::array<std::uintptr_t, 10> plane{};  // sources first
  int count = 0;
  bool streams = false;  // what the kernel is told
};

std::size_t number_of_kernels();

// While it lives, every line function hands its call to `take`, and every line is opaque.
class recorder {
 public:
  explicit recorder(std::function<void(const line_call&)> take);
  recorder(const recorder&) = delete;
  recorder& operator=(const recorder&) = delete;
  ~recorder();

 private:
  const void* lines_before_;
};

// The kernels that a row runs, whatever its argument and whether it is asked for a report. Copies run none.
std::set<std::size_t> kernels_of(const catalogue::conversion& row);

}  // namespace morvane::tests
