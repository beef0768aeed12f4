// Frames of some caps to frames of others, by plans that are made once.
#pragma once

#include <gst/video/video.h>
#include <morvane.h>

#include <memory>
#include <string>
#include <vector>

#include "frames.h"

namespace morvane::gstreamer {

struct settings {
  int filter = MORVANE_LINEAR;
  int threads = 1;
  int background = -1;  // 0xRRGGBB, or -1 where alpha is dropped
};

// Whether frames need not be touched to become those of other caps.
bool is_same_picture(const GstVideoInfo& from, const GstVideoInfo& to);

// What is wrong is said in a sentence; nothing is where it is empty.
class converter {
 public:
  std::string prepare(const GstVideoInfo& from, const GstVideoInfo& to, const settings& wanted);
  std::string run(GstBuffer* source, GstBuffer* destination);

 private:
  struct destroy_plan {
    void operator()(morvane_plan* plan) const { morvane_plan_destroy(plan); }
  };
  // The rows that one plan converts.
  struct part {
    rows which;
    morvane_layout from, to;
    std::unique_ptr<morvane_plan, destroy_plan> plan;
  };

  std::string add_part(std::vector<part>& parts, rows which, const morvane_options& options);

  GstVideoInfo from_{}, to_{};
  const known_format* from_format_ = nullptr;
  const known_format* to_format_ = nullptr;
  std::vector<part> frame_, fields_;  // either may be empty, where no buffer of the caps needs it
  std::vector<guint8> scratch_;
};

}  // namespace morvane::gstreamer
