// morvane_run_every_job: on 64-bit Arm, runs every row of the benchmark and every plan of a pair of formats that
// libyuv has, and the peers of either, once on 1920x16, between two marks for the plugin that counts instructions, and
// prints a line for each:
//   number TAB conversion TAB runner TAB function TAB agreement TAB pixels
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "backend/choice.h"
#include "marks.h"
#include "measure/likeness.h"
#include "measure/ring.h"
#include "peers/pair_peers.h"
#include "peers/peers.h"

namespace {

using namespace morvane::bench;

namespace backend = Processing::Morvane::backend;

int jobs = 0;

void mark(std::uint64_t what, int job) {
  syscall(mark_system_call, mark_option, what, job, 0, 0);
}

void count(std::string_view name, std::int64_t pixels, std::string_view runner, std::string_view function,
           std::string_view label, const job& work) {
  work();  // a library may look at the processor when it is first called
  mark(mark_begin, jobs);
  work();
  mark(mark_end, jobs);
  std::cout << jobs++ << '\t' << name << '\t' << runner << '\t' << function << '\t' << label << '\t' << pixels << '\n';
}

void count_rows() {
  const std::vector<row> rows = all_rows();
  const std::vector<peer> peers = all_peers();
  std::vector<workload> workloads;
  for (const row& r : rows) workloads.push_back(make_workload(r, {in_cache}));
  const arena memory(workloads);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const row& r = rows[i];
    const std::int64_t pixels = workloads[i].pixels();
    const morvane::catalogue::call call = memory.prepare(workloads[i]);
    count(r.name, pixels, backend::name(backend::chosen()), "", "", make_job(*r.conversion, call));
    for (const peer& p : peers)
      if (p.serves(r.name))
        count(r.name, pixels, p.library, p.function, name_of(observed_agreement(r, p)), p.prepare(call));
  }
}

// The plan has the filter with which it comes nearest to what the other function does; of several functions with the
// same one, the first counts.
void count_pair(const arena& memory, const format_pair& p, const std::vector<pair_peer>& peers) {
  const ring frames(memory, p, in_cache);
  noise().fill_sources(frames);
  const std::int64_t pixels = std::int64_t{in_cache.xres} * in_cache.yres;
  std::set<std::string> counted;
  for (const pair_peer& other : peers) {
    const likeness like = likeness_of(memory, p, other);
    const bool is_nearest = like.chroma == morvane::filter::nearest;
    const std::string name = p.name() + (is_nearest ? ", nearest" : "");
    if (!counted.insert(name).second) continue;
    const morvane::plan plan(frames.from(), frames.to(), {.filter = like.chroma});
    std::vector<std::uint8_t> scratch(plan.scratch_bytes());
    const morvane_picture from = frames.source(0), to = frames.destination(0);
    count(name, pixels, backend::name(backend::chosen()), "", "",
          [&] { plan.run(from, to, scratch.data(), scratch.size()); });
    count(name, pixels, other.library, other.function, name_of(like.label),
          [call = call_of(frames, 0), convert = other.prepare(in_cache)] { convert(call); });
  }
}

void count_pairs() {
  std::vector<std::pair<format_pair, std::vector<pair_peer>>> shared;
  std::size_t most = 0;
  for (const format_pair& p : all_pairs())
    if (const auto peers = libyuv_pair_peers(*p.source, *p.destination); !peers.empty()) {
      shared.emplace_back(p, peers);
      most = std::max(most, ring::bytes_for(p, in_cache));
    }
  const arena memory(most);
  for (const auto& [pair, peers] : shared) count_pair(memory, pair, peers);
}

}  // namespace

int main() {
  count_rows();
  count_pairs();
  return EXIT_SUCCESS;
}
