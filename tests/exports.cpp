// The shared library from outside: it exports what the public header declares and nothing else, its conversions are
// those of the catalogue and of the expectations, and it needs no library beside those of the language.
#include <cxxabi.h>
#include <gtest/gtest.h>
#include <stdio.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "catalogue/conversions.h"
#include "oracle/oracle.h"
#include "public_header.h"

namespace morvane::tests {
namespace {

std::string output_of(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string output;
  for (int c; pipe != nullptr && (c = fgetc(pipe.get())) != EOF;) output.push_back(static_cast<char>(c));
  return output;
}

// That of all functions so far.
constexpr std::string_view version = "MORVANE_0.1";

// A function of C is called as it is written.
std::string demangled(const std::string& symbol) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status),
                                                         &std::free);
  return status == 0 ? name.get() : symbol;
}

// The exported functions by full name, and how often each is overloaded.
std::map<std::string, int> exported_functions() {
  std::map<std::string, int> exported;
  std::istringstream symbols(output_of(MORVANE_NM " -D --defined-only " MORVANE_SHARED_LIBRARY));
  for (std::string line; std::getline(symbols, line);) {
    const std::string symbol = line.substr(line.find_last_of(' ') + 1);
    const std::string name = demangled(symbol.substr(0, symbol.find('@')));
    if (name != version) exported[name.substr(0, name.find('('))] += 1;
  }
  return exported;
}

TEST(shared_library, exports_exactly_what_the_public_headers_declare) {
  std::map<std::string, int> exported = exported_functions();
  std::map<std::string, int> declared;
  for (const auto& [name, function] : declared_functions()) declared[name] = function.overloads;
  EXPECT_EQ(declared_functions_of_c().size(), 19U);
  for (const std::string& name : declared_functions_of_c()) declared[name] = 1;
  for (const auto& [name, count] : declared) EXPECT_EQ(exported[name], count) << name;
  for (const auto& [name, count] : exported) EXPECT_TRUE(declared.contains(name)) << name << " is exported";
}

TEST(functions_of_c, have_the_version_that_first_had_them) {
  const std::string symbols = output_of(MORVANE_NM " -D --defined-only " MORVANE_SHARED_LIBRARY);
  for (const std::string& name : declared_functions_of_c())
    EXPECT_NE(symbols.find(" " + name + "@@" + std::string(version) + "\n"), std::string::npos) << name;
}

TEST(functions_of_c, are_all_in_the_example_that_is_run) {
  std::ifstream file(MORVANE_C_EXAMPLES);
  const std::string example((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  for (const std::string& name : declared_functions_of_c())
    EXPECT_NE(example.find(name + "("), std::string::npos) << name;
}

// The functions that convert an image, without their common namespaces.
template <class Functions>
std::set<std::string> entry_points(const Functions& functions) {
  constexpr std::string_view common = "Processing::Morvane::format_conversion::";
  const std::set<std::string> predicates = {"is_aligned", "is_aligned_avx2"};
  std::set<std::string> result;
  for (const auto& [name, function] : functions)
    if (name.starts_with(common) && !predicates.contains(name.substr(common.size())))
      result.insert(name.substr(common.size()));
  return result;
}

TEST(entry_points, are_the_same_in_header_catalogue_expectations_and_library) {
  using named = std::pair<std::string_view, std::string_view>;
  std::set<std::string> listed;
  std::set<named> rows, expectations;
  for (const catalogue::conversion& row : catalogue::conversions) {
    if (row.entry.is_declared) listed.emplace(row.name);
    rows.emplace(row.name, row.destination);
  }
  for (const named& e : expected_conversions()) expectations.insert(e);
  const std::set<std::string> declared = entry_points(declared_functions());
  EXPECT_FALSE(declared.empty());
  EXPECT_EQ(declared, listed);
  EXPECT_EQ(declared, entry_points(exported_functions()));
  EXPECT_EQ(rows, expectations);
}

TEST(shared_library, needs_only_the_libraries_of_the_language) {
  const std::set<std::string> allowed = {"libstdc++.so.6", "libgcc_s.so.1", "libm.so.6", "libc.so.6"};
  std::istringstream headers(output_of(MORVANE_OBJDUMP " -p " MORVANE_SHARED_LIBRARY));
  int needed = 0;
  for (std::string key, value; headers >> key;)
    if (key == "NEEDED" && headers >> value) {
      ++needed;
      EXPECT_TRUE(allowed.contains(value)) << value;
    }
  EXPECT_GT(needed, 0);
}

}  // namespace
}  // namespace morvane::tests
