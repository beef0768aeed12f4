#include "measure/measurement.h"

#include <algorithm>

namespace morvane::bench {

std::string measurement::run_name() const {
  std::string result = row + "/" + name_of(where.nominal) + "/" + std::string(name_of(where.memory)) + "/" + runner;
  if (threads > 1) result.append("/").append(std::to_string(threads)).append(" threads");
  return result;
}

double times_as_fast(const measurement& fast, const measurement& slow) {
  return slow.nanoseconds_per_pixel() / fast.nanoseconds_per_pixel();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t upper = values.size() / 2;
  return values.size() % 2 == 1 ? values[upper] : (values[upper - 1] + values[upper]) / 2;
}

}  // namespace morvane::bench
