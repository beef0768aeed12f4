#include "report.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <string_view>

namespace morvane::bench {

namespace {

struct figures {
  double gigabytes_per_second = 0;
  double share_of_memcpy = 0;
  double nanoseconds_per_pixel = 0;
};

figures figures_of(const measured& row, const median_times& times) {
  const double time = times.nanoseconds(row.run);
  return {.gigabytes_per_second = static_cast<double>(row.bytes) / time,
          .share_of_memcpy = times.nanoseconds(copy_run_name(row.bytes)) / time,
          .nanoseconds_per_pixel = time / static_cast<double>(row.pixels)};
}

}  // namespace

std::string copy_run_name(std::int64_t bytes) {
  return "memcpy/" + std::to_string(bytes);
}

void median_times::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    times_[run.run_name.function_name].push_back(run.real_accumulated_time * 1e9 / static_cast<double>(run.iterations));
  }
}

double median_times::nanoseconds(const std::string& run) const {
  std::vector<double> times = times_.at(run);
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

void write_table(std::ostream& out, const std::vector<measured>& rows, const median_times& times) {
  std::size_t name_width = std::string_view("conversion").size();
  for (const measured& row : rows) name_width = std::max(name_width, row.conversion.size());

  const auto line = [&out, name_width](const auto& name, const auto& size, const auto& shape, const auto& backend,
                                       const auto& speed, const auto& share, const auto& time) {
    out << std::left << std::setw(static_cast<int>(name_width)) << name << "  " << std::setw(9) << size << "  "
        << std::setw(6) << shape << "  " << std::setw(8) << backend << std::right << std::fixed << std::setprecision(2)
        << std::setw(8) << speed << std::setw(11) << share << std::setw(10) << time << '\n';
  };
  line("conversion", "size", "shape", "backend", "GB/s", "of memcpy", "ns/pixel");
  for (const measured& row : rows) {
    const figures f = figures_of(row, times);
    line(row.conversion, row.size, row.shape, row.backend, f.gigabytes_per_second, f.share_of_memcpy,
         f.nanoseconds_per_pixel);
  }
}

void write_json(std::ostream& out, const std::vector<measured>& rows, const median_times& times) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const measured& row : rows) {
    const figures f = figures_of(row, times);
    list.push_back({{"conversion", row.conversion},
                    {"size", row.size},
                    {"shape", row.shape},
                    {"backend", row.backend},
                    {"bytes", row.bytes},
                    {"nanoseconds", times.nanoseconds(row.run)},
                    {"gigabytes_per_second", f.gigabytes_per_second},
                    {"share_of_memcpy", f.share_of_memcpy},
                    {"nanoseconds_per_pixel", f.nanoseconds_per_pixel}});
  }
  out << list.dump(2) << '\n';
}

}  // namespace morvane::bench
