// Pictures as working samples: every sample a number from 0 to 65535, at the sampling of its picture.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "rules/layout.h"
#include "rules/picture.h"

namespace morvane::tests::rules {

// What a working sample stands for. Luma and chroma keep their place among the 16 bits of video: black of video range
// is 4096, grey 32768. Of a fraction 0 is nothing and 65535 everything.
enum class meaning { luma, chroma, fraction };

// A number of n bits as a working sample, and a working sample as a number of n bits.
int working_sample(std::uint32_t number, int bits, meaning of);
std::uint32_t number_of(int sample, int bits, meaning of);

// The same of floats: 0 to 1, chroma -0.5 to 0.5.
int working_sample(float value, meaning of);
float float_of(int sample, meaning of);

// The same number as a half float of 16 bits, the nearest one, and of two that are as near the even one. Numbers are
// from 0 to 1.
std::uint32_t half_of(float value);
float float_of_half(std::uint32_t half);

// The samples of one channel.
struct grid {
  int width = 0;
  int height = 0;
  std::vector<std::uint16_t> words{};

  grid() = default;
  grid(int columns, int rows, int value = 0);

  int at(int x, int y) const { return words[place(x, y)]; }
  void set(int x, int y, int value) { words[place(x, y)] = static_cast<std::uint16_t>(value); }

 private:
  std::size_t place(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
  }
};

// Channels that a picture does not have are empty.
struct samples {
  std::array<grid, channels> of{};

  grid& operator[](channel what) { return of[static_cast<std::size_t>(what)]; }
  const grid& operator[](channel what) const { return of[static_cast<std::size_t>(what)]; }
};

// Of a picture's colour: that which is said, or else that which is usual. Floats and L are of one range whatever is
// said.
range range_of(const picture& p);

samples read(const picture& p);

// Writes the channels that the format of the picture has. Groups at the end of a row that are not full repeat the last
// sample of each channel in that row; unused samples are all ones and other bits zero.
void write(const samples& from, const picture& p);

}  // namespace morvane::tests::rules
