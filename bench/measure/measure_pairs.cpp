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
constexpr const char* swscale_nearest = "swscale, nearest";
constexpr const char* swscale_bilinear = "swscale, bilinear";
constexpr const char* one_thread = "one thread";
constexpr const char* two_threads = "two threads";

class pair_runs {
 public:
  pair_runs(const arena& memory, const format_pair& p, const size& picture)
      : memory_(memory), pair_(p), picture_(picture), one_(memory, p, picture) {
    one_.fill_sources();
    add(linear, [this] { return convert_all(one_, {.filter = filter::linear}); });
    add(nearest, [this] { return convert_all(one_, {.filter = filter::nearest}); });
    add(copy, [this] { return job([this] { memory_.copy(bytes_moved(pair_, picture_)); }); });
    add(tiny_picture, [this] { return convert_tiny_picture(pair_); });
    if (!swscale_has(*p.source, *p.destination)) return;
    add(swscale_nearest, [this] { return convert_by_swscale(one_, resampling::nearest); });
    add(swscale_bilinear, [this] { return convert_by_swscale(one_, resampling::bilinear); });
  }

  std::map<std::string, double> medians(const std::vector<std::string>& options) const {
    return medians_of(runs_, options);
  }

 private:
  const arena& memory_;
  format_pair pair_;
  size picture_;
  pictures one_;
  std::vector<timed_run> runs_{};

  void add(const char* name, std::function<job()> set_up) { runs_.push_back({name, std::move(set_up)}); }
};

double gain_of_two_threads(const arena& memory, const format_pair& p, const std::vector<std::string>& options) {
  const pictures many(memory, p, in_cache, pictures_of_threads);
  many.fill_sources();
  const auto medians = medians_of({{one_thread, [&many] { return convert_all(many); }},
                                   {two_threads, [&many] { return convert_all(many, {.threads = 2}); }}},
                                  options);
  return medians.at(one_thread) / medians.at(two_threads);
}

std::optional<double> find(const std::map<std::string, double>& medians, const char* name) {
  const auto found = medians.find(name);
  return found == medians.end() ? std::nullopt : std::optional(found->second);
}

pair_measurement measure_pair(const arena& memory, const format_pair& p, const size& picture,
                              const std::vector<std::string>& options) {
  const std::map<std::string, double> medians = pair_runs(memory, p, picture).medians(options);
  const pictures one(memory, p, picture);
  return {.source = std::string(p.source->name),
          .destination = std::string(p.destination->name),
          .steps = plan(one.from(), one.to()).steps(),
          .bytes = bytes_moved(p, picture),
          .pixels = std::int64_t{picture.xres} * picture.yres,
          .nanoseconds = medians.at(linear),
          .nearest_nanoseconds = medians.at(nearest),
          .copy_nanoseconds = medians.at(copy),
          .tiny_nanoseconds = medians.at(tiny_picture),
          .swscale_nearest_nanoseconds = find(medians, swscale_nearest),
          .swscale_bilinear_nanoseconds = find(medians, swscale_bilinear)};
}

}  // namespace

std::optional<double> pair_measurement::times_swscale() const {
  const std::optional<double> a = times_nearest();
  const std::optional<double> b = times_bilinear();
  return a && b ? std::min(a, b) : a ? a : b;
}

std::vector<pair_measurement> measure_pairs(const pair_request& wanted, const std::vector<std::string>& options) {
  // Measuring entry points chooses backends.
  Processing::Morvane::backend::choose(Processing::Morvane::backend::available().back());
  const arena memory(std::max(pictures::bytes_for(wanted.picture), pictures::bytes_for(in_cache, pictures_of_threads)));
  std::vector<pair_measurement> result;
  for (const format_pair& p : wanted.pairs) {
    result.push_back(measure_pair(memory, p, wanted.picture, options));
    if (std::find(wanted.on_threads.begin(), wanted.on_threads.end(), p) != wanted.on_threads.end())
      result.back().gain_of_two_threads = gain_of_two_threads(memory, p, options);
  }
  return result;
}

}  // namespace morvane::bench
