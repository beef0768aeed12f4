#include "caps.h"

#include <optional>
#include <string>

#include "formats.h"

namespace morvane::gstreamer {
namespace {

// Calls take(format) for each known one that a field names.
template <class Take>
void each_format(const GValue* field, Take take) {
  if (!field) return;
  const auto take_one = [&](const GValue* value) {
    const known_format* format = G_VALUE_HOLDS_STRING(value) ? find_format(g_value_get_string(value)) : nullptr;
    if (format) take(*format);
  };
  if (!GST_VALUE_HOLDS_LIST(field)) return take_one(field);
  for (guint i = 0; i < gst_value_list_get_size(field); i++) take_one(gst_value_list_get_value(field, i));
}

GValue all_formats() {
  GValue list = G_VALUE_INIT, name = G_VALUE_INIT;
  g_value_init(&list, GST_TYPE_LIST);
  g_value_init(&name, G_TYPE_STRING);
  for (const known_format& format : known_formats()) {
    g_value_set_static_string(&name, gst_video_format_to_string(format.id));
    gst_value_list_append_value(&list, &name);
  }
  g_value_unset(&name);
  return list;
}

bool is_system_memory(GstCaps* caps, const guint index) {
  return gst_caps_features_is_equal(gst_caps_get_features(caps, index), GST_CAPS_FEATURES_MEMORY_SYSTEM_MEMORY);
}

struct choice {
  guint structure;
  const known_format* format;
  price cost;
};

std::optional<choice> cheapest(const known_format& given, GstCaps* choices, const bool makes_given) {
  std::optional<choice> best;
  for (guint i = 0; i < gst_caps_get_size(choices); i++)
    each_format(gst_structure_get_value(gst_caps_get_structure(choices, i), "format"), [&](const known_format& format) {
      const price cost = makes_given ? price_of(format, given) : price_of(given, format);
      if (!best || cost < best->cost) best = {i, &format, cost};
    });
  return best;
}

// Sets a field to a text where the structure leaves it open.
void suggest(GstStructure* structure, const char* field, const char* text) {
  const GValue* allowed = gst_structure_get_value(structure, field);
  if (allowed && G_VALUE_HOLDS_STRING(allowed)) return;
  GValue wanted = G_VALUE_INIT;
  g_value_init(&wanted, G_TYPE_STRING);
  g_value_set_string(&wanted, text);
  if (!allowed || gst_value_can_intersect(allowed, &wanted)) gst_structure_set_value(structure, field, &wanted);
  g_value_unset(&wanted);
}

// The colours of a picture whose samples have the meaning of the format, and whose primaries and transfer nobody
// changes.
GstVideoColorimetry colours_of(const GstVideoInfo& given, const known_format& format) {
  GstVideoInfo usual;
  gst_video_info_init(&usual);
  gst_video_info_set_format(&usual, format.id, static_cast<guint>(given.width), static_cast<guint>(given.height));
  if (GST_VIDEO_FORMAT_INFO_IS_RGB(given.finfo) == GST_VIDEO_FORMAT_INFO_IS_RGB(format.facts) &&
      GST_VIDEO_FORMAT_INFO_IS_GRAY(given.finfo) == GST_VIDEO_FORMAT_INFO_IS_GRAY(format.facts))
    return given.colorimetry;
  GstVideoColorimetry colours = usual.colorimetry;
  colours.primaries = given.colorimetry.primaries;
  colours.transfer = given.colorimetry.transfer;
  return colours;
}

// What the given caps say of their colours is kept where the other ones leave it open.
void keep_colours(GstCaps* caps, const known_format& format, GstStructure* other) {
  GstVideoInfo given;
  const GstStructure* said = gst_caps_get_structure(caps, 0);
  if (!gst_video_info_from_caps(&given, caps)) return;
  if (gst_structure_has_field(said, "colorimetry")) {
    const GstVideoColorimetry colours = colours_of(given, format);
    if (gchar* text = gst_video_colorimetry_to_string(&colours)) {
      suggest(other, "colorimetry", text);
      g_free(text);
    }
  }
  if (const gchar* site = gst_structure_get_string(said, "chroma-site"); site && format.facts->w_sub[1] > 0)
    suggest(other, "chroma-site", site);
}

}  // namespace

GstCaps* template_caps() {
  GstCaps* caps =
      gst_caps_new_simple("video/x-raw", "width", GST_TYPE_INT_RANGE, 1, G_MAXINT, "height", GST_TYPE_INT_RANGE, 1,
                          G_MAXINT, "framerate", GST_TYPE_FRACTION_RANGE, 0, 1, G_MAXINT, 1, nullptr);
  GValue formats = all_formats();
  gst_caps_set_value(caps, "format", &formats);
  g_value_unset(&formats);
  // Frames elsewhere pass as they are.
  GstCaps* anywhere = gst_caps_copy(caps);
  gst_caps_set_features_simple(anywhere, gst_caps_features_new_any());
  return gst_caps_merge(caps, anywhere);
}

GstCaps* reachable_caps(GstCaps* caps) {
  GstCaps* reachable = gst_caps_copy(caps);
  GValue formats = all_formats();
  for (guint i = 0; i < gst_caps_get_size(caps); i++) {
    if (!is_system_memory(caps, i)) continue;
    GstStructure* structure = gst_structure_copy(gst_caps_get_structure(caps, i));
    gst_structure_set_value(structure, "format", &formats);
    gst_structure_remove_fields(structure, "colorimetry", "chroma-site", nullptr);
    reachable = gst_caps_merge_structure(reachable, structure);
  }
  g_value_unset(&formats);
  return reachable;
}

GstCaps* best_caps(GstCaps* caps, GstCaps* choices, const bool makes_caps) {
  const known_format* given = find_format(gst_structure_get_string(gst_caps_get_structure(caps, 0), "format"));
  const auto best = given ? cheapest(*given, choices, makes_caps) : std::nullopt;
  if (best) {
    GstCaps* chosen = gst_caps_copy_nth(choices, best->structure);
    gst_caps_unref(choices);
    choices = chosen;
    GstStructure* structure = gst_caps_get_structure(choices, 0);
    gst_structure_set(structure, "format", G_TYPE_STRING, gst_video_format_to_string(best->format->id), nullptr);
    keep_colours(caps, *best->format, structure);
  }
  return gst_caps_fixate(choices);
}

}  // namespace morvane::gstreamer
