#include "report/table.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <string_view>

namespace morvane::bench {

void write_table(std::ostream& out, const results& r) {
  std::size_t name_width = std::string_view("conversion").size();
  for (const row& which : r.rows()) name_width = std::max(name_width, which.name.size());

  const auto line = [&out, name_width](const auto& name, const auto& size, const auto& shape, const auto& backend,
                                       const auto& speed, const auto& share, const auto& time) {
    out << std::left << std::setw(static_cast<int>(name_width)) << name << "  " << std::setw(9) << size << "  "
        << std::setw(9) << shape << "  " << std::setw(8) << backend << std::right << std::fixed << std::setprecision(2)
        << std::setw(8) << speed << std::setw(11) << share << std::setw(10) << time << '\n';
  };
  line("conversion", "size", "shape", "backend", "GB/s", "of memcpy", "ns/pixel");
  for (const measurement& m : r.all())
    line(m.row, name_of(m.where.nominal), name_of(m.where.memory), m.runner, m.gigabytes_per_second(),
         m.share_of_memcpy(), m.nanoseconds_per_pixel());
}

void write_json(std::ostream& out, const results& r) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const measurement& m : r.all())
    list.push_back({{"conversion", m.row},
                    {"size", name_of(m.where.nominal)},
                    {"shape", name_of(m.where.memory)},
                    {"backend", m.runner},
                    {"bytes", m.bytes},
                    {"nanoseconds", m.nanoseconds},
                    {"gigabytes_per_second", m.gigabytes_per_second()},
                    {"share_of_memcpy", m.share_of_memcpy()},
                    {"nanoseconds_per_pixel", m.nanoseconds_per_pixel()}});
  out << list.dump(2) << '\n';
}

}  // namespace morvane::bench
