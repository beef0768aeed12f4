// How near another library's result comes, seen on libraries that are made up of this one.
#include <gtest/gtest.h>

#include "made_up.h"
#include "peers/peers.h"

namespace morvane::bench {
namespace {

// Copies the plane and adds `more` to its first byte, without running over.
peer copy_and_add(int more, std::string_view rows = "y::y") {
  return {.rows = rows,
          .library = "libyuv",
          .function = "Copy",
          .label = agreement::close,
          .prepare = [more](const catalogue::call& c) {
            return job([c, more] {
              row_named("y::y").conversion->convert(c);
              std::uint8_t& first = c.destination.data[0][0];
              first = static_cast<std::uint8_t>(first < 128 ? first + more : first - more);
            });
          }};
}

agreement observed(int more) {
  return observed_agreement(row_named("y::y"), copy_and_add(more));
}

TEST(agreement, is_found_in_the_greatest_difference) {
  EXPECT_EQ(observed(0), agreement::same_bytes);
  EXPECT_EQ(observed(1), agreement::close);
  EXPECT_EQ(observed(5), agreement::close);
  EXPECT_EQ(observed(6), agreement::other_algorithm);
}

TEST(labels, are_right_or_named) {
  const std::vector<row> rows = all_rows();
  EXPECT_TRUE(wrong_labels(rows, {copy_and_add(1)}).empty());
  EXPECT_EQ(wrong_labels(rows, {copy_and_add(9)}),
            std::vector<std::string>{"libyuv Copy for y::y is labelled 'close' and differs by 9"});
}

TEST(labels, name_rows_that_there_are) {
  EXPECT_EQ(wrong_labels(all_rows(), {copy_and_add(1, "y::y y::z")}),
            std::vector<std::string>{"libyuv Copy for y::z, which is no row"});
}

}  // namespace
}  // namespace morvane::bench
