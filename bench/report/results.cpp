#include "report/results.h"

#include <algorithm>

namespace morvane::bench {

results::results(std::vector<row> rows, std::vector<std::string> backends, std::vector<measurement> all)
    : rows_(std::move(rows)), backends_(std::move(backends)), all_(std::move(all)) {
  std::erase_if(rows_, [this](const row& r) {
    return std::none_of(all_.begin(), all_.end(), [&r](const measurement& m) { return m.row == r.name; });
  });
  for (const measurement& m : all_) {
    by_name_[m.run_name()] = &m;
    if (m.is_peer && std::find(libraries_.begin(), libraries_.end(), m.runner) == libraries_.end())
      libraries_.push_back(m.runner);
  }
}

const measurement* results::find(const row& r, const place& where, std::string_view runner, int threads) const {
  const measurement wanted{.row = r.name, .runner = std::string(runner), .where = where, .threads = threads};
  const auto found = by_name_.find(wanted.run_name());
  return found == by_name_.end() ? nullptr : found->second;
}

const measurement* results::ours(const row& r, const place& where, int threads) const {
  return find(r, where, backends_.back(), threads);
}

const measurement* results::baseline(const row& r, const place& where) const {
  return find(r, where, backends_.front());
}

const measurement* results::best_peer(const row& r, const place& where) const {
  const measurement* best = nullptr;
  for (const std::string& library : libraries_)
    if (const measurement* m = find(r, where, library); m && (!best || m->nanoseconds < best->nanoseconds)) best = m;
  return best;
}

}  // namespace morvane::bench
