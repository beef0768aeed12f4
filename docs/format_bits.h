// Where the bits of a format's samples are, found out by asking the library what it reads.
#pragma once

#include <morvane.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::docs {

// A component of a plane, or none for what is unused.
struct stored_bit {
  std::string sample{};  // the component, and its pixel where the group has more of them: "Y", "Cb2"; empty if unused
  std::string_view component{};
  int number = 0;  // within the sample; 0 is the lowest

  bool is_used() const { return !sample.empty(); }
};

// The bits of a group in storage order: eight for each byte, from its highest one to its lowest.
std::vector<stored_bit> bits_of_group(const morvane_format_info& format, int plane);

}  // namespace morvane::docs
