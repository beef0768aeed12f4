// PNG files.
#pragma once

#include <cstdio>
#include <string>

#include "picture.h"

namespace morvane::tool {

bool names_png(const std::string& path);

// Reads a PNG of any kind as 8-bit RGB, with alpha when the file has it.
picture read_png(const std::string& path);

// `name` is what an error calls the file.
void write_png(std::FILE* file, const std::string& name, const picture& p);

}  // namespace morvane::tool
