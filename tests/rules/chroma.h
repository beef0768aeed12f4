// Chroma of one sampling brought to another.
#pragma once

#include <cstdint>
#include <vector>

#include "rules/layout.h"
#include "rules/picture.h"
#include "rules/samples.h"

namespace morvane::tests::rules {

// A row or a column.
using line = std::vector<std::uint16_t>;

// Where a sample of chroma lies: on the first of its two pixels, or between them.
enum class place { on_first, between };

// The `length` samples that come of half as many (rounded up), and the other way round.
line doubled(const line& c, int length, filter by, place at);
line halved(const line& c, filter by, place at);

// Up vertically and then horizontally, or down horizontally and then vertically, for a picture of a width and a height.
grid resampled(const grid& chroma, sampling from, sampling to, int width, int height, const options& asked);

}  // namespace morvane::tests::rules
