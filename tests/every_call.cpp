// What holds for the calls of all conversions alike, through the catalogue, on every backend.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>
#include <utility>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "catalogue/conversions.h"
#include "catalogue/formats.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class every_call : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, every_call, all_backends(), backend_name);

constexpr std::size_t room = 4096;
constexpr int wide_stride = 640;

struct planes_of_bytes {
  std::array<bytes, catalogue::max_planes> planes;
  bool opaque = false;

  bool operator==(const planes_of_bytes&) const = default;
};

// Rows of 37 pixels of noise, in planes that begin `offset` bytes after an aligned address.
planes_of_bytes convert_noise(catalogue::thunk convert, std::size_t offset, int yres = 4) {
  std::mt19937 random(1);
  std::array<bytes, catalogue::max_planes> source;
  planes_of_bytes result;
  catalogue::call c;
  for (std::size_t i = 0; i < catalogue::max_planes; ++i) {
    source[i] = bytes(offset);
    for (std::size_t at = 0; at < room; ++at) source[i].push_back(static_cast<std::uint8_t>(random()));
    result.planes[i] = filled(offset + room, 77);
    c.source.data[i] = source[i].data() + offset;
    c.destination.data[i] = result.planes[i].data() + offset;
    c.source.stride[i] = c.destination.stride[i] = wide_stride;
  }
  c.xres = 37;
  c.yres = yres;
  c.opaque = &result.opaque;
  convert(c);
  for (bytes& plane : result.planes) plane = part(plane, offset, room);
  return result;
}

template <class Source, class Destination>
using one_to_two = void(const Source*, int, Destination*, int, Destination*, int, int, int);
template <class Source, class Destination>
using two_to_two = void(const Source*, int, const Source*, int, Destination*, int, Destination*, int, int, int);
template <class Source, class Destination>
using three_to_one = void(const Source*, int, const Source*, int, const Source*, int, Destination*, int, int, int);
template <class Source, class Destination>
using three_to_two = void(const Source*, int, const Source*, int, const Source*, int, Destination*, int, Destination*,
                          int, int, int);
template <class Source, class Destination>
using one_to_three = void(const Source*, int, Destination*, int, Destination*, int, Destination*, int, int, int, bool*);

struct overload {
  std::string_view name, destination;
  catalogue::thunk of_words;
};

TEST_P(every_call, words_give_the_bytes_that_byte_pointers_give) {
  using u8 = std::uint8_t;
  using u16 = std::uint16_t;
  using catalogue::entry_of;
  const overload overloads[] = {
      {"uyvy::p216", "p216", entry_of<static_cast<one_to_two<u8, u16>*>(&fc::uyvy::p216)>.convert},
      {"y_uv::p216", "p216", entry_of<static_cast<two_to_two<u8, u16>*>(&fc::y_uv::p216)>.convert},
      {"ycbcra::pa16", "pa16", entry_of<static_cast<one_to_three<u8, u16>*>(&fc::ycbcra::pa16)>.convert},
      {"pa16::vuya_f32", "vuya_f32", entry_of<static_cast<three_to_one<u16, u8>*>(&fc::pa16::vuya_f32)>.convert},
      {"pa16::p216", "p216", entry_of<static_cast<three_to_two<u16, u8>*>(&fc::pa16::p216)>.convert},
  };
  for (const auto& [name, destination, of_words] : overloads) {
    const planes_of_bytes wanted = convert_noise(of_words, 0);
    EXPECT_NE(wanted.planes[0], filled(room, 77)) << name;
    EXPECT_EQ(convert_noise(row_of(name, destination).entry.convert, 0), wanted) << name;
    EXPECT_EQ(convert_noise(row_of(name, destination).entry.convert, 1), wanted) << name;
  }
}

// Whether a plane on either side has samples of 16 bits.
bool has_words(const catalogue::conversion& row) {
  for (const std::string_view name : {row.source, row.destination})
    if (const catalogue::format* f = catalogue::find_format(name))
      for (const catalogue::plane& p : f->planes)
        if (p.sample == catalogue::sample_type::u16 || catalogue::low_bits(p.sample) > 0) return true;
  return false;
}

TEST_P(every_call, byte_pointers_may_be_odd) {
  int tested = 0;
  for (const catalogue::conversion& row : catalogue::conversions) {
    if (row.entry.takes_words || !has_words(row)) continue;
    const int yres = 4 / row.rows_per_yres;
    const planes_of_bytes wanted = convert_noise(row.entry.convert, 0, yres);
    EXPECT_EQ(convert_noise(row.entry.convert, 1, yres), wanted) << row.name;
    EXPECT_EQ(convert_noise(row.entry.convert, 3, yres), wanted) << row.name;
    ++tested;
  }
  EXPECT_EQ(tested, 19);
}

TEST_P(every_call, sizes_below_one_write_nothing) {
  const bytes source = counted(room);
  for (const catalogue::conversion& row : catalogue::conversions)
    for (const auto& [xres, yres] : {std::pair{0, 4}, {4, 0}, {0, 0}, {-2, 4}, {4, -2}, {-3, -3}}) {
      std::array<bytes, catalogue::max_planes> planes;
      catalogue::call c;
      for (std::size_t i = 0; i < planes.size(); ++i) {
        planes[i] = filled(room, 77);
        c.source.data[i] = source.data();
        c.destination.data[i] = planes[i].data() + room / 2;
        c.source.stride[i] = c.destination.stride[i] = 64;
      }
      c.xres = xres;
      c.yres = yres;
      row.convert(c);
      for (const bytes& plane : planes) EXPECT_EQ(plane, filled(room, 77)) << row.name << ", " << xres << " x " << yres;
    }
}

}  // namespace
}  // namespace morvane::tests
