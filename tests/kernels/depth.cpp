// The line kernels of samples from one depth to another, under their own names.
#include <cstdint>

#include "format_conversion_line.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;
using catalogue::call;

class depth_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, depth_kernel, all_backends(), backend_name);

TEST_P(depth_kernel, line_y_y16) {
  expect_all_alignments({"y::y16", "y16", 0, true}, MORVANE_TEST_KERNEL(1, 1, line::y::y16));
}

TEST_P(depth_kernel, line_of_interleaved_chroma) {
  expect_all_alignments({"cbcr_8_420::cbcr_16_422", "cbcr_16_422", 0, true}, []<bool s, bool d>(const call& c) {
    std::uint8_t* const upper = c.destination.data[0];
    line::uv::uv16_x2<s, d>(c.source.data[0], words(upper), words(upper + row_stride), c.xres);
  });
}

TEST_P(depth_kernel, line_of_depths) {
  expect_all_alignments({"alpha::alpha_u16", "alpha_u16"}, MORVANE_TEST_KERNEL(1, 1, line::alpha::alpha_u16));
  expect_all_alignments({"alpha_u16::alpha", "alpha", 0, true}, MORVANE_TEST_KERNEL(1, 1, line::alpha_u16::alpha));
  expect_all_alignments({"alpha_10u16::alpha_u16", "alpha_u16"}, MORVANE_TEST_KERNEL(1, 1, line::alpha_10u16::alpha16));
  expect_all_alignments({"alpha_12u16::alpha_u16", "alpha_u16"}, MORVANE_TEST_KERNEL(1, 1, line::alpha_12u16::alpha16));
  expect_all_alignments({"y_10u16::y", "y", 0, true}, MORVANE_TEST_KERNEL(1, 1, line::y_10u16::y));
  expect_all_alignments({"bgra64::alpha16", "alpha_u16"}, MORVANE_TEST_KERNEL(1, 1, line::bgra64::alpha16));
}

}  // namespace
}  // namespace morvane::tests
