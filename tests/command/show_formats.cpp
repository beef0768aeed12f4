// morvane show, of one picture in every format: each must look like the picture.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <set>
#include <sstream>

#include "catalogue/formats.h"
#include "library.h"
#include "shell.h"

namespace morvane::tests {

namespace {

using catalogue::color_model;
using catalogue::sample_type;

constexpr int width = 40;  // in whole groups neither of six pixels nor of sixteen
constexpr int height = 20;
const std::string size = "40x20";

struct weights {
  int matrix;
  double red;
  double blue;
};

constexpr weights bt601 = {601, 0.299, 0.114};
constexpr weights bt709 = {709, 0.2126, 0.0722};
constexpr weights bt2020 = {2020, 0.2627, 0.0593};

// From 0 to 1.
struct color {
  double r = 0;
  double g = 0;
  double b = 0;
  double a = 1;

  double luma(const weights& w) const { return w.red * r + (1 - w.red - w.blue) * g + w.blue * b; }
};

// Red grows to the right, green downwards and blue to the left, in squares of four pixels, which 4:2:0 keeps as they
// are. Opacity grows to the right.
color picture(int x, int y) {
  const double across = x / 2 / (width / 2 - 1.0);
  const double down = y / 2 / (height / 2 - 1.0);
  return {0.1 + 0.8 * across, 0.1 + 0.8 * down, 0.9 - 0.6 * across, 0.2 + 0.8 * x / (width - 1.0)};
}

bool is_chroma(const std::string& component) {
  return component == "Cb" || component == "Cr";
}

// A component as a format of floats has it: chroma from -0.5 to 0.5, all others from 0 to 1.
double component_of(const color& c, const std::string& name, const weights& w) {
  const double y = c.luma(w);
  if (name == "Cb") return (c.b - y) / (2 - 2 * w.blue);
  if (name == "Cr") return (c.r - y) / (2 - 2 * w.red);
  return name == "R" ? c.r : name == "G" ? c.g : name == "B" ? c.b : name == "A" ? c.a : y;
}

// In so many bits; luma and chroma have the range of video.
std::uint32_t quantized(double value, const std::string& name, int bits) {
  const double video_step = std::ldexp(1, bits - 8);
  const double full = (1 << bits) - 1;
  return static_cast<std::uint32_t>(std::lround(name == "Y"       ? (16 + 219 * value) * video_step
                                                : is_chroma(name) ? (128 + 224 * value) * video_step
                                                                  : full * value));
}

std::vector<std::string> words(std::string_view text) {
  std::istringstream in{std::string(text)};
  std::vector<std::string> result;
  for (std::string word; in >> word;) result.push_back(word);
  return result;
}

void add_little_endian(std::uint8_t* to, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) to[i] = static_cast<std::uint8_t>(to[i] | value >> (8 * i));
}

// Writes sample i of a word that is a pixel; a fourth one has two bits.
void put_in_word(std::uint8_t* word, std::size_t i, const catalogue::plane& p, double value, const std::string& name) {
  const bool is_big_endian = p.order == catalogue::byte_order::big_endian;
  const std::size_t place = is_big_endian ? 2 - i : i;
  const auto shift = static_cast<int>(10 * place) + p.unused_low_bits;
  std::uint8_t bytes[4] = {};
  add_little_endian(bytes, quantized(value, name, i == 3 ? 2 : 10) << shift, 4);
  for (std::size_t k = 0; k < 4; ++k) word[k] = static_cast<std::uint8_t>(word[k] | bytes[is_big_endian ? 3 - k : k]);
}

// Writes sample i of a stream.
void put_in_stream(std::uint8_t* group, std::size_t i, const catalogue::plane& p, std::uint32_t sample) {
  const auto bits = static_cast<std::size_t>(p.depth());
  const bool is_big_endian = p.order == catalogue::byte_order::big_endian;
  for (std::size_t k = 0; k < bits; ++k) {
    const std::size_t place = i * bits + (is_big_endian ? bits - 1 - k : k);
    const std::uint32_t in_byte = is_big_endian ? 7 - place % 8 : place % 8;
    group[place / 8] = static_cast<std::uint8_t>(group[place / 8] | (sample >> k & 1) << in_byte);
  }
}

// Of numbers from 2^-14 to 1, and of 0.
std::uint32_t half_of(double value) {
  if (value <= 0) return 0;
  const int power = std::ilogb(value);
  return static_cast<std::uint32_t>((power + 14) * 1024 + std::lround(std::ldexp(value, 10 - power)));
}

// Writes sample i of a group.
void put(std::uint8_t* group, std::size_t i, const catalogue::plane& p, double value, const std::string& name) {
  switch (p.sample) {
    case sample_type::u8:
      group[i] = static_cast<std::uint8_t>(quantized(value, name, 8));
      break;
    case sample_type::u16:
      return add_little_endian(group + 2 * i, quantized(value, name, 16), 2);
    case sample_type::u16_low10:
      return add_little_endian(group + 2 * i, quantized(value, name, 10), 2);
    case sample_type::u16_low12:
      return add_little_endian(group + 2 * i, quantized(value, name, 12), 2);
    case sample_type::u32_3x10:
      if (p.group_pixels == 1) return put_in_word(group, i, p, value, name);
      return add_little_endian(group + i / 3 * 4, quantized(value, name, 10) << (10 * (i % 3)), 4);
    case sample_type::u8_and_2: {
      const std::uint32_t sample = quantized(value, name, 10);
      group[i] = static_cast<std::uint8_t>(sample >> 2);
      return add_little_endian(group + 32 + i / 4, (sample & 3) << (2 * (i % 4)), 1);
    }
    case sample_type::stream_10:
    case sample_type::stream_12:
      return put_in_stream(group, i, p, quantized(value, name, p.depth()));
    case sample_type::f16:
      return add_little_endian(group + 2 * i, half_of(value), 2);
    case sample_type::f32:
      return add_little_endian(group + 4 * i, std::bit_cast<std::uint32_t>(static_cast<float>(value)), 4);
  }
}

bytes group_of(const catalogue::plane& p, int first_pixel, int y, const weights& w) {
  bytes result(static_cast<std::size_t>(p.group_bytes));
  const std::vector<std::string> names = words(p.components);
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == "x") continue;
    const auto here = names.begin() + static_cast<std::ptrdiff_t>(i);
    const auto before = static_cast<int>(std::count(names.begin(), here, names[i]));
    const auto all = static_cast<int>(std::count(names.begin(), names.end(), names[i]));
    const int x = std::min(first_pixel + before * p.group_pixels / all, width - 1);
    put(result.data(), i, p, component_of(picture(x, y), names[i], w), names[i]);
  }
  return result;
}

