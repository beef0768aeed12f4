// The catalogue, the public header and the expectations list the same conversions.
#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "catalogue/conversions.h"
#include "oracle/oracle.h"
#include "public_header.h"
#include "support.h"

namespace morvane::tests {
namespace {

// The entry points that the header declares, without their common namespaces, and how often each is overloaded.
std::map<std::string, int> declared_entry_points() {
  const std::string common = "Processing::Morvane::format_conversion::";
  std::map<std::string, int> found;
  for (const auto& [name, function] : declared_functions())
    if (function.returns_void) found[name.starts_with(common) ? name.substr(common.size()) : name] = function.overloads;
  return found;
}

// The 16-bit planes of these can be given as words or as bytes; the one overload forwards to the other, so they have
// one row.
constexpr std::string_view overloaded_for_words_and_bytes[] = {"cb_cr_8_420::cbcr_16_422",
                                                               "cbcr_8_420::cbcr_16_422",
                                                               "uyvy::p216",
                                                               "y_uv::p216",
                                                               "ycbcra::pa16",
                                                               "pa16::vuya_f32",
                                                               "pa16::p216"};

TEST(catalogue, lists_exactly_the_entry_points_of_the_public_header) {
  std::map<std::string, int> listed;
  for (const catalogue::conversion& row : catalogue::conversions)
    if (row.entry.is_declared) listed[std::string(row.name)] += 1;
  for (const std::string_view name : overloaded_for_words_and_bytes) listed[std::string(name)] += 1;
  const std::map<std::string, int> declared = declared_entry_points();
  EXPECT_FALSE(declared.empty());
  for (const auto& [name, count] : declared)
    EXPECT_EQ(listed[name], count) << name << " is declared " << count << " times";
  for (const auto& [name, count] : listed) EXPECT_TRUE(declared.contains(name)) << name << " is not declared";
}

TEST(catalogue, has_no_name_of_the_public_header_for_what_is_no_entry_point) {
  const std::map<std::string, int> declared = declared_entry_points();
  for (const catalogue::conversion& row : catalogue::conversions)
    EXPECT_EQ(declared.contains(std::string(row.name)), row.entry.is_declared) << row.name;
}

TEST(catalogue, has_an_expectation_for_every_row) {
  for (const catalogue::conversion& row : catalogue::conversions)
    EXPECT_NE(expectation(row.name, row.destination), nullptr) << row.name << " to " << row.destination;
}

TEST(catalogue, names_formats_that_exist) {
  for (const catalogue::conversion& row : catalogue::conversions) {
    EXPECT_TRUE(row.source.empty() || catalogue::find_format(row.source) != nullptr) << row.name;
    EXPECT_NE(catalogue::find_format(row.destination), nullptr) << row.name;
  }
}

TEST(catalogue, has_unique_rows) {
  std::set<std::pair<std::string_view, std::string_view>> seen;
  for (const catalogue::conversion& row : catalogue::conversions)
    EXPECT_TRUE(seen.emplace(row.name, row.destination).second) << row.name << " to " << row.destination;
}

TEST(catalogue, has_unique_formats_with_components_for_every_plane) {
  std::set<std::string_view> seen;
  for (const catalogue::format& format : catalogue::formats) {
    EXPECT_TRUE(seen.insert(format.name).second) << format.name;
    EXPECT_GT(format.plane_count(), 0U) << format.name;
    for (std::size_t i = 0; i < format.plane_count(); ++i) EXPECT_FALSE(format.planes[i].components.empty());
  }
}

}  // namespace
}  // namespace morvane::tests
