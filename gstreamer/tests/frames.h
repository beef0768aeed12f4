// Frames of any bytes, and what the library makes of them in one call.
#pragma once

#include <gst/video/video.h>
#include <morvane.h>

#include <cstdint>
#include <string>
#include <vector>

using bytes = std::vector<uint8_t>;

GstVideoInfo info_of(const std::string& caps);

// "video/x-raw,format=NV12,width=50,height=6,framerate=25/1" and more fields.
std::string caps_of(const std::string& format, int width, int height, const std::string& more = "");

bytes any_bytes(std::size_t count, uint32_t seed);

// A buffer with the bytes, and a meta with the strides and offsets of the info where one is asked for.
GstBuffer* buffer_of(const bytes& content, const GstVideoInfo* meta = nullptr);
bytes bytes_of(GstBuffer* buffer);

// The same planes with gaps of so many bytes behind every row and before every plane.
GstVideoInfo spread(GstVideoInfo info, int gap);

// What morvane_convert makes of the frame, as a frame of the other caps; by fields where they are interlaced. Empty,
// with the library's sentence, where it refuses.
bytes converted(const bytes& frame, const GstVideoInfo& from, const GstVideoInfo& to, bool by_fields,
                morvane_options options, std::string& refusal);

// The first place where rows differ; bytes between rows are left out.
std::string difference(const bytes& frame, const bytes& expected, const GstVideoInfo& info);
