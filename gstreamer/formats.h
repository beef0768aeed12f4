// The formats that both GStreamer and the catalogue know, by the catalogue's name for GStreamer.
#pragma once

#include <gst/video/video.h>
#include <morvane.h>

#include <array>
#include <vector>

namespace morvane::gstreamer {

struct known_format {
  GstVideoFormat id;
  const GstVideoFormatInfo* facts;
  morvane_format_info info;
  std::array<guint, MORVANE_MAX_PLANES> planes;  // GStreamer's plane for each of the catalogue's
};

const std::vector<known_format>& known_formats();

// Null for a format that one of both does not know.
const known_format* find_format(GstVideoFormat id);
const known_format* find_format(const char* name);

// Whether a row of chroma belongs to two rows of the picture.
bool shares_chroma_between_rows(const known_format& format);

// What a conversion costs, the worst first: a smaller one is better. It is compared from its first number on.
using price = std::array<double, 7>;
price price_of(const known_format& from, const known_format& to);

}  // namespace morvane::gstreamer
