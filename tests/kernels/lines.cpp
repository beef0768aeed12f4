#include "lines.h"

#include <random>

namespace morvane::tests {
namespace {

catalogue::call call_on(const memory& source, memory& destination, const aligned_kernel& kernel, const kernel_case& k) {
  catalogue::call c;
  for (std::size_t i = 0; i < catalogue::max_planes; ++i) {
    c.source.data[i] = source[i].bytes.data() + (kernel.src_align ? 16 : k.words ? 6 : 5);
    c.destination.data[i] = destination[i].bytes.data() + (kernel.dst_align ? 16 : k.words ? 10 : 7);
    c.source.stride[i] = c.destination.stride[i] = row_stride;
  }
  c.yres = 1;
  c.argument = k.argument;
  return c;
}

void expect_all_lengths(const aligned_kernel& kernel, const kernel_case& k, const memory& source) {
  const catalogue::thunk expected = k.expected != nullptr ? k.expected : expectation(k.name, k.destination);
  ASSERT_NE(expected, nullptr) << k.name;
  const memory before = random_memory(2);
  for (int count = -1; count <= widest; ++count) {
    memory got = before;
    memory wanted = before;
    catalogue::call c = call_on(source, got, kernel, k);
    c.xres = count;
    const std::optional<bool> answer = kernel.convert(c);
    bool expected_answer = true;
    catalogue::call e = call_on(source, wanted, kernel, k);
    e.xres = count;
    e.opaque = &expected_answer;
    expected(e);
    for (std::size_t i = 0; i < got.size(); ++i)
      ASSERT_EQ(got[i].bytes, wanted[i].bytes) << k.name << ", " << count << " pixels, plane " << i << ", src_align "
                                               << kernel.src_align << ", dst_align " << kernel.dst_align;
    ASSERT_EQ(answer.value_or(expected_answer), expected_answer) << k.name << ", " << count << " pixels";
  }
}

}  // namespace

memory random_memory(unsigned seed) {
  std::mt19937 random(seed);
  memory result;
  for (plane_bytes& plane : result)
    for (std::uint8_t& b : plane.bytes) b = static_cast<std::uint8_t>(random());
  return result;
}

void expect_lines(const kernel_case& k, std::span<const aligned_kernel> kernels) {
  memory source = random_memory(1);
  for (const aligned_kernel& kernel : kernels) expect_all_lengths(kernel, k, source);
  source[0].bytes.fill(255);  // opaque
  for (const aligned_kernel& kernel : kernels) expect_all_lengths(kernel, k, source);
}

}  // namespace morvane::tests
