// A route at work: the images between its steps, and the calls, band by band on several threads.
#pragma once

#include <cstdint>
#include <vector>

#include "image.h"
#include "route.h"
#include "step_image.h"
#include "workers.h"

namespace morvane::tool {

struct step_time {
  std::int64_t runs = 0;
  double total_seconds = 0;
  double best_seconds = 0;
};

class pipeline {
 public:
  pipeline(const route& way, extent size, workers& hands);

  image& input() { return input_; }
  const image& output() const { return output_; }

  // Converts the picture in input() into output(), every step so many times over.
  void run(int times = 1);

  const std::vector<step_time>& times() const { return times_; }
  // Bytes that one run of the step reads and writes.
  std::int64_t bytes_moved(std::size_t step) const;

 private:
  spare_room room_of(std::size_t image_index) const;
  int call_width(const catalogue::conversion& c) const;
  void convert(std::size_t step);
  void convert_band(std::size_t step, int first_row, int rows);

  route way_;
  extent size_;
  workers& hands_;
  image input_;
  image output_;
  std::vector<step_image> images_;
  std::vector<step_time> times_;
};

}  // namespace morvane::tool
