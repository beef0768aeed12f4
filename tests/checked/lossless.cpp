// There and back: where a plan names no loss, and no matrix comes between, the picture that comes back is the one that
// went, whatever is in it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "backend/choice.h"
#include "checked/variants.h"
#include "checker/checker.h"
#include "morvane.hpp"
#include "rules/convert.h"
#include "rules/layout.h"
#include "rules/promises/pictures.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;

struct size {
  int width;
  int height;
};
constexpr size sizes[] = {{37, 5}, {18, 4}, {1, 3}, {64, 2}, {6, 1}};

description of(const std::string_view name, const size& s) {
  return {.format = format_named(std::string(name)), .width = s.width, .height = s.height};
}

// Where chroma is repeated on the way there, the samples that are kept on the way back are the same.
const options nearest = {.filter = filter::nearest};

bool has_matrix(const plan& p) {
  const std::vector<std::string> steps = p.steps();
  return std::any_of(steps.begin(), steps.end(),
                     [](const std::string& step) { return step.find("BT.") != std::string::npos; });
}

bool is_lossless(const plan& p) {
  return p.losses().empty() && !has_matrix(p);
}

// Floats of YCbCr hold the nominal range alone.
std::uint32_t random_sample(std::mt19937& random, const rules::field& f, const bool nominal) {
  const auto most = static_cast<std::uint32_t>((std::uint64_t{1} << f.bits()) - 1);
  if (!nominal || f.what == rules::channel::a) return static_cast<std::uint32_t>(random()) & most;
  const unsigned shift = static_cast<unsigned>(f.bits()) - 8;
  const std::uint32_t black = 16U << shift, white = (f.what == rules::channel::y ? 235U : 240U) << shift;
  return black + static_cast<std::uint32_t>(random()) % (white - black + 1);
}

// Bits that belong to no sample are at random too.
void fill(rules::stored_picture& picture, const unsigned seed, const bool nominal) {
  std::mt19937 random(seed);
  picture.fill_at_random(seed);
  if (!nominal) return;
  const rules::format& f = rules::format_of(picture.of().format);
  for (std::size_t i = 0; i < f.planes.size(); ++i) {
    const rules::group& g = f.planes[i];
    const int groups = rules::groups_in_row(f, i, picture.of().width);
    for (int row = 0; row < rules::rows_of_plane(f, i, picture.of().height); ++row)
      for (int group = 0; group < groups; ++group) {
        std::uint8_t* at = picture.of().data[i] + picture.of().stride[i] * row + std::ptrdiff_t{group} * g.bytes;
        std::fill_n(at, g.bytes, std::uint8_t{0});
        for (const rules::field& sample : g.fields)
          rules::put(g, sample, at, random_sample(random, sample, sample.what != rules::channel::unused));
      }
  }
}

// Floats at random are mostly no numbers, so a picture of them is one that words were converted to.
void fill_source(rules::stored_picture& source, const unsigned seed, const bool nominal) {
  const rules::format& f = rules::format_of(source.of().format);
  if (!f.has_floats()) return fill(source, seed, nominal);
  rules::stored_picture words(f.has(rules::channel::y) ? "vuya_16" : "bgra64", source.of().width, source.of().height);
  fill(words, seed, nominal);
  rules::convert(words.of(), source.of(), {});
}

void expect_same_samples(rules::stored_picture& a, rules::stored_picture& b, const std::string& way) {
  const rules::format& f = rules::format_of(a.of().format);
  for (std::size_t i = 0; i < f.planes.size(); ++i) {
    const std::vector<std::uint8_t> bits = rules::bits_of_samples(f, i, a.of().width);
    for (int row = 0; row < rules::rows_of_plane(f, i, a.of().height); ++row)
      for (std::size_t x = 0; x < bits.size(); ++x) {
        const std::ptrdiff_t at = a.of().stride[i] * row + static_cast<std::ptrdiff_t>(x);
        ASSERT_EQ(a.of().data[i][at] & bits[x], b.of().data[i][at] & bits[x])
            << way << ", plane " << i << ", row " << row << ", byte " << x;
      }
  }
}

void expect_back(const std::string_view from, const std::string_view to, const size& s, const unsigned seed) {
  const bool nominal = rules::format_of(from).has_floats() || rules::format_of(to).has_floats();
  rules::stored_picture source(from, s.width, s.height), there(to, s.width, s.height), back(from, s.width, s.height);
  fill_source(source, seed, nominal && rules::format_of(from).has(rules::channel::y));
  const plan away(of(from, s), of(to, s), nearest), home(of(to, s), of(from, s), nearest);
  on_every_backend([&](backend::kind k) {
    away.run(planes_of(source), planes_of(there));
    home.run(planes_of(there), planes_of(back));
    expect_same_samples(source, back,
                        std::string(from) + " to " + std::string(to) + " and back on " + backend::name(k) + ", " +
                            std::to_string(s.width) + "x" + std::to_string(s.height));
  });
}

TEST(lossless, pairs_give_back_what_they_got) {
  int tried = 0;
  for (const std::string_view from : rules::format_names())
    for (const std::string_view to : rules::format_names()) {
      if (!rules::convertible(from, to) || !is_lossless(plan(of(from, {8, 4}), of(to, {8, 4}), nearest))) continue;
      const auto number = static_cast<unsigned>(tried++);
      expect_back(from, to, sizes[number % std::size(sizes)], number);
      if (HasFailure()) return;
    }
  EXPECT_GT(tried, 1500);
}

}  // namespace
}  // namespace morvane::tests
