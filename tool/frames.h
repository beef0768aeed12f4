// Frames in files and pipes: sources that fill an image, sinks that take one.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "file_layout.h"
#include "image.h"
#include "y4m_file.h"

namespace morvane::tool {

// Where frames stand: one file, plane after plane, or as many files as the format has planes. "-" is standard input or
// output; one name ending in .png is a PNG, and one ending in .y4m is YUV4MPEG2. So is an input of any name that begins
// so where format or size are missing, and an output of any name on request.
using file_list = std::vector<std::string>;

bool is_png(const file_list& files);
bool is_y4m(const file_list& files);

class frame_source {
 public:
  virtual ~frame_source() = default;
  virtual const format_info& format() const = 0;
  virtual extent size() const = 0;
  // An image into which read() is fastest, laid out as frames are here, and what it takes of memory.
  virtual image blank() const { return image(format(), size()); }
  virtual std::int64_t frame_bytes() const { return image::bytes_of(format(), size()); }
  // What the file says of its video; null where it says nothing.
  virtual const y4m_stream* header() const { return nullptr; }
  // How many frames read() will still give, when that is known beforehand.
  virtual std::optional<std::int64_t> remaining() const = 0;
  // Fills the top left of the image with the next frame; false after the last one.
  virtual bool read(image& into) = 0;
};

struct source_wish {
  file_list files;
  std::string format;  // may be empty for a PNG and YUV4MPEG2
  std::string size;    // may be empty for them too
  stride_list strides;
  std::int64_t skip = 0;      // frames passed over at the start
  bool whole_frames = false;  // a file whose last frame is cut short is read up to there
};

std::unique_ptr<frame_source> open_source(const source_wish& wish);

class frame_sink {
 public:
  virtual ~frame_sink() = default;
  virtual void write(const image& frame) = 0;
  // An image of this format and size from which write() is fastest, and what it takes of memory.
  virtual image blank(const format_info& format, extent size) const { return image(format, size); }
  virtual std::int64_t frame_bytes(const format_info& format, extent size) const {
    return image::bytes_of(format, size);
  }
  // Everything was written: puts the files in their places. Without it nothing appears.
  virtual void commit() = 0;
  // The first frames were written: leaves them, and puts their files in place.
  virtual void keep(std::int64_t frames) = 0;
  // Whether frames stay where they were written, whatever comes.
  virtual bool is_in_place() const = 0;
};

struct sink_wish {
  file_list files;  // a PNG takes one frame
  extent size;      // what is written of every image, from the top left
  stride_list strides;
  bool is_y4m = false;  // whatever the file's name is
  y4m_stream video;     // for YUV4MPEG2: what else is known of the frames
  morvane::siting siting = morvane::siting::left;
};

std::unique_ptr<frame_sink> open_sink(const sink_wish& wish, const format_info& format);

}  // namespace morvane::tool
