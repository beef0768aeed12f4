// Frames in YUV4MPEG2 files.
#pragma once

#include <memory>

#include "frames.h"
#include "input_file.h"

namespace morvane::tool {

// Format and size come from the file; what the wish says of them must be the same.
std::unique_ptr<frame_source> open_y4m_source(const source_wish& wish, input_file file);

std::unique_ptr<frame_sink> open_y4m_sink(const sink_wish& wish, const format_info& format);

}  // namespace morvane::tool
