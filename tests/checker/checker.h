// Runs a conversion on every backend of this processor and compares all bytes it could have touched with the
// expectation: planes, padding and surroundings. Planes can lie directly against inaccessible memory, and a crash is a
// failed case like any other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "backend/choice.h"
#include "catalogue/conversions.h"
#include "checker/content.h"
#include "checker/geometry.h"
#include "checker/memory.h"

namespace morvane::tests {

// Where the planes of a case lie.
enum class placement {
  surrounded,  // at the case's offsets from 32-byte boundaries, with room on both sides
  at_end,      // the last byte of each plane is the last before an inaccessible page
  at_start,    // the first byte of each plane is the first after an inaccessible page
};

// What the opacity report holds before the call.
enum class report { none, false_before, true_before };

struct plane_place {
  int stride = 0;
  int offset = 0;  // 0 to 31
};

struct test_case {
  int xres = 0;  // of the call; the row says how many pixels and rows they stand for
  int yres = 0;
  std::array<plane_place, catalogue::max_planes> source{};
  std::array<plane_place, catalogue::max_planes> destination{};
  placement where = placement::surrounded;
  content pattern = content::random;
  std::uint32_t seed = 0;
  int argument = 0;
  report opacity = report::none;
};

// Calls use(backend) once for each backend of this processor, which every conversion takes meanwhile.
void on_every_backend(const std::function<void(Processing::Morvane::backend::kind)>& use);

class checker {
 public:
  // With a `row` whose thunk is not the library's, the checker tests that thunk instead.
  explicit checker(const catalogue::conversion& row);

  // Empty when all backends do what is expected; else what differs, with all parameters of the case.
  std::string check(const test_case& c);

  // Runs the sweep over sizes, strides, offsets, places and contents; stops after `most_failures`.
  std::vector<std::string> sweep(std::size_t most_failures = 3);

 private:
  struct plane_state {
    plane_state(const catalogue::plane& f, bool source);

    // The bytes of a case and some around them in one of the planes below: all that a case renews.
    std::span<std::uint8_t> window_in(std::span<std::uint8_t> plane) const;
    // Makes room for a case that needs more than those before.
    void hold(std::size_t bytes);
    void renew();

    const catalogue::plane* format;
    bool is_source;
    std::unique_ptr<fenced_memory> memory;  // what the library gets
    std::vector<std::uint8_t> before;       // its content before the call
    std::vector<std::uint8_t> expected;     // and what it must be afterwards
    std::ptrdiff_t first_row = 0;           // of the case: where row 0 lies in it
    extent window{};                        // in all three
  };

  // The image pixels that the xres of a case stand for, and the rows of a plane that its yres stands for.
  int pixels(const test_case& c) const;
  int rows(const plane_state& p, const test_case& c) const;

  // Whether the image has no gaps in any plane, and the conversion takes such an image as one line.
  bool is_one_line(const test_case& c) const;
  // Whether this plane is the one that is copied with its padding, and its strides on both sides are those with which
  // that happens.
  bool copies_padding(const plane_state& p, const test_case& c) const;
  extent extent_in(const plane_state& p, int stride, const test_case& c) const;

  void place(plane_state& p, const plane_place& at, const test_case& c) const;
  void fill(const test_case& c);
  void renew_all();
  void set_alpha(plane_state& p, int stride, const test_case& c) const;
  void set_words(plane_state& p, int stride, const test_case& c) const;
  catalogue::call call_on(const test_case& c, bool expected);
  std::string compare(const test_case& c) const;
  std::string describe(const test_case& c) const;
  void for_each_case(const std::function<bool(const test_case&)>& take) const;
  test_case case_of(int xres, int yres, std::size_t strides, std::uint32_t number) const;

  catalogue::conversion row_;
  catalogue::thunk expectation_;
  std::vector<plane_state> sources_;
  std::vector<plane_state> destinations_;
};

}  // namespace morvane::tests
