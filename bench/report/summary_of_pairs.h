// What is said of all measured pairs of formats together, on the terminal as on pages.
#pragma once

#include <string>
#include <vector>

#include "report/pairs.h"
#include "report/targets.h"

namespace morvane::bench {

struct pair_figure {
  std::string title{};
  spread values;
  double wanted_median = 0;   // 0: nothing is
  double wanted_of_each = 0;  // 0: nothing is
  int digits = 2;
};

// The figures that were measured.
std::vector<pair_figure> summary(const measured_pairs& all, const targets& aims);

// "times as fast as swscale: median 2.10 (target 8.00), least 0.50 (uyvy:y); 1 of 2 pairs below 0.97"
std::string sentence(const pair_figure& f);

// In Markdown, a line for each figure.
std::string table_of(const std::vector<pair_figure>& figures);

}  // namespace morvane::bench
