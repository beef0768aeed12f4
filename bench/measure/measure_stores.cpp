#include "measure/measure_stores.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <memory>

#include "backend/choice.h"
#include "measure/measure.h"
#include "measure/pair_jobs.h"

namespace morvane::bench {

namespace {

constexpr const char* cached = "cached";
constexpr const char* streaming = "streaming";
constexpr const char* copy = "memcpy";
constexpr const char* cached_and_read = "cached, then read";
constexpr const char* streaming_and_read = "streaming, then read";

std::uint64_t sum_of(const std::uint8_t* bytes, std::int64_t count) {
  std::array<std::uint64_t, 8> sums{};
  for (std::int64_t i = 0; i + 64 <= count; i += 64) {
    std::array<std::uint64_t, 8> words;
    std::memcpy(words.data(), bytes + i, sizeof words);
    for (std::size_t k = 0; k < sums.size(); ++k) sums[k] += words[k];
  }
  std::uint64_t sum = 0;
  for (const std::uint64_t s : sums) sum += s;
  return sum;
}

// The planes lie one after the other, up to the end of the last row of the last one.
std::int64_t bytes_written(const ring& frames) {
  const morvane_picture p = frames.destination(0);
  const std::size_t last = frames.formats().destination->plane_count() - 1;
  const auto* end = static_cast<const std::uint8_t*>(p.data[last]) + p.bytes[last];
  return end - static_cast<const std::uint8_t*>(p.data[0]);
}

job convert_and_read_next(ring& frames, const options& how) {
  const auto p = std::make_shared<const plan>(frames.from(), frames.to(), how);
  const auto scratch = std::make_shared<std::vector<std::uint8_t>>(p->scratch_bytes());
  return [&frames, p, scratch, bytes = bytes_written(frames)] {
    const int i = frames.next();
    p->run(frames.source(i), frames.destination(i), scratch->data(), scratch->size());
    benchmark::DoNotOptimize(sum_of(static_cast<const std::uint8_t*>(frames.destination(i).data[0]), bytes));
  };
}

store_measurement measure_pair(ring frames, const std::vector<std::string>& options) {
  const morvane::options past_caches = {.stores = stores::streaming};
  const std::map<std::string, double> medians =
      medians_of({{cached, [&] { return convert_next(frames); }},
                  {streaming, [&] { return convert_next(frames, past_caches); }},
                  {copy, [&] { return copy_next(frames); }},
                  {cached_and_read, [&] { return convert_and_read_next(frames, {}); }},
                  {streaming_and_read, [&] { return convert_and_read_next(frames, past_caches); }}},
                 options);
  return {.source = std::string(frames.formats().source->name),
          .destination = std::string(frames.formats().destination->name),
          .bytes_written = bytes_written(frames),
          .cached_nanoseconds = medians.at(cached),
          .streaming_nanoseconds = medians.at(streaming),
          .copy_nanoseconds = medians.at(copy),
          .cached_and_read_nanoseconds = medians.at(cached_and_read),
          .streaming_and_read_nanoseconds = medians.at(streaming_and_read)};
}

}  // namespace

std::vector<store_measurement> measure_stores(const store_request& wanted, const std::vector<std::string>& options) {
  Processing::Morvane::backend::choose(Processing::Morvane::backend::available().back());
  const auto frames_for = [&](const format_pair& p) {
    return frames_that_move(wanted.bytes_of_ring, p, wanted.picture);
  };
  std::size_t most = 0;
  for (const format_pair& p : wanted.pairs) most = std::max(most, ring::bytes_for(p, wanted.picture, frames_for(p)));
  const arena memory(most);
  noise contents;
  std::vector<store_measurement> result;
  for (const format_pair& p : wanted.pairs) {
    const ring frames(memory, p, wanted.picture, frames_for(p));
    contents.fill_sources(frames);
    result.push_back(measure_pair(frames, options));
  }
  return result;
}

}  // namespace morvane::bench
