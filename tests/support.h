// What the test programs share: names that GoogleTest accepts, and tests that run once on each backend.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "backend/choice.h"
#include "catalogue/conversions.h"

namespace morvane::catalogue {

inline void PrintTo(const conversion& row, std::ostream* out) {
  *out << row.name << " to " << row.destination;
}

}  // namespace morvane::catalogue

namespace morvane::tests {

// The row's name with underscores, and its destination where the name alone is not unique.
inline std::string printable_name(const catalogue::conversion& row) {
  int same_name = 0;
  for (const catalogue::conversion& other : catalogue::conversions) same_name += other.name == row.name ? 1 : 0;
  std::string name;
  for (const char c : row.name)
    if (c != ':' || name.back() != '_') name.push_back(c == ':' ? '_' : c);
  if (same_name > 1) name.append("_to_").append(row.destination);
  return name;
}

inline std::string row_name(const testing::TestParamInfo<catalogue::conversion>& row) {
  return printable_name(row.param);
}

inline const catalogue::conversion& row_of(std::string_view name, std::string_view destination) {
  for (const catalogue::conversion& row : catalogue::conversions)
    if (row.name == name && row.destination == destination) return row;
  throw std::invalid_argument("no conversion " + std::string(name));
}

// A fixture whose tests run once on each backend of this processor.
class on_each_backend : public testing::TestWithParam<Processing::Morvane::backend::kind> {
 protected:
  void SetUp() override { Processing::Morvane::backend::choose(GetParam()); }
  void TearDown() override { Processing::Morvane::backend::choose(Processing::Morvane::backend::available().back()); }
};

inline std::string backend_name(const testing::TestParamInfo<Processing::Morvane::backend::kind>& info) {
  return Processing::Morvane::backend::name(info.param);
}

inline auto all_backends() {
  return testing::ValuesIn(Processing::Morvane::backend::available().begin(),
                           Processing::Morvane::backend::available().end());
}

}  // namespace morvane::tests
