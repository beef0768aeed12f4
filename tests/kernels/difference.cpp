// The line kernel of the sum of absolute differences, under its own name.
#include "oracle/difference.h"

#include <algorithm>
#include <cstdint>

#include "byte_rows.h"
#include "kernels/lines.h"
#include "sum_absolute_differences_inc.h"

namespace morvane::tests {
namespace {

namespace sad = Processing::Morvane::sum_absolute_differences;

class difference_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, difference_kernel, all_backends(), backend_name);

TEST_P(difference_kernel, of_the_line_kernel_in_all_alignments) {
  alignas(16) std::uint8_t a[widest + 16];
  alignas(16) std::uint8_t b[widest + 16];
  const auto first = random_bytes(sizeof a, 1);
  const auto second = random_bytes(sizeof b, 2);
  std::copy(first.begin(), first.end(), a);
  std::copy(second.begin(), second.end(), b);
  for (int pixels = 0; pixels <= widest; ++pixels) {
    EXPECT_EQ((sad::line::sum_absolute_differences_line<true, true>(a, b, pixels)),
              sum_of_differences(a, 0, b, 0, pixels, 1));
    EXPECT_EQ((sad::line::sum_absolute_differences_line<true, false>(a, b + 3, pixels)),
              sum_of_differences(a, 0, b + 3, 0, pixels, 1));
    EXPECT_EQ((sad::line::sum_absolute_differences_line<false, true>(a + 5, b, pixels)),
              sum_of_differences(a + 5, 0, b, 0, pixels, 1));
    EXPECT_EQ((sad::line::sum_absolute_differences_line<false, false>(a + 7, b + 9, pixels)),
              sum_of_differences(a + 7, 0, b + 9, 0, pixels, 1));
  }
}

}  // namespace
}  // namespace morvane::tests
