// A picture in memory that conversions may read and write: rows aligned, never tight, with spare room behind each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iosfwd>
#include <memory>

#include "catalogue/call.h"
#include "catalogue/formats.h"

namespace morvane::tool {

struct extent {
  int width = 0;
  int height = 0;

  bool operator==(const extent&) const = default;
};

std::ostream& operator<<(std::ostream& out, extent e);

// The rows that a plane has in a picture of this height.
inline int plane_rows(const catalogue::plane& plane, int height) {
  return static_cast<int>(plane.rows(height));
}

// What conversions need of the rows' memory.
struct spare_room {
  int width = 0;                                            // pixels, counted from the start of the row
  std::array<std::int64_t, catalogue::max_planes> bytes{};  // behind those pixels, in every plane
  bool one_stride = false;                                  // for all planes
};

class image {
 public:
  image(const catalogue::format& format, extent size, spare_room room);

  const catalogue::format& format() const { return *format_; }
  extent size() const { return size_; }
  std::size_t plane_count() const { return format_->plane_count(); }
  const catalogue::plane& plane(std::size_t p) const { return format_->planes[p]; }
  int stride(std::size_t p) const { return planes_.stride[p]; }
  int rows(std::size_t p) const { return plane_rows(plane(p), size_.height); }

  std::uint8_t* row(std::size_t p, int y) { return planes_.data[p] + std::int64_t{y} * planes_.stride[p]; }
  const std::uint8_t* row(std::size_t p, int y) const { return planes_.data[p] + std::int64_t{y} * planes_.stride[p]; }

  // The planes from image row `first` on, as a call takes them; a row at which all planes have one of their own.
  catalogue::planes<std::uint8_t> from_row(int first);

 private:
  struct release {
    void operator()(std::uint8_t* p) const { std::free(p); }
  };

  const catalogue::format* format_;
  extent size_;
  catalogue::planes<std::uint8_t> planes_;
  std::unique_ptr<std::uint8_t, release> memory_;
};

// Makes the image, of which only the top left is filled, repeat the last column and the last row of that part. Where
// columns are missing, a group of the format is one pixel.
void repeat_edges(image& picture, extent filled);

}  // namespace morvane::tool
