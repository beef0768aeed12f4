// How the command may refuse what it is given: by one line that a terminal can show.
#pragma once

#include <algorithm>
#include <string_view>

#include "errors.h"
#include "expect.h"

namespace morvane::fuzz {

// Whether the call was not refused.
template <class Call>
bool is_taken(const Call& call) {
  try {
    call();
    return true;
  } catch (const tool::failure& f) {
    const std::string_view line = f.what();
    expect(!line.empty() && line.find('\n') == std::string_view::npos, "a refusal is one line");
    expect(f.exit_code == tool::exit_io || f.exit_code == tool::exit_arguments, "a refusal has an exit code");
    return false;
  }
}

}  // namespace morvane::fuzz
