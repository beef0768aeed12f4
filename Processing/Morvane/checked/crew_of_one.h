// In place of a crew where there are no threads: nobody is hired, and the caller converts alone.
#pragma once

namespace Processing::Morvane::checked {

class crew {
 public:
  static constexpr bool can_be_hired = false;

  explicit crew(int) {}

  int hands() const { return 1; }

  template <class Part>
  bool run(const int, const Part&) {
    return false;
  }
};

}  // namespace Processing::Morvane::checked
