// The targets that were missed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/results.h"

namespace morvane::bench {

struct miss {
  std::string row{};
  place where{};
  std::string target{};  // "of memcpy"
  double reached = 0;
  double wanted = 0;
  std::string_view why{};
};

std::vector<miss> misses(const results& r);

}  // namespace morvane::bench
