// How a frame lies in raw files: plane after plane, row after row.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "image.h"

namespace morvane::tool {

// Bytes from row to row in the planes of raw frames, one number for every plane; none for the strides that files of the
// format have.
using stride_list = std::vector<std::int64_t>;

morvane_layout layout_of(const format_info& f, extent size, const stride_list& strides = {});

inline std::int64_t plane_bytes(const morvane_plane_layout& plane) {
  return plane.stride * plane.rows;
}

// "y_uv_420 has 2 planes, y, cbcr"
std::string planes_in_words(const format_info& f);

// Strides with which so many bytes are whole frames of this size: "; with a stride of 3456 it has 2 frames". Empty
// where none suggest themselves. `plane` is the only plane in the file; -1 for all of them.
std::string stride_advice(const format_info& f, extent size, std::int64_t bytes, int plane = -1);

}  // namespace morvane::tool
