// Memory for a plane, of which the sanitizer refuses every byte that is no pixel's: around it and between its rows.
// Pages without access stand on both sides for what runs further.
#pragma once

#include <cstddef>
#include <cstdint>

namespace morvane::fuzz {

class fenced_plane {
 public:
  fenced_plane();
  fenced_plane(const fenced_plane&) = delete;
  fenced_plane& operator=(const fenced_plane&) = delete;

  static constexpr std::ptrdiff_t capacity = 256 * 1024;

  // Everything is there.
  void open();
  // So many bytes that end with the last one, or begin with the first one and `offset` bytes more.
  std::uint8_t* place(std::ptrdiff_t bytes, bool at_end, std::ptrdiff_t offset) const;
  // The rows are there and nothing else.
  void close_around(const std::uint8_t* first, std::ptrdiff_t stride, std::ptrdiff_t rows, std::ptrdiff_t row_bytes);

 private:
  std::uint8_t* begin_ = nullptr;
};

}  // namespace morvane::fuzz
