#include "element.h"

#include <gst/base/gstbasetransform.h>
#include <gst/video/video.h>

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
  GstVideoInfo from{}, to{};
  converter conversion;
  settings wanted;
  bool is_stale = false;
};

struct MorvaneConvert {
  GstBaseTransform base;
  insides* own;
};
struct MorvaneConvertClass {
  GstBaseTransformClass base;
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

G_DEFINE_TYPE(MorvaneConvert, morvane_convert, GST_TYPE_BASE_TRANSFORM)

MorvaneConvert* self_of(gpointer object) {
  return reinterpret_cast<MorvaneConvert*>(object);
}

void set_property(GObject* object, const guint id, const GValue* value, GParamSpec* described) {
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
      G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, described);
  }
  GST_OBJECT_UNLOCK(object);
}

void get_property(GObject* object, const guint id, GValue* value, GParamSpec* described) {
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
      G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, described);
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

gboolean get_unit_size(GstBaseTransform*, GstCaps* caps, gsize* size) {
  GstVideoInfo info;
  if (!gst_video_info_from_caps(&info, caps)) return FALSE;
  *size = info.size;
  return TRUE;
}

// Adds a pool for frames of the query's caps, or sets the first one up. Strides are of the pool's choice where the
// other side reads them from the meta.
void offer_pool(GstQuery* query) {
  GstCaps* caps = nullptr;
  GstVideoInfo info;
  gst_query_parse_allocation(query, &caps, nullptr);
  if (!caps || !gst_video_info_from_caps(&info, caps)) return;

  GstBufferPool* pool = nullptr;
  auto size = static_cast<guint>(info.size);
  guint fewest = 0, most = 0;
  const bool has_pool = gst_query_get_n_allocation_pools(query) > 0;
  if (has_pool) gst_query_parse_nth_allocation_pool(query, 0, &pool, &size, &fewest, &most);
  if (!pool) pool = gst_video_buffer_pool_new();
  size = MAX(size, static_cast<guint>(info.size));

  GstStructure* config = gst_buffer_pool_get_config(pool);
  gst_buffer_pool_config_set_params(config, caps, size, fewest, most);
  if (gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr))
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
  gst_buffer_pool_set_config(pool, config);

  if (has_pool)
    gst_query_set_nth_allocation_pool(query, 0, pool, size, fewest, most);
  else
    gst_query_add_allocation_pool(query, pool, size, fewest, most);
  gst_object_unref(pool);
}

gboolean decide_allocation(GstBaseTransform* base, GstQuery* query) {
  offer_pool(query);
  return GST_BASE_TRANSFORM_CLASS(morvane_convert_parent_class)->decide_allocation(base, query);
}

gboolean propose_allocation(GstBaseTransform* base, GstQuery* decided, GstQuery* query) {
  if (!GST_BASE_TRANSFORM_CLASS(morvane_convert_parent_class)->propose_allocation(base, decided, query)) return FALSE;
  const bool passes_through = !decided;
  if (passes_through) return TRUE;
  gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
  offer_pool(query);
  return TRUE;
}

// What tells of the picture holds for the result; what tells of its samples or their memory does not.
gboolean transform_meta(GstBaseTransform*, GstBuffer*, GstMeta* meta, GstBuffer*) {
  const gchar* const* tags = gst_meta_api_type_get_tags(meta->info->api);
  static const gchar* const of_the_picture[] = {GST_META_TAG_VIDEO_STR, GST_META_TAG_VIDEO_ORIENTATION_STR,
                                                GST_META_TAG_VIDEO_SIZE_STR, nullptr};
  for (; tags && *tags; tags++)
    if (!g_strv_contains(of_the_picture, *tags)) return FALSE;
  return TRUE;
}

// Makes the plans that the caps and the properties ask for.
std::string prepare(GstBaseTransform* base) {
  insides& own = *self_of(base)->own;
  GST_OBJECT_LOCK(base);
  own.is_stale = false;
  settings wanted = own.wanted;
  GST_OBJECT_UNLOCK(base);
  if (wanted.threads == 0) wanted.threads = static_cast<int>(MIN(g_get_num_processors(), most_threads));
  return own.conversion.prepare(own.from, own.to, wanted);
}

bool is_stale(GstBaseTransform* base) {
  GST_OBJECT_LOCK(base);
  const bool stale = self_of(base)->own->is_stale;
  GST_OBJECT_UNLOCK(base);
  return stale;
}

// GStreamer guesses where chroma lies by the height of a picture, even for caps that say it but not their colorimetry.
// What is not said is left to the library.
bool read_caps(GstCaps* caps, GstVideoInfo& info) {
  if (!gst_video_info_from_caps(&info, caps)) return false;
  const gchar* site = gst_structure_get_string(gst_caps_get_structure(caps, 0), "chroma-site");
  info.chroma_site = site ? gst_video_chroma_site_from_string(site) : GST_VIDEO_CHROMA_SITE_UNKNOWN;
  return true;
}

gboolean set_caps(GstBaseTransform* base, GstCaps* from, GstCaps* to) {
  insides& own = *self_of(base)->own;
  std::string problem;
  // Caps of other memory, which cannot be read here, are the same on both sides.
  bool is_same = gst_caps_is_equal(from, to);
  if (!is_same) {
    if (read_caps(from, own.from) && read_caps(to, own.to))
      is_same = morvane::gstreamer::is_same_picture(own.from, own.to);
    else
      problem = "the caps are none of raw video";
  }
  gst_base_transform_set_passthrough(base, is_same);
  if (!is_same && problem.empty()) problem = prepare(base);
  if (!problem.empty()) GST_ELEMENT_ERROR(base, STREAM, FORMAT, ("%s", problem.c_str()), (nullptr));
  return problem.empty();
}

GstFlowReturn transform(GstBaseTransform* base, GstBuffer* source, GstBuffer* destination) {
  std::string problem = is_stale(base) ? prepare(base) : std::string();
  if (problem.empty()) problem = self_of(base)->own->conversion.run(source, destination);
  if (problem.empty()) return GST_FLOW_OK;
  GST_ELEMENT_ERROR(base, STREAM, FAILED, ("%s", problem.c_str()), (nullptr));
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
  base->set_caps = set_caps;
  base->get_unit_size = get_unit_size;
  base->decide_allocation = decide_allocation;
  base->propose_allocation = propose_allocation;
  base->transform_meta = transform_meta;
  base->transform = transform;
}

void morvane_convert_init(MorvaneConvert* self) {
  self->own = new insides;
}

}  // namespace

bool morvane::gstreamer::register_element(GstPlugin* plugin) {
  GST_DEBUG_CATEGORY_INIT(morvane_convert_debug, "morvaneconvert", 0, "Pixel-format converter");
  return gst_element_register(plugin, "morvaneconvert", GST_RANK_NONE, morvane_convert_get_type());
}
