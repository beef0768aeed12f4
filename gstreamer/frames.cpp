#include "frames.h"

#include <cstdint>

namespace morvane::gstreamer {
namespace {

std::string kind(const GstVideoFormat format, const guint width, const guint height) {
  return std::to_string(width) + "x" + std::to_string(height) + " " + gst_video_format_to_string(format);
}

// GStreamer takes such a meta for a mistake of the program, and stops programs that ask it to.
std::string check_meta(const GstVideoInfo& info, const GstVideoMeta& meta) {
  const auto width = static_cast<guint>(info.width), height = static_cast<guint>(info.height);
  if (meta.format == GST_VIDEO_INFO_FORMAT(&info) && meta.width >= width && meta.height >= height &&
      meta.n_planes == GST_VIDEO_INFO_N_PLANES(&info))
    return {};
  return "the video meta of the buffer says " + kind(meta.format, meta.width, meta.height) + " with " +
         std::to_string(meta.n_planes) + " planes, where the caps say " +
         kind(GST_VIDEO_INFO_FORMAT(&info), width, height) + " with " + std::to_string(GST_VIDEO_INFO_N_PLANES(&info));
}

// How many bytes of the map there are from the lowest row of a plane on; none where it begins outside.
int64_t bytes_from_lowest_row(const GstMapInfo& map, const guint8* first_row, const int64_t stride,
                              const int64_t number_of_rows) {
  int64_t offset = static_cast<int64_t>(reinterpret_cast<intptr_t>(first_row) - reinterpret_cast<intptr_t>(map.data));
  if (stride < 0) offset += stride * (number_of_rows - 1);
  const auto size = static_cast<int64_t>(map.size);
  return offset < 0 || offset > size ? 0 : size - offset;
}

}  // namespace

int height_of(const GstVideoInfo& info, const rows which) {
  return which == rows::all ? info.height : (info.height + (which == rows::top_field)) / 2;
}

mapped_frame::~mapped_frame() {
  if (is_mapped_) gst_video_frame_unmap(&frame_);
}

std::string mapped_frame::map(const GstVideoInfo& info, GstBuffer* buffer, const GstMapFlags flags) {
  const GstVideoMeta* meta = gst_buffer_get_video_meta(buffer);
  if (meta) {
    if (std::string problem = check_meta(info, *meta); !problem.empty()) return problem;
  } else if (gst_buffer_get_size(buffer) < info.size) {
    return "the buffer has " + std::to_string(gst_buffer_get_size(buffer)) + " bytes, where its caps need " +
           std::to_string(info.size);
  }
  // A further reference would make the buffer one that must not be written.
  is_mapped_ =
      gst_video_frame_map(&frame_, &info, buffer, GstMapFlags(int{flags} | int{GST_VIDEO_FRAME_MAP_FLAG_NO_REF}));
  if (is_mapped_) return {};
  return meta ? "the video meta of the buffer leads beyond its memory, or the memory cannot be mapped"
              : "the memory of the buffer cannot be mapped";
}

morvane_picture mapped_frame::picture(const known_format& format, const morvane_layout& layout,
                                      const rows which) const {
  morvane_picture made{};
  made.struct_size = sizeof made;
  for (int32_t p = 0; p < layout.plane_count; p++) {
    const guint plane = format.planes[static_cast<std::size_t>(p)];
    // Without a meta, all planes lie in one map.
    const GstMapInfo& map = frame_.map[frame_.meta ? plane : 0];
    auto* first_row = static_cast<guint8*>(frame_.data[plane]);
    int64_t stride = frame_.info.stride[plane];
    if (which == rows::bottom_field) first_row += stride;
    if (which != rows::all) stride *= 2;
    made.data[p] = first_row;
    made.stride[p] = stride;
    made.bytes[p] = bytes_from_lowest_row(map, first_row, stride, layout.planes[p].rows);
  }
  return made;
}

}  // namespace morvane::gstreamer
