// Buffers as pictures of the checked interface.
#pragma once

#include <gst/video/video.h>
#include <morvane.h>

#include <string>

#include "formats.h"

namespace morvane::gstreamer {

// Which rows of a frame a picture has.
enum class rows { all, top_field, bottom_field };

int height_of(const GstVideoInfo& info, rows which);

// A buffer that is mapped as its caps and its meta say, while this lives.
class mapped_frame {
 public:
  mapped_frame() = default;
  mapped_frame(const mapped_frame&) = delete;
  mapped_frame& operator=(const mapped_frame&) = delete;
  ~mapped_frame();

  // Says in a sentence why the buffer is refused, or nothing.
  std::string map(const GstVideoInfo& info, GstBuffer* buffer, GstMapFlags flags);

  // The rows of the layout, which are all or those of a field.
  morvane_picture picture(const known_format& format, const morvane_layout& layout, rows which) const;

 private:
  GstVideoFrame frame_{};
  bool is_mapped_ = false;
};

}  // namespace morvane::gstreamer
