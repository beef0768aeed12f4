// How large the shared library is, and what each backend adds to it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "report/misses.h"
#include "report/targets.h"

namespace morvane::bench {

struct library_size {
  struct part {
    std::string backend{};
    std::int64_t bytes = 0;  // code, constants and tables, with what unwinding needs
  };
  std::int64_t bytes = 0;  // of the whole file without symbols
  std::vector<part> backends{};
};

// From lines with a name and bytes, the first of them about the file. Throws one line where the file is none such;
// without a name there is no size.
std::optional<library_size> read_library_size(const std::filesystem::path& file);

// "The shared library without symbols has 1.51 MB (target: at most 3.00): avx2 0.34, avx512 0.37, all else 0.80."
std::string sentence(const library_size& s, const targets& aims);

std::vector<miss> misses(const std::optional<library_size>& s, const targets& aims);

}  // namespace morvane::bench
