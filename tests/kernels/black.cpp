// The line kernels of fills, under their own names.
#include "format_conversion_line_black.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;
using catalogue::call;

class black_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, black_kernel, all_backends(), backend_name);

TEST_P(black_kernel, line_black_uyvy) {
  expect_all_alignments({"black::uyvy", "uyvy"},
                        []<bool, bool>(const call& c) { line::black::uyvy(c.destination.data[0], c.xres); });
}

TEST_P(black_kernel, line_black_alpha) {
  for (const int value : {0, 255, 300, -1, 0x1234}) {
    expect_all_alignments({"black::alpha", "alpha", value}, []<bool, bool>(const call& c) {
      line::black::alpha(c.destination.data[0], c.xres, c.argument);
    });
    expect_all_alignments({"black::alpha", "alpha_u16", value, true}, []<bool, bool>(const call& c) {
      line::black::alpha(words(c.destination.data[0]), c.xres, c.argument);
    });
  }
}

TEST_P(black_kernel, line_black_yuyv_matrox_10) {
  expect_all_alignments({"yuyv_matrox_10::black", "yuyv_matrox_10"},
                        []<bool, bool>(const call& c) { line::black::yuyv_matrox_10(c.destination.data[0], c.xres); });
}

}  // namespace
}  // namespace morvane::tests
