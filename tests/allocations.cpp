// Conversions allocate nothing.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "Processing.Morvane.h"
#include "checker/checker.h"
#include "counted_allocations.h"
#include "support.h"

namespace morvane::tests {
namespace {

TEST(allocations, are_counted) {
  const int before = allocations();
  void* volatile by_function = std::malloc(1);
  std::free(by_function);
  auto* volatile by_operator = new int(1);
  delete by_operator;
  struct alignas(256) aligned {
    char bytes[256];
  };
  auto* volatile by_aligned_operator = new aligned;
  delete by_aligned_operator;
  EXPECT_EQ(allocations() - before, 3);
}

constexpr int stride = 4096;
constexpr int rows = 16;
std::array<std::array<std::uint8_t, stride * rows>, 2 * catalogue::max_planes> planes;

// With gaps between the rows and without, by vectors and by less than one.
void call_in_several_ways(const catalogue::conversion& row) {
  for (const int xres : {1, 3, 240})
    for (const int row_bytes : {stride, 0}) {
      bool report = false;
      catalogue::call c;
      for (std::size_t i = 0; i < catalogue::max_planes; ++i) {
        const auto stride_in = [&](std::string_view name) {
          const catalogue::format* f = catalogue::find_format(name);
          return row_bytes > 0 || f == nullptr || i >= f->plane_count() ? row_bytes : tight_stride(f->planes[i], xres);
        };
        c.source.data[i] = planes[i].data();
        c.source.stride[i] = stride_in(row.source);
        c.destination.data[i] = planes[catalogue::max_planes + i].data();
        c.destination.stride[i] = stride_in(row.destination);
      }
      c.xres = xres;
      c.yres = 6 / row.rows_per_yres;
      c.opaque = row.extra == catalogue::argument::opacity ? &report : nullptr;
      row.convert(c);
      c.argument = 601;
      c.opaque = nullptr;
      row.convert(c);
    }
}

TEST(allocations, of_conversions_are_none) {
  on_every_backend([](Processing::Morvane::backend::kind) {
    for (const catalogue::conversion& row : catalogue::conversions) {
      const int before = allocations();
      call_in_several_ways(row);
      EXPECT_EQ(allocations() - before, 0) << row.name;
    }
  });
}

TEST(allocations, of_differences_are_none) {
  on_every_backend([](Processing::Morvane::backend::kind) {
    const int before = allocations();
    const std::uint64_t sum = Processing::Morvane::sum_absolute_differences::difference(
        planes[0].data(), stride, planes[1].data(), stride, 1000, rows);
    EXPECT_EQ(allocations() - before, 0) << sum;
  });
}

}  // namespace
}  // namespace morvane::tests
