// What is known of a pixel format, as data.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace morvane::catalogue {

// How the samples of a group are stored.
enum class sample_type {
  u8,         // bytes
  u16,        // little-endian 16-bit words
  u16_low10,  // words that hold the sample in their lower 10 bits
  u16_low12,  // and in their lower 12 bits
  u32_3x10,   // three 10-bit samples in each 32-bit word, one next to the other; a fourth one has two bits
  u8_and_2,  // 32 bytes with the upper eight bits of 32 samples, then 8 bytes with their lower two, first sample lowest
  f32,       // little-endian IEEE floats: 0 to 1, chroma -0.5 to 0.5
  f16,       // the same of 16 bits
  stream_10,  // samples of 10 bits one after the other, whatever bytes they lie in
  stream_12,  // and of 12 bits
};

// The bits of a sample that its word has in its lower part; 0 where they are not there.
constexpr int low_bits(sample_type sample) {
  return sample == sample_type::u16_low10 ? 10 : sample == sample_type::u16_low12 ? 12 : 0;
}

constexpr bool is_float(sample_type sample) {
  return sample == sample_type::f32 || sample == sample_type::f16;
}

// The bits of a sample in a word of its own or in a group.
constexpr int bits_of(sample_type sample) {
  switch (sample) {
    case sample_type::u8:
      return 8;
    case sample_type::u16_low10:
    case sample_type::u32_3x10:
    case sample_type::u8_and_2:
    case sample_type::stream_10:
      return 10;
    case sample_type::u16_low12:
    case sample_type::stream_12:
      return 12;
    case sample_type::u16:
    case sample_type::f32:
    case sample_type::f16:
      return 16;
  }
  return 0;
}

enum class byte_order { little_endian, big_endian };

// Calls take(word) for each of the words, which blanks separate.
template <class Take>
constexpr void each_word(const std::string_view words, Take take) {
  for (std::size_t at = 0; at < words.size();) {
    const std::size_t end = std::min(words.find(' ', at), words.size());
    take(words.substr(at, end - at));
    at = end + 1;
  }
}

// One plane. Its rows are made of groups of pixels; a picture whose width is not a whole number of groups ends every
// row with a whole group, and one whose height is not a whole number of plane rows ends with a whole row.
struct plane {
  std::string_view name{};
  int group_bytes = 0;
  int group_pixels = 0;
  sample_type sample = sample_type::u8;
  // The samples of a group in storage order: "Cb Y Cr Y". Those of a little-endian word or stream begin at its lowest
  // bit, those of a big-endian one at its highest.
  std::string_view components{};
  int image_rows = 1;  // image rows to a row of the plane: 2 for the chroma of 4:2:0
  int upper_bits = 0;  // of words that hold the sample in so many of their upper bits; 0 for all of them
  byte_order order = byte_order::little_endian;
  int unused_low_bits = 0;  // of 32-bit words, below their samples

  // Calls take(component) for each of the components in their order.
  template <class Take>
  constexpr void each_component(Take take) const {
    each_word(components, take);
  }

  constexpr int depth() const { return upper_bits != 0 ? upper_bits : bits_of(sample); }
  // The most bits of samples that come back as they were: half floats have steps of 1/2048 below 1.
  constexpr int exact_bits() const { return sample == sample_type::f16 ? 10 : depth(); }

  // Whether each pixel is a word of 32 bits; beside its three samples alpha has two of them.
  constexpr bool has_words_of_pixels() const { return sample == sample_type::u32_3x10 && group_pixels == 1; }
  constexpr int depth_of_alpha() const { return has_words_of_pixels() ? 2 : depth(); }

  constexpr std::int64_t rows(int yres) const { return (std::int64_t{yres} + image_rows - 1) / image_rows; }

  constexpr std::int64_t row_bytes(int xres) const {
    return (std::int64_t{xres} + group_pixels - 1) / group_pixels * group_bytes;
  }
};

enum class color_model { ycbcr, rgb, luma, chroma, alpha };

struct format {
  std::string_view name{};
  int id = 0;  // for programs that store it: it never changes, and no other format ever gets it
  std::string_view description{};
  color_model model{};
  bool alpha = false;
  int width_multiple = 1;   // pictures whose width is no multiple of this have no whole rows
  int height_multiple = 1;  // and those whose height is no multiple of this have no whole planes
  int row_multiple = 1;     // in files, rows begin at multiples of so many bytes
  std::string_view fourcc{};
  std::string_view ffmpeg{};
  std::string_view v4l2{};
  std::string_view gstreamer{};
  std::string_view
      apple{};  // the four characters of a CoreVideo type, or where it has none the end of its name: "24RGB"
  std::string_view also{};  // more names, separated by blanks: FourCCs that mean the same, Apple's of the other range
  std::array<plane, 4> planes{};

  constexpr std::size_t plane_count() const {
    return static_cast<std::size_t>(
        std::find_if(planes.begin(), planes.end(), [](const plane& p) { return p.group_bytes == 0; }) - planes.begin());
  }
  constexpr std::int64_t frame_bytes(int xres, int yres) const {
    std::int64_t bytes = 0;
    for (const plane& p : planes)
      if (p.group_bytes != 0) bytes += p.row_bytes(xres) * p.rows(yres);
    return bytes;
  }
};

}  // namespace morvane::catalogue
