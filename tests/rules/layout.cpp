#include "rules/layout.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>

namespace morvane::tests::rules {
namespace {

channel channel_of(const std::string& name) {
  constexpr std::string_view names[] = {"Y", "Cb", "Cr", "R", "G", "B", "A", "L", "x"};
  const auto found = std::find(std::begin(names), std::end(names), name);
  if (found == std::end(names)) throw std::invalid_argument("no channel " + name);
  return static_cast<channel>(found - std::begin(names));
}

bool is_chroma(channel what) {
  return what == channel::cb || what == channel::cr;
}

int divided_up(int number, int by) {
  return number / by + (number % by == 0 ? 0 : 1);
}

// "Cb10" or "R32f".
struct token {
  std::string name;
  int bits;
  bool is_float;
};

token token_of(const std::string& text) {
  const std::size_t digits = text.find_first_of("0123456789");
  if (digits == std::string::npos) throw std::invalid_argument("no bits in " + text);
  return {text.substr(0, digits), std::stoi(text.substr(digits)), text.back() == 'f'};
}

// Of a byte, as the bits of a group are counted.
unsigned mask_of(bit_order order, int bit) {
  return order == bit_order::little_endian ? 1U << bit % 8 : 128U >> bit % 8;
}

}  // namespace

int field::bits() const {
  int sum = 0;
  for (const bit_range& part : parts) sum += part.bits;
  return sum;
}

int group::count(channel what) const {
  return static_cast<int>(
      std::count_if(fields.begin(), fields.end(), [what](const field& f) { return f.what == what; }));
}

group group_of(std::string_view text, bit_order order) {
  group made{.order = order};
  int bit = 0;
  std::size_t lower = 0;
  std::istringstream words{std::string(text)};
  for (std::string word; words >> word;) {
    const token t = token_of(word);
    const bit_range place = {bit, t.bits};
    bit += t.bits;
    if (t.name == "-") continue;
    if (t.name == "+") {
      made.fields.at(lower++).parts.push_back(place);
    } else {
      const channel what = channel_of(t.name);
      made.fields.push_back({.what = what, .number = made.count(what), .is_float = t.is_float, .parts = {place}});
    }
  }
  if (bit % 8 != 0) throw std::invalid_argument("no whole bytes: " + std::string(text));
  made.bytes = bit / 8;
  return made;
}

std::uint32_t get(const group& from, const field& sample, const std::uint8_t* bytes) {
  std::uint32_t number = 0;
  for (const bit_range& part : sample.parts)
    for (int i = 0; i < part.bits; ++i) {
      const int from_top = from.order == bit_order::big_endian ? i : part.bits - 1 - i;
      const int bit = part.first + from_top;
      number = number << 1 | ((bytes[bit / 8] & mask_of(from.order, bit)) != 0 ? 1U : 0U);
    }
  return number;
}

void put(const group& to, const field& sample, std::uint8_t* bytes, std::uint32_t number) {
  int left = sample.bits();
  for (const bit_range& part : sample.parts)
    for (int i = 0; i < part.bits; ++i) {
      const int from_top = to.order == bit_order::big_endian ? i : part.bits - 1 - i;
      const int bit = part.first + from_top;
      --left;
      if ((number >> left & 1U) != 0)
        bytes[bit / 8] = static_cast<std::uint8_t>(bytes[bit / 8] | mask_of(to.order, bit));
    }
}

bool format::has(channel what) const {
  return std::any_of(planes.begin(), planes.end(), [what](const group& g) { return g.count(what) != 0; });
}

bool format::has_floats() const {
  return planes.front().fields.front().is_float;
}

int format::color_bits() const {
  for (const group& g : planes)
    for (const field& f : g.fields)
      if (f.what != channel::a && f.what != channel::unused) return f.is_float ? 16 : f.bits();
  throw std::invalid_argument(std::string(name) + " has no colour");
}

int columns_of(const format& f, channel what, int width) {
  return is_chroma(what) ? divided_up(width, f.chroma.columns) : width;
}

int rows_of(const format& f, channel what, int height) {
  return is_chroma(what) ? divided_up(height, f.chroma.rows) : height;
}

namespace {

// A channel that the plane carries, which says how many groups and rows it has.
channel carried_by(const format& f, std::size_t plane) {
  for (const field& sample : f.planes.at(plane).fields)
    if (sample.what != channel::unused) return sample.what;
  throw std::invalid_argument(std::string(f.name) + " has a plane of nothing");
}

}  // namespace

int groups_in_row(const format& f, std::size_t plane, int width) {
  const channel what = carried_by(f, plane);
  return divided_up(columns_of(f, what, width), f.planes.at(plane).count(what));
}

int rows_of_plane(const format& f, std::size_t plane, int height) {
  return rows_of(f, carried_by(f, plane), height);
}

std::ptrdiff_t row_bytes(const format& f, std::size_t plane, int width) {
  return std::ptrdiff_t{groups_in_row(f, plane, width)} * f.planes.at(plane).bytes;
}

std::vector<std::uint8_t> bits_of_samples(const format& f, std::size_t plane, int width) {
  const group& g = f.planes.at(plane);
  std::vector<std::uint8_t> bits(static_cast<std::size_t>(row_bytes(f, plane, width)));
  for (int i = 0; i < groups_in_row(f, plane, width); ++i)
    for (const field& sample : g.fields)
      if (sample.what != channel::unused &&
          i * g.count(sample.what) + sample.number < columns_of(f, sample.what, width))
        put(g, sample, bits.data() + std::ptrdiff_t{i} * g.bytes, ~0U);
  return bits;
}

std::ptrdiff_t natural_stride(const format& f, std::size_t plane, int width) {
  if (f.stride_pixels == 0) return row_bytes(f, plane, width);
  return std::ptrdiff_t{divided_up(width, f.stride_pixels)} * f.stride_bytes;
}

}  // namespace morvane::tests::rules
