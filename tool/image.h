// A picture in memory, its rows aligned.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iosfwd>
#include <memory>

#include "formats.h"

namespace morvane::tool {

struct extent {
  int width = 0;
  int height = 0;

  bool operator==(const extent&) const = default;
};

std::ostream& operator<<(std::ostream& out, extent e);

class image {
 public:
  // All bytes are zero.
  image(const format_info& format, extent size);
  image(const format_info& format, extent size, const morvane_layout& layout);

  // What the first of these takes of memory.
  static std::int64_t bytes_of(const format_info& format, extent size);

  const format_info& format() const { return *format_; }
  extent size() const { return size_; }
  std::size_t plane_count() const { return static_cast<std::size_t>(format_->plane_count); }
  const plane_info& plane(std::size_t p) const { return format_->planes[p]; }
  std::int64_t stride(std::size_t p) const { return layout_.planes[p].stride; }
  std::int64_t row_bytes(std::size_t p) const { return layout_.planes[p].row_bytes; }
  int rows(std::size_t p) const { return static_cast<int>(layout_.planes[p].rows); }

  std::uint8_t* row(std::size_t p, int y) { return memory_.get() + offset(p, y); }
  const std::uint8_t* row(std::size_t p, int y) const { return memory_.get() + offset(p, y); }

  // For the calls of the checked interface, which write what they say only.
  morvane_picture picture() const { return morvane::picture_in(memory_.get(), layout_); }

 private:
  struct release {
    void operator()(std::uint8_t* p) const { std::free(p); }
  };

  std::int64_t offset(std::size_t p, int y) const {
    return layout_.planes[p].offset + std::int64_t{y} * layout_.planes[p].stride;
  }

  const format_info* format_;
  extent size_;
  morvane_layout layout_;
  std::unique_ptr<std::uint8_t, release> memory_;
};

}  // namespace morvane::tool
