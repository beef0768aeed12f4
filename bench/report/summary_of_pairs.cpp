#include "report/summary_of_pairs.h"

#include <algorithm>

#include "measure/pair_jobs.h"
#include "report/text.h"

namespace morvane::bench {

namespace {

// How many of the lowest values are named with their pairs.
constexpr std::size_t named = 3;

std::optional<spread> by_lines(const measured_pairs& all, double (pair_measurement::*figure)() const) {
  return spread_of(all, [figure](const pair_measurement& m) {
    return m.goes_by_lines() ? std::optional((m.*figure)()) : std::nullopt;
  });
}

std::optional<spread> of_every_pair(const measured_pairs& all, double (pair_measurement::*figure)() const) {
  return spread_of(all, [figure](const pair_measurement& m) { return std::optional((m.*figure)()); });
}

std::string lowest(const pair_figure& f, const std::string& before_name, const std::string& after_name) {
  std::vector<std::string> texts;
  for (const spread::value& v : f.values.ascending()) {
    if (texts.size() == named) break;
    texts.push_back(fixed(v.figure, f.digits) + before_name + v.pair + after_name);
  }
  return joined(texts);
}

std::string line_of(const pair_figure& f) {
  const auto with_target = [&f](const std::string& text, double wanted) {
    return wanted > 0 ? text + " (" + fixed(wanted, f.digits) + ")" : text;
  };
  const std::string below = f.wanted_of_each > 0 ? std::to_string(f.values.below(f.wanted_of_each)) : "";
  return "| " + f.title + " | " + with_target(fixed(f.values.median(), f.digits), f.wanted_median) + " | " +
         lowest(f, " `", "`") + " | " + std::to_string(f.values.count()) + " | " +
         with_target(below, f.wanted_of_each) + " |\n";
}

}  // namespace

std::vector<pair_figure> summary(const measured_pairs& all, const targets& aims) {
  std::vector<pair_figure> result;
  const auto add = [&result](const std::string& title, std::optional<spread> values, double wanted_median = 0,
                             double wanted_of_each = 0, int digits = 2) {
    if (values) result.push_back({title, std::move(*values), wanted_median, wanted_of_each, digits});
  };
  const std::string large = " at " + name_of(full_hd);
  add("share of memcpy" + large + ", by lines of samples", shares_of_memcpy(all), aims.pairs.median_share_of_memcpy,
      aims.pairs.share_of_memcpy);
  add("share of memcpy in cache, " + name_of(in_cache) + ", by lines of samples",
      by_lines(all, &pair_measurement::share_in_cache));
  const std::string times = "times as fast as swscale" + large;
  add(times + ", nearest chroma", spread_of(all, &pair_measurement::times_nearest), 0, aims.never_slower());
  add(times + ", linear chroma", spread_of(all, &pair_measurement::times_bilinear), 0, aims.never_slower());
  add(times + ", the lesser of both", times_swscale(all), aims.pairs.median_of_swscale, aims.never_slower());
  add(times + " that memcpy is", spread_of(all, &pair_measurement::copy_times_swscale));
  add("times as long as a picture of " + name_of(tiny), spread_of(all, &pair_measurement::times_tiny), 0,
      aims.pairs.times_tiny_picture, 0);
  add("times as fast on two threads, " + name_of(in_cache),
      spread_of(all, [](const pair_measurement& m) { return m.gain_of_two_threads; }), 0, aims.pairs.two_threads);
  add("GB/s of memcpy" + large, of_every_pair(all, &pair_measurement::copied_gigabytes_per_second), 0, 0, 1);
  return result;
}

std::string sentence(const pair_figure& f) {
  std::string result = f.title + ": median " + fixed(f.values.median(), f.digits);
  if (f.wanted_median > 0) result += " (target " + fixed(f.wanted_median, f.digits) + ")";
  result += ", least " + lowest(f, " (", ")") + "; ";
  if (f.wanted_of_each > 0) result += std::to_string(f.values.below(f.wanted_of_each)) + " of ";
  result += std::to_string(f.values.count()) + " pairs";
  if (f.wanted_of_each > 0) result += " below " + fixed(f.wanted_of_each, f.digits);
  return result;
}

std::string table_of(const std::vector<pair_figure>& figures) {
  std::string result = "| | median (target) | least | pairs | below the target of each |\n|---|---|---|---|---|\n";
  for (const pair_figure& f : figures) result += line_of(f);
  return result;
}

}  // namespace morvane::bench
