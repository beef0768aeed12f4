// What is measured of a pair of formats: plans of the checked interface over pictures in shared memory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "measure/pairs.h"
#include "morvane.hpp"
#include "peers/swscale.h"

namespace morvane::bench {

// The smallest picture whose rows are made of whole groups of every format, so that its plan is that of larger ones.
inline constexpr size tiny{48, 2};

// Pictures of one size, several behind each other, each as the source and the destination of a pair.
class pictures {
 public:
  pictures(const arena& memory, const format_pair& p, const size& each, int count = 1);

  // What `count` pictures of any pair take of each half of an arena.
  static std::size_t bytes_for(const size& each, int count = 1);

  // Gives the sources contents that their format can have: noise, converted from a format with all components.
  void fill_sources() const;

  int count() const { return count_; }
  const format_pair& formats() const { return pair_; }
  const description& from() const { return from_; }
  const description& to() const { return to_; }
  morvane_picture source(int i) const { return picture_in(source_ + i * bytes_of(source_layout_), source_layout_); }
  morvane_picture destination(int i) const {
    return picture_in(destination_ + i * bytes_of(destination_layout_), destination_layout_);
  }

 private:
  format_pair pair_;
  std::uint8_t* source_;
  std::uint8_t* destination_;
  description from_;
  description to_;
  morvane_layout source_layout_;
  morvane_layout destination_layout_;
  int count_;

  static std::int64_t bytes_of(const morvane_layout& layout);
};

// One plan converts every picture in turn.
job convert_all(const pictures& all, const options& how = {});

// The first picture, by another library that has the pair.
job convert_by_swscale(const pictures& all, resampling chroma);

// A picture of next to no rows, which takes the time of a call apart from them.
job convert_tiny_picture(const format_pair& p);

}  // namespace morvane::bench
