// The report as one page of HTML that needs nothing else.
#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "report/arm_figures.h"
#include "report/library_size.h"
#include "report/pairs.h"
#include "report/results.h"
#include "report/targets.h"
#include "report/used_pairs.h"

namespace morvane::bench {

struct page_contents {
  std::vector<std::pair<std::string, std::string>> machine{};
  const results& measured;
  const targets& aims;
  std::vector<arm_figure> arm{};
  measured_pairs pairs{};
  used_pairs used{};
  std::optional<library_size> size{};
};

void write_html(std::ostream& out, const page_contents& page);

}  // namespace morvane::bench
