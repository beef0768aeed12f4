// PNG files.
#pragma once

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>

#include "picture.h"

namespace morvane::tool {

bool names_png(const std::string& path);

// Reads a PNG of any kind as 8-bit RGB, with alpha when the file has it. `name` is what an error calls the file.
picture decode_png(std::span<const std::uint8_t> file, const std::string& name);
picture read_png(const std::string& path);
bool png_has_alpha(const std::string& path);

void write_png(std::FILE* file, const std::string& name, const picture& p);

}  // namespace morvane::tool
