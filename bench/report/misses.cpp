#include "report/misses.h"

namespace morvane::bench {

namespace {

// Holds one row against its targets.
class judge {
 public:
  judge(const results& r, const targets& aims, const row& which, std::vector<miss>& found)
      : r_(r), aims_(aims), which_(which), found_(found) {}

  void beside_memcpy(const kind_target& t) {
    for (std::size_t s = 0; s < sizes.size(); ++s)
      if (const measurement* m = r_.ours(which_, {sizes[s]}))
        hold(*m, "of memcpy", m->share_of_memcpy(), t.share_of_memcpy[s], aims_.why(which_));
  }

  void beside_other_libraries() {
    for (const size& s : sizes)
      for (const std::string& library : r_.libraries())
        hold_ratio(r_.ours(which_, {s}), r_.find(which_, {s}, library), "of " + library,
                   aims_.least_beside(which_, library, s), aims_.why(which_));
  }

  void beside_narrower_backends() {
    for (const place& where : all_places())
      for (std::size_t i = 0; i + 1 < r_.backends().size(); ++i)
        hold_ratio(r_.ours(which_, where), r_.find(which_, where, r_.backends()[i]), "of " + r_.backends()[i],
                   aims_.never_slower(), aims_.why(which_));
  }

  void beside_tight_planes() {
    for (const shape memory : {shape::padded, shape::odd, shape::unaligned})
      hold_ratio(r_.ours(which_, {full_hd, memory}), r_.ours(which_, {full_hd}), "of tight", aims_.least_of_tight,
                 aims_.why(which_));
  }

  void beside_long_rows() {
    hold_ratio(r_.ours(which_, {short_rows, shape::padded}), r_.ours(which_, {in_cache, shape::padded}),
               "of rows of " + std::to_string(in_cache.xres), aims_.least_of_long_rows,
               aims_.why_in_short_rows(which_));
  }

 private:
  const results& r_;
  const targets& aims_;
  const row& which_;
  std::vector<miss>& found_;

  void hold_ratio(const measurement* m, const measurement* other, const std::string& target, double wanted,
                  std::string_view why) {
    if (m && other) hold(*m, target, times_as_fast(*m, *other), wanted, why);
  }

  void hold(const measurement& m, const std::string& target, double reached, double wanted, std::string_view why) {
    if (reached >= wanted) return;
    if (reached >= wanted - aims_.noise) why = aims_.within_noise;
    found_.push_back({which_.name, m.where, target, reached, wanted, std::string(why)});
  }
};

}  // namespace

std::vector<miss> misses(const results& r, const targets& aims) {
  std::vector<miss> result;
  for (const row& which : r.rows()) {
    const kind_target* t = aims.of(which);
    if (t == nullptr) continue;
    judge j(r, aims, which, result);
    j.beside_memcpy(*t);
    j.beside_other_libraries();
    j.beside_narrower_backends();
    j.beside_tight_planes();
    j.beside_long_rows();
  }
  return result;
}

}  // namespace morvane::bench
