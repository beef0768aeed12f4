// The memory of a picture.
#include "image.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <ostream>

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

// Systems that promise more memory than they have would end the command without a word.
void require_memory(std::int64_t bytes) {
  if (bytes / ::sysconf(_SC_PAGESIZE) >= ::sysconf(_SC_PHYS_PAGES)) throw std::bad_alloc();
}

}  // namespace

std::ostream& operator<<(std::ostream& out, extent e) {
  return out << e.width << 'x' << e.height;
}

image::image(const catalogue::format& format, extent size, spare_room room) : format_(&format), size_(size) {
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

catalogue::planes<std::uint8_t> image::from_row(int first) {
  catalogue::planes<std::uint8_t> result = planes_;
  for (std::size_t p = 0; p < plane_count(); ++p) result.data[p] = row(p, plane_rows(plane(p), first));
  return result;
}

void repeat_edges(image& picture, extent filled) {
  const int width = picture.size().width;
  for (std::size_t p = 0; p < picture.plane_count(); ++p) {
    const auto pixel = static_cast<std::size_t>(picture.plane(p).group_bytes);
    const int rows = plane_rows(picture.plane(p), filled.height);
    for (int y = 0; y < rows; ++y)
      for (int x = filled.width; x < width; ++x)
        std::memcpy(picture.row(p, y) + static_cast<std::size_t>(x) * pixel,
                    picture.row(p, y) + static_cast<std::size_t>(filled.width - 1) * pixel, pixel);
    const auto row_bytes = static_cast<std::size_t>(picture.plane(p).row_bytes(width));
    for (int y = rows; y < picture.rows(p); ++y) std::memcpy(picture.row(p, y), picture.row(p, rows - 1), row_bytes);
  }
}

}  // namespace morvane::tool
