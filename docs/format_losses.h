// Which formats hold all that others have.
#pragma once

#include <morvane.hpp>
#include <vector>

namespace morvane::docs {

// The formats that a picture goes to and comes back from as it was, chroma being repeated and dropped where sampling
// differs: those to which a plan says that nothing is lost, and where noise has shown it.
std::vector<format> lossless_from(format source);

}  // namespace morvane::docs
