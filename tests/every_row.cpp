// Every conversion of the catalogue, on every backend, against its expectation.
#include <gtest/gtest.h>

#include "checker.h"
#include "support.h"

namespace morvane::tests {
namespace {

class every_row : public testing::TestWithParam<catalogue::conversion> {};

TEST_P(every_row, does_what_is_expected) {
  checker subject(GetParam());
  for (const std::string& failure : subject.sweep()) ADD_FAILURE() << failure;
}

INSTANTIATE_TEST_SUITE_P(catalogue, every_row, testing::ValuesIn(catalogue::conversions), row_name);

}  // namespace
}  // namespace morvane::tests
