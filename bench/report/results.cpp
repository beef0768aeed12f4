#include "results.h"

#include <algorithm>

#include "backend/choice.h"

namespace morvane::bench {

namespace {

std::string name_of_backend(Processing::Morvane::backend::kind k) {
  return Processing::Morvane::backend::name(k);
}

std::string library_choice() {
  return name_of_backend(Processing::Morvane::backend::available().back());
}

}  // namespace

std::string measurement::size_name() const {
  return std::to_string(nominal.xres) + "x" + std::to_string(nominal.yres);
}

std::string measurement::run_name() const {
  std::string result = row + "/" + size_name() + "/" + std::string(name_of(memory)) + "/" + runner;
  if (threads > 1) result.append("/").append(std::to_string(threads)).append(" threads");
  return result;
}

results::results(std::vector<row> rows, std::vector<measurement> all) : rows_(std::move(rows)), all_(std::move(all)) {
  for (const measurement& m : all_) by_name_[m.run_name()] = &m;
}

const measurement* results::find(const row& r, size nominal, shape memory, std::string_view runner, int threads) const {
  const measurement wanted{
      .row = r.name, .runner = std::string(runner), .nominal = nominal, .memory = memory, .threads = threads};
  const auto found = by_name_.find(wanted.run_name());
  return found == by_name_.end() ? nullptr : found->second;
}

const measurement* results::ours(const row& r, size nominal, shape memory, int threads) const {
  return find(r, nominal, memory, library_choice(), threads);
}

const measurement* results::portable(const row& r, size nominal, shape memory) const {
  return find(r, nominal, memory, name_of_backend(Processing::Morvane::backend::available().front()));
}

std::vector<const measurement*> results::peers_of(const row& r, size nominal) const {
  std::vector<const measurement*> result;
  for (const std::string_view library : {"libyuv", "swscale", "OpenCV"})
    if (const measurement* m = find(r, nominal, shape::tight, library)) result.push_back(m);
  return result;
}

const measurement* results::best_peer(const row& r, size nominal) const {
  const std::vector<const measurement*> peers = peers_of(r, nominal);
  const auto best = std::min_element(peers.begin(), peers.end(),
                                     [](const auto* a, const auto* b) { return a->nanoseconds < b->nanoseconds; });
  return best == peers.end() ? nullptr : *best;
}

double times_as_fast(const measurement& fast, const measurement& slow) {
  return slow.nanoseconds_per_pixel() / fast.nanoseconds_per_pixel();
}

std::vector<miss> misses(const results& r) {
  std::vector<miss> result;
  for (const row& which : r.rows()) {
    const target* t = target_of(which.what);
    if (t == nullptr) continue;
    const auto hold = [&](const measurement& m, const std::string& target, double reached, double wanted,
                          std::string_view why) {
      if (reached >= wanted - noise) why = "within what two runs of the same code differ by";
      if (reached < wanted)
        result.push_back({&which, m.size_name() + ", " + std::string(name_of(m.memory)), target, reached, wanted, why});
    };
    for (std::size_t s = 0; s < std::size(report_sizes); ++s) {
      const measurement* m = r.ours(which, report_sizes[s]);
      if (m == nullptr) continue;
      hold(*m, "of memcpy", m->share_of_memcpy(), t->share_of_memcpy[s], explanation(which));
      for (const measurement* peer : r.peers_of(which, report_sizes[s])) {
        const bool factor = s == 0 && peer->runner == "libyuv";
        hold(*m, "of " + peer->runner, times_as_fast(*m, *peer),
             factor ? least_of_libyuv_in_cache(which) : least_of_peer, explanation(which));
      }
    }
    for (const size& s : report_sizes)
      for (const shape memory : report_shapes) {
        const measurement* m = r.ours(which, s, memory);
        const measurement* portable = r.portable(which, s, memory);
        if (m && portable && m != portable)
          hold(*m, "of portable", times_as_fast(*m, *portable), least_of_portable, explanation(which));
      }
    for (const shape memory : {shape::padded, shape::odd, shape::unaligned}) {
      const measurement* m = r.ours(which, full_hd, memory);
      const measurement* tight = r.ours(which, full_hd);
      if (m && tight) hold(*m, "of tight", times_as_fast(*m, *tight), least_of_tight, explanation(which));
    }
    const measurement* in_short_rows = r.ours(which, short_rows, shape::padded);
    const measurement* in_long_rows = r.ours(which, in_cache, shape::padded);
    if (in_short_rows && in_long_rows)
      hold(*in_short_rows, "of rows of 1920", times_as_fast(*in_short_rows, *in_long_rows), least_of_long_rows,
           explanation_of_short_rows(which));
  }
  return result;
}

}  // namespace morvane::bench
