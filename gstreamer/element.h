// The element morvaneconvert.
#pragma once

#include <gst/gst.h>

namespace morvane::gstreamer {

bool register_element(GstPlugin* plugin);

}  // namespace morvane::gstreamer
