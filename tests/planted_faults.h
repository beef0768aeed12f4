// What the tests with planted faults share: a conversion with a mistake in it, and that the checker must report it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "checker.h"
#include "support.h"

namespace morvane::tests {

struct fault {
  const char* name;
  const char* row;
  const char* destination;
  catalogue::thunk faulty;
  const char* reported;  // part of the report
};

inline void PrintTo(const fault& f, std::ostream* out) {
  *out << f.name;
}

inline std::string fault_name(const testing::TestParamInfo<fault>& tested) {
  return tested.param.name;
}

inline void expect_report(const fault& f) {
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

inline bool has_pixels(const catalogue::call& c) {
  return c.xres > 0 && c.yres > 0;
}

inline std::uint8_t* row_of_plane(const catalogue::call& c, std::size_t plane, int row) {
  return c.destination.data[plane] + std::ptrdiff_t{row} * c.destination.stride[plane];
}

}  // namespace morvane::tests
