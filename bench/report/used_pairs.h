// What is said of the pairs that people use most, beside every other library that has them.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "measure/beside_peers.h"
#include "report/misses.h"
#include "report/summary_of_pairs.h"
#include "report/targets.h"

namespace morvane::bench {

using used_pairs = std::vector<pair_beside_peers>;

std::vector<miss> misses(const used_pairs& all, const targets& aims);

// The figures of all pairs together: shares of memcpy, and how many times as fast as each library, at each size.
std::vector<pair_figure> summary(const used_pairs& all, const targets& aims);

// "libyuv: 5 same bytes, 35 close, 86 other algorithm", a line for each library.
std::vector<std::string> counts_of_labels(const used_pairs& all);

// In Markdown, a line for each pair.
std::string table_of(const used_pairs& all);

void write_csv(std::ostream& out, const used_pairs& all);

// Nothing where no pair was measured.
void write_used_pairs(std::ostream& out, const used_pairs& all, const targets& aims);

}  // namespace morvane::bench
