// How many times as fast as videoconvert the element is, as a picture.
#pragma once

#include <string>
#include <vector>

namespace morvane::gstreamer {

// Of one pair: videoconvert's time divided by the element's, on as many threads.
struct gain {
  std::string from, to;
  double one_thread, two_threads;
};

// An SVG of its own, for light and dark pages.
std::string gains_plot(const std::vector<gain>& gains);

}  // namespace morvane::gstreamer
