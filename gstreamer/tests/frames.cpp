#include "frames.h"

#include <algorithm>
#include <random>

namespace {

morvane_description describe(const GstVideoInfo& info, const int height) {
  morvane_description description{};
  description.struct_size = sizeof description;
  morvane_format found[8];
  const int count = morvane_formats_called(gst_video_format_to_string(GST_VIDEO_INFO_FORMAT(&info)), found, 8);
  for (int i = 0; i < count && description.format == 0; i++) {
    morvane_format_info facts{};
    facts.struct_size = sizeof facts;
    morvane_describe_format(found[i], &facts, nullptr);
    if (gst_video_format_from_string(facts.gstreamer) == GST_VIDEO_INFO_FORMAT(&info)) description.format = found[i];
  }
  description.width = info.width;
  description.height = height;
  const auto matrix = info.colorimetry.matrix;
  description.matrix = matrix == GST_VIDEO_COLOR_MATRIX_BT601    ? MORVANE_BT601
                       : matrix == GST_VIDEO_COLOR_MATRIX_BT2020 ? MORVANE_BT2020
                                                                 : MORVANE_BT709;
  description.range = info.colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255 ? MORVANE_FULL : MORVANE_VIDEO;
  return description;
}

morvane_layout layout_of(const morvane_description& description) {
  morvane_layout layout{};
  layout.struct_size = sizeof layout;
  morvane_lay_out(&description, 0, &layout, nullptr);
  return layout;
}

morvane_picture picture_of(bytes& frame, const GstVideoInfo& info, const int first_row, const int step) {
  morvane_picture picture{};
  picture.struct_size = sizeof picture;
  for (guint p = 0; p < GST_VIDEO_INFO_N_PLANES(&info); p++) {
    const std::size_t begin = info.offset[p] + static_cast<std::size_t>(first_row * info.stride[p]);
    const std::size_t end = p + 1 < GST_VIDEO_INFO_N_PLANES(&info) ? info.offset[p + 1] : frame.size();
    picture.data[p] = frame.data() + begin;
    picture.stride[p] = int64_t{step} * info.stride[p];
    picture.bytes[p] = int64_t(end) - int64_t(begin);
  }
  return picture;
}

}  // namespace

GstVideoInfo info_of(const std::string& text) {
  GstCaps* caps = gst_caps_from_string(text.c_str());
  GstVideoInfo info;
  if (!gst_video_info_from_caps(&info, caps)) gst_video_info_init(&info);
  gst_caps_unref(caps);
  return info;
}

std::string caps_of(const std::string& format, const int width, const int height, const std::string& more) {
  return "video/x-raw,format=" + format + ",width=" + std::to_string(width) + ",height=" + std::to_string(height) +
         ",framerate=25/1" + (more.empty() ? "" : ",") + more;
}

bytes any_bytes(const std::size_t count, const uint32_t seed) {
  std::mt19937 random(seed);
  bytes made(count);
  for (uint8_t& b : made) b = static_cast<uint8_t>(random());
  return made;
}

GstBuffer* buffer_of(const bytes& content, const GstVideoInfo* meta) {
  GstBuffer* buffer = gst_buffer_new_allocate(nullptr, content.size(), nullptr);
  gst_buffer_fill(buffer, 0, content.data(), content.size());
  if (meta) {
    GstVideoInfo copy = *meta;  // GStreamer takes pointers to what it does not change
    gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_INFO_FORMAT(meta),
                                   static_cast<guint>(meta->width), static_cast<guint>(meta->height),
                                   GST_VIDEO_INFO_N_PLANES(meta), copy.offset, copy.stride);
  }
  return buffer;
}

bytes bytes_of(GstBuffer* buffer) {
  bytes content(gst_buffer_get_size(buffer));
  gst_buffer_extract(buffer, 0, content.data(), content.size());
  return content;
}

GstVideoInfo spread(GstVideoInfo info, const int gap) {
  std::size_t end = 0;
  const morvane_layout layout = layout_of(describe(info, info.height));
  for (guint p = 0; p < GST_VIDEO_INFO_N_PLANES(&info); p++) {
    info.stride[p] = static_cast<int>(layout.planes[p].row_bytes) + gap;
    info.offset[p] = end + static_cast<std::size_t>(gap);
    end = info.offset[p] + static_cast<std::size_t>(info.stride[p] * layout.planes[p].rows);
  }
  info.size = end;
  return info;
}

bytes converted(const bytes& frame, const GstVideoInfo& from, const GstVideoInfo& to, const bool by_fields,
                morvane_options options, std::string& refusal) {
  bytes source = frame, result(to.size);
  options.struct_size = sizeof options;
  const int step = by_fields ? 2 : 1;
  for (int first = 0; first < step && first < from.height; first++) {
    const int height = (from.height - first + step - 1) / step;
    const morvane_description read = describe(from, height), written = describe(to, height);
    const morvane_picture in = picture_of(source, from, first, step), out = picture_of(result, to, first, step);
    morvane_error error{};
    if (morvane_convert(&read, &in, &written, &out, &options, &error) != MORVANE_OK) {
      refusal = error.message;
      return {};
    }
  }
  return result;
}

std::string difference(const bytes& frame, const bytes& expected, const GstVideoInfo& info) {
  const morvane_layout layout = layout_of(describe(info, info.height));
  if (frame.size() != expected.size() || expected.size() < info.size)
    return std::to_string(frame.size()) + " and " + std::to_string(expected.size()) + " bytes";
  for (guint p = 0; p < GST_VIDEO_INFO_N_PLANES(&info); p++)
    for (int64_t y = 0; y < layout.planes[p].rows; y++) {
      const auto row = static_cast<std::ptrdiff_t>(info.offset[p]) + y * info.stride[p];
      const auto end = expected.begin() + row + layout.planes[p].row_bytes;
      const auto [at, other] = std::mismatch(expected.begin() + row, end, frame.begin() + row);
      if (at != end)
        return "plane " + std::to_string(p) + ", row " + std::to_string(y) + ", byte " +
               std::to_string(at - expected.begin() - row) + ": " + std::to_string(*other) + " where there should be " +
               std::to_string(*at);
    }
  return {};
}
