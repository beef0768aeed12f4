// What the subcommands that write frames have in common: the choices of colour, and frames on their way to their file.
#pragma once

#include <cstdint>
#include <functional>

#include "commands.h"

namespace morvane::tool {

// A picture of these colours.
morvane::description described(const format_info& f, extent size, const colour_options& o);

// How chroma is resampled, and what is laid over what. `center` is the siting where nothing is said of it.
morvane::options choices(const colour_options& o, bool center = false);

bool writes_y4m(const output_options& o);
void require_place_for_y4m(const output_options& o);

// The format that is asked for, or else what the kind of the file suggests for frames of the source; fails where it
// suggests none. `option` asks for it: "-t".
const format_info& format_of_result(const std::string& asked, const char* option, const format_info& source,
                                    bool has_background, const output_options& o);

// Frames from a source to a sink.
struct frame_work {
  frame_source& source;
  frame_sink& sink;
  const format_info& format;  // of what `convert` makes
  extent size;
  std::int64_t memory = 0;  // that it needs beside the images
  std::function<void(const image& from, image& to)> convert;
};

// Writes all of them, on threads of their own beside the conversion, and shows how far that has come. When it ends too
// early, what is left behind is said, and why.
void write_all(const frame_work& work, const output_options& o);

}  // namespace morvane::tool
