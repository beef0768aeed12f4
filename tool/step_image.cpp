// The memory between the steps of a route.
#include "step_image.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "catalogue/layout.h"
#include "errors.h"

namespace morvane::tool {

namespace {

constexpr std::int64_t alignment = 64;

constexpr std::int64_t aligned(std::int64_t bytes) {
  return (bytes + alignment - 1) / alignment * alignment;
}

// Larger than the row in any case: an image with tight rows would be converted as one line, across its row ends.
std::int64_t roomy_stride(const catalogue::plane& plane, int width, std::int64_t spare_bytes) {
  return aligned(plane.row_bytes(width) + spare_bytes + 1);
}

using strides = std::array<std::int64_t, catalogue::max_planes>;

strides strides_of(const catalogue::format& f, int width, const spare_room& room) {
  strides result{};
  for (std::size_t p = 0; p < f.plane_count(); ++p)
    result[p] = roomy_stride(f.planes[p], std::max(width, room.width), room.bytes[p]);
  if (room.one_stride) result.fill(*std::max_element(result.begin(), result.end()));
  return result;
}

}  // namespace

step_image::step_image(const catalogue::format& format, extent size, spare_room room) : format_(&format) {
  const strides roomy = strides_of(format, size.width, room);
  const catalogue::layout layout =
      lay_out(format, size.width, size.height, [&](std::size_t p, std::int64_t) { return roomy[p]; });
  if (*std::max_element(roomy.begin(), roomy.end()) > std::numeric_limits<int>::max())
    wrong_arguments("size ", size, " is too wide");
  require_memory(layout.bytes);
  memory_.reset(static_cast<std::uint8_t*>(std::aligned_alloc(alignment, static_cast<std::size_t>(layout.bytes))));
  if (!memory_) throw std::bad_alloc();
  std::memset(memory_.get(), 0, static_cast<std::size_t>(layout.bytes));
  planes_ = layout.at(memory_.get());
}

void step_image::take(const image& from) {
  for (std::size_t p = 0; p < from.plane_count(); ++p)
    for (int y = 0; y < from.rows(p); ++y)
      std::memcpy(row(p, y), from.row(p, y), static_cast<std::size_t>(from.row_bytes(p)));
}

void step_image::give(image& to) const {
  for (std::size_t p = 0; p < to.plane_count(); ++p)
    for (int y = 0; y < to.rows(p); ++y)
      std::memcpy(to.row(p, y), row(p, y), static_cast<std::size_t>(to.row_bytes(p)));
}

catalogue::planes<std::uint8_t> step_image::from_row(int first) {
  catalogue::planes<std::uint8_t> result = planes_;
  for (std::size_t p = 0; p < format_->plane_count(); ++p)
    result.data[p] = row(p, static_cast<int>(format_->planes[p].rows(first)));
  return result;
}

}  // namespace morvane::tool
