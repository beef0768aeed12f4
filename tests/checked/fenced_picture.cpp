#include "checked/fenced_picture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "rules/layout.h"

namespace morvane::tests {

namespace {

// How much of the memory around a plane is looked at.
constexpr std::ptrdiff_t surroundings = 128;

// Floats in and out of range, and sometimes any bits: most bits at random are far from all pictures.
void make_floats(std::uint8_t* row, std::ptrdiff_t bytes) {
  for (std::ptrdiff_t i = 0; i + 4 <= bytes; i += 4) {
    if (row[i + 2] < 16) continue;
    const float value = static_cast<float>(row[i] + 256 * row[i + 1]) / 40000.0F - 0.6F;
    std::memcpy(row + i, &value, 4);
  }
}

}  // namespace

geometry geometry_of(int number) {
  constexpr int paddings[] = {0, 1, 4, 0, 33, 8, 3};
  constexpr int offsets[] = {0, 1, 0, 2, 17, 31, 4, 63};
  return {number % 3 == 1, paddings[number % 7], number % 2 == 0, offsets[number / 2 % 8]};
}

std::uint8_t* fenced_room::place(std::size_t needed, bool at_end, int offset) {
  const std::span<std::uint8_t> all = memory_.bytes();
  if (needed + static_cast<std::size_t>(offset) > all.size()) throw std::invalid_argument("a plane is too large");
  return at_end ? all.data() + all.size() - needed : all.data() + offset;
}

fenced_picture::fenced_picture(fenced_rooms& rooms, std::string_view format, int width, int height, const geometry& g,
                               std::uint8_t fill)
    : of_{.format = format, .width = width, .height = height}, fill_(fill) {
  const rules::format& f = rules::format_of(format);
  for (std::size_t i = 0; i < f.planes.size(); ++i) {
    plane p{};
    p.rows = rules::rows_of_plane(f, i, height);
    p.row_bytes = rules::row_bytes(f, i, width);
    const std::ptrdiff_t stride = p.row_bytes + g.padding;
    p.span = stride * (p.rows - 1) + p.row_bytes;
    p.lowest = rooms[i].place(static_cast<std::size_t>(p.span), g.at_end, g.offset);
    const std::ptrdiff_t before = g.at_end ? surroundings : g.offset;
    const std::ptrdiff_t behind = g.at_end ? 0 : surroundings;
    p.surroundings = {p.lowest - before, static_cast<std::size_t>(before + p.span + behind)};
    std::fill(p.surroundings.begin(), p.surroundings.end(), fill);
    of_.data[i] = g.upwards ? p.lowest + stride * (p.rows - 1) : p.lowest;
    of_.stride[i] = g.upwards ? -stride : stride;
    planes_.push_back(p);
  }
}

void fenced_picture::fill_at_random(std::uint32_t seed) {
  for (const plane& p : planes_)
    for (std::uint8_t& byte : p.surroundings) {
      seed = seed * 1664525U + 1013904223U;
      byte = static_cast<std::uint8_t>(seed >> 24);
    }
  if (!rules::format_of(of_.format).has_floats()) return;
  for (std::size_t i = 0; i < planes_.size(); ++i)
    for (int row = 0; row < planes_[i].rows; ++row)
      make_floats(of_.data[i] + of_.stride[i] * row, planes_[i].row_bytes);
}

morvane_picture fenced_picture::planes() const {
  morvane_picture result{};
  result.struct_size = sizeof result;
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    result.data[i] = of_.data[i];
    result.stride[i] = of_.stride[i];
    result.bytes[i] = planes_[i].span;
  }
  return result;
}

std::string fenced_picture::difference(rules::stored_picture& expected) const {
  static std::vector<std::uint8_t> whole;
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    const plane& p = planes_[i];
    whole.assign(p.surroundings.size(), fill_);
    for (int row = 0; row < p.rows; ++row) {
      const std::ptrdiff_t at = of_.data[i] + of_.stride[i] * row - p.surroundings.data();
      std::copy_n(expected.of().data[i] + expected.of().stride[i] * row, p.row_bytes, whole.begin() + at);
    }
    const auto [got, wanted] = std::mismatch(p.surroundings.begin(), p.surroundings.end(), whole.begin());
    if (got == p.surroundings.end()) continue;
    const std::ptrdiff_t at = &*got - p.lowest;
    return "byte " + std::to_string(at) + " of " + std::to_string(p.span) + " in plane " + std::to_string(i) + " is " +
           std::to_string(*got) + ", not " + std::to_string(*wanted);
  }
  return {};
}

std::vector<std::uint8_t> fenced_picture::all_bytes() const {
  std::vector<std::uint8_t> bytes;
  for (const plane& p : planes_) bytes.insert(bytes.end(), p.surroundings.begin(), p.surroundings.end());
  return bytes;
}

}  // namespace morvane::tests
