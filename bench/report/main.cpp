// morvane_report: measures every conversion and every peer, and writes the report. script/bench --report runs it.
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "arm_figures.h"
#include "csv.h"
#include "html.h"
#include "machine.h"
#include "measure.h"
#include "page.h"
#include "plot.h"

namespace {

namespace fs = std::filesystem;
using namespace morvane::bench;

constexpr std::string_view usage =
    "morvane_report --out DIRECTORY [--commit NAME] [--arm FILE] [--docs DIRECTORY] [FILTER...]\n"
    "morvane_report --check-labels\n";

struct options {
  fs::path out{};
  fs::path arm{};
  fs::path docs{};
  std::string commit = "unknown";
  bool check_labels = false;
  std::vector<std::regex> filters{};
  std::vector<std::string> for_benchmark{};
};

options parse(const std::vector<std::string>& arguments) {
  options o;
  for (auto a = arguments.begin(); a != arguments.end(); ++a) {
    const auto value = [&] {
      if (++a == arguments.end()) throw std::runtime_error(*(a - 1) + " needs a value");
      return *a;
    };
    if (*a == "--out")
      o.out = value();
    else if (*a == "--arm")
      o.arm = value();
    else if (*a == "--docs")
      o.docs = value();
    else if (*a == "--commit")
      o.commit = value();
    else if (*a == "--check-labels")
      o.check_labels = true;
    else if (a->starts_with("--benchmark_"))
      o.for_benchmark.push_back(*a);
    else if (a->starts_with("-"))
      throw std::runtime_error("unknown option " + *a);
    else
      o.filters.emplace_back(*a);
  }
  if (o.out.empty() && !o.check_labels) throw std::runtime_error("--out is missing");
  return o;
}

int check_labels() {
  const std::vector<std::string> wrong = wrong_labels(all_rows(), all_peers());
  for (const std::string& line : wrong) std::cerr << line << '\n';
  return wrong.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

std::ofstream open(const fs::path& file, std::ios::openmode mode = std::ios::out) {
  std::ofstream out(file, mode);
  if (!out) throw std::runtime_error("cannot write " + file.string());
  return out;
}

int run(const options& o) {
  if (o.check_labels) return check_labels();
  fs::create_directories(o.out);
  // Said before minutes are spent, and without harm to an earlier report.
  open(o.out / "report.html", std::ios::app);

  const results r = measure_all(o.filters, o.for_benchmark);
  const std::vector<arm_figure> arm = read_arm_figures(o.arm);
  std::ofstream csv = open(o.out / "report.csv");
  write_csv(csv, r);
  std::ofstream html = open(o.out / "report.html");
  write_html(html, {describe_machine(o.commit), r, arm});
  if (const std::string plot = share_plot(r, full_hd); !plot.empty()) open(o.out / "share_of_memcpy.svg") << plot;
  if (!o.docs.empty()) refresh_performance_page(o.docs, r, arm, o.commit);
  std::cout << misses(r).size() << " targets missed; " << (o.out / "report.html").string() << " tells which\n";
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
    std::cout << usage;
    return EXIT_SUCCESS;
  }
  try {
    return run(parse(arguments));
  } catch (const std::exception& error) {
    std::cerr << "bench: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
