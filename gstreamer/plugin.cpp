// What GStreamer finds in the file of the plug-in.
#include <gst/gst.h>

#include "element.h"

#define PACKAGE "morvane"

namespace {

gboolean start(GstPlugin* plugin) {
  return morvane::gstreamer::register_element(plugin);
}

}  // namespace

GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, morvane, "Exact pixel-format conversion at memory speed", start,
                  MORVANE_VERSION, "MIT/X11", "Morvane", "Morvane")
