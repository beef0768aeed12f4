// A picture that entry points may read and write: rows aligned, never tight, with spare room behind each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "catalogue/call.h"
#include "catalogue/formats.h"
#include "image.h"

namespace morvane::tool {

// What conversions need of the rows' memory.
struct spare_room {
  int width = 0;                                            // pixels, counted from the start of the row
  std::array<std::int64_t, catalogue::max_planes> bytes{};  // behind those pixels, in every plane
  bool one_stride = false;                                  // for all planes
};

class step_image {
 public:
  step_image(const catalogue::format& format, extent size, spare_room room);

  const catalogue::format& format() const { return *format_; }

  // Copies the rows of an image of the same format and size, or has them copied there.
  void take(const image& from);
  void give(image& to) const;

  // The planes from image row `first` on, as a call takes them; a row at which all planes have one of their own.
  catalogue::planes<std::uint8_t> from_row(int first);

 private:
  struct release {
    void operator()(std::uint8_t* p) const { std::free(p); }
  };

  std::uint8_t* row(std::size_t p, int y) const { return planes_.data[p] + std::int64_t{y} * planes_.stride[p]; }

  const catalogue::format* format_;
  catalogue::planes<std::uint8_t> planes_;
  std::unique_ptr<std::uint8_t, release> memory_;
};

}  // namespace morvane::tool
