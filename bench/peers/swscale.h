// swscale between any two formats that it has.
#pragma once

#include <functional>

#include "catalogue/formats.h"
#include "measure/workload.h"

namespace morvane::bench {

enum class resampling { nearest, bilinear };

using swscale_planes = catalogue::planes<std::uint8_t>;
using swscale_conversion = std::function<void(const swscale_planes& from, const swscale_planes& to)>;

// That it writes the whole picture of. False where the library was not there when this was built.
bool swscale_has(const catalogue::format& from, const catalogue::format& to);

// Of a pair that swscale has. The sizes are the same, so chroma alone is resampled.
swscale_conversion swscale_between(const catalogue::format& from, const catalogue::format& to, const size& picture,
                                   resampling chroma);

}  // namespace morvane::bench
