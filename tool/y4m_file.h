// YUV4MPEG2: video of planes without compression, with a line of text before it and before every frame.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "morvane.hpp"

namespace morvane::tool {

// What every file begins with.
inline constexpr std::string_view y4m_magic = "YUV4MPEG2";

bool names_y4m(const std::string& path);

// What the first line of a stream says.
struct y4m_stream {
  morvane::format format = 0;
  int width = 0;
  int height = 0;
  morvane::range range = morvane::range::unsaid;
  std::string colour;                   // "420jpeg": the format, and for 4:2:0 the siting of chroma
  std::string rate;                     // "30000:1001", or empty
  std::string interlacing;              // "p", or empty
  std::string aspect;                   // of a pixel, "1:1", or empty
  std::vector<std::string> extensions;  // other programs' own words
};

// Gives the bytes of a file one by one, and a negative number behind the last.
using next_byte = std::function<int()>;

// Reads the first line. Fails when it is none, or when the library has no such format; `name` is what the error calls
// the file.
y4m_stream read_y4m_header(const next_byte& next, const std::string& name);

// Reads the line before a frame, whose words are for this frame alone and are dropped; false behind the last one.
bool read_y4m_frame_header(const next_byte& next, const std::string& name);

// Whether there is a word for the format.
bool y4m_holds(morvane::format format);

// The first line for such a stream. Fails when there is no word for its format. The word for the colour is kept where
// it fits the format; otherwise it is the one for the siting.
std::string y4m_header(const y4m_stream& stream, morvane::siting siting, const std::string& name);

// The line before every frame.
inline constexpr std::string_view y4m_frame_header = "FRAME\n";

}  // namespace morvane::tool
