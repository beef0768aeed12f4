// side_by_side ORIGINAL.png RESULT.png OUT.png [X Y WIDTH HEIGHT]: one picture of three panels that shows what a round
// trip through another format cost: the original, the result, and their difference, eight times amplified around grey.
// With X Y WIDTH HEIGHT it shows that part only.
#include <png.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::size_t channels = 3;
constexpr std::size_t gap = 4;
constexpr int amplification = 8;

struct picture {
  std::size_t width = 0;
  std::size_t height = 0;
  std::vector<std::uint8_t> samples{};  // R G B, rows without gaps

  picture(std::size_t w, std::size_t h) : width(w), height(h), samples(w * h * channels, 255) {}

  std::uint8_t* row(std::size_t y) { return samples.data() + y * width * channels; }
  const std::uint8_t* row(std::size_t y) const { return samples.data() + y * width * channels; }
};

picture read_png(const std::string& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, file.c_str()) == 0) throw std::runtime_error(file + ": " + image.message);
  image.format = PNG_FORMAT_RGB;
  picture result(image.width, image.height);
  if (png_image_finish_read(&image, nullptr, result.samples.data(), 0, nullptr) == 0)
    throw std::runtime_error(file + ": " + image.message);
  return result;
}

void write_png(const std::string& file, const picture& p) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(p.width);
  image.height = static_cast<png_uint_32>(p.height);
  image.format = PNG_FORMAT_RGB;
  if (png_image_write_to_file(&image, file.c_str(), 0, p.samples.data(), 0, nullptr) == 0)
    throw std::runtime_error(file + ": " + image.message);
}

void paste(const picture& from, std::size_t x, picture& onto) {
  for (std::size_t y = 0; y < from.height; ++y)
    std::copy_n(from.row(y), from.width * channels, onto.row(y) + x * channels);
}

picture part(const picture& p, std::size_t x, std::size_t y, std::size_t width, std::size_t height) {
  if (x + width > p.width || y + height > p.height) throw std::runtime_error("the part is not inside the picture");
  picture result(width, height);
  for (std::size_t i = 0; i < height; ++i) std::copy_n(p.row(y + i) + x * channels, width * channels, result.row(i));
  return result;
}

picture difference(const picture& a, const picture& b) {
  picture result(a.width, a.height);
  std::transform(a.samples.begin(), a.samples.end(), b.samples.begin(), result.samples.begin(),
                 [](std::uint8_t left, std::uint8_t right) {
                   return static_cast<std::uint8_t>(std::clamp(128 + amplification * (right - left), 0, 255));
                 });
  return result;
}

void run(const std::vector<std::string>& arguments) {
  if (arguments.size() != 3 && arguments.size() != 7)
    throw std::runtime_error("usage: side_by_side ORIGINAL.png RESULT.png OUT.png [X Y WIDTH HEIGHT]");
  picture original = read_png(arguments[0]);
  picture result = read_png(arguments[1]);
  if (original.width != result.width || original.height != result.height)
    throw std::runtime_error("the pictures differ in size");
  if (arguments.size() == 7) {
    const auto number = [&arguments](std::size_t i) { return std::stoul(arguments[i]); };
    original = part(original, number(3), number(4), number(5), number(6));
    result = part(result, number(3), number(4), number(5), number(6));
  }
  const std::size_t step = original.width + gap;
  picture panels(3 * step - gap, original.height);
  paste(original, 0, panels);
  paste(result, step, panels);
  paste(difference(original, result), 2 * step, panels);
  write_png(arguments[2], panels);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run({argv + 1, argv + argc});
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "side_by_side: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
