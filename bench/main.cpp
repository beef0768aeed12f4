// morvane_bench: measures every conversion of the catalogue on every backend of this processor, or pairs of formats
// through the checked interface, and prints a table or JSON; or measures all of that beside the other libraries, and
// writes the report. script/bench runs it and has its manual.
#include <CLI/CLI.hpp>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "measure/measure.h"
#include "measure/measure_pairs.h"
#include "measure/measure_stores.h"
#include "report/arm_figures.h"
#include "report/csv.h"
#include "report/html.h"
#include "report/machine.h"
#include "report/misses.h"
#include "report/page.h"
#include "report/pairs.h"
#include "report/plot.h"
#include "report/summary_of_pairs.h"
#include "report/table.h"
#include "report/targets.h"
#include "report/used_pairs.h"

namespace {

namespace fs = std::filesystem;
using namespace morvane::bench;

struct options {
  bool json = false;
  bool check_labels = false;
  bool brief = false;
  fs::path report{};
  fs::path arm_figures{};
  fs::path library_sizes{};
  fs::path docs{};
  fs::path targets = MORVANE_TARGETS;
  std::string commit = "unknown";
  std::string pairs{};
  std::string stores{};
  std::vector<std::regex> filters{};
  std::vector<std::string> for_benchmark{};
};

void add_options(CLI::App& app, options& o) {
  app.add_flag("--json", o.json, "Print JSON");
  app.add_option("--pairs", o.pairs, "Measure pairs of formats: uyvy:bgra,*:v210, or used")->type_name("LIST");
  app.add_flag("--brief", o.brief, "Measure pairs with few repetitions, as is done for more than a thousand");
  app.add_option("--stores", o.stores, "Measure pairs of formats with stores through the caches and past them")
      ->type_name("LIST");
  CLI::Option* report = app.add_option("--report", o.report, "Write the report into this directory")->type_name("DIR");
  app.add_option("--commit", o.commit, "The commit that the report names")->type_name("NAME")->needs(report);
  app.add_option("--arm-figures", o.arm_figures, "What was counted and modelled for 64-bit Arm")
      ->type_name("FILE")
      ->needs(report);
  app.add_option("--library-sizes", o.library_sizes, "The bytes of the shared library, and of each backend in it")
      ->type_name("FILE")
      ->needs(report);
  app.add_option(
         "--docs", o.docs,
         "Renew the measured parts of this directory's performance.md and of the README beside it, and their pictures")
      ->type_name("DIR")
      ->needs(report);
  app.add_option("--targets", o.targets, "What the report holds the library against")->type_name("FILE")->needs(report);
  app.add_flag("--check-labels", o.check_labels, "See whether the other libraries' results are as they are labelled");
}

// Filters stay among the extras, because the parser would take one in brackets for a list.
void take_extras(const std::vector<std::string>& extras, options& o) {
  for (const std::string& extra : extras)
    if (extra.starts_with("--benchmark_"))
      o.for_benchmark.push_back(extra);
    else if (extra.starts_with("-"))
      throw std::runtime_error("unknown option " + extra + " (see --help)");
    else
      o.filters.emplace_back(extra);
}

// Without a word about what is wanted, a report has everything.
bool has_everything(const options& o) {
  return o.filters.empty() && o.pairs.empty();
}

std::vector<planned> plan_for(const options& o) {
  const bool backends_alone = o.report.empty();
  std::vector<planned> plan = make_plan(all_rows(), backends_alone ? std::vector<peer>() : all_peers(),
                                        {.filters = o.filters, .backends_alone = backends_alone});
  if (plan.empty()) throw std::runtime_error("no measurement has such a name");
  return plan;
}

std::vector<std::string> with_those_given(std::vector<std::string> defaults, const options& o) {
  defaults.insert(defaults.end(), o.for_benchmark.begin(), o.for_benchmark.end());
  return defaults;
}

results measured(const options& o, const std::vector<planned>& plan, std::vector<std::string> defaults) {
  return {all_rows(), backend_names(), measure(plan, with_those_given(std::move(defaults), o))};
}

std::ofstream open(const fs::path& file, std::ios::openmode mode = std::ios::out) {
  std::ofstream out(file, mode);
  if (!out) throw std::runtime_error("cannot write " + file.string());
  return out;
}

constexpr const char* few_repetitions = "--benchmark_repetitions=7";

// In place of a list of pairs: those of the targets.
constexpr std::string_view used = "used";

constexpr std::size_t most_thorough_pairs = 1000;

thoroughness how_to_measure(const options& o, const std::vector<format_pair>& pairs) {
  return o.brief || pairs.size() > most_thorough_pairs ? thoroughness::brief : thoroughness::thorough;
}

int print_pairs(const options& o) {
  if (!o.filters.empty()) throw std::runtime_error("--pairs takes no FILTER (see --help)");
  const std::vector<format_pair> pairs =
      o.pairs == used ? read_targets(o.targets).pairs.used.pairs : pairs_named(o.pairs);
  const thoroughness how = how_to_measure(o, pairs);
  const measured_pairs all = measure_pairs(
      {.pairs = pairs, .on_threads = how == thoroughness::brief ? std::vector<format_pair>() : pairs, .how = how},
      with_those_given({few_repetitions, "--benchmark_min_time=0.01"}, o));
  o.json ? write_json(std::cout, all) : write_table(std::cout, all);
  return EXIT_SUCCESS;
}

int print_stores(const options& o) {
  if (!o.filters.empty() || !o.pairs.empty() || !o.report.empty())
    throw std::runtime_error("--stores takes neither a FILTER nor --pairs nor --report (see --help)");
  const std::vector<store_measurement> all = measure_stores(
      {.pairs = pairs_named(o.stores)}, with_those_given({few_repetitions, "--benchmark_min_time=0.05"}, o));
  o.json ? write_json(std::cout, all) : write_table(std::cout, all);
  return EXIT_SUCCESS;
}

int print_table(const options& o) {
  const results r = measured(o, plan_for(o), {few_repetitions, "--benchmark_min_time=0.01"});
  o.json ? write_json(std::cout, r) : write_table(std::cout, r);
  return EXIT_SUCCESS;
}

// Many short repetitions: other work on the machine spoils some of them, and the median counts.
results measured_for_report(const options& o) {
  if (!has_everything(o) && o.filters.empty()) return {{}, backend_names(), {}};
  const std::vector<planned> plan = plan_for(o);
  std::cerr << "Measuring " << plan.size() << " things, which takes about " << plan.size() / 450 + 1 << " min\n";
  return measured(o, plan, {"--benchmark_repetitions=21", "--benchmark_min_time=0.002"});
}

measured_pairs pairs_for_report(const options& o, const std::vector<format_pair>& pairs, const targets& aims) {
  if (pairs.empty()) return {};
  const thoroughness how = how_to_measure(o, pairs);
  const std::size_t pairs_a_minute = how == thoroughness::brief ? 1000 : 200;
  std::cerr << "Measuring " << pairs.size() << " pairs, which takes about " << pairs.size() / pairs_a_minute + 1
            << " min\n";
  return measure_pairs({.pairs = pairs, .on_threads = aims.pairs.on_threads, .how = how},
                       with_those_given({few_repetitions, "--benchmark_min_time=0.002"}, o));
}

used_pairs used_pairs_for_report(const options& o, const targets& aims) {
  if (!has_everything(o) && o.pairs != used) return {};
  const std::vector<format_pair>& pairs = aims.pairs.used.pairs;
  std::cerr << "Measuring " << pairs.size() << " pairs beside other libraries, which takes about "
            << pairs.size() / 60 + 1 << " min\n";
  return measure_beside_peers({.pairs = pairs}, o.for_benchmark);
}

void write_pictures(const fs::path& directory, const results& r, const measured_pairs& pairs, const targets& aims) {
  const std::pair<const char*, std::string> pictures[] = {
      {"share_of_memcpy.svg", share_plot(r, aims, full_hd)},
      {"pairs_of_memcpy.svg", picture_of_shares(pairs, aims)},
      {"pairs_beside_swscale.svg", picture_beside_swscale(pairs, aims)}};
  for (const auto& [name, picture] : pictures)
    if (!picture.empty()) open(directory / name) << picture;
}

int write_report(const options& o) {
  // What may go wrong is said before minutes are spent, and without harm to an earlier report.
  const targets aims = read_targets(o.targets);
  const std::vector<format_pair> wanted = has_everything(o)                    ? all_pairs()
                                          : o.pairs.empty() || o.pairs == used ? std::vector<format_pair>()
                                                                               : pairs_named(o.pairs);
  fs::create_directories(o.report);
  const fs::path page = o.report / "report.html";
  open(page, std::ios::app);

  const std::vector<arm_figure> arm = read_arm_figures(o.arm_figures);
  const std::optional<library_size> size = read_library_size(o.library_sizes);
  const results r = measured_for_report(o);
  const used_pairs beside_others = used_pairs_for_report(o, aims);
  const measured_pairs pairs = pairs_for_report(o, wanted, aims);
  std::ofstream csv = open(o.report / "report.csv");
  write_csv(csv, r, aims);
  std::ofstream csv_of_pairs = open(o.report / "pairs.csv");
  write_csv(csv_of_pairs, pairs);
  std::ofstream csv_of_used = open(o.report / "used_pairs.csv");
  write_csv(csv_of_used, beside_others);
  std::ofstream html = open(page);
  write_html(html, {describe_machine(o.commit), r, aims, arm, pairs, beside_others, size});
  write_pictures(o.report, r, pairs, aims);
  if (!o.docs.empty() && !r.all().empty()) refresh_performance_page(o.docs, r, aims, arm, o.commit);
  if (!o.docs.empty() && !pairs.empty()) {
    refresh_performance_page(o.docs, pairs, aims, o.commit);
    refresh_readme(o.docs.parent_path(), pairs, aims);
  }
  if (!o.docs.empty() && !beside_others.empty()) refresh_performance_page(o.docs, beside_others, aims, o.commit);
  if (!o.docs.empty()) refresh_performance_page(o.docs, arm);
  if (!o.docs.empty() && size) refresh_performance_page(o.docs, *size, aims, o.commit);
  if (size) std::cout << sentence(*size, aims) << '\n';
  for (const pair_figure& f : summary(beside_others, aims)) std::cout << sentence(f) << '\n';
  for (const pair_figure& f : summary(pairs, aims)) std::cout << sentence(f) << '\n';
  std::cout << misses(r, aims).size() + misses(pairs, aims).size() + misses(beside_others, aims).size() +
                   misses(size, aims).size()
            << " targets missed; " << page.string() << " tells which\n";
  return EXIT_SUCCESS;
}

int check_labels() {
  const std::vector<std::string> wrong = wrong_labels(all_rows(), all_peers());
  for (const std::string& line : wrong) std::cerr << line << '\n';
  return wrong.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

int run(int argc, char** argv) {
  CLI::App app("Measures the conversions whose name/size/shape/backend every FILTER, a regular expression, is found in",
               "morvane_bench [FILTER...] [--benchmark_OPTION...]");
  app.footer("script/bench --help tells more.");
  app.allow_extras();
  options o;
  add_options(app, o);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  }
  take_extras(app.remaining(), o);
  if (o.check_labels) return check_labels();
  if (!o.stores.empty()) return print_stores(o);
  if (!o.report.empty()) return write_report(o);
  return o.pairs.empty() ? print_table(o) : print_pairs(o);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "bench: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
