#include "measure/beside_peers.h"

#include <algorithm>

#include "backend/choice.h"
#include "measure/measure.h"
#include "measure/pair_jobs.h"

namespace morvane::bench {

namespace {

constexpr int repetitions = 7;
constexpr int conversions_in_cache = 20;

constexpr const char* linear = "plan, linear";
constexpr const char* nearest = "plan, nearest";
constexpr const char* copy = "memcpy";

int frames_at(const peer_request& wanted, const format_pair& p, std::size_t s) {
  return s == 0 ? 1 : frames_that_move(wanted.bytes_of_ring, p, wanted.pictures[s]);
}

std::size_t bytes_needed(const peer_request& wanted) {
  std::size_t most = 0;
  for (const format_pair& p : wanted.pairs) {
    most = std::max(most, ring::bytes_for(p, in_cache));
    for (std::size_t s = 0; s < wanted.pictures.size(); ++s)
      most = std::max(most, ring::bytes_for(p, wanted.pictures[s], frames_at(wanted, p, s)));
  }
  return most;
}

job convert_next_by(const pair_peer& other, ring& frames) {
  return [&frames, convert = other.prepare(frames.each())] { convert(call_of(frames, frames.next())); };
}

// Two functions of a library may have the same name.
std::string run_name(std::size_t i) {
  return "peer " + std::to_string(i);
}

std::map<std::string, double> medians_at(ring& frames, const std::vector<pair_peer>& peers, int iterations,
                                         const std::vector<std::string>& options) {
  std::vector<timed_run> runs;
  const auto add = [&](const std::string& name, const std::function<job()>& set_up) {
    runs.push_back(counted(name, set_up, repetitions, iterations));
  };
  add(linear, [&frames] { return convert_next(frames, {.filter = filter::linear}); });
  add(nearest, [&frames] { return convert_next(frames, {.filter = filter::nearest}); });
  add(copy, [&frames] { return copy_next(frames); });
  for (std::size_t i = 0; i < peers.size(); ++i)
    add(run_name(i), [&frames, &other = peers[i]] { return convert_next_by(other, frames); });
  return medians_of(runs, options);
}

pair_beside_peers measure_pair(const peer_request& wanted, const arena& memory,
                               std::array<noise, sizes.size()>& contents, const format_pair& p,
                               const std::vector<std::string>& options) {
  const std::vector<pair_peer> peers = pair_peers(*p.source, *p.destination);
  pair_beside_peers result{.source = std::string(p.source->name), .destination = std::string(p.destination->name)};
  for (const pair_peer& other : peers)
    result.peers.push_back({std::string(other.library), other.function, likeness_of(memory, p, other), {}});
  for (std::size_t s = 0; s < wanted.pictures.size(); ++s) {
    ring frames(memory, p, wanted.pictures[s], frames_at(wanted, p, s));
    contents[s].fill_sources(frames);
    result.steps = plan(frames.from(), frames.to()).steps();
    const std::map<std::string, double> medians = medians_at(frames, peers, s == 0 ? conversions_in_cache : 1, options);
    result.nanoseconds[s] = medians.at(linear);
    result.nearest_nanoseconds[s] = medians.at(nearest);
    result.copy_nanoseconds[s] = medians.at(copy);
    for (std::size_t i = 0; i < peers.size(); ++i) result.peers[i].nanoseconds[s] = medians.at(run_name(i));
  }
  return result;
}

}  // namespace

std::vector<pair_beside_peers> measure_beside_peers(const peer_request& wanted,
                                                    const std::vector<std::string>& options) {
  // Measuring entry points chooses backends.
  Processing::Morvane::backend::choose(Processing::Morvane::backend::available().back());
  const arena memory(bytes_needed(wanted));
  std::array<noise, sizes.size()> contents;
  std::vector<pair_beside_peers> result;
  for (const format_pair& p : wanted.pairs) result.push_back(measure_pair(wanted, memory, contents, p, options));
  return result;
}

}  // namespace morvane::bench
