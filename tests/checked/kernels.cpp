// Every kernel is there for a call: an entry point or a plan of the checked interface runs it.
#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

#include "catalogue/conversions.h"
#include "morvane.hpp"
#include "recorder.h"

namespace morvane::tests {
namespace {

// All choices that decide about kernels.
const options hows[] = {
    {},
    {.filter = filter::nearest},
    {.siting = siting::center, .background = color{1, 2, 3}},
};
const range ranges[] = {range::unsaid, range::video, range::full};

void convert_all(const description& from, const description& to) {
  for (const options& how : hows) try {
      image source(from), result(to);
      convert(from, source.picture(), to, result.picture(), how);
    } catch (const error& e) {
      EXPECT_EQ(e.code(), MORVANE_NO_WAY) << e.what();
    }
}

std::set<std::size_t> kernels_of_plans() {
  std::set<std::size_t> kernels;
  const recorder recording([&](const line_call& line) { kernels.insert(line.kernel); });
  for (const format from : formats())
    for (const format to : formats())
      for (const range r : ranges)
        convert_all({.format = from, .width = 4, .height = 4, .range = r},
                    {.format = to, .width = 4, .height = 4, .matrix = matrix::bt2020, .range = range::full});
  return kernels;
}

// Beside them, one kernel sums differences.
TEST(every_kernel, is_run_by_an_entry_point_or_a_plan) {
  if (!calls_can_be_recorded) GTEST_SKIP() << "calls of line functions are direct";
  std::set<std::size_t> run = kernels_of_plans();
  for (const catalogue::conversion& row : catalogue::conversions) run.merge(kernels_of(row));
  EXPECT_EQ(run.size(), number_of_kernels() - 1);
}

}  // namespace
}  // namespace morvane::tests
