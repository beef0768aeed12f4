// Several threads run one plan at once, on bands of the same pictures in any order and with scratch memory of their
// own, and make the picture that the rules say.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <random>
#include <thread>
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

constexpr int width = 37;
constexpr int height = 23;
constexpr int thread_count = 3;

// What each thread does: it takes bands, of which another thread may convert the neighbours, until none is left.
class shared_run {
 public:
  shared_run(const morvane_plan* plan, const morvane_picture& source, const morvane_picture& destination, unsigned seed)
      : plan_(plan), source_(source), destination_(destination) {
    const int unit = morvane_plan_row_granularity(plan);
    for (int first = 0; first < height; first += unit) firsts_.push_back(first);
    std::shuffle(firsts_.begin(), firsts_.end(), std::mt19937(seed));
  }

  // The bands that were refused.
  int convert() {
    std::vector<std::thread> threads;
    for (int i = 0; i < thread_count; ++i) threads.emplace_back([this] { take_bands(); });
    for (std::thread& t : threads) t.join();
    return refused_;
  }

 private:
  const morvane_plan* plan_;
  morvane_picture source_, destination_;
  std::vector<int> firsts_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<int> refused_ = 0;

  void take_bands() {
    std::vector<std::uint8_t> scratch(static_cast<std::size_t>(morvane_plan_scratch_bytes(plan_)));
    const int unit = morvane_plan_row_granularity(plan_);
    for (std::size_t i = next_++; i < firsts_.size(); i = next_++) {
      const int rows = std::min(unit, height - firsts_[i]);
      if (morvane_plan_run_rows(plan_, &source_, &destination_, firsts_[i], rows, scratch.data(),
                                static_cast<std::int64_t>(scratch.size()), nullptr) != MORVANE_OK)
        ++refused_;
    }
  }
};

class checked_threads : public testing::TestWithParam<std::string_view> {};

void expect_of_threads(std::string_view from, std::string_view to, const variant& v, unsigned seed) {
  rules::stored_picture source(from, width, height), expected(to, width, height, 0xa5);
  source.fill_at_random(seed);
  source.of().of = v.source.of;
  source.of().in = v.source.in;
  expected.of().of = v.destination.of;
  expected.of().in = v.destination.in;
  rules::convert(source.of(), expected.of(), v.how);
  const morvane_description source_is = described(source.of()), destination_is = described(expected.of());
  const morvane_options how = options_of(v.how);
  morvane_plan* plan = morvane_plan_create(&source_is, &destination_is, &how, nullptr);
  ASSERT_NE(plan, nullptr);
  on_every_backend([&](backend::kind k) {
    rules::stored_picture made(to, width, height, 0xa5);
    EXPECT_EQ(shared_run(plan, planes_of(source), planes_of(made), seed).convert(), 0);
    for (std::size_t i = 0; i < rules::format_of(to).planes.size(); ++i)
      EXPECT_EQ(made.plane(i), expected.plane(i))
          << from << " to " << to << ", variant " << (&v - variants().data()) << " on " << backend::name(k);
  });
  morvane_plan_destroy(plan);
}

// A quarter of all pairs: each format as the source and as the destination of many.
TEST_P(checked_threads, share_a_plan) {
  const std::vector<std::string_view> names = rules::format_names();
  auto number = static_cast<unsigned>(std::find(names.begin(), names.end(), GetParam()) - names.begin());
  for (const std::string_view to : names) {
    if (!rules::convertible(GetParam(), to) || ++number % 4 != 0) continue;
    expect_of_threads(GetParam(), to, variants()[number / 4 % variants().size()], number);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(sources, checked_threads, testing::ValuesIn(rules::format_names()),
                         [](const auto& name) { return std::string(name.param); });

}  // namespace
}  // namespace morvane::tests
