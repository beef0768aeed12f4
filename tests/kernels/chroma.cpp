// The line kernels of planes of chroma that are interleaved, under their own names.
#include <array>
#include <cstddef>
#include <cstdint>

#include "format_conversion_line.h"
#include "format_conversion_line_p216.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;
using catalogue::call;

class chroma_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, chroma_kernel, all_backends(), backend_name);

TEST_P(chroma_kernel, line_of_chroma) {
  expect_all_alignments({"cb_cr_8_420::cbcr_16_422", "cbcr_16_422", 0, true}, []<bool s, bool d>(const call& c) {
    std::uint8_t* const upper = c.destination.data[0];
    line::u_v::uv16_x2<s, d>(c.source.data[0], c.source.data[1], words(upper), words(upper + row_stride), c.xres);
  });
  expect_all_alignments({"cb_cr_16_422::cbcr_16_422", "cbcr_16_422", 0, true}, []<bool s, bool d>(const call& c) {
    line::u_v::uv<s, d>(words(c.source.data[0]), words(c.source.data[1]), words(c.destination.data[0]), c.xres);
  });
}

TEST_P(chroma_kernel, line_of_chroma_in_bytes) {
  const memory source = random_memory(1);
  for (const std::size_t offset : {0U, 3U})
    for (int pairs = 0; pairs <= widest; ++pairs) {
      std::array<std::uint8_t, 2 * widest + 8> one{}, upper{}, lower{}, wanted{};
      const std::uint8_t* cb = source[0].bytes.data() + offset;
      const std::uint8_t* cr = source[1].bytes.data() + offset;
      for (std::size_t i = 0; i < 2 * static_cast<std::size_t>(pairs); ++i)
        wanted[offset + i] = i % 2 == 0 ? cb[i / 2] : cr[i / 2];
      line::u_v::uv<false, false>(cb, cr, one.data() + offset, pairs);
      line::u_v::uv_x2<false, false>(cb, cr, upper.data() + offset, lower.data() + offset, pairs);
      ASSERT_EQ(one, wanted) << pairs;
      ASSERT_EQ(upper, wanted) << pairs;
      ASSERT_EQ(lower, wanted) << pairs;
    }
}

// Two words for each pixel, luma and alpha.
void luma_beside_alpha(const call& c) {
  for (int i = 0; i < c.xres; ++i)
    for (int byte = 0; byte < 2; ++byte) {
      c.destination.data[0][4 * i + byte] = c.source.data[0][2 * i + byte];
      c.destination.data[0][4 * i + 2 + byte] = c.source.data[1][2 * i + byte];
    }
}

TEST_P(chroma_kernel, line_pa16_ya) {
  expect_all_alignments({"pa16::ya", "ya", 0, true, &luma_beside_alpha}, MORVANE_TEST_KERNEL(2, 1, line::pa16::ya));
}

}  // namespace
}  // namespace morvane::tests
