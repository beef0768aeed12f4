// A table of an HTML page: words to the left, numbers to the right.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "measure/measurement.h"

namespace morvane::bench {

// Neighbours of one group share a heading above their titles.
struct column {
  std::string title{};
  std::string group{};
};

class table {
 public:
  table(std::ostream& out, const std::vector<column>& words, const std::vector<column>& numbers);
  table(const table&) = delete;
  table& operator=(const table&) = delete;
  ~table();

  void begin();
  void end();
  void word(std::string_view text);
  // A word that may take several lines.
  void sentence(std::string_view text);
  void number(const std::string& text, bool bad = false);
  void blank();
  // How many times as fast `fast` is, bad below `least`; blank where one of them is null.
  void ratio(const measurement* fast, const measurement* slow, double least);

 private:
  std::ostream& out_;
};

}  // namespace morvane::bench
