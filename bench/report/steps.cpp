#include "report/steps.h"

namespace morvane::bench {

std::vector<step> steps_of(const results& r) {
  std::vector<step> result;
  for (std::size_t i = 1; i < r.backends().size(); ++i) result.push_back({r.backends()[i], r.backends()[i - 1]});
  return result;
}

std::optional<double> gain(const results& r, const row& which, const place& where, const step& s) {
  const measurement* wider = r.find(which, where, s.wider);
  const measurement* narrower = r.find(which, where, s.narrower);
  if (wider == nullptr || narrower == nullptr) return {};
  return times_as_fast(*wider, *narrower);
}

std::optional<double> median_gain(const results& r, const targets& aims, const kind_target* of, const place& where,
                                  const step& s) {
  std::vector<double> gains;
  for (const row& which : r.rows()) {
    const kind_target* its = aims.of(which);
    if (its == nullptr || (of != nullptr && its != of)) continue;
    if (const std::optional<double> g = gain(r, which, where, s)) gains.push_back(*g);
  }
  if (gains.empty()) return {};
  return median(gains);
}

}  // namespace morvane::bench
