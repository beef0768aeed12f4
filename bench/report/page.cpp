#include "report/page.h"

#include <algorithm>
#include <sstream>

#include "report/machine.h"
#include "report/plot.h"
#include "report/steps.h"
#include "report/summary_of_pairs.h"
#include "report/text.h"
#include "section.h"

namespace morvane::bench {

namespace {

namespace fs = std::filesystem;

std::string sizes_heading() {
  std::string result;
  for (const size& s : sizes) result.append(result.empty() ? "" : " | ").append(name_of(s));
  return result;
}

std::string shares_by_kind(const results& r, const targets& aims) {
  std::ostringstream out;
  out << "| share of memcpy: median (slowest) | " << sizes_heading() << " |\n|---|---|---|---|\n";
  for (const kind_target& t : aims.kinds) {
    out << "| " << t.title << " |";
    for (const size& s : sizes) {
      std::vector<double> shares;
      for (const row& which : r.rows())
        if (const measurement* m = aims.of(which) == &t ? r.ours(which, {s}) : nullptr)
          shares.push_back(m->share_of_memcpy());
      if (shares.empty())
        out << " - |";
      else
        out << ' ' << fixed(median(shares)) << " (" << fixed(*std::min_element(shares.begin(), shares.end())) << ") |";
    }
    out << '\n';
  }
  return out.str();
}

std::string examples_table(const results& r, const targets& aims) {
  std::ostringstream out;
  out << "| one image of 1920x1080 | microseconds | GB/s | beside the fastest other library "
         "|\n|---|---|---|---|\n";
  for (const row& which : r.rows()) {
    const measurement* m = r.ours(which, {full_hd});
    if (m == nullptr || std::find(aims.examples.begin(), aims.examples.end(), which.name) == aims.examples.end())
      continue;
    out << "| `" << which.name << "` | " << fixed(m->nanoseconds / 1000, 0) << " | "
        << fixed(m->gigabytes_per_second(), 1) << " | ";
    if (const measurement* peer = r.best_peer(which, {full_hd}))
      out << fixed(times_as_fast(*m, *peer), 1) << " times as fast as " << peer->runner << " (" << name_of(peer->label)
          << ')';
    out << " |\n";
  }
  return out.str();
}

std::string steps_table(const results& r, const targets& aims) {
  std::ostringstream out;
  for (const step& s : steps_of(r)) {
    out << "| `" << s.wider << "` beside `" << s.narrower << "` |";
    for (const size& nominal : sizes) {
      const std::optional<double> gain = median_gain(r, aims, nullptr, {nominal}, s);
      out << ' ' << (gain ? fixed(*gain, 1) : "-") << " |";
    }
    out << '\n';
  }
  if (out.str().empty()) return {};
  return "\n| times as fast: median | " + sizes_heading() + " |\n|---|---|---|---|\n" + out.str();
}

std::string threads_sentence(const results& r, const targets& aims) {
  std::vector<double> gains;
  for (const row& which : r.rows()) {
    if (aims.of(which) == nullptr) continue;
    const measurement* one = r.ours(which, {ultra_hd});
    const measurement* two = r.ours(which, {ultra_hd}, 2);
    if (one && two) gains.push_back(times_as_fast(*two, *one));
  }
  if (gains.empty()) return {};
  return "\nTwo threads, each with a band of one 3840x2160 image, were " + fixed(median(gains), 1) +
         " times as fast as one (median).\n";
}

// How many times the instructions of a conversion libyuv executes.
std::vector<double> libyuv_instructions(const std::vector<arm_figure>& arm, bool of_plans) {
  std::vector<double> times;
  for (const arm_figure& ours : arm)
    if (is_of_plan(ours) == of_plans && ours.runner != "libyuv")
      if (const arm_figure* theirs = libyuv_beside(arm, ours))
        times.push_back(theirs->instructions / ours.instructions);
  return times;
}

std::string arm_sentence(const std::vector<arm_figure>& arm) {
  const std::vector<double> times = libyuv_instructions(arm, false);
  if (times.empty()) return {};
  return "\nOn 64-bit Arm, libyuv executes " + fixed(median(times), 2) +
         " times the instructions for the same job (median of " + std::to_string(times.size()) + " conversions).\n";
}

std::string arm_sentence_of_plans(const std::vector<double>& times) {
  const auto fewer = std::count_if(times.begin(), times.end(), [](double t) { return !is_worse(1, t); });
  return "On 64-bit Arm, plans execute no more instructions than libyuv in " + std::to_string(fewer) + " of " +
         std::to_string(times.size()) + " conversions of pairs that it has too. It executes " +
         fixed(median(times), 2) + " times as many (median), from " +
         fixed(*std::min_element(times.begin(), times.end()), 2) + " to " +
         fixed(*std::max_element(times.begin(), times.end()), 2) + " times.\n";
}

std::string measured_on(const std::string& commit) {
  return "Measured on one core of " + processor_name() + ", commit " + commit + ".\n\n";
}

void replace_measured(const fs::path& directory, const std::string& section, const std::string& content) {
  const fs::path page = directory / "performance.md";
  docs::write(page, docs::replace_section(docs::read(page), section, content));
}

}  // namespace

void refresh_performance_page(const fs::path& directory, const results& r, const targets& aims,
                              const std::vector<arm_figure>& arm, const std::string& commit) {
  replace_measured(directory, "measured",
                   measured_on(commit) + shares_by_kind(r, aims) + '\n' + examples_table(r, aims) +
                       steps_table(r, aims) + threads_sentence(r, aims) + arm_sentence(arm));
  docs::write(directory / "images/share_of_memcpy.svg", share_plot(r, aims, full_hd));
}

void refresh_performance_page(const fs::path& directory, const measured_pairs& all, const targets& aims,
                              const std::string& commit) {
  std::string measured = "![share of memcpy of every pair of formats](images/pairs_of_memcpy.svg)\n\n";
  docs::write(directory / "images/pairs_of_memcpy.svg", picture_of_shares(all, aims, matrix::tips::of_low_ones));
  if (const std::string picture = picture_beside_swscale(all, aims, matrix::tips::of_low_ones); !picture.empty()) {
    measured += "![how many times as fast as swscale every pair of formats is](images/pairs_beside_swscale.svg)\n\n";
    docs::write(directory / "images/pairs_beside_swscale.svg", picture);
  }
  replace_measured(directory, "measured pairs", measured + measured_on(commit) + table_of(summary(all, aims)));
}

void refresh_performance_page(const fs::path& directory, const used_pairs& all, const targets& aims,
                              const std::string& commit) {
  std::string text = measured_on(commit) + table_of(summary(all, aims)) + '\n';
  for (const std::string& line : counts_of_labels(all)) text += "- " + line + '\n';
  text +=
      "\n<details><summary>Every pair: shares of memcpy at three sizes, and how many times as fast as each library "
      "at " +
      name_of(full_hd) + "</summary>\n\n" + table_of(all) + "\n</details>\n";
  replace_measured(directory, "measured used pairs", text);
}

void refresh_performance_page(const fs::path& directory, const std::vector<arm_figure>& arm) {
  const std::vector<double> times = libyuv_instructions(arm, true);
  if (!times.empty()) replace_measured(directory, "measured arm plans", arm_sentence_of_plans(times));
}

void refresh_readme(const fs::path& directory, const measured_pairs& all, const targets& aims) {
  const std::optional<spread> shares = shares_of_memcpy(all);
  if (!shares) return;
  const spread::value& slowest = shares->ascending().front();
  const std::size_t colon = slowest.pair.find(':');
  const std::string_view why = aims.pairs.why(slowest.pair.substr(0, colon), slowest.pair.substr(colon + 1));
  std::string text = "![share of memcpy of every pair of formats](docs/images/pairs_of_memcpy.svg)\n\n";
  text += "*Every format to every other at " + name_of(full_hd) +
          ", as a share of memcpy: " + std::to_string(shares->count()) + " pairs by lines of samples, median " +
          fixed(shares->median()) + "; the slowest is `" + slowest.pair + "` with " + fixed(slowest.figure);
  if (!why.empty()) text.append(": ").append(why);
  const fs::path page = directory / "README.md";
  docs::write(page, docs::replace_section(docs::read(page), "measured pairs", text + ".*\n"));
}

void refresh_performance_page(const fs::path& directory, const library_size& size, const targets& aims,
                              const std::string& commit) {
  replace_measured(directory, "measured size",
                   sentence(size, aims) + " Built by " + compiler() + ", commit " + commit + ".\n");
}

}  // namespace morvane::bench
