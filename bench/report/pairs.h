// What the measured pairs of formats say together.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "measure/measure_pairs.h"
#include "report/matrix.h"
#include "report/misses.h"
#include "report/targets.h"

namespace morvane::bench {

using measured_pairs = std::vector<pair_measurement>;

// A figure of the pairs that have it, one at least.
class spread {
 public:
  struct value {
    double figure = 0;
    std::string pair{};
  };

  explicit spread(std::vector<value> values);

  const std::vector<value>& ascending() const { return ascending_; }
  std::size_t count() const { return ascending_.size(); }
  double median() const;
  // How many are less.
  std::size_t below(double figure) const;

 private:
  std::vector<value> ascending_;
};

// Nothing where no pair has the figure.
std::optional<spread> spread_of(const measured_pairs& all,
                                const std::function<std::optional<double>(const pair_measurement&)>& figure);

// Of the pairs that go by lines.
std::optional<spread> shares_of_memcpy(const measured_pairs& all);
std::optional<spread> times_swscale(const measured_pairs& all);

std::vector<miss> misses(const measured_pairs& all, const targets& aims);

// All formats by all formats, an SVG; the second one is empty where swscale was not measured.
std::string picture_of_shares(const measured_pairs& all, const targets& aims,
                              matrix::tips told = matrix::tips::of_each_cell);
std::string picture_beside_swscale(const measured_pairs& all, const targets& aims,
                                   matrix::tips told = matrix::tips::of_each_cell);

}  // namespace morvane::bench
