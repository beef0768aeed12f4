// The predicates of alignment.
#include <gtest/gtest.h>

#include <cstdint>

#include "Processing.Morvane.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

alignas(64) const std::uint8_t aligned_memory[256]{};

TEST(alignment, holds_for_pointer_and_stride_that_are_multiples_of_16) {
  EXPECT_TRUE(fc::is_aligned(aligned_memory, 16));
  EXPECT_TRUE(fc::is_aligned(aligned_memory, 0));
  EXPECT_TRUE(fc::is_aligned(aligned_memory, -48));
  EXPECT_TRUE(fc::is_aligned(aligned_memory + 16, 32, aligned_memory + 96, 48));
  EXPECT_TRUE(fc::is_aligned(aligned_memory, 16, aligned_memory + 16, 32, aligned_memory + 48, 1920));
}

TEST(alignment, fails_for_a_stride_of_8) {
  EXPECT_FALSE(fc::is_aligned(aligned_memory, 8));
}

TEST(alignment, fails_for_every_odd_stride) {
  for (int stride = -33; stride < 34; stride += 2) EXPECT_FALSE(fc::is_aligned(aligned_memory, stride));
}

TEST(alignment, fails_when_one_of_several_pointers_or_strides_is_off) {
  const std::uint8_t* p = aligned_memory;
  for (int off = 1; off < 16; ++off) {
    EXPECT_FALSE(fc::is_aligned(p + off, 16, p, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16 + off, p, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p + off, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, 16 - off, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, 16, p + off, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, 16, p, off));
    EXPECT_FALSE(fc::is_aligned(p + off, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, off));
  }
}

TEST(alignment, has_the_same_answer_under_both_names) {
  const std::uint8_t* p = aligned_memory;
  for (int offset = 0; offset < 64; ++offset)
    for (int stride = -40; stride <= 40; ++stride) {
      EXPECT_EQ(fc::is_aligned(p + offset, stride), fc::is_aligned_avx2(p + offset, stride));
      EXPECT_EQ(fc::is_aligned(p, 16, p + offset, stride), fc::is_aligned_avx2(p, 16, p + offset, stride));
      EXPECT_EQ(fc::is_aligned(p, 16, p, 32, p + offset, stride),
                fc::is_aligned_avx2(p, 16, p, 32, p + offset, stride));
    }
  EXPECT_TRUE(fc::is_aligned_avx2(p + 16, 16));
}

}  // namespace
}  // namespace morvane::tests
