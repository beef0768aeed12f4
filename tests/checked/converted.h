// One conversion by a plan, whose planes and scratch memory lie between fences, beside what the rules say.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "checked/fenced_picture.h"
#include "checked/variants.h"

namespace morvane::tests {

// A conversion of a size. The numbers say how the planes of both pictures lie.
struct conversion_case {
  std::string_view from, to;
  variant as;
  int width = 0, height = 0;
  int source_lies = 0, destination_lies = 0;
  bool streams = false;
};

std::string text_of(const conversion_case& c);

// The memory of all cases, one after the other.
struct rooms {
  fenced_rooms source, destination;
  fenced_room scratch;
};

// A source with its plan, and the picture that the rules make of it.
class expectation_of_pair {
 public:
  expectation_of_pair(rooms& in, const conversion_case& c);
  ~expectation_of_pair();
  expectation_of_pair(const expectation_of_pair&) = delete;
  expectation_of_pair& operator=(const expectation_of_pair&) = delete;

  // A band of rows, or all of them from 0 on.
  struct band {
    int first, rows;
  };

  // Converts the bands one after the other with the backend in use: what is wrong, or nothing.
  std::string wrong_with(std::span<const band> bands);
  std::string wrong_with_one_run();

  const morvane_plan* plan() const { return plan_; }
  const fenced_picture& source() const { return source_; }
  rules::stored_picture& expected() { return expected_; }

 private:
  std::string run(const fenced_picture& made, const band& rows);

  rooms& in_;
  conversion_case case_;
  fenced_picture source_;
  rules::stored_picture expected_;
  morvane_plan* plan_ = nullptr;
};

}  // namespace morvane::tests
