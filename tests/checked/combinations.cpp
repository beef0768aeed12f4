// Pairs of formats, options, sizes, ways to lie in memory, backends and bands, drawn at random from all there are: what
// meets here by chance, tests that take one thing after another may never bring together. The draws are the same every
// time unless MORVANE_SEED names others and MORVANE_DRAWS asks for more.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "backend/choice.h"
#include "checked/converted.h"
#include "options.h"
#include "rules/convert.h"
#include "rules/layout.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
using band = expectation_of_pair::band;

unsigned number_in(const char* variable, unsigned otherwise) {
  const char* text = std::getenv(variable);
  return text == nullptr ? otherwise : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

class lottery {
 public:
  explicit lottery(unsigned seed) : engine_(seed) {}

  int between(int least, int most) {
    return least + static_cast<int>(engine_() % static_cast<unsigned>(most - least + 1));
  }
  template <class All>
  auto one_of(const All& all) {
    return all[static_cast<std::size_t>(between(0, static_cast<int>(all.size()) - 1))];
  }
  std::mt19937& engine() { return engine_; }

 private:
  std::mt19937 engine_;
};

// Few wide pictures, some that are smaller than every vector, and others of some vectors.
conversion_case drawn_case(lottery& draw) {
  static const std::vector<std::string_view> names = rules::format_names();
  constexpr int number_of_geometries = 7 * 16 * 3;
  conversion_case c{};
  do {
    c.from = draw.one_of(names);
    c.to = draw.one_of(names);
  } while (!rules::convertible(c.from, c.to));
  const int size = draw.between(0, 7);
  c.as = draw.one_of(variants());
  c.width = draw.between(1, size == 0 ? 1500 : size < 3 ? 8 : 140);
  c.height = draw.between(1, size == 0 ? 3 : 10);
  c.source_lies = draw.between(1, number_of_geometries);
  c.destination_lies = draw.between(1, number_of_geometries);
  c.streams = draw.between(0, 2) == 0;
  return c;
}

std::vector<band> drawn_bands(lottery& draw, int height) {
  const int rows = 2 * draw.between(1, height / 2 + 1);
  std::vector<band> bands;
  for (int first = 0; first < height; first += rows) bands.push_back({first, std::min(rows, height - first)});
  std::shuffle(bands.begin(), bands.end(), draw.engine());
  return bands;
}

TEST(checked_combinations, drawn_at_random_are_as_the_rules_say) {
  lottery draw(number_in("MORVANE_SEED", 1));
  rooms in;
  const unsigned draws = number_in("MORVANE_DRAWS", thin() ? 500 : 6000);
  for (unsigned i = 0; i < draws && !HasFailure(); ++i) {
    backend::choose(draw.one_of(backend::available()));
    const conversion_case c = drawn_case(draw);
    expectation_of_pair pair(in, c);
    EXPECT_EQ(pair.wrong_with_one_run(), "") << text_of(c);
    EXPECT_EQ(pair.wrong_with(drawn_bands(draw, c.height)), "") << text_of(c) << " in bands";
  }
  backend::choose(backend::available().back());
}

}  // namespace
}  // namespace morvane::tests
