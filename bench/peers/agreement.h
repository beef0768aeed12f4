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

// Of results whose samples differ by no more than this, in steps of 8 bits.
agreement agreement_at(int difference);

}  // namespace morvane::bench
