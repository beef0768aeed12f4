// A picture with alpha laid over a colour.
#pragma once

#include <cstdint>

#include "rules/picture.h"
#include "rules/samples.h"

namespace morvane::tests::rules {

// The sample over that of the background, by alpha.
int over(int sample, int alpha, int background);

// Lays the colour of a picture, of which these are the samples, over a background, which is taken to the picture's own
// model first. `is_video` says whether its RGB is of video range.
void lay_over(samples& s, const picture& p, bool is_video, const rgb8& background);

}  // namespace morvane::tests::rules
