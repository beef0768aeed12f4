// PNG files, through libpng's interface for whole images.
#include "png_file.h"

#include <png.h>

#include <cerrno>
#include <memory>

#include "errors.h"
#include "names.h"

namespace morvane::tool {

namespace {

struct png_handle {
  png_image image{};
  png_handle() { image.version = PNG_IMAGE_VERSION; }
  ~png_handle() { png_image_free(&image); }
  png_handle(const png_handle&) = delete;
  png_handle& operator=(const png_handle&) = delete;
};

struct close_file {
  void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

bool names_png(const std::string& path) {
  return has_extension(path, ".png");
}

picture read_png(const std::string& path) {
  const std::unique_ptr<std::FILE, close_file> file(std::fopen(path.c_str(), "rb"));
  if (!file) system_failure("cannot read " + path, errno);
  png_handle png;
  if (!png_image_begin_read_from_stdio(&png.image, file.get()))
    io_failure("cannot read ", path, " as a PNG: ", png.image.message);
  const bool alpha = (png.image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
  // Files of 16 bits are taken as bright as those of 8, not as linear light.
  png.image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
  png.image.format = alpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
  picture result({static_cast<int>(png.image.width), static_cast<int>(png.image.height)}, alpha ? 4 : 3);
  if (!png_image_finish_read(&png.image, nullptr, result.samples.data(), 0, nullptr))
    io_failure("cannot read ", path, " as a PNG: ", png.image.message);
  return result;
}

void write_png(std::FILE* file, const std::string& name, const picture& p) {
  png_handle png;
  png.image.width = static_cast<png_uint_32>(p.size.width);
  png.image.height = static_cast<png_uint_32>(p.size.height);
  png.image.format = p.channels == 1 ? PNG_FORMAT_GRAY : p.channels == 3 ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
  if (!png_image_write_to_stdio(&png.image, file, 0, p.samples.data(), 0, nullptr))
    io_failure("cannot write ", name, ": ", png.image.message);
}

}  // namespace morvane::tool
