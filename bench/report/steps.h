// Each backend beside the next narrower one, which says what its width gains.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

struct step {
  std::string wider{};
  std::string narrower{};
};

// From the narrowest backend to the library's own choice; one fewer than there are backends.
std::vector<step> steps_of(const results& r);

// How many times as fast the wider backend is; nothing where one of the two was not measured.
std::optional<double> gain(const results& r, const row& which, const place& where, const step& s);

// The median over the rows of a target, or over all that have one where `of` is null.
std::optional<double> median_gain(const results& r, const targets& aims, const kind_target* of, const place& where,
                                  const step& s);

}  // namespace morvane::bench
