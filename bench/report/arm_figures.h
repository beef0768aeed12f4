// What was counted and modelled for 64-bit Arm, as bench/arm left it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace morvane::bench {

// One row of the benchmark, or one pair of formats by a plan, on 1920x16, by the library or by libyuv.
struct arm_figure {
  std::string row{};     // "uyvy::bgra", or for a plan "uyvy:bgra" or "uyvy:bgra, nearest"
  std::string runner{};  // "neon" or "libyuv"
  std::string function{};
  std::string label{};
  double instructions = 0;  // executed for a pixel
  double n1_cycles = 0;     // modelled for a pixel
  double v1_cycles = 0;
  double modelled = 0;  // the part of the executed instructions that lies in modelled loops
};

// Empty where there is no such file.
std::vector<arm_figure> read_arm_figures(const std::filesystem::path& file);

bool is_of_plan(const arm_figure& f);

// The other library's figure for the same row, or null.
const arm_figure* libyuv_beside(const std::vector<arm_figure>& all, const arm_figure& ours);

// Whether a figure is greater than another, but for what surrounds the loops.
bool is_worse(double figure, double other);

// Whether the library executes more instructions, or takes more modelled cycles.
bool is_behind(const arm_figure& ours, const arm_figure& theirs);

}  // namespace morvane::bench
