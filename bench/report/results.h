// What was measured, and the questions that tables and plots ask of it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "measure/measurement.h"

namespace morvane::bench {

class results {
 public:
  // `backends` are their names, narrowest first, the library's own choice last. Rows without a measurement are left
  // out.
  results(std::vector<row> rows, std::vector<std::string> backends, std::vector<measurement> all);
  results(const results&) = delete;
  results& operator=(const results&) = delete;

  const std::vector<row>& rows() const { return rows_; }
  const std::vector<std::string>& backends() const { return backends_; }
  // The other libraries that were measured.
  const std::vector<std::string>& libraries() const { return libraries_; }
  const std::vector<measurement>& all() const { return all_; }

  // The answers below are null where nothing was measured.
  const measurement* find(const row& r, const place& where, std::string_view runner, int threads = 1) const;
  // By the backend that the library chooses.
  const measurement* ours(const row& r, const place& where, int threads = 1) const;
  // By the narrowest backend.
  const measurement* baseline(const row& r, const place& where) const;
  const measurement* best_peer(const row& r, const place& where) const;

 private:
  std::vector<row> rows_;
  std::vector<std::string> backends_;
  std::vector<std::string> libraries_;
  std::vector<measurement> all_;
  std::map<std::string, const measurement*> by_name_;
};

}  // namespace morvane::bench
