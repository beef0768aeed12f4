// Pictures whose planes lie between inaccessible pages, with rows up or down, padded or not, at any address.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "checker/memory.h"
#include "morvane.h"
#include "rules/picture.h"
#include "rules/promises/pictures.h"

namespace morvane::tests {

// How a plane lies in memory.
struct geometry {
  bool upwards = false;  // the last row is the lowest
  int padding = 0;       // behind each row but the last
  bool at_end = false;   // ends with the last byte before the fence, or begins so many bytes behind the first
  int offset = 0;
};

// Some geometry for each number: rows both ways, paddings even and odd, both fences and some addresses between.
geometry geometry_of(int number);

// Memory for one plane after another. What was left in it stays.
class fenced_room {
 public:
  static constexpr std::size_t bytes = 256 * 1024;

  std::uint8_t* place(std::size_t needed, bool at_end, int offset);

 private:
  fenced_memory memory_{bytes};
};

// Rooms for the planes of a picture.
using fenced_rooms = std::array<fenced_room, 4>;

class fenced_picture {
 public:
  // All bytes of the planes, of their padding and around them are filled with a value.
  fenced_picture(fenced_rooms& rooms, std::string_view format, int width, int height, const geometry& g,
                 std::uint8_t fill);

  void fill_at_random(std::uint32_t seed);

  rules::picture of() const { return of_; }
  morvane_picture planes() const;

  // Where the rows differ from those of the expected picture, and where other bytes are no longer what they were filled
  // with; empty where nothing does.
  std::string difference(rules::stored_picture& expected) const;
  // The bytes of all planes and around them.
  std::vector<std::uint8_t> all_bytes() const;

 private:
  struct plane {
    std::span<std::uint8_t> surroundings;
    std::uint8_t* lowest = nullptr;
    std::ptrdiff_t span = 0;
    std::ptrdiff_t row_bytes = 0;
    int rows = 0;
  };

  rules::picture of_;
  std::uint8_t fill_;
  std::vector<plane> planes_;
};

}  // namespace morvane::tests
