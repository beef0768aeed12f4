// The functions that the public header declares, read from its text.
#pragma once

#include <map>
#include <string>

namespace morvane::tests {

struct declared_function {
  int overloads = 0;
  bool returns_void = false;
};

// By full name: "Processing::Morvane::format_conversion::uyvy::yuy2".
std::map<std::string, declared_function> declared_functions();

}  // namespace morvane::tests
