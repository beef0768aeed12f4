#include "report/arm_figures.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace morvane::bench {

std::vector<arm_figure> read_arm_figures(const std::filesystem::path& file) {
  std::vector<arm_figure> result;
  std::ifstream in(file);
  if (!in) return result;
  for (const nlohmann::json& entry : nlohmann::json::parse(in))
    result.push_back({.row = entry.at("conversion"),
                      .runner = entry.at("runner"),
                      .function = entry.at("function"),
                      .label = entry.at("agreement"),
                      .instructions = entry.at("instructions_per_pixel"),
                      .n1_cycles = entry.at("neoverse_n1_cycles_per_pixel"),
                      .v1_cycles = entry.at("neoverse_v1_cycles_per_pixel"),
                      .modelled = entry.at("modelled_share")});
  return result;
}

bool is_of_plan(const arm_figure& f) {
  return f.row.find("::") == std::string::npos;
}

const arm_figure* libyuv_beside(const std::vector<arm_figure>& all, const arm_figure& ours) {
  for (const arm_figure& f : all)
    if (f.row == ours.row && f.runner == "libyuv") return &f;
  return nullptr;
}

bool is_worse(double figure, double other) {
  return figure > 1.01 * other;
}

bool is_behind(const arm_figure& ours, const arm_figure& theirs) {
  return is_worse(ours.instructions, theirs.instructions) || is_worse(ours.n1_cycles, theirs.n1_cycles) ||
         is_worse(ours.v1_cycles, theirs.v1_cycles);
}

}  // namespace morvane::bench
