// Every conversion of the catalogue, on every backend, against its expectation.
#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

#include "checker/checker.h"
#include "options.h"
#include "recorder.h"
#include "support.h"

namespace morvane::tests {
namespace {

// The first rows that run a kernel.
std::set<std::string> rows_that_run_each_kernel() {
  std::set<std::string> rows;
  std::set<std::size_t> run;
  for (const catalogue::conversion& row : catalogue::conversions) {
    const std::size_t before = run.size();
    run.merge(kernels_of(row));
    if (run.size() > before) rows.insert(printable_name(row));
  }
  return rows;
}

class every_row : public testing::TestWithParam<catalogue::conversion> {};

TEST_P(every_row, does_what_is_expected) {
  static const std::set<std::string> enough = rows_that_run_each_kernel();
  if (each_kernel_once() && !enough.contains(printable_name(GetParam()))) GTEST_SKIP() << "other rows run its kernels";
  checker subject(GetParam());
  for (const std::string& failure : subject.sweep()) ADD_FAILURE() << failure;
}

INSTANTIATE_TEST_SUITE_P(catalogue, every_row, testing::ValuesIn(catalogue::conversions), row_name);

}  // namespace
}  // namespace morvane::tests
