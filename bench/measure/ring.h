// Frames for a pair of formats, several behind each other in shared memory, which conversions and copies take in turn.
#pragma once

#include <cstdint>
#include <vector>

#include "measure/pairs.h"
#include "morvane.hpp"

namespace morvane::bench {

// How many frames move at least `bytes`: four or more, but no more than 512 MiB have room for.
int frames_that_move(std::int64_t bytes, const format_pair& p, const size& each);

class ring {
 public:
  ring(const arena& memory, const format_pair& p, const size& each, int count = 1);

  // What a ring takes of each half of an arena.
  static std::size_t bytes_for(const format_pair& p, const size& each, int count = 1);

  // The frame whose turn it is, for whoever asks: nobody meets one that another has just left in a cache.
  int next();

  int count() const { return count_; }
  const format_pair& formats() const { return pair_; }
  const size& each() const { return each_; }
  const description& from() const { return from_; }
  const description& to() const { return to_; }
  const morvane_layout& source_layout() const { return source_layout_; }
  const morvane_layout& destination_layout() const { return destination_layout_; }
  std::uint8_t* source_memory(int i) const { return source_ + i * slot_; }
  std::int64_t bytes_of_a_frame() const { return moved_; }  // that are read and written
  morvane_picture source(int i) const { return picture_in(source_memory(i), source_layout_); }
  morvane_picture destination(int i) const { return picture_in(destination_ + i * slot_, destination_layout_); }
  // Copies as many bytes from the place of a source to that of its destination as the conversion moves.
  void copy(int i) const;

 private:
  format_pair pair_;
  size each_;
  std::uint8_t* source_;
  std::uint8_t* destination_;
  description from_;
  description to_;
  morvane_layout source_layout_;
  morvane_layout destination_layout_;
  std::int64_t moved_;
  std::int64_t slot_;  // from one frame to the next, of the sources as of the destinations
  int count_;
  int next_ = 0;
};

// Gives sources contents that their format can have: noise, converted from a format with all components. The frame of
// it that was made last is kept for the next rings whose sources have the same format and size.
class noise {
 public:
  void fill_sources(const ring& frames);

 private:
  const catalogue::format* format_ = nullptr;
  size each_{};
  std::vector<std::uint8_t> frame_{};

  void make_frame(const ring& frames);
};

}  // namespace morvane::bench
