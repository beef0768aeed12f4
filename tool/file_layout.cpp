// Strides and sizes of raw frames.
#include "file_layout.h"

#include <limits>

#include "errors.h"
#include "names.h"

namespace morvane::tool {

namespace {

std::string plane_name(const format_info& f, int p) {
  return f.plane_count == 1 ? std::string(f.name) : text("plane ", f.planes[p].name, " of ", f.name);
}

std::string numbered(std::int64_t count, const char* what) {
  return text(count, ' ', what, count == 1 ? "" : "s");
}

void check_stride(const format_info& f, extent size, int p, const morvane_plane_layout& plane, std::int64_t before) {
  if (plane.stride < plane.row_bytes)
    wrong_arguments("stride ", plane.stride, " is too small: a row of ", plane_name(f, p), ' ', size, " has ",
                    plane.row_bytes, " bytes");
  if (plane.stride > (std::numeric_limits<std::int64_t>::max() - before) / plane.rows)
    wrong_arguments("stride ", plane.stride, " is too large: no file holds ", numbered(plane.rows, "row"),
                    " so far apart");
}

// The bytes of a frame whose rows begin at multiples of an alignment, and its strides.
struct candidate {
  std::int64_t bytes = 0;
  std::vector<std::string> strides;
};

candidate aligned_rows(const morvane_layout& layout, std::int64_t alignment, int only) {
  candidate result;
  for (int p = 0; p < layout.plane_count; ++p) {
    if (only >= 0 && p != only) continue;
    const morvane_plane_layout& plane = layout.planes[p];
    const std::int64_t stride = (plane.row_bytes + alignment - 1) / alignment * alignment;
    result.strides.push_back(std::to_string(stride));
    result.bytes += stride * plane.rows;
  }
  return result;
}

std::string advice(const std::string& strides, std::int64_t frames) {
  return text("; with a stride of ", strides, " it has ", numbered(frames, "frame"));
}

}  // namespace

morvane_layout layout_of(const format_info& f, extent size, const stride_list& strides) {
  if (!strides.empty() && strides.size() != planes_of(f).size())
    wrong_arguments(planes_in_words(f), "; there ", strides.size() == 1 ? "is " : "are ",
                    numbered(static_cast<std::int64_t>(strides.size()), "stride"));
  morvane_layout layout = morvane::lay_out({.format = f.format, .width = size.width, .height = size.height});
  if (strides.empty()) return layout;
  layout.bytes = 0;
  for (int p = 0; p < layout.plane_count; ++p) {
    morvane_plane_layout& plane = layout.planes[p];
    plane.stride = strides[static_cast<std::size_t>(p)];
    check_stride(f, size, p, plane, layout.bytes);
    plane.offset = layout.bytes;
    layout.bytes += plane_bytes(plane);
  }
  return layout;
}

std::string planes_in_words(const format_info& f) {
  std::vector<std::string> names;
  for (const plane_info& p : planes_of(f)) names.emplace_back(p.name);
  return text(f.name, " has ", numbered(f.plane_count, "plane"), ", ", joined(names));
}

std::string stride_advice(const format_info& f, extent size, std::int64_t bytes, int plane) {
  const morvane_layout layout = morvane::lay_out({.format = f.format, .width = size.width, .height = size.height});
  for (const std::int64_t alignment : {1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 4096}) {
    const candidate c = aligned_rows(layout, alignment, plane);
    if (bytes % c.bytes == 0) return advice(joined(c.strides, ","), bytes / c.bytes);
  }
  if (layout.plane_count > 1 && plane < 0) return "";
  const morvane_plane_layout& alone = layout.planes[plane < 0 ? 0 : plane];
  const std::int64_t frames = bytes / (alone.row_bytes * alone.rows);
  if (frames == 0 || bytes % (frames * alone.rows) != 0) return "";
  return advice(std::to_string(bytes / (frames * alone.rows)), frames);
}

}  // namespace morvane::tool
