#include "rules/samples.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>

#include "rules/arithmetic.h"

namespace morvane::tests::rules {
namespace {

int fraction_of_number(int number, int bits) {
  switch (bits) {
    case 2:
      return number * 21845;
    case 8:
      return number * 257;
    case 10:
      return (number << 6) | (number >> 4);
    case 12:
      return (number << 4) | (number >> 8);
    case 16:
      return number;
    default:
      throw std::invalid_argument("no fraction of so many bits");
  }
}

int number_of_fraction(int sample, int bits) {
  switch (bits) {
    case 2:
      return sample >> 14;
    case 16:
      return sample;
    default:
      return rounded_product(sample >> 1, (1 << bits) - 1);
  }
}

int number_of_video(int sample, int bits) {
  if (bits == 16) return sample;
  const int half = 1 << (15 - bits);
  const int greatest = (1 << bits) - 1;
  return std::min((sample + half) >> (16 - bits), greatest);
}

float from_0_to_1(float value) {
  if (std::isnan(value)) return 0;
  return std::clamp(value, 0.0F, 1.0F);
}

// In single precision, where the product and the sum are each rounded.
int scaled(float value, float by) {
  const float product = by * from_0_to_1(value);
  const float sum = product + 0.5F;
  return static_cast<int>(std::floor(sum));
}

float share_above_black(int sample, float span) {
  return static_cast<float>(std::max(sample, 4096) - 4096) / span;
}

}  // namespace

int working_sample(std::uint32_t number, int bits, meaning of) {
  if (of == meaning::fraction) return fraction_of_number(static_cast<int>(number), bits);
  return static_cast<int>(number) << (16 - bits);
}

std::uint32_t number_of(int sample, int bits, meaning of) {
  return static_cast<std::uint32_t>(of == meaning::fraction ? number_of_fraction(sample, bits)
                                                            : number_of_video(sample, bits));
}

int working_sample(float value, meaning of) {
  switch (of) {
    case meaning::luma:
      return 4096 + scaled(value, 56064);
    case meaning::chroma:
      return 4096 + scaled(value + 0.5F, 57344);
    case meaning::fraction:
      break;
  }
  return scaled(value, 65535);
}

float float_of(int sample, meaning of) {
  switch (of) {
    case meaning::luma:
      return std::min(share_above_black(sample, 56064), 1.0F);
    case meaning::chroma:
      return std::min(share_above_black(sample, 57344) - 0.5F, 0.5F);
    case meaning::fraction:
      break;
  }
  return static_cast<float>(sample) / 65535.0F;
}

// The numbers between two powers of two are 1024 steps apart, and those below 2^-14 lie on the steps of the smallest.
std::uint32_t half_of(float value) {
  const int power = value < std::ldexp(1.0, -14) ? -14 : std::ilogb(value);
  const double steps = std::ldexp(value, 10 - power);
  const double below = std::floor(steps);
  const bool up = steps - below > 0.5 || (steps - below == 0.5 && std::fmod(below, 2) == 1);
  return static_cast<std::uint32_t>((power + 14) * 1024 + static_cast<int>(below) + (up ? 1 : 0));
}

float float_of_half(std::uint32_t half) {
  const bool is_negative = half >= 32768;
  const int exponent = static_cast<int>(half / 1024 % 32);
  const int fraction = static_cast<int>(half % 1024);
  if (exponent == 31 && fraction != 0) return std::nanf("");
  const double size = exponent == 31  ? HUGE_VAL
                      : exponent == 0 ? std::ldexp(fraction, -24)
                                      : std::ldexp(1024 + fraction, exponent - 25);
  return static_cast<float>(is_negative ? -size : size);
}

grid::grid(int columns, int rows, int value)
    : width(columns),
      height(rows),
      words(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), static_cast<std::uint16_t>(value)) {
}

range range_of(const picture& p) {
  const format& f = format_of(p.format);
  const bool is_ycbcr = f.has(channel::y) || f.has(channel::cb);
  const range usual = is_ycbcr ? range::video : range::full;
  return f.has_floats() || f.has(channel::l) ? usual : p.in.value_or(usual);
}

namespace {

meaning meaning_of(const field& f, range in) {
  switch (f.what) {
    case channel::y:
      return meaning::luma;
    case channel::cb:
    case channel::cr:
      return meaning::chroma;
    case channel::r:
    case channel::g:
    case channel::b:
      return in == range::video ? meaning::luma : meaning::fraction;
    default:
      return meaning::fraction;
  }
}

int read_sample(const group& g, const field& f, const std::uint8_t* bytes, range in) {
  const std::uint32_t number = get(g, f, bytes);
  const meaning of = meaning_of(f, in);
  if (!f.is_float) return working_sample(number, f.bits(), of);
  return working_sample(f.bits() == 16 ? float_of_half(number) : std::bit_cast<float>(number), of);
}

std::uint32_t stored_sample(const field& f, int sample, range in) {
  const meaning of = meaning_of(f, in);
  if (!f.is_float) return number_of(sample, f.bits(), of);
  const float value = float_of(sample, of);
  return f.bits() == 16 ? half_of(value) : std::bit_cast<std::uint32_t>(value);
}

std::uint8_t* group_at(const picture& p, std::size_t plane, int row, int k) {
  return p.data[plane] + row * p.stride[plane] + std::ptrdiff_t{k} * format_of(p.format).planes[plane].bytes;
}

// Calls take(plane, group of the format, row, number of the group in its row) for all groups of a picture.
template <class Take>
void for_each_group(const picture& p, Take take) {
  const format& f = format_of(p.format);
  for (std::size_t plane = 0; plane < f.planes.size(); ++plane)
    for (int row = 0; row < rows_of_plane(f, plane, p.height); ++row)
      for (int k = 0; k < groups_in_row(f, plane, p.width); ++k) take(plane, f.planes[plane], row, k);
}

std::vector<std::uint8_t> bytes_of_group(const group& g, const samples& from, int row, int k, range in) {
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(g.bytes));
  for (const field& f : g.fields) {
    if (f.what == channel::unused) {
      put(g, f, bytes.data(), ~0U);
      continue;
    }
    const grid& samples_of_channel = from[f.what];
    const int x = std::min(k * g.count(f.what) + f.number, samples_of_channel.width - 1);
    put(g, f, bytes.data(), stored_sample(f, samples_of_channel.at(x, row), in));
  }
  return bytes;
}

}  // namespace

samples read(const picture& p) {
  const format& f = format_of(p.format);
  const range in = range_of(p);
  samples made;
  for (std::size_t i = 0; i < channels; ++i)
    if (const channel what = static_cast<channel>(i); f.has(what))
      made[what] = grid(columns_of(f, what, p.width), rows_of(f, what, p.height));
  for_each_group(p, [&](std::size_t plane, const group& g, int row, int k) {
    for (const field& sample : g.fields) {
      const int x = k * g.count(sample.what) + sample.number;
      if (sample.what == channel::unused || x >= made[sample.what].width) continue;
      made[sample.what].set(x, row, read_sample(g, sample, group_at(p, plane, row, k), in));
    }
  });
  return made;
}

void write(const samples& from, const picture& p) {
  const range in = range_of(p);
  for_each_group(p, [&](std::size_t plane, const group& g, int row, int k) {
    const std::vector<std::uint8_t> bytes = bytes_of_group(g, from, row, k, in);
    std::copy(bytes.begin(), bytes.end(), group_at(p, plane, row, k));
  });
}

}  // namespace morvane::tests::rules
