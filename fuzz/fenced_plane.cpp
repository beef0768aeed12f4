#include "fenced_plane.h"

#include <sanitizer/asan_interface.h>
#include <sys/mman.h>

#include "expect.h"

namespace morvane::fuzz {

namespace {

constexpr std::ptrdiff_t page = 65536;

}  // namespace

fenced_plane::fenced_plane() {
  void* mapping = mmap(nullptr, capacity + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  expect(mapping != MAP_FAILED, "there is memory for a plane");
  begin_ = static_cast<std::uint8_t*>(mapping) + page;
  expect(mprotect(begin_, capacity, PROT_READ | PROT_WRITE) == 0, "a plane may be written");
}

void fenced_plane::open() {
  ASAN_UNPOISON_MEMORY_REGION(begin_, capacity);
}

std::uint8_t* fenced_plane::place(std::ptrdiff_t bytes, bool at_end, std::ptrdiff_t offset) const {
  expect(bytes + offset <= capacity, "a plane has room");
  return at_end ? begin_ + capacity - bytes : begin_ + offset;
}

void fenced_plane::close_around(const std::uint8_t* first, std::ptrdiff_t stride, std::ptrdiff_t rows,
                                std::ptrdiff_t row_bytes) {
  ASAN_POISON_MEMORY_REGION(begin_, capacity);
  for (std::ptrdiff_t row = 0; row < rows; ++row) ASAN_UNPOISON_MEMORY_REGION(first + stride * row, row_bytes);
}

}  // namespace morvane::fuzz
