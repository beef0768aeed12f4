// Plans at work, one after the other: one from source to destination, or up to three around an entry point.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "image.h"

namespace morvane::tool {

// A plan; what the library refuses is an error of the arguments.
morvane::plan plan_between(const morvane::description& from, const morvane::description& to,
                           const morvane::options& how);

struct step_time {
  std::int64_t runs = 0;
  double total_seconds = 0;
  double best_seconds = 0;
};

class chain {
 public:
  // Where `how` names an entry point, it converts instead of the rules, and its formats are reached by plans.
  chain(const morvane::description& source, const morvane::description& destination, const morvane::options& how);

  // What a run needs beside the source and the destination.
  std::int64_t memory() const;

  // Converts, every plan so many times over.
  void run(const image& source, const image& destination, int times = 1);

  std::vector<std::string> steps() const;
  std::vector<std::string> losses() const;
  // What the entry point does differently from what its name says; empty where there is none such.
  const std::string& remark() const { return remark_; }

  std::size_t plan_count() const { return links_.size(); }
  // "v210 -> uyvy"
  std::string name(std::size_t i) const;
  const step_time& time(std::size_t i) const { return links_[i].time; }
  // Bytes that one run of the plan reads and writes.
  std::int64_t bytes_moved(std::size_t i) const;

 private:
  struct link {
    morvane::description from;
    morvane::description to;
    morvane::plan plan;
    step_time time{};
  };

  void add(const morvane::description& from, const morvane::description& to, const morvane::options& how);
  void add_around_entry_point(const morvane::description& source, const morvane::description& destination,
                              const morvane::options& how);
  void allocate();
  void run_once(std::size_t i, const image& from, const image& to);

  std::vector<link> links_;
  std::string remark_;
  std::vector<image> between_;  // allocated with the first run
  std::vector<std::uint8_t> scratch_;
};

}  // namespace morvane::tool
