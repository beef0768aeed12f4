// swscale between any two formats that it has.
#pragma once

#include "catalogue/formats.h"
#include "measure/workload.h"

namespace morvane::bench {

enum class resampling { nearest, bilinear };

struct swscale_picture {
  const catalogue::format* format = nullptr;
  catalogue::planes<std::uint8_t> planes{};
};

// False where the library was not there when this was built.
bool swscale_has(const catalogue::format& from, const catalogue::format& to);

// One conversion, of a pair that swscale has. The sizes are the same, so chroma alone is resampled.
job swscale_job(const swscale_picture& from, const swscale_picture& to, int width, int height, resampling chroma);

}  // namespace morvane::bench
