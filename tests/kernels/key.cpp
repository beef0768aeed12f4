// The line kernels of video with a key, under their own names.
#include "format_conversion_line.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;

class key_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, key_kernel, all_backends(), backend_name);

TEST_P(key_kernel, line_of_keys) {
  expect_all_alignments({"uyvy::y", "y", 1}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::y, true));
  expect_all_alignments({"y::uyvy", "uyvy", 1}, MORVANE_TEST_KERNEL(1, 1, line::y::uyvy, true));
  expect_all_alignments({"y16::y16", "y16", 1, true}, MORVANE_TEST_KERNEL(1, 1, line::y16::y16, true));
}

TEST_P(key_kernel, line_uyvy_ya_uv) {
  expect_all_alignments({"uyvy::ya_uv", "ya_uv", 0}, MORVANE_TEST_KERNEL(2, 2, line::uyvy::ya_uv, false));
  expect_all_alignments({"uyvy::ya_uv", "ya_uv", 1}, MORVANE_TEST_KERNEL(2, 2, line::uyvy::ya_uv, true));
}

TEST_P(key_kernel, line_uyvy_a) {
  expect_all_alignments({"uyvy_a::ya_uv", "ya_uv"}, MORVANE_TEST_KERNEL(2, 2, line::uyvy_a::ya_uv));
  expect_all_alignments({"uyvy_a::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::uyvy));
}

}  // namespace
}  // namespace morvane::tests
