// Is the checker awake? Each test plants one fault around or in place of a conversion and expects a report of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "options.h"
#include "planted_faults/faults.h"

namespace morvane::tests {

void PrintTo(const fault& f, std::ostream* out) {
  *out << f.name;
}

namespace {

std::vector<fault> all_faults() {
  std::vector<fault> all;
  for (const std::span<const fault> of_family :
       {faults_of_planes(), faults_of_chroma(), faults_of_depth(), faults_of_rgb_to_video(), faults_of_video_to_rgb(),
        faults_of_full_chroma(), faults_of_key(), faults_of_words(), faults_of_card_10(), faults_of_black()})
    all.insert(all.end(), of_family.begin(), of_family.end());
  return all;
}

class planted_fault : public testing::TestWithParam<fault> {};

TEST_P(planted_fault, is_reported) {
  const fault& f = GetParam();
  catalogue::conversion row = row_of(f.row, f.destination);
  row.entry.convert = f.faulty;
  const std::vector<std::string> failures = checker(row).sweep(20);
  ASSERT_FALSE(failures.empty());
  EXPECT_NE(failures[0].find(f.row), std::string::npos) << failures[0];
  // Where a plane ends at an inaccessible page, a fault may be reported as a crash first.
  EXPECT_TRUE(std::any_of(failures.begin(), failures.end(), [&](const std::string& failure) {
    return failure.find(f.reported) != std::string::npos;
  })) << failures[0];
}

INSTANTIATE_TEST_SUITE_P(checker, planted_fault, testing::ValuesIn(all_faults()),
                         [](const auto& tested) { return std::string(tested.param.name); });

// A control for the faults of each row: what stands in the place of the conversion is no fault.

std::vector<catalogue::conversion> rows_with_faults() {
  const std::vector<fault> all = all_faults();
  std::vector<catalogue::conversion> rows;
  std::copy_if(catalogue::conversions.begin(), catalogue::conversions.end(), std::back_inserter(rows),
               [&](const catalogue::conversion& row) {
                 return std::any_of(all.begin(), all.end(), [&](const fault& f) {
                   return row.name == f.row && row.destination == f.destination;
                 });
               });
  return rows;
}

class nothing_planted : public testing::TestWithParam<catalogue::conversion> {};

catalogue::thunk wrapped = nullptr;

TEST_P(nothing_planted, is_not_reported) {
  catalogue::conversion row = GetParam();
  wrapped = row.entry.convert;
  row.entry.convert = [](const catalogue::call& c) { wrapped(c); };
  set_thin(true);
  EXPECT_EQ(checker(row).sweep(20), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(checker, nothing_planted, testing::ValuesIn(rows_with_faults()), row_name);

}  // namespace
}  // namespace morvane::tests
