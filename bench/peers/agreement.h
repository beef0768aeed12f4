// How near the result of another library comes to that of this one.
#pragma once

#include <string_view>

namespace morvane::bench {

enum class agreement {
  same_bytes,
  close,            // the same formula, rounded otherwise
  other_algorithm,  // another matrix, or chroma taken from other places
};

std::string_view name_of(agreement a);

}  // namespace morvane::bench
