#include "element.h"

#include <gst/video/gstvideofilter.h>

#include <string>

#include "caps.h"
#include "converter.h"

GST_DEBUG_CATEGORY_STATIC(morvane_convert_debug);
#define GST_CAT_DEFAULT morvane_convert_debug

namespace {

using morvane::gstreamer::converter;
using morvane::gstreamer::settings;

// What an element has beside what GStreamer keeps for it. Settings may be changed while frames flow.
struct insides {
  converter conversion;
  settings wanted;
  bool is_stale = false;
};

struct MorvaneConvert {
  GstVideoFilter base;
  insides* own;
};
struct MorvaneConvertClass {
  GstVideoFilterClass base;
};

enum property : guint { CHROMA = 1, THREADS, BACKGROUND };

constexpr guint most_threads = 256;

GType chroma_type() {
  static const GEnumValue values[] = {{MORVANE_LINEAR, "Weigh the samples nearby", "linear"},
                                      {MORVANE_NEAREST, "Repeat samples and drop samples", "nearest"},
                                      {0, nullptr, nullptr}};
  static const GType type = g_enum_register_static("MorvaneConvertChroma", values);
  return type;
}

G_DEFINE_TYPE(MorvaneConvert, morvane_convert, GST_TYPE_VIDEO_FILTER)

MorvaneConvert* self_of(gpointer object) {
  return reinterpret_cast<MorvaneConvert*>(object);
}

void set_property(GObject* object, const guint id, const GValue* value, GParamSpec* spec) {
  insides& own = *self_of(object)->own;
  GST_OBJECT_LOCK(object);
  own.is_stale = true;
  switch (id) {
    case CHROMA:
      own.wanted.filter = g_value_get_enum(value);
      break;
    case THREADS:
      own.wanted.threads = static_cast<int>(g_value_get_uint(value));
      break;
    case BACKGROUND:
      own.wanted.background = g_value_get_int(value);
      break;
    default:
      G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec);
  }
  GST_OBJECT_UNLOCK(object);
}

void get_property(GObject* object, const guint id, GValue* value, GParamSpec* spec) {
  const insides& own = *self_of(object)->own;
  GST_OBJECT_LOCK(object);
  switch (id) {
    case CHROMA:
      g_value_set_enum(value, own.wanted.filter);
      break;
    case THREADS:
      g_value_set_uint(value, static_cast<guint>(own.wanted.threads));
      break;
    case BACKGROUND:
      g_value_set_int(value, own.wanted.background);
      break;
    default:
      G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec);
  }
  GST_OBJECT_UNLOCK(object);
}

void finalize(GObject* object) {
  delete self_of(object)->own;
  G_OBJECT_CLASS(morvane_convert_parent_class)->finalize(object);
}

GstCaps* transform_caps(GstBaseTransform*, GstPadDirection, GstCaps* caps, GstCaps* filter) {
  GstCaps* reachable = morvane::gstreamer::reachable_caps(caps);
  if (!filter) return reachable;
  GstCaps* both = gst_caps_intersect_full(filter, reachable, GST_CAPS_INTERSECT_FIRST);
  gst_caps_unref(reachable);
  return both;
}

GstCaps* fixate_caps(GstBaseTransform*, const GstPadDirection direction, GstCaps* caps, GstCaps* choices) {
  return morvane::gstreamer::best_caps(caps, choices, direction == GST_PAD_SRC);
}

// Makes the plans that the properties ask for.
std::string prepare(GstVideoFilter* filter) {
  insides& own = *self_of(filter)->own;
  GST_OBJECT_LOCK(filter);
  own.is_stale = false;
  settings wanted = own.wanted;
  GST_OBJECT_UNLOCK(filter);
  if (wanted.threads == 0) wanted.threads = static_cast<int>(MIN(g_get_num_processors(), most_threads));
  return own.conversion.prepare(filter->in_info, filter->out_info, wanted);
}

