// Every kernel of the lines at every width up to some vectors, so that each way to end a row is seen, at several
// addresses. Of the conversions that run the same kernels, one is enough.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "backend/choice.h"
#include "checked/converted.h"
#include "checker/checker.h"
#include "morvane.hpp"
#include "options.h"
#include "recorder.h"
#include "rules/convert.h"
#include "rules/layout.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;

constexpr int widest = 150;

// The kernels that a conversion runs at a width of more than one vector.
std::set<std::size_t> kernels_of(const conversion_case& c) {
  std::set<std::size_t> kernels;
  const auto described = [&](const std::string_view name, const colour& is) {
    return description{format_named(std::string(name)), c.width, c.height, matrix{number_of(is.of)},
                       !is.in                         ? range::unsaid
                       : *is.in == rules::range::full ? range::full
                                                      : range::video};
  };
  options how{.filter = c.as.how.chroma_filter == rules::filter::nearest ? filter::nearest : filter::linear,
              .siting = c.as.how.chroma_siting == rules::siting::center ? siting::center : siting::left};
  if (c.as.how.background) how.background = color{1, 2, 3};
  const description from = described(c.from, c.as.source), to = described(c.to, c.as.destination);
  image source(from), made(to);
  const plan p(from, to, how);
  const recorder recording([&](const line_call& line) { kernels.insert(line.kernel); });
  p.run(source.picture(), made.picture());
  return kernels;
}

template <class Take>
void each_conversion(Take take) {
  for (const std::string_view from : rules::format_names())
    for (const std::string_view to : rules::format_names())
      for (const variant& v : variants())
        if (rules::convertible(from, to)) take(conversion_case{from, to, v, 70, 4, 0, 0});
}

// Conversions that together run every kernel which any of them runs. Without records of what is run, some of each.
std::vector<conversion_case> of_all_kernels() {
  std::vector<conversion_case> chosen;
  std::set<std::size_t> covered;
  std::size_t number = 0;
  each_conversion([&](const conversion_case& c) {
    if (!calls_can_be_recorded) {
      if (++number % 449 == 0) chosen.push_back(c);
      return;
    }
    const std::size_t before = covered.size();
    covered.merge(kernels_of(c));
    if (covered.size() > before) chosen.push_back(c);
  });
  return chosen;
}

TEST(checked_tails, of_every_kernel_are_as_the_rules_say) {
  rooms in;
  const std::vector<conversion_case> chosen = of_all_kernels();
  EXPECT_GT(chosen.size(), 20U);
  int number = 0;
  for (conversion_case c : chosen)
    for (c.width = 1; c.width <= widest; c.width += thin_widths() ? 7 : 1) {
      c.height = 2 + c.width % 2;
      c.source_lies = ++number;
      c.destination_lies = 3 * number + 2;
      expectation_of_pair pair(in, c);
      on_every_backend([&](backend::kind k) {
        EXPECT_EQ(pair.wrong_with_one_run(), "") << text_of(c) << " on " << backend::name(k);
      });
      if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace morvane::tests
