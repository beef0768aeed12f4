// Where the samples of every format lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace morvane::tests::rules {

enum class channel { y, cb, cr, r, g, b, a, l, unused };
inline constexpr std::size_t channels = 8;  // that carry something

// The bits of a group are counted from its first byte on: in little-endian order from the lowest bit of each byte, in
// big-endian order from the highest.
enum class bit_order { little_endian, big_endian };

struct bit_range {
  int first, bits;
};

// A sample of a group.
struct field {
  channel what{};
  int number = 0;  // among the samples of its channel in the group
  bool is_float = false;
  std::vector<bit_range> parts{};  // upper bits first

  int bits() const;
};

// The smallest number of whole pixels that is stored in whole bytes.
struct group {
  bit_order order{};
  int bytes = 0;
  std::vector<field> fields{};

  int count(channel what) const;
};

// The group of a description such as "B8 G8 R8 x8": the samples in the order of their bits, each with their number.
// x is unused, - are bits that belong to nothing, a number that ends in f is that of a float of 32 or 16 bits, and the
// n-th + has the lower bits of the n-th sample.
group group_of(std::string_view text, bit_order order);

std::uint32_t get(const group& from, const field& sample, const std::uint8_t* bytes);
// The bits of the sample must be zero before.
void put(const group& to, const field& sample, std::uint8_t* bytes, std::uint32_t number);

// How many columns and rows of the picture share a sample of chroma.
struct sampling {
  int columns, rows;

  bool operator==(const sampling&) const = default;
};

struct format {
  std::string_view name{};
  sampling chroma{};
  std::vector<group> planes{};
  // A natural stride is a multiple of some bytes for every so many pixels; 0 where it is the bytes of a row's groups.
  int stride_pixels = 0;
  int stride_bytes = 0;

  bool has(channel what) const;
  bool has_floats() const;
  int color_bits() const;  // of a sample other than alpha; 16 for floats
};

// Throws where there is no format of the name.
const format& format_of(std::string_view name);
std::vector<std::string_view> format_names();

int columns_of(const format& f, channel what, int width);
int rows_of(const format& f, channel what, int height);

int groups_in_row(const format& f, std::size_t plane, int width);
int rows_of_plane(const format& f, std::size_t plane, int height);
std::ptrdiff_t row_bytes(const format& f, std::size_t plane, int width);
std::ptrdiff_t natural_stride(const format& f, std::size_t plane, int width);

// The bits of a row that are those of the picture's samples: nothing behind its last column, nothing unused.
std::vector<std::uint8_t> bits_of_samples(const format& f, std::size_t plane, int width);

}  // namespace morvane::tests::rules
