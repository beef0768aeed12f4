// The measured parts of docs/performance.md and their pictures.
#pragma once

#include <filesystem>

#include "report/arm_figures.h"
#include "report/library_size.h"
#include "report/pairs.h"
#include "report/results.h"
#include "report/targets.h"
#include "report/used_pairs.h"

namespace morvane::bench {

// Rewrites images/share_of_memcpy.svg in the directory, and in performance.md the section `measured`.
void refresh_performance_page(const std::filesystem::path& directory, const results& r, const targets& aims,
                              const std::vector<arm_figure>& arm, const std::string& commit);

// Rewrites the pictures of pairs in images/, and in performance.md the section `measured pairs`.
void refresh_performance_page(const std::filesystem::path& directory, const measured_pairs& all, const targets& aims,
                              const std::string& commit);

// Rewrites in README.md of the directory the section `measured pairs`: the picture, the median, and the slowest pair
// with what bounds it.
void refresh_readme(const std::filesystem::path& directory, const measured_pairs& all, const targets& aims);

// Rewrites in performance.md the section `measured size`.
void refresh_performance_page(const std::filesystem::path& directory, const library_size& size, const targets& aims,
                              const std::string& commit);

// Rewrites in performance.md the section `measured arm plans`, if there are any.
void refresh_performance_page(const std::filesystem::path& directory, const std::vector<arm_figure>& arm);

// Rewrites in performance.md the section `measured used pairs`.
void refresh_performance_page(const std::filesystem::path& directory, const used_pairs& all, const targets& aims,
                              const std::string& commit);

}  // namespace morvane::bench
