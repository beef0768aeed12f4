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

// With other chroma than the destination has, which alone a filter changes.
bool resamples(const std::vector<std::string>& steps) {
  return std::any_of(steps.begin(), steps.end(), [](const std::string& s) { return s.starts_with("chroma "); });
}

bool contains(const std::vector<format_pair>& pairs, const format_pair& p) {
  return std::find(pairs.begin(), pairs.end(), p) != pairs.end();
}

// The runs of one pair, each with no more repetitions than a brief measurement has where that is wanted.
class runs_of_pair {
 public:
  runs_of_pair(const pair_request& wanted, ring& frames, ring& in_nearest_cache)
      : is_brief_(wanted.how == thoroughness::brief), frames_(frames), in_nearest_cache_(in_nearest_cache) {}

  void add_conversions(bool resampled) {
    add_large(linear, [this] { return convert_next(frames_, {.filter = filter::linear}); });
    if (resampled) add_large(nearest, [this] { return convert_next(frames_, {.filter = filter::nearest}); });
    add_large(copy, [this] { return copy_next(frames_); });
    add_small(linear_in_cache, [this] { return convert_next(in_nearest_cache_, {.filter = filter::linear}); });
    add_small(copy_in_cache, [this] { return copy_next(in_nearest_cache_); });
  }
  void add_tiny_picture() {
    add_small(tiny_picture, [this] { return convert_tiny_picture(frames_.formats()); });
  }
  void add_swscale() {
    add_slow(swscale_nearest, [this] { return convert_next_by_swscale(frames_, resampling::nearest); });
    add_slow(swscale_bilinear, [this] { return convert_next_by_swscale(frames_, resampling::bilinear); });
  }

  std::map<std::string, double> medians(const std::vector<std::string>& options) const {
    return medians_of(runs_, options);
  }

 private:
  bool is_brief_;
  ring& frames_;
  ring& in_nearest_cache_;
  std::vector<timed_run> runs_{};

  void add(const char* name, const std::function<job()>& set_up, int repetitions, int iterations) {
    runs_.push_back(is_brief_ ? counted(name, set_up, repetitions, iterations)
                              : timed_run{.name = name, .set_up = set_up});
  }
  // Frames come from memory whatever ran before, and one takes long enough for the clock.
  void add_large(const char* name, const std::function<job()>& set_up) { add(name, set_up, 7, 1); }
  void add_small(const char* name, const std::function<job()>& set_up) { add(name, set_up, 7, 20); }
  void add_slow(const char* name, const std::function<job()>& set_up) { add(name, set_up, 3, 1); }
};

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

pair_measurement measure_pair(const pair_request& wanted, rings& memory, const format_pair& p,
                              const std::vector<std::string>& options) {
  ring frames = memory.beyond_caches(p);
  ring in_nearest_cache = memory.in_caches(p, 1);
  const std::vector<std::string> steps = plan(frames.from(), frames.to()).steps();
  const bool on_threads = contains(wanted.on_threads, p);
  runs_of_pair runs(wanted, frames, in_nearest_cache);
  runs.add_conversions(resamples(steps));
  if (on_threads || wanted.how == thoroughness::thorough) runs.add_tiny_picture();
  if (swscale_has(*p.source, *p.destination)) runs.add_swscale();
  const std::map<std::string, double> medians = runs.medians(options);
  pair_measurement result{.source = std::string(p.source->name),
                          .destination = std::string(p.destination->name),
                          .steps = steps,
                          .bytes = frames.bytes_of_a_frame(),
                          .pixels = std::int64_t{frames.each().xres} * frames.each().yres,
                          .nanoseconds = medians.at(linear),
                          .nearest_nanoseconds = find(medians, nearest).value_or(medians.at(linear)),
                          .copy_nanoseconds = medians.at(copy),
                          .swscale_nearest_nanoseconds = find(medians, swscale_nearest),
                          .swscale_bilinear_nanoseconds = find(medians, swscale_bilinear),
                          .tiny_nanoseconds = find(medians, tiny_picture),
                          .in_cache_nanoseconds = medians.at(linear_in_cache),
                          .in_cache_copy_nanoseconds = medians.at(copy_in_cache)};
  if (on_threads) result.gain_of_two_threads = gain_of_two_threads(memory.in_caches(p, pictures_of_threads), options);
  return result;
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
  for (const format_pair& p : wanted.pairs) result.push_back(measure_pair(wanted, memory, p, options));
  return result;
}

}  // namespace morvane::bench