// The picture in any format, written from the format's description alone.
bytes written_in(const catalogue::format& f, const weights& w) {
  const morvane_layout layout = lay_out(described(std::string(f.name), width, height));
  bytes result;
  for (std::size_t p = 0; p < f.plane_count(); ++p)
    for (int y = 0; y < height; y += f.planes[p].image_rows) {
      const std::size_t start = result.size();
      for (int x = 0; x < width; x += f.planes[p].group_pixels) {
        bytes group = group_of(f.planes[p], x, y, w);
        if (f.planes[p].name == "key") std::fill(group.begin(), group.end(), std::uint8_t{0});
        result.insert(result.end(), group.begin(), group.end());
      }
      result.resize(start + static_cast<std::size_t>(layout.planes[p].stride));
    }
  return result;
}

std::array<double, 3> over(const color& c, double ground) {
  const auto mixed = [&](double part) { return 255 * part * c.a + ground * (1 - c.a); };
  return {mixed(c.r), mixed(c.g), mixed(c.b)};
}

double checker(int x, int y) {
  return (x / 8 + y / 8) % 2 == 0 ? 255 : 204;
}

// Alpha of two bits.
double in_steps_of(const catalogue::format& f, double alpha) {
  return f.planes[0].has_words_of_pixels() ? static_cast<double>(std::lround(3 * alpha)) / 3 : alpha;
}

