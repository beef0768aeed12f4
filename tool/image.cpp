// The memory of a picture.
#include "image.h"

#include <cstring>
#include <new>
#include <ostream>

#include "memory.h"

namespace morvane::tool {

namespace {

constexpr std::int64_t alignment = 64;

morvane_layout aligned_layout(const format_info& format, extent size) {
  return morvane::lay_out({.format = format.format, .width = size.width, .height = size.height}, alignment);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, extent e) {
  return out << e.width << 'x' << e.height;
}

image::image(const format_info& format, extent size) : image(format, size, aligned_layout(format, size)) {
}

std::int64_t image::bytes_of(const format_info& format, extent size) {
  return aligned_layout(format, size).bytes;
}

image::image(const format_info& format, extent size, const morvane_layout& layout)
    : format_(&format), size_(size), layout_(layout) {
  require_memory(layout_.bytes);
  const auto bytes = static_cast<std::size_t>((layout_.bytes + alignment - 1) / alignment * alignment);
  memory_.reset(static_cast<std::uint8_t*>(std::aligned_alloc(alignment, bytes)));
  if (!memory_) throw std::bad_alloc();
  std::memset(memory_.get(), 0, bytes);
}

}  // namespace morvane::tool
