#include "measure/measure_pairs.h"

#include <algorithm>

#include "backend/choice.h"
#include "measure/measure.h"
#include "measure/pair_jobs.h"

namespace morvane::bench {

namespace {

// So many pictures of in_cache that none is still in the nearest cache when its turn comes again.
constexpr int pictures_of_threads = 16;

constexpr const char* linear = "plan, linear";
constexpr const char* nearest = "plan, nearest";
constexpr const char* copy = "memcpy";
constexpr const char* tiny_picture = "tiny picture";
constexpr const char* linear_in_cache = "plan, in cache";
constexpr const char* copy_in_cache = "memcpy, in cache";
constexpr const char* swscale_nearest = "swscale, nearest";
constexpr const char* swscale_bilinear = "swscale, bilinear";
constexpr const char* one_thread = "one thread";
constexpr const char* two_threads = "two threads";

int frames_of_ring(const pair_request& wanted, const format_pair& p) {
  return frames_that_move(wanted.bytes_of_ring, p, wanted.picture);
}

// The memory that all pairs share, every page of which has been touched when the clock runs.
class rings {
 public:
  explicit rings(const pair_request& wanted) : wanted_(wanted), far_(bytes_far(wanted)), near_(bytes_near(wanted)) {}

  // Whose frames are in no cache when their turn comes.
  ring beyond_caches(const format_pair& p) {
    return filled(ring(far_, p, wanted_.picture, frames_of_ring(wanted_, p)), large_);
  }
  ring in_caches(const format_pair& p, int count) { return filled(ring(near_, p, in_cache, count), small_); }

 private:
  const pair_request& wanted_;
  arena far_;
  arena near_;
  noise large_{};
  noise small_{};

  static std::size_t bytes_far(const pair_request& wanted) {
    std::size_t most = 0;
    for (const format_pair& p : wanted.pairs)
      most = std::max(most, ring::bytes_for(p, wanted.picture, frames_of_ring(wanted, p)));
    return most;
  }
  static std::size_t bytes_near(const pair_request& wanted) {
    std::size_t most = 0;
    for (const format_pair& p : wanted.pairs) most = std::max(most, ring::bytes_for(p, in_cache, pictures_of_threads));
    return most;
  }
  static ring filled(const ring& frames, noise& contents) {
    contents.fill_sources(frames);
    return frames;
  }
};

std::map<std::string, double> medians_beside_others(ring& frames, ring& in_nearest_cache,
                                                    const std::vector<std::string>& options) {
  const format_pair& p = frames.formats();
  std::vector<timed_run> runs = {
      {linear, [&] { return convert_next(frames, {.filter = filter::linear}); }},
      {nearest, [&] { return convert_next(frames, {.filter = filter::nearest}); }},
      {copy, [&] { return copy_next(frames); }},
      {tiny_picture, [&] { return convert_tiny_picture(p); }},
      {linear_in_cache, [&] { return convert_next(in_nearest_cache, {.filter = filter::linear}); }},
      {copy_in_cache, [&] { return copy_next(in_nearest_cache); }}};
  if (swscale_has(*p.source, *p.destination)) {
    runs.push_back({swscale_nearest, [&] { return convert_next_by_swscale(frames, resampling::nearest); }});
    runs.push_back({swscale_bilinear, [&] { return convert_next_by_swscale(frames, resampling::bilinear); }});
  }
  return medians_of(runs, options);
}

double gain_of_two_threads(ring many, const std::vector<std::string>& options) {
  const auto medians = medians_of({{one_thread, [&many] { return convert_next(many); }},
                                   {two_threads, [&many] { return convert_next(many, {.threads = 2}); }}},
                                  options);
  return medians.at(one_thread) / medians.at(two_threads);
}

std::optional<double> find(const std::map<std::string, double>& medians, const char* name) {
  const auto found = medians.find(name);
  return found == medians.end() ? std::nullopt : std::optional(found->second);
}

pair_measurement measure_pair(rings& memory, const format_pair& p, const std::vector<std::string>& options) {
  ring frames = memory.beyond_caches(p);
  ring in_nearest_cache = memory.in_caches(p, 1);
  const std::map<std::string, double> medians = medians_beside_others(frames, in_nearest_cache, options);
  return {.source = std::string(p.source->name),
          .destination = std::string(p.destination->name),
          .steps = plan(frames.from(), frames.to()).steps(),
          .bytes = frames.bytes_of_a_frame(),
          .pixels = std::int64_t{frames.each().xres} * frames.each().yres,
          .nanoseconds = medians.at(linear),
          .nearest_nanoseconds = medians.at(nearest),
          .copy_nanoseconds = medians.at(copy),
          .swscale_nearest_nanoseconds = find(medians, swscale_nearest),
          .swscale_bilinear_nanoseconds = find(medians, swscale_bilinear),
          .tiny_nanoseconds = medians.at(tiny_picture),
          .in_cache_nanoseconds = medians.at(linear_in_cache),
          .in_cache_copy_nanoseconds = medians.at(copy_in_cache)};
}

std::optional<double> lesser(const std::optional<double> a, const std::optional<double> b) {
  return a && b ? std::min(a, b) : a ? a : b;
}

}  // namespace

std::optional<double> pair_measurement::times_swscale() const {
  return lesser(times_nearest(), times_bilinear());
}

std::optional<double> pair_measurement::copy_times_swscale() const {
  return lesser(times(swscale_nearest_nanoseconds, copy_nanoseconds),
                times(swscale_bilinear_nanoseconds, copy_nanoseconds));
}

std::vector<pair_measurement> measure_pairs(const pair_request& wanted, const std::vector<std::string>& options) {
  // Measuring entry points chooses backends.
  Processing::Morvane::backend::choose(Processing::Morvane::backend::available().back());
  rings memory(wanted);
  std::vector<pair_measurement> result;
  for (const format_pair& p : wanted.pairs) {
    result.push_back(measure_pair(memory, p, options));
    if (std::find(wanted.on_threads.begin(), wanted.on_threads.end(), p) != wanted.on_threads.end())
      result.back().gain_of_two_threads = gain_of_two_threads(memory.in_caches(p, pictures_of_threads), options);
  }
  return result;
}

}  // namespace morvane::bench
