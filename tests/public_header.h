// The functions that the public headers declare, read from their text.
#pragma once

#include <map>
#include <set>
#include <string>

namespace morvane::tests {

struct declared_function {
  int overloads = 0;
  bool returns_void = false;
};

// By full name: "Processing::Morvane::format_conversion::uyvy::yuy2".
std::map<std::string, declared_function> declared_functions();

// The functions that the checked interface declares in C.
std::set<std::string> declared_functions_of_c();

}  // namespace morvane::tests
