#include "formats.h"

#include <algorithm>

namespace morvane::gstreamer {
namespace {

// GStreamer numbers components as the catalogue does: luma or red, Cb or green, Cr or blue, alpha.
bool find_planes(known_format& format) {
  for (int32_t p = 0; p < format.info.plane_count; p++) {
    const auto* samples = format.info.planes[p].samples;
    const auto first = std::find_if(samples, samples + MORVANE_X, [](const int32_t count) { return count > 0; });
    const auto component = static_cast<guint>(first - samples);
    if (component >= format.facts->n_components) return false;
    format.planes[static_cast<std::size_t>(p)] = format.facts->plane[component];
  }
  return format.facts->n_planes == static_cast<guint>(format.info.plane_count);
}

std::vector<known_format> each_known_format() {
  std::vector<known_format> found;
  for (int32_t i = 0; i < morvane_format_count(); i++) {
    known_format format{};
    format.info.struct_size = sizeof format.info;
    morvane_describe_format(morvane_format_at(i), &format.info, nullptr);
    format.id = gst_video_format_from_string(format.info.gstreamer);
    if (format.id == GST_VIDEO_FORMAT_UNKNOWN) continue;
    format.facts = gst_video_format_get_info(format.id);
    if (find_planes(format)) found.push_back(format);
  }
  return found;
}

double bytes_of_a_pixel(const known_format& format) {
  double bytes = 0;
  for (int32_t p = 0; p < format.info.plane_count; p++) {
    const morvane_plane_info& plane = format.info.planes[p];
    bytes += double(plane.group_bytes) / plane.group_pixels / plane.image_rows;
  }
  return bytes;
}

bool is_grey(const known_format& format) {
  return GST_VIDEO_FORMAT_INFO_IS_GRAY(format.facts);
}

double shortage(const guint from, const guint to) {
  return from > to ? from - to : 0;
}

}  // namespace

const std::vector<known_format>& known_formats() {
  static const std::vector<known_format> formats = each_known_format();
  return formats;
}

const known_format* find_format(const GstVideoFormat id) {
  const auto& formats = known_formats();
  const auto found = std::ranges::find(formats, id, &known_format::id);
  return found == formats.end() ? nullptr : &*found;
}

const known_format* find_format(const char* name) {
  const GstVideoFormat id = name ? gst_video_format_from_string(name) : GST_VIDEO_FORMAT_UNKNOWN;
  return id == GST_VIDEO_FORMAT_UNKNOWN ? nullptr : find_format(id);
}

bool shares_chroma_between_rows(const known_format& format) {
  return std::any_of(format.info.planes, format.info.planes + format.info.plane_count,
                     [](const morvane_plane_info& plane) { return plane.image_rows > 1; });
}

price price_of(const known_format& from, const known_format& to) {
  const bool loses_colour = is_grey(to) && !is_grey(from);
  const auto loses_chroma = [&](const guint* source, const guint* destination) {
    return is_grey(from) || is_grey(to) ? 0.0 : shortage(destination[1], source[1]);
  };
  const auto alpha = [](const known_format& f) { return f.info.has_alpha ? f.facts->depth[GST_VIDEO_COMP_A] : 0u; };
  return {double(loses_colour),
          loses_chroma(from.facts->h_sub, to.facts->h_sub) + loses_chroma(from.facts->w_sub, to.facts->w_sub),
          shortage(alpha(from), alpha(to)),
          shortage(from.facts->depth[0], to.facts->depth[0]),
          double(from.info.model != to.info.model),
          double(from.id != to.id),
          bytes_of_a_pixel(to)};
}

}  // namespace morvane::gstreamer