// What a pixel must look like.
std::array<double, 3> expected(const catalogue::format& f, int x, int y, const weights& w) {
  color c = picture(x, y);
  c.a = in_steps_of(f, c.a);
  if (f.model == color_model::luma || f.model == color_model::alpha) {
    const std::string name = words(f.planes[0].components).front();
    const double grey = quantized(component_of(c, name, w), name, 8);
    return {grey, grey, grey};
  }
  if (!f.alpha) c.a = 1;
  return over(c, checker(x, y));
}

class show_formats : public command {
 protected:
  // Four bytes a pixel.
  bytes shown(const std::string& format, const weights& w) const {
    quietly("rm -f shown.*; morvane show in.raw shown.png -f " + format + " -s " + size + " --matrix " +
            std::to_string(w.matrix) + " && morvane convert -t rgbx shown.png shown.rgbx -f rgbx");
    return read("shown.rgbx");
  }
};

// At most so far off for a picture written in the format, where chroma between its steps is interpolated, and for one
// that was also converted to it, where a pair's chroma may have been that of one of its pixels.
constexpr double near = 12;
constexpr double near_after_conversion = 16;

template <class Expected>
void expect_near(const bytes& pixels, const std::string& what, double limit, const Expected& expected_at) {
  ASSERT_EQ(pixels.size(), static_cast<std::size_t>(4 * width * height)) << what;
  double worst = 0;
  double sum = 0;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const std::array<double, 3> colors = expected_at(x, y);
      for (std::size_t c = 0; c < 3; ++c) {
        const double error = std::abs(pixels[static_cast<std::size_t>(4 * (y * width + x)) + c] - colors[c]);
        worst = std::max(worst, error);
        sum += error;
      }
    }
  EXPECT_LE(worst, limit) << what;
  EXPECT_LE(sum / (3 * width * height), limit / 2) << what;
}

TEST_F(show_formats, every_one_with_every_matrix) {
  for (const catalogue::format& f : catalogue::formats) {
    if (f.model == color_model::chroma) continue;
    for (const weights& w : {bt709, bt601, bt2020}) {
      if (f.model != color_model::ycbcr && w.matrix != 709) break;
      write("in.raw", written_in(f, w));
      const std::string name(f.name);
      expect_near(shown(name, w), name + " with BT." + std::to_string(w.matrix), near,
                  [&](int x, int y) { return expected(f, x, y, w); });
    }
  }
}

TEST_F(show_formats, every_one_that_conversions_make_of_rgb) {
  bytes source;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      for (const double part : {picture(x, y).b, picture(x, y).g, picture(x, y).r, 1.0})
        source.push_back(static_cast<std::uint8_t>(std::lround(255 * part)));
  write("source.raw", source);
  std::set<std::string> made;
  for (const catalogue::format& f : catalogue::formats) {
    if (f.model != color_model::ycbcr && f.model != color_model::rgb) continue;
    const std::string name(f.name);
    if (run("rm -f in.raw; morvane convert -f bgrx -t " + name + " -s " + size + " source.raw in.raw").exit_code != 0)
      continue;
    made.insert(name);
    expect_near(shown(name, bt709), name, near_after_conversion, [](int x, int y) {
      color c = picture(x, y);
      c.a = 1;
      return over(c, 0);
    });
  }
  for (const char* name : {"p216", "p010", "pa16", "ya_uv_16", "vuya_16", "vuya_f32", "yuyv_matrox_10",
                           "yua_yva_matrox_10", "y_uv_420", "y_u_v_422", "ya_uv", "uyvy_a"})
    EXPECT_TRUE(made.contains(name)) << name;
}

