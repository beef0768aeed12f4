// From RGB with alpha to every format there is, also to those that no conversion of the library leads to.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "image.h"

namespace morvane::tool {

// The format to begin with: RGB and alpha of 16 bits.
const format_info& rgb_to_begin_with();

// What has alpha or chroma alone gets that of the picture, from the planes of a format that has all of it. Of two
// images in one, a fill and its key, the first gets the colours, and the second alpha as grey.
class rgb_to_any {
 public:
  rgb_to_any(const morvane::description& result, const morvane::options& how);

  // What a run needs beside the source and the result.
  std::int64_t memory() const;
  void run(const image& source, const image& result);

 private:
  enum class place { source, between, result };

  // A picture, or one of some of its planes.
  struct part {
    place of{};
    std::vector<std::size_t> planes{};  // none for all
  };
  struct step {
    part from;
    part to;
    morvane::plan plan;
  };

  void add_images(const morvane::description& image, const morvane::options& how);
  void add_part_of_whole(const morvane::description& result, const morvane::options& how);
  std::int64_t scratch_bytes() const;
  morvane_picture picture_of(const part& p, const image& source, const image& result) const;

  std::vector<step> steps_;
  std::optional<morvane::description> between_of_;  // an image that steps use beside source and result
  bool between_is_key_ = false;
  std::optional<image> between_;  // allocated with the first run, as is the scratch memory
  std::vector<std::uint8_t> scratch_;
};

}  // namespace morvane::tool
