// PNGs of every kind are read as pictures of bytes; false and damaged ones are refused.
#include <png.h>
#include <zlib.h>

#include <cstdio>
#include <memory>

#include "png_file.h"
#include "shell.h"

namespace morvane::tests {

namespace {

struct png_kind {
  int colour = PNG_COLOR_TYPE_RGB;
  int depth = 8;
  int interlace = PNG_INTERLACE_NONE;
};

constexpr int width = 9;
constexpr int height = 5;

// Writes a file of raw rows as they stand in a PNG.
class png_kinds : public command {
 protected:
  void write_png(const char* name, const png_kind& kind, const bytes& rows, const bytes& palette = {},
                 const bytes& opacity = {}) const {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen((directory() + "/" + name).c_str(), "wb"),
                                                               std::fclose);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_IHDR(png, info, width, height, kind.depth, kind.colour, kind.interlace, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> colours;
    for (std::size_t i = 0; i < palette.size(); i += 3) colours.push_back({palette[i], palette[i + 1], palette[i + 2]});
    if (!colours.empty()) png_set_PLTE(png, info, colours.data(), static_cast<int>(colours.size()));
    if (!opacity.empty()) png_set_tRNS(png, info, opacity.data(), static_cast<int>(opacity.size()), nullptr);
    png_write_info(png, info);
    std::vector<png_bytep> starts;
    for (int y = 0; y < height; ++y)
      starts.push_back(const_cast<png_bytep>(rows.data()) + rows.size() / height * static_cast<std::size_t>(y));
    png_write_image(png, starts.data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
  }
  // As R, G, B and A.
  bytes pixels_of(const std::string& name) const {
    quietly("morvane convert -f rgba -t rgba " + name + " out.raw");
    return read("out.raw");
  }
  static std::size_t samples(std::size_t channels) { return std::size_t{width} * height * channels; }
};

TEST_F(png_kinds, grey) {
  const bytes grey = noise(samples(1));
  bytes expected;
  for (const std::uint8_t g : grey) expected.insert(expected.end(), {g, g, g, 255});
  write_png("a.png", {PNG_COLOR_TYPE_GRAY}, grey);
  EXPECT_EQ(pixels_of("a.png"), expected);
  const bytes with_alpha = noise(samples(2));
  expected.clear();
  for (std::size_t i = 0; i < with_alpha.size(); i += 2)
    expected.insert(expected.end(), {with_alpha[i], with_alpha[i], with_alpha[i], with_alpha[i + 1]});
  write_png("a.png", {PNG_COLOR_TYPE_GRAY_ALPHA}, with_alpha);
  EXPECT_EQ(pixels_of("a.png"), expected);
}

TEST_F(png_kinds, grey_of_one_bit) {
  const bytes rows = {0b10101010, 0x80, 0, 0, 255, 255, 0b11110000, 0, 1, 0};
  write_png("a.png", {PNG_COLOR_TYPE_GRAY, 1}, rows);
  const bytes pixels = pixels_of("a.png");
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const bool is_set = rows[static_cast<std::size_t>(2 * y + x / 8)] >> (7 - x % 8) & 1;
      EXPECT_EQ(pixels[static_cast<std::size_t>(4 * (y * width + x))], is_set ? 255 : 0) << x << ' ' << y;
    }
}

// As bright as eight bits of the same share; linear light would be much brighter.
TEST_F(png_kinds, sixteen_bits) {
  const bytes words = noise(2 * samples(3));
  write_png("a.png", {PNG_COLOR_TYPE_RGB, 16}, words);
  const bytes pixels = pixels_of("a.png");
  for (std::size_t i = 0; i < samples(3); ++i) {
    const int word = words[2 * i] << 8 | words[2 * i + 1];
    EXPECT_EQ(pixels[i / 3 * 4 + i % 3], (word * 255 + 32767) / 65535) << word;
  }
  const bytes grey = noise(2 * samples(1), 2);
  write_png("a.png", {PNG_COLOR_TYPE_GRAY, 16}, grey);
  const bytes shades = pixels_of("a.png");
  for (std::size_t i = 0; i < samples(1); ++i)
    EXPECT_EQ(shades[4 * i], ((grey[2 * i] << 8 | grey[2 * i + 1]) * 255 + 32767) / 65535);
}

TEST_F(png_kinds, palette_with_and_without_opacity) {
  const bytes palette = {10, 20, 30, 255, 0, 128, 1, 2, 3};
  const bytes opacity = {255, 7};
  bytes indices = noise(samples(1));
  for (std::uint8_t& i : indices) i %= 3;
  bytes opaque;
  bytes transparent;
  for (const std::uint8_t i : indices) {
    const std::size_t at = std::size_t{i} * 3;
    opaque.insert(opaque.end(), {palette[at], palette[at + 1], palette[at + 2], 255});
    transparent.insert(transparent.end(), {palette[at], palette[at + 1], palette[at + 2],
                                           i < opacity.size() ? opacity[i] : std::uint8_t{255}});
  }
  write_png("a.png", {PNG_COLOR_TYPE_PALETTE}, indices, palette);
  EXPECT_EQ(pixels_of("a.png"), opaque);
  write_png("a.png", {PNG_COLOR_TYPE_PALETTE}, indices, palette, opacity);
  EXPECT_EQ(pixels_of("a.png"), transparent);
}

TEST_F(png_kinds, interlaced) {
  const bytes rgba = noise(samples(4));
  write_png("a.png", {PNG_COLOR_TYPE_RGB_ALPHA, 8, PNG_INTERLACE_ADAM7}, rgba);
  EXPECT_EQ(pixels_of("a.png"), rgba);
}

// Without a checksum that fits: the size is looked at before it.
TEST_F(png_kinds, a_size_that_the_file_cannot_hold_takes_no_memory) {
  write_png("a.png", {PNG_COLOR_TYPE_RGB}, noise(samples(3)));
  bytes file = read("a.png");
  file.resize(69);
  for (const std::size_t at : {16u, 20u}) {
    file[at + 2] = 25000 >> 8;
    file[at + 3] = 25000 & 255;
  }
  const auto sum = crc32(0, file.data() + 12, 17);
  for (std::size_t i = 0; i < 4; ++i) file[29 + i] = static_cast<std::uint8_t>(sum >> (24 - 8 * i));
  write("a.png", file);
  const outcome o = run("morvane convert -t bgra a.png out.raw");
  EXPECT_EQ(o.exit_code, 1);
  EXPECT_EQ(
      o.err,
      "morvane: cannot read a.png as a PNG: it says that it is 25000x25000, for which its 69 bytes are too few\n");
  EXPECT_FALSE(exists("out.raw"));
}

TEST_F(png_kinds, any_start_of_a_file_is_refused) {
  write_png("a.png", {PNG_COLOR_TYPE_RGB_ALPHA}, noise(samples(4)));
  const bytes whole = read("a.png");
  EXPECT_EQ(tool::decode_png(whole, "a.png").size.width, width);
  for (std::size_t length = 0; length + 12 < whole.size(); ++length)
    EXPECT_THROW(tool::decode_png({whole.data(), length}, "a.png"), std::runtime_error) << length;
}

// Small pictures wait in the file's buffer until it is closed, large ones do not.
TEST_F(png_kinds, a_full_disk_is_noticed) {
  quietly("ln -s /dev/full full.png");
  for (const char* size : {"4x4", "400x400"}) {
    const std::string what = std::string(" -f bgr -s ") + size + " /dev/urandom ";
    for (const std::string& line :
         {"morvane convert -t bgr --frames 1" + what + "full.png", "morvane show" + what + "full.png"}) {
      const outcome o = run(line);
      EXPECT_EQ(o.exit_code, 1) << line;
      EXPECT_EQ(o.err, "morvane: cannot write full.png: No space left on device\n") << line;
    }
    const outcome o = run("morvane show" + what + "- > /dev/full");
    EXPECT_EQ(o.exit_code, 1);
    EXPECT_EQ(o.err, "morvane: cannot write standard output: No space left on device\n");
  }
}

}  // namespace

}  // namespace morvane::tests
