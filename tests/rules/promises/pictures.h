// Pictures with memory of their own.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "rules/layout.h"
#include "rules/picture.h"

namespace morvane::tests::rules {

using ints = std::vector<int>;

// Every plane is filled with a value first, and its rows are as far apart as the natural stride and `padding` say.
class stored_picture {
 public:
  stored_picture(std::string_view name, int width, int height, std::uint8_t fill = 0, std::ptrdiff_t padding = 0)
      : of_{.format = name, .width = width, .height = height} {
    const format& f = format_of(name);
    for (std::size_t i = 0; i < f.planes.size(); ++i) {
      of_.stride[i] = natural_stride(f, i, width) + padding;
      planes_[i].assign(static_cast<std::size_t>(of_.stride[i] * rows_of_plane(f, i, height)), fill);
      of_.data[i] = planes_[i].data();
    }
  }
  stored_picture(const stored_picture&) = delete;
  stored_picture& operator=(const stored_picture&) = delete;

  picture& of() { return of_; }
  std::vector<std::uint8_t>& plane(std::size_t i) { return planes_[i]; }

  void put(std::size_t plane, const ints& bytes) {
    std::transform(bytes.begin(), bytes.end(), planes_[plane].begin(),
                   [](int byte) { return static_cast<std::uint8_t>(byte); });
  }

  void put_words(std::size_t plane, const ints& words) {
    std::size_t at = 0;
    for (const int word : words) {
      planes_[plane][at++] = static_cast<std::uint8_t>(word % 256);
      planes_[plane][at++] = static_cast<std::uint8_t>(word / 256);
    }
  }

  // Numbers without a pattern, the same for every seed.
  void fill_at_random(std::uint32_t seed) {
    for (auto& bytes : planes_)
      for (std::uint8_t& byte : bytes) {
        seed = seed * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(seed >> 24);
      }
  }

  std::vector<int> bytes(std::size_t plane) const { return {planes_[plane].begin(), planes_[plane].end()}; }

  std::vector<int> words(std::size_t plane) const {
    std::vector<int> made;
    for (std::size_t i = 0; i + 1 < planes_[plane].size(); i += 2)
      made.push_back(planes_[plane][i] + 256 * planes_[plane][i + 1]);
    return made;
  }

 private:
  picture of_;
  std::array<std::vector<std::uint8_t>, 4> planes_{};
};

}  // namespace morvane::tests::rules