TEST_F(show_formats, one_component_at_a_time) {
  for (const catalogue::format& f : catalogue::formats) {
    const std::string component = words(f.planes[0].components).back();
    if (f.model == color_model::chroma || is_chroma(component) || component == "x") continue;
    write("in.raw", written_in(f, bt709));
    const std::string name(f.name);
    expect_near(shown(name + " --plane " + component, bt709), name, 1, [&](int x, int y) {
      color c = picture(x, y);
      c.a = in_steps_of(f, c.a);
      const double grey = quantized(component_of(c, component, bt709), component, 8);
      return std::array<double, 3>{grey, grey, grey};
    });
  }
}

TEST_F(show_formats, with_a_pixel_alone_at_the_end_of_a_row) {
  for (const catalogue::format& f : catalogue::formats) {
    if (f.width_multiple != 1) continue;
    write("in.raw", noise_of(described(std::string(f.name), 5, 3)));
    quietly("morvane show in.raw shown.png -f " + std::string(f.name) + " -s 5x3");
    const bytes png = read("shown.png");
    EXPECT_EQ((std::vector<int>{png[19], png[23]}), (std::vector<int>{5, 3})) << f.name;
  }
  for (const char* format : {"vuyx", "crcbyx"}) {
    write("in.raw", {128, 128, 0, 0, 128, 128, 0, 0, 128, 128, 255, 0});
    quietly(std::string("morvane show in.raw shown.png -s 3x1 -f ") + format);
    quietly("morvane convert -t rgbx shown.png shown.rgbx -f rgbx");
    EXPECT_EQ(read("shown.rgbx"), (bytes{0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255, 255})) << format;
  }
}

TEST_F(show_formats, bits_that_carry_nothing_are_not_seen) {
  for (const char* format : {"y_10u16", "alpha_10u16"}) {
    write("in.raw", {0, 0x14, 255, 0xff});
    quietly(std::string("morvane show in.raw shown.png -s 2x1 -f ") + format);
    quietly("morvane convert -t rgbx shown.png shown.rgbx -f rgbx");
    EXPECT_EQ(read("shown.rgbx"), (bytes{0, 0, 0, 255, 255, 255, 255, 255})) << format;
  }
}

TEST_F(show_formats, floats_beyond_their_range_are_its_ends) {
  bytes pixels;
  for (const float y : {2.0f, -1.0f, std::nanf(""), HUGE_VALF}) {
    const std::size_t start = pixels.size();
    pixels.resize(start + 16);
    add_little_endian(pixels.data() + start + 8, std::bit_cast<std::uint32_t>(y), 4);
    add_little_endian(pixels.data() + start + 12, std::bit_cast<std::uint32_t>(1.0f), 4);
  }
  write("in.raw", pixels);
  quietly("morvane show in.raw shown.png -f vuya_f32 -s 4x1");
  quietly("morvane convert -t rgbx shown.png shown.rgbx -f rgbx");
  EXPECT_EQ(read("shown.rgbx"), (bytes{255, 255, 255, 255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255, 255}));
}

TEST_F(show_formats, chroma_alone_only_by_its_planes) {
  for (const catalogue::format& f : catalogue::formats) {
    if (f.model != color_model::chroma) continue;
    const std::string name(f.name);
    write("in.raw", written_in(f, bt709));
    const outcome o = run("rm -f shown.png; morvane show in.raw shown.png -s " + size + " -f " + name);
    EXPECT_EQ(o.exit_code, 2);
    EXPECT_EQ(o.err, "morvane: " + name +
                         " is chroma without luma and makes no picture; --plane shows a plane or component of it\n");
    EXPECT_FALSE(exists("shown.png"));
    quietly("morvane show in.raw shown.png --plane Cb -s " + size + " -f " + name);
  }
}

}  // namespace

}  // namespace morvane::tests
