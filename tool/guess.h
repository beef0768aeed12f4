// What the name of a file tells of its frames.
#pragma once

#include <string>

namespace morvane::tool {

struct guess {
  std::string format;  // a name that some format answers to; empty where none does
  std::string size;    // "1920x1080", or empty
};

// "clip_1920x1080_uyvy.raw" and "foreman.352x288.nv12" say both.
guess guess_from_name(const std::string& path);

}  // namespace morvane::tool
