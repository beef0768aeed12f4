// Every format to every other through the checked interface, against what the rules say: all filters, sitings, ranges
// and matrices, backgrounds, odd sizes, rows up and down, padded ones, planes at any address and bands in any order, on
// every backend. No byte beside the planes is read or written.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "backend/choice.h"
#include "catalogue/formats.h"
#include "checked/converted.h"
#include "checker/checker.h"
#include "rules/convert.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
using band = expectation_of_pair::band;

struct size {
  int width;
  int height;
};
constexpr size sizes[] = {{1, 1}, {2, 2}, {3, 3}, {7, 4}, {18, 11}, {49, 6}, {100, 3}};

// Cuts a height into bands of so many rows or fewer, in an order of their own.
std::vector<band> shuffled_bands(int height, int rows, unsigned seed) {
  std::vector<band> bands;
  for (int first = 0; first < height; first += rows) bands.push_back({first, std::min(rows, height - first)});
  std::shuffle(bands.begin(), bands.end(), std::mt19937(seed));
  return bands;
}

class checked_pairs : public testing::TestWithParam<const catalogue::format*> {
 protected:
  static void compare(const conversion_case& c, int rows_in_band) {
    static rooms in;
    expectation_of_pair pair(in, c);
    const std::vector<std::uint8_t> read = pair.source().all_bytes();
    on_every_backend([&](backend::kind k) {
      EXPECT_EQ(pair.wrong_with_one_run(), "") << text_of(c) << " on " << backend::name(k);
      const std::vector<band> bands = shuffled_bands(c.height, rows_in_band, static_cast<unsigned>(c.source_lies));
      if (bands.size() < 2) return;
      EXPECT_EQ(pair.wrong_with(bands), "") << text_of(c) << " in bands on " << backend::name(k);
    });
    EXPECT_EQ(pair.source().all_bytes(), read) << "the source of " << text_of(c) << " is written";
  }
};

// The same for all pairs that are as far from the first one, in formats counted on both sides: what rotates with it
// meets all else among the pairs with one source, and among those with one destination.
std::size_t number_of(const catalogue::format& from, const catalogue::format& to) {
  const catalogue::format* const first = catalogue::formats.data();
  return static_cast<std::size_t>((&from - first) + (&to - first));
}

TEST_P(checked_pairs, are_as_the_rules_say) {
  int number = static_cast<int>(GetParam() - catalogue::formats.data());
  for (const catalogue::format& to : catalogue::formats) {
    if (!rules::convertible(GetParam()->name, to.name)) continue;
    std::size_t rotation = number_of(*GetParam(), to);
    for (const variant& v : variants()) {
      const size& s = sizes[rotation++ % std::size(sizes)];
      compare({GetParam()->name, to.name, v, s.width, s.height, number, number * 5 + 1}, 2 + number % 2 * 2);
      ++number;
      if (HasFailure()) return;
    }
  }
}

// Rows so wide that they are converted in pieces. The last ones are as long as the others and the longest and shortest
// there are, and of odd width.
TEST_P(checked_pairs, of_wide_rows_are_as_the_rules_say) {
  constexpr size wide[] = {{960, 3}, {1199, 2}, {721, 5}};
  constexpr int one_of = 7;
  int number = static_cast<int>(GetParam() - catalogue::formats.data());
  for (const catalogue::format& to : catalogue::formats) {
    if (!rules::convertible(GetParam()->name, to.name) || ++number % one_of != 0) continue;
    const std::size_t rotation = number_of(*GetParam(), to);
    const size& s = wide[rotation % std::size(wide)];
    const variant& v = variants()[rotation % variants().size()];
    compare({GetParam()->name, to.name, v, s.width, s.height, number, number * 5 + 1}, 2 + number % 2 * 2);
    if (HasFailure()) return;
  }
}

TEST_P(checked_pairs, are_refused_where_the_rules_have_none) {
  for (const catalogue::format& to : catalogue::formats) {
    const morvane_description from_is{sizeof from_is, GetParam()->id, 4, 4, 0, 0};
    const morvane_description to_is{sizeof to_is, to.id, 4, 4, 0, 0};
    morvane_error error;
    morvane_plan* plan = morvane_plan_create(&from_is, &to_is, nullptr, &error);
    EXPECT_EQ(plan != nullptr, rules::convertible(GetParam()->name, to.name)) << to.name;
    if (plan == nullptr) {
      EXPECT_EQ(error.code, MORVANE_NO_WAY);
      EXPECT_STREQ(error.argument, "destination.format");
    }
    morvane_plan_destroy(plan);
  }
}

std::vector<const catalogue::format*> all_formats() {
  std::vector<const catalogue::format*> all;
  for (const catalogue::format& f : catalogue::formats) all.push_back(&f);
  return all;
}

INSTANTIATE_TEST_SUITE_P(catalogue, checked_pairs, testing::ValuesIn(all_formats()),
                         [](const auto& format) { return std::string(format.param->name); });

}  // namespace
}  // namespace morvane::tests
