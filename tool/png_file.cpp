// PNG files, through libpng's interface for whole images.
#include "png_file.h"

#include <png.h>

#include <cerrno>
#include <memory>
#include <vector>

#include "errors.h"
#include "memory.h"
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

[[noreturn]] void refuse(const std::string& name, const std::string& why) {
  io_failure("cannot read ", name, " as a PNG: ", why);
}

using file_contents = std::vector<std::uint8_t>;

// Stops early where the file is no PNG.
file_contents contents_of(const std::string& path) {
  constexpr std::size_t signature = 8;
  const std::unique_ptr<std::FILE, close_file> file(std::fopen(path.c_str(), "rb"));
  if (!file) system_failure("cannot read " + path, errno);
  file_contents all;
  const auto read_whole = [&](std::size_t count) {
    const std::size_t before = all.size();
    all.resize(before + count);
    const std::size_t got = std::fread(all.data() + before, 1, count, file.get());
    if (std::ferror(file.get()) != 0) system_failure("cannot read " + path, errno);
    all.resize(before + got);
    return got == count;
  };
  if (!read_whole(signature) || png_sig_cmp(all.data(), 0, signature) != 0) refuse(path, "Not a PNG file");
  while (read_whole(std::size_t{1} << 16)) {
  }
  return all;
}

// Compressed data says at most 1032 times as much as it is long. The header stands at the start of the file.
void require_enough(std::span<const std::uint8_t> file, const png_image& image, const std::string& name) {
  constexpr std::uint64_t most = 1032;
  constexpr std::size_t depth_at = 24;
  const std::uint64_t row_bits = std::uint64_t{image.width} * file[depth_at];
  if ((row_bits + 7) / 8 * image.height / most > file.size())
    refuse(name, text("it says that it is ", image.width, 'x', image.height, ", for which its ", file.size(),
                      " bytes are too few"));
}

void begin_reading(png_handle& png, std::span<const std::uint8_t> file, const std::string& name) {
  if (!png_image_begin_read_from_memory(&png.image, file.data(), file.size())) refuse(name, png.image.message);
  require_enough(file, png.image, name);
}

}  // namespace

bool names_png(const std::string& path) {
  return has_extension(path, ".png");
}

picture decode_png(std::span<const std::uint8_t> file, const std::string& name) {
  png_handle png;
  begin_reading(png, file, name);
  const bool alpha = (png.image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
  // Files of 16 bits are taken as bright as those of 8, not as linear light.
  png.image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
  png.image.format = alpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
  require_memory(PNG_IMAGE_SIZE(png.image));
  picture result({static_cast<int>(png.image.width), static_cast<int>(png.image.height)}, alpha ? 4 : 3);
  if (!png_image_finish_read(&png.image, nullptr, result.samples.data(), 0, nullptr)) refuse(name, png.image.message);
  return result;
}

picture read_png(const std::string& path) {
  return decode_png(contents_of(path), path);
}

bool png_has_alpha(const std::string& path) {
  png_handle png;
  begin_reading(png, contents_of(path), path);
  return (png.image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
}

void write_png(std::FILE* file, const std::string& name, const picture& p) {
  png_handle png;
  png.image.width = static_cast<png_uint_32>(p.size.width);
  png.image.height = static_cast<png_uint_32>(p.size.height);
  png.image.format = p.channels == 1 ? PNG_FORMAT_GRAY : p.channels == 3 ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
  if (png_image_write_to_stdio(&png.image, file, 0, p.samples.data(), 0, nullptr)) return;
  if (std::ferror(file) != 0) system_failure("cannot write " + name, errno);
  io_failure("cannot write ", name, ": ", png.image.message);
}

}  // namespace morvane::tool
