// The measured part of docs/performance.md and its picture.
#pragma once

#include <filesystem>

#include "report/arm_figures.h"
#include "report/results.h"
#include "report/targets.h"

namespace morvane::bench {

// Rewrites images/share_of_memcpy.svg in the directory, and in performance.md the section `measured`.
void refresh_performance_page(const std::filesystem::path& directory, const results& r, const targets& aims,
                              const std::vector<arm_figure>& arm, const std::string& commit);

}  // namespace morvane::bench
