// What caps become, and which of several are taken.
#pragma once

#include <gst/video/video.h>

namespace morvane::gstreamer {

// All formats, in system memory.
GstCaps* template_caps();

// What frames of the caps may become, or be made of: first themselves, then every format. The caller owns the result.
GstCaps* reachable_caps(GstCaps* caps);

// One of `choices` for frames of `caps`, or for making them where `makes_caps`. Takes `choices`; the caller owns the
// result.
GstCaps* best_caps(GstCaps* caps, GstCaps* choices, bool makes_caps);

}  // namespace morvane::gstreamer
