// What the measured pairs of formats say together.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "measure/measure_pairs.h"
#include "report/misses.h"
#include "report/targets.h"

namespace morvane::bench {

using measured_pairs = std::vector<pair_measurement>;

// A figure of the pairs that have it.
struct spread {
  std::size_t count = 0;
  double least = 0;
  double middle = 0;  // the median
  std::string slowest{};
};

// Nothing where no pair has the figure.
std::optional<spread> spread_of(const measured_pairs& all,
                                const std::function<std::optional<double>(const pair_measurement&)>& figure);

// Of the pairs that go by lines.
std::optional<spread> shares_of_memcpy(const measured_pairs& all);
std::optional<spread> times_swscale(const measured_pairs& all);

std::vector<miss> misses(const measured_pairs& all, const targets& aims);

// All formats by all formats, an SVG; the second one is empty where swscale was not measured.
std::string picture_of_shares(const measured_pairs& all, const targets& aims);
std::string picture_beside_swscale(const measured_pairs& all, const targets& aims);

}  // namespace morvane::bench