bool is_stale(GstVideoFilter* filter) {
  GST_OBJECT_LOCK(filter);
  const bool stale = self_of(filter)->own->is_stale;
  GST_OBJECT_UNLOCK(filter);
  return stale;
}

gboolean set_info(GstVideoFilter* filter, GstCaps*, GstVideoInfo* from, GstCaps*, GstVideoInfo* to) {
  const bool is_same = morvane::gstreamer::is_same_picture(*from, *to);
  gst_base_transform_set_passthrough(GST_BASE_TRANSFORM(filter), is_same);
  if (is_same) return TRUE;
  filter->in_info = *from;
  filter->out_info = *to;
  const std::string problem = prepare(filter);
  if (!problem.empty()) GST_ELEMENT_ERROR(filter, STREAM, FORMAT, ("%s", problem.c_str()), (nullptr));
  return problem.empty();
}

GstFlowReturn transform(GstBaseTransform* base, GstBuffer* source, GstBuffer* destination) {
  GstVideoFilter* filter = GST_VIDEO_FILTER_CAST(base);
  std::string problem = is_stale(filter) ? prepare(filter) : std::string();
  if (problem.empty()) problem = self_of(filter)->own->conversion.run(source, destination);
  if (problem.empty()) return GST_FLOW_OK;
  GST_ELEMENT_ERROR(filter, STREAM, FAILED, ("%s", problem.c_str()), (nullptr));
  return GST_FLOW_ERROR;
}

void install_properties(GObjectClass* object) {
  const auto flags = GParamFlags(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | GST_PARAM_MUTABLE_PLAYING);
  g_object_class_install_property(object, CHROMA,
                                  g_param_spec_enum("chroma", "Chroma", "How chroma goes from one sampling to another",
                                                    chroma_type(), MORVANE_LINEAR, flags));
  g_object_class_install_property(
      object, THREADS,
      g_param_spec_uint("threads", "Threads", "Threads that share every frame; 0 for as many as processors", 0,
                        most_threads, 1, flags));
  g_object_class_install_property(
      object, BACKGROUND,
      g_param_spec_int("background", "Background",
                       "Colour 0xRRGGBB below frames with alpha that become frames without; -1 drops alpha", -1,
                       0xffffff, -1, flags));
}

void morvane_convert_class_init(MorvaneConvertClass* of) {
  GObjectClass* object = G_OBJECT_CLASS(of);
  object->set_property = set_property;
  object->get_property = get_property;
  object->finalize = finalize;
  install_properties(object);

  GstElementClass* element = GST_ELEMENT_CLASS(of);
  gst_element_class_set_static_metadata(element, "Pixel-format converter", "Filter/Converter/Video",
                                        "Converts any raw video format to any other, exactly and at memory speed",
                                        "Morvane");
  GstCaps* caps = morvane::gstreamer::template_caps();
  gst_element_class_add_pad_template(element, gst_pad_template_new("sink", GST_PAD_SINK, GST_PAD_ALWAYS, caps));
  gst_element_class_add_pad_template(element, gst_pad_template_new("src", GST_PAD_SRC, GST_PAD_ALWAYS, caps));
  gst_caps_unref(caps);

  GstBaseTransformClass* base = GST_BASE_TRANSFORM_CLASS(of);
  base->transform_caps = transform_caps;
  base->fixate_caps = fixate_caps;
  base->transform = transform;
  base->transform_ip_on_passthrough = FALSE;
  base->passthrough_on_same_caps = TRUE;
  GST_VIDEO_FILTER_CLASS(of)->set_info = set_info;
}

void morvane_convert_init(MorvaneConvert* self) {
  self->own = new insides;
}

}  // namespace

bool morvane::gstreamer::register_element(GstPlugin* plugin) {
  GST_DEBUG_CATEGORY_INIT(morvane_convert_debug, "morvaneconvert", 0, "Pixel-format converter");
  return gst_element_register(plugin, "morvaneconvert", GST_RANK_NONE, morvane_convert_get_type());
}
