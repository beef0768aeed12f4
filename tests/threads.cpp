// Many threads convert bands of one image at once, and the result is that of one call.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <thread>
#include <vector>

#include "checker/checker.h"
#include "support.h"

namespace morvane::tests {
namespace {

class in_bands : public testing::TestWithParam<catalogue::conversion> {};

constexpr int band_count = 8;
constexpr int rows_in_band = 4;  // whole row pairs, as 4:2:0 needs them

struct image {
  std::vector<std::vector<std::uint8_t>> planes;
  std::vector<int> strides;
  std::vector<int> rows_in_band;  // of each plane
};

// Rows follow each other without padding where that leaves the bands apart, so that a thread that touched more than its
// own rows would meet its neighbour. At odd widths planar chroma has a byte between its rows: without it, a band is one
// line, whose chroma is longer than that of its rows.
image make_image(std::string_view format_name, const catalogue::conversion& row, int pixels, unsigned seed) {
  image result;
  if (format_name.empty()) return result;
  std::mt19937 random(seed);
  const catalogue::format* format = catalogue::find_format(format_name);
  for (std::size_t i = 0; i < format->plane_count(); ++i) {
    const catalogue::plane& p = format->planes[i];
    const int whole_samples = (pixels * p.group_bytes + p.group_pixels - 1) / p.group_pixels;
    const int row_bytes = std::max(static_cast<int>(row_extent(p, pixels)), whole_samples);
    const int stride = row_bytes + static_cast<int>(row.bytes_past(p, pixels));
    result.strides.push_back(stride);
    result.rows_in_band.push_back(rows_in_band / p.image_rows);
    result.planes.emplace_back(static_cast<std::size_t>(stride * band_count * result.rows_in_band.back()));
    for (std::uint8_t& b : result.planes.back()) b = static_cast<std::uint8_t>(random());
  }
  return result;
}

template <class Byte>
catalogue::planes<Byte> planes_of_band(image& from, int band) {
  catalogue::planes<Byte> result;
  for (std::size_t i = 0; i < from.planes.size(); ++i) {
    result.data[i] = from.planes[i].data() + std::ptrdiff_t{band} * from.rows_in_band[i] * from.strides[i];
    result.stride[i] = from.strides[i];
  }
  return result;
}

catalogue::call call_on_band(const catalogue::conversion& row, image& source, image& destination, int xres, int band,
                             bool* opaque) {
  catalogue::call c;
  c.source = planes_of_band<const std::uint8_t>(source, band);
  c.destination = planes_of_band<std::uint8_t>(destination, band);
  c.xres = xres;
  c.yres = rows_in_band / row.rows_per_yres;
  c.argument = 601;
  c.opaque = opaque;
  return c;
}

void convert_in_bands(const catalogue::conversion& row, int xres) {
  image source = make_image(row.source, row, xres * row.pixels_per_xres, 1);
  image together = make_image(row.destination, row, xres * row.pixels_per_xres, 2);
  image one_by_one = together;

  bool reports[band_count]{};
  std::vector<std::thread> threads;
  for (int i = 0; i < band_count; ++i)
    threads.emplace_back([&, i] {
      const catalogue::call c = call_on_band(row, source, together, xres, i, &reports[i]);
      for (int again = 0; again < 20; ++again) row.convert(c);
    });
  for (std::thread& t : threads) t.join();

  for (int i = 0; i < band_count; ++i) {
    bool report = false;
    row.convert(call_on_band(row, source, one_by_one, xres, i, &report));
    EXPECT_EQ(reports[i], report);
  }
  EXPECT_EQ(together.planes, one_by_one.planes);
}

TEST_P(in_bands, many_threads_give_the_result_of_one) {
  on_every_backend([](Processing::Morvane::backend::kind) {
    for (const int xres : {34, 35, 101}) convert_in_bands(GetParam(), xres);
  });
}

INSTANTIATE_TEST_SUITE_P(catalogue, in_bands, testing::ValuesIn(catalogue::conversions), row_name);

}  // namespace
}  // namespace morvane::tests
