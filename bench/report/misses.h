// The targets that were missed.
#pragma once

#include <string>
#include <vector>

#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

struct miss {
  std::string row{};
  place where{};
  std::string target{};  // "of memcpy"
  double reached = 0;
  double wanted = 0;
  std::string why{};
};

std::vector<miss> misses(const results& r, const targets& aims);

}  // namespace morvane::bench
