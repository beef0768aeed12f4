// Single statements about fills, with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class black_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, black_example, all_backends(), backend_name);

// Long lines are filled by an operation of the processor, whole cache lines of them at once.
void expect_long_lines(std::uint16_t word, std::size_t step, void (*fill)(std::uint8_t* line, int words)) {
  constexpr std::size_t margin = 64;
  constexpr std::uint8_t around = 99;
  for (const int words : {1023, 1024, 1025, 1055, 1056, 1057, 3000, 4095, 4096, 4097, 9000, 32767, 32768, 32769, 40001})
    for (std::size_t place = 0; place < 64; place += step) {
      const std::size_t length = 2 * static_cast<std::size_t>(words);
      bytes wanted(margin + place + length + margin, around);
      for (std::size_t i = 0; i < length; ++i)
        wanted[margin + place + i] = static_cast<std::uint8_t>(i % 2 == 0 ? word : word >> 8);
      bytes destination(wanted.size(), around);
      fill(destination.data() + margin + place, words);
      ASSERT_EQ(destination, wanted) << words << " words at " << place;
    }
}

TEST_P(black_example, long_lines_of_black_at_every_place_of_a_cache_line) {
  expect_long_lines(0x1080, 1, [](std::uint8_t* line, int pixels) { fc::black::uyvy(line, 2 * pixels, pixels, 1); });
}

TEST_P(black_example, long_lines_of_words_at_every_even_place_of_a_cache_line) {
  expect_long_lines(0x1234, 2, [](std::uint8_t* line, int words) {
    fc::black::alpha(reinterpret_cast<std::uint16_t*>(line), 2 * words, words, 1, 0x1234);
  });
}

TEST_P(black_example, long_lines_of_bytes_at_every_place_of_a_cache_line) {
  expect_long_lines(0x4545, 1,
                    [](std::uint8_t* line, int words) { fc::black::alpha(line, 2 * words, 2 * words, 1, 0x45); });
}

TEST_P(black_example, black_of_3x2_in_rows_of_8_bytes_leaves_the_last_two_bytes) {
  bytes destination = filled(16, 77);
  fc::black::uyvy(destination.data(), 8, 3, 2);
  EXPECT_EQ(destination, (bytes{128, 16, 128, 16, 128, 16, 77, 77, 128, 16, 128, 16, 128, 16, 77, 77}));
}

TEST_P(black_example, alpha_of_300_is_44_in_bytes) {
  bytes destination(70);
  fc::black::alpha(destination.data(), 35, 35, 2, 300);
  EXPECT_EQ(destination, filled(70, 44));
}

TEST_P(black_example, alpha_of_300_is_300_in_words) {
  std::vector<std::uint16_t> destination(70);
  fc::black::alpha(destination.data(), 70, 35, 2, 300);
  EXPECT_EQ(destination, std::vector<std::uint16_t>(70, 300));
}

TEST_P(black_example, negative_alpha_keeps_its_low_bits) {
  bytes of_bytes(33);
  fc::black::alpha(of_bytes.data(), 33, 33, 1, -2);
  EXPECT_EQ(of_bytes, filled(33, 254));
  std::vector<std::uint16_t> of_words(33);
  fc::black::alpha(of_words.data(), 66, 33, 1, -2);
  EXPECT_EQ(of_words, std::vector<std::uint16_t>(33, 65534));
}

TEST_P(black_example, fills_without_pixels_write_nothing) {
  for (const auto& [xres, yres] : {std::pair{0, 3}, {3, 0}, {-1, 3}, {3, -1}, {-2, -2}}) {
    bytes destination = filled(32, 77);
    std::vector<std::uint16_t> words(16, 77);
    fc::black::uyvy(destination.data() + 16, 2 * xres, xres, yres);
    fc::black::alpha(destination.data() + 16, xres, xres, yres, 1);
    fc::black::alpha(words.data() + 8, 2 * xres, xres, yres, 1);
    EXPECT_EQ(destination, filled(32, 77));
    EXPECT_EQ(words, std::vector<std::uint16_t>(16, 77));
  }
}

TEST_P(black_example, black_of_eighteen_pixels_is_a_group_and_a_pair) {
  bytes result = filled(80, 77);
  fc::yuyv_matrox_10::black(result.data(), 80, 18, 1);
  EXPECT_EQ(part(result, 0, 32), repeated({16, 128, 16, 128}, 8));
  EXPECT_EQ(part(result, 32, 8), filled(8, 0));
  EXPECT_EQ(part(result, 40, 4), (bytes{16, 128, 16, 128}));
  EXPECT_EQ(part(result, 44, 28), filled(28, 77));
  EXPECT_EQ(result[72], 0);
  EXPECT_EQ(part(result, 73, 7), filled(7, 77));
}

}  // namespace
}  // namespace morvane::tests
