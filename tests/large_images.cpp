// Images of the size that video has, and rows that lie far apart: every conversion on every backend against its
// expectation. The sweep of all small sizes cannot show what goes wrong beyond a page, a cache or 16 bits.
#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>

#include "checker/checker.h"
#include "options.h"
#include "support.h"

namespace morvane::tests {
namespace {

using catalogue::argument;
using catalogue::conversion;

class large_image : public testing::TestWithParam<conversion> {};

// An image of so many pixels, whose rows lie `gap` bytes further apart than they need.
test_case image_of(const conversion& row, int width, int height, int gap) {
  test_case c;
  c.xres = width / row.pixels_per_xres;
  c.yres = height / row.rows_per_yres;
  const auto place = [&](std::string_view format_name, auto& places) {
    const catalogue::format* format = catalogue::find_format(format_name);
    for (std::size_t i = 0; format != nullptr && i < format->plane_count(); ++i)
      places[i] = {tight_stride(format->planes[i], width) + gap, static_cast<int>(3 + 7 * i)};
  };
  place(row.source, c.source);
  place(row.destination, c.destination);
  if (row.one_stride)
    for (plane_place& p : c.destination) p.stride = c.destination[0].stride;
  return c;
}

void expect_right(checker& subject, test_case c) {
  EXPECT_EQ(subject.check(c), "") << "with argument " << c.argument;
}

// Opaque where rows follow each other, and all but one pixel where they do not.
void choose_the_rest(test_case& c, const conversion& row, bool tight) {
  c.seed = tight ? 1 : 2;
  c.pattern = tight ? content::random : content::thresholds;
  if (row.extra == argument::opacity) {
    c.pattern = tight ? content::opaque : content::one_less;
    c.opacity = tight ? report::false_before : report::true_before;
  }
  if (row.extra == argument::color_space) c.argument = tight ? 601 : 709;
  if (row.extra == argument::rescale) c.argument = tight ? 1 : 0;
  if (row.extra == argument::value) c.argument = tight ? 0x1234 : 300;
}

TEST_P(large_image, of_high_definition) {
  const int height = thin() ? 34 : 1082;
  checker subject(GetParam());
  for (const bool tight : {true, false}) {
    test_case c = image_of(GetParam(), 1926, height, tight ? 0 : 74);
    choose_the_rest(c, GetParam(), tight);
    expect_right(subject, c);
  }
}

// Rows that go up count as well, and begin with the last one.
TEST_P(large_image, of_rows_more_than_65536_bytes_apart) {
  checker subject(GetParam());
  for (const int sign : {1, -1}) {
    test_case c = image_of(GetParam(), 70, 6, 65536);
    choose_the_rest(c, GetParam(), false);
    for (auto* places : {&c.source, &c.destination})
      for (plane_place& p : *places) p.stride *= sign;
    expect_right(subject, c);
  }
}

INSTANTIATE_TEST_SUITE_P(catalogue, large_image, testing::ValuesIn(catalogue::conversions), row_name);

}  // namespace
}  // namespace morvane::tests
